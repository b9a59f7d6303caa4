// Stand-in for the host's symbol model. Symbols come from a small symbol
// database, a folder of plain files DATABASE/FOLDER/SYMBOL.sym:
//
//   entities = 12
//   type = $Rail
//   connection = X1:1
//   connection = X1:2
//
// (no "type" line: the symbol has no $ComponentType attribute).
using System;
using System.Collections.Generic;
using System.IO;
using CadTools.StandIns;

namespace OrvCADBaseModel {

public class ConnectionData {
  public ConnectionData(string text) { Text = text; }
  public string Text { get; private set; }
}

public class OrvSymbol : StandIn {
  public OrvSymbol(string database, string folder, string name) : base(database, folder, name) {
    Database = database;
    Folder = folder;
    Name = name;
    Connections = new List<ConnectionData>();
  }
  public string Database { get; private set; }
  public string Folder { get; private set; }
  public string Name { get; private set; }
  public int Entities { get; set; }
  public string ComponentType { get; set; }
  public List<ConnectionData> Connections { get; private set; }

  // The symbol at root/database/folder/name.sym, or null.
  public static OrvSymbol Read(string root, string database, string folder, string name) {
    if (root == null) return null;
    string path = Path.Combine(Path.Combine(Path.Combine(root, database), folder), name + ".sym");
    if (!File.Exists(path)) return null;
    var symbol = new OrvSymbol(database, folder, name);
    foreach (string line in File.ReadAllLines(path)) {
      int eq = line.IndexOf('=');
      if (eq < 0) continue;
      string key = line.Substring(0, eq).Trim();
      string value = line.Substring(eq + 1).Trim();
      if (key == "entities") symbol.Entities = int.Parse(value, System.Globalization.CultureInfo.InvariantCulture);
      if (key == "type") symbol.ComponentType = value;
      if (key == "connection") symbol.Connections.Add(new ConnectionData(value));
    }
    return symbol;
  }
}

}  // namespace OrvCADBaseModel

