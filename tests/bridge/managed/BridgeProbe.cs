// Members with which the tests and benchmarks exercise the bridge itself:
// overloads of every kind, properties, lists, strings, exceptions and
// object lifetime.
using System;
using System.Collections.Generic;

namespace BridgeProbe {

public enum Mode { Off = 0, On = 1, Auto = 7 }

public class Base {
  public virtual string Who() { return "Base"; }
}

public class Derived : Base {
  public override string Who() { return "Derived"; }
}

public class Overloads {
  public string Pick(int n) { return "int " + n; }
  public string Pick(long n) { return "long " + n; }
  public string Pick(double d) { return "double " + d.ToString(System.Globalization.CultureInfo.InvariantCulture); }
  public string Pick(bool b) { return "bool " + b; }
  public string Pick(string s) { return "string " + (s == null ? "null" : s); }
  public string Pick(Mode m) { return "Mode " + m; }
  public string Pick(Base b) { return "Base " + b.Who(); }
  public string Pick(Derived d) { return "Derived " + d.Who(); }
  public string Pick(object o) { return "object " + (o == null ? "null" : o.GetType().Name); }
  public string Pick(int a, string b) { return "int,string"; }
  public string Pick(string a, int b) { return "string,int"; }
  public string Pick(object a, object b) { return "object,object"; }

  public string Long(long n) { return "long " + n; }
  public string Narrow(short n) { return "short " + n; }
  public string Either(Base a, object b) { return "Base,object"; }
  public string Either(object a, Base b) { return "object,Base"; }

  public static string Static(int n) { return "static int " + n; }
  public static string Static(string s) { return "static string " + s; }

  public Overloads() { Made = "()"; }
  public Overloads(int n) { Made = "(int)"; }
  public Overloads(string s) { Made = "(string)"; }
  public string Made { get; private set; }

  public string Name { get; set; }
  public static int Counter { get; set; }
  readonly Dictionary<string, int> cells = new Dictionary<string, int>();
  public int this[string key] {
    get { int v; return cells.TryGetValue(key, out v) ? v : -1; }
    set { cells[key] = value; }
  }
}

public class Values {
  public int Int() { return -42; }
  public long Big() { return 1L << 40; }
  public bool True() { return true; }
  public double Half() { return 0.5; }
  public Mode Auto() { return Mode.Auto; }
  public string Null() { return null; }
  public object Boxed() { return 7; }
  public Derived Object() { return new Derived(); }
  public List<string> Strings() { return new List<string> { "a", "ä", "\U0001F600" }; }
  public List<object> Mixed() { return new List<object> { 1, "two", null, true, Mode.On, new Base() }; }
  public int[] Numbers() { return new[] { 3, 1, 2 }; }
  public string WithNul() { return "ab\0cd"; }
  public string LoneSurrogate() { return "x\uD800y"; }
  public int Length(string s) { return s == null ? -1 : s.Length; }
  public string Units(string s) {
    var parts = new List<string>();
    foreach (char c in s) parts.Add(((int)c).ToString("X4"));
    return string.Join(" ", parts.ToArray());
  }
}

public class Thrower {
  public void Throw(string type, string message) {
    throw (Exception)Activator.CreateInstance(Type.GetType(type, true), message);
  }
  public void NullDeref() {
    string s = null;
    Console.WriteLine(s.Length);
  }
  public int Count { get { throw new InvalidOperationException("no count"); } }
}

// Watches objects without keeping them alive.
public static class Lifetime {
  public static WeakReference Watch(object o) { return new WeakReference(o); }
  public static bool IsAlive(WeakReference w) { return w.IsAlive; }
  public static object Fresh() { return new Base(); }
}

// Trivial members for the call benchmarks.
public class Bench {
  int total;
  public void Nop() {}
  public int Add(int n) { total += n; return total; }
  public string Name() { return "C:\\Db\\Main.mdb"; }
}

}  // namespace BridgeProbe
