// Files by handle. A handle is a file descriptor; paths are bytes. What is not listed in a promise
// is ignored: sharing, security, templates. Each returns 0 on failure and GetLastError() tells why,
// among the few reasons that the library distinguishes. Any thread, one thread a handle.
#ifndef BRCORE8_PLATFORM_POSIX_FILES_H
#define BRCORE8_PLATFORM_POSIX_FILES_H

#include <brcore8/platform/posix/last_error.h>

#include <cstdint>

union LARGE_INTEGER {
    std::int64_t QuadPart;
};
struct BY_HANDLE_FILE_INFORMATION {
    DWORD nNumberOfLinks;
};

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(std::intptr_t(-1));
constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD FILE_SHARE_READ = 1;
constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_DEVICE = 0x40;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
constexpr DWORD FILE_BEGIN = 0;
constexpr DWORD FILE_CURRENT = 1;
constexpr DWORD FILE_END = 2;
constexpr DWORD MOVEFILE_REPLACE_EXISTING = 1;
constexpr DWORD MOVEFILE_WRITE_THROUGH = 8;

// Opens or makes a file. Folders are refused. A file made with CREATE_NEW can be read and written
// by its owner alone until ReplaceFileA gives it another's permissions.
HANDLE CreateFileA(const char* path, DWORD access, DWORD share, void* security, DWORD disposition,
                   DWORD flags, HANDLE like) noexcept;
BOOL CloseHandle(HANDLE file) noexcept;

// One read or write; *done bytes, which may be fewer than `count`.
BOOL ReadFile(HANDLE file, void* buffer, DWORD count, DWORD* done, void* overlapped) noexcept;
BOOL WriteFile(HANDLE file, const void* data, DWORD count, DWORD* done, void* overlapped) noexcept;
BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, LARGE_INTEGER* position,
                      DWORD method) noexcept;
BOOL SetEndOfFile(HANDLE file) noexcept;
// Returns when the content is on the disk; at once for pipes and devices, which have no disk.
BOOL FlushFileBuffers(HANDLE file) noexcept;

// Regular files only.
BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size) noexcept;
BOOL GetFileInformationByHandle(HANDLE file, BY_HANDLE_FILE_INFORMATION* information) noexcept;
// Follows links. A pipe, a device or a socket is FILE_ATTRIBUTE_DEVICE; what this process may not
// write is FILE_ATTRIBUTE_READONLY.
DWORD GetFileAttributesA(const char* path) noexcept;

// Puts `replacement` in the place of `replaced`, whose owner and group (as far as this process may
// give them), permissions and extended attributes it takes over; the change is on the disk on
// return. No backup is made.
BOOL ReplaceFileA(const char* replaced, const char* replacement, const char* backup, DWORD flags,
                  void* exclude, void* reserved) noexcept;
// Renames within one file system, over an existing file; the change is on the disk on return when
// the flags say so.
BOOL MoveFileExA(const char* from, const char* to, DWORD flags) noexcept;
BOOL DeleteFileA(const char* path) noexcept;
DWORD GetCurrentProcessId() noexcept;

#endif
