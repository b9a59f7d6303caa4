// CBaseDialog: placement kept in the registry per dialog, display size and
// resource module.
#include <cadtools/dialog/base_dialog.h>

#include <cadtools/dialog/displays.h>
#include <cadtools/dialog/resource_module.h>
#include <cadtools/registry/reg_values.h>

namespace {

// wParam values of the size message.
constexpr UINT kSizeMinimized = 1;
constexpr UINT kSizeMaximized = 2;

// What the marker holds after the dialog was closed maximised, and
// otherwise. The host reads these exact values.
constexpr CRect kMaximizedMarker(-1, -1, -1, -1);
constexpr CRect kNone(0, 0, 0, 0);

CString MarkerKey(const CString& key) { return key + CADTOOLS_WIDE("Maximized"); }

}  // namespace

CBaseDialog::CBaseDialog(UINT nIDTemplate, cadtools::ui::Window* window, CWnd* pParentWnd)
    : CBCGPDialog(nIDTemplate, pParentWnd), m_bVisualManagerStyle(1), m_bMaximized(0), m_nIDTemplate(nIDTemplate) {
  SetWindow(window);
}

CBaseDialog::~CBaseDialog() { DeleteButtons(); }

void CBaseDialog::BeginModalState() {
  if (m_pWindow) m_pWindow->Enable(false);
}

void CBaseDialog::EndModalState() {
  if (m_pWindow) m_pWindow->Enable(true);
}

CString CBaseDialog::GetCurrentModuleName() { return cadtools::ui::GetResourceModuleName(); }

CString CBaseDialog::GetRegKey() {
  const CSize display = cadtools::ui::PrimaryDisplaySize();
  CString key;
  key.Format(CADTOOLS_WIDE("Settings\\WindowPos\\IDD%d%dx%d%s"), m_nIDTemplate, display.cx, display.cy,
             GetCurrentModuleName());
  return key;
}

BOOL CBaseDialog::GetDialogRect(CRect& rect) {
  CRegRect placement(GetRegKey(), kNone);
  rect = placement;
  return !rect.IsRectEmpty();
}

BOOL CBaseDialog::OnInitDialog() {
  CBCGPDialog::OnInitDialog();
  const CString key = GetRegKey();
  CRegRect marker(MarkerKey(key), kNone);
  CRegRect placement(key, kNone);

  const CRect saved = placement;
  if (!saved.IsRectEmpty() && !cadtools::ui::AnyDisplayIntersects(saved)) {
    // Nowhere to be seen: minimised when saved, or on a display that has
    // gone. Forget the place and the maximised state together.
    placement = kNone;
    marker = kNone;
  }
  const CRect state = marker;
  if (state == static_cast<const RECT&>(kMaximizedMarker)) m_bMaximized = 1;

  if (m_bVisualManagerStyle) EnableVisualManagerStyle(TRUE, TRUE);
  return TRUE;  // both values are written back as they stand
}

void CBaseDialog::RestorePos() {
  if (!m_pWindow) return;
  CRegRect placement(GetRegKey(), kNone);
  const CRect r = placement;
  if (r.IsRectEmpty()) return;
  if (m_pWindow->HasResizableFrame()) {
    m_pWindow->MoveWindow(r.left, r.top, r.Width(), r.Height(), TRUE);
  } else {
    // A fixed frame was laid out for its own size; only its place is taken.
    const CRect current = m_pWindow->GetWindowRect();
    m_pWindow->MoveWindow(r.left, r.top, current.Width(), current.Height(), TRUE);
  }
}

void CBaseDialog::SavePos() {
  if (!m_pWindow) return;
  CRegRect marker(MarkerKey(GetRegKey()), kNone);
  const bool zoomed = m_pWindow->IsZoomed();
  marker = zoomed ? kMaximizedMarker : kNone;
  if (!zoomed) {
    // A maximised window's rectangle is the whole display; keeping the last
    // normal one brings the dialog back there once it is un-maximised.
    CRegRect placement(GetRegKey(), kNone);
    placement = m_pWindow->GetWindowRect();
  }
}

void CBaseDialog::ClearAllSavedPosition() {
  CRegRect placement(GetRegKey(), kNone);
  placement.removeKey();
  // placement writes the rectangle it read back into a new key when it
  // goes: this dialog keeps its place.
}

void CBaseDialog::OnDestroy() {
  SavePos();
  CBCGPDialog::OnDestroy();
  DeleteButtons();
}

void CBaseDialog::OnSize(UINT nType, int cx, int cy) {
  CBCGPDialog::OnSize(nType, cx, cy);
  if (nType != kSizeMinimized && nType != kSizeMaximized) DefaultSizeHandling(nType, cx, cy);
}

void CBaseDialog::EnableVisualManagerStyle(BOOL bEnable, BOOL /*bNCArea*/) {
  m_bVisualManagerStyleEnabled = bEnable != FALSE;
}

void CBaseDialog::DefaultSizeHandling(UINT /*nType*/, int /*cx*/, int /*cy*/) {}

void CBaseDialog::DeleteButtons() noexcept {
  for (INT_PTR i = 0; i < m_arrButtons.GetSize(); ++i) {
    delete m_arrButtons[i];  // null entries are fine
    m_arrButtons[i] = nullptr;
  }
  m_arrButtons.RemoveAll();
}
