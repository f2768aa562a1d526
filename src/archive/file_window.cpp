#include "archive/file_window.h"

#include <brcore8/core/throw.h>

#include <algorithm>
#include <cstring>

namespace brcore8 {

namespace {

constexpr std::size_t kApart = 8 * 1024;  // read where the last bytes read do not lead

}  // namespace

FileWindow::FileWindow(SFile& file)
    : file_(file), buffer_(static_cast<unsigned char*>(Allocate(Size))) {}

// Keeps what it has of the bytes asked for, so that none is read twice in order.
void FileWindow::Load(std::uint64_t position, std::size_t need) {
    const bool follows = position >= start_ && position <= start_ + count_;
    const std::size_t kept = follows ? CountAt(position) : 0;
    std::memmove(buffer_.get(), buffer_.get() + (count_ - kept), kept);
    const std::size_t wanted = follows ? Size : std::max(need, kApart);
    start_ = position;
    count_ = kept;
    const std::int64_t from = static_cast<std::int64_t>(position + kept);
    if (file_.Seek(from, SFile::Origin::Begin) < 0) ThrowIOException("Can't open for reading");
    const std::int64_t read = file_.Read(buffer_.get() + kept, wanted - kept);
    if (read < 0) ThrowIOException("Can't open for reading");
    count_ += static_cast<std::size_t>(read);
}

const unsigned char* FileWindow::At(std::uint64_t position, std::size_t need) {
    if (position < start_ || position > start_ + count_ || CountAt(position) < need)
        Load(position, need);
    if (CountAt(position) < need) return nullptr;
    return buffer_.get() + (position - start_);
}

}  // namespace brcore8
