#include <brcore8/streams/input_buffer.h>

#include "streams/clamp.h"

#include <cstring>
#include <utility>

SIMPLEMENT_CLASS(SInputBuffer, SInputStream, 0);

SInputBuffer::SInputBuffer(const void* data, int length) noexcept {
    Init(data, length);
}

SInputBuffer::~SInputBuffer() = default;

void SInputBuffer::Init(const void* data, int length) noexcept {
    InitSize(data, length > 0 ? static_cast<std::size_t>(length) : 0);
}

void SInputBuffer::InitSize(const void* data, std::size_t size) noexcept {
    start_ = current_ = mark_ = static_cast<const unsigned char*>(data);
    end_ = start_ != nullptr ? start_ + size : start_;
}

int SInputBuffer::Read() {
    return current_ != end_ ? *current_++ : -1;
}

unsigned long SInputBuffer::Read(void* buffer, unsigned long count) {
    const auto rest = static_cast<std::size_t>(end_ - current_);
    const unsigned long read = count < rest ? count : static_cast<unsigned long>(rest);
    if (read != 0) std::memcpy(buffer, current_, read);
    current_ += read;
    return read;
}

unsigned long SInputBuffer::Skip(unsigned long count) {
    const auto rest = static_cast<std::size_t>(end_ - current_);
    current_ = end_;
    return count < rest ? count : static_cast<unsigned long>(rest);
}

unsigned long SInputBuffer::Available() {
    return brcore8::ClampCount(static_cast<std::size_t>(end_ - current_));
}

void SInputBuffer::Close() {
    start_ = end_ = current_ = mark_ = nullptr;
}

void SInputBuffer::Reset() {
    current_ = mark_;
}

void SInputBuffer::Mark(unsigned long) {
    mark_ = current_;
}

int SInputBuffer::MarkSupported() {
    return 1;
}

// ---- SInputGlobal -----------------------------------------------------------------------------

SIMPLEMENT_CLASS(SInputGlobal, SInputBuffer, 0);

SInputGlobal::SInputGlobal(void* handle) : SInputGlobal(SHGlobal(handle)) {}

SInputGlobal::SInputGlobal(SHGlobal block) : block_(std::move(block)) {
    const std::size_t size = block_.Size();
    InitSize(block_.Lock(), size);
}

SInputGlobal::SInputGlobal(void* handle, int length) : SInputGlobal(SHGlobal(handle), length) {}

SInputGlobal::SInputGlobal(SHGlobal block, int length) : block_(std::move(block)) {
    const std::size_t size = block_.Size();
    const std::size_t wanted = length > 0 ? static_cast<std::size_t>(length) : 0;
    InitSize(block_.Lock(), wanted < size ? wanted : size);
}

SInputGlobal::~SInputGlobal() {
    SInputGlobal::Close();
}
