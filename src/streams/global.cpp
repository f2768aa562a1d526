#include <brcore8/streams/global.h>

#include <brcore8/core/throw.h>

#include "core/memory.h"
#include "platform/platform.h"

#include <cstring>

SHGlobal::SHGlobal(const SHGlobal& other) : handle_(nullptr) {
    if (other.handle_ == nullptr) return;
    SHGlobal copy = Allocate(other.Size());
    std::memcpy(copy.Lock(), GlobalLock(other.handle_), other.Size());
    GlobalUnlock(other.handle_);
    copy.Unlock();
    handle_ = copy.Detach();
}

SHGlobal& SHGlobal::operator=(const SHGlobal& other) {
    if (this != &other) Attach(SHGlobal(other).Detach());
    return *this;
}

SHGlobal& SHGlobal::operator=(SHGlobal&& other) noexcept {
    if (this != &other) Attach(other.Detach());
    return *this;
}

SHGlobal SHGlobal::Allocate(std::size_t size) {
    void* const handle =
        brcore8::MayAllocate(size) ? GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size) : nullptr;
    if (handle == nullptr) brcore8::ThrowOutOfMemory();
    return SHGlobal(handle);
}

void SHGlobal::Attach(void* handle) noexcept {
    if (handle == handle_) return;
    Free();
    handle_ = handle;
}

void* SHGlobal::Detach() noexcept {
    void* const handle = handle_;
    handle_ = nullptr;
    return handle;
}

void SHGlobal::Free() noexcept {
    if (handle_ == nullptr) return;
    while (GlobalUnlock(handle_) != 0) {
    }
    GlobalFree(handle_);
    handle_ = nullptr;
}

void* SHGlobal::Lock() noexcept {
    return handle_ != nullptr ? GlobalLock(handle_) : nullptr;
}

void SHGlobal::Unlock() noexcept {
    if (handle_ != nullptr) GlobalUnlock(handle_);
}

std::size_t SHGlobal::Size() const noexcept {
    return handle_ != nullptr ? GlobalSize(handle_) : 0;
}

void SHGlobal::Resize(std::size_t size) {
    void* const handle = brcore8::MayAllocate(size)
                             ? GlobalReAlloc(handle_, size, GMEM_MOVEABLE | GMEM_ZEROINIT)
                             : nullptr;
    if (handle == nullptr) brcore8::ThrowOutOfMemory();
    handle_ = handle;
}
