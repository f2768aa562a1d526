#include "platform/system.h"

#include <brcore8/core/version.h>

#include "platform/platform.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/sqlite_calls.h"

#include <sys/utsname.h>

#include <cstdio>

BOOL GetVersionExA(OSVERSIONINFOA* version) noexcept {
    utsname name{};
    if (uname(&name) != 0) return 0;
    unsigned numbers[3] = {0, 0, 0};
    std::sscanf(name.release, "%u.%u.%u", &numbers[0], &numbers[1], &numbers[2]);
    version->dwMajorVersion = numbers[0];
    version->dwMinorVersion = numbers[1];
    version->dwBuildNumber = numbers[2];
    version->dwPlatformId = SPlatformPosix;
    return 1;
}

namespace brcore8 {

std::string PlatformVersion() {
    utsname name{};
    if (uname(&name) != 0) return "unknown";
    return std::string(name.sysname) + " " + name.release + ", build " + name.version + " (" +
           name.machine + ")";
}

std::span<const PlatformPart> PlatformParts() {
    static const std::string store =
        Sqlite().libversion != nullptr ? std::string("SQLite ") + Sqlite().libversion() : "none";
    static const PlatformPart Parts[] = {
        {"code page tables", "built in"},
        {"collation", "the C library, in the user's language"},
        {"message texts", "built in"},
        {"string resources", "compiled in"},
        {"settings store", store.c_str()},
        {"debugger's output", "standard error"},
        {"log viewer", "xdg-open, else a text editor in a terminal"},
        {"module search", "PATH, in any case"},
        {"message boxes", "none; the text goes to standard error"},
        {"windows", "built in"},
        {"drawing", desktop::TheDisplay() != nullptr ? "Cairo and Pango" : "none"},
        {"screen", desktop::TheScreen() != nullptr ? "X11" : "memory"},
        {"list and tree views", "none"},
    };
    return Parts;
}

}  // namespace brcore8
