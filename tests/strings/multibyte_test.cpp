#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "support/page_scope.h"

namespace {

using namespace std::string_literals;

int Sign(int order) {
    return order < 0 ? -1 : order > 0;
}

TEST(ProcessPage, IsChosenAndTold) {
    for (const int page : SSupportedCodePages()) {
        EXPECT_EQ(_setmbcp(page), 0) << page;
        EXPECT_EQ(_getmbcp(), page);
        EXPECT_EQ(SIsDoubleByteCodePage(), (page >= 932 && page <= 950) || page == 1361) << page;
        EXPECT_EQ(SSetOemCodePage(page), 0);
        EXPECT_EQ(SGetOemCodePage(), page);
    }
    EXPECT_EQ(SSupportedCodePages().size(), 20u);
    EXPECT_EQ(_setmbcp(932), 0);
    for (const int unknown : {1, 12345, 65001, -1, -5}) {
        EXPECT_EQ(_setmbcp(unknown), -1) << unknown;
        EXPECT_EQ(SSetOemCodePage(unknown), -1) << unknown;
    }
    EXPECT_EQ(_getmbcp(), 932) << "a refused page changes nothing";
    EXPECT_EQ(SSetOemCodePage(866), 0);
    EXPECT_EQ(_setmbcp(-2), 0);
    EXPECT_EQ(_getmbcp(), 866) << "-2 is the OEM page";
    EXPECT_EQ(_setmbcp(0), 0);
    EXPECT_EQ(_getmbcp(), 1252);
    EXPECT_EQ(_setmbcp(-3), 0);
    EXPECT_EQ(SSetOemCodePage(437), 0);
    _setmbcp(0);
}

TEST(Numeric, Compares) {
    const struct {
        const char* name;
        const char *left, *right;
        int order, noCase;
    } rows[] = {
        {"equal", "abc", "abc", 0, 0},
        {"both empty", "", "", 0, 0},
        {"empty first", "", "a", -1, -1},
        {"empty last", "a", "", 1, 1},
        {"numbers by value", "item10", "item9", 1, 1},
        {"numbers in the middle", "x9y", "x10a", -1, -1},
        {"more zeros sort later", "a007", "a7", 1, 1},
        {"fewer zeros sort first", "a1", "a01", -1, -1},
        {"zeros count only among equal numbers", "a001", "a2", -1, -1},
        {"text after zeros on the left is equal", "00x", "00", 0, 0},
        {"text after zeros on the right is greater", "00", "00x", -1, -1},
        {"different zeros alone", "000x", "00x", 1, 1},
        {"characters after zeros", "0a", "0b", -1, -1},
        {"zero against a number", "0", "5", -1, -1},
        {"zeros before a number against none", "05", "0", 1, 1},
        {"digit against letter", "1", "a", -1, -1},
        {"letter against digit", "a", "1", 1, 1},
        {"digit against the end", "a1", "a", 1, 1},
        {"case", "ABC", "abc", -1, 0},
        {"case around numbers", "X9", "x10", -1, -1},
        {"numbers wrap at 32 bits", "4294967296", "1", -1, -1},
        {"wrapped to equal", "4294967297", "1", 0, 0},
        {"difference wraps", "4294967295", "1", -1, -1},
        {"accented letters by signed byte", "\xE9", "e", -1, -1},
        {"accented letters fold", "\xC9", "\xE9", -1, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Sign(_tcscmpi(row.left, row.right)), row.order);
        EXPECT_EQ(Sign(_tcsicmpi(row.left, row.right)), row.noCase);
        EXPECT_EQ(Sign(_tcsncmpi(row.left, row.right, 70)), row.order);
        EXPECT_EQ(Sign(_tcsnicmpi(row.left, row.right, 70)), row.noCase);
    }
    EXPECT_EQ(_tcscmpi("0", std::string(65537, '0').c_str()), 0) << "zeros count in 16 bits";
    EXPECT_EQ(_tcscmpi(nullptr, nullptr), 0);
    EXPECT_LT(_tcscmpi(nullptr, "a"), 0);
    EXPECT_EQ(_tcscmpi("b", "a"), 1) << "the difference itself";
    EXPECT_EQ(_tcscmpi("a", "a\x80"), 128);
}

TEST(Numeric, KeysHaveAStrictOrder) {
    const struct {
        const char* name;
        std::string_view left, right;
        int order, noCase;
    } rows[] = {
        {"equal", "a1", "a1", 0, 0},
        {"numbers by value", "item9", "item10", -1, -1},
        {"of any length", "99999999999999999999", "100000000000000000000", -1, -1},
        {"fewer zeros first", "a1", "a01", -1, -1},
        {"text after zeros", "00", "00x", -1, -1},
        {"zeros count last", "a01x", "a1y", -1, -1},
        {"the first differing zeros decide", "0a00", "00a0", -1, -1},
        {"zero alone", "0", "5", -1, -1},
        {"digit against letter", "1", "a", -1, -1},
        {"case", "ABC10", "abc9", -1, 1},
        {"case alone", "ABC", "abc", -1, 0},
        {"accented letters come last", "\xE9", "z", 1, 1},
        {"zero bytes count", {"a\0b", 3}, {"a\0c", 3}, -1, -1},
        {"nothing", "", {"\0", 1}, -1, -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Sign(SCompareNumbered(row.left, row.right)), row.order);
        EXPECT_EQ(Sign(SCompareNumbered(row.right, row.left)), -row.order);
        EXPECT_EQ(Sign(SCompareNumberedNoCase(row.left, row.right)), row.noCase);
    }
    // All texts of up to three of these pieces: their order has no circle, and 0 means the same.
    const std::string pieces[] = {"0", "1", "10", "x", "X", "\0"s, "\x83", "\x83\x41", "-"};
    for (const int number : {1252, 932}) {
        const PageScope page(number);
        std::vector<std::string> texts = {""};
        for (std::size_t from = 0; texts.size() < 1 + 9 + 81 + 729; ++from) {
            for (const std::string& piece : pieces)
                texts.push_back(texts[from] + piece);
        }
        std::sort(texts.begin(), texts.end());
        texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
        std::shuffle(texts.begin(), texts.end(), std::mt19937(3));
        std::sort(texts.begin(), texts.end(),
                  [](const std::string& left, const std::string& right) {
                      return SCompareNumbered(left, right) < 0;
                  });
        for (std::size_t i = 0; i < texts.size(); ++i) {
            for (std::size_t j = 0; j < texts.size(); ++j) {
                const int expected = (i > j) - (i < j);
                ASSERT_EQ(Sign(SCompareNumbered(texts[i], texts[j])), expected)
                    << testing::PrintToString(texts[i]) << " " << testing::PrintToString(texts[j]);
            }
        }
    }
}

TEST(Numeric, StopsAfterBytes) {
    EXPECT_EQ(_tcsncmpi("abcX", "abcY", 3), 0);
    EXPECT_LT(_tcsncmpi("a12", "a13", 3), 0);
    EXPECT_EQ(_tcsncmpi("a12", "a13", 2), 0) << "the number is cut, too";
    EXPECT_GT(_tcsncmpi("ab", "a", 2), 0);
    EXPECT_EQ(_tcsncmpi("ab", "a", 1), 0);
    EXPECT_EQ(_tcsncmpi("a", "b", 0), 0);
    EXPECT_EQ(_tcsncmpi("a", "b", -1), 0);
    EXPECT_EQ(_tcsnicmpi("ABx", "aby", 2), 0);
}

TEST(Numeric, ComparesDoubleByteCodes) {
    const PageScope page(932);
    EXPECT_LT(_tcscmpi("\x82\xA0", "a"), 0) << "a lead byte is signed";
    EXPECT_GT(_tcscmpi("\xB1", "a"), 0) << "a single byte is not";
    EXPECT_LT(_tcscmpi("\x83\x41"
                       "9",
                       "\x83\x41"
                       "10"),
              0);
    EXPECT_EQ(_tcsicmpi("\x82\x60", "\x82\x81"), 0) << "full-width letters fold";
    EXPECT_NE(_tcsicmpi("\x83\x41", "\x83\x61"), 0) << "a trail byte is no letter";
}

TEST(Search, IgnoresCase) {
    const char* const text = "One \xC9t\xE9, two";
    EXPECT_EQ(_tcsistr(text, "ONE"), text);
    EXPECT_EQ(_tcsistr(text, "\xE9T\xC9"), text + 4);
    EXPECT_EQ(_tcsistr(text, "TWO", 3), text + 9);
    EXPECT_EQ(_tcsistr(text, "three"), nullptr);
    EXPECT_EQ(_tcsistr(text, ""), text);
    EXPECT_EQ(_tcsistr(nullptr, "a"), nullptr);
    EXPECT_EQ(_tcsistr(text, nullptr), nullptr);
    EXPECT_EQ(_tcsichr(text, 'T'), text + 5);
    EXPECT_EQ(_tcsichr(text, 0xE9), text + 4) << "the other case comes first";
    EXPECT_EQ(_tcsichr(text, ','), text + 7);
    EXPECT_EQ(_tcsichr(text, 'q'), nullptr);
    EXPECT_EQ(_tcsichr(nullptr, 'q'), nullptr);

    const PageScope page(932);
    const char* const kana = "\x83\x61\x82\x81";
    EXPECT_EQ(_tcsichr(kana, 'A'), nullptr) << "a trail byte is no letter";
    EXPECT_EQ(_tcsichr(kana, 0x8260), kana + 2);
    EXPECT_EQ(_tcsistr(kana, "\x82\x60"), kana + 2);
}

TEST(Case, Toggles) {
    char western[] = "aB1\xE9\xB5";
    EXPECT_STREQ(CharToggle(western), "Ab1\xC9\xB5") << "the micro sign has no capital here";
    EXPECT_EQ(CharToggle(nullptr), nullptr);
    const PageScope page(932);
    char japanese[] = "aB\x83\x61\x82\x60";
    EXPECT_STREQ(CharToggle(japanese), "Ab\x83\x61\x82\x81");
}

TEST(Wide, ConvertsTerminatedText) {
    const PageScope page(932);
    const unsigned short wide[] = {'a', 0x3042, 'b', 0};
    char text[8];
    EXPECT_EQ(Swcstombsz(text, wide, sizeof text), 5);
    EXPECT_STREQ(text,
                 "a\x82\xA0"
                 "b");
    EXPECT_EQ(Swcstombsz(nullptr, wide, 0), 5) << "the size needed";
    EXPECT_EQ(Swcstombsz(text, wide, 5), 5) << "just enough";
    EXPECT_EQ(Swcstombsz(text, wide, 3), 0);
    EXPECT_STREQ(text, "a") << "no half character";
    EXPECT_EQ(Swcstombsz(text, wide, 0), 0);
    EXPECT_EQ(Swcstombsz(text, nullptr, 8), 1);
    EXPECT_STREQ(text, "");

    unsigned short back[8];
    EXPECT_EQ(Smbstowcsz(back,
                         "a\x82\xA0"
                         "b",
                         8),
              4);
    EXPECT_TRUE(std::equal(wide, wide + 4, back));
    EXPECT_EQ(Smbstowcsz(nullptr,
                         "a\x82\xA0"
                         "b",
                         0),
              4);
    EXPECT_EQ(Smbstowcsz(back, "abc", 2), 0);
    EXPECT_EQ(back[1], 0);
    EXPECT_EQ(Smbstowcsz(back, nullptr, 8), 1);
}

TEST(Utf8Helpers, KeepTheirThreeByteForms) {
    const struct {
        const char* name;
        int page;
        const char *text, *utf8;
    } rows[] = {
        {"ASCII", 1252, "abc", "abc"},
        {"two bytes", 1252, "\xE9", "\xC3\xA9"},
        {"greek below 0x400", 1253, "\xE1", "\xCE\xB1"},
        {"cyrillic takes three", 1251, "\xC0", "\xE0\x90\x90"},
        {"hebrew takes three", 1255, "\xE0", "\xE0\x97\x90"},
        {"euro", 1252, "\x80", "\xE2\x82\xAC"},
        {"hiragana", 932, "\x82\xA0", "\xE3\x81\x82"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        char utf8[32], text[32];
        EXPECT_STREQ(ST2UTF8Helper(utf8, row.text, 8), row.utf8);
        EXPECT_STREQ(SUTF82THelper(text, row.utf8, static_cast<int>(std::strlen(row.utf8)) + 1),
                     row.text);
    }
    char out[32];
    EXPECT_STREQ(ST2UTF8Helper(out, "\xE9\xE9\xE9", 2), "\xC3\xA9\xC3\xA9");
    EXPECT_STREQ(ST2UTF8Helper(out, "abc", -1), "");
    EXPECT_STREQ(ST2UTF8Helper(out, nullptr, 3), "");
    EXPECT_STREQ(SUTF82THelper(out, "abc", 3), "ab") << "room for the terminator";
    EXPECT_STREQ(SUTF82THelper(out, "a\xC3(b\xFF\xE3\x81", 32), "a?(b??") << "malformed";
    EXPECT_STREQ(SUTF82THelper(out, "\xF0\x9F\x98\x80", 32), "??") << "as two surrogates";
    const PageScope page(1251);
    EXPECT_STREQ(SUTF82THelper(out, "\xD0\x90", 32), "\xC0") << "the standard form";
}

TEST(Conversion, ReportsWhatItLost) {
    SConversionLoss loss;
    EXPECT_EQ(STextFromUtf16(u"a\u20ACb", &loss),
              "a\x80"
              "b");
    EXPECT_EQ(loss.count, 0u);
    EXPECT_EQ(loss.first, std::u16string_view::npos);
    EXPECT_EQ(STextFromUtf16(u"a\u3042\u0100\U0001F600z", &loss), "a?A??z");
    EXPECT_EQ(loss.count, 3u);
    EXPECT_EQ(loss.first, 1u);
    EXPECT_EQ(STextFromUtf16(u"\u2500", nullptr, SCodePageKind::Oem), "\xC4");
    EXPECT_EQ(SUtf16FromText("\xC4", nullptr, SCodePageKind::Oem), u"\u2500");
    EXPECT_EQ(SUtf16FromText({"a\0\x80", 3}), std::u16string(u"a\0\u20AC", 3));
    const PageScope page(932);
    EXPECT_EQ(SUtf16FromText("\x82\xA0z"), u"\u3042z");
    EXPECT_EQ(STextFromUtf16(u"\u3042z", &loss), "\x82\xA0z");
    EXPECT_EQ(loss.count, 0u) << "nor is an older loss kept";
}

TEST(Unicode, ReadsUtf8) {
    const auto npos = std::string_view::npos;
    const struct {
        const char* name;
        std::string utf8;
        std::u16string wide;
        std::size_t malformed;
    } rows[] = {
        {"empty", "", u"", npos},
        {"one to three bytes", "a\xC3\xA9\xE2\x82\xAC", u"a\u00E9\u20AC", npos},
        {"four bytes", "\xF0\x9F\x98\x80", u"\U0001F600", npos},
        {"the last code point", "\xF4\x8F\xBF\xBF", u"\U0010FFFF", npos},
        {"U+FFFF", "\xEF\xBF\xBF", u"\uFFFF", npos},
        {"zero byte", {'a', '\0', 'b'}, {u'a', u'\0', u'b'}, npos},
        {"three bytes from U+0400", "\xE0\x90\x80", u"\u0400", npos},
        {"overlong below that", "\xE0\x8F\xBF", u"\uFFFD\uFFFD\uFFFD", 0},
        {"overlong slash", "\xC0\xAF", u"\uFFFD\uFFFD", 0},
        {"encoded surrogate", "a\xED\xA0\x80", u"a\uFFFD\uFFFD\uFFFD", 1},
        {"beyond the last", "\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD", 0},
        {"cut short", "ab\xE2\x82", u"ab\uFFFD", 2},
        {"cut by another character", "\xF0\x9F\x98z", u"\uFFFDz", 0},
        {"continuation alone", "\x80", u"\uFFFD", 0},
        {"only the first place is told",
         "\xFF"
         "a\xFE",
         u"\uFFFDa\uFFFD", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::size_t malformed = 99;
        EXPECT_EQ(SUtf16FromUtf8(row.utf8, &malformed), row.wide);
        EXPECT_EQ(malformed, row.malformed);
    }
}

TEST(Unicode, WritesUtf8) {
    std::size_t malformed = 99;
    const std::u16string wide = u"a\u00E9\u0400\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
    const std::string utf8 = SUtf8FromUtf16(wide, &malformed);
    EXPECT_EQ(utf8,
              "a\xC3\xA9\xD0\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF")
        << "the standard form, two bytes up to U+07FF";
    EXPECT_EQ(malformed, std::u16string_view::npos);
    EXPECT_EQ(SUtf16FromUtf8(utf8), wide);
    const std::u16string broken{u'a', char16_t{0xDC00}, char16_t{0xD800}, u'b', char16_t{0xD800}};
    EXPECT_EQ(SUtf8FromUtf16(broken, &malformed),
              "a\xEF\xBF\xBD\xEF\xBF\xBD"
              "b\xEF\xBF\xBD");
    EXPECT_EQ(malformed, 1u);
}

}  // namespace
