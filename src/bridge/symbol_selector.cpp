// CSymbol3DSelectorDlg: the dialog, its layout and its result.
#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/math_tools.h>

namespace {
// Fixed pixel gaps of the layout, as the host's dialog always had them.
constexpr int kMargin = 7;
}  // namespace

CSymbol3DSelectorDlg::CSymbol3DSelectorDlg(CWnd* pParent)
    : CBaseDialog(IDD, nullptr, pParent), m_nEntityCount(0), m_nObjectType(0) {}

void CSymbol3DSelectorDlg::DoDataExchange(CDataExchange* pDX) {
  CBaseDialog::DoDataExchange(pDX);
  if (!m_ctrlSymbol.HasControl() && GetWindow() != nullptr) m_ctrlSymbol.CreateManagedControl(*GetWindow(), kControlId);
}

BOOL CSymbol3DSelectorDlg::OnInitDialog() {
  CBaseDialog::OnInitDialog();
  if (GetWindow() != nullptr) GetWindow()->SetSmallIcon(kIconId);  // the large icon stays the class's
  RestorePos();
  if (m_ctrlSymbol.HasWindow()) {
    m_ctrlSymbol->Set(CADTOOLS_WIDE("ViewMode"), true);
    m_ctrlSymbol->Call(CADTOOLS_WIDE("LoadSymbolLibraries"), {CDotNetUtils::CString2DotNetString(m_strSymbolDirectory)});
    if (!m_strSymbolPath.IsEmpty()) {
      CArray<CString, CString> fields;
      CMathTools::SplitStr(fields, m_strSymbolPath, '\\');
      // Anything but database, folder and symbol preselects nothing.
      if (fields.GetSize() == 3) {
        m_ctrlSymbol->Call(CADTOOLS_WIDE("SelectSymbol"),
                           {CDotNetUtils::CString2DotNetString(fields[0]), CDotNetUtils::CString2DotNetString(fields[1]),
                            CDotNetUtils::CString2DotNetString(fields[2])});
      }
    }
  }
  return TRUE;
}

void CSymbol3DSelectorDlg::OnSize(UINT nType, int cx, int cy) {
  CBaseDialog::OnSize(nType, cx, cy);
  cadtools::ui::Window* window = GetWindow();
  if (window == nullptr || !window->HasItem(IDCANCEL)) return;
  // Both buttons take the Cancel button's size.
  const CRect button = window->GetItemClientRect(IDCANCEL);
  const int w = button.Width();
  const int h = button.Height();
  window->MoveItem(kControlId, kMargin, kMargin, cx - 2 * kMargin, cy - h - 4 * kMargin, TRUE);
  window->MoveItem(IDOK, cx - 2 * w - 2 * kMargin, cy - h - kMargin, w, h, TRUE);
  window->MoveItem(IDCANCEL, cx - w - kMargin, cy - h - kMargin, w, h, TRUE);
}

void CSymbol3DSelectorDlg::OnGetMinMaxInfo(MINMAXINFO* lpMMI) {
  lpMMI->ptMinTrackSize.x = kMinWidth;
  lpMMI->ptMinTrackSize.y = kMinHeight;
  CBaseDialog::OnGetMinMaxInfo(lpMMI);
}

void CSymbol3DSelectorDlg::OnOK() {
  m_strSymbolPath.Empty();
  m_nEntityCount = 0;
  m_nObjectType = 0;
  if (m_ctrlSymbol.HasWindow()) {
    const auto name = [this](const WCHAR* property) {
      return CDotNetUtils::DotNetString2CString(cadtools::bridge::Ref<System::String>(m_ctrlSymbol->GetForObject(property)));
    };
    const CString symbol = name(CADTOOLS_WIDE("SelectedSymbolName"));
    if (!symbol.IsEmpty()) {
      const CString folder = name(CADTOOLS_WIDE("SelectedFolderName"));
      if (!folder.IsEmpty()) {
        const CString database = name(CADTOOLS_WIDE("SelectedDatabaseName"));
        if (!database.IsEmpty()) m_strSymbolPath = database + CADTOOLS_WIDE("\\") + folder + CADTOOLS_WIDE("\\") + symbol;
      }
    }
    // Counts come from the selected symbol even when a name was empty.
    const cadtools::bridge::Object selected = m_ctrlSymbol->Get(CADTOOLS_WIDE("SelectedSymbol")).AsObject();
    if (!selected.IsNull()) {
      TakeCounts(cadtools::bridge::Runtime::Get().Create(CADInterface::DiagramInterface::kTypeName), selected);
    }
  }
  CBaseDialog::OnOK();
}
