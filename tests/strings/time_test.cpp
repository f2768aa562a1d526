#include <brcore8/strings/time.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace {

TEST(Time, ReadsTheCalendar) {
    const struct {
        const char* name;
        std::int64_t seconds;
        SCalendarTime utc;
    } rows[] = {
        {"the moment 0", 0, {1970, 1, 1, 0, 0, 0}},
        {"the second before", -1, {1969, 12, 31, 23, 59, 59}},
        {"leap day", 951'782'400, {2000, 2, 29, 0, 0, 0}},
        {"beyond 32 bits", 4'107'542'400, {2100, 3, 1, 0, 0, 0}},
        {"the first file time", -11'644'473'600, {1601, 1, 1, 0, 0, 0}},
        {"before Christ", -62'198'755'200, {-1, 1, 1, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(STime(row.seconds).GetUtc(), row.utc);
        EXPECT_EQ(STime::FromUtc(row.utc).GetSeconds(), row.seconds);
    }
    EXPECT_EQ(STime::FromUtc({2023, 14, 30, 25, 61, 61}), STime::FromUtc({2024, 3, 2, 2, 2, 1}));
    EXPECT_GT(STime(INT64_MAX).GetUtc().year, 9999);
    EXPECT_LT(STime(INT64_MIN).GetUtc().year, 0);
}

TEST(Time, ConvertsFileTimes) {
    EXPECT_EQ(STime().GetFileTime(), 116'444'736'000'000'000u);
    EXPECT_EQ(STime::FromFileTime(116'444'736'019'999'999u), STime(1));
    EXPECT_EQ(STime::FromFileTime(0).GetSeconds(), -11'644'473'600);
    EXPECT_EQ(STime(-11'644'473'601).GetFileTime(), 0u);
    EXPECT_LE(STime(INT64_MAX).GetFileTime(), static_cast<std::uint64_t>(INT64_MAX));
    EXPECT_GT(STime::FromFileTime(UINT64_MAX), STime::Now());
}

TEST(Time, LocalDigitsComeBack) {
    for (const SCalendarTime& digits :
         {SCalendarTime{1980, 1, 1, 0, 0, 0}, SCalendarTime{2024, 2, 29, 23, 59, 58},
          SCalendarTime{2107, 7, 15, 12, 0, 0}}) {
        EXPECT_EQ(STime::FromLocal(digits).GetLocal(), digits) << digits.year;
    }
    EXPECT_EQ(STime::FromLocal({1900, 1, 1, 0, 0, 0}), STime());
    EXPECT_EQ(STime::FromLocal({2024, 1, 31, 0, 0, 0}), STime::FromLocal({2024, 0, 62, 0, 0, 0}));
    EXPECT_LT(STime(1'700'000'000), STime::Now());
}

}  // namespace
