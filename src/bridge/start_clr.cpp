// Starting the runtime on Windows: the .NET Framework 4 CLR through its
// hosting interfaces. mscoree.dll is loaded at run time, so the library
// loads on machines without .NET and reports the missing runtime when the
// bridge is first used. Inside the host the CLR usually runs already;
// Start() then succeeds without starting it again.
#include "bridge/bridge_assembly.h"
#include "bridge/seam.h"

#include <windows.h>
#include <unknwn.h>

#include <cstdint>
#include <cwchar>
#include <string>

namespace cadtools::bridge::detail {

namespace {

// The hosting interfaces this needs, in their vtable order. mingw-w64 has
// no metahost.h, so they are declared here. COM objects are released, never
// deleted, so IUnknown has no virtual destructor.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
struct ICLRRuntimeInfo : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetVersionString(LPWSTR, DWORD*) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRuntimeDirectory(LPWSTR, DWORD*) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsLoaded(HANDLE, BOOL*) = 0;
  virtual HRESULT STDMETHODCALLTYPE LoadErrorString(UINT, LPWSTR, DWORD*, LONG) = 0;
  virtual HRESULT STDMETHODCALLTYPE LoadLibraryFromRuntime(LPCWSTR, HMODULE*) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetProcAddressFromRuntime(LPCSTR, LPVOID*) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetInterface(REFCLSID, REFIID, LPVOID*) = 0;
};

struct ICLRMetaHost : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetRuntime(LPCWSTR, REFIID, LPVOID*) = 0;
};

struct ICLRRuntimeHost : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Start() = 0;
  virtual HRESULT STDMETHODCALLTYPE Stop() = 0;
  virtual HRESULT STDMETHODCALLTYPE SetHostControl(IUnknown*) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCLRControl(IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE UnloadAppDomain(DWORD, BOOL) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteInAppDomain(DWORD, void*, void*) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCurrentAppDomainId(DWORD*) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteApplication(LPCWSTR, DWORD, LPCWSTR*, DWORD, LPCWSTR*, int*) = 0;
  virtual HRESULT STDMETHODCALLTYPE ExecuteInDefaultAppDomain(LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, DWORD*) = 0;
};

#pragma GCC diagnostic pop

constexpr GUID kClsidMetaHost = {0x9280188d, 0x0e8e, 0x4867, {0xb3, 0x0c, 0x7f, 0xa8, 0x38, 0x84, 0xe8, 0xde}};
constexpr GUID kIidMetaHost = {0xd332db9e, 0xb9b3, 0x4125, {0x82, 0x07, 0xa1, 0x48, 0x84, 0xf5, 0x32, 0x16}};
constexpr GUID kIidRuntimeInfo = {0xbd39d1d2, 0xba2f, 0x486a, {0x89, 0xb0, 0xb4, 0xb0, 0xcb, 0x46, 0x68, 0x91}};
constexpr GUID kClsidRuntimeHost = {0x90f1a06e, 0x7712, 0x4762, {0x86, 0xb5, 0x7a, 0x5e, 0xba, 0x6b, 0xdb, 0x02}};
constexpr GUID kIidRuntimeHost = {0x90f1a06c, 0x7712, 0x4762, {0x86, 0xb5, 0x7a, 0x5e, 0xba, 0x6b, 0xdb, 0x02}};

using CreateInstance = HRESULT(WINAPI*)(REFCLSID, REFIID, LPVOID*);

// Releases a COM interface at the end of a scope.
template <class I>
struct Released {
  I* p = nullptr;
  Released() = default;
  Released(const Released&) = delete;
  Released& operator=(const Released&) = delete;
  ~Released() {
    if (p != nullptr) p->Release();
  }
  void** out() noexcept { return reinterpret_cast<void**>(&p); }
};

CString Failed(const wchar_t* step, unsigned long code) {
  wchar_t text[160];
  std::swprintf(text, 160, L"%ls (0x%08lX)", step, code);
  return CString(text);
}

}  // namespace

CString StartRuntime(SeamTable& table) {
  CString searched;
  const auto assembly_path = FindBridgeAssembly(&searched);
  if (!assembly_path) {
    return CString(L"the bridge's assembly CadTools.Bridge.dll is not installed (looked at ") + searched + L")";
  }
  // Never unloaded: the runtime lives as long as the process.
  HMODULE mscoree = ::LoadLibraryW(L"mscoree.dll");
  if (mscoree == nullptr) return Failed(L"the .NET runtime is not installed: mscoree.dll did not load", ::GetLastError());
  const auto create = reinterpret_cast<CreateInstance>(
      reinterpret_cast<void (*)()>(::GetProcAddress(mscoree, "CLRCreateInstance")));
  if (create == nullptr) return L"mscoree.dll has no CLRCreateInstance (the .NET Framework 4 is not installed)";

  Released<ICLRMetaHost> meta;
  Released<ICLRRuntimeInfo> info;
  Released<ICLRRuntimeHost> host;
  HRESULT hr = create(kClsidMetaHost, kIidMetaHost, meta.out());
  if (FAILED(hr)) return Failed(L"CLRCreateInstance failed", static_cast<unsigned long>(hr));
  hr = meta.p->GetRuntime(L"v4.0.30319", kIidRuntimeInfo, info.out());
  if (FAILED(hr)) return Failed(L"the .NET Framework 4 runtime is not installed", static_cast<unsigned long>(hr));
  hr = info.p->GetInterface(kClsidRuntimeHost, kIidRuntimeHost, host.out());
  if (FAILED(hr)) return Failed(L"the .NET Framework 4 runtime could not be loaded", static_cast<unsigned long>(hr));
  hr = host.p->Start();
  if (FAILED(hr)) return Failed(L"the .NET Framework 4 runtime did not start", static_cast<unsigned long>(hr));

  const std::wstring address = std::to_wstring(reinterpret_cast<std::uintptr_t>(&table));
  DWORD code = 0;
  hr = host.p->ExecuteInDefaultAppDomain(assembly_path->wstring().c_str(), L"CadTools.Bridge.Seam", L"Bootstrap",
                                         address.c_str(), &code);
  if (FAILED(hr)) return Failed(L"the bridge's start-up failed", static_cast<unsigned long>(hr));
  if (code != 0) return L"CadTools.Bridge.dll does not match this library (another version of the bridge)";
  return CString();
}

}  // namespace cadtools::bridge::detail
