// Members found by name and argument kinds, each compiled once into an
// invoker that reads its arguments straight from native memory and calls
// the member with its own parameter types: no reflection and no boxing of
// booleans, integers or strings on the call path.
using System;
using System.Collections.Generic;
using System.Reflection;
using System.Reflection.Emit;

namespace CadTools.Bridge {

public unsafe delegate void Invoker(object target, Value* args, Value* result);

public static unsafe class Members {
  // How a member is looked up; Static may be added to Method, Get and Set.
  public const int Method = 0;
  public const int Get = 1;
  public const int Set = 2;
  public const int Constructor = 3;
  public const int Static = 0x10;

  sealed class Member {
    public Invoker Invoke;
    public int Arity;
  }

  // Copied on write, so that calls read it without a lock.
  static Member[] members = new Member[1];
  static readonly object gate = new object();

  public static int Resolve(int typeId, int how, string name, Value* samples, int argc) {
    Type type = Types.ById(typeId);
    MethodBase chosen = Overloads.Choose(type, how, name, samples, argc);
    Member m = new Member { Invoke = Compile(chosen), Arity = argc };
    lock (gate) {
      Member[] grown = new Member[members.Length + 1];
      Array.Copy(members, grown, members.Length);
      grown[members.Length] = m;
      members = grown;
      return members.Length - 1;
    }
  }

  public static void Invoke(int id, object target, Value* args, int argc, Value* result) {
    Member[] all = members;
    if (id <= 0 || id >= all.Length) throw new ArgumentOutOfRangeException("id", "no member with id " + id);
    Member m = all[id];
    if (argc != m.Arity) throw new TargetParameterCountException("the member takes " + m.Arity + " arguments, not " + argc);
    m.Invoke(target, args, result);
  }

  static Invoker Compile(MethodBase m) {
    var dm = new DynamicMethod("invoke_" + m.Name, typeof(void),
                               new[] { typeof(object), typeof(Value*), typeof(Value*) }, typeof(Members).Module, true);
    ILGenerator il = dm.GetILGenerator();
    bool isCtor = m is ConstructorInfo;
    Type declaring = m.DeclaringType;
    if (!m.IsStatic && !isCtor) {
      il.Emit(OpCodes.Ldarg_0);
      il.Emit(declaring.IsValueType ? OpCodes.Unbox : OpCodes.Castclass, declaring);
    }
    ParameterInfo[] ps = m.GetParameters();
    for (int i = 0; i < ps.Length; ++i) EmitArgument(il, i, ps[i].ParameterType);
    Type returned;
    if (isCtor) {
      il.Emit(OpCodes.Newobj, (ConstructorInfo)m);
      returned = declaring;
    } else {
      il.Emit(m.IsStatic || declaring.IsValueType ? OpCodes.Call : OpCodes.Callvirt, (MethodInfo)m);
      returned = ((MethodInfo)m).ReturnType;
    }
    EmitResult(il, returned);
    il.Emit(OpCodes.Ret);
    return (Invoker)dm.CreateDelegate(typeof(Invoker));
  }

  static MethodInfo Helper(string name) { return typeof(Marshalling).GetMethod(name); }

  static void EmitArgument(ILGenerator il, int i, Type p) {
    il.Emit(OpCodes.Ldarg_1);
    il.Emit(OpCodes.Ldc_I4, i);
    if (p == typeof(bool)) {
      il.Emit(OpCodes.Call, Helper("ArgBool"));
    } else if (p == typeof(int)) {
      il.Emit(OpCodes.Call, Helper("ArgInt32"));
    } else if (p == typeof(string)) {
      il.Emit(OpCodes.Call, Helper("ArgString"));
    } else if (!p.IsValueType) {
      il.Emit(OpCodes.Call, Helper("ArgObject"));
      if (p != typeof(object)) il.Emit(OpCodes.Castclass, p);
    } else {
      il.Emit(OpCodes.Ldtoken, p);
      il.Emit(OpCodes.Call, Helper("ArgBoxed"));
      il.Emit(OpCodes.Unbox_Any, p);
    }
  }

  static void EmitResult(ILGenerator il, Type t) {
    if (t == typeof(void)) {
      il.Emit(OpCodes.Ldarg_2);
      il.Emit(OpCodes.Call, Helper("SetNull"));
      return;
    }
    LocalBuilder value = il.DeclareLocal(t);
    il.Emit(OpCodes.Stloc, value);
    il.Emit(OpCodes.Ldarg_2);
    il.Emit(OpCodes.Ldloc, value);
    if (t == typeof(bool)) {
      il.Emit(OpCodes.Call, Helper("SetBool"));
    } else if (t == typeof(int)) {
      il.Emit(OpCodes.Call, Helper("SetInt32"));
    } else if (t == typeof(string)) {
      il.Emit(OpCodes.Call, Helper("SetString"));
    } else {
      if (t.IsValueType) il.Emit(OpCodes.Box, t);
      il.Emit(OpCodes.Call, Helper("SetObject"));
    }
  }
}

}  // namespace CadTools.Bridge
