#include <brcore8/streams/output_memory.h>

#include <brcore8/core/throw.h>

#include <cstdint>
#include <cstring>
#include <limits>

SIMPLEMENT_CLASS(SOutputGlobal, SOutputStream, 0);

SOutputGlobal::SOutputGlobal() : block_(SHGlobal::Allocate(Unit)) {
    Adopt(0);
}

SOutputGlobal::~SOutputGlobal() {
    block_.Free();
}

// Locks the block and points into it.
void SOutputGlobal::Adopt(unsigned long used) noexcept {
    start_ = static_cast<unsigned char*>(block_.Lock());
    end_ = start_ + block_.Size();
    current_ = start_ + used;
}

void SOutputGlobal::Resize(unsigned long size, unsigned long used) {
    block_.Unlock();
    try {
        if (block_.Handle() == nullptr) {
            block_ = SHGlobal::Allocate(size);
        } else {
            block_.Resize(size);
        }
    } catch (...) {
        // The block is what it was, and perhaps where it was not.
        if (block_.Handle() != nullptr) Adopt(used);
        throw;
    }
    Adopt(used);
}

// Makes room for `count` bytes more.
void SOutputGlobal::Grow(unsigned long count) {
    const std::uint64_t needed = std::uint64_t{UsedSize()} + count;
    if (needed < count || needed > std::numeric_limits<std::uintptr_t>::max() / 2) {
        brcore8::ThrowOutOfMemory();
    }
    if (needed <= BlockSize()) return;
    // Small blocks grow by as few units as do; large ones by an eighth, so that the cost of moving
    // them stays in proportion to what is written.
    constexpr std::uint64_t small = 1024 * 1024;
    std::uint64_t wanted = needed;
    if (BlockSize() >= small && wanted < BlockSize() + std::uint64_t{BlockSize()} / 8) {
        wanted = BlockSize() + std::uint64_t{BlockSize()} / 8;
    }
    wanted = (wanted + Unit - 1) / Unit * Unit;
    if (wanted > std::numeric_limits<unsigned long>::max()) brcore8::ThrowOutOfMemory();
    Resize(static_cast<unsigned long>(wanted), UsedSize());
}

void SOutputGlobal::Write(int byte) {
    if (current_ == end_) Grow(1);
    *current_++ = static_cast<unsigned char>(byte);
}

unsigned long SOutputGlobal::Write(const void* data, unsigned long count) {
    if (count == 0) return 0;
    const auto* source = static_cast<const unsigned char*>(data);
    // What is written may be a part of the block itself, which growing moves.
    const bool inside = start_ != nullptr && source >= start_ && source < end_;
    const std::ptrdiff_t offset = inside ? source - start_ : 0;
    Grow(count);
    std::memmove(current_, inside ? start_ + offset : source, count);
    current_ += count;
    return count;
}

void SOutputGlobal::Close() {
    block_.Free();
    start_ = end_ = current_ = nullptr;
}

void SOutputGlobal::Attach(void* handle) {
    block_.Attach(handle);
    Adopt(0);
}

void* SOutputGlobal::Detach() {
    if (block_.Handle() == nullptr) return nullptr;
    const unsigned long used = UsedSize();
    if (current_ != end_ && used != 0) Resize(used, used);
    block_.Unlock();
    start_ = end_ = current_ = nullptr;
    return block_.Detach();
}
