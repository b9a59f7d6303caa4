// Adding and removing a prefix (case-sensitive).
#include <cadtools/text_tools.h>

namespace cadtools {

CString TextEditing::AddPrefix(const CString& str, const CString& prefix) {
  const WStringView s = str.View();
  const WStringView p = prefix.View();
  // Nothing but the prefix carries no content.
  if (s.empty() || s == p) return CString();
  if (s.size() > p.size() && s.starts_with(p)) return str;
  return prefix + str;
}

CString TextEditing::RemovePrefix(const CString& str, const CString& prefix) {
  const WStringView s = str.View();
  const WStringView p = prefix.View();
  if (!s.starts_with(p)) return str;
  return str.Mid(static_cast<int>(p.size()));
}

}  // namespace cadtools
