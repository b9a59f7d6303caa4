// The bridge's entry points, handed to native code as C function pointers.
//
// Native code starts the runtime, then calls Bootstrap with the address of
// its table of function pointers; Bootstrap fills the table. From then on
// native code reaches managed code only through the table, so it is the
// same on every runtime. No managed exception may cross a function pointer:
// every entry point catches and reports through the error sink.
using System;
using System.Collections;
using System.Globalization;
using System.IO;
using System.Runtime.InteropServices;

namespace CadTools.Bridge {

public static unsafe class Seam {
  // The number of slots in the table, the first of which holds this number;
  // it changes whenever the table does.
  const int TableSlots = 17;

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void TextEntry(char* text, int length, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void ResolveEntry(int type, int how, char* name, int length, Value* samples, int argc, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void InvokeEntry(int member, long target, Value* args, int argc, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void HandleEntry(long handle, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void HandleFlagEntry(long handle, int flag, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void TypeEntry(int type, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void RetargetEntry(long handle, long target, Value* result);

  // Delegates handed to native code must live as long as the process.
  static Delegate[] entries;

  // Called once per process with the table's address in decimal (the one
  // string argument a CLR host can pass); returns 0 when the table is
  // filled, 1 when it has another size than ours.
  public static int Bootstrap(string tableAddress) {
    return BootstrapAt(long.Parse(tableAddress, CultureInfo.InvariantCulture));
  }

  // The same with the address as a number, for hosts that can pass one.
  public static int BootstrapAt(long tableAddress) {
    IntPtr* table = (IntPtr*)new IntPtr(tableAddress);
    if (table[0].ToInt64() != TableSlots) return 1;
    Marshalling.stringSink = (StringSink)Marshal.GetDelegateForFunctionPointer(table[14], typeof(StringSink));
    Marshalling.errorSink = (ErrorSink)Marshal.GetDelegateForFunctionPointer(table[15], typeof(ErrorSink));
    Marshalling.itemSink = (ItemSink)Marshal.GetDelegateForFunctionPointer(table[16], typeof(ItemSink));
    Types.AddFolder(Path.GetDirectoryName(typeof(Seam).Assembly.Location));
    AppDomain.CurrentDomain.AssemblyResolve += Types.Resolve;
    entries = new Delegate[] {
      null,
      new TextEntry(LoadAssembly),
      new TextEntry(FindType),
      new ResolveEntry(Resolve),
      new InvokeEntry(Invoke),
      new TextEntry(NewString),
      new HandleFlagEntry(ReadString),
      new HandleEntry(TypeOf),
      new TypeEntry(TypeName),
      new HandleEntry(Items),
      new HandleEntry(NewHandle),
      new RetargetEntry(Retarget),
      new HandleEntry(FreeHandle),
      new HandleEntry(Collect),
    };
    for (int i = 1; i < entries.Length; ++i) table[i] = Marshal.GetFunctionPointerForDelegate(entries[i]);
    return 0;
  }

  static void LoadAssembly(char* path, int length, Value* r) {
    try {
      Types.Load(new string(path, 0, length));
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void FindType(char* name, int length, Value* r) {
    try {
      Marshalling.SetInt32(r, Types.Id(Types.Find(new string(name, 0, length))));
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void Resolve(int type, int how, char* name, int length, Value* samples, int argc, Value* r) {
    try {
      Marshalling.SetInt32(r, Members.Resolve(type, how, new string(name, 0, length), samples, argc));
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void Invoke(int member, long target, Value* args, int argc, Value* r) {
    try {
      Members.Invoke(member, Handles.Target(target), args, argc, r);
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void NewString(char* text, int length, Value* r) {
    try {
      r->Flags |= ResultFlags.StringAsObject;
      Marshalling.SetString(r, new string(text, 0, length));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // The string behind a handle; with zeroTerminated set, only the units
  // before the first NUL, as a native reader of the characters sees them.
  static void ReadString(long handle, int zeroTerminated, Value* r) {
    try {
      string s = (string)Handles.Target(handle);
      if (s != null && zeroTerminated != 0) {
        int nul = s.IndexOf('\0');
        if (nul >= 0) s = s.Substring(0, nul);
      }
      r->Flags &= ~ResultFlags.StringAsObject;
      Marshalling.SetString(r, s);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void TypeOf(long handle, Value* r) {
    try {
      object o = Handles.Target(handle);
      Marshalling.SetInt32(r, o == null ? 0 : Types.Id(o.GetType()));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void TypeName(int type, Value* r) {
    try {
      Marshalling.SetString(r, Types.ById(type).FullName);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // Hands each element of a list (any enumerable) to the item sink.
  static void Items(long handle, Value* r) {
    try {
      var items = (IEnumerable)Handles.Target(handle);
      if (items == null) throw new NullReferenceException("the list is null");
      int count = 0;
      foreach (object item in items) {
        Marshalling.SendItem(r, item);
        ++count;
      }
      Marshalling.SetInt32(r, count);
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  // A normal GC handle to the target of another (none for 0).
  static void NewHandle(long target, Value* r) {
    try {
      r->Kind = Kind.Object;
      r->Pointer = Handles.New(Handles.Target(target));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void Retarget(long handle, long target, Value* r) {
    try {
      Handles.Retarget(handle, Handles.Target(target));
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void FreeHandle(long handle, Value* r) {
    try {
      Handles.Free(handle);
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // A full collection with finalisers run, for tests of object lifetime.
  static void Collect(long unused, Value* r) {
    try {
      GC.Collect();
      GC.WaitForPendingFinalizers();
      GC.Collect();
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // Reflection wraps what a member threw; the host wants the original.
  static Exception Unwrap(Exception e) {
    var wrapped = e as System.Reflection.TargetInvocationException;
    return wrapped != null && wrapped.InnerException != null ? wrapped.InnerException : e;
  }
}

}  // namespace CadTools.Bridge
