// STime: a moment, in whole seconds since 1970-01-01 00:00:00 UTC, and its reading in the time
// zone that this process runs in.
//
//     const STime packed = STime::FromLocal({2024, 2, 29, 12, 30, 0});
//     if (packed < STime::Now()) ...
//
// Threads: a value like a number. Nothing here fails: what cannot be expressed says so.
#ifndef BRCORE8_STRINGS_TIME_H
#define BRCORE8_STRINGS_TIME_H

#include <brcore8/platform/export.h>

#include <compare>
#include <cstdint>

// The digits of a date and a time of day.
struct SCalendarTime {
    int year = 1970;
    int month = 1;  // 1 to 12
    int day = 1;    // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;

    auto operator<=>(const SCalendarTime&) const = default;
};

class BRCORE8_API STime {
public:
    // The moment 0.
    constexpr STime() noexcept = default;
    constexpr explicit STime(std::int64_t seconds) noexcept : seconds_(seconds) {}

    static STime Now() noexcept;
    // From the digits of a clock in this zone, from 1970 on. `summer` tells the two readings of a
    // repeated hour apart: 0 standard time, 1 summer time, -1 as the zone's rules have it. Digits
    // beyond their range are carried over, as 30 February to March; the moment 0 for what no clock
    // of this system shows.
    static STime FromLocal(const SCalendarTime& local, int summer = -1) noexcept;
    static STime FromUtc(const SCalendarTime& utc) noexcept;
    // From a file time: steps of 100 ns since 1601-01-01 UTC; fractions of a second are dropped.
    static STime FromFileTime(std::uint64_t fileTime) noexcept;

    std::int64_t GetSeconds() const noexcept { return seconds_; }
    // 0 for moments before 1601.
    std::uint64_t GetFileTime() const noexcept;
    SCalendarTime GetUtc() const noexcept;
    // By the zone's rules of that day. Outside the years 1601 to 9999, which the system's clock
    // does not know, the same as GetUtc.
    SCalendarTime GetLocal() const noexcept;

    auto operator<=>(const STime&) const = default;

private:
    std::int64_t seconds_ = 0;
};

#endif
