#include "platform/log_files.h"
#include "platform/platform.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <climits>
#include <cstdio>
#include <cstring>

namespace brcore8 {

int OpenLog(const char* path, bool truncate) noexcept {
    // A full path so begins for devices and pipes, which may wait on being opened.
    if (std::strncmp(path, "\\\\.\\", 4) == 0) return -1;
    // The caller translates line ends: the C library would cut long texts into several writes.
    const int flags = _O_WRONLY | _O_APPEND | _O_CREAT | _O_BINARY | _O_NOINHERIT;
    const int descriptor = _open(path, flags | (truncate ? _O_TRUNC : 0), _S_IWRITE);
    if (descriptor < 0) return -1;
    if (GetFileType(reinterpret_cast<HANDLE>(_get_osfhandle(descriptor))) == FILE_TYPE_DISK)
        return descriptor;
    _close(descriptor);
    return -1;
}

void CloseLog(int descriptor) noexcept {
    _close(descriptor);
}

bool AppendToLog(int descriptor, const char* data, std::size_t size) noexcept {
    while (size > 0) {
        const unsigned part = size < INT_MAX ? static_cast<unsigned>(size) : INT_MAX;
        const int written = _write(descriptor, data, part);
        if (written <= 0) return false;
        data += written;
        size -= static_cast<unsigned>(written);
    }
    return true;
}

void RewindLog(int descriptor) noexcept {
    _lseek(descriptor, 0, SEEK_SET);
}

void CommitLog(int descriptor) noexcept {
    _commit(descriptor);
}

}  // namespace brcore8
