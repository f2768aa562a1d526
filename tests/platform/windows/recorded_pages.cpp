// The recorded code pages, which other systems expand, are what this platform answers: every
// byte, pair and UTF-16 unit, and whole conversions of broken text.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "platform/posix/code_page_decoder.h"
#include "strings/code_page.h"

namespace {

using namespace brcore8;
using Units = std::vector<std::uint16_t>;

constexpr std::size_t kUnits = 0x10000;

class RecordedPage : public testing::TestWithParam<unsigned> {};

Units AskWide(unsigned page, const char* bytes, int count) {
    WCHAR wide[4] = {};
    const int units = MultiByteToWideChar(page, 0, bytes, count, wide, 4);
    return Units(wide, wide + units);
}

TEST_P(RecordedPage, HasEveryByteAndPair) {
    CodePageTables tables;
    ASSERT_TRUE(DecodeCodePage(GetParam(), tables));
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char single[1] = {static_cast<char>(byte)};
        ASSERT_EQ(AskWide(GetParam(), single, 1), Units{tables.single[byte]}) << byte;
        const bool lead = IsDBCSLeadByteEx(GetParam(), static_cast<BYTE>(byte)) != 0;
        ASSERT_EQ(tables.lead[byte], lead) << byte;
        for (unsigned trail = 1; lead && trail < 256; ++trail) {
            const char pair[2] = {static_cast<char>(byte), static_cast<char>(trail)};
            ASSERT_EQ(AskWide(GetParam(), pair, 2), Units{tables.pairs[byte * 256 + trail]})
                << byte << ' ' << trail;
        }
    }
}

TEST_P(RecordedPage, HasEveryUnit) {
    CodePageTables tables;
    ASSERT_TRUE(DecodeCodePage(GetParam(), tables));
    for (unsigned unit = 0; unit < kUnits; ++unit) {
        const auto wide = static_cast<WCHAR>(unit);
        unsigned char text[4] = {};
        const int count = WideCharToMultiByte(GetParam(), 0, &wide, 1,
                                              reinterpret_cast<char*>(text), 4, nullptr, nullptr);
        ASSERT_TRUE(count == 1 || count == 2) << unit;
        const unsigned code = count == 1 ? text[0] : text[0] * 256u + text[1];
        ASSERT_EQ(tables.codes[unit], code) << unit;
    }
}

// What this system loads for itself is the same again, in one batch.
TEST_P(RecordedPage, IsWhatTheLibraryLoadsHere) {
    CodePageTables recorded, loaded;
    ASSERT_TRUE(DecodeCodePage(GetParam(), recorded));
    ASSERT_TRUE(LoadCodePageTables(GetParam(), loaded));
    EXPECT_EQ(recorded.lead, loaded.lead);
    EXPECT_EQ(recorded.single, loaded.single);
    EXPECT_TRUE(recorded.pairs == loaded.pairs);
    for (std::size_t unit = 0; unit < kUnits; ++unit)
        ASSERT_EQ(recorded.codes[unit], loaded.codes[unit]) << unit;
}

// Random text full of lead bytes, zero bytes and surrogates, converted whole.
TEST_P(RecordedPage, ConvertsWholeTextsAlike) {
    const CodePage& page = *CodePage::Find(GetParam());
    std::mt19937 random(GetParam());
    const unsigned char bytes[] = {0,    'A',  0x40, 0x7F, 0x80, 0x81,
                                   0x82, 0xA0, 0xB1, 0xFC, 0xFE, 0xFF};
    const std::uint16_t units[] = {0,      'A',    '?',    0xA5,   0x100,  0x3042,
                                   0xD83D, 0xDE00, 0xFFFD, 0xFFFF, 0xE000, 0x30FB};
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        Units wide;
        for (unsigned length = 1 + random() % 9; length > 0; --length) {
            text += static_cast<char>(random() % 3 ? bytes[random() % std::size(bytes)] : random());
            wide.push_back(units[random() % std::size(units)]);
        }
        WCHAR toWide[32];
        const int wideCount = MultiByteToWideChar(GetParam(), 0, text.data(),
                                                  static_cast<int>(text.size()), toWide, 32);
        Units ours(32);
        ours.resize(page.ToWide(text.data(), text.size(), ours.data(), 32));
        ASSERT_EQ(ours, Units(toWide, toWide + wideCount)) << testing::PrintToString(text);

        char toBytes[32];
        BOOL usedDefault = FALSE;
        const int count =
            WideCharToMultiByte(GetParam(), 0, reinterpret_cast<const WCHAR*>(wide.data()),
                                static_cast<int>(wide.size()), toBytes, 32, nullptr, &usedDefault);
        std::string back(32, '\0');
        CodePage::Loss loss;
        back.resize(page.FromWide(wide.data(), wide.size(), back.data(), 32, &loss));
        ASSERT_EQ(back, std::string(toBytes, static_cast<std::size_t>(count)))
            << testing::PrintToString(wide);
        ASSERT_TRUE(!usedDefault || loss.count > 0) << testing::PrintToString(wide);
    }
}

INSTANTIATE_TEST_SUITE_P(Pages, RecordedPage,
                         testing::Values(437u, 850u, 852u, 866u, 874u, 932u, 936u, 949u, 950u,
                                         1250u, 1251u, 1252u, 1253u, 1254u, 1255u, 1256u, 1257u,
                                         1258u, 1361u, 10000u),
                         testing::PrintToStringParamName());

TEST(RecordedCharacters, AreThePlatforms) {
    Units units(kUnits);
    for (std::size_t i = 0; i < kUnits; ++i)
        units[i] = static_cast<std::uint16_t>(i);
    const CharacterFacts recorded = DecodeCharacterFacts(units);
    for (unsigned unit = 0; unit < kUnits; ++unit) {
        const auto wide = static_cast<WCHAR>(unit);
        WCHAR lower = 0, upper = 0;
        WORD type = 0;
        LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, &wide, 1, &lower, 1);
        LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, &wide, 1, &upper, 1);
        GetStringTypeW(CT_CTYPE1, &wide, 1, &type);
        ASSERT_EQ(recorded.lower[unit], lower) << unit;
        ASSERT_EQ(recorded.upper[unit], upper) << unit;
        ASSERT_EQ(recorded.types[unit], type & 0x1FF) << unit;
    }
    const CharacterFacts loaded = LoadCharacterFacts(units);
    EXPECT_TRUE(loaded.lower == recorded.lower);
    EXPECT_TRUE(loaded.upper == recorded.upper);
    EXPECT_TRUE(loaded.types == recorded.types);
}

}  // namespace
