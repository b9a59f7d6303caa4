#include <cadtools/dialog/wait_cursor.h>

#if defined(_WIN32)
#include <windows.h>
#endif

#include <atomic>

namespace cadtools::ui {

namespace {

#if defined(_WIN32)
// The system's wait cursor; the cursor before the outermost Begin comes
// back with the last End.
class SystemWaitCursor final : public WaitCursor {
 public:
  void Begin() override {
    HCURSOR wait = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32514));  // IDC_WAIT
    HCURSOR before = ::SetCursor(wait);
    if (depth_++ == 0) before_ = before;
  }
  void End() noexcept override {
    if (depth_ > 0 && --depth_ == 0) ::SetCursor(before_);
  }

 private:
  int depth_ = 0;
  HCURSOR before_ = nullptr;
};
using DefaultWaitCursor = SystemWaitCursor;
#else
// No cursor of the system's to change; the host installs its own.
class NoWaitCursor final : public WaitCursor {
 public:
  void Begin() override {}
  void End() noexcept override {}
};
using DefaultWaitCursor = NoWaitCursor;
#endif

WaitCursor& DefaultCursor() noexcept {
  static DefaultWaitCursor cursor;
  return cursor;
}

std::atomic<WaitCursor*>& Installed() noexcept {
  static std::atomic<WaitCursor*> installed{nullptr};
  return installed;
}

}  // namespace

WaitCursor& CurrentWaitCursor() noexcept {
  WaitCursor* installed = Installed().load();
  return installed != nullptr ? *installed : DefaultCursor();
}

WaitCursor* SetWaitCursor(WaitCursor* cursor) noexcept { return Installed().exchange(cursor); }

}  // namespace cadtools::ui

CWaitCursor::CWaitCursor() : m_cursor(cadtools::ui::CurrentWaitCursor()) { m_cursor.Begin(); }

CWaitCursor::~CWaitCursor() { m_cursor.End(); }

void CWaitCursor::Restore() {
  m_cursor.End();
  m_cursor.Begin();
}
