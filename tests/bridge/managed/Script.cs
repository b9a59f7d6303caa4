// What the stand-ins for the host's managed components share: a log of
// every call they receive, in order, and what a test told them to return
// or throw. Tests reach it through the bridge itself:
//
//   Script.Reset();
//   Script.Returns("OrvEquipmentBrowserDialog.ShowDialog", 1);   // DialogResult.OK
//   Script.Throws("OrvEquipmentEditorDialog.Initialize", "System.IO.IOException", "no database");
//   ... drive the facade ...
//   Script.Log();   // ["OrvEquipmentBrowserDialog#1.new(\"de-DE\")", "OrvEquipmentBrowserDialog#1.SetDbPath(\"C:\\Db\")", ...]
using System;
using System.Collections.Generic;
using System.Globalization;
using System.Text;

namespace CadTools.StandIns {

public static class Script {
  static readonly List<string> log = new List<string>();
  static readonly Dictionary<string, object> returns = new Dictionary<string, object>();
  static readonly Dictionary<string, Exception> throws = new Dictionary<string, Exception>();
  static readonly Dictionary<string, int> instances = new Dictionary<string, int>();

  public static void Reset() {
    log.Clear();
    returns.Clear();
    throws.Clear();
    instances.Clear();
  }

  public static List<string> Log() { return new List<string>(log); }

  // What member ("Class.Member") returns from now on.
  public static void Returns(string member, object value) { returns[member] = value; }

  // Makes member throw a new exception of the named type with the message.
  public static void Throws(string member, string exceptionType, string message) {
    Type type = Type.GetType(exceptionType, true);
    throws[member] = (Exception)Activator.CreateInstance(type, message);
  }

  // The next instance number of a class: #1, #2, ...
  public static int NewInstance(string className) {
    int n;
    instances.TryGetValue(className, out n);
    instances[className] = ++n;
    return n;
  }

  // Records a call and returns what the test set for it, or the fallback.
  public static object Call(string className, int instance, string member, object fallback, params object[] args) {
    var line = new StringBuilder();
    line.Append(className).Append('#').Append(instance).Append('.').Append(member).Append('(');
    for (int i = 0; i < args.Length; ++i) {
      if (i > 0) line.Append(", ");
      line.Append(Show(args[i]));
    }
    line.Append(')');
    log.Add(line.ToString());
    string key = className + "." + member;
    Exception e;
    if (throws.TryGetValue(key, out e)) throw e;
    object value;
    return returns.TryGetValue(key, out value) ? value : fallback;
  }

  static string Show(object o) {
    if (o == null) return "null";
    if (o is StandIn) return o.ToString();
    if (o is string) return "\"" + o + "\"";
    if (o is bool) return (bool)o ? "true" : "false";
    if (o is Enum) return o.GetType().Name + "." + o;
    return Convert.ToString(o, CultureInfo.InvariantCulture);
  }
}

// A base for stand-ins: its number among instances of its class, and the
// recording call.
public abstract class StandIn : IDisposable {
  readonly string className;
  readonly int instance;

  protected StandIn(params object[] args) {
    className = GetType().Name;
    instance = Script.NewInstance(className);
    Record("new", null, args);
  }

  protected object Record(string member, object fallback, params object[] args) {
    return Script.Call(className, instance, member, fallback, args);
  }

  // Dispose is recorded so that a test sees whether anyone called it.
  public void Dispose() { Record("Dispose", null); }

  // How the log names this object: its class and number.
  public override string ToString() { return className + "#" + instance; }
}

}  // namespace CadTools.StandIns
