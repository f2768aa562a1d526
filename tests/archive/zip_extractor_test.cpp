#include <brcore8/archive/zip_extractor.h>
#include <brcore8/archive/zip_verifier.h>
#include <brcore8/streams/progress.h>

#include "archive/zip_builder.h"
#include "streams/support.h"
#include "support/failing_allocator.h"

#include <map>
#include <set>

namespace {

namespace fs = std::filesystem;

class ZipWhole : public ::testing::Test {
protected:
    std::string Path(const std::string& bytes) {
        const std::string path = folder_ / "archive.zip";
        Put(path, bytes);
        return path;
    }
    // "name: text;" a finding.
    std::string Faults(const std::string& bytes, const SZipLimits& limits = {}) {
        SZipFile archive(Path(bytes).c_str());
        std::string all;
        const int count = SZipVerifier(archive, limits).Verify(Into(all));
        EXPECT_EQ(count, std::ranges::count(all, ';'));
        return all;
    }
    std::string Extracted(const std::string& bytes, const std::vector<std::string>& names = {},
                          const SZipLimits& limits = {}) {
        SZipFile archive(Path(bytes).c_str());
        SZipExtractor extractor(archive, limits);
        for (const std::string& name : names)
            extractor.Choose(name.c_str());
        std::string all;
        const int count = extractor.Extract((folder_ / "out").c_str(), Into(all));
        EXPECT_EQ(count, std::ranges::count(all, ';'));
        return all;
    }
    static SZipReport Into(std::string& all) {
        return [&all](const SZipFinding& finding) {
            all += std::string(finding.name.View()) + ": " + finding.text.View().data() + ";";
        };
    }
    // Path and content of every file below the target; folders end with a slash.
    std::map<std::string, std::string> Files() {
        std::map<std::string, std::string> files;
        const fs::path out = folder_.Path() / "out";
        if (!fs::exists(out)) return files;
        for (const auto& item : fs::recursive_directory_iterator(out)) {
            const std::string name = item.path().lexically_relative(out).generic_string();
            if (item.is_directory())
                files[name + "/"] = "";
            else
                files[name] = Get(item.path().string());
        }
        return files;
    }

    Folder folder_;
};

using ZipVerify = ZipWhole;
using ZipExtract = ZipWhole;

ZipBuilder Sound() {
    ZipBuilder zip;
    zip.Add({.name = "a", .data = "stored"});
    zip.Add({.name = "b", .data = std::string(1000, 'b'), .method = 8});
    zip.Add({.name = "c", .data = std::string(1000, 'c'), .method = 8, .flags = 8});
    return zip;
}

TEST_F(ZipVerify, FindsEachLie) {
    const ZipBuilder zip = Sound();
    EXPECT_EQ(Faults(zip.Bytes("comment")), "");
    EXPECT_EQ(Faults(ZipBuilder().Bytes()), "");
    const struct {
        const char* name;
        std::size_t at;
        std::uint64_t value;
        int size;
        const char* found;
    } rows[] = {
        {"data", zip.DataAt(0), 'S', 1, "a: invalid entry CRC-32;"},
        {"CRC-32 in the directory", zip.HeadAt(1) + 16, 1, 4,
         "b: the local sizes or CRC-32 differ from the directory's;"},
        {"CRC-32 in the header", zip.LocalAt(1) + 14, 1, 4,
         "b: the local sizes or CRC-32 differ from the directory's;"},
        {"size in the header", zip.LocalAt(0) + 22, 1, 4,
         "a: the local sizes or CRC-32 differ from the directory's;"},
        {"name in the header", zip.LocalAt(0) + 30, 'x', 1,
         "a: the local name differs from the directory's;"},
        {"method in the header", zip.LocalAt(0) + 8, 8, 2,
         "a: the local method differs from the directory's;"},
        {"flags in the header", zip.LocalAt(0) + 6, 0x800, 2,
         "a: the local flags differ from the directory's;"},
        {"descriptor", zip.DirectoryAt() - 4, 1, 4,
         "c: the descriptor differs from the directory;"},
        {"descriptor without signature", zip.DirectoryAt() - 16, 0, 4,
         "c: the descriptor differs from the directory;"},
        {"header signature", zip.LocalAt(1), 0, 4, "b: invalid LOC header signature;"},
        {"extra field over the next entry", zip.LocalAt(0) + 28, 3, 2,
         "a: the entry overlaps another one;"},
        {"directory signature", zip.HeadAt(1), 0, 4, ": invalid CEN header signature;"},
        {"count one too small", zip.EndAt() + 8, 0x0002'0002, 4,
         ": the directory goes on behind its last entry;"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string bytes = zip.Bytes();
        SetNumber(bytes, row.at, row.value, row.size);
        EXPECT_EQ(Faults(bytes), row.found);
    }
    std::string other = zip.Bytes();
    FlipByte(other, zip.DataAt(0));
    zip.FixCrc(other, 0, other.substr(zip.DataAt(0), 6));
    EXPECT_EQ(Faults(other), "") << "a sound archive of other bytes";
    EXPECT_EQ(Faults(zip.Bytes(), {.entrySize = 999}),
              "b: entry is too large;c: entry is too large;");
}

TEST_F(ZipVerify, ReadsABodyOfManyHeadsOnce) {
    ZipBuilder zip;
    zip.Add({.name = "0", .data = std::string(20 << 20, '\0'), .method = 8});
    for (int i = 1; i < 200; ++i)
        zip.AddHead(0, std::to_string(i));
    const std::string found = Faults(zip.Bytes());
    EXPECT_EQ(std::ranges::count(found, ';'), 199);
    EXPECT_TRUE(found.starts_with("1: the local name differs")) << found.substr(0, 100);
    EXPECT_TRUE(Extracted(zip.Bytes()).starts_with("1: the entry overlaps another one;2: "));
    EXPECT_TRUE(Files().empty());
}

TEST(ZipNames, AreVetted) {
    const char* const out = "the name leads out of the folder";
    const char* const absolute = "the name is absolute";
    const char* const drive = "the name has a drive";
    const char* const back = "the name holds a backslash";
    const char* const device = "the name is reserved for a device";
    const char* const dots = "a part of the name is only dots";
    const char* const tooLong = "the name is too long";
    std::string deep;
    while (deep.size() < 60'000)
        deep += "d/";
    const struct {
        std::string name;
        const char* fault;
    } rows[] = {
        {"a", nullptr},
        {"dir/", nullptr},
        {"dir/sub/a.b.c", nullptr},
        {"..foo", nullptr},
        {"foo..bar", nullptr},
        {".hidden", nullptr},
        {"./a", nullptr},
        {"a//b", nullptr},
        {"./", nullptr},
        {"console", nullptr},
        {"com", nullptr},
        {"com10", nullptr},
        {"nullify.txt", nullptr},
        {"auxiliary/a", nullptr},
        {"\xC3\xA9", nullptr},
        {"..", out},
        {"../a", out},
        {"a/..", out},
        {"a/../b", out},
        {"a/../../b", out},
        {"a/../", out},
        {"...", dots},
        {"a/.. /b", dots},
        {"a/. ./b", dots},
        {" ", dots},
        {"/a", absolute},
        {"//server/share", absolute},
        {"/", absolute},
        {"\\a", absolute},
        {"\\\\server\\share", absolute},
        {"\\\\?\\c:\\a", absolute},
        {"c:a", drive},
        {"C:/a", drive},
        {"c:\\a", drive},
        {"a\\b", back},
        {"..\\a", back},
        {"a/..\\..\\b", back},
        {"con", device},
        {"NUL.txt", device},
        {"a/Aux/b", device},
        {"com1", device},
        {"lpt9.tar.gz", device},
        {"nul .txt", device},
        {"conout$", device},
        {"com\xC2\xB9", device},
        {"prn:", device},
        {"", "the name is empty"},
        {".", "the name is empty"},
        {"a\0b"s, "the name holds a zero byte"},
        {"a\0/../b"s, "the name holds a zero byte"},
        {deep, tooLong},
        {std::string(256, 'a'), tooLong},
        {std::string(255, 'a'), nullptr},
        {deep.substr(0, 4095), nullptr},
    };
    for (const auto& row : rows)
        EXPECT_STREQ(SZipNameFault(row.name), row.fault) << row.name.substr(0, 40);
}

TEST_F(ZipExtract, WritesFilesWithTheirTimes) {
    ZipBuilder zip = Sound();
    zip.Add({.name = "dir/"});
    zip.Add({.name = "dir/sub/../x", .data = "never"});
    EXPECT_EQ(Extracted(zip.Bytes()), "dir/sub/../x: the name leads out of the folder;");
    EXPECT_TRUE(Files().empty()) << "vetted before the first write";

    zip = Sound();
    zip.Add({.name = "dir/"});
    zip.Add({.name = "dir/later", .data = "y"});
    zip.Add({.name = "./deep//er/..foo", .data = "x"});
    EXPECT_EQ(Extracted(zip.Bytes()), "");
    const std::map<std::string, std::string> expected = {{"a", "stored"},
                                                         {"b", std::string(1000, 'b')},
                                                         {"c", std::string(1000, 'c')},
                                                         {"dir/", ""},
                                                         {"dir/later", "y"},
                                                         {"deep/", ""},
                                                         {"deep/er/", ""},
                                                         {"deep/er/..foo", "x"}};
    EXPECT_EQ(Files(), expected);
    for (const char* name : {"out/a", "out/dir"}) {
        SFileFind find;
        STime time;
        ASSERT_EQ(find.FindFile((folder_ / name).c_str()), 1);
        ASSERT_EQ(find.GetLastWriteTime(&time), 1);
        EXPECT_EQ(time.GetLocal(), (SCalendarTime{2038, 2, 28, 12, 30, 8})) << name;
    }

    EXPECT_EQ(Extracted(zip.Bytes()), "") << "over what is there";
    EXPECT_EQ(Files(), expected);
}

TEST_F(ZipExtract, TakesTheEntriesChosen) {
    ZipBuilder zip = Sound();
    zip.Add({.name = "dir/x", .data = "x"});
    zip.Add({.name = "dir/sub/y", .data = "y"});
    zip.Add({.name = "dirt", .data = "z"});
    EXPECT_EQ(Extracted(zip.Bytes(), {"a", "d"}), "d: there is no such entry;");
    EXPECT_TRUE(Files().empty());
    EXPECT_EQ(Extracted(zip.Bytes(), {"a", "dir"}), "");
    EXPECT_EQ(Files().size(), 5u);
    EXPECT_EQ(Files()["dir/sub/y"], "y");
}

TEST_F(ZipExtract, RefusesWhatMustNotBeWritten) {
    const struct {
        const char* name;
        std::vector<ZipItem> items;
        const char* found;
    } rows[] = {
        {"link",
         {{.name = "l", .data = "/etc", .external = 0120777u << 16, .madeBy = 3 << 8}},
         "l: the entry is a link;"},
        {"link of another system",
         {{.name = "l", .external = 0120777u << 16}},
         "l: the entry is a link;"},
        {"reparse point", {{.name = "l", .external = 0x420}}, "l: the entry is a link;"},
        {"pipe",
         {{.name = "p", .external = 0010666u << 16, .madeBy = 3 << 8}},
         "p: the entry is no file;"},
        {"twice", {{.name = "a"}, {.name = "./a"}}, "a: the name stands twice;"},
        {"case",
         {{.name = "dir/a"}, {.name = "dir/A"}},
         "dir/a: the name differs from another one in case alone;"},
        {"case of other letters",
         {{.name = "\xC3\xA9"}, {.name = "\xC3\x89"}},
         "\xC3\xA9: the name differs from another one in case alone;"},
        {"file and folder",
         {{.name = "a"}, {.name = "a!"}, {.name = "A/b"}},
         "a/b: the name is a file's and a folder's;"},
        {"folder and file",
         {{.name = "a/"}, {.name = "a"}},
         "a: the name is a file's and a folder's;"},
        {"two at once",
         {{.name = "../a"}, {.name = "ok"}, {.name = "nul"}},
         "../a: the name leads out of the folder;nul: the name is reserved for a device;"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ZipBuilder zip;
        zip.Add({.name = "good"});
        for (const ZipItem& item : row.items)
            zip.Add(item);
        EXPECT_EQ(Extracted(zip.Bytes()), row.found);
        EXPECT_TRUE(Files().empty());
    }
    ZipBuilder folders;
    folders.Add({.name = "dir/"});
    folders.Add({.name = "dir/"});
    folders.Add({.name = "dir/a"});
    EXPECT_EQ(Extracted(folders.Bytes()), "") << "a folder may stand twice";
    EXPECT_EQ(Extracted(Sound().Bytes(), {}, {.totalSize = 1500}), "c: archive is too large;");
}

TEST_F(ZipExtract, LeavesNoFileOfABadEntry) {
    const ZipBuilder zip = Sound();
    std::string bytes = zip.Bytes();
    FlipByte(bytes, zip.DataAt(0));
    fs::create_directory(folder_.Path() / "out");
    Put(folder_ / "out/a", "old");
    EXPECT_EQ(Extracted(bytes), "a: invalid entry CRC-32;");
    EXPECT_EQ(Files()["a"], "old");
    EXPECT_EQ(Files().size(), 3u) << "the others are there, and nothing else";
    fs::remove_all(folder_.Path() / "out");
    Put(folder_ / "out", "a file");
    EXPECT_TRUE(Extracted(zip.Bytes()).ends_with("out: Can't open for writing;"));
}

TEST_F(ZipExtract, BoundsTheMemoryForNames) {
    ZipBuilder large;
    std::string path;
    while (path.size() < 4000)
        path += "0123456789abcdef/";
    for (int i = 0; i < 7000; ++i)
        large.Add({.name = path + std::to_string(i)});
    EXPECT_EQ(Thrown([&] { Extracted(large.Bytes()); }),
              "SEZipException: the names take too much memory");
}

TEST_F(ZipExtract, StopsWhenAskedTo) {
    class Stop : public SProgressIndicatorEx {
    public:
        void SetRange(std::uint64_t, std::uint64_t last) override { range = last; }
        void SetPosition(std::uint64_t at) override { position = at; }
        std::uint64_t GetPosition() override { return position; }
        int IsAborted() override { return position > 6; }
        std::uint64_t range = 0;
        std::uint64_t position = 0;
    } stop;
    SZipFile archive(Path(Sound().Bytes()).c_str());
    EXPECT_EQ(Thrown([&] { SZipExtractor(archive).Extract((folder_ / "out").c_str(), {}, &stop); }),
              "SEIOAbortedException: User aborted.");
    EXPECT_GT(stop.range, 6u);
    EXPECT_EQ(Files().size(), 1u) << "the file that was whole";
    EXPECT_EQ(Thrown([&] { SZipVerifier(archive).Verify({}, &stop); }),
              "SEIOAbortedException: User aborted.");
}

TEST_F(ZipExtract, SurvivesEveryFailure) {
    const std::string path = Path(Sound().Bytes());
    const std::set<std::string> whole = {"stored", std::string(1000, 'b'), std::string(1000, 'c')};
    const auto work = [&](bool write) {
        SZipFile archive(path.c_str());
        const int faults = SZipVerifier(archive).Verify();
        return faults + (write ? SZipExtractor(archive).Extract((folder_ / "out").c_str()) : 0);
    };
    for (int nth = 1;; ++nth) {
        FailNthAllocation fail(nth);
        int faults = 0;
        const std::string thrown = Thrown([&] { faults = work(false); });
        if (!fail.Triggered()) break;
        EXPECT_TRUE(thrown == "SEOutOfMemory" || faults != 0) << thrown;
        ASSERT_LT(nth, 300);
    }
    for (int nth = 1;; ++nth) {
        fs::remove_all(folder_.Path() / "out");
        bool noticed;
        {
            FailNthFileOperation fail(nth, true);
            int faults = 0;
            const std::string thrown = Thrown([&] { faults = work(true); });
            noticed = faults != 0 || !thrown.empty();
            if (!fail.Triggered()) break;
        }
        EXPECT_TRUE(noticed || Files().size() == 3) << nth;
        for (const auto& [name, content] : Files()) {
            EXPECT_TRUE(name.starts_with(".brcore8") || whole.contains(content)) << name;
        }
        ASSERT_LT(nth, 300);
    }
}

}  // namespace
