// Trace messages by category and level, assertion hooks, and probes of memory. The entry points
// bear plain names and the standard calling convention, so that any module can import them.
//
//     SSetTraceMask(0, 2);                           // or BRCORE8_TRACE=0=2 in the environment
//     if (STrace(2, 0)) log << "reading settings\n";
//
// Threads: any, at any time.
// Errors: nothing here throws, and what cannot be told is answered with 0.
#ifndef BRCORE8_CORE_TRACE_H
#define BRCORE8_CORE_TRACE_H

#include <brcore8/platform/export.h>

#include <cstdint>

// --- Trace -----------------------------------------------------------------------------------

// 1 when a message of this category and level is to be written, else 0. The trace level is 0 and
// nothing raises it: higher levels are never written. A category is 32 times its group (the
// quotient is cut towards zero) plus a mask of five bits, which is compared with the group's mask
// as it stands: category 3 is written when the mask of group 0 has bit 0 or bit 1. Without any of
// those bits, or a mask for the group, nothing is written.
extern "C" BRCORE8_ENTRY int BRCORE8_STDCALL STrace(int category, int level) noexcept;

// Sets a group's mask; 0 takes the group out of the table, which begins empty. Returns 1, or 0
// when memory is refused, and the table is as before.
BRCORE8_API int SSetTraceMask(std::int32_t group, std::uint32_t mask) noexcept;
// The group's mask, 0 when there is none.
BRCORE8_API std::uint32_t SGetTraceMask(std::int32_t group) noexcept;

// Sets masks from a text such as "0=2;-5=0x1f": decimal groups, decimal or hexadecimal masks,
// separated by semicolons, commas or blanks. Parts of another form are passed over. Returns how
// many masks were set. When the library is loaded, it reads the environment variable
// BRCORE8_TRACE so.
BRCORE8_API int SReadTraceMasks(const char* text) noexcept;

// --- Hooks of debug builds: nothing happens in a release build, which this is ----------------

// Returns 0.
extern "C" BRCORE8_ENTRY int BRCORE8_STDCALL STraceEx(int a, int b, int c, int d) noexcept;
// STraceEx(a, b, 0, 0).
extern "C" BRCORE8_ENTRY int BRCORE8_STDCALL SAssert(int a, int b) noexcept;
extern "C" BRCORE8_ENTRY void BRCORE8_STDCALL STraceAssert(int a, int b, int c) noexcept;
extern "C" BRCORE8_ENTRY void BRCORE8_STDCALL STraceWarning(int a, int b, int c) noexcept;
extern "C" BRCORE8_ENTRY void BRCORE8_STDCALL SWarning(int a, int b, int c) noexcept;

// --- Probes: a hint for diagnostics, since another thread may change the answer at once ------

// 1 when `size` bytes from `address` on can be read and, with `writable`, also written; else 0, as
// for null. No byte from a good address is 1.
extern "C" BRCORE8_ENTRY int BRCORE8_STDCALL SIsValidAddress(const void* address, unsigned size,
                                                             int writable) noexcept;
// 1 when the string can be read up to its terminator or up to `most` characters, whichever comes
// first; a negative `most` is no limit. Else 0, as for null.
BRCORE8_API int SIsValidString(const char* text, int most) noexcept;
BRCORE8_API int SIsValidString(const wchar_t* text, int most) noexcept;

#endif
