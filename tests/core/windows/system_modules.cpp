// The module list against the loader's own view, and logs shown by the shell.

#include <brcore8/core/dump.h>
#include <brcore8/core/module_dependency.h>
#include <gtest/gtest.h>

#include <string>

#include "streams/support.h"

// Last: its global names shadow ours.
#include <windows.h>

#include <shellapi.h>

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
        Set(".brcore8log", "brcore8.log");
        Set("brcore8.log\\shell\\open\\command", command);
    }
    ~Association() {
        for (const char* key : {".brcore8log", "brcore8.log\\shell\\open\\command",
                                "brcore8.log\\shell\\open", "brcore8.log\\shell", "brcore8.log"})
            RegDeleteKeyA(HKEY_CLASSES_ROOT, key);
    }

private:
    static void Set(const char* key, const std::string& value) {
        EXPECT_EQ(RegSetValueA(HKEY_CLASSES_ROOT, key, REG_SZ, value.c_str(),
                               static_cast<DWORD>(value.size())),
                  ERROR_SUCCESS);
    }
};

TEST(DumpFileWindows, IsShownByTheProgramOfItsKind) {
    const Folder folder;
    const std::string path = folder / "a.brcore8log";
    const Association association("cmd.exe /c copy %1 " + folder / "shown");
    SDumpFile log(path.c_str());
    log << "content";
    // Else the editor would come up, and stay.
    char program[MAX_PATH] = "";
    ASSERT_GT(reinterpret_cast<INT_PTR>(FindExecutableA(path.c_str(), nullptr, program)), 32);
    ASSERT_NE(std::string(program).find("cmd.exe"), std::string::npos) << program;
    log.Show();
    for (int i = 0; i < 300 && Get(folder / "shown").empty(); ++i)
        Sleep(100);
    EXPECT_EQ(Get(folder / "shown"), "content");
}

TEST(DumpFileWindows, DevicesAndFilesInUseAreNoLogs) {
    const Folder folder;
    const std::string path = folder / "held.log";
    Put(path, "kept");
    const HANDLE held = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    SDumpFile log;
    for (const std::string& name : {path, std::string("NUL"), std::string("\\\\.\\pipe\\none")}) {
        log.Init(name.c_str(), 1);
        EXPECT_FALSE(log.IsOpen()) << name;
        log << "swallowed";
    }
    CloseHandle(held);
    EXPECT_EQ(Get(path), "kept");
}

}  // namespace
