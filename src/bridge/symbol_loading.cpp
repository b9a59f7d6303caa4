// Loading symbols, their object types, and the CDotNetWrapper facade.
#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/math_tools.h>

using cadtools::bridge::Object;
using cadtools::bridge::Ref;
using cadtools::bridge::Runtime;

namespace {

// The object types the host gives its symbol kinds; the first row whose
// text matches wins. Null and empty texts are components.
struct ObjectTypeRow {
  const WCHAR* text;
  LONG type;
};
constexpr ObjectTypeRow kObjectTypes[] = {
    {CADTOOLS_WIDE("$Component"), 19000},     {CADTOOLS_WIDE("$Rail"), 19101},
    {CADTOOLS_WIDE("$Cabinet"), 19100},       {CADTOOLS_WIDE("$Cable channel"), 19102},
    {CADTOOLS_WIDE("$Terminal"), 16000},      {CADTOOLS_WIDE("$PLC Main"), 11510},
    {CADTOOLS_WIDE("$Relay Coil"), 11100},
};
constexpr LONG kComponent = 19000;
// System.StringComparison.OrdinalIgnoreCase: the runtime's own ordinal
// comparison without case, unit by unit.
constexpr cadtools::bridge::EnumValue kOrdinalIgnoreCase{5};

}  // namespace

LONG CSymbol3DSelectorDlg::TextToObjectType(const Ref<System::String>& _componentType) {
  Runtime& rt = Runtime::Get();
  const WCHAR* string = System::String::kTypeName;
  if (rt.CallStatic(string, CADTOOLS_WIDE("IsNullOrEmpty"), {_componentType}).AsBool()) return kComponent;
  for (const ObjectTypeRow& row : kObjectTypes) {
    if (rt.CallStatic(string, CADTOOLS_WIDE("Equals"), {_componentType, row.text, kOrdinalIgnoreCase}).AsBool()) {
      return row.type;
    }
  }
  return kComponent;
}

void CSymbol3DSelectorDlg::TakeCounts(const Object& diagram, const Object& symbol) {
  m_nEntityCount = static_cast<int>(diagram.Call(CADTOOLS_WIDE("GetEntitiesCount"), {symbol}).AsInt());
  const Ref<System::String> type(
      diagram.CallForObject(CADTOOLS_WIDE("GetAttributeValue"), {symbol, CDotNetUtils::CString2DotNetString(CADTOOLS_WIDE("$ComponentType"))}));
  m_nObjectType = TextToObjectType(type);
}

int CSymbol3DSelectorDlg::LoadSymbolFromDb(CString a_strSymbolPath, CStringArray& a_arrConnections) {
  m_nEntityCount = 0;
  m_nObjectType = 0;
  if (a_strSymbolPath.IsEmpty()) return 0;
  CArray<CString, CString> fields;
  CMathTools::SplitStr(fields, a_strSymbolPath, '\\');
  if (fields.GetSize() != 3) return 0;
  const Object diagram = Runtime::Get().Create(CADInterface::DiagramInterface::kTypeName);
  const Object symbol =
      diagram
          .Call(CADTOOLS_WIDE("LoadSymbol"), {CDotNetUtils::CString2DotNetString(fields[0]),
                                               CDotNetUtils::CString2DotNetString(fields[1]),
                                               CDotNetUtils::CString2DotNetString(fields[2])})
          .AsObject();
  if (symbol.IsNull()) return 0;
  TakeCounts(diagram, symbol);
  const Object connections = diagram.Call(CADTOOLS_WIDE("GetComponentConnections"), {symbol}).AsObject();
  if (!connections.IsNull()) {
    // After whatever the caller's array already holds.
    for (const cadtools::bridge::Value& connection : connections.Items()) {
      a_arrConnections.Add(CDotNetUtils::DotNetString2CString(
          Ref<System::String>(connection.AsObject().GetForObject(CADTOOLS_WIDE("Text")))));
    }
  }
  symbol.Call(CADTOOLS_WIDE("Dispose"));
  return 1;
}

int CDotNetWrapper::Select3DSymbol(CString a_strSymbolDirectory, LONG, CString& a_strSymbolPath, int& a_nEntityCount,
                                   LONG& a_nObjectType, int& a_bOk) {
  CSymbol3DSelectorDlg dialog(nullptr);
  dialog.m_strSymbolPath = a_strSymbolPath;
  dialog.m_strSymbolDirectory = a_strSymbolDirectory;
  a_bOk = 0;
  // Cancel leaves the caller's path and counts as they were.
  if (dialog.DoModal() != IDOK) return 1;
  a_bOk = 1;
  a_strSymbolPath = dialog.m_strSymbolPath;
  a_nEntityCount = dialog.m_nEntityCount;
  a_nObjectType = dialog.m_nObjectType;
  return 1;
}

int CDotNetWrapper::Load3DSymbolFromDb(CString a_strSymbolDirectory, CString a_strSymbolPath, int& a_nEntitiesCount,
                                       LONG& a_nObjectType, CStringArray& a_arrConnections) {
  CSymbol3DSelectorDlg dialog(nullptr);
  dialog.m_strSymbolDirectory = a_strSymbolDirectory;
  const int loaded = dialog.LoadSymbolFromDb(a_strSymbolPath, a_arrConnections);
  a_nEntitiesCount = dialog.m_nEntityCount;
  a_nObjectType = dialog.m_nObjectType;
  return loaded;
}
