#include "platform/posix/libraries.h"

#include <dlfcn.h>
#include <strings.h>
#include <unistd.h>

#include <climits>
#include <new>
#include <string>

namespace {

std::string LibraryFile(std::string name) {
    constexpr std::size_t suffix = 4;
    if (name.size() > suffix && strcasecmp(name.c_str() + name.size() - suffix, ".dll") == 0)
        name.resize(name.size() - suffix);
    return "lib" + name + ".so";
}

// With its final slash; empty when the system does not tell.
std::string ProgramFolder() {
    char path[PATH_MAX];
    const ssize_t bytes = readlink("/proc/self/exe", path, sizeof path);
    const std::string program(path, bytes < 0 ? 0 : static_cast<std::size_t>(bytes));
    return program.substr(0, program.rfind('/') + 1);
}

void* Load(const std::string& name) {
    if (name.find('/') != name.npos) return dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    const std::string file = LibraryFile(name);
    const std::string beside = ProgramFolder() + file;
    const bool isThere = beside != file && access(beside.c_str(), F_OK) == 0;
    return dlopen((isThere ? beside : file).c_str(), RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

HMODULE LoadLibraryA(const char* name) noexcept {
    try {
        return static_cast<HMODULE>(Load(name));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

FARPROC GetProcAddress(HMODULE library, const char* name) noexcept {
    return reinterpret_cast<FARPROC>(dlsym(library, name));
}

int FreeLibrary(HMODULE library) noexcept {
    return library != nullptr && dlclose(library) == 0;
}
