// The handle table and the predefined hive handles.
#include "registry/store/handles.h"

namespace cadtools::registry::store {

namespace {

std::uintptr_t ValueOf(HKEY key) noexcept { return reinterpret_cast<std::uintptr_t>(key); }

// What Windows looks at in a predefined handle: its low 32 bits, whether
// the value was sign-extended (as the headers write it) or not.
constexpr std::uint32_t Low32(std::uintptr_t value) noexcept { return static_cast<std::uint32_t>(value & 0xFFFFFFFFu); }

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
  const std::uint32_t value = Low32(ValueOf(key));
  return value >= 0x80000000u && value < 0x80000004u ? static_cast<int>(value - 0x80000000u) : -1;
}

bool IsPredefined(HKEY key) noexcept {
  const std::uint32_t value = Low32(ValueOf(key));
  return value >= 0x80000000u && value <= 0x800000FFu;
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
