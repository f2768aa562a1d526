#include <brcore8/strings/string_table.h>

#include <brcore8/core/exception.h>
#include <brcore8/strings/multibyte.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

SStringTable TableOf(const Texts& texts) {
    SStringTable table;
    for (const std::string& text : texts)
        table.Add(SString(std::string_view(text)));
    return table;
}

Texts TextsOf(const SStringTable& table) {
    EXPECT_TRUE(table.AssertValid());
    Texts texts;
    for (const SString& text : table) {
        EXPECT_TRUE(text.AssertValid());
        texts.emplace_back(text.View());
    }
    return texts;
}

struct ListRow {
    const char* name;
    int page;
    std::string list;
    std::string separators;
    unsigned escape;
    Texts items;
};

const ListRow kLists[] = {
    {"empty list", 1252, "", ";", '\\', {}},
    {"leading separators give one empty item", 1252, ";;a;;b", ";", '\\', {"", "a", "b"}},
    {"trailing separators give none", 1252, "a;;", ";", '\\', {"a"}},
    {"only separators", 1252, ";;", ";", '\\', {""}},
    {"escaped separator", 1252, "a\\;b;c", ";", '\\', {"a;b", "c"}},
    {"escaped escape", 1252, "a\\\\;b", ";", '\\', {"a\\", "b"}},
    {"escape at the very end", 1252, "a;b\\", ";", '\\', {"a", "b"}},
    {"escape alone", 1252, "\\", ";", '\\', {""}},
    {"no escape character", 1252, "a\\;b", ";", 0, {"a\\", "b"}},
    {"several separators", 1252, "a,b;c", ",;", '\\', {"a", "b", "c"}},
    {"the escape as a separator separates", 1252, "a;;b", ";", ';', {"a", "b"}},
    {"no separators", 1252, "a;b", "", '\\', {"a;b"}},
    {"zero bytes in items", 1252, "a\0b;c"s, ";", '\\', {"a\0b"s, "c"}},
    {"zero byte as separator", 1252, "a\0b"s, "\0"s, '\\', {"a", "b"}},
    {"separator as trail byte", 932, "\x81;a;b", ";", '\\', {"\x81;a", "b"}},
    {"escape as trail byte", 932, "\x83\\;b", ";", '\\', {"\x83\\", "b"}},
    {"double-byte separator", 932, "a\x81\x41\x81\x42", "\x81\x41", '\\', {"a", "\x81\x42"}},
    {"double-byte escape", 932, "a\x81\x41;b", ";", 0xFFFF8141u, {"a;b"}},
};

TEST(StringTable, ReadsLists) {
    for (const ListRow& row : kLists) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const SString list{std::string_view(row.list)};
        const SString separators{std::string_view(row.separators)};
        SStringTable table = TableOf({"old"});
        table.SetFromList(list, separators, row.escape);
        EXPECT_EQ(TextsOf(table), row.items);
        table.AddFromList(list, separators, row.escape);
        Texts twice = row.items;
        twice.insert(twice.end(), row.items.begin(), row.items.end());
        EXPECT_EQ(TextsOf(table), twice);
    }
}

TEST(StringTable, WritesLists) {
    EXPECT_EQ(TableOf({"a;b", "c\\", "", "d"}).GetAsList(';', '\\'), "a\\;b;c\\\\;;d");
    EXPECT_EQ(TableOf({"a;b", "c\\"}).GetAsList(';', 0), "a;b;c\\");
    EXPECT_EQ(TableOf({}).GetAsList(';', '\\'), "");
    EXPECT_EQ(static_cast<SString>(TableOf({"a", "b\nc"})), "a\nb\\\nc");
    const PageScope page(932);
    EXPECT_EQ(TableOf({"\x83\\", ";"}).GetAsList(';', '\\'), "\x83\\;\\;");
    EXPECT_EQ(TableOf({"a", "b"}).GetAsList(0xFFFF8141u, '\\'),
              "a\x81\x41"
              "b");
}

TEST(StringTable, ListsRestoreTheTable) {
    const char* const pieces[] = {"a", ";", "\\", ",", "\x81\x3B", "\xE9", "bc"};
    for (const int number : {1252, 932}) {
        const PageScope page(number);
        for (unsigned seed = 1; seed <= 200; ++seed) {
            SCOPED_TRACE(std::to_string(number) + " seed " + std::to_string(seed));
            std::mt19937 random(seed);
            Texts texts(random() % 6 + 1);
            for (std::string& text : texts)
                do
                    text += pieces[random() % (number == 932 ? 5 : 7)];
                while (random() % 3);
            if (texts.size() > 1 && random() % 4 == 0) texts[0].clear();
            SStringTable table;
            table.AddFromList(TableOf(texts).GetAsList(';', '\\'), ";", '\\');
            EXPECT_EQ(TextsOf(table), texts);
        }
    }
}

TEST(StringTable, Formats) {
    const SStringTable two = TableOf({"x", "y"});
    const SStringTable none;
    const std::pair<SString, const char*> rows[] = {
        {two.Format("[", ", ", "]"), "[x, y]"},
        {two.Format("", "", ""), "xy"},
        {two.Format("-", "."), "x-y."},
        {two.Format("-"), "x-y-"},
        {two.Format(), "x\ny\n"},
        {none.Format("[", ", ", "]"), ""},
        {none.Format(), ""},
    };
    for (const auto& [result, expected] : rows)
        EXPECT_EQ(result, expected);
}

struct SortRow {
    const char* name;
    void (SStringTable::*sort)(int);
    Texts texts;
    Texts sorted;
};

const SortRow kSorts[] = {
    {"by code", &SStringTable::Sort, {"b", "a", "B", "\xE9", "ab"}, {"B", "a", "ab", "b", "\xE9"}},
    {"without case, then by code", &SStringTable::SortNoCase, {"b", "B", "a"}, {"a", "B", "b"}},
    {"letters of the page fold",
     &SStringTable::SortNoCase,
     {"\xE9z",
      "\xC9"
      "a"},
     {"\xC9"
      "a",
      "\xE9z"}},
    {"by number",
     &SStringTable::SortNumbered,
     {"page10", "page9", "page1"},
     {"page1", "page9", "page10"}},
    {"by number without case, then with",
     &SStringTable::SortNumberedNoCase,
     {"p10", "P9", "p9", "P10"},
     {"P9", "p9", "P10", "p10"}},
};

TEST(StringTable, SortsBothWays) {
    for (const SortRow& row : kSorts) {
        SCOPED_TRACE(row.name);
        SStringTable table = TableOf(row.texts);
        (table.*row.sort)(1);
        EXPECT_EQ(TextsOf(table), row.sorted);
        (table.*row.sort)(0);
        EXPECT_EQ(TextsOf(table), Texts(row.sorted.rbegin(), row.sorted.rend()));
    }
}

TEST(StringTable, SortsAsTheModelDoes) {
    for (const int size : {0, 1, 2, 16, 17, 33, 1000, 4097}) {
        SCOPED_TRACE(size);
        std::mt19937 random(static_cast<unsigned>(size));
        Texts texts;
        for (int i = 0; i < size; ++i)
            texts.push_back(std::to_string(random() % 500) + (i % 2 ? "x" : "X"));
        SStringTable table = TableOf(texts);
        table.Sort();
        std::sort(texts.begin(), texts.end());
        EXPECT_EQ(TextsOf(table), texts);
        table.Sort(0);
        EXPECT_EQ(TextsOf(table), Texts(texts.rbegin(), texts.rend()));
    }
}

// Shapes that cost some methods the square of their number or a stack as deep.
TEST(StringTable, SortsWhatIsHardForOthers) {
    constexpr int kCount = 50000;
    const struct {
        const char* name;
        int (*number)(int i);
    } rows[] = {
        {"sorted", [](int i) { return i; }},
        {"reversed", [](int i) { return kCount - i; }},
        {"equal", [](int) { return 7; }},
        {"organ pipe", [](int i) { return std::min(i, kCount - i); }},
        {"saw", [](int i) { return i % 100; }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Texts texts;
        for (int i = 0; i < kCount; ++i)
            texts.push_back("many bytes before the number " + std::to_string(row.number(i)));
        SStringTable table = TableOf(texts);
        SStringTable numbered = table;
        table.Sort();
        numbered.SortNumbered();
        for (int i = 1; i < kCount; ++i) {
            ASSERT_GE(numbered[i].CompareNb(numbered[i - 1]), 0) << i;
        }
        std::sort(texts.begin(), texts.end());
        EXPECT_EQ(TextsOf(table), texts);
    }
}

int Code(const char* left, const char* right) {
    return SString(left).Compare(right);
}

int NoCase(const char* left, const char* right) {
    return SString(left).CompareNoCase(right);
}

// Texts that differ early, late or only in case, with letters of both signs, over both kinds of
// page. Without leading zeros even the numbered orders are orders.
TEST(StringTable, SortsAsItsComparisonsSay) {
    using Compare = int (*)(const char*, const char*);
    const struct {
        const char* name;
        void (SStringTable::*sort)(int);
        Compare first, second;
    } rows[] = {
        {"plain", &SStringTable::Sort, Code, Code},
        {"no case", &SStringTable::SortNoCase, NoCase, Code},
        {"numbered", &SStringTable::SortNumbered, _tcscmpi, _tcscmpi},
        {"numbered, no case", &SStringTable::SortNumberedNoCase, _tcsicmpi, _tcscmpi},
    };
    const char* const pieces[] = {"a", "A", "pre", "\xE4", "\xC4", "\x80",      "\x82\xA0",
                                  " ", ":", "/",   "7",    "12",   "123456789", "x5000000000"};
    for (const int number : {1252, 932}) {
        const PageScope page(number);
        for (const auto& row : rows) {
            SCOPED_TRACE(row.name + std::to_string(number));
            std::mt19937 random(static_cast<unsigned>(number));
            Texts texts(3000);
            for (std::string& text : texts) {
                for (unsigned i = random() % 6; i > 0; --i)
                    if (const std::string piece = pieces[random() % std::size(pieces)];
                        text.empty() || !std::isdigit(static_cast<unsigned char>(text.back())) ||
                        !std::isdigit(static_cast<unsigned char>(piece[0])))
                        text += piece;
            }
            SStringTable table = TableOf(texts);
            (table.*row.sort)(1);
            std::stable_sort(texts.begin(), texts.end(), [&](const auto& left, const auto& right) {
                const int first = row.first(left.c_str(), right.c_str());
                return (first != 0 ? first : row.second(left.c_str(), right.c_str())) < 0;
            });
            EXPECT_EQ(TextsOf(table), texts);
        }
    }
}

// "00x" equals "00", "00" is less than "00x": an order that contradicts itself.
TEST(StringTable, SortingEndsWithEveryStringStillThere) {
    const char* const pieces[] = {"0", "00", "x", "1", "00x", "9"};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Texts texts(5000);
        for (std::string& text : texts)
            for (unsigned i = random() % 4; i > 0; --i)
                text += pieces[random() % 6];
        SStringTable table = TableOf(texts);
        seed % 2 ? table.SortNumbered() : table.SortNumberedNoCase(0);
        Texts sorted = TextsOf(table);
        std::sort(texts.begin(), texts.end());
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(sorted, texts);
    }
}

TEST(StringTable, SortingKeepsLockedStrings) {
    SStringTable table = TableOf({"b", "a"});
    char* const locked = table[0].LockBuffer();
    table.Sort();
    EXPECT_EQ(static_cast<const char*>(table[1]), locked);
    table[1].UnlockBuffer();
}

struct CompareRow {
    const char* name;
    Texts left, right;
    int sign;
};

const CompareRow kCompares[] = {
    {"equal", {"a", "b"}, {"a", "b"}, 0},
    {"shorter is less whatever it holds", {"z"}, {"a", "a"}, -1},
    {"first difference decides", {"a", "c", "a"}, {"a", "b", "z"}, 1},
    {"empty tables", {}, {}, 0},
};

TEST(StringTable, Compares) {
    for (const CompareRow& row : kCompares) {
        SCOPED_TRACE(row.name);
        const SStringTable left = TableOf(row.left);
        const SStringTable right = TableOf(row.right);
        const int result = left.Compare(right);
        EXPECT_EQ((result > 0) - (result < 0), row.sign);
        EXPECT_EQ(left < right, row.sign < 0);
        EXPECT_EQ(left >= right, row.sign >= 0);
        EXPECT_EQ(left == right, row.sign == 0);
        EXPECT_EQ(left != right, row.sign != 0);
    }
    const SStringTable same;
    EXPECT_TRUE(same > same);
    EXPECT_FALSE(same < same);
    EXPECT_FALSE(same == same);
}

TEST(StringTable, TakesItsOwnStrings) {
    SStringTable table = TableOf({"a\nb", "c", "x", "y"});  // full: the next one moves them all
    table.Add(table[0]);
    table.Insert(0, table[4]);
    EXPECT_EQ(table[0], "a\nb");
    table.AddFromList(table[0], table[0], '\\');
    table += table[0];
    EXPECT_EQ(table.GetCount(), 9);
    table.SetFromList(table[0], table[1], '\\');
    EXPECT_EQ(TextsOf(table), Texts{""});
    table = TableOf({"z", "p\nq"});
    table = table[1];
    EXPECT_EQ(TextsOf(table), (Texts{"p", "q"}));
    table = *&table;
    EXPECT_EQ(TextsOf(table), (Texts{"p", "q"}));
}

TEST(StringTable, MakesTakesAndMovesStrings) {
    const char* const array[] = {"a", "b", nullptr};
    SStringTable table(8, 2);
    EXPECT_EQ(table.GetCapacity(), 8);
    EXPECT_EQ(TextsOf(table), (Texts{"", ""}));
    table = array;
    table += array;
    table += static_cast<const char* const*>(nullptr);
    EXPECT_EQ(TextsOf(table), (Texts{"a", "b", "a", "b"}));
    table.MoveTo(0, 3);
    table.MoveTo(table.begin(), 1);
    EXPECT_EQ(TextsOf(table), (Texts{"a", "b", "b", "a"}));
    SStringTable::iterator second = ++table.begin();
    table.Remove(second);
    EXPECT_EQ(*second, "b");
    table.Remove(table.rbegin());
    EXPECT_EQ(TextsOf(table), (Texts{"a", "b"}));
    const SStringTable range(table.GetArray(), table.GetArray() + 2);
    EXPECT_TRUE(SStringTable(range.GetArray() + 2, range.GetArray()).IsEmpty());
    SStringTable moved = std::move(table);
    EXPECT_TRUE(moved == range && table.IsEmpty());
    table = array;
    table.SetFromList(0xFFFFu, ";", '\\');  // no such resource
    EXPECT_TRUE(table.IsEmpty());
}

TEST(StringTable, IteratorsWalkBothWays) {
    SStringTable table = TableOf({"a", "b", "c"});
    const SStringTable& constant = table;
    std::string walked;
    for (SStringTable::iterator it(table); it; it++)
        walked += (*it).View();
    for (SStringTable::reverse_iterator it = table.rbegin(); it != table.rend(); ++it)
        walked += it->View();
    for (SStringTable::const_reverse_iterator it(constant); it; it++)
        walked += (*it).View();
    SStringTable::const_iterator last = table.end();
    EXPECT_FALSE(last);
    EXPECT_EQ(*--last, "c");
    EXPECT_EQ(*last--, "c");
    EXPECT_EQ(*last, "b");
    EXPECT_EQ(walked, "abccbacba");
    EXPECT_FALSE(SStringTable::iterator());
}

TEST(StringTable, StaysAsItWasWithoutMemory) {
    using Operation = void (*)(SStringTable&);
    struct Row {
        const char* name;
        Operation run;
    };
    const Row rows[] = {
        {"add", [](SStringTable& table) { table.Add("new"); }},
        {"add a list", [](SStringTable& table) { table.AddFromList("a;b;c;d", ";", '\\'); }},
        {"assign a list", [](SStringTable& table) { table = SString("a\nb"); }},
        {"sort", [](SStringTable& table) { table.Sort(); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (int nth = 1; nth < 1000; ++nth) {
            SStringTable table = TableOf({"z", "y", "x", "w"});
            FailNthAllocation fail(nth);
            try {
                row.run(table);
                if (!fail.Triggered()) break;
            } catch (const SEOutOfMemory&) {
                EXPECT_EQ(TextsOf(table), (Texts{"z", "y", "x", "w"}));
            }
        }
    }
}

// The number of characters times the number of separators would not end today.
TEST(StringTable, LongListsWithManySeparatorsAreLinear) {
    const PageScope page(932);
    std::string separators, list;
    for (int lead = 0x88; lead < 0x98; ++lead)
        for (int trail = 0x40; trail < 0x7F; ++trail)
            separators += {static_cast<char>(lead), static_cast<char>(trail)};
    for (int i = 0; i < 500000; ++i)
        list += "\xE0\x41";
    SStringTable table;
    table.AddFromList(SString(std::string_view(list)), SString(std::string_view(separators)), 0);
    EXPECT_EQ(table.GetCount(), 1);
    table.Clear();
    for (int i = 0; i < 100000; ++i)
        table += SString("x");
    EXPECT_EQ(table.GetCount(), 100000);
}

}  // namespace
