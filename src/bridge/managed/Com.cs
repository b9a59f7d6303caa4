// COM pointers and the managed objects behind them: the host hands its
// docking pane over as an IDispatch.
using System;
using System.Runtime.InteropServices;

namespace CadTools.Bridge {

public static class Com {
  static readonly Guid IidDispatch = new Guid("00020400-0000-0000-C000-000000000046");

  // The object behind a COM pointer, cast to the named type as a C# cast
  // does: InvalidCastException for an object of another type.
  public static object ObjectAs(long pointer, string typeName) {
    object o = Marshal.GetObjectForIUnknown(new IntPtr(pointer));
    Type type = Types.Find(typeName);
    if (o != null && !type.IsInstanceOfType(o)) {
      throw new InvalidCastException("Unable to cast object of type '" + o.GetType().FullName + "' to type '" +
                                     type.FullName + "'.");
    }
    return o;
  }

  // An IDispatch pointer for an object, as a host hands one over; released
  // with Release.
  public static long DispatchFor(object o) {
    IntPtr unknown = Marshal.GetIUnknownForObject(o);
    try {
      IntPtr dispatch;
      Guid iid = IidDispatch;
      int hr = Marshal.QueryInterface(unknown, ref iid, out dispatch);
      if (hr != 0) Marshal.ThrowExceptionForHR(hr);
      return dispatch.ToInt64();
    } finally {
      Marshal.Release(unknown);
    }
  }

  public static int Release(long pointer) { return Marshal.Release(new IntPtr(pointer)); }
}

}  // namespace CadTools.Bridge
