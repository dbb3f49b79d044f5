// The one macro under which classes and functions of the library are exported.
//
// MR_BUILDING is defined while the library itself is compiled. On a build machine that is not Windows only
// the platform-free core is compiled, into test programs, and nothing is exported. MR_STATIC is defined where
// a program compiles sources of the library into itself instead of loading it.
#pragma once

#if !defined(_WIN32) || defined(MR_STATIC)
#define MR_API
#elif defined(MR_BUILDING)
#define MR_API __declspec(dllexport)
#else
#define MR_API __declspec(dllimport)
#endif
