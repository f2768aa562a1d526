#include <brcore8/streams/std_streams.h>

#include <brcore8/core/throw.h>

#include "streams/clamp.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

// A block's count in the signed type of the standard.
std::streamsize StreamSize(unsigned long count) noexcept {
    constexpr auto kMost = std::numeric_limits<std::streamsize>::max();
    return count < static_cast<unsigned long long>(kMost) ? static_cast<std::streamsize>(count)
                                                          : kMost;
}

}  // namespace

int SInputStdStream::Read() {
    unsigned char byte = 0;
    return SInputStdStream::Read(&byte, 1) == 1 ? byte : -1;
}

unsigned long SInputStdStream::Read(void* buffer, unsigned long count) {
    if (!stream_.good()) {
        if (stream_.bad()) brcore8::ThrowIOException("Read failed");
        return 0;
    }
    stream_.read(static_cast<char*>(buffer), StreamSize(count));
    if (stream_.bad()) brcore8::ThrowIOException("Read failed");
    return static_cast<unsigned long>(stream_.gcount());
}

int SInputStdStream::IsEOF() {
    return !stream_.good() || stream_.peek() == std::istream::traits_type::eof() ? 1 : 0;
}

unsigned long SInputStdStream::Available() {
    if (!stream_.good() || stream_.rdbuf() == nullptr) return 0;
    const std::streamsize ready = stream_.rdbuf()->in_avail();
    return ready > 0 ? brcore8::ClampCount(static_cast<std::uint64_t>(ready)) : 0;
}

unsigned long SOutputStdStream::Write(const void* data, unsigned long count) {
    if (!stream_.write(static_cast<const char*>(data), StreamSize(count))) {
        brcore8::ThrowIOException("Write failed");
    }
    return count;
}

void SOutputStdStream::Write(int byte) {
    if (!stream_.put(static_cast<char>(byte))) brcore8::ThrowIOException("Write failed");
}

void SOutputStdStream::Flush() {
    if (!stream_.flush()) brcore8::ThrowIOException("Write failed");
}

void SOutputStdStream::Close() {
    Flush();
}

SInputStreamBuffer::int_type SInputStreamBuffer::underflow() {
    const unsigned long count = SBytesOf(stream_.Read(buffer_, sizeof buffer_));
    if (count == 0) return traits_type::eof();
    setg(buffer_, buffer_, buffer_ + count);
    return traits_type::to_int_type(buffer_[0]);
}

SOutputStreamBuffer::SOutputStreamBuffer(SOutputStream& stream) noexcept : stream_(stream) {
    setp(buffer_, buffer_ + sizeof buffer_);
}

SOutputStreamBuffer::~SOutputStreamBuffer() {
    try {
        WriteGathered();
    } catch (...) {
        // Whoever wants to know flushes before.
    }
}

void SOutputStreamBuffer::WriteGathered() {
    const auto count = static_cast<unsigned long>(pptr() - pbase());
    setp(buffer_, buffer_ + sizeof buffer_);  // first: a failed write shall not be repeated
    if (count != 0) stream_.Write(buffer_, count);
}

SOutputStreamBuffer::int_type SOutputStreamBuffer::overflow(int_type byte) {
    WriteGathered();
    if (!traits_type::eq_int_type(byte, traits_type::eof())) sputc(traits_type::to_char_type(byte));
    return traits_type::not_eof(byte);
}

int SOutputStreamBuffer::sync() {
    WriteGathered();
    stream_.Flush();
    return 0;
}

unsigned long SOutputSpan::Write(const void* data, unsigned long count) {
    const std::size_t fits = std::min<std::size_t>(count, room_.size() - size_);
    if (fits != 0) std::memcpy(room_.data() + size_, data, fits);
    size_ += fits;
    if (fits < count) brcore8::ThrowIOException("Write failed");
    return count;
}

void SOutputSpan::Write(int byte) {
    const auto low = static_cast<unsigned char>(byte);
    SOutputSpan::Write(&low, 1);
}
