// Every operation that needs memory is refused its first, second, third ... allocation and all that
// follow, for a string would try a second time. Texts are so long that no pool has a block left for
// them.
#include <brcore8/core/exception.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/string_map.h>
#include <brcore8/strings/string_table.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <string>
#include <utility>

#include "strings/string_fixture.h"
#include "support/failing_allocator.h"

namespace {

// Runs the operation on fresh subjects until none of its allocations is refused. What it leaves
// behind when it throws is what `holds` accepts.
template <class Make, class Run, class Holds>
void RefuseEach(const char* name, Make make, Run run, Holds holds) {
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(std::string(name) + ", refused from " + std::to_string(nth));
        ASSERT_LT(nth, 100);
        auto subject = make();
        bool refused = true;
        bool thrown = false;
        {
            FailNthAllocation fail(nth, true);
            try {
                run(subject);
            } catch (const SEOutOfMemory&) {
                thrown = true;
            }
            refused = fail.Triggered();
        }
        EXPECT_EQ(thrown, refused);
        EXPECT_TRUE(nth > 1 || refused) << "it asks for no memory";
        if (thrown) holds(subject);
        if (!refused) return;
    }
}

// Not checked by the compiler, whose wide characters are others.
void Format(SString& text, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    try {
        text.FormatV(format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}

class StringMemory : public PagedTest {};
BRCORE8_BOTH_PAGES(StringMemory);

TEST_P(StringMemory, AStringKeepsItsText) {
    static const std::string text = "  " + std::string(5000, 'a') + "\n ";
    static const std::u16string wide(5000, u'w');
    static const auto* const units = reinterpret_cast<const unsigned short*>(wide.c_str());
    const struct {
        const char* name;
        void (*run)(SString&);
    } rows[] = {
        {"made of a text", [](SString& s) { s = SString(static_cast<const char*>(s)); }},
        {"made of bytes", [](SString& s) { s = SString(s.View().data(), s.View().data() + 4000); }},
        {"made of characters", [](SString& s) { s = SString(s.View().data(), 4000); }},
        {"made of wide text", [](SString& s) { s = SString(units); }},
        {"made of wide characters", [](SString& s) { s = SString(units, 4000); }},
        {"assigned wide text", [](SString& s) { s = units; }},
        {"a byte repeated", [](SString& s) { s = SString('x', 6000); }},
        {"a character repeated", [](SString& s) { s = SString(0x8141u, 6000); }},
        {"copied while locked",
         [](SString& s) {
             SString locked(std::string_view(text).substr(1));
             locked.LockBuffer();
             s = SString(locked);
         }},
        {"assigned while locked",
         [](SString& s) {
             SString locked(std::string_view(text).substr(1));
             locked.LockBuffer();
             s = locked;
         }},
        {"left", [](SString& s) { s = s.Left(4000); }},
        {"right", [](SString& s) { s = s.Right(4000); }},
        {"middle", [](SString& s) { s = s.Mid(1, 4000); }},
        {"joined with a string", [](SString& s) { s = s + s; }},
        {"joined with a text", [](SString& s) { s = s + "x"; }},
        {"joined behind a text", [](SString& s) { s = "x" + s; }},
        {"a byte appended", [](SString& s) { s += 'x'; }},
        {"a character appended", [](SString& s) { s += 0x8141u; }},
        {"a text appended", [](SString& s) { s += s.GetPointerAt(9); }},
        {"inserted", [](SString& s) { s.Insert("x", 1); }},
        {"deleted", [](SString& s) { s.Delete(1, 10); }},
        {"trimmed left", [](SString& s) { s.TrimLeft(); }},
        {"trimmed right", [](SString& s) { s.TrimRight(' '); }},
        {"trimmed", [](SString& s) { s.Trim(); }},
        {"one text replaced, any case", [](SString& s) { s.ReplaceNoCase("AA", "b"); }},
        {"all texts replaced, any case", [](SString& s) { s.ReplaceAllNoCase("AA", "bcd"); }},
        {"shorter texts", [](SString& s) { s.ReplaceAll("aa", "b"); }},
        {"one character replaced", [](SString& s) { s.Replace('a', 'b'); }},
        {"any case of a character", [](SString& s) { s.ReplaceAllNoCase('A', 'b'); }},
        {"a wider character", [](SString& s) { s.ReplaceAll('a', 0x8141u); }},
        {"one character in upper case", [](SString& s) { s.ToUpper(3); }},
        {"one character in lower case", [](SString& s) { s.ToLower(3); }},
        {"all in lower case", [](SString& s) { s.ToLower(); }},
        {"recoded", [](SString& s) { s.OemToCharA(); }},
        {"a buffer of a length", [](SString& s) { s.GetBufferSetLength(6000); }},
        {"cut by unlocking", [](SString& s) { s.Unlock(5); }},
        {"formatted with a width", [](SString& s) { s.Format("%6000d", 7); }},
        {"formatted with wide text", [](SString& s) { Format(s, "%ls", units); }},
        {"formatted with decimals", [](SString& s) { s.Format("%.6000f", 7.0); }},
        {"an item", [](SString& s) { s = *SString::parts_iterator(s, 'x'); }},
        {"of a buffer",
         [](SString& s) {
             SStringBuffer buffer(s);
             buffer += s;
             s = buffer;
         }},
    };
    for (const auto& row : rows) {
        const SString other{std::string_view(text)};
        RefuseEach(
            row.name, [&] { return SString(other); }, row.run,
            [](const SString& s) { ExpectText(s, text); });
        ExpectText(other, text);
        EXPECT_EQ(other.GetData()->references, 1) << row.name;
    }
}

SStringTable LongTexts() {
    SStringTable table;
    for (const char letter : {'d', 'B', 'c', 'A'})
        table.Add(SString(letter, 3000));
    return table;
}

TEST(StringMemory, ATableKeepsItsStrings) {
    static const SString list = SString('x', 3000) + ";" + SString('y', 3000) + "\\;";
    static const char* const array[] = {list, list, nullptr};
    const struct {
        const char* name;
        void (*run)(SStringTable&);
    } rows[] = {
        {"inserted", [](SStringTable& t) { t.Insert(1, SString('x', 3000)); }},
        {"its own inserted", [](SStringTable& t) { t.Insert(1, t[3]); }},
        {"assigned a table", [](SStringTable& t) { t = LongTexts(); }},
        {"copied", [](SStringTable& t) { t = SStringTable(std::as_const(t)); }},
        {"made of a part",
         [](SStringTable& t) { t = SStringTable(t.GetArray() + 1, t.GetArray() + 3); }},
        {"made with room", [](SStringTable& t) { t = SStringTable(100, 3); }},
        {"assigned an array", [](SStringTable& t) { t = array; }},
        {"added an array", [](SStringTable& t) { t += array; }},
        {"set from a list", [](SStringTable& t) { t.SetFromList(list, ";", '\\'); }},
        {"added a list", [](SStringTable& t) { t.AddFromList(list, ";", '\\'); }},
        {"as a list", [](SStringTable& t) { (void)t.GetAsList(';', '\\'); }},
        {"as a list with escapes", [](SStringTable& t) { (void)t.GetAsList('d', '\\'); }},
        {"formatted", [](SStringTable& t) { (void)t.Format("[", ", ", "]"); }},
        {"sorted", [](SStringTable& t) { t.Sort(); }},
        {"sorted without case", [](SStringTable& t) { t.SortNoCase(0); }},
        {"sorted by number", [](SStringTable& t) { t.SortNumbered(); }},
        {"sorted by number without case", [](SStringTable& t) { t.SortNumberedNoCase(0); }},
    };
    for (const auto& row : rows) {
        RefuseEach(row.name, LongTexts, row.run, [](const SStringTable& table) {
            ASSERT_EQ(table.GetCount(), 4);
            EXPECT_TRUE(table.AssertValid());
            for (int i = 0; i < 4; ++i)
                ExpectText(table[i], std::string(3000, "dBcA"[i]));
        });
    }
}

template <class Map>
Map LongPairs() {
    Map map;
    for (const char letter : {'b', 'a'})
        map.Add(SString(letter, 3000), SString(letter, 4000));
    return map;
}

template <class Map>
void KeepsItsPairs() {
    const struct {
        const char* name;
        void (*run)(Map&);
    } rows[] = {
        {"assigned", [](Map& m) { m = LongPairs<Map>(); }},
        {"added a map",
         [](Map& m) {
             Map other;
             other.Add(SString('c', 3000), "1");
             other.Add(SString('a', 3000), "2");
             m += other;
         }},
        {"added a list",
         [](Map& m) { m.AddFromList(SString('c', 3000) + "=1;2", ";", '=', '\\', "%d", 1); }},
        {"as a list", [](Map& m) { (void)m.GetAsList('=', ';', '\\'); }},
    };
    for (const auto& row : rows) {
        RefuseEach(row.name, LongPairs<Map>, row.run, [](Map& map) {
            EXPECT_TRUE(map.AssertValid());
            ASSERT_EQ(map.GetCount(), 2);
            for (const char letter : {'a', 'b'}) {
                const SString* const value = map.Retrieve(SString(letter, 3000));
                ASSERT_NE(value, nullptr);
                ExpectText(*value, std::string(4000, letter));
            }
        });
    }
}

TEST(StringMemory, AMapKeepsItsPairs) {
    KeepsItsPairs<SStringMap>();
    KeepsItsPairs<SStringMapNoCase>();
    KeepsItsPairs<SStringUnsortedMap>();
    KeepsItsPairs<SStringUnsortedMapNoCase>();
}

}  // namespace
