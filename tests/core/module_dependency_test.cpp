#include <brcore8/core/module_dependency.h>
#include <brcore8/strings/string_table.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "streams/support.h"
#include "support/failing_allocator.h"
#include "support/program_image.h"

namespace {

using List = SModuleDependencyList;
using Names = std::vector<std::string>;

// The modules of a folder and of nowhere else.
class Modules : public testing::Test {
protected:
    void Make(const char* name, const Names& imports) {
        ProgramImage(imports).Write(folder_ / name);
    }

    // "status: module module(missing missing)", in the order of the walk.
    std::string Walk(const char* program, unsigned options = List::FoldersOnly) {
        const List list((folder_ / program).c_str(), SStringTable(), options | List::FoldersOnly);
        std::string text = std::to_string(list.GetStatus()) + ":";
        Names modules;
        for (const SModuleFileInfo& module : list) {
            modules.emplace_back(module.GetFileName());
            Names missing;
            for (const SModuleFileInfo& name : module)
                missing.insert(missing.begin(), name.GetFileName());
            if (!missing.empty()) modules.back().append("(").append(Joined(missing)).append(")");
        }
        EXPECT_EQ(list.GetCount(), static_cast<int>(modules.size()));
        std::reverse(modules.begin(), modules.end());
        return text + (modules.empty() ? "" : " ") + Joined(modules);
    }
    static std::string Joined(const Names& names) {
        std::string text;
        for (const std::string& name : names)
            text.append(text.empty() ? "" : " ").append(name);
        return text;
    }

    Folder folder_;
};

TEST_F(Modules, AreWalkedDepthFirstInImportOrder) {
    Make("program.exe", {"a.dll", "gone.dll", "b.dll", "A.DLL"});
    Make("a.dll", {"c.dll", "b.dll"});
    Make("b.dll", {"GONE.dll", "also gone.dll"});
    Make("c.dll", {"program.exe"});
    EXPECT_EQ(Walk("program.exe"),
              "0: program.exe(gone.dll) a.dll c.dll b.dll(GONE.dll also gone.dll)");
    Put(folder_ / "c.dll", "no program");
    EXPECT_EQ(Walk("program.exe"), "0: program.exe(gone.dll) a.dll b.dll(GONE.dll also gone.dll)");
}

TEST_F(Modules, AreFoundAgainByTheList) {
    Make("Program.exe", {"a.dll"});
    Make("a.dll", {"gone.dll"});
    const std::string path = folder_ / "Program.exe";
    const List list(path.c_str());
    EXPECT_EQ(list.GetStatus(), List::Done);
    EXPECT_STREQ(list.GetErrorString(), "No error");
    const SModuleFileInfo* const first = list.GetNextModule(nullptr);
    ASSERT_NE(first, nullptr);
    EXPECT_STREQ(first->GetFileName(), "a.dll");
    EXPECT_EQ(std::filesystem::path(first->GetFullPath()), folder_ / "a.dll");
    const SModuleFileInfo* const missing = first->GetNextNotFoundModule(nullptr);
    EXPECT_STREQ(missing->GetFileName(), "gone.dll");
    EXPECT_STREQ(missing->GetFullPath(), "");
    EXPECT_EQ(first->GetNextNotFoundModule(missing), nullptr);
    const SModuleFileInfo* const program = list.GetNextModule(first);
    EXPECT_STREQ(program->GetFullPath(), path.c_str());
    EXPECT_EQ(list.GetNextModule(program), nullptr);

    EXPECT_EQ(list.LookupModule("PROGRAM.EXE", 0), program);
    EXPECT_EQ(list.LookupModule("program", 0), nullptr);
    EXPECT_EQ(list.LookupModule("gone.dll", 0), nullptr);
    EXPECT_EQ(list.LookupModule("program.exe", 1), nullptr);
    std::string other = path;
    std::transform(other.begin(), other.end(), other.begin(), ::toupper);
    EXPECT_EQ(list.LookupModule(other.c_str(), 1), program);
    EXPECT_EQ(list.LookupModule(nullptr, 0), nullptr);
}

TEST_F(Modules, StatusesHaveTheirTexts) {
    Put(folder_ / "text.txt",
        "MZ is how a program begins, and a text may begin so too; but no text"
        " goes on like a program does");
    Put(folder_ / "empty", "");
    const struct {
        const char* name;
        const char* path;
        int status;
        const char* text;
    } rows[] = {
        {"not there", "none.exe", List::FileNotFound, "File not found"},
        {"a folder", ".", List::FileNotFound, "File not found"},
        {"an empty file", "empty", List::FileNotFound, "File not found"},
        {"a text", "text.txt", List::NotPE, "Not a PE file"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const List list((folder_ / row.path).c_str());
        EXPECT_EQ(list.GetStatus(), row.status);
        EXPECT_STREQ(list.GetErrorString(), row.text);
        EXPECT_EQ(list.GetCount(), 0);
    }
    EXPECT_EQ(List(nullptr).GetStatus(), List::FileNotFound);
    EXPECT_EQ(List("").GetStatus(), List::FileNotFound);
    EXPECT_EQ(List(std::string(5000, 'x').c_str()).GetStatus(), List::FileNotFound);
}

TEST_F(Modules, TheCallersFoldersFollowTheProgramsOwn) {
    for (const char* folder : {"one", "two"})
        std::filesystem::create_directory(folder_.Path() / folder);
    Make("program.exe", {"here.dll", "one.dll", "both.dll", "two.dll"});
    Make("here.dll", {});
    for (const char* name :
         {"one/here.dll", "one/one.dll", "one/both.dll", "two/both.dll", "two/two.dll"})
        Make(name, {"gone.dll"});
    SStringTable folders;
    for (const char* folder : {"none", "one", "two"})
        folders.Add(SString((folder_ / folder).c_str()));
    const List list((folder_ / "program.exe").c_str(), folders);
    Names paths;
    for (const SModuleFileInfo& module : list)
        paths.insert(paths.begin(), std::filesystem::path(module.GetFullPath())
                                        .lexically_relative(folder_.Path())
                                        .generic_string());
    EXPECT_EQ(paths,
              (Names{"program.exe", "here.dll", "one/one.dll", "one/both.dll", "two/two.dll"}));
}

TEST_F(Modules, AProgramWithoutAFolderIsInTheCurrentOne) {
    Make("program.exe", {"a.dll"});
    Make("a.dll", {});
    const std::filesystem::path home = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    const List list("program.exe", SStringTable(), List::FoldersOnly);
    std::filesystem::current_path(home);
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_TRUE(std::filesystem::path(list.GetNextModule(nullptr)->GetFullPath()).is_absolute());
}

TEST_F(Modules, DelayedImportsAreReadWhenAsked) {
    Make("late.dll", {});
    for (const auto kind : {ProgramImage::Kind::Bits32, ProgramImage::Kind::Bits64}) {
        const Names imports = {"now.dll"}, delayed = {"late.dll", "never.dll"};
        ProgramImage(imports, kind, delayed).Write(folder_ / "program.exe");
        EXPECT_EQ(Walk("program.exe"), "0: program.exe(now.dll)");
        EXPECT_EQ(Walk("program.exe", List::DelayedImports),
                  "0: program.exe(now.dll never.dll) late.dll");
    }
    ProgramImage({}, ProgramImage::Kind::Bits32, {"late.dll"})
        .Absolute(1)
        .Write(folder_ / "old.exe");
    EXPECT_EQ(Walk("old.exe", List::DelayedImports), "0: old.exe late.dll");
}

// Made by two tool chains; what they import was read by another program.
TEST_F(Modules, ProgramsOfRealToolChains) {
    const struct {
        const char* name;
        Names imports;
    } rows[] = {
        {"real32.exe", {"ADVAPI32.dll", "KERNEL32.dll", "USER32.dll"}},
        {"real64.dll", {"ADVAPI32.dll", "KERNEL32.dll", "USER32.dll"}},
        {"delayed64.exe", {"KERNEL32.dll", "late.dll"}},
    };
    for (const auto& row : rows) {
        std::filesystem::copy(std::filesystem::path(BRCORE8_REAL_PROGRAMS) / row.name,
                              folder_.Path() / row.name);
        EXPECT_EQ(Walk(row.name, List::DelayedImports),
                  std::string("0: ").append(row.name) + "(" + Joined(row.imports) + ")");
    }
}

// --- Damaged programs ------------------------------------------------------------------------

TEST_F(Modules, DamagedProgramsGiveTheirStatusOrWhatMakesSense) {
    using Image = ProgramImage;
    constexpr auto whole = "0: damaged.exe(one.dll two.dll)";
    constexpr auto nothing = "0: damaged.exe";
    const struct {
        const char* name;
        std::function<void(Image&)> damage;
        const char* expected;
    } rows[] = {
        {"nothing", [](Image&) {}, whole},
        {"no MZ", [](Image& i) { i.Flip(1); }, "2:"},
        {"63 bytes", [](Image& i) { i.Truncate(63); }, "2:"},
        {"64 bytes", [](Image& i) { i.Truncate(64); }, "2:"},
        {"header offset beyond the file", [](Image& i) { i.Put32(0x3C, 0xFFFFFFFF); }, "2:"},
        {"header offset at the end",
         [](Image& i) { i.Put32(0x3C, static_cast<std::uint32_t>(i.Bytes().size()) - 3); }, "2:"},
        {"signature with another end", [](Image& i) { i.Flip(Image::NewHeader + 3); }, "2:"},
        {"nothing after the signature", [](Image& i) { i.Truncate(Image::NewHeader + 4); },
         nothing},
        {"half an optional header", [](Image& i) { i.Truncate(i.Directory(1) + 2); }, nothing},
        {"optional header beyond the file", [](Image& i) { i.Put16(Image::OptionalSize, 0xFFFF); },
         nothing},
        {"unknown magic", [](Image& i) { i.Flip(Image::Magic); }, nothing},
        {"one directory", [](Image& i) { i.Put32(i.DirectoryCount(), 1); }, nothing},
        {"no import directory", [](Image& i) { i.Put32(i.Directory(1), 0); }, nothing},
        {"directory before the section", [](Image& i) { i.Put32(i.Directory(1), 0xFFF); }, nothing},
        {"directory beyond all", [](Image& i) { i.Put32(i.Directory(1), 0xFFFFFFF0); }, nothing},
        {"no sections", [](Image& i) { i.Put16(Image::SectionCount, 0); }, nothing},
        {"section beyond the file", [](Image& i) { i.Put32(i.Section() + 20, 0xFFFFFFFF); },
         nothing},
        {"section larger than the file", [](Image& i) { i.Put32(i.Section() + 16, 0xFFFFFFFF); },
         whole},
        {"section of half the table", [](Image& i) { i.Put32(i.Section() + 16, 30); }, nothing},
        {"second name outside", [](Image& i) { i.Put32(Image::NameField(1), 0x80000000); },
         "0: damaged.exe(one.dll)"},
        {"last name without an end", [](Image& i) { i.Truncate(i.Bytes().size() - 1); },
         "0: damaged.exe(one.dll)"},
        {"one name twice",
         [](Image& i) {
             for (const std::size_t byte : {0, 1, 2, 3})
                 i.Flip(Image::NameField(1) + byte, i.Bytes()[Image::NameField(0) + byte] ^
                                                        i.Bytes()[Image::NameField(1) + byte]);
         },
         "0: damaged.exe(one.dll one.dll)"},
    };
    for (const auto& row : rows) {
        for (const auto kind : {Image::Kind::Bits32, Image::Kind::Bits64}) {
            SCOPED_TRACE(row.name);
            Image image({"one.dll", "two.dll"}, kind);
            row.damage(image);
            image.Write(folder_ / "damaged.exe");
            EXPECT_EQ(Walk("damaged.exe"), row.expected);
        }
    }
}

TEST_F(Modules, EveryCutAndEveryDamagedByteIsSurvived) {
    const ProgramImage whole({"one.dll", "two.dll"}, ProgramImage::Kind::Bits64, {"three.dll"});
    const auto expect = [&](const ProgramImage& image, const char* statuses) {
        // Anew: some file systems flush a file that is cut and written again.
        std::filesystem::remove(folder_ / "damaged.exe");
        image.Write(folder_ / "damaged.exe");
        const std::string result = Walk("damaged.exe", List::DelayedImports);
        return std::string(statuses).find(result[0]) != std::string::npos &&
               (result[0] != '0' || result.starts_with("0: damaged.exe"));
    };
    for (std::size_t size = 0; size <= whole.Bytes().size(); ++size) {
        const char* const status = size == 0 ? "1" : size < ProgramImage::NewHeader + 4 ? "2" : "0";
        ASSERT_TRUE(expect(ProgramImage(whole).Truncate(size), status)) << size;
    }
    for (std::size_t at = 0; at < whole.Bytes().size(); ++at)
        ASSERT_TRUE(expect(ProgramImage(whole).Flip(at), "02")) << at;
}

// --- Names -----------------------------------------------------------------------------------

TEST_F(Modules, NamesThatAreNoFileNamesAreFoundNowhere) {
    std::filesystem::create_directory(folder_.Path() / "folder.dll");
    Make("there.dll", {});
    const std::string longest(259, 'n');
    const std::string there = folder_ / "there.dll";
    const struct {
        const char* name;
        std::string import;
        std::string listed;
    } rows[] = {
        {"empty", "", ""},
        {"a full path", there, there},
        {"a folder before it", "./there.dll", "./there.dll"},
        {"a folder before it, of Windows", ".\\there.dll", ".\\there.dll"},
        {"a drive before it", "c:there.dll", "c:there.dll"},
        {"a folder", "folder.dll", "folder.dll"},
        {"the folder above", "..", ".."},
        {"a device", "NUL", "NUL"},
        {"a tab", "a\tb.dll", "a\tb.dll"},
        {"259 bytes", longest, longest},
        {"260 bytes", longest + "n", longest},
        {"100,000 bytes", std::string(100'000, 'n'), longest},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Make("program.exe", {row.import, "there.dll"});
        EXPECT_EQ(Walk("program.exe"), "0: program.exe(" + row.listed + ") there.dll");
    }
}

// --- Size ------------------------------------------------------------------------------------

class Stopwatch {
public:
    double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - began_).count();
    }

private:
    std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

class LargeModules : public Modules {
protected:
    static std::string Numbered(int number) {
        return std::string("m").append(std::to_string(number)).append(".dll");
    }
    // Within five seconds, and time for a sanitizer or a busy machine.
    struct TimedList : private Stopwatch, List {
        explicit TimedList(const std::string& path, unsigned options = List::FoldersOnly)
            : List(path.c_str(), SStringTable(), options) {
            EXPECT_LT(Seconds(), 15);
        }
    };
    TimedList WalkAll() const { return TimedList(folder_ / "program.exe"); }
    static long Missing(const SModuleFileInfo& module) {
        return std::distance(module.begin(), module.end());
    }
};

TEST_F(LargeModules, TablesOfManyImports) {
    Make("there.dll", {});
    Names repeats(5000, "there.dll");
    repeats.resize(10000, "gone.dll");
    Names different;
    for (int i = 0; i < 52000; ++i)
        different.push_back(Numbered(i));
    const struct {
        const char* name;
        const Names& imports;
        int modules;
        long missing;
    } rows[] = {
        {"5,000 of each of two", repeats, 2, 5000},
        {"52,000 that are not there", different, 1, 52000},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Make("program.exe", row.imports);
        const TimedList list = WalkAll();
        EXPECT_EQ(list.GetCount(), row.modules);
        EXPECT_EQ(Missing(*list.LookupModule("program.exe", 0)), row.missing);
    }
}

TEST_F(LargeModules, ATableWithoutEndEnds) {
    ProgramImage endless(Names(150'000, "gone.dll"));
    endless.Write(folder_ / "program.exe");
    const TimedList list = WalkAll();
    EXPECT_EQ(list.GetStatus(), List::Done);
    EXPECT_EQ(Missing(*list.GetNextModule(nullptr)), 100'000);
}

TEST_F(LargeModules, TenThousandMissingInThePlatformsFolders) {
    Names names;
    for (int i = 0; i < 10'000; ++i)
        names.push_back(std::string("brcore8-none-").append(Numbered(i)));
    Make("program.exe", names);
    const TimedList list(folder_ / "program.exe", List::Imports);
    EXPECT_EQ(Missing(*list.GetNextModule(nullptr)), 10'000);
}

TEST_F(LargeModules, AChainOfFiveThousand) {
    constexpr int Length = 5000;
    Make("program.exe", {Numbered(1)});
    for (int i = 1; i <= Length; ++i)
        Make(Numbered(i).c_str(), {Numbered(i + 1)});
    const TimedList list = WalkAll();
    EXPECT_EQ(list.GetCount(), Length + 1);
    const SModuleFileInfo* const last = list.GetNextModule(nullptr);
    EXPECT_EQ(last->GetFileName(), Numbered(Length));
    EXPECT_EQ(last->GetNextNotFoundModule(nullptr)->GetFileName(), Numbered(Length + 1));
}

TEST_F(LargeModules, SharedByFortyLevelsAndInRings) {
    constexpr int Levels = 40;
    Make("program.exe", {"m0.dll", "n0.dll", "program.exe"});
    for (int i = 0; i < Levels; ++i) {
        const std::string next = std::to_string((i + 1) % Levels) + ".dll";
        for (const char* side : {"m", "n"})
            Make((side + std::to_string(i) + ".dll").c_str(), {"m" + next, "n" + next});
    }
    EXPECT_EQ(WalkAll().GetCount(), 2 * Levels + 1);
}

// --- Faults ----------------------------------------------------------------------------------

TEST_F(Modules, WithoutMemoryTheListIsShorter) {
    Make("program.exe", {"a.dll", "gone.dll"});
    Make("a.dll", {"b.dll"});
    Make("b.dll", {"gone.dll"});
    const std::string path = folder_ / "program.exe";
    const SString itself(folder_.Path().string());
    SStringTable folders;
    folders.Add(itself);
    for (int nth = 1;; ++nth) {
        FailNthAllocation fail(nth);
        const List list(path.c_str(), folders, List::FoldersOnly);
        if (!fail.Triggered()) {
            EXPECT_EQ(list.GetStatus(), List::Done);
            EXPECT_EQ(list.GetCount(), 3);
            break;
        }
        EXPECT_EQ(list.GetStatus(), List::GeneralFailure) << nth;
        EXPECT_STREQ(list.GetErrorString(), "General failure");
        EXPECT_LE(list.GetCount(), 3);
    }
}

TEST_F(Modules, WhatCannotBeReadIsNotFound) {
    Make("program.exe", {"a.dll"});
    Make("a.dll", {"gone.dll"});
    const std::string whole = "0: program.exe a.dll(gone.dll)";
    ASSERT_EQ(Walk("program.exe"), whole);
    int program = 0, imported = 0;
    for (int nth = 1;; ++nth) {
        FailNthFileOperation fail(nth);
        const std::string result = Walk("program.exe");
        if (!fail.Triggered()) break;
        program += result == "1:";
        imported += result == "0: program.exe";
        EXPECT_TRUE(result == "1:" || result == "0: program.exe" || result == whole) << result;
    }
    EXPECT_GE(program, 4);  // opening, its size, going to a place, reading
    EXPECT_GE(imported, 4);
}

}  // namespace
