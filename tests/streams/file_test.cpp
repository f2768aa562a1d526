#include <brcore8/streams/file.h>
#include <brcore8/streams/progress.h>

#include "streams/support.h"

namespace {

TEST(File, ReadsWritesAndCuts) {
    const Folder folder;
    const std::string path = folder / "file";
    SFile file;
    EXPECT_LT(file.Open(path.c_str()), 0);
    ASSERT_EQ(file.Create(path.c_str()), 0);
    EXPECT_EQ(file.Write("0123456789", 10), 10);
    EXPECT_EQ(file.GetSize(), 10);
    EXPECT_EQ(file.Seek(-6, SFile::Origin::End), 4);
    EXPECT_EQ(file.Seek(2, SFile::Origin::Current), 6);
    EXPECT_EQ(file.SetEndOfFile(), 0);
    EXPECT_EQ(file.Seek(1, SFile::Origin::Begin), 1);
    char bytes[16];
    EXPECT_EQ(file.Read(bytes, sizeof bytes), 5);
    EXPECT_EQ(std::string(bytes, 5), "12345");
    EXPECT_EQ(file.Read(bytes, 1), 0);
    EXPECT_EQ(file.Flush(), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.Close(), 0);

    EXPECT_LT(file.CreateNew(path.c_str()), 0) << "it is there";
    ASSERT_EQ(file.Open(path.c_str()), 0);
    EXPECT_LT(file.Write("x", 1), 0) << "usually opened for reading";
    EXPECT_LT(file.SetEndOfFile(), 0);
    ASSERT_EQ(file.Open(path.c_str(), SFile::ReadAccess | SFile::WriteAccess), 0);
    EXPECT_EQ(file.Write("X", 1), 1);
    ASSERT_EQ(file.Create(path.c_str()), 0);
    EXPECT_EQ(file.GetSize(), 0);
}

TEST(File, ReportsFailureAsNegative) {
    const Folder folder;
    SFile file;
    char byte;
    EXPECT_LT(file.GetSize(), 0);
    EXPECT_LT(file.Read(&byte, 1), 0);
    EXPECT_LT(file.Write("x", 1), 0);
    EXPECT_LT(file.Seek(0, SFile::Origin::Begin), 0);
    EXPECT_LT(file.SetEndOfFile(), 0);
    EXPECT_LT(file.Flush(), 0);
    EXPECT_LT(file.Open(folder.Path().string().c_str()), 0) << "a folder";
    EXPECT_LT(file.Create(folder.Path().string().c_str()), 0);
    ASSERT_EQ(file.Create((folder / "file").c_str()), 0);
    EXPECT_LT(file.Seek(-1, SFile::Origin::Begin), 0);
    FailNthFileOperation fail(1);
    EXPECT_LT(file.Close(), 0);
    EXPECT_FALSE(file.IsOpen()) << "closed all the same";
}

TEST(TerminalProgress, FitsItsLineIntoTheTerminal) {
    const struct {
        const char* name;
        std::uint64_t done, total;
        int width;
        std::string line;
    } rows[] = {
        {"half", 50, 100, 22, "load [#####.....]  50%"},
        {"nothing yet", 0, 100, 22, "load [..........]   0%"},
        {"all", 100, 100, 22, "load [##########] 100%"},
        {"more than all", 200, 100, 4, "100%"},
        {"an empty range", 0, 0, 4, "100%"},
        {"no room for the bar", 50, 100, 12, "load  50%"},
        {"no room for the label", 50, 100, 8, " 50%"},
        {"no room", 50, 100, 3, ""},
        {"huge", UINT64_MAX / 2, UINT64_MAX, 4, " 50%"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string line = STerminalProgress::Line("load", row.done, row.total, row.width);
        EXPECT_LE(line.size(), static_cast<std::size_t>(row.width));
        EXPECT_EQ(line, row.line);
    }
    EXPECT_EQ(STerminalProgress::Line("load", 1, 2, 500).size(), 5 + 1 + 50 + 2 + 4u);
}

TEST(TerminalProgress, HearsTheFlag) {
    std::atomic<bool> abort = false;
    STerminalProgress progress("work", &abort);
    progress.SetRange(0, 10);
    progress.SetPosition(5);
    EXPECT_EQ(progress.GetPosition(), 5u);
    EXPECT_EQ(progress.IsAborted(), 0);
    abort = true;
    EXPECT_EQ(progress.IsAborted(), 1);
    EXPECT_EQ(STerminalProgress().IsAborted(), 0);
}

}  // namespace
