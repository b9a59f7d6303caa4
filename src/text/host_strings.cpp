// The host's string resources: registered texts first, then (on Windows)
// the host's resource module.
#include <cadtools/text/host_strings.h>

#include <map>

namespace cadtools {

namespace {

std::map<UINT, CString>& Registered() {
  static std::map<UINT, CString> strings;
  return strings;
}

#if defined(_WIN32)
HMODULE g_resourceModule = nullptr;

CString LoadFromModule(UINT id) {
  HMODULE module = g_resourceModule != nullptr ? g_resourceModule : ::GetModuleHandleW(nullptr);
  // A string resource holds at most 4095 units.
  WCHAR buffer[4096];
  const int length = ::LoadStringW(module, id, buffer, 4096);
  return length > 0 ? CString(buffer, length) : CString();
}
#endif

}  // namespace

void SetHostString(UINT id, const CString& text) { Registered()[id] = text; }

void ClearHostString(UINT id) { Registered().erase(id); }

CString LoadHostString(UINT id) {
  const auto found = Registered().find(id);
  if (found != Registered().end()) return found->second;
#if defined(_WIN32)
  return LoadFromModule(id);
#else
  return CString();
#endif
}

#if defined(_WIN32)
void SetHostResourceModule(HMODULE module) noexcept { g_resourceModule = module; }
#endif

}  // namespace cadtools
