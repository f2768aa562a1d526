#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/input_filters.h>

#include "streams/support.h"
#include "support/failing_allocator.h"

#include <optional>

namespace {

constexpr char kFull[] = "SException: Push back buffer is full";
constexpr char kNoMark[] = "SException: Resetting to invalid mark";

std::string Take(SInputStream& in, unsigned long count) {
    std::string bytes(count, '\0');
    bytes.resize(SBytesOf(in.Read(bytes.data(), count)));
    return bytes;
}

TEST(InputStream, DefaultsReadByteByByte) {
    class Plain : public SInputStream {
    public:
        using SInputStream::Read;
        int Read() override { return left > 0 ? left-- : -1; }
        void Close() override {}
        int left = 5;
    } in;
    char bytes[10];
    EXPECT_EQ(in.Skip(2), 2u);
    EXPECT_EQ(in.Read(bytes, 2), 2u);
    EXPECT_EQ(bytes[0], 3);
    EXPECT_EQ(in.Read(bytes, 10), 1u);
    EXPECT_EQ(in.Read(bytes, 10), 0u);
    EXPECT_EQ(in.Skip(1), 0u);
    EXPECT_EQ(in.Available(), 0u);
    EXPECT_TRUE(in.IsEOF());
    EXPECT_FALSE(in.MarkSupported());
    EXPECT_EQ(Thrown([&] { in.Mark(1); }), "SENotImplemented");
    EXPECT_EQ(Thrown([&] { in.Reset(); }), "SENotImplemented");
}

TEST(InputFilterStream, OwnsOnlyWhenTold) {
    const struct {
        const char* name;
        bool own;
    } rows[] = {{"owned", true}, {"borrowed", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        auto* const source = new Source("abc");
        Source::destroyed = 0;
        {
            SInputFilterStream filter(source, row.own);
            EXPECT_EQ(SReadAll(filter), "abc");
            filter.Close();
            EXPECT_TRUE(source->closed);
        }
        EXPECT_EQ(Source::destroyed, row.own ? 1 : 0);
        if (!row.own) delete source;
    }
    Source::destroyed = 0;
    auto* const source = new Source("abc");
    FailNthAllocation fail(1);
    EXPECT_EQ(Thrown([&] { SInputPushbackStream back(source, 8, true); }), "SEOutOfMemory");
    EXPECT_EQ(Source::destroyed, 1) << "a failing constructor has taken the stream over";
}

TEST(InputFilterStream, ForwardsEverything) {
    SInputBuffer source("0123456789", 10);
    SInputFilterStream filter(source);
    EXPECT_EQ(filter.Read(), '0');
    EXPECT_TRUE(filter.MarkSupported());
    filter.Mark(1);
    EXPECT_EQ(Take(filter, 2), "12");
    filter.Reset();
    EXPECT_EQ(filter.Available(), 9u);
    EXPECT_EQ(filter.Skip(2), 2u);
    EXPECT_TRUE(filter.IsEOF());
}

// ---- SInputBufferStream -----------------------------------------------------------------------

TEST(InputBufferStream, GrowsForItsMarkAndThenDropsIt) {
    const struct {
        const char* name;
        unsigned long read;  // after the mark
        bool holds;
    } rows[] = {
        {"first buffer", 16, true}, {"second", 32, true},       {"up to the limit", 64, true},
        {"one beyond", 65, false},  {"far beyond", 100, false},
    };
    std::string bytes;
    for (int i = 0; i < 128; ++i)
        bytes += static_cast<char>(i);
    for (const auto& row : rows) {
        for (const unsigned long block : {1ul, 7ul, row.read}) {
            SCOPED_TRACE(row.name + " by "s + std::to_string(block));
            Source source(bytes);
            SInputBufferStream in(source, 16);
            in.Mark(64);
            std::string read;
            while (read.size() < row.read) {
                read += Take(in, std::min<unsigned long>(block, row.read - read.size()));
            }
            EXPECT_EQ(read, bytes.substr(0, row.read));
            if (row.holds) {
                in.Reset();
                EXPECT_EQ(SReadAll(in), bytes);
            } else {
                EXPECT_EQ(Thrown([&] { in.Reset(); }), kNoMark);
                EXPECT_EQ(SReadAll(in), bytes.substr(row.read)) << "and goes on";
            }
        }
    }
}

TEST(InputBufferStream, HasDefaults) {
    const std::string bytes(10000, 'x');
    Source source(bytes, 1);
    SInputBufferStream in(source, 0);
    EXPECT_EQ(Thrown([&] { in.Reset(); }), kNoMark) << "before any mark";
    EXPECT_TRUE(in.MarkSupported());
    in.Read();
    in.Mark(0);
    for (int i = 0; i < 8192; ++i)
        ASSERT_EQ(in.Read(), 'x');
    in.Reset();
    EXPECT_EQ(SReadAll(in).size(), 9999u) << "0 stands for 8192";
}

// What nobody has data for costs no memory.
TEST(InputBufferStream, AMarkWithoutBoundsGrowsWithTheData) {
    Source source(std::string(100000, 'x'), 100);
    SInputBufferStream in(source, 16);
    static std::size_t largest;
    largest = 0;
    const auto previous = brcore8::SetAllocationFilter([](std::size_t size) {
        largest = std::max(largest, size);
        return true;
    });
    in.Mark(0xFFFFFFFEul);
    EXPECT_EQ(SReadAll(in).size(), 100000u);
    in.Reset();
    EXPECT_EQ(SReadAll(in).size(), 100000u);
    brcore8::SetAllocationFilter(previous);
    EXPECT_LT(largest, 400000u);
}

TEST(InputBufferStream, LargeBlocksPassBy) {
    Source source(std::string(1000, 'x') + std::string(1000, 'y'), 300);
    SInputBufferStream in(source, 256);
    EXPECT_EQ(in.Read(), 'x');
    EXPECT_EQ(in.Available(), 1999u);
    EXPECT_EQ(Take(in, 1000).size(), 555u) << "the buffered bytes and one read of the source";
    EXPECT_EQ(in.Skip(1000), 1000u);
    EXPECT_EQ(SReadAll(in), std::string(444, 'y'));
    EXPECT_EQ(in.Read(nullptr, 256), SInputStream::EndOfData) << "the source's own word";
    EXPECT_TRUE(in.IsEOF());
}

TEST(InputBufferStream, AHugeBlockByTinyBuffersNeedsNoStack) {
    Source source(std::string(3000000, 'x'), 1);
    SInputBufferStream in(source, 1);
    in.Mark(4000000);
    EXPECT_EQ(Take(in, 4000000).size(), 3000000u);
    in.Reset();
    EXPECT_EQ(Take(in, 4000000).size(), 3000000u);
}

TEST(InputBufferStream, SkipsPastTheBufferUnderAMark) {
    SInputBuffer source("0123456789ABCDEF", 16);
    SInputFilterStream filter(source);
    SInputBufferStream in(filter, 4);
    in.Mark(8);
    EXPECT_EQ(Take(in, 2), "01");
    EXPECT_EQ(in.Skip(1), 1u);
    EXPECT_EQ(in.Skip(3), 3u) << "one buffered, two of the source, which then is exhausted";
    in.Reset();
    EXPECT_EQ(SReadAll(in), "0123") << "what was skipped below is not kept";
}

TEST(InputBufferStream, AFailureLeavesWhatWasBuffered) {
    Source source("0123456789", 4, 2);
    SInputBufferStream in(source, 4);
    in.Mark(100);
    EXPECT_EQ(Take(in, 4), "0123");
    EXPECT_EQ(Thrown([&] { in.Read(); }), "SEIOException: Source failed");
    in.Reset();
    {
        Take(in, 4);
        FailNthAllocation fail(1);
        EXPECT_EQ(Thrown([&] { in.Read(); }), "") << "the buffer has grown before";
    }
    in.Reset();
    EXPECT_EQ(SReadAll(in), "0123456789");
}

// ---- SInputPushbackStream ---------------------------------------------------------------------

TEST(InputPushbackStream, GivesBackInOrder) {
    Source source("rest");
    SInputPushbackStream in(source, 4);
    char five[] = "abcde";
    EXPECT_EQ(Thrown([&] { in.Unread(five, 5); }), kFull);
    in.Unread(five, 2);
    EXPECT_EQ(in.Read(), 'a');
    EXPECT_EQ(in.Read(), 'b');
    EXPECT_EQ(in.Read(), 'r');
    in.Unread('R');
    in.Unread(five, 3);
    EXPECT_EQ(Thrown([&] { in.Unread('x'); }), kFull);
    EXPECT_EQ(in.Available(), 7u);
    EXPECT_EQ(in.Skip(2), 2u);
    EXPECT_EQ(Take(in, 4), "cRes");
    EXPECT_EQ(Take(in, 4), "t");
    EXPECT_EQ(in.Read(five, 0), 0u);
    EXPECT_EQ(in.Read(five, 4), SInputStream::EndOfData);
    in.Unread(five, 1);
    EXPECT_EQ(Thrown([&] { in.Unread(five, 0xFFFFFFFFul); }), kFull);
    EXPECT_FALSE(in.IsEOF());
    EXPECT_EQ(in.Read(five, 4), 1u) << "the end after a byte pushed back is not an end yet";
}

TEST(InputPushbackStream, WithoutRoomItOnlyForwards) {
    SInputBuffer source("abc", 3);
    SInputPushbackStream in(source, 0);
    char byte = 'x';
    EXPECT_EQ(Thrown([&] { in.Unread(byte); }), kFull);
    EXPECT_EQ(Thrown([&] { in.Unread(&byte, 1); }), kFull);
    in.Unread(&byte, 0);
    in.Reset();  // the source's own mark is at its start
    EXPECT_EQ(SReadAll(in), "abc");
    Source unmarked("abc");
    SInputPushbackStream other(unmarked, 0);
    EXPECT_EQ(Thrown([&] { other.Reset(); }), "SENotImplemented");
}

TEST(InputPushbackStream, AMarkUsesTheStartOfTheArea) {
    char four[] = "abcd";
    const struct {
        const char* name;
        unsigned long back;      // bytes pushed back at the mark
        std::string afterwards;  // read after the reset
    } rows[] = {
        {"full area", 4, "abcd012"},
        {"nothing pushed back", 0, "012"},
        // Saved and restored is the start, so the new bytes at the end of the area stay.
        {"two bytes", 2, "YZ012"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SInputBuffer source("012", 3);
        SInputPushbackStream in(source, 4);
        in.Unread(four, row.back);
        in.Mark(10);
        while (in.Read() != -1) {
        }
        char other[] = "WXYZ";
        in.Unread(other, 4);
        in.Reset();
        EXPECT_EQ(SReadAll(in), row.afterwards);
    }
}

// ---- Random steps against a plain model -------------------------------------------------------

TEST(InputBufferStream, AgreesWithAModel) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&](unsigned long n) { return static_cast<unsigned long>(random() % n); };
    for (int round = 0; round < 200; ++round) {
        std::string bytes(below(400), '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        Source source(bytes, 1 + below(50));
        const unsigned long size = 1 + below(40);
        SInputBufferStream in(source, size);
        std::size_t at = 0;
        std::size_t mark = 0;
        unsigned long limit = 0;  // 0: the model knows of no mark that surely holds
        for (int step = 0; step < 60; ++step) {
            // An attempt to read one byte more, even at the end, may drop it already.
            if (at - mark >= limit) limit = 0;
            switch (below(4)) {
                case 0:
                    ASSERT_EQ(in.Read(),
                              at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : -1);
                    at += at < bytes.size();
                    break;
                case 1: {
                    const std::string read = Take(in, below(60));
                    ASSERT_EQ(read, bytes.substr(at, read.size()));
                    at += read.size();
                    break;
                }
                case 2:
                    mark = at;
                    limit = 1 + below(100);
                    in.Mark(limit);
                    break;
                case 3:
                    if (limit == 0) break;
                    in.Reset();
                    at = mark;
                    break;
            }
            ASSERT_EQ(in.Available(), bytes.size() - at);
            ASSERT_EQ(in.IsEOF(), at == bytes.size());
        }
    }
}

TEST(InputPushbackStream, AgreesWithAModel) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 100; ++round) {
        std::string bytes(200, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        SInputBuffer source(bytes.data(), 200);
        std::string model = bytes;
        const std::size_t capacity = random() % 20;
        SInputPushbackStream in(source, static_cast<unsigned long>(capacity));
        std::size_t back = 0;
        for (int step = 0; step < 60; ++step) {
            const std::size_t n = random() % 12;
            if (random() % 2 == 0) {
                ASSERT_EQ(Take(in, static_cast<unsigned long>(n)), model.substr(0, n));
                const std::size_t taken = std::min(n, model.size());
                model.erase(0, taken);
                back -= std::min(back, taken);
            } else {
                std::string given(n, '\0');
                for (char& byte : given)
                    byte = static_cast<char>(random());
                const std::string thrown =
                    Thrown([&] { in.Unread(given.data(), static_cast<unsigned long>(n)); });
                ASSERT_EQ(thrown, back + n > capacity ? kFull : "");
                if (!thrown.empty()) continue;
                model.insert(0, given);
                back += n;
            }
            ASSERT_EQ(in.Available(), model.size());
        }
    }
}

}  // namespace
