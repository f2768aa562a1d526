#include <brcore8/streams/input_file.h>
#include <brcore8/streams/progress.h>

#include "streams/support.h"

#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

constexpr char kCannotRead[] = "SEIOException: Can't open for reading";

class Progress : public SProgressIndicatorEx {
public:
    void SetRange(std::uint64_t first, std::uint64_t last) override {
        range = std::to_string(first) + "-" + std::to_string(last);
    }
    void SetPosition(std::uint64_t position) override { positions.push_back(position); }
    std::uint64_t GetPosition() override { return positions.back(); }
    int IsAborted() override { return aborted; }

    std::string range;
    std::vector<std::uint64_t> positions;
    int aborted = 0;
};

TEST(CallbackProgress, TellsHowFarAndStopsWhenAsked) {
    const Folder folder;
    Put(folder / "file", std::string(100000, 'x'));
    std::stop_source stop;
    std::uint64_t last = 0;
    SCallbackProgress progress(
        [&](std::uint64_t done, std::uint64_t total) {
            EXPECT_EQ(total, 100000u);
            EXPECT_GE(done, last);
            last = done;
            if (done > 50000) stop.request_stop();
        },
        stop.get_token());
    SInputFile file((folder / "file").c_str(), &progress);
    EXPECT_EQ(Thrown([&] { SReadAll(file); }).substr(0, 20), "SEIOAbortedException");
    EXPECT_GT(last, 50000u);
    EXPECT_LT(last, 100000u);
}

TEST(InputFile, ReadsBytesAndBlocksToTheEnd) {
    const Folder folder;
    const std::string path = folder / "bytes";
    const std::string bytes = "\x00\x1A\xFF\x80 text\r\n"s;
    Put(path, bytes);
    SInputFile file(path.c_str());
    EXPECT_EQ(file.Available(), bytes.size());
    EXPECT_EQ(file.Read(), 0);
    EXPECT_EQ(file.Read(), 0x1A);
    EXPECT_EQ(file.Read(), 0xFF);
    char rest[64];
    EXPECT_EQ(file.Read(rest, sizeof rest), bytes.size() - 3);
    EXPECT_EQ(std::string(rest, bytes.size() - 3), bytes.substr(3));
    EXPECT_EQ(file.Read(), -1);
    EXPECT_EQ(file.Read(rest, sizeof rest), 0u) << "a file's block read never says -1";
    EXPECT_TRUE(file.IsEOF());
    EXPECT_EQ(file.Available(), 0u);
    EXPECT_TRUE(file.IsEOF()) << "asking what is available forgets the end";
}

TEST(InputFile, TheEndIsKnownOnlyWhenItWasMet) {
    const Folder folder;
    Put(folder / "one", "x");
    SInputFile file((folder / "one").c_str());
    EXPECT_EQ(file.Read(), 'x');
    EXPECT_FALSE(file.IsEOF());
    EXPECT_EQ(file.Read(), -1);
    EXPECT_TRUE(file.IsEOF());
}

TEST(InputFile, SkipsWithinTheFileAndFailsBeyondIt) {
    const Folder folder;
    Put(folder / "ten", "0123456789");
    SInputFile file((folder / "ten").c_str());
    EXPECT_EQ(file.Skip(0), 0u);
    EXPECT_EQ(file.Skip(3), 3u);
    EXPECT_EQ(file.Read(), '3');
    EXPECT_EQ(file.Skip(6), 6u) << "exactly to the end";
    EXPECT_EQ(Thrown([&] { file.Skip(1); }), "SEEOFException: Unexpected end of file");
    EXPECT_TRUE(file.IsEOF());
}

TEST(InputFile, ReturnsToItsMark) {
    const Folder folder;
    Put(folder / "ten", "0123456789");
    SInputFile file((folder / "ten").c_str());
    EXPECT_TRUE(file.MarkSupported());
    file.Skip(4);
    file.Mark(1);
    EXPECT_EQ(SReadAll(file), "456789");
    EXPECT_TRUE(file.IsEOF());
    file.Reset();
    EXPECT_FALSE(file.IsEOF());
    EXPECT_EQ(SReadAll(file), "456789");
}

TEST(InputFile, RefusesWhatCannotBeRead) {
    const Folder folder;
    Put(folder / "there", "x");
    const struct {
        const char* name;
        std::string path;
    } rows[] = {
        {"missing", folder / "missing"},
        {"a folder", folder.Path().string()},
        {"empty name", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Thrown([&] { SInputFile file(row.path.c_str()); }), kCannotRead);
        EXPECT_EQ(Thrown([&] { SSeekableInputANSIFile file(row.path.c_str()); }), kCannotRead);
    }
    SInputFile file((folder / "there").c_str());
    FailNthFileOperation fail(1);
    EXPECT_EQ(Thrown([&] { file.Read(); }), kCannotRead);
    EXPECT_EQ(file.Read(), 'x') << "the next read works again";
    file.Close();
    file.Close();
    EXPECT_EQ(file.Read(), -1);
    EXPECT_EQ(file.Available(), 0u);
}

TEST(InputFile, ReportsEveryHundredthOfTheFile) {
    const Folder folder;
    Put(folder / "file", std::string(1000, 'x'));
    Progress progress;
    SInputFile file((folder / "file").c_str(), &progress);
    EXPECT_EQ(progress.range, "0-1000");
    EXPECT_EQ(progress.positions, std::vector<std::uint64_t>{0});
    for (int i = 0; i < 25; ++i)
        file.Read();
    file.Skip(7);
    EXPECT_EQ(progress.positions, (std::vector<std::uint64_t>{0, 10, 20, 32}));
    progress.aborted = 1;
    char block[10];
    EXPECT_EQ(Thrown([&] { file.Read(block, 10); }), "SEIOAbortedException: User aborted.");
    progress.aborted = 0;
    EXPECT_EQ(file.Read(block, 10), 10u) << "a stream whose reading was stopped goes on";
}

TEST(InputFile, ReportsEveryReadOfASmallFile) {
    const Folder folder;
    Put(folder / "file", std::string(99, 'x'));
    Progress progress;
    SInputFile file((folder / "file").c_str(), &progress);
    for (int i = 0; i < 3; ++i)
        file.Read();
    EXPECT_EQ(progress.positions, (std::vector<std::uint64_t>{0, 1, 2, 3}));
}

// An indicator that acts when it is first told a position.
class Hostile : public Progress {
public:
    void SetPosition(std::uint64_t position) override {
        Progress::SetPosition(position);
        if (act) std::exchange(act, nullptr)();
    }
    std::function<void()> act;
};

template <class File>
void SurvivesItsIndicator() {
    const Folder folder;
    const std::string path = folder / "file";
    const std::string bytes(90, 'x');
    Put(path, bytes);
    std::string seen;
    const auto read = [&seen](File& file) {
        const int byte = file.Read();
        if (byte != -1) seen += static_cast<char>(byte);
        return byte != -1;
    };
    {
        SCOPED_TRACE("it closes the file");
        Hostile hostile;
        File file(path.c_str(), &hostile);
        hostile.act = [&file] { file.Close(); };
        read(file);
        EXPECT_EQ(file.Read(), -1);
        EXPECT_EQ(file.Available(), 0u);
        EXPECT_TRUE(file.IsEOF());
    }
    {
        SCOPED_TRACE("it reads on to the end");
        seen.clear();
        Hostile hostile;
        File file(path.c_str(), &hostile);
        hostile.act = [&] {
            while (read(file)) {
            }
        };
        read(file);
        EXPECT_EQ(seen, bytes) << "each byte once";
        EXPECT_EQ(file.Available(), 0u);
    }
    {
        SCOPED_TRACE("it throws");
        Hostile hostile;
        File file(path.c_str(), &hostile);
        hostile.act = [] { throw std::runtime_error("indicator"); };
        EXPECT_THROW(file.Read(), std::runtime_error);
        EXPECT_GE(SReadAll(file).size(), bytes.size() - 1);
        Hostile early;
        early.act = [] { throw std::runtime_error("indicator"); };
        EXPECT_THROW(File(path.c_str(), &early), std::runtime_error);
    }
}

TEST(Progress, MayCloseTheFileReadOnOrThrow) {
    SurvivesItsIndicator<SInputFile>();
    SurvivesItsIndicator<SSeekableInputANSIFile>();
}

TEST(InputFile, CountsBeyondFourGigabytes) {
    const Folder folder;
    const std::string path = folder / "sparse";
    SFile sparse;
    ASSERT_EQ(sparse.Create(path.c_str()), 0);
    constexpr std::int64_t where = std::int64_t{5} << 30;
    ASSERT_EQ(sparse.Seek(where, SFile::Origin::Begin), where);
    ASSERT_EQ(sparse.Write("end", 3), 3);
    ASSERT_EQ(sparse.Close(), 0);
    ASSERT_EQ(sparse.Open(path.c_str()), 0);
    EXPECT_EQ(sparse.GetSize(), where + 3);

    Progress progress;
    SInputFile file(path.c_str(), &progress);
    EXPECT_EQ(progress.range, "0-" + std::to_string(where + 3));
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(file.Skip(1ul << 30), 1ul << 30);
    EXPECT_EQ(SReadAll(file), "end");
    EXPECT_EQ(progress.positions.back(), static_cast<std::uint64_t>(where));
    file.Reset();
    EXPECT_GE(file.Available(), 0xFFFFFFFEu);
    EXPECT_NE(file.Available(), SInputStream::EndOfData);
}

// ---- Lines ------------------------------------------------------------------------------------

TEST(SeekableFile, CutsLines) {
    const std::string full(1023, 'x');
    const std::string over(5000, 'y');
    const struct {
        const char* name;
        std::string bytes;
        std::vector<std::string> lines;
    } rows[] = {
        {"nothing", "", {}},
        {"no line end", "a", {"a"}},
        {"every kind", "a\r\r\nb\n\rc\0d"s, {"a", "b", "c", "d"}},
        {"CR LF", "a\r\nb\r\n", {"a", "b"}},
        {"lone CR", "a\rb\r", {"a", "b"}},
        {"NUL with CR and LF", "a\0\r\r\nb"s, {"a", "b"}},
        {"NUL with LF", "a\0\nb"s, {"a", "b"}},
        {"two LF", "a\n\nb", {"a", "", "b"}},
        {"LF CR LF", "a\n\r\nb", {"a", "", "b"}},
        {"two NUL", "a\0\0b"s, {"a", "", "b"}},
        {"odd bytes are text", "\xFF\x1A\x80\n", {"\xFF\x1A\x80"}},
        {"line end across a refill", full + "\r\nb", {full, "b"}},
        {"a run of CR across refills", full + std::string(3000, '\r') + "\nb", {full, "b"}},
        {"longer than the buffer", over + "\n" + over, {over, over}},
    };
    const Folder folder;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Put(folder / "text", row.bytes);
        SSeekableInputANSIFile file((folder / "text").c_str());
        std::vector<std::string> lines;
        // The end shows only when it was met, so an empty last line is none.
        while (!file.IsEOF())
            lines.emplace_back(std::string(file.ReadLn().View()));
        if (!lines.empty() && (row.bytes.empty() || lines.size() > row.lines.size())) {
            EXPECT_EQ(lines.back(), "");
            lines.pop_back();
        }
        EXPECT_EQ(lines, row.lines);
        EXPECT_EQ(file.Read(), -1);
        EXPECT_STREQ(file.ReadLn(), "");
    }
}

// Growing by a buffer at a time would copy terabytes.
TEST(SeekableFile, AHundredMegabytesAreOneLine) {
    const Folder folder;
    Put(folder / "text", std::string(100000000, 'x'));
    SSeekableInputANSIFile file((folder / "text").c_str());
    EXPECT_EQ(file.ReadLn().LengthByte(), 100000000);
    EXPECT_TRUE(file.IsEOF());
}

TEST(SeekableFile, GoesToPositions) {
    const Folder folder;
    std::string bytes;
    for (int i = 0; i < 5000; ++i)
        bytes += static_cast<char>('a' + i % 26);
    Put(folder / "text", bytes);
    SSeekableInputANSIFile file((folder / "text").c_str());
    EXPECT_TRUE(file.SeekSupported());
    EXPECT_EQ(file.Read(), 'a');
    EXPECT_EQ(file.GetPos(), 1u);
    EXPECT_EQ(file.Available(), 4999u);
    const struct {
        const char* name;
        unsigned long position;
        int result;
    } rows[] = {
        {"back within the buffer", 0, 1},  {"forth within the buffer", 1023, 1},
        {"behind the buffer", 1024, 0},    {"far on", 4000, 0},
        {"back before the buffer", 10, 0}, {"to the end", 5000, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(file.SeekPos(row.position), row.result);
        EXPECT_EQ(file.GetPos(), row.position);
        const int expected = row.position < 5000 ? 'a' + static_cast<int>(row.position % 26) : -1;
        EXPECT_EQ(file.Read(), expected);
    }
    EXPECT_TRUE(file.IsEOF());
    EXPECT_EQ(file.SeekPos(26), 0);
    EXPECT_FALSE(file.IsEOF());
    EXPECT_EQ(SReadAll(file), bytes.substr(26));
}

TEST(SeekableFile, AFailingReadLosesNothing) {
    const Folder folder;
    const std::string line(3000, 'x');
    Put(folder / "text", line + "\n");
    for (int nth = 1; nth <= 3; ++nth) {
        SSeekableInputANSIFile file((folder / "text").c_str());
        {
            FailNthFileOperation fail(nth);
            EXPECT_EQ(Thrown([&] { file.ReadLn(); }), kCannotRead) << nth;
        }
        EXPECT_EQ(std::string(file.ReadLn().View()), line) << nth;
    }
}

}  // namespace
