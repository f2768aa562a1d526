// The record that the library's start-up makes of itself and of its platform.

#include <brcore8/core/module.h>
#include <brcore8/core/trace.h>
#include <brcore8/core/version.h>
#include <brcore8/platform/resources.h>

#include "core/trace_table.h"
#include "platform/modules.h"
#include "platform/platform.h"

#include <atomic>
#include <cstdlib>

namespace {

enum Reason : unsigned long { Detach = 0, Attach = 1 };

struct StartUp {
    std::atomic<HINSTANCE> instance{nullptr};
    std::atomic<unsigned long> majorVersion{0};
    std::atomic<unsigned long> minorVersion{0};
    std::atomic<unsigned long> platform{0};
    std::atomic<unsigned long> buildNumber{0};
    std::atomic<long> attached{0};
};
constinit StartUp g_startUp;

void RecordPlatform() noexcept {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version)) return;
    g_startUp.majorVersion = version.dwMajorVersion;
    g_startUp.minorVersion = version.dwMinorVersion;
    g_startUp.platform = version.dwPlatformId;
    g_startUp.buildNumber = version.dwBuildNumber;
}

}  // namespace

int CoreLibMain(HINSTANCE instance, unsigned long reason, void*) noexcept {
    if (reason == Attach) {
        g_startUp.instance = instance;
        RecordPlatform();
        SReadTraceMasks(std::getenv("BRCORE8_TRACE"));
        ++g_startUp.attached;
    } else if (reason == Detach && --g_startUp.attached == 0) {
        brcore8::ClearTraceMasks();
    }
    return 1;
}

long SCoreAttachCount() noexcept {
    return g_startUp.attached;
}

HINSTANCE SGetCoreInstance() {
    const HINSTANCE instance = g_startUp.instance;
    return instance != nullptr ? instance : SThisModule();
}

unsigned long SMajorVersion() noexcept {
    return g_startUp.majorVersion;
}

unsigned long SMinorVersion() noexcept {
    return g_startUp.minorVersion;
}

unsigned long SPlatform() noexcept {
    return g_startUp.platform;
}

unsigned long SBuildNumber() noexcept {
    return g_startUp.buildNumber;
}

void* SGetProcAddress(const char* module, const char* function) noexcept {
    return function != nullptr ? brcore8::FindFunction(module, function) : nullptr;
}
