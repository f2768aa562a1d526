#include <brcore8/strings/time.h>

#include "platform/platform.h"

#include <algorithm>
#include <chrono>
#include <ctime>

namespace {

constexpr std::int64_t kStepsASecond = 10'000'000;
constexpr std::int64_t kSecondsFrom1601 = 11'644'473'600;
constexpr std::int64_t kSecondsADay = 86'400;

std::int64_t DaysOf(const SCalendarTime& digits) noexcept {
    using namespace std::chrono;
    // Months beyond a year are carried over first: the calendar takes no others.
    const std::int64_t months = std::int64_t{digits.year} * 12 + digits.month - 1;
    const std::int64_t year = (months >= 0 ? months : months - 11) / 12;
    const auto monthOfYear = static_cast<unsigned>(months - year * 12 + 1);
    if (year < -32767 || year > 32767) return 0;
    const sys_days first = std::chrono::year(static_cast<int>(year)) / month(monthOfYear) / 1;
    return first.time_since_epoch().count() + digits.day - 1;
}

}  // namespace

STime STime::Now() noexcept {
    return STime(static_cast<std::int64_t>(std::time(nullptr)));
}

STime STime::FromUtc(const SCalendarTime& utc) noexcept {
    return STime(DaysOf(utc) * kSecondsADay + std::int64_t{utc.hour} * 3600 +
                 std::int64_t{utc.minute} * 60 + utc.second);
}

STime STime::FromLocal(const SCalendarTime& local, int summer) noexcept {
    std::tm digits{};
    digits.tm_year = local.year - 1900;
    digits.tm_mon = local.month - 1;
    digits.tm_mday = local.day;
    digits.tm_hour = local.hour;
    digits.tm_min = local.minute;
    digits.tm_sec = local.second;
    digits.tm_isdst = summer;
    const std::time_t seconds = local.year >= 1970 && local.year <= 9999 ? std::mktime(&digits) : 0;
    return STime(seconds < 0 ? 0 : static_cast<std::int64_t>(seconds));
}

STime STime::FromFileTime(std::uint64_t fileTime) noexcept {
    return STime(static_cast<std::int64_t>(fileTime / kStepsASecond) - kSecondsFrom1601);
}

std::uint64_t STime::GetFileTime() const noexcept {
    constexpr std::int64_t last = INT64_MAX / kStepsASecond - kSecondsFrom1601;
    if (seconds_ < -kSecondsFrom1601) return 0;
    return static_cast<std::uint64_t>((std::min(seconds_, last) + kSecondsFrom1601) *
                                      kStepsASecond);
}

SCalendarTime STime::GetUtc() const noexcept {
    using namespace std::chrono;
    constexpr std::int64_t furthest = 30'000 * 366 * kSecondsADay;  // what the calendar can express
    const std::int64_t seconds = std::clamp(seconds_, -furthest, furthest);
    const std::int64_t day = (seconds >= 0 ? seconds : seconds - (kSecondsADay - 1)) / kSecondsADay;
    const year_month_day date{sys_days(days(day))};
    const auto rest = static_cast<int>(seconds - day * kSecondsADay);
    return {int(date.year()),
            static_cast<int>(unsigned(date.month())),
            static_cast<int>(unsigned(date.day())),
            rest / 3600,
            rest / 60 % 60,
            rest % 60};
}

SCalendarTime STime::GetLocal() const noexcept {
    const SCalendarTime utc = GetUtc();
    if (utc.year < 1601 || utc.year > 9999) return utc;
    SYSTEMTIME world{};
    world.wYear = static_cast<WORD>(utc.year);
    world.wMonth = static_cast<WORD>(utc.month);
    world.wDay = static_cast<WORD>(utc.day);
    world.wHour = static_cast<WORD>(utc.hour);
    world.wMinute = static_cast<WORD>(utc.minute);
    world.wSecond = static_cast<WORD>(utc.second);
    SYSTEMTIME local;
    if (!SystemTimeToTzSpecificLocalTime(nullptr, &world, &local)) return utc;
    return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
}
