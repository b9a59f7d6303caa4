// Terminators of string data, and the buffer protocol of the queries.
#include "registry/store/string_data.h"

#include <sys/uio.h>
#include <unistd.h>

#include <cstring>

namespace cadtools::registry::store {

namespace {

// The two bytes at `at`, copied by the kernel; false when they are not
// mapped.
bool PeekUnit(const BYTE* at, unsigned char (&unit)[2]) noexcept {
  iovec local{unit, sizeof unit};
  iovec remote{const_cast<BYTE*>(at), sizeof unit};
  return process_vm_readv(getpid(), &local, 1, &remote, 1, 0) == static_cast<ssize_t>(sizeof unit);
}

bool EndsInNul(std::string_view bytes) noexcept {
  return bytes.size() >= 2 && bytes[bytes.size() - 2] == 0 && bytes[bytes.size() - 1] == 0;
}

}  // namespace

bool TerminatorLeftOut(DWORD type, const BYTE* data, DWORD size) noexcept {
  if (!IsStringType(type) || size < 2 || size % 2 != 0) return false;
  if (EndsInNul(std::string_view(reinterpret_cast<const char*>(data), size))) return false;
  unsigned char next[2] = {1, 1};
  return PeekUnit(data + size, next) && next[0] == 0 && next[1] == 0;
}

LONG Capacity::Deliver(DWORD type, std::string_view bytes, LPBYTE data, LPDWORD size) const noexcept {
  const auto needed = static_cast<DWORD>(bytes.size());
  LONG result = ERROR_SUCCESS;
  if (data != nullptr) {
    if (capacity_ < needed) {
      result = ERROR_MORE_DATA;
    } else {
      if (needed > 0) std::memcpy(data, bytes.data(), needed);
      if (IsStringType(type) && needed >= 2 && !EndsInNul(bytes) && capacity_ - needed >= 2) {
        data[needed] = 0;
        data[needed + 1] = 0;
      }
    }
  }
  if (size != nullptr) *size = needed;
  return result;
}

}  // namespace cadtools::registry::store
