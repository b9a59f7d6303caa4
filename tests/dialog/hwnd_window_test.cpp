// CBaseDialog over real windows (Windows, wine): what lands in the
// registry and where the window ends up.
#include <cadtools/dialog/hwnd_window.h>

#include "dialog_test_util.h"

namespace cadtools::test {
namespace {

constexpr DWORD kFixedFrame = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;

// A top-level window of a plain class, destroyed with the object.
class RealWindow {
 public:
  RealWindow(DWORD style, const RECT& r) {
    static const bool registered = [] {
      WNDCLASSW wc{};
      wc.lpfnWndProc = ::DefWindowProcW;
      wc.hInstance = ::GetModuleHandleW(nullptr);
      wc.lpszClassName = L"cadtools-dialog-test";
      return ::RegisterClassW(&wc) != 0;
    }();
    static_cast<void>(registered);
    hwnd_ = ::CreateWindowExW(0, L"cadtools-dialog-test", L"placement", style, r.left, r.top, r.right - r.left,
                              r.bottom - r.top, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  }
  RealWindow(const RealWindow&) = delete;
  RealWindow& operator=(const RealWindow&) = delete;
  ~RealWindow() {
    if (hwnd_) ::DestroyWindow(hwnd_);
  }
  HWND hwnd() const { return hwnd_; }

 private:
  HWND hwnd_;
};

TEST_F(DialogPlacement, RealWindowsRestoreBySizeOrOnlyByPlace) {
  struct Case {
    DWORD style;
    bool resizable;
    CRect expected;
  };
  const Case cases[] = {
      {WS_OVERLAPPEDWINDOW, true, CRect(100, 120, 500, 420)},
      {kFixedFrame, false, CRect(100, 120, 400, 320)},
  };
  for (const Case& c : cases) {
    RealWindow real(c.style, CRect(50, 50, 350, 250));
    ASSERT_NE(real.hwnd(), nullptr) << "no window: " << ::GetLastError();
    ui::HwndWindow window(real.hwnd());
    EXPECT_EQ(window.HasResizableFrame(), c.resizable);
    CBaseDialog dialog(130, &window);
    Store(ValueName(dialog), CRect(100, 120, 500, 420));
    dialog.OnInitDialog();
    dialog.RestorePos();
    EXPECT_EQ(window.GetWindowRect(), c.expected);

    dialog.BeginModalState();
    EXPECT_FALSE(::IsWindowEnabled(real.hwnd()));
    dialog.EndModalState();
    EXPECT_TRUE(::IsWindowEnabled(real.hwnd()));
  }
}

TEST_F(DialogPlacement, RealWindowMaximisedThenMinimised) {
  RealWindow real(WS_OVERLAPPEDWINDOW, CRect(60, 70, 460, 370));
  ASSERT_NE(real.hwnd(), nullptr);
  ui::HwndWindow window(real.hwnd());
  CBaseDialog dialog(130, &window);
  const CString name = ValueName(dialog);
  dialog.SavePos();
  ::ShowWindow(real.hwnd(), SW_MAXIMIZE);
  ASSERT_TRUE(window.IsZoomed());
  dialog.OnDestroy();
  EXPECT_EQ(Value(name).bytes, RectBytes(CRect(60, 70, 460, 370)));
  EXPECT_EQ(Value(name + W("Maximized")).bytes, Bytes(16, 0xff));

  // Closed minimised: saved at the parking place, forgotten on the next
  // opening together with the maximised state.
  ::ShowWindow(real.hwnd(), SW_MINIMIZE);
  ASSERT_FALSE(window.IsZoomed());
  const CRect parked = window.GetWindowRect();
  EXPECT_FALSE(ui::AnyDisplayIntersects(parked)) << parked.left << "," << parked.top;
  dialog.OnDestroy();
  EXPECT_EQ(Value(name).bytes, RectBytes(parked));
  CBaseDialog reopened(130, &window);
  reopened.OnInitDialog();
  EXPECT_EQ(reopened.m_bMaximized, 0);
  EXPECT_EQ(Value(name).bytes, Bytes(16, 0));
}

}  // namespace
}  // namespace cadtools::test
