#include <brcore8/streams/input_file.h>

#include <brcore8/core/throw.h>

#include "platform/byte_search.h"
#include "streams/clamp.h"

#include <cstring>
#include <string_view>

SIMPLEMENT_CLASS(SInputFile, SInputStream, 0);

SInputFile::SInputFile(const SString& path, SProgressIndicatorEx* progress)
    : file_(path, progress) {
    file_.SetMark(mark_);
}

SInputFile::~SInputFile() = default;

int SInputFile::ReadOne() {
    const int byte = file_.ReadByte();
    file_.Tick(byte != -1);
    return byte;
}

unsigned long SInputFile::Read(void* buffer, unsigned long count) {
    const auto read = static_cast<unsigned long>(file_.ReadBuffered(buffer, count));
    file_.Tick(read);
    return read;
}

unsigned long SInputFile::Skip(unsigned long count) {
    if (count == 0) return 0;
    const std::int64_t moved = file_.Advance(count);
    if (moved < 0) return 0;
    if (static_cast<std::uint64_t>(moved) < count) brcore8::ThrowEndOfFile();
    file_.Tick(count);
    return count;
}

int SInputFile::IsEOF() {
    return file_.IsEOF();
}

unsigned long SInputFile::Available() {
    return brcore8::ClampCount(file_.Remaining());
}

void SInputFile::Close() {
    file_.Close();
}

void SInputFile::Reset() {
    if (file_.Stream() == nullptr) return;
    if (!file_.ReturnTo(mark_)) brcore8::ThrowIOException("Can't open for reading");
}

void SInputFile::Mark(unsigned long) {
    if (file_.Stream() != nullptr) file_.SetMark(mark_);
}

int SInputFile::MarkSupported() {
    return 1;
}

// ---- SSeekableInputANSIFile -------------------------------------------------------------------

SIMPLEMENT_CLASS(SSeekableInputANSIFile, SInputStream, 0);

namespace {

constexpr unsigned long kUnit = 1024;
// A line beyond this could not become an SString.
constexpr unsigned long kMostCapacity = 0x7FFFFC00;

}  // namespace

SSeekableInputANSIFile::SSeekableInputANSIFile(const SString& path, SProgressIndicatorEx* progress)
    : file_(path, progress),
      capacity_(kUnit),
      buffer_(static_cast<char*>(brcore8::Allocate(kUnit))) {
    file_.BufferStream();
}

SSeekableInputANSIFile::~SSeekableInputANSIFile() {
    brcore8::Release(buffer_);
}

// Reads more behind the unread bytes, which begin at the buffer's start afterwards. False when
// there is no more.
bool SSeekableInputANSIFile::Fill() {
    if (file_.IsEOF()) return false;
    if (position_ > 0) {
        count_ -= position_;
        std::memmove(buffer_, buffer_ + position_, count_);
        position_ = 0;
    } else if (count_ == capacity_) {
        // In proportion, so that the cost of a long line stays in proportion too.
        const unsigned long more = capacity_ / 2 / kUnit * kUnit;
        const unsigned long larger = capacity_ + (more > kUnit ? more : kUnit);
        if (larger > kMostCapacity) brcore8::ThrowOutOfMemory();
        buffer_ = static_cast<char*>(brcore8::Reallocate(buffer_, larger));
        capacity_ = larger;
    }
    const std::size_t read = file_.Read(buffer_ + count_, capacity_ - count_);
    count_ += static_cast<unsigned long>(read);
    return read != 0;
}

int SSeekableInputANSIFile::Read() {
    if (position_ == count_ && !Fill()) return -1;
    file_.Tick(1);
    // The indicator may have read on, or closed the file.
    if (position_ == count_ && !Fill()) return -1;
    return static_cast<unsigned char>(buffer_[position_++]);
}

int SSeekableInputANSIFile::IsEOF() {
    return position_ == count_ && file_.IsEOF();
}

unsigned long SSeekableInputANSIFile::Available() {
    return brcore8::ClampCount(file_.Remaining() + (count_ - position_));
}

void SSeekableInputANSIFile::Close() {
    file_.Close();
    position_ = count_ = 0;
}

SString SSeekableInputANSIFile::ReadLn() {
    unsigned long length = 0;
    for (;;) {
        const unsigned long unread = count_ - position_;
        const auto* const text = reinterpret_cast<unsigned char*>(buffer_ + position_);
        length +=
            static_cast<unsigned long>(brcore8::FindLineEnd(text + length, unread - length, '\0'));
        if (length != unread || !Fill()) break;
    }
    SString line(std::string_view(buffer_ + position_, length));
    position_ += length;
    file_.Tick(length + ConsumeLineEnd());
    return line;
}

bool SSeekableInputANSIFile::NextIs(char byte) {
    return (position_ < count_ || Fill()) && buffer_[position_] == byte;
}

// Returns the bytes consumed.
unsigned long SSeekableInputANSIFile::ConsumeLineEnd() {
    if (position_ == count_) return 0;
    if (count_ - position_ >= 2 && buffer_[position_] == '\r' && buffer_[position_ + 1] == '\n') {
        position_ += 2;
        return 2;
    }
    unsigned long consumed = 1;
    const auto take = [&] {
        ++position_;
        ++consumed;
    };
    if (buffer_[position_++] == '\n') {
        if (NextIs('\r')) take();
        return consumed;
    }
    while (NextIs('\r'))
        take();
    if (NextIs('\n')) take();
    return consumed;
}

int SSeekableInputANSIFile::SeekPos(unsigned long pos) {
    const std::int64_t behind = file_.Position();
    if (behind >= 0) {
        const auto end = static_cast<std::uint64_t>(behind);
        if (pos < end && end - pos <= count_) {
            position_ = count_ - static_cast<unsigned long>(end - pos);
            return 1;
        }
    }
    position_ = count_ = 0;
    return !file_.SeekTo(pos);
}

unsigned long SSeekableInputANSIFile::GetPos() {
    const std::int64_t behind = file_.Position();
    if (behind < 0) return 0;
    return brcore8::ClampCount(static_cast<std::uint64_t>(behind) - (count_ - position_));
}

int SSeekableInputANSIFile::SeekSupported() {
    return 1;
}
