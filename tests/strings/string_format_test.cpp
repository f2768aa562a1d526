#include <brcore8/strings/string.h>

#include <brcore8/core/exception.h>
#include <brcore8/platform/resources.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <random>

#include "strings/string_fixture.h"

namespace {

class StringFormat : public PagedTest {};
BRCORE8_BOTH_PAGES(StringFormat);

constexpr unsigned short kWide[] = {'w', 0x03B2, 0x65E5, '!', 0};

// Not checked by the compiler: these formats are the platform's, or wrong on purpose.
SString Formatted(const char* format, ...) {
    SString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    return text;
}

// Both formatters over the same arguments.
template <typename... Arguments>
void ExpectAsPlatform(const char* format, Arguments... arguments) {
    std::string expected(static_cast<std::size_t>(std::snprintf(nullptr, 0, format, arguments...)),
                         0);
    std::snprintf(expected.data(), expected.size() + 1, format, arguments...);
    ExpectText(Formatted(format, arguments...), expected);
}

TEST_P(StringFormat, NumbersAsThePlatformWritesThem) {
    for (const char* format :
         {"%d",  "%i",   "%u",  "%x",   "%X",      "%o",    "%5d|",    "%-5d|", "%05d",
          "%+d", "% d",  "%#x", "%#o",  "%.3d",    "%8.3d", "%-8.3d|", "%.0d",  "%.d",
          "%hd", "%hhd", "%hu", "%hhx", "%+-07d|", "%600d", "%.600d"}) {
        for (const int value : {0, 1, -1, 42, -70000, INT_MAX, INT_MIN}) {
            SCOPED_TRACE(std::string(format) + " of " + std::to_string(value));
            ExpectAsPlatform(format, value);
        }
    }
    for (const char* format : {"%f", "%e", "%g", "%G", "%E", "%a", "%F", "%.0f", "%#.0f", "%10.2f|",
                               "%-10.2f|", "%+.3e", "%010.3f", "%.40f", "%700.3f", "%.700g"}) {
        for (const double value : {0.0, -0.0, 1.5, -2.25e-7, 1e308, HUGE_VAL}) {
            SCOPED_TRACE(std::string(format) + " of " + std::to_string(value));
            ExpectAsPlatform(format, value);
        }
    }
    ExpectAsPlatform("%ld %lu", LONG_MIN, ULONG_MAX);
    ExpectAsPlatform("%lld %llx", LLONG_MIN, ULLONG_MAX);
    ExpectAsPlatform("%zu %td %jd", SIZE_MAX, PTRDIFF_MIN, INTMAX_MAX);
    ExpectAsPlatform("%Lf %.3Le", 1.25L, -1e30L);
    ExpectAsPlatform("%*d|%-*d|%.*d", 6, 1, 7, 2, 3, 3);
    ExpectAsPlatform("%*d|%.*f|", -6, 1, -1, 1.5);
    ExpectAsPlatform("%p", static_cast<const void*>(kWide));
    ExpectAsPlatform("%s|%5s|%-5s|%.2s|%5.1s|%.0s|%c|%3c|%-3c|%%", "abc", "ab", "ab", "abc", "abc",
                     "abc", 'x', 'y', 'z');
}

// Ties of the sixth digit, numbers that a double has exactly or not at all, both ends of the range
// that is written without an exponent, and anything between.
TEST_P(StringFormat, GeneralNumbersAsThePlatformWritesThem) {
    for (const double value : {3.25, 0.1, 1.0, 100000.0, 100000.5, 100001.5, 123456.5, 0.5000005,
                               999999.0, 999999.4, 999999.5, 9.9999949, 9.999995, 9.9999951, 1e-4,
                               9.999994e-5, 9.9999999e-5, 0.000123456789, 1e-300, 1e6})
        for (const double signedValue : {value, -value})
            ExpectAsPlatform("%g", signedValue);
    std::mt19937 random(20240229);
    for (int i = 0; i < 20000; ++i) {
        SCOPED_TRACE(i);
        const double whole = static_cast<double>(random() % 10000000);
        ExpectAsPlatform("%g", i % 2 ? std::ldexp(whole, -static_cast<int>(random() % 40))
                                     : whole / std::pow(10.0, random() % 12));
    }
}

TEST_P(StringFormat, TextAndWideText) {
    const bool two = IsDoubleByte();
    const SString wide = two ? "w\x83\xC0\x93\xFA!" : "w\xDF?!";
    const char* null = nullptr;
    const struct {
        const char* name;
        SString made;
        SString expected;
    } rows[] = {
        {"l is wide", Formatted("%ls", kWide), wide},
        {"S is wide", Formatted("%S", kWide), wide},
        {"h is narrow", Formatted("%hs|%hS", "a", "b"), "a|b"},
        {"wide in a field", Formatted("%8ls|%-8ls|", kWide, kWide),
         two ? "  w\x83\xC0\x93\xFA!|w\x83\xC0\x93\xFA!  |" : "    w\xDF?!|w\xDF?!    |"},
        {"wide, cut to whole characters", Formatted("%.2ls", kWide), two ? "w" : "w\xDF"},
        {"wide characters", Formatted("%lc%C", 0x65E5, 0x03B2), two ? "\x93\xFA\x83\xC0" : "?\xDF"},
        {"narrow characters", Formatted("%hc%hC%c", 'a', 'b', 'c'), "abc"},
        {"null", Formatted("%s|%ls|%9s|%.3s", null, null, null, null),
         "(null)|(null)|   (null)|(nu"},
        {"far and near", Formatted("%Ns%Nd", "a", 1), "a1"},
        {"sizes by number", Formatted("%I64d %I32d %Iu", 1LL << 40, -5, std::size_t{7}),
         "1099511627776 -5 7"},
        {"n takes its argument", Formatted("a%nb%hn%s", null, null, "c"), "abc"},
        {"negative precision is none", Formatted("%.*s", -1, "abc"), "abc"},
        {"percent", Formatted("100%%"), "100%"},
        {"percent in a field", Formatted("%5%"), "%"},
        {"a lone percent at the end", Formatted("50%"), "50%"},
        {"cut short", Formatted("%-5.3l"), "%-5.3l"},
        {"unknown letter", Formatted("%y %d", 5), "%y 5"},
        {"positions", Formatted("%1$s"), "%1$s"},
        {"a zero character ends the text", Formatted("a%cb", 0), "a"},
        {"double-byte format", Formatted("\x93\xFA%d", 1),
         "\x93\xFA"
         "1"},
        {"empty", Formatted("%s", ""), ""},
        {"null format", Formatted(nullptr), ""},
        {"precision without terminator", Formatted("%.3s", std::string(3, 'x').data()), "xxx"},
        {"huge precision of text", Formatted("%.2147483647s", "ab"), "ab"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ExpectText(row.made, row.expected);
    }
}

TEST_P(StringFormat, LongAndSelfReferring) {
    const std::string large(3000, 'L');
    SString text;
    text.Format("%s%s%d", large.c_str(), large.c_str(), 7);
    ExpectText(text, large + large + "7");
    SString own = "ab";
    const SString other = own;
    for (int i = 0; i < 10; ++i)
        own.Format("%s%s", own.View().data(), own.View().data());
    EXPECT_EQ(own.LengthByte(), 2048);
    ExpectText(other, "ab");
    own = "[%s]";
    own.Format("%s", SString(own).View().data());
    ExpectText(own, "[%s]");
    own.LockBuffer();
    own.Format("%d", 5);
    ExpectText(own, "5");
    own.Format("%s", "");
    EXPECT_TRUE(own.IsEmpty());
    EXPECT_THROW(Formatted("%*s", INT_MIN, ""), SEOutOfMemory);
    EXPECT_THROW(Formatted("%*d", INT_MAX, 1), SEOutOfMemory);
    EXPECT_THROW(Formatted("%99999999999s", "x"), SEOutOfMemory);
    EXPECT_THROW(Formatted("%.2147483647d", 1), SEOutOfMemory);
}

// The library's own: 115 is "brgrid8.dll". This program's: texts as long as their identifiers say.
TEST_P(StringFormat, Resources) {
    const char* id = reinterpret_cast<const char*>(std::uintptr_t{115});
    ExpectText(SString(id), "brgrid8.dll");
    ExpectText(SString(static_cast<HINSTANCE>(nullptr), 115), "brgrid8.dll");
    SString text = "old";
    EXPECT_EQ(text.LoadString(115), 1);
    text.Format(115u);
    ExpectText(text, "brgrid8.dll");
    for (const int length : {300, 509, 510, 511, 512, 513, 514, 515, 1000}) {
        EXPECT_EQ(text.LoadString(static_cast<unsigned>(length), SThisModule()), 1);
        EXPECT_EQ(text.Length(), length);
        EXPECT_TRUE(text.AssertValid());
    }
    EXPECT_EQ(text.LoadString(0x1234), 0);
    ExpectText(text, "");
    ExpectText(SString(reinterpret_cast<const char*>(std::uintptr_t{0x1234})), "");
}

}  // namespace
