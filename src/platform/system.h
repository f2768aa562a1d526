// What the platform tells of itself.
#ifndef BRCORE8_PLATFORM_SYSTEM_H
#define BRCORE8_PLATFORM_SYSTEM_H

#include <span>
#include <string>

namespace brcore8 {

// Name, version and build of the running system, in one line.
std::string PlatformVersion();

// A part of the platform that the library stands on, and where this build takes it from.
struct PlatformPart {
    const char* name;
    const char* source;
};
std::span<const PlatformPart> PlatformParts();

}  // namespace brcore8

#endif
