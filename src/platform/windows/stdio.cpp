#include "platform/files.h"
#include "platform/platform.h"

#include <io.h>

#include <utility>

namespace brcore8 {

std::FILE* OpenStream(const char* path, const char* mode) noexcept {
    return std::fopen(path, mode);
}

bool SeekStream(std::FILE* stream, std::int64_t offset, int origin) noexcept {
    if (_fseeki64(stream, offset, origin) != 0) return false;
    // Some run-times keep the end-of-file indicator set where the C standard clears it.
    std::clearerr(stream);
    return true;
}

std::int64_t TellStream(std::FILE* stream) noexcept {
    return _ftelli64(stream);
}

std::string FinalPath(const char* path) {
    std::string result(32768, '\0');
    const DWORD room = static_cast<DWORD>(result.size());
    DWORD length = 0;
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        // With its folder, without which not every system can replace a file.
        length = GetFullPathNameA(path, room, result.data(), nullptr);
    } else {
        const HANDLE file =
            CreateFileA(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE) return path;
        length = GetFinalPathNameByHandleA(file, result.data(), room, 0);
        CloseHandle(file);
    }
    if (length == 0 || length >= room) return path;
    result.resize(length);
    return result;
}

const void* MapFile(const char* path, std::int64_t& size) noexcept {
    size = 0;
    const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return nullptr;
    const void* data = nullptr;
    LARGE_INTEGER bytes;
    if (GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &bytes) &&
        std::in_range<std::size_t>(bytes.QuadPart)) {
        const HANDLE mapping = CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
        if (mapping != nullptr) {
            data = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
            CloseHandle(mapping);
        }
    }
    CloseHandle(file);
    if (data != nullptr) size = bytes.QuadPart;
    return data;
}

bool UnmapFile(const void* data, std::int64_t) noexcept {
    return UnmapViewOfFile(data) != 0;
}

const char kFolderSeparators[] = "/\\";

bool IsLink(const char* path) noexcept {
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool MakeNewFile(const char* path, unsigned) noexcept {
    const HANDLE file =
        CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

void LimitPermissions(const char*, unsigned) noexcept {}

void FinishFolder(const char* path, std::uint64_t fileTime, unsigned) noexcept {
    if (fileTime == 0) return;
    const HANDLE folder = CreateFileA(
        path, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
        FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (folder == INVALID_HANDLE_VALUE) return;
    const FILETIME time{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    SetFileTime(folder, nullptr, nullptr, &time);
    CloseHandle(folder);
}

// A colon names a stream within a file, and dots and blanks at the end are dropped.
bool IsPlainFileName(std::string_view name) noexcept {
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < ' ') return false;
    }
    return name.find_first_of("<>:\"|?*") == name.npos && !name.ends_with('.') &&
           !name.ends_with(' ');
}

int ErrorTerminalWidth() noexcept {
    if (_isatty(_fileno(stderr)) == 0) return 0;
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info)) return 0;
    return info.srWindow.Right - info.srWindow.Left + 1;
}

}  // namespace brcore8
