// MemoryWindow: a window that is only its state.
#include <cadtools/dialog/window.h>

namespace cadtools::ui {

void MemoryWindow::MoveWindow(int x, int y, int width, int height, BOOL repaint) {
  rect_ = CRect(POINT{x, y}, SIZE{width, height});
  ++moves_;
  repainted_ = repaint != FALSE;
}

}  // namespace cadtools::ui
