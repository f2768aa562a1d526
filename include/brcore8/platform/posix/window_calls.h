// Windows, their messages, and what moves them: the calls of the desktop that this library offers
// where the system has none. Each has the platform's meaning, with the limits said here.
//
// Threads: a window belongs to the thread that made it, which alone runs its procedure; messages
// sent from another thread wait for it. Handles are checked: a call with one of a window that is
// gone fails with ERROR_INVALID_WINDOW_HANDLE.
// Errors: 0 or null, and the platform's code in GetLastError.
#ifndef BRCORE8_PLATFORM_POSIX_WINDOW_CALLS_H
#define BRCORE8_PLATFORM_POSIX_WINDOW_CALLS_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/posix/last_error.h>
#include <brcore8/platform/posix/window_constants.h>
#include <brcore8/platform/posix/window_messages.h>
#include <brcore8/platform/posix/window_types.h>

// --- Classes of windows ---------------------------------------------------------------------

// Class names are found in any case; a number below 0x10000 in a name's place is an atom.
BRCORE8_API ATOM RegisterClassExA(const WNDCLASSEXA* info) noexcept;
// Fails with ERROR_CLASS_HAS_WINDOWS while a window of the class lives.
BRCORE8_API BOOL UnregisterClassA(const char* name, HINSTANCE instance) noexcept;
// 0 with ERROR_CLASS_DOES_NOT_EXIST, else the class's atom.
BRCORE8_API BOOL GetClassInfoExA(HINSTANCE instance, const char* name, WNDCLASSEXA* info) noexcept;
BRCORE8_API int GetClassNameA(HWND window, char* name, int size) noexcept;
BRCORE8_API ULONG_PTR GetClassLongPtrA(HWND window, int index) noexcept;

// --- Windows --------------------------------------------------------------------------------

// Sends WM_NCCREATE and WM_CREATE, after the thread's creation hooks saw HCBT_CREATEWND. Null when
// one of them refuses: whoever refuses WM_NCCREATE, or is refused by a hook, gets WM_NCDESTROY
// alone. A class that this desktop lacks is ERROR_CANNOT_FIND_WND_CLASS. Windows nest, and own, at
// most a hundred deep, and 65,000 live at once: ERROR_INVALID_PARAMETER. Places and sizes are kept
// in 16 bits, nearer ones for those beyond.
BRCORE8_API HWND CreateWindowExA(DWORD exStyle, const char* className, const char* text,
                                 DWORD style, int x, int y, int width, int height, HWND parent,
                                 HMENU menu, HINSTANCE instance, void* param);
// The thread's own windows alone, else ERROR_ACCESS_DENIED; owned windows go first, and children
// get their last message before it. A child that is taken to another parent meanwhile lives on.
BRCORE8_API BOOL DestroyWindow(HWND window);
BRCORE8_API BOOL IsWindow(HWND window) noexcept;

// Those with a number from 0 on are the window's own bytes, as wide as the call: LONG_PTR or LONG.
// An owner that the window owns itself, in any number of steps, is ERROR_INVALID_PARAMETER.
BRCORE8_API LONG_PTR GetWindowLongPtrA(HWND window, int index) noexcept;
BRCORE8_API LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
BRCORE8_API LONG GetWindowLongA(HWND window, int index) noexcept;
BRCORE8_API LONG SetWindowLongA(HWND window, int index, LONG value);

BRCORE8_API BOOL SetWindowTextA(HWND window, const char* text);
BRCORE8_API int GetWindowTextA(HWND window, char* text, int size);
BRCORE8_API int GetWindowTextLengthA(HWND window);

BRCORE8_API DWORD GetWindowThreadProcessId(HWND window, DWORD* process) noexcept;
BRCORE8_API DWORD GetCurrentThreadId() noexcept;

// --- The tree of windows ----------------------------------------------------------------------

BRCORE8_API HWND GetDesktopWindow() noexcept;
// The parent of a child, the owner of a popup, else null.
BRCORE8_API HWND GetParent(HWND window) noexcept;
// The old parent; null with ERROR_INVALID_PARAMETER for a parent that is below the window, or where
// windows would nest too deep. Who gets another parent than the desktop has no owner any more.
BRCORE8_API HWND SetParent(HWND child, HWND parent);
BRCORE8_API HWND GetAncestor(HWND window, UINT which) noexcept;
BRCORE8_API HWND GetWindow(HWND window, UINT which) noexcept;
// The topmost child; null asks for the topmost window of the desktop.
BRCORE8_API HWND GetTopWindow(HWND parent) noexcept;
BRCORE8_API BOOL IsChild(HWND parent, HWND window) noexcept;
BRCORE8_API BOOL EnumChildWindows(HWND parent, WNDENUMPROC visit, LPARAM param);
BRCORE8_API BOOL EnumThreadWindows(DWORD thread, WNDENUMPROC visit, LPARAM param);
BRCORE8_API HWND FindWindowA(const char* className, const char* text);
BRCORE8_API HWND WindowFromPoint(POINT point);
BRCORE8_API HWND ChildWindowFromPoint(HWND parent, POINT point) noexcept;

BRCORE8_API HWND GetDlgItem(HWND parent, int id) noexcept;
BRCORE8_API int GetDlgCtrlID(HWND window) noexcept;
BRCORE8_API LRESULT SendDlgItemMessageA(HWND parent, int id, UINT message, WPARAM wParam,
                                        LPARAM lParam);
BRCORE8_API HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) noexcept;
// Tab, arrows, Enter and Escape among the controls of a window: 1 when the message was one of
// those.
BRCORE8_API BOOL IsDialogMessageA(HWND dialog, MSG* message);

// --- Place and look ---------------------------------------------------------------------------

BRCORE8_API BOOL ShowWindow(HWND window, int how);
BRCORE8_API BOOL IsWindowVisible(HWND window) noexcept;
BRCORE8_API BOOL IsIconic(HWND window) noexcept;
BRCORE8_API BOOL IsZoomed(HWND window) noexcept;
BRCORE8_API BOOL EnableWindow(HWND window, BOOL enable);
BRCORE8_API BOOL IsWindowEnabled(HWND window) noexcept;

BRCORE8_API BOOL SetWindowPos(HWND window, HWND after, int x, int y, int width, int height,
                              UINT flags);
BRCORE8_API BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
BRCORE8_API BOOL BringWindowToTop(HWND window);
BRCORE8_API BOOL GetWindowRect(HWND window, RECT* rect) noexcept;
BRCORE8_API BOOL GetClientRect(HWND window, RECT* rect) noexcept;
BRCORE8_API BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement) noexcept;
BRCORE8_API BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement);
BRCORE8_API BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD exStyle) noexcept;
BRCORE8_API BOOL ClientToScreen(HWND window, POINT* point) noexcept;
BRCORE8_API BOOL ScreenToClient(HWND window, POINT* point) noexcept;
BRCORE8_API int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count) noexcept;

inline const HWND HWND_TOP = nullptr;
inline const HWND HWND_BOTTOM = reinterpret_cast<HWND>(std::intptr_t{1});
inline const HWND HWND_TOPMOST = reinterpret_cast<HWND>(std::intptr_t{-1});
inline const HWND HWND_NOTOPMOST = reinterpret_cast<HWND>(std::intptr_t{-2});

// --- Painting -----------------------------------------------------------------------------------

BRCORE8_API BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BRCORE8_API BOOL ValidateRect(HWND window, const RECT* rect);
// Paints what is due of the window and of all below it.
BRCORE8_API BOOL UpdateWindow(HWND window);
BRCORE8_API BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags);
BRCORE8_API BOOL GetUpdateRect(HWND window, RECT* rect, BOOL erase);

// --- Messages -----------------------------------------------------------------------------------

BRCORE8_API LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Any thread. A null window posts to the calling thread. Fails with ERROR_NOT_ENOUGH_QUOTA when
// 10,000 messages wait.
BRCORE8_API BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BRCORE8_API BOOL PostThreadMessageA(DWORD thread, UINT message, WPARAM wParam, LPARAM lParam);
BRCORE8_API void PostQuitMessage(int code);
// Posted messages first, then WM_QUIT, input, WM_PAINT and WM_TIMER. GetMessageA waits: 0 for
// WM_QUIT, -1 for a window that is none.
BRCORE8_API BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last);
BRCORE8_API BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove);
BRCORE8_API BOOL WaitMessage();
// Turns keys into WM_CHAR.
BRCORE8_API BOOL TranslateMessage(const MSG* message);
BRCORE8_API LRESULT DispatchMessageA(const MSG* message);
BRCORE8_API LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BRCORE8_API LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                                    LPARAM lParam);
// A number from 0xC000 that every caller of the same name, in any case, gets.
BRCORE8_API UINT RegisterWindowMessageA(const char* name) noexcept;
BRCORE8_API DWORD GetMessageTime() noexcept;
BRCORE8_API DWORD GetMessagePos() noexcept;

BRCORE8_API UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
BRCORE8_API BOOL KillTimer(HWND window, UINT_PTR id);
BRCORE8_API DWORD GetTickCount() noexcept;

// Hooks of WH_CBT on the calling thread, with a null module; others are refused with
// ERROR_INVALID_HOOK_FILTER. The last set is called first.
BRCORE8_API HHOOK SetWindowsHookExA(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread);
BRCORE8_API BOOL UnhookWindowsHookEx(HHOOK hook) noexcept;
BRCORE8_API LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);

// --- Focus, mouse, keyboard ---------------------------------------------------------------------

// Of this thread's windows alone, else null with ERROR_ACCESS_DENIED. SetForegroundWindow asks the
// thread of another's window, which follows when it looks for messages.
BRCORE8_API HWND SetFocus(HWND window);
BRCORE8_API HWND GetFocus() noexcept;
BRCORE8_API HWND SetActiveWindow(HWND window);
BRCORE8_API HWND GetActiveWindow() noexcept;
BRCORE8_API BOOL SetForegroundWindow(HWND window);
BRCORE8_API HWND GetForegroundWindow() noexcept;
BRCORE8_API HWND SetCapture(HWND window);
BRCORE8_API BOOL ReleaseCapture();
BRCORE8_API HWND GetCapture() noexcept;
// Negative while the key is down, as of the last message taken.
BRCORE8_API short GetKeyState(int key) noexcept;

BRCORE8_API BOOL GetCursorPos(POINT* point) noexcept;
BRCORE8_API BOOL SetCursorPos(int x, int y);
// The cursor shown before.
BRCORE8_API HCURSOR SetCursor(HCURSOR cursor) noexcept;
BRCORE8_API HCURSOR GetCursor() noexcept;
// The platform's own cursors, with a null module: IDC_ARROW and those below.
BRCORE8_API HCURSOR LoadCursorA(HINSTANCE module, const char* name) noexcept;

inline const char* const IDC_ARROW = MAKEINTRESOURCEA(32512);
inline const char* const IDC_IBEAM = MAKEINTRESOURCEA(32513);
inline const char* const IDC_WAIT = MAKEINTRESOURCEA(32514);
inline const char* const IDC_CROSS = MAKEINTRESOURCEA(32515);
inline const char* const IDC_SIZENWSE = MAKEINTRESOURCEA(32642);
inline const char* const IDC_SIZENESW = MAKEINTRESOURCEA(32643);
inline const char* const IDC_SIZEWE = MAKEINTRESOURCEA(32644);
inline const char* const IDC_SIZENS = MAKEINTRESOURCEA(32645);
inline const char* const IDC_NO = MAKEINTRESOURCEA(32648);
inline const char* const IDC_HAND = MAKEINTRESOURCEA(32649);

// --- The rest of the desktop --------------------------------------------------------------------

// A dialog over its owner, which is disabled until a button is pressed: the button's number. Tests
// and other programs find it with FindWindowA("#32770", caption) and answer it by messages. Where
// nobody could see it and nobody is known to look for it, without the part of the library that
// draws, or without an owner on a desktop in memory, the box would wait for ever: "caption: text"
// and a line feed go to standard error instead, and the default button counts as pressed.
BRCORE8_API int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style);
BRCORE8_API BOOL MessageBeep(UINT kind) noexcept;
BRCORE8_API int GetSystemMetrics(int index) noexcept;
BRCORE8_API DWORD GetSysColor(int index) noexcept;

BRCORE8_API BOOL SetRect(RECT* rect, int left, int top, int right, int bottom) noexcept;
BRCORE8_API BOOL SetRectEmpty(RECT* rect) noexcept;
BRCORE8_API BOOL IsRectEmpty(const RECT* rect) noexcept;
BRCORE8_API BOOL EqualRect(const RECT* a, const RECT* b) noexcept;
BRCORE8_API BOOL OffsetRect(RECT* rect, int dx, int dy) noexcept;
BRCORE8_API BOOL InflateRect(RECT* rect, int dx, int dy) noexcept;
BRCORE8_API BOOL IntersectRect(RECT* out, const RECT* a, const RECT* b) noexcept;
BRCORE8_API BOOL UnionRect(RECT* out, const RECT* a, const RECT* b) noexcept;
BRCORE8_API BOOL PtInRect(const RECT* rect, POINT point) noexcept;

#endif
