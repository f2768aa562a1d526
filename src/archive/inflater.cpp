#include <brcore8/archive/inflater.h>

#include <brcore8/core/throw.h>

#include "core/memory.h"

#include <zlib.h>

#include <cstdlib>
#include <new>

namespace {

constexpr char kFailed[] = "zlib error!!!";

// Memory through the library's own gate. It must not throw through zlib.
void* TakeMemory(void*, unsigned count, unsigned size) {
    const std::size_t bytes = std::size_t{count} * size;
    return brcore8::MayAllocate(bytes) ? std::malloc(bytes) : nullptr;
}

void GiveMemory(void*, void* block) {
    std::free(block);
}

}  // namespace

void SInflater::Init(int raw) {
    End();
    stream_ = new (brcore8::Allocate(sizeof(z_stream))) z_stream{};
    stream_->zalloc = TakeMemory;
    stream_->zfree = GiveMemory;
    finished_ = 0;
    totalIn_ = totalOut_ = 0;
    // Every 1.x serves callers of this version; only the first digit is compared.
    const int result = inflateInit2_(stream_, raw != 0 ? -MAX_WBITS : MAX_WBITS, "1.1.3",
                                     static_cast<int>(sizeof(z_stream)));
    if (result == Z_OK) return;
    End();
    if (result == Z_MEM_ERROR) brcore8::ThrowOutOfMemory();
    brcore8::ThrowZipException(kFailed);
}

void SInflater::SetInput(const void* data, int length) noexcept {
    if (stream_ == nullptr) return;
    const bool none = data == nullptr || length < 0;
    stream_->next_in = none ? nullptr : static_cast<Bytef*>(const_cast<void*>(data));
    stream_->avail_in = none ? 0 : static_cast<uInt>(length);
}

// zlib's own totals have 32 bits on some systems.
int SInflater::Step(void* out, int length, int flush) noexcept {
    Bytef none;  // zlib wants an address even where it may write nothing
    stream_->next_out = length > 0 ? static_cast<Bytef*>(out) : &none;
    stream_->avail_out = length > 0 ? static_cast<uInt>(length) : 0;
    const uInt room = stream_->avail_out;
    const uInt input = stream_->avail_in;
    const int result = inflate(stream_, flush);
    totalIn_ += input - stream_->avail_in;
    totalOut_ += room - stream_->avail_out;
    return result;
}

int SInflater::Inflate(void* out, int length) {
    if (stream_ == nullptr) return 0;
    switch (Step(out, length, Z_SYNC_FLUSH)) {
        case Z_OK:
            return length > 0 ? length - static_cast<int>(stream_->avail_out) : 0;
        case Z_STREAM_END:
            finished_ = 1;
            return 0;
        case Z_STREAM_ERROR:
        case Z_BUF_ERROR:
            return 0;
        default:
            brcore8::ThrowZipException(kFailed);
    }
}

int SInflater::NeedsDictionary() noexcept {
    return stream_ != nullptr && Step(nullptr, 0, Z_NO_FLUSH) == Z_NEED_DICT;
}

int SInflater::SetDictionary(const void* dictionary, int length) noexcept {
    if (stream_ == nullptr || dictionary == nullptr || length < 0) return 0;
    return inflateSetDictionary(stream_, static_cast<const Bytef*>(dictionary),
                                static_cast<uInt>(length)) == Z_OK;
}

void SInflater::Reset() noexcept {
    SetInput(nullptr, 0);
    if (stream_ != nullptr) inflateReset(stream_);
    finished_ = 0;
    totalIn_ = totalOut_ = 0;
}

void SInflater::End() noexcept {
    if (stream_ == nullptr) return;
    inflateEnd(stream_);
    brcore8::Release(stream_);
    stream_ = nullptr;
}

const void* SInflater::GetInput() const noexcept {
    return stream_ != nullptr ? stream_->next_in : nullptr;
}

int SInflater::GetInputLength() const noexcept {
    return stream_ != nullptr ? static_cast<int>(stream_->avail_in) : 0;
}
