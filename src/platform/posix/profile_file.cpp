#include "platform/posix/profile_file.h"

#include <brcore8/streams/file.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/registry_path.h"
#include "streams/file_filter.h"

namespace brcore8 {
namespace {

constexpr int kWaitMilliseconds = 5000;

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == path.npos ? "." : path.substr(0, slash + 1);
}

// Whether the path still names what the descriptor has open.
bool IsSameFile(int descriptor, const std::string& path) {
    struct stat open;
    struct stat named;
    return fstat(descriptor, &open) == 0 && stat(path.c_str(), &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

// Held, or busy for too long; Unable where the system cannot lock such a file.
enum class Locked { Held, Busy, Unable };

Locked WaitForLock(int descriptor, int& patience) {
    for (;;) {
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) return Locked::Held;
        if (errno != EWOULDBLOCK && errno != EINTR) return Locked::Unable;
        if (patience-- == 0) return Locked::Busy;
        usleep(1000);
    }
}

// Locks what the path names by the time the lock is held; the descriptor, or -1.
Locked LockPath(const std::string& path, int flags, int& patience, int& descriptor) {
    for (;;) {
        descriptor = open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK);
        if (descriptor < 0) return Locked::Unable;
        const Locked locked = WaitForLock(descriptor, patience);
        if (locked == Locked::Held && IsSameFile(descriptor, path)) return locked;
        close(std::exchange(descriptor, -1));
        if (locked != Locked::Held) return locked;
        if (patience-- <= 0) return Locked::Busy;
    }
}

}  // namespace

std::string ProfilePath(const char* file, bool make) {
    if (std::string_view(file).find('/') != std::string_view::npos) return file;
    std::string path = ConfigurationFolder() + "/brcore8/" + file;
    if (make) (void)MakeFolders(path, 0700);
    return path;
}

// The folder first, since with every write another file takes the place; then the file, which
// other folders may know too, or which alone can be locked.
ProfileWriterLock::ProfileWriterLock(const std::string& path) {
    int patience = kWaitMilliseconds;
    isHeld_ = LockPath(FolderOf(path), O_RDONLY | O_DIRECTORY, patience, folder_) != Locked::Busy &&
              LockPath(path, O_RDWR, patience, file_) != Locked::Busy;
}

ProfileWriterLock::~ProfileWriterLock() {
    for (const int descriptor : {folder_, file_})
        if (descriptor >= 0) close(descriptor);
}

bool MakeProfileFile(const std::string& path) noexcept {
    if (!MayUseFile(FileOperation::Create, path.c_str())) return false;
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    return descriptor >= 0 && close(descriptor) == 0;
}

ProfileState ReadProfileFile(const std::string& path, IniBytes& text) {
    struct stat facts;
    if (stat(path.c_str(), &facts) != 0) {
        return errno == ENOENT ? ProfileState::Missing : ProfileState::Unreadable;
    }
    SFile file;
    if (!S_ISREG(facts.st_mode) || file.Open(path.c_str()) < 0) return ProfileState::Unreadable;
    const std::int64_t size = file.GetSize();
    if (size < 0 || size > SString::MaxBytes) return ProfileState::Unreadable;
    IniBytes bytes(static_cast<std::size_t>(size));
    // Less than its size: someone writes it just now.
    if (file.Read(bytes.Data(), bytes.View().size()) != size) return ProfileState::Unreadable;
    text = std::move(bytes);
    return ProfileState::Whole;
}

}  // namespace brcore8
