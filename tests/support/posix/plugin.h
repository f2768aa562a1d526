// A module that a test loads while it runs, and what the module's own source says of its functions.
#ifndef BRCORE8_TESTS_SUPPORT_PLUGIN_H
#define BRCORE8_TESTS_SUPPORT_PLUGIN_H

#include <dlfcn.h>

#define PLUGIN_FUNCTION extern "C" __attribute__((visibility("default")))

class Plugin {
public:
    explicit Plugin(const char* path) : handle_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {}
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin() {
        if (handle_ != nullptr) dlclose(handle_);
    }

    // Null when the module or the function is not there.
    template <typename Function>
    Function* Find(const char* name) const {
        return handle_ != nullptr ? reinterpret_cast<Function*>(dlsym(handle_, name)) : nullptr;
    }

private:
    void* handle_;
};

#endif
