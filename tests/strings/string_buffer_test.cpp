#include <brcore8/strings/string_buffer.h>

#include <brcore8/core/exception.h>

#include <gtest/gtest.h>

#include <string>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

int Capacity(const SString& text) {
    return text.GetData()->capacity;
}

TEST(StringBuffer, DefaultBufferConvertsToARightSizedString) {
    SStringBuffer buffer;
    EXPECT_EQ(Capacity(buffer), 0);
    buffer += 'x';
    EXPECT_EQ(Capacity(buffer), 262144);
    const SString text = buffer;
    EXPECT_EQ(text.Length(), 1);
    EXPECT_EQ(Capacity(text), 16);
    EXPECT_EQ(buffer.operator SString(), "x");
    EXPECT_TRUE(SString(SStringBuffer()).IsEmpty());
}

struct FactorRow {
    const char* name;
    unsigned int initial, numerator, denominator;
    int keptNumerator, keptDenominator;
};

const FactorRow kFactors[] = {
    {"zeros are the defaults", 0, 0, 0, 5, 3},
    {"no growth falls back", 100, 1, 1, 5, 3},
    {"shrinking falls back", 100, 1, 2, 5, 3},
    {"growth that rounds away falls back", 1, 4, 3, 5, 3},
    {"growth that rounds up is kept", 1, 3, 2, 3, 2},
    {"a beyond 32 bits falls back", 100, 0x7FFFFFFF, 1, 5, 3},
    {"a numerator beyond 31 bits falls back", 100, 0x80000001, 1, 5, 3},
    {"a size beyond 31 bits falls back", 0x80000000, 2, 1, 5, 3},
    {"doubling is kept", 100, 2, 1, 2, 1},
};

TEST(StringBuffer, ResetFixesFactorsThatDoNotGrow) {
    for (const FactorRow& row : kFactors) {
        SCOPED_TRACE(row.name);
        SStringBuffer buffer("text");
        buffer.Reset(row.initial, row.numerator, row.denominator);
        EXPECT_TRUE(buffer.IsEmpty());
        EXPECT_EQ(buffer.GetNumerator(), row.keptNumerator);
        EXPECT_EQ(buffer.GetDenominator(), row.keptDenominator);
        EXPECT_EQ(buffer.GetInitialSize(), row.initial ? row.initial : 0x40000u);
    }
}

TEST(StringBuffer, ShorterResetsKeepWhatTheyDoNotName) {
    SStringBuffer buffer(100, 2, 1);
    buffer.Reset(200);
    EXPECT_EQ(buffer.GetNumerator(), 2);
    buffer.Reset(3, 1);
    EXPECT_EQ(buffer.GetInitialSize(), 200u);
    EXPECT_EQ(buffer.GetNumerator(), 3);
    buffer.Reset();
    EXPECT_EQ(buffer.GetInitialSize(), 0x40000u);
}

TEST(StringBuffer, GrowsByTheFactorAndClearKeepsTheBuffer) {
    SStringBuffer buffer(100, 2, 1);
    buffer += std::string(300, 'a');
    EXPECT_EQ(Capacity(buffer), 512);  // the class for 400
    buffer += std::string(213, 'b');
    EXPECT_EQ(Capacity(buffer), 1024);
    const char* const kept = buffer;
    buffer.Clear();
    EXPECT_TRUE(buffer.IsEmpty());
    buffer += std::string(1024, 'c');
    EXPECT_EQ(static_cast<const char*>(buffer), kept);
}

TEST(StringBuffer, AppendsEveryKindOfText) {
    const PageScope page(932);
    SStringBuffer buffer(SString("a"), 64);
    buffer += SString("b");
    buffer += "c";
    buffer += static_cast<const char*>(nullptr);
    buffer += std::string_view("\0", 1);
    buffer += 0x8141u;
    buffer += static_cast<int>(0x8142 - 0x10000);
    buffer.Concat("xyz", 2);
    buffer.Concat("xyz", -1);
    const char* const end = "pq" + 1;
    buffer.Concat(end - 1, end);
    buffer.Concat(end, nullptr);
    const std::string_view expected("abc\0\x81\x41\x81\x42xyp", 11);
    EXPECT_EQ(buffer.View(), expected);
    EXPECT_EQ(buffer.GetData()->characters, 0);
    EXPECT_EQ(buffer.Length(), 9);
    EXPECT_EQ(SString(buffer).Length(), 9);
    EXPECT_TRUE(SString(buffer).AssertValid());
}

TEST(StringBuffer, TakesPartsOfItself) {
    SStringBuffer buffer("abcdef", 6);
    buffer += buffer;  // in a new buffer
    EXPECT_EQ(buffer.View(), "abcdefabcdef");
    buffer.Concat(static_cast<const char*>(buffer) + 4, 4);  // in place
    EXPECT_EQ(buffer.View(), "abcdefabcdefefab");
    buffer = static_cast<const char*>(buffer) + 12;
    EXPECT_EQ(buffer.View(), "efab");
    buffer = static_cast<const SString&>(buffer);
    EXPECT_EQ(buffer.View(), "efab");
}

TEST(StringBuffer, LeavesSharesOfItsBufferAlone) {
    SStringBuffer buffer("abc");
    const SString share = static_cast<const SString&>(buffer);
    buffer.Clear();
    buffer += "x";
    EXPECT_EQ(share.View(), "abc");
    const SString second = static_cast<const SString&>(buffer);
    buffer += "y";
    EXPECT_EQ(second.View(), "x");
    EXPECT_EQ(buffer.View(), "xy");
}

TEST(StringBuffer, CopiesTextAndSettings) {
    SStringBuffer buffer("abc", 100, 2, 1);
    SStringBuffer copy(buffer);
    EXPECT_EQ(copy.View(), "abc");
    EXPECT_EQ(Capacity(copy), 16);
    EXPECT_EQ(copy.GetNumerator(), 2);
    copy += "d";
    SStringBuffer assigned;
    assigned = copy;
    assigned = *&assigned;
    EXPECT_EQ(assigned.View(), "abcd");
    EXPECT_EQ(assigned.GetInitialSize(), 100u);
    EXPECT_EQ(buffer.View(), "abc");
}

TEST(StringBuffer, StaysAsItWasWithoutMemory) {
    for (int nth = 1;; ++nth) {
        SStringBuffer buffer("abc", 4096);
        FailNthAllocation fail(nth, true);
        try {
            buffer += std::string_view("d");
            buffer = std::string(5000, 'x');
            break;
        } catch (const SEOutOfMemory&) {
            EXPECT_EQ(buffer.View(), "abcd");
        }
    }
    SStringBuffer huge(0xFFFFFFFF);
    EXPECT_THROW(huge += 'x', SEOutOfMemory);
    EXPECT_TRUE(huge.IsEmpty());
}

}  // namespace
