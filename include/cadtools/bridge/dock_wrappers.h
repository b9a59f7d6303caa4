// The docking pane that hosts the host's managed pane control: a docking
// bar (CDockWndWrapper) that owns a child dialog (CDockDlgWrapper), which
// hosts one Orv.API.Manager.OrvPaneControl in place of its placeholder.
//
//   CDockWndWrapper bar;                 // the dialog object, no windows yet
//   bar.m_strStateName = u"Tree";        // the host's suffix for the state
//   bar.SetWindow(&barWindow);           // the host's docking framework makes the bar
//   bar.OnCreate(nullptr);               // the child dialog from template 2218
//   bar.SetDockingPane(pane);            // the host's pane (an IDispatch), joined to the control
//   bar.OnSize(0, 300, 200);             // the dialog at (0, 0, 300, 200)
//   bar.SaveState(u"Workspace", 3, 7);   // kept as "WorkspaceTree-", index 2221
//
// The dialog keeps a 5-pixel margin around the control. Enter and Escape
// inside the pane never close it: the dialog lives as long as its bar. The
// bar's context menu is swallowed.
#pragma once

#include <cadtools/bridge/docking_bar.h>
#include <cadtools/bridge/host_types.h>
#include <cadtools/bridge/winforms_control.h>
#include <cadtools/compat/cstring.h>
#include <cadtools/dialog/bcgp_dialog.h>
#include <cadtools/export.h>

#include <memory>

#if defined(_WIN32)
#include <oaidl.h>
#endif

class CADTOOLS_API CDockDlgWrapper : public CBCGPDialog {
 public:
  // The template and its placeholder, which the hosted control takes over.
  static constexpr UINT IDD = 2218;
  static constexpr int kPlaceholderId = 2219;

  explicit CDockDlgWrapper(CWnd* pParent = nullptr) noexcept;

  // Makes the control in place of the placeholder once.
  void DoDataExchange(CDataExchange* pDX) override;
  // Joins the host's docking pane to the hosted control (PaneControl);
  // nothing for null. An object that is no OrvDockingPane raises the
  // runtime's invalid-cast exception; the pane is not kept.
  void SetDockingPane(IDispatch* a_pPane);
  // The control 5 pixels in from every side, then refreshed.
  void OnSize(UINT nType, int cx, int cy) override;
  // Enter and Escape: nothing.
  void OnOK() override;
  void OnCancel() override;

  CWinFormsControl<Orv::API::Manager::OrvPaneControl> m_ctrlPane;
};

class CADTOOLS_API CDockWndWrapper : public CBCGPDockingControlBar {
 public:
  // The index every bar of this class keeps its state under.
  static constexpr int kStateIndex = 2221;

  CDockWndWrapper();
  // Destroys the dialog's window, then the dialog.
  ~CDockWndWrapper() override;

  // The framework's creation; then the child dialog from template 2218,
  // whose own success is not asked. -1 when the framework fails.
  int OnCreate(LPCREATESTRUCTW lpCreateStruct) override;
  // The dialog fills the bar: (0, 0, cx, cy), no Z order, no activation.
  void OnSize(UINT nType, int cx, int cy) override;
  // The bar passes the focus on to the dialog while it is visible.
  void OnSetFocus(CWnd* pOldWnd) override;
  // Nothing: the framework's menu is not shown.
  void OnContextMenu(CWnd* pWnd, CPoint point) override;
  // Shown and activated, the bar takes the focus.
  void ShowControlBar(BOOL bShow, BOOL bDelay, BOOL bActivate) override;
  // 1 without a word when m_bSkipState is set; otherwise the framework's
  // with the profile name + m_strStateName + "-" and index 2221, whatever
  // nIndex says.
  BOOL LoadState(LPCWSTR lpszProfileName = nullptr, int nIndex = -1, UINT uiID = static_cast<UINT>(-1)) override;
  BOOL SaveState(LPCWSTR lpszProfileName = nullptr, int nIndex = -1, UINT uiID = static_cast<UINT>(-1)) override;

  // Shows and activates the bar (then lays the frame out again), or gives
  // a visible bar the focus; never hides it.
  void Activate(BOOL bShow);
  void SetDockingPane(IDispatch* a_pPane);

  int m_bSkipState;
  CString m_strStateName;
  std::unique_ptr<CDockDlgWrapper> m_pDlg;

 private:
  CString ProfileName(LPCWSTR lpszProfileName) const;
};
