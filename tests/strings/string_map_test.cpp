#include <brcore8/strings/string_map.h>

#include <brcore8/core/exception.h>
#include <brcore8/strings/multibyte.h>

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

namespace {

using namespace std::string_literals;
using Pairs = std::vector<std::pair<std::string, std::string>>;

SString Text(std::string_view text) {
    return SString(text);
}

template <class Map>
Pairs PairsOf(const Map& map) {
    EXPECT_TRUE(map.AssertValid());
    Pairs pairs;
    for (const auto& [key, value] : map)
        pairs.emplace_back(key.View(), value.View());
    return pairs;
}

template <class Map = SStringUnsortedMap>
Map MapOf(const Pairs& pairs) {
    Map map;
    for (const auto& [key, value] : pairs)
        map.Add(Text(key), Text(value));
    return map;
}

// ---- Keys ---------------------------------------------------------------------------------------

TEST(StringMap, TheFourMapsDifferInOrderAndCase) {
    const Pairs pairs = {{"b", "1"},   {"Key", "2"},  {"a", "3"},
                         {"KEY", "4"}, {"\xE9", "5"}, {"\xC9", "6"}};
    EXPECT_EQ(
        PairsOf(MapOf<SStringMap>(pairs)),
        (Pairs{{"KEY", "4"}, {"Key", "2"}, {"a", "3"}, {"b", "1"}, {"\xC9", "6"}, {"\xE9", "5"}}));
    EXPECT_EQ(PairsOf(MapOf<SStringMapNoCase>(pairs)),
              (Pairs{{"a", "3"}, {"b", "1"}, {"KEY", "4"}, {"\xC9", "6"}}));
    EXPECT_EQ(PairsOf(MapOf<SStringUnsortedMap>(pairs)), pairs);
    EXPECT_EQ(PairsOf(MapOf<SStringUnsortedMapNoCase>(pairs)),
              (Pairs{{"b", "1"}, {"KEY", "4"}, {"a", "3"}, {"\xC9", "6"}}));
}

// Rows in ascending order; every two of them are compared both ways.
TEST(StringMap, KeysCompareByWholeCharacters) {
    const struct {
        const char* name;
        int page;
        bool noCase;
        std::vector<std::string> ascending;
    } rows[] = {
        {"bytes", 1252, false, {"", "\0"s, "A", "a", "a\0"s, "a\0b"s, "ab", "b", "\xFF"}},
        {"folded bytes", 1252, true, {"", "[", "a\0B"s, "a\0c"s, "aB", "AC", "b", "\xC9"}},
        {"a pair comes after every byte", 932, false, {"\xB1", "\xDF", "\x81\x40", "\x82\x60"}},
        {"half a character is its byte", 932, false, {"\x82", "\xB1", "\x81\x40", "\x82\x60"}},
        {"letters of two bytes fold", 932, true, {"a", "\x82\x60", "\x82\x82", "\x82\x83"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const auto& compare = row.noCase ? brcore8::CompareMapKeysNoCase : brcore8::CompareMapKeys;
        for (std::size_t i = 0; i < row.ascending.size(); ++i)
            for (std::size_t j = 0; j < row.ascending.size(); ++j)
                EXPECT_EQ(compare(row.ascending[i], row.ascending[j]), (i > j) - (i < j))
                    << i << " and " << j;
    }
    const PageScope page(932);
    EXPECT_EQ(brcore8::CompareMapKeysNoCase("\x82\x60x", "\x82\x81X"), 0);
}

TEST(StringMap, TakesAnyTextAsAKeyWithoutACopy) {
    SStringMap map =
        MapOf<SStringMap>({{"", "none"}, {"key", "value"}, {std::string(3000, 'k'), "long"}});
    const SStringMap& constant = map;
    const std::string text = std::string(3000, 'k') + "!";
    {
        FailNthAllocation fail(1, true);
        EXPECT_EQ(constant.Retrieve(std::string_view(text).substr(0, 3000))->View(), "long");
        EXPECT_TRUE(map.Contains("key") && !map.Contains(text));
        EXPECT_EQ(map[static_cast<const char*>(nullptr)], "none");
        EXPECT_EQ(constant[text], "");
        EXPECT_EQ(map.Find(std::string("key"))->value, "value");
        EXPECT_EQ(constant.Find("nothing"), constant.end());
        EXPECT_TRUE(map.Remove("key") && !map.Remove("key"));
    }
    map[std::string_view(text).substr(2999)] = "new";
    const SString shared = text.c_str();
    map[shared];
    EXPECT_EQ(map["k!"], "new");
    EXPECT_EQ(static_cast<const char*>(map.Find(shared)->key), static_cast<const char*>(shared));
    map[reinterpret_cast<const char*>(std::uintptr_t{115})] = "a loaded text";
    EXPECT_EQ(map["brgrid8.dll"], "a loaded text");
}

TEST(StringMap, AddsAndComparesMapsOfBothKinds) {
    SStringMap exact = MapOf<SStringMap>({{"Key", "1"}, {"KEY", "2"}, {"a", "3"}});
    SStringMapNoCase folded;
    folded += exact;
    EXPECT_EQ(PairsOf(folded), (Pairs{{"a", "3"}, {"Key", "1"}}));
    exact += folded;
    exact += exact;
    EXPECT_EQ(PairsOf(exact), (Pairs{{"KEY", "2"}, {"Key", "1"}, {"a", "3"}}));
    SStringUnsortedMap first = MapOf({{"b", "1"}, {"a", "2"}});
    SStringUnsortedMapNoCase second;
    second += first;
    second.Add("B", "3");
    first += second;
    EXPECT_EQ(PairsOf(first), (Pairs{{"b", "1"}, {"a", "2"}, {"B", "3"}}));

    EXPECT_TRUE(MapOf({{"a", "1"}, {"b", "2"}}) == MapOf({{"b", "2"}, {"a", "1"}}));
    EXPECT_TRUE(MapOf<SStringMapNoCase>({{"A", "1"}}) == MapOf<SStringMapNoCase>({{"a", "1"}}));
    EXPECT_FALSE(MapOf<SStringMap>({{"A", "1"}}) == MapOf<SStringMap>({{"a", "1"}}));
    EXPECT_FALSE(MapOf({{"a", "1"}}) == MapOf({{"a", "1\0x"s}}));
    EXPECT_FALSE(MapOf({{"a", "1"}}) == MapOf({{"a", "1"}, {"b", ""}}));
}

TEST(StringMap, ADerivedMapMayOrderKeysByNumber) {
    struct Numbered : SStringMap {
        int CompareKey(std::intptr_t left, std::intptr_t right) const override {
            return SString(KeyText(left)).CompareNb(SString(KeyText(right)));
        }
    };
    Numbered pages = MapOf<Numbered>({{"p10", "ten"}, {"p9", "nine"}});
    EXPECT_EQ(PairsOf(Numbered(pages)), (Pairs{{"p9", "nine"}, {"p10", "ten"}}));
    EXPECT_EQ(pages[std::string_view("p10, cut").substr(0, 3)], "ten");
}

// ---- Lists --------------------------------------------------------------------------------------

struct ListRow {
    const char* name;
    int page;
    std::string list;
    std::string separators;
    unsigned assign;
    unsigned escape;
    Pairs pairs;
};

const ListRow kLists[] = {
    {"empty list", 1252, "", ";", '=', '\\', {}},
    {"pairs", 1252, "a=1;b=2", ";", '=', '\\', {{"a", "1"}, {"b", "2"}}},
    {"values without keys", 1252, "x;y", ";", '=', '\\', {{"#1", "x"}, {"#2", "y"}}},
    {"every pair counts",
     1252,
     "a=1;x;b=2;y",
     ";",
     '=',
     '\\',
     {{"a", "1"}, {"#2", "x"}, {"b", "2"}, {"#4", "y"}}},
    {"only the first assignment counts", 1252, "k=v=w", ";", '=', '\\', {{"k", "v=w"}}},
    {"a leading separator", 1252, ";a=1", ";", '=', '\\', {{"#1", ""}, {"a", "1"}}},
    {"runs of separators", 1252, "a=1;;,;b;;", ";,", '=', '\\', {{"a", "1"}, {"#2", "b"}}},
    {"empty keys and values", 1252, "=;a=;=x", ";", '=', '\\', {{"", "x"}, {"a", ""}}},
    {"escapes", 1252, "a\\=\\;\\\\=c\\;\\=\\d", ";", '=', '\\', {{"a=;\\", "c;=d"}}},
    {"escape at the end of a value", 1252, "a=1\\", ";", '=', '\\', {{"a", "1"}}},
    {"escape at the end of a token", 1252, "a;b\\", ";", '=', '\\', {{"#1", "a"}, {"#2", "b"}}},
    {"escape alone", 1252, "\\", ";", '=', '\\', {{"#1", ""}}},
    {"no escape character", 1252, "a\\=1\\;b", ";", '=', 0, {{"a\\", "1\\"}, {"#2", "b"}}},
    {"a later pair replaces", 1252, "a=1;b=2;a=3", ";", '=', '\\', {{"a", "3"}, {"b", "2"}}},
    {"a key meets a made one", 1252, "#2=a;b", ";", '=', '\\', {{"#2", "b"}}},
    {"no separators", 1252, "a=1;b=2", "", '=', '\\', {{"a", "1;b=2"}}},
    {"assignment is a separator too", 1252, "a=1=b=2", "=", '=', '\\', {{"a", "1"}, {"b", "2"}}},
    {"assignment and escape are one", 1252, "a==b", ";", '=', '=', {{"a", "b"}}},
    {"zero bytes", 1252, "a\0=\0;b=c"s, ";", '=', '\\', {{"a\0"s, "\0"s}, {"b", "c"}}},
    {"zero byte assigns", 1252, "a\0b"s, ";", 0, '\\', {{"a", "b"}}},
    {"characters as trail bytes",
     932,
     "\x81\x5C\x81;=\x81\x5C;b=2",
     "\x5C",
     '=',
     ';',
     {{"\x81\x5C\x81;", "\x81\x5C"s + "b=2"}}},
    {"double-byte characters",
     932,
     "a\x81\x46\x81\x47\x81\x46\x81\x42",
     "\x81\x42",
     0xFFFF8146u,
     0x8147,
     {{"a", "\x81\x46"}}},
    {"a lone lead byte at the end", 932, "a=\x81", ";", '=', '\\', {{"a", "\x81"}}},
};

TEST(StringMap, ReadsLists) {
    for (const ListRow& row : kLists) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        SStringUnsortedMap map;
        map.AddFromList(Text(row.list), Text(row.separators), row.assign, row.escape, "#%d", 1);
        EXPECT_EQ(PairsOf(map), row.pairs);
    }
}

TEST(StringMap, WritesLists) {
    EXPECT_EQ(MapOf({{"a=b", "c;d"}}).GetAsList('=', ';', '\\'), "a\\=b=c\\;d");
    EXPECT_EQ(MapOf({{"a;\\", "c=\\"}, {"", ""}}).GetAsList('=', ';', '\\'), "a;\\\\=c=\\\\;=");
    EXPECT_EQ(MapOf({{"a=", ";\\"}}).GetAsList('=', ';', 0), "a==;\\");
    EXPECT_EQ(MapOf({}).GetAsList('=', ';', '\\'), "");
    EXPECT_EQ(MapOf<SStringMap>({{"b", "1"}, {"a", "2"}}).GetAsList(':', ' ', '\\'), "a:2 b:1");
    const PageScope page(932);
    EXPECT_EQ(MapOf({{"\x83\\", "\x83;"}}).GetAsList(0xFFFF8146u, ';', '\\'),
              "\x83\\\x81\x46\x83;");
}

// Text that no list loses: whole characters, and in keys no separator.
std::string Piece(std::mt19937& random, bool key) {
    static const char* const pieces[] = {"a",      "=",  "\\", "\x81\x3D", "\x81\x3B",
                                         "\x83\\", "%d", "",   ";"};
    std::string text;
    while (random() % 3 != 0)
        text += pieces[random() % (key ? 8 : 9)];
    return text;
}

TEST(StringMap, ListsRestoreTheMap) {
    for (const int number : {1252, 932}) {
        const PageScope page(number);
        for (unsigned seed = 1; seed <= 300; ++seed) {
            SCOPED_TRACE(std::to_string(number) + " seed " + std::to_string(seed));
            std::mt19937 random(seed);
            SStringUnsortedMap map;
            for (unsigned i = random() % 6; i > 0; --i) {
                // A byte on its own page, half a character on the other.
                const std::string key = Piece(random, true);
                map.Add(Text(number == 932 || key.find(';') == key.npos ? key : "plain"),
                        Text(Piece(random, false)));
            }
            SStringUnsortedMap restored;
            restored.AddFromList(map.GetAsList('=', ';', '\\'), ";", '=', '\\', "%d", 1);
            EXPECT_EQ(PairsOf(restored), PairsOf(map));
        }
    }
    SStringMap lossy;
    lossy.AddFromList(MapOf({{"a;b", "c"}}).GetAsList('=', ';', '\\'), ";", '=', '\\', "%d", 1);
    EXPECT_EQ(PairsOf(lossy), (Pairs{{"1", "a"}, {"b", "c"}}));
}

// ---- Key formats --------------------------------------------------------------------------------

TEST(StringMap, KeyFormatsHoldOneConversionOfAnInt) {
    const struct {
        const char* format;
        bool valid;
        int index;
        const char* key;
    } rows[] = {
        {"%d", true, 7, "7"},
        {"key%03i!", true, 7, "key007!"},
        {"%%%-4x%%", true, 255, "%ff  %"},
        {"%+5.3d", true, 7, " +007"},
        {"%u%%d", true, -1, "4294967295%d"},
        {"%#X", true, 255, "0XFF"},
        {"%o", true, 8, "10"},
        {"", false, 7, ""},
        {"100%%", false, 7, "100%"},
        {"%d%d", false, 7, "%d%d"},
        {"%s", false, 7, "%s"},
        {"a%%%n", false, 7, "a%%%n"},
        {"%*d", false, 7, "%*d"},
        {"%.*d", false, 7, "%.*d"},
        {"%1$d", false, 7, "%1$d"},
        {"%c", false, 7, "%c"},
        {"%ld", false, 7, "%ld"},
        {"%f", false, 7, "%f"},
        {"%1000d", false, 7, "%1000d"},
        {"%.1000d", false, 7, "%.1000d"},
        {"%------d", false, 7, "%------d"},
        {"%", false, 7, "%"},
        {"%5.", false, 7, "%5."},
        {"%d%", false, 7, "%d%"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        EXPECT_EQ(SIsIndexFormat(row.format), row.valid);
        SStringMap map;
        map.AddFromList("v", ";", '=', '\\', row.format, row.index);
        EXPECT_EQ(PairsOf(map), (Pairs{{row.key, "v"}}));
    }
    SStringMap wide;
    wide.AddFromList("v", ";", '=', '\\', "%#-+999.999d", INT_MIN);
    EXPECT_EQ(wide.begin()->key.Length(), 1000);
    SStringUnsortedMap last;
    last.AddFromList("a;b", ";", '=', '\\', "%d", INT_MAX);
    EXPECT_EQ(PairsOf(last), (Pairs{{"2147483647", "a"}, {"-2147483648", "b"}}));
}

// ---- Life ---------------------------------------------------------------------------------------

TEST(StringMap, ArgumentsMayLiveInTheMap) {
    SStringUnsortedMap map = MapOf({{"a", "x;y"}, {"b", "%d"}});
    map.Add("a", *map.Retrieve("b"));
    map.Add(map.begin()->key, map.begin()->value);
    map.AddFromList(map["b"], map["b"], '=', '\\', map["a"], 5);
    EXPECT_EQ(PairsOf(map), (Pairs{{"a", "%d"}, {"b", "%d"}, {"5", ""}}));
    map.Remove(map.begin()->key);
    map.Remove(map.Find("b"));
    EXPECT_EQ(PairsOf(map), (Pairs{{"5", ""}}));
}

TEST(StringMap, StaysAsItWasWithoutMemory) {
    const struct {
        const char* name;
        void (*run)(SStringUnsortedMap&);
    } rows[] = {
        {"add", [](SStringUnsortedMap& map) { map.Add(SString('k', 5000), SString('v', 5000)); }},
        {"index", [](SStringUnsortedMap& map) { map[std::string(5000, 'k')]; }},
        {"add a list",
         [](SStringUnsortedMap& map) {
             map.AddFromList("a=1;" + SString('k', 5000) + "=2", ";", '=', '\\', "%d", 1);
         }},
        {"write a list", [](SStringUnsortedMap& map) { (void)map.GetAsList('=', ';', '\\'); }},
    };
    const Pairs before = {{"a", std::string(5000, 'x')}, {"b", "2"}};
    for (const auto& row : rows) {
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(std::string(row.name) + ", failure " + std::to_string(nth));
            SStringUnsortedMap map = MapOf(before);
            FailNthAllocation fail(nth);
            try {
                row.run(map);
                if (!fail.Triggered()) break;
            } catch (const SEOutOfMemory&) {
                EXPECT_EQ(PairsOf(map), before);
            }
            ASSERT_LT(nth, 50);
        }
    }
}

// Random operations beside std::map.
TEST(StringMap, DoesAsTheModelDoes) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        SStringMap map;
        std::map<std::string, std::string> model;
        for (int step = 0; step < 300; ++step) {
            const std::string key(random() % 3, static_cast<char>('a' + random() % 20));
            const std::string value = std::to_string(step);
            switch (random() % 4) {
                case 0:
                    EXPECT_EQ(map.Remove(key), static_cast<int>(model.erase(key)));
                    break;
                case 1:
                    map.AddFromList(Text(key + "=" + value), ";", '=', '\\', "%d", 1);
                    model[key] = value;
                    break;
                default:
                    map.Add(Text(key), Text(value));
                    model[key] = value;
            }
            ASSERT_EQ(PairsOf(map), Pairs(model.begin(), model.end()));
        }
    }
}

TEST(StringMap, ManyPairsAreLinear) {
    std::string list;
    for (int i = 0; i < 200000; ++i)
        list += "key" + std::to_string(i) + "=" + std::to_string(i) + ";";
    SStringUnsortedMap map;
    map.AddFromList(Text(list), ";", '=', '\\', "%d", 1);
    EXPECT_EQ(map.GetAsList('=', ';', '\\').View(),
              std::string_view(list).substr(0, list.size() - 1));
    for (int i = 0; i < 200000; ++i)
        map.Remove(map.begin());
    EXPECT_TRUE(map.IsEmpty());
    map.AddFromList(SString(';', 3000000), ";", '=', '\\', "%d", 1);
    map.AddFromList(SString('\\', 3000000), ";", '=', '\\', "%d", 2);
    EXPECT_EQ(map.GetCount(), 2);
}

}  // namespace
