// The handle operations behind gcroot<T>.
#include <cadtools/bridge/gcroot.h>

#include "bridge/seam.h"

namespace cadtools::bridge::detail {

std::int64_t NewGcHandle(const Object& target) { return Runtime::Get().NewGcHandle(target); }

void RetargetGcHandle(std::int64_t handle, const Object& target) { Runtime::Get().RetargetGcHandle(handle, target); }

void FreeGcHandle(std::int64_t handle) noexcept {
  // A gcroot exists only once the runtime runs, so this cannot throw.
  if (handle != 0) Runtime::Get().FreeGcHandle(handle);
}

Object GcHandleTarget(std::int64_t handle) { return Runtime::Get().GcHandleTarget(handle); }

}  // namespace cadtools::bridge::detail
