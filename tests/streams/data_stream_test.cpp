#include <brcore8/streams/data_stream.h>

#include "streams/support.h"
#include "support/failing_allocator.h"
#include "support/page_scope.h"

#include <cstdint>
#include <limits>

namespace {

constexpr const char* kEnd = "SEEOFException: Unexpected end of file";

TEST(DataStream, WritesTheGoldenBytesAndReadsThem) {
    const PageScope page(1252);
    const std::string golden = Get(BRCORE8_GOLDEN_FOLDER "/data.bin");
    const SString text("caf\xE9 \x80\0x"sv);
    Sink sink;
    SDataOutputStream out(sink);
    out.WriteInt(1);
    out.WriteInt(-2);
    out.WriteLong(std::numeric_limits<std::int32_t>::min());
    out.WriteLong(0x123456789);
    out.WriteUTF("");
    out.WriteUTF(text);
    out.WriteChars("a\x80");
    out.WriteUnicode("b\x80z");
    EXPECT_EQ(sink.bytes, golden);

    Source source(golden, 3);
    SDataInputStream in(source);
    EXPECT_EQ(in.ReadInt(), 1);
    EXPECT_EQ(in.ReadInt(), -2);
    EXPECT_EQ(in.ReadLong(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(in.ReadLong(), 0x123456789);
    EXPECT_EQ(in.ReadUTF().View(), "");
    EXPECT_EQ(in.ReadUTF().View(), text.View());
    EXPECT_EQ(in.ReadInt(), 0x006120AC);
    EXPECT_EQ(in.ReadUnicode(), "b\x80z");
    EXPECT_EQ(in.Available(), 0u);
}

TEST(DataStream, ExtendsTheLowWordOfALongByItsSign) {
    Source source("\0\0\0\1\x80\0\0\0"s);
    EXPECT_EQ(SDataInputStream(source).ReadLong(), std::numeric_limits<std::int32_t>::min());
}

TEST(DataStream, ReadsTextOfADoubleBytePage) {
    const PageScope page(932);
    const SString text = "\x93\xFA\x83\x5C\xB1";
    Sink sink;
    SDataOutputStream out(sink);
    out.WriteUTF(text);
    out.WriteUnicode(text);
    EXPECT_EQ(sink.bytes,
              "\0\x09\xE6\x97\xA5\xE3\x82\xBD\xEF\xBD\xB1\0\3\x65\xE5\x30\xBD\xFF\x71"s);
    Source source(sink.bytes);
    SDataInputStream in(source);
    EXPECT_EQ(in.ReadUTF(), text);
    EXPECT_EQ(in.ReadUnicode(), text);
}

TEST(DataStream, RefusesWhatIsNoText) {
    const std::string bad = "SEUTFException: Unexpected UTF encoding!";
    const struct {
        const char* name;
        bool unicode;
        std::string input;
        std::string thrown;
        std::string text;
    } rows[] = {
        {"a byte too many of a pair of two", false, "\0\3\xC3\xA9x"s, "", "\xE9x"},
        {"longer than needed", false, "\0\5\xC1\x81\xE0\x81\x82"s, "", "AB"},
        {"a zero of two bytes", false, "\0\2\xC0\x80"s, "", "\0"s},
        {"a character that the page lacks", false, "\0\3\xE6\x97\xA5"s, "", "?"},
        {"a second byte alone", false, "\0\1\x80"s, bad, ""},
        {"a lead of four", false, "\0\4\xF0\x9F\x98\x80"s, bad, ""},
        {"no second byte", false, "\0\2\xC3z"s, bad, ""},
        {"no third byte", false, "\0\3\xE6\x97z"s, bad, ""},
        {"cut by the length after one byte", false, "\0\1\xC3\xA9"s, bad, ""},
        {"cut by the length after two", false, "\0\2\xE6\x97\xA5"s, bad, ""},
        {"fewer bytes than told", false, "\xFF\xFFxyz", kEnd, ""},
        {"half a length", false, "\0"s, kEnd, ""},
        {"fewer units than told", true, "\0\2\0z"s, kEnd, ""},
        {"half a unit", true, "\0\2\0z\0"s, kEnd, ""},
        {"half a count", true, "\0"s, kEnd, ""},
        {"no units", true, "\0\0"s, "", ""},
    };
    const PageScope page(1252);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.input);
        SDataInputStream in(source);
        SString text;
        EXPECT_EQ(Thrown([&] { text = row.unicode ? in.ReadUnicode() : in.ReadUTF(); }),
                  row.thrown);
        EXPECT_EQ(text.View(), row.text);
    }
    Source halfInt("\1\2\3");
    EXPECT_EQ(Thrown([&] { SDataInputStream(halfInt).ReadInt(); }), kEnd);
    Source halfLong("\1\2\3\4\5");
    EXPECT_EQ(Thrown([&] { SDataInputStream(halfLong).ReadLong(); }), kEnd);
    try {
        Source source("\0\1\xC3"s);
        SDataInputStream(source).ReadUTF();
        FAIL();
    } catch (const SEUTFException& error) {
        EXPECT_EQ(error.GetFirst(), 0xC3);
        EXPECT_EQ(error.GetSecond(), -1);
    }
}

TEST(DataStream, WritesNoTextThatItsLengthCannotTell) {
    const std::string tooLong = "SEIOException: Text too long for a data stream";
    for (const int most : {65535, 65536}) {
        const SString text('x', most);
        Sink sink;
        SDataOutputStream out(sink);
        EXPECT_EQ(Thrown([&] { out.WriteUTF(text); }), most == 65535 ? "" : tooLong);
        EXPECT_EQ(sink.bytes.size(), most == 65535 ? 65537u : 0u);
        EXPECT_EQ(Thrown([&] { out.WriteUnicode(text); }), most == 65535 ? "" : tooLong);
        if (most != 65535) continue;
        Source source(sink.bytes);
        SDataInputStream in(source);
        EXPECT_EQ(in.ReadUTF(), text);
        EXPECT_EQ(in.ReadUnicode(), text);
    }
}

TEST(DataStream, PassesOnEveryFailure) {
    Sink whole;
    SDataOutputStream(whole).WriteUTF("text");
    int nth = 1;
    for (bool triggered = true; triggered; ++nth) {
        Sink sink;
        Source source(whole.bytes);
        FailNthAllocation fail(nth);
        const std::string thrown = Thrown([&] {
            SDataOutputStream(sink).WriteUTF("text");
            EXPECT_EQ(SDataInputStream(source).ReadUTF(), "text");
        });
        triggered = fail.Triggered();
        EXPECT_EQ(thrown, triggered ? "SEOutOfMemory" : "");
    }
    EXPECT_GT(nth, 3);
    for (const int read : {1, 2, 3}) {
        Source source(whole.bytes, 100, read);
        EXPECT_EQ(Thrown([&] { SDataInputStream(source).ReadUTF(); }),
                  "SEIOException: Source failed");
    }
    Sink shortSink(1, Sink::Failure::Short);
    EXPECT_EQ(Thrown([&] { SDataOutputStream(shortSink).WriteChars("text"); }),
              "SEIOException: Write failed");
}

}  // namespace
