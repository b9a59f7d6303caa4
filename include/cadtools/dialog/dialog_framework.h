// Where dialog windows come from: the host's dialog framework, as the
// library's dialogs need it. On Windows the default makes real windows
// from the resource module's dialog templates (resource_module.h) and
// routes their messages to the dialog's handlers; elsewhere the default is
// a MemoryDialogFramework, which the host (or a test) fills with the
// templates and the user:
//
//   auto& f = cadtools::ui::DefaultMemoryDialogFramework();
//   f.AddTemplate(8005, {CRect(0, 0, 600, 400), true, {{8006, CRect(7, 7, 593, 356)}, ...}});
//   f.SetUser([](CBCGPDialog& d, cadtools::ui::MemoryWindow& w) { d.OnOK(); });
//   dialog.DoModal();   // IDOK
#pragma once

#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/dialog/window.h>
#include <cadtools/export.h>

#include <functional>
#include <map>
#include <vector>

class CBCGPDialog;

namespace cadtools::ui {

class CADTOOLS_API DialogFramework {
 public:
  DialogFramework() = default;
  DialogFramework(const DialogFramework&) = delete;
  DialogFramework& operator=(const DialogFramework&) = delete;
  virtual ~DialogFramework() = default;

  // Makes the dialog's window from template templateId, a child of parent
  // (top level when null); the dialog adopts it and its OnInitDialog runs.
  // False when no window could be made.
  virtual bool CreateDialogWindow(CBCGPDialog& dialog, UINT templateId, Window* parent) = 0;
  // Runs the dialog modally from its template until it ends, OnDestroy
  // included; its result, -1 when no window could be made.
  virtual INT_PTR RunModal(CBCGPDialog& dialog) = 0;
  // Ends the dialog's run (modal) or hides it (modeless).
  virtual void EndDialog(CBCGPDialog& dialog, int result) = 0;
  // Destroys a window this framework made for the dialog; its OnDestroy
  // runs first.
  virtual void DestroyDialogWindow(CBCGPDialog& dialog) = 0;
};

// The framework in use, and the host's own (nullptr: the default again);
// SetDialogFramework returns the one before.
CADTOOLS_API DialogFramework& CurrentDialogFramework();
CADTOOLS_API DialogFramework* SetDialogFramework(DialogFramework* framework) noexcept;

// Dialogs as MemoryWindows, laid out from templates added beforehand. A
// modal dialog runs the user, then ends with what the user chose (Cancel
// when the user ended nothing).
class CADTOOLS_API MemoryDialogFramework final : public DialogFramework {
 public:
  struct Template {
    CRect rect;       // where the window opens, in screen coordinates
    bool resizable = true;
    std::vector<MemoryWindow::Item> items;
  };
  using User = std::function<void(CBCGPDialog& dialog, MemoryWindow& window)>;

  void AddTemplate(UINT id, Template t) { templates_[id] = std::move(t); }
  void SetUser(User user) { user_ = std::move(user); }

  bool CreateDialogWindow(CBCGPDialog& dialog, UINT templateId, Window* parent) override;
  INT_PTR RunModal(CBCGPDialog& dialog) override;
  void EndDialog(CBCGPDialog& dialog, int result) override;
  void DestroyDialogWindow(CBCGPDialog& dialog) override;

 private:
  bool Make(CBCGPDialog& dialog, UINT templateId, bool modal);

  std::map<UINT, Template> templates_;
  User user_;
};

// The MemoryDialogFramework that is the default off Windows.
CADTOOLS_API MemoryDialogFramework& DefaultMemoryDialogFramework();

}  // namespace cadtools::ui
