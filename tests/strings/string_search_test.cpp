#include <brcore8/strings/string.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "strings/string_fixture.h"

namespace {

class StringSearch : public PagedTest {};
BRCORE8_BOTH_PAGES(StringSearch);

std::ptrdiff_t Offset(const SString& text, const char* found) {
    return found ? found - text.View().data() : -1;
}

TEST_P(StringSearch, Pointers) {
    const SString text = "one two One";
    const struct {
        const char* name;
        const char* found;
        int expected;
    } rows[] = {
        {"character", text.Find('o'), 0},
        {"character from", text.Find('o', text.GetPointerAt(1)), 6},
        {"character nowhere", text.Find('x'), -1},
        {"terminator", text.Find(0u), 11},
        {"last character", text.ReverseFind('n'), 9},
        {"text", text.Find("two"), 4},
        {"text from", text.Find("e", text.GetPointerAt(3)), 10},
        {"text nowhere", text.Find("three"), -1},
        {"empty text", text.Find(""), 0},
        {"null is empty", text.Find(static_cast<const char*>(nullptr)), 0},
        {"no case null is nowhere", text.FindNoCase(nullptr), -1},
        {"no case", text.FindNoCase("TWO"), 4},
        {"no case from", text.FindNoCase("one", text.GetPointerAt(1)), 8},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Offset(text, row.found), row.expected) << row.name;
    EXPECT_EQ(text.GetPointerAt(12), nullptr);
    EXPECT_EQ(text.GetPointerAt(-1), nullptr);
    EXPECT_EQ(Offset(text, text.GetPointerAt(11)), 11);
}

TEST_P(StringSearch, Indices) {
    const SString text =
        "a\x93\xFA"
        "ba";
    const bool two = IsDoubleByte();
    const struct {
        const char* name;
        int found;
        int expected;
    } rows[] = {
        {"first", text.FindPos('a'), 0},
        {"later", text.FindPos('a', 1), two ? 3 : 4},
        {"wide at the start position", text.FindPos(0x93FAu, 1), two ? 1 : -1},
        {"wide after it", text.FindPos(0x93FAu, 0), -1},
        {"high byte, signed", text.FindPos(0xFFFFFF93u, 0), 1},
        {"before the text", text.FindPos('a', -1), -1},
        {"behind the text", text.FindPos('a', text.Length()), -1},
        {"in empty", SString().FindPos('a'), -1},
        {"nowhere", text.FindPos('z'), -1},
        {"last", text.ReverseFindPos('a'), two ? 3 : 4},
        {"last before", text.ReverseFindPos('a', 2), 0},
        {"last wide", text.ReverseFindPos(0x93FAu), two ? 1 : 2},
        {"last from behind the text", text.ReverseFindPos('a', 9), -1},
        {"last in empty", SString().ReverseFindPos('a'), -1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.found, row.expected) << row.name;
}

TEST_P(StringSearch, Patterns) {
    const struct {
        const char* text;
        const char* pattern;
        int match;
    } rows[] = {
        {"file.txt", "*.t?t", 1},
        {"file.txt", "\\*.t?t", 0},
        {"*.tat", "\\*.t?t", 1},
        {"", "", 1},
        {"a", "", 0},
        {"", "*", 1},
        {"", "?", 0},
        {"abc", "***", 1},
        {"abc", "a*", 1},
        {"abc", "*c", 1},
        {"abc", "*b", 0},
        {"abc", "a?c", 1},
        {"abc", "a?", 0},
        {"abc", "abc\\", 1},
        {"abcd", "abc\\", 0},
        {"a\\c", "a\\\\c", 1},
        {"abc", "a\\bc", 1},
        {"a?c", "a\\?c", 1},
        {"abc", "a\\?c", 0},
        {"aXbXc", "a*X*c", 1},
        {"ab", "*a*b*", 1},
        {"mississippi", "m*iss*pi", 1},
        {"mississippi", "m*iss*sx", 0},
        {"ABC", "abc", 0},
        {"a", "*\\", 1},
        {"\x93\xFA", "?", 2},
        {"\x83\x41", "*A", 3},
    };
    for (const auto& row : rows) {
        // 2: only where the text is one character; 3: only where it is two.
        const int expected = row.match < 2 ? row.match : (row.match == 2) == IsDoubleByte();
        EXPECT_EQ(SString(row.text).Match(row.pattern), expected) << row.text << ' ' << row.pattern;
    }
    EXPECT_EQ(SString("ABC").MatchNoCase("a?C"), 1);
    EXPECT_EQ(SString("ABC").MatchNoCase("a?d"), 0);
    EXPECT_EQ(SString().Match(nullptr), 1);
    if (IsDoubleByte()) {
        EXPECT_EQ(SString("\x82\x60").MatchNoCase("\x82\x81"), 1);
    }

    // Hopeless for a matcher that tries every division of the text between the stars.
    std::string stars;
    for (int i = 0; i < 50; ++i)
        stars += "a*";
    EXPECT_EQ(SString('a', 3000).Match((stars + "b").c_str()), 0);
    EXPECT_EQ(SString("a").Match(SString('*', 60000)), 1);
    std::string some;
    for (int i = 0; i < 50000; ++i)
        some += "*?";
    EXPECT_EQ(SString('a', 100000).Match(some.c_str()), 1);
    EXPECT_EQ(SString('a', 49999).Match(some.c_str()), 0);
}

// Searches take several places a step; a find behind a zero byte is none.
TEST_P(StringSearch, FindsAtEveryPlace) {
    for (const std::size_t size : {2, 3, 15, 16, 17, 18, 33, 47, 300}) {
        for (std::size_t at = 0; at + 2 <= size; ++at) {
            SCOPED_TRACE(std::to_string(at) + " of " + std::to_string(size));
            std::string bytes(size, 'x');
            bytes.replace(at, 2, "xy");
            SString text{std::string_view(bytes)};
            const auto place = static_cast<std::ptrdiff_t>(at);
            EXPECT_EQ(Offset(text, text.Find("xy")), place);
            EXPECT_EQ(Offset(text, text.FindNoCase("XY")), place);
            if (at < 3) continue;
            text.SetAt(static_cast<int>(at / 2), 0);
            EXPECT_EQ(text.Find("xy"), nullptr);
        }
    }
}

int Sign(int value) {
    return (value > 0) - (value < 0);
}

// Texts in which every place looks right for long: comparing anew at each would take a million
// million steps.
TEST_P(StringSearch, RepetitionsAreFoundInLinearTime) {
    const std::string as(1'000'000, 'a');
    const std::string half(500'000, 'a');
    const struct {
        const char* name;
        std::string text;
        std::string pattern;
        std::ptrdiff_t expected;
    } rows[] = {
        {"nowhere", as, half + "ba", -1},
        {"at the end", as + "ba", half + "ba", 500'000},
        {"after a start that is one, too", as + "ba" + half + "ca", half + "ca", 1'000'002},
        {"that overlap themselves", as + "b" + as + "c" + as + "b" + half,
         as + "c" + as + "b" + half, 1'000'001},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const SString text(row.text);
        EXPECT_EQ(Offset(text, text.Find(row.pattern.c_str())), row.expected);
        std::string upper = row.pattern;
        std::transform(upper.begin(), upper.end(), upper.begin(),
                       [](char c) { return static_cast<char>(c - 'a' + 'A'); });
        EXPECT_EQ(Offset(text, text.FindNoCase(upper.c_str())), row.expected);
    }
}

TEST_P(StringSearch, ComparisonFamilies) {
    const SString text = "Item10";
    const struct {
        const char* name;
        int result;
        int expected;
    } rows[] = {
        {"equal", text.Compare("Item10"), 0},
        {"case counts", text.Compare("item10"), -1},
        {"counted", text.Compare("Item99", 4), 0},
        {"counted, none", text.Compare("x", 0), 0},
        {"from", text.Compare(4, "10"), 0},
        {"from, counted", text.Compare(4, "1x", 1), 0},
        {"from beyond the end", text.Compare(99, ""), 0},
        {"no case", text.CompareNoCase("iTEM10"), 0},
        {"no case, counted", text.CompareNoCase("iTEMs", 4), 0},
        {"no case, from", text.CompareNoCase(1, "TEM10"), 0},
        {"no case, from, counted", text.CompareNoCase(1, "TEx", 2), 0},
        {"collate", text.Collate("Item10"), 0},
        {"collate, counted", text.Collate("Item99", 4), 0},
        {"collate, from", text.Collate(4, "11"), -1},
        {"collate, from, counted", text.Collate(4, "11", 1), 0},
        {"collate, no case", text.CollateNoCase("iTEM10"), 0},
        {"collate, no case, counted", text.CollateNoCase("iTEMs", 4), 0},
        {"collate, no case, from", text.CollateNoCase(1, "TEM10"), 0},
        {"collate, no case, from, counted", text.CollateNoCase(1, "TEx", 2), 0},
        {"numbers", text.CompareNb("Item9"), 1},
        {"numbers, counted", text.CompareNb("Item9", 5), -1},
        {"numbers, from", text.CompareNb(4, "9"), 1},
        {"numbers, from, counted", text.CompareNb(4, "1x", 1), 0},
        {"numbers, no case", text.CompareNbNoCase("iTEM9"), 1},
        {"numbers, no case, counted", text.CompareNbNoCase("iTEMs", 4), 0},
        {"numbers, no case, from", text.CompareNbNoCase(1, "TEM10"), 0},
        {"numbers, no case, from, counted", text.CompareNbNoCase(1, "TEx", 2), 0},
        {"zeros", SString("a007").CompareNb("a7"), 1},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Sign(row.result), row.expected) << row.name;
}

TEST_P(StringSearch, Operators) {
    const SString a = "a";
    const SString b = "b";
    EXPECT_TRUE(a == SString("a") && a == "a" && "a" == a && !(a == b) && SString() == nullptr);
    EXPECT_TRUE(a != b && a != "b" && "b" != a);
    EXPECT_TRUE(a < b && a < "b" && "a" < b && a <= a && a <= "b" && "a" <= a);
    EXPECT_TRUE(b > a && b > "a" && "b" > a && b >= b && b >= "a" && "b" >= b);
    EXPECT_FALSE(b < a || a > b || b <= "a" || a >= "b");
}

TEST_P(StringSearch, ClassesOfCharacters) {
    const SString text = "aZ5 \x82\x60";
    const bool two = IsDoubleByte();
    EXPECT_TRUE(text.IsAlpha(0) && text.IsLower(0) && !text.IsUpper(0) && text.IsASCII(0));
    EXPECT_TRUE(text.IsUpper(1) && text.IsAlphaNum(1) && text.IsDigit(2) && !text.IsAlpha(2));
    EXPECT_TRUE(text.IsWhitespace(3) && !text.IsAlphaNum(3));
    EXPECT_FALSE(text.IsASCII(4));
    EXPECT_EQ(text.GetAt(4), two ? static_cast<int>(0xFFFF8260) : '\x82');
    EXPECT_EQ(text[5], two ? 0 : 0x60);
    EXPECT_EQ(text.GetAt(99) + text.GetAt(-1), 0);
    if (two) {
        EXPECT_TRUE(text.IsUpper(4));
    }
}

}  // namespace
