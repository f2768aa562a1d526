#include <brcore8/core/dump.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/object.h>
#include <brcore8/streams/output_stream.h>
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "streams/support.h"
#include "support/failing_allocator.h"

namespace {

// Keeps what it is given.
class TextDump : public SDump {
public:
    const char* GetDumperName() const override { return "TextDump"; }
    // What `operand` is written as.
    template <typename Operand>
    static std::string Of(const Operand& operand) {
        TextDump dump;
        EXPECT_EQ(&(dump << operand), &dump);
        return dump.text_;
    }
    std::string text_;

protected:
    void Output(const char* text) override {
        if (text != nullptr) text_ += text;
    }
};

class Described : public SObject {
public:
    void Dump(SDump& dump) const override {
        dump << "described " << 7;
        if (fails) throw 7;
    }
    bool fails = false;
};

TEST(Dump, WritesEveryKindOfOperand) {
    constexpr auto pointer = [](std::uintptr_t value) {
        return reinterpret_cast<const void*>(value);
    };
    Described object;
    const GUID guid = {0x21401, 0xAB, 0xCDEF, {0xC0, 1, 2, 3, 4, 5, 6, 0x46}};
    constexpr bool wideLong = sizeof(long) == 8;
    const struct {
        const char* name;
        std::string written;
        std::string expected;
    } rows[] = {
        {"least int", TextDump::Of(INT_MIN), "-2147483648"},
        {"greatest unsigned", TextDump::Of(UINT_MAX), "4294967295"},
        {"least long", TextDump::Of(LONG_MIN), wideLong ? "-9223372036854775808" : "-2147483648"},
        {"greatest unsigned long", TextDump::Of(ULONG_MAX),
         wideLong ? "18446744073709551615" : "4294967295"},
        {"least 64 bits", TextDump::Of(INT64_MIN), "-9223372036854775808"},
        {"greatest 64 bits", TextDump::Of(UINT64_MAX), "18446744073709551615"},
        {"small kinds are int", TextDump::Of(static_cast<signed char>(-1)), "-1"},
        {"double", TextDump::Of(0.1), "0.1"},
        {"greatest double", TextDump::Of(-DBL_MAX), "-1.79769e+308"},
        {"least double", TextDump::Of(-std::numeric_limits<double>::denorm_min()), "-4.94066e-324"},
        {"no number", TextDump::Of(std::nan("")), "nan"},
        {"infinite", TextDump::Of(-HUGE_VAL), "-inf"},
        {"pointer", TextDump::Of(pointer(0x1234)), "0x00001234"},
        {"null pointer", TextDump::Of(pointer(0)), "0x00000000"},
        {"highest pointer", TextDump::Of(pointer(UINTPTR_MAX)),
         std::string("0x").append(2 * sizeof(void*), 'f')},
        {"GUID", TextDump::Of(guid), "{00021401-00AB-CDEF-C001-020304050646}"},
        {"text", TextDump::Of("50%s"), "50%s"},
        {"null text", TextDump::Of(static_cast<const char*>(nullptr)), ""},
        {"SString", TextDump::Of(SString("string")), "string"},
        {"object", TextDump::Of(&object), "described 7"},
        {"null object", TextDump::Of(static_cast<SObject*>(nullptr)), "NULL Pointer"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.written, row.expected) << row.name;
    object.fails = true;
    EXPECT_EQ(TextDump::Of(&object), "described 7");
}

TEST(Dump, SinksDoNothingByDefaultAndEndLinesByLineFeed) {
    TextDump dump;
    dump << "kept";
    dump.Clear();
    dump.Show();
    dump.Flush();
    dump.EndLine();
    EXPECT_EQ(dump.text_, "kept\n");
}

// --- Streams ---------------------------------------------------------------------------------

TEST(DumpStream, WritesToItsStreamAndSwallowsWhatThatThrows) {
    struct Failing : SOutputStream {
        void Write(int) override { throw SEIOException("Write failed"); }
        unsigned long Write(const void*, unsigned long) override { throw 7; }
    } failing;
    SDumpStream lost(failing);
    lost << "lost" << 1;
    lost.EndLine();

    struct Keeping : SOutputStream {
        using SOutputStream::Write;
        void Write(int byte) override { text += static_cast<char>(byte); }
        std::string text;
    } kept;
    SDumpStream dump(kept);
    EXPECT_STREQ(dump.GetDumperName(), "SDumpStream");
    dump << "one " << 1 << static_cast<const char*>(nullptr) << "\n";
    EXPECT_EQ(kept.text, "one 1\n");
}

// --- Files -----------------------------------------------------------------------------------

TEST(DumpFile, AppendsAndEndsLinesAsTextFilesDo) {
    const Folder folder;
    const std::string path = folder / "program.log";
    {
        SDumpFile log(path.c_str());
        EXPECT_TRUE(log.IsOpen());
        EXPECT_STREQ(log.GetDumperName(), ("SDumpFile - " + path).c_str());
        log << "one\n" << static_cast<const char*>(nullptr) << "\r\n";
        log.Clear();
        log << "still there";
        log.Done();
        EXPECT_FALSE(log.IsOpen());
        EXPECT_STREQ(log.GetDumperName(), "SDumpFile");
        log << "swallowed";
        log.Clear();
        log.Done();
        log.Init(path.c_str(), 0);
        log << "\nagain";
    }
    EXPECT_EQ(Get(path), "one\r\n\r\r\nstill there\r\nagain");
}

TEST(DumpFile, LongTextsArriveWhole) {
    const Folder folder;
    const std::string path = folder / "program.log";
    const std::string line = std::string(99, 'x') + "\n";
    std::string text, expected;
    for (int i = 0; i < 1000; ++i) {
        text += line;
        expected += line.substr(0, 99) + "\r\n";
    }
    SDumpFile log(path.c_str());
    log << text.c_str();
    {
        FailNthAllocation fail(1, true);
        log << text.c_str();
        EXPECT_TRUE(fail.Triggered());
    }
    EXPECT_EQ(Get(path), expected + expected);
}

TEST(DumpFile, TheUsualNameIsInTheCurrentFolder) {
    const Folder folder;
    const std::filesystem::path home = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    {
        SDumpFile log;
        log << "here";
    }
    std::filesystem::current_path(home);
    EXPECT_EQ(Get(folder / "TVCORE.LOG"), "here");
}

TEST(DumpFile, TheBackupIsBesideTheLog) {
    const struct {
        const char* name;
        const char* log;
        const char* backup;
    } rows[] = {
        {"an extension", "TVCORE.LOG", "TVCORE_LOG.bak"},
        {"two dots", "a.b.c", "a.b_c.bak"},
        {"no dot anywhere", "log", "log.bak"},
        {"dot in the folder alone", "my.logs/log", "my_logs/log.bak"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Folder folder;
        for (const char* made : {"my.logs", "my_logs"})
            std::filesystem::create_directory(folder.Path() / made);
        Put(folder / row.log, "the last run");
        Put(folder / row.backup, "the run before");
        SDumpFile log((folder / row.log).c_str(), 1);
        log << "this run";
        EXPECT_EQ(Get(folder / row.log), "this run");
        EXPECT_EQ(Get(folder / row.backup), "the last run");
    }
}

TEST(DumpFile, ABackupThatCannotBeMadeLosesTheOldLog) {
    const Folder folder;
    Put(folder / "a.log", "old");
    std::filesystem::create_directory(folder.Path() / "a_log.bak");
    Put(folder / "a_log.bak/file", "kept");
    SDumpFile log((folder / "a.log").c_str(), 1);
    log << "new";
    EXPECT_EQ(Get(folder / "a.log"), "new");
    EXPECT_EQ(Get(folder / "a_log.bak/file"), "kept");
}

TEST(DumpFile, WhatCannotBeOpenedSwallowsOutput) {
    const Folder folder;
    const std::string good = folder / "good.log";
    std::vector<std::pair<std::string, std::string>> rows = {
        {"no name", ""},
        {"a folder", folder.Path().string()},
        {"a folder that is not there", folder / "none/a.log"},
    };
    for (const std::size_t length : {260, 261, 1000, 5000}) {
        rows.emplace_back("a name of " + std::to_string(length) + " bytes",
                          std::string(length, 'x'));
    }
    SDumpFile log(good.c_str());
    for (const auto& [name, path] : rows) {
        for (const int backup : {0, 1}) {
            SCOPED_TRACE(name);
            log.Init(path.c_str(), backup);
            EXPECT_FALSE(log.IsOpen());
            EXPECT_STREQ(log.GetDumperName(), "SDumpFile");
            log << "swallowed\n";
            log.Clear();
        }
    }
    log.Init(nullptr, 1);
    EXPECT_FALSE(log.IsOpen());
    EXPECT_EQ(log.GetPath(), "");
    log.Show();  // without a path nothing is started
    log.Init(good.c_str(), 0);
    log << "usable";
    EXPECT_EQ(Get(good), "usable");
    EXPECT_EQ(folder.Entries(), 1);
}

TEST(DumpFile, TheLongestPathIsALog) {
    const Folder folder;
    std::string path = folder.Path().string();
    while (path.size() < 250) {
        path.append("/").append(std::min<std::size_t>(100, 253 - path.size()), 'd');
        std::filesystem::create_directory(path);
    }
    path.append("/").append(259 - path.size() - 1, 'f');
    for (const int backup : {0, 1}) {
        SDumpFile log(path.c_str(), backup);
        log << "deep";
        EXPECT_TRUE(log.IsOpen());
        EXPECT_EQ(Get(path), "deep");
    }
}

TEST(DumpFile, WithoutMemoryItStaysClosedAndWholeAgainAfterwards) {
    const Folder folder;
    const std::string path = folder / (std::string(60, 'a') + ".log").c_str();
    for (int nth = 1;; ++nth) {
        Put(path, "old");
        FailNthAllocation fail(nth, true);
        SDumpFile log(path.c_str(), 0);
        log << " new";
        if (!fail.Triggered()) break;
        EXPECT_FALSE(log.IsOpen()) << nth;
        ASSERT_LT(nth, 20);
    }
    EXPECT_EQ(Get(path), "old new");
}

TEST(DumpFileThreads, LinesOfEightThreadsStayWhole) {
    const Folder folder;
    const std::string path = folder / "shared.log";
    constexpr int Threads = 8, Lines = 400;
    {
        SDumpFile log(path.c_str());
        std::vector<std::jthread> threads;
        for (int i = 0; i < Threads; ++i) {
            threads.emplace_back([&log, i] {
                const std::string line =
                    std::string(i * 250 + 10, static_cast<char>('a' + i)) + "\n";
                for (int n = 0; n < Lines; ++n)
                    log << line.c_str();
            });
        }
    }
    std::vector<int> seen(Threads);
    const std::string text = Get(path);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t end = text.find("\r\n", at);
        ASSERT_NE(end, std::string::npos);
        const int thread = text[at] - 'a';
        ASSERT_TRUE(thread >= 0 && thread < Threads);
        ASSERT_EQ(text.find_first_not_of(text[at], at), end);
        ASSERT_EQ(end - at, static_cast<std::size_t>(thread * 250 + 10));
        ++seen[static_cast<std::size_t>(thread)];
        at = end + 1;
    }
    EXPECT_EQ(seen, std::vector<int>(Threads, Lines));
}

}  // namespace
