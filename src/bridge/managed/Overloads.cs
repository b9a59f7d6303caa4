// Picks the member a call means from its name and the kinds of its
// arguments, the way C# picks an overload: every argument must fit its
// parameter, and the winner fits each argument at least as closely as every
// other candidate and one of them more closely.
using System;
using System.Collections.Generic;
using System.Reflection;
using System.Text;

namespace CadTools.Bridge {

static unsafe class Overloads {
  const int NoFit = -1;

  public static MethodBase Choose(Type type, int how, string name, Value* samples, int argc) {
    var fits = new List<KeyValuePair<MethodBase, int[]>>();
    foreach (MethodBase m in Candidates(type, how, name, argc)) {
      int[] costs = Costs(m, samples, argc);
      if (costs == null) continue;
      // A member declared with "new" hides the base member it repeats.
      int same = fits.FindIndex(f => SameParameters(f.Key, m));
      if (same < 0) {
        fits.Add(new KeyValuePair<MethodBase, int[]>(m, costs));
      } else if (Hides(m, fits[same].Key)) {
        fits[same] = new KeyValuePair<MethodBase, int[]>(m, costs);
      }
    }
    if (fits.Count == 0) throw new MissingMemberException(Describe(type, how, name, samples, argc) + " not found");
    var unbeaten = fits.FindAll(a => !fits.Exists(b => Better(b.Value, a.Value)));
    if (unbeaten.Count != 1) {
      throw new AmbiguousMatchException(Describe(type, how, name, samples, argc) + " matches more than one member");
    }
    return unbeaten[0].Key;
  }

  static List<MethodBase> Candidates(Type type, int how, string name, int argc) {
    var found = new List<MethodBase>();
    bool isStatic = (how & Members.Static) != 0;
    BindingFlags flags = BindingFlags.Public | BindingFlags.FlattenHierarchy |
                         (isStatic ? BindingFlags.Static : BindingFlags.Instance);
    int kind = how & 0xF;
    var types = new List<Type> { type };
    // Members an object has only through an interface (Dispose on a type
    // that implements IDisposable explicitly, Count on a list seen as
    // ICollection) count as its own.
    if (!isStatic) types.AddRange(type.GetInterfaces());
    foreach (Type t in types) {
      if (kind == Members.Constructor) {
        if (t == type) found.AddRange(t.GetConstructors());
      } else if (kind == Members.Method) {
        foreach (MethodInfo m in t.GetMethods(flags)) {
          if (m.Name == name && !m.IsGenericMethodDefinition) found.Add(m);
        }
      } else {
        foreach (PropertyInfo p in t.GetProperties(flags)) {
          if (p.Name != name) continue;
          MethodInfo accessor = kind == Members.Get ? p.GetGetMethod() : p.GetSetMethod();
          if (accessor != null) found.Add(accessor);
        }
      }
      if (found.Count > 0 && t == type) break;
    }
    found.RemoveAll(m => !Callable(m, argc));
    return found;
  }

  static bool Callable(MethodBase m, int argc) {
    ParameterInfo[] ps = m.GetParameters();
    if (ps.Length != argc || m.ContainsGenericParameters) return false;
    foreach (ParameterInfo p in ps) {
      if (p.ParameterType.IsByRef || p.ParameterType.IsPointer) return false;
    }
    return true;
  }

  static int[] Costs(MethodBase m, Value* samples, int argc) {
    ParameterInfo[] ps = m.GetParameters();
    var costs = new int[argc];
    for (int i = 0; i < argc; ++i) {
      costs[i] = Cost(samples + i, ps[i].ParameterType);
      if (costs[i] == NoFit) return null;
    }
    return costs;
  }

  // How closely an argument fits a parameter type: 0 exactly, larger
  // values less closely, NoFit not at all.
  static int Cost(Value* v, Type p) {
    Type inner = Nullable.GetUnderlyingType(p);
    int lifted = inner != null ? 1 : 0;
    Type q = inner ?? p;
    switch (v->Kind) {
      case Kind.Null:
        if (p.IsValueType && inner == null) return NoFit;
        return p == typeof(object) ? 2 : 1;
      case Kind.Bool:
        if (q == typeof(bool)) return lifted;
        return Boxed(typeof(bool), p);
      case Kind.Int:
        if (q == typeof(int)) return lifted;
        if (q == typeof(long)) return 1 + lifted;
        if (q == typeof(double)) return 2 + lifted;
        if (q == typeof(float) || q == typeof(decimal)) return 3 + lifted;
        if (q == typeof(short) || q == typeof(byte) || q == typeof(sbyte) || q == typeof(ushort) ||
            q == typeof(uint) || q == typeof(ulong)) {
          return 4 + lifted;
        }
        return Boxed(typeof(int), p);
      case Kind.Long:
        if (q == typeof(long)) return lifted;
        if (q == typeof(double)) return 1 + lifted;
        if (q == typeof(float) || q == typeof(decimal)) return 2 + lifted;
        if (q == typeof(ulong)) return 3 + lifted;
        return Boxed(typeof(long), p);
      case Kind.Double:
        if (q == typeof(double)) return lifted;
        if (q == typeof(float) || q == typeof(decimal)) return 1 + lifted;
        return Boxed(typeof(double), p);
      case Kind.Enum:
        if (q.IsEnum) {
          if (v->Type == 0) return 1 + lifted;
          return Types.ById(v->Type) == q ? lifted : NoFit;
        }
        return v->Type == 0 ? NoFit : Boxed(Types.ById(v->Type), p);
      case Kind.String:
        if (p == typeof(string)) return 0;
        return Boxed(typeof(string), p);
      case Kind.Object: {
        Type actual = Types.ById(v->Type);
        if (p == actual) return 0;
        if (!p.IsAssignableFrom(actual)) return NoFit;
        if (p == typeof(object)) return 1000;
        int distance = 1;
        for (Type b = actual.BaseType; b != null && b != p; b = b.BaseType) ++distance;
        return p.IsInterface ? 500 : distance;
      }
      default:
        return NoFit;
    }
  }

  // A value of type t passed where p, a base class or interface, is wanted.
  static int Boxed(Type t, Type p) {
    if (!p.IsAssignableFrom(t)) return NoFit;
    return p == typeof(object) ? 1000 : 500;
  }

  // Whether a fits every argument at least as closely as b, and one more closely.
  static bool Better(int[] a, int[] b) {
    bool closer = false;
    for (int i = 0; i < a.Length; ++i) {
      if (a[i] > b[i]) return false;
      if (a[i] < b[i]) closer = true;
    }
    return closer;
  }

  static bool SameParameters(MethodBase a, MethodBase b) {
    ParameterInfo[] pa = a.GetParameters(), pb = b.GetParameters();
    for (int i = 0; i < pa.Length; ++i) {
      if (pa[i].ParameterType != pb[i].ParameterType) return false;
    }
    return true;
  }

  // A member declared with "new" in a derived class hides the base's.
  static bool Hides(MethodBase a, MethodBase b) {
    return a.DeclaringType != b.DeclaringType && b.DeclaringType.IsAssignableFrom(a.DeclaringType);
  }

  static string Describe(Type type, int how, string name, Value* samples, int argc) {
    var text = new StringBuilder();
    int kind = how & 0xF;
    text.Append(kind == Members.Constructor ? "constructor of " : (kind == Members.Method ? "method " : "property "));
    text.Append(type.FullName);
    if (kind != Members.Constructor) text.Append('.').Append(name);
    text.Append('(');
    for (int i = 0; i < argc; ++i) {
      if (i > 0) text.Append(", ");
      text.Append(KindName(samples + i));
    }
    return text.Append(')').ToString();
  }

  static string KindName(Value* v) {
    switch (v->Kind) {
      case Kind.Null: return "null";
      case Kind.Bool: return "bool";
      case Kind.Int: return "int";
      case Kind.Long: return "long";
      case Kind.Double: return "double";
      case Kind.String: return "string";
      case Kind.Enum: return v->Type == 0 ? "enum" : Types.ById(v->Type).FullName;
      case Kind.Object: return Types.ById(v->Type).FullName;
      default: return "?";
    }
  }
}

}  // namespace CadTools.Bridge
