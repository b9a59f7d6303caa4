// The pane and selector layouts, the selector's minimum size and control
// hosting, on in-memory windows: arithmetic that needs no runtime.
#include "bridge_test_util.h"

#include <cadtools/bridge/dock_wrappers.h>
#include <cadtools/bridge/symbol_selector.h>

namespace cadtools::bridge::testing {
namespace {

TEST(PaneLayout, FivePixelsAroundThePlaceholder) {
  struct Row {
    int cx, cy;
    CRect item;
  };
  for (const Row row : {Row{20, 12, CRect(5, 5, 15, 7)}, Row{640, 480, CRect(5, 5, 635, 475)}}) {
    ui::MemoryWindow window(CRect(0, 0, row.cx, row.cy));
    window.AddItem(CDockDlgWrapper::kPlaceholderId, CRect(0, 0, 50, 50));
    CDockDlgWrapper dialog;
    dialog.SetWindow(&window);
    dialog.OnSize(0, row.cx, row.cy);  // no control yet: nothing to refresh, no runtime asked
    EXPECT_EQ(window.GetItemRect(CDockDlgWrapper::kPlaceholderId), row.item);
    EXPECT_TRUE(window.Items()[0].repainted);
  }
  CDockDlgWrapper without_window;
  without_window.OnSize(0, 20, 12);
}

TEST(SelectorLayout, ButtonsTakeTheCancelButtonsSize) {
  struct Row {
    int cx, cy;
    CSize cancel;
    CRect control, ok, cancel_at;
  };
  const Row rows[] = {
      {600, 400, CSize(75, 23), CRect(7, 7, 593, 356), CRect(436, 370, 511, 393), CRect(518, 370, 593, 393)},
      {320, 300, CSize(80, 30), CRect(7, 7, 313, 249), CRect(146, 263, 226, 293), CRect(233, 263, 313, 293)},
  };
  for (const Row& row : rows) {
    ui::MemoryWindow window(CRect(0, 0, row.cx, row.cy));
    window.AddItem(8006, CRect(0, 0, 10, 10));
    window.AddItem(IDOK, CRect(0, 0, 50, 14));  // OK's own size does not count
    window.AddItem(IDCANCEL, CRect(0, 0, row.cancel.cx, row.cancel.cy));
    CSymbol3DSelectorDlg dialog;
    dialog.SetWindow(&window);
    dialog.OnSize(0, row.cx, row.cy);
    EXPECT_EQ(window.GetItemRect(8006), row.control);
    EXPECT_EQ(window.GetItemRect(IDOK), row.ok);
    EXPECT_EQ(window.GetItemRect(IDCANCEL), row.cancel_at);
  }
  // Without a Cancel button nothing moves.
  ui::MemoryWindow bare(CRect(0, 0, 600, 400));
  bare.AddItem(8006, CRect(1, 2, 3, 4));
  CSymbol3DSelectorDlg dialog;
  dialog.SetWindow(&bare);
  dialog.OnSize(0, 600, 400);
  EXPECT_EQ(bare.GetItemRect(8006), CRect(1, 2, 3, 4));
}

TEST(SelectorLayout, NeverSmallerThan320By300) {
  CSymbol3DSelectorDlg dialog;
  MINMAXINFO info{};
  info.ptMaxTrackSize = POINT{2000, 1500};
  dialog.OnGetMinMaxInfo(&info);
  EXPECT_EQ(info.ptMinTrackSize.x, 320);
  EXPECT_EQ(info.ptMinTrackSize.y, 300);
  EXPECT_EQ(info.ptMaxTrackSize.x, 2000);  // the rest is the framework's

  ui::MemoryWindow window(CRect(0, 0, 600, 400));
  window.SetMinMaxHandler([&dialog](MINMAXINFO* m) { dialog.OnGetMinMaxInfo(m); });
  window.MoveWindow(10, 10, 100, 500, TRUE);
  EXPECT_EQ(window.GetWindowRect(), CRect(10, 10, 330, 510));
  window.SetWindowPos(0, 0, 1, 1, ui::kSwpNoMove);
  EXPECT_EQ(window.GetWindowRect(), CRect(10, 10, 330, 310));
}

TEST(Hosting, AControlTakesThePlaceholdersRectangleIdAndZOrder) {
  ui::MemoryWindow window(CRect(0, 0, 400, 300));
  window.AddItem(1, CRect(0, 0, 10, 10));
  window.AddItem(8006, CRect(7, 7, 300, 200), 0x50000000);
  window.AddItem(2, CRect(0, 0, 10, 10));
  EXPECT_FALSE(window.ReplaceItem(9999, 42));
  ASSERT_TRUE(window.ReplaceItem(8006, 42));
  ASSERT_EQ(window.Items().size(), 3U);
  const ui::MemoryWindow::Item& control = window.Items()[1];  // where the placeholder was
  EXPECT_EQ(control.id, 8006);
  EXPECT_EQ(control.rect, CRect(7, 7, 300, 200));
  EXPECT_EQ(control.style, 0x50000000U);
  EXPECT_EQ(control.native, 42);
}

}  // namespace
}  // namespace cadtools::bridge::testing
