// One value crossing between native and managed code, and the conversions
// of arguments and results. The layout is fixed by explicit offsets so that
// it is the same on every runtime and on 32-bit builds, where the managed
// layout would otherwise align 64-bit fields to 4 bytes.
using System;
using System.Runtime.InteropServices;

namespace CadTools.Bridge {

public static class Kind {
  public const int Null = 0;
  public const int Bool = 1;
  public const int Int = 2;
  public const int Enum = 3;
  public const int String = 4;
  public const int Object = 5;
  public const int Exception = 6;
  public const int Double = 7;
  // Arguments only: a 64-bit integer (results use Int for every width).
  public const int Long = 8;
}

// Flags on a result.
public static class ResultFlags {
  // Set by the native side: deliver a string result as an object.
  public const int StringAsObject = 1;
  // Set here: the text is in the native side's buffer, not in the sink.
  public const int InlineText = 2;
}

[StructLayout(LayoutKind.Explicit, Size = 32)]
public struct Value {
  [FieldOffset(0)] public int Kind;
  // Strings: the number of UTF-16 units. Results, before the call: how
  // many units the native side's buffer holds.
  [FieldOffset(4)] public int Length;
  // Bool, Int and Enum values; a Double's bits. Results, before the call:
  // the address of the native side's buffer for short strings.
  [FieldOffset(8)] public long Number;
  // String arguments: the characters. Object values: the reference's id
  // (Slots). Results: the native side's context for the sinks, kept as it is.
  [FieldOffset(16)] public long Pointer;
  // Object and Enum values: the type's id (0 for an enum of any type).
  [FieldOffset(24)] public int Type;
  [FieldOffset(28)] public int Flags;
}

// Text and items go back to native code through functions it hands over at
// start-up, so that a result needs no second call to fetch it.
[UnmanagedFunctionPointer(CallingConvention.Cdecl)]
public unsafe delegate void StringSink(IntPtr context, char* chars, int length);
[UnmanagedFunctionPointer(CallingConvention.Cdecl)]
public unsafe delegate void ErrorSink(IntPtr context, char* type, int typeLength, char* message, int messageLength);
[UnmanagedFunctionPointer(CallingConvention.Cdecl)]
public unsafe delegate void ItemSink(IntPtr context, Value* item);

// Reads arguments and writes results. Compiled invokers call these, so they
// are public and small.
public static unsafe class Marshalling {
  internal static StringSink stringSink;
  internal static ErrorSink errorSink;
  internal static ItemSink itemSink;

  static Value* At(Value* args, int i, int kind) {
    Value* v = args + i;
    if (v->Kind != kind) throw Mismatch(v, i);
    return v;
  }

  static InvalidCastException Mismatch(Value* v, int i) {
    return new InvalidCastException("argument " + i + " of kind " + v->Kind + " does not fit the member chosen for it");
  }

  public static bool ArgBool(Value* args, int i) { return At(args, i, Kind.Bool)->Number != 0; }

  public static int ArgInt32(Value* args, int i) { return checked((int)At(args, i, Kind.Int)->Number); }

  public static string ArgString(Value* args, int i) {
    Value* v = args + i;
    if (v->Kind == Kind.String) return new string((char*)v->Pointer, 0, v->Length);
    return (string)ArgObject(args, i);
  }

  public static object ArgObject(Value* args, int i) {
    Value* v = args + i;
    switch (v->Kind) {
      case Kind.Null: return null;
      case Kind.Object: return Slots.Get(v->Pointer);
      case Kind.String: return new string((char*)v->Pointer, 0, v->Length);
      case Kind.Bool: return v->Number != 0;
      case Kind.Int: return checked((int)v->Number);
      case Kind.Long: return v->Number;
      case Kind.Double: return BitConverter.Int64BitsToDouble(v->Number);
      default: throw Mismatch(v, i);
    }
  }

  // Any other parameter type: the value converted to it, boxed.
  public static object ArgBoxed(Value* args, int i, RuntimeTypeHandle typeHandle) {
    Type type = System.Type.GetTypeFromHandle(typeHandle);
    Type nullable = Nullable.GetUnderlyingType(type);
    Value* v = args + i;
    if (v->Kind == Kind.Null) {
      if (nullable != null) return null;
      throw Mismatch(v, i);
    }
    Type target = nullable ?? type;
    if (target.IsEnum) {
      if (v->Kind != Kind.Enum) throw Mismatch(v, i);
      return System.Enum.ToObject(target, v->Number);
    }
    object value = v->Kind == Kind.Enum ? (object)v->Number : ArgObject(args, i);
    if (target.IsInstanceOfType(value)) return value;
    if (value is IConvertible && typeof(IConvertible).IsAssignableFrom(target)) {
      return Convert.ChangeType(value, target, System.Globalization.CultureInfo.InvariantCulture);
    }
    throw Mismatch(v, i);
  }

  public static void SetNull(Value* r) { r->Kind = Kind.Null; }

  public static void SetBool(Value* r, bool b) {
    r->Kind = Kind.Bool;
    r->Number = b ? 1 : 0;
  }

  public static void SetInt32(Value* r, int n) {
    r->Kind = Kind.Int;
    r->Number = n;
  }

  public static void SetString(Value* r, string s) {
    if (s == null) {
      r->Kind = Kind.Null;
    } else if ((r->Flags & ResultFlags.StringAsObject) != 0) {
      SetHandle(r, s);
    } else {
      SetText(r, s, s.Length);
    }
  }

  // The first length units of s as text: short text straight into the
  // native buffer (no call back), longer text through the sink.
  public static void SetText(Value* r, string s, int length) {
    r->Kind = Kind.String;
    fixed (char* from = s) {
      if (r->Number != 0 && length <= r->Length) {
        char* to = (char*)r->Number;
        for (int i = 0; i < length; ++i) to[i] = from[i];
        r->Flags |= ResultFlags.InlineText;
      } else {
        r->Flags &= ~ResultFlags.InlineText;
        stringSink(new IntPtr(r->Pointer), from, length);
      }
    }
    r->Length = length;
  }

  // A result of a reference or boxed type: values where native code has a
  // kind for them, a handle otherwise.
  public static void SetObject(Value* r, object o) {
    if (o == null) { r->Kind = Kind.Null; return; }
    string s = o as string;
    if (s != null) { SetString(r, s); return; }
    Type t = o.GetType();
    if (t.IsEnum) {
      r->Kind = Kind.Enum;
      r->Number = Convert.ToInt64(o, System.Globalization.CultureInfo.InvariantCulture);
      r->Type = Types.Id(t);
    } else if (o is bool) {
      SetBool(r, (bool)o);
    } else if (o is int || o is short || o is sbyte || o is byte || o is ushort || o is uint || o is long) {
      r->Kind = Kind.Int;
      r->Number = Convert.ToInt64(o, System.Globalization.CultureInfo.InvariantCulture);
    } else if (o is IntPtr) {
      // Native handles (a control's window) cross as numbers.
      r->Kind = Kind.Int;
      r->Number = ((IntPtr)o).ToInt64();
    } else if (o is double || o is float) {
      r->Kind = Kind.Double;
      r->Number = BitConverter.DoubleToInt64Bits(Convert.ToDouble(o, System.Globalization.CultureInfo.InvariantCulture));
    } else {
      SetHandle(r, o);
    }
  }

  // Any object as a reference, a string or boxed value included.
  public static void SetReference(Value* r, object o) {
    if (o == null) {
      r->Kind = Kind.Null;
    } else {
      SetHandle(r, o);
    }
  }

  static void SetHandle(Value* r, object o) {
    r->Kind = Kind.Object;
    r->Pointer = Slots.Add(o);
    r->Type = Types.Id(o.GetType());
  }

  // Never throws: it runs in the entry points' catch blocks, and nothing
  // may leave those. An exception whose Message throws arrives without one.
  internal static void SetException(Value* r, Exception e) {
    string type, message;
    try { type = e.GetType().FullName ?? ""; } catch { type = "System.Exception"; }
    try { message = e.Message ?? ""; } catch { message = ""; }
    r->Kind = Kind.Exception;
    fixed (char* t = type)
    fixed (char* m = message) errorSink(new IntPtr(r->Pointer), t, type.Length, m, message.Length);
  }

  internal static void SendItem(Value* r, object item) {
    Value v = new Value();
    v.Pointer = r->Pointer;
    v.Number = r->Number;
    v.Length = r->Length;
    v.Flags = r->Flags;
    SetObject(&v, item);
    itemSink(new IntPtr(r->Pointer), &v);
  }
}

}  // namespace CadTools.Bridge
