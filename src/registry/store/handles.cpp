// The handle table and the predefined hive handles.
#include "registry/store/handles.h"

namespace cadtools::registry::store {

namespace {

// A handle's value as Windows writes predefined ones: the 32-bit value,
// sign-extended to the pointer width.
std::uintptr_t ValueOf(HKEY key) noexcept { return reinterpret_cast<std::uintptr_t>(key); }

constexpr std::uintptr_t SignExtended(std::uint32_t value) noexcept {
  return static_cast<std::uintptr_t>(static_cast<std::intptr_t>(static_cast<std::int32_t>(value)));
}

constexpr REGSAM kGenericRead = 0x80000000;
constexpr REGSAM kGenericWrite = 0x40000000;
constexpr REGSAM kGenericExecute = 0x20000000;
constexpr REGSAM kGenericAll = 0x10000000;
constexpr REGSAM kMaximumAllowed = 0x02000000;

}  // namespace

int PredefinedHive(HKEY key) noexcept {
  const std::uintptr_t value = ValueOf(key);
  for (std::uint32_t hive = 0; hive < 4; ++hive) {
    if (value == SignExtended(0x80000000u + hive)) return static_cast<int>(hive);
  }
  return -1;
}

bool IsPredefined(HKEY key) noexcept {
  const std::uintptr_t value = ValueOf(key);
  return value >= SignExtended(0x80000000u) && value <= SignExtended(0x800000FFu);
}

HKEY PredefinedHandle(int hive) noexcept {
  return reinterpret_cast<HKEY>(SignExtended(0x80000000u + static_cast<std::uint32_t>(hive)));
}

REGSAM MapAccess(REGSAM requested, bool read_only) noexcept {
  REGSAM rights = requested & ~(kGenericRead | kGenericWrite | kGenericExecute | kGenericAll | kMaximumAllowed |
                                KEY_WOW64_32KEY | KEY_WOW64_64KEY);
  if ((requested & kGenericRead) != 0) rights |= KEY_READ;
  if ((requested & kGenericWrite) != 0) rights |= KEY_WRITE;
  if ((requested & kGenericExecute) != 0) rights |= KEY_EXECUTE;
  if ((requested & kGenericAll) != 0) rights |= KEY_ALL_ACCESS;
  // MAXIMUM_ALLOWED grants what the caller may have: everything, or only
  // reading in a store that cannot be written.
  if ((requested & kMaximumAllowed) != 0) rights |= read_only ? KEY_READ : KEY_ALL_ACCESS;
  return rights;
}

HKEY HandleTable::Add(Handle handle) {
  const std::uintptr_t value = next_;
  next_ += 4;
  open_.emplace(value, std::move(handle));
  return reinterpret_cast<HKEY>(value);
}

Handle* HandleTable::Find(HKEY key) noexcept {
  const auto found = open_.find(ValueOf(key));
  return found == open_.end() ? nullptr : &found->second;
}

bool HandleTable::Remove(HKEY key) noexcept { return open_.erase(ValueOf(key)) == 1; }

}  // namespace cadtools::registry::store
