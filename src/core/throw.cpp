#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include "core/memory.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace brcore8 {

namespace {

constinit std::atomic<AllocationFilter> g_filter{nullptr};

}  // namespace

void ThrowOutOfMemory() {
    throw SEOutOfMemory();
}

void ThrowNotImplemented() {
    throw SENotImplemented();
}

void ThrowCOMException(std::int32_t code) {
    throw SECOMException(code);
}

void ThrowWinError(std::uint32_t code) {
    throw SEWinError(code);
}

void ThrowException(const char* text) {
    throw SException(text);
}

void ThrowIOException(const char* text) {
    throw SEIOException(text);
}

void ThrowIOAborted() {
    throw SEIOAbortedException();
}

void ThrowEndOfFile() {
    throw SEEOFException();
}

void ThrowZipException(const char* text) {
    throw SEZipException(text);
}

void ThrowUTFException(int first, int second, int third) {
    throw SEUTFException(first, second, third);
}

bool MayAllocate(std::size_t size) {
    // No object is larger; some heaps end the process when asked for it.
    if (size > PTRDIFF_MAX) return false;
    const AllocationFilter filter = g_filter.load(std::memory_order_acquire);
    return filter == nullptr || filter(size);
}

void* Allocate(std::size_t size) {
    void* const block = MayAllocate(size) ? std::malloc(size != 0 ? size : 1) : nullptr;
    if (block == nullptr) ThrowOutOfMemory();
    return block;
}

void* Reallocate(void* block, std::size_t size) {
    void* const moved = MayAllocate(size) ? std::realloc(block, size != 0 ? size : 1) : nullptr;
    if (moved == nullptr) ThrowOutOfMemory();
    return moved;
}

void Release(void* block) noexcept {
    std::free(block);
}

AllocationFilter SetAllocationFilter(AllocationFilter filter) noexcept {
    return g_filter.exchange(filter, std::memory_order_acq_rel);
}

}  // namespace brcore8
