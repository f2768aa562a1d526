// Logs on what the other system has not, and the programs that show them.

#include <brcore8/core/dump.h>
#include <brcore8/core/trace.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <chrono>
#include <climits>
#include <cwchar>
#include <string>
#include <thread>

#include "streams/support.h"

namespace {

TEST(DumpFilePosix, OnlyRegularFilesAreLogs) {
    const Folder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const int reader = open((folder / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_EQ(mkfifo((folder / "lonely").c_str(), 0600), 0);
    SDumpFile log;
    for (const std::string& path :
         {folder / "pipe", folder / "lonely", std::string("/dev/null"), std::string("/dev/full")}) {
        for (const int backup : {0, 1}) {
            SCOPED_TRACE(path);
            log.Init(path.c_str(), backup);
            EXPECT_FALSE(log.IsOpen());
            log << "swallowed";
        }
    }
    close(reader);
    EXPECT_EQ(folder.Entries(), 2);
}

TEST(DumpFilePosix, AFullDiskSwallowsWhatDoesNotFit) {
    const Folder folder;
    const std::string path = folder / "program.log";
    rlimit usual;
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &usual), 0);
    const auto previous = signal(SIGXFSZ, SIG_IGN);
    {
        SDumpFile log(path.c_str());
        rlimit low = usual;
        low.rlim_cur = 5;
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
        log << "123"
            << "456"
            << "789";
        setrlimit(RLIMIT_FSIZE, &usual);
        log << "\nroom again";
    }
    signal(SIGXFSZ, previous);
    EXPECT_EQ(Get(path), "12345\r\nroom again");
}

TEST(DumpDebugPosix, WritesToStandardError) {
    SDumpDebug dump;
    EXPECT_STREQ(dump.GetDumperName(), "SDumpDebug");
    testing::internal::CaptureStderr();
    dump << "seen " << 1 << static_cast<const char*>(nullptr);
    dump.EndLine();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "seen 1\n");
}

// --- Show: the programs are scripts that note how they were called ---------------------------

class ShowLog : public testing::Test {
protected:
    void SetUp() override {
        path_ = getenv("PATH");
        setenv("PATH", (folder_ / "bin").c_str(), 1);
        std::filesystem::create_directory(folder_.Path() / "bin");
    }
    void TearDown() override { setenv("PATH", path_.c_str(), 1); }

    // A program that notes its name and arguments and does what `then` says.
    void Make(const char* name, const std::string& then) {
        const std::string program = folder_ / "bin/" + name;
        Put(program, "#!/bin/sh\n{ echo " + std::string(name) +
                         "; for word; do echo \"$word\"; done; } >>'" + (folder_ / "calls") +
                         "'\n" + then + "\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    }
    std::string Calls() {
        const std::string calls = Get(folder_ / "calls");
        std::filesystem::remove(folder_ / "calls");
        return calls;
    }

    Folder folder_;
    const std::string log_ = folder_ / "a log.txt";

private:
    std::string path_;
};

TEST_F(ShowLog, ByTheViewerElseByTheEditor) {
    const std::string edit =
        "x-terminal-emulator\n-e\n/bin/sh\n-c\n"
        "exec ${VISUAL:-${EDITOR:-vi}} \"$1\"\nsh\n" +
        log_ + "\n";
    const std::string view = "xdg-open\n" + log_ + "\n";
    SDumpFile log(log_.c_str());
    log.Show();  // neither is there: nothing happens
    EXPECT_FALSE(std::filesystem::exists(folder_ / "calls"));
    Make("x-terminal-emulator", "");
    log.Show();
    EXPECT_EQ(Calls(), edit);
    Make("xdg-open", "exit 3");
    log.Show();
    EXPECT_EQ(Calls(), view + edit);
    Make("xdg-open", "exit 0");
    log.Done();
    log.Show();  // a closed log keeps its path
    EXPECT_EQ(Calls(), view);
}

TEST_F(ShowLog, AViewerThatStaysIsLeftAlone) {
    Make("xdg-open", "/bin/sleep 4");
    Make("x-terminal-emulator", "");
    SDumpFile log(log_.c_str());
    const auto began = std::chrono::steady_clock::now();
    log.Show();
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(3500));
    EXPECT_EQ(Calls(), "xdg-open\n" + log_ + "\n");
}

TEST_F(ShowLog, TheEditorIsTheUsers) {
    Make("x-terminal-emulator", "shift; exec \"$@\"");
    Make("my-editor", "");
    setenv("EDITOR", "my-editor --wait", 1);
    SDumpFile log(log_.c_str());
    log.Show();
    unsetenv("EDITOR");
    const std::string calls = Calls();
    const std::string expected = "my-editor\n--wait\n" + log_ + "\n";
    ASSERT_GE(calls.size(), expected.size());
    EXPECT_EQ(calls.substr(calls.size() - expected.size()), expected);
}

// --- Probes ----------------------------------------------------------------------------------

TEST(ProbesPosix, StopAtTheEndOfWhatIsMapped) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    // Readable, writable, no access.
    char* const start =
        static_cast<char*>(mmap(nullptr, 3 * page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(start, MAP_FAILED);
    char* const end = start + 2 * page;
    ASSERT_EQ(mprotect(start + page, page, PROT_READ | PROT_WRITE), 0);
    ASSERT_EQ(mprotect(end, page, PROT_NONE), 0);
    const auto pages = static_cast<unsigned>(page);
    EXPECT_EQ(SIsValidAddress(start, 2 * pages, 0), 1);
    EXPECT_EQ(SIsValidAddress(start, 2 * pages, 1), 0);
    EXPECT_EQ(SIsValidAddress(start, 2 * pages + 1, 0), 0);
    EXPECT_EQ(SIsValidAddress(end - 1, 1, 1), 1);
    EXPECT_EQ(SIsValidAddress(end, 1, 0), 0);
    end[-1] = end[-2] = 'x';
    EXPECT_EQ(SIsValidString(end - 2, 2), 1);
    EXPECT_EQ(SIsValidString(end - 2, 3), 0);
    EXPECT_EQ(SIsValidString(end - 2, -1), 0);
    EXPECT_EQ(SIsValidString(end - 3, -1), 1);
    auto* const wide = reinterpret_cast<wchar_t*>(end) - 1;
    *wide = L'x';
    EXPECT_EQ(SIsValidString(wide, 1), 1);
    EXPECT_EQ(SIsValidString(wide, 2), 0);
    *wide = 0;
    EXPECT_EQ(SIsValidString(wide, INT_MAX), 1);
    munmap(start, 3 * page);
}

}  // namespace
