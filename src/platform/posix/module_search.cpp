#include "platform/module_search.h"

#include <dirent.h>
#include <sys/stat.h>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace brcore8 {

namespace {

bool Join(std::string_view folder, std::string_view name, char (&path)[PathSize]) {
    const bool slash = !folder.ends_with('/');
    if (folder.size() + slash + name.size() >= PathSize) return false;
    char* const end = std::copy(folder.begin(), folder.end(), path);
    if (slash) *end = '/';
    *std::copy(name.begin(), name.end(), end + slash) = '\0';
    return true;
}

bool IsRegularFile(const char* path) {
    struct stat facts;
    return stat(path, &facts) == 0 && S_ISREG(facts.st_mode);
}

struct CloseFolder {
    void operator()(DIR* stream) const { closedir(stream); }
};

}  // namespace

CheckedVector<CheckedText> ReadFolder(const char* folder) {
    CheckedVector<CheckedText> names;
    const std::unique_ptr<DIR, CloseFolder> stream(opendir(folder));
    while (const dirent* const entry = stream != nullptr ? readdir(stream.get()) : nullptr)
        names.emplace_back(entry->d_name);
    return names;
}

bool ModuleSearch::FindIn(const char* folder, const char* name, char (&path)[PathSize]) {
    const auto names = listings_.Find(folder, name);
    // The very name comes before those that differ in case.
    if (std::find(names.begin(), names.end(), std::string_view(name)) != names.end() &&
        Join(folder, name, path) && IsRegularFile(path)) {
        return true;
    }
    return std::any_of(names.begin(), names.end(), [&](const CheckedText& other) {
        return Join(folder, other, path) && IsRegularFile(path);
    });
}

bool ModuleSearch::Find(const char* name, char (&path)[PathSize]) {
    const char* const variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "";
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        const CheckedText text(folder.empty() ? "." : folder);
        char full[PathSize];
        if (FullPath(text.c_str(), full) && FindIn(full, name, path)) return true;
    }
    return false;
}

}  // namespace brcore8
