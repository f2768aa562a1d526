// What differs between compilers and systems in a declaration, decided once.
#ifndef BRCORE8_PLATFORM_EXPORT_H
#define BRCORE8_PLATFORM_EXPORT_H

// <mbctype.h> of the MinGW run-time defines macros that <type_traits> uses as names. A program
// that includes it before this library's headers must compile all the same.
#if defined(__MINGW32__) && defined(__cplusplus)
#pragma push_macro("_M1")
#pragma push_macro("_M2")
#undef _M1
#undef _M2
#include <type_traits>
#pragma pop_macro("_M1")
#pragma pop_macro("_M2")
#endif

// BRCORE8_API marks what the shared library exports; everything else stays inside it.
// BRCORE8_STDCALL is the calling convention of the call-outs (32-bit Windows alone has several).
// BRCORE8_ENTRY marks functions of that convention that other modules import by their plain names:
// 32-bit Windows would decorate them, so there the build lists them in a file for the linker.
#if defined(_WIN32)
#if defined(BRCORE8_BUILDING)
#define BRCORE8_API __declspec(dllexport)
#define BRCORE8_ENTRY
#else
#define BRCORE8_API __declspec(dllimport)
#define BRCORE8_ENTRY __declspec(dllimport)
#endif
#define BRCORE8_STDCALL __stdcall
#else
#define BRCORE8_API __attribute__((visibility("default")))
#define BRCORE8_ENTRY BRCORE8_API
#define BRCORE8_STDCALL
#endif

// The compiler checks the arguments of a printf-like member against its format.
#if defined(__MINGW32__)
#define BRCORE8_PRINTF(position, first) __attribute__((format(gnu_printf, position, first)))
#elif defined(__GNUC__)
#define BRCORE8_PRINTF(position, first) __attribute__((format(printf, position, first)))
#else
#define BRCORE8_PRINTF(position, first)
#endif

#endif
