// Folding, encoding and splitting of registry names.
#include "registry/store/names.h"

#include <cadtools/compat/wide_ctype.h>

namespace cadtools::registry::store {

void AppendName(std::string& out, Units name, NameForm form) {
  const std::size_t at = out.size();
  out.resize(at + 2 * name.size());
  char* p = out.data() + at;
  for (const char16_t unit : name) {
    const char16_t u = form == NameForm::kFolded ? ToUpperUnit(unit) : unit;
    *p++ = static_cast<char>(u >> 8);
    *p++ = static_cast<char>(u & 0xFF);
  }
}

void AppendPathComponent(std::string& path, Units component) {
  if (!path.empty()) path.append({'\0', '\\'});
  AppendName(path, component, NameForm::kFolded);
}

void DecodeName(std::string_view bytes, WCHAR* out) noexcept {
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto high = static_cast<unsigned char>(bytes[i]);
    const auto low = static_cast<unsigned char>(bytes[i + 1]);
    *out++ = static_cast<WCHAR>(high << 8 | low);
  }
}

Units NameOf(const WCHAR* text) noexcept { return text == nullptr ? Units() : Units(text); }

PathProblem SplitKeyPath(const WCHAR* text, std::vector<Units>& components) {
  components.clear();
  const Units path = NameOf(text);
  if (!path.empty() && path.front() == u'\\') return PathProblem::kLeadingBackslash;
  std::size_t start = 0;
  while (start < path.size()) {
    std::size_t end = path.find(u'\\', start);
    if (end == Units::npos) end = path.size();
    if (end > start) {
      if (end - start > kMaxKeyNameUnits) return PathProblem::kNameTooLong;
      components.push_back(path.substr(start, end - start));
    }
    start = end + 1;
  }
  return PathProblem::kNone;
}

}  // namespace cadtools::registry::store
