// The store file: what may happen to it, and several processes at once.
#include <brcore8/settings/registry.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "support/page_scope.h"
#include "support/settings_home.h"

namespace {

using brcore8::SettingsDone;
using brcore8::SettingsFailed;

const HKEY kUser = SRegistry::CurrentUser();

class RegistryStoreTest : public SettingsTest {
protected:
    SString Read(const char* name, const char* below = "") const {
        SString text;
        SRegistry(kUser, Path(below), 0).GetProfile(name, &text, "-");
        return text;
    }
    long Write(const char* name, const char* value, const char* below = "") const {
        SRegistry key(kUser, Path(below), 1);
        return key.IsOpen() ? key.WriteProfile(name, value) : SettingsFailed;
    }
    std::string Bytes() const {
        std::ifstream file(UserStore(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void SetBytes(const std::string& bytes) const {
        std::ofstream(UserStore(), std::ios::binary) << bytes;
    }
    // The exit status of a child that runs `work`; minus the signal that ended it.
    static pid_t Start(const std::function<int()>& work) {
        const pid_t child = fork();
        if (child == 0) _exit(work());
        return child;
    }
    static int Finish(pid_t child) {
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }
    static int InChild(const std::function<int()>& work) { return Finish(Start(work)); }
};

using RegistryStoreThreads = RegistryStoreTest;

// --- where it is ---------------------------------------------------------------------------------

TEST_F(RegistryStoreTest, TheUsersFolderHoldsThePrivateFile) {
    const std::string home = std::filesystem::path(UserStore()).parent_path().string();
    const std::string oldHome = std::getenv("HOME") ? std::getenv("HOME") : "";
    const struct {
        const char* name;
        std::string config, file;
    } rows[] = {
        {"configuration folder", home + "/made/config", home + "/made/config/brcore8/settings.db"},
        {"relative one is ignored", "config", home + "/.config/brcore8/settings.db"},
        {"home", "", home + "/.config/brcore8/settings.db"},
    };
    SetVariable("BRCORE8_SETTINGS", "");
    SetVariable("HOME", home.c_str());
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SetVariable("XDG_CONFIG_HOME", row.config.c_str());
        EXPECT_STREQ(Read("v"), "-");
        EXPECT_FALSE(std::filesystem::exists(row.file)) << "reading makes nothing";
        ASSERT_EQ(Write("v", "x"), SettingsDone);
        struct stat facts;
        ASSERT_EQ(stat(row.file.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 0777, 0600u);
        ASSERT_EQ(stat(std::filesystem::path(row.file).parent_path().c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 0777, 0700u);
        std::filesystem::remove(row.file);
    }
    SetVariable("XDG_CONFIG_HOME", "");
    SetVariable("HOME", oldHome.c_str());
}

TEST_F(RegistryStoreTest, NamesForSQLiteAreFileNamesHere) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(std::filesystem::path(UserStore()).parent_path());
    for (const char* name : {":memory:", "file:x?mode=memory", "plain"}) {
        SetVariable("BRCORE8_SETTINGS", name);
        EXPECT_EQ(Write("v", name), SettingsDone);
        EXPECT_TRUE(std::filesystem::is_regular_file(std::string("./") + name)) << name;
    }
    std::filesystem::current_path(before);
}

// --- damage --------------------------------------------------------------------------------------

TEST_F(RegistryStoreTest, WhatIsNoStoreIsLeftAlone) {
    ASSERT_EQ(Write("v", "kept"), SettingsDone);
    const std::string whole = Bytes();
    std::string damaged = whole, foreign = whole;
    std::fill(damaged.begin() + 4096, damaged.end(), '\xFF');
    foreign[63] = 9;  // a version of the format that is not ours
    const struct {
        const char* name;
        std::string bytes;
    } rows[] = {{"text", std::string(9000, 'x')},
                {"cut in its head", whole.substr(0, 50)},
                {"cut behind its head", whole.substr(0, 4096)},
                {"cut in a page", whole.substr(0, whole.size() - 700)},
                {"pages overwritten", damaged},
                {"another format", foreign}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SetBytes(row.bytes);
        EXPECT_STREQ(Read("v"), "-");
        EXPECT_EQ(Write("v", "new"), SettingsFailed);
        EXPECT_TRUE(Bytes() == row.bytes) << "nobody repairs it by losing what it holds";
        std::filesystem::remove(UserStore());
    }
    SetBytes(whole);
    EXPECT_STREQ(Read("v"), "kept");
}

TEST_F(RegistryStoreTest, AnEmptiedFileIsAnEmptyStore) {
    ASSERT_EQ(Write("v", "old", "a"), SettingsDone);
    SRegistry key(kUser, Path("a"), 1);
    SetBytes("");
    EXPECT_STREQ(Read("v", "a"), "-");
    EXPECT_LT(key.WriteProfile("w", "x"), 0) << "its key went with the rest";
    EXPECT_EQ(Write("v", "new"), SettingsDone);
    EXPECT_STREQ(Read("v"), "new");
}

TEST_F(RegistryStoreTest, WhatIsNoFileIsRefused) {
    mkfifo(UserStore().c_str(), 0600);
    EXPECT_EQ(Write("v", "x"), SettingsFailed) << "a pipe, at once";
    std::filesystem::remove(UserStore());
    std::filesystem::create_directory(UserStore());
    EXPECT_EQ(Write("v", "x"), SettingsFailed) << "a folder";
    EXPECT_STREQ(Read("v"), "-");
    SetVariable("BRCORE8_SETTINGS", "/dev/full");
    EXPECT_EQ(Write("v", "x"), SettingsFailed) << "a device";
}

TEST_F(RegistryStoreTest, AReplacedFileTakesItsKeysAlong) {
    SRegistry key(kUser, Path("a"), 1);
    key.WriteProfile("v", "old");
    std::filesystem::rename(UserStore(), UserStore() + ".old");
    SRegistry other(kUser, Path("b"), 1);
    EXPECT_EQ(other.WriteProfile("v", "new"), SettingsDone);
    EXPECT_EQ(key.WriteProfile("v", "lost"), SettingsFailed) << "never into another's key";
    EXPECT_STREQ(Read("v", "b"), "new");
    EXPECT_STREQ(Read("v", "a"), "-");
}

TEST_F(RegistryStoreTest, OrdinaryUsersReadTheMachinesStoreOnly) {
    MakeMachineKey(Path("a"), "v", "machine");
    std::filesystem::permissions(MachineStore(), std::filesystem::perms(0444));
    const int status = InChild([this]() -> int {
        if (geteuid() == 0 && setuid(65534) != 0) return 9;
        SetVariable("BRCORE8_SETTINGS", MachineStore().c_str());  // as the user's own, too
        SRegistry key(SRegistry::LocalMachine(), Path("a"), 0);
        SString text;
        if (key.GetProfile("v", &text, "") < 0 || text.Compare("machine") != 0) return 1;
        if (key.DeleteProfile("v", 0) >= 0) return 2;
        if (SRegistry(SRegistry::LocalMachine(), Path(), 0).DeleteTree("a") >= 0) return 3;
        return SRegistry(kUser, Path("a"), 1).IsOpen() || SRegistry(kUser, Path("b"), 1).IsOpen();
    });
    EXPECT_EQ(status, 0);
}

TEST_F(RegistryStoreTest, AFullDiskKeepsTheOld) {
    ASSERT_EQ(Write("v", "kept"), SettingsDone);
    const int status = InChild([this]() -> int {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{Bytes().size(), RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
        const SString big('x', 100000);
        SRegistry key(kUser, Path(), 1);
        if (key.WriteProfile("v", big) >= 0) return 1;
        SRegistryBatch batch(key);
        key.WriteProfile("small", "x");
        key.WriteProfile("v", big);
        if (batch.Commit() >= 0) return 2;
        return Read("v").Compare("kept") != 0 ? 3 : Read("small").Compare("-") != 0 ? 4 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_STREQ(Read("v"), "kept");
    EXPECT_EQ(Write("v", "new"), SettingsDone);
}

// --- several at once -----------------------------------------------------------------------------

TEST_F(RegistryStoreTest, ALockedStoreIsReadAndNotWritten) {
    ASSERT_EQ(Write("v", "kept"), SettingsDone);
    int ready[2], done[2];
    ASSERT_EQ(pipe(ready) + pipe(done), 0);
    char byte = 0;
    const pid_t child = Start([&] {
        close(done[1]);
        // As a writer that never ends holds it.
        const int file = open(UserStore().c_str(), O_RDWR);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = 0x40000001;
        lock.l_len = 1;
        const int locked = fcntl(file, F_SETLK, &lock);
        return write(ready[1], "", 1) != 1 || read(done[0], &byte, 1) != 0 || locked != 0;
    });
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    EXPECT_STREQ(Read("v"), "kept");
    EXPECT_EQ(Write("v", "new"), SettingsFailed);
    close(done[1]);
    EXPECT_EQ(Finish(child), 0);
    EXPECT_EQ(Write("v", "new"), SettingsDone);
    for (const int end : {ready[0], ready[1], done[0]})
        close(end);
}

TEST_F(RegistryStoreTest, ProcessesThatWriteAtOnceLoseNothing) {
    constexpr long kProcesses = 4, kValues = 25;
    std::vector<pid_t> children;
    SRegistry shared(kUser, Path(), 1);  // open before the processes part
    for (long process = 0; process < kProcesses; ++process) {
        children.push_back(Start([&, process] {
            SRegistry own(kUser, Path(("p" + std::to_string(process)).c_str()), 1);
            for (long i = 0; i < kValues; ++i) {
                const SString name(process * kValues + i);
                if (shared.WriteProfile(name, i, 1) < 0 || own.WriteProfile(name, i, 1) < 0)
                    return 1;
            }
            return 0;
        }));
    }
    for (const pid_t child : children)
        EXPECT_EQ(Finish(child), 0);
    SString name, value;
    for (long i = 0; i < kProcesses * kValues; ++i) {
        EXPECT_EQ(shared.GetEnumValue(i, &name, value, nullptr), SettingsDone);
        EXPECT_EQ(shared.GetProfile(SString(i), &value, "-"), SettingsDone) << i;
    }
    EXPECT_LT(shared.GetEnumValue(kProcesses * kValues, &name, value, nullptr), 0);
}

// Whenever it is killed, both values of a batch are of one round, and none that was reported is
// lost.
TEST_F(RegistryStoreTest, KilledInAWrite) {
    int reports[2];
    ASSERT_EQ(pipe(reports), 0);
    long round = 0;
    for (int kill_after = 1; kill_after <= 25; ++kill_after) {
        const pid_t child = Start([&] {
            SRegistry key(kUser, Path(), 1);
            for (long i = round + 1;; ++i) {
                SRegistryBatch batch(key);
                key.WriteProfile("first", i, 1);
                key.WriteProfile("second", i, 0);
                if (batch.Commit() < 0 || write(reports[1], &i, sizeof i) != sizeof i) return 1;
            }
        });
        for (int i = 0; i < 2; ++i)
            ASSERT_EQ(read(reports[0], &round, sizeof round), static_cast<ssize_t>(sizeof round));
        usleep(static_cast<useconds_t>(kill_after) * 37);
        kill(child, SIGKILL);
        EXPECT_EQ(Finish(child), -SIGKILL);
        fcntl(reports[0], F_SETFL, O_NONBLOCK);
        while (read(reports[0], &round, sizeof round) > 0) {
        }
        fcntl(reports[0], F_SETFL, 0);
        long first = 0, second = 0;
        const SRegistry key(kUser, Path(), 0);
        EXPECT_EQ(key.GetProfile("first", &first, -1), SettingsDone);
        EXPECT_EQ(key.GetProfile("second", &second, -2), SettingsDone);
        EXPECT_EQ(first, second);
        EXPECT_GE(first, round);
        round = first;
    }
    close(reports[0]);
    close(reports[1]);
}

TEST_F(RegistryStoreThreads, ThreadsShareTheStore) {
    std::vector<std::thread> threads;
    SRegistry shared(kUser, Path(), 1);
    for (long thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            const SRegistry key(shared.GetKey(), "", 1);
            SRegistry own(kUser, Path(), 1);
            for (long i = 0; i < 10; ++i) {
                SRegistryBatch batch(own);
                own.WriteProfile(SString(thread * 10 + i), i, 1);
                EXPECT_EQ(batch.Commit(), SettingsDone);
                SString name, kind;
                key.GetEnumValue(i, &name, kind, nullptr);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    SString name, value;
    EXPECT_EQ(shared.GetEnumValue(39, &name, value, nullptr), SettingsDone);
}

// --- batches -------------------------------------------------------------------------------------

TEST_F(RegistryStoreTest, ABatchWithoutCommitLeavesNothing) {
    SRegistry key(kUser, Path(), 1);
    for (const char* name : {"b", "d"})
        key.WriteProfile(name, "old");
    SString name, value;
    EXPECT_EQ(key.GetEnumValue(1, &name, value, nullptr), SettingsDone);
    {
        SRegistryBatch batch(key);
        key.WriteProfile("a", "new");
        key.WriteProfile("b", "new");
        key.DeleteProfile("d", 0);
        EXPECT_TRUE(SRegistry(kUser, Path("x\\y"), 1).IsOpen());
        EXPECT_STREQ(Read("b"), "new") << "seen inside";
        EXPECT_EQ(InChild([this] { return Write("other", "x") >= 0 ? 1 : 0; }), 0);
    }
    EXPECT_EQ(key.GetEnumValue(1, &name, value, nullptr), SettingsDone);
    EXPECT_STREQ(name, "d");
    EXPECT_STREQ(value, "old");
    EXPECT_STREQ(Read("b"), "old");
    EXPECT_FALSE(SRegistry(kUser, Path("x"), 0).IsOpen());
}

// --- limits --------------------------------------------------------------------------------------

TEST_F(RegistryStoreTest, NamesAndLevelsHaveLimits) {
    EXPECT_TRUE(SRegistry(kUser, Path(std::string(255, 'n').c_str()), 1).IsOpen());
    EXPECT_FALSE(SRegistry(kUser, Path(std::string(256, 'n').c_str()), 1).IsOpen());
    SRegistry key(kUser, Path(), 1);
    EXPECT_EQ(key.WriteProfile(SString('v', 16383), "x"), SettingsDone);
    EXPECT_EQ(key.WriteProfile(SString('v', 16384), "x"), SettingsFailed);
    SString path = "d";
    int levels = 4;  // of the case's own path, down to the key
    for (; levels < 600; ++levels) {
        SRegistry deeper(key.GetKey(), path, 1);
        if (!deeper.IsOpen()) break;
        key.Init(deeper.GetKey(), SString("d"), 1);
        path = path.Compare("d") == 0 ? "D" : "d";
    }
    EXPECT_EQ(SRegistry(kUser, Path(), 0).DeleteTree("d"), SettingsDone);
}

TEST_F(RegistryStoreTest, TrailBytesPartNoPath) {
    const PageScope page(932);
    SRegistry key(kUser, Path(), 1);
    const SRegistry odd(key.GetKey(), "\x83\\x", 1);  // the second byte is a backslash's
    SString name, kind;
    EXPECT_EQ(key.GetEnumKey(0, &name, kind), SettingsDone);
    EXPECT_STREQ(name, "\x83\\x");
    EXPECT_TRUE(SRegistry(key.GetKey(), "\x83\\X\\", 0).IsOpen());
    EXPECT_FALSE(SRegistry(key.GetKey(), "\x83", 0).IsOpen());
}

}  // namespace
