#include "streams/file_rewrite.h"

#include <brcore8/core/throw.h>
#include <brcore8/streams/file.h>

#include "platform/files.h"
#include "platform/platform.h"
#include "streams/file_filter.h"

#include <atomic>
#include <cstring>
#include <new>
#include <string>

namespace brcore8 {

namespace {

constexpr char kCannotOpen[] = "Can't open for writing";
constexpr char kWriteFailed[] = "Write failed";
constexpr char kCannotCut[] = "Could not trunc file!";

// A failure that writing the file itself may get around: the folder or the place is not ours to
// change, although the file's content is.
bool MayWriteInPlace(DWORD error) noexcept {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
           error == ERROR_BUSY || error == ERROR_NOT_SAME_DEVICE;
}

enum class Way { Make, Replace, Share, Device };

// How the file can be rewritten; throws when it may not be written at all, since replacing it
// would get around its permissions.
Way ChooseWay(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes == INVALID_FILE_ATTRIBUTES) return Way::Make;
    if ((attributes & FILE_ATTRIBUTE_DEVICE) != 0) return Way::Device;
    if (!MayUseFile(FileOperation::Open, path)) ThrowIOException(kCannotOpen);
    const HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) ThrowIOException(kCannotOpen);
    BY_HANDLE_FILE_INFORMATION facts;
    const bool known = GetFileInformationByHandle(file, &facts) != 0;
    CloseHandle(file);
    return known && facts.nNumberOfLinks == 1 ? Way::Replace : Way::Share;
}

// Writes all of it, ends the file there and sees it onto the disk.
void FillFile(SFile& file, const void* data, std::size_t size, Way way) {
    if (file.Write(data, size) < 0) ThrowIOException(kWriteFailed);
    if (way != Way::Device && file.SetEndOfFile() < 0) ThrowIOException(kCannotCut);
    if (file.Flush() < 0 || file.Close() < 0) ThrowIOException(kWriteFailed);
}

// A new file beside another one, which it replaces or in the end is not there any more.
class Sibling {
public:
    explicit Sibling(const std::string& target) : target_(target) {
        const std::size_t slash = target.find_last_of("/\\");
        const std::string folder = slash == target.npos ? "" : target.substr(0, slash + 1);
        static constinit std::atomic<unsigned> counter{0};
        constexpr int attempts = 100;  // leftovers of processes that bore the same number
        for (int i = 0; i < attempts; ++i) {
            path_ = folder + ".brcore8-" + std::to_string(GetCurrentProcessId()) + "-" +
                    std::to_string(counter.fetch_add(1)) + ".tmp";
            SetLastError(ERROR_GEN_FAILURE);
            if (file_.CreateNew(path_.c_str()) == 0) return;
            if (GetLastError() != ERROR_FILE_EXISTS) break;
        }
        path_.clear();
    }
    Sibling(const Sibling&) = delete;
    Sibling& operator=(const Sibling&) = delete;
    ~Sibling() {
        file_.Close();
        if (!stays_ && !path_.empty() && MayUseFile(FileOperation::Remove, path_.c_str())) {
            DeleteFileA(path_.c_str());
        }
    }

    SFile& File() noexcept { return file_; }
    bool IsOpen() const noexcept { return file_.IsOpen(); }
    void Stay(bool stays) noexcept { stays_ = stays; }

    bool TakePlace() noexcept {
        SetLastError(ERROR_GEN_FAILURE);
        if (!MayUseFile(FileOperation::Replace, target_.c_str())) return false;
        // The first keeps the permissions; where it stops half-way, the second finishes.
        if (!ReplaceFileA(target_.c_str(), path_.c_str(), nullptr, 0, nullptr, nullptr) &&
            (GetFileAttributesA(target_.c_str()) != INVALID_FILE_ATTRIBUTES ||
             !MoveFileExA(path_.c_str(), target_.c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))) {
            return false;
        }
        path_.clear();
        return true;
    }

private:
    const std::string& target_;
    std::string path_;
    SFile file_;
    bool stays_ = false;
};

// Writes the file itself; should that end half-way, the sibling, if there is one, is what has the
// content whole.
void WriteInPlace(const std::string& target, const void* data, std::size_t size, Way way,
                  Sibling* sibling) {
    SFile file;
    const int opened = way == Way::Make ? file.Create(target.c_str())
                                        : file.Open(target.c_str(), SFile::WriteAccess);
    if (opened < 0) ThrowIOException(kCannotOpen);
    if (sibling != nullptr) sibling->Stay(true);
    FillFile(file, data, size, way);
    if (sibling != nullptr) sibling->Stay(false);
}

// Whichever way the new content is to come into the file, a sibling gets it first.
void RewriteBySibling(const std::string& target, const void* data, std::size_t size, Way way) {
    Sibling sibling(target);
    if (!sibling.IsOpen()) {
        if (!MayWriteInPlace(GetLastError())) ThrowIOException(kCannotOpen);
        return WriteInPlace(target, data, size, way, nullptr);
    }
    FillFile(sibling.File(), data, size, way);
    if (way == Way::Replace) {
        if (sibling.TakePlace()) return;
        if (!MayWriteInPlace(GetLastError())) ThrowIOException(kCannotOpen);
    }
    WriteInPlace(target, data, size, way, &sibling);
}

}  // namespace

bool FileDiffers(const char* path, const void* data, std::size_t size) noexcept {
    // Opening a pipe to read what it holds would wait for a writer.
    if ((GetFileAttributesA(path) & FILE_ATTRIBUTE_DEVICE) != 0) return true;
    SFile file;
    if (file.Open(path) < 0) return true;
    const std::int64_t oldSize = file.GetSize();
    if (oldSize < 0 || static_cast<std::uint64_t>(oldSize) != size) return true;
    char block[16384];
    const char* rest = static_cast<const char*>(data);
    for (std::size_t left = size; left != 0;) {
        const std::size_t part = left < sizeof block ? left : sizeof block;
        if (file.Read(block, part) != static_cast<std::int64_t>(part) ||
            std::memcmp(block, rest, part) != 0) {
            return true;
        }
        rest += part;
        left -= part;
    }
    return false;
}

void RewriteFile(const char* path, const void* data, std::size_t size) {
    try {
        const std::string target = FinalPath(path);
        const Way way = ChooseWay(target.c_str());
        if (way == Way::Replace || way == Way::Share)
            RewriteBySibling(target, data, size, way);
        else
            WriteInPlace(target, data, size, way, nullptr);
    } catch (const std::bad_alloc&) {
        ThrowOutOfMemory();
    }
}

void RemoveFile(const char* path) noexcept {
    if (!MayUseFile(FileOperation::Remove, path)) return;
    try {
        DeleteFileA(FinalPath(path).c_str());
    } catch (const std::bad_alloc&) {
        DeleteFileA(path);
    }
}

}  // namespace brcore8
