// The Win32 registry types and constants, with their Windows values on
// every target.
//
// On Windows these come from <windows.h>. Elsewhere they are defined here
// with the same names and numbers, so that settings code written for the
// host compiles unchanged: HKEY_CURRENT_USER, KEY_READ, REG_SZ,
// ERROR_MORE_DATA and so on. HKEY is an opaque handle; the four predefined
// hives have the values Windows gives them.
#pragma once

#include <cadtools/compat/win_types.h>

#if !defined(_WIN32)

struct HKEY__;
using HKEY = HKEY__*;
using PHKEY = HKEY*;
using REGSAM = DWORD;
using LSTATUS = LONG;
using LPBYTE = BYTE*;
using LPDWORD = DWORD*;

struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};
using PFILETIME = FILETIME*;

struct SECURITY_ATTRIBUTES {
  DWORD nLength;
  void* lpSecurityDescriptor;
  BOOL bInheritHandle;
};
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

// The predefined hives, sign-extended as Windows writes them.
#define CADTOOLS_PREDEFINED_HKEY(v) (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG_PTR>(static_cast<LONG>(v)))))
#define HKEY_CLASSES_ROOT CADTOOLS_PREDEFINED_HKEY(0x80000000u)
#define HKEY_CURRENT_USER CADTOOLS_PREDEFINED_HKEY(0x80000001u)
#define HKEY_LOCAL_MACHINE CADTOOLS_PREDEFINED_HKEY(0x80000002u)
#define HKEY_USERS CADTOOLS_PREDEFINED_HKEY(0x80000003u)

// Access rights.
inline constexpr DWORD DELETE = 0x00010000;
inline constexpr DWORD READ_CONTROL = 0x00020000;
inline constexpr DWORD SYNCHRONIZE = 0x00100000;
inline constexpr DWORD STANDARD_RIGHTS_READ = READ_CONTROL;
inline constexpr DWORD STANDARD_RIGHTS_WRITE = READ_CONTROL;
inline constexpr DWORD STANDARD_RIGHTS_ALL = 0x001F0000;
inline constexpr REGSAM KEY_QUERY_VALUE = 0x0001;
inline constexpr REGSAM KEY_SET_VALUE = 0x0002;
inline constexpr REGSAM KEY_CREATE_SUB_KEY = 0x0004;
inline constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 0x0008;
inline constexpr REGSAM KEY_NOTIFY = 0x0010;
inline constexpr REGSAM KEY_CREATE_LINK = 0x0020;
inline constexpr REGSAM KEY_WOW64_64KEY = 0x0100;
inline constexpr REGSAM KEY_WOW64_32KEY = 0x0200;
inline constexpr REGSAM KEY_READ =
    (STANDARD_RIGHTS_READ | KEY_QUERY_VALUE | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY) & ~SYNCHRONIZE;
inline constexpr REGSAM KEY_WRITE = (STANDARD_RIGHTS_WRITE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY) & ~SYNCHRONIZE;
inline constexpr REGSAM KEY_EXECUTE = KEY_READ & ~SYNCHRONIZE;
inline constexpr REGSAM KEY_ALL_ACCESS =
    (STANDARD_RIGHTS_ALL | KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS |
     KEY_NOTIFY | KEY_CREATE_LINK) &
    ~SYNCHRONIZE;

// Value types.
inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_EXPAND_SZ = 2;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;
inline constexpr DWORD REG_DWORD_LITTLE_ENDIAN = 4;
inline constexpr DWORD REG_DWORD_BIG_ENDIAN = 5;
inline constexpr DWORD REG_LINK = 6;
inline constexpr DWORD REG_MULTI_SZ = 7;
inline constexpr DWORD REG_RESOURCE_LIST = 8;
inline constexpr DWORD REG_FULL_RESOURCE_DESCRIPTOR = 9;
inline constexpr DWORD REG_RESOURCE_REQUIREMENTS_LIST = 10;
inline constexpr DWORD REG_QWORD = 11;

// Key creation.
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_OPTION_VOLATILE = 1;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

// Result codes the registry calls give.
inline constexpr LONG ERROR_SUCCESS = 0;
inline constexpr LONG ERROR_FILE_NOT_FOUND = 2;
inline constexpr LONG ERROR_ACCESS_DENIED = 5;
inline constexpr LONG ERROR_INVALID_HANDLE = 6;
inline constexpr LONG ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr LONG ERROR_INVALID_DATA = 13;
inline constexpr LONG ERROR_INVALID_PARAMETER = 87;
inline constexpr LONG ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr LONG ERROR_BAD_PATHNAME = 161;
inline constexpr LONG ERROR_MORE_DATA = 234;
inline constexpr LONG ERROR_NO_MORE_ITEMS = 259;
inline constexpr LONG ERROR_NOACCESS = 998;
inline constexpr LONG ERROR_BADDB = 1009;
inline constexpr LONG ERROR_BADKEY = 1010;
inline constexpr LONG ERROR_CANTOPEN = 1011;
inline constexpr LONG ERROR_CANTREAD = 1012;
inline constexpr LONG ERROR_CANTWRITE = 1013;
inline constexpr LONG ERROR_REGISTRY_CORRUPT = 1015;
inline constexpr LONG ERROR_REGISTRY_IO_FAILED = 1016;
inline constexpr LONG ERROR_KEY_DELETED = 1018;
inline constexpr LONG ERROR_CHILD_MUST_BE_VOLATILE = 1021;

#endif
