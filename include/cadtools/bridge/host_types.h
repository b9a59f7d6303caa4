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

namespace Orv::API::Manager {

// The host's pane control, hosted in a docking pane's dialog.
struct OrvPaneControl {
  static constexpr const WCHAR* kTypeName = CADTOOLS_WIDE("Orv.API.Manager.OrvPaneControl, Orv.API.Manager");
};

// The host's docking pane, handed over as a COM pointer.
struct OrvDockingPane {
  static constexpr const WCHAR* kTypeName = CADTOOLS_WIDE("Orv.API.Manager.OrvDockingPane, Orv.API.Manager");
};

}  // namespace Orv::API::Manager

namespace Orv3DEditor {

// The three-dimensional symbol browser control.
struct OrvSymbolControl {
  static constexpr const WCHAR* kTypeName = CADTOOLS_WIDE("Orv3DEditor.OrvSymbolControl, Orv3DEditor");
};

}  // namespace Orv3DEditor

namespace CADInterface {

// Loads symbols and reads their attributes and connections.
struct DiagramInterface {
  static constexpr const WCHAR* kTypeName = CADTOOLS_WIDE("CADInterface.DiagramInterface, CADInterface");
};

}  // namespace CADInterface
