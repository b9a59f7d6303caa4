// `cadtools symbol load` and `cadtools symbol type`, through
// Load3DSymbolFromDb and TextToObjectType, with the stand-ins for the
// host's symbol components that come with the build tree.
#include "symbol_commands.h"

#include "errors.h"
#include "help.h"
#include "stand_ins.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/runtime.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/math_tools.h>

#include <filesystem>
#include <string>

namespace cadtools::cli {
namespace {

void NeedStandIns() {
  if (!LoadStandIns({"CadTools.StandIns.dll", "OrvCADBaseModel.dll", "Orv3DEditor.dll", "CADInterface.dll"})) {
    throw CommandFailed(
        "the stand-ins for the host's symbol components are not beside this program (they come with the build tree)");
  }
}

std::string TypeText(long type) {
  const std::string_view kind = ObjectTypeKind(type);
  return std::to_string(type) + (kind.empty() ? "" : " (" + std::string(kind) + ")");
}

void Load(std::span<const std::string_view> words, std::ostream& out) {
  std::string path;
  std::string database;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view w = words[i];
    if (w == "--database") {
      if (++i == words.size()) throw UsageError("--database needs a folder", SymbolUsage());
      database = std::string(words[i]);
    } else if (w.starts_with("--database=")) {
      database = std::string(w.substr(11));
    } else if (w.starts_with("-")) {
      throw UsageError("unknown option '" + std::string(w) + "'", SymbolUsage());
    } else if (path.empty()) {
      path = std::string(w);
    } else {
      throw UsageError("symbol load takes one symbol path", SymbolUsage());
    }
  }
  if (path.empty()) throw UsageError("no symbol path given", SymbolUsage());
  CArray<CString, CString> fields;
  CMathTools::SplitStr(fields, FromUtf8(path), '\\');
  if (fields.GetSize() != 3) throw UsageError("'" + path + "' is not DATABASE\\FOLDER\\SYMBOL", SymbolUsage());

  const bool demo = database.empty();
  if (demo) database = DemoSymbolDatabase().string();
  NeedStandIns();
  bridge::Runtime::Get().SetStatic(CADTOOLS_WIDE("CADInterface.DiagramInterface"), CADTOOLS_WIDE("DatabaseFolder"),
                                   FromUtf8(database));
  out << "database " << database << (demo ? " (the demonstration database; --database DIR names another)" : "")
      << '\n';
  int entities = 0;
  LONG type = 0;
  CStringArray connections;
  if (!CDotNetWrapper().Load3DSymbolFromDb(FromUtf8(database), FromUtf8(path), entities, type, connections)) {
    throw CommandFailed("no symbol " + path + " in " + database);
  }
  out << "symbol " << path << "\nentities " << entities << "\nobject type " << TypeText(type) << '\n';
  for (INT_PTR i = 0; i < connections.GetSize(); ++i) out << "connection " << ToUtf8(connections[i]) << '\n';
}

void Type(std::span<const std::string_view> words, std::ostream& out) {
  if (words.size() != 1) throw UsageError("symbol type takes one text", SymbolUsage());
  CSymbol3DSelectorDlg dialog;
  const LONG type = dialog.TextToObjectType(CDotNetUtils::CString2DotNetString(FromUtf8(words[0])));
  out << "object type " << TypeText(type) << '\n';
}

}  // namespace

std::string_view ObjectTypeKind(long type) {
  switch (type) {
    case 19000: return "component";
    case 19100: return "cabinet";
    case 19101: return "rail";
    case 19102: return "cable channel";
    case 16000: return "terminal";
    case 11510: return "PLC main";
    case 11100: return "relay coil";
    default: return {};
  }
}

void RunSymbol(std::span<const std::string_view> words, std::ostream& out) {
  if (words.empty()) throw UsageError("no symbol command given", SymbolUsage());
  if (words[0] == "--help" || words[0] == "-h") {
    out << SymbolUsage();
  } else if (words[0] == "load") {
    Load(words.subspan(1), out);
  } else if (words[0] == "type") {
    Type(words.subspan(1), out);
  } else {
    throw UsageError("unknown symbol command '" + std::string(words[0]) + "'", SymbolUsage());
  }
}

}  // namespace cadtools::cli
