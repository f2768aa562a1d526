#include <brcore8/streams/encode_streams.h>

#include "streams/support.h"

#include <string>

namespace {

struct Shift : SEncoder {
    explicit Shift(int by) : step(by) {}
    unsigned char Encode(unsigned char byte) override {
        return static_cast<unsigned char>(byte + step);
    }
    int step;
};

// Each byte by as much more as bytes went before.
struct Running : Shift {
    using Shift::Shift;
    unsigned char Encode(unsigned char byte) override {
        return static_cast<unsigned char>(byte + step * ++count);
    }
    int HasMemory() const override { return 1; }
    int count = 0;
};

std::string LongText() {
    std::string text;
    for (int i = 0; i < 10000; ++i)
        text += static_cast<char>(i * 7);
    return text;
}

template <class Encoder>
std::string Encoded(const std::string& text) {
    Sink sink;
    Encoder encoder(3);
    SOutputStreamEncode out(sink, encoder);
    EXPECT_EQ(out.Write(text.data(), static_cast<unsigned long>(text.size())), text.size());
    out.Write('!');
    return sink.bytes;
}

TEST(EncodeStreams, BytesComeBackAsTheyWent) {
    const std::string text = LongText();
    const std::string shifted = Encoded<Shift>(text);
    ASSERT_EQ(shifted.size(), text.size() + 1);
    EXPECT_EQ(shifted[5], static_cast<char>(text[5] + 3));
    {
        Source source(shifted, 7);
        Shift back(-3);
        SInputStreamEncode in(source, back);
        EXPECT_EQ(SReadAll(in), text + "!");
        EXPECT_EQ(in.Read(), -1);
    }
    Source source(Encoded<Running>(text));
    Running back(-3);
    SInputStreamEncode in(source, back);
    EXPECT_EQ(in.Read(), static_cast<unsigned char>(text[0]));
    // What is passed over still moves the key on.
    EXPECT_EQ(in.Skip(100), 100u);
    EXPECT_EQ(in.Read(), static_cast<unsigned char>(text[101]));
    EXPECT_EQ(in.MarkSupported(), 0);
    EXPECT_THROW(in.Mark(5), SENotImplemented);
    EXPECT_THROW(in.Reset(), SENotImplemented);
}

}  // namespace
