// Dates and times. A file time counts steps of 100 ns since 1601-01-01; each function returns 0 for
// what it cannot convert. Any thread.
#ifndef BRCORE8_PLATFORM_POSIX_TIMES_H
#define BRCORE8_PLATFORM_POSIX_TIMES_H

#include <brcore8/platform/posix/list_messages.h>

#include "platform/posix/files.h"

#include <cstdint>

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

// The digits of a DOS date (year from 1980, month, day: 7, 4 and 5 bits) and time (hour, minute,
// half seconds: 5, 6 and 5 bits) as a file time, in no zone. Digits that no calendar has are
// refused.
BOOL DosDateTimeToFileTime(WORD date, WORD time, FILETIME* fileTime) noexcept;
// The reading of a moment in the zone of this process, whatever zone is named.
BOOL SystemTimeToTzSpecificLocalTime(const void* zone, const SYSTEMTIME* utc,
                                     SYSTEMTIME* local) noexcept;
// The times of an open file; null leaves one as it is. There is no time of creation to set.
BOOL SetFileTime(HANDLE file, const FILETIME* creation, const FILETIME* access,
                 const FILETIME* write) noexcept;

#endif
