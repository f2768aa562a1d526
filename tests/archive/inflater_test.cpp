#include <brcore8/archive/crc32.h>
#include <brcore8/archive/inflater_stream.h>

#include "archive/zip_builder.h"
#include "streams/support.h"
#include "support/failing_allocator.h"

namespace {

constexpr char kBadData[] = "SEZipException: Invalid ZLIB data format";

// Text that deflates to matches near and far, and hardly repeats itself.
std::string Text(std::size_t size) {
    std::string text;
    for (unsigned seed = 1; text.size() < size; seed = seed * 1103515245 + 12345)
        text += seed & 0x10000 ? "overlapping" : std::to_string(seed);
    text.resize(size);
    return text;
}

std::string Inflated(const std::string& packed, unsigned long buffer = 4096,
                     unsigned long portion = 0xFFFF) {
    Source source(packed, portion);
    SInflaterInputStream stream(source, buffer);
    return SReadAll(stream);
}

TEST(Crc32, IsThatOfItsPartsTogether) {
    SCRC32 sum;
    EXPECT_EQ(sum.GetValue(), 0u);
    sum.Update("12345", 5);
    sum.Update(nullptr, 0);
    sum.Update("6789", 4);
    EXPECT_EQ(sum.GetValue(), 0xCBF43926u);
    sum.Reset();
    EXPECT_EQ(sum.GetValue(), 0u);
}

TEST(Inflater, GivesEverySizeWholeThroughEveryBuffer) {
    for (const std::size_t size : {0u, 1u, 511u, 512u, 513u, 65536u, 1u << 20}) {
        const std::string text = Text(size);
        for (const int level : {0, 1, 9}) {
            for (const unsigned long buffer : {1ul, 7ul, 512ul, 1ul << 21}) {
                if (size > 1000 && buffer == 1 && level == 0) continue;
                EXPECT_EQ(Inflated(Deflated(text, level), buffer), text)
                    << size << " bytes, level " << level << ", buffer " << buffer;
            }
        }
    }
}

TEST(Inflater, DoesNotCountTheBytesOfItsLastStep) {
    const std::string packed = Deflated("hello");
    char out[16];
    SInflater inflater;
    for (int round = 0; round < 2; ++round) {
        inflater.SetInput(packed.data(), static_cast<int>(packed.size()));
        EXPECT_EQ(inflater.Inflate(out, sizeof out), 0);
        EXPECT_TRUE(inflater.IsFinished());
        EXPECT_EQ(inflater.GetTotalOut(), 5u);
        EXPECT_EQ(inflater.GetTotalIn(), packed.size());
        EXPECT_EQ(std::string(out, 5), "hello");
        EXPECT_EQ(inflater.Inflate(out, sizeof out), 0) << "behind the end";
        inflater.Reset();
        EXPECT_FALSE(inflater.IsFinished());
        EXPECT_EQ(inflater.GetInputLength(), 0);
    }
    inflater.SetInput(packed.data(), static_cast<int>(packed.size()));
    EXPECT_EQ(inflater.Inflate(out, 3), 3);
    EXPECT_EQ(inflater.Inflate(out, 0), 0);
    inflater.SetInput("\xFF", 1);
    EXPECT_EQ(Thrown([&] {
                  inflater.Reset();
                  inflater.SetInput("\xFF", 1);
                  inflater.Inflate(out, sizeof out);
              }),
              "SEZipException: zlib error!!!");
    inflater.End();
    EXPECT_EQ(inflater.Inflate(out, sizeof out), 0);
    EXPECT_EQ(inflater.NeedsDictionary(), 0);
}

TEST(Inflater, TakesADictionary) {
    const std::string words = "the words that all texts share";
    z_stream stream{};
    deflateInit(&stream, 9);
    deflateSetDictionary(&stream, reinterpret_cast<const Bytef*>(words.data()),
                         static_cast<uInt>(words.size()));
    char packed[200];
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(words.data()));
    stream.avail_in = static_cast<uInt>(words.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed);
    stream.avail_out = sizeof packed;
    deflate(&stream, Z_FINISH);
    const int size = static_cast<int>(stream.total_out);
    deflateEnd(&stream);

    SInflater inflater(0);
    inflater.SetInput(packed, size);
    EXPECT_EQ(inflater.NeedsDictionary(), 1);
    EXPECT_EQ(inflater.SetDictionary("another", 7), 0);
    EXPECT_EQ(inflater.SetDictionary(words.data(), static_cast<int>(words.size())), 1);
    char out[100];
    inflater.Inflate(out, sizeof out);
    EXPECT_EQ(std::string(out, inflater.GetTotalOut()), words);
}

TEST(InflaterStream, RefusesDamagedData) {
    const std::string good = Deflated(Text(5000));
    const struct {
        const char* name;
        std::string packed;
    } rows[] = {
        {"nothing", ""},
        {"block type 3", "\x07"},
        {"stored lengths that disagree", "\x01\x05\x00\x00\x00hello"s},
        {"stored block cut short",
         "\x01\x05\x00\xFA\xFF"
         "hel"s},
        {"a distance before the start", "\x4B\x04\x42"s},
        {"code lengths that are too many", "\x05\xE0\x81\x08\x00\x00\x00\x00\x20\x7F\xEB"s},
        {"too many codes", "\xFC\xFF\xFF\xFF"},
        {"repeat without a length before", "\x04\xC0\x81\x08\x00\x00\x00\x00"s},
        {"the last byte missing", good.substr(0, good.size() - 1)},
        {"half", good.substr(0, good.size() / 2)},
        {"one byte", good.substr(0, 1)},
        {"text", "this is no deflated data at all"},
        {"zero bytes", std::string(100, '\0')},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Thrown([&] { Inflated(row.packed); }), kBadData);
        EXPECT_EQ(Thrown([&] { Inflated(row.packed, 1, 1); }), kBadData);
    }
}

// A source may say 0 at its end, and never EndOfData.
TEST(InflaterStream, EndsWhereARefillGivesNothing) {
    class EmptyAtEnd : public Source {
    public:
        using Source::Source;
        unsigned long Read(void* buffer, unsigned long count) override {
            return SBytesOf(Source::Read(buffer, count));
        }
    };
    const std::string packed = Deflated(Text(3000));
    EmptyAtEnd source(packed.substr(0, 100));
    SInflaterInputStream stream(source, 64);
    EXPECT_EQ(Thrown([&] { SReadAll(stream); }), kBadData);
    Source failing(packed, 64, 2);
    SInflaterInputStream other(failing, 64);
    EXPECT_EQ(Thrown([&] { SReadAll(other); }), kBadData) << "whatever went wrong";
}

TEST(InflaterStream, ReadsBytesAndSkips) {
    const std::string text = Text(1700);
    Source source(Deflated(text));
    SInflaterInputStream stream(source, 100);
    EXPECT_EQ(stream.Read(nullptr, 0), 0u);
    EXPECT_EQ(stream.Read(), text[0]);
    EXPECT_EQ(stream.Skip(999), 999u);
    EXPECT_EQ(stream.Read(), text[1000]);
    EXPECT_EQ(stream.IsEOF(), 0);
    EXPECT_EQ(stream.Skip(1000), 699u);
    EXPECT_EQ(stream.Read(), -1);
    EXPECT_EQ(stream.IsEOF(), 1);
    EXPECT_EQ(stream.MarkSupported(), 0);
    EXPECT_EQ(Thrown([&] { stream.Mark(1); }), "SENotImplemented");
}

TEST(InflaterStream, PassesAMillionEmptyBlocks) {
    std::string packed;
    for (int i = 0; i < 1'000'000; ++i)
        packed.append("\0\0\0\xFF\xFF", 5);
    EXPECT_EQ(Inflated(packed + Deflated("end"), 65536), "end");
}

TEST(InflaterStream, SurvivesEveryAllocationRefused) {
    const std::string text = Text(100'000);
    const std::string packed = Deflated(text);
    for (int nth = 1;; ++nth) {
        FailNthAllocation fail(nth);
        const std::string thrown = Thrown([&] { EXPECT_EQ(Inflated(packed), text); });
        if (!fail.Triggered()) break;
        EXPECT_TRUE(thrown == "SEOutOfMemory" || thrown == kBadData) << thrown;
        ASSERT_LT(nth, 100);
    }
}

}  // namespace
