#include "platform/modules.h"

#include <brcore8/core/module.h>
#include <brcore8/platform/resources.h>

#include <dlfcn.h>

namespace {

[[gnu::constructor]] void Load() {
    CoreLibMain(SThisModule(), 1, nullptr);
}

[[gnu::destructor]] void Unload() {
    CoreLibMain(SThisModule(), 0, nullptr);
}

}  // namespace

void* brcore8::FindFunction(const char* module, const char* function) noexcept {
    Dl_info self;
    if (module == nullptr && dladdr(SThisModule(), &self) != 0) module = self.dli_fname;
    void* const handle = module != nullptr ? dlopen(module, RTLD_NOW | RTLD_LOCAL) : nullptr;
    return handle != nullptr ? dlsym(handle, function) : nullptr;
}
