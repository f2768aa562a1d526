// Why the last call of the platform failed in this thread.
#ifndef BRCORE8_PLATFORM_POSIX_LAST_ERROR_H
#define BRCORE8_PLATFORM_POSIX_LAST_ERROR_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/posix/window_types.h>

// The code that a call of the desktop set. After one of files it is made of errno: no permission,
// the file exists, it is in use, it is on another device; everything else is ERROR_GEN_FAILURE.
BRCORE8_API DWORD GetLastError() noexcept;
// Sets the next answer, and errno to a number that is no error of the system.
BRCORE8_API void SetLastError(DWORD code) noexcept;

// The codes, as its own header has them.
constexpr long ERROR_SUCCESS = 0;
constexpr long ERROR_FILE_NOT_FOUND = 2;
constexpr long ERROR_ACCESS_DENIED = 5;
constexpr long ERROR_INVALID_HANDLE = 6;
constexpr long ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr long ERROR_NOT_SAME_DEVICE = 17;
constexpr long ERROR_GEN_FAILURE = 31;
constexpr long ERROR_SHARING_VIOLATION = 32;
constexpr long ERROR_FILE_EXISTS = 80;
constexpr long ERROR_INVALID_PARAMETER = 87;
constexpr long ERROR_DISK_FULL = 112;
constexpr long ERROR_CALL_NOT_IMPLEMENTED = 120;
constexpr long ERROR_BUSY = 170;
constexpr long ERROR_MORE_DATA = 234;
constexpr long ERROR_NO_MORE_ITEMS = 259;
constexpr long ERROR_BADDB = 1009;               // the file is no store, or damaged
constexpr long ERROR_REGISTRY_IO_FAILED = 1016;  // the disk refuses
constexpr long ERROR_KEY_DELETED = 1018;
constexpr long ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr long ERROR_INVALID_MENU_HANDLE = 1401;
constexpr long ERROR_INVALID_CURSOR_HANDLE = 1402;
constexpr long ERROR_INVALID_HOOK_HANDLE = 1404;
constexpr long ERROR_TLW_WITH_WSCHILD = 1406;
constexpr long ERROR_CANNOT_FIND_WND_CLASS = 1407;
constexpr long ERROR_WINDOW_OF_OTHER_THREAD = 1408;
constexpr long ERROR_CLASS_ALREADY_EXISTS = 1410;
constexpr long ERROR_CLASS_DOES_NOT_EXIST = 1411;
constexpr long ERROR_CLASS_HAS_WINDOWS = 1412;
constexpr long ERROR_INVALID_INDEX = 1413;
constexpr long ERROR_CLIPBOARD_NOT_OPEN = 1418;
constexpr long ERROR_CONTROL_ID_NOT_FOUND = 1421;
constexpr long ERROR_INVALID_HOOK_FILTER = 1426;
constexpr long ERROR_INVALID_THREAD_ID = 1444;
constexpr long ERROR_NOT_ENOUGH_QUOTA = 1816;

#endif
