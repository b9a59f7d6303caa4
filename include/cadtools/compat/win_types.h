// The Win32 scalar and structure types the library's interface uses, with
// their Windows widths on every target.
//
// On Windows these come from <windows.h>. Elsewhere they are defined here
// with the same sizes: LONG, BOOL, DWORD and UINT are 32-bit even where the
// C++ `long` is 64-bit, and WCHAR is a UTF-16 code unit (char16_t).
#pragma once

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#else

#include <cstddef>
#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using BOOL = int;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using HRESULT = std::int32_t;

using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using PUINT = UINT*;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

struct POINT {
  LONG x;
  LONG y;
};

struct SIZE {
  LONG cx;
  LONG cy;
};

struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};

// What a window is asked before it takes a size (WM_GETMINMAXINFO).
struct MINMAXINFO {
  POINT ptReserved;
  POINT ptMaxSize;
  POINT ptMaxPosition;
  POINT ptMinTrackSize;
  POINT ptMaxTrackSize;
};

// Handed to creation handlers, which pass it on unread.
struct CREATESTRUCTW;
using LPCREATESTRUCTW = CREATESTRUCTW*;

// A COM object's dispatch interface; here only ever passed through.
struct IDispatch;

// The dialog command ids of the OK and Cancel buttons.
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;

#endif

// A UTF-16 literal of type const WCHAR[]: CADTOOLS_WIDE("abc").
#if defined(_WIN32)
#define CADTOOLS_WIDE_(s) L##s
#else
#define CADTOOLS_WIDE_(s) u##s
#endif
#define CADTOOLS_WIDE(s) CADTOOLS_WIDE_(s)

static_assert(sizeof(LONG) == 4 && sizeof(DWORD) == 4 && sizeof(UINT) == 4 && sizeof(BOOL) == 4,
              "Win32 widths");
static_assert(sizeof(WCHAR) == 2, "WCHAR is a UTF-16 code unit");
