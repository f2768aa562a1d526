#include "platform/posix/message_box.h"

#include <cstdio>

int MessageBoxA(void*, const char* text, const char* caption, unsigned) {
    std::fprintf(stderr, "%s: %s\n", caption, text);
    return 1;
}
