// GC handles as native code holds them: the handle's integer value.
using System;
using System.Runtime.InteropServices;

namespace CadTools.Bridge {

public static class Handles {
  public static long New(object target) {
    return GCHandle.ToIntPtr(GCHandle.Alloc(target, GCHandleType.Normal)).ToInt64();
  }

  public static object Target(long handle) {
    return handle == 0 ? null : GCHandle.FromIntPtr(new IntPtr(handle)).Target;
  }

  // Points an existing handle at another object; the handle stays the same.
  public static void Retarget(long handle, object target) {
    GCHandle h = GCHandle.FromIntPtr(new IntPtr(handle));
    h.Target = target;
  }

  public static void Free(long handle) {
    if (handle != 0) GCHandle.FromIntPtr(new IntPtr(handle)).Free();
  }
}

}  // namespace CadTools.Bridge
