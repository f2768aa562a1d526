#include "platform/posix/times.h"

#include <sys/stat.h>
#include <chrono>
#include <ctime>

namespace {

constexpr std::int64_t kStepsASecond = 10'000'000;
constexpr std::int64_t kSecondsFrom1601 = 11'644'473'600;

std::int64_t StepsOf(const FILETIME& fileTime) noexcept {
    return static_cast<std::int64_t>(std::uint64_t{fileTime.dwHighDateTime} << 32 |
                                     fileTime.dwLowDateTime);
}

std::int64_t SecondsOf(std::chrono::year_month_day date, int hour, int minute,
                       int second) noexcept {
    return std::chrono::sys_days(date).time_since_epoch().count() * std::int64_t{86'400} +
           hour * 3600 + minute * 60 + second;
}

timespec TimeOf(const FILETIME* fileTime) noexcept {
    if (fileTime == nullptr) return {0, UTIME_OMIT};
    const std::int64_t steps = StepsOf(*fileTime);
    return {static_cast<std::time_t>(steps / kStepsASecond - kSecondsFrom1601),
            static_cast<long>(steps % kStepsASecond * 100)};
}

}  // namespace

BOOL DosDateTimeToFileTime(WORD date, WORD time, FILETIME* fileTime) noexcept {
    using namespace std::chrono;
    const year_month_day day{year(1980 + (date >> 9)), month(date >> 5 & 15),
                             std::chrono::day(date & 31)};
    const int hour = time >> 11;
    const int minute = time >> 5 & 63;
    const int second = (time & 31) * 2;
    if (!day.ok() || hour > 23 || minute > 59 || second > 59) return 0;
    const std::int64_t steps =
        (SecondsOf(day, hour, minute, second) + kSecondsFrom1601) * kStepsASecond;
    fileTime->dwLowDateTime = static_cast<DWORD>(steps);
    fileTime->dwHighDateTime = static_cast<DWORD>(steps >> 32);
    return 1;
}

BOOL SystemTimeToTzSpecificLocalTime(const void*, const SYSTEMTIME* utc,
                                     SYSTEMTIME* local) noexcept {
    using namespace std::chrono;
    const year_month_day date{year(utc->wYear), month(utc->wMonth), day(utc->wDay)};
    if (!date.ok()) return 0;
    const std::time_t moment = SecondsOf(date, utc->wHour, utc->wMinute, utc->wSecond);
    std::tm digits;
    if (localtime_r(&moment, &digits) == nullptr) return 0;
    *local = {static_cast<WORD>(digits.tm_year + 1900), static_cast<WORD>(digits.tm_mon + 1),
              static_cast<WORD>(digits.tm_wday),        static_cast<WORD>(digits.tm_mday),
              static_cast<WORD>(digits.tm_hour),        static_cast<WORD>(digits.tm_min),
              static_cast<WORD>(digits.tm_sec),         utc->wMilliseconds};
    return 1;
}

BOOL SetFileTime(HANDLE file, const FILETIME*, const FILETIME* access,
                 const FILETIME* write) noexcept {
    const timespec times[] = {TimeOf(access), TimeOf(write)};
    return futimens(static_cast<int>(reinterpret_cast<std::intptr_t>(file)), times) == 0;
}
