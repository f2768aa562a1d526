// What shows things to the user and to who debugs.
#ifndef BRCORE8_PLATFORM_POSIX_SHELL_H
#define BRCORE8_PLATFORM_POSIX_SHELL_H

#include <brcore8/platform/types.h>

// Writes a text to standard error in one piece. Never fails. Any thread.
void OutputDebugStringA(const char* text) noexcept;

// Starts a program that opens `file`: xdg-open; for the file "notepad.exe" a terminal with the
// user's text editor on `parameters` (see shell.cpp). Owner, verb, folder and show mean nothing
// here. Above 32 when it was started and did not fail within two seconds, else 2. The program
// is none of this process's children. Any thread.
HINSTANCE ShellExecuteA(void* owner, const char* verb, const char* file, const char* parameters,
                        const char* folder, int show) noexcept;

#endif
