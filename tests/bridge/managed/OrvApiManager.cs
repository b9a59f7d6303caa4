// Stand-ins for the host's docking pane and the pane control it shows.
using CadTools.StandIns;

namespace Orv.API.Manager {

// The control a pane's dialog hosts (a Windows Forms control in the host).
public class OrvPaneControl : StandIn {
  public void Refresh() { Record("Refresh", null); }
}

// The host's pane; it reaches the bridge as a COM pointer.
public class OrvDockingPane : StandIn {
  OrvPaneControl control;

  public OrvPaneControl PaneControl {
    get { return control; }
    set {
      Record("set_PaneControl", null, value);
      control = value;
    }
  }
}

// Not a pane: handing this over must fail with the runtime's cast error.
public class OrvOtherPane : StandIn {}

}  // namespace Orv.API.Manager
