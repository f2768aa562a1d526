// Where this library edits the file itself: one key changes and every other byte stays.
#include <brcore8/settings/profile.h>
#include <brcore8/streams/file.h>

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <thread>
#include <vector>

#include "settings/profile_file.h"
#include "support/failing_allocator.h"
#include "support/page_scope.h"

using namespace std::string_literals;
using brcore8::FileOperation;

namespace {

using ProfileBytes = ProfileFile;
using ProfileFaults = ProfileFile;
using ProfileThreads = ProfileFile;

std::string Value(const SString& path, const SString& section, const SString& key) {
    SString value;
    EXPECT_EQ(SProfile(path, section, 0).GetWholeProfile(key, &value, "?"), 0);
    return std::string(value.View());
}

TEST_F(ProfileBytes, OneKeyChanges) {
    const struct {
        const char* name;
        std::string before;
        const char* section;
        const char* key;
        const char* value;  // null: deletes the key; the section when there is no key either
        std::string after;
    } rows[] = {
        {"blanks-and-remarks", "; x\n\n [s] ; y\n\n  k  =  old  \n\n[t]\nk=1", "S", "K", "new",
         "; x\n\n [s] ; y\n\n  k  =  new  \n\n[t]\nk=1"},
        {"quotes-go", "[s]\nk= \"a b\" \n", "s", "k", "c", "[s]\nk= c \n"},
        {"empty-value", "[s]\nk= \nl=1\n", "s", "k", "v", "[s]\nk= v\nl=1\n"},
        {"to-nothing", "[s]\nk = v\n", "s", "k", "", "[s]\nk = \n"},
        {"first-of-repeats", "[s]\nk=1\nk=2\n[s]\nk=3\n", "s", "k", "v",
         "[s]\nk=v\nk=2\n[s]\nk=3\n"},
        {"no-final-line-end", "[s]\nk=1", "s", "k", "v", "[s]\nk=v"},
        {"returns-and-feeds", "[s]\r\nk=1\r\n\r\n[t]\r\n", "s", "k", "v",
         "[s]\r\nk=v\r\n\r\n[t]\r\n"},
        {"mark-and-zero-bytes", "\xEF\xBB\xBF[s]\nk=1\nz=\0\xFF\n"s, "s", "k", "v",
         "\xEF\xBB\xBF[s]\nk=v\nz=\0\xFF\n"s},
        {"unlike-line-ends", "[s]\r\rk=1\n\nl=2\r\n", "s", "k", "v", "[s]\r\rk=v\n\nl=2\r\n"},
        {"new-key-behind-the-last", "[s]\r\nk=1\r\n\r\n; of t\r\n[t]\r\n", "s", "l", "2",
         "[s]\r\nk=1\r\nl=2\r\n\r\n; of t\r\n[t]\r\n"},
        {"new-key-of-an-empty-section", "[s]\n; none\n[t]\n", "s", "l", "2",
         "[s]\nl=2\n; none\n[t]\n"},
        {"new-key-without-a-line-end", "[s]\r\nk=1", "s", "l", "2", "[s]\r\nk=1\r\nl=2"},
        {"no-line-end-at-all", "[s]", "s", "l", "2", "[s]\nl=2"},
        {"new-section", "[s]\r\nk=1\r\n", "t", "k", "2", "[s]\r\nk=1\r\n[t]\r\nk=2\r\n"},
        {"new-section-without-a-line-end", "[s]\nk=1", "t", "k", "2", "[s]\nk=1\n[t]\nk=2"},
        {"first-key-before-sections", "\xEF\xBB\xBF; top\n[s]\n", "", "k", "1",
         "\xEF\xBB\xBFk=1\n; top\n[s]\n"},
        {"from-an-empty-file", "", "s", "k", "1", "[s]\nk=1\n"},
        {"key-deleted", "[s]\n k=1\nk=2\n;k=3\n", "s", "k", nullptr, "[s]\nk=2\n;k=3\n"},
        {"last-key-deleted", "[s]\nj=1\nk=1", "s", "k", nullptr, "[s]\nj=1\n"},
        {"absent-key-deleted", "[s]\n\n", "s", "k", nullptr, "[s]\n\n"},
        {"section-deleted", "a=1\n[s]\n; x\nk=1\n\n; of t\n[t]\nl=1\n[s]\nm=1\n", "s", nullptr,
         nullptr, "a=1\n\n; of t\n[t]\nl=1\n[s]\nm=1\n"},
        {"unnamed-section-deleted", "; x\na=1\nb=2\n[s]\n", "", nullptr, nullptr, "; x\n[s]\n"},
        {"no-mark-made-of-a-key", "a=1\r\n\xFF\xFE=2\r\n", "", "a", nullptr,
         "\r\n\xFF\xFE=2\r\n"},
        {"no-mark-made-of-a-line", "[s]\na=1\n\xEF\xBB\xBF;\n[t]\n", "s", nullptr, nullptr,
         "\n\xEF\xBB\xBF;\n[t]\n"},
        {"sixteen-bit-text-untouched", "\xFF\xFE[\0s\0]\0\n\0"s, "s", "k", "1",
         "\xFF\xFE[\0s\0]\0\n\0"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Put(row.before);
        SProfile profile(Path(), row.section, 0);
        long status;
        if (row.key == nullptr)
            status = profile.DeleteSection();
        else if (row.value == nullptr)
            status = profile.DeleteProfile(row.key);
        else
            status = profile.WriteProfile(row.key, SString(row.value));
        EXPECT_EQ(status, row.before[0] == '\xFF' ? long{brcore8::SettingsNotWritten} : 0);
        EXPECT_EQ(Bytes(), row.after);
    }
}

// A trail byte may look like a bracket, and case folds by whole characters.
TEST_F(ProfileBytes, DoubleByteNames) {
    const PageScope scope(932);
    Put("[\x81]]\n\x83\x41=1\n\x83\x61=2\n");
    EXPECT_EQ(Value(Path(), "\x81]", "\x83\x41"), "1");
    EXPECT_EQ(Value(Path(), "\x81]", "\x83\x61"), "2");
    for (const char* section : {"s\x81", "s\x81 ", "s\x81\r", "s\x81\n[t"})
        EXPECT_EQ(SProfile(Path(), section, 0).Accepts("k", "1"), 0) << section;
    for (const char* key : {"k\x81", "k\x81=", "k\x81\n", "\xEF\xBB\xBFk", "\xFF\xFEk"})
        EXPECT_EQ(SProfile(Path(), "s", 0).Accepts(key, "1"), 0) << key;
    EXPECT_EQ(SProfile(Path(), "\x81]", 0).Accepts("\x83\x41", "\x81"), 1);
    Put("[s]\nk=" + std::string(254, 'x') + "\x83\x41\n");
    SString cut;
    EXPECT_EQ(SProfile(Path(), "s", 0).GetProfile("k", &cut, ""), 0);
    EXPECT_EQ(cut.LengthByte(), 254);
}

TEST_F(ProfileBytes, ManyKeysAndGreatValues) {
    std::string file = "[s]\n";
    for (int i = 0; i < 200000; ++i)
        file += "key" + std::to_string(i) + " = " + std::to_string(i) + "\n";
    Put(file);
    for (int i = 0; i < 200000; i += 7)
        ASSERT_EQ(Value(Path(), "S", SString(std::string_view("KEY" + std::to_string(i)))),
                  std::to_string(i));
    const std::string great(1 << 20, 'v');
    EXPECT_EQ(SProfile(Path(), "s", 0).WriteProfile("key100000", SString(std::string_view(great))),
              0);
    EXPECT_TRUE(Value(Path(), "s", "key100000") == great);
    EXPECT_EQ(Value(Path(), "s", "key199999"), "199999");
    const std::size_t at = file.find("key100000 = ") + 12;
    EXPECT_TRUE(Bytes() == file.replace(at, 6, great));
}

// A name without a folder is a file of the user's folder, made when it is first written.
TEST_F(ProfileBytes, NameWithoutFolder) {
    const std::string home = std::string(Folder().View()) + "/new";
    ASSERT_EQ(setenv("XDG_CONFIG_HOME", home.c_str(), 1), 0);
    EXPECT_EQ(Value("bare.ini", "s", "k"), "?");
    EXPECT_FALSE(std::filesystem::exists(home));
    EXPECT_EQ(SProfile("bare.ini", "s", 0).WriteProfile("k", 1L), 0);
    EXPECT_EQ(Value("bare.ini", "s", "k"), "1");
    EXPECT_TRUE(std::filesystem::exists(home + "/brcore8/bare.ini"));
    EXPECT_EQ(SProfile("..", "s", 0).WriteProfile("k", 1L), brcore8::SettingsNotWritten);
    unsetenv("XDG_CONFIG_HOME");
}

TEST_F(ProfileBytes, KeepsLinksAndPermissions) {
    Put("[s]\nk=1\n");
    const std::string link = std::string(Path().View()) + ".link";
    ASSERT_EQ(symlink(Path(), link.c_str()), 0);
    ASSERT_EQ(chmod(Path(), 0640), 0);
    EXPECT_EQ(SProfile(SString(std::string_view(link)), "s", 0).WriteProfile("k", 2L), 0);
    EXPECT_EQ(Bytes(), "[s]\nk=2\n");
    struct stat facts;
    ASSERT_EQ(lstat(link.c_str(), &facts), 0);
    EXPECT_TRUE(S_ISLNK(facts.st_mode));
    ASSERT_EQ(stat(Path(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0640u);

    // The same value again writes nothing.
    const ino_t node = facts.st_ino;
    EXPECT_EQ(SProfile(Path(), "s", 0).WriteProfile("k", 2L), 0);
    ASSERT_EQ(stat(Path(), &facts), 0);
    EXPECT_EQ(facts.st_ino, node);
}

// Same size, same place, perhaps within one step of the file system's clock.
TEST_F(ProfileBytes, SeesAFileWrittenInPlace) {
    for (int i = 0; i < 200; ++i) {
        Put("[s]\nk=" + std::to_string(100 + i) + "\n");
        ASSERT_EQ(Value(Path(), "s", "k"), std::to_string(100 + i));
    }
}

TEST_F(ProfileFaults, SpecialFiles) {
    ASSERT_EQ(mkfifo(Path(), 0600), 0);
    EXPECT_EQ(Value(Path(), "s", "k"), "?");
    EXPECT_EQ(SProfile(Path(), "s", 0).WriteProfile("k", 1L), brcore8::SettingsNotWritten);
    Remove();
    SProfile full("/dev/full", "s", 0);
    EXPECT_EQ(full.WriteProfile("k", 1L), brcore8::SettingsNotWritten);
    EXPECT_EQ(SProfile(Folder() + "/none/x.ini", "s", 0).WriteProfile("k", 1L),
              brcore8::SettingsNotWritten);
}

TEST_F(ProfileFaults, NthAllocationRefused) {
    for (const std::string before : {"[s]\nk=old\n[t]\n", ""}) {
        const std::string otherwise = before.empty() ? "?" : "old";
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(nth);
            if (before.empty())
                Remove();
            else
                Put(before);
            SProfile profile(Path(), "s", 0);
            const SString value = "new";
            long written;
            bool refused;
            {
                FailNthAllocation fail(nth);
                written = profile.WriteProfile("k", value);
                refused = fail.Triggered();
            }
            EXPECT_EQ(written, refused ? long{brcore8::SettingsNotWritten} : 0);
            EXPECT_EQ(Value(Path(), "s", "k"), refused ? otherwise : "new");
            EXPECT_EQ(std::filesystem::exists(std::string(Path().View())),
                      !refused || !before.empty());
            if (!refused) break;
        }
    }
}

TEST_F(ProfileFaults, NthAllocationRefusedWhileReading) {
    const std::string wanted(600, 'v');
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        Put("[s]\nk=" + wanted + "\n" + std::string(static_cast<std::size_t>(nth), ';') + "\n");
        const SProfile profile(Path(), "s", 0);
        const SString kept = "kept";
        const SString otherwise = "?";
        SString value = kept;
        FailNthAllocation fail(nth);
        const long status = profile.GetWholeProfile("k", &value, otherwise);
        const bool refused = fail.Triggered();
        if (status < 0)
            EXPECT_EQ(value, kept);
        else
            EXPECT_TRUE(value.View() == wanted || (refused && value == otherwise));
        if (!refused) break;
    }
}

int g_countdown = 0;
bool g_refused = false;

bool RefuseNth(FileOperation, const char*) {
    if (--g_countdown != 0) return true;
    g_refused = true;
    return false;
}

TEST_F(ProfileFaults, NthFileOperationFails) {
    const std::string old = "[s]\nk=old\n";
    for (const bool isNew : {false, true}) {
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(std::to_string(isNew) + " " + std::to_string(nth));
            if (isNew)
                Remove();
            else
                Put(old);
            g_countdown = nth;
            g_refused = false;
            brcore8::SetFileFilter(RefuseNth);
            const long status = SProfile(Path(), "s", 0).WriteProfile("k", SString("new"));
            brcore8::SetFileFilter(nullptr);
            const std::string after = Bytes();
            if (status == 0) {
                EXPECT_EQ(after, "[s]\nk=new\n");
            } else {
                EXPECT_EQ(status, brcore8::SettingsNotWritten);
                EXPECT_TRUE(g_refused);
                EXPECT_EQ(after, isNew ? "" : old);
            }
            int files = 0;
            for (const auto& file : std::filesystem::directory_iterator(std::string(Folder())))
                files += file.path().filename() != "test.ini";
            EXPECT_LE(files, g_refused ? 1 : 0);  // what could not be removed
            if (!g_refused) break;
        }
    }
}

// Who holds the lock too long is not waited for.
TEST_F(ProfileFaults, LockedTooLong) {
    Put("[s]\nk=1\n");
    const int file = open(Path(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(file, LOCK_EX), 0);
    EXPECT_EQ(SProfile(Path(), "s", 0).WriteProfile("k", 2L), brcore8::SettingsNotWritten);
    EXPECT_EQ(Value(Path(), "s", "k"), "1");
    close(file);
    EXPECT_EQ(SProfile(Path(), "s", 0).WriteProfile("k", 2L), 0);
}

void WriteKeys(const SString& path, const std::string& name, int count) {
    for (int i = 0; i < count; ++i) {
        SProfile profile(path, "s", 0);
        const std::string key = name + std::to_string(i);
        if (profile.WriteProfile(SString(std::string_view(key)), long{i}) != 0) _exit(1);
    }
}

TEST_F(ProfileThreads, WritersLoseNothing) {
    std::vector<std::thread> threads;
    for (const char* name : {"a", "b", "c"})
        threads.emplace_back([this, name] { WriteKeys(Path(), name, 20); });
    for (int i = 0; i < 100; ++i)
        Value(Path(), "s", "a1");
    for (std::thread& thread : threads)
        thread.join();
    for (const char* name : {"a", "b", "c"})
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(Value(Path(), "s", SString(name) + SString(long{i})), std::to_string(i));
}

// Also when some of them are killed at any moment.
TEST_F(ProfileFaults, ProcessesLoseNothing) {
    const pid_t steady = fork();
    if (steady == 0) {
        WriteKeys(Path(), "a", 60);
        _exit(0);
    }
    for (int i = 0; i < 15; ++i) {
        const pid_t victim = fork();
        if (victim == 0) {
            for (;;)
                WriteKeys(Path(), "v", 10);
        }
        usleep(static_cast<useconds_t>(3000 + i * 1700));
        kill(victim, SIGKILL);
        waitpid(victim, nullptr, 0);
        const std::string bytes = Bytes();
        EXPECT_TRUE(bytes.empty() || (bytes.starts_with("[s]\n") && bytes.ends_with("\n")));
    }
    int status = -1;
    ASSERT_EQ(waitpid(steady, &status, 0), steady);
    EXPECT_EQ(status, 0);
    for (int i = 0; i < 60; ++i)
        EXPECT_EQ(Value(Path(), "s", SString("a") + SString(long{i})), std::to_string(i));
}

}  // namespace
