// The pane host and the symbol selector over real windows (Windows, wine):
// the templates 2218 and 8005 and the icon 115 come from this program's
// resources, as they come from the host's resource modules. Wine has no
// .NET here, so the dialogs make no managed control (their data exchange
// is left out); what the control would receive is tested on Linux.
#include <cadtools/bridge/dock_wrappers.h>
#include <cadtools/bridge/managed_exception.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/dialog/hwnd_window.h>
#include <cadtools/registry/reg_base.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using cadtools::ui::HwndWindow;

// The dialogs without their managed controls.
struct PaneDialog : CDockDlgWrapper {
  void DoDataExchange(CDataExchange*) override {}
};
struct SelectorDialog : CSymbol3DSelectorDlg {
  void DoDataExchange(CDataExchange*) override {}
  BOOL OnInitDialog() override {
    const BOOL result = CSymbol3DSelectorDlg::OnInitDialog();
    if (post_ok) ::PostMessageW(Hwnd(), WM_COMMAND, IDOK, 0);
    return result;
  }
  HWND Hwnd() const { return static_cast<HwndWindow*>(GetWindow())->GetHwnd(); }
  bool post_ok = false;
};

// A top-level window of a plain class: the docking bar's window.
class BarWindow {
 public:
  BarWindow() {
    static const bool registered = [] {
      WNDCLASSW wc{};
      wc.lpfnWndProc = ::DefWindowProcW;
      wc.hInstance = ::GetModuleHandleW(nullptr);
      wc.lpszClassName = L"cadtools-bar-test";
      return ::RegisterClassW(&wc) != 0;
    }();
    static_cast<void>(registered);
    hwnd_ = ::CreateWindowExW(0, L"cadtools-bar-test", L"bar", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 400, 300,
                              nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  }
  BarWindow(const BarWindow&) = delete;
  BarWindow& operator=(const BarWindow&) = delete;
  ~BarWindow() { ::DestroyWindow(hwnd_); }
  HWND hwnd() const { return hwnd_; }

 private:
  HWND hwnd_;
};

CRect ItemRect(HWND dialog, int id) { return HwndWindow(dialog).GetItemRect(id); }

class RealWindows : public ::testing::Test {
 protected:
  void SetUp() override { CRegBase::SetRegBase(L"Software\\cadtools-tests\\real-windows\\"); }
  void TearDown() override { CRegBase(L"").removeKey(); }
};

TEST_F(RealWindows, ThePaneDialogFillsTheBarAndKeepsItsMargin) {
  BarWindow real_bar;
  HwndWindow bar_window(real_bar.hwnd());
  CDockWndWrapper bar;
  bar.m_pDlg = std::make_unique<PaneDialog>();
  bar.SetWindow(&bar_window);
  ASSERT_EQ(bar.OnCreate(nullptr), 0);
  ASSERT_NE(bar.m_pDlg->GetWindow(), nullptr) << "no window from template 2218";
  const HWND dialog = static_cast<HwndWindow*>(bar.m_pDlg->GetWindow())->GetHwnd();
  EXPECT_EQ(::GetParent(dialog), real_bar.hwnd());
  struct Row {
    int cx, cy;
    CRect control;
  };
  for (const Row row : {Row{20, 12, CRect(5, 5, 15, 7)}, Row{300, 200, CRect(5, 5, 295, 195)}}) {
    bar.OnSize(0, row.cx, row.cy);  // the dialog's WM_SIZE lays it out
    RECT client;
    ::GetClientRect(dialog, &client);
    EXPECT_EQ(CRect(client), CRect(0, 0, row.cx, row.cy));
    EXPECT_EQ(ItemRect(dialog, CDockDlgWrapper::kPlaceholderId), row.control);
  }
  // Focus: an activated bar takes it and passes it on to its dialog.
  ::SetFocus(nullptr);
  bar.ShowControlBar(TRUE, FALSE, TRUE);
  EXPECT_EQ(::GetFocus(), real_bar.hwnd());
  bar.OnSetFocus(nullptr);  // a dialog hands its focus on to its first control
  EXPECT_TRUE(::GetFocus() == dialog || ::IsChild(dialog, ::GetFocus()));
  bar.Activate(FALSE);
  EXPECT_EQ(::GetFocus(), real_bar.hwnd());
  // Enter and Escape leave the pane open.
  ::SendMessageW(dialog, WM_COMMAND, IDOK, 0);
  ::SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(::IsWindowVisible(dialog));
}

TEST_F(RealWindows, TheSelectorsLayoutMinimumSizeAndSmallIcon) {
  SelectorDialog selector;
  ASSERT_TRUE(selector.Create(CSymbol3DSelectorDlg::IDD, nullptr)) << "no window from template 8005";
  const HWND hwnd = selector.Hwnd();
  EXPECT_NE(::SendMessageW(hwnd, WM_GETICON, ICON_SMALL, 0), 0);
  EXPECT_EQ(::SendMessageW(hwnd, WM_GETICON, ICON_BIG, 0), 0);  // only the small one is set

  ::MoveWindow(::GetDlgItem(hwnd, IDCANCEL), 0, 0, 75, 23, TRUE);
  selector.OnSize(0, 600, 400);
  EXPECT_EQ(ItemRect(hwnd, 8006), CRect(7, 7, 593, 356));
  EXPECT_EQ(ItemRect(hwnd, IDOK), CRect(436, 370, 511, 393));
  EXPECT_EQ(ItemRect(hwnd, IDCANCEL), CRect(518, 370, 593, 393));

  // The system asks the dialog for its limits as it sizes it.
  ::SetWindowPos(hwnd, nullptr, 0, 0, 100, 100, SWP_NOMOVE | SWP_NOZORDER);
  RECT r;
  ::GetWindowRect(hwnd, &r);
  EXPECT_EQ(r.right - r.left, 320);
  EXPECT_EQ(r.bottom - r.top, 300);
  selector.DestroyWindow();
}

TEST_F(RealWindows, AControlWindowTakesThePlaceholdersPlace) {
  SelectorDialog selector;
  ASSERT_TRUE(selector.Create(CSymbol3DSelectorDlg::IDD, nullptr));
  const HWND dialog = selector.Hwnd();
  const HWND placeholder = ::GetDlgItem(dialog, 8006);
  const HWND before = ::GetWindow(placeholder, GW_HWNDPREV);
  const HWND after = ::GetWindow(placeholder, GW_HWNDNEXT);
  const CRect place = ItemRect(dialog, 8006);
  const HWND control = ::CreateWindowExW(0, L"STATIC", L"control", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                         ::GetModuleHandleW(nullptr), nullptr);
  ASSERT_TRUE(HwndWindow(dialog).ReplaceItem(8006, reinterpret_cast<std::intptr_t>(control)));
  EXPECT_FALSE(::IsWindow(placeholder));
  EXPECT_EQ(::GetDlgItem(dialog, 8006), control);
  EXPECT_EQ(ItemRect(dialog, 8006), place);
  EXPECT_EQ(::GetWindow(control, GW_HWNDPREV), before);
  EXPECT_EQ(::GetWindow(control, GW_HWNDNEXT), after);
  EXPECT_FALSE(HwndWindow(dialog).ReplaceItem(8006 + 1, reinterpret_cast<std::intptr_t>(control)));
  selector.DestroyWindow();
}

TEST_F(RealWindows, AModalRunEndsWithOkAndSavesThePlacement) {
  SelectorDialog selector;
  selector.post_ok = true;
  EXPECT_EQ(selector.DoModal(), IDOK);
  EXPECT_EQ(selector.m_strSymbolPath, CString());  // no control: nothing chosen
  CRect saved;
  EXPECT_TRUE(selector.GetDialogRect(saved));
  EXPECT_EQ(selector.GetWindow(), nullptr);
}

TEST_F(RealWindows, WithoutARuntimeTheSelectorSaysSo) {
  CString path = L"Main\\Rails\\TS35";
  int entities = -1;
  LONG type = -1;
  int ok = -1;
  try {
    CDotNetWrapper().Select3DSymbol(L"C:\\Symbols", 0, path, entities, type, ok);
    ADD_FAILURE() << "no exception";
  } catch (CException* e) {
    EXPECT_NE(dynamic_cast<CRuntimeUnavailableException*>(e), nullptr);
    e->Delete();
  }
  EXPECT_EQ(ok, 0);
  EXPECT_EQ(path, CString(L"Main\\Rails\\TS35"));
  EXPECT_EQ(entities, -1);
}

}  // namespace
