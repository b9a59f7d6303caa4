// Three-dimensional symbol selection against the stand-in symbol control,
// diagram interface and the demonstration symbol database; the modal loop
// is an in-memory dialog framework whose user picks in the control.
#include "bridge_test_util.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/symbol_selector.h>
#include <cadtools/dialog/dialog_framework.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/reg_values.h>

#include <functional>
#include <vector>

namespace cadtools::bridge::testing {
namespace {

class Symbols : public RuntimeTest {
 protected:
  void SetUp() override {
    RuntimeTest::SetUp();
    if (IsSkipped()) return;
    ResetScript();
    rt().SetStatic(W("CADInterface.DiagramInterface"), W("DatabaseFolder"), SymbolDatabase());
    CRegBase::SetRegBase(W("Software\\cadtools-tests\\symbols\\"));
    dialogs_.AddTemplate(CSymbol3DSelectorDlg::IDD, {CRect(100, 100, 700, 500),
                                                     true,
                                                     {{8006, CRect(7, 7, 593, 356)},
                                                      {IDOK, CRect(436, 370, 511, 393)},
                                                      {IDCANCEL, CRect(518, 370, 593, 393)}}});
    before_ = ui::SetDialogFramework(&dialogs_);
  }
  void TearDown() override { ui::SetDialogFramework(before_); }

  // The user's part of the next modal run: given the dialog and the control.
  void User(std::function<void(CSymbol3DSelectorDlg&, const Object& control)> user) {
    dialogs_.SetUser([user](CBCGPDialog& d, ui::MemoryWindow&) {
      auto& dialog = dynamic_cast<CSymbol3DSelectorDlg&>(d);
      user(dialog, dialog.m_ctrlSymbol.GetControl());
    });
  }

 private:
  ui::MemoryDialogFramework dialogs_;
  ui::DialogFramework* before_ = nullptr;
};

struct Selection {
  CString path;
  int entities;
  LONG type;
  int ok;
};

Selection Select(const CString& preselected) {
  Selection s{preselected, -1, -1, -1};
  EXPECT_EQ(CDotNetWrapper().Select3DSymbol(SymbolDatabase(), 7, s.path, s.entities, s.type, s.ok), 1);
  return s;
}

void Choose(const Object& control, const WCHAR* method, const WCHAR* db, const WCHAR* folder, const WCHAR* symbol) {
  control.Call(method, {db, folder, symbol});
}

TEST_F(Symbols, ChosenThenConfirmed) {
  User([](CSymbol3DSelectorDlg& d, const Object& control) {
    Choose(control, W("Choose"), W("Main"), W("Rails"), W("TS35"));
    d.OnOK();
  });
  const Selection s = Select(W(""));
  EXPECT_EQ(s.ok, 1);
  EXPECT_EQ(s.path, CString(W("Main\\Rails\\TS35")));
  EXPECT_EQ(s.entities, 12);
  EXPECT_EQ(s.type, 19101);
}

TEST_F(Symbols, ConfirmedWithoutAChoiceOrWithoutNames) {
  User([](CSymbol3DSelectorDlg& d, const Object&) { d.OnOK(); });
  Selection s = Select(W("Main\\Rails\\Nothing"));
  EXPECT_EQ(s.ok, 1);
  EXPECT_EQ(s.path, CString());
  EXPECT_EQ(s.entities, 0);
  EXPECT_EQ(s.type, 0);

  // A symbol without its names: the counts, but no path.
  User([](CSymbol3DSelectorDlg& d, const Object& control) {
    Choose(control, W("ChooseSymbolOnly"), W("Main"), W("Terminals"), W("UK5N"));
    d.OnOK();
  });
  s = Select(W(""));
  EXPECT_EQ(s.path, CString());
  EXPECT_EQ(s.entities, 22);
  EXPECT_EQ(s.type, 16000);
}

TEST_F(Symbols, CancelLeavesTheCallersValues) {
  User([](CSymbol3DSelectorDlg& d, const Object& control) {
    Choose(control, W("Choose"), W("Main"), W("Rails"), W("TS35"));
    d.OnCancel();
  });
  const Selection s = Select(W("Main\\PLC\\S7-1500"));
  EXPECT_EQ(s.ok, 0);
  EXPECT_EQ(s.path, CString(W("Main\\PLC\\S7-1500")));
  EXPECT_EQ(s.entities, -1);
  EXPECT_EQ(s.type, -1);
}

TEST_F(Symbols, StartUpPreselectsOnlyAPathOfThreeFields) {
  const CString symbols = SymbolDatabase();
  struct Row {
    const WCHAR* path;
    bool selects;
  };
  for (const Row row : {Row{W("Main\\Relays\\K1"), true}, Row{W("Main\\Relays"), false},
                        Row{W("Main\\Relays\\K1\\x"), false}, Row{W(""), false}}) {
    ResetScript();
    UINT icon = 0;
    User([&icon](CSymbol3DSelectorDlg& d, const Object&) {
      icon = static_cast<ui::MemoryWindow*>(d.GetWindow())->SmallIcon();
    });
    Select(row.path);
    EXPECT_EQ(icon, 115U);
    std::vector<CString> expected{W("OrvSymbolControl#1.new()"), W("OrvSymbolControl#1.set_ViewMode(true)"),
                                  W("OrvSymbolControl#1.LoadSymbolLibraries(\"") + symbols + W("\")")};
    if (row.selects) {
      expected.push_back(W("OrvSymbol#1.new(\"Main\", \"Relays\", \"K1\")"));  // the control loads it
      expected.push_back(W("OrvSymbolControl#1.SelectSymbol(\"Main\", \"Relays\", \"K1\")"));
    }
    EXPECT_EQ(CallLog(), expected) << ToUtf8(CString(row.path));
  }
}

TEST_F(Symbols, PlacementIsRestoredAndSaved) {
  CSymbol3DSelectorDlg probe;
  const CString key = probe.GetRegKey();
  { CRegRect stored(key); stored = CRect(50, 60, 850, 660); }
  CRect seen;
  User([&seen](CSymbol3DSelectorDlg& d, const Object&) {
    seen = d.GetWindow()->GetWindowRect();
    d.GetWindow()->MoveWindow(40, 30, 700, 500, TRUE);
    d.OnOK();
  });
  Select(W(""));
  EXPECT_EQ(seen, CRect(50, 60, 850, 660));
  EXPECT_EQ(static_cast<CRect>(CRegRect(key)), CRect(40, 30, 740, 530));
}

TEST_F(Symbols, LoadingFromTheDatabase) {
  struct Row {
    const WCHAR* path;
    int loaded, entities;
    LONG type;
    std::vector<CString> connections;  // after the caller's "x"
  };
  const Row rows[] = {
      {W("Main\\Terminals\\UK5N"), 1, 22, 16000, {W("x"), W("1"), W("2")}},
      {W("Main\\PLC\\S7-1500"), 1, 120, 11510, {W("x"), W("L+"), W("M"), W("PE")}},
      {W("Main\\Channels\\Duct40x60"), 1, 9, 19102, {W("x")}},
      {W("Main\\Misc\\Plain"), 1, 3, 19000, {W("x")}},  // no component type
      {W("Main\\Misc\\NoDollar"), 1, 5, 19000, {W("x")}},
      {W("Main\\Misc\\Missing"), 0, 0, 0, {W("x")}},
      {W("Main\\Misc"), 0, 0, 0, {W("x")}},
      {W("Main\\Misc\\Plain\\4"), 0, 0, 0, {W("x")}},
      {W(""), 0, 0, 0, {W("x")}},
  };
  for (const Row& row : rows) {
    int entities = -1;
    LONG type = -1;
    CStringArray connections;
    connections.Add(W("x"));
    EXPECT_EQ(CDotNetWrapper().Load3DSymbolFromDb(W("ignored"), row.path, entities, type, connections), row.loaded)
        << ToUtf8(CString(row.path));
    EXPECT_EQ(entities, row.entities);
    EXPECT_EQ(type, row.type);
    std::vector<CString> got;
    for (INT_PTR i = 0; i < connections.GetSize(); ++i) got.push_back(connections[i]);
    EXPECT_EQ(got, row.connections);
  }
  // A loaded symbol is disposed; nothing else is.
  ResetScript();
  int entities = 0;
  LONG type = 0;
  CStringArray connections;
  CDotNetWrapper().Load3DSymbolFromDb(W(""), W("Main\\Rails\\TS35"), entities, type, connections);
  EXPECT_EQ(CallLog().back(), CString(W("OrvSymbol#1.Dispose()")));
}

TEST_F(Symbols, ObjectTypesByComponentType) {
  struct Row {
    const WCHAR* text;  // null: a null string
    LONG type;
  };
  const Row rows[] = {
      {nullptr, 19000},           {W(""), 19000},          {W("$Component"), 19000},
      {W("$Rail"), 19101},        {W("$RAIL"), 19101},     {W("$Cabinet"), 19100},
      {W("$cable CHANNEL"), 19102}, {W("$Terminal"), 16000}, {W("$PLC Main"), 11510},
      {W("$Relay Coil"), 11100},  {W("Rail"), 19000},      {W(" $Rail"), 19000},
      {W("$Rail "), 19000},       {W("$PLC  Main"), 19000},
  };
  CSymbol3DSelectorDlg dialog;
  for (const Row& row : rows) {
    const Ref<System::String> text =
        row.text == nullptr ? Ref<System::String>() : CDotNetUtils::CString2DotNetString(row.text);
    EXPECT_EQ(dialog.TextToObjectType(text), row.type) << ToUtf8(CString(row.text));
  }
}

TEST_F(Symbols, ManagedExceptionsPassTheFacade) {
  ScriptThrows(W("DiagramInterface.LoadSymbol"), W("System.IO.IOException"), W("database locked"));
  int entities = 0;
  LONG type = 0;
  CStringArray connections;
  EXPECT_EQ(ManagedFailure([&] {
              CDotNetWrapper().Load3DSymbolFromDb(W(""), W("Main\\Rails\\TS35"), entities, type, connections);
            }).second,
            CString(W("database locked")));
}

}  // namespace
}  // namespace cadtools::bridge::testing
