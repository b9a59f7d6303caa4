// The host product's managed types that the bridge creates, as tags for
// gcroot<T> and Ref<T>: each names its type the way the runtime finds it,
// assembly-qualified, so that the host's assembly is loaded on first use.
#pragma once

#include <cadtools/compat/win_types.h>

namespace OrvDatabaseControls {

// The component database's equipment browser (a Windows Forms dialog).
struct OrvEquipmentBrowserDialog {
  static constexpr const WCHAR* kTypeName =
      CADTOOLS_WIDE("OrvDatabaseControls.OrvEquipmentBrowserDialog, OrvDatabaseControls");
};

// The component database's equipment editor (a Windows Forms dialog).
struct OrvEquipmentEditorDialog {
  static constexpr const WCHAR* kTypeName =
      CADTOOLS_WIDE("OrvDatabaseControls.OrvEquipmentEditorDialog, OrvDatabaseControls");
};

}  // namespace OrvDatabaseControls
