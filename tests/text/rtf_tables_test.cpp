#include <brcore8/text/rtf_tables.h>

#include <brcore8/core/exception.h>
#include <brcore8/strings/string_buffer.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

std::string Numbers(const SMap<int, int>& map) {
    std::string text;
    for (const auto& [from, to] : map)
        text += std::to_string(from) + ">" + std::to_string(to) + " ";
    return text;
}

std::string Describe(const SRtfFontTable& table) {
    std::string text;
    for (const SRtfFontEntry& font : table)
        text += std::to_string(font.number) + "|" + std::string(font.name.View()) + "|" +
                std::string(font.controls.View()) + "\n";
    return text;
}

std::string Describe(const SRtfColorTable& table) {
    std::string text;
    for (const SRtfColorEntry& color : table)
        text += std::to_string(color.number) + "|" + std::string(color.specification.View()) + "\n";
    return text;
}

TEST(RtfFontEntry, ReadsAGroup) {
    const struct {
        const char* name;
        const char* text;
        int found;
        long number;
        const char* font;
        const char* controls;
    } rows[] = {
        {"plain", "{\\f3\\froman\\fcharset0 Times New Roman;}", 1, 3, "Times New Roman",
         "\\froman\\fcharset0"},
        {"controls keep no blanks", "{\\f7 \\fnil\\fprq2 \r\n\\fcharset0  Arial;}", 1, 7, "Arial",
         "\\fnil\\fprq2\\fcharset0"},
        {"number not first", "{\\flomajor\\f31500\\fbidi Cambria;}", 1, 31500, "Cambria",
         "\\flomajor\\fbidi"},
        {"no number", "{\\fswiss Arial;}", 1, 0, "Arial", "\\fswiss"},
        {"the last character goes, whatever it is", "{\\f1 Arial}", 1, 1, "Aria", ""},
        {"line end before the brace", "{\\f1 Arial;\r\n}", 1, 1, "Arial", ""},
        {"two characters", "{\\f1 A;}", 1, 1, "A", ""},
        {"one character", "{\\f1 ;}", 0, 1, "", ""},
        {"no name", "{\\f1\\fnil}", 0, 1, "", "\\fnil"},
        {"never closed", "{\\f1\\fnil Arial;", 1, 1, "Arial", "\\fnil"},
        {"empty", "", 0, 0, "", ""},
        {"classification inside", "{\\f0\\fswiss{\\*\\panose 020b06}Arial;}", 1, 0, "Arial",
         "\\fswiss"},
        {"alternative name behind", "{\\f0 Liberation Sans{\\*\\falt Arial};}", 1, 0,
         "Liberation Sans", ""},
        {"alternative name never closed", "{\\f0{\\*\\falt Arial;", 0, 0, "", ""},
        {"escapes in the name", "{\\f1\\fnil \\'82\\'6c\\u963 ?Caf\\'e9;}", 1, 1,
         "\\'82\\'6c\\u963 ?Caf\\'e9", "\\fnil"},
        {"escaped brace in the name", "{\\f1 A\\}B;}", 1, 1, "A\\}B", ""},
        {"number beyond all limits", "{\\f99999999999999999999 Arial;}", 1, 2147483647, "Arial",
         ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SRtfFontEntry entry;
        entry.name = "old";
        entry.controls = "\\old";
        EXPECT_EQ(entry.SetFontEntry(row.text) != 0, row.found != 0);
        EXPECT_EQ(entry.number, row.number);
        EXPECT_EQ(entry.name, row.font);
        EXPECT_EQ(entry.controls, row.controls);
    }
}

TEST(RtfEntries, AreComparedInAllTheirFields) {
    SRtfFontEntry font;
    font.SetFontEntry("{\\f1\\fnil Arial;}");
    for (const char* other : {"{\\f2\\fnil Arial;}", "{\\f1\\fnil arial;}", "{\\f1 Arial;}"}) {
        SRtfFontEntry entry;
        entry.SetFontEntry(other);
        EXPECT_FALSE(entry == font) << other;
        EXPECT_TRUE(entry != font) << other;
        entry = font;
        EXPECT_TRUE(entry == font);
    }
    SRtfColorEntry color;
    EXPECT_EQ(color.SetColorEntry("\\red1 \r\n;"), 1);
    EXPECT_EQ(color.specification, "\\red1");
    EXPECT_EQ(color.GetColorEntry(), "\\red1;");
    SRtfColorEntry other = color;
    EXPECT_TRUE(other == color);
    other.number = 1;
    EXPECT_TRUE(other != color);
}

TEST(RtfFontTable, WritesWhatItReadsBack) {
    SRtfFontTable table;
    table.AddFontTable("{\\fonttbl{\\f5\\fswiss Arial;}\r\n{\\f8 Times;}}");
    EXPECT_EQ(table.GetFontTable(),
              "{\\fonttbl\r\n{\\f0\\fswiss Arial;}\r\n{\\f1 Times;}\r\n}\r\n");
    EXPECT_EQ(Numbers(table.AddFontTable(table.GetFontTable())), "0>0 1>1 ");
    EXPECT_EQ(table.GetCount(), 2);
    table.Clear();
    EXPECT_EQ(table.GetFontTable(), "{\\fonttbl\r\n}\r\n");
}

// A table merged in: its numbers and ours, and what the table holds besides.
struct MergeRow {
    const char* name;
    const char* text;
    const char* numbers;
    const char* table;
};

TEST(RtfFontTable, MergesByName) {
    const MergeRow rows[] = {
        {"a name in another case", "{\\fonttbl{\\f4\\froman ARIAL;}}", "4>0 ", ""},
        {"new fonts", "{\\fonttbl{\\f0 Courier;}{\\f9 arial;}{\\f2 Times;}}", "0>1 2>2 9>0 ",
         "1|Courier|\n2|Times|\n"},
        {"one name twice", "{\\fonttbl{\\f1 New;}{\\f2 new;}}", "1>1 2>1 ", "1|New|\n"},
        {"groups without a name", "{\\fonttbl{\\f1}{}{\\f2 New;}}", "2>1 ", "1|New|\n"},
        {"what is no group ends it", "{\\fonttbl{\\f1 New;}\\f2 Other;{\\f3 More;}}", "1>1 ",
         "1|New|\n"},
        {"no braces at all", "{\\fonttbl\\f0\\fswiss New;\\f1\\fnil Other;}", "0>1 1>2 ",
         "1|New|\\fswiss\n2|Other|\\fnil\n"},
        {"never closed", "{\\fonttbl{\\f1 New;}{\\f2 Other;", "1>1 2>2 ", "1|New|\n2|Other|\n"},
        {"another group", "{\\colortbl{\\f1 New;}}", "", ""},
        {"no group", "\\fonttbl{\\f1 New;}", "", ""},
        {"empty", "", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SRtfFontTable table;
        table.AddFontTable("{\\fonttbl{\\f1\\fswiss Arial;}}");
        EXPECT_EQ(Numbers(table.AddFontTable(row.text)), row.numbers);
        EXPECT_EQ(Describe(table), std::string("0|Arial|\\fswiss\n") + row.table);
    }
}

TEST(RtfFontTable, FoldsNamesByTheCodePage) {
    SRtfFontTable table;
    {
        const PageScope page(1252);
        table.AddFontTable("{\\fonttbl{\\f1 \xC9tude;}}");
        EXPECT_EQ(Numbers(table.AddFontTable("{\\fonttbl{\\f1 \xE9TUDE;}}")), "1>0 ");
    }
    // Two double-byte characters that would be one if their bytes were folded alone. The second
    // byte of the first is that of a backslash.
    const PageScope page(932);
    table.Clear();
    EXPECT_EQ(
        Numbers(table.AddFontTable("{\\fonttbl{\\f1 \x83\x5C;}{\\f2 \x83\x61;}{\\f3 \x83\x41;}}")),
        "1>0 2>1 3>2 ");
}

TEST(RtfColorTable, CountsPositionsAsBodiesDo) {
    const MergeRow rows[] = {
        {"automatic first", "{\\colortbl;\\red1;\\red2;}", "0>0 1>1 2>2 ", "1|\\red1\n2|\\red2\n"},
        {"automatic with blanks", "{\\colortbl ;\r\n\\red1 ;}", "0>0 1>1 ", "1|\\red1\n"},
        {"a real colour first", "{\\colortbl\\red1;\\red2;}", "0>1 1>2 ", "1|\\red1\n2|\\red2\n"},
        {"one colour twice, automatic again", "{\\colortbl;\\red1;;\\red1;\\Red1;}",
         "0>0 1>1 2>0 3>1 4>2 ", "1|\\red1\n2|\\Red1\n"},
        {"nothing behind the last semicolon", "{\\colortbl;\\red1", "0>0 1>1 ", "1|\\red1\n"},
        {"no brace", "{\\colortbl;\\red1;;", "0>0 1>1 ", "1|\\red1\n"},
        {"groups inside", "{\\colortbl;{\\*\\x ;}\\red1{\\y;}\\green2;\\red2;}", "0>0 1>1 2>2 ",
         "1|\\red1\\green2\n2|\\red2\n"},
        {"binary data", "{\\colortbl;\\red1\\bin3 ;;;\\green2;}", "0>0 1>1 ", "1|\\red1\\green2\n"},
        {"no entries", "{\\colortbl}", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SRtfColorTable table;
        EXPECT_EQ(Numbers(table.AddColorTable(row.text)), row.numbers);
        EXPECT_EQ(Describe(table), std::string("0|\n") + row.table);
    }
}

TEST(RtfColorTable, WritesWhatItReadsBack) {
    SRtfColorTable table;
    EXPECT_EQ(table.GetColorTable(), "{\\colortbl\r\n}\r\n");
    EXPECT_EQ(Numbers(table.AddColorTable("no table")), "");
    EXPECT_TRUE(table.IsEmpty());
    table.AddColorTable("{\\colortbl;\\red255\\green0\\blue0;}");
    EXPECT_EQ(table.GetColorTable(), "{\\colortbl\r\n;\r\n\\red255\\green0\\blue0;\r\n}\r\n");
    EXPECT_EQ(Numbers(table.AddColorTable(table.GetColorTable())), "0>0 1>1 ");
    EXPECT_EQ(Numbers(table.AddColorTable("{\\colortbl\\red9;;}")), "0>2 1>0 ");
    EXPECT_EQ(table.GetCount(), 3);
}

// A search by name an entry, or by depth a brace, would take minutes.
TEST(RtfTables, TakeHugeInput) {
    const int count = 100000;
    SStringBuffer fonts("{\\fonttbl");
    SStringBuffer colors("{\\colortbl;");
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        fonts += "{\\f" + number + " Font " + number + ";}";
        colors += "\\red" + number + ";";
    }
    SRtfFontTable fontTable;
    SRtfColorTable colorTable;
    for (int twice = 0; twice < 2; ++twice) {
        EXPECT_EQ(fontTable.AddFontTable(fonts).GetCount(), count);
        EXPECT_EQ(colorTable.AddColorTable(colors).GetCount(), count + 1);
    }
    EXPECT_EQ(fontTable.GetCount(), count);
    EXPECT_EQ(colorTable.GetCount(), count + 1);

    for (const char brace : {'{', '}'}) {
        const SString deep(brace, 1000000);
        EXPECT_EQ(Numbers(fontTable.AddFontTable("{\\fonttbl" + deep)), "");
        EXPECT_EQ(fontTable.AddFontTable("{\\fonttbl{\\f7 " + deep).GetCount(), 0);
        EXPECT_EQ(Numbers(colorTable.AddColorTable("{\\colortbl;" + deep)), "0>0 ");
    }
}

TEST(RtfTables, AreWhatTheyWereWhenMemoryEnds) {
    const SString fonts = "{\\fonttbl{\\f1 Courier;}{\\f2 A name too long for the smallest pool;}}";
    const SString colors = "{\\colortbl;\\red1;\\red255\\green255\\blue255;}";
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        SRtfFontTable fontTable;
        fontTable.AddFontTable("{\\fonttbl{\\f0 Arial;}}");
        SRtfColorTable colorTable;
        bool refused = false;
        bool fontsDone = false;
        {
            const FailNthAllocation fail(nth, true);
            try {
                fontTable.AddFontTable(fonts);
                fontsDone = true;
                colorTable.AddColorTable(colors);
            } catch (const SEOutOfMemory&) {
            }
            refused = fail.Triggered();
        }
        EXPECT_EQ(fontTable.GetCount(), fontsDone ? 3 : 1);
        EXPECT_EQ(colorTable.GetCount(), refused ? 0 : 3);
        if (!refused) break;
    }
}

TEST(RtfFontTable, TakesATableFromItself) {
    SRtfFontTable table;
    table.AddFontTable("{\\fonttbl{\\f0 Arial;}}");
    table[0].controls = "{\\fonttbl{\\f3 Times;}}";
    EXPECT_EQ(Numbers(table.AddFontTable(table[0].controls)), "3>1 ");
    EXPECT_EQ(table[1].SetFontEntry(table[1].name = "{\\f4 Courier;}"), 1);
    EXPECT_EQ(table[1].GetFontEntry(), "{\\f4 Courier;}");
}

}  // namespace
