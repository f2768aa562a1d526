#include <brcore8/strings/string_iterators.h>
#include <brcore8/strings/string_views.h>

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "support/page_scope.h"

namespace {

using namespace std::string_literals;
using Items = std::vector<std::string>;

template <class Iterator>
Items Collect(Iterator it) {
    Items items;
    for (; it; ++it)
        items.emplace_back((*it).View());
    return items;
}

template <class View>
Items CollectView(const View& view) {
    return Items(view.begin(), view.end());
}

struct ItemRow {
    const char* name;
    int page;
    std::string text;
    Items items;
};

const ItemRow kLines[] = {
    {"empty text", 1252, "", {}},
    {"cr lf between", 1252, "a\r\nb", {"a", "b"}},
    {"two lf leave an empty line", 1252, "a\n\nb", {"a", "", "b"}},
    {"two cr lf leave an empty line", 1252, "a\r\n\r\nb", {"a", "", "b"}},
    {"two cr leave an empty line", 1252, "a\r\rb", {"a", "", "b"}},
    {"lf cr is two ends", 1252, "a\n\rb", {"a", "", "b"}},
    {"no line after the last end", 1252, "a\n", {"a"}},
    {"only an end", 1252, "\r\n", {""}},
    {"zero byte inside", 1252, "a\0b\nc"s, {"a\0b"s, "c"}},
    {"lf as trail byte", 932, "\x81\nb\nc", {"\x81\nb", "c"}},
    {"lead byte at the end", 932, "a\n\x81", {"a", "\x81"}},
};

TEST(StringIterators, Lines) {
    for (const ItemRow& row : kLines) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const SString text{std::string_view(row.text)};
        EXPECT_EQ(Collect(SString::line_iterator(text)), row.items);
        EXPECT_EQ(CollectView(SLines(row.text)), row.items);
    }
}

const ItemRow kWords[] = {
    {"empty text", 1252, "", {}},
    {"leading spaces give an empty word", 1252, "  ab cd", {"", "ab", "cd"}},
    {"runs of any spaces", 1252, "ab \t\r\n\v\fcd", {"ab", "cd"}},
    {"trailing spaces give none", 1252, "ab  ", {"ab"}},
    {"only spaces", 1252, "  ", {""}},
    {"blank as trail byte", 932, "\x81 b c", {"\x81 b", "c"}},
    {"the wide blank is a space",
     932,
     "a\x81\x40"
     "b",
     {"a", "b"}},
};

TEST(StringIterators, Words) {
    for (const ItemRow& row : kWords) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const SString text{std::string_view(row.text)};
        EXPECT_EQ(Collect(SString::word_iterator(text)), row.items);
        EXPECT_EQ(CollectView(SWords(row.text)), row.items);
    }
}

struct PartRow : ItemRow {
    unsigned int separator;
};

const PartRow kParts[] = {
    {{"empty text", 1252, "", {}}, ','},
    {{"an empty part inside", 1252, "a,,b", {"a", "", "b"}}, ','},
    {{"one in front, none at the end", 1252, ",a,", {"", "a"}}, ','},
    {{"no separator", 1252, "abc", {"abc"}}, ','},
    {{"high byte, sign-extended",
      1252,
      "a\xE9"
      "b",
      {"a", "b"}},
     0xFFFFFFE9u},
    {{"separator as trail byte", 932, "a\x81,b,c", {"a\x81,b", "c"}}, ','},
    {{"double-byte separator",
      932,
      "a\x81\x41"
      "b",
      {"a", "b"}},
     0x8141},
    {{"the same with a signed lead byte",
      932,
      "a\x81\x41"
      "b",
      {"a", "b"}},
     0xFFFF8141u},
};

TEST(StringIterators, Parts) {
    for (const PartRow& row : kParts) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const SString text{std::string_view(row.text)};
        EXPECT_EQ(Collect(SString::parts_iterator(text, row.separator)), row.items);
        EXPECT_EQ(CollectView(SParts(row.text, row.separator)), row.items);
    }
}

struct CodeRow {
    const char* name;
    int page;
    std::string text;
    std::vector<int> codes;
};

const CodeRow kCodes[] = {
    {"empty", 1252, "", {}},
    {"bytes are unsigned", 1252, "a\xE9\xFF", {'a', 0xE9, 0xFF}},
    {"lead bytes are signed", 932, "a\x81\x41\xB1", {'a', 0x8141 - 0x10000, 0xB1}},
    {"lead byte at the end", 932, "a\x81", {'a', 0x81}},
};

TEST(StringIterators, Characters) {
    for (const CodeRow& row : kCodes) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const SString text{std::string_view(row.text)};
        std::vector<int> walked;
        for (SString::const_iterator it(text); it; it++)
            walked.push_back(*it);
        EXPECT_EQ(walked, row.codes);
        const SCharacters view(row.text);
        EXPECT_EQ(std::vector<int>(view.begin(), view.end()), row.codes);
        SString::const_iterator last(text, text.Length());
        EXPECT_EQ(*last, 0);
        EXPECT_TRUE(++last == SString::const_iterator(text, 99));
    }
}

// Text that no zero byte follows: nothing may look behind the end.
TEST(StringIterators, ViewsStopAtTheirEnd) {
    const PageScope page(932);
    const std::string_view inside = std::string_view("a b\x81 c").substr(0, 4);
    EXPECT_EQ(CollectView(SWords(inside)), (Items{"a", "b\x81"}));
    EXPECT_EQ(CollectView(SLines(std::string_view("a\0b"s).substr(0, 3))), Items{"a\0b"s});
}

TEST(StringIterators, PositionsCompareMoveAndReturn) {
    const PageScope page(932);
    const SString text = "\x81\x41 \rb";
    SString::const_iterator at(text, -5);
    const SString::const_iterator start = at;
    at += 1;
    EXPECT_TRUE(at > start && start < at && at >= start && start <= at && at != start);
    EXPECT_TRUE(at.IsWhitespace());
    EXPECT_EQ(at.SaveState(), 2u);
    EXPECT_TRUE((++at).IsEoln());
    at += 1000;
    EXPECT_EQ(at.SaveState(), 5u);
    at.RestoreState(99);
    EXPECT_FALSE(at);
    at.RestoreState(2);
    EXPECT_EQ(*at, ' ');
    at.reset();
    EXPECT_EQ(at.GetPointer(), static_cast<const char*>(text));
}

// Of a text whose items are "a" and "b": a copy stays where it was, the end is the end, and the way
// back leads to the first item.
template <class Iterator>
void WalksAndGoesBack(const SString& text, Iterator item) {
    const Iterator first = item++;
    EXPECT_TRUE(item != first);
    EXPECT_EQ((*first).View(), "a");
    EXPECT_EQ((*item).View(), "b");
    EXPECT_EQ((*item++).View(), "b");
    EXPECT_FALSE(item++);
    EXPECT_FALSE(item);
    item.reset();
    EXPECT_TRUE(item == first);
    EXPECT_EQ(item.GetPointer(), static_cast<const char*>(text));
    EXPECT_EQ((*item).View(), "a");
}

TEST(StringIterators, ResetGoesBackToTheFirstItem) {
    const SString lines = "a\r\nb", words = "a b", parts = "a,b";
    WalksAndGoesBack(lines, SString::line_iterator(lines));
    WalksAndGoesBack(words, SString::word_iterator(words));
    WalksAndGoesBack(parts, SString::parts_iterator(parts, ','));
}

// The same of views, which algorithms of the standard library walk.
template <class View>
void WalksWithCopies(const View& view) {
    auto at = view.begin();
    const auto first = at++;
    EXPECT_TRUE(first == view.begin() && at != first);
    EXPECT_EQ(*first, *view.begin());
    const auto second = at;
    EXPECT_TRUE(at++ == second);
    EXPECT_TRUE(at == view.end());
    EXPECT_EQ(std::distance(first, view.end()), 2);
    static_assert(std::forward_iterator<decltype(at)>);
}

TEST(StringIterators, CopiesOfViewsStayBehind) {
    WalksWithCopies(SLines("a\nb"));
    WalksWithCopies(SWords("a b"));
    WalksWithCopies(SParts("a,b", ','));
    const std::string_view text = "ab";
    WalksWithCopies(SCharacters(text));
    auto at = SCharacters(text).begin();
    EXPECT_EQ(*at++, 'a');
    EXPECT_EQ(at.GetPointer(), text.data() + 1);
}

TEST(StringIterators, AssignmentWritesThrough) {
    struct Row {
        const char* name;
        bool lockedSource;
    };
    for (const Row& row : {Row{"shared", false}, Row{"copied from a locked string", true}}) {
        SCOPED_TRACE(row.name);
        SString target = "target";
        SString source = "one two";
        if (row.lockedSource) source.LockBuffer();
        SString::word_iterator to(target);
        SString::word_iterator from(source);
        to = ++from;
        EXPECT_EQ(target.View(), "one two");
        EXPECT_EQ((*to).View(), "two");
        EXPECT_EQ(to.GetPointer(), static_cast<const char*>(target) + 4);
        EXPECT_FALSE(++to);
        if (row.lockedSource) source.UnlockBuffer();
    }
}

TEST(StringIterators, StandAtTheEndOfATextThatLostTheirPlace) {
    const struct {
        const char* name;
        void (*change)(SString&);
    } rows[] = {
        {"cut", [](SString& s) { s.Delete(2, -1); }},
        {"replaced by another's", [](SString& s) { s = SString("ab"); }},
        {"replaced by a longer one", [](SString& s) { s = SString('y', 8000); }},
        {"emptied", [](SString& s) { s.Done(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SString text('x', 3000);
        SString::const_iterator at(text, 2500);
        SString::word_iterator word(text);
        row.change(text);
        const auto end = static_cast<unsigned>(text.LengthByte());
        EXPECT_EQ(at.SaveState(), end);
        EXPECT_EQ(at.GetPointer(), text.GetPointerAt(text.Length()));
        EXPECT_FALSE(at || *at || at.IsEoln() || at.IsWhitespace());
        at += 2;
        EXPECT_EQ((++at).SaveState(), end);
        EXPECT_LE((*word).LengthByte(), text.LengthByte());
        EXPECT_FALSE(++word);
    }
}

}  // namespace
