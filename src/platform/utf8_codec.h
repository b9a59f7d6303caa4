// UTF-8 to and from UTF-16 with the replacements Windows makes, for the
// targets where the system does not convert for us.
#pragma once

#include <cadtools/compat/cstring.h>

#include <memory>
#include <string>
#include <string_view>

namespace cadtools::codepage {

// Which loops convert: the block loops of utf8_blocks.h where the text
// and the processor allow, or the character loops alone (which tests
// check on their own too; the results are the same).
enum class Utf8Loops { kBlocksWherePossible, kCharactersOnly };

// bytes as UTF-16, every byte converted (NULs too). Broken input becomes
// U+FFFD the way Windows' MultiByteToWideChar frames it:
// - a byte that cannot start a sequence (80-C1, F5-FF) is one U+FFFD;
// - a sequence cut off by the end of the input is one U+FFFD for the rest;
// - a second byte outside the lead byte's range (overlong forms, UTF-16
//   surrogates, beyond U+10FFFF) makes the two bytes one U+FFFD;
// - a missing continuation byte ends the sequence with one U+FFFD for the
//   bytes read so far, and the byte that broke it is read anew.
//   "\xC3\xA9"      -> U+00E9
//   "\xC3("         -> U+FFFD '('
//   "\xE0\x80\x80"  -> U+FFFD U+FFFD
//   "\xE2\x82"      -> U+FFFD
WString DecodeUtf8(std::string_view bytes, Utf8Loops loops = Utf8Loops::kBlocksWherePossible);
// units as UTF-8; a lone surrogate becomes U+FFFD (EF BF BD).
std::string EncodeUtf8(WStringView units, Utf8Loops loops = Utf8Loops::kBlocksWherePossible);

}  // namespace cadtools::codepage
