// Pipes, devices, links, owners, permissions and real kills.
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/output_file.h>
#include <brcore8/streams/output_on_change.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>
#include <filesystem>
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

// A child is killed at its n-th file operation; the file must be whole whenever that was.
TEST(SpecialFiles, AKilledRewriteLeavesAWholeFile) {
    const std::string before(40000, 'o');
    const std::string after(50000, 'n');
    static int countdown;
    bool finished = false;
    for (int nth = 1; !finished; ++nth) {
        SCOPED_TRACE("killed at operation " + std::to_string(nth));
        const Folder folder;
        const std::string path = folder / "file";
        Put(path, before);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            countdown = nth;
            brcore8::SetFileFilter([](brcore8::FileOperation, const char*) {
                if (--countdown == 0) std::raise(SIGKILL);
                return true;
            });
            _exit(Save(path, after) == 1 ? 0 : 1);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        finished = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        ASSERT_TRUE(finished || (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL));
        EXPECT_EQ(Get(path), finished ? after : before);
        ASSERT_LT(nth, 100);
    }
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
