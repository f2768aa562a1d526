#include <brcore8/streams/std_streams.h>

#include "streams/support.h"

#include <sstream>
#include <vector>

namespace {

// Gives `good` bytes, then fails like a disk that was pulled out.
class PulledOut : public std::streambuf {
public:
    explicit PulledOut(std::string_view good) : good_(good) {
        setg(good_.data(), good_.data(), good_.data() + good_.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("gone"); }
    int_type overflow(int_type) override { throw std::runtime_error("gone"); }

private:
    std::string good_;
};

std::string AllBytes() {
    std::string bytes;
    for (int i = 0; i < 20000; ++i)
        bytes += static_cast<char>(i % 256);
    return bytes;
}

TEST(InputStdStream, ReadsWhatTheOtherReads) {
    const std::string bytes = " \r\n\x1A"s + '\0' + '\xFF' + AllBytes();
    std::istringstream other(bytes);
    SInputStdStream stream(other);
    EXPECT_EQ(stream.Read(), ' ');
    EXPECT_EQ(stream.Available(), bytes.size() - 1);
    EXPECT_EQ(stream.IsEOF(), 0);
    EXPECT_EQ(SReadAll(stream), bytes.substr(1));
    EXPECT_EQ(stream.Read(), -1);
    EXPECT_EQ(stream.IsEOF(), 1);
    EXPECT_EQ(stream.Available(), 0u);
}

TEST(InputStdStream, TellsOfABrokenStream) {
    PulledOut buffer("ab");
    std::istream other(&buffer);
    SInputStdStream stream(other);
    EXPECT_EQ(stream.Read(), 'a');
    char room[8];
    EXPECT_EQ(Thrown([&] { stream.Read(room, sizeof room); }), "SEIOException: Read failed");
    EXPECT_EQ(Thrown([&] { stream.Read(); }), "SEIOException: Read failed");
}

TEST(OutputStdStream, WritesBytesAndTellsOfFailures) {
    const std::string bytes = AllBytes();
    std::ostringstream other;
    SOutputStdStream stream(other);
    stream.Write('\n');
    EXPECT_EQ(stream.Write(bytes.data(), static_cast<unsigned long>(bytes.size())), bytes.size());
    stream.Close();
    EXPECT_EQ(other.str(), "\n" + bytes);

    PulledOut buffer("");
    std::ostream broken(&buffer);
    SOutputStdStream failing(broken);
    EXPECT_EQ(Thrown([&] { failing.Write('x'); }), "SEIOException: Write failed");
    EXPECT_EQ(Thrown([&] { failing.Flush(); }), "SEIOException: Write failed");
}

TEST(StreamBuffers, CarryOurStreams) {
    const std::string bytes = AllBytes();
    SInputBuffer input(bytes.data(), static_cast<int>(bytes.size()));
    SInputStreamBuffer source(input);
    std::istream reading(&source);
    const std::string read{std::istreambuf_iterator<char>(reading), {}};
    EXPECT_EQ(read, bytes);

    std::ostringstream arrived;
    SOutputStdStream output(arrived);
    {
        SOutputStreamBuffer sink(output);
        std::ostream writing(&sink);
        writing << 12 << std::flush;
        EXPECT_EQ(arrived.str(), "12");
        writing << bytes;
    }
    EXPECT_EQ(arrived.str(), "12" + bytes);
}

TEST(StreamBuffers, LetTheOtherSideSeeFailures) {
    PulledOut broken("");
    std::iostream other(&broken);
    SInputStdStream input(other);
    SInputStreamBuffer source(input);
    std::istream reading(&source);
    reading.get();
    EXPECT_TRUE(reading.bad());

    other.clear();
    SOutputStdStream output(other);
    SOutputStreamBuffer sink(output);
    std::ostream writing(&sink);
    writing << "lost" << std::flush;
    EXPECT_TRUE(writing.bad());
}

TEST(Spans, AreReadAndFilled) {
    std::vector<std::byte> room(5);
    SOutputSpan output(room);
    output.Write("abc", 3);
    EXPECT_EQ(output.Written().size(), 3u);
    EXPECT_EQ(Thrown([&] { output.Write("defg", 4); }), "SEIOException: Write failed");
    EXPECT_EQ(Thrown([&] { output.Write('h'); }), "SEIOException: Write failed");
    EXPECT_EQ(output.Written().size(), 5u);
    SInputSpan input(output.Written());
    EXPECT_EQ(SReadAll(input), "abcde");
    SInputSpan nothing({});
    EXPECT_EQ(nothing.Read(), -1);
}

}  // namespace
