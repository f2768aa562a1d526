// Records the platform's message texts for src/platform/posix/messages.def. Compile it for Windows,
// run it there (or under Wine) and keep what it prints:
//
//     x86_64-w64-mingw32-g++ -static record.cpp -o record.exe
#include <windows.h>

#include <cstdio>
#include <cstring>

namespace {

void Record(unsigned code) {
    char text[512];
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, 0x400, text,
                                        sizeof text, nullptr);
    if (length < 2 || std::strcmp(text + length - 2, "\r\n") != 0) return;
    text[length - 2] = '\0';
    std::printf(code < 0x10000 ? "BRMESSAGE(%u, \"" : "BRMESSAGE(0x%08X, \"", code);
    for (const char* at = text; *at != '\0'; ++at)
        std::printf(*at == '"' || *at == '\\' ? "\\%c" : "%c", *at);
    std::puts("\")");
}

}  // namespace

int main() {
    // What C programs and sockets meet; services, tapes and the like are left out.
    constexpr struct {
        unsigned first, last;
    } kRanges[] = {{0, 1132}, {1150, 1254}, {1300, 1460}, {10000, 11010}, {0x80000000, 0x8000FFFF}};
    for (const auto& range : kRanges) {
        for (unsigned code = range.first; code <= range.last; ++code)
            Record(code);
    }
}
