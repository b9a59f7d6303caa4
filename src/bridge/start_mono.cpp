// Starting the runtime on Linux: embedded Mono, loaded at run time.
//
// The library does not link Mono: programs that never use the bridge need
// no Mono on the machine, and one without it learns so from the first
// bridge call (CRuntimeUnavailableException), as a Windows machine without
// .NET does. CADTOOLS_MONO_LIBRARY names another Mono runtime library.
//
// Only start-up calls Mono's embedding API; everything after goes through
// the table the managed side fills. Mono's default thread-suspend mode
// expects embedders to enter GC-unsafe regions around most API calls, which
// its public headers do not offer; function pointers need none of that.
#include "bridge/bridge_assembly.h"
#include "bridge/seam.h"

#include <dlfcn.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace cadtools::bridge::detail {

namespace {

struct MonoDomain;
struct MonoAssembly;
struct MonoImage;
struct MonoClass;
struct MonoMethod;
struct MonoObject;

// The few entry points start-up needs.
struct MonoApi {
  void (*config_parse)(const char*) = nullptr;
  MonoDomain* (*jit_init_version)(const char*, const char*) = nullptr;
  MonoAssembly* (*domain_assembly_open)(MonoDomain*, const char*) = nullptr;
  MonoImage* (*assembly_get_image)(MonoAssembly*) = nullptr;
  MonoClass* (*class_from_name)(MonoImage*, const char*, const char*) = nullptr;
  MonoMethod* (*class_get_method_from_name)(MonoClass*, const char*, int) = nullptr;
  MonoObject* (*runtime_invoke)(MonoMethod*, void*, void**, MonoObject**) = nullptr;
  void* (*object_unbox)(MonoObject*) = nullptr;
};

template <class F>
bool Bind(void* library, const char* name, F& f) {
  f = reinterpret_cast<F>(::dlsym(library, name));
  return f != nullptr;
}

// Loads Mono's runtime library; "" or why not.
std::string LoadMono(MonoApi& api) {
  const char* configured = std::getenv("CADTOOLS_MONO_LIBRARY");
  const std::string name = configured != nullptr && *configured != '\0' ? configured : "libmonosgen-2.0.so.1";
  // Never closed: Mono cannot be unloaded or started again.
  void* library = ::dlopen(name.c_str(), RTLD_NOW | RTLD_GLOBAL);
  if (library == nullptr) {
    const char* why = ::dlerror();
    return "Mono is not installed: " + name + " did not load (" + (why != nullptr ? why : "unknown reason") + ")";
  }
  const bool bound = Bind(library, "mono_config_parse", api.config_parse) &&
                     Bind(library, "mono_jit_init_version", api.jit_init_version) &&
                     Bind(library, "mono_domain_assembly_open", api.domain_assembly_open) &&
                     Bind(library, "mono_assembly_get_image", api.assembly_get_image) &&
                     Bind(library, "mono_class_from_name", api.class_from_name) &&
                     Bind(library, "mono_class_get_method_from_name", api.class_get_method_from_name) &&
                     Bind(library, "mono_runtime_invoke", api.runtime_invoke) &&
                     Bind(library, "mono_object_unbox", api.object_unbox);
  return bound ? std::string() : name + " is not a Mono runtime library";
}

}  // namespace

CString StartRuntime(SeamTable& table) {
  CString searched;
  const auto assembly_path = FindBridgeAssembly(&searched);
  if (!assembly_path) {
    return CString(CADTOOLS_WIDE("the bridge's assembly CadTools.Bridge.dll is not installed (looked at ")) + searched +
           CADTOOLS_WIDE(")");
  }
  const std::string path = assembly_path->string();

  MonoApi mono;
  if (const std::string failure = LoadMono(mono); !failure.empty()) return FromUtf8(failure);
  mono.config_parse(nullptr);
  MonoDomain* domain = mono.jit_init_version("cadtools", "v4.0.30319");
  if (domain == nullptr) return CADTOOLS_WIDE("Mono did not start");
  MonoAssembly* assembly = mono.domain_assembly_open(domain, path.c_str());
  if (assembly == nullptr) return FromUtf8("Mono could not load " + path);
  MonoClass* seam = mono.class_from_name(mono.assembly_get_image(assembly), "CadTools.Bridge", "Seam");
  MonoMethod* bootstrap = seam == nullptr ? nullptr : mono.class_get_method_from_name(seam, "BootstrapAt", 1);
  if (bootstrap == nullptr) return FromUtf8(path + " has no CadTools.Bridge.Seam.BootstrapAt");

  // The table's address as a 64-bit integer, which Mono passes without
  // allocating anything.
  auto address = static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(&table));
  void* args[] = {&address};
  MonoObject* thrown = nullptr;
  MonoObject* result = mono.runtime_invoke(bootstrap, nullptr, args, &thrown);
  if (thrown != nullptr || result == nullptr) return FromUtf8(path + ": the bridge's start-up failed");
  if (*static_cast<const int*>(mono.object_unbox(result)) != 0) {
    return FromUtf8(path + " does not match this library (another version of the bridge)");
  }
  return CString();
}

}  // namespace cadtools::bridge::detail
