#include "platform/module_search.h"

#include "platform/platform.h"

namespace brcore8 {

namespace {

bool Search(const char* folder, const char* name, char (&path)[PathSize]) noexcept {
    const DWORD length = SearchPathA(folder, name, nullptr, PathSize, path, nullptr);
    if (length == 0 || length >= PathSize) return false;
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

}  // namespace

ModuleSearch::ModuleSearch() noexcept = default;
ModuleSearch::~ModuleSearch() = default;

bool ModuleSearch::FindIn(const char* folder, const char* name, char (&path)[PathSize]) {
    return Search(folder, name, path);
}

bool ModuleSearch::Find(const char* name, char (&path)[PathSize]) {
    return Search(nullptr, name, path);
}

}  // namespace brcore8
