#include <brcore8/streams/binary_stream.h>

#include <brcore8/streams/input_buffer.h>

#include "streams/support.h"
#include "support/failing_allocator.h"
#include "support/page_scope.h"

#include <concepts>
#include <cstdint>
#include <utility>

namespace {

std::string Golden(const char* name) {
    std::string bytes = Get(std::string(BRCORE8_GOLDEN_FOLDER "/") + name);
    EXPECT_FALSE(bytes.empty()) << name;
    return bytes;
}

template <class... Values>
std::string Packed(const Values&... values) {
    Sink sink;
    SOutputBinaryStream out(sink);
    (out << ... << values);
    return std::move(sink.bytes);
}

// The length prefix of a string of that many bytes, the zero byte counted.
std::string Prefix(std::uint32_t length) {
    const unsigned char escape = 0xFF;
    if (length < 0xFF) return Packed(static_cast<unsigned char>(length));
    if (length < 0xFFFF) return Packed(escape, static_cast<unsigned short>(length));
    return Packed(escape, escape, escape, length);
}

// A source that cannot say how much there is.
class Pipe : public Source {
public:
    using Source::Source;
    unsigned long Available() override { return 0; }
};

// ---- Values -------------------------------------------------------------------------------------

TEST(BinaryStream, WritesTheGoldenValuesAndReadsThem) {
    const std::string golden = Golden("values.bin");
    EXPECT_EQ(Packed(static_cast<signed char>(-2), static_cast<unsigned char>(0xFE), short{-2},
                     static_cast<unsigned short>(0xBEEF), -2, 0xDEADBEEFu,
                     std::int32_t{-0x7FFFFFFF - 1}, 0x01020304u),
              golden);
    // The second source gives a byte at a time.
    for (const unsigned long portion : {100ul, 1ul}) {
        Source source(golden, portion);
        SInputBinaryStream in(source);
        signed char byte = 0;
        unsigned char unsignedByte = 0;
        short two = 0;
        unsigned short unsignedTwo = 0;
        int four = 0;
        int least = 0;
        unsigned int unsignedFour = 0;
        char c[4] = {};
        in >> byte >> unsignedByte >> two >> unsignedTwo >> four >> unsignedFour >> least;
        in >> c[0] >> c[1] >> c[2] >> c[3];
        EXPECT_EQ(byte, -2);
        EXPECT_EQ(unsignedByte, 0xFE);
        EXPECT_EQ(two, -2);
        EXPECT_EQ(unsignedTwo, 0xBEEF);
        EXPECT_EQ(four, -2);
        EXPECT_EQ(unsignedFour, 0xDEADBEEFu);
        EXPECT_EQ(least, -0x7FFFFFFF - 1);
        EXPECT_EQ(std::string_view(c, 4), "\4\3\2\1");
        EXPECT_EQ(Thrown([&] { in >> four; }), "SEEOFException: Unexpected end of file");
        EXPECT_EQ(four, -2);
    }
}

template <class T>
concept Writable = requires(SOutputBinaryStream& out, T value) {
    out << value;
};
// Their sizes differ between systems, or their bytes say nothing.
static_assert(!Writable<long> && !Writable<unsigned long> && !Writable<bool> && !Writable<wchar_t>);
static_assert(!Writable<double> && !Writable<int*> && Writable<const char*>);

// ---- Strings ------------------------------------------------------------------------------------

const struct {
    const char* name;
    const char* file;
    int page;
    std::vector<std::string> texts;
} goldenStrings[] = {
    {"short lengths, 254 bytes and 255",
     "strings.bin",
     1252,
     {"", "text", "caf\xE9 \x80", std::string(253, 'a'), std::string(254, 'b'),
      std::string(255, 'c')}},
    {"65,534 bytes and 65,535",
     "long_strings.bin",
     1252,
     {std::string(21844, '\x80') + "ab", std::string(65533, 'd'), std::string(65534, 'e')}},
    {"a double-byte page", "japanese.bin", 932, {"\x93\xFA\x96\x7B", "\xB1\x83\x5Cx"}},
};

TEST(BinaryStream, WritesTheGoldenStringsAndReadsThem) {
    for (const auto& row : goldenStrings) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const std::string golden = Golden(row.file);
        Sink sink;
        SOutputBinaryStream out(sink);
        Source source(golden, 1000);
        SInputBinaryStream in(source);
        for (const std::string& text : row.texts) {
            out << SString(std::string_view(text));
            SString read = "old";
            in >> read;
            EXPECT_TRUE(read.View() == text) << text.size();
            EXPECT_TRUE(read.AssertValid());
        }
        EXPECT_EQ(in.Available(), 0u);
        EXPECT_TRUE(sink.bytes == golden);
    }
}

TEST(BinaryStream, BringsBackTextOfAnyLength) {
    const std::size_t trusted = SInputBinaryStream::TrustedLength;
    for (const std::size_t bytes : {trusted - 1, trusted, 2 * trusted}) {
        const std::string text(bytes, 'x');
        const std::string packed = Packed(SString(std::string_view(text)));
        ASSERT_EQ(packed.substr(0, 7), Prefix(static_cast<std::uint32_t>(bytes + 1)));
        Source source(packed, 0x12345);
        SString read;
        SInputBinaryStream(source) >> read;
        EXPECT_TRUE(read.View() == text) << bytes;
    }
}

TEST(BinaryStream, ReadsWhatOthersMayWrite) {
    const struct {
        const char* name;
        std::string input;
        std::string text;
    } rows[] = {
        {"length 0", "\0"s, ""},
        {"a long form of a short length", "\xFF\3\0ab\0"s, "ab"},
        {"no zero byte", "\2ab", "ab"},
        {"a zero byte inside", "\6ab\0cd\0"s, "ab"},
        {"three bytes for U+0401 to U+07FF", "\4\xE0\x90\x81\0"s, "?"},
        {"U+00E9", "\3\xC3\xA9\0"s, "\xE9"},
        {"broken sequences", "\5a\xFF\xC3z\0"s, "a??z"},
        {"a character of four bytes", "\5\xF0\x9F\x98\x80\0"s, "??"},
    };
    const PageScope page(1252);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.input);
        SString read = "old";
        SInputBinaryStream(source) >> read;
        EXPECT_EQ(read.View(), row.text);
        EXPECT_EQ(source.Available(), 0u);
    }
    Sink sink;
    SOutputBinaryStream out(sink);
    out.WriteUtf8("\xE6\x97\xA5");
    out.WriteUtf8("a\0b"sv);
    EXPECT_EQ(sink.bytes, "\4\xE6\x97\xA5\0\2a\0"s) << "what the page lacks stays";
    Source source(sink.bytes);
    SInputBinaryStream in(source);
    EXPECT_EQ(in.ReadUtf8(), "\xE6\x97\xA5");
    EXPECT_EQ(in.ReadUtf8(), "a");
    EXPECT_EQ(Packed(SString("ab\0cd"sv)), "\3ab\0"s) << "text ends at its first zero byte";
}

std::size_t greatestAllocation = 0;

bool RecordAllocation(std::size_t size) {
    greatestAllocation = std::max(greatestAllocation, size);
    return true;
}

TEST(BinaryStream, BelievesNoLengthAndNoCount) {
    const std::string end = "SEEOFException: Unexpected end of file";
    const std::string invalid = "SEIOException: Invalid string in binary stream";
    enum Kind { Text, Table, Map };
    const std::string three = Packed(SString("a"), SString("b"), SString("c"));
    const struct {
        const char* name;
        std::string input;
        std::string thrown;
        Kind kind;
    } rows[] = {
        {"nothing", "", end, Text},
        {"half a length", "\xFF\1", end, Text},
        {"half a long length", "\xFF\xFF\xFF\1\1\1", end, Text},
        {"a text cut", "\5abc", end, Text},
        {"300000 hex", Prefix(0x300000) + "abc", end, Text},
        {"300001 hex", Prefix(0x300001) + "abc", invalid, Text},
        {"400040 hex", Prefix(0x400040) + "abc", invalid, Text},
        {"7FFFFFFF hex", Prefix(0x7FFFFFFF) + "abc", invalid, Text},
        {"80000000 hex", Prefix(0x80000000) + "abc", invalid, Text},
        {"FFFFFFFF hex", Prefix(0xFFFFFFFF) + "abc", invalid, Text},
        {"a million strings, three there", Packed(1000000) + three, end, Table},
        {"all the strings that a count can tell", Packed(-1) + three, end, Table},
        {"a string of a table", Packed(2) + three.substr(0, 3) + Prefix(0x80000000), invalid,
         Table},
        {"half a count", "\1\0"s, end, Table},
        {"two million texts of a map", Packed(1000000) + three, end, Map},
        {"all the pairs that a count can tell", Packed(-1) + three + three, end, Map},
        {"a value of a map", Packed(2) + three + Prefix(0x80000000), invalid, Map},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.input);
        SInputBinaryStream in(source);
        SString text = "old";
        SStringTable table;
        table.Add("old");
        SStringMap map;
        map.Add("old", "");
        greatestAllocation = 0;
        const brcore8::AllocationFilter old = brcore8::SetAllocationFilter(RecordAllocation);
        const std::string thrown = Thrown([&] {
            if (row.kind == Text) in >> text;
            if (row.kind == Table) in >> table;
            if (row.kind == Map) in >> map;
        });
        brcore8::SetAllocationFilter(old);
        EXPECT_EQ(thrown, row.thrown);
        EXPECT_EQ(text.IsEmpty(), row.kind == Text);
        EXPECT_EQ(table.IsEmpty(), row.kind == Table);
        EXPECT_EQ(map.IsEmpty(), row.kind == Map);
        EXPECT_LE(greatestAllocation, 0x11000u);
    }
    // A pipe does not say how much there is, so that it cannot vouch for a long text.
    Pipe pipe(Packed(SString('x', SInputBinaryStream::TrustedLength)));
    SString text;
    EXPECT_EQ(Thrown([&] { SInputBinaryStream(pipe) >> text; }), invalid);
}

// ---- Tables -------------------------------------------------------------------------------------

TEST(BinaryStream, WritesTheGoldenTableAndReadsIt) {
    const PageScope page(1252);
    SStringTable table;
    for (const char* text : {"left", "", "na\xEFve"})
        table.Add(text);
    const std::string golden = Golden("table.bin");
    EXPECT_EQ(Packed(table), golden);
    EXPECT_EQ(Packed(SStringTable()), "\0\0\0\0"s);
    Source source(golden + "\0\0\0\0"s);
    SInputBinaryStream in(source);
    SStringTable read;
    read.Add("old");
    in >> read;
    EXPECT_TRUE(read == table);
    in >> read;
    EXPECT_EQ(read.GetCount(), 0);
}

TEST(BinaryStream, IsLinearInTheNumberOfStrings) {
    SStringTable table(1000000, 1000000);
    Source source(Packed(table), 0xFFFFFF);
    SStringTable read;
    SInputBinaryStream(source) >> read;
    EXPECT_EQ(read.GetCount(), 1000000);
}

// ---- Maps ---------------------------------------------------------------------------------------

template <class Map>
void CheckGoldenMap(const char* file) {
    SCOPED_TRACE(file);
    Map map;
    map.Add("width", "");
    map.Add("Height", "12 \x80");
    map.Add("\xE9tage", SString('z', 300));
    map.Remove("width");
    map.Add("width", "7");
    const std::string golden = Golden(file);
    EXPECT_EQ(Packed(map), golden);
    Source source(golden + Packed(3, SString("a"), "1", "A", "2", "a", "3"));
    SInputBinaryStream in(source);
    Map read;
    read.Add("old", "");
    in >> read;
    EXPECT_TRUE(read == map);
    EXPECT_TRUE(read.AssertValid());
    in >> read;
    EXPECT_STREQ(*read.Retrieve("a"), "3") << "the last of equal keys stays";
    EXPECT_STREQ(*read.Retrieve("A"), read.GetCount() == 2 ? "2" : "3");
}

TEST(BinaryStream, WritesTheGoldenMapsAndReadsThem) {
    const PageScope page(1252);
    CheckGoldenMap<SStringMap>("map.bin");
    CheckGoldenMap<SStringMapNoCase>("map_no_case.bin");
    CheckGoldenMap<SStringUnsortedMap>("unsorted_map.bin");
    CheckGoldenMap<SStringUnsortedMapNoCase>("unsorted_map.bin");
}

// ---- Faults -------------------------------------------------------------------------------------

TEST(BinaryStream, SurvivesEveryRefusedAllocation) {
    SStringTable table;
    for (const std::size_t bytes : {3u, 300u, 70000u})
        table.Add(SString('y', static_cast<int>(bytes)));
    const std::string packed = Packed(table);
    int nth = 1;
    for (bool triggered = true; triggered; ++nth) {
        Sink sink;
        SOutputBinaryStream out(sink);
        Source source(packed);
        SInputBinaryStream in(source);
        SStringTable read;
        read.Add("old");
        FailNthAllocation fail(nth);
        const std::string wrote = Thrown([&] { out << table; });
        const std::string thrown = Thrown([&] { in >> read; });
        triggered = fail.Triggered();
        // Strings ask a second time, after their pools were tidied.
        EXPECT_TRUE(wrote.empty() || wrote == "SEOutOfMemory");
        EXPECT_TRUE(thrown.empty() || thrown == "SEOutOfMemory");
        EXPECT_TRUE(sink.bytes == packed.substr(0, sink.bytes.size()));
        EXPECT_EQ(sink.bytes.size() == packed.size(), wrote.empty());
        EXPECT_EQ(read.GetCount(), thrown.empty() ? 3 : 0);
    }
    EXPECT_GT(nth, 5);
}

TEST(BinaryStream, LeavesNoHalfOfAMapWhenMemoryIsRefused) {
    const std::string packed = Packed(3, SString("a"), "1", "b", SString('y', 3000), "c", "3");
    bool triggered = true;
    for (int nth = 1; triggered; ++nth) {
        Source source(packed);
        SInputBinaryStream in(source);
        SStringMap map;
        FailNthAllocation fail(nth);
        const std::string thrown = Thrown([&] { in >> map; });
        triggered = fail.Triggered();
        EXPECT_EQ(map.GetCount(), thrown.empty() ? 3 : 0) << thrown;
    }
}

TEST(BinaryStream, PassesOnEveryFailureOfTheStreams) {
    SStringTable table;
    table.Add("short");
    table.Add(SString('y', 70000));
    const std::string packed = Packed(table);
    int reads = 1;
    for (std::string thrown = "?"; !thrown.empty(); ++reads) {
        Source source(packed, 0xFFFFFF, reads);
        SStringTable read;
        read.Add("old");
        thrown = Thrown([&] { SInputBinaryStream(source) >> read; });
        EXPECT_EQ(thrown, thrown.empty() ? "" : "SEIOException: Source failed");
        EXPECT_EQ(read.GetCount(), thrown.empty() ? 2 : 0);
    }
    EXPECT_GT(reads, 6);
    for (const auto failure : {Sink::Failure::Throw, Sink::Failure::Short}) {
        int writes = 1;
        for (std::string thrown = "?"; !thrown.empty(); ++writes) {
            Sink sink(writes, failure);
            thrown = Thrown([&] { SOutputBinaryStream(sink) << table; });
            if (thrown.empty()) break;
            EXPECT_EQ(thrown, failure == Sink::Failure::Throw ? "SEIOException: Sink failed"
                                                              : "SEIOException: Write failed");
        }
        EXPECT_GT(writes, 5);
    }
}

TEST(BinaryStream, OwnsWhatItIsToldToOwn) {
    Source::destroyed = Sink::destroyed = 0;
    for (const bool own : {false, true}) {
        Source source("");
        Sink sink;
        SInputBinaryStream(own ? new Source("") : &source, own);
        SOutputBinaryStream(own ? new Sink : &sink, own);
        EXPECT_EQ(Source::destroyed, own ? 2 : 0);
        EXPECT_EQ(Sink::destroyed, own ? 2 : 0);
    }
}

}  // namespace
