// Types by id, types by name, and where assemblies are found.
using System;
using System.Collections.Generic;
using System.IO;
using System.Reflection;

namespace CadTools.Bridge {

public static class Types {
  // Every result that is an object carries its type's id, so finding one
  // must not take a lock: readers use the current snapshot, and a new type
  // replaces both tables under the lock. Id 0 means "none".
  static Type[] byId = { typeof(void), typeof(string) };
  static Dictionary<Type, int> ids = new Dictionary<Type, int> { { typeof(string), 1 } };
  const int StringId = 1;
  static readonly Dictionary<string, Assembly> loaded = new Dictionary<string, Assembly>(StringComparer.OrdinalIgnoreCase);
  static readonly List<string> folders = new List<string>();
  static readonly object gate = new object();

  public static int Id(Type t) {
    if (t == typeof(string)) return StringId;
    int id;
    if (ids.TryGetValue(t, out id)) return id;
    lock (gate) {
      if (ids.TryGetValue(t, out id)) return id;
      id = byId.Length;
      var moreIds = new Dictionary<Type, int>(ids);
      moreIds.Add(t, id);
      var moreTypes = new Type[id + 1];
      Array.Copy(byId, moreTypes, id);
      moreTypes[id] = t;
      byId = moreTypes;
      ids = moreIds;
      return id;
    }
  }

  public static Type ById(int id) {
    Type[] all = byId;
    if (id <= 0 || id >= all.Length) throw new ArgumentOutOfRangeException("id", "no type with id " + id);
    return all[id];
  }

  // Loads an assembly from a file; its folder is searched for the
  // assemblies it references.
  public static Assembly Load(string path) {
    string full = Path.GetFullPath(path);
    Assembly a = Assembly.LoadFrom(full);
    lock (gate) {
      loaded[a.GetName().Name] = a;
      string folder = Path.GetDirectoryName(full);
      if (!folders.Contains(folder)) folders.Add(folder);
    }
    return a;
  }

  internal static void AddFolder(string folder) {
    lock (gate) {
      if (!folders.Contains(folder)) folders.Add(folder);
    }
  }

  // An assembly-qualified name ("Ns.Type, Assembly"), or a full name found
  // in any loaded assembly ("System.GC", "Ns.Type").
  public static Type Find(string name) {
    Type t = Type.GetType(name, false);
    if (t != null) return t;
    foreach (Assembly a in AppDomain.CurrentDomain.GetAssemblies()) {
      t = a.GetType(name, false);
      if (t != null) return t;
    }
    throw new TypeLoadException("type '" + name + "' not found");
  }

  internal static Assembly Resolve(object sender, ResolveEventArgs args) {
    string name = new AssemblyName(args.Name).Name;
    lock (gate) {
      Assembly a;
      if (loaded.TryGetValue(name, out a)) return a;
      foreach (string folder in folders) {
        string candidate = Path.Combine(folder, name + ".dll");
        if (File.Exists(candidate)) {
          a = Assembly.LoadFrom(candidate);
          loaded[name] = a;
          return a;
        }
      }
    }
    return null;
  }
}

}  // namespace CadTools.Bridge
