// The bridge beside Mono's embedding API called directly, in one process on
// one runtime: a trivial method and a string-returning method, resolved once
// and by name, and a string round trip.
//
// The direct side is written as correct embedding code for Mono's default
// (hybrid) thread-suspend mode: calls that touch managed objects outside
// mono_runtime_invoke (creating a string, reading its characters) run in a
// GC-unsafe region, as the runtime requires of them; mono_runtime_invoke
// sets up its own.
#include "common/subjects.h"

#include <cadtools/bridge/dotnet_utils.h>
#include <cadtools/bridge/runtime.h>

#include <benchmark/benchmark.h>
#include <mono/jit/jit.h>
#include <mono/metadata/appdomain.h>
#include <mono/metadata/assembly.h>
#include <mono/metadata/class.h>
#include <mono/metadata/object.h>

#include <cstdint>
#include <string>

// Exported by Mono, declared only in headers Debian does not install.
extern "C" void* mono_threads_enter_gc_unsafe_region(void** stackdata);
extern "C" void mono_threads_exit_gc_unsafe_region(void* cookie, void** stackdata);

namespace bench {
namespace {

using cadtools::bridge::Method;
using cadtools::bridge::Object;
using cadtools::bridge::Runtime;

// A GC-unsafe region for the scope's lifetime.
class UnsafeRegion {
 public:
  UnsafeRegion() : cookie_(mono_threads_enter_gc_unsafe_region(&stackdata_)) {}
  UnsafeRegion(const UnsafeRegion&) = delete;
  UnsafeRegion& operator=(const UnsafeRegion&) = delete;
  ~UnsafeRegion() { mono_threads_exit_gc_unsafe_region(cookie_, &stackdata_); }

 private:
  void* stackdata_ = nullptr;
  void* cookie_;
};

const char kProbe[] = CADTOOLS_BENCH_ASSEMBLY_DIR "/BridgeProbe.dll";
const WCHAR kPath[] = CADTOOLS_WIDE("C:\\Db\\Main.mdb");

// One BridgeProbe.Bench object, reachable both ways.
struct Setup {
  Object ours;
  MonoDomain* domain = nullptr;
  MonoMethod* add = nullptr;
  MonoMethod* name = nullptr;
  MonoClass* klass = nullptr;
  std::uint32_t direct = 0;  // a GC handle to the same object
};

const Setup& Shared() {
  static const Setup setup = [] {
    Setup s;
    Runtime& rt = Runtime::Get();  // starts Mono
    const std::string path(kProbe);
    rt.LoadAssembly(std::u16string(path.begin(), path.end()));
    s.ours = rt.Create(u"BridgeProbe.Bench");
    UnsafeRegion region;
    s.domain = mono_get_root_domain();
    MonoImage* image = mono_assembly_get_image(mono_domain_assembly_open(s.domain, kProbe));
    s.klass = mono_class_from_name(image, "BridgeProbe", "Bench");
    s.add = mono_class_get_method_from_name(s.klass, "Add", 1);
    s.name = mono_class_get_method_from_name(s.klass, "Name", 0);
    MonoObject* o = mono_object_new(s.domain, s.klass);
    mono_runtime_object_init(o);
    s.direct = mono_gchandle_new(o, 0);
    return s;
  }();
  return setup;
}

CString DirectChars(MonoObject* result) {
  UnsafeRegion region;
  auto* s = reinterpret_cast<MonoString*>(result);
  return CString(reinterpret_cast<const WCHAR*>(mono_string_chars(s)), mono_string_length(s));
}

void OursAddResolved(benchmark::State& state) {
  const Setup& s = Shared();
  const Method add = s.ours.Resolve(u"Add", {0});
  int i = 0;
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(add.Invoke(s.ours, {++i}));
}

// Add through mono_runtime_invoke: the method found once, or by name (the
// C API's lookup) on every call.
void DirectAdd(benchmark::State& state, bool by_name) {
  const Setup& s = Shared();
  MonoObject* target = mono_gchandle_get_target(s.direct);
  int i = 0;
  for ([[maybe_unused]] auto _ : state) {
    ++i;
    void* args[] = {&i};
    MonoObject* thrown = nullptr;
    MonoMethod* add = by_name ? mono_class_get_method_from_name(s.klass, "Add", 1) : s.add;
    benchmark::DoNotOptimize(mono_runtime_invoke(add, target, args, &thrown));
  }
}

// Name the same way, its string copied out.
void DirectName(benchmark::State& state, bool by_name) {
  const Setup& s = Shared();
  MonoObject* target = mono_gchandle_get_target(s.direct);
  for ([[maybe_unused]] auto _ : state) {
    MonoObject* thrown = nullptr;
    MonoMethod* name = by_name ? mono_class_get_method_from_name(s.klass, "Name", 0) : s.name;
    benchmark::DoNotOptimize(DirectChars(mono_runtime_invoke(name, target, nullptr, &thrown)));
  }
}

void DirectAddCached(benchmark::State& state) { DirectAdd(state, false); }
void DirectAddByName(benchmark::State& state) { DirectAdd(state, true); }
void DirectNameCached(benchmark::State& state) { DirectName(state, false); }
void DirectNameByName(benchmark::State& state) { DirectName(state, true); }

void OursNameResolved(benchmark::State& state) {
  const Setup& s = Shared();
  const Method name = s.ours.Resolve(u"Name");
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(name.Invoke(s.ours));
}


void OursAddByName(benchmark::State& state) {
  const Setup& s = Shared();
  int i = 0;
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(s.ours.Call(u"Add", {++i}));
}


void OursNameByName(benchmark::State& state) {
  const Setup& s = Shared();
  for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(s.ours.Call(u"Name"));
}


void OursStringRoundTrip(benchmark::State& state) {
  Shared();
  const CString text(kPath);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(CDotNetUtils::DotNetString2CString(CDotNetUtils::CString2DotNetString(text)));
  }
}

void DirectStringRoundTrip(benchmark::State& state) {
  const Setup& s = Shared();
  const CString text(kPath);
  for ([[maybe_unused]] auto _ : state) {
    UnsafeRegion region;
    MonoString* m = mono_string_new_utf16(s.domain, reinterpret_cast<const mono_unichar2*>(text.GetString()),
                                          text.GetLength());
    benchmark::DoNotOptimize(
        CString(reinterpret_cast<const WCHAR*>(mono_string_chars(m)), mono_string_length(m)));
  }
}

}  // namespace

void RegisterBridgePairs(PairRegistry& registry) {
  registry.Add("bridge: Add(int), member resolved once", "ours/bridge_add_resolved", OursAddResolved,
               "peer/mono_runtime_invoke_add_cached", DirectAddCached);
  registry.Add("bridge: Name() string, resolved once", "ours/bridge_name_resolved", OursNameResolved,
               "peer/mono_runtime_invoke_name_cached", DirectNameCached);
  registry.Add("bridge: Add(int) by name", "ours/bridge_add_by_name", OursAddByName,
               "peer/mono_method_from_name_add", DirectAddByName);
  registry.Add("bridge: Name() string by name", "ours/bridge_name_by_name", OursNameByName,
               "peer/mono_method_from_name_name", DirectNameByName);
  registry.Add("bridge: string round trip", "ours/bridge_string_round_trip", OursStringRoundTrip,
               "peer/mono_string_new_utf16_chars", DirectStringRoundTrip);
}

}  // namespace bench
