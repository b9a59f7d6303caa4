// Stand-ins for the host's component-database dialogs: the members the
// bridge calls, each recorded; results as the test sets them.
using System.Windows.Forms;
using CadTools.StandIns;

namespace OrvDatabaseControls {

// What both dialogs have: a culture, paths, skin, language and a modal show.
public abstract class DatabaseDialog : StandIn {
  protected DatabaseDialog(string cultureId) : base(cultureId) {}

  public void SetDbPath(string path) { Record("SetDbPath", null, path); }
  public void SetSystemPath(string path) { Record("SetSystemPath", null, path); }
  public void SetCommonPath(string path) { Record("SetCommonPath", null, path); }
  public void SetSymbolPath(string path) { Record("SetSymbolPath", null, path); }
  public void SetSkinName(string name) { Record("SetSkinName", null, name); }
  public void SetLanguageId(int id) { Record("SetLanguageId", null, id); }
  public void Initialize() { Record("Initialize", null); }

  // Cancel unless the test says otherwise: nobody is there to click.
  public DialogResult ShowDialog() {
    return (DialogResult)System.Convert.ToInt32(Record("ShowDialog", (int)DialogResult.Cancel));
  }
}

public class OrvEquipmentBrowserDialog : DatabaseDialog {
  string selected = "";

  public OrvEquipmentBrowserDialog(string cultureId) : base(cultureId) {}

  public void ClearFilters() { Record("ClearFilters", null); }
  public void ReloadCatalogs() { Record("ReloadCatalogs", null); }
  public void RefreshFilters() { Record("RefreshFilters", null); }
  public void SetContactFilter(bool on) { Record("SetContactFilter", null, on); }
  public void SetContactFilterModuleId(int id) { Record("SetContactFilterModuleId", null, id); }
  public void AddContactFilter(string key, string value) { Record("AddContactFilter", null, key, value); }

  public void SetSelectedItemsAsString(string items) {
    Record("SetSelectedItemsAsString", null, items);
    selected = items;
  }

  // What the user picked: the preset selection unless the test says otherwise.
  public string GetSelectedItemsAsString() { return (string)Record("GetSelectedItemsAsString", selected); }
}

public class OrvEquipmentEditorDialog : DatabaseDialog {
  public OrvEquipmentEditorDialog(string cultureId) : base(cultureId) {}

  public void AddChannelModule(string key, string value) { Record("AddChannelModule", null, key, value); }
  public void AddComponentId(string a, string b, string c) { Record("AddComponentId", null, a, b, c); }
  public bool IsSymbolsDownloaded() { return (bool)Record("IsSymbolsDownloaded", false); }
}

}  // namespace OrvDatabaseControls
