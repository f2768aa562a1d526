// Texts at the edge of what a 32-bit length can tell, and many steps that must not add up.

#include <brcore8/core/exception.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_table.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {

// A gigabyte and a bit: twice that is more than a length can tell.
constexpr int kHuge = 1200 << 20;

TEST(StringLimits, TextsBeyondTheLengthAreRefusedBeforeAnyByteMoves) {
    SString huge('x', kHuge);
    const SString other = huge;  // shared meanwhile
    const SString megabyte('a', 1 << 20);
    const std::string many(4096, 'b');
    struct Row {
        const char* what;
        std::function<void(SString&)> change;
    };
    const Row rows[] = {
        {"append", [&](SString& text) { text += other; }},
        {"append itself", [](SString& text) { text += text; }},
        {"insert", [&](SString& text) { text.Insert(other, 5); }},
        {"room", [](SString& text) { text.Lock(INT_MAX); }},
    };
    for (const Row& row : rows) {
        EXPECT_THROW(row.change(huge), SEOutOfMemory) << row.what;
        ASSERT_EQ(huge.LengthByte(), kHuge) << row.what;
        EXPECT_EQ(huge.GetPointerAt(0), other.GetPointerAt(0)) << row.what;
    }
    SString grown = megabyte;
    EXPECT_THROW(grown.ReplaceAll("a", many.c_str()), SEOutOfMemory);
    EXPECT_EQ(grown, megabyte);
    EXPECT_THROW(SString('x', INT_MAX), SEOutOfMemory);
}

TEST(StringLimits, RangesThatAreNoneAreEmptyOrRefused) {
    const char text[] = "text";
    EXPECT_EQ(SString(text + 4, text), "") << "the end before the beginning";
    // Never read.
    const auto far = reinterpret_cast<const char*>(reinterpret_cast<std::uintptr_t>(text) +
                                                   (std::uintptr_t{1} << 31) + 5);
    EXPECT_THROW(SString(text, far), SEOutOfMemory);
}

// The text grows in place; the sanitizer's heap moves every block that grows, which takes minutes.
#if defined(__SANITIZE_ADDRESS__)
constexpr int kAppended = 100'000;
#else
constexpr int kAppended = 10'000'000;
#endif

TEST(StringLimits, MillionsOfSingleBytesAreAppendedInTurn) {
    SString text;
    for (int i = 0; i < kAppended; ++i)
        text += static_cast<char>('a' + i % 26);
    ASSERT_EQ(text.LengthByte(), kAppended);
    EXPECT_EQ(text.GetAt(kAppended - 1), 'a' + (kAppended - 1) % 26);
}

// Orders in which a careless sort takes a time that grows with the square, or a stack that deep.
TEST(StringLimits, AMillionLinesAreSortedFromAnyOrder) {
    constexpr int kCount = 1'000'000;
    const auto organ = [](int i) { return std::min(i, kCount - i); };
    const std::function<int(int)> orders[] = {
        organ,
        // Deep for a sort that takes the median of three.
        [](int i) { return i % 2 == 0 ? i / 2 : kCount / 2 + i / 2; }};
    for (const auto& order : orders) {
        SStringTable lines;
        std::vector<int> expected;
        for (int i = 0; i < kCount; ++i) {
            SString line;
            line.Format("%07d", order(i));
            lines.Add(line);
            expected.push_back(order(i));
        }
        lines.Sort();
        std::sort(expected.begin(), expected.end());
        ASSERT_EQ(lines.GetCount(), kCount);
        int wrong = 0;
        for (int i = 0; i < kCount; ++i)
            wrong += std::atoi(lines[i]) != expected[static_cast<std::size_t>(i)];
        EXPECT_EQ(wrong, 0);
    }
}

TEST(StringLimits, ATableIsFilledAndEmptiedAtItsFront) {
    constexpr int kCount = 100'000;
    SStringTable lines;
    const SString text("line");
    for (int i = 0; i < kCount; ++i)
        lines.Insert(0, text);
    EXPECT_EQ(lines.GetCount(), kCount);
    for (int i = 0; i < kCount; ++i)
        lines.Remove(0);
    EXPECT_EQ(lines.GetCount(), 0);
}

}  // namespace
