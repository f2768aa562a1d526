#include <brcore8/strings/string.h>

#include <gtest/gtest.h>

#include "strings/string_fixture.h"

namespace {

class StringEdit : public PagedTest {};
BRCORE8_BOTH_PAGES(StringEdit);

using Change = void (*)(SString&);

// Every change must come out the same for a string that is alone, shared, locked, or has room to
// spare, and must leave the other holder of a shared buffer alone.
void ExpectChange(std::string_view before, Change change, std::string_view after) {
    SString owned = Owned(before);
    change(owned);
    ExpectText(owned, after);

    const SString other = Owned(before);
    SString shared = other;
    change(shared);
    ExpectText(shared, after);
    ExpectText(other, before);

    SString roomy = Owned(before);
    roomy.Lock(500);
    roomy.Unlock(static_cast<int>(before.size()));
    roomy = before;
    change(roomy);
    ExpectText(roomy, after);

    SString locked = Owned(before);
    locked.LockBuffer();
    change(locked);
    ExpectText(locked, after);
    locked.UnlockBuffer();
    EXPECT_TRUE(locked.IsEmpty() || locked.GetData()->references == 1);
}

struct Row {
    const char* name;
    std::string_view before;
    Change change;
    std::string_view after;
};

template <std::size_t N>
void ExpectChanges(const Row (&rows)[N]) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ExpectChange(row.before, row.change, row.after);
    }
}

using namespace std::string_view_literals;

TEST_P(StringEdit, PlainText) {
    const Row rows[] = {
        {"append string", "ab", [](SString& s) { s += SString("cd"); }, "abcd"},
        {"append text", "ab", [](SString& s) { s += "cd"; }, "abcd"},
        {"append null", "ab", [](SString& s) { s += static_cast<const char*>(nullptr); }, "ab"},
        {"append view", "ab", [](SString& s) { s += "\0c"sv; }, "ab\0c"sv},
        {"append char", "ab", [](SString& s) { s += 'c'; }, "abc"},
        {"append code", "ab", [](SString& s) { s += 0x63u; }, "abc"},
        {"append past the class", "0123456789012345", [](SString& s) { s += '6'; },
         "01234567890123456"},
        {"append to empty", "", [](SString& s) { s += "x"; }, "x"},
        {"insert", "ad", [](SString& s) { s.Insert("bc", 1); }, "abcd"},
        {"insert in front", "b", [](SString& s) { s.Insert("a", -3); }, "ab"},
        {"insert beyond the end", "a", [](SString& s) { s.Insert("b", 9); }, "ab"},
        {"insert null", "a", [](SString& s) { s.Insert(nullptr, 0); }, "a"},
        {"delete to the end", "abcde", [](SString& s) { s.Delete(1, -1); }, "a"},
        {"delete beyond the end", "abcde", [](SString& s) { s.Delete(3, 0x7FFFFFFF); }, "abc"},
        {"delete outside", "abcde", [](SString& s) { s.Delete(5, 1); }, "abcde"},
        {"delete before", "abcde", [](SString& s) { s.Delete(-1, 1); }, "abcde"},
        {"delete nothing", "abcde", [](SString& s) { s.Delete(1, 0); }, "abcde"},
        {"delete everything", "abc", [](SString& s) { s.Delete(0, 3); }, ""},
        {"delete behind a zero byte", "a\0bc"sv, [](SString& s) { s.Delete(2, 1); }, "a\0c"sv},
        {"set", "abc", [](SString& s) { s.SetAt(1, 'x'); }, "axc"},
        {"set beyond the end", "abc", [](SString& s) { s.SetAt(3, 'x'); }, "abc"},
        {"set before the start", "abc", [](SString& s) { s.SetAt(-1, 'x'); }, "abc"},
        {"trim left character", "xxaxx", [](SString& s) { s.TrimLeft('x'); }, "axx"},
        {"trim right character", "xxaxx", [](SString& s) { s.TrimRight('x'); }, "xxa"},
        {"trim set", " \t a b\r\n", [](SString& s) { s.Trim(); }, "a b"},
        {"trim everything", "xyx", [](SString& s) { s.Trim("yx"); }, ""},
        {"trim code 0", "a", [](SString& s) { s.Trim(0u); }, "a"},
        {"trim null set", "a", [](SString& s) { s.TrimLeft(static_cast<const char*>(nullptr)); },
         "a"},
        {"trim does not take zero bytes", "\0a\0"sv, [](SString& s) { s.Trim("a"); }, "\0a\0"sv},
        {"upper", "aBc1", [](SString& s) { s.ToUpper(); }, "ABC1"},
        {"lower", "AbC1", [](SString& s) { s.ToLower(); }, "abc1"},
        {"upper at", "abc", [](SString& s) { s.ToUpper(1); }, "aBc"},
        {"lower outside", "ABC", [](SString& s) { s.ToLower(7); }, "ABC"},
    };
    ExpectChanges(rows);
}

TEST_P(StringEdit, Replacing) {
    const Row rows[] = {
        {"first", "abab", [](SString& s) { EXPECT_EQ(s.Replace("b", "xyz"), 1); }, "axyzab"},
        {"first shorter", "abcabc", [](SString& s) { EXPECT_EQ(s.Replace("bc", "-"), 1); },
         "a-abc"},
        {"first by null", "abc", [](SString& s) { EXPECT_EQ(s.Replace("b", nullptr), 1); }, "ac"},
        {"nowhere", "abc", [](SString& s) { EXPECT_EQ(s.Replace("x", "y"), 0); }, "abc"},
        {"empty old", "abc", [](SString& s) { EXPECT_EQ(s.ReplaceAll("", "y"), 0); }, "abc"},
        {"null old", "abc", [](SString& s) { EXPECT_EQ(s.ReplaceAll(nullptr, "y"), 0); }, "abc"},
        {"in empty", "", [](SString& s) { EXPECT_EQ(s.ReplaceAll("a", "y"), 0); }, ""},
        {"no case", "aBAb", [](SString& s) { EXPECT_EQ(s.ReplaceNoCase("BA", "x"), 1); }, "axb"},
        {"all, not rescanned", "aaaa", [](SString& s) { EXPECT_EQ(s.ReplaceAll("aa", "a"), 1); },
         "aa"},
        {"all, growing", "aba", [](SString& s) { EXPECT_EQ(s.ReplaceAll("a", "aaa"), 1); },
         "aaabaaa"},
        {"all, to nothing", "aaa", [](SString& s) { EXPECT_EQ(s.ReplaceAll("a", ""), 1); }, ""},
        {"all, no case", "xXx", [](SString& s) { EXPECT_EQ(s.ReplaceAllNoCase("X", "y"), 1); },
         "yyy"},
        {"all before a zero byte", "a\0a"sv, [](SString& s) { s.ReplaceAll("a", "bc"); },
         "bc\0a"sv},
        {"character", "abab", [](SString& s) { EXPECT_EQ(s.Replace('b', 'x'), 1); }, "axab"},
        {"characters", "abab", [](SString& s) { EXPECT_EQ(s.ReplaceAll('b', 'x'), 1); }, "axax"},
        {"characters, no case", "aBab",
         [](SString& s) { EXPECT_EQ(s.ReplaceAllNoCase('b', 'x'), 1); }, "axax"},
        {"character nowhere", "abab", [](SString& s) { EXPECT_EQ(s.ReplaceAll('y', 'x'), 0); },
         "abab"},
        {"character, no case", "aBab", [](SString& s) { EXPECT_EQ(s.ReplaceNoCase('b', 'x'), 1); },
         "axab"},
        {"translate", "hello", [](SString& s) { EXPECT_EQ(s.Translate("elo", "ipa"), 1); },
         "hippa"},
        {"translate in passes", "abc", [](SString& s) { EXPECT_EQ(s.Translate("ab", "bc"), 1); },
         "ccc"},
        {"translate twice", "aa", [](SString& s) { EXPECT_EQ(s.Translate("aa", "bc"), 1); }, "bb"},
        {"translate back", "ab", [](SString& s) { EXPECT_EQ(s.Translate("ab", "ba"), 1); }, "aa"},
        {"translate to the shorter", "ab", [](SString& s) { EXPECT_EQ(s.Translate("ba", "x"), 1); },
         "ax"},
        {"translate nothing", "ab", [](SString& s) { EXPECT_EQ(s.Translate("xy", "ab"), 0); },
         "ab"},
        {"translate null", "ab", [](SString& s) { EXPECT_EQ(s.Translate(nullptr, "ab"), 0); },
         "ab"},
    };
    ExpectChanges(rows);
}

// Arguments that lie in the text that is changed.
TEST_P(StringEdit, ItsOwnText) {
    static const std::string large(5000, 'x');
    static const std::string twice = large + large;
    const Row rows[] = {
        {"append itself from the heap", large, [](SString& s) { s += s; }, twice},
        {"append itself", "abc", [](SString& s) { s += s; }, "abcabc"},
        {"append its tail", "abc", [](SString& s) { s += s.GetPointerAt(1); }, "abcbc"},
        {"append its view", "abc", [](SString& s) { s += s.View().substr(1, 1); }, "abcb"},
        {"insert itself", "abc", [](SString& s) { s.Insert(s, 1); }, "aabcbc"},
        {"insert its end", "abc", [](SString& s) { s.Insert(s.GetPointerAt(2), 0); }, "cabc"},
        {"replace itself", "abc", [](SString& s) { s.Replace(s, s); }, "abc"},
        {"replace by itself", "abc", [](SString& s) { s.Replace("b", s); }, "aabcc"},
        {"replace all by tail", "aab", [](SString& s) { s.ReplaceAll("a", s.GetPointerAt(1)); },
         "abab"
         "b"},
        {"replace all of tail", "abb", [](SString& s) { s.ReplaceAll(s.GetPointerAt(2), "xy"); },
         "axyxy"},
        {"translate by itself", "ab", [](SString& s) { s.Translate(s, s.GetPointerAt(1)); }, "bb"},
        {"trim itself", "abc", [](SString& s) { s.Trim(s); }, ""},
        {"trim its tail", "abcab", [](SString& s) { s.Trim(s.GetPointerAt(3)); }, "c"},
        {"assign part", "abcdef", [](SString& s) { s = s.View().substr(2, 3); }, "cde"},
        {"format itself twice", "ab",
         [](SString& s) { s.Format("%s%s", s.View().data(), s.View().data()); }, "abab"},
    };
    ExpectChanges(rows);
}

// 932 pairs 0x93 with 0xFA; 1252 sees two letters.
TEST(StringEditDoubleByte, KeepsCharactersWhole) {
    const PageScope page(932);
    const Row rows[] = {
        {"insert between", "\x93\xFA\x96\x7B", [](SString& s) { s.Insert("-", 1); },
         "\x93\xFA-\x96\x7B"},
        {"delete one",
         "a\x93\xFA"
         "b",
         [](SString& s) { s.Delete(1); }, "ab"},
        {"wider", "abc", [](SString& s) { s.SetAt(1, 0x93FAu); },
         "a\x93\xFA"
         "c"},
        {"wider, signed", "abc", [](SString& s) { s.SetAt(1, 0xFFFF93FAu); },
         "a\x93\xFA"
         "c"},
        {"narrower",
         "a\x93\xFA"
         "c",
         [](SString& s) { s.SetAt(1, 'b'); }, "abc"},
        {"same width", "\x93\xFA", [](SString& s) { s.SetAt(0, 0x967Bu); }, "\x96\x7B"},
        {"a trail byte is no character",
         "\x83\x41"
         "A",
         [](SString& s) { s.ReplaceAll('A', 'x'); },
         "\x83\x41"
         "x"},
        {"narrow by wide", "aba", [](SString& s) { EXPECT_EQ(s.ReplaceAll('a', 0x93FAu), 1); },
         "\x93\xFA"
         "b\x93\xFA"},
        {"wide by narrow",
         "\x93\xFA"
         "b",
         [](SString& s) { EXPECT_EQ(s.Replace(0x93FAu, 'a'), 1); }, "ab"},
        {"wide by wide", "\x93\xFA\x93\xFA", [](SString& s) { s.ReplaceAll(0x93FAu, 0x967Bu); },
         "\x96\x7B\x96\x7B"},
        {"trim wide", "\x81\x40\x93\xFA\x81\x40", [](SString& s) { s.Trim(0x8140u); }, "\x93\xFA"},
        {"trim by set", "\x81\x40 \x93\xFA", [](SString& s) { s.TrimLeft(" \x81\x40"); },
         "\x93\xFA"},
        {"trim spares a trail byte", "\x83\x41", [](SString& s) { s.TrimRight('A'); }, "\x83\x41"},
        {"translate wide", "a\x93\xFA",
         [](SString& s) {
             s.Translate(
                 "\x93\xFA"
                 "a",
                 "b\x96\x7B");
         },
         "\x96\x7B"
         "b"},
        {"upper", "\x82\x81z\x83\x61", [](SString& s) { s.ToUpper(); }, "\x82\x60Z\x83\x61"},
        {"lower at", "\x82\x60", [](SString& s) { s.ToLower(0); }, "\x82\x81"},
        {"the lone lead finds its trail", "a\x93",
         [](SString& s) {
             s += "\xFA"
                  "b";
         },
         "a\x93\xFA"
         "b"},
        {"a lead value that is a trail", "\x93\x93", [](SString& s) { s += "\x93\xFA"; },
         "\x93\x93\x93\xFA"},
        {"deleted between lead and trail", "\x93\0\xFA"sv, [](SString& s) { s.Delete(1); },
         "\x93\xFA"},
        {"lone lead replaced", "a\x93", [](SString& s) { s.SetAt(1, 'b'); }, "ab"},
    };
    ExpectChanges(rows);
    EXPECT_EQ((SString("a\x93") + "\xFA").Length(), 2);
}

TEST(StringEditSingleByte, FoldsAndRecodesTheWholePage) {
    const PageScope page(1252);
    const Row rows[] = {
        {"upper", "\xE4\xFF", [](SString& s) { s.ToUpper(); }, "\xC4\x9F"},
        {"lower", "\xC4\x9F", [](SString& s) { s.ToLower(); }, "\xE4\xFF"},
        {"low byte of a code", "a", [](SString& s) { s.SetAt(0, 0xFFFFFFE4u); }, "\xE4"},
        {"to OEM and back", "\xE4\0\xFC"sv,
         [](SString& s) {
             s.CharToOemA();
             EXPECT_EQ(s.GetAt(0), '\x84');
             s.OemToCharA();
         },
         "\xE4\0\xFC"sv},
    };
    ExpectChanges(rows);
}

TEST_P(StringEdit, TakesParts) {
    const SString text = IsDoubleByte() ? "a\x93\xFA"
                                          "cd\x96\x7B"
                                        : "abcde";
    const SString middle = IsDoubleByte() ? "\x93\xFA"
                                            "c"
                                          : "bc";
    const SString last = IsDoubleByte() ? "d\x96\x7B" : "de";
    const struct {
        const char* name;
        SString part;
        const SString& expected;
    } rows[] = {
        {"middle", text.Mid(1, 2), middle},
        {"cut at the end", text.Mid(3, 10), last},
        {"beyond the end", text.Mid(7, 1), SString()},
        {"at the end", text.Mid(5, 1), SString()},
        {"no count", text.Mid(1, -1), SString()},
        {"from before", text.Mid(-1, 99), text},
        {"largest", text.Mid(3, 0x7FFFFFFF), last},
        {"none left", text.Left(-1), SString()},
        {"all left", text.Left(99), text},
        {"right", text.Right(2), last},
        {"all right", text.Right(99), text},
        {"none right", text.Right(-5), SString()},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ExpectText(row.part, row.expected);
    }
}

}  // namespace
