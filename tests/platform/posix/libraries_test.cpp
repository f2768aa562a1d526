#include <gtest/gtest.h>

#include <dlfcn.h>
#include <zlib.h>

#include <filesystem>

#include "platform/platform.h"

namespace {

namespace fs = std::filesystem;

TEST(Libraries, AreFoundBesideTheProgram) {
    Dl_info real;
    ASSERT_NE(dladdr(reinterpret_cast<const void*>(&zlibVersion), &real), 0);
    const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
    fs::copy_file(real.dli_fname, folder / "libbrbeside8.so", fs::copy_options::overwrite_existing);
    const struct {
        const char* name;
        std::string library;
        bool found;
    } rows[] = {
        {"bare", "brbeside8", true},
        {"with the other system's ending", "brbeside8.dll", true},
        {"its ending in capitals", "brbeside8.DLL", true},
        {"case counts", "BRBESIDE8.dll", false},
        {"with a folder, as it stands", (folder / "libbrbeside8.so").string(), true},
        {"with a folder and no such file", (folder / "brbeside8.dll").string(), false},
        {"nowhere", "brnowhere8.dll", false},
        {"no name", "", false},
        {"ending alone", ".dll", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const HMODULE library = LoadLibraryA(row.library.c_str());
        EXPECT_EQ(library != nullptr, row.found);
        EXPECT_EQ(FreeLibrary(library), row.found);
        if (library == nullptr) continue;
        const HMODULE again = LoadLibraryA(row.library.c_str());
        EXPECT_NE(GetProcAddress(again, "zlibVersion"), nullptr);
        EXPECT_EQ(GetProcAddress(again, "nothingOfZlib"), nullptr);
        EXPECT_EQ(FreeLibrary(again), 1);
    }
    fs::remove(folder / "libbrbeside8.so");
}

}  // namespace
