// CWinFormsControl<T>: a managed control hosted in a native dialog, in
// place of a placeholder item of the dialog's template.
//
//   CWinFormsControl<Orv3DEditor::OrvSymbolControl> m_ctrlSymbol;
//   void DoDataExchange(CDataExchange*) override {
//     if (!m_ctrlSymbol.HasControl()) m_ctrlSymbol.CreateManagedControl(*GetWindow(), 8006);
//   }
//   m_ctrlSymbol->Set(u"ViewMode", true);   // calls on the control
//
// The control is made by its type's default constructor through the
// bridge and takes over the placeholder's rectangle, style, id and place in
// the Z order; the placeholder is destroyed. On Windows the control's own
// window (Control.Handle) is what moves in; elsewhere the dialog's window
// models it. A control that cannot be made or placed throws
// CNotSupportedException* (CRuntimeUnavailableException* without a
// runtime; a managed exception of the constructor passes unchanged).
#pragma once

#include <cadtools/bridge/gcroot.h>
#include <cadtools/bridge/runtime.h>
#include <cadtools/dialog/window.h>
#include <cadtools/export.h>

namespace cadtools::bridge::detail {
// Makes an object of the named type and puts it where the placeholder is.
CADTOOLS_API Object CreateHostedControl(WStringView type, ui::Window& parent, int placeholderId);
}  // namespace cadtools::bridge::detail

template <class T>
class CWinFormsControl {
 public:
  CWinFormsControl() = default;
  CWinFormsControl(const CWinFormsControl&) = delete;
  CWinFormsControl& operator=(const CWinFormsControl&) = delete;

  // Whether the control has been made (the framework: a window or a
  // control site).
  bool HasControl() const noexcept { return !control_.IsNull(); }
  // Whether it has a window in a dialog; the same as HasControl here.
  bool HasWindow() const noexcept { return HasControl(); }

  void CreateManagedControl(cadtools::ui::Window& parent, int nPlaceholderID) {
    control_ = cadtools::bridge::Ref<T>(cadtools::bridge::detail::CreateHostedControl(T::kTypeName, parent, nPlaceholderID));
  }

  // The managed control (null before it is made).
  const cadtools::bridge::Ref<T>& GetControl() const noexcept { return control_; }
  const cadtools::bridge::Ref<T>* operator->() const noexcept { return &control_; }

 private:
  cadtools::bridge::Ref<T> control_;
};
