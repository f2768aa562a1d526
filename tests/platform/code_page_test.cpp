// Code pages against facts that hold on every system. That the recorded data is the platform's
// own is proved where the platform is: windows/recorded_pages.cpp.
#include "strings/code_page.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/code_pages.h"

namespace {

using brcore8::CodePage;
using Units = std::vector<std::uint16_t>;

Units ToWide(const CodePage& page, const std::string& text) {
    Units units(page.ToWide(text.data(), text.size(), nullptr, 0));
    EXPECT_EQ(page.ToWide(text.data(), text.size(), units.data(), units.size()), units.size());
    return units;
}

std::string FromWide(const CodePage& page, const Units& units, CodePage::Loss* loss = nullptr) {
    std::string text(page.FromWide(units.data(), units.size(), nullptr, 0), '\0');
    EXPECT_EQ(page.FromWide(units.data(), units.size(), text.data(), text.size(), loss),
              text.size());
    return text;
}

// First, while no page is loaded yet.
TEST(CodePageThreads, LoadAPageOnce) {
    std::vector<const CodePage*> found(8);
    std::vector<std::thread> threads;
    for (auto& slot : found)
        threads.emplace_back([&slot] { slot = CodePage::Find(936); });
    for (auto& thread : threads)
        thread.join();
    for (const CodePage* page : found)
        EXPECT_EQ(page, found[0]);
}

TEST(CodePage, ConvertsCharacters) {
    const struct {
        const char* name;
        unsigned page;
        std::string text;
        Units wide;
    } rows[] = {
        {"euro sign", 1252, "\x80", {0x20AC}},
        {"undefined byte stays a control", 1252, "\x81", {0x81}},
        {"cyrillic capital a", 1251, "\xC0", {0x0410}},
        {"box drawing", 437, "\xC4", {0x2500}},
        {"cyrillic in the OEM page", 866, "\x80", {0x0410}},
        {"hiragana a", 932, "\x82\xA0", {0x3042}},
        {"half-width katakana is one byte", 932, "\xB1", {0xFF71}},
        {"trail byte that is an ASCII letter", 932, "\x83\x41z", {0x30A2, 'z'}},
        {"chinese middle", 936, "\xD6\xD0", {0x4E2D}},
        {"hangul ga", 949, "\xB0\xA1", {0xAC00}},
        {"traditional one", 950, "\xA4\x40", {0x4E00}},
        {"user-defined area", 932, "\xF0\x40", {0xE000}},
        {"zero byte is a character", 932, {'\0', 'a'}, {0, 'a'}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const CodePage* page = CodePage::Find(row.page);
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(ToWide(*page, row.text), row.wide);
        CodePage::Loss loss;
        EXPECT_EQ(FromWide(*page, row.wide, &loss), row.text);
        EXPECT_EQ(loss.count, 0u);
    }
}

TEST(CodePage, ReadsBrokenPairs) {
    const CodePage& page = *CodePage::Find(932);
    const std::uint16_t none = 0x30FB;  // what this page gives for what it does not have
    EXPECT_EQ(ToWide(page, "\x81"), Units{none}) << "lead byte at the end";
    EXPECT_EQ(ToWide(page, {'\x81', '\0', 'A'}), (Units{none, 0, 'A'})) << "lead byte, then zero";
    EXPECT_EQ(ToWide(page, "\x81 A"), (Units{none, 'A'})) << "invalid trail byte is consumed";
}

TEST(CodePage, ReportsWhatDoesNotSurvive) {
    const struct {
        const char* name;
        unsigned page;
        Units wide;
        const char* text;
        std::size_t count, first;
    } rows[] = {
        {"all survive", 1252, {'a', 0xE9}, "a\xE9", 0, SIZE_MAX},
        {"best fit", 1252, {'x', 0x0100}, "xA", 1, 1},
        {"infinity becomes 8", 1252, {0x221E}, "8", 1, 0},
        {"yen sign becomes a backslash", 932, {0xA5}, "\\", 1, 0},
        {"default character", 1252, {'a', 0x3042, 'b', 0x3044}, "a?b?", 2, 1},
        {"a question mark is no loss", 1252, {'?'}, "?", 0, SIZE_MAX},
        {"surrogate pair is one loss, two characters", 932, {'a', 0xD83D, 0xDE00}, "a??", 1, 1},
        {"lone surrogates are two", 932, {0xDE00, 0xD83D}, "??", 2, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CodePage::Loss loss;
        EXPECT_EQ(FromWide(*CodePage::Find(row.page), row.wide, &loss), row.text);
        EXPECT_EQ(loss.count, row.count);
        EXPECT_EQ(loss.first, row.first);
    }
}

TEST(CodePage, WritesOnlyWholeCharactersThatFit) {
    const CodePage& page = *CodePage::Find(932);
    const Units wide{'a', 0x3042, 'b'};
    char text[] = "....";
    EXPECT_EQ(page.FromWide(wide.data(), wide.size(), text, 2), 4u);
    EXPECT_STREQ(text, "a...") << "no half character, and nothing after the gap";
    std::uint16_t units[] = {1, 1, 1};
    EXPECT_EQ(page.ToWide("a\x82\xA0z", 4, units, 2), 3u);
    EXPECT_EQ(Units(units, units + 3), (Units{'a', 0x3042, 1}));
}

TEST(CodePage, FoldsEveryLetterOfThePage) {
    const struct {
        const char* name;
        unsigned page, upper, lower;
    } rows[] = {
        {"ASCII", 1252, 'Q', 'q'},
        {"Latin-1", 1252, 0xC9, 0xE9},
        {"oe, far apart", 1252, 0x8C, 0x9C},
        {"cyrillic", 1251, 0xC0, 0xE0},
        {"greek", 1253, 0xC1, 0xE1},
        {"OEM page", 850, 0x90, 0x82},
        {"full-width letter", 932, 0x8260, 0x8281},
        {"cyrillic in two bytes", 932, 0x8440, 0x8470},
        {"greek in chinese", 936, 0xA6A1, 0xA6C1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const CodePage& page = *CodePage::Find(row.page);
        EXPECT_EQ(page.ToLower(row.upper), row.lower);
        EXPECT_EQ(page.ToUpper(row.lower), row.upper);
        EXPECT_EQ(page.ToLower(row.lower), row.lower);
        EXPECT_TRUE(page.Classes(row.upper) & CodePage::Upper);
        EXPECT_TRUE(page.Classes(row.lower) & CodePage::Lower);
        EXPECT_TRUE(page.Classes(row.lower) & CodePage::Alpha);
    }
    const CodePage& western = *CodePage::Find(1252);
    EXPECT_EQ(western.ToUpper(0xB5), 0xB5u) << "the capital of the micro sign is not in the page";
    EXPECT_EQ(western.ToUpper(0xFF), 0x9Fu);
    EXPECT_TRUE(CodePage::Find(932)->Classes(0x8140) & CodePage::Space) << "ideographic space";
}

// What everything that walks and folds text relies on.
TEST(CodePage, KeepsItsInvariants) {
    for (const unsigned number : {437u, 850u, 852u, 866u, 874u, 932u, 936u, 949u, 950u, 1250u,
                                  1251u, 1252u, 1253u, 1254u, 1255u, 1256u, 1257u, 1258u, 1361u,
                                  10000u}) {
        SCOPED_TRACE(number);
        const CodePage* page = CodePage::Find(number);
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(page, CodePage::Find(number)) << "a page is loaded once";
        EXPECT_EQ(page->Number(), number);
        EXPECT_EQ(page->IsDoubleByte(), (number >= 932 && number <= 950) || number == 1361);
        for (unsigned code = 0; code < 0x10000; ++code) {
            if (code >= 256 && !page->IsLead(static_cast<unsigned char>(code >> 8))) continue;
            for (const unsigned folded : {page->ToLower(code), page->ToUpper(code)}) {
                ASSERT_EQ(folded < 256, code < 256) << "a fold changes no width: " << code;
                ASSERT_TRUE(folded != 0 || code == 0) << code;
            }
            ASSERT_EQ(page->ToLower(page->ToLower(code)), page->ToLower(code)) << code;
        }
        for (unsigned byte = 0; byte < 128; ++byte) {
            ASSERT_FALSE(page->IsLead(static_cast<unsigned char>(byte)));
            ASSERT_EQ(page->WideOf(byte), byte) << "ASCII";
        }
    }
    EXPECT_EQ(CodePage::Find(65001), nullptr) << "UTF-8 is no page of one or two bytes";
    EXPECT_EQ(CodePage::Find(12345), nullptr);
}

}  // namespace
