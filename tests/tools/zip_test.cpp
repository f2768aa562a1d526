// The command zip as a user runs it.
#include "archive/zip_builder.h"
#include "tools/run_command.h"

#include <vector>

using namespace std::string_literals;

namespace {

namespace fs = std::filesystem;

class CommandZip : public CommandTest {
protected:
    static ZipBuilder Sample() {
        ZipBuilder zip;
        zip.Add({.name = "dir/"});
        zip.Add({.name = "dir/a b.txt", .data = "stored text\n", .comment = "tab\there\\"});
        zip.Add({.name = "numbers", .data = std::string(100'000, '7'), .method = 8, .flags = 8});
        zip.Add({.name = "dates", .data = "", .date = 0, .time = 0});
        zip.Add({.name = "numbers", .data = "the second"});
        return zip;
    }
};

TEST_F(CommandZip, ListsRows) {
    WriteFile("a.zip", Sample().Bytes("comment"));
    const std::string packed = std::to_string(Deflated(std::string(100'000, '7')).size());
    const std::string time = "2038-02-28 12:30:08\t";
    const Result result = Run("zip list --tsv a.zip");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "dir/\tstored\t0\t0\t00000000\t" + time + "\n" +
                              "dir/a b.txt\tstored\t12\t12\t89d3ee91\t" + time +
                              "tab\\there\\\\\n" + "numbers\tdeflated\t" + packed +
                              "\t100000\t2a2d8870\t" + time + "\n" +
                              "dates\tstored\t0\t0\t00000000\t1980-00-00 00:00:00\t\n" +
                              "numbers\tstored\t10\t10\tabf849a1\t" + time + "\n");
    const Result table = Run("zip list a.zip");
    EXPECT_NE(table.out.find("dir/a b.txt  (tab?here\\)\n"), std::string::npos) << table.out;
    WriteFile("none.zip", ZipBuilder().Bytes());
    EXPECT_EQ(Run("zip list --tsv none.zip").out, "");
    EXPECT_EQ(Run("zip list --tsv none.zip").status, 0);
}

TEST_F(CommandZip, TellsWhatIsWrong) {
    const ZipBuilder zip = Sample();
    WriteFile("a.zip", zip.Bytes());
    WriteFile("text", "no archive");
    std::string short_ = zip.Bytes();
    SetNumber(short_, zip.HeadAt(1), 0, 4);
    WriteFile("short.zip", short_);
    std::string bad = zip.Bytes();
    FlipByte(bad, zip.DataAt(1));
    WriteFile("bad.zip", bad);
    const std::string row = "dir/\tstored\t0\t0\t00000000\t2038-02-28 12:30:08\t\n";
    const std::string noArchive = ": it cannot be opened, or is no ZIP archive\n";
    const struct {
        const char* arguments;
        int status;
        std::string out;
        std::string err;
    } rows[] = {
        {"zip list absent.zip", 1, "", "brcore8: absent.zip" + noArchive},
        {"zip test text", 1, "", "brcore8: text" + noArchive},
        {"zip list --tsv short.zip", 1, row, "brcore8: short.zip: invalid CEN header signature\n"},
        {"zip cat a.zip numbers", 0, std::string(100'000, '7'), ""},
        {"zip cat a.zip \"dir/a b.txt\"", 0, "stored text\n", ""},
        {"zip cat a.zip dates", 0, "", ""},
        {"zip cat a.zip absent", 1, "", "brcore8: absent: there is no such entry\n"},
        {"zip cat a.zip dir", 1, "", "brcore8: dir: it is a folder\n"},
        {"zip cat a.zip dir/", 1, "", "brcore8: dir/: it is a folder\n"},
        {"zip cat bad.zip \"dir/a b.txt\"", 1, "", "brcore8: dir/a b.txt: invalid entry CRC-32\n"},
        {"zip cat short.zip numbers", 1, "", "brcore8: short.zip: invalid CEN header signature\n"},
        {"zip test a.zip", 0, "5 entries are sound\n", ""},
        {"zip test bad.zip", 1, "dir/a b.txt: invalid entry CRC-32\n",
         "brcore8: bad.zip: 1 of 5 entries is bad\n"},
        {"zip test short.zip", 1, "entry 2: invalid CEN header signature\n",
         "brcore8: short.zip: the directory ends after 1 of 5 entries\n"},
    };
    for (const auto& wanted : rows) {
        SCOPED_TRACE(wanted.arguments);
        const Result result = Run(wanted.arguments);
        EXPECT_EQ(result.status, wanted.status);
        EXPECT_TRUE(result.out == wanted.out) << result.out.substr(0, 200);
        EXPECT_EQ(result.err, wanted.err);
    }
    for (const char* wrong : {"zip", "zip list", "zip cat a.zip", "zip extract a.zip", "zip pack"})
        EXPECT_EQ(Run(wrong).status, 2) << wrong;
}

TEST_F(CommandZip, Extracts) {
    const ZipBuilder twice = Sample();
    WriteFile("twice.zip", twice.Bytes());
    EXPECT_EQ(Run("zip extract twice.zip -d out").err, "brcore8: numbers: the name stands twice\n");
    EXPECT_FALSE(fs::exists("out"));

    ZipBuilder zip;
    zip.Add({.name = "good", .data = "good"});
    zip.Add({.name = "dir/file", .data = std::string(70'000, 'f'), .method = 8});
    WriteFile("a.zip", zip.Bytes());
    Result result = Run("zip extract a.zip -d \"out/deep er\"");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(ReadFile("out/deep er/good"), "good");
    EXPECT_EQ(ReadFile("out/deep er/dir/file"), std::string(70'000, 'f'));
    EXPECT_EQ(Run("zip extract a.zip dir -d one").status, 0);
    EXPECT_FALSE(fs::exists("one/good"));
    EXPECT_TRUE(fs::exists("one/dir/file"));
    EXPECT_EQ(Run("zip extract a.zip -d one absent").err,
              "brcore8: absent: there is no such entry\n");

    std::string bad = zip.Bytes();
    FlipByte(bad, zip.DataAt(0));
    WriteFile("bad.zip", bad);
    result = Run("zip extract --directory=bad bad.zip");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "brcore8: good: invalid entry CRC-32\n");
    EXPECT_FALSE(fs::exists("bad/good"));
    EXPECT_TRUE(fs::exists("bad/dir/file"));

    zip.Add({.name = "../outside", .data = "x"});
    WriteFile("evil.zip", zip.Bytes());
    result = Run("zip extract evil.zip -d evil good");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "brcore8: ../outside: the name leads out of the folder\n");
    EXPECT_FALSE(fs::exists("evil") || fs::exists("outside"));
}

}  // namespace
