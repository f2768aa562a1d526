// The platform's windows, menus and drawing under the platform's own names. Where the system has
// them this is its own header; elsewhere the headers beside this one declare what the library's
// desktop offers, with the same values and meanings, and programs written against them compile on
// both. The window half of the library and programs with windows include this one; the logic half
// never does.
//
// Texts are bytes of the process's code page: the names that end in A. Windows' header turns some
// plain names into those (SendMessage into SendMessageA), members of our classes among them, so a
// program must not ask it for the other kind.
#ifndef BRCORE8_PLATFORM_WINDOWS_H
#define BRCORE8_PLATFORM_WINDOWS_H

#if defined(_WIN32)
#if defined(UNICODE)
#error "BRCORE8's windows speak the ANSI functions: compile without UNICODE"
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <commctrl.h>
#include <richedit.h>
#undef GetClassInfo
#undef LoadString
#else
#include <brcore8/platform/posix/control_calls.h>
#include <brcore8/platform/posix/dialog_calls.h>
#include <brcore8/platform/posix/drawing_calls.h>
#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/list_messages.h>
#include <brcore8/platform/posix/menu_calls.h>
#include <brcore8/platform/posix/window_calls.h>
#endif

#include <brcore8/platform/types.h>

#endif
