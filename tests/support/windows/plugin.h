// A module that a test loads while it runs, and what the module's own source says of its functions.
#ifndef BRCORE8_TESTS_SUPPORT_PLUGIN_H
#define BRCORE8_TESTS_SUPPORT_PLUGIN_H

#include <windows.h>

#define PLUGIN_FUNCTION extern "C" __declspec(dllexport)

class Plugin {
public:
    explicit Plugin(const char* path) : handle_(LoadLibraryA(path)) {}
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin() {
        if (handle_ != nullptr) FreeLibrary(handle_);
    }

    // Null when the module or the function is not there.
    template <typename Function>
    Function* Find(const char* name) const {
        if (handle_ == nullptr) return nullptr;
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(handle_, name)));
    }

private:
    HMODULE handle_;
};

#endif
