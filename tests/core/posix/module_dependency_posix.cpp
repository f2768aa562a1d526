// What only one system has in its folders, and where it looks.

#include <brcore8/core/module_dependency.h>
#include <brcore8/strings/string_table.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <cstdlib>
#include <string>

#include "streams/support.h"
#include "support/program_image.h"

namespace {

using List = SModuleDependencyList;

class ModulesPosix : public testing::Test {
protected:
    void SetUp() override { path_ = getenv("PATH"); }
    void TearDown() override { setenv("PATH", path_.c_str(), 1); }

    // Where the list has the module, from the test's folder on; "" when it has not.
    std::string Find(const std::string& module, const SStringTable& folders = SStringTable()) {
        const List list((folder_ / "program.exe").c_str(), folders);
        const SModuleFileInfo* const found = list.LookupModule(module.c_str(), 0);
        return found != nullptr
                   ? std::string(found->GetFullPath()).substr(folder_.Path().string().size() + 1)
                   : "";
    }

    Folder folder_;

private:
    std::string path_;
};

TEST_F(ModulesPosix, TheFoldersOfPathComeLastAndNamesMatchInAnyCase) {
    for (const char* folder : {"caller", "first", "second"})
        std::filesystem::create_directory(folder_.Path() / folder);
    ProgramImage({"here.dll", "Caller.DLL", "PATH.dll", "later.dll", "exact.dll"})
        .Write(folder_ / "program.exe");
    const ProgramImage library({});
    for (const char* path : {"Here.dll", "caller/here.dll", "caller/caller.dll", "first/caller.dll",
                             "first/Path.dll", "second/path.dll", "second/later.dll",
                             "first/EXACT.dll", "first/exact.dll", "first/eXact.dll"})
        library.Write(folder_ / path);
    std::filesystem::create_directory(folder_.Path() / "first/later.dll");
    const std::string folders =
        folder_ / "none:" + (folder_ / "first") + "::" + (folder_ / "second");
    setenv("PATH", folders.c_str(), 1);
    SStringTable callers;
    callers.Add(SString(folder_ / "caller"));
    EXPECT_EQ(Find("here.dll", callers), "Here.dll");
    EXPECT_EQ(Find("caller.dll", callers), "caller/caller.dll");
    EXPECT_EQ(Find("caller.dll"), "first/caller.dll");
    EXPECT_EQ(Find("path.dll"), "first/Path.dll");
    EXPECT_EQ(Find("later.dll"), "second/later.dll");
    EXPECT_EQ(Find("exact.dll"), "first/exact.dll");
    unsetenv("PATH");
    EXPECT_EQ(Find("path.dll"), "");
}

TEST_F(ModulesPosix, OnlyRegularFilesAreOpened) {
    ASSERT_EQ(mkfifo((folder_ / "pipe.dll").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", folder_ / "device.dll");
    std::filesystem::create_symlink("program.exe", folder_ / "link.dll");
    ProgramImage({"pipe.dll", "device.dll", "link.dll"}).Write(folder_ / "program.exe");
    EXPECT_EQ(Find("pipe.dll"), "");
    EXPECT_EQ(Find("device.dll"), "");
    EXPECT_EQ(Find("link.dll"), "link.dll");
    for (const char* path : {"pipe.dll", "device.dll"})
        EXPECT_EQ(List((folder_ / path).c_str()).GetStatus(), List::FileNotFound) << path;
}

}  // namespace
