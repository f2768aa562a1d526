#include <brcore8/streams/output_filters.h>

#include <brcore8/core/throw.h>

#include <cstring>
#include <utility>

SIMPLEMENT_CLASS(SOutputFilterStream, SOutputStream, 0);

SOutputFilterStream::SOutputFilterStream(SOutputStream& stream) noexcept
    : stream_(&stream), own_(false) {}

SOutputFilterStream::SOutputFilterStream(SOutputStream* stream, bool own) noexcept
    : stream_(stream), own_(own) {}

SOutputFilterStream::~SOutputFilterStream() {
    if (own_) delete stream_;
}

unsigned long SOutputFilterStream::Write(const void* data, unsigned long count) {
    return stream_->Write(data, count);
}

void SOutputFilterStream::Write(int byte) {
    stream_->Write(byte);
}

void SOutputFilterStream::Close() {
    stream_->Close();
}

void SOutputFilterStream::Flush() {
    stream_->Flush();
}

// ---- SOutputBufferStream ----------------------------------------------------------------------

SIMPLEMENT_CLASS(SOutputBufferStream, SOutputFilterStream, 0);

SOutputBufferStream::SOutputBufferStream(SOutputStream& stream, unsigned long size)
    : SOutputBufferStream(&stream, size, false) {}

SOutputBufferStream::SOutputBufferStream(SOutputStream* stream, unsigned long size, bool own)
    : SOutputFilterStream(stream, own), size_(size != 0 ? size : 256) {
    buffer_ = static_cast<char*>(brcore8::Allocate(size_));
}

SOutputBufferStream::~SOutputBufferStream() {
    brcore8::Release(buffer_);
}

void SOutputBufferStream::FlushBuffer() {
    if (count_ == 0) return;
    const unsigned long count = std::exchange(count_, 0);
    const unsigned long written = Wrapped().Write(buffer_, count);
    if (written >= count) return;
    count_ = count - written;
    std::memmove(buffer_, buffer_ + written, count_);
    brcore8::ThrowIOException("Write failed");
}

void SOutputBufferStream::Write(int byte) {
    if (count_ >= size_) FlushBuffer();
    buffer_[count_++] = static_cast<char>(byte);
}

unsigned long SOutputBufferStream::Write(const void* data, unsigned long count) {
    if (count >= size_) {
        FlushBuffer();
        return Wrapped().Write(data, count);
    }
    if (count > size_ - count_) FlushBuffer();
    if (count != 0) std::memcpy(buffer_ + count_, data, count);
    count_ += count;
    return count;
}

void SOutputBufferStream::Flush() {
    FlushBuffer();
    Wrapped().Flush();
}

void SOutputBufferStream::Close() {
    FlushBuffer();
    Wrapped().Close();
}
