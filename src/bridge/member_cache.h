// Members and types already looked up by name, per thread, so that a call
// by name costs one managed call after the first. Ids are the runtime's and
// valid on every thread; keeping the caches per thread spares a lock.
#pragma once

#include "bridge/seam.h"

#include <cstdint>

namespace cadtools::bridge::detail {

// The member of type `type` that `how` and `name` mean for arguments of
// these kinds (and object types).
std::int32_t FindMember(std::int32_t type, std::int32_t how, WStringView name, const SeamArgs& args);

// The id of a type given by name.
std::int32_t FindTypeId(WStringView name);

}  // namespace cadtools::bridge::detail
