// Keyboard, mouse, caret and clipboard of the desktop that this library offers where the system
// has none: the platform's calls with the platform's meanings, and the limits said here.
//
// What keys and mouse do is put at the end of one queue a thread and becomes messages when the
// thread takes it: that is when the part of the window under the cursor is asked for, a click
// activates, and GetKeyState changes. Keys go to the thread whose window is in the foreground.
// Errors: 0 or null, and the platform's code in GetLastError.
#ifndef BRCORE8_PLATFORM_POSIX_INPUT_CALLS_H
#define BRCORE8_PLATFORM_POSIX_INPUT_CALLS_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/posix/global_calls.h>
#include <brcore8/platform/posix/window_types.h>

// --- Input by program ---------------------------------------------------------------------------

constexpr unsigned KEYEVENTF_EXTENDEDKEY = 1;
constexpr unsigned KEYEVENTF_KEYUP = 2;
constexpr unsigned KEYEVENTF_UNICODE = 4;  // the scan code is a UTF-16 unit
constexpr unsigned KEYEVENTF_SCANCODE = 8;
constexpr unsigned MOUSEEVENTF_MOVE = 1;
constexpr unsigned MOUSEEVENTF_LEFTDOWN = 2;
constexpr unsigned MOUSEEVENTF_LEFTUP = 4;
constexpr unsigned MOUSEEVENTF_RIGHTDOWN = 8;
constexpr unsigned MOUSEEVENTF_RIGHTUP = 0x10;
constexpr unsigned MOUSEEVENTF_MIDDLEDOWN = 0x20;
constexpr unsigned MOUSEEVENTF_MIDDLEUP = 0x40;
constexpr unsigned MOUSEEVENTF_WHEEL = 0x800;
constexpr unsigned MOUSEEVENTF_ABSOLUTE = 0x8000;
constexpr DWORD INPUT_MOUSE = 0;
constexpr DWORD INPUT_KEYBOARD = 1;

struct MOUSEINPUT {
    LONG dx;  // pixels; with MOUSEEVENTF_ABSOLUTE 0 to 65,535 over the screen
    LONG dy;
    DWORD mouseData;  // of the wheel
    DWORD dwFlags;
    DWORD time;  // 0: now
    ULONG_PTR dwExtraInfo;
};

struct KEYBDINPUT {
    WORD wVk;
    WORD wScan;
    DWORD dwFlags;
    DWORD time;
    ULONG_PTR dwExtraInfo;
};

struct INPUT {
    DWORD type;
    union {
        MOUSEINPUT mi;
        KEYBDINPUT ki;
    };
};

// As if the user had done it; how many were taken. Any thread.
BRCORE8_API UINT SendInput(UINT count, const INPUT* inputs, int size);
BRCORE8_API void keybd_event(BYTE key, BYTE scan, DWORD flags, ULONG_PTR extra);
BRCORE8_API void mouse_event(DWORD flags, DWORD x, DWORD y, DWORD data, ULONG_PTR extra);

// --- Keys ---------------------------------------------------------------------------------------

constexpr int VK_LWIN = 0x5B;
constexpr int VK_RWIN = 0x5C;
constexpr int VK_APPS = 0x5D;
constexpr int VK_NUMPAD1 = 0x61;
constexpr int VK_SEPARATOR = 0x6C;
constexpr int VK_LSHIFT = 0xA0;
constexpr int VK_RSHIFT = 0xA1;
constexpr int VK_LCONTROL = 0xA2;
constexpr int VK_RCONTROL = 0xA3;
constexpr int VK_LMENU = 0xA4;
constexpr int VK_RMENU = 0xA5;
constexpr int VK_OEM_1 = 0xBA;
constexpr int VK_OEM_PLUS = 0xBB;
constexpr int VK_OEM_COMMA = 0xBC;
constexpr int VK_OEM_MINUS = 0xBD;
constexpr int VK_OEM_PERIOD = 0xBE;
constexpr int VK_OEM_2 = 0xBF;
constexpr int VK_OEM_3 = 0xC0;
constexpr int VK_OEM_4 = 0xDB;
constexpr int VK_OEM_5 = 0xDC;
constexpr int VK_OEM_6 = 0xDD;
constexpr int VK_OEM_7 = 0xDE;
constexpr int VK_PACKET = 0xE7;
constexpr UINT MAPVK_VK_TO_VSC = 0;
constexpr UINT MAPVK_VSC_TO_VK = 1;
constexpr UINT MAPVK_VK_TO_CHAR = 2;

// Negative while the key is down now, whatever the thread has taken so far; 1 is added when it went
// down since the last question.
BRCORE8_API short GetAsyncKeyState(int key) noexcept;
// 256 bytes, as of the last message taken: 0x80 is down, 1 is on.
BRCORE8_API BOOL GetKeyboardState(BYTE* keys) noexcept;
BRCORE8_API BOOL SetKeyboardState(const BYTE* keys) noexcept;
// The keyboard that programs see without a screen is the American one.
BRCORE8_API UINT MapVirtualKeyA(UINT code, UINT what) noexcept;
// The key, and above it 1 for Shift and 2 for Ctrl; -1 for a character without a key.
BRCORE8_API short VkKeyScanA(char character) noexcept;
// How many characters the key means, 0 or 1; they are bytes of the process's code page.
BRCORE8_API int ToAscii(UINT key, UINT scan, const BYTE* keys, WORD* characters,
                        UINT flags) noexcept;
// Milliseconds.
BRCORE8_API UINT GetDoubleClickTime() noexcept;
BRCORE8_API BOOL SetDoubleClickTime(UINT milliseconds) noexcept;

// --- The caret ----------------------------------------------------------------------------------

// A thread has one caret, in the window that has the focus. It is made hidden; each HideCaret wants
// a ShowCaret. Whoever paints where it stands hides it meanwhile; BeginPaint does. It blinks by
// message 280, which DispatchMessageA keeps from windows.

// A null bitmap is a black block; a size of 0 is a line's width. A caret that is there goes first.
BRCORE8_API BOOL CreateCaret(HWND window, HBITMAP shape, int width, int height);
BRCORE8_API BOOL DestroyCaret();
// In the client area.
BRCORE8_API BOOL SetCaretPos(int x, int y);
BRCORE8_API BOOL GetCaretPos(POINT* point) noexcept;
// Null is the window that has the caret, whichever it is; fails for one that has not.
BRCORE8_API BOOL ShowCaret(HWND window);
BRCORE8_API BOOL HideCaret(HWND window);
BRCORE8_API UINT GetCaretBlinkTime() noexcept;

// --- The clipboard ------------------------------------------------------------------------------

constexpr UINT CF_TEXT = 1;
constexpr UINT CF_BITMAP = 2;
constexpr UINT CF_OEMTEXT = 7;
constexpr UINT CF_UNICODETEXT = 13;
constexpr UINT CF_PRIVATEFIRST = 0x200;

// One thread at a time has it open; the others are refused with ERROR_ACCESS_DENIED. CF_TEXT and
// CF_UNICODETEXT are made of one another. Data is a block of global memory, which the clipboard
// owns from then on; what it gives stays its own and holds until it is closed.
BRCORE8_API BOOL OpenClipboard(HWND window) noexcept;
BRCORE8_API BOOL CloseClipboard() noexcept;
// The window that opened it becomes the owner; the old one gets WM_DESTROYCLIPBOARD.
BRCORE8_API BOOL EmptyClipboard();
BRCORE8_API HANDLE SetClipboardData(UINT format, HANDLE data);
BRCORE8_API HANDLE GetClipboardData(UINT format);
BRCORE8_API BOOL IsClipboardFormatAvailable(UINT format) noexcept;
BRCORE8_API int CountClipboardFormats() noexcept;
// The format after that one, the first after 0; 0 at the end. Only while it is open.
BRCORE8_API UINT EnumClipboardFormats(UINT format) noexcept;
BRCORE8_API HWND GetClipboardOwner() noexcept;
BRCORE8_API HWND GetOpenClipboardWindow() noexcept;
BRCORE8_API DWORD GetClipboardSequenceNumber() noexcept;
BRCORE8_API UINT RegisterClipboardFormatA(const char* name) noexcept;

// --- The scale ----------------------------------------------------------------------------------

// Dots an inch that the screen asks for: 96 is a scale of 1.
BRCORE8_API UINT GetDpiForSystem() noexcept;
BRCORE8_API UINT GetDpiForWindow(HWND window) noexcept;

#endif
