// Managed references in native code: Ref<T> for a reference of a known
// managed type (what C++/CLI writes T^), and gcroot<T>, the one way a
// native object of the bridge owns a managed object.
//
//   gcroot<System::String> name;                  // a normal GC handle, target null
//   name = CDotNetUtils::CString2DotNetString(u"Rail");  // same handle, new target
//   name->Call(u"ToUpper");                       // calls on the target
//   Ref<System::String> s = name;                 // a reference of its own
//   name.Handle();                                // the handle's integer value
//   // ~gcroot frees the handle; the target may then be collected.
//
// gcroot<T> is one pointer-sized word holding the GC handle's integer
// value: it is allocated (empty) when the gcroot is constructed, keeps the
// same value across assignments, which only retarget it, and is freed and
// set to 0 when the gcroot is destroyed. It does not Dispose its target.
// Types are tags that name the managed type (see System::String below).
#pragma once

#include <cadtools/bridge/runtime.h>
#include <cadtools/compat/win_types.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace cadtools::bridge {

// A reference to a managed object of type T (or null).
template <class T>
class Ref : public Object {
 public:
  Ref() noexcept = default;
  Ref(std::nullptr_t) noexcept {}  // NOLINT: implicit, like nullptr for T^
  explicit Ref(Object o) noexcept : Object(std::move(o)) {}
};

namespace detail {
// The runtime's handle operations, for gcroot.
CADTOOLS_API std::int64_t NewGcHandle(const Object& target);
CADTOOLS_API void RetargetGcHandle(std::int64_t handle, const Object& target);
CADTOOLS_API void FreeGcHandle(std::int64_t handle) noexcept;
CADTOOLS_API Object GcHandleTarget(std::int64_t handle);
}  // namespace detail

}  // namespace cadtools::bridge

namespace System {
// The managed System.String.
struct String {
  static constexpr const WCHAR* kTypeName = CADTOOLS_WIDE("System.String");
};
// The managed System.Object.
struct Object {
  static constexpr const WCHAR* kTypeName = CADTOOLS_WIDE("System.Object");
};
}  // namespace System

template <class T>
class gcroot {
 public:
  // The target for a call through ->.
  class Target {
   public:
    const cadtools::bridge::Ref<T>* operator->() const noexcept { return &ref_; }

   private:
    friend class gcroot;
    explicit Target(cadtools::bridge::Ref<T> ref) noexcept : ref_(std::move(ref)) {}
    cadtools::bridge::Ref<T> ref_;
  };

  gcroot() : handle_(ToWord(cadtools::bridge::detail::NewGcHandle(cadtools::bridge::Object()))) {}
  gcroot(const cadtools::bridge::Ref<T>& target)  // NOLINT: implicit as in C++/CLI
      : handle_(ToWord(cadtools::bridge::detail::NewGcHandle(target))) {}
  // A handle of its own to the same target.
  gcroot(const gcroot& other)
      : handle_(ToWord(cadtools::bridge::detail::NewGcHandle(cadtools::bridge::detail::GcHandleTarget(other.Word())))) {}
  ~gcroot() {
    cadtools::bridge::detail::FreeGcHandle(Word());
    handle_ = 0;
  }

  gcroot& operator=(const cadtools::bridge::Ref<T>& target) {
    cadtools::bridge::detail::RetargetGcHandle(Word(), target);
    return *this;
  }
  gcroot& operator=(const gcroot& other) {
    if (this != &other) {
      cadtools::bridge::detail::RetargetGcHandle(Word(), cadtools::bridge::detail::GcHandleTarget(other.Word()));
    }
    return *this;
  }

  operator cadtools::bridge::Ref<T>() const {  // NOLINT: implicit as in C++/CLI
    return cadtools::bridge::Ref<T>(cadtools::bridge::detail::GcHandleTarget(Word()));
  }
  Target operator->() const { return Target(static_cast<cadtools::bridge::Ref<T>>(*this)); }

  // The stored word: the GC handle's integer value.
  std::intptr_t Handle() const noexcept { return handle_; }

 private:
  static std::intptr_t ToWord(std::int64_t h) noexcept { return static_cast<std::intptr_t>(h); }
  std::int64_t Word() const noexcept { return static_cast<std::int64_t>(handle_); }

  std::intptr_t handle_;
};
