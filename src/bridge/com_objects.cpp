#include <cadtools/bridge/com_objects.h>

#include <cstdint>

namespace cadtools::bridge {

namespace {
constexpr const WCHAR* kCom = CADTOOLS_WIDE("CadTools.Bridge.Com");

std::int64_t Address(const void* p) noexcept { return static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(p)); }
}  // namespace

Object ObjectForComPointer(const void* pointer, WStringView type) {
  return Runtime::Get().CallStatic(kCom, CADTOOLS_WIDE("ObjectAs"), {Address(pointer), type}).AsObject();
}

IDispatch* DispatchPointerFor(const Object& object) {
  const std::int64_t p = Runtime::Get().CallStatic(kCom, CADTOOLS_WIDE("DispatchFor"), {object}).AsInt();
  return reinterpret_cast<IDispatch*>(static_cast<std::intptr_t>(p));
}

void ReleaseComPointer(const void* pointer) {
  if (pointer != nullptr) Runtime::Get().CallStatic(kCom, CADTOOLS_WIDE("Release"), {Address(pointer)});
}

}  // namespace cadtools::bridge
