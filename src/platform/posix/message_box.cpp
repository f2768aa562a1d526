#include <brcore8/platform/posix/window_calls.h>

#include <cstdio>

int MessageBoxA(HWND, const char* text, const char* caption, UINT) {
    std::fprintf(stderr, "%s: %s\n", caption, text);
    return 1;
}
