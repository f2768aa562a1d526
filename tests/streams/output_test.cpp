#include <brcore8/streams/output_file.h>
#include <brcore8/streams/output_filters.h>

#include "streams/support.h"

namespace {

TEST(OutputStream, DefaultsWriteByteByByte) {
    class Plain : public SOutputStream {
    public:
        using SOutputStream::Write;
        void Write(int byte) override { bytes += static_cast<char>(byte); }
        std::string bytes;
    } out;
    EXPECT_EQ(out.Write("\xFFxyz", 4), 4u);
    out.Write(0x141);
    EXPECT_EQ(out.bytes, "\xFFxyzA");
    out.Flush();
    out.Close();
}

// ---- SOutputFile ------------------------------------------------------------------------------

// A class of one's own may go on to another file; the first one is whole then, and closed.
TEST(OutputFile, GoesOnToAnotherFile) {
    class Parts : public SOutputFile {
    public:
        using SOutputFile::Init;
        using SOutputFile::SOutputFile;
    };
    const Folder folder;
    Parts parts((folder / "1").c_str());
    parts.Write("one", 3);
    parts.Init((folder / "2").c_str(), SOutputFile::Truncate);
    EXPECT_EQ(Get(folder / "1"), "one");
    parts.Write("two", 3);
    parts.Close();
    EXPECT_EQ(Get(folder / "2"), "two");
}

TEST(OutputFile, OpensByItsFlags) {
    const Folder folder;
    const std::string path = folder / "file";
    const struct {
        const char* name;
        int flags;
        long position;
        std::string content;
    } rows[] = {
        {"none", 0, 3, "new"},
        {"bit of no effect", 1, 3, "new"},
        {"append", 2, 6, "oldnew"},
        {"both bits", 3, 3, "new"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Put(path, "old");
        SOutputFile file(path.c_str(), row.flags);
        EXPECT_EQ(file.GetPosition(), row.position - 3);
        EXPECT_EQ(file.Write("ne", 2), 2u);
        file.Write('w' + 0x700);
        EXPECT_EQ(file.GetPosition(), row.position);
        file.Flush();
        EXPECT_EQ(Get(path), row.content);
    }
    EXPECT_EQ(Thrown([&] { SOutputFile file(folder.Path().string().c_str()); }),
              "SEIOException: Can't open for writing");
    EXPECT_EQ(Thrown([&] { SOutputFile file((folder / "no/file").c_str()); }),
              "SEIOException: Can't open for writing");
}

TEST(OutputFile, TellsOfEveryFailure) {
    const Folder folder;
    const auto write = [&](SOutputFile& file) { file.Write("abc", 3); };
    const auto byte = [&](SOutputFile& file) { file.Write('a'); };
    const auto flush = [&](SOutputFile& file) { file.Flush(); };
    const auto close = [&](SOutputFile& file) { file.Close(); };
    const struct {
        const char* name;
        std::function<void(SOutputFile&)> step;
    } rows[] = {{"block", write}, {"byte", byte}, {"flush", flush}, {"close", close}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SOutputFile file((folder / "file").c_str());
        FailNthFileOperation fail(1);
        EXPECT_EQ(Thrown([&] { row.step(file); }), "SEIOException: Write failed");
    }
    SOutputFile file((folder / "file").c_str());
    file.Close();
    file.Close();
    file.Flush();
    EXPECT_EQ(file.GetPosition(), -1);
    EXPECT_EQ(Thrown([&] { file.Write('a'); }), "SEIOException: Write failed");
}

// ---- Filters ----------------------------------------------------------------------------------

TEST(OutputFilterStream, ForwardsAndOwnsOnlyWhenTold) {
    Sink sink;
    {
        SOutputFilterStream filter(sink);
        EXPECT_EQ(filter.Write("ab", 2), 2u);
        filter.Write('c');
        filter.Flush();
        filter.Close();
    }
    EXPECT_EQ(sink.bytes, "abc");
    EXPECT_EQ(sink.flushes, 1);
    EXPECT_EQ(sink.closes, 1);
    Sink::destroyed = 0;
    { SOutputBufferStream filter(new Sink, 4, true); }
    EXPECT_EQ(Sink::destroyed, 1);
    { SOutputBufferStream filter(&sink, 4, false); }
    EXPECT_EQ(Sink::destroyed, 1);
}

TEST(OutputBufferStream, GathersAndPassesLargeBlocksOn) {
    const std::string large(256, 'L');
    Sink sink;
    SOutputBufferStream out(sink, 0);
    EXPECT_EQ(out.Write(large.data(), 255), 255u);
    out.Write('x');
    EXPECT_EQ(sink.writes, 0) << "size 0 stands for 256";
    out.Write('y');
    EXPECT_EQ(sink.bytes, large.substr(1) + "x");
    EXPECT_EQ(out.Write(large.data(), 256), 256u);
    EXPECT_EQ(sink.writes, 3);
    EXPECT_EQ(sink.bytes, large.substr(1) + "xy" + large);
    out.Write(large.data(), 200);
    out.Write("z", 1);
    EXPECT_EQ(sink.writes, 3);
    out.Write(large.data(), 56);
    EXPECT_EQ(sink.writes, 4) << "more than the room left";
    out.Flush();
    EXPECT_EQ(sink.flushes, 1);
    out.Write('!');
    out.Close();
    EXPECT_EQ(sink.closes, 1);
    EXPECT_EQ(sink.bytes.size(), 255 + 2 + 256 + 201 + 56 + 1u);
    EXPECT_EQ(sink.bytes.back(), '!');
}

TEST(OutputBufferStream, AFailureDoublesNothingAndIsHeard) {
    Sink part(1, Sink::Failure::Short);
    SOutputBufferStream some(part, 8);
    some.Write("abcdef", 6);
    EXPECT_EQ(Thrown([&] { some.Flush(); }), "SEIOException: Write failed");
    EXPECT_EQ(part.bytes, "abc");
    some.Write('g');
    some.Close();
    EXPECT_EQ(part.bytes, "abcdefg") << "what was not taken is still there";

    Sink none(1, Sink::Failure::Throw);
    SOutputBufferStream lost(none, 4);
    lost.Write("abc", 3);
    EXPECT_EQ(Thrown([&] { lost.Write("de", 2); }), "SEIOException: Sink failed");
    lost.Write("fg", 2);
    lost.Close();
    EXPECT_EQ(none.bytes, "fg") << "nobody knows how much of the rest arrived";
}

}  // namespace
