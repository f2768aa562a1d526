#include <brcore8/strings/string.h>

#include <brcore8/core/exception.h>
#include <brcore8/strings/string_buffer.h>

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <unordered_set>
#include <utility>
#include <vector>

#include "strings/string_fixture.h"
#include "support/failing_allocator.h"

namespace {

class StringTest : public PagedTest {};
BRCORE8_BOTH_PAGES(StringTest);

using namespace std::string_view_literals;

constexpr unsigned short kWide[] = {'a', 0x03B2, 0x65E5, 'b', 0};

// Alive before main and after it.
const SString early = SString("early ") + "bird";
struct Late {
    SString text = "late";
    ~Late() { text += early; }
} late;

TEST(StringLife, WorksBeforeMain) {
    ExpectText(early, "early bird");
}

TEST_P(StringTest, Constructs) {
    const char* text = "a\x93\xFA\x96\x7B";
    const bool two = IsDoubleByte();
    const struct {
        const char* name;
        SString made;
        std::string_view bytes;
        int length;
    } rows[] = {
        {"default", SString(), "", 0},
        {"null", SString(static_cast<const char*>(nullptr)), "", 0},
        {"empty text", SString(""), "", 0},
        {"text", SString(text), text, two ? 3 : 5},
        {"range", SString(text + 1, text + 3), "\x93\xFA", two ? 1 : 2},
        {"reversed range", SString(text + 3, text + 1), "", 0},
        {"range to null", SString(text, static_cast<const char*>(nullptr)), "", 0},
        {"two characters", SString(text, 2), two ? "a\x93\xFA" : "a\x93", 2},
        {"more characters than there are", SString(text, 99), text, two ? 3 : 5},
        {"no characters", SString(text, 0), "", 0},
        {"negative count", SString(text, -1), "", 0},
        {"view with zero bytes", SString("\0a\0"sv), "\0a\0"sv, 3},
        {"wide", SString(kWide),
         two ? "a\x83\xC0\x93\xFA"
               "b"
             : "a\xDF?b",
         4},
        {"wide, counted", SString(kWide, 2), two ? "a\x83\xC0" : "a\xDF", 2},
        {"wide, counted beyond the end", SString(kWide + 3, 9), "b", 1},
        {"wide null", SString(static_cast<const unsigned short*>(nullptr)), "", 0},
        {"repeated", SString('x', 3), "xxx", 3},
        {"repeated code", SString(0x41u, 2), "AA", 2},
        {"repeated double-byte code", SString(0x93FAu, 2), two ? "\x93\xFA\x93\xFA" : "\xFA\xFA",
         2},
        {"repeated signed code", SString(0xFFFF93FAu, 1), two ? "\x93\xFA" : "\xFA", 1},
        {"repeated never", SString('x', 0), "", 0},
        {"true", SString(7), "Yes", 3},
        {"false", SString(0), "No", 2},
        {"long", SString(-12L), "-12", 3},
        {"unsigned long", SString(12UL), "12", 2},
        {"double", SString(0.5), "0.5", 3},
        {"joined", SString("a") + "b" + SString("c"), "abc", 3},
        {"joined with null", static_cast<const char*>(nullptr) + SString("c"), "c", 1},
        {"buffer", SString(SStringBuffer(SString(text))), text, two ? 3 : 5},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ExpectText(row.made, row.bytes);
        EXPECT_EQ(row.made.Length(), row.length);
        EXPECT_EQ(row.made.LengthByte(), static_cast<int>(row.bytes.size()));
        EXPECT_EQ(row.made.IsEmpty(), row.bytes.empty());
        EXPECT_EQ(row.made.GetSafePointer(), row.bytes.empty() ? nullptr : row.made.View().data());
    }
}

TEST_P(StringTest, AssignsInEveryState) {
    const bool two = IsDoubleByte();
    const struct {
        const char* name;
        void (*assign)(SString&);
        std::string_view expected;
    } rows[] = {
        {"text", [](SString& s) { s = "new"; }, "new"},
        {"null", [](SString& s) { s = static_cast<const char*>(nullptr); }, ""},
        {"empty string", [](SString& s) { s = SString(); }, ""},
        {"string", [](SString& s) { s = Owned("new"); }, "new"},
        {"longer", [](SString& s) { s = std::string_view("a text longer than it was"); },
         "a text longer than it was"},
        {"wide", [](SString& s) { s = kWide; },
         two ? "a\x83\xC0\x93\xFA"
               "b"
             : "a\xDF?b"},
        {"code", [](SString& s) { s = 0x93FAu; }, two ? "\x93\xFA" : "\xFA"},
        {"code read from a string", [](SString& s) { s = s[1]; }, "e"},
        {"char", [](SString& s) { s = 'c'; }, "c"},
        {"untyped null", [](SString& s) { s = nullptr; }, ""},
        {"untyped null by Init", [](SString& s) { s.Init(nullptr); }, ""},
        {"buffer", [](SString& s) { s = SStringBuffer(SString("buf")); }, "buf"},
        {"its own tail", [](SString& s) { s = static_cast<const char*>(s) + 3; }, "lo"},
        {"itself", [](SString& s) { s = *&s; }, "hello"},
        {"its own left part", [](SString& s) { s = s.Left(2); }, "he"},
        {"done", [](SString& s) { s.Done(); }, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SString owned = "hello";
        row.assign(owned);
        ExpectText(owned, row.expected);

        SString shared = "hello";
        const SString other = shared;
        row.assign(shared);
        ExpectText(shared, row.expected);
        ExpectText(other, "hello");

        SString locked = "hello";
        const char* buffer = locked.LockBuffer();
        row.assign(locked);
        ExpectText(locked, row.expected);
        if (row.expected.size() <= 16) {
            EXPECT_EQ(locked.View().data(), buffer);
        }
        const SString copy = locked;
        if (!locked.IsEmpty()) {
            EXPECT_NE(copy.View().data(), locked.View().data());
        }
    }
}

TEST(StringSharing, CopiesShareUntilWrittenOrLocked) {
    SString first = "shared";
    SString second = first;
    EXPECT_EQ(first.View().data(), second.View().data());
    EXPECT_EQ(first.GetData()->references, 2);
    second.SetAt(0, 'S');
    ExpectText(first, "shared");
    ExpectText(second, "Shared");
    EXPECT_EQ(first.GetData()->references, 1);

    first.LockBuffer();
    SString third = first;
    SString fourth;
    fourth = first;
    EXPECT_NE(third.View().data(), first.View().data());
    EXPECT_NE(fourth.View().data(), first.View().data());
    first.UnlockBuffer();
    third = first;
    EXPECT_EQ(third.View().data(), first.View().data());
    third.UnlockBuffer();  // was not locked: the share must survive
    EXPECT_EQ(first.GetData()->references, 2);
}

TEST(StringSharing, MovesLeaveEmpty) {
    SString from = "text";
    const char* text = from;
    SString to = std::move(from);
    EXPECT_EQ(to.View().data(), text);
    ExpectText(from, "");
    SString full = "full";
    full = std::move(to);
    ExpectText(full, "text");
    full = std::move(*&full);
    ExpectText(full, "text");

    SString locked = "locked";
    const char* buffer = locked.LockBuffer();
    locked = std::move(full);
    EXPECT_EQ(locked.View().data(), buffer);
    ExpectText(locked, "text");
    SString target;
    target = std::move(locked);
    EXPECT_NE(target.View().data(), buffer);
    ExpectText(target, "text");
}

TEST(StringPools, CapacityIsThatOfTheClass) {
    const struct {
        int bytes;
        int capacity;
    } rows[] = {{1, 16},      {16, 16},     {17, 32},    {33, 64},     {65, 128},
                {129, 256},   {257, 512},   {513, 1024}, {1025, 2048}, {2048, 2048},
                {2049, 2560}, {2560, 2560}, {2561, 3072}};
    for (const auto& row : rows) {
        const SString text('x', row.bytes);
        EXPECT_EQ(text.GetData()->capacity, row.capacity) << row.bytes;
        EXPECT_TRUE(text.AssertValid());
    }
    const SString kept = "kept";
    SString::DeleteEmptyStrings();
    ExpectText(kept, "kept");
    EXPECT_EQ(SString().GetData()->references, -1);
}

TEST_P(StringTest, LocksAndUnlocks) {
    const int width = IsDoubleByte() ? 2 : 1;
    SString text;
    std::memcpy(text.Lock(5), "12345", 6);
    text.Unlock();
    ExpectText(text, "12345");
    const char* before = text;
    EXPECT_EQ(text.Lock(16 / width), before);
    text.Unlock(3);
    ExpectText(text, "123");

    const SString other = text;
    EXPECT_NE(text.Lock(0), before);  // shared: a buffer of its own
    text.Unlock();
    ExpectText(text, "123");
    ExpectText(other, "123");

    char* room = text.Lock(100);
    EXPECT_STREQ(room, "123");
    std::memset(room, 'z', static_cast<std::size_t>(text.GetData()->capacity) + 1);
    text.Unlock();  // no terminator within the room
    EXPECT_EQ(text.LengthByte(), text.GetData()->capacity);
    EXPECT_TRUE(text.AssertValid());
    text.Lock(1);
    text.Unlock(1 << 30);
    EXPECT_EQ(text.LengthByte(), text.GetData()->capacity);

    std::memcpy(text.Lock(4), "\x93\xFA\x96\x7B", 4);
    text.Unlock(2);
    ExpectText(text, IsDoubleByte() ? "\x93\xFA\x96\x7B" : "\x93\xFA");

    SString cut = SString('c', 3000);
    const SString whole = cut;
    cut.Lock(10);
    cut.Unlock(-1);
    EXPECT_EQ(cut.LengthByte(), width == 2 ? 32 : 16);
    EXPECT_EQ(whole.LengthByte(), 3000);

    text.GetBufferSetLength(7);
    EXPECT_EQ(text.Length(), 7);
    EXPECT_EQ(text.LengthByte(), 7 * width);
    SString().Unlock(5);
    SString().UnlockBuffer();
    ExpectText(SString(), "");
}

TEST_P(StringTest, ConvertsToNumbersAndTruth) {
    const struct {
        const char* text;
        long number;
        double real;
        int truth;
        int isNumber;
    } rows[] = {
        {"", 0, 0, 0, 0},     {"yes", 0, 0, 1, 0},     {"No", 0, 0, 0, 0},
        {"12", 12, 12, 1, 1}, {"-3.", -3, -3, 1, 1},   {"12,5", 12, 12, 1, 1},
        {"+", 0, 0, 0, 1},    {".", 0, 0, 0, 1},       {",", 0, 0, 0, 1},
        {"-", 0, 0, 0, 1},    {"1.2.3", 1, 1.2, 1, 0}, {"1e5", 1, 1e5, 1, 0},
        {"+-1", 0, 0, 0, 0},  {"0", 0, 0, 0, 1},       {" 7", 7, 7, 1, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const SString text = row.text;
        EXPECT_EQ(static_cast<long>(text), row.number);
        EXPECT_EQ(static_cast<double>(text), row.real);
        EXPECT_EQ(static_cast<int>(text), row.truth);
        EXPECT_EQ(text.IsNumber(), row.isNumber);
    }
    EXPECT_FALSE(SString("12\0"sv).IsNumber());
    EXPECT_TRUE(SString("{\\rtf1}").IsRtf() && SString::IsRtfText("{\\urtf"));
    EXPECT_FALSE(SString("{\\RTF").IsRtf() || SString::IsRtfText(nullptr));
    EXPECT_EQ(SString::SafeStrlen(nullptr) + SString::SafeStrlen("ab"), 2);

    const SString text = "a\x83\xC0";
    char bytes[4];
    unsigned short units[4];
    text.ToAnsi(bytes);
    text.ToAnsi(nullptr);
    EXPECT_STREQ(bytes, "a\x83\xC0");
    text.ToUnicode(units);
    text.ToUnicode(nullptr);
    EXPECT_EQ(units[1], IsDoubleByte() ? 0x03B2 : 0x0192);
    EXPECT_EQ(units[IsDoubleByte() ? 2 : 3], 0);
    std::ostringstream stream;
    stream << text << SString("\0!"sv);
    EXPECT_EQ(stream.str(), "a\x83\xC0\0!"sv);
}

// What compares equal hashes alike, also behind a zero byte, which comparison does not pass.
TEST(StringHash, AgreesWithEquality) {
    std::unordered_set<SString> set{SString("a\0b"sv), SString("a\0c"sv), SString("a")};
    EXPECT_EQ(set.size(), 1u);
}

// An operand of a type that no operation names must not fall to one on the text's address or truth
// value.
template <class Text, class Number>
concept ComputesWith = requires(Text text, Number number) {
    text + number;
}
|| requires(Text text, Number number) {
    number + text;
}
|| requires(Text text, Number number) {
    text == number;
}
|| requires(Text text, Number number) {
    text < number;
};

TEST(StringOperands, AreTextAndNeverNumbers) {
    static_assert(!ComputesWith<SString, int> && !ComputesWith<SString, double>);
    const SString text = "bc";
    ExpectText('a' + text + 'd', "abcd");
    EXPECT_TRUE(SString("b") == 'b' && text != 'b' && 'c' != text);
    EXPECT_TRUE(text[1L] == 'c' && text[std::size_t{1}] == 'c' && text[short{1}] == 'c');
    EXPECT_EQ(text[0x100000000], 0);
    using Pair = std::pair<SString, int>;
    const SString later = "d";
    const SString earlier = "a";
    EXPECT_TRUE(Pair(earlier, 1) < Pair(later, 0) && Pair(text, 1) < Pair("bc", 2));
    EXPECT_TRUE((std::vector<SString>{later} > std::vector<SString>{earlier, later}));
}

TEST_P(StringTest, TextOfAnotherPageStaysWithinItsBuffer) {
    for (const int later : {932, 1252}) {
        SString text =
            "\x93\xFA\x96\x7B"
            "a\x93";
        const SString again = text;
        const PageScope page(later);
        for (int i = -1; i <= 7; ++i) {
            for (int count = -1; count <= 7; ++count) {
                EXPECT_LE(text.Mid(i, count).LengthByte(), 6);
                SString edited = text;
                edited.Delete(i, count);
                edited.Insert("x", i);
                edited.SetAt(i, 0x93FAu);
                edited.Lock(count);
                edited.Unlock(i);
                EXPECT_LE(edited.LengthByte(), edited.GetData()->capacity);
            }
            static_cast<void>(text.GetAt(i));
            const char* p = text.GetPointerAt(i);
            EXPECT_TRUE(p == nullptr || (p >= text.View().data() && p <= text.View().data() + 6));
            static_cast<void>(text.FindPos('a', i));
            static_cast<void>(text.ReverseFindPos('a', i));
        }
        EXPECT_EQ(text.Right(99).View(), again.View());
        text.LockBuffer();
        EXPECT_EQ(text.View(), again.View());
    }
}

TEST_P(StringTest, RefusesWhatIsTooLong) {
    SString text('a', 70000);
    const SString large('b', 40000);
    const SString before = text;
    EXPECT_THROW(text.ReplaceAll("a", large), SEOutOfMemory);
    EXPECT_THROW(text.Lock(0x7FFFFFFF), SEOutOfMemory);
    EXPECT_THROW(SString(' ', 0x7FFFFFFF), SEOutOfMemory);
    // Refused for the sum, before anything is read.
    const std::string_view most(before.View().data(), SString::MaxBytes);
    EXPECT_THROW(text += most, SEOutOfMemory);
    SStringBuffer buffer(text);
    EXPECT_THROW(buffer += most, SEOutOfMemory);
    EXPECT_EQ(buffer.View(), before.View());
    EXPECT_EQ(text.View(), before.View());
    // As large as a text may be: to be had or not, but never a size that wrapped.
    FailNthAllocation fail(1, true);
    for (const int size : {SString::MaxBytes - 511, SString::MaxBytes - 1, SString::MaxBytes + 0})
        EXPECT_THROW(SString('x', size), SEOutOfMemory);
}

TEST_P(StringTest, TriesOnceMoreWhenMemoryIsShort) {
    const SString source('a', 5000);
    FailNthAllocation fail(1);
    ExpectText(source + "b", std::string(5000, 'a') + "b");
    EXPECT_TRUE(fail.Triggered());
}

TEST_P(StringTest, KeepsItsTextWhenMemoryRunsOut) {
    const struct {
        const char* name;
        void (*change)(SString&);
    } rows[] = {
        {"assign", [](SString& s) { s = std::string_view(s.View().data(), 4000); }},
        {"append", [](SString& s) { s += s; }},
        {"insert", [](SString& s) { s.Insert(s, 3); }},
        {"set", [](SString& s) { s.SetAt(3, 'x'); }},
        {"replace", [](SString& s) { s.Replace("a", "12345"); }},
        {"replace all", [](SString& s) { s.ReplaceAll("a", "12345"); }},
        {"replace character", [](SString& s) { s.ReplaceAll('a', 'b'); }},
        {"translate", [](SString& s) { s.Translate("a", "b"); }},
        {"upper", [](SString& s) { s.ToUpper(); }},
        {"format", [](SString& s) { s.Format("%s%s", s.View().data(), "tail"); }},
        {"lock",
         [](SString& s) {
             s.Lock(9000);
             s.LockBuffer();
         }},
        {"convert", [](SString& s) { s.CharToOemA(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SString text = SString('a', 5000);
        const SString other = text;  // makes every change need memory
        bool thrown = false;
        {
            FailNthAllocation fail(1, true);
            try {
                row.change(text);
            } catch (const SEOutOfMemory&) {
                thrown = true;
            }
        }
        EXPECT_TRUE(thrown);
        EXPECT_EQ(text.View(), other.View());
        EXPECT_TRUE(text.AssertValid());
        row.change(text);
        EXPECT_EQ(other.LengthByte(), 5000);
    }
}

}  // namespace
