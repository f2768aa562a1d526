#include "platform/files.h"
#include "platform/posix/times.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <utility>

namespace brcore8 {
namespace {

constexpr mode_t kOwnersFile = 0600;
constexpr mode_t kOwnersFolder = 0700;

}  // namespace

std::FILE* OpenStream(const char* path, const char* mode) noexcept {
    std::FILE* const stream = std::fopen(path, mode);
    if (stream == nullptr) return nullptr;
    struct stat facts;
    if (fstat(fileno(stream), &facts) == 0 && !S_ISDIR(facts.st_mode)) return stream;
    std::fclose(stream);
    return nullptr;
}

bool SeekStream(std::FILE* stream, std::int64_t offset, int origin) noexcept {
    return fseeko(stream, offset, origin) == 0;
}

std::int64_t TellStream(std::FILE* stream) noexcept {
    return ftello(stream);
}

std::string FinalPath(const char* path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path, nullptr), &std::free);
    return resolved != nullptr ? resolved.get() : path;
}

const void* MapFile(const char* path, std::int64_t& size) noexcept {
    size = 0;
    int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    while (descriptor < 0 && errno == EINTR)
        descriptor = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return nullptr;
    struct stat facts;
    void* data = MAP_FAILED;
    // Nothing can be mapped of an empty file, nor of one larger than the memory's addresses.
    if (fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) &&
        std::in_range<std::size_t>(facts.st_size))
        data = mmap(nullptr, static_cast<std::size_t>(facts.st_size), PROT_READ, MAP_SHARED,
                    descriptor, 0);
    close(descriptor);
    if (data == MAP_FAILED) return nullptr;
    size = facts.st_size;
    return data;
}

bool UnmapFile(const void* data, std::int64_t size) noexcept {
    return munmap(const_cast<void*>(data), static_cast<std::size_t>(size)) == 0;
}

const char kFolderSeparators[] = "/";

bool IsLink(const char* path) noexcept {
    struct stat facts;
    return lstat(path, &facts) == 0 && S_ISLNK(facts.st_mode);
}

bool MakeNewFile(const char* path, unsigned permissions) noexcept {
    const int descriptor =
        open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions | kOwnersFile);
    return descriptor >= 0 && close(descriptor) == 0;
}

void LimitPermissions(const char* path, unsigned permissions) noexcept {
    struct stat facts;
    if (lstat(path, &facts) == 0) chmod(path, facts.st_mode & permissions);
}

void FinishFolder(const char* path, std::uint64_t fileTime, unsigned permissions) noexcept {
    const int folder = open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) return;
    if (fileTime != 0) {
        const FILETIME time{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
        SetFileTime(reinterpret_cast<HANDLE>(std::intptr_t{folder}), nullptr, nullptr, &time);
    }
    struct stat facts;
    if (fstat(folder, &facts) == 0)
        fchmod(folder, facts.st_mode & (~mode_t{0777} | permissions | kOwnersFolder));
    close(folder);
}

bool IsPlainFileName(std::string_view) noexcept {
    return true;
}

int ErrorTerminalWidth() noexcept {
    if (isatty(STDERR_FILENO) == 0) return 0;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace brcore8
