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

#endif
