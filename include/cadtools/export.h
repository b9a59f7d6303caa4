// Symbol visibility for the cadtools library.
//
// CADTOOLS_API marks what the library exports: the host links against these
// classes and functions directly. A static build defines CADTOOLS_STATIC
// (the CMake target does this for its users), a shared build exports from
// the DLL or shared object and imports in its users.
#pragma once

#if defined(CADTOOLS_STATIC)
#define CADTOOLS_API
#elif defined(_WIN32)
#if defined(CADTOOLS_BUILDING)
#define CADTOOLS_API __declspec(dllexport)
#else
#define CADTOOLS_API __declspec(dllimport)
#endif
#else
#define CADTOOLS_API __attribute__((visibility("default")))
#endif
