#include "bridge/seam.h"

#include <cadtools/bridge/managed_exception.h>

#include <bit>
#include <limits>
#include <memory>
#include <thread>

namespace cadtools::bridge::detail {

namespace {

struct Started {
  SeamTable table;
  FreeQueue queue;
  CString failure;
};

Started& Start() {
  // Started once, by the first caller, on its thread; a runtime that failed
  // to start is not tried again (Mono cannot start twice in one process).
  // The managed side keeps the addresses it is given, so all of it stays
  // where it was made.
  static Started started;
  [[maybe_unused]] static const bool once = [] {
    SetSinks(started.table);
    started.table.free_queue = &started.queue;
    started.failure = StartRuntime(started.table);
    return true;
  }();
  return started;
}

std::int32_t ClampedLength(std::size_t n) noexcept {
  constexpr auto kMax = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
  return static_cast<std::int32_t>(n < kMax ? n : kMax);
}

// Holds the free queue's lock for a scope.
class QueueLock {
 public:
  explicit QueueLock(FreeQueue& q) noexcept : q_(q) {
    std::int32_t expected = 0;
    while (!q_.lock.compare_exchange_weak(expected, 1, std::memory_order_acquire)) {
      expected = 0;
      std::this_thread::yield();
    }
  }
  QueueLock(const QueueLock&) = delete;
  QueueLock& operator=(const QueueLock&) = delete;
  ~QueueLock() { q_.lock.store(0, std::memory_order_release); }

 private:
  FreeQueue& q_;
};

}  // namespace

const SeamTable& Table() {
  const Started& s = Start();
  if (!s.failure.IsEmpty()) throw std::make_unique<CRuntimeUnavailableException>(s.failure).release();
  return s.table;
}

bool Available(CString* why) {
  const Started& s = Start();
  if (why != nullptr) *why = s.failure;
  return s.failure.IsEmpty();
}

void Release(std::int64_t id) noexcept {
  if (id == 0) return;
  Started& s = Start();
  {
    QueueLock lock(s.queue);
    if (s.queue.count < FreeQueue::kCapacity) {
      s.queue.ids[s.queue.count++] = id;
      return;
    }
  }
  // Full: this call empties the queue as it frees.
  Result r;
  s.table.free(id, r.get());
}

// The sinks run inside a managed call: no C++ exception may leave them, so
// a failure is noted and raised once the call has returned.
struct Sinks {
  static void CADTOOLS_SEAM_CALL String(void* context, const WCHAR* chars, std::int32_t length) {
    auto* r = static_cast<Result*>(context);
    try {
      r->text_ = CString(chars, length);
    } catch (...) {
      r->sink_failed_ = true;
    }
  }

  static void CADTOOLS_SEAM_CALL Error(void* context, const WCHAR* type, std::int32_t type_length,
                                       const WCHAR* message, std::int32_t message_length) {
    auto* r = static_cast<Result*>(context);
    try {
      r->error_type_ = CString(type, type_length);
      r->error_message_ = CString(message, message_length);
    } catch (...) {
      r->sink_failed_ = true;
    }
  }

  static void CADTOOLS_SEAM_CALL Item(void* context, const SeamValue* item) {
    auto* r = static_cast<Result*>(context);
    try {
      r->items_.push_back(r->FromSeam(*item));
    } catch (...) {
      // An object the item held is released with it.
      if (item->kind == static_cast<std::int32_t>(Kind::kObject)) Release(item->pointer);
      r->sink_failed_ = true;
    }
  }
};

void SetSinks(SeamTable& table) noexcept {
  table.string_sink = &Sinks::String;
  table.error_sink = &Sinks::Error;
  table.item_sink = &Sinks::Item;
}

Result::Result(std::int32_t flags) noexcept {
  value_.kind = 0;
  value_.length = kInlineUnits;
  value_.number = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(inline_));
  value_.pointer = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(this));
  value_.type = 0;
  value_.flags = flags;
}

void Result::Check() {
  if (sink_failed_) {
    // An object the call returned would be lost with the exception.
    if (value_.kind == static_cast<std::int32_t>(Kind::kObject)) Release(value_.pointer);
    ThrowMemory();
  }
  if (value_.kind == kKindException) {
    throw std::make_unique<CManagedException>(std::move(error_type_), std::move(error_message_)).release();
  }
}

// A value the managed side wrote. A string's text is in the inline buffer
// or, when longer, what the string sink received for it.
Value Result::FromSeam(const SeamValue& v) {
  switch (static_cast<Kind>(v.kind)) {
    case Kind::kBool:
      return Value(v.number != 0);
    case Kind::kInt:
      return Value(v.number);
    case Kind::kEnum:
      return Value(EnumValue{v.number, v.type});
    case Kind::kDouble:
      return Value(std::bit_cast<double>(v.number));
    case Kind::kString:
      if ((v.flags & kInlineText) != 0) return Value(CString(inline_, v.length));
      return Value(std::move(text_));
    case Kind::kObject:
      return Value(Object::Adopt({v.pointer, v.type}));
    case Kind::kNull:
    default:
      return Value();
  }
}

Value Result::Take() { return FromSeam(value_); }

std::int32_t Result::Int() {
  Check();
  return static_cast<std::int32_t>(value_.number);
}

std::vector<Value> Result::TakeItems() {
  Check();
  return std::move(items_);
}

SeamArgs::SeamArgs(Args args) : size_(ClampedLength(args.size())) {
  SeamValue* out = inline_.data();
  if (args.size() > inline_.size()) {
    heap_.resize(args.size());
    out = heap_.data();
  }
  data_ = out;
  for (const Arg& a : args) {
    out->kind = static_cast<std::int32_t>(a.kind());
    out->length = a.length();
    out->number = a.number();
    out->pointer = a.pointer();
    out->type = a.type();
    out->flags = 0;
    ++out;
  }
}

}  // namespace cadtools::bridge::detail
