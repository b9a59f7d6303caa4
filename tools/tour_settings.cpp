// The tour's section on settings and .reg files. It never touches the
// user's own settings: off Windows it works in a store folder of its own,
// on Windows below a scratch key that it deletes again.
#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/registry_api.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "errors.h"
#include "settings.h"
#include "settings_values.h"
#include "tour_steps.h"

#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

namespace cadtools::cli {
namespace {

using registry::RegHive;

int ProcessId() {
#if defined(_WIN32)
  return _getpid();
#else
  return static_cast<int>(getpid());
#endif
}

// The lines of a UTF-16LE file, as UTF-8.
std::vector<std::string> Lines(const std::string& bytes) {
  WString text;
  for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
    text.push_back(
        static_cast<WCHAR>(static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8)));
  }
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find(u'\n', start)) != WString::npos; start = end + 1) {
    const std::size_t length = end - start - (end > start && text[end - 1] == u'\r' ? 1 : 0);
    lines.push_back(ToUtf8(CString(text.data() + start, static_cast<int>(length))));
  }
  return lines;
}

std::string Export(const WString& path) {
  registry::RegKeys tree;
  const registry::RegTransferResult read = registry::ExportRegTree(RegHive::kCurrentUser, path, tree);
  if (!read.ok()) throw CommandFailed(read.message);
  return registry::WriteRegFile(tree);
}

// Where the walk keeps its settings, and how it gets an empty place to
// import into: a second store folder off Windows, the same key emptied on
// Windows.
class Scratch {
 public:
  Scratch() {
#if defined(_WIN32)
    root_ = Utf16Argument("Software\\cadtools-tests\\tour-" + std::to_string(ProcessId()) + "\\");
#else
    std::random_device random;
    folder_ = std::filesystem::temp_directory_path() /
              ("cadtools-tour-" + std::to_string(ProcessId()) + "-" + std::to_string(random()));
    std::filesystem::create_directories(folder_ / "first");
    std::filesystem::create_directories(folder_ / "second");
    first_.emplace(std::optional<std::string>((folder_ / "first").string()));
    root_ = SettingsRoot(std::nullopt, std::nullopt);
#endif
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
#if defined(_WIN32)
    registry::SHDeleteKeyW(HKEY_CURRENT_USER, path().c_str());
#else
    second_.reset();
    first_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
#endif
  }

  const WString& root() const { return root_; }
  WString path() const { return root_.substr(0, root_.size() - 1); }

  void Empty() {
#if defined(_WIN32)
    registry::SHDeleteKeyW(HKEY_CURRENT_USER, path().c_str());
#else
    second_.emplace(std::optional<std::string>((folder_ / "second").string()));
#endif
  }

 private:
  WString root_;
#if !defined(_WIN32)
  std::filesystem::path folder_;
  std::optional<ScopedStoreFolder> first_;
  std::optional<ScopedStoreFolder> second_;
#endif
};

void Walk(Tour& t) {
  Scratch scratch;
  struct Setting {
    const char* key;
    const char* type;
    std::vector<std::string_view> values;
    const char* note;
  };
  const Setting settings[] = {
      {"Settings\\Count", "dword", {"42"}, nullptr},
      {"Settings\\Window", "rect", {"10,20,640,480"}, "a CRect as the host stores it: raw little-endian"},
      {"Settings\\Scale", "float", {"0.1"}, "the float's own four bytes"},
      {"Settings\\Text\\DefaultFontName", "sz", {"Arial"}, nullptr},
  };
  for (const Setting& s : settings) {
    const SettingsLocation at = ResolveSettingsKey(s.key, scratch.root(), true);
    WriteSetting(at, ParseTypedValue(s.type, s.values));
    const TypedValue stored = ReadSetting(at);
    std::string call = std::string("set ") + s.key + " " + s.type;
    for (const std::string_view v : s.values) call += " " + std::string(v);
    t.Step(call, FormatValue(stored.type, stored.data), s.note == nullptr ? "" : s.note);
  }

  const std::string first = Export(scratch.path());
  const std::vector<std::string> lines = Lines(first);
  t.Step("export", Int(static_cast<long long>(lines.size())) + " lines of UTF-16LE",
         "as the registry editor writes them");
  for (const std::string& line : lines) {
    if (line.starts_with("\"Count\"") || line.starts_with("\"Window\"")) t.Step("  a value line", line);
  }

  scratch.Empty();
  const registry::RegParseResult parsed = registry::ParseRegFile(first);
  if (parsed.error) throw CommandFailed("line " + std::to_string(parsed.error->line) + ": " + parsed.error->message);
  const registry::RegTransferResult applied = registry::ApplyRegFile(parsed.keys);
  if (!applied.ok()) throw CommandFailed(applied.message);
  const std::string again = Export(scratch.path());
  t.Step("import into an empty store, export", again == first ? "the same bytes" : "different bytes",
         "the round trip is exact");
}

}  // namespace

void SettingsTour(Tour& t) {
  t.Heading("Settings: values as the host stores them, and .reg files");
  try {
    Walk(t);
  } catch (const std::exception& e) {
    t.Step("the settings store", std::string("failed: ") + e.what());
  }
}

}  // namespace cadtools::cli
