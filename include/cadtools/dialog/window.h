// The window a dialog or docking bar works on: the few things placement,
// layout, focus and control hosting need from it.
//
// On Windows the host's glue passes an HwndWindow over the window's HWND
// (hwnd_window.h); elsewhere the host supplies its own implementation, and
// tests use MemoryWindow:
//
//   cadtools::ui::MemoryWindow w(CRect(10, 20, 410, 320));
//   w.AddItem(8006, CRect(7, 7, 300, 200));   // a child control, as a template has it
//   w.MoveWindow(100, 100, 400, 300, TRUE);
//   w.GetWindowRect();     // (100, 100, 500, 400)
//   w.GetClientRect();     // (0, 0, 400, 300): this model has no frame
//   w.SetZoomed(true);     // as if the user maximised it
//
// Window rectangles are in screen coordinates, as Win32's GetWindowRect
// gives them; item rectangles in the window's client coordinates.
#pragma once

#include <cadtools/compat/point_size_rect.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace cadtools::ui {

// SetWindowPos flags the library passes, with their Windows values.
inline constexpr UINT kSwpNoSize = 0x0001;
inline constexpr UINT kSwpNoMove = 0x0002;
inline constexpr UINT kSwpNoZOrder = 0x0004;
inline constexpr UINT kSwpNoActivate = 0x0010;

class CADTOOLS_API Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() = default;

  // The outer rectangle, frame included, in screen coordinates.
  virtual CRect GetWindowRect() const = 0;
  // The client area: (0, 0, width, height).
  virtual CRect GetClientRect() const = 0;
  // Moves the top-left corner to (x, y) and sets the outer size.
  virtual void MoveWindow(int x, int y, int width, int height, BOOL repaint) = 0;
  // SetWindowPos without a window to insert after: position (in the
  // parent's client coordinates for a child), size and kSwp* flags.
  virtual void SetWindowPos(int x, int y, int width, int height, UINT flags) = 0;
  // Maximised.
  virtual bool IsZoomed() const = 0;
  // A frame the user can drag to resize (WS_THICKFRAME).
  virtual bool HasResizableFrame() const = 0;
  // Lets the window take input again, or not.
  virtual void Enable(bool enable) = 0;
  // Shown (WS_VISIBLE, and every parent shown).
  virtual bool IsVisible() const = 0;
  virtual void Show(bool show) = 0;
  // Gives this window the keyboard focus; whether it has it.
  virtual void SetFocus() = 0;
  virtual bool HasFocus() const = 0;
  // The small icon (WM_SETICON, ICON_SMALL), from the icon resource id of
  // the resource module (resource_module.h).
  virtual void SetSmallIcon(UINT iconId) = 0;

  // Child items by control id.
  virtual bool HasItem(int id) const = 0;
  // Its rectangle in this window's client coordinates, (0, 0, 0, 0) when
  // there is none.
  virtual CRect GetItemRect(int id) const = 0;
  // Its client area, (0, 0, width, height).
  virtual CRect GetItemClientRect(int id) const = 0;
  virtual void MoveItem(int id, int x, int y, int width, int height, BOOL repaint) = 0;
  virtual void DestroyItem(int id) = 0;
  // Puts a control's window where a placeholder item is: the placeholder's
  // rectangle, style and id, next after it in the Z order (not moved, sized
  // or activated otherwise), then destroys the placeholder. controlWindow
  // is the control's own window (an HWND on Windows); a model that has none
  // passes 0. False, with nothing changed, when there is no placeholder.
  virtual bool ReplaceItem(int placeholderId, std::intptr_t controlWindow) = 0;
};

// A window that exists only as its state. Minimising is modelled the way
// Windows reports it: set the rectangle to the parking place
// (-32000, -32000, ...) with SetWindowRect. It has no frame, so its client
// area is its whole size. Focus is one per process, as on a desktop.
class CADTOOLS_API MemoryWindow final : public Window {
 public:
  // A child item as a dialog template lays it out.
  struct Item {
    int id = 0;
    CRect rect;                    // client coordinates of the window
    DWORD style = 0;
    std::intptr_t native = 0;      // a hosted control's own window, if any
    bool repainted = false;        // the last move repainted
  };

  explicit MemoryWindow(const CRect& rect = CRect(), bool resizable = true) noexcept
      : rect_(rect), resizable_(resizable) {}
  ~MemoryWindow() override;

  CRect GetWindowRect() const override { return rect_; }
  CRect GetClientRect() const override { return CRect(0, 0, rect_.Width(), rect_.Height()); }
  void MoveWindow(int x, int y, int width, int height, BOOL repaint) override;
  void SetWindowPos(int x, int y, int width, int height, UINT flags) override;
  bool IsZoomed() const override { return zoomed_; }
  bool HasResizableFrame() const override { return resizable_; }
  void Enable(bool enable) override { enabled_ = enable; }
  bool IsVisible() const override { return visible_; }
  void Show(bool show) override { visible_ = show; }
  void SetFocus() override;
  bool HasFocus() const override;
  void SetSmallIcon(UINT iconId) override { small_icon_ = iconId; }

  bool HasItem(int id) const override { return Find(id) != nullptr; }
  CRect GetItemRect(int id) const override;
  CRect GetItemClientRect(int id) const override;
  void MoveItem(int id, int x, int y, int width, int height, BOOL repaint) override;
  void DestroyItem(int id) override;
  bool ReplaceItem(int placeholderId, std::intptr_t controlWindow) override;

  void AddItem(int id, const CRect& rect, DWORD style = 0) { items_.push_back(Item{id, rect, style, 0, false}); }
  // The items in Z order, top first.
  const std::vector<Item>& Items() const noexcept { return items_; }
  const Item* Find(int id) const noexcept;

  void SetWindowRect(const CRect& rect) noexcept { rect_ = rect; }
  void SetZoomed(bool zoomed) noexcept { zoomed_ = zoomed; }
  bool IsEnabled() const noexcept { return enabled_; }
  UINT SmallIcon() const noexcept { return small_icon_; }
  // As Windows asks a resizable window before it takes a new size: the
  // handler may raise the minimum tracking size (ptMinTrackSize), which
  // moves and sizes then respect.
  void SetMinMaxHandler(std::function<void(MINMAXINFO*)> handler) { min_max_ = std::move(handler); }
  // How often MoveWindow was called, and whether the last call repainted.
  int MoveCount() const noexcept { return moves_; }
  bool LastMoveRepainted() const noexcept { return repainted_; }
  // The flags of the last SetWindowPos.
  UINT LastPosFlags() const noexcept { return pos_flags_; }

 private:
  Item* Find(int id) noexcept;
  CSize Tracked(int width, int height) const;

  CRect rect_;
  bool resizable_;
  bool zoomed_ = false;
  bool enabled_ = true;
  bool visible_ = true;
  UINT small_icon_ = 0;
  int moves_ = 0;
  bool repainted_ = false;
  UINT pos_flags_ = 0;
  std::vector<Item> items_;
  std::function<void(MINMAXINFO*)> min_max_;
};

}  // namespace cadtools::ui
