// The table through which native code reaches the managed side of the
// bridge, and one call's result.
//
// The managed assembly CadTools.Bridge.dll fills the table once the runtime
// runs (Seam.Bootstrap); from then on every runtime is reached the same way.
// Only starting the runtime differs per platform (StartRuntime). The layout
// of SeamValue and the order of the table are shared with the managed code
// (Value.cs, Seam.cs) and must change with it.
#pragma once

#include <cadtools/bridge/runtime.h>
#include <cadtools/compat/cstring.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#if defined(_WIN32) && defined(__i386__)
#define CADTOOLS_SEAM_CALL __cdecl
#else
#define CADTOOLS_SEAM_CALL
#endif

namespace cadtools::bridge::detail {

// Left uninitialised by default: arguments are written field by field.
struct SeamValue {
  std::int32_t kind;
  std::int32_t length;
  std::int64_t number;
  std::int64_t pointer;
  std::int32_t type;
  std::int32_t flags;
};
static_assert(sizeof(SeamValue) == 32 && offsetof(SeamValue, number) == 8 && offsetof(SeamValue, pointer) == 16 &&
                  offsetof(SeamValue, type) == 24,
              "the managed Value has this layout");

inline constexpr std::int32_t kKindException = 6;
// Flags on a result: a string comes back as an object (set before the
// call); the text is in the result's own buffer (set by the managed side).
inline constexpr std::int32_t kStringAsObject = 1;
inline constexpr std::int32_t kInlineText = 2;

// References native code has let go of, freed by the managed side at its
// next entry (Slots.cs). Both sides take the lock with a compare-and-swap.
struct FreeQueue {
  static constexpr int kCapacity = 64;
  std::atomic<std::int32_t> lock{0};
  std::int32_t count = 0;
  std::int64_t ids[kCapacity] = {};
};
static_assert(sizeof(std::atomic<std::int32_t>) == 4 && std::atomic<std::int32_t>::is_always_lock_free,
              "the managed side sees a plain 32-bit integer");

// How a member is looked up.
enum How : std::int32_t { kMethod = 0, kGet = 1, kSet = 2, kConstructor = 3, kStatic = 0x10 };

// Object ids are entries of the managed side's table of references; GC
// handles are the runtime's, for gcroot.
struct SeamTable {
  using Text = void(CADTOOLS_SEAM_CALL*)(const WCHAR* text, std::int32_t length, SeamValue* result);
  using Id = void(CADTOOLS_SEAM_CALL*)(std::int64_t id, SeamValue* result);

  std::intptr_t slots = kSlots;
  Text load_assembly = nullptr;
  Text find_type = nullptr;
  void(CADTOOLS_SEAM_CALL* resolve)(std::int32_t type, std::int32_t how, const WCHAR* name, std::int32_t length,
                                    const SeamValue* samples, std::int32_t argc, SeamValue* result) = nullptr;
  void(CADTOOLS_SEAM_CALL* invoke)(std::int32_t member, std::int64_t target, const SeamValue* args, std::int32_t argc,
                                   SeamValue* result) = nullptr;
  Text new_string = nullptr;
  void(CADTOOLS_SEAM_CALL* read_string)(std::int64_t id, std::int32_t zero_terminated, SeamValue* result) = nullptr;
  void(CADTOOLS_SEAM_CALL* type_name)(std::int32_t type, SeamValue* result) = nullptr;
  Id items = nullptr;
  Id free = nullptr;
  Id copy = nullptr;
  Id new_gc_handle = nullptr;
  void(CADTOOLS_SEAM_CALL* retarget_gc_handle)(std::int64_t handle, std::int64_t target, SeamValue* result) = nullptr;
  Id free_gc_handle = nullptr;
  Id gc_handle_target = nullptr;
  Id collect = nullptr;
  // What native code hands the managed side: functions to give results
  // back, and the queue of references to free.
  void(CADTOOLS_SEAM_CALL* string_sink)(void* context, const WCHAR* chars, std::int32_t length) = nullptr;
  void(CADTOOLS_SEAM_CALL* error_sink)(void* context, const WCHAR* type, std::int32_t type_length,
                                       const WCHAR* message, std::int32_t message_length) = nullptr;
  void(CADTOOLS_SEAM_CALL* item_sink)(void* context, const SeamValue* item) = nullptr;
  FreeQueue* free_queue = nullptr;

  static constexpr std::intptr_t kSlots = 20;
};
static_assert(sizeof(SeamTable) == SeamTable::kSlots * sizeof(void*), "one pointer per slot");

// Starts the runtime and has the managed side fill the table. Returns ""
// on success, else why it failed. Defined once per platform.
CString StartRuntime(SeamTable& table);

// The table of the running runtime; starts it on first use. Throws
// CRuntimeUnavailableException* when it cannot run.
const SeamTable& Table();
// Whether the runtime runs (starting it on first use); when not, why.
bool Available(CString* why);

// Lets go of a reference: queued, and freed by the managed side's next
// entry; at once when the queue is full.
void Release(std::int64_t id) noexcept;

// One call's result: what the managed side writes, and what it hands to
// the sinks on the way.
class Result {
 public:
  explicit Result(std::int32_t flags = 0) noexcept;
  Result(const Result&) = delete;
  Result& operator=(const Result&) = delete;

  SeamValue* get() noexcept { return &value_; }
  // After Check: the number a call returned (an id, a count).
  std::int64_t Number() const noexcept { return value_.number; }
  // Throws CManagedException* when the call failed.
  void Check();
  // The result as a Value (after Check).
  Value Take();
  std::int32_t Int();
  std::vector<Value> TakeItems();

 private:
  friend struct Sinks;
  // Short text comes back here, written by the managed side directly.
  static constexpr std::int32_t kInlineUnits = 120;

  Value FromSeam(const SeamValue& v);

  SeamValue value_;
  WCHAR inline_[kInlineUnits];
  CString text_;
  CString error_type_;
  CString error_message_;
  std::vector<Value> items_;
  bool sink_failed_ = false;
};

// Arguments in the table's form; a few fit without a heap allocation.
class SeamArgs {
 public:
  explicit SeamArgs(Args args);
  SeamArgs(const SeamArgs&) = delete;
  SeamArgs& operator=(const SeamArgs&) = delete;

  const SeamValue* data() const noexcept { return data_; }
  std::int32_t size() const noexcept { return size_; }

 private:
  std::array<SeamValue, 6> inline_;
  std::vector<SeamValue> heap_;
  const SeamValue* data_ = nullptr;
  std::int32_t size_ = 0;
};

// Fills the native half of the table (the sinks).
void SetSinks(SeamTable& table) noexcept;

}  // namespace cadtools::bridge::detail
