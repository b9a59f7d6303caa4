// The dialog framework on Windows: real dialog windows from the resource
// module's templates, their messages routed to the dialog's handlers.
#include <cadtools/dialog/bcgp_dialog.h>
#include <cadtools/dialog/dialog_framework.h>
#include <cadtools/dialog/hwnd_window.h>
#include <cadtools/dialog/resource_module.h>

#include <exception>
#include <memory>

namespace cadtools::ui {

namespace {

// A dialog's own window: destroyed with the dialog object if still there.
class OwnedWindow final : public HwndWindow {
 public:
  using HwndWindow::HwndWindow;
  OwnedWindow(const OwnedWindow&) = delete;
  OwnedWindow& operator=(const OwnedWindow&) = delete;
  ~OwnedWindow() override {
    if (!::IsWindow(GetHwnd())) return;
    // The dialog object is going: its handlers must not hear of this.
    ::SetWindowLongPtrW(GetHwnd(), DWLP_USER, 0);
    ::DestroyWindow(GetHwnd());
  }
};

// The dialog being made on this thread, before WM_INITDIALOG brings its
// pointer, and what a handler threw while the framework's caller waits.
thread_local CBCGPDialog* g_creating = nullptr;
thread_local std::exception_ptr g_failure;

CBCGPDialog* DialogOf(HWND hwnd) {
  if (auto* d = reinterpret_cast<CBCGPDialog*>(::GetWindowLongPtrW(hwnd, DWLP_USER))) return d;
  CBCGPDialog* d = g_creating;
  if (d == nullptr) return nullptr;
  ::SetWindowLongPtrW(hwnd, DWLP_USER, reinterpret_cast<LONG_PTR>(d));
  d->AdoptWindow(std::make_unique<OwnedWindow>(hwnd));
  return d;
}

// No C++ exception may pass through the system's message dispatch: a
// handler's is kept and raised again once the framework's call returns.
INT_PTR CALLBACK DialogProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  CBCGPDialog* dialog = DialogOf(hwnd);
  if (dialog == nullptr) return FALSE;
  try {
    switch (message) {
      case WM_INITDIALOG:
        return dialog->OnInitDialog();
      case WM_SIZE:
        dialog->OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        return TRUE;
      case WM_GETMINMAXINFO:
        dialog->OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lParam));
        return TRUE;
      case WM_COMMAND:
        if (LOWORD(wParam) == IDOK) {
          dialog->OnOK();
          return TRUE;
        }
        if (LOWORD(wParam) == IDCANCEL) {
          dialog->OnCancel();
          return TRUE;
        }
        return FALSE;
      case WM_DESTROY:
        dialog->OnDestroy();
        return FALSE;
      default:
        return FALSE;
    }
  } catch (...) {
    if (!g_failure) g_failure = std::current_exception();
    if (dialog->IsModal()) ::EndDialog(hwnd, -1);
    return FALSE;
  }
}

HWND HwndOf(Window* window) {
  auto* hwnd_window = dynamic_cast<HwndWindow*>(window);
  return hwnd_window != nullptr ? hwnd_window->GetHwnd() : nullptr;
}

// Ends the framework's call: forgets the creating dialog, raises what a
// handler threw.
void Finish() {
  g_creating = nullptr;
  if (std::exception_ptr failure = std::exchange(g_failure, nullptr)) std::rethrow_exception(failure);
}

class WindowsFramework final : public DialogFramework {
 public:
  bool CreateDialogWindow(CBCGPDialog& dialog, UINT templateId, Window* parent) override {
    CBCGPDialogAccess::BeginRun(dialog, *this, false);
    g_creating = &dialog;
    HWND hwnd = ::CreateDialogParamW(GetResourceModule(), MAKEINTRESOURCEW(templateId), HwndOf(parent), DialogProc, 0);
    try {
      Finish();
    } catch (...) {
      dialog.DestroyWindow();
      throw;
    }
    return hwnd != nullptr;
  }

  INT_PTR RunModal(CBCGPDialog& dialog) override {
    CBCGPDialogAccess::BeginRun(dialog, *this, true);
    g_creating = &dialog;
    CWnd* parent = dialog.GetParentWnd();
    const INT_PTR result = ::DialogBoxParamW(GetResourceModule(), MAKEINTRESOURCEW(dialog.GetTemplateId()),
                                             HwndOf(parent != nullptr ? parent->GetWindow() : nullptr), DialogProc, 0);
    dialog.DestroyWindow();  // gone already; the dialog lets go of it
    Finish();
    return result;
  }

  void EndDialog(CBCGPDialog& dialog, int result) override {
    if (HWND hwnd = HwndOf(dialog.GetWindow())) ::EndDialog(hwnd, result);
  }

  // WM_DESTROY brings OnDestroy.
  void DestroyDialogWindow(CBCGPDialog& dialog) override {
    HWND hwnd = HwndOf(dialog.GetWindow());
    if (hwnd != nullptr && ::IsWindow(hwnd)) ::DestroyWindow(hwnd);
  }
};

}  // namespace

DialogFramework& WindowsDialogFramework() {
  static WindowsFramework framework;
  return framework;
}

}  // namespace cadtools::ui
