#include <brcore8/core/throw.h>
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/progress.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "platform/files.h"
#include "streams/clamp.h"
#include "streams/file_filter.h"

static_assert(EOF == -1, "the end of input of the C library is ours");

namespace brcore8 {

namespace {

constexpr std::size_t kBuffer = 65536;

}  // namespace

InputFileHolder::InputFileHolder(const char* path)
    : stream_(MayUseFile(FileOperation::Open, path) ? OpenStream(path, "rb") : nullptr) {
    if (stream_ == nullptr) ThrowIOException("Can't open for reading");
}

InputFileHolder::InputFileHolder(const char* path, SProgressIndicatorEx* progress)
    : InputFileHolder(path) {
    if (progress == nullptr) return;
    const std::uint64_t size = Remaining();
    progress->SetRange(0, size);
    progress->SetPosition(0);
    step_ = ClampCount(size / 100);
    progress_ = progress;
}

std::size_t InputFileHolder::Read(void* buffer, std::size_t count) {
    if (stream_ == nullptr) return 0;
    const std::size_t read =
        MayUseFile(FileOperation::Read, nullptr) ? std::fread(buffer, 1, count, stream_) : 0;
    if (read < count && !std::feof(stream_)) ThrowIOException("Can't open for reading");
    if (read < count) atEnd_ = true;
    return read;
}

// Whether there are bytes in the buffer; none at the end, and none of a file that cannot seek, since
// that may be one whose writer is waited for.
bool InputFileHolder::Fill() {
    if (buffer_ == nullptr && stream_ != nullptr && TellStream(stream_) >= 0)
        buffer_ = static_cast<unsigned char*>(std::malloc(kBuffer));
    if (buffer_ == nullptr || atEnd_) return false;
    const std::size_t read = Read(buffer_, kBuffer);
    atEnd_ = false;
    next_ = buffer_;
    end_ = buffer_ + read;
    silentEnd_ = progress_ == nullptr ? end_ : buffer_;
    return read != 0;
}

std::size_t InputFileHolder::ReadBuffered(void* buffer, std::size_t count) {
    auto* const bytes = static_cast<unsigned char*>(buffer);
    std::size_t done = 0;
    while (done < count) {
        if (next_ == end_ && (count - done >= kBuffer || !Fill()))
            return done + Read(bytes + done, count - done);
        const std::size_t part = std::min(count - done, static_cast<std::size_t>(Buffered()));
        std::memcpy(bytes + done, next_, part);
        next_ += part;
        done += part;
    }
    return done;
}

int InputFileHolder::ReadByte() {
    unsigned char byte;
    return ReadBuffered(&byte, 1) != 0 ? byte : -1;
}

void InputFileHolder::BufferStream() noexcept {
    buffer_ = static_cast<unsigned char*>(std::malloc(kBuffer));
    if (buffer_ != nullptr)
        std::setvbuf(stream_, reinterpret_cast<char*>(buffer_), _IOFBF, kBuffer);
}

int InputFileHolder::IsEOF() const noexcept {
    return stream_ == nullptr || atEnd_;
}

std::int64_t InputFileHolder::Position() const noexcept {
    const std::int64_t position = stream_ != nullptr ? TellStream(stream_) : -1;
    return position >= 0 ? position - Buffered() : -1;
}

void InputFileHolder::DropBuffered() noexcept {
    if (next_ != end_) SeekStream(stream_, -Buffered(), SEEK_CUR);
    next_ = end_;
}

void InputFileHolder::SetMark(std::fpos_t& mark) noexcept {
    DropBuffered();
    std::fgetpos(stream_, &mark);
}

bool InputFileHolder::ReturnTo(const std::fpos_t& mark) noexcept {
    if (std::fsetpos(stream_, &mark) != 0) return false;
    std::clearerr(stream_);  // not every run-time forgets the end by itself
    next_ = end_;
    atEnd_ = false;
    return true;
}

std::int64_t InputFileHolder::Size() noexcept {
    const std::int64_t position = stream_ != nullptr ? TellStream(stream_) : -1;
    if (position < 0 || !MayUseFile(FileOperation::Seek, nullptr)) return -1;
    if (!SeekStream(stream_, 0, SEEK_END)) return -1;
    const std::int64_t end = TellStream(stream_);
    SeekStream(stream_, position, SEEK_SET);
    return end;
}

std::uint64_t InputFileHolder::Remaining() noexcept {
    const std::int64_t size = Size();
    const std::int64_t position = Position();
    return position >= 0 && size > position ? static_cast<std::uint64_t>(size - position) : 0;
}

std::int64_t InputFileHolder::Advance(unsigned long count) noexcept {
    const std::int64_t size = Size();
    const std::int64_t position = Position();
    if (size < 0 || position < 0) return -1;
    const std::uint64_t rest = size > position ? static_cast<std::uint64_t>(size - position) : 0;
    const std::uint64_t distance = count < rest ? count : rest;
    if (!SeekTo(static_cast<std::uint64_t>(position) + distance)) return -1;
    atEnd_ = count > rest;
    return static_cast<std::int64_t>(distance);
}

bool InputFileHolder::SeekTo(std::uint64_t position) noexcept {
    if (stream_ == nullptr || position > INT64_MAX ||
        !MayUseFile(FileOperation::Seek, nullptr) ||
        !SeekStream(stream_, static_cast<std::int64_t>(position), SEEK_SET)) {
        return false;
    }
    next_ = end_;
    atEnd_ = false;
    return true;
}

void InputFileHolder::Report(unsigned long count) {
    if (step_ != 0) {
        const std::uint64_t counted = std::uint64_t{counter_} + count;
        counter_ = static_cast<unsigned long>(counted % step_);
        if (counted < step_) return;
    }
    const std::int64_t position = Position();
    if (position >= 0 && progress_->GetPosition() < static_cast<std::uint64_t>(position)) {
        progress_->SetPosition(static_cast<std::uint64_t>(position));
    }
    if (progress_->IsAborted()) ThrowIOAborted();
}

void InputFileHolder::Close() noexcept {
    if (stream_ == nullptr) return;
    std::fclose(stream_);
    stream_ = nullptr;
    std::free(buffer_);
    buffer_ = nullptr;
    next_ = end_ = silentEnd_ = nullptr;
}

}  // namespace brcore8
