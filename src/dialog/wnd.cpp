// CWnd and CBCGPDialog: window objects over the Window interface.
#include <cadtools/dialog/bcgp_dialog.h>
#include <cadtools/dialog/dialog_framework.h>
#include <cadtools/dialog/wnd.h>

#include <utility>

CWnd::~CWnd() = default;

void CWnd::AdoptWindow(std::unique_ptr<cadtools::ui::Window> window) noexcept {
  m_ownedWindow = std::move(window);
  m_pWindow = m_ownedWindow.get();
}

BOOL CWnd::DestroyWindow() {
  if (m_pWindow == nullptr) return FALSE;
  m_pWindow = nullptr;
  m_ownedWindow.reset();
  return TRUE;
}

void CWnd::SetFocus() {
  if (m_pWindow) m_pWindow->SetFocus();
}

BOOL CWnd::IsWindowVisible() const { return m_pWindow != nullptr && m_pWindow->IsVisible() ? TRUE : FALSE; }

CBCGPDialog::CBCGPDialog(UINT nIDTemplate, CWnd* pParentWnd) noexcept
    : m_nTemplateId(nIDTemplate), m_pParentWnd(pParentWnd) {}

BOOL CBCGPDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) {
  m_nTemplateId = nIDTemplate;
  m_pParentWnd = pParentWnd;
  cadtools::ui::Window* parent = pParentWnd != nullptr ? pParentWnd->GetWindow() : nullptr;
  return cadtools::ui::CurrentDialogFramework().CreateDialogWindow(*this, nIDTemplate, parent) ? TRUE : FALSE;
}

INT_PTR CBCGPDialog::DoModal() { return cadtools::ui::CurrentDialogFramework().RunModal(*this); }

void CBCGPDialog::EndDialog(int nResult) {
  CBCGPDialogAccess::MarkEnded(*this, nResult);
  if (m_pFramework != nullptr) m_pFramework->EndDialog(*this, nResult);
}

BOOL CBCGPDialog::DestroyWindow() {
  if (m_pFramework != nullptr && m_pWindow != nullptr) {
    cadtools::ui::DialogFramework* made_by = std::exchange(m_pFramework, nullptr);
    made_by->DestroyDialogWindow(*this);
  }
  return CWnd::DestroyWindow();
}

BOOL CBCGPDialog::UpdateData(BOOL bSaveAndValidate) {
  CDataExchange dx(this, bSaveAndValidate);
  DoDataExchange(&dx);
  return TRUE;
}

void CBCGPDialog::DoDataExchange(CDataExchange*) {}

BOOL CBCGPDialog::OnInitDialog() {
  UpdateData(FALSE);
  return TRUE;
}

void CBCGPDialog::OnOK() { EndDialog(IDOK); }

void CBCGPDialog::OnCancel() { EndDialog(IDCANCEL); }

void CBCGPDialog::OnSize(UINT, int, int) {}

void CBCGPDialog::OnGetMinMaxInfo(MINMAXINFO*) {}

void CBCGPDialog::OnDestroy() {}

void CBCGPDialogAccess::BeginRun(CBCGPDialog& dialog, cadtools::ui::DialogFramework& framework, bool modal) noexcept {
  dialog.m_pFramework = &framework;
  dialog.m_bModal = modal;
  dialog.m_bEnded = false;
  dialog.m_nResult = 0;
}

void CBCGPDialogAccess::MarkEnded(CBCGPDialog& dialog, int result) noexcept {
  dialog.m_bEnded = true;
  dialog.m_nResult = result;
}
