// Arg and Value: what crosses, in native form.
#include <cadtools/bridge/runtime.h>
#include <cadtools/compat/exceptions.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <utility>

namespace cadtools::bridge {

namespace {
std::int32_t Length(std::size_t n) noexcept {
  constexpr auto kMax = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
  return static_cast<std::int32_t>(n < kMax ? n : kMax);
}

std::int64_t Address(const WCHAR* p) noexcept {
  return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(p));
}
}  // namespace

Arg::Arg(double d) noexcept : kind_(Kind::kDouble), number_(std::bit_cast<std::int64_t>(d)) {}

Arg::Arg(WStringView s) noexcept : kind_(Kind::kString), pointer_(Address(s.data())), length_(Length(s.size())) {}

Arg::Arg(const WCHAR* s) noexcept {
  if (s == nullptr) return;
  kind_ = Kind::kString;
  pointer_ = Address(s);
  length_ = Length(WStringView(s).size());
}

Arg::Arg(const Object& o) noexcept {
  if (o.IsNull()) return;
  kind_ = Kind::kObject;
  pointer_ = o.Id();
  type_ = o.TypeId();
}

Kind Value::kind() const noexcept {
  switch (v_.index()) {
    case 1:
      return Kind::kBool;
    case 2:
      return Kind::kInt;
    case 3:
      return Kind::kEnum;
    case 4:
      return Kind::kString;
    case 5:
      return Kind::kObject;
    case 6:
      return Kind::kDouble;
    default:
      return Kind::kNull;
  }
}

namespace {
template <class T, class V>
const T& Expect(const V& v) {
  const T* p = std::get_if<T>(&v);
  if (p == nullptr) ThrowInvalidArg();
  return *p;
}
}  // namespace

bool Value::AsBool() const { return Expect<bool>(v_); }
std::int64_t Value::AsInt() const { return Expect<std::int64_t>(v_); }
double Value::AsDouble() const { return Expect<double>(v_); }
EnumValue Value::AsEnum() const { return Expect<EnumValue>(v_); }
const CString& Value::AsString() const { return Expect<CString>(v_); }

Object Value::AsObject() const& {
  if (IsNull()) return Object();
  return Expect<Object>(v_);
}

Object Value::AsObject() && {
  if (IsNull()) return Object();
  Expect<Object>(v_);
  return std::move(std::get<Object>(v_));
}

}  // namespace cadtools::bridge
