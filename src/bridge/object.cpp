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
  return Invoke(detail::FindMember(target.TypeId(), how, name, seam), target.Handle(), seam, flags);
}

}  // namespace

Object::Object(const Object& other) : info_{0, other.info_.type} {
  if (other.info_.handle != 0) info_.handle = Runtime::Get().NewHandle(other.info_.handle);
}

Object::Object(Object&& other) noexcept : info_(std::exchange(other.info_, HandleInfo{})) {}

Object& Object::operator=(const Object& other) {
  if (this != &other) *this = Object(other);
  return *this;
}

Object& Object::operator=(Object&& other) noexcept {
  if (this != &other) {
    Release();
    info_ = std::exchange(other.info_, HandleInfo{});
  }
  return *this;
}

Object::~Object() { Release(); }

void Object::Release() noexcept {
  if (info_.handle != 0) Runtime::Get().FreeHandle(info_.handle);
  info_ = HandleInfo{};
}

Object Object::Adopt(HandleInfo info) noexcept { return Object(info); }

CString Object::TypeName() const {
  if (IsNull()) ThrowNullReference();
  return Runtime::Get().TypeName(info_.type);
}

Value Object::Call(WStringView method, Args args) const { return ByName(*this, detail::kMethod, method, args); }

Object Object::CallForObject(WStringView method, Args args) const {
  return ByName(*this, detail::kMethod, method, args, detail::kStringAsObject).AsObject();
}

Value Object::Get(WStringView property, Args index) const { return ByName(*this, detail::kGet, property, index); }

void Object::Set(WStringView property, Arg value) const { ByName(*this, detail::kSet, property, {value}); }

void Object::SetIndexed(WStringView property, Args indexThenValue) const {
  ByName(*this, detail::kSet, property, indexThenValue);
}

Method Object::Resolve(WStringView method, Args samples) const {
  if (IsNull()) ThrowNullReference();
  return Method(detail::FindMember(info_.type, detail::kMethod, method, SeamArgs(samples)));
}

std::vector<Value> Object::Items() const {
  if (IsNull()) ThrowNullReference();
  Result r;
  Table().items(info_.handle, r.get());
  return r.TakeItems();
}

Value Method::Invoke(const Object& target, Args args) const {
  return bridge::Invoke(id_, target.Handle(), SeamArgs(args));
}

Value Method::Invoke(Args args) const { return bridge::Invoke(id_, 0, SeamArgs(args)); }

}  // namespace cadtools::bridge
