#include <brcore8/core/throw.h>
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/progress.h>

#include "platform/files.h"
#include "streams/clamp.h"
#include "streams/file_filter.h"

static_assert(EOF == -1, "the end of input of the C library is ours");

namespace brcore8 {

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
    return read;
}

int InputFileHolder::Read() {
    if (stream_ == nullptr) return -1;
    const int byte = MayUseFile(FileOperation::Read, nullptr) ? std::getc(stream_) : EOF;
    if (byte == EOF && !std::feof(stream_)) ThrowIOException("Can't open for reading");
    return byte;
}

int InputFileHolder::IsEOF() const noexcept {
    return stream_ == nullptr || std::feof(stream_) != 0;
}

std::int64_t InputFileHolder::Position() const noexcept {
    return stream_ != nullptr ? TellStream(stream_) : -1;
}

std::int64_t InputFileHolder::Size() noexcept {
    const std::int64_t position = Position();
    if (position < 0 || !MayUseFile(FileOperation::Seek, nullptr)) return -1;
    const bool atEnd = std::feof(stream_) != 0;
    if (!SeekStream(stream_, 0, SEEK_END)) return -1;
    const std::int64_t end = TellStream(stream_);
    SeekStream(stream_, position, SEEK_SET);
    // Seeking forgets that the end was met; asking for the size must not change that answer.
    if (atEnd) MeetEnd();
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
    if (count > rest) MeetEnd();
    return static_cast<std::int64_t>(distance);
}

// At the end this sets the stream's end-of-file indicator; elsewhere it changes nothing.
void InputFileHolder::MeetEnd() noexcept {
    std::ungetc(std::getc(stream_), stream_);
}

bool InputFileHolder::SeekTo(std::uint64_t position) noexcept {
    return stream_ != nullptr && position <= INT64_MAX &&
           MayUseFile(FileOperation::Seek, nullptr) &&
           SeekStream(stream_, static_cast<std::int64_t>(position), SEEK_SET);
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
}

}  // namespace brcore8
