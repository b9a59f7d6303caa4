// Key and value names as the store keeps them.
//
// Settings written on Windows find each other again by name without regard
// to case, so the store compares names the way the registry does: each
// UTF-16 unit upper-cased on its own (cadtools::ToUpperUnit, simple
// mappings, no locale), while every name keeps the case it was created
// with. Every unit is data, lone surrogates included.
//
// Both forms go into the database as big-endian UTF-16 bytes. Byte order
// then equals code-unit order, so SQLite's memcmp order of the folded form
// is the order in which Windows lists subkeys:
//
//   std::string folded;
//   AppendName(folded, u"Motor", NameForm::kFolded);   // 00 4D 00 4F 00 54 00 4F 00 52
//
// A key path is the folded names of its components joined by a backslash
// unit (00 5C); the hive's root key has the empty path.
#pragma once

#include <cadtools/compat/win_types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::registry::store {

// Longer names are refused on creation; Windows has the same limits.
inline constexpr std::size_t kMaxKeyNameUnits = 255;
inline constexpr std::size_t kMaxValueNameUnits = 16383;

using Units = std::u16string_view;

enum class NameForm { kAsCreated, kFolded };

// Appends name as big-endian UTF-16, upper-cased for kFolded.
void AppendName(std::string& out, Units name, NameForm form);

// Appends one component to a folded key path.
void AppendPathComponent(std::string& path, Units component);

// Writes the units of a stored name (big-endian bytes; an odd last byte is
// ignored) to out, which has room for size / 2 units.
void DecodeName(std::string_view bytes, WCHAR* out) noexcept;

// Units in a name held as big-endian bytes.
constexpr DWORD NameUnits(std::string_view bytes) noexcept { return static_cast<DWORD>(bytes.size() / 2); }

// A null-terminated name, null meaning the empty name.
Units NameOf(const WCHAR* text) noexcept;

// Why a relative key path cannot be used.
enum class PathProblem {
  kNone,
  kLeadingBackslash,  // Windows refuses "\Software" below a key: ERROR_BAD_PATHNAME
  kNameTooLong,       // a component beyond kMaxKeyNameUnits
};

// Splits a relative key path the way the registry reads it: doubled and
// trailing backslashes separate nothing and are skipped, "." and ".." are
// ordinary names. A null or empty path has no components.
//   SplitKeyPath(u"Settings\\\\Text\\", parts)   // kNone, {"Settings", "Text"}
//   SplitKeyPath(u"\\Settings", parts)           // kLeadingBackslash
PathProblem SplitKeyPath(const WCHAR* text, std::vector<Units>& components);

}  // namespace cadtools::registry::store
