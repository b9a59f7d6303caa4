// The window a dialog places: the few things placement needs from it.
//
// On Windows the host's glue passes an HwndWindow over the dialog's HWND
// (hwnd_window.h); elsewhere the host supplies its own implementation, and
// tests use MemoryWindow:
//
//   cadtools::ui::MemoryWindow w(CRect(10, 20, 410, 320));
//   w.MoveWindow(100, 100, 400, 300, TRUE);
//   w.GetWindowRect();     // (100, 100, 500, 400)
//   w.SetZoomed(true);     // as if the user maximised it
//
// Rectangles are in screen coordinates, as Win32's GetWindowRect gives them.
#pragma once

#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

namespace cadtools::ui {

class CADTOOLS_API Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() = default;

  // The outer rectangle, frame included, in screen coordinates.
  virtual CRect GetWindowRect() const = 0;
  // Moves the top-left corner to (x, y) and sets the outer size.
  virtual void MoveWindow(int x, int y, int width, int height, BOOL repaint) = 0;
  // Maximised.
  virtual bool IsZoomed() const = 0;
  // A frame the user can drag to resize (WS_THICKFRAME).
  virtual bool HasResizableFrame() const = 0;
  // Lets the window take input again, or not.
  virtual void Enable(bool enable) = 0;
};

// A window that exists only as its state. Minimising is modelled the way
// Windows reports it: set the rectangle to the parking place
// (-32000, -32000, ...) with SetWindowRect.
class CADTOOLS_API MemoryWindow final : public Window {
 public:
  explicit MemoryWindow(const CRect& rect = CRect(), bool resizable = true) noexcept
      : rect_(rect), resizable_(resizable) {}

  CRect GetWindowRect() const override { return rect_; }
  void MoveWindow(int x, int y, int width, int height, BOOL repaint) override;
  bool IsZoomed() const override { return zoomed_; }
  bool HasResizableFrame() const override { return resizable_; }
  void Enable(bool enable) override { enabled_ = enable; }

  void SetWindowRect(const CRect& rect) noexcept { rect_ = rect; }
  void SetZoomed(bool zoomed) noexcept { zoomed_ = zoomed; }
  bool IsEnabled() const noexcept { return enabled_; }
  // How often MoveWindow was called, and whether the last call repainted.
  int MoveCount() const noexcept { return moves_; }
  bool LastMoveRepainted() const noexcept { return repainted_; }

 private:
  CRect rect_;
  bool resizable_;
  bool zoomed_ = false;
  bool enabled_ = true;
  int moves_ = 0;
  bool repainted_ = false;
};

}  // namespace cadtools::ui
