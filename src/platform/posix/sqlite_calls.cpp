#include "platform/posix/sqlite_calls.h"

#include <dlfcn.h>

namespace brcore8 {
namespace {

SqliteCalls Load() noexcept {
    // Never closed: stores outlive static objects.
    void* const library = dlopen("libsqlite3.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return {};
    SqliteCalls calls;
    bool isWhole = true;
#define BRCORE8_SQLITE_CALL(Name)                                                          \
    calls.Name = reinterpret_cast<decltype(calls.Name)>(dlsym(library, "sqlite3_" #Name)); \
    isWhole = isWhole && calls.Name != nullptr;
    BRCORE8_SQLITE_CALLS(BRCORE8_SQLITE_CALL)
#undef BRCORE8_SQLITE_CALL
    return isWhole ? calls : SqliteCalls{};
}

}  // namespace

const SqliteCalls& Sqlite() noexcept {
    static const SqliteCalls calls = Load();
    return calls;
}

}  // namespace brcore8
