// The tour's section on the managed bridge: a string crossing into the
// runtime and back, and what the host's equipment browser receives from
// its facade (played by the stand-in assemblies built with the tree).
#include "tour_steps.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/managed_exception.h>
#include <cadtools/bridge/runtime.h>
#include <cadtools/bridge/type_explorer.h>

#include "bridge/bridge_assembly.h"

#include <filesystem>
#include <string>

namespace cadtools::cli {
namespace {

using bridge::Runtime;

// The stand-ins come with the build tree, beside this program; an installed
// cadtools has none.
bool LoadStandIns(Runtime& rt) {
  const std::filesystem::path folder = bridge::detail::ModuleFolder();
  for (const char* file : {"CadTools.StandIns.dll", "OrvDatabaseControls.dll"}) {
    const std::filesystem::path path = folder / file;
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return false;
    rt.LoadAssembly(FromUtf8(path.string()).View());
  }
  return true;
}

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

}  // namespace

void BridgeTour(Tour& t) {
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
  if (!LoadStandIns(Runtime::Get())) {
    t.Step("the equipment browser", "not shown", "its stand-in comes with the build tree, not the package");
    return;
  }
  BrowserCalls(t);
}

}  // namespace cadtools::cli
