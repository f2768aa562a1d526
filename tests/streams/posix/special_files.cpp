// Pipes, devices, links, owners, permissions and real kills.
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/input_filters.h>
#include <brcore8/streams/output_file.h>
#include <brcore8/streams/output_on_change.h>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <filesystem>
#include <optional>
#include <thread>

#include "streams/support.h"

namespace {

namespace fs = std::filesystem;

constexpr char kWriteFailed[] = "SEIOException: Write failed";
constexpr uid_t kNobody = 65534;

int Save(const std::string& path, std::string_view content) {
    SOutputFileOnChange out(path.c_str());
    out.Write(content.data(), static_cast<unsigned long>(content.size()));
    int changed = -1;
    out.Close(&changed);
    return changed;
}

struct stat Facts(const std::string& path) {
    struct stat facts {};
    EXPECT_EQ(stat(path.c_str(), &facts), 0) << path;
    return facts;
}

// The superuser may write everything, so permissions are tested as somebody else.
class AsNobody {
public:
    AsNobody() : root_(geteuid() == 0) {
        if (root_) {
            EXPECT_EQ(seteuid(kNobody), 0);
        }
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;
    ~AsNobody() {
        if (root_) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }

private:
    bool root_;
};

TEST(SpecialFiles, APipeIsReadWithoutSeeking) {
    const Folder folder;
    const std::string path = folder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const std::string content = std::string(100000, 'x') + "\nlast";
    std::thread writer([&] { Put(path, content); });
    SInputFile in(path.c_str());
    EXPECT_EQ(in.Available(), 0u);
    EXPECT_EQ(in.Skip(5), 0u);
    EXPECT_EQ(SReadAll(in), content);
    writer.join();
}

TEST(SpecialFiles, AFullDeviceIsNoticed) {
    SOutputFile flushed("/dev/full");
    flushed.Write("a", 1);
    EXPECT_EQ(Thrown([&] { flushed.Flush(); }), kWriteFailed);
    SOutputFile closed("/dev/full");
    closed.Write('a');
    EXPECT_EQ(Thrown([&] { closed.Close(); }), kWriteFailed);
    const std::string large(1000000, 'x');
    SOutputFile written("/dev/full");
    EXPECT_EQ(Thrown([&] { written.Write(large.data(), 1000000); }), kWriteFailed);
    EXPECT_EQ(Thrown([] { Save("/dev/full", "x"); }), kWriteFailed);
}

TEST(SpecialFiles, DevicesAndPipesAreWrittenThemselves) {
    EXPECT_EQ(Save("/dev/null", "x"), 1);
    EXPECT_TRUE(S_ISCHR(Facts("/dev/null").st_mode));
    const Folder folder;
    const std::string path = folder / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = Get(path); });
    EXPECT_EQ(Save(path, "through the pipe"), 1);
    reader.join();
    EXPECT_EQ(read, "through the pipe");
    EXPECT_EQ(folder.Entries(), 1);
}

TEST(SpecialFiles, ARewriteReplacesTheFileAndKeepsItsIdentity) {
    const Folder folder;
    const std::string path = folder / "file";
    Put(path, "old");
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    if (geteuid() == 0) {
        ASSERT_EQ(chown(path.c_str(), kNobody, kNobody), 0);
    }
    const struct stat before = Facts(path);
    std::ifstream reader(path);
    EXPECT_EQ(Save(path, "new"), 1);
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "old") << "who reads keeps the file that was";
    const struct stat after = Facts(path);
    EXPECT_NE(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST(SpecialFiles, PermissionsOfFileAndFolderAreKept) {
    const struct {
        const char* name;
        mode_t folder, file;
        const char* thrown;
    } rows[] = {
        {"the folder may not be written", 0555, 0666, ""},
        {"the file may not be written", 0777, 0444, "SEIOException: Can't open for writing"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Folder folder;
        const std::string path = folder / "file";
        Put(path, "old");
        ASSERT_EQ(chmod(path.c_str(), row.file), 0);
        ASSERT_EQ(chmod(folder.Path().c_str(), row.folder), 0);
        {
            const AsNobody nobody;
            EXPECT_EQ(Thrown([&] { Save(path, "new"); }), row.thrown);
        }
        EXPECT_EQ(Get(path), *row.thrown == 0 ? "new" : "old");
        EXPECT_EQ(Facts(path).st_mode & 0777, row.file);
        ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
        EXPECT_EQ(folder.Entries(), 1);
    }
}

// Rewrites a file in a child that is killed as it enters, or as it leaves, the system call where it
// stops that many times. True when it ended before; nothing when it may not be traced.
std::optional<bool> KillRewrite(const std::string& path, const std::string& content, int stops) {
    const pid_t child = fork();
    EXPECT_GE(child, 0);
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(77);
        std::raise(SIGSTOP);
        _exit(Save(path, content) == 1 ? 0 : 1);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status)) return {};
    for (int i = 0; i < stops && WIFSTOPPED(status); ++i) {
        EXPECT_EQ(ptrace(PTRACE_SYSCALL, child, nullptr, nullptr), 0);
        EXPECT_EQ(waitpid(child, &status, 0), child);
    }
    if (WIFEXITED(status)) {
        EXPECT_EQ(WEXITSTATUS(status), 0);
        return true;
    }
    kill(child, SIGKILL);
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return false;
}

// The file must be whole, and bear its permissions, whenever the kill came. One with two names may
// be half-way, but then the new content lies beside it.
TEST(SpecialFiles, AKilledRewriteLeavesAWholeFile) {
    const std::string before(40000, 'o');
    const std::string after(30000, 'n');
    for (const bool linked : {false, true}) {
        bool finished = false;
        int sawOld = 0, sawNew = 0, sawMixture = 0;
        for (int stops = 0; !finished; ++stops) {
            SCOPED_TRACE("killed at stop " + std::to_string(stops) + (linked ? ", linked" : ""));
            ASSERT_LT(stops, 2000);
            const Folder folder;
            const std::string path = folder / "file";
            Put(path, before);
            ASSERT_EQ(chmod(path.c_str(), 0640), 0);
            if (linked) fs::create_hard_link(path, folder / "other");
            const std::optional<bool> ended = KillRewrite(path, after, stops);
            if (!ended) GTEST_SKIP() << "this system lets no process trace another";
            finished = *ended;
            const std::string content = Get(path);
            ++(content == before ? sawOld : content == after ? sawNew : sawMixture);
            EXPECT_EQ(Facts(path).st_mode & 0777, 0640u);
            if (content == before || content == after) continue;
            ASSERT_TRUE(linked) << content.size();
            bool beside = false;
            for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path()))
                beside |= Get(entry.path().string()) == after;
            EXPECT_TRUE(beside);
        }
        EXPECT_GT(sawOld, 10);
        EXPECT_GT(sawNew, 2) << "after it took its place the rest is tidying";
        EXPECT_EQ(sawMixture > 0, linked);
    }
}

TEST(SpecialFiles, PositionsDoNotWrap) {
    const Folder folder;
    const std::string path = folder / "sparse";
    constexpr long kGiB = 1L << 30;
    SFile sparse;
    ASSERT_EQ(sparse.Create(path.c_str()), 0);
    for (const long at : {2 * kGiB, 4 * kGiB, 5 * kGiB}) {
        ASSERT_EQ(sparse.Seek(at - 2, SFile::Origin::Begin), at - 2);
        ASSERT_EQ(sparse.Write("\nend\n", 5), 5);
    }
    ASSERT_EQ(sparse.Close(), 0);
    {
        SOutputFile out(path.c_str(), SOutputFile::Append);
        EXPECT_EQ(out.GetPosition(), 5 * kGiB + 3);
        out.Write("more", 4);
        out.Close();
    }
    SSeekableInputANSIFile lines(path.c_str());
    SInputFile file(path.c_str());
    SInputBufferStream buffer(file, 4096);
    long position = 0;
    for (const long at : {2 * kGiB, 4 * kGiB, 5 * kGiB}) {
        SCOPED_TRACE(at);
        EXPECT_EQ(lines.SeekPos(static_cast<unsigned long>(at - 1)), 0);
        EXPECT_STREQ(lines.ReadLn(), "end");
        EXPECT_EQ(lines.GetPos(), static_cast<unsigned long>(at + 3));
        EXPECT_EQ(lines.Available(), static_cast<unsigned long>(5 * kGiB + 7 - at - 3));
        // A buffer skips as far as it is asked, by its source.
        while (position < at - 1)
            position +=
                static_cast<long>(buffer.Skip(static_cast<unsigned long>(at - 1 - position)));
        for (const char byte : "end"s)
            EXPECT_EQ(buffer.Read(), byte);
        position += 3;
    }
    EXPECT_EQ(SReadAll(lines), "more");
    EXPECT_EQ(Save(path, "short"), 1) << "compared by its size alone";
    EXPECT_EQ(Get(path), "short");
}

TEST(SpecialFiles, ARewriteFollowsSymbolicLinks) {
    const Folder folder;
    fs::create_directory(folder / "deep");
    Put(folder / "deep/file", "old");
    fs::create_symlink("deep/file", folder / "link");
    EXPECT_EQ(Save(folder / "link", "new"), 1);
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(Get(folder / "deep/file"), "new");
    fs::remove(folder / "deep/file");
    EXPECT_EQ(Save(folder / "link", "again"), 1) << "a link that leads nowhere yet";
    EXPECT_EQ(Get(folder / "deep/file"), "again");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

}  // namespace
