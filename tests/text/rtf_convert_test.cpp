#include <brcore8/core/exception.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>
#include <brcore8/text/rtf_document.h>

#include <gtest/gtest.h>

#include "support/failing_allocator.h"
#include "support/page_scope.h"
#include "support/rtf_documents.h"

namespace {

using namespace std::string_literals;

std::string TextOf(SRtfDocument& document, const std::string& source) {
    SString rtf{std::string_view(source)}, text = "old";
    document.RtfToText(&text, rtf);
    return std::string(text.View());
}

std::string RtfOf(SRtfDocument& document, const std::string& source) {
    SString text{std::string_view(source)}, rtf = "old";
    EXPECT_EQ(document.TextToRtf(&rtf, text), 1);
    EXPECT_TRUE(source.empty() || rtf.IsRtf()) << rtf;
    return std::string(rtf.View());
}

// One object converts all, forwards and backwards: what it read before must not show.
TEST(RtfConversion, ReadsTheDocumentsOfManyWritersAsTheRecordedControlDid) {
    auto documents = RtfDocumentFiles();
    ASSERT_GE(documents.size(), 25u);
    SRtfDocument converter;
    for (int pass = 0; pass < 2; ++pass) {
        for (const auto& document : documents) {
            std::u16string text;
            EXPECT_EQ(converter.RtfToUtf16(&text, document.rtf), 1) << document.name;
            EXPECT_EQ(SUtf8FromUtf16(text), SUtf8FromUtf16(document.text)) << document.name;
        }
        std::reverse(documents.begin(), documents.end());
    }
}

// Documents that write their text as UTF-8, and data that only its length ends.
TEST(RtfConversion, ReadsRawBytes) {
    const struct {
        const char* rtf;
        std::u16string text;
    } rows[] = {
        {"{\\urtf1 \xC3\xA9}", u"\u00E9"},
        {"{\\urtf1 \xE2\x82\xAC|\xF0\x9F\x98\x80}", u"\u20AC|\U0001F600"},
        {"{\\urtf1 a\xE2\x82\\'acz}", u"a\u20ACz"},
        {"{\\urtf1 a\xA9z}", u"a\uFFFDz"},
        {"{\\urtf1 a\xC3z}", u"a\uFFFDz"},
        {"{\\urtf1 a\xC0\x80z}", u"a\uFFFD\uFFFDz"},
        {"{\\urtf1 a\xE2\x82\\b z}", u"a\uFFFDz"},
        {"{\\urtf1 a\xE2\x82}", u"a\uFFFD"},
        {"{\\rtf1\\ansi a\\bin3 {{{z}", u"az"},
        {"{\\rtf1\\ansi a\\bin-3 z}", u"az"},
    };
    SRtfDocument converter;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.rtf);
        std::u16string text;
        EXPECT_EQ(converter.RtfToUtf16(&text, row.rtf), 1);
        EXPECT_EQ(SUtf8FromUtf16(text), SUtf8FromUtf16(row.text));
    }
}

TEST(RtfConversion, TakesWhatIsNoDocumentAsText) {
    SRtfDocument converter;
    EXPECT_EQ(TextOf(converter, "{no} \\rtf"), "{no} \\rtf");
    EXPECT_EQ(TextOf(converter, "a\rb\nc\r\n"), "a\r\nb\r\nc\r\n");
    const std::string document = "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}\\f0 {\\b b\\par c}}";
    EXPECT_EQ(TextOf(converter, RtfOf(converter, document)), "b\r\nc") << "a document stays one";
    EXPECT_EQ(TextOf(converter, RtfOf(converter, document.substr(0, document.size() - 2))),
              "b\r\nc")
        << "and comes back whole";
}

TEST(RtfConversion, TellsWhatItDid) {
    SRtfDocument converter;
    SString empty, text = "old", none = "{\\rtf1\\ansi}";
    EXPECT_EQ(converter.RtfToText(nullptr, none), 0);
    EXPECT_EQ(converter.TextToRtf(nullptr, none), 0);
    EXPECT_EQ(converter.RtfToUtf16(nullptr, "{\\rtf1 x}"), 0);
    EXPECT_EQ(converter.Utf16ToRtf(nullptr, u"x"), 0);
    EXPECT_EQ(converter.RtfToText(&text, empty), 1);
    EXPECT_STREQ(text, "");
    text = "old";
    EXPECT_EQ(converter.TextToRtf(&text, empty), 1);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(converter.RtfToText(&text, none), 0) << "no text came out";
    SString both = "{\\rtf1\\ansi x}";
    EXPECT_EQ(converter.RtfToText(&both, both), 1);
    EXPECT_STREQ(both, "x");
    EXPECT_EQ(converter.TextToRtf(&both, both), 1);
    SRtfDocument copy(converter);
    copy = converter;
    EXPECT_EQ(copy.RtfToText(&both, both), 1);
    EXPECT_STREQ(both, "x");
}

TEST(RtfConversion, BringsEveryTextBack) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n') all += static_cast<char>(byte);
    const struct {
        const char* name;
        int page;
        std::string text;
        std::string back;
    } rows[] = {
        {"every byte", 1252, all, all},
        {"every byte of another page", 1251, all, all},
        {"line ends of all kinds", 1252, "a\nb\rc\r\nd\n\re", "a\r\nb\r\nc\r\nd\r\n\r\ne"},
        {"a line end at the end", 1252, "a\r\n", "a\r\n"},
        {"line ends alone", 1252, "\n\n", "\r\n\r\n"},
        {"structure as text", 1252, "{a}\\b\\'e9\\u233?{\\*c", "{a}\\b\\'e9\\u233?{\\*c"},
        {"blanks and tabs", 1252, "  a  \t\t b ", "  a  \t\t b "},
        {"digits behind a character", 1252,
         "\x80"
         "12 \xE9"
         "1",
         "\x80"
         "12 \xE9"
         "1"},
        {"Japanese, with structure in trail bytes", 932, "\x95\x5C\x83\x7B\x83\x7D\xB1 z",
         "\x95\x5C\x83\x7B\x83\x7D\xB1 z"},
        {"simplified Chinese", 936, "\xBD\xA8\xD6\xFE", "\xBD\xA8\xD6\xFE"},
        {"Korean", 949, "\xC7\xD1\xB1\xDB", "\xC7\xD1\xB1\xDB"},
        {"traditional Chinese", 950, "\xB3\x5C\xA5\x5C", "\xB3\x5C\xA5\x5C"},
    };
    SRtfDocument converter;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        EXPECT_EQ(TextOf(converter, RtfOf(converter, row.text)), row.back);
    }
}

TEST(RtfConversion, LosesNothingInUtf16) {
    SRtfDocument converter;
    std::u16string text;
    for (char32_t unit = 0x20; unit < 0xFFFE; unit += 37)
        if (unit < 0xD800 || unit > 0xDFFF) text += static_cast<char16_t>(unit);
    // Paragraphs of moderate length, and characters outside the basic plane.
    for (std::size_t at = 50; at < text.size(); at += 52)
        text.insert(at, u"\r\n");
    text += u"\r\n\U0001F600 \U0001F30E";
    SString rtf;
    std::u16string back;
    ASSERT_EQ(converter.Utf16ToRtf(&rtf, text), 1);
    ASSERT_EQ(converter.RtfToUtf16(&back, rtf.View()), 1);
    EXPECT_EQ(SUtf8FromUtf16(back), SUtf8FromUtf16(text));
    ASSERT_EQ(converter.Utf16ToRtf(&rtf, u""), 1);
    EXPECT_TRUE(rtf.IsRtf());
    EXPECT_EQ(TextOf(converter, std::string(rtf.View())), "");
    ASSERT_EQ(converter.Utf16ToRtf(&rtf, u"a\0b"s), 1);
    ASSERT_EQ(converter.RtfToUtf16(&back, rtf.View()), 1);
    EXPECT_EQ(back, u"ab") << "no document holds a zero unit";
}

TEST(RtfConversion, BestFitsWhatThePageLacks) {
    SRtfDocument converter;
    const PageScope page(1251);
    EXPECT_EQ(TextOf(converter, "{\\rtf1\\ansi\\uc1 \\u1046?\\u233?\\u26085?}"),
              "\xC6"
              "e?");
}

TEST(RtfConversion, SurvivesGroupsOfAnyDepth) {
    constexpr std::size_t kDepth = 1'000'000;
    const std::string deep(kDepth, '{');
    SRtfDocument converter;
    EXPECT_EQ(TextOf(converter, "{\\rtf1\\ansi " + deep + "x" + std::string(kDepth, '}') + "y}"),
              "xy");
    EXPECT_EQ(TextOf(converter, RtfOf(converter, "{\\rtf1\\ansi " + deep + "x")), "x");
}

TEST(RtfConversion, KeepsItsResultWhenMemoryEnds) {
    SRtfDocument converter;
    const SString document("{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset204 A;}}\\f0 {\\b \\'e9\\par}b}");
    const SString plain("caf\xE9 \x80, and text beyond the smallest buffers");
    for (int nth = 1;; ++nth) {
        SString text("old text of some length, on the heap"), rtf(text), source(document);
        SString words(plain);
        FailNthAllocation fail(nth);
        bool whole = false;
        try {
            converter.RtfToText(&text, source);
            converter.TextToRtf(&rtf, words);
            whole = true;
        } catch (const SEOutOfMemory&) {
        }
        if (!fail.Triggered()) {
            EXPECT_GT(nth, 3);
            break;
        }
        const bool kept = text.View().starts_with("old") || rtf.View().starts_with("old");
        EXPECT_NE(whole, kept) << nth << ": " << text << ", " << rtf;
        EXPECT_STREQ(source, document);
        EXPECT_STREQ(words, plain);
    }
}

}  // namespace
