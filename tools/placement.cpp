#include "placement.h"

#include "errors.h"
#include "help.h"
#include "settings.h"
#include "settings_values.h"

#include <cadtools/dialog/displays.h>
#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/registry_api.h>

#include <cstdint>
#include <cstring>

namespace cadtools::cli {
namespace {

constexpr WStringView kMarkerSuffix = CADTOOLS_WIDE("Maximized");

bool IsDigit(WCHAR c) { return c >= '0' && c <= '9'; }

// The digits as a number; nullopt when empty or beyond `limit`.
std::optional<long long> Number(WStringView digits, long long limit) {
  if (digits.empty()) return std::nullopt;
  long long value = 0;
  for (const WCHAR c : digits) {
    value = value * 10 + (c - '0');
    if (value > limit) return std::nullopt;
  }
  return value;
}

std::string Rect(const RECT& r) {
  return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
         std::to_string(r.bottom);
}

std::string Placement(const CRect& r) {
  if (r.IsRectEmpty()) return r.IsRectNull() ? "none" : Rect(r) + " (no area: none)";
  std::string text = Rect(r) + " (" + std::to_string(r.Width()) + "x" + std::to_string(r.Height()) + ")";
  if (!ui::AnyDisplayIntersects(r)) text += ", on no display: forgotten at the next opening";
  return text;
}

std::string Marker(const CRect& r) {
  if (r == RECT{-1, -1, -1, -1}) return "maximised";
  if (r.IsRectNull()) return "not maximised";
  return Rect(r) + " (not maximised)";
}

void List(const SettingsLocation& at, std::ostream& out) {
  registry::RegKeys tree;
  const registry::RegTransferResult read = registry::ExportRegTree(at.hive, at.path, tree);
  out << SettingsKeyText(at.hive, at.path) << '\n';
  if (read.status == ERROR_FILE_NOT_FOUND) {
    out << "  no placements stored\n";
    return;
  }
  if (!read.ok()) throw CommandFailed(read.message);
  if (tree.empty()) return;
  for (const registry::RegValueEntry& value : tree.front().values) {
    out << "  " << (value.name.empty() ? "@" : EscapedName(value.name)) << "  "
        << DescribePlacement(value.name, value.type, value.data) << '\n';
  }
}

void Clear(const SettingsLocation& at, std::ostream& out) {
  const LSTATUS status = registry::SHDeleteKeyW(registry::HiveHandle(at.hive), at.path.c_str());
  if (status == ERROR_FILE_NOT_FOUND) {
    out << "no placements stored in " << SettingsKeyText(at.hive, at.path) << '\n';
    return;
  }
  if (status != ERROR_SUCCESS) FailWith(status, "cannot delete " + SettingsKeyText(at.hive, at.path));
  out << "deleted " << SettingsKeyText(at.hive, at.path) << '\n';
}

}  // namespace

std::optional<PlacementName> DecodePlacementName(WStringView name) {
  if (!name.starts_with(CADTOOLS_WIDE("IDD"))) return std::nullopt;
  name.remove_prefix(3);
  const bool negative = name.starts_with(CADTOOLS_WIDE("-"));  // numbers above 2^31 - 1 were written signed
  if (negative) name.remove_prefix(1);
  std::size_t x = 0;
  while (x < name.size() && IsDigit(name[x])) ++x;
  if (x == name.size() || name[x] != 'x') return std::nullopt;
  std::size_t end = x + 1;
  while (end < name.size() && IsDigit(name[end])) ++end;
  PlacementName decoded;
  const auto height = Number(name.substr(x + 1, end - x - 1), 1 << 30);
  if (!height) return std::nullopt;
  decoded.height = static_cast<int>(*height);
  // The widest plausible width: the shortest number before it.
  for (std::size_t split = 1; split < x; ++split) {
    const WStringView width = name.substr(split, x - split);
    const auto w = width[0] == '0' ? std::nullopt : Number(width, 16384);
    const auto id = Number(name.substr(0, split), negative ? 2147483648LL : 4294967295LL);
    if (w && *w >= 320 && id) {
      decoded.id = negative ? -*id : *id;
      decoded.width = static_cast<int>(*w);
      decoded.module = WString(name.substr(end));
      decoded.marker = decoded.module.ends_with(kMarkerSuffix);
      if (decoded.marker) decoded.module.resize(decoded.module.size() - kMarkerSuffix.size());
      return decoded;
    }
  }
  return std::nullopt;
}

std::string DescribePlacement(WStringView name, DWORD type, std::span<const BYTE> data) {
  const std::optional<PlacementName> decoded = DecodePlacementName(name);
  std::string text;
  if (decoded) {
    text = "dialog " + std::to_string(decoded->id) + ", display " + std::to_string(decoded->width) + "x" +
           std::to_string(decoded->height) + ", module " +
           (decoded->module.empty() ? std::string("(none)") : EscapedName(decoded->module)) + ": ";
  }
  if (type != REG_BINARY || data.size() != 16) return text + FormatValue(type, data);
  std::int32_t fields[4];
  std::memcpy(fields, data.data(), sizeof fields);
  const CRect r(fields[0], fields[1], fields[2], fields[3]);
  const bool marker = decoded ? decoded->marker : WString(name).ends_with(kMarkerSuffix);
  return text + (marker ? Marker(r) : Placement(r));
}

void RunPlacement(std::span<const std::string_view> words, std::ostream& out) {
  const SettingsOptions o = ParseSettingsOptions(words, PlacementUsage());
  if (o.help) {
    out << PlacementUsage();
    return;
  }
  if (o.command.empty()) throw UsageError("no placement command given", PlacementUsage());
  const std::string_view command = o.command[0];
  if (o.command.size() > 1) {
    if (o.command[1] == "--help" || o.command[1] == "-h") {
      out << PlacementUsage();
      return;
    }
    throw UsageError("too many arguments for " + std::string(command), PlacementUsage());
  }
  if (command != "list" && command != "clear") {
    throw UsageError("unknown placement command '" + std::string(command) + "'", PlacementUsage());
  }
  const ScopedSettingsRoot library_root(o.app, o.root);
  const ScopedStoreFolder store(o.store);
  // The key as the host's dialogs compose it: the root as it stands, then
  // the key, so a root without its trailing backslash runs into it.
  const SettingsLocation at = ResolveSettingsKey("Settings\\WindowPos", SettingsRoot(), false);
  if (command == "list") {
    List(at, out);
  } else {
    Clear(at, out);
  }
}

}  // namespace cadtools::cli
