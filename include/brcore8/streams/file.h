// SFile: an unbuffered file with sizes of 64 bits. Nothing here throws, save SEOutOfMemory where a
// path must be built: every operation reports failure as a negative result.
//
// Threads: a file belongs to one thread at a time.
// Ownership: the object owns the open file; its destructor closes it.
#ifndef BRCORE8_STREAMS_FILE_H
#define BRCORE8_STREAMS_FILE_H

#include <brcore8/platform/export.h>
#include <brcore8/strings/string.h>

#include <cstddef>
#include <cstdint>

class BRCORE8_API SFile {
public:
    // Access: bits, or all ones for what is usual: reading for Open, both for Create.
    enum Access : std::uint32_t {
        ReadAccess = 0x80000000,
        WriteAccess = 0x40000000,
        UsualAccess = 0xFFFFFFFF
    };
    // What others may do with the file meanwhile, where the system enforces it: bits, or 0 for
    // what is usual: they may read.
    enum Sharing : std::uint32_t {
        UsualSharing = 0,
        ShareRead = 1,
        ShareWrite = 2,
        ShareDelete = 4
    };

    enum class Origin { Begin, Current, End };

    SFile() noexcept = default;
    SFile(const SFile&) = delete;
    SFile& operator=(const SFile&) = delete;
    ~SFile() { Close(); }

    // Opens an existing file; a file already open is closed first. 0, or negative: also for a
    // folder.
    int Open(const char* path, std::uint32_t access = UsualAccess,
             std::uint32_t share = UsualSharing) noexcept;
    // Creates the file, or empties it when it is there.
    int Create(const char* path, std::uint32_t access = UsualAccess,
               std::uint32_t share = UsualSharing) noexcept;
    // Creates the file; negative when it is there already.
    int CreateNew(const char* path, std::uint32_t access = UsualAccess,
                  std::uint32_t share = UsualSharing) noexcept;
    bool IsOpen() const noexcept { return handle_ != nullptr; }

    // The size in bytes; negative also for what has none, as pipes and devices.
    std::int64_t GetSize() noexcept;
    // Bytes read, fewer than `count` only at the end; bytes written, which are `count`.
    std::int64_t Read(void* buffer, std::size_t count) noexcept;
    std::int64_t Write(const void* data, std::size_t count) noexcept;
    // The new position from the beginning.
    std::int64_t Seek(std::int64_t offset, Origin origin) noexcept;
    // When the file was last changed, in steps of 100 ns since 1601-01-01 UTC, as STime has it. The
    // file must be open for writing.
    int SetModified(std::uint64_t fileTime) noexcept;
    // Ends the file at the present position.
    int SetEndOfFile() noexcept;
    // Returns when the content is on the disk.
    int Flush() noexcept;
    // 0 also when nothing was open.
    int Close() noexcept;

private:
    int OpenAs(const char* path, std::uint32_t access, std::uint32_t share,
               std::uint32_t disposition) noexcept;

    void* handle_ = nullptr;
};

namespace brcore8 {

// A program that tests itself on failing disks may install a filter: it is asked before every
// operation of the library on files, with the operation and the path where there is one, and makes
// it fail by returning false. Null, the normal state, refuses nothing. Returns the previous filter.
enum class FileOperation {
    Open,
    Create,
    Size,
    Read,
    Write,
    Seek,
    Truncate,
    Flush,
    Close,
    Replace,
    Remove
};
using FileFilter = bool (*)(FileOperation operation, const char* path);
BRCORE8_API FileFilter SetFileFilter(FileFilter filter) noexcept;

}  // namespace brcore8

#endif
