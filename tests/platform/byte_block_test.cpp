#include "streams/byte_block.h"

#include <brcore8/core/exception.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string_view>

namespace {

std::size_t g_asked = 0;

// Notes what is asked for, and refuses it.
class NoMemory {
public:
    NoMemory()
        : previous_(brcore8::SetAllocationFilter([](std::size_t size) {
              g_asked = size;
              return false;
          })) {
        g_asked = 0;
    }
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;
    ~NoMemory() { brcore8::SetAllocationFilter(previous_); }

private:
    brcore8::AllocationFilter previous_;
};

// Three bytes for each of these characters are more than 32 bits count, and two more than they
// were. The text is not there: its room is asked for before anything is read.
TEST(ByteBlock, AsksForRoomInSixtyFourBits) {
    constexpr std::uint64_t characters = 0x55555556;
    brcore8::ByteBlock block;
    const NoMemory refused;
    EXPECT_THROW(block.AppendUtf8(std::string_view("", characters)), SEOutOfMemory);
    EXPECT_EQ(g_asked, 3 * characters);
    EXPECT_EQ(block.Size(), 0u);
}

TEST(ByteBlock, RefusesRoomThatNoBlockHas) {
    constexpr std::uint64_t most = std::numeric_limits<std::size_t>::max();
    brcore8::ByteBlock block;
    block.Room(2)[0] = 'a';
    block.Added(1);
    const NoMemory refused;
    for (const std::uint64_t size : {most, most - 1, most / 2 + 1}) {
        EXPECT_THROW(block.Room(size), SEOutOfMemory) << size;
        EXPECT_EQ(g_asked, 0u) << "no heap is asked for a size that wrapped, or that none has";
    }
    EXPECT_EQ(block.View(), "a");
}

}  // namespace
