// The managed runtime as native code sees it: objects created by type name,
// members called by name, values crossing both ways.
//
//   using namespace cadtools::bridge;
//   Runtime& rt = Runtime::Get();                  // starts the runtime once
//   rt.LoadAssembly(u"/opt/host/OrvDatabaseControls.dll");
//   Object dlg = rt.Create(u"OrvDatabaseControls.OrvEquipmentBrowserDialog", {Arg(u"de-DE")});
//   dlg.Call(u"SetLanguageId", {7});               // overload chosen by the argument kinds
//   Value r = dlg.Call(u"ShowDialog");             // an enum: r.AsEnum() == 1 for OK
//   dlg.Get(u"Text").AsString();                   // a property
//   for (const Value& v : dlg.Call(u"Entries").AsObject().Items()) ...   // a returned list
//   Method add = dlg.Resolve(u"AddContactFilter", {Arg(u""), Arg(u"")});  // resolved once
//   add.Invoke(dlg, {Arg(u"K"), Arg(u"V")});       // then called without a lookup
//
// Arguments are null, bool, integers, double, enums, strings and objects;
// overloads are picked as C# picks them. Results come back as Values: null,
// bool, integer, double, enum (value and type), string (copied, NULs and
// all) or Object. An exception thrown by managed code arrives as
// CManagedException* with its type name and message; a runtime that cannot
// start gives CRuntimeUnavailableException*.
//
// Where it runs: embedded Mono on Linux, the .NET Framework 4 runtime on
// Windows, both started on first use on the calling thread and kept for the
// life of the process (neither can be started a second time). Calls may come
// from any thread.
#pragma once

#include <cadtools/compat/cstring.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <type_traits>
#include <variant>
#include <vector>

namespace cadtools::bridge {

class Object;
class Value;
class Method;

// An enum value; the runtime's enum types, from a native point of view.
// type is the runtime's id for the enum type, 0 for "an enum of whatever
// type the parameter has".
struct EnumValue {
  std::int64_t value = 0;
  std::int32_t type = 0;
  friend bool operator==(const EnumValue&, const EnumValue&) = default;
};

// The kinds of value that cross.
// kInt arguments are 32-bit and kLong 64-bit, so that overloads are picked
// as C# picks them; integer results are kInt whatever their width.
enum class Kind : std::int32_t {
  kNull = 0, kBool = 1, kInt = 2, kEnum = 3, kString = 4, kObject = 5, kDouble = 7, kLong = 8
};

// A reference the bridge keeps for native code (an entry of its table of
// managed references, 0 for null), and the runtime's id for the object's
// type.
struct ObjectRef {
  std::int64_t id = 0;
  std::int32_t type = 0;
};

// One argument of a call: a view, valid for the call only.
class CADTOOLS_API Arg {
 public:
  Arg(std::nullptr_t) noexcept {}  // NOLINT: implicit, like a literal
  Arg(bool b) noexcept : kind_(Kind::kBool), number_(b ? 1 : 0) {}  // NOLINT
  // Integers: int and narrower are kInt, wider ones and unsigned int kLong.
  template <class I, std::enable_if_t<std::is_integral_v<I> && !std::is_same_v<I, bool> &&
                                          !std::is_same_v<I, char> && !std::is_same_v<I, WCHAR>,
                                      int> = 0>
  Arg(I n) noexcept  // NOLINT
      : kind_(sizeof(I) < 4 || (sizeof(I) == 4 && std::is_signed_v<I>) ? Kind::kInt : Kind::kLong),
        number_(static_cast<std::int64_t>(n)) {}
  Arg(double d) noexcept;                                                        // NOLINT
  Arg(EnumValue e) noexcept : kind_(Kind::kEnum), number_(e.value), type_(e.type) {}  // NOLINT
  // The whole string, NULs included.
  Arg(const CString& s) noexcept : Arg(s.View()) {}  // NOLINT
  Arg(WStringView s) noexcept;                       // NOLINT
  // Up to the first NUL; a null pointer is a null string.
  Arg(const WCHAR* s) noexcept;  // NOLINT
  Arg(WCHAR* s) noexcept : Arg(static_cast<const WCHAR*>(s)) {}  // NOLINT
  Arg(const Object& o) noexcept;                                 // NOLINT
  // Other pointers would turn into bool.
  template <class T>
  Arg(T*) = delete;

  Kind kind() const noexcept { return kind_; }
  // Booleans, integers and enums: the value; a double: its bits.
  std::int64_t number() const noexcept { return number_; }
  // Strings: the address of the units; objects: the reference's id.
  std::int64_t pointer() const noexcept { return pointer_; }
  // Strings: the number of units.
  std::int32_t length() const noexcept { return length_; }
  // Objects and enums: the type's id.
  std::int32_t type() const noexcept { return type_; }

 private:
  Kind kind_ = Kind::kNull;
  std::int64_t number_ = 0;
  std::int64_t pointer_ = 0;
  std::int32_t length_ = 0;
  std::int32_t type_ = 0;
};

// The arguments of a call: a braced list, or any contiguous run of Args.
// A view, valid for the call only.
class Args {
 public:
  Args() noexcept = default;
  // The list's elements live until the end of the full expression that
  // made it, which is the call.
  Args(std::initializer_list<Arg> list) noexcept : Args(std::span<const Arg>(list.begin(), list.size())) {}  // NOLINT
  Args(std::span<const Arg> span) noexcept : data_(span.data()), size_(span.size()) {}        // NOLINT
  Args(const std::vector<Arg>& v) noexcept : data_(v.data()), size_(v.size()) {}              // NOLINT

  const Arg* begin() const noexcept { return data_; }
  const Arg* end() const noexcept { return data_ + size_; }
  std::size_t size() const noexcept { return size_; }

 private:
  const Arg* data_ = nullptr;
  std::size_t size_ = 0;
};

// A strong reference to a managed object, let go of when the Object goes.
// Copies share nothing but the target: each holds a reference of its own.
class CADTOOLS_API Object {
 public:
  Object() noexcept = default;
  Object(const Object& other);
  Object(Object&& other) noexcept;
  Object& operator=(const Object& other);
  Object& operator=(Object&& other) noexcept;
  ~Object();

  // Takes over a reference the bridge made.
  static Object Adopt(ObjectRef ref) noexcept;

  explicit operator bool() const noexcept { return ref_.id != 0; }
  bool IsNull() const noexcept { return ref_.id == 0; }
  std::int64_t Id() const noexcept { return ref_.id; }
  std::int32_t TypeId() const noexcept { return ref_.type; }
  // The full name of the object's type ("System.String").
  CString TypeName() const;

  Value Call(WStringView method, Args args = {}) const;
  // The same, with the result as a managed object even where a Value would
  // hold it as text: a string result stays a managed string.
  Object CallForObject(WStringView method, Args args = {}) const;
  Value Get(WStringView property, Args index = {}) const;
  // The same as an object (a string stays a managed string).
  Object GetForObject(WStringView property) const;
  void Set(WStringView property, Arg value) const;
  // An indexed property: the index arguments, then the value.
  void SetIndexed(WStringView property, Args indexThenValue) const;
  // A method chosen once, for arguments of the kinds of these samples.
  Method Resolve(WStringView method, Args samples = {}) const;
  // Every element of a list, or of anything enumerable.
  std::vector<Value> Items() const;

 private:
  explicit Object(ObjectRef ref) noexcept : ref_(ref) {}
  void Release() noexcept;

  ObjectRef ref_;
};

// A result.
class CADTOOLS_API Value {
 public:
  Value() noexcept = default;
  explicit Value(bool b) : v_(b) {}
  explicit Value(std::int64_t n) : v_(n) {}
  explicit Value(double d) : v_(d) {}
  explicit Value(EnumValue e) : v_(e) {}
  explicit Value(CString s) : v_(std::move(s)) {}
  explicit Value(Object o) : v_(std::move(o)) {}

  Kind kind() const noexcept;
  bool IsNull() const noexcept { return v_.index() == 0; }

  // The value; a value of another kind raises CInvalidArgException*.
  bool AsBool() const;
  std::int64_t AsInt() const;
  double AsDouble() const;
  EnumValue AsEnum() const;
  const CString& AsString() const;
  // An Object, or a null Object for a null value. A copy holds a reference
  // of its own; from a temporary Value the reference moves.
  Object AsObject() const&;
  Object AsObject() &&;

 private:
  std::variant<std::monostate, bool, std::int64_t, EnumValue, CString, Object, double> v_;
};

// A member found once for arguments of given kinds; calling it skips the
// lookup by name.
class CADTOOLS_API Method {
 public:
  Method() noexcept = default;
  // An instance member on target; a static member or constructor ignores it.
  Value Invoke(const Object& target, Args args = {}) const;
  Value Invoke(Args args = {}) const;
  std::int32_t Id() const noexcept { return id_; }

 private:
  friend class Runtime;
  friend class Object;
  explicit Method(std::int32_t id) noexcept : id_(id) {}
  std::int32_t id_ = 0;
};

class CADTOOLS_API Runtime {
 public:
  // The runtime, started on first use. Throws CRuntimeUnavailableException*
  // when it cannot start, then and on every later call.
  static Runtime& Get();
  // Whether the runtime can be used; when not, why (and nothing is thrown).
  static bool Available(CString* why = nullptr);

  Runtime(const Runtime&) = delete;
  Runtime& operator=(const Runtime&) = delete;

  // Loads an assembly from a file; assemblies it references are found in
  // its folder.
  void LoadAssembly(WStringView path);
  // A type's id: an assembly-qualified name, or a full name found in any
  // loaded assembly ("System.GC").
  std::int32_t FindType(WStringView name);

  Object Create(WStringView type, Args args = {});
  Value CallStatic(WStringView type, WStringView method, Args args = {});
  Value GetStatic(WStringView type, WStringView property);
  void SetStatic(WStringView type, WStringView property, Arg value);
  Method ResolveStatic(WStringView type, WStringView method, Args samples = {});
  Method ResolveConstructor(WStringView type, Args samples = {});

  // A managed string holding exactly these units.
  Object NewString(WStringView text);
  // The units of a managed string; up to the first NUL when zeroTerminated.
  CString ReadString(const Object& s, bool zeroTerminated = false);
  CString TypeName(std::int32_t typeId);

  // GC handles as the framework's gcroot keeps them: a normal handle to an
  // object (or to none), pointed elsewhere in place, freed explicitly.
  std::int64_t NewGcHandle(const Object& target);
  void RetargetGcHandle(std::int64_t handle, const Object& target);
  void FreeGcHandle(std::int64_t handle) noexcept;
  // A reference of its own to the object a GC handle points at.
  Object GcHandleTarget(std::int64_t handle);

  // A full collection, finalisers included (for lifetime tests).
  void Collect();

 private:
  Runtime() = default;
};

}  // namespace cadtools::bridge
