// Calls for the platform's controls. This desktop has the classes STATIC, BUTTON, EDIT, SCROLLBAR,
// msctls_statusbar32 and msctls_progress32, found by every module in any case of letters; to ask
// for another one is ERROR_CANNOT_FIND_WND_CLASS.
//
// Threads: those of window_calls.h. Errors: 0, and the platform's code in GetLastError.
#ifndef BRCORE8_PLATFORM_POSIX_CONTROL_CALLS_H
#define BRCORE8_PLATFORM_POSIX_CONTROL_CALLS_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/posix/control_messages.h>

// 1 when this desktop has controls of every family that is asked for: ICC_STANDARD_CLASSES,
// ICC_PROGRESS_CLASS, and of ICC_BAR_CLASSES the status bar. Else ERROR_CALL_NOT_IMPLEMENTED.
BRCORE8_API BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* families) noexcept;

// --- Scroll bars --------------------------------------------------------------------------------

// `bar` is SB_HORZ or SB_VERT of a window's own bars, or SB_CTL of a control that is one.

// The position afterwards. A window's bar whose page covers its range goes away, with
// SIF_DISABLENOSCROLL it stays and is grey.
BRCORE8_API int SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw);
BRCORE8_API BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO* info) noexcept;
// The position before.
BRCORE8_API int SetScrollPos(HWND window, int bar, int position, BOOL redraw);
BRCORE8_API int GetScrollPos(HWND window, int bar) noexcept;
BRCORE8_API BOOL SetScrollRange(HWND window, int bar, int low, int high, BOOL redraw);
BRCORE8_API BOOL GetScrollRange(HWND window, int bar, int* low, int* high) noexcept;
// SB_BOTH means both bars of the window.
BRCORE8_API BOOL ShowScrollBar(HWND window, int bar, BOOL show);
// 0 when the arrows were so before.
BRCORE8_API BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows);

#endif
