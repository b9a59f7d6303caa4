// Value data crossing the registry calls as Windows hands it over.
//
// RegSetValueExW: string data (REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ) whose
// size leaves out the terminator while the next unit in memory is a NUL is
// stored with that terminator; programs that count the characters and
// forget the NUL rely on it:
//   const WCHAR text[] = L"ab";              // 'a' 'b' NUL
//   TerminatorLeftOut(REG_SZ, text, 4)       // true: 6 bytes are stored
//   TerminatorLeftOut(REG_BINARY, text, 4)   // false
// RegQueryValueExW and RegEnumValueW: string data that does not end in a
// NUL unit gets one written after it when the caller's buffer has room,
// and the size reported stays that of the data.
//
// Pointers the calls cannot use: Windows never maps the first 64 KiB of a
// process, so a pointer below that (a small number cast to a pointer, a
// member of a null structure) faults there and the registry calls answer
// ERROR_NOACCESS. The store answers the same without touching it. Any
// other pointer is taken as the caller's promise, as every C interface
// takes it: telling a freed or foreign address from a good one cannot be
// done without undefined behaviour.
#pragma once

#include <cadtools/compat/win_registry_types.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace cadtools::registry::store {

inline constexpr std::uintptr_t kNeverMapped = 0x10000;

inline bool Unusable(const void* pointer) noexcept {
  const auto value = reinterpret_cast<std::uintptr_t>(pointer);
  return value != 0 && value < kNeverMapped;
}

template <typename... Pointers>
bool AnyUnusable(const Pointers*... pointers) noexcept {
  return (Unusable(pointers) || ...);
}

constexpr bool IsStringType(DWORD type) noexcept {
  return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// Whether RegSetValueExW stores a NUL unit after the size bytes of data
// (not null). Only an even size can leave out a whole unit. The unit after
// the data is read through the kernel, which answers for memory that is
// not mapped instead of faulting, so looking past the caller's buffer is
// safe.
bool TerminatorLeftOut(DWORD type, const BYTE* data, DWORD size) noexcept;

// The caller's buffer of a query, its capacity read once before anything
// is written (the type and size arguments may be one variable).
class Capacity {
 public:
  Capacity(LPBYTE data, LPDWORD size) noexcept : capacity_(data != nullptr && size != nullptr ? *size : 0) {}

  // The buffer protocol: the bytes when a buffer is given and they fit,
  // else ERROR_MORE_DATA with the buffer untouched; the size always.
  LONG Deliver(DWORD type, std::string_view bytes, LPBYTE data, LPDWORD size) const noexcept;

 private:
  DWORD capacity_;
};

}  // namespace cadtools::registry::store
