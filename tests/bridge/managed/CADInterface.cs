// Stand-in for the host's diagram interface.
using System.Collections.Generic;
using CadTools.StandIns;

namespace CADInterface {

using OrvCADBaseModel;

public class DiagramInterface : StandIn {
  // Where LoadSymbol looks: the host's configured symbol database.
  public static string DatabaseFolder { get; set; }

  public OrvSymbol LoadSymbol(string db, string fld, string sym) {
    return (OrvSymbol)Record("LoadSymbol", OrvSymbol.Read(DatabaseFolder, db, fld, sym), db, fld, sym);
  }

  public int GetEntitiesCount(OrvSymbol symbol) { return (int)Record("GetEntitiesCount", symbol.Entities, symbol); }

  public string GetAttributeValue(OrvSymbol symbol, string attribute) {
    string value = attribute == "$ComponentType" ? symbol.ComponentType : null;
    return (string)Record("GetAttributeValue", value, symbol, attribute);
  }

  public List<ConnectionData> GetComponentConnections(OrvSymbol symbol) {
    List<ConnectionData> list = symbol.Connections.Count == 0 ? null : symbol.Connections;
    return (List<ConnectionData>)Record("GetComponentConnections", list, symbol);
  }
}

}  // namespace CADInterface
