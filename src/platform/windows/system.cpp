#include "platform/system.h"

#include "platform/platform.h"

namespace brcore8 {

std::string PlatformVersion() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version)) return "unknown";
    return "Windows " + std::to_string(version.dwMajorVersion) + "." +
           std::to_string(version.dwMinorVersion) + ", build " +
           std::to_string(version.dwBuildNumber) +
           (sizeof(void*) == 8 ? " (64 bits)" : " (32 bits)");
}

std::span<const PlatformPart> PlatformParts() {
    static constexpr PlatformPart Parts[] = {
        {"code page tables", "the system"},
        {"collation", "the system, in the user's language"},
        {"message texts", "the system"},
        {"string resources", "the modules' own"},
        {"settings store", "the system's registry"},
        {"debugger's output", "the system"},
        {"log viewer", "the shell, else Notepad"},
        {"module search", "the system"},
        {"message boxes", "the system"},
        {"windows", "none in this version"},
    };
    return Parts;
}

}  // namespace brcore8
