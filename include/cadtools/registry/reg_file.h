// Registry files (.reg): the text the Windows registry editor exports and
// imports, read into a list of key entries, written back, and moved between
// such a list and the registry.
//
//   using namespace cadtools::registry;
//   RegKeys tree;
//   ExportRegTree(RegHive::kCurrentUser, CADTOOLS_WIDE("Software\\Quenby\\Draw\\Version V8R1"), tree);
//   const std::string bytes = WriteRegFile(tree);   // UTF-16LE with BOM, CRLF
//
//   RegParseResult parsed = ParseRegFile(bytes);
//   if (parsed.error) { /* parsed.error->line, parsed.error->message */ }
//   else ApplyRegFile(parsed.keys);                 // nothing is applied on error
//
// Files are written exactly as the registry editor writes them, so that a
// user can open our exports in it and we can read its exports:
//
//   Windows Registry Editor Version 5.00
//
//   [HKEY_CURRENT_USER\Software\Quenby\Draw\Version V8R1\Settings]
//   "Colour"="red"
//   @="the default value"
//   "Count"=dword:0000002a
//   "Pos"=hex:0a,00,00,00,14,00,00,00
//   "Recent"=hex(7):61,00,00,00,00,00
//   "Odd"=hex(1):61,00,62
//
// Values whose data does not have the exact shape of a text or a DWORD
// (odd lengths, missing or embedded terminators, line breaks) are written
// as hex(N) with their bytes, so that every value comes back byte for byte.
// The round trip is exact: exporting a tree, importing it into an empty
// registry and exporting again gives the same bytes.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_registry_types.h>
#include <cadtools/export.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::registry {

// The hives a file may name, as the registry editor takes them; others
// (HKEY_CURRENT_CONFIG, ...) are refused rather than written somewhere
// unexpected. HKEY_CLASSES_ROOT is the merged view of the user's and the
// machine's Software\Classes; below HKEY_USERS the current user's SID
// leads to HKEY_CURRENT_USER (see registry_api.h).
enum class RegHive { kCurrentUser, kLocalMachine, kClassesRoot, kUsers };

// HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT or HKEY_USERS.
CADTOOLS_API HKEY HiveHandle(RegHive hive) noexcept;
// "HKEY_CURRENT_USER" and so on.
CADTOOLS_API std::string_view HiveName(RegHive hive) noexcept;
// The hive a key text names before its first backslash, in any letter
// case: HKEY_CURRENT_USER or HKCU, HKEY_LOCAL_MACHINE or HKLM,
// HKEY_CLASSES_ROOT or HKCR, HKEY_USERS or HKU.
CADTOOLS_API std::optional<RegHive> HiveFromName(WStringView name) noexcept;

// Limits of the registry that the reader enforces, so that a file is
// refused as a whole instead of failing half-way through an import.
inline constexpr std::size_t kMaxKeyNameLength = 255;      // one key name, in UTF-16 units
inline constexpr std::size_t kMaxKeyDepth = 512;           // key names in one path
inline constexpr std::size_t kMaxValueNameLength = 16383;  // in UTF-16 units

// One line under a key: `"name"=data` sets a value, `"name"=-` deletes it.
struct RegValueEntry {
  WString name;         // empty: the key's default value, written as @
  bool remove = false;  // "name"=-
  DWORD type = REG_NONE;
  std::vector<BYTE> data;
  std::size_t line = 0;  // where it was read; 0 when made in memory
};

// One key section: [HIVE\path] and its values, or [-HIVE\path], which
// deletes the key with everything below it.
struct RegKeyEntry {
  RegHive hive = RegHive::kCurrentUser;
  WString path;         // below the hive, no leading or trailing backslash; empty: the hive itself
  bool remove = false;  // [-KEY]; then `values` is empty
  std::vector<RegValueEntry> values;
  std::size_t line = 0;
};

// The same operations: the lines they were read from do not count.
CADTOOLS_API bool operator==(const RegValueEntry& a, const RegValueEntry& b) noexcept;
CADTOOLS_API bool operator==(const RegKeyEntry& a, const RegKeyEntry& b) noexcept;

using RegKeys = std::vector<RegKeyEntry>;

// What is wrong with a file, and where. `line` counts from 1; the message
// is English UTF-8 without the line, e.g. "unknown hive 'HKEY_FOO'".
struct RegFileError {
  std::size_t line = 0;
  std::string message;
};

struct RegParseResult {
  RegKeys keys;  // empty when there is an error
  std::optional<RegFileError> error;
};

// Reads a whole .reg file as the registry editor reads it: UTF-16LE after
// its byte order mark (what the registry editor writes), UTF-8 after its
// mark, and without a mark UTF-8 when the bytes are valid UTF-8, else the
// ANSI code page (REGEDIT4 files made on Windows). The first line is
// "Windows Registry Editor Version 5.00" or "REGEDIT4" (blanks before it
// are fine); after it come blank lines, ";" and "#" comment lines, key
// lines [KEY] and [-KEY] and value lines
//   "name"="text"      REG_SZ; \\ and \" stand for \ and "
//   @=...              the default value
//   "name"=dword:1f    REG_DWORD, 1 to 8 hex digits (blanks before them too)
//   "name"=hex:01,ff   REG_BINARY
//   "name"=hex(N):...  type N (hex), e.g. hex(2) expandable, hex(7) multi,
//                      hex(b) qword
//   "name"=-           delete the value
// where hex data may go on over lines ending in a backslash (with comment
// or blank lines between them), and a ";" comment may follow the data.
// Lines end in CR LF, LF or CR; a DOS end-of-file byte (0x1A) at the end
// is dropped. A trailing backslash in a key path names the same key.
// Value lines below a [-KEY] line are ignored up to the next key line, as
// the registry editor ignores them. In REGEDIT4 files the data of hex(1),
// hex(2) and hex(7) is 8-bit text (decoded as the file is) and is widened
// to UTF-16, as the registry editor does.
//
// Anything malformed makes the whole file fail with the first fault's line:
// the caller applies all of a file or nothing. Memory stays proportional
// to the file's size whatever it holds.
CADTOOLS_API RegParseResult ParseRegFile(std::string_view bytes);

// The file the registry editor would export for these entries: UTF-16LE
// with a byte order mark, CRLF line ends, the version 5.00 header, then
// each key line, its value lines and a blank line. Hex data wraps as the
// registry editor wraps it: lines of at most 80 columns ending in ",\",
// continued on lines indented by two spaces. Deletions are written as
// [-KEY] and "name"=-. Names are written unit for unit (lone surrogates
// included); a name holding CR or LF cannot be read back (ExportRegTree
// refuses such names).
CADTOOLS_API std::string WriteRegFile(const RegKeys& keys);

// The result of ExportRegTree and ApplyRegFile: ERROR_SUCCESS, or the Win32
// result of the call that failed, what it was doing in words (UTF-8, with
// the key) and, for ApplyRegFile, the line of the entry.
struct RegTransferResult {
  LSTATUS status = ERROR_SUCCESS;
  std::string message;
  std::size_t line = 0;

  bool ok() const noexcept { return status == ERROR_SUCCESS; }
};

// Reads the key `path` below `hive` and everything below it into `out`
// (replacing its contents), in the order the registry editor exports:
// each key, then its values in enumeration order, then its subkeys in
// enumeration order. A missing key gives ERROR_FILE_NOT_FOUND; a key or
// value name with CR or LF, which no .reg file can carry, gives
// ERROR_INVALID_PARAMETER.
CADTOOLS_API RegTransferResult ExportRegTree(RegHive hive, WStringView path, RegKeys& out);

// Applies the entries in order: creates each key and sets or deletes its
// values, deletes [-KEY] trees. Deleting what is not there is not an error,
// as in the registry editor. All or nothing: the result names the first
// entry that failed (a store that refuses writes is found before anything
// is written), and then nothing of the entries is left in the registry.
// Off Windows this holds even for a process killed in the middle; on
// Windows what was changed is put back (see the README for the details).
CADTOOLS_API RegTransferResult ApplyRegFile(const RegKeys& keys);

// ---- Value data ----------------------------------------------------------

// The text of string data that is exactly UTF-16LE text plus one NUL
// terminator (even length, no NUL inside); nullopt otherwise.
CADTOOLS_API std::optional<WString> DecodeRegString(std::span<const BYTE> data);
// The text and its terminator, as REG_SZ and REG_EXPAND_SZ store it.
CADTOOLS_API std::vector<BYTE> EncodeRegString(WStringView text);
// The strings of REG_MULTI_SZ data when it is exactly what
// EncodeRegMultiString gives for them; nullopt otherwise.
CADTOOLS_API std::optional<std::vector<WString>> DecodeRegMultiString(std::span<const BYTE> data);
// Each string with its NUL, then one more NUL; the empty list is one NUL
// (2 bytes), as the host's string arrays store it.
CADTOOLS_API std::vector<BYTE> EncodeRegMultiString(std::span<const WString> strings);

}  // namespace cadtools::registry
