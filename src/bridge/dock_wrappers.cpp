#include <cadtools/bridge/com_objects.h>
#include <cadtools/bridge/dock_wrappers.h>

#include <cadtools/compat/exceptions.h>

#include <new>

CDockDlgWrapper::CDockDlgWrapper(CWnd* pParent) noexcept : CBCGPDialog(IDD, pParent) {}

void CDockDlgWrapper::DoDataExchange(CDataExchange* pDX) {
  CBCGPDialog::DoDataExchange(pDX);
  if (!m_ctrlPane.HasControl() && GetWindow() != nullptr) {
    m_ctrlPane.CreateManagedControl(*GetWindow(), kPlaceholderId);
  }
}

void CDockDlgWrapper::SetDockingPane(IDispatch* a_pPane) {
  if (a_pPane == nullptr) return;
  const cadtools::bridge::Object pane =
      cadtools::bridge::ObjectForComPointer(a_pPane, Orv::API::Manager::OrvDockingPane::kTypeName);
  if (pane.IsNull()) return;
  pane.Set(CADTOOLS_WIDE("PaneControl"), m_ctrlPane.GetControl());
}

void CDockDlgWrapper::OnSize(UINT nType, int cx, int cy) {
  CBCGPDialog::OnSize(nType, cx, cy);
  cadtools::ui::Window* window = GetWindow();
  if (window == nullptr) return;
  // The control (or its placeholder: both carry the id) keeps a fixed
  // margin of 5 pixels.
  if (window->HasItem(kPlaceholderId)) {
    const CRect client = window->GetClientRect();
    window->MoveItem(kPlaceholderId, 5, 5, client.Width() - 10, client.Height() - 10, TRUE);
  }
  if (m_ctrlPane.HasWindow()) m_ctrlPane->Call(CADTOOLS_WIDE("Refresh"));
}

void CDockDlgWrapper::OnOK() {}

void CDockDlgWrapper::OnCancel() {}

CDockWndWrapper::CDockWndWrapper() : m_bSkipState(0), m_pDlg(new (std::nothrow) CDockDlgWrapper(nullptr)) {}

CDockWndWrapper::~CDockWndWrapper() {
  if (m_pDlg) {
    m_pDlg->DestroyWindow();
    m_pDlg.reset();
  }
}

int CDockWndWrapper::OnCreate(LPCREATESTRUCTW lpCreateStruct) {
  if (CBCGPDockingControlBar::OnCreate(lpCreateStruct) == -1) return -1;
  // A pane without its dialog is only empty; the host is not told, even
  // when the hosted control could not be made.
  if (m_pDlg) {
    try {
      m_pDlg->Create(CDockDlgWrapper::IDD, this);
    } catch (CException* e) {
      e->Delete();
    }
  }
  return 0;
}

void CDockWndWrapper::OnSize(UINT nType, int cx, int cy) {
  CBCGPDockingControlBar::OnSize(nType, cx, cy);
  if (m_pDlg && m_pDlg->GetWindow() != nullptr) {
    m_pDlg->GetWindow()->SetWindowPos(0, 0, cx, cy, cadtools::ui::kSwpNoZOrder | cadtools::ui::kSwpNoActivate);
  }
}

void CDockWndWrapper::OnSetFocus(CWnd* pOldWnd) {
  CBCGPDockingControlBar::OnSetFocus(pOldWnd);
  if (IsVisible() && m_pDlg) m_pDlg->SetFocus();
}

void CDockWndWrapper::OnContextMenu(CWnd*, CPoint) {}

void CDockWndWrapper::ShowControlBar(BOOL bShow, BOOL bDelay, BOOL bActivate) {
  CBCGPDockingControlBar::ShowControlBar(bShow, bDelay, bActivate);
  if (bShow && bActivate) SetFocus();
}

CString CDockWndWrapper::ProfileName(LPCWSTR lpszProfileName) const {
  return CString(lpszProfileName) + m_strStateName + CADTOOLS_WIDE("-");
}

BOOL CDockWndWrapper::LoadState(LPCWSTR lpszProfileName, int, UINT uiID) {
  if (m_bSkipState) return 1;
  return CBCGPDockingControlBar::LoadState(ProfileName(lpszProfileName), kStateIndex, uiID);
}

BOOL CDockWndWrapper::SaveState(LPCWSTR lpszProfileName, int, UINT uiID) {
  if (m_bSkipState) return 1;
  return CBCGPDockingControlBar::SaveState(ProfileName(lpszProfileName), kStateIndex, uiID);
}

void CDockWndWrapper::Activate(BOOL bShow) {
  if (bShow) {
    ShowControlBar(TRUE, FALSE, TRUE);
    RecalcLayout();
  } else if (IsVisible()) {
    SetFocus();
  }
}

void CDockWndWrapper::SetDockingPane(IDispatch* a_pPane) {
  if (m_pDlg) m_pDlg->SetDockingPane(a_pPane);
}
