#include "platform/modules.h"

#include <brcore8/core/module.h>
#include <brcore8/platform/resources.h>

#include "platform/platform.h"

// The tool chain's entry calls this one. It is the library's alone: in a program with the same
// objects nobody calls it.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    return CoreLibMain(instance, reason, reserved);
}

void* brcore8::FindFunction(const char* module, const char* function) noexcept {
    const HMODULE handle = module != nullptr ? LoadLibraryA(module) : SThisModule();
    if (handle == nullptr) return nullptr;
    return reinterpret_cast<void*>(GetProcAddress(handle, function));
}
