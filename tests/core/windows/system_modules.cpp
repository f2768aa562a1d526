// The module list against the loader's own view, and logs shown by the shell.

#include <brcore8/core/dump.h>
#include <brcore8/core/module_dependency.h>
#include <gtest/gtest.h>

#include <string>

#include "streams/support.h"

// Last: its global names shadow ours.
#include <windows.h>

namespace {

TEST(ModulesWindows, AreThoseThatTheLoaderReads) {
    auto* const image = reinterpret_cast<const char*>(GetModuleHandleA("brcore8.dll"));
    ASSERT_NE(image, nullptr);
    char path[MAX_PATH];
    ASSERT_LT(GetModuleFileNameA(GetModuleHandleA("brcore8.dll"), path, MAX_PATH), DWORD{MAX_PATH});
    const SModuleDependencyList list(path);
    ASSERT_EQ(list.GetStatus(), SModuleDependencyList::Done);
    EXPECT_NE(list.LookupModule("BRCORE8.dll", 0), nullptr);

    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(
        image + reinterpret_cast<const IMAGE_DOS_HEADER*>(image)->e_lfanew);
    const auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
        image + headers->OptionalHeader.DataDirectory[1].VirtualAddress);
    int count = 0;
    for (; import->Name != 0; ++import, ++count) {
        const SModuleFileInfo* const module = list.LookupModule(image + import->Name, 0);
        ASSERT_NE(module, nullptr) << image + import->Name;
        EXPECT_NE(GetFileAttributesA(module->GetFullPath()), INVALID_FILE_ATTRIBUTES);
    }
    EXPECT_GE(count, 2);
    EXPECT_GT(list.GetCount(), count);
}

// An association for the time of a test, of the kind that an installed program makes.
class Association {
public:
    explicit Association(const std::string& command) {
        Set("Software\\Classes\\.brcore8log", "brcore8.log");
        Set("Software\\Classes\\brcore8.log\\shell\\open\\command", command);
    }
    ~Association() {
        for (const char* key :
             {"\\.brcore8log", "\\brcore8.log\\shell\\open\\command", "\\brcore8.log\\shell\\open",
              "\\brcore8.log\\shell", "\\brcore8.log"})
            RegDeleteKeyA(HKEY_CURRENT_USER, (std::string("Software\\Classes") + key).c_str());
    }

private:
    static void Set(const char* key, const std::string& value) {
        EXPECT_EQ(RegSetValueA(HKEY_CURRENT_USER, key, REG_SZ, value.c_str(),
                               static_cast<DWORD>(value.size())),
                  ERROR_SUCCESS);
    }
};

TEST(DumpFileWindows, IsShownByTheProgramOfItsKind) {
    const Folder folder;
    const Association association("cmd.exe /c copy %1 " + folder / "shown");
    SDumpFile log((folder / "a.brcore8log").c_str());
    log << "content";
    log.Show();
    for (int i = 0; i < 200 && !std::filesystem::exists(folder / "shown"); ++i)
        Sleep(100);
    Sleep(200);
    EXPECT_EQ(Get(folder / "shown"), "content");
}

TEST(DumpFileWindows, DevicesAndReadOnlyFilesAreNoLogs) {
    const Folder folder;
    const std::string path = folder / "read-only.log";
    Put(path, "kept");
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    SDumpFile log;
    for (const std::string& name : {path, std::string("NUL"), std::string("\\\\.\\pipe\\none")}) {
        log.Init(name.c_str(), 0);
        EXPECT_FALSE(log.IsOpen()) << name;
        log << "swallowed";
    }
    EXPECT_EQ(Get(path), "kept");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
