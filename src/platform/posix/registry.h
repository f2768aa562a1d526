// The platform's registry over two SQLite files: the user's tree and the machine's (where they are
// and how they are kept: registry_store.h).
//
// Keys and values are bytes, found in any case under the process's code page. Each function returns
// ERROR_SUCCESS or the platform's code for the reason. A name that is too long, or a path of more
// than 512 levels, is ERROR_INVALID_PARAMETER. Classes are always empty, times are not kept;
// options, security and links are not listed here and ignored.
//
// Any thread, also several with one key. A key that was closed, or never opened, is
// ERROR_INVALID_HANDLE; one that someone deleted is ERROR_KEY_DELETED. After a fork the child may
// go on with the keys.
#ifndef BRCORE8_PLATFORM_POSIX_REGISTRY_H
#define BRCORE8_PLATFORM_POSIX_REGISTRY_H

#include <brcore8/platform/types.h>

#include <cstdint>

#include "platform/posix/files.h"

using LSTATUS = long;
using REGSAM = DWORD;
using BYTE = unsigned char;

inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::intptr_t(INT32_MIN) + 1);
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::intptr_t(INT32_MIN) + 2);

constexpr REGSAM KEY_READ = 0x20019;
constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;
constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
constexpr DWORD REG_CREATED_NEW_KEY = 1;
constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_EXPAND_SZ = 2;
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;
constexpr DWORD REG_DWORD_BIG_ENDIAN = 5;

// Opens the key `path` below `key`, or `key` once more when the path is null or empty. Backslashes
// at the end of the path do not count.
LSTATUS RegOpenKeyExA(HKEY key, const char* path, DWORD options, REGSAM access,
                      HKEY* opened) noexcept;
// The same, making what is missing, all of it or nothing. `disposition`, when not null, tells
// which.
LSTATUS RegCreateKeyExA(HKEY key, const char* path, DWORD reserved, char* keyClass, DWORD options,
                        REGSAM access, void* security, HKEY* opened, DWORD* disposition) noexcept;
// A root stays open.
LSTATUS RegCloseKey(HKEY key) noexcept;
// Deletes the key `path` below `key`, with its values: ERROR_ACCESS_DENIED when it has keys below
// it, or is a root. What `key` was opened for does not matter.
LSTATUS RegDeleteKeyA(HKEY key, const char* path) noexcept;

// Writing takes a key opened for it: otherwise ERROR_ACCESS_DENIED. A null name is the empty one.
LSTATUS RegSetValueExA(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD size) noexcept;
LSTATUS RegDeleteValueA(HKEY key, const char* name) noexcept;
// Type and data, each when asked for. *size tells the room at `data` and receives the bytes of the
// value: ERROR_MORE_DATA when they do not fit. Text without its terminator gets one where there is
// room.
LSTATUS RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* size) noexcept;

// The index-th key or value in the order of the names without case; ERROR_NO_MORE_ITEMS behind the
// last. The sizes count the terminator of the room given and not that of the name returned:
// ERROR_MORE_DATA when it does not fit. Walking upwards costs one step an index.
LSTATUS RegEnumKeyExA(HKEY key, DWORD index, char* name, DWORD* size, DWORD* reserved,
                      char* keyClass, DWORD* classSize, void* written) noexcept;
LSTATUS RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD* reserved,
                      DWORD* type, BYTE* data, DWORD* size) noexcept;

// Copies a text with each %NAME% replaced by the environment variable of that name, or of one that
// differs in case alone; unknown ones stay as they are. Returns the bytes of the whole result with
// its terminator, of which at most `size` are written; 0 when they would be more than 32,767.
DWORD ExpandEnvironmentStringsA(const char* source, char* out, DWORD size) noexcept;

#endif
