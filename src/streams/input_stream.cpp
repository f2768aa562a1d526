#include <brcore8/streams/input_stream.h>

#include <brcore8/core/throw.h>

#include <new>
#include <stdexcept>

SIMPLEMENT_CLASS(SInputStream, SObject, 0);

SAbstractIO::SInputOperations::~SInputOperations() = default;
SAbstractIO::SMarkOperations::~SMarkOperations() = default;

SInputStream::~SInputStream() = default;

unsigned long SInputStream::Read(void* buffer, unsigned long count) {
    auto* const bytes = static_cast<unsigned char*>(buffer);
    unsigned long stored = 0;
    while (stored < count) {
        const int byte = Read();
        if (byte == -1) break;
        bytes[stored++] = static_cast<unsigned char>(byte);
    }
    return stored;
}

unsigned long SInputStream::Skip(unsigned long count) {
    unsigned long skipped = 0;
    while (skipped < count && Read() != -1)
        ++skipped;
    return skipped;
}

int SInputStream::IsEOF() {
    return Available() == 0;
}

unsigned long SInputStream::Available() {
    return 0;
}

void SInputStream::Reset() {
    brcore8::ThrowNotImplemented();
}

void SInputStream::Mark(unsigned long) {
    brcore8::ThrowNotImplemented();
}

int SInputStream::MarkSupported() {
    return 0;
}

std::string SReadAll(SInputStream& stream) {
    constexpr std::size_t firstBlock = 65536;
    try {
        std::string text;
        std::size_t used = 0;
        for (;;) {
            if (used == text.size()) text.resize(used < firstBlock ? firstBlock : used * 2);
            const std::size_t room = text.size() - used;
            const auto count = static_cast<unsigned long>(room < 0x40000000 ? room : 0x40000000);
            const unsigned long read = SBytesOf(stream.Read(text.data() + used, count));
            if (read == 0) break;
            used += read;
        }
        text.resize(used);
        return text;
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    } catch (const std::length_error&) {
        brcore8::ThrowOutOfMemory();
    }
}
