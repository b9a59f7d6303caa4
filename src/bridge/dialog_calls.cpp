#include "bridge/dialog_calls.h"

#include <cadtools/bridge/dotnet_utils.h>

namespace cadtools::bridge::detail {

void SetUp(const Object& dialog, const CString& sDbPath, const CString& sSystemPath, const CString& sCommonPath,
           const CString& sSymbolPath, const CString& sSkinName, int languageId) {
  dialog.Call(CADTOOLS_WIDE("SetDbPath"), {CDotNetUtils::CString2DotNetString(sDbPath)});
  dialog.Call(CADTOOLS_WIDE("SetSystemPath"), {CDotNetUtils::CString2DotNetString(sSystemPath)});
  dialog.Call(CADTOOLS_WIDE("SetCommonPath"), {CDotNetUtils::CString2DotNetString(sCommonPath)});
  dialog.Call(CADTOOLS_WIDE("SetSymbolPath"), {CDotNetUtils::CString2DotNetString(sSymbolPath)});
  dialog.Call(CADTOOLS_WIDE("SetSkinName"), {CDotNetUtils::CString2DotNetString(sSkinName)});
  dialog.Call(CADTOOLS_WIDE("SetLanguageId"), {languageId});
  dialog.Call(CADTOOLS_WIDE("Initialize"));
}

bool DialogResultIsOk(const Value& result) {
  constexpr std::int64_t kOk = 1;  // DialogResult.OK
  return result.kind() == Kind::kEnum && result.AsEnum().value == kOk;
}

}  // namespace cadtools::bridge::detail
