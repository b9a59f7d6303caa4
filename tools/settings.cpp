#include "settings.h"

#include "errors.h"
#include "help.h"
#include "settings_values.h"

#include <cadtools/registry/application_name.h>
#include <cadtools/registry/reg_base.h>
#include <cadtools/registry/registry_api.h>

#include "registry/reg_file/reg_apply.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <vector>

namespace cadtools::cli {
namespace {

using registry::RegHive;
using registry::RegKeys;

// --name VALUE or --name=VALUE at words[i]; advances i past the value.
bool TakeOption(std::span<const std::string_view> words, std::size_t& i, std::string_view name,
                std::optional<std::string>& value, const std::string& usage) {
  const std::string_view word = words[i];
  if (!word.starts_with(name)) return false;
  std::string_view text;
  if (word.size() == name.size()) {
    if (++i == words.size()) throw UsageError(std::string(name) + " needs a value", usage);
    text = words[i];
  } else if (word[name.size()] == '=') {
    text = word.substr(name.size() + 1);
  } else {
    return false;
  }
  if (text.empty()) throw UsageError(std::string(name) + " needs a value", usage);
  if (value) throw UsageError(std::string(name) + " given twice", usage);
  value = std::string(text);
  return true;
}

using registry::detail::OpenKey;

std::string KeyText(const SettingsLocation& at) { return SettingsKeyText(at.hive, at.path); }

// "value 'Name' in KEY" or "default value in KEY", for messages.
std::string ValueText(const SettingsLocation& at) {
  return (at.name.empty() ? std::string("default value") : "value '" + EscapedName(at.name) + "'") + " in " +
         KeyText(at);
}

std::filesystem::path PathOf(std::string_view utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

void ExpectWords(std::span<const std::string_view> args, std::size_t min, std::size_t max, std::string_view command) {
  if (args.size() < min || args.size() > max) {
    throw UsageError(std::string(args.size() < min ? "too few" : "too many") + " arguments for " + std::string(command),
                     SettingsCommandUsage(command));
  }
}

void List(std::span<const std::string_view> args, const WString& root, std::ostream& out) {
  ExpectWords(args, 0, 1, "list");
  const SettingsLocation at = ResolveSettingsKey(args.empty() ? std::string_view() : args[0], root, false);
  RegKeys tree;
  const registry::RegTransferResult read = registry::ExportRegTree(at.hive, at.path, tree);
  if (!read.ok()) throw CommandFailed(read.message);
  out << KeyText(at) << '\n';
  for (const registry::RegKeyEntry& key : tree) {
    // Depth below the listed key: one per key name after its path.
    const WStringView below = WStringView(key.path).substr(std::min(key.path.size(), at.path.size()));
    const std::size_t depth = below.empty() ? 0
                                            : static_cast<std::size_t>(std::count(below.begin(), below.end(), u'\\')) +
                                                  (at.path.empty() ? 1 : 0);
    if (depth > 0) {
      const std::size_t last = key.path.rfind(u'\\');
      out << std::string(2 * depth, ' ')
          << EscapedName(WStringView(key.path).substr(last == WString::npos ? 0 : last + 1)) << "\\\n";
    }
    for (const registry::RegValueEntry& value : key.values) {
      // The notation's type word is left out where the REG_ name says it;
      // data of the wrong shape keeps its hex(N).
      std::string text = FormatValue(value.type, value.data);
      if (!text.starts_with("hex(")) {
        const std::size_t space = text.find(' ');
        text = space == std::string::npos ? std::string() : text.substr(space + 1);
      }
      out << std::string(2 * depth + 2, ' ') << (value.name.empty() ? "@" : EscapedName(value.name)) << " ("
          << RegTypeName(value.type) << ")" << (text.empty() ? "" : " ") << text << '\n';
    }
  }
}

void Get(std::span<const std::string_view> args, const WString& root, std::ostream& out) {
  ExpectWords(args, 1, 2, "get");
  const SettingsLocation at = ResolveSettingsKey(args[0], root, true);
  if (args.size() == 2) {
    try {
      FormatValueAs(args[1], {});  // an unknown TYPE is a usage error, found before anything is read
    } catch (const UsageError& e) {
      throw UsageError(e.what(), SettingsCommandUsage("get"));
    }
  }
  const TypedValue value = ReadSetting(at);
  if (args.size() == 1) {
    out << FormatValue(value.type, value.data) << '\n';
    return;
  }
  const std::optional<std::string> as = FormatValueAs(args[1], value.data);
  if (!as) {
    throw CommandFailed("the " + ValueText(at) + " holds " + RegTypeName(value.type) + " data of " +
                        std::to_string(value.data.size()) + " bytes, which cannot be read as " + std::string(args[1]));
  }
  out << *as << '\n';
}

void Set(std::span<const std::string_view> args, const WString& root) {
  if (args.size() < 2) throw UsageError("set needs KEY, TYPE and the value", SettingsCommandUsage("set"));
  const SettingsLocation at = ResolveSettingsKey(args[0], root, true);
  TypedValue value;
  try {
    value = ParseTypedValue(args[1], args.subspan(2));
  } catch (const UsageError& e) {
    throw UsageError(e.what(), SettingsCommandUsage("set"));
  }
  WriteSetting(at, value);
}

void Delete(std::span<const std::string_view> args, const WString& root) {
  const bool tree = !args.empty() && args[0] == "-r";
  if (tree) args = args.subspan(1);
  ExpectWords(args, 1, 1, "delete");
  if (tree) {
    const SettingsLocation at = ResolveSettingsKey(args[0], root, false);
    if (at.path.empty()) throw UsageError("refusing to delete a whole hive", SettingsCommandUsage("delete"));
    const LSTATUS status = registry::SHDeleteKeyW(registry::HiveHandle(at.hive), at.path.c_str());
    if (status == ERROR_FILE_NOT_FOUND) throw CommandFailed("no key " + KeyText(at));
    if (status != ERROR_SUCCESS) FailWith(status, "cannot delete " + KeyText(at));
    return;
  }
  const SettingsLocation at = ResolveSettingsKey(args[0], root, true);
  OpenKey key;
  LSTATUS status = registry::RegOpenKeyExW(registry::HiveHandle(at.hive), at.path.c_str(), 0, KEY_WRITE, key.Receive());
  if (status == ERROR_FILE_NOT_FOUND) throw CommandFailed("no key " + KeyText(at));
  if (status != ERROR_SUCCESS) FailWith(status, "cannot open " + KeyText(at));
  status = registry::RegDeleteValueW(key.get(), at.name.c_str());
  if (status == ERROR_FILE_NOT_FOUND) throw CommandFailed("no " + ValueText(at));
  if (status != ERROR_SUCCESS) FailWith(status, "cannot delete the " + ValueText(at));
}

void Export(std::span<const std::string_view> args, const WString& root) {
  ExpectWords(args, 1, 2, "export");
  const std::string_view file = args.back();
  const SettingsLocation at = ResolveSettingsKey(args.size() == 2 ? args[0] : std::string_view(), root, false);
  RegKeys tree;
  const registry::RegTransferResult read = registry::ExportRegTree(at.hive, at.path, tree);
  if (!read.ok()) throw CommandFailed(read.message);
  const std::string bytes = registry::WriteRegFile(tree);
  std::ofstream stream(PathOf(file), std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.close();
  if (!stream) throw OutputError("cannot write " + std::string(file));
}

void Import(std::span<const std::string_view> args) {
  ExpectWords(args, 1, 1, "import");
  const std::string file(args[0]);
  std::ifstream stream(PathOf(file), std::ios::binary);
  if (!stream) throw InputError("cannot read " + file);
  const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  if (stream.bad()) throw InputError("cannot read " + file);
  const registry::RegParseResult parsed = registry::ParseRegFile(bytes);
  if (parsed.error) {
    throw CommandFailed(file + ":" + std::to_string(parsed.error->line) + ": " + parsed.error->message);
  }
  const registry::RegTransferResult applied = registry::ApplyRegFile(parsed.keys);
  if (!applied.ok()) throw CommandFailed(file + ":" + std::to_string(applied.line) + ": " + applied.message);
}

}  // namespace

SettingsOptions ParseSettingsOptions(std::span<const std::string_view> words, const std::string& usage) {
  SettingsOptions o;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (word == "--help" || word == "-h") {
      o.help = true;
      return o;
    }
    if (TakeOption(words, i, "--app", o.app, usage) || TakeOption(words, i, "--root", o.root, usage) ||
        TakeOption(words, i, "--store", o.store, usage)) {
      continue;
    }
    if (word.starts_with("-")) throw UsageError("unknown option '" + std::string(word) + "'", usage);
    o.command = words.subspan(i);
    break;
  }
  if (o.app && o.root) throw UsageError("give --app or --root, not both", usage);
  return o;
}

ScopedStoreFolder::ScopedStoreFolder(const std::optional<std::string>& folder) {
  if (!folder) return;
#if defined(_WIN32)
  throw UsageError("--store works only off Windows: on Windows the settings live in the system registry",
                   SettingsUsage());
#else
  if (const char* old = std::getenv(kVariable)) previous_ = old;
  active_ = true;
  ::setenv(kVariable, folder->c_str(), 1);
  registry::ReloadStoreLocations();
#endif
}

ScopedStoreFolder::~ScopedStoreFolder() {
#if !defined(_WIN32)
  if (!active_) return;
  if (previous_) {
    ::setenv(kVariable, previous_->c_str(), 1);
  } else {
    ::unsetenv(kVariable);
  }
  registry::ReloadStoreLocations();
#endif
}

TypedValue ReadSetting(const SettingsLocation& at) {
  OpenKey key;
  LSTATUS status = registry::RegOpenKeyExW(registry::HiveHandle(at.hive), at.path.c_str(), 0, KEY_READ, key.Receive());
  if (status == ERROR_FILE_NOT_FOUND) throw CommandFailed("no key " + KeyText(at));
  if (status != ERROR_SUCCESS) FailWith(status, "cannot open " + KeyText(at));
  TypedValue value;
  // Ask for the size, then read; again if the value grew in between.
  for (int attempt = 0;; ++attempt) {
    auto size = static_cast<DWORD>(value.data.size());
    status = registry::RegQueryValueExW(key.get(), at.name.c_str(), nullptr, &value.type,
                                        value.data.empty() ? nullptr : value.data.data(), &size);
    const bool grow = status == ERROR_MORE_DATA || (status == ERROR_SUCCESS && size > value.data.size());
    if (grow && attempt < 8) {
      value.data.resize(size);
      continue;
    }
    if (status == ERROR_SUCCESS) value.data.resize(size);
    break;
  }
  if (status == ERROR_FILE_NOT_FOUND) throw CommandFailed("no " + ValueText(at));
  if (status != ERROR_SUCCESS) FailWith(status, "cannot read the " + ValueText(at));
  return value;
}

void WriteSetting(const SettingsLocation& at, const TypedValue& value) {
  OpenKey key;
  LSTATUS status = registry::RegCreateKeyExW(registry::HiveHandle(at.hive), at.path.c_str(), 0, nullptr,
                                             REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, key.Receive(), nullptr);
  if (status != ERROR_SUCCESS) FailWith(status, "cannot create " + KeyText(at));
  status = registry::detail::SetValueExactly(key.get(), at.name, value.type, value.data);
  if (status != ERROR_SUCCESS) FailWith(status, "cannot set the " + ValueText(at));
}

WString SettingsRoot() { return WString(CRegBase::GetRegBase().View()); }

ScopedSettingsRoot::ScopedSettingsRoot(const std::optional<std::string>& app, const std::optional<std::string>& root)
    : previous_root_(CRegBase::m_strRegBase), previous_app_(GetApplicationName()) {
  // Both are checked before either is set, so that a refusal changes nothing.
  const std::optional<WString> new_root = root ? std::optional(Utf16Argument(*root)) : std::nullopt;
  const std::optional<WString> new_app = app ? std::optional(Utf16Argument(*app)) : std::nullopt;
  if (new_app) SetApplicationName(CString(new_app->data(), static_cast<int>(new_app->size())));
  if (new_root) CRegBase::SetRegBase(CString(new_root->data(), static_cast<int>(new_root->size())));
}

ScopedSettingsRoot::~ScopedSettingsRoot() {
  CRegBase::m_strRegBase = previous_root_;
  SetApplicationName(previous_app_);
}

void FailWith(LSTATUS status, const std::string& what) {
  const char* words = status == ERROR_ACCESS_DENIED ? ": access denied" : "";
  throw CommandFailed(what + words + " (error " + std::to_string(status) + ")");
}

std::string SettingsKeyText(RegHive hive, WStringView path) {
  std::string text(registry::HiveName(hive));
  if (!path.empty()) text += "\\" + EscapedName(path);
  return text;
}

SettingsLocation ResolveSettingsKey(std::string_view key, WStringView root, bool value_name) {
  const WString text = Utf16Argument(key);
  SettingsLocation at;
  const std::size_t slash = text.find(u'\\');
  WString full;
  if (const auto hive = registry::HiveFromName(WStringView(text).substr(0, slash))) {
    at.hive = *hive;
    if (slash != WString::npos) full = text.substr(slash + 1);
  } else {
    full = WString(root) + text;
  }
  full.erase(0, full.find_first_not_of(u'\\') == WString::npos ? full.size() : full.find_first_not_of(u'\\'));
  const auto trim_right = [](WString& s) {
    while (!s.empty() && s.back() == u'\\') s.pop_back();
  };
  if (!value_name) {
    trim_right(full);
    at.path = std::move(full);
    return at;
  }
  const std::size_t last = full.rfind(u'\\');
  if (last == WString::npos) {
    at.name = std::move(full);
    return at;
  }
  at.name = full.substr(last + 1);
  at.path = full.substr(0, last);
  trim_right(at.path);
  return at;
}

void RunSettings(std::span<const std::string_view> words, std::ostream& out) {
  const SettingsOptions o = ParseSettingsOptions(words, SettingsUsage());
  if (o.help) {
    out << SettingsUsage();
    return;
  }
  if (o.command.empty()) throw UsageError("no settings command given", SettingsUsage());
  const std::string_view command = o.command[0];
  const std::span<const std::string_view> args = o.command.subspan(1);
  if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
    out << SettingsCommandUsage(command);
    return;
  }
  if (o.root && registry::HiveFromName(Utf16Argument(o.root->substr(0, o.root->find('\\'))))) {
    throw UsageError("--root is a path below the hive, as the host sets it; name other hives in KEY", SettingsUsage());
  }
  const ScopedSettingsRoot library_root(o.app, o.root);
  const WString root = SettingsRoot();
  const ScopedStoreFolder store(o.store);
  if (command == "list") {
    List(args, root, out);
  } else if (command == "get") {
    Get(args, root, out);
  } else if (command == "set") {
    Set(args, root);
  } else if (command == "delete") {
    Delete(args, root);
  } else if (command == "export") {
    Export(args, root);
  } else if (command == "import") {
    Import(args);
  } else if (command == "copy-machine") {
    ExpectWords(args, 0, 0, "copy-machine");
    CRegBase().CopyLocalMachineToCurrentUser();
  } else {
    throw UsageError("unknown settings command '" + std::string(command) + "'", SettingsUsage());
  }
}

}  // namespace cadtools::cli
