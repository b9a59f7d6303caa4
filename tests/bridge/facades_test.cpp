// The equipment browser and editor facades against the stand-ins: the calls
// the host's dialogs receive, in order, and what comes back.
#include "bridge_test_util.h"

#include <cadtools/bridge/type_editor.h>
#include <cadtools/bridge/type_explorer.h>
#include <cadtools/compat/cstring_array.h>
#include <cadtools/dialog/wait_cursor.h>

#include <memory>
#include <string>
#include <vector>

namespace cadtools::bridge::testing {
namespace {

// Counts the wait cursor's appearances; installed for each test.
class CountingCursor final : public ui::WaitCursor {
 public:
  void Begin() override { ++begun; }
  void End() noexcept override { ++ended; }
  int begun = 0;
  int ended = 0;
};

class Facades : public RuntimeTest {
 protected:
  void SetUp() override {
    RuntimeTest::SetUp();
    if (IsSkipped()) return;
    ResetScript();
    before_ = ui::SetWaitCursor(&cursor);
  }
  void TearDown() override { ui::SetWaitCursor(before_); }

  CountingCursor cursor;

 private:
  ui::WaitCursor* before_ = nullptr;
};

using Log = std::vector<CString>;

// The log lines of a dialog made and set up as both facades do.
Log MadeAs(const CString& who, const CString& db) {
  return {who + W(".new(\"de-DE\")"),       who + W(".SetDbPath(\"") + db + W("\")"),
          who + W(".SetSystemPath(\"S\")"),  who + W(".SetCommonPath(\"C\")"),
          who + W(".SetSymbolPath(\"Y\")"),  who + W(".SetSkinName(\"Office\")"),
          who + W(".SetLanguageId(7)"),      who + W(".Initialize()")};
}

Log operator+(Log a, const Log& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

const WCHAR kBrowser[] = W("OrvEquipmentBrowserDialog#1");

int Browse(CDotNetTypeExplorerWrapper& browser, const CString& db, int contactFilter = 0,
           CMapStringToString* filters = nullptr, const WCHAR* skin = W("Office")) {
  return browser.ShowDialog(db, W("S"), W("C"), W("Y"), skin, 7, W("de-DE"), W("sel"), contactFilter, 12, filters);
}

// What every ShowDialog of the browser does once the dialog exists.
Log Shown(const CString& who, const Log& filters = {}) {
  return Log{who + W(".ClearFilters()"), who + W(".ReloadCatalogs()"), who + W(".SetSelectedItemsAsString(\"sel\")")} +
         filters + Log{who + W(".RefreshFilters()"), who + W(".ShowDialog()")};
}

TEST_F(Facades, BrowserIsMadeOnceAndKeptWhileThePathDiffersOnlyInCase) {
  CDotNetTypeExplorerWrapper browser;
  EXPECT_EQ(browser.GetSelectedAsString(), CString());
  EXPECT_EQ(Browse(browser, W("C:\\Db\\Main.mdb")), 0);  // the stand-in's default: Cancel
  // The second call's skin is ignored: the kept dialog has its own.
  EXPECT_EQ(Browse(browser, W("c:\\db\\MAIN.MDB"), 0, nullptr, W("Dark")), 0);
  Browse(browser, W("D:\\Other.mdb"));
  const CString second(W("OrvEquipmentBrowserDialog#2"));
  EXPECT_EQ(CallLog(), MadeAs(kBrowser, W("C:\\Db\\Main.mdb")) + Shown(kBrowser) + Shown(kBrowser) +
                           MadeAs(second, W("D:\\Other.mdb")) + Shown(second));
  EXPECT_EQ(cursor.begun, 2);  // only while a dialog is made
  EXPECT_EQ(cursor.ended, 2);
}

TEST_F(Facades, BrowserContactFilters) {
  CMapStringToString three;
  three[W("a")] = W("1");
  three[W("b")] = W("2");
  three[W("ab")] = W("3");
  // The map's own order, not the order of insertion.
  const Log inMapOrder{CString(kBrowser) + W(".AddContactFilter(\"ab\", \"3\")"),
                       CString(kBrowser) + W(".AddContactFilter(\"a\", \"1\")"),
                       CString(kBrowser) + W(".AddContactFilter(\"b\", \"2\")")};
  CMapStringToString empty;
  const Log on{CString(kBrowser) + W(".SetContactFilter(true)"), CString(kBrowser) + W(".SetContactFilterModuleId(12)")};
  struct Row {
    int contactFilter;
    CMapStringToString* map;
    Log filters;
  };
  const Row rows[] = {
      {0, &three, {}},  // off: the map is not looked at
      {1, nullptr, on},
      {1, &empty, on},
      {5, &three, on + inMapOrder},  // any non-zero value is on
  };
  for (const Row& row : rows) {
    ResetScript();
    CDotNetTypeExplorerWrapper browser;
    Browse(browser, W("C:\\Db"), row.contactFilter, row.map);
    EXPECT_EQ(CallLog(), MadeAs(kBrowser, W("C:\\Db")) + Shown(kBrowser, row.filters)) << row.contactFilter;
  }
}

TEST_F(Facades, BrowserResultAndSelection) {
  struct Row {
    int dialogResult;  // System.Windows.Forms.DialogResult
    int expected;
  };
  for (const Row row : {Row{1, 1}, Row{2, 0}, Row{6, 0}, Row{0, 0}}) {
    ResetScript();
    ScriptReturns(W("OrvEquipmentBrowserDialog.ShowDialog"), row.dialogResult);
    CDotNetTypeExplorerWrapper browser;
    EXPECT_EQ(Browse(browser, W("C:\\Db")), row.expected) << row.dialogResult;
  }
  CDotNetTypeExplorerWrapper browser;
  Browse(browser, W("C:\\Db"));
  EXPECT_EQ(browser.GetSelectedAsString(), CString(W("sel")));  // after the dialog closed
  ScriptReturns(W("OrvEquipmentBrowserDialog.GetSelectedItemsAsString"), W("K1;K2\u00C4"));
  EXPECT_EQ(browser.GetSelectedAsString(), CString(W("K1;K2\u00C4")));
}

TEST_F(Facades, BrowserExceptionsPassWithTheCursorRestored) {
  ScriptThrows(W("OrvEquipmentBrowserDialog.Initialize"), W("System.IO.IOException"), W("database unreadable"));
  CDotNetTypeExplorerWrapper browser;
  EXPECT_EQ(ManagedFailure([&] { Browse(browser, W("C:\\Db")); }),
            std::make_pair(CString(W("System.IO.IOException")), CString(W("database unreadable"))));
  EXPECT_EQ(cursor.begun, 1);
  EXPECT_EQ(cursor.ended, 1);
  // The failed dialog is gone; the next call makes a new one.
  ResetScript();
  Browse(browser, W("C:\\Db"));
  EXPECT_EQ(CallLog().front(), CString(kBrowser) + W(".new(\"de-DE\")"));
}

// A CObList of component ids, owning its arrays.
struct ComponentIds {
  CObList list;
  std::vector<std::unique_ptr<CObject>> owned;
  void Add(std::initializer_list<const WCHAR*> strings) {
    auto a = std::make_unique<CStringArray>();
    for (const WCHAR* s : strings) a->Add(s);
    list.AddTail(a.get());
    owned.push_back(std::move(a));
  }
};

const WCHAR kEditor[] = W("OrvEquipmentEditorDialog#1");

int Edit(CMapStringToString* modules, CObList* ids) {
  return CDotNetTypeEditorWrapper().ShowDialog(W("C:\\Db"), W("S"), W("C"), W("Y"), W("Office"), 7, W("de-DE"),
                                              modules, ids);
}

Log Closed(const CString& who) { return {who + W(".ShowDialog()"), who + W(".IsSymbolsDownloaded()")}; }

TEST_F(Facades, EditorFillsAFreshDialogEachTime) {
  EXPECT_EQ(Edit(nullptr, nullptr), 0);
  EXPECT_EQ(CallLog(), MadeAs(kEditor, W("C:\\Db")) + Closed(kEditor));

  ResetScript();
  CMapStringToString modules;
  modules[W("a")] = W("Rail");
  modules[W("ab")] = W("Channel");
  ComponentIds ids;
  ids.Add({W("1"), W("2"), W("3")});
  ids.Add({W("x"), W("y")});  // two strings: no component id
  CObject other;              // not a string array at all
  ids.list.AddTail(&other);
  ids.Add({W("p"), W("q"), W("r"), W("s")});  // four strings: none either
  ids.Add({W("\u00E4"), W(""), W("z")});
  Edit(&modules, &ids.list);
  Edit(nullptr, nullptr);
  const CString e(kEditor);
  const CString e2(W("OrvEquipmentEditorDialog#2"));
  const Log filled{e + W(".AddChannelModule(\"ab\", \"Channel\")"), e + W(".AddChannelModule(\"a\", \"Rail\")"),
                   e + W(".AddComponentId(\"1\", \"2\", \"3\")"), e + W(".AddComponentId(\"\u00E4\", \"\", \"z\")")};
  EXPECT_EQ(CallLog(), MadeAs(e, W("C:\\Db")) + filled + Closed(e) + MadeAs(e2, W("C:\\Db")) + Closed(e2));
  EXPECT_EQ(cursor.begun, 3);
  EXPECT_EQ(cursor.ended, 3);
}

TEST_F(Facades, EditorReportsDownloadsWhateverTheDialogResult) {
  for (const int dialogResult : {1, 2}) {  // OK, Cancel
    for (const bool downloaded : {false, true}) {
      ResetScript();
      ScriptReturns(W("OrvEquipmentEditorDialog.ShowDialog"), dialogResult);
      ScriptReturns(W("OrvEquipmentEditorDialog.IsSymbolsDownloaded"), downloaded);
      EXPECT_EQ(Edit(nullptr, nullptr), downloaded ? 1 : 0) << dialogResult;
    }
  }
  ResetScript();
  ScriptThrows(W("OrvEquipmentEditorDialog.ShowDialog"), W("System.InvalidOperationException"), W("no window"));
  EXPECT_EQ(ManagedFailure([] { Edit(nullptr, nullptr); }).second, CString(W("no window")));
  EXPECT_EQ(cursor.begun, cursor.ended);
  EXPECT_EQ(CallLog().back(), CString(kEditor) + W(".ShowDialog()"));  // and nobody disposed it
}

}  // namespace
}  // namespace cadtools::bridge::testing
