// The platform's handle types as opaque names, the same that its own header declares, so that
// the logic half never needs <windows.h> and never disagrees with it.
#ifndef BRCORE8_PLATFORM_TYPES_H
#define BRCORE8_PLATFORM_TYPES_H

#if defined(_WIN32)
#include <guiddef.h>
#else
#include <cstdint>

// As the platform's own small header has it.
struct _GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
using GUID = _GUID;
#endif

struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
struct HKEY__;
using HKEY = HKEY__*;

// Drawing objects of every kind, and two kinds of them.
using HGDIOBJ = void*;
struct HBITMAP__;
using HBITMAP = HBITMAP__*;
struct HICON__;
using HICON = HICON__*;

// <windows.h> turns these words into macros; members of our classes bear the same names. Such a
// member is declared under its plain name and under the decorated one that the macro makes of it,
// so that a program sees the same class whichever header comes first.
#ifdef GetClassInfo
#undef GetClassInfo
#endif
#ifdef LoadString
#undef LoadString
#endif

#endif
