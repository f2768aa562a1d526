#include "platform/module_search.h"

#include "platform/platform.h"

#include <algorithm>
#include <string_view>

namespace brcore8 {

namespace {

// Names that a program looks for in vain until the folders are read: the system scans a folder for
// each, and tables that lie hold thousands.
constexpr int MissesBeforeListing = 64;

bool Search(const char* folder, const char* name, char (&path)[PathSize]) noexcept {
    const DWORD length = SearchPathA(folder, name, nullptr, PathSize, path, nullptr);
    if (length == 0 || length >= PathSize) return false;
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

// Whether the system finds a file by this name only where a listing has it: not by a short name,
// nor without a dot or blank at the end, nor by letters whose case it knows better.
bool IsListedByName(std::string_view name) noexcept {
    return !name.ends_with('.') && !name.ends_with(' ') &&
           std::all_of(name.begin(), name.end(),
                       [](char byte) { return byte > ' ' && byte < '~'; });
}

// The folders that the system looks into for a name alone.
CheckedVector<CheckedText> SystemFolders() {
    CheckedVector<CheckedText> folders;
    char folder[PathSize] = "";
    if (GetModuleFileNameA(nullptr, folder, PathSize) < PathSize) {
        const std::string_view program = folder;
        folders.emplace_back(program.substr(0, program.find_last_of('\\')));
    }
    if (GetSystemDirectoryA(folder, PathSize) < PathSize) folders.emplace_back(folder);
    if (GetWindowsDirectoryA(folder, PathSize) < PathSize) {
        folders.emplace_back(folder);
        folders.emplace_back(folder).append("\\system");
    }
    folders.emplace_back(".");
    CheckedText path(32767, '\0');
    path.resize(std::min<std::size_t>(
        GetEnvironmentVariableA("PATH", path.data(), static_cast<DWORD>(path.size())),
        path.size()));
    for (std::size_t at = 0; at < path.size();) {
        const std::size_t end = std::min(path.find(';', at), path.size());
        if (end > at) folders.emplace_back(path, at, end - at);
        at = end + 1;
    }
    return folders;
}

}  // namespace

CheckedVector<CheckedText> ReadFolder(const char* folder) {
    CheckedVector<CheckedText> names;
    CheckedText pattern(folder);
    pattern.append("\\*");
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return names;
    try {
        do {
            names.emplace_back(entry.cFileName);
        } while (FindNextFileA(search, &entry));
    } catch (...) {
        FindClose(search);
        throw;
    }
    FindClose(search);
    return names;
}

bool ModuleSearch::FindIn(const char* folder, const char* name, char (&path)[PathSize]) {
    if (misses_ >= MissesBeforeListing && IsListedByName(name) &&
        listings_.Find(folder, name).empty()) {
        return false;
    }
    return Search(folder, name, path);
}

bool ModuleSearch::Find(const char* name, char (&path)[PathSize]) {
    if (misses_ >= MissesBeforeListing && IsListedByName(name)) {
        if (folders_.empty()) folders_ = SystemFolders();
        const bool listed =
            std::any_of(folders_.begin(), folders_.end(), [&](const CheckedText& folder) {
                return !listings_.Find(folder.c_str(), name).empty();
            });
        if (!listed) return false;
    }
    const bool found = Search(nullptr, name, path);
    if (!found) ++misses_;
    return found;
}

}  // namespace brcore8
