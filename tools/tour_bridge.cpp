// The tour's section on the managed bridge: a string crossing into the
// runtime and back, and what the host's equipment browser receives from
// its facade (played by the stand-in assemblies built with the tree).
#include "pane_command.h"
#include "stand_ins.h"
#include "tour_steps.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/managed_exception.h>
#include <cadtools/bridge/runtime.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/bridge/type_explorer.h>

#include <string>

namespace cadtools::cli {
namespace {

using bridge::Runtime;

std::string Units(const bridge::Object& s) { return Int(s.Get(CADTOOLS_WIDE("Length")).AsInt()); }

void BrowserCalls(Tour& t) {
  Runtime& rt = Runtime::Get();
  const auto script = CADTOOLS_WIDE("CadTools.StandIns.Script");
  rt.CallStatic(script, CADTOOLS_WIDE("Reset"));
  rt.CallStatic(script, CADTOOLS_WIDE("Returns"), {CADTOOLS_WIDE("OrvEquipmentBrowserDialog.ShowDialog"), 1});
  CDotNetTypeExplorerWrapper browser;
  CMapStringToString filters;
  filters[CADTOOLS_WIDE("PE")] = CADTOOLS_WIDE("1");
  const auto show = [&](const WCHAR* db) {
    return browser.ShowDialog(db, CADTOOLS_WIDE("C:\\Sys"), CADTOOLS_WIDE("C:\\Common"), CADTOOLS_WIDE("C:\\Symbols"),
                              CADTOOLS_WIDE("Office"), 7, CADTOOLS_WIDE("de-DE"), CADTOOLS_WIDE("K1"), 1, 12, &filters);
  };
  t.Step("browser.ShowDialog(\"C:\\Db\\Main.mdb\", ...)", Int(show(CADTOOLS_WIDE("C:\\Db\\Main.mdb"))),
         "1: the stand-in answered OK");
  t.Step("browser.ShowDialog(\"c:\\db\\MAIN.MDB\", ...)", Int(show(CADTOOLS_WIDE("c:\\db\\MAIN.MDB"))),
         "same dialog: only the case differs");
  t.Step("browser.GetSelectedAsString()", Quoted(browser.GetSelectedAsString()));
  t.Step("what the managed dialog received", "the stand-in's call log:");
  for (const auto& line : rt.CallStatic(script, CADTOOLS_WIDE("Log")).AsObject().Items()) {
    t.Detail(ToUtf8(line.AsString()));
  }
}

void SymbolCalls(Tour& t) {
  Runtime::Get().SetStatic(CADTOOLS_WIDE("CADInterface.DiagramInterface"), CADTOOLS_WIDE("DatabaseFolder"),
                           FromUtf8(DemoSymbolDatabase().string()));
  const auto load = [](const WCHAR* path) {
    int entities = 0;
    LONG type = 0;
    CStringArray connections;
    connections.Add(CADTOOLS_WIDE("(yours)"));
    const int loaded = CDotNetWrapper().Load3DSymbolFromDb(CString(), path, entities, type, connections);
    std::string text = Int(loaded) + ": " + Int(entities) + " entities, type " + Int(type);
    for (INT_PTR i = 0; i < connections.GetSize(); ++i) text += (i == 0 ? ", connections " : " ") + ToUtf8(connections[i]);
    return text;
  };
  t.Step("Load3DSymbolFromDb(\"Main\\Terminals\\UK5N\")", load(CADTOOLS_WIDE("Main\\Terminals\\UK5N")),
         "appended after yours");
  t.Step("Load3DSymbolFromDb(\"Main\\Terminals\")", load(CADTOOLS_WIDE("Main\\Terminals")),
         "two fields: nothing loaded");
  CSymbol3DSelectorDlg dialog;
  const auto type = [&dialog](const WCHAR* text) {
    return Int(dialog.TextToObjectType(CDotNetUtils::CString2DotNetString(text)));
  };
  t.Step("TextToObjectType(\"$cable CHANNEL\")", type(CADTOOLS_WIDE("$cable CHANNEL")), "any letter case");
  t.Step("TextToObjectType(\" $Rail\")", type(CADTOOLS_WIDE(" $Rail")), "no trimming: a component");
}

}  // namespace

void BridgeTour(Tour& t) {
  t.Heading("The pane host and the symbol selector lay out in fixed pixels (cadtools pane)");
  const auto parts = [](const std::vector<LayoutPart>& layout) {
    std::string text;
    for (std::size_t i = 1; i < layout.size(); ++i) {
      text += (i > 1 ? ", " : "") + layout[i].name + " " + LayoutText(layout[i].rect);
    }
    return text;
  };
  t.Step("a docked pane in a 300x200 bar", parts(PaneLayout(300, 200)), "5 pixels all round");
  t.Step("the selector at 600x400, Cancel 75x23", parts(SelectorLayout(600, 400)));

  t.Heading("The managed bridge: strings and calls crossing into the runtime");
  CString why;
  if (!Runtime::Available(&why)) {
    t.Step("Runtime::Available()", "false", ToUtf8(why));
    return;
  }
  const CString text(CADTOOLS_WIDE("Klemme \u00C4 \u4E2D \U0001F600"));
  const auto managed = CDotNetUtils::CString2DotNetString(text);
  t.Step("CString2DotNetString(\"Klemme \u00C4 \u4E2D \U0001F600\")", "a System.String of " + Units(managed) + " units",
         "a surrogate pair is two");
  t.Step("DotNetString2CString(that)", Quoted(CDotNetUtils::DotNetString2CString(managed)), "back unit for unit");
  const WCHAR with_nul[] = {'a', 'b', 0, 'c', 'd'};
  t.Step("CString2DotNetString(\"ab\\0cd\")",
         Quoted(CDotNetUtils::DotNetString2CString(CDotNetUtils::CString2DotNetString(CString(with_nul, 5)))),
         "stops at the NUL, as the host's does");
  try {
    Runtime::Get().Create(CADTOOLS_WIDE("System.Guid"), {CADTOOLS_WIDE("rail")});
  } catch (CManagedException* e) {
    t.Step("new System.Guid(\"rail\")", ToUtf8(e->TypeName()), "a managed exception, caught as CException*");
    e->Delete();
  }
  if (!LoadStandIns({"CadTools.StandIns.dll", "OrvDatabaseControls.dll", "OrvCADBaseModel.dll", "Orv3DEditor.dll",
                     "CADInterface.dll"})) {
    t.Step("the host's components", "not shown", "their stand-ins come with the build tree, not the package");
    return;
  }
  BrowserCalls(t);
  t.Heading("Three-dimensional symbols (cadtools symbol), from the demonstration database");
  SymbolCalls(t);
}

}  // namespace cadtools::cli
