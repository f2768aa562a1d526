#include <brcore8/core/exception.h>
#include <brcore8/streams/encode_streams.h>

#include <algorithm>

SIMPLEMENT_CLASS(SInputStreamEncode, SInputFilterStream, 0);
SIMPLEMENT_CLASS(SOutputStreamEncode, SOutputFilterStream, 0);

SEncoder::~SEncoder() = default;

int SEncoder::HasMemory() const {
    return 0;
}

// --- Reading ------------------------------------------------------------------------------------

int SInputStreamEncode::Read() {
    const int byte = SInputFilterStream::Read();
    return byte >= 0 ? encoder_.Encode(static_cast<unsigned char>(byte)) : byte;
}

unsigned long SInputStreamEncode::Read(void* buffer, unsigned long count) {
    const unsigned long got = SInputFilterStream::Read(buffer, count);
    auto* const bytes = static_cast<unsigned char*>(buffer);
    for (unsigned long i = 0; i < SBytesOf(got); ++i)
        bytes[i] = encoder_.Encode(bytes[i]);
    return got;
}

unsigned long SInputStreamEncode::Skip(unsigned long count) {
    if (!encoder_.HasMemory()) return SInputFilterStream::Skip(count);
    unsigned long passed = 0;
    while (passed < count && Read() >= 0)
        ++passed;
    return passed;
}

void SInputStreamEncode::Reset() {
    if (encoder_.HasMemory()) throw SENotImplemented();
    SInputFilterStream::Reset();
}

void SInputStreamEncode::Mark(unsigned long limit) {
    if (encoder_.HasMemory()) throw SENotImplemented();
    SInputFilterStream::Mark(limit);
}

int SInputStreamEncode::MarkSupported() {
    return !encoder_.HasMemory() && SInputFilterStream::MarkSupported();
}

// --- Writing ------------------------------------------------------------------------------------

// The caller's bytes stay as they are: a block of our own is encoded, a piece at a time.
unsigned long SOutputStreamEncode::Write(const void* data, unsigned long count) {
    unsigned char block[4096];
    const auto* bytes = static_cast<const unsigned char*>(data);
    unsigned long written = 0;
    while (written < count) {
        const unsigned long piece = std::min<unsigned long>(count - written, sizeof block);
        for (unsigned long i = 0; i < piece; ++i)
            block[i] = encoder_.Encode(bytes[written + i]);
        const unsigned long taken = SOutputFilterStream::Write(block, piece);
        written += taken;
        if (taken < piece) break;
    }
    return written;
}

void SOutputStreamEncode::Write(int byte) {
    SOutputFilterStream::Write(encoder_.Encode(static_cast<unsigned char>(byte)));
}
