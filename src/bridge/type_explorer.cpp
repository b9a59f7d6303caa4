#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/type_explorer.h>
#include <cadtools/dialog/wait_cursor.h>

#include "bridge/dialog_calls.h"

#include <utility>

using cadtools::bridge::Runtime;
using cadtools::bridge::detail::DialogResultIsOk;
using cadtools::bridge::detail::SetUp;

namespace {
using Dialog = OrvDatabaseControls::OrvEquipmentBrowserDialog;
}  // namespace

TypeExplorerwrapper::TypeExplorerwrapper(CString sDbPath, CString sSystemPath, CString sCommonPath,
                                         CString sSymbolPath, CString sSkinName, int languageId, CString cultureId) {
  m_dialog = cadtools::bridge::Ref<Dialog>(
      Runtime::Get().Create(Dialog::kTypeName, {CDotNetUtils::CString2DotNetString(std::move(cultureId))}));
  SetUp(static_cast<cadtools::bridge::Ref<Dialog>>(m_dialog), sDbPath, sSystemPath, sCommonPath, sSymbolPath, sSkinName, languageId);
}

TypeExplorerwrapper::~TypeExplorerwrapper() = default;

void TypeExplorerwrapper::ClearFilters() { m_dialog->Call(CADTOOLS_WIDE("ClearFilters")); }

void TypeExplorerwrapper::ReloadCatalogs() { m_dialog->Call(CADTOOLS_WIDE("ReloadCatalogs")); }

void TypeExplorerwrapper::RefreshFilters() { m_dialog->Call(CADTOOLS_WIDE("RefreshFilters")); }

void TypeExplorerwrapper::SetSelectedItemsAsString(CString selected) {
  m_dialog->Call(CADTOOLS_WIDE("SetSelectedItemsAsString"), {CDotNetUtils::CString2DotNetString(std::move(selected))});
}

CString TypeExplorerwrapper::GetSelectedItemsAsString() {
  return CDotNetUtils::DotNetString2CString(
      cadtools::bridge::Ref<System::String>(m_dialog->CallForObject(CADTOOLS_WIDE("GetSelectedItemsAsString"))));
}

void TypeExplorerwrapper::SetContactFilter(int bContactFilter) {
  m_dialog->Call(CADTOOLS_WIDE("SetContactFilter"), {bContactFilter != 0});
}

void TypeExplorerwrapper::SetContactFilterModuleId(int nContactFilterModuleId) {
  m_dialog->Call(CADTOOLS_WIDE("SetContactFilterModuleId"), {nContactFilterModuleId});
}

void TypeExplorerwrapper::AddContactFilters(CMapStringToString* pMapOfContactFilters) {
  cadtools::bridge::detail::ForEachPair(pMapOfContactFilters, [this](const CString& key, const CString& value) {
    m_dialog->Call(CADTOOLS_WIDE("AddContactFilter"),
                   {CDotNetUtils::CString2DotNetString(key), CDotNetUtils::CString2DotNetString(value)});
  });
}

int TypeExplorerwrapper::ShowDialog() { return DialogResultIsOk(m_dialog->Call(CADTOOLS_WIDE("ShowDialog"))) ? 1 : 0; }

CDotNetTypeExplorerWrapper::CDotNetTypeExplorerWrapper() = default;

CDotNetTypeExplorerWrapper::~CDotNetTypeExplorerWrapper() = default;

int CDotNetTypeExplorerWrapper::ShowDialog(CString sDbPath, CString sSystemPath, CString sCommonPath,
                                           CString sSymbolPath, CString sSkinName, int languageId, CString cultureId,
                                           CString a_strSelectedTypes, int a_bContactFilter,
                                           int a_nContactFilterModuleId, CMapStringToString* a_pMapContactFilters) {
  // Making the dialog loads the catalogues, which takes a while. A database
  // path that differs only in case keeps the dialog, whatever else changed.
  if (m_pWrapper == nullptr || m_strDbPath.CompareNoCase(sDbPath) != 0) {
    CWaitCursor wait;
    m_pWrapper.reset();
    m_pWrapper = std::make_shared<TypeExplorerwrapper>(sDbPath, sSystemPath, sCommonPath, sSymbolPath, sSkinName,
                                                       languageId, cultureId);
  }
  m_pWrapper->ClearFilters();
  m_pWrapper->ReloadCatalogs();
  m_pWrapper->SetSelectedItemsAsString(a_strSelectedTypes);
  if (a_bContactFilter != 0) {
    m_pWrapper->SetContactFilter(a_bContactFilter);
    m_pWrapper->SetContactFilterModuleId(a_nContactFilterModuleId);
    m_pWrapper->AddContactFilters(a_pMapContactFilters);
  }
  m_pWrapper->RefreshFilters();
  m_strDbPath = sDbPath;
  return m_pWrapper->ShowDialog();
}

CString CDotNetTypeExplorerWrapper::GetSelectedAsString() {
  return m_pWrapper == nullptr ? CString() : m_pWrapper->GetSelectedItemsAsString();
}
