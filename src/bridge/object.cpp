// Object and Method: handles to managed objects, and calls through them.
#include <cadtools/bridge/managed_exception.h>
#include <cadtools/bridge/runtime.h>

#include "bridge/member_cache.h"
#include "bridge/seam.h"

#include <memory>
#include <utility>

namespace cadtools::bridge {

using detail::Result;
using detail::SeamArgs;
using detail::Table;

namespace {

// What a call on a null reference gives in managed code.
[[noreturn]] void ThrowNullReference() {
  throw std::make_unique<CManagedException>(CString(CADTOOLS_WIDE("System.NullReferenceException")),
                                            CString(CADTOOLS_WIDE("Object reference not set to an instance of an object.")))
      .release();
}

Value Invoke(std::int32_t member, std::int64_t target, const SeamArgs& args, std::int32_t flags = 0) {
  Result r(flags);
  Table().invoke(member, target, args.data(), args.size(), r.get());
  r.Check();
  return r.Take();
}

Value ByName(const Object& target, std::int32_t how, WStringView name, Args args, std::int32_t flags = 0) {
  if (target.IsNull()) ThrowNullReference();
  const SeamArgs seam(args);
  return Invoke(detail::FindMember(target.TypeId(), how, name, seam), target.Id(), seam, flags);
}

}  // namespace

Object::Object(const Object& other) {
  if (other.IsNull()) return;
  Result r;
  Table().copy(other.ref_.id, r.get());
  r.Check();
  ref_ = {r.get()->pointer, other.ref_.type};
}

Object::Object(Object&& other) noexcept : ref_(std::exchange(other.ref_, ObjectRef{})) {}

Object& Object::operator=(const Object& other) {
  if (this != &other) *this = Object(other);
  return *this;
}

Object& Object::operator=(Object&& other) noexcept {
  if (this != &other) {
    Release();
    ref_ = std::exchange(other.ref_, ObjectRef{});
  }
  return *this;
}

Object::~Object() { Release(); }

void Object::Release() noexcept {
  detail::Release(ref_.id);
  ref_ = ObjectRef{};
}

Object Object::Adopt(ObjectRef ref) noexcept { return Object(ref); }

CString Object::TypeName() const {
  if (IsNull()) ThrowNullReference();
  return Runtime::Get().TypeName(ref_.type);
}

Value Object::Call(WStringView method, Args args) const { return ByName(*this, detail::kMethod, method, args); }

Object Object::CallForObject(WStringView method, Args args) const {
  return ByName(*this, detail::kMethod, method, args, detail::kStringAsObject).AsObject();
}

Object Object::GetForObject(WStringView property) const {
  return ByName(*this, detail::kGet, property, {}, detail::kStringAsObject).AsObject();
}

Value Object::Get(WStringView property, Args index) const { return ByName(*this, detail::kGet, property, index); }

void Object::Set(WStringView property, Arg value) const { ByName(*this, detail::kSet, property, {value}); }

void Object::SetIndexed(WStringView property, Args indexThenValue) const {
  ByName(*this, detail::kSet, property, indexThenValue);
}

Method Object::Resolve(WStringView method, Args samples) const {
  if (IsNull()) ThrowNullReference();
  return Method(detail::FindMember(ref_.type, detail::kMethod, method, SeamArgs(samples)));
}

std::vector<Value> Object::Items() const {
  if (IsNull()) ThrowNullReference();
  Result r;
  Table().items(ref_.id, r.get());
  return r.TakeItems();
}

Value Method::Invoke(const Object& target, Args args) const {
  return bridge::Invoke(id_, target.Id(), SeamArgs(args));
}

Value Method::Invoke(Args args) const { return bridge::Invoke(id_, 0, SeamArgs(args)); }

}  // namespace cadtools::bridge
