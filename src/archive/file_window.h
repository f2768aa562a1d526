// A file's bytes through one buffer: in large blocks where they are asked for in order, in small
// ones where they are not.
#ifndef BRCORE8_SRC_ARCHIVE_FILE_WINDOW_H
#define BRCORE8_SRC_ARCHIVE_FILE_WINDOW_H

#include <brcore8/archive/inflater_stream.h>
#include <brcore8/streams/file.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace brcore8 {

class FileWindow {
public:
    // More than any record of an archive with its three texts takes.
    enum : std::size_t { Size = 256 * 1024 };

    // The file must outlive the window.
    explicit FileWindow(SFile& file);

    // Where the bytes from `position` stand, valid until the next call; null when the file ends
    // within the first `need` of them (at most Size). Throws SEIOException "Can't open for reading"
    // when a read fails.
    const unsigned char* At(std::uint64_t position, std::size_t need);
    // How many bytes stand there in all.
    std::size_t CountAt(std::uint64_t position) const noexcept {
        return static_cast<std::size_t>(start_ + count_ - position);
    }

private:
    void Load(std::uint64_t position, std::size_t need);

    SFile& file_;
    std::unique_ptr<unsigned char, ReleaseBlock> buffer_;
    std::uint64_t start_ = 0;
    std::size_t count_ = 0;
};

}  // namespace brcore8

#endif
