// HwndWindow: the window interface over a real Windows window.
//
//   cadtools::ui::HwndWindow window(hDlg);
//   CPartsDlg dialog(&window);
//
// It does not own the window; the host's window lives as long as the
// dialog object uses it. Windows only.
#pragma once

#if defined(_WIN32)

#include <cadtools/dialog/window.h>
#include <cadtools/export.h>

namespace cadtools::ui {

class CADTOOLS_API HwndWindow : public Window {
 public:
  explicit HwndWindow(HWND hwnd) noexcept : hwnd_(hwnd) {}

  HWND GetHwnd() const noexcept { return hwnd_; }

  CRect GetWindowRect() const override;
  CRect GetClientRect() const override;
  void MoveWindow(int x, int y, int width, int height, BOOL repaint) override;
  void SetWindowPos(int x, int y, int width, int height, UINT flags) override;
  bool IsZoomed() const override;
  // WS_THICKFRAME in the window's style.
  bool HasResizableFrame() const override;
  void Enable(bool enable) override;
  bool IsVisible() const override;
  void Show(bool show) override;
  void SetFocus() override;
  bool HasFocus() const override;
  // The icon at the small-icon size, from the resource module.
  void SetSmallIcon(UINT iconId) override;

  // Items are the window's children by control id (GetDlgItem).
  bool HasItem(int id) const override;
  CRect GetItemRect(int id) const override;
  CRect GetItemClientRect(int id) const override;
  void MoveItem(int id, int x, int y, int width, int height, BOOL repaint) override;
  void DestroyItem(int id) override;
  // The control's window becomes this window's child with the
  // placeholder's style, rectangle and id, after it in the Z order.
  bool ReplaceItem(int placeholderId, std::intptr_t controlWindow) override;

 private:
  HWND hwnd_;
};

}  // namespace cadtools::ui

#endif
