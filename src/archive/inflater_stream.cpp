#include <brcore8/archive/inflater_stream.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include <algorithm>

namespace {

constexpr unsigned long kMostAtOnce = 0x40000000;  // counts of the inflater are ints
constexpr unsigned long kSkipStep = 512;

}  // namespace

void brcore8::ReleaseBlock::operator()(void* block) const noexcept {
    Release(block);
}

SInflaterInputStream::SInflaterInputStream(SInputStream& stream, unsigned long size)
    : SInputFilterStream(stream),
      size_(std::clamp(size, 1ul, kMostAtOnce)),
      buffer_(static_cast<char*>(brcore8::Allocate(size_))) {}

SInflaterInputStream::~SInflaterInputStream() = default;

unsigned long SInflaterInputStream::FillSome() {
    const unsigned long read = SBytesOf(Wrapped().Read(buffer_.get(), size_));
    inflater_.SetInput(buffer_.get(), static_cast<int>(read));
    return read;
}

void SInflaterInputStream::Fill() {
    if (FillSome() == 0) brcore8::ThrowEndOfFile();
}

// By the running total: the inflater does not count the bytes of its last step.
unsigned long SInflaterInputStream::ReadSome(void* buffer, int count) {
    const std::uint64_t before = inflater_.GetTotalOut();
    while (!inflater_.IsFinished()) {
        inflater_.Inflate(buffer, count);
        const std::uint64_t produced = inflater_.GetTotalOut() - before;
        if (produced != 0) return static_cast<unsigned long>(produced);
        if (inflater_.IsFinished() || inflater_.NeedsDictionary()) break;
        if (inflater_.GetInputLength() == 0) Fill();
    }
    return 0;
}

unsigned long SInflaterInputStream::Read(void* buffer, unsigned long count) {
    if (count == 0) return 0;
    try {
        return ReadSome(buffer, static_cast<int>(std::min(count, kMostAtOnce)));
    } catch (const SException&) {
        brcore8::ThrowZipException("Invalid ZLIB data format");
    }
}

int SInflaterInputStream::Read() {
    unsigned char byte;
    return Read(&byte, 1) == 1 ? byte : -1;
}

unsigned long SInflaterInputStream::Skip(unsigned long count) {
    char block[kSkipStep];
    unsigned long done = 0;
    while (done < count) {
        const unsigned long read = SBytesOf(Read(block, std::min(count - done, kSkipStep)));
        if (read == 0) break;
        done += read;
    }
    return done;
}

void SInflaterInputStream::Reset() {
    brcore8::ThrowNotImplemented();
}

void SInflaterInputStream::Mark(unsigned long) {
    brcore8::ThrowNotImplemented();
}
