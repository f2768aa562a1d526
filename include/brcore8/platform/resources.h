// String resources of a program, from one list for every system.
//
// A program keeps its strings in a list file, one line a string, ASCII, escapes as in C:
//
//     BRSTRING(101, "Ready")
//
// and names it in its build: brcore8_string_resources(my_program strings.def). On Windows the list
// becomes the program's string table; elsewhere a small source registers it when the program is
// loaded. Either way LoadString finds the strings under the module's handle, SThisModule().
#ifndef BRCORE8_PLATFORM_RESOURCES_H
#define BRCORE8_PLATFORM_RESOURCES_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/types.h>

#include <cstddef>

#if defined(_WIN32)
extern "C" char __ImageBase;
#else
extern "C" void* __dso_handle;
#endif

// The handle of the program or library that this call is compiled into.
static inline HINSTANCE SThisModule() {
#if defined(_WIN32)
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
#else
    return reinterpret_cast<HINSTANCE>(&__dso_handle);
#endif
}

namespace brcore8 {

struct StringResourcesAccess;

// One string of a list.
struct StringResource {
    unsigned id;
    const char* text;
};

// A registration of `count` strings for a module, in force as long as it lives. The strings are not
// copied. Where the platform keeps string tables in the module itself it does nothing.
class BRCORE8_API StringResources {
public:
    StringResources(HINSTANCE module, const StringResource* strings, std::size_t count) noexcept;
    ~StringResources();
    StringResources(const StringResources&) = delete;
    StringResources& operator=(const StringResources&) = delete;

private:
    friend struct StringResourcesAccess;

    HINSTANCE module_;
    const StringResource* strings_;
    std::size_t count_;
    StringResources* next_ = nullptr;  // the registration before this one
};

}  // namespace brcore8

#endif
