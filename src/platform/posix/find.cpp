#include "platform/posix/find.h"

#include <brcore8/platform/posix/last_error.h>

#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace {

struct Search {
    ~Search() {
        if (folder != nullptr) closedir(folder);
    }

    DIR* folder = nullptr;  // null: the one entry was found already
    std::string pattern;
};

FILETIME FileTimeOf(const timespec& time) noexcept {
    const std::int64_t steps =
        (time.tv_sec + std::int64_t{11'644'473'600}) * 10'000'000 + time.tv_nsec / 100;
    return {static_cast<DWORD>(steps), static_cast<DWORD>(steps >> 32)};
}

DWORD AttributesOf(const struct stat& facts, const char* name) noexcept {
    DWORD attributes = 0;
    if (S_ISDIR(facts.st_mode)) {
        attributes |= FILE_ATTRIBUTE_DIRECTORY;
    } else if (S_ISLNK(facts.st_mode)) {
        attributes |= FILE_ATTRIBUTE_REPARSE_POINT;
    } else if (!S_ISREG(facts.st_mode)) {
        attributes |= FILE_ATTRIBUTE_DEVICE;
    }
    if ((facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) attributes |= FILE_ATTRIBUTE_READONLY;
    if (name[0] == '.') attributes |= FILE_ATTRIBUTE_HIDDEN;
    return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

// False where the entry is gone again or its name has no room.
bool Describe(int folder, const char* path, const char* name, WIN32_FIND_DATAA* found) noexcept {
    struct stat facts;
    const std::size_t length = std::strlen(name);
    if (length >= sizeof found->cFileName ||
        fstatat(folder, path, &facts, AT_SYMLINK_NOFOLLOW) != 0) {
        return false;
    }
    found->dwFileAttributes = AttributesOf(facts, name);
    found->ftCreationTime = {0, 0};
    found->ftLastAccessTime = FileTimeOf(facts.st_atim);
    found->ftLastWriteTime = FileTimeOf(facts.st_mtim);
    found->nFileSizeHigh = static_cast<DWORD>(static_cast<std::uint64_t>(facts.st_size) >> 32);
    found->nFileSizeLow = static_cast<DWORD>(facts.st_size);
    std::memcpy(found->cFileName, name, length + 1);
    return true;
}

// The two special characters are the same as the system's; its others are taken literally.
std::string PatternOf(const std::string& name) {
    if (name == "*.*") return "*";
    std::string pattern;
    for (const char c : name) {
        if (c == '[' || c == '\\') pattern += '\\';
        pattern += c;
    }
    return pattern;
}

std::unique_ptr<Search> Start(const std::string& mask, WIN32_FIND_DATAA* found) {
    const std::size_t slash = mask.rfind('/');
    const std::string name = slash == mask.npos ? mask : mask.substr(slash + 1);
    auto search = std::make_unique<Search>();
    if (name.find_first_of("*?") == name.npos) {
        if (name.empty() || !Describe(AT_FDCWD, mask.c_str(), name.c_str(), found)) return nullptr;
        return search;
    }
    search->folder = opendir(slash == mask.npos ? "." : mask.substr(0, slash + 1).c_str());
    search->pattern = PatternOf(name);
    if (search->folder == nullptr || !FindNextFileA(search.get(), found)) return nullptr;
    return search;
}

}  // namespace

HANDLE FindFirstFileA(const char* mask, WIN32_FIND_DATAA* found) noexcept {
    try {
        std::unique_ptr<Search> search = Start(mask, found);
        return search != nullptr ? search.release() : INVALID_HANDLE_VALUE;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return INVALID_HANDLE_VALUE;
    }
}

BOOL FindNextFileA(HANDLE handle, WIN32_FIND_DATAA* found) noexcept {
    auto& search = *static_cast<Search*>(handle);
    if (search.folder == nullptr) return 0;
    while (const dirent* entry = readdir(search.folder)) {
        if (fnmatch(search.pattern.c_str(), entry->d_name, 0) == 0 &&
            Describe(dirfd(search.folder), entry->d_name, entry->d_name, found)) {
            return 1;
        }
    }
    return 0;
}

BOOL FindClose(HANDLE handle) noexcept {
    delete static_cast<Search*>(handle);
    return 1;
}

BOOL CreateDirectoryA(const char* path, void*) noexcept {
    return mkdir(path, 0777) == 0;
}
