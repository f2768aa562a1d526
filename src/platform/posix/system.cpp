#include "platform/system.h"

#include <sys/utsname.h>

namespace brcore8 {

std::string PlatformVersion() {
    utsname name{};
    if (uname(&name) != 0) return "unknown";
    return std::string(name.sysname) + " " + name.release + ", build " + name.version + " (" +
           name.machine + ")";
}

std::span<const PlatformPart> PlatformParts() {
    static constexpr PlatformPart Parts[] = {
        {"code page tables", "built in"},
        {"collation", "the C library, in the user's language"},
        {"message texts", "built in"},
        {"string resources", "compiled in"},
        {"message boxes", "none; the text goes to standard error"},
        {"windows", "none"},
    };
    return Parts;
}

}  // namespace brcore8
