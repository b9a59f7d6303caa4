// CString: the framework's UTF-16 string, as the host's CStringW behaves.
//
//   CString s(CADTOOLS_WIDE("  Layer 1  "));
//   s.Trim();                          // "Layer 1"
//   s.GetLength();                     // 7
//   s.Find(CADTOOLS_WIDE("1"));        // 6
//   s.Mid(2, 100);                     // "yer 1"   (counts are clamped)
//   s.GetAt(7);                        // 0         (the terminator)
//   s.GetAt(8);                        // throws CInvalidArgException*
//   s == CADTOOLS_WIDE("Layer 1")      // true
//   s.Format(CADTOOLS_WIDE("%s: %.2f mm"), CADTOOLS_WIDE("Width"), 3.175);  // "Width: 3.17 mm"
//
// A literal converts implicitly, as with the host's class, so it can be
// passed wherever a CString is expected. Both `const wchar_t*` and
// `const char16_t*` are accepted on every target; where wchar_t is UTF-32
// (Linux) each code point becomes one or two UTF-16 units, a lone surrogate
// value is kept as one unit and a value past U+10FFFF becomes U+FFFD.
// A null pointer reads as the empty string wherever a `const WCHAR*` is
// taken, except that Find never finds it.
//
// Lengths and indexes are int, as in the host's interface. GetAt and
// operator[] accept [0, GetLength()] (GetLength() reads the terminating 0);
// SetAt accepts [0, GetLength()). Anything else raises
// CInvalidArgException*. Left, Mid, Right, Insert and Delete clamp their
// arguments and never throw. Find with a start outside the string returns -1.
//
// The string keeps embedded NULs when built with a length; comparison,
// search and hashing look at every unit, not just up to the first NUL.
//
// Trim uses cadtools::IsWideSpace, MakeLower/MakeUpper/CompareNoCase use
// cadtools::ToLowerUnit/ToUpperUnit: the same results on every target.
//
// Format
// ------
// Format and AppendFormat take printf-style text and typed arguments; the
// argument's real type is always known, so no conversion can read the wrong
// kind of data:
//
//   %[flags][width][.precision][length]conversion
//   flags      - + space # 0
//   width      digits or * (from an integer argument; negative means -)
//   precision  digits or * (negative from * means none)
//   length     hh h l ll I32 I64 I L w z j t
//   conversion d i u o x X c C s S f F e E g G a A p %
//
// Arguments: any integer type (bool is 0 or 1, an enum its value), float,
// double, long double (as double), strings (const WCHAR*, const wchar_t*,
// const char16_t*, CString, and const char* read as Latin-1), other object
// pointers and nullptr. Other types do not compile. Each conversion accepts:
//   d i u o x X c C    integers, floating values, pointers
//   f F e E g G a A    integers, floating values
//   s S                strings
//   p                  pointers, strings (their address), integers
//
// Integer conversions work at the length's width: 8 bits for hh, 16 for h,
// 32 for none, l and I32 (long is 32-bit on Windows), 64 for ll, I64, I, L,
// z, j and t. An integer argument is cut to that width (modulo 2^N) and read
// as signed for d and i, unsigned for u, o, x and X:
//   Format("%d", 3000000000u)   -> "-1294967296"
//   Format("%hu", -1)           -> "65535"
// A floating argument to an integer conversion is truncated toward zero and
// clamped to the conversion's range; NaN gives 0:
//   Format("%d", 2.9) -> "2"   Format("%d", 1e20) -> "2147483647"
//   Format("%u", -5.0) -> "0"
// A pointer argument to an integer conversion gives its address.
// An integer argument to a floating conversion is converted to double.
//
// Floating output comes from std::to_chars, correctly rounded and identical
// on every target: "%.2f" of 3.175 is "3.17", "%e" of 12345.678 is
// "1.234568e+04" (at least two exponent digits), "%g" of 0.0001 is "0.0001",
// "%a" of 1.0 is "0x1p+0" (shortest exact form when no precision is given).
// Infinity prints as "inf", NaN as "nan" whatever its sign bit ("INF"/"NAN"
// for F, E, G, A); the 0 flag does not pad them.
//
// %c takes a character value: one UTF-16 unit, or a surrogate pair for a
// value in U+10000..10FFFF, U+FFFD for anything else. %C and %hc take the
// low 8 bits as a Latin-1 character. %s and %S print any string argument,
// whatever the length modifier; a null pointer prints as "(null)".
// Precision cuts a string to that many UTF-16 units; the 0 flag does not
// apply to strings or characters. A `char` argument is a Latin-1
// character, so %d of '\xE9' is "233".
// %p prints an address as upper-case hex, zero-padded to the pointer's
// width (8 or 16 digits, as the host's runtime does).
//
// Bad format text never misbehaves:
// - Width and precision are capped at kFormatMaxWidth (4096).
// - A conversion that is not understood ("%y", "%lhd", a lone "%" at the
//   end, "%n") is copied to the output as written and consumes no argument.
// - A conversion that is understood consumes the arguments printf would
//   take (one per *, then one for the value), even when an argument turns
//   out to be missing or of the wrong kind (a string for a number, a number
//   for a string, a float for *). The whole conversion is then copied as
//   written, and the following conversions keep their own arguments:
//     Format("%d of %s", CADTOOLS_WIDE("x"), CADTOOLS_WIDE("y"))  -> "%d of y"
//     Format("%d and %d", 1)                                      -> "1 and %d"
// - Surplus arguments are ignored. A null format gives the empty string.
#pragma once

#include <cadtools/compat/exceptions.h>
#include <cadtools/compat/unit_string.h>
#include <cadtools/compat/win_types.h>
#include <cadtools/export.h>

#include <array>
#include <compare>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

class CString;

namespace cadtools {

using WString = std::basic_string<WCHAR>;
using WStringView = std::basic_string_view<WCHAR>;

// The largest width or precision Format honours; larger ones are cut to it.
inline constexpr int kFormatMaxWidth = 4096;

namespace detail {

// One Format argument, with its kind recorded.
struct FormatArg {
  enum class Kind : unsigned char { kSigned, kUnsigned, kFloat, kPointer, kNarrow, kChar16, kWide, kCString };
  Kind kind;
  union {
    long long i;
    unsigned long long u;
    double d;
    const void* p;
    const char* narrow;
    const char16_t* u16;
    const wchar_t* wide;
    const CString* str;
  };
};

template <class>
inline constexpr bool kUnsupportedFormatArg = false;

template <class T>
FormatArg MakeFormatArg(const T& v) noexcept {
  using K = FormatArg::Kind;
  using P = std::decay_t<T>;  // arrays become pointers
  FormatArg a{};
  if constexpr (std::is_base_of_v<CString, T>) {
    a.kind = K::kCString;
    a.str = &v;
  } else if constexpr (std::is_same_v<T, char>) {
    a.kind = K::kUnsigned;  // a Latin-1 character, never negative
    a.u = static_cast<unsigned char>(v);
  } else if constexpr (std::is_same_v<T, bool>) {
    a.kind = K::kUnsigned;
    a.u = v ? 1U : 0U;
  } else if constexpr (std::is_enum_v<T>) {
    return MakeFormatArg(static_cast<std::underlying_type_t<T>>(v));
  } else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>) {
    a.kind = K::kSigned;
    a.i = v;
  } else if constexpr (std::is_integral_v<T>) {
    a.kind = K::kUnsigned;
    a.u = v;
  } else if constexpr (std::is_floating_point_v<T>) {
    a.kind = K::kFloat;
    a.d = static_cast<double>(v);
  } else if constexpr (std::is_same_v<T, std::nullptr_t>) {
    a.kind = K::kPointer;
    a.p = nullptr;
  } else if constexpr (std::is_pointer_v<P>) {
    using C = std::remove_cv_t<std::remove_pointer_t<P>>;
    if constexpr (std::is_same_v<C, char>) {
      a.kind = K::kNarrow;
      a.narrow = v;
    } else if constexpr (std::is_same_v<C, char16_t>) {
      a.kind = K::kChar16;
      a.u16 = v;
    } else if constexpr (std::is_same_v<C, wchar_t>) {
      a.kind = K::kWide;
      a.wide = v;
    } else if constexpr (std::is_object_v<C> || std::is_void_v<C>) {
      a.kind = K::kPointer;
      a.p = const_cast<const void*>(static_cast<const volatile void*>(v));
    } else {
      static_assert(kUnsupportedFormatArg<T>, "CString::Format: function pointers are not accepted");
    }
  } else {
    static_assert(kUnsupportedFormatArg<T>, "CString::Format: argument type not accepted");
  }
  return a;
}

}  // namespace detail

}  // namespace cadtools

class CADTOOLS_API CString {
 public:
  using XCHAR = WCHAR;
  using PCXSTR = const WCHAR*;

  CString() noexcept = default;
  CString(const CString&) = default;
  CString(CString&&) noexcept = default;
  CString& operator=(const CString&) = default;
  CString& operator=(CString&&) noexcept = default;
  ~CString() = default;

  CString(const wchar_t* psz);   // NOLINT: implicit as in the framework
  CString(const char16_t* psz);  // NOLINT: implicit as in the framework
  // The first nLength units of pch, NULs included. A negative length, or a
  // null pch with a positive length, raises CInvalidArgException*.
  CString(const WCHAR* pch, int nLength);
  // ch repeated nRepeat times (none when nRepeat <= 0).
  explicit CString(WCHAR ch, int nRepeat = 1);

  int GetLength() const noexcept { return static_cast<int>(m_str.size()); }
  bool IsEmpty() const noexcept { return m_str.empty(); }
  void Empty() noexcept { m_str.clear(); }
  // Always NUL-terminated.
  PCXSTR GetString() const noexcept { return m_str.c_str(); }
  operator PCXSTR() const noexcept { return m_str.c_str(); }  // NOLINT: implicit as in the framework

  WCHAR GetAt(int iChar) const;
  WCHAR operator[](int iChar) const { return GetAt(iChar); }
  void SetAt(int iChar, WCHAR ch);

  CString Left(int nCount) const;
  CString Mid(int iFirst) const;
  CString Mid(int iFirst, int nCount) const;
  CString Right(int nCount) const;

  int Find(WCHAR ch, int iStart = 0) const noexcept;
  // An empty psz is found at iStart; a null psz is never found.
  int Find(PCXSTR psz, int iStart = 0) const noexcept;
  int ReverseFind(WCHAR ch) const noexcept;

  CString& Trim();
  CString& Trim(WCHAR chTarget);
  CString& Trim(PCXSTR pszTargets);
  CString& TrimLeft();
  CString& TrimLeft(WCHAR chTarget);
  CString& TrimLeft(PCXSTR pszTargets);
  CString& TrimRight();
  CString& TrimRight(WCHAR chTarget);
  CString& TrimRight(PCXSTR pszTargets);

  CString& MakeLower();
  CString& MakeUpper();

  // Return how many replacements or removals were made. Replacing a
  // character by itself counts none; an empty or null pszOld replaces
  // nothing; a null pszNew removes.
  int Replace(WCHAR chOld, WCHAR chNew);
  int Replace(PCXSTR pszOld, PCXSTR pszNew);
  int Remove(WCHAR chRemove);

  // Return the new length. iIndex is clamped to [0, GetLength()].
  int Insert(int iIndex, WCHAR ch);
  int Insert(int iIndex, PCXSTR psz);
  int Delete(int iIndex, int nCount = 1);

  // -1, 0 or 1, comparing UTF-16 code units as unsigned numbers.
  int Compare(const CString& str) const noexcept;
  int Compare(PCXSTR psz) const noexcept;
  // The same after cadtools::ToLowerUnit on both sides.
  int CompareNoCase(const CString& str) const noexcept;
  int CompareNoCase(PCXSTR psz) const noexcept;

  void Append(const CString& str) { m_str.append(str.m_str); }
  void Append(PCXSTR psz);
  void Append(PCXSTR pch, int nLength);
  void AppendChar(WCHAR ch) { m_str.push_back(ch); }
  CString& operator+=(const CString& str);
  CString& operator+=(PCXSTR psz);
  CString& operator+=(WCHAR ch);

  // See the header comment for the conversions and their rules.
  template <class... Args>
  void Format(PCXSTR pszFormat, const Args&... args) {
    FormatPacked(ViewOf(pszFormat), false, args...);
  }
  template <class... Args>
  void Format(const CString& strFormat, const Args&... args) {
    FormatPacked(strFormat.m_str, false, args...);
  }
  template <class... Args>
  void AppendFormat(PCXSTR pszFormat, const Args&... args) {
    FormatPacked(ViewOf(pszFormat), true, args...);
  }
  template <class... Args>
  void AppendFormat(const CString& strFormat, const Args&... args) {
    FormatPacked(strFormat.m_str, true, args...);
  }

  // The units as a view (embedded NULs included).
  cadtools::WStringView View() const noexcept { return m_str; }

  // Each of these is a better match than the built-in pointer comparison
  // that operator PCXSTR would otherwise allow, and C++20 tries them with
  // the operands swapped, so `s == L"x"`, `L"x" == s` and `s1 < s2` all
  // compare text. A wchar_t literal on Linux converts to CString first.
  friend bool operator==(const CString& a, const CString& b) noexcept { return a.View() == b.View(); }
  friend bool operator==(const CString& a, PCXSTR b) noexcept { return a.Compare(b) == 0; }
  friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept {
    return a.Compare(b) <=> 0;
  }
  friend std::strong_ordering operator<=>(const CString& a, PCXSTR b) noexcept { return a.Compare(b) <=> 0; }

  friend CString operator+(const CString& a, const CString& b) { return Concat(a.m_str, b.m_str); }
  friend CString operator+(const CString& a, PCXSTR b) { return Concat(a.m_str, ViewOf(b)); }
  friend CString operator+(PCXSTR a, const CString& b) { return Concat(ViewOf(a), b.m_str); }
  friend CString operator+(const CString& a, WCHAR b) { return Concat(a.m_str, cadtools::WStringView(&b, 1)); }
  friend CString operator+(WCHAR a, const CString& b) { return Concat(cadtools::WStringView(&a, 1), b.m_str); }
  // A char is a Latin-1 character. Without these, `path + '\\'` would be
  // ambiguous with pointer arithmetic on 32-bit targets.
  friend CString operator+(const CString& a, char b) { return a + Latin1(b); }
  friend CString operator+(char a, const CString& b) { return Latin1(a) + b; }

 private:
  static cadtools::WStringView ViewOf(PCXSTR psz) noexcept {
    return psz == nullptr ? cadtools::WStringView() : cadtools::WStringView(psz);
  }
  static WCHAR Latin1(char c) noexcept { return static_cast<WCHAR>(static_cast<unsigned char>(c)); }
  static CString Concat(cadtools::WStringView a, cadtools::WStringView b) {
    CString r;
    r.m_str.reserve(a.size() + b.size());
    r.m_str.append(a).append(b);
    return r;
  }
  template <class... Args>
  void FormatPacked(cadtools::WStringView fmt, bool append, const Args&... args) {
    const std::array<cadtools::detail::FormatArg, sizeof...(Args)> packed{
        cadtools::detail::MakeFormatArg(args)...};
    FormatArgs(fmt, packed.data(), packed.size(), append);
  }
  void FormatArgs(cadtools::WStringView fmt, const cadtools::detail::FormatArg* args, std::size_t count,
                  bool append);

  cadtools::detail::UnitString m_str;
};

namespace cadtools {

// UTF-8 for logs, files and the managed side. A lone surrogate becomes
// U+FFFD (EF BF BD).
CADTOOLS_API std::string ToUtf8(const CString& str);
// Decodes UTF-8; each invalid byte sequence (the longest prefix of a valid
// sequence, or one stray byte) becomes one U+FFFD.
CADTOOLS_API CString FromUtf8(std::string_view utf8);

}  // namespace cadtools

// Test printer, found by argument-dependent lookup (so it lives beside
// CString in the global namespace): L"text" with control characters and
// lone surrogates escaped.
CADTOOLS_API void PrintTo(const CString& str, std::ostream* os);
