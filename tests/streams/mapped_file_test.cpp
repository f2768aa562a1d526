#include <brcore8/streams/mapped_file.h>

#include "streams/support.h"

namespace {

TEST(MappedFile, IsTheFilesContent) {
    const Folder folder;
    const std::string text("zero\0and \xFF", 10);
    Put(folder / "file", text);
    SMappedFile file;
    EXPECT_EQ(file.View(), "");
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.Open((folder / "file").c_str()), 0);
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(file.View(), text);
    EXPECT_EQ(file.Open((folder / "file").c_str()), 0);
    EXPECT_EQ(file.GetSize(), 10);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(file.GetData(), nullptr);
    EXPECT_EQ(file.GetSize(), 0);
}

TEST(MappedFile, WhatCannotBeMappedLeavesItClosed) {
    const Folder folder;
    Put(folder / "empty", "");
    Put(folder / "file", "content");
    SMappedFile file;
    for (const char* name : {"none", "empty", ""}) {
        SCOPED_TRACE(name);
        ASSERT_EQ(file.Open((folder / "file").c_str()), 0);
        EXPECT_LT(file.Open((folder / name).c_str()), 0);
        EXPECT_FALSE(file.IsOpen());
    }
    FailNthFileOperation fail(1);
    EXPECT_LT(file.Open((folder / "file").c_str()), 0);
    EXPECT_TRUE(fail.Triggered());
}

// Sparse, so that the disk holds nothing of it; beyond what 32 bits count.
TEST(MappedFile, MayBeLargerThanFourGigabytes) {
    if constexpr (sizeof(void*) < 8) GTEST_SKIP() << "the addresses of 32 bits do not reach so far";
    const Folder folder;
    constexpr std::int64_t size = (std::int64_t{4} << 30) + 10;
    {
        SFile file;
        ASSERT_EQ(file.CreateNew((folder / "large").c_str()), 0);
        ASSERT_EQ(file.Seek(size - 3, SFile::Origin::Begin), size - 3);
        ASSERT_EQ(file.Write("end", 3), 3);
    }
    SMappedFile file;
    ASSERT_EQ(file.Open((folder / "large").c_str()), 0);
    EXPECT_EQ(file.GetSize(), size);
    EXPECT_EQ(file.View().substr(static_cast<std::size_t>(size) - 4), "\0end"sv);
}

}  // namespace
