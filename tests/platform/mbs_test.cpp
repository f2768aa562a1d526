// Walking, comparing and searching text, under a single-byte and a double-byte page.
#include "strings/mbs.h"

#include <brcore8/strings/multibyte.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

class Mbs : public testing::TestWithParam<int> {
protected:
    void SetUp() override { ASSERT_EQ(_setmbcp(GetParam()), 0); }
    void TearDown() override { _setmbcp(0); }
    bool DoubleByte() const { return GetParam() == 932; }
};
INSTANTIATE_TEST_SUITE_P(Pages, Mbs, testing::Values(1252, 932), testing::PrintToStringParamName());

// The plain way to do it: a text as the list of its characters.
struct Character {
    unsigned code;
    std::size_t at;
};
std::vector<Character> Split(const std::string& text, bool fold = false) {
    const CodePage& page = CodePage::Ansi();
    std::vector<Character> result;
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        unsigned code = byte;
        if (page.IsLead(byte) && i + 1 < text.size() && text[i + 1] != 0)
            code = byte * 256u + static_cast<unsigned char>(text[i + 1]);
        result.push_back({fold ? page.ToLower(code) : code, i});
        i += code < 256 ? 1 : 2;
    }
    return result;
}

bool SameCode(const Character& left, const Character& right) {
    return left.code == right.code;
}

int PlainCompare(const std::string& left, const std::string& right, bool fold) {
    const auto l = Split(left, fold), r = Split(right, fold);
    const auto code = [](const Character& a, const Character& b) { return a.code <=> b.code; };
    const auto order =
        std::lexicographical_compare_three_way(l.begin(), l.end(), r.begin(), r.end(), code);
    return order < 0 ? -1 : order > 0;
}

std::ptrdiff_t PlainFind(const std::string& text, const std::string& what, bool fold) {
    const auto t = Split(text, fold), w = Split(what, fold);
    const auto found = std::search(t.begin(), t.end(), w.begin(), w.end(), SameCode);
    if (w.empty()) return 0;
    return found == t.end() ? -1 : static_cast<std::ptrdiff_t>(found->at);
}

// Few different bytes, so that lead bytes meet trail bytes of equal value and searches nearly
// succeed often.
std::string RandomText(std::mt19937& random, unsigned most) {
    static const char bytes[] = "aAbB\x81\x81\x82\x82\xB1\xE9\xC9";
    std::string text;
    for (unsigned length = random() % (most + 1); length > 0; --length)
        text += bytes[random() % (sizeof bytes - 1)];
    return text;
}

TEST_P(Mbs, AgreesWithThePlainWay) {
    const unsigned seed = 20240607;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const CodePage& page = CodePage::Ansi();
    for (int round = 0; round < 20000; ++round) {
        const std::string left = RandomText(random, 12), right = RandomText(random, 4);
        SCOPED_TRACE(testing::PrintToString(left) + " " + testing::PrintToString(right));
        const char* const text = left.c_str();
        const auto characters = Split(left);
        ASSERT_EQ(mbs::Count(page, text, left.size()), static_cast<int>(characters.size()));
        ASSERT_EQ(mbs::Compare(text, right.c_str()), PlainCompare(left, right, false));
        ASSERT_EQ(mbs::CompareNoCase(text, right.c_str()), PlainCompare(left, right, true));
        const std::size_t n = random() % 6;
        ASSERT_EQ(mbs::CompareBytes(text, right.c_str(), n),
                  PlainCompare(left.substr(0, n), right.substr(0, n), false));
        ASSERT_EQ(mbs::CompareNoCaseBytes(text, right.c_str(), n),
                  PlainCompare(left.substr(0, n), right.substr(0, n), true));

        const char* found = mbs::FindText(text, right.c_str());
        ASSERT_EQ(found ? found - text : -1, PlainFind(left, right, false));
        found = mbs::FindTextNoCase(text, right.c_str());
        ASSERT_EQ(found ? found - text : -1, PlainFind(left, right, true));

        const char* p = text;
        for (const Character& each : characters) {
            ASSERT_EQ(p - text, static_cast<std::ptrdiff_t>(each.at));
            ASSERT_EQ(mbs::UnsignedCodeAt(page, p), each.code);
            const auto same = [&each](const Character& c) { return c.code == each.code; };
            const auto first = std::find_if(characters.begin(), characters.end(), same);
            const auto last = std::find_if(characters.rbegin(), characters.rend(), same);
            ASSERT_EQ(mbs::Find(text, each.code) - text, static_cast<std::ptrdiff_t>(first->at));
            ASSERT_EQ(mbs::ReverseFind(text, each.code) - text,
                      static_cast<std::ptrdiff_t>(last->at));
            p = mbs::Next(page, p);
        }
        ASSERT_EQ(p, text + left.size()) << "walking ends at the terminator";
        ASSERT_EQ(mbs::Next(page, p), p);
        const std::size_t steps = random() % 14;
        const char* const reached =
            mbs::Advance(page, text, text + left.size(), static_cast<int>(steps));
        ASSERT_EQ(static_cast<std::size_t>(reached - text),
                  steps < characters.size() ? characters[steps].at : left.size());
    }
}

TEST_P(Mbs, TakesZeroBytesWithinALength) {
    const CodePage& page = CodePage::Ansi();
    const std::string text("a\0\x81\0b\x81z", 7);  // the first lead byte has no trail byte
    EXPECT_EQ(mbs::Count(page, text.data(), text.size()), DoubleByte() ? 6 : 7);
    EXPECT_EQ(mbs::FindText(text.data(), text.size(), "\0b", 2), text.data() + 3);
    EXPECT_EQ(mbs::FindTextNoCase(text.data(), text.size(), "\0B", 2), text.data() + 3);
    EXPECT_EQ(mbs::Advance(page, text.data(), text.data() + 7, 4), text.data() + 4);
    const char* const z = DoubleByte() ? nullptr : text.data() + 6;
    EXPECT_EQ(mbs::FindText(text.data(), text.size(), "z", 1), z) << "a trail byte is no z";
}

TEST_P(Mbs, TakesCodesAsCallersHaveThem) {
    const CodePage& page = CodePage::Ansi();
    const char* const text = "x\xB1\x83\x41";
    if (DoubleByte()) {
        EXPECT_EQ(mbs::CodeAt(page, text + 2), 0x8341 - 0x10000) << "the lead byte is signed";
        EXPECT_EQ(mbs::Find(text, 0x8341), text + 2);
        EXPECT_EQ(mbs::Find(text, static_cast<unsigned>(mbs::CodeAt(page, text + 2))), text + 2);
        EXPECT_EQ(mbs::Find(text, 'A'), nullptr) << "only a trail byte";
        EXPECT_TRUE(mbs::IsSpace(0xFFFF8140)) << "ideographic space";
    } else {
        EXPECT_EQ(mbs::CodeAt(page, text + 2), 0x83);
        EXPECT_EQ(mbs::Find(text, 'A'), text + 3);
        EXPECT_TRUE(mbs::IsAlpha(static_cast<unsigned>(char{'\xE9'})));
    }
    EXPECT_EQ(mbs::Find(text, static_cast<unsigned>(static_cast<signed char>('\xB1'))), text + 1)
        << "sign-extended";
    EXPECT_EQ(mbs::Find(text, 0), text + 4);
    EXPECT_EQ(mbs::ReverseFind(text, 0), text + 4);
    EXPECT_EQ(mbs::Find(text, 'q'), nullptr);
    char out[2];
    EXPECT_EQ(mbs::Put(page, 'q', out), 1u);
    EXPECT_TRUE(mbs::IsDigit('7') && mbs::IsSpace('\t') && !mbs::IsAlphaNum('-'));
    EXPECT_TRUE(mbs::IsUpper('Q') && mbs::IsLower('q') && !mbs::IsLower('Q'));
}

// Texts on which comparing at every place would take hours.
TEST_P(Mbs, SearchesHostileTextInLinearTime) {
    const std::size_t half = 500000;
    const struct {
        const char* name;
        std::string unit, what;
    } rows[] = {
        {"one byte repeated", "a", std::string(half, 'a').append("b")},
        {"upper and lower case", "aA", std::string(half, 'a').append("b")},
        {"lead bytes only", "\x81", std::string(half, '\x81').append("\x82\x82")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string text;
        while (text.size() < 2 * half)
            text += row.unit;
        EXPECT_EQ(mbs::FindText(text.c_str(), row.what.c_str()), nullptr);
        EXPECT_EQ(mbs::FindTextNoCase(text.c_str(), row.what.c_str()), nullptr);
    }
    // Every occurrence of the bytes begins within a character, where that is two bytes wide.
    std::string text, what;
    while (text.size() < 2 * half)
        text += "\x81\x82";
    while (what.size() < half)
        what += "\x82\x81";
    EXPECT_EQ(mbs::FindText(text.c_str(), what.c_str()), DoubleByte() ? nullptr : text.c_str() + 1);
    const std::string leads(half, '\x81');
    EXPECT_EQ(mbs::Find(leads.c_str(), DoubleByte() ? 0x8182 : 0x82), nullptr);
    EXPECT_EQ(mbs::Find(std::string(leads).append("\x82").c_str(), 0x82) != nullptr, true);
}

TEST_P(Mbs, CollatesAsTheUserSorts) {
    EXPECT_EQ(mbs::Collate("abc", "abc"), 0);
    EXPECT_LT(mbs::Collate("abc", "abd"), 0);
    EXPECT_GT(mbs::Collate("abd", "abc"), 0);
    EXPECT_EQ(mbs::CollateNoCase("ABC", "abc"), 0);
    EXPECT_NE(mbs::Collate("ABC", "abc"), 0);
    EXPECT_EQ(mbs::CollateBytes("abcX", "abcY", 3), 0);
    EXPECT_EQ(mbs::CollateNoCaseBytes("ABCX", "abcY", 3), 0);
    const std::string text(5000, 'a');
    EXPECT_LT(mbs::Collate(text.c_str(), std::string(5001, 'a').c_str()), 0)
        << "longer than any buffer";
    EXPECT_EQ(mbs::CollateNoCase("\x83\x41", "\x83\x41"), 0);
}

}  // namespace
