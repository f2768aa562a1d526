// The module that draws is looked for beside the library and where the system looks.

#include <dlfcn.h>

#include <string>

#include "platform/posix/desktop/display.h"

namespace brcore8::desktop {

namespace {

std::string BesideThisLibrary(const char* file) {
    Dl_info self{};
    if (dladdr(reinterpret_cast<const void*>(&TheDisplay), &self) == 0) return file;
    const std::string library = self.dli_fname;
    const std::size_t slash = library.rfind('/');
    return slash != std::string::npos ? library.substr(0, slash + 1) + file : file;
}

Display* Load() noexcept {
    try {
        constexpr const char* kFile = "libbrcore8_display.so";
        void* module = dlopen(BesideThisLibrary(kFile).c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr) module = dlopen(kFile, RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr) return nullptr;
        const auto display =
            reinterpret_cast<decltype(&brcore8_display)>(dlsym(module, "brcore8_display"));
        return display != nullptr ? display() : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

Display* TheDisplay() noexcept {
    static Display* const display = Load();
    return display;
}

}  // namespace brcore8::desktop
