#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/type_editor.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/dialog/wait_cursor.h>

#include "bridge/dialog_calls.h"

#include <utility>

namespace {
using Dialog = OrvDatabaseControls::OrvEquipmentEditorDialog;
}  // namespace

TypeEditorWrapper::TypeEditorWrapper(CString sDbPath, CString sSystemPath, CString sCommonPath, CString sSymbolPath,
                                     CString sSkinName, int languageId, CString cultureId,
                                     CMapStringToString* pMapOfModuleNames, CObList* pListOfComponentIds)
    : m_bSymbolsDownloaded(0) {
  // The dialog lives only as long as this constructor: the gcroot is freed
  // on every way out.
  gcroot<Dialog> dialog;
  dialog = cadtools::bridge::Ref<Dialog>(cadtools::bridge::Runtime::Get().Create(
      Dialog::kTypeName, {CDotNetUtils::CString2DotNetString(std::move(cultureId))}));
  const auto target = static_cast<cadtools::bridge::Ref<Dialog>>(dialog);
  cadtools::bridge::detail::SetUp(target, sDbPath, sSystemPath, sCommonPath, sSymbolPath, sSkinName, languageId);
  cadtools::bridge::detail::ForEachPair(pMapOfModuleNames, [&target](const CString& key, const CString& value) {
    target.Call(CADTOOLS_WIDE("AddChannelModule"),
                {CDotNetUtils::CString2DotNetString(key), CDotNetUtils::CString2DotNetString(value)});
  });
  if (pListOfComponentIds != nullptr) {
    for (POSITION pos = pListOfComponentIds->GetHeadPosition(); pos != nullptr;) {
      // Elements that are not three strings are no component id; they are
      // passed over without a word.
      const auto* id = dynamic_cast<const CStringArray*>(pListOfComponentIds->GetNext(pos));
      if (id == nullptr || id->GetSize() != 3) continue;
      target.Call(CADTOOLS_WIDE("AddComponentId"),
                  {CDotNetUtils::CString2DotNetString(id->GetAt(0)), CDotNetUtils::CString2DotNetString(id->GetAt(1)),
                   CDotNetUtils::CString2DotNetString(id->GetAt(2))});
    }
  }
  // OK or Cancel: the host only needs to know whether symbols came.
  target.Call(CADTOOLS_WIDE("ShowDialog"));
  m_bSymbolsDownloaded = target.Call(CADTOOLS_WIDE("IsSymbolsDownloaded")).AsBool() ? 1 : 0;
}

int CDotNetTypeEditorWrapper::ShowDialog(CString sDbPath, CString sSystemPath, CString sCommonPath,
                                         CString sSymbolPath, CString sSkinName, int languageId, CString cultureId,
                                         CMapStringToString* pMapOfModuleNames, CObList* pListOfComponentIds) {
  CWaitCursor wait;
  const TypeEditorWrapper editor(std::move(sDbPath), std::move(sSystemPath), std::move(sCommonPath),
                                 std::move(sSymbolPath), std::move(sSkinName), languageId, std::move(cultureId),
                                 pMapOfModuleNames, pListOfComponentIds);
  return editor.m_bSymbolsDownloaded;
}
