// CBaseDialog against an in-memory window: what lands in the registry on
// opening, saving, restoring and clearing, and where the window ends up.
#include <cadtools/dialog/base_dialog.h>

#include <string>

#include "dialog_test_util.h"

namespace cadtools::test {
namespace {

constexpr CRect kNone(0, 0, 0, 0);
constexpr CRect kMarker(-1, -1, -1, -1);
// Where Windows parks a minimised window.
constexpr CRect kParked(-32000, -32000, -31840, -31972);

// Counts what the framework hooks receive.
class ProbeDialog : public CBaseDialog {
 public:
  using CBaseDialog::CBaseDialog;
  int sizes = 0;

 protected:
  void DefaultSizeHandling(UINT, int, int) override { ++sizes; }
};

class CountedButton : public CButtonST {
 public:
  explicit CountedButton(int& alive) : alive_(alive) { ++alive_; }
  ~CountedButton() override { --alive_; }

 private:
  int& alive_;
};

// First opening: both values created as zeros, no placement, the window
// left where it is; then the names and bytes saving writes.
TEST_F(DialogPlacement, FirstOpeningThenSavedBytesUnderRunTogetherNames) {
  ui::MemoryWindow window(CRect(10, 20, 410, 320));
  CBaseDialog dialog(130, &window);
#if defined(_WIN32)
  const CSize d = ui::PrimaryDisplaySize();
  const std::string expected = "IDD130" + std::to_string(d.cx) + "x" + std::to_string(d.cy) + "dialog_tests";
  const CString name(std::basic_string<WCHAR>(expected.begin(), expected.end()).c_str());
#else
  const CString name(W("IDD1301920x1080Host"));
#endif
  EXPECT_EQ(dialog.GetRegKey(), CString(W("Settings\\WindowPos\\")) + name);

  EXPECT_FALSE(Value(name).found);
  EXPECT_EQ(dialog.OnInitDialog(), TRUE);
  EXPECT_EQ(dialog.m_bMaximized, 0);
  EXPECT_TRUE(dialog.IsVisualManagerStyleEnabled());
  for (const CString& n : {name, name + W("Maximized")}) {
    EXPECT_EQ(Value(n).type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(Value(n).bytes, Bytes(16, 0));
  }
  CRect saved(1, 2, 3, 4);
  EXPECT_EQ(dialog.GetDialogRect(saved), FALSE);
  EXPECT_EQ(saved, kNone);
  dialog.RestorePos();
  EXPECT_EQ(window.MoveCount(), 0);

  dialog.SavePos();
  EXPECT_EQ(Value(name).bytes, (Bytes{10, 0, 0, 0, 20, 0, 0, 0, 0x9a, 1, 0, 0, 0x40, 1, 0, 0}));
  window.SetWindowRect(CRect(-5, -300, 2, -1));
  window.SetZoomed(true);
  dialog.SavePos();
  EXPECT_EQ(Value(name + W("Maximized")).bytes, Bytes(16, 0xff));
#if !defined(_WIN32)
  // The number goes through a signed conversion, as it always has.
  ui::SetDisplayLayout("0,0,1024,768;1024,0,1920,1080");
  CBaseDialog high(0x80000000u);
  EXPECT_EQ(ValueName(high), CString(W("IDD-21474836481024x768Host")));
#endif
}


// Each module, template and (off Windows, where the display can be
// chosen) resolution keeps its own placement.
TEST_F(DialogPlacement, EachContextKeepsItsOwnPlacement) {
  struct Context {
    bool secondModule;
    UINT id;
    const char* layout;
    CRect rect;
  };
  const Context contexts[] = {
      {false, 130, "0,0,1920,1080", CRect(10, 10, 300, 200)},
      {true, 130, "0,0,1920,1080", CRect(20, 30, 500, 400)},
      {false, 131, "0,0,1920,1080", CRect(40, 50, 240, 150)},
#if !defined(_WIN32)
      {false, 130, "0,0,2560,1440", CRect(1000, 900, 2000, 1400)},
#endif
  };
  ui::MemoryWindow window;
  for (int pass = 0; pass < 2; ++pass) {
    for (const Context& c : contexts) {
      UseModule(c.secondModule);
#if !defined(_WIN32)
      ui::SetDisplayLayout(c.layout);
#endif
      window.SetWindowRect(c.rect);
      CBaseDialog dialog(c.id, &window);
      if (pass == 0) {
        dialog.SavePos();
        continue;
      }
      CRect saved;
      EXPECT_EQ(dialog.GetDialogRect(saved), TRUE);
      EXPECT_EQ(saved, c.rect);
    }
  }
}

TEST_F(DialogPlacement, ClosingMaximisedKeepsLastNormalPlacement) {
  ui::MemoryWindow window(CRect(100, 100, 500, 400));
  CBaseDialog(130, &window).OnDestroy();
  window.SetWindowRect(CRect(-8, -8, 1928, 1048));
  window.SetZoomed(true);
  CBaseDialog(130, &window).OnDestroy();

  CBaseDialog reopened(130, &window);
  const CString name = ValueName(reopened);
  EXPECT_EQ(Value(name).bytes, RectBytes(CRect(100, 100, 500, 400)));
  EXPECT_EQ(Value(name + W("Maximized")).bytes, RectBytes(kMarker));
  reopened.OnInitDialog();
  EXPECT_EQ(reopened.m_bMaximized, 1);

  window.SetZoomed(false);
  reopened.OnDestroy();
  EXPECT_EQ(Value(name + W("Maximized")).bytes, Bytes(16, 0));
}

TEST_F(DialogPlacement, PlacementOffEveryDisplayIsForgottenWithItsMarker) {
  struct Case {
    const char* what;
    CRect placement;
    CRect marker;
    bool kept;
    int maximized;
  };
  const Case cases[] = {
      {"parked while minimised", kParked, kMarker, false, 0},
      {"far right of every display", CRect(5000, 0, 5200, 100), kMarker, false, 0},
      {"on the primary display", CRect(100, 100, 500, 400), kMarker, true, 1},
      {"one pixel on screen", CRect(-100, -100, 1, 1), kNone, true, 0},
      {"no area: not a placement", CRect(-5000, 10, -5000, 400), kMarker, true, 1},
      {"marker almost maximised", CRect(100, 100, 500, 400), CRect(-1, -1, -1, 0), true, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    CBaseDialog dialog(130);
    const CString name = ValueName(dialog);
    Store(name, c.placement);
    Store(name + W("Maximized"), c.marker);
    EXPECT_EQ(dialog.OnInitDialog(), TRUE);
    EXPECT_EQ(dialog.m_bMaximized, c.maximized);
    EXPECT_EQ(Value(name).bytes, RectBytes(c.kept ? c.placement : kNone));
    EXPECT_EQ(Value(name + W("Maximized")).bytes, RectBytes(c.kept ? c.marker : kNone));
  }
}

TEST_F(DialogPlacement, RestoreSizesResizableFramesAndOnlyMovesFixedOnes) {
  struct Case {
    const char* what;
    bool resizable;
    CRect saved;
    CRect expected;  // from a window at (0, 0, 300, 200)
  };
  const Case cases[] = {
      {"resizable", true, CRect(40, 50, 640, 450), CRect(40, 50, 640, 450)},
      {"fixed frame", false, CRect(40, 50, 640, 450), CRect(40, 50, 340, 250)},
      {"negative corner", true, CRect(-200, -20, 100, 80), CRect(-200, -20, 100, 80)},
      {"nothing saved", true, kNone, CRect(0, 0, 300, 200)},
      {"no area", true, CRect(40, 50, 40, 450), CRect(0, 0, 300, 200)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ui::MemoryWindow window(CRect(0, 0, 300, 200), c.resizable);
    CBaseDialog dialog(130, &window);
    Store(ValueName(dialog), c.saved);
    dialog.RestorePos();
    EXPECT_EQ(window.GetWindowRect(), c.expected);
    EXPECT_EQ(window.MoveCount(), (c.expected == RECT{0, 0, 300, 200}) ? 0 : 1);
    if (window.MoveCount()) {
      EXPECT_TRUE(window.LastMoveRepainted());
    }
    EXPECT_EQ(Value(ValueName(dialog)).bytes, RectBytes(c.saved));  // written back unchanged
  }
}

TEST_F(DialogPlacement, ClearingKeepsOnlyTheCallersPlacement) {
  ui::MemoryWindow window(CRect(10, 20, 310, 220));
  CBaseDialog first(130, &window);
  window.SetZoomed(true);
  first.SavePos();  // marker only
  window.SetZoomed(false);
  CBaseDialog second(131, &window);
  second.SavePos();
  Store(W("IDD1301x1Elsewhere"), CRect(1, 2, 3, 4));

  Store(ValueName(first), CRect(5, 6, 700, 800));
  first.ClearAllSavedPosition();
  EXPECT_EQ(Value(ValueName(first)).bytes, RectBytes(CRect(5, 6, 700, 800)));
  for (const CString& gone : {ValueName(first) + W("Maximized"), ValueName(second),
                              ValueName(second) + W("Maximized"), CString(W("IDD1301x1Elsewhere"))}) {
    EXPECT_FALSE(Value(gone).found);
  }

  // With nothing saved for the caller, its zeros come back.
  second.ClearAllSavedPosition();
  EXPECT_FALSE(Value(ValueName(first)).found);
  EXPECT_EQ(Value(ValueName(second)).bytes, Bytes(16, 0));
}

TEST_F(DialogPlacement, DestroySavesAndDeletesOwnedButtons) {
  int alive = 0;
  ui::MemoryWindow window(CRect(7, 8, 90, 100));
  {
    CBaseDialog dialog(130, &window);
    dialog.m_arrButtons.Add(new CountedButton(alive));
    dialog.m_arrButtons.Add(nullptr);
    dialog.m_arrButtons.Add(new CountedButton(alive));
    EXPECT_EQ(alive, 2);
    dialog.OnDestroy();
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(dialog.m_arrButtons.GetSize(), 0);
    EXPECT_EQ(Value(ValueName(dialog)).bytes, RectBytes(CRect(7, 8, 90, 100)));

    dialog.m_arrButtons.Add(new CountedButton(alive));  // never destroyed as a window
  }
  EXPECT_EQ(alive, 0);
}

TEST(BaseDialog, SizeMessagesAndModalState) {
  struct Case {
    UINT type;
    int passedOn;
  };
  // SIZE_RESTORED, SIZE_MINIMIZED, SIZE_MAXIMIZED, SIZE_MAXSHOW, SIZE_MAXHIDE
  const Case cases[] = {{0, 1}, {1, 0}, {2, 0}, {3, 1}, {4, 1}};
  for (const Case& c : cases) {
    ProbeDialog dialog(1);
    dialog.OnSize(c.type, 640, 480);
    EXPECT_EQ(dialog.sizes, c.passedOn) << c.type;
  }

  ui::MemoryWindow window;
  ProbeDialog dialog(1, &window);
  dialog.SetWindow(nullptr);
  dialog.BeginModalState();  // no window yet: nothing to do
  dialog.SetWindow(&window);
  dialog.BeginModalState();
  EXPECT_FALSE(window.IsEnabled());
  dialog.EndModalState();
  EXPECT_TRUE(window.IsEnabled());
}

}  // namespace
}  // namespace cadtools::test
