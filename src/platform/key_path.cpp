#include "platform/key_path.h"

#include "strings/code_page.h"

namespace brcore8 {

bool NextName(const char*& path, std::string_view& name) noexcept {
    const CodePage& page = CodePage::Ansi();
    while (*path == '\\')
        ++path;
    const char* const begin = path;
    while (*path != '\0' && *path != '\\')
        path += page.IsLead(static_cast<unsigned char>(*path)) && path[1] != '\0' ? 2 : 1;
    name = {begin, path};
    return !name.empty();
}

int CountNames(const char* path) noexcept {
    int names = 0;
    for (std::string_view name; NextName(path, name);)
        if (name.size() > kMaxKeyName || ++names > kMaxLevels) return -1;
    return names;
}

}  // namespace brcore8
