// The handle operations behind gcroot<T>.
#include <cadtools/bridge/gcroot.h>

#include "bridge/seam.h"

namespace cadtools::bridge::detail {

std::int64_t NewGcHandle(std::int64_t target) { return Runtime::Get().NewHandle(target); }

void RetargetGcHandle(std::int64_t handle, std::int64_t target) { Runtime::Get().Retarget(handle, target); }

void FreeGcHandle(std::int64_t handle) noexcept {
  // A gcroot exists only once the runtime runs, so this cannot throw.
  if (handle != 0) Runtime::Get().FreeHandle(handle);
}

Object GcHandleTarget(std::int64_t handle) {
  Runtime& rt = Runtime::Get();
  const std::int32_t type = rt.TypeOf(handle);
  if (type == 0) return Object();
  return Object::Adopt({rt.NewHandle(handle), type});
}

}  // namespace cadtools::bridge::detail
