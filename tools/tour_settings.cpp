// The tour's section on settings and .reg files. It never touches the
// user's own settings: off Windows it works in a store folder of its own,
// on Windows below a scratch key that it deletes again.
#include "errors.h"
#include "placement.h"
#include "settings.h"
#include "settings_values.h"
#include "tour_steps.h"

#include <cadtools/compat/point_size_rect.h>
#include <cadtools/registry/reg_file.h>
#include <cadtools/registry/reg_values.h>
#include <cadtools/registry/registry_api.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

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

// Where the walk keeps its settings (the library's root points there while
// it lasts), and how it gets an empty place to import into: a second store
// folder off Windows, the same key emptied on Windows.
class Scratch {
 public:
  Scratch() {
#if defined(_WIN32)
    root_scope_.emplace(std::nullopt, "Software\\cadtools-tests\\tour-" + std::to_string(ProcessId()) + "\\");
    root_ = SettingsRoot();
#else
    std::random_device random;
    folder_ = std::filesystem::temp_directory_path() /
              ("cadtools-tour-" + std::to_string(ProcessId()) + "-" + std::to_string(random()));
    std::filesystem::create_directories(folder_ / "first");
    std::filesystem::create_directories(folder_ / "second");
    first_.emplace(std::optional<std::string>((folder_ / "first").string()));
    root_ = SettingsRoot();
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
#if defined(_WIN32)
  std::optional<ScopedSettingsRoot> root_scope_;
#else
  std::filesystem::path folder_;
  std::optional<ScopedStoreFolder> first_;
  std::optional<ScopedStoreFolder> second_;
#endif
};

void Walk(Tour& t, Scratch& scratch) {
  const auto stored = [&](const char* key) {
    const TypedValue value = ReadSetting(ResolveSettingsKey(key, scratch.root(), true));
    return FormatValue(value.type, value.data);
  };
  {
    CRegDWORD count(CADTOOLS_WIDE("Settings\\Count"), 7);
    t.Step("CRegDWORD count(\"Settings\\Count\", 7)", Int(static_cast<DWORD>(count)), "not stored yet: the default");
    count = 42;
    t.Step("count = 42", stored("Settings\\Count"), "written through at once");
  }
  CRegRect(CADTOOLS_WIDE("Settings\\Window")) = CRect(10, 20, 640, 480);
  t.Step("CRegRect(\"Settings\\Window\") = (10, 20, 640, 480)", stored("Settings\\Window"),
         "the host's raw little-endian image");
  CRegFloat(CADTOOLS_WIDE("Settings\\Scale")) = 0.1f;
  t.Step("CRegFloat(\"Settings\\Scale\") = 0.1f", stored("Settings\\Scale"), "the float's own four bytes");
  CRegString(CADTOOLS_WIDE("Settings\\Text\\DefaultFontName")) = CString(CADTOOLS_WIDE("Arial"));
  t.Step("CRegString(\"Settings\\Text\\DefaultFontName\") = \"Arial\"", stored("Settings\\Text\\DefaultFontName"));
  t.Step("CRegDWORD(\"Settings\\Count\", 7)", Int(static_cast<DWORD>(CRegDWORD(CADTOOLS_WIDE("Settings\\Count"), 7))),
         "read back");

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
    Scratch scratch;
    Walk(t, scratch);
    t.Heading("Dialog placement: per dialog, display size and resource module");
    PlacementWalk(t);
    t.Heading("The default font face (cadtools font)");
    DefaultFontWalk(t);
  } catch (const std::exception& e) {
    t.Step("the settings store", std::string("failed: ") + e.what());
  }
}

}  // namespace cadtools::cli
