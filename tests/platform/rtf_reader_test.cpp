// The library's own reader and writer of RTF, where they take the control's place and where they
// take its documents on.
#include "text/rtf_reader.h"

#include <brcore8/core/exception.h>
#include <brcore8/strings/unicode.h>

#include <gtest/gtest.h>

#include <chrono>
#include <span>
#include <string>

#include "support/failing_allocator.h"
#include "support/rtf_documents.h"

namespace {

using brcore8::RichBuffer;

std::string Read(std::string_view rtf) {
    RichBuffer<char16_t> text;
    brcore8::rtf::ReadText(rtf, text);
    return SUtf8FromUtf16({text.Data(), text.Size()});
}

std::string Whole(std::string_view rtf) {
    RichBuffer<char> whole;
    brcore8::rtf::WriteWhole(rtf, whole);
    return std::string(whole.Data(), whole.Size());
}

std::string Repeat(std::string_view text, std::size_t count) {
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

constexpr char kFonts[] =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset204 B;}"
    "{\\f2\\fcharset128 C;}{\\f3\\fcharset2 D;}}";

TEST(RtfReader, AnswersAsTheRecordedControl) {
    for (const auto& document : RtfDocumentFiles())
        EXPECT_EQ(Read(document.rtf), SUtf8FromUtf16(document.text)) << document.name;
}

struct Row {
    const char* name;
    std::string body;
    const char* text;
};

void ExpectTexts(std::span<const Row> rows) {
    for (const Row& row : rows)
        EXPECT_EQ(Read(kFonts + row.body + "}"), row.text) << row.name;
}

TEST(RtfReader, KeepsWhatIsText) {
    using namespace std::string_literals;
    const Row rows[] = {
        {"results of fields, not their instructions",
         "a{\\field{\\*\\fldinst LINK \"b\"}{\\fldrslt c{\\field{\\fldinst D}{\\fldrslt e}}}}f",
         "acef"},
        {"results of objects", "a{\\object\\objemb{\\*\\objdata 01}{\\result b}}c", "abc"},
        {"unknown destinations behind a star", "a{\\*\\b b}{\\*\\new c}{d\\*\\new e}{\\* f}{\\*}g",
         "abdg"},
        {"unknown words", "a\\unheardof12 b\\PAR c", "abc"},
        {"data in binary, with braces in it", "a\\bin3 }}{b{\\pict\\bin2 }}00}c", "abc"},
        {"data that is shorter than it says", "a{\\info\\bin99 b}c}", "a"},
        {"data beyond all numbers", "a\\bin99999999999999999999 b", "a"},
        {"data of negative length", "a\\bin-99999999999999999999 b\\bin0 c\\bin d", "abcd"},
        {"bad hexadecimal digits", "a\\'g1\\'4x\\'e9\\'", "ag14x\u00E9"},
        {"zero bytes", "a\0b\\'00c\\u0?d"s, "abcd"},
        {"symbols of no meaning",
         "a\\-b\\|c\\ d\\0e\\\xFF"
         "f",
         "abcdef"},
        {"numbers with more than one sign", "a\\b--5 b\\li- c", "a-5 bc"},
        {"cells beyond the row's edges", "\\trowd\\cellx1\\intbl a\\cell b\\cell c\\row\\pard d",
         "\r\na\r\nb\r\nc\r\n\r\nd"},
        {"a table that never ends", "\\trowd\\cellx1\\cellx2\\intbl a\\cell b", "\r\na\r\nb"},
        {"cells outside of tables", "a\\cell b\\row c\\nestcell d\\nestrow e", "abcde"},
        {"a row that begins inside a paragraph", "a\\intbl b\\cell\\row\\pard c",
         "\r\nab\r\n\r\nc"},
        {"a paragraph before the table is closed again", "{\\trowd\\intbl a\\cell\\row}b",
         "\r\na\r\n\r\nb"},
    };
    ExpectTexts(rows);
}

TEST(RtfReader, CountsWhatStandsForAUnit) {
    const Row rows[] = {
        {"one by default", "\\u233?a\\u233\\'e9b\\u233\\{c",
         "\u00E9"
         "a\u00E9"
         "b\u00E9"
         "c"},
        {"as many as the group says", "{\\uc2\\u233abc}\\u233ab",
         "\u00E9"
         "c\u00E9"
         "b"},
        {"none, and fewer than none", "\\uc0\\u233a\\uc-5\\u233b",
         "\u00E9"
         "a\u00E9"
         "b"},
        {"up to a brace or a word", "\\uc9\\u233{a}\\u233\\tab b\\u233",
         "\u00E9"
         "a\u00E9\tb\u00E9"},
        {"line ends do not count", "\\uc2\\u233\r\na\r\nbc",
         "\u00E9"
         "c"},
        {"the lowest 16 bits", "\\uc0\\u65601a\\u-65471b\\u4294967361c", "AaAbAc"},
        {"pairs and halves", "\\uc0\\u-10179\\u-8704 \\u-10179 a",
         "\U0001F600\uFFFD"
         "a"},
        {"line ends are paragraphs", "\\uc0 a\\u10 b\\u13 c", "a\r\nb\r\nc"},
        {"nothing behind it", "a\\u", "a"},
    };
    ExpectTexts(rows);
}

TEST(RtfReader, TakesBytesByTheirFont) {
    const Row rows[] = {
        {"the default font again", "{\\f1 \\'e9\\plain\\'e9}", "\u0439\u00E9"},
        {"an unknown font changes nothing", "\\f1\\f77\\'e9\\f-1\\'e9", "\u0439\u0439"},
        {"pairs of escapes and bytes", "\\f2\\'83X\\'83\\'58\\'83\\\\", "\u30B9\u30B9\u30BD"},
        {"half a pair before another font", "\\f2\\'83\\f0\\'65", "\u30FBe"},
        {"half a pair at the end", "\\f2 a\\'83", "a\u30FB"},
        {"symbols", "\\f3 a\\'b7", "\uF061\uF0B7"},
    };
    ExpectTexts(rows);
    const struct {
        const char* name;
        const char* rtf;
        const char* text;
    } documents[] = {
        {"the page of the document", "{\\rtf1\\ansi\\ansicpg1251 \\'e9}", "\u0439"},
        {"fonts that name none",
         "{\\rtf1\\ansi\\ansicpg1251{\\fonttbl{\\f0 A;}{\\f1\\fcharset1 B;}}"
         "\\'e9\\f1\\'e9}",
         "\u0439\u0439"},
        {"fonts without groups", "{\\rtf1{\\fonttbl\\f0 A;\\f1\\fcharset204 B;}\\f1\\'e9}",
         "\u0439"},
        {"a font's own page", "{\\rtf1{\\fonttbl{\\f0\\cpg1251\\fcharset161 A;}}\\f0\\'e9}",
         "\u0439"},
        {"the last of one number",
         "{\\rtf1{\\fonttbl{\\f0\\fcharset0 A;}{\\f0\\fcharset204 B;}}"
         "\\f0\\'e9}",
         "\u0439"},
        {"a backslash at the end", "{\\rtf1 a\\", "a"},
        {"Macintosh", "{\\rtf1\\mac \\'8e}", "\u00E9"},
        {"OEM pages", "{\\rtf1\\pc \\'82{\\pca\\'82}}", "\u00E9\u00E9"},
        {"UTF-8", "{\\urtf1 \xC3\xA9\\'c3\\'a9\xF0\x9F\x98\x80\xC3z\xA9}",
         "\u00E9\u00E9\U0001F600\uFFFDz\uFFFD"},
        {"pages that nobody has", "{\\rtf1\\ansi\\ansicpg9999 \\'e9\\ansicpg-1 \\'e9}",
         "\u00E9\u00E9"},
    };
    for (const auto& document : documents)
        EXPECT_EQ(Read(document.rtf), document.text) << document.name;
}

TEST(RtfReader, MakesDocumentsWhole) {
    const struct {
        const char* name;
        std::string rtf;
        std::string whole;
    } rows[] = {
        {"what is whole", "{\\rtf1 a{b}}", "{\\rtf1 a{b}}"},
        {"what follows the end", "{\\rtf1 a}b}", "{\\rtf1 a}"},
        {"open groups", "{\\rtf1 a{\\b b", "{\\rtf1 a{\\b b}}"},
        {"half an escape", "{\\rtf1 a\\", "{\\rtf1 a}"},
        {"half a hexadecimal number", "{\\rtf1 a\\'e", "{\\rtf1 a}"},
        {"an escape that ends the text", "{\\rtf1 a\\}", "{\\rtf1 a\\}}"},
        {"data cut short", "{\\rtf1 a\\bin5 {{", "{\\rtf1 a}"},
        {"braces in data", "{\\rtf1 a\\bin2 }}b", "{\\rtf1 a\\bin2 }}b}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Whole(row.rtf), row.whole) << row.name;
}

// Every cut of a document reads, closed or not, as the beginning of its text: never more than there
// was and never beyond the end.
TEST(RtfReader, ReadsDocumentsCutAnywhere) {
    const std::string rtf =
        kFonts + std::string(
                     "{\\pict\\bin3 abc}\\f2\\'83\\'5c{\\uc2\\u233\\'e9\\'e9}\\par{\\*\\x y}"
                     "\\trowd\\cellx1\\cellx2\\intbl a\\cell\\row\\pard b\\emdash c\\\n\\~}");
    const std::string text = Read(rtf);
    ASSERT_EQ(text,
              "\u30BD\u00E9\r\n\r\na\r\n\r\n\r\nb\u2014"
              "c\r\n\u00A0");
    for (std::size_t length = 6; length < rtf.size(); ++length) {
        const std::string cut(rtf, 0, length);
        const std::string part = Read(cut);
        ASSERT_LE(part.size(), text.size()) << cut;
        ASSERT_EQ(Read(Whole(cut)), Read(Whole(Whole(cut)))) << cut;
    }
}

// Twice the input takes about twice the time; sizes at which anything worse than linear, or a
// recursion, would not end well.
TEST(RtfReader, StaysLinearOnHostileDocuments) {
    constexpr std::size_t kMany = 1'000'000;
    std::string fonts = "{\\rtf1{\\fonttbl";
    for (int i = 0; i < 100'000; ++i)
        fonts += "{\\f" + std::to_string(i) + "\\fcharset204 F;}";
    const struct {
        const char* name;
        std::string rtf;
        std::string text;
    } rows[] = {
        {"open braces", "{\\rtf1 " + Repeat("{", kMany) + "x", "x"},
        {"open and closed braces", "{\\rtf1 " + Repeat("{", kMany) + Repeat("}", kMany) + "x}",
         "x"},
        {"groups that change something", "{\\rtf1 " + Repeat("{\\uc2{\\uc3", kMany / 2) + " x",
         "x"},
        {"destinations", "{\\rtf1 " + Repeat("{\\*\\x", kMany) + Repeat("}", kMany) + "x}", "x"},
        {"destinations in a row", "{\\rtf1 " + Repeat("{\\*\\x y}", kMany) + "x}", "x"},
        {"open destinations, one within the other", "{\\rtf1 x" + Repeat("{\\info", kMany), "x"},
        {"closing braces", "{\\rtf1 x" + Repeat("}", kMany), "x"},
        {"pictures within pictures", "{\\rtf1 x" + Repeat("{\\pict", kMany), "x"},
        {"font tables within font tables", "{\\rtf1 x" + Repeat("{\\fonttbl", kMany), "x"},
        {"fonts", fonts + "}\\f99999\\'e9}", "\u0439"},
        {"a font of a huge number",
         "{\\rtf1{\\fonttbl{\\f999999999\\fcharset204 A;}{\\f1048575 B;}}"
         "\\f999999999 x\\f99999999999999999999 y}",
         "xy"},
        {"a word without end", "{\\rtf1 x\\" + Repeat("a", kMany), "x"},
        {"a number without end", "{\\rtf1 x\\b" + Repeat("9", kMany), "x"},
        {"nesting beyond all tables", "{\\rtf1\\intbl\\itap2000000000 x}",
         Repeat("\r\n", 15) + "x"},
        {"paragraph defaults", "{\\rtf1 " + Repeat("\\pard", kMany) + " x}", "x"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_TRUE(Read(row.rtf) == row.text);
        EXPECT_LE(brcore8::rtf::DeepestGroup(Whole(row.rtf)), kMany + 2);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

// Of rows that a few bytes describe and many end, each has its 63 cells and no more.
TEST(RtfReader, BoundsTheCellsOfARow) {
    constexpr std::size_t kRows = 1000;
    const std::string row = "\\row";
    const std::string text =
        Read("{\\rtf1\\trowd" + Repeat("\\cellx1", 100'000) + "\\intbl" + Repeat(row, kRows) + "}");
    EXPECT_EQ(text.size(), kRows * 2 * 65);
}

TEST(RtfReader, LeavesNothingBehindWhenMemoryEnds) {
    const std::string rtf = kFonts + Repeat("{\\f1 a{\\f2 b", 50) + "\\trowd\\cellx1\\intbl\\row}";
    int refused = 0;
    for (bool done = false; !done; ++refused) {
        FailNthAllocation fail(refused + 1);
        try {
            Read(rtf);
            Whole(rtf);
        } catch (const SEOutOfMemory&) {
        }
        done = !fail.Triggered();
    }
    EXPECT_GT(refused, 5);
}

}  // namespace
