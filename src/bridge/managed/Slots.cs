// The references native code holds: a table of objects, each native Object
// an index into it. Reading an entry is an array read, where a GC handle
// would cost two runtime calls per use; that is most of a call's price.
// Native code frees entries in batches: it queues what it lets go, and the
// next entry point empties the queue before it does anything else.
using System;
using System.Runtime.InteropServices;
using System.Threading;

namespace CadTools.Bridge {

// Native memory shared with the native side (seam.h, FreeQueue).
[StructLayout(LayoutKind.Explicit)]
public unsafe struct FreeQueue {
  public const int Capacity = 64;
  [FieldOffset(0)] public int Lock;   // 0 free, 1 held; both sides take it with a compare-and-swap
  [FieldOffset(4)] public int Count;
  [FieldOffset(8)] public fixed long Ids[Capacity];
}

public static unsafe class Slots {
  // Entry 0 is never used: id 0 means null.
  static object[] items = new object[256];
  // The next free entry after each free entry; 0 ends the list.
  static int[] nextFree = new int[256];
  static int firstFree;
  static int used = 1;
  static int gate;
  internal static FreeQueue* queue;

  static void Enter(ref int flag) {
    while (Interlocked.CompareExchange(ref flag, 1, 0) != 0) Thread.Yield();
  }

  static void Leave(ref int flag) { Volatile.Write(ref flag, 0); }

  public static long Add(object o) {
    Enter(ref gate);
    try {
      int id = firstFree;
      if (id != 0) {
        firstFree = nextFree[id];
      } else {
        if (used == items.Length) Grow();
        id = used++;
      }
      items[id] = o;
      return id;
    } finally {
      Leave(ref gate);
    }
  }

  static void Grow() {
    var moreItems = new object[items.Length * 2];
    var moreNext = new int[items.Length * 2];
    Array.Copy(items, moreItems, items.Length);
    Array.Copy(nextFree, moreNext, nextFree.Length);
    nextFree = moreNext;
    items = moreItems;
  }

  public static object Get(long id) {
    object[] all = items;
    if (id == 0) return null;
    if (id < 0 || id >= all.Length) throw new ArgumentOutOfRangeException("id", "no reference " + id);
    return all[id];
  }

  public static void Free(long id) {
    if (id <= 0) return;
    Enter(ref gate);
    try {
      if (id < used && items[id] != null) {
        items[id] = null;
        nextFree[id] = firstFree;
        firstFree = (int)id;
      }
    } finally {
      Leave(ref gate);
    }
  }

  // Frees what native code queued; every entry point calls this first.
  public static void FreeQueued() {
    FreeQueue* q = queue;
    if (q == null || Volatile.Read(ref q->Count) == 0) return;
    Enter(ref q->Lock);
    try {
      int n = q->Count;
      for (int i = 0; i < n && i < FreeQueue.Capacity; ++i) Free(q->Ids[i]);
      q->Count = 0;
    } finally {
      Leave(ref q->Lock);
    }
  }
}

}  // namespace CadTools.Bridge
