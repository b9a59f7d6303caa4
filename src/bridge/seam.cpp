#include "bridge/seam.h"

#include <cadtools/bridge/managed_exception.h>

#include <bit>
#include <limits>
#include <memory>
#include <new>

namespace cadtools::bridge::detail {

namespace {

struct Started {
  SeamTable table;
  CString failure;
};

const Started& Start() {
  // Started once, by the first caller, on its thread; a runtime that failed
  // to start is not tried again (Mono cannot start twice in one process).
  static const Started started = [] {
    Started s;
    SetSinks(s.table);
    s.failure = StartRuntime(s.table);
    return s;
  }();
  return started;
}

std::int32_t ClampedLength(std::size_t n) noexcept {
  constexpr auto kMax = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
  return static_cast<std::int32_t>(n < kMax ? n : kMax);
}

// A value the managed side wrote; a string's text is what the string sink
// received for it.
Value FromSeam(const SeamValue& v, CString& text) {
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
      return Value(std::move(text));
    case Kind::kObject:
      return Value(Object::Adopt({v.pointer, v.type}));
    case Kind::kNull:
    default:
      return Value();
  }
}

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
      r->items_.push_back(FromSeam(*item, r->text_));
    } catch (...) {
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
  value_.flags = flags;
  value_.pointer = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(this));
}

void Result::Check() {
  if (sink_failed_) {
    // A handle the call returned would be lost with the exception.
    if (value_.kind == static_cast<std::int32_t>(Kind::kObject)) Table().free_handle(value_.pointer, &value_);
    ThrowMemory();
  }
  if (value_.kind == kKindException) {
    throw std::make_unique<CManagedException>(std::move(error_type_), std::move(error_message_)).release();
  }
}

Value Result::Take() { return FromSeam(value_, text_); }

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
    out->number = a.number();
    out->length = a.length();
    out->pointer = a.pointer();
    out->type = a.type();
    ++out;
  }
}

}  // namespace cadtools::bridge::detail
