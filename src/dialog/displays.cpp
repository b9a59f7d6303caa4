// The displays: the system's on Windows, a layout of our own elsewhere.
#include <cadtools/dialog/displays.h>

#if defined(_WIN32)

namespace cadtools::ui {

CSize PrimaryDisplaySize() {
  RECT desktop{0, 0, 0, 0};
  ::GetWindowRect(::GetDesktopWindow(), &desktop);
  return CRect(desktop).Size();
}

bool AnyDisplayIntersects(const RECT& rect) {
  if (rect.right <= rect.left || rect.bottom <= rect.top) return false;
  return ::MonitorFromRect(&rect, MONITOR_DEFAULTTONULL) != nullptr;
}

}  // namespace cadtools::ui

#else

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cadtools::ui {

namespace {

struct Display {
  std::int64_t left, top, right, bottom;
};

// The layout SetDisplayLayout gave, while it gave one.
std::optional<std::string>& LayoutOverride() {
  static std::optional<std::string> text;
  return text;
}

bool ParseInt(std::string_view text, std::int64_t& out) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return false;
  out = value;
  return true;
}

// "x,y,w,h;x,y,w,h" -> displays; nothing when any part is malformed or
// has no area.
std::vector<Display> Parse(std::string_view text) {
  std::vector<Display> displays;
  while (!text.empty()) {
    const auto semicolon = text.find(';');
    std::string_view item = text.substr(0, semicolon);
    text = semicolon == std::string_view::npos ? std::string_view() : text.substr(semicolon + 1);
    std::int64_t numbers[4];
    for (int i = 0; i < 4; ++i) {
      const auto comma = item.find(',');
      if ((i < 3) == (comma == std::string_view::npos)) return {};
      if (!ParseInt(item.substr(0, comma), numbers[i])) return {};
      item = i < 3 ? item.substr(comma + 1) : std::string_view();
    }
    if (numbers[2] <= 0 || numbers[3] <= 0) return {};
    displays.push_back({numbers[0], numbers[1], numbers[0] + numbers[2], numbers[1] + numbers[3]});
  }
  return displays;
}

std::vector<Display> Layout() {
  std::vector<Display> displays;
  if (LayoutOverride()) {
    displays = Parse(*LayoutOverride());
  } else if (const char* env = std::getenv("CADTOOLS_DISPLAYS")) {
    displays = Parse(env);
  }
  if (displays.empty()) displays.push_back({0, 0, 1920, 1080});
  return displays;
}

}  // namespace

void SetDisplayLayout(const char* layout) {
  if (layout) {
    LayoutOverride() = std::string(layout);
  } else {
    LayoutOverride().reset();
  }
}

CSize PrimaryDisplaySize() {
  const Display primary = Layout().front();
  return CSize(static_cast<int>(primary.right - primary.left), static_cast<int>(primary.bottom - primary.top));
}

bool AnyDisplayIntersects(const RECT& rect) {
  if (rect.right <= rect.left || rect.bottom <= rect.top) return false;
  for (const Display& d : Layout()) {
    if (rect.left < d.right && d.left < rect.right && rect.top < d.bottom && d.top < rect.bottom) return true;
  }
  return false;
}

}  // namespace cadtools::ui

#endif
