#include "platform/posix/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace {

int Descriptor(HANDLE file) noexcept {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(file));
}

HANDLE HandleOf(int descriptor) noexcept {
    return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(descriptor));
}

// Repeats a call that a signal interrupted.
template <typename Call>
auto Retry(Call call) noexcept {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

// What an extended attribute holds (access lists, labels) belongs to the permissions. Attributes
// that cannot be copied are left out, as when the file system knows none.
void CopyAttributes(const char* from, const char* to) {
    std::string names(4096, '\0');
    const ssize_t bytes = listxattr(from, names.data(), names.size());
    if (bytes <= 0) return;
    names.resize(static_cast<std::size_t>(bytes));
    std::string value(65536, '\0');  // the kernel's own limit
    for (std::size_t at = 0; at < names.size(); at += names.find('\0', at) - at + 1) {
        const char* const name = names.data() + at;
        const ssize_t size = getxattr(from, name, value.data(), value.size());
        if (size >= 0) (void)setxattr(to, name, value.data(), static_cast<std::size_t>(size), 0);
    }
}

// The owner first: changing it takes the set-user bits away.
bool CopyIdentity(const char* from, const char* to) {
    struct stat facts;
    if (stat(from, &facts) != 0) return false;
    if (chown(to, facts.st_uid, facts.st_gid) != 0 &&
        chown(to, static_cast<uid_t>(-1), facts.st_gid) != 0) {
        // Neither may be given: the bits for the old group must not serve another one.
        facts.st_mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    }
    if (chmod(to, facts.st_mode & 07777) != 0) return false;
    CopyAttributes(from, to);
    return true;
}

// The platform's own codes share errno, above every error of the system.
constexpr int kPlatformCodes = 0x10000;

// Makes the change of a name in its folder last. A folder that cannot be opened cannot be flushed.
void FlushFolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    (void)Retry([&] { return fsync(descriptor); });
    close(descriptor);
}

}  // namespace

DWORD GetLastError() noexcept {
    if (errno >= kPlatformCodes) return static_cast<DWORD>(errno - kPlatformCodes);
    switch (errno) {
        case EACCES:
        case EPERM:
        case EROFS:
            return ERROR_ACCESS_DENIED;
        case EEXIST:
            return ERROR_FILE_EXISTS;
        case EXDEV:
            return ERROR_NOT_SAME_DEVICE;
        case ETXTBSY:
            return ERROR_SHARING_VIOLATION;
        case EBUSY:
            return ERROR_BUSY;
        default:
            return ERROR_GEN_FAILURE;
    }
}

void SetLastError(DWORD code) noexcept {
    errno = kPlatformCodes + static_cast<int>(code & 0xFFFF);
}

HANDLE CreateFileA(const char* path, DWORD access, DWORD, void*, DWORD disposition, DWORD,
                   HANDLE) noexcept {
    const bool reads = (access & GENERIC_READ) != 0;
    const bool writes = (access & GENERIC_WRITE) != 0;
    int flags = O_CLOEXEC | O_NOCTTY | (reads && writes ? O_RDWR : writes ? O_WRONLY : O_RDONLY);
    if (disposition == CREATE_ALWAYS) flags |= O_CREAT | O_TRUNC;
    if (disposition == CREATE_NEW) flags |= O_CREAT | O_EXCL;
    const mode_t mode = disposition == CREATE_NEW ? 0600 : 0666;
    const int descriptor = Retry([&] { return open(path, flags, mode); });
    if (descriptor < 0) return INVALID_HANDLE_VALUE;
    struct stat facts;
    if (fstat(descriptor, &facts) == 0 && !S_ISDIR(facts.st_mode)) return HandleOf(descriptor);
    close(descriptor);
    errno = EACCES;
    return INVALID_HANDLE_VALUE;
}

BOOL CloseHandle(HANDLE file) noexcept {
    return close(Descriptor(file)) == 0;
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD count, DWORD* done, void*) noexcept {
    const ssize_t bytes = Retry([&] { return read(Descriptor(file), buffer, count); });
    *done = bytes < 0 ? 0 : static_cast<DWORD>(bytes);
    return bytes >= 0;
}

BOOL WriteFile(HANDLE file, const void* data, DWORD count, DWORD* done, void*) noexcept {
    const ssize_t bytes = Retry([&] { return write(Descriptor(file), data, count); });
    *done = bytes < 0 ? 0 : static_cast<DWORD>(bytes);
    return bytes >= 0;
}

BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, LARGE_INTEGER* position,
                      DWORD method) noexcept {
    constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
    const off_t where = lseek(Descriptor(file), distance.QuadPart, origins[method]);
    if (where >= 0 && position != nullptr) position->QuadPart = where;
    return where >= 0;
}

BOOL SetEndOfFile(HANDLE file) noexcept {
    const off_t where = lseek(Descriptor(file), 0, SEEK_CUR);
    return where >= 0 && Retry([&] { return ftruncate(Descriptor(file), where); }) == 0;
}

BOOL FlushFileBuffers(HANDLE file) noexcept {
    return Retry([&] { return fsync(Descriptor(file)); }) == 0 || errno == EINVAL;
}

BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size) noexcept {
    struct stat facts;
    if (fstat(Descriptor(file), &facts) != 0 || !S_ISREG(facts.st_mode)) return 0;
    size->QuadPart = facts.st_size;
    return 1;
}

BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* information) noexcept {
    struct stat facts;
    if (fstat(Descriptor(file), &facts) != 0) return 0;
    information->nNumberOfLinks = static_cast<DWORD>(facts.st_nlink);
    return 1;
}

DWORD GetFileAttributesA(const char* path) noexcept {
    struct stat facts;
    if (stat(path, &facts) != 0) return INVALID_FILE_ATTRIBUTES;
    DWORD attributes = access(path, W_OK) != 0 ? FILE_ATTRIBUTE_READONLY : 0;
    if (S_ISDIR(facts.st_mode)) {
        attributes |= FILE_ATTRIBUTE_DIRECTORY;
    } else if (!S_ISREG(facts.st_mode)) {
        attributes |= FILE_ATTRIBUTE_DEVICE;
    }
    return attributes != 0 ? attributes : FILE_ATTRIBUTE_NORMAL;
}

BOOL ReplaceFileA(const char* replaced, const char* replacement, const char*, DWORD, void*,
                  void*) noexcept {
    try {
        if (!CopyIdentity(replaced, replacement)) return 0;
        return MoveFileExA(replacement, replaced, MOVEFILE_WRITE_THROUGH);
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return 0;
    }
}

BOOL MoveFileExA(const char* from, const char* to, DWORD flags) noexcept {
    if (std::rename(from, to) != 0) return 0;
    if ((flags & MOVEFILE_WRITE_THROUGH) == 0) return 1;
    try {
        FlushFolderOf(to);
    } catch (const std::bad_alloc&) {
        // The file is in its place; only the promise that it lasts is weaker.
    }
    return 1;
}

BOOL DeleteFileA(const char* path) noexcept {
    return unlink(path) == 0;
}

DWORD GetCurrentProcessId() noexcept {
    return static_cast<DWORD>(getpid());
}
