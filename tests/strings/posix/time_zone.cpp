// The zone of the process, which only this system lets a test choose.
#include <brcore8/strings/time.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

class Zone {
public:
    explicit Zone(const char* zone) {
        const char* before = std::getenv("TZ");
        before_ = before != nullptr ? before : "";
        setenv("TZ", zone, 1);
        tzset();
    }
    ~Zone() {
        if (before_.empty())
            unsetenv("TZ");
        else
            setenv("TZ", before_.c_str(), 1);
        tzset();
    }

private:
    std::string before_;
};

TEST(TimeZone, FollowsItsRules) {
    const Zone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    const SCalendarTime winter{2024, 1, 15, 12, 0, 0};
    const SCalendarTime summer{2024, 7, 15, 12, 0, 0};
    EXPECT_EQ(STime::FromLocal(winter).GetUtc().hour, 11);
    EXPECT_EQ(STime::FromLocal(summer).GetUtc().hour, 10);
    EXPECT_EQ(STime::FromLocal(summer).GetLocal(), summer);
    const SCalendarTime repeated{2024, 10, 27, 2, 30, 0};
    EXPECT_EQ(STime::FromLocal(repeated, 1).GetUtc().hour, 0);
    EXPECT_EQ(STime::FromLocal(repeated, 0).GetUtc().hour, 1);
}

}  // namespace
