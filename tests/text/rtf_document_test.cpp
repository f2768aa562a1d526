#include <brcore8/text/rtf_document.h>

#include <brcore8/core/exception.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/unicode.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "support/failing_allocator.h"
#include "support/page_scope.h"
#include "support/rtf_documents.h"

using namespace std::string_view_literals;

namespace {

// ---- Tags -------------------------------------------------------------------------------------

TEST(RtfTags, AreFoundOneAfterTheOther) {
    const struct {
        const char* name;
        const char* text;
        int wholeGroup;
        const char* tags;  // each with a bar behind it
    } rows[] = {
        {"all kinds", " {\\rtf1 Hi there\\par\r\n}", 0, "{|\\rtf1 |Hi there|\\par|}|"},
        {"a tab ends a word too", "\\a\tb", 0, "\\a\t|b|"},
        {"words up to what ends them", "\\a1,x y\\b-2{\\c}\\d\ne", 0,
         "\\a1,x |y|\\b-2|{|\\c|}|\\d|e|"},
        {"text keeps its blanks", "a b \r\n c{", 0, "a b \r\n c|{|"},
        {"escapes are three tags", "\\\\\\{", 0, "\\|\\|\\|{|"},
        {"whole groups", "{a{b}\\{}x{c", 1, "{a{b}\\{}|x|{c|"},
        {"a closing brace alone", "}a", 1, "}|a|"},
        {"data with a brace", "{\\bin2 }}a}b", 1, "{\\bin2 }}a}|b|"},
        {"data beyond the end", "{\\bin99 }", 1, "{\\bin99 }|"},
        {"only blanks", " \t\r\n", 1, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string text = row.text;
        std::string tags;
        char* start = text.data();
        long length = 0;
        while (SRtfDocument::GetNextTag(&start, &length, start + length, row.wholeGroup))
            tags += std::string(start, static_cast<std::size_t>(length)) + "|";
        EXPECT_EQ(tags, row.tags);
        EXPECT_EQ(length, 0);
    }
}

TEST(RtfTags, StepOverDoubleByteCharacters) {
    const PageScope page(932);
    char text[] = "\x83\x5C\x83\x7B{";
    char* start = nullptr;
    long length = 0;
    EXPECT_EQ(SRtfDocument::GetNextTag(&start, &length, text, 0), 1);
    EXPECT_EQ(length, 4);
}

TEST(RtfTags, RefuseNull) {
    char text[] = "text";
    char* start = text;
    char* none = nullptr;
    long length = 0;
    EXPECT_EQ(SRtfDocument::GetNextTag(nullptr, &length, text, 0), 0);
    EXPECT_EQ(SRtfDocument::GetNextTag(&start, nullptr, text, 0), 0);
    EXPECT_EQ(SRtfDocument::GetNextTag(&start, &length, nullptr, 0), 0);
    EXPECT_EQ(SRtfDocument::SkipSpace(nullptr), 0);
    EXPECT_EQ(SRtfDocument::SkipSpace(&none), 0);
    EXPECT_EQ(SRtfDocument::RemoveTag(nullptr, 1), 0);
    EXPECT_EQ(SRtfDocument::RemoveTag(text, 0), 0);
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(SRtfDocument::RemoveTag(text + 1, 2), 1);
    EXPECT_STREQ(text, "tt");
    EXPECT_EQ(SRtfDocument::RemoveTag(text + 1, 99), 1);
    EXPECT_STREQ(text, "t");
}

// ---- Take apart -------------------------------------------------------------------------------

using Extract = int(SString&, SString&, int);

TEST(RtfExtract, TakesAPartAndLeavesTheRest) {
    const struct {
        const char* name;
        Extract* extract;
        const char* text;
        const char* part;
        const char* rest;
    } rows[] = {
        {"header", SRtfDocument::ExtractHeader, "{\\rtf1\\ansi\\ansicpg1252\\deff0 {\\fonttbl}",
         "{\\rtf1\\ansi\\ansicpg1252\\deff0 ", "{\\fonttbl}"},
        {"header of six words", SRtfDocument::ExtractHeader,
         "{\\rtf1\\ansi\\deff0\\deflang1033\\deflangfe1036\\ansicpg1252\\ansi x}",
         "{\\rtf1\\ansi\\deff0\\deflang1033\\deflangfe1036\\ansicpg1252", "\\ansi x}"},
        {"header over line ends", SRtfDocument::ExtractHeader, "{\\rtf1\r\n\\ansi\r\nx}",
         "{\\rtf1\\ansi", "\r\n\r\nx}"},
        {"header up to another word", SRtfDocument::ExtractHeader, "{\\rtf1\\mac\\ansi}", "{\\rtf1",
         "\\mac\\ansi}"},
        {"default font 1 is another word", SRtfDocument::ExtractHeader, "{\\rtf1\\deff1}",
         "{\\rtf1", "\\deff1}"},
        {"header of other RTF", SRtfDocument::ExtractHeader, "{\\urtf1\\ansi}", "{",
         "\\urtf1\\ansi}"},
        {"header of what is no RTF", SRtfDocument::ExtractHeader, "{\\ansi}", "", "{\\ansi}"},
        {"fonts", SRtfDocument::ExtractFontTable, "{\\rtf1{\\fonttbl{\\f0 A;}}x}",
         "{\\fonttbl{\\f0 A;}}", "{\\rtf1x}"},
        {"fonts without a header", SRtfDocument::ExtractFontTable, "\r\n{\\fonttbl {\\f0 A;}} x",
         "{\\fonttbl {\\f0 A;}}", "\r\n x"},
        {"fonts never closed", SRtfDocument::ExtractFontTable, "x{\\fonttbl{\\f0 A;}",
         "{\\fonttbl{\\f0 A;}", "x"},
        {"fonts only in text", SRtfDocument::ExtractFontTable, "{\\rtf1 \\{\\fonttbl x}", "",
         "{\\rtf1 \\{\\fonttbl x}"},
        {"colours, the first ones", SRtfDocument::ExtractColorTable,
         "{\\rtf1{\\colortblx;}{\\colortbl;}{\\colortbl;;}}", "{\\colortbl;}",
         "{\\rtf1{\\colortblx;}{\\colortbl;;}}"},
        {"styles with an escaped brace", SRtfDocument::ExtractStyleTable,
         "{\\rtf1{\\stylesheet{\\s0 A\\}B;}}x}", "{\\stylesheet{\\s0 A\\}B;}}", "{\\rtf1x}"},
        {"styles of none", SRtfDocument::ExtractStyleTable, "", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SString part = "old", rtf = row.text;
        EXPECT_EQ(row.extract(part, rtf, 0), 1);
        EXPECT_EQ(part, row.part);
        EXPECT_EQ(rtf, row.text);
        EXPECT_EQ(row.extract(part, rtf, 1), 1);
        EXPECT_EQ(part, row.part);
        EXPECT_EQ(rtf, row.rest);
        SString both = row.text;
        EXPECT_EQ(row.extract(both, both, 1), 1);
        EXPECT_EQ(both, row.part);
    }
}

TEST(RtfExtract, KeepsZeroBytes) {
    SString table, rtf(std::string_view("{\\rtf1 a\0b{\\fonttbl\0}\0}"sv));
    SRtfDocument::ExtractFontTable(table, rtf, 1);
    EXPECT_EQ(table.View(), "{\\fonttbl\0}"sv);
    EXPECT_EQ(rtf.View(), "{\\rtf1 a\0b\0}"sv);
}

// ---- Renumber ---------------------------------------------------------------------------------

TEST(RtfRenumber, ChangesNumbersAndNothingElse) {
    SMap<int, int> fonts, colors;
    fonts.Add(2, 7);
    fonts.Add(31500, -1);
    colors.Add(0, 3);
    colors.Add(12, 4);
    const struct {
        const char* name;
        std::string_view body;
        std::string_view result;
    } rows[] = {
        {"fonts", "\\f2 a\\f31500\\b", "\\f7 a\\f-1\\b"},
        {"the blank and what follows stay", "\\f2  a \r\n \\f2\r\n\\f2\ta{\\f2}",
         "\\f7  a \r\n \\f7\r\n\\f7\ta{\\f7}"},
        {"colours", "\\cf0\\cb12 \\highlight12 x", "\\cf3\\cb4 \\highlight4 x"},
        {"numbers not in their map", "\\f0\\f12\\cf2\\cb1\\highlight2\\f99999999999999999999 ",
         "\\f0\\f12\\cf2\\cb1\\highlight2\\f99999999999999999999 "},
        {"other words", "\\fs2\\fi2\\field\\f\\cf\\chcbpat12\\highlight x2",
         "\\fs2\\fi2\\field\\f\\cf\\chcbpat12\\highlight x2"},
        {"text right behind the number", "\\cf12Red\\f2,x", "\\cf4Red\\f7,x"},
        {"a backslash that is text", "\\\\f2 \\\\\\f2 ", "\\\\f2 \\\\\\f7 "},
        {"binary data", "\\bin4 \\f2 \\f2 \\bin5\\f2 x\\f2", "\\bin4 \\f2 \\f7 \\bin5\\f2 x\\f7"},
        {"zero bytes", "a\0\\f2\0 b\0"sv, "a\0\\f7\0 b\0"sv},
        {"leading zeros", "\\f002 ", "\\f7 "},
        {"malformed", "}}{\\f2\\'\\", "}}{\\f7\\'\\"},
        {"empty", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SString body(row.body), result = "old";
        EXPECT_EQ(SRtfDocument::ChangeFontAndColor(body, result, fonts, colors), 1);
        EXPECT_EQ(result.View(), row.result);
        EXPECT_EQ(body.View(), row.body);
        EXPECT_EQ(SRtfDocument::ChangeFontAndColor(body, body, fonts, colors), 1);
        EXPECT_EQ(body.View(), row.result);
    }
}

// Depth taken by recursion, or a group searched at each brace, would not come to an end.
TEST(RtfDocument, TakesHugeInput) {
    SMap<int, int> map;
    map.Add(1, 22);
    for (const char brace : {'{', '}'}) {
        SString braces(brace, 1000000);
        SString part, result;
        SRtfDocument::ExtractFontTable(part, braces, 1);
        EXPECT_EQ(part, "");
        SRtfDocument::ChangeFontAndColor(braces, result, map, map);
        EXPECT_EQ(result, braces);
        EXPECT_EQ(SRtfDocument::Merge("{\\rtf1" + braces, "{\\rtf1 b}", result), 1);
        EXPECT_TRUE(result.View().ends_with("{b}}")) << result.Right(20);
        SString copy = "{\\fonttbl" + braces;
        SRtfDocument::ExtractFontTable(part, copy, 1);
        EXPECT_EQ(part.Length(), brace == '{' ? 1000009 : 10);
    }
    SStringBuffer body;
    for (int i = 0; i < 1000000; ++i)
        body += "\\f1 x";
    SString result;
    SRtfDocument::ChangeFontAndColor(body, result, map, map);
    EXPECT_EQ(result.Length(), 6000000);
}

// ---- Put together -----------------------------------------------------------------------------

TEST(RtfMerge, MakesOneDocument) {
    const struct {
        const char* name;
        const char* first;
        const char* second;
        const char* merged;
    } rows[] = {
        {"tables and numbers",
         "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fswiss Arial;}}{\\colortbl;\\red255;}\\f0 One\\par}",
         "{\\rtf1\\ansi{\\fonttbl{\\f0\\fswiss arial;}{\\f1 Times;}}{\\colortbl;\\blue255;}"
         "\\f1\\cf1 Two\\par}",
         "{\\rtf1\\ansi\\deff0{\\fonttbl\r\n{\\f0\\fswiss Arial;}\r\n{\\f1 Times;}\r\n}\r\n"
         "{\\colortbl\r\n;\r\n\\red255;\r\n\\blue255;\r\n}\r\n"
         "{\\f0 One\\par}{\\f1\\cf2 Two\\par}}"},
        {"nothing but text", "{\\rtf1 a\\par}\r\n", "{\\rtf1 b}", "{\\rtf1 {a\\par}{b}}"},
        {"a paragraph left open", "{\\rtf1 a}", "{\\rtf1 b}", "{\\rtf1 {a}\\par\r\n{b}}"},
        {"open behind its last mark", "{\\rtf1\\par a{\\*\\x y}}", "{\\rtf1}",
         "{\\rtf1{\\par a{\\*\\x y}}\\par\r\n{}}"},
        {"closed before what shows nothing", "{\\rtf1 a\\par{\\*\\x y}\r\n\\pard}", "{\\rtf1}",
         "{\\rtf1 {a\\par{\\*\\x y}\r\n\\pard}{}}"},
        {"numbers of the first change too",
         "{\\rtf1\\deff0{\\fonttbl{\\f3 A;}{\\f0 B;}}{\\stylesheet{\\s0\\f3 N;}}\\f0 a\\par}",
         "{\\rtf1{\\stylesheet{\\s1 M;}}b}",
         "{\\rtf1\\deff1{\\fonttbl\r\n{\\f0 A;}\r\n{\\f1 B;}\r\n}\r\n"
         "{\\stylesheet{\\s0\\f0 N;}}{\\f1 a\\par}{b}}"},
        {"another default font", "{\\rtf1{\\fonttbl{\\f0 A;}}\\par}",
         "{\\rtf1{\\fonttbl{\\f0 B;}}b}",
         "{\\rtf1{\\fonttbl\r\n{\\f0 A;}\r\n{\\f1 B;}\r\n}\r\n{\\par}{\\f1 b}}"},
        {"document words behind others",
         "{\\rtf1\\adeflang1025\\ansi\\ansicpg1251\\deff2{\\fonttbl{\\f2 A;}}\\par}", "{\\rtf1 b}",
         "{\\rtf1\\ansi\\ansicpg1251\\deff0{\\fonttbl\r\n{\\f0 A;}\r\n}\r\n"
         "{\\adeflang1025\\ansi\\ansicpg1251\\deff0\\par}{b}}"},
        {"fonts of one name that read bytes differently",
         "{\\rtf1{\\fonttbl{\\f0\\fcharset0 A;}{\\f1 A;}}\\par}",
         "{\\rtf1\\ansi\\ansicpg1251{\\fonttbl{\\f0 A;}{\\f1\\fcharset0 A;}}\\f0 b}",
         "{\\rtf1{\\fonttbl\r\n{\\f0\\fcharset0 A;}\r\n{\\f1\\fcharset204 A;}\r\n}\r\n"
         "{\\par}{\\f1 \\f1 b}}"},
        {"shading and borders", "{\\rtf1{\\colortbl\\red1;}\\par}",
         "{\\rtf1{\\colortbl\\red2;}\\clcbpat0\\brdrcf0\\ulc0}",
         "{\\rtf1{\\colortbl\r\n;\r\n\\red1;\r\n\\red2;\r\n}\r\n"
         "{\\par}{\\clcbpat2\\brdrcf2\\ulc2}}"},
        {"groups left open", "{\\rtf1{\\b{a\\par", "{\\rtf1{b\\", "{\\rtf1{{\\b{a\\par}}}{{b}}}"},
        {"styles left open", "{\\rtf1\\par{\\stylesheet{\\s0", "{\\rtf1}",
         "{\\rtf1{\\stylesheet{\\s0}}{\\par}{}}"},
        {"closed too early", "{\\rtf1 a\\par}}b}", "{\\rtf1 c}}}", "{\\rtf1 {a\\par}{c}}"},
        {"cut in an escape", "{\\rtf1\\par\\'4", "{\\rtf1\\bin9 x", "{\\rtf1{\\par}{}}"},
        {"other RTF", "{\\urtf1\\ansi a\\par}", "{\\rtf b}", "{\\urtf1\\ansi{\\ansi a\\par}{b}}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SString first = row.first, second = row.second, result;
        EXPECT_EQ(SRtfDocument::Merge(first, second, result), 1);
        EXPECT_EQ(result, row.merged);
        EXPECT_EQ(SRtfDocument::Merge(first, second, second), 1);
        EXPECT_EQ(second, row.merged);
    }
    SString result = "old";
    EXPECT_EQ(SRtfDocument::Merge("text", "{\\rtf1}", result), 0);
    EXPECT_EQ(SRtfDocument::Merge("{\\rtf1}", "", result), 0);
    EXPECT_EQ(result, "old");
}

TEST(RtfMerge, KeepsBothTextsOfWhicheverWriters) {
    const std::vector<RtfDocumentFile> documents = RtfDocumentFiles();
    ASSERT_GE(documents.size(), 30u);
    SRtfDocument converter;
    for (const RtfDocumentFile& first : documents)
        for (const RtfDocumentFile& second : documents) {
            SString merged;
            const SString both[] = {SString(std::string_view(first.rtf)),
                                    SString(std::string_view(second.rtf))};
            EXPECT_EQ(SRtfDocument::Merge(both[0], both[1], merged), 1);
            std::u16string text;
            converter.RtfToUtf16(&text, merged.View());
            EXPECT_EQ(SUtf8FromUtf16(text), SUtf8FromUtf16(first.text + u"\r\n" + second.text))
                << first.name << " and " << second.name;
        }
}

TEST(RtfDocument, LeavesStringsAloneWhenMemoryEnds) {
    const SString first = "{\\rtf1\\ansi{\\fonttbl{\\f4 Arial;}}{\\colortbl;\\red1;}\\f4 One}";
    const SString second = "{\\rtf1\\ansi{\\fonttbl{\\f4 A font of another name;}}\\f4 Two}";
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        SString rtf = first, fonts = "old", merged = "old";
        bool refused = false;
        {
            const FailNthAllocation fail(nth, true);
            try {
                SRtfDocument::ExtractFontTable(fonts, rtf, 1);
                SRtfDocument::Merge(first, second, merged);
            } catch (const SEOutOfMemory&) {
            }
            refused = fail.Triggered();
        }
        EXPECT_EQ(fonts == "old", rtf == first);
        EXPECT_EQ(merged == "old", refused);
        if (!refused) break;
    }
}

}  // namespace
