// HwndWindow: the window interface as Win32 calls.
#include <cadtools/dialog/hwnd_window.h>

namespace cadtools::ui {

CRect HwndWindow::GetWindowRect() const {
  RECT r{0, 0, 0, 0};
  ::GetWindowRect(hwnd_, &r);  // a window that has gone reads as no rectangle
  return r;
}

void HwndWindow::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
  ::MoveWindow(hwnd_, x, y, width, height, repaint);
}

bool HwndWindow::IsZoomed() const { return ::IsZoomed(hwnd_) != FALSE; }

bool HwndWindow::HasResizableFrame() const {
  return (static_cast<DWORD>(::GetWindowLongW(hwnd_, GWL_STYLE)) & WS_THICKFRAME) != 0;
}

void HwndWindow::Enable(bool enable) { ::EnableWindow(hwnd_, enable ? TRUE : FALSE); }

}  // namespace cadtools::ui
