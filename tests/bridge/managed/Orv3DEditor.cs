// Stand-in for the host's three-dimensional symbol control.
using CadTools.StandIns;

namespace Orv3DEditor {

using OrvCADBaseModel;

// The symbol browser control. What the user picks arrives through Choose,
// which stands for clicks and is not part of the host's interface.
public class OrvSymbolControl : StandIn {
  string libraries;
  OrvSymbol selected;
  string database = "", folder = "", name = "";

  public bool ViewMode { set { Record("set_ViewMode", null, value); } }
  public void LoadSymbolLibraries(string directory) {
    Record("LoadSymbolLibraries", null, directory);
    libraries = directory;
  }

  public bool SelectSymbol(string db, string fld, string sym) {
    bool found = Pick(db, fld, sym);
    return (bool)Record("SelectSymbol", found, db, fld, sym);
  }

  public void Refresh() { Record("Refresh", null); }

  // The user picks a symbol; names without a symbol leave SelectedSymbol null.
  public bool Choose(string db, string fld, string sym) { return Pick(db, fld, sym); }

  // A symbol selected whose names the control does not report.
  public bool ChooseSymbolOnly(string db, string fld, string sym) {
    bool found = Pick(db, fld, sym);
    database = folder = name = "";
    return found;
  }

  // A symbol the libraries do not have selects nothing.
  bool Pick(string db, string fld, string sym) {
    OrvSymbol found = OrvSymbol.Read(libraries, db ?? "", fld ?? "", sym ?? "");
    if (found == null) return false;
    database = db;
    folder = fld;
    name = sym;
    selected = found;
    return true;
  }

  public string SelectedSymbolName { get { return name; } }
  public string SelectedFolderName { get { return folder; } }
  public string SelectedDatabaseName { get { return database; } }
  public OrvSymbol SelectedSymbol { get { return selected; } }
}

}  // namespace Orv3DEditor

