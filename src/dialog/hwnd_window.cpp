// HwndWindow: the window interface as Win32 calls.
#include <cadtools/dialog/hwnd_window.h>

#include <cadtools/dialog/resource_module.h>

namespace cadtools::ui {

namespace {
// A child's rectangle in its parent's client coordinates.
CRect ChildRect(HWND parent, HWND child) {
  RECT r{0, 0, 0, 0};
  if (child == nullptr || !::GetWindowRect(child, &r)) return CRect();
  ::MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&r), 2);
  return r;
}
}  // namespace

CRect HwndWindow::GetWindowRect() const {
  RECT r{0, 0, 0, 0};
  ::GetWindowRect(hwnd_, &r);  // a window that has gone reads as no rectangle
  return r;
}

CRect HwndWindow::GetClientRect() const {
  RECT r{0, 0, 0, 0};
  ::GetClientRect(hwnd_, &r);
  return r;
}

void HwndWindow::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
  ::MoveWindow(hwnd_, x, y, width, height, repaint);
}

void HwndWindow::SetWindowPos(int x, int y, int width, int height, UINT flags) {
  ::SetWindowPos(hwnd_, nullptr, x, y, width, height, flags);
}

bool HwndWindow::IsZoomed() const { return ::IsZoomed(hwnd_) != FALSE; }

bool HwndWindow::HasResizableFrame() const {
  return (static_cast<DWORD>(::GetWindowLongW(hwnd_, GWL_STYLE)) & WS_THICKFRAME) != 0;
}

void HwndWindow::Enable(bool enable) { ::EnableWindow(hwnd_, enable ? TRUE : FALSE); }

bool HwndWindow::IsVisible() const { return ::IsWindowVisible(hwnd_) != FALSE; }

void HwndWindow::Show(bool show) { ::ShowWindow(hwnd_, show ? SW_SHOW : SW_HIDE); }

void HwndWindow::SetFocus() { ::SetFocus(hwnd_); }

bool HwndWindow::HasFocus() const { return ::GetFocus() == hwnd_; }

void HwndWindow::SetSmallIcon(UINT iconId) {
  // The small size the system draws in captions; the framework's resource
  // search is the resource module.
  const HANDLE icon = ::LoadImageW(GetResourceModule(), MAKEINTRESOURCEW(iconId), IMAGE_ICON,
                                   ::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON), 0);
  ::SendMessageW(hwnd_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
}

bool HwndWindow::HasItem(int id) const { return ::GetDlgItem(hwnd_, id) != nullptr; }

CRect HwndWindow::GetItemRect(int id) const { return ChildRect(hwnd_, ::GetDlgItem(hwnd_, id)); }

CRect HwndWindow::GetItemClientRect(int id) const {
  RECT r{0, 0, 0, 0};
  if (HWND item = ::GetDlgItem(hwnd_, id)) ::GetClientRect(item, &r);
  return r;
}

void HwndWindow::MoveItem(int id, int x, int y, int width, int height, BOOL repaint) {
  if (HWND item = ::GetDlgItem(hwnd_, id)) ::MoveWindow(item, x, y, width, height, repaint);
}

void HwndWindow::DestroyItem(int id) {
  if (HWND item = ::GetDlgItem(hwnd_, id)) ::DestroyWindow(item);
}

bool HwndWindow::ReplaceItem(int placeholderId, std::intptr_t controlWindow) {
  HWND placeholder = ::GetDlgItem(hwnd_, placeholderId);
  auto* control = reinterpret_cast<HWND>(controlWindow);
  if (placeholder == nullptr || control == nullptr) return false;
  const CRect r = ChildRect(hwnd_, placeholder);
  const LONG_PTR style = ::GetWindowLongPtrW(placeholder, GWL_STYLE);
  ::SetParent(control, hwnd_);
  ::SetWindowLongPtrW(control, GWL_STYLE, style | WS_CHILD);
  ::SetWindowLongPtrW(control, GWL_ID, placeholderId);
  ::SetWindowPos(control, placeholder, r.left, r.top, r.Width(), r.Height(), SWP_NOACTIVATE);
  ::DestroyWindow(placeholder);
  return true;
}

}  // namespace cadtools::ui
