// Block loops of the UTF-8 codec: sixteen bytes or eight units a step,
// converted with byte shuffles, for the long mixed-script texts (European
// and CJK drawing texts) where a loop over characters mispredicts at every
// change of script. They take only what has one plain answer (no broken
// input, no surrogates, no four-byte sequences) and stop before anything
// else, which the codec's character loop then converts as before.
#pragma once

#include <cadtools/compat/win_types.h>

#include <cstddef>
#include <cstdint>

namespace cadtools::codepage {

// How far a block loop got: input read and output written, in elements
// (bytes of UTF-8, units of UTF-16). The input read always ends at a
// character boundary.
struct BlockProgress {
  std::size_t read;
  std::size_t written;
};

// Whether this processor runs the block loops (x86 with SSSE3); where it
// does not, they read nothing.
bool HaveUtf8Blocks() noexcept;

// Decodes 16-byte windows of bytes[0, size) into out until one holds
// anything but whole one- to three-byte sequences without overlong forms
// or surrogates, or fewer than 16 bytes are left. out has room for a unit
// per input byte.
//   "Schütz 電動機 ..." -> read up to the last whole character in reach
//   "\xC3("             -> nothing read: the character loop's case
BlockProgress DecodeUtf8Blocks(const std::uint8_t* bytes, std::size_t size, WCHAR* out) noexcept;

// Encodes eight units a step of units[0, size) into out until a step
// holds a surrogate or fewer than 32 units are left. out has room for the
// whole text's UTF-8 (at least one byte per unit).
BlockProgress EncodeUtf8Blocks(const WCHAR* units, std::size_t size, char* out) noexcept;

}  // namespace cadtools::codepage
