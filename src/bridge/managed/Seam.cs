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
  const int TableSlots = 20;

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void TextEntry(char* text, int length, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void ResolveEntry(int type, int how, char* name, int length, Value* samples, int argc, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void InvokeEntry(int member, long target, Value* args, int argc, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void IdEntry(long id, Value* result);
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  delegate void IdFlagEntry(long id, int flag, Value* result);
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
    Marshalling.stringSink = (StringSink)Marshal.GetDelegateForFunctionPointer(table[16], typeof(StringSink));
    Marshalling.errorSink = (ErrorSink)Marshal.GetDelegateForFunctionPointer(table[17], typeof(ErrorSink));
    Marshalling.itemSink = (ItemSink)Marshal.GetDelegateForFunctionPointer(table[18], typeof(ItemSink));
    Slots.queue = (FreeQueue*)table[19];
    Types.AddFolder(Path.GetDirectoryName(typeof(Seam).Assembly.Location));
    AppDomain.CurrentDomain.AssemblyResolve += Types.Resolve;
    entries = new Delegate[] {
      null,
      new TextEntry(LoadAssembly),
      new TextEntry(FindType),
      new ResolveEntry(Resolve),
      new InvokeEntry(Invoke),
      new TextEntry(NewString),
      new IdFlagEntry(ReadString),
      new TypeEntry(TypeName),
      new IdEntry(Items),
      new IdEntry(Free),
      new IdEntry(Copy),
      new IdEntry(NewGcHandle),
      new RetargetEntry(RetargetGcHandle),
      new IdEntry(FreeGcHandle),
      new IdEntry(GcHandleTarget),
      new IdEntry(Collect),
    };
    for (int i = 1; i < entries.Length; ++i) table[i] = Marshal.GetFunctionPointerForDelegate(entries[i]);
    return 0;
  }

  static void LoadAssembly(char* path, int length, Value* r) {
    try {
      Slots.FreeQueued();
      Types.Load(new string(path, 0, length));
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void FindType(char* name, int length, Value* r) {
    try {
      Slots.FreeQueued();
      Marshalling.SetInt32(r, Types.Id(Types.Find(new string(name, 0, length))));
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void Resolve(int type, int how, char* name, int length, Value* samples, int argc, Value* r) {
    try {
      Slots.FreeQueued();
      Marshalling.SetInt32(r, Members.Resolve(type, how, new string(name, 0, length), samples, argc));
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void Invoke(int member, long target, Value* args, int argc, Value* r) {
    try {
      Slots.FreeQueued();
      Members.Invoke(member, Slots.Get(target), args, argc, r);
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  static void NewString(char* text, int length, Value* r) {
    try {
      Slots.FreeQueued();
      Marshalling.SetReference(r, new string(text, 0, length));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // The string behind a reference; with zeroTerminated set, only the units
  // before the first NUL, as a native reader of the characters sees them.
  static void ReadString(long id, int zeroTerminated, Value* r) {
    try {
      Slots.FreeQueued();
      string s = (string)Slots.Get(id);
      if (s == null) {
        Marshalling.SetNull(r);
        return;
      }
      int length = s.Length;
      if (zeroTerminated != 0) {
        fixed (char* p = s) {
          for (length = 0; length < s.Length && p[length] != '\0';) ++length;
        }
      }
      Marshalling.SetText(r, s, length);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void TypeName(int type, Value* r) {
    try {
      Marshalling.SetString(r, Types.ById(type).FullName);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // Hands each element of a list (any enumerable) to the item sink.
  static void Items(long id, Value* r) {
    try {
      Slots.FreeQueued();
      var items = (IEnumerable)Slots.Get(id);
      if (items == null) throw new NullReferenceException("the list is null");
      int count = 0;
      foreach (object item in items) {
        Marshalling.SendItem(r, item);
        ++count;
      }
      Marshalling.SetInt32(r, count);
    } catch (Exception e) { Marshalling.SetException(r, Unwrap(e)); }
  }

  // Frees a reference at once (and whatever is queued).
  static void Free(long id, Value* r) {
    try {
      Slots.FreeQueued();
      Slots.Free(id);
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // A second reference to the same object.
  static void Copy(long id, Value* r) {
    try {
      Slots.FreeQueued();
      Marshalling.SetReference(r, Slots.Get(id));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // GC handles, for gcroot: a normal handle to a reference's object (none
  // for 0), pointed elsewhere in place, freed, and read.
  static void NewGcHandle(long target, Value* r) {
    try {
      Slots.FreeQueued();
      r->Kind = Kind.Int;
      r->Number = Handles.New(Slots.Get(target));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void RetargetGcHandle(long handle, long target, Value* r) {
    try {
      Handles.Retarget(handle, Slots.Get(target));
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void FreeGcHandle(long handle, Value* r) {
    try {
      Handles.Free(handle);
      Marshalling.SetNull(r);
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  static void GcHandleTarget(long handle, Value* r) {
    try {
      Slots.FreeQueued();
      Marshalling.SetReference(r, Handles.Target(handle));
    } catch (Exception e) { Marshalling.SetException(r, e); }
  }

  // A full collection with finalisers run, for tests of object lifetime.
  static void Collect(long unused, Value* r) {
    try {
      Slots.FreeQueued();
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
