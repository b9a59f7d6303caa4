// `cadtools settings`: the host's settings below its registry root, read,
// written, exported to and imported from .reg files.
//
//   cadtools settings set Settings\Text\DefaultFontName sz Arial
//   cadtools settings get Settings\Text\DefaultFontName      # sz "Arial"
//   cadtools settings --app Draw export draw.reg
//
// Off Windows the registry is the library's own store; --store DIR points
// it at another folder for the one command.
#pragma once

#include "settings_values.h"

#include <cadtools/compat/cstring.h>
#include <cadtools/registry/reg_file.h>

#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace cadtools::cli {

// The options before a settings command's words: --app NAME, --root ROOT,
// --store DIR (each as NAME=VALUE too), --help.
struct SettingsOptions {
  std::optional<std::string> app;
  std::optional<std::string> root;
  std::optional<std::string> store;
  bool help = false;
  std::span<const std::string_view> command;  // COMMAND and its words
};

// Takes the options up to the first word that is not one. Throws
// UsageError, with `usage`, for unknown, repeated or empty options and for
// --app with --root.
SettingsOptions ParseSettingsOptions(std::span<const std::string_view> words, const std::string& usage);

// The words after `settings`. Throws UsageError for bad arguments and
// CommandFailed for what is not there or cannot be done.
void RunSettings(std::span<const std::string_view> words, std::ostream& out);

// Where a KEY word of the command line leads: a key, and for get, set and
// delete a value name in it.
struct SettingsLocation {
  registry::RegHive hive = registry::RegHive::kCurrentUser;
  WString path;  // below the hive, without leading or trailing backslashes
  WString name;  // the value; empty: the key's default value
};

// KEY as an absolute key (it starts with a hive name) or as the host joins
// it to `root`: root + KEY with leading backslashes dropped. With
// `value_name`, the part after the last backslash is the value name and
// the rest, without trailing backslashes, the key; otherwise KEY names a
// key. Throws UsageError for text that is not valid UTF-8.
SettingsLocation ResolveSettingsKey(std::string_view key, WStringView root, bool value_name);

// The library's root for the host's settings, CRegBase::GetRegBase():
// "Software\Quenby\NAME\Version V8R1\" or the root set as it stands.
WString SettingsRoot();

// Gives the library the application name (--app) or the root (--root) for
// one command, so that everything the library does (the typed values,
// copy-machine) works below the same root, and puts back what was there
// before when it goes. Throws UsageError for text that is not UTF-8.
class ScopedSettingsRoot {
 public:
  ScopedSettingsRoot(const std::optional<std::string>& app, const std::optional<std::string>& root);
  ScopedSettingsRoot(const ScopedSettingsRoot&) = delete;
  ScopedSettingsRoot& operator=(const ScopedSettingsRoot&) = delete;
  ~ScopedSettingsRoot();

 private:
  CString previous_root_;
  CString previous_app_;
};

// The value at `at`: its registry type and data. Throws CommandFailed when
// the key or value is not there or cannot be read.
TypedValue ReadSetting(const SettingsLocation& at);
// Creates the key when needed and sets the value. Throws CommandFailed.
void WriteSetting(const SettingsLocation& at, const TypedValue& value);

// Off Windows, points the library's store at `folder` (when given) until
// the object goes, then back; for one command, or a tour in its own store.
// On Windows a folder is refused (UsageError): the settings live in the
// system registry.
class ScopedStoreFolder {
 public:
  explicit ScopedStoreFolder(const std::optional<std::string>& folder);
  ScopedStoreFolder(const ScopedStoreFolder&) = delete;
  ScopedStoreFolder& operator=(const ScopedStoreFolder&) = delete;
  ~ScopedStoreFolder();

 private:
  static constexpr const char* kVariable = "CADTOOLS_REGISTRY_DIR";
  std::optional<std::string> previous_;
  bool active_ = false;
};

// "HKEY_CURRENT_USER\path" in UTF-8.
std::string SettingsKeyText(registry::RegHive hive, WStringView path);

// Throws CommandFailed for a registry call that failed: "what (error N)",
// with the words for a refusal, "what: access denied (error 5)" (a
// read-only settings store, or a key the user may not change).
[[noreturn]] void FailWith(LSTATUS status, const std::string& what);

}  // namespace cadtools::cli
