#include <brcore8/core/version.h>

#include <brcore8/strings/multibyte.h>

#include "platform/system.h"

const char* SLibraryVersion() noexcept {
    return BRCORE8_VERSION;
}

std::string SVersionReport() {
    std::string report = std::string("brcore8 ") + SLibraryVersion() + "\n";
    report += "platform: " + brcore8::PlatformVersion() + "\n";
    report += "code pages:";
    for (const int page : SSupportedCodePages())
        report.append(" ").append(std::to_string(page));
    report += "\n";
    for (const brcore8::PlatformPart& part : brcore8::PlatformParts())
        report += std::string(part.name) + ": " + part.source + "\n";
    return report;
}
