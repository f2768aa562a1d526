// SMappedFile: a file's content as memory, read-only, with sizes of 64 bits. Failure is a negative
// result; nothing here throws.
//
//     SMappedFile file;
//     if (file.Open("model.dat") == 0) Parse(file.View());
//
// The file must not be cut short by anybody while it is mapped: Windows prevents that, elsewhere
// touching what is gone ends the process. Read files that others may write through SFile instead.
// Threads: one at a time, but for reading the memory. Ownership: the object owns the mapping.
#ifndef BRCORE8_STREAMS_MAPPED_FILE_H
#define BRCORE8_STREAMS_MAPPED_FILE_H

#include <brcore8/platform/export.h>

#include <cstdint>
#include <string_view>

class BRCORE8_API SMappedFile {
public:
    SMappedFile() noexcept = default;
    SMappedFile(const SMappedFile&) = delete;
    SMappedFile& operator=(const SMappedFile&) = delete;
    ~SMappedFile() { Close(); }

    // Maps a whole regular file; one already mapped is given back first. 0, or negative: also for
    // an empty file, which has nothing to map.
    int Open(const char* path) noexcept;
    bool IsOpen() const noexcept { return data_ != nullptr; }
    // 0 also when nothing was mapped.
    int Close() noexcept;

    // The content; null and 0 when nothing is mapped.
    const void* GetData() const noexcept { return data_; }
    std::int64_t GetSize() const noexcept { return size_; }
    std::string_view View() const noexcept {
        return {static_cast<const char*>(data_), static_cast<std::size_t>(size_)};
    }

private:
    const void* data_ = nullptr;
    std::int64_t size_ = 0;
};

#endif
