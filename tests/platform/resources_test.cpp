// The string tables that programs bring along; the same on every system.
#include <brcore8/platform/resources.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/platform.h"

namespace {

TEST(Resources, LoadStringCutsToItsBuffer) {
    const struct {
        const char* name;
        unsigned id;
        int size;
        std::size_t length;
    } rows[] = {
        {"fits", 7, 64, 5},
        {"fits exactly", 7, 6, 5},
        {"one byte short", 7, 5, 4},
        {"terminator only", 7, 1, 0},
        {"absent", 8, 64, 0},
        {"low 16 bits count", 0x10007, 64, 5},
        {"300 characters", 300, 512, 300},
        {"511 in 512", 511, 512, 511},
        {"512 in 512", 512, 512, 511},
        {"1000 in 512", 1000, 512, 511},
        {"1000 in 2000", 1000, 2000, 1000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string buffer(2001, '#');
        EXPECT_EQ(LoadStringA(SThisModule(), row.id, buffer.data(), row.size),
                  static_cast<int>(row.length));
        EXPECT_EQ(std::strlen(buffer.data()), row.length);
        EXPECT_EQ(buffer[static_cast<std::size_t>(row.size)], '#');
        EXPECT_EQ(std::strncmp(buffer.data(), (row.id & 0xFFFF) == 7 ? "seven" : "0123456789",
                               std::min<std::size_t>(row.length, 10)),
                  0);
    }
}

}  // namespace
