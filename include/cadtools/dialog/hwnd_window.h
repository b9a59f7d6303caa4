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

class CADTOOLS_API HwndWindow final : public Window {
 public:
  explicit HwndWindow(HWND hwnd) noexcept : hwnd_(hwnd) {}

  HWND GetHwnd() const noexcept { return hwnd_; }

  CRect GetWindowRect() const override;
  void MoveWindow(int x, int y, int width, int height, BOOL repaint) override;
  bool IsZoomed() const override;
  // WS_THICKFRAME in the window's style.
  bool HasResizableFrame() const override;
  void Enable(bool enable) override;

 private:
  HWND hwnd_;
};

}  // namespace cadtools::ui

#endif
