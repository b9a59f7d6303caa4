// MemoryWindow: a window that is only its state.
#include <cadtools/dialog/window.h>

#include <algorithm>
#include <atomic>

namespace cadtools::ui {

namespace {
// The window with the keyboard focus, one per process as on a desktop.
std::atomic<const MemoryWindow*>& Focused() noexcept {
  static std::atomic<const MemoryWindow*> focused{nullptr};
  return focused;
}
}  // namespace

MemoryWindow::~MemoryWindow() {
  const MemoryWindow* self = this;
  Focused().compare_exchange_strong(self, nullptr);
}

// Windows asks a resizable window for its tracking limits before it takes
// a new size, and keeps the size within them.
CSize MemoryWindow::Tracked(int width, int height) const {
  if (!min_max_ || !resizable_) return CSize(width, height);
  MINMAXINFO info{};
  min_max_(&info);
  return CSize(std::max<LONG>(width, info.ptMinTrackSize.x), std::max<LONG>(height, info.ptMinTrackSize.y));
}

void MemoryWindow::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
  const CSize size = Tracked(width, height);
  rect_ = CRect(POINT{x, y}, size);
  ++moves_;
  repainted_ = repaint != FALSE;
}

void MemoryWindow::SetWindowPos(int x, int y, int width, int height, UINT flags) {
  pos_flags_ = flags;
  const POINT at = (flags & kSwpNoMove) != 0 ? rect_.TopLeft() : POINT{x, y};
  const CSize size = (flags & kSwpNoSize) != 0 ? rect_.Size() : Tracked(width, height);
  rect_ = CRect(at, size);
}

void MemoryWindow::SetFocus() { Focused().store(this); }

bool MemoryWindow::HasFocus() const { return Focused().load() == this; }

const MemoryWindow::Item* MemoryWindow::Find(int id) const noexcept {
  const auto it = std::find_if(items_.begin(), items_.end(), [id](const Item& i) { return i.id == id; });
  return it == items_.end() ? nullptr : &*it;
}

MemoryWindow::Item* MemoryWindow::Find(int id) noexcept {
  return const_cast<Item*>(static_cast<const MemoryWindow*>(this)->Find(id));
}

CRect MemoryWindow::GetItemRect(int id) const {
  const Item* item = Find(id);
  return item == nullptr ? CRect() : item->rect;
}

CRect MemoryWindow::GetItemClientRect(int id) const {
  const CRect r = GetItemRect(id);
  return CRect(0, 0, r.Width(), r.Height());
}

void MemoryWindow::MoveItem(int id, int x, int y, int width, int height, BOOL repaint) {
  if (Item* item = Find(id)) {
    item->rect = CRect(POINT{x, y}, SIZE{width, height});
    item->repainted = repaint != FALSE;
  }
}

void MemoryWindow::DestroyItem(int id) {
  items_.erase(std::remove_if(items_.begin(), items_.end(), [id](const Item& i) { return i.id == id; }),
               items_.end());
}

bool MemoryWindow::ReplaceItem(int placeholderId, std::intptr_t controlWindow) {
  const auto at = std::find_if(items_.begin(), items_.end(), [&](const Item& i) { return i.id == placeholderId; });
  if (at == items_.end()) return false;
  Item control = *at;
  control.native = controlWindow;
  control.repainted = false;
  // Next after the placeholder, which then goes.
  const auto placed = items_.insert(at + 1, control);
  items_.erase(placed - 1);
  return true;
}

}  // namespace cadtools::ui
