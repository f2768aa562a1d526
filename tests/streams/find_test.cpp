#include <brcore8/streams/find.h>

#include "streams/support.h"

#include <set>

namespace {

namespace fs = std::filesystem;

class FileFind : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"a.txt", "b.txt", "plain", "[x]", "a-b.txt.old"})
            Put(folder_ / name, name);
        fs::create_directory(folder_.Path() / "sub.txt");
        Put(folder_ / "sub.txt/inner", "");
    }
    std::set<std::string> Names(const char* mask,
                                unsigned long attributes = SBaseFind::AllAttributes) {
        std::set<std::string> names;
        SFileFind find;
        for (int more = find.FindFile((folder_ / mask).c_str(), attributes); more;
             more = find.FindNextFileA()) {
            names.emplace(find.GetFileName().View());
            EXPECT_TRUE(fs::exists(std::string(find.GetFilePath().View())));
        }
        return names;
    }

    Folder folder_;
};

TEST_F(FileFind, GivesWhatMatches) {
    using Set = std::set<std::string>;
    const Set all = {"a.txt", "b.txt", "plain", "[x]", "a-b.txt.old", "sub.txt"};
    const unsigned long files = SBaseFind::AllAttributes & ~SBaseFind::Directory;
    const struct {
        const char* name;
        const char* mask;
        unsigned long attributes;
        Set found;
    } rows[] = {
        {"all", "*", SBaseFind::AllAttributes, all},
        {"all, the old way", "*.*", SBaseFind::AllAttributes, all},
        {"ending", "*.txt", SBaseFind::AllAttributes, {"a.txt", "b.txt", "sub.txt"}},
        {"files alone", "*.txt", files, {"a.txt", "b.txt"}},
        {"folders alone", "*", SBaseFind::Directory, {"sub.txt"}},
        {"any one", "?.txt", files, {"a.txt", "b.txt"}},
        {"brackets are letters", "[x*", files, {"[x]"}},
        {"one entry", "plain", SBaseFind::AllAttributes, {"plain"}},
        {"in a folder", "sub.txt/*", SBaseFind::AllAttributes, {"inner"}},
        {"nothing", "*.zip", SBaseFind::AllAttributes, {}},
        {"no attribute", "*", 0, {}},
        {"no such folder", "absent/*", SBaseFind::AllAttributes, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Names(row.mask, row.attributes), row.found);
    }
}

TEST_F(FileFind, DescribesTheEntry) {
    SFileFind find;
    STime time;
    EXPECT_EQ(find.FindNextFileA(), 0);
    EXPECT_EQ(find.GetFileName(), "");
    EXPECT_EQ(find.GetCreationTime(&time), 0);
    EXPECT_EQ(find.FindFile(nullptr), 0);
    ASSERT_EQ(find.FindFile((folder_ / "a-b.txt.old").c_str()), 1);
    EXPECT_EQ(find.GetLength(), 11u);
    EXPECT_EQ(find.IsDirectory(), 0);
    EXPECT_NE(find.GetAttributes(), 0u);
    EXPECT_EQ(find.GetCreationTime(nullptr), 0);
    ASSERT_EQ(find.GetCreationTime(&time), 1);
    EXPECT_LT(STime::Now().GetSeconds() - time.GetSeconds(), 600);

    SFile file;
    ASSERT_EQ(file.Open((folder_ / "plain").c_str(), SFile::WriteAccess), 0);
    EXPECT_EQ(file.SetModified(STime(1'000'000'000).GetFileTime()), 0);
    file.Close();
    EXPECT_LT(file.SetModified(0), 0);
    ASSERT_EQ(find.FindFile((folder_ / "plain").c_str()), 1);
    ASSERT_EQ(find.GetLastWriteTime(&time), 1);
    EXPECT_EQ(time, STime(1'000'000'000));
    EXPECT_EQ(find.FindNextFileA(), 0);
    EXPECT_EQ(find.GetLastWriteTime(&time), 0) << "the search is over";
}

}  // namespace
