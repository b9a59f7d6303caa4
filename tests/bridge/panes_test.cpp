// The docking pane hosts against the stand-in pane control and pane, with
// the dialog's window from an in-memory template and a docking framework
// that records what the bar asks of it.
#include "bridge_test_util.h"

#include <cadtools/bridge/com_objects.h>
#include <cadtools/bridge/dock_wrappers.h>
#include <cadtools/dialog/dialog_framework.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_values.h>

#include <string>
#include <vector>

namespace cadtools::bridge::testing {
namespace {

// Records the bar's requests; shows and hides the bar's window as the
// default does.
class RecordingDocking final : public ui::DockingFramework {
 public:
  int CreateBar(CBCGPDockingControlBar&) override { return create_result; }
  BOOL LoadState(CBCGPDockingControlBar&, const CString& profile, int index, UINT id) override {
    Log(W("load ") + profile, index, id);
    return TRUE;
  }
  BOOL SaveState(CBCGPDockingControlBar&, const CString& profile, int index, UINT id) override {
    Log(W("save ") + profile, index, id);
    return TRUE;
  }
  void ShowBar(CBCGPDockingControlBar& bar, BOOL show, BOOL delay, BOOL activate) override {
    Log(W("show"), show, delay, activate);
    bar.GetWindow()->Show(show != FALSE);
  }
  void RecalcLayout(CBCGPDockingControlBar&) override { calls.push_back(W("recalc")); }
  void ShowContextMenu(CBCGPDockingControlBar&, CPoint) override { calls.push_back(W("menu")); }

  int create_result = 0;
  std::vector<CString> calls;

 private:
  void Log(const CString& what, long long a, long long b, long long c = -1) {
    CString line;
    line.Format(c < 0 ? W("%s %lld %lld") : W("%s %lld %lld %lld"), what.GetString(), a, b, c);
    calls.push_back(line);
  }
};

class Panes : public RuntimeTest {
 protected:
  void SetUp() override {
    RuntimeTest::SetUp();
    if (IsSkipped()) return;
    ResetScript();
    dialogs_.AddTemplate(CDockDlgWrapper::IDD, {CRect(0, 0, 200, 120), false, {{2219, CRect(0, 0, 200, 120)}}});
    dialogs_before_ = ui::SetDialogFramework(&dialogs_);
    docking_before_ = ui::SetDockingFramework(&docking);
  }
  void TearDown() override {
    ui::SetDialogFramework(dialogs_before_);
    ui::SetDockingFramework(docking_before_);
  }

  // A bar whose framework made its window and sent WM_CREATE.
  void Create(CDockWndWrapper& bar) {
    bar.SetWindow(&bar_window);
    ASSERT_EQ(bar.OnCreate(nullptr), 0);
  }
  ui::MemoryWindow& DialogWindow(CDockWndWrapper& bar) {
    return static_cast<ui::MemoryWindow&>(*bar.m_pDlg->GetWindow());
  }

  RecordingDocking docking;
  ui::MemoryWindow bar_window{CRect(0, 0, 300, 200)};

 private:
  ui::MemoryDialogFramework dialogs_;
  ui::DialogFramework* dialogs_before_ = nullptr;
  ui::DockingFramework* docking_before_ = nullptr;
};

TEST_F(Panes, TheControlTakesThePlaceholdersPlaceAndKeepsAFiveDotMargin) {
  CDockWndWrapper bar;
  Create(bar);
  ui::MemoryWindow& dialog = DialogWindow(bar);
  ASSERT_EQ(dialog.Items().size(), 1U);
  EXPECT_EQ(dialog.Items()[0].id, CDockDlgWrapper::kPlaceholderId);
  EXPECT_EQ(dialog.Items()[0].rect, CRect(0, 0, 200, 120));
  EXPECT_TRUE(bar.m_pDlg->m_ctrlPane.HasControl());

  struct Row {
    int cx, cy;
    CRect control;
  };
  for (const Row row : {Row{20, 12, CRect(5, 5, 15, 7)}, Row{300, 200, CRect(5, 5, 295, 195)},
                        Row{10, 10, CRect(5, 5, 5, 5)}}) {
    bar.OnSize(0, row.cx, row.cy);
    EXPECT_EQ(dialog.GetWindowRect(), CRect(0, 0, row.cx, row.cy));
    EXPECT_EQ(dialog.LastPosFlags(), 20U);  // SWP_NOZORDER | SWP_NOACTIVATE
    bar.m_pDlg->OnSize(0, row.cx, row.cy);
    EXPECT_EQ(dialog.GetItemRect(CDockDlgWrapper::kPlaceholderId), row.control) << row.cx << "x" << row.cy;
    EXPECT_TRUE(dialog.Items()[0].repainted);
  }
  const std::vector<CString> log = CallLog();
  ASSERT_EQ(log.size(), 4U);
  EXPECT_EQ(log[0], CString(W("OrvPaneControl#1.new()")));
  EXPECT_EQ(log[3], CString(W("OrvPaneControl#1.Refresh()")));
}

TEST_F(Panes, ABarWhoseFrameworkFailsHasNoDialog) {
  docking.create_result = -1;
  CDockWndWrapper bar;
  bar.SetWindow(&bar_window);
  EXPECT_EQ(bar.OnCreate(nullptr), -1);
  EXPECT_EQ(bar.m_pDlg->GetWindow(), nullptr);
  EXPECT_TRUE(CallLog().empty());
}

TEST_F(Panes, TheHostsPaneIsJoinedToTheControl) {
  Runtime& r = rt();
  const Object pane = r.Create(W("Orv.API.Manager.OrvDockingPane"));
  const Object other = r.Create(W("Orv.API.Manager.OrvOtherPane"));
  IDispatch* pane_pointer = DispatchPointerFor(pane);
  IDispatch* other_pointer = DispatchPointerFor(other);
  {
    CDockWndWrapper early;  // no windows yet: the pane gets no control
    early.SetDockingPane(pane_pointer);
    early.SetDockingPane(nullptr);  // nothing
  }
  CDockWndWrapper bar;
  Create(bar);
  bar.SetDockingPane(pane_pointer);
  EXPECT_EQ(ManagedFailure([&] { bar.SetDockingPane(other_pointer); }).first, CString(W("System.InvalidCastException")));
  EXPECT_EQ(CallLog(), (std::vector<CString>{W("OrvDockingPane#1.new()"), W("OrvOtherPane#1.new()"),
                                             W("OrvDockingPane#1.set_PaneControl(null)"), W("OrvPaneControl#1.new()"),
                                             W("OrvDockingPane#1.set_PaneControl(OrvPaneControl#1)")}));
  ReleaseComPointer(pane_pointer);
  ReleaseComPointer(other_pointer);
}

TEST_F(Panes, FocusGoesToTheBarWhenActivatedAndOnToTheDialog) {
  CDockWndWrapper bar;
  Create(bar);
  ui::MemoryWindow& dialog = DialogWindow(bar);
  ui::MemoryWindow elsewhere;

  elsewhere.SetFocus();
  bar.ShowControlBar(TRUE, FALSE, FALSE);  // shown, not activated: the focus stays
  EXPECT_TRUE(elsewhere.HasFocus());
  bar.ShowControlBar(TRUE, FALSE, TRUE);
  EXPECT_TRUE(bar_window.HasFocus());

  bar.OnSetFocus(nullptr);  // the bar passes it on while visible
  EXPECT_TRUE(dialog.HasFocus());

  docking.calls.clear();
  elsewhere.SetFocus();
  bar.Activate(FALSE);  // visible: the bar takes the focus, nothing is shown or laid out
  EXPECT_TRUE(bar_window.HasFocus());
  EXPECT_TRUE(docking.calls.empty());

  bar.ShowControlBar(FALSE, FALSE, FALSE);
  elsewhere.SetFocus();
  bar.OnSetFocus(nullptr);
  bar.Activate(FALSE);  // hidden: nothing, and never hidden further
  EXPECT_TRUE(elsewhere.HasFocus());
  bar.Activate(TRUE);
  EXPECT_TRUE(bar_window.IsVisible());
  EXPECT_TRUE(bar_window.HasFocus());
  EXPECT_EQ(docking.calls,
            (std::vector<CString>{W("show 0 0 0"), W("show 1 0 1"), W("recalc")}));
}

TEST_F(Panes, NoContextMenuAndEnterOrEscapeLeaveThePaneOpen) {
  CDockWndWrapper bar;
  Create(bar);
  bar.OnContextMenu(nullptr, CPoint(10, 10));
  EXPECT_TRUE(docking.calls.empty());
  static_cast<CBCGPDockingControlBar&>(bar).CBCGPDockingControlBar::OnContextMenu(nullptr, CPoint(10, 10));
  EXPECT_EQ(docking.calls, std::vector<CString>{W("menu")});  // what the wrapper keeps from the user

  bar.m_pDlg->OnOK();
  bar.m_pDlg->OnCancel();
  EXPECT_TRUE(DialogWindow(bar).IsVisible());
  EXPECT_FALSE(bar.m_pDlg->IsEnded());
}

TEST_F(Panes, StateIsKeptByNameSuffixAndTheFixedIndex) {
  struct Row {
    int skip;
    const WCHAR* profile;
    const WCHAR* suffix;
    std::vector<CString> calls;
  };
  const Row rows[] = {
      {0, W("Workspace"), W("Tree"), {W("load WorkspaceTree- 2221 7"), W("save WorkspaceTree- 2221 7")}},
      {0, nullptr, W(""), {W("load - 2221 7"), W("save - 2221 7")}},
      {1, W("Workspace"), W("Tree"), {}},
  };
  for (const Row& row : rows) {
    CDockWndWrapper bar;
    bar.m_bSkipState = row.skip;
    bar.m_strStateName = row.suffix;
    docking.calls.clear();
    EXPECT_EQ(bar.LoadState(row.profile, 5, 7), 1);  // the caller's index 5 is not used
    EXPECT_EQ(bar.SaveState(row.profile, 3, 7), 1);
    EXPECT_EQ(docking.calls, row.calls);
  }
}

TEST_F(Panes, TheDefaultFrameworkKeepsTheStateBelowTheRoot) {
  ui::SetDockingFramework(nullptr);
  CRegBase::SetRegBase(W("Software\\cadtools-tests\\panes\\"));
  CRegBase(W("WorkspaceTree-DockingBar-2221\\")).removeKey();  // from an earlier run
  CDockWndWrapper bar;
  bar.m_strStateName = W("Tree");
  bar.SetWindow(&bar_window);
  EXPECT_FALSE(bar.LoadState(W("Workspace"), 0, 7));  // nothing stored yet
  bar_window.MoveWindow(10, 20, 300, 200, TRUE);
  bar_window.Show(false);
  EXPECT_TRUE(bar.SaveState(W("Workspace"), 0, 7));
  EXPECT_EQ(static_cast<DWORD>(CRegDWORD(W("WorkspaceTree-DockingBar-2221\\Visible"), 9)), 0U);
  EXPECT_EQ(static_cast<DWORD>(CRegDWORD(W("WorkspaceTree-DockingBar-2221\\Id"), 9)), 7U);
  EXPECT_EQ(static_cast<CRect>(CRegRect(W("WorkspaceTree-DockingBar-2221\\Rect"))), CRect(10, 20, 310, 220));
  bar_window.Show(true);
  bar_window.MoveWindow(0, 0, 50, 50, TRUE);
  EXPECT_TRUE(bar.LoadState(W("Workspace"), 0, 7));
  EXPECT_FALSE(bar_window.IsVisible());
  EXPECT_EQ(bar_window.GetWindowRect(), CRect(10, 20, 310, 220));
  ui::SetDockingFramework(&docking);
}

}  // namespace
}  // namespace cadtools::bridge::testing
