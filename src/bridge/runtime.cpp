// Runtime: types by name, static members, strings and handles.
#include <cadtools/bridge/runtime.h>

#include "bridge/member_cache.h"
#include "bridge/seam.h"

namespace cadtools::bridge {

using detail::Result;
using detail::SeamArgs;
using detail::Table;

namespace {

std::int32_t Size(WStringView s) noexcept { return static_cast<std::int32_t>(s.size()); }

Value Static(WStringView type, std::int32_t how, WStringView name, Args args, std::int32_t flags = 0) {
  const std::int32_t id = detail::FindTypeId(type);
  const SeamArgs seam(args);
  const std::int32_t member = detail::FindMember(id, how, name, seam);
  Result r(flags);
  Table().invoke(member, 0, seam.data(), seam.size(), r.get());
  r.Check();
  return r.Take();
}

}  // namespace

Runtime& Runtime::Get() {
  Table();
  static Runtime runtime;
  return runtime;
}

bool Runtime::Available(CString* why) { return detail::Available(why); }

void Runtime::LoadAssembly(WStringView path) {
  Result r;
  Table().load_assembly(path.data(), Size(path), r.get());
  r.Check();
}

std::int32_t Runtime::FindType(WStringView name) { return detail::FindTypeId(name); }

Object Runtime::Create(WStringView type, Args args) {
  // A new string is an object too.
  return Static(type, detail::kConstructor, {}, args, detail::kStringAsObject).AsObject();
}

Value Runtime::CallStatic(WStringView type, WStringView method, Args args) {
  return Static(type, detail::kMethod | detail::kStatic, method, args);
}

Value Runtime::GetStatic(WStringView type, WStringView property) {
  return Static(type, detail::kGet | detail::kStatic, property, {});
}

void Runtime::SetStatic(WStringView type, WStringView property, Arg value) {
  Static(type, detail::kSet | detail::kStatic, property, {value});
}

Method Runtime::ResolveStatic(WStringView type, WStringView method, Args samples) {
  return Method(detail::FindMember(detail::FindTypeId(type), detail::kMethod | detail::kStatic, method, SeamArgs(samples)));
}

Method Runtime::ResolveConstructor(WStringView type, Args samples) {
  return Method(detail::FindMember(detail::FindTypeId(type), detail::kConstructor, {}, SeamArgs(samples)));
}

Object Runtime::NewString(WStringView text) {
  Result r;
  Table().new_string(text.data(), Size(text), r.get());
  r.Check();
  return r.Take().AsObject();
}

CString Runtime::ReadString(const Object& s, bool zeroTerminated) {
  Result r;
  Table().read_string(s.Id(), zeroTerminated ? 1 : 0, r.get());
  r.Check();
  Value v = r.Take();
  return v.IsNull() ? CString() : v.AsString();
}

CString Runtime::TypeName(std::int32_t typeId) {
  Result r;
  Table().type_name(typeId, r.get());
  r.Check();
  return r.Take().AsString();
}

std::int64_t Runtime::NewGcHandle(const Object& target) {
  Result r;
  Table().new_gc_handle(target.Id(), r.get());
  r.Check();
  return r.Number();
}

void Runtime::RetargetGcHandle(std::int64_t handle, const Object& target) {
  Result r;
  Table().retarget_gc_handle(handle, target.Id(), r.get());
  r.Check();
}

void Runtime::FreeGcHandle(std::int64_t handle) noexcept {
  // Freeing cannot fail for a handle this side made; there is nothing to
  // report to from a destructor.
  Result r;
  Table().free_gc_handle(handle, r.get());
}

Object Runtime::GcHandleTarget(std::int64_t handle) {
  Result r;
  Table().gc_handle_target(handle, r.get());
  r.Check();
  return r.Take().AsObject();
}

void Runtime::Collect() {
  Result r;
  Table().collect(0, r.get());
  r.Check();
}

}  // namespace cadtools::bridge
