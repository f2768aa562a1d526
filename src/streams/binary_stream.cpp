#include <brcore8/streams/binary_stream.h>

#include <brcore8/core/throw.h>
#include <brcore8/strings/multibyte.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>

#include "streams/byte_block.h"

SIMPLEMENT_CLASS(SOutputBinaryStream, SOutputFilterStream, 0);
SIMPLEMENT_CLASS(SInputBinaryStream, SInputFilterStream, 0);

using brcore8::ByteBlock;

namespace {

// The escapes of the length prefix, and what a length must stay below.
constexpr std::uint32_t kByteEscape = 0xFF;
constexpr std::uint32_t kShortEscape = 0xFFFF;
constexpr std::uint32_t kLengthLimit = 0x80000000;

[[noreturn]] void ThrowInvalidString() {
    brcore8::ThrowIOException("Invalid string in binary stream");
}

std::string_view ToZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

// The text of UTF-8 that may lack its zero byte.
SString DecodeText(ByteBlock& bytes) {
    *bytes.Room(1) = 0;
    // What a string cannot hold anyway is not asked for.
    const std::size_t most = SString::MaxBytes + std::size_t{2};
    const std::size_t room = std::min(std::strlen(bytes.Data()) + 1, most);
    ByteBlock text;
    SUTF82THelper(text.Room(room), bytes.Data(), static_cast<int>(room));
    return SString(std::string_view(text.Data()));
}

}  // namespace

// ---- SOutputBinaryStream ------------------------------------------------------------------------

SOutputBinaryStream::SOutputBinaryStream(SOutputStream& stream) noexcept
    : SOutputFilterStream(stream) {}

SOutputBinaryStream::SOutputBinaryStream(SOutputStream* stream, bool own) noexcept
    : SOutputFilterStream(stream, own) {}

SOutputBinaryStream::~SOutputBinaryStream() = default;

void SOutputBinaryStream::WriteBytes(const void* data, std::size_t size) {
    constexpr std::size_t most = 0x40000000;  // a count of 32 bits may be all that Write takes
    const char* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const auto piece = static_cast<unsigned long>(size < most ? size : most);
        if (Wrapped().Write(bytes, piece) != piece) brcore8::ThrowIOException("Write failed");
        bytes += piece;
        size -= piece;
    }
}

void SOutputBinaryStream::WriteValue(std::uint32_t value, unsigned long bytes) {
    const unsigned char low[] = {
        static_cast<unsigned char>(value), static_cast<unsigned char>(value >> 8),
        static_cast<unsigned char>(value >> 16), static_cast<unsigned char>(value >> 24)};
    WriteBytes(low, bytes);
}

void SOutputBinaryStream::WriteText(const char* text, std::size_t size) {
    if (size >= kLengthLimit - 1) ThrowInvalidString();
    const auto length = static_cast<std::uint32_t>(size + 1);
    const bool byte = length < kByteEscape;
    WriteValue(byte ? length : kByteEscape, 1);
    if (!byte) WriteValue(length < kShortEscape ? length : kShortEscape, 2);
    if (length >= kShortEscape) WriteValue(length, 4);
    WriteBytes(text, size);
    WriteValue(0, 1);
}

SOutputBinaryStream& SOutputBinaryStream::operator<<(const SString& text) {
    ByteBlock utf8;
    utf8.AppendUtf8(ToZero(text.View()));
    WriteText(utf8.Data(), utf8.Size());
    return *this;
}

void SOutputBinaryStream::WriteUtf8(std::string_view text) {
    const std::string_view shown = ToZero(text);
    WriteText(shown.data(), shown.size());
}

SOutputBinaryStream& SOutputBinaryStream::operator<<(const SStringTable& table) {
    *this << table.GetCount();
    for (const SString& text : table)
        *this << text;
    return *this;
}

// ---- SInputBinaryStream -------------------------------------------------------------------------

SInputBinaryStream::SInputBinaryStream(SInputStream& stream) noexcept
    : SInputFilterStream(stream) {}

SInputBinaryStream::SInputBinaryStream(SInputStream* stream, bool own) noexcept
    : SInputFilterStream(stream, own) {}

SInputBinaryStream::~SInputBinaryStream() = default;

std::uint32_t SInputBinaryStream::ReadValue(unsigned long bytes) {
    unsigned char low[4] = {};
    for (unsigned long have = 0; have < bytes;) {
        const unsigned long read = SBytesOf(Wrapped().Read(low + have, bytes - have));
        if (read == 0) brcore8::ThrowEndOfFile();
        have += read;
    }
    return low[0] | low[1] << 8 | low[2] << 16 | std::uint32_t{low[3]} << 24;
}

// The length of a string, which the input may hold.
std::uint32_t SInputBinaryStream::ReadLength() {
    std::uint32_t length = ReadValue(1);
    if (length == kByteEscape) length = ReadValue(2);
    if (length == kShortEscape) length = ReadValue(4);
    if (length >= kLengthLimit) ThrowInvalidString();
    if (length > TrustedLength && length > Wrapped().Available()) ThrowInvalidString();
    return length;
}

SInputBinaryStream& SInputBinaryStream::operator>>(SString& text) {
    try {
        ByteBlock bytes;
        bytes.AppendFrom(Wrapped(), ReadLength());
        text = DecodeText(bytes);
    } catch (...) {
        text.Done();
        throw;
    }
    return *this;
}

std::string SInputBinaryStream::ReadUtf8() {
    ByteBlock bytes;
    bytes.AppendFrom(Wrapped(), ReadLength());
    try {
        return std::string(ToZero(bytes.View()));
    } catch (const std::exception&) {
        brcore8::ThrowOutOfMemory();
    }
}

SInputBinaryStream& SInputBinaryStream::operator>>(SStringTable& table) {
    table.Clear();
    SStringTable read;
    for (std::uint32_t left = ReadValue(4); left > 0; --left)
        *this >> read.Add(SString());
    table = std::move(read);
    return *this;
}
