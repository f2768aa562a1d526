#include "platform/log_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

namespace brcore8 {

int OpenLog(const char* path, bool truncate) noexcept {
    // Not waiting for a pipe's reader; on regular files the flag means nothing.
    constexpr int flags = O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    int descriptor = open(path, flags, 0666);
    while (descriptor < 0 && errno == EINTR)
        descriptor = open(path, flags, 0666);
    if (descriptor < 0) return -1;
    struct stat facts;
    if (fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode)) {
        if (!truncate || ftruncate(descriptor, 0) == 0) return descriptor;
    }
    close(descriptor);
    return -1;
}

void CloseLog(int descriptor) noexcept {
    close(descriptor);
}

bool AppendToLog(int descriptor, const char* data, std::size_t size) noexcept {
    while (size > 0) {
        const ssize_t written = write(descriptor, data, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

void RewindLog(int descriptor) noexcept {
    (void)lseek(descriptor, 0, SEEK_SET);
}

void CommitLog(int descriptor) noexcept {
    (void)fsync(descriptor);
}

}  // namespace brcore8
