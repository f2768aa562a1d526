#include <brcore8/streams/encodings.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include "streams/support.h"
#include "support/failing_allocator.h"
#include "support/page_scope.h"

#include <iterator>
#include <random>
#include <vector>

namespace {

using Format = SAbstractIO::SMultiFormatSupport::Format;
using Lines = std::vector<std::string>;
constexpr Format Ansi = Format::FormatAnsi;
constexpr Format Oem = Format::FormatOem;
constexpr Format Utf16 = Format::FormatUtf16;
constexpr Format Utf8 = Format::FormatUtf8;
constexpr char kBadUtf[] = "SEUTFException: Unexpected UTF encoding!";
constexpr char kHalfUnit[] = "SEEOFException: Unexpected end of file";

class EncodingTest : public testing::Test {
    PageScope page_{1252};
};

// ---- Detection --------------------------------------------------------------------------------

TEST_F(EncodingTest, DetectsTheFormat) {
    const struct {
        const char* name;
        std::string bytes;
        Format given, found;
        std::string rest;
    } rows[] = {
        {"UTF-8 mark",
         "\xEF\xBB\xBF"s
         "A",
         Ansi, Utf8, "A"},
        {"UTF-16 mark loses a byte", "\xFE\xFF\x41\0\x42\0"s, Ansi, Utf16, "\0\x42\0"s},
        {"low-byte-first mark is text", "\xFF\xFE\x41\0"s, Ansi, Ansi, "\xFF\xFE\x41\0"s},
        {"plain", "text", Ansi, Ansi, "text"},
        {"exactly three", "abc", Oem, Oem, "abc"},
        {"zero byte first", "\0abc"s, Ansi, Ansi, "\0abc"s},
        {"two bytes are lost", "ab", Utf8, Utf8, ""},
        {"one byte is lost", "a", Ansi, Ansi, ""},
        {"nothing", "", Utf16, Utf16, ""},
        {"default stays", "abcd", Utf8, Utf8, "abcd"},
        {"half a mark",
         "\xEF\xBB"s
         "AB",
         Ansi, Ansi,
         "\xEF\xBB"s
         "AB"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.bytes);
        SInputMultiFormat in(source, 0, row.given);
        EXPECT_EQ(in.GetFormat(), row.found);
        EXPECT_EQ(SReadAll(in), row.rest);
        SInputMultiFormat owner(new Source(row.bytes), true, 7, row.given);
        EXPECT_EQ(owner.GetFormat(), row.found);
        EXPECT_EQ(SReadAll(owner), row.rest);
        SInputMultiFormat known(new Source(row.bytes), true, 0, Utf8, SKnownFormat());
        EXPECT_EQ(known.GetFormat(), Utf8);
        EXPECT_EQ(SReadAll(known), row.bytes) << "known: nothing is consumed";
    }
}

// ---- SInputForcedANSIStream -------------------------------------------------------------------

std::string Convert(const std::string& bytes, Format format) {
    Source source(bytes);
    SInputForcedANSIStream in(source, 3, format, SKnownFormat());
    std::string all = SReadAll(in);
    // Single bytes give the same, as far as they can tell 0xFF from the end.
    Source again(bytes);
    SInputForcedANSIStream single(again, 3, format, SKnownFormat());
    for (const char byte : all.substr(0, all.find('\xFF')))
        EXPECT_EQ(single.Read(), byte);
    EXPECT_EQ(single.Read(), -1);
    return all;
}

// Text in UTF-16, low byte first.
std::string Units(std::u16string_view text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

TEST_F(EncodingTest, ForcesAnsiWithUniformLineEnds) {
    const struct {
        const char* name;
        Format format;
        std::string bytes, text;
    } rows[] = {
        {"CR CR LF", Ansi, "a\r\r\nb", "a\r\nb"},
        {"lone LF", Ansi, "a\nb", "a\r\nb"},
        {"LF CR", Ansi, "a\n\rb", "a\r\nb"},
        {"two LF", Ansi, "a\n\nb", "a\r\n\r\nb"},
        {"CR at the end", Ansi, "a\r", "a\r\n"},
        {"zero and high bytes", Ansi, "\0\x80\xFE\x1A"s, "\0\x80\xFE\x1A"s},
        {"0xFF in a block", Ansi,
         "a\xFF"s
         "b",
         "a\xFF"s
         "b"},
        {"OEM unconverted", Oem, "\x84\n", "\x84\r\n"},
        {"UTF-8", Utf8, "\xC3\xA4\xE2\x82\xAC\n", "\xE4\x80\r\n"},
        {"UTF-8 line separator", Utf8, "a\xE2\x80\xA8\n", "a\r\n\r\n"},
        {"UTF-8 CR CR LF", Utf8, "a\r\r\nb", "a\r\nb"},
        {"best fit and default", Utf8, "\xC4\x80\xE4\xB8\x8D", "A?"},
        {"UTF-16", Utf16, Units(u"\u00E4\r\r\nb\n\rc\u2028d"), "\xE4\r\nb\r\nc\r\nd"},
        {"a unit taken for CR", Utf16, Units(u"\n\u4E0Dx"), "\r\nx"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Convert(row.bytes, row.format), row.text);
    }
}

TEST_F(EncodingTest, ForcedAnsiGivesBothBytesOfACharacter) {
    const PageScope japanese(932);
    EXPECT_EQ(Convert("\xE3\x81\x82\xEF\xBD\xB1", Utf8), "\x82\xA0\xB1");
}

TEST_F(EncodingTest, ForcedAnsiExtendsTheSignAndSkipsWhatItGives) {
    Source source("\x80\xFF\n\nxyz");
    SInputForcedANSIStream in(source, 3);
    EXPECT_EQ(in.Read(), -128);
    EXPECT_EQ(in.Read(), -1) << "0xFF looks like the end";
    EXPECT_EQ(in.Read(), '\r');
    EXPECT_FALSE(in.IsEOF());
    EXPECT_EQ(in.Available(), 5u);
    EXPECT_EQ(in.Skip(3), 3u) << "LF, CR LF";
    EXPECT_EQ(SReadAll(in), "xyz");
    EXPECT_TRUE(in.IsEOF());
    EXPECT_EQ(in.Skip(1), 0u);

    Source units(Units(u"a\uFFFFb"));
    SInputForcedANSIStream wide(units, 3, Utf16, SKnownFormat());
    EXPECT_EQ(wide.Read(), 'a');
    EXPECT_EQ(wide.Read(), -1) << "U+FFFF looks like the end";
    EXPECT_EQ(wide.Read(), 'b');
}

TEST_F(EncodingTest, RefusesMalformedText) {
    const struct {
        const char* name;
        Format format;
        std::string bytes;
        const char* thrown;
        std::int32_t units[3];
    } rows[] = {
        {"no continuation", Utf8, "\xC3\x28", kBadUtf, {0xC3, 0x28, 0}},
        {"lone continuation", Utf8, "\x80", kBadUtf, {0x80, 0, 0}},
        {"highest of them", Utf8, "\xBF", kBadUtf, {0xBF, 0, 0}},
        {"four bytes", Utf8, "\xF0\x9F\x98\x80", kBadUtf, {0xF0, 0, 0}},
        {"cut after one", Utf8, "\xC3", kBadUtf, {0xC3, -1, 0}},
        {"cut after two", Utf8, "\xE2\x82", kBadUtf, {0xE2, 0x82, -1}},
        {"bad second of three", Utf8, "\xE2\xC2\x82", kBadUtf, {0xE2, 0xC2, 0}},
        {"a lead for a third", Utf8, "\xE2\x82\xE2", kBadUtf, {0xE2, 0x82, 0xE2}},
        {"a zero byte within", Utf8, "\xE2\0\x82"s, kBadUtf, {0xE2, 0, 0}},
        {"no byte of any text", Utf8, "\xFF", kBadUtf, {0xFF, 0, 0}},
        {"six bytes", Utf8, "\xFC\x84\x80\x80\x80\x80", kBadUtf, {0xFC, 0, 0}},
        {"bad third of three", Utf8, "\xE2\x82\x41", kBadUtf, {0xE2, 0x82, 0x41}},
        {"half a unit", Utf16, "a\0b"s, kHalfUnit, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Thrown([&] { Convert(row.bytes, row.format); }), row.thrown);
        Source source(row.bytes);
        SInputStringStream lines(source, 3, row.format, SKnownFormat());
        try {
            lines.ReadLn();
            ADD_FAILURE() << "read";
        } catch (const SEUTFException& error) {
            EXPECT_EQ(error.GetFirst(), row.units[0]);
            EXPECT_EQ(error.GetSecond(), row.units[1]);
            EXPECT_EQ(error.GetThird(), row.units[2]);
        } catch (const SEEOFException& error) {
            EXPECT_EQ(row.format, Utf16);
        }
    }
}

// A place is kept to the byte, however the text before it was read.
TEST_F(EncodingTest, ForcedAnsiComesBackToItsMark) {
    const std::string plain(200, 'x');
    const struct {
        const char* name;
        int page;
        Format format;
        std::string bytes;
        unsigned long before;  // bytes to read, as far as they come
        std::string after;
    } rows[] = {
        {"at the start", 1252, Utf8, "ab" + plain, 0, "ab" + plain},
        {"behind malformed text", 1252, Utf8, "ab\xC3(cd\n" + plain, 900, "cd\r\n" + plain},
        {"behind an end marker", 1252, Utf16, Units(u"a\uFFFF\u20ACc\n"), 900,
         "\x80"
         "c\r\n"},
        {"within a line end", 1252, Ansi, "a\nb" + plain, 2, "\nb" + plain},
        {"within a character", 932, Utf8, "\xE3\x81\x82z" + plain, 1, "\xA0z" + plain},
    };
    for (const auto& row : rows) {
        const PageScope page(row.page);
        for (const bool singly : {true, false}) {
            SCOPED_TRACE(std::string(row.name) + (singly ? ", singly" : ", in a block"));
            SInputBuffer source(row.bytes.data(), static_cast<int>(row.bytes.size()));
            SInputForcedANSIStream in(source, 3, row.format, SKnownFormat());
            try {
                char block[1000];
                if (!singly) in.Read(block, row.before);
                for (unsigned long i = 0; singly && i < row.before && in.Read() != -1;)
                    ++i;
            } catch (const SEUTFException&) {
            }
            in.Mark(0);
            EXPECT_EQ(SReadAll(in), row.after);
            in.Reset();
            EXPECT_EQ(in.Read(), row.after[0]);
            in.Mark(0);
            for (int round = 0; round < 2; ++round) {
                EXPECT_EQ(SReadAll(in), row.after.substr(1));
                in.Reset();
            }
        }
    }
}

TEST_F(EncodingTest, ForcedAnsiKeepsItsPlaceWhenAMarkIsRefused) {
    const std::string bytes = "ab\xC3(cd" + std::string(200, 'x');
    char block[1000];
    Source markless(bytes);
    SInputForcedANSIStream in(markless, 3, Utf8, SKnownFormat());
    EXPECT_EQ(Thrown([&] { in.Read(block, sizeof block); }), kBadUtf);
    EXPECT_EQ(Thrown([&] { in.Mark(0); }), "SENotImplemented");
    {
        FailNthAllocation fail(1);
        EXPECT_EQ(Thrown([&] { in.Mark(0); }), "SEOutOfMemory");
    }
    EXPECT_EQ(SReadAll(in), bytes.substr(4));
}

// ---- Lines ------------------------------------------------------------------------------------

Lines LinesOf(std::string_view text) {
    return Lines(STextLines(text).begin(), STextLines(text).end());
}

TEST_F(EncodingTest, CutsLines) {
    const struct {
        const char* name;
        Format format;
        std::string bytes;
        Lines lines;
    } rows[] = {
        {"nothing", Ansi, "", {}},
        {"no line end", Ansi, "a", {"a"}},
        {"a line end alone", Ansi, "\n", {""}},
        {"every kind", Ansi, "a\nb\n\rc\r\nd\re\r\r\r\nf", {"a", "b", "c", "d", "e", "f"}},
        {"two LF", Ansi, "a\n\nb", {"a", "", "b"}},
        {"LF CR LF", Ansi, "a\n\r\nb", {"a", "", "b"}},
        {"CR LF CR LF", Ansi, "a\r\n\r\nb", {"a", "", "b"}},
        {"CR LF LF", Ansi, "a\r\n\nb", {"a", "", "b"}},
        {"three bytes with their end", Ansi, "a\r\n", {"a"}},
        {"zero, 0x1A, 0xFF", Ansi, "\0\x1A\xFF\n\0"s, {"\0\x1A\xFF"s, "\0"s}},
        {"OEM", Oem, "\x84\nb", {"\x84", "b"}},
        {"UTF-8", Utf8, "\xC3\xA4\r\n\xE2\x82\xAC", {"\xE4", "\x80"}},
        {"line separator", Utf8, "a\xE2\x80\xA8\r\nb", {"a", "", "b"}},
        {"UTF-16", Utf16, Units(u"\u00E4\r\nb\n\rc\r\r\nd\u2028e"), {"\xE4", "b", "c", "d", "e"}},
        {"zero unit", Utf16, Units({u"a\0b", 3}), {"a\0b"s}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.bytes);
        SInputStringStream in(source, 3, row.format, SKnownFormat());
        Lines lines;
        while (!in.IsEOF())
            lines.emplace_back(in.ReadLn().View());
        EXPECT_EQ(lines, row.lines);
        EXPECT_STREQ(in.ReadLn(), "");
        if (row.format < Utf16) {
            EXPECT_EQ(LinesOf(row.bytes), row.lines);
        }
    }
}

TEST_F(EncodingTest, LongLinesAndManyLinesAreLinear) {
    constexpr int kLong = 30000000, kMany = 3000000;
    const std::string text(kLong, 'x');
    for (const Format format : {Ansi, Utf8, Utf16}) {
        SCOPED_TRACE(static_cast<int>(format));
        SInputBuffer source(text.data(), kLong);
        SInputStringStream in(source, 3, format, SKnownFormat());
        // Units of two x are no character of the page: a default character each.
        EXPECT_EQ(in.ReadLn().LengthByte(), format == Utf16 ? kLong / 2 : kLong);
        EXPECT_TRUE(in.IsEOF());
    }
    const std::string empty(kMany, '\n');
    SInputBuffer source(empty.data(), kMany);
    SInputStringStream in(source, 3, Ansi, SKnownFormat());
    int lines = 0;
    for (; !in.IsEOF(); ++lines)
        ASSERT_EQ(in.ReadLn().LengthByte(), 0);
    EXPECT_EQ(lines, kMany);
}

TEST(TextLines, KeepsEveryUnitAndPlace) {
    const std::u16string_view text = u"a\r\r\n\uFFFF\n\u4E0D\u2028\r\nz"sv;
    const std::u16string_view lines[] = {u"a", u"\uFFFF", u"\u4E0D", u"", u"z"};
    std::size_t count = 0;
    std::size_t place = 0;
    const SWideTextLines range(text);
    for (auto line = range.begin(); line != range.end(); ++line) {
        ASSERT_LT(count, std::size(lines));
        EXPECT_EQ(*line, lines[count++]);
        EXPECT_EQ(line.Offset(), place);
        place += (*line).size() + line.Terminator().size();
    }
    EXPECT_EQ(count, std::size(lines));
    EXPECT_EQ(place, text.size());
    static_assert(std::forward_iterator<SWideTextLines::iterator>);
    auto after = range.begin();
    const auto before = after++;
    EXPECT_EQ(*before, u"a");
    EXPECT_EQ(*after, u"\uFFFF");
}

// Random bytes: the reader and the cutter agree, and the pieces make up the whole.
TEST_F(EncodingTest, ReaderAndCutterAgree) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        std::string text(random() % 40, '\0');
        for (char& byte : text)
            byte = "\r\n\ra\n\0\xFF"[random() % 7];
        std::string whole;
        const STextLines range(text);
        for (auto line = range.begin(); line != range.end(); ++line) {
            whole.append(*line).append(line.Terminator());
        }
        ASSERT_EQ(whole, text);
        SInputBuffer source(text.data(), static_cast<int>(text.size()));
        SInputStringStream in(source, 3, Ansi, SKnownFormat());
        Lines lines;
        while (!in.IsEOF())
            lines.emplace_back(in.ReadLn().View());
        ASSERT_EQ(lines, LinesOf(text)) << testing::PrintToString(text);
    }
}

// ---- SOutputStringStream ----------------------------------------------------------------------

TEST_F(EncodingTest, WritesEveryFormat) {
    const struct {
        const char* name;
        int page;
        Format format;
        std::string text, bytes;
    } rows[] = {
        {"ANSI", 1252, Ansi, "\xE4\0\x80"s, "\xE4\0\x80"s},
        {"OEM", 1252, Oem, "\xE4\0\xA7"s, "\x84\0\x15"s},
        {"UTF-16", 1252, Utf16, "a\0\x80"s, "a\0\0\0\xAC\x20"s},
        {"UTF-8", 1252, Utf8, "a\0\xE4\x80"s, "a\0\xC3\xA4\xE2\x82\xAC"s},
        {"two bytes up to 0x7FF", 1251, Utf8, "\xC0\xFF", "\xD0\x90\xD1\x8F"},
        {"double-byte to UTF-16", 932, Utf16, "\x82\xA0\xB1", "\x42\x30\x71\xFF"},
        {"double-byte to UTF-8", 932, Utf8, "\x82\xA0\xB1", "\xE3\x81\x82\xEF\xBD\xB1"},
        {"nothing", 1252, Utf16, "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        Sink sink;
        SOutputStringStream out(sink, row.format);
        out.Write(SString(std::string_view(row.text)));
        EXPECT_EQ(sink.bytes, row.bytes);
        EXPECT_EQ(sink.writes, 1) << "one block";
    }
}

TEST_F(EncodingTest, EndsLinesInTheFormat) {
    Sink sink;
    SOutputStringStream out(sink);
    out.WriteLn("a");
    out.SetFormat(Utf16);
    out.WriteLn();
    out.SetFormat(Utf8);
    out.WriteLn("\xE4");
    out.Write('!');
    EXPECT_EQ(sink.bytes, "a\r\n\x0D\0\x0A\0\xC3\xA4\r\n!"s);
    Sink::destroyed = 0;
    { SOutputStringStream owner(new Sink, true, Utf8); }
    EXPECT_EQ(Sink::destroyed, 1);
}

TEST_F(EncodingTest, NoticesAShortWrite) {
    Sink sink(1, Sink::Failure::Short);
    SOutputStringStream out(sink, Utf16);
    EXPECT_EQ(Thrown([&] { out.Write("text"); }), "SEIOException: Write failed");
    FailNthAllocation fail(1);
    EXPECT_EQ(Thrown([] {
                  Source source("x");
                  SInputStringStream in(source, 3);
              }),
              "SEOutOfMemory");
}

// Every character of a page that has one survives the way out and back.
TEST_F(EncodingTest, ComesBackAsItWas) {
    std::string text;
    for (int c = 1; c < 256; ++c) {
        if (c != '\r' && c != '\n') text += static_cast<char>(c);
    }
    for (const Format format : {Ansi, Utf16, Utf8}) {
        Sink sink;
        SOutputStringStream(sink, format).WriteLn(SString(std::string_view(text)));
        Source source(sink.bytes);
        SInputStringStream in(source, 3, format, SKnownFormat());
        EXPECT_EQ(in.ReadLn().View(), text) << "format " << format;
        EXPECT_TRUE(in.IsEOF());
    }
}

// Random texts of every format, long enough for several blocks, with every kind of line end.
TEST_F(EncodingTest, ForcedAnsiBlocksHoldWhatSingleBytesAre) {
    const char16_t units[] = u"abcdefghij\r\n\u2028\u00e9\u20ac\u0416\u00ad";
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::u16string wide;
        const std::size_t plain = seed % 3 * 40;
        for (int i = 0; i < 3000; ++i) {
            wide += units[random() % (std::size(units) - 1)];
            wide.append(random() % (plain + 1), u'x');
        }
        std::string bytes;
        const auto format = static_cast<SInputMultiFormat::Format>(seed % 4);
        if (format == SInputMultiFormat::FormatUtf8)
            bytes = SUtf8FromUtf16(wide);
        else if (format == SInputMultiFormat::FormatUtf16)
            for (const char16_t unit : wide)
                bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        else
            bytes = STextFromUtf16(wide);

        SInputBuffer source(bytes.data(), static_cast<int>(bytes.size()));
        SInputForcedANSIStream singly(source, 0, format, SKnownFormat());
        std::string expected;
        for (int byte; (byte = singly.Read()) != -1;)
            expected += static_cast<char>(byte);

        SInputBuffer again(bytes.data(), static_cast<int>(bytes.size()));
        SInputForcedANSIStream blocks(again, 0, format, SKnownFormat());
        std::string got;
        std::vector<char> block(70000);
        for (;;) {
            const unsigned long count = 1 + random() % (random() % 2 ? 100 : 70000);
            const unsigned long read = blocks.Read(block.data(), count);
            got.append(block.data(), read);
            if (read < count) break;
        }
        ASSERT_TRUE(got == expected);
        EXPECT_TRUE(blocks.IsEOF());
    }
}

TEST_F(EncodingTest, WritesUtf8OfTextsOfEveryLength) {
    for (std::size_t length = 0; length < 100; ++length) {
        std::string text;
        for (std::size_t i = 0; i < length; ++i)
            text += i % 7 == length % 7 ? '\x80' : i % 11 == 3 ? '\xE9' : 'a';
        Sink out;
        SOutputStringStream stream(out, SOutputStringStream::FormatUtf8);
        stream.Write(SString(std::string_view(text)));
        EXPECT_EQ(out.bytes, SUtf8FromUtf16(SUtf16FromText(text))) << length;
    }
}

}  // namespace
