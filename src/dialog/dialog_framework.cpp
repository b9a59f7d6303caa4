// The dialog framework in use, and the in-memory one.
#include <cadtools/dialog/bcgp_dialog.h>
#include <cadtools/dialog/dialog_framework.h>

#include <atomic>
#include <memory>

namespace cadtools::ui {

#if defined(_WIN32)
// Real windows from the resource module's templates (windows_dialog_framework.cpp).
DialogFramework& WindowsDialogFramework();
#endif

namespace {

std::atomic<DialogFramework*>& Installed() noexcept {
  static std::atomic<DialogFramework*> installed{nullptr};
  return installed;
}

// wParam of a size message for a window shown normally.
constexpr UINT kSizeRestored = 0;

}  // namespace

DialogFramework& CurrentDialogFramework() {
  if (DialogFramework* f = Installed().load()) return *f;
#if defined(_WIN32)
  return WindowsDialogFramework();
#else
  return DefaultMemoryDialogFramework();
#endif
}

DialogFramework* SetDialogFramework(DialogFramework* framework) noexcept { return Installed().exchange(framework); }

MemoryDialogFramework& DefaultMemoryDialogFramework() {
  static MemoryDialogFramework framework;
  return framework;
}

// As Windows makes a dialog: the window (which gets its first size before
// its controls exist), then the controls, then WM_INITDIALOG.
bool MemoryDialogFramework::CreateDialogWindow(CBCGPDialog& dialog, UINT templateId, Window*) {
  return Make(dialog, templateId, false);
}

bool MemoryDialogFramework::Make(CBCGPDialog& dialog, UINT templateId, bool modal) {
  const auto found = templates_.find(templateId);
  if (found == templates_.end()) return false;
  const Template& t = found->second;
  auto window = std::make_unique<MemoryWindow>(t.rect, t.resizable);
  MemoryWindow& w = *window;
  w.SetMinMaxHandler([&dialog](MINMAXINFO* info) { dialog.OnGetMinMaxInfo(info); });
  CBCGPDialogAccess::BeginRun(dialog, *this, modal);
  dialog.AdoptWindow(std::move(window));
  try {
    dialog.OnSize(kSizeRestored, w.GetClientRect().Width(), w.GetClientRect().Height());
    for (const MemoryWindow::Item& item : t.items) w.AddItem(item.id, item.rect, item.style);
    dialog.OnInitDialog();
  } catch (...) {
    // A dialog whose start-up failed has no window.
    dialog.DestroyWindow();
    throw;
  }
  return true;
}

INT_PTR MemoryDialogFramework::RunModal(CBCGPDialog& dialog) {
  if (!Make(dialog, dialog.GetTemplateId(), true)) return -1;
  try {
    if (user_) user_(dialog, static_cast<MemoryWindow&>(*dialog.GetWindow()));
    // A user who ended nothing closed the window: that is Cancel.
    if (!dialog.IsEnded()) dialog.OnCancel();
    if (!dialog.IsEnded()) CBCGPDialogAccess::MarkEnded(dialog, IDCANCEL);
  } catch (...) {
    dialog.DestroyWindow();
    throw;
  }
  const int result = dialog.GetResult();
  dialog.DestroyWindow();
  return result;
}

void MemoryDialogFramework::EndDialog(CBCGPDialog& dialog, int) {
  if (!dialog.IsModal() && dialog.GetWindow() != nullptr) {
    dialog.GetWindow()->Show(false);
  }
}

void MemoryDialogFramework::DestroyDialogWindow(CBCGPDialog& dialog) { dialog.OnDestroy(); }

}  // namespace cadtools::ui
