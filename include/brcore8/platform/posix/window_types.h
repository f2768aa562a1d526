// The platform's types for windows, messages and drawing.
#ifndef BRCORE8_PLATFORM_POSIX_WINDOW_TYPES_H
#define BRCORE8_PLATFORM_POSIX_WINDOW_TYPES_H

#include <brcore8/platform/types.h>

#include <cstdint>

using BOOL = int;
using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using ATOM = WORD;
using COLORREF = DWORD;  // 0x00BBGGRR

// Wide enough for a pointer.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using INT_PTR = std::intptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;

using HANDLE = void*;
struct HWND__;
using HWND = HWND__*;
struct HMENU__;
using HMENU = HMENU__*;
struct HDC__;
using HDC = HDC__*;
struct HHOOK__;
using HHOOK = HHOOK__*;
struct HFONT__;
using HFONT = HFONT__*;
struct HPEN__;
using HPEN = HPEN__*;
struct HBRUSH__;
using HBRUSH = HBRUSH__*;
struct HRGN__;
using HRGN = HRGN__*;
struct HPALETTE__;
using HPALETTE = HPALETTE__*;
struct HACCEL__;
using HACCEL = HACCEL__*;
using HCURSOR = HICON;

// The calling conventions that the other system distinguishes.
#define CALLBACK
#define WINAPI

using WNDPROC = LRESULT(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using HOOKPROC = LRESULT(CALLBACK*)(int code, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT message, UINT_PTR id, DWORD time);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND, LPARAM);

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

// Left and top lie inside, right and bottom outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;  // milliseconds of the desktop's clock
    POINT pt;    // the cursor on the screen when it was posted
};

struct NMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};

struct CREATESTRUCTA {
    void* lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;  // or the identifier of a child
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    const char* lpszName;
    const char* lpszClass;
    DWORD dwExStyle;
};
using CREATESTRUCT = CREATESTRUCTA;

// What a creation hook is told.
struct CBT_CREATEWNDA {
    CREATESTRUCTA* lpcs;
    HWND hwndInsertAfter;
};
using CBT_CREATEWND = CBT_CREATEWNDA;

struct WNDCLASSEXA {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;  // or a system colour plus one
    const char* lpszMenuName;
    const char* lpszClassName;
    HICON hIconSm;
};
using WNDCLASSEX = WNDCLASSEXA;

struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};

struct WINDOWPLACEMENT {
    UINT length;
    UINT flags;
    UINT showCmd;
    POINT ptMinPosition;
    POINT ptMaxPosition;
    RECT rcNormalPosition;
};

struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};

struct DRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
};

struct MEASUREITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemWidth;
    UINT itemHeight;
    ULONG_PTR itemData;
};

struct ACCEL {
    BYTE fVirt;
    WORD key;
    WORD cmd;
};

struct MENUITEMINFOA {
    UINT cbSize;
    UINT fMask;
    UINT fType;
    UINT fState;
    UINT wID;
    HMENU hSubMenu;
    HBITMAP hbmpChecked;
    HBITMAP hbmpUnchecked;
    ULONG_PTR dwItemData;
    char* dwTypeData;
    UINT cch;
    HBITMAP hbmpItem;
};
using MENUITEMINFO = MENUITEMINFOA;

struct TEXTMETRICA {
    LONG tmHeight;
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading;
    LONG tmExternalLeading;
    LONG tmAveCharWidth;
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang;
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar;
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};
using TEXTMETRIC = TEXTMETRICA;

constexpr WORD LOWORD(std::uint64_t value) noexcept {
    return static_cast<WORD>(value & 0xFFFF);
}
constexpr WORD HIWORD(std::uint64_t value) noexcept {
    return static_cast<WORD>(value >> 16 & 0xFFFF);
}
constexpr BYTE LOBYTE(std::uint64_t value) noexcept {
    return static_cast<BYTE>(value & 0xFF);
}
constexpr BYTE HIBYTE(std::uint64_t value) noexcept {
    return static_cast<BYTE>(value >> 8 & 0xFF);
}
constexpr LONG MAKELONG(std::uint64_t low, std::uint64_t high) noexcept {
    return static_cast<LONG>((low & 0xFFFF) | (high & 0xFFFF) << 16);
}
constexpr WPARAM MAKEWPARAM(std::uint64_t low, std::uint64_t high) noexcept {
    return static_cast<DWORD>(MAKELONG(low, high));
}
constexpr LPARAM MAKELPARAM(std::uint64_t low, std::uint64_t high) noexcept {
    return static_cast<DWORD>(MAKELONG(low, high));
}
constexpr LRESULT MAKELRESULT(std::uint64_t low, std::uint64_t high) noexcept {
    return static_cast<DWORD>(MAKELONG(low, high));
}
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) noexcept {
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}
constexpr BYTE GetRValue(COLORREF color) noexcept {
    return static_cast<BYTE>(color & 0xFF);
}
constexpr BYTE GetGValue(COLORREF color) noexcept {
    return static_cast<BYTE>(color >> 8 & 0xFF);
}
constexpr BYTE GetBValue(COLORREF color) noexcept {
    return static_cast<BYTE>(color >> 16 & 0xFF);
}
// A resource's number in the place of its name.
inline char* MAKEINTRESOURCEA(std::uintptr_t id) noexcept {
    return reinterpret_cast<char*>(id & 0xFFFF);
}

#endif
