// Walking folders, making them, and what the streams need beside. Each fails with 0 or
// INVALID_HANDLE_VALUE. Any thread, one thread a handle.
#ifndef BRCORE8_PLATFORM_POSIX_FIND_H
#define BRCORE8_PLATFORM_POSIX_FIND_H

#include "platform/posix/files.h"
#include "platform/posix/times.h"

constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;
constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x2;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;

struct WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;  // always 0: not every file system keeps one
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    char cFileName[260];
};

// The first entry of a folder whose name matches the last part of `mask`, in which "*" is any run
// of bytes and "?" any one, and "*.*" matches all; without these, the one entry of that path.
// Links are told, not followed; names that begin with "." are hidden.
HANDLE FindFirstFileA(const char* mask, WIN32_FIND_DATAA* found) noexcept;
BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* found) noexcept;
BOOL FindClose(HANDLE search) noexcept;

BOOL CreateDirectoryA(const char* path, void* security) noexcept;

#endif
