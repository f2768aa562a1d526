// The arithmetic of font sizes, here as on the platform that it comes from.
#include <gtest/gtest.h>

#include <climits>

#include "platform/platform.h"

namespace {

TEST(Fonts, MulDivRoundsToTheNearest) {
    const struct {
        const char* name;
        int number, numerator, denominator, result;
    } rows[] = {
        {"exact", 12, 96, 72, 16},
        {"up from a half", 7, 3, 2, 11},
        {"down from less", 10, 96, 72, 13},
        {"a negative half away from zero", -7, 3, 2, -11},
        {"negative denominator", 7, 3, -2, -11},
        {"product beyond 32 bits", INT_MAX, INT_MAX, INT_MAX, INT_MAX},
        {"largest result", INT_MAX, 1, 1, INT_MAX},
        {"result beyond 32 bits", INT_MAX, 2, 1, -1},
        {"no denominator", 1, 1, 0, -1},
        {"nothing", 0, 5, 7, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(MulDiv(row.number, row.numerator, row.denominator), row.result) << row.name;
}

}  // namespace
