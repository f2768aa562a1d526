#include <brcore8/streams/input_filters.h>

#include <brcore8/core/throw.h>

#include "streams/clamp.h"

#include <cstdint>
#include <cstring>

SIMPLEMENT_CLASS(SInputFilterStream, SInputStream, 0);

SInputFilterStream::SInputFilterStream(SInputStream& stream) noexcept
    : stream_(&stream), own_(false) {}

SInputFilterStream::SInputFilterStream(SInputStream* stream, bool own) noexcept
    : stream_(stream), own_(own) {}

SInputFilterStream::~SInputFilterStream() {
    if (own_) delete stream_;
}

unsigned long SInputFilterStream::Read(void* buffer, unsigned long count) {
    return stream_->Read(buffer, count);
}

int SInputFilterStream::Read() {
    return stream_->Read();
}

unsigned long SInputFilterStream::Skip(unsigned long count) {
    return stream_->Skip(count);
}

int SInputFilterStream::IsEOF() {
    return stream_->IsEOF();
}

unsigned long SInputFilterStream::Available() {
    return stream_->Available();
}

void SInputFilterStream::Close() {
    stream_->Close();
}

void SInputFilterStream::Reset() {
    stream_->Reset();
}

void SInputFilterStream::Mark(unsigned long limit) {
    stream_->Mark(limit);
}

int SInputFilterStream::MarkSupported() {
    return stream_->MarkSupported();
}

// ---- SInputBufferStream -----------------------------------------------------------------------

SIMPLEMENT_CLASS(SInputBufferStream, SInputFilterStream, 0);

SInputBufferStream::SInputBufferStream(SInputStream& stream, unsigned long size)
    : SInputFilterStream(stream), size_(size != 0 ? size : 256), markLimit_(size_) {
    buffer_ = static_cast<char*>(brcore8::Allocate(size_));
}

SInputBufferStream::~SInputBufferStream() {
    brcore8::Release(buffer_);
}

// With a mark and a full buffer: drops what lies before the mark, or grows the buffer, or, when
// the mark's limit is reached, drops the mark.
void SInputBufferStream::MakeRoom() {
    if (mark_ > 0) {
        position_ -= mark_;
        std::memmove(buffer_, buffer_ + mark_, position_);
        mark_ = 0;
    } else if (size_ >= markLimit_) {
        mark_ = NoMark;
        position_ = 0;
    } else {
        const unsigned long doubled = brcore8::AddCounts(position_, position_);
        const unsigned long larger = doubled < markLimit_ ? doubled : markLimit_;
        buffer_ = static_cast<char*>(brcore8::Reallocate(buffer_, larger));
        size_ = larger;
    }
}

void SInputBufferStream::Fill() {
    if (mark_ == NoMark) {
        position_ = 0;
    } else if (position_ >= size_) {
        MakeRoom();
    }
    count_ = position_;
    count_ += SBytesOf(SInputFilterStream::Read(buffer_ + position_, size_ - position_));
}

int SInputBufferStream::Read() {
    if (position_ >= count_) Fill();
    return position_ < count_ ? static_cast<unsigned char>(buffer_[position_++]) : -1;
}

unsigned long SInputBufferStream::Read(void* buffer, unsigned long count) {
    auto* const bytes = static_cast<char*>(buffer);
    unsigned long done = 0;
    if (count == 0) return 0;
    for (;;) {
        if (position_ >= count_) {
            if (count - done >= size_ && mark_ == NoMark) {
                const unsigned long read = SInputFilterStream::Read(bytes + done, count - done);
                return done == 0 ? read : done + SBytesOf(read);
            }
            Fill();
            if (position_ >= count_) return done;
        }
        const unsigned long rest = count - done;
        const unsigned long buffered = count_ - position_;
        const unsigned long copied = buffered < rest ? buffered : rest;
        std::memcpy(bytes + done, buffer_ + position_, copied);
        position_ += copied;
        done += copied;
        if (done == count) return done;
    }
}

unsigned long SInputBufferStream::Skip(unsigned long count) {
    const unsigned long buffered = count_ - position_;
    if (count <= buffered) {
        position_ += count;
        return count;
    }
    position_ = count_;
    return buffered + SInputFilterStream::Skip(count - buffered);
}

int SInputBufferStream::IsEOF() {
    return position_ >= count_ && SInputFilterStream::IsEOF();
}

unsigned long SInputBufferStream::Available() {
    return brcore8::AddCounts(count_ - position_, SInputFilterStream::Available());
}

void SInputBufferStream::Reset() {
    if (mark_ == NoMark) brcore8::ThrowException("Resetting to invalid mark");
    position_ = mark_;
}

void SInputBufferStream::Mark(unsigned long limit) {
    markLimit_ = limit != 0 ? limit : 8192;
    mark_ = position_;
}

int SInputBufferStream::MarkSupported() {
    return 1;
}

// ---- SInputPushbackStream ---------------------------------------------------------------------

SIMPLEMENT_CLASS(SInputPushbackStream, SInputFilterStream, 0);

SInputPushbackStream::SInputPushbackStream(SInputStream& stream, unsigned long capacity)
    : SInputPushbackStream(&stream, capacity, false) {}

SInputPushbackStream::SInputPushbackStream(SInputStream* stream, unsigned long capacity, bool own)
    : SInputFilterStream(stream, own),
      capacity_(capacity),
      position_(capacity),
      buffer_(static_cast<unsigned char*>(brcore8::Allocate(capacity))),
      savedPosition_(capacity) {}

SInputPushbackStream::~SInputPushbackStream() {
    brcore8::Release(buffer_);
    brcore8::Release(saved_);
}

void SInputPushbackStream::Unread(void* data, unsigned long count) {
    if (count > position_) brcore8::ThrowException("Push back buffer is full");
    position_ -= count;
    if (count != 0) std::memmove(buffer_ + position_, data, count);
}

void SInputPushbackStream::Unread(unsigned char byte) {
    if (position_ == 0) brcore8::ThrowException("Push back buffer is full");
    buffer_[--position_] = byte;
}

int SInputPushbackStream::Read() {
    return position_ < capacity_ ? buffer_[position_++] : SInputFilterStream::Read();
}

unsigned long SInputPushbackStream::Read(void* buffer, unsigned long count) {
    if (count == 0) return 0;
    const unsigned long back = capacity_ - position_;
    const unsigned long taken = count < back ? count : back;
    if (taken != 0) std::memcpy(buffer, buffer_ + position_, taken);
    position_ += taken;
    if (taken == count) return taken;
    const unsigned long read =
        SInputFilterStream::Read(static_cast<char*>(buffer) + taken, count - taken);
    return taken == 0 ? read : taken + SBytesOf(read);
}

unsigned long SInputPushbackStream::Skip(unsigned long count) {
    const unsigned long back = capacity_ - position_;
    const unsigned long taken = count < back ? count : back;
    position_ += taken;
    return taken == count ? taken : taken + SInputFilterStream::Skip(count - taken);
}

int SInputPushbackStream::IsEOF() {
    return position_ == capacity_ && SInputFilterStream::IsEOF();
}

unsigned long SInputPushbackStream::Available() {
    return brcore8::AddCounts(capacity_ - position_, SInputFilterStream::Available());
}

// A mark saves from the start of the area, and so does its way back: the two belong together.
void SInputPushbackStream::Mark(unsigned long limit) {
    if (position_ != capacity_ && saved_ == nullptr) {
        saved_ = static_cast<unsigned char*>(brcore8::Allocate(capacity_));
    }
    SInputFilterStream::Mark(limit);
    savedPosition_ = position_;
    if (position_ != capacity_) std::memcpy(saved_, buffer_, capacity_ - position_);
}

void SInputPushbackStream::Reset() {
    SInputFilterStream::Reset();
    position_ = savedPosition_;
    if (position_ != capacity_) std::memcpy(buffer_, saved_, capacity_ - position_);
}
