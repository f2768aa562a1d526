#include <brcore8/streams/data_stream.h>

#include <brcore8/core/throw.h>

#include <string_view>

#include "streams/byte_block.h"
#include "strings/mbs.h"

SIMPLEMENT_CLASS(SDataOutputStream, SOutputFilterStream, 0);
SIMPLEMENT_CLASS(SDataInputStream, SInputFilterStream, 0);

using brcore8::ByteBlock;
using brcore8::CodePage;
namespace mbs = brcore8::mbs;

namespace {

constexpr std::size_t kLengthBytes = 2;
constexpr std::size_t kMostLength = 0xFFFF;

void PutHighFirst(char* out, std::uint32_t value, int bytes) {
    for (int i = bytes - 1; i >= 0; --i, value >>= 8)
        out[i] = static_cast<char>(value & 0xFF);
}

// Leaves the place of the length in front of what follows.
void ReserveLength(ByteBlock& block) {
    PutHighFirst(block.Room(kLengthBytes), 0, kLengthBytes);
    block.Added(kLengthBytes);
}

void SetLength(ByteBlock& block, std::size_t length) {
    if (length > kMostLength) brcore8::ThrowIOException("Text too long for a data stream");
    PutHighFirst(block.Data(), static_cast<std::uint32_t>(length), kLengthBytes);
}

void AppendChars(ByteBlock& block, std::string_view text) {
    const CodePage& page = CodePage::Ansi();
    char* const start = block.Room(std::uint64_t{text.size()} * 2);
    char* out = start;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; p += mbs::CharBytes(page, p, end), out += 2)
        PutHighFirst(out, page.WideOf(mbs::UnsignedCodeAt(page, p, end)), 2);
    block.Added(static_cast<std::size_t>(out - start));
}

// Collects text of the process's page, a UTF-16 unit at a time.
class TextMaker {
public:
    explicit TextMaker(std::size_t units) : out_(text_.Room(std::uint64_t{units} * 2)) {}
    void Add(std::uint16_t unit) {
        const std::size_t width = CodePage::Ansi().FromWide(&unit, 1, out_ + text_.Size(), 2);
        text_.Added(width);
    }
    SString Text() const { return SString(text_.View()); }

private:
    ByteBlock text_;
    char* out_;
};

// One to three bytes of UTF-8, each taken by what its high bits say.
class Utf8Reader {
public:
    explicit Utf8Reader(std::string_view bytes) : bytes_(bytes) {}
    bool AtEnd() const { return at_ == bytes_.size(); }

    std::uint16_t Next() {
        const int first = Take();
        if (first < 0x80) return static_cast<std::uint16_t>(first);
        if (first < 0xC0 || first >= 0xF0) brcore8::ThrowUTFException(first, 0, 0);
        const int second = Take();
        if ((second & ~0x3F) != 0x80) brcore8::ThrowUTFException(first, second, 0);
        const int two = (first & 0x1F) << 6 | (second & 0x3F);
        if (first < 0xE0) return static_cast<std::uint16_t>(two);
        const int third = Take();
        if ((third & ~0x3F) != 0x80) brcore8::ThrowUTFException(first, second, third);
        return static_cast<std::uint16_t>(two << 6 | (third & 0x3F));
    }

private:
    int Take() { return AtEnd() ? -1 : static_cast<unsigned char>(bytes_[at_++]); }

    std::string_view bytes_;
    std::size_t at_ = 0;
};

}  // namespace

// ---- SDataOutputStream --------------------------------------------------------------------------

SDataOutputStream::SDataOutputStream(SOutputStream& stream) noexcept
    : SOutputFilterStream(stream) {}

SDataOutputStream::SDataOutputStream(SOutputStream* stream, bool own) noexcept
    : SOutputFilterStream(stream, own) {}

SDataOutputStream::~SDataOutputStream() = default;

void SDataOutputStream::WriteBlock(const void* data, std::size_t size) {
    const auto count = static_cast<unsigned long>(size);
    if (count != size) brcore8::ThrowOutOfMemory();
    if (Wrapped().Write(data, count) != count) brcore8::ThrowIOException("Write failed");
}

void SDataOutputStream::WriteInt(std::int32_t value) {
    char bytes[4];
    PutHighFirst(bytes, static_cast<std::uint32_t>(value), 4);
    WriteBlock(bytes, sizeof bytes);
}

void SDataOutputStream::WriteLong(std::int64_t value) {
    WriteInt(static_cast<std::int32_t>(value >> 32));
    WriteInt(static_cast<std::int32_t>(value & 0xFFFFFFFF));
}

void SDataOutputStream::WriteUTF(const SString& text) {
    ByteBlock block;
    ReserveLength(block);
    block.AppendUtf8(text.View());
    SetLength(block, block.Size() - kLengthBytes);
    WriteBlock(block.Data(), block.Size());
}

void SDataOutputStream::WriteChars(const SString& text) {
    ByteBlock block;
    AppendChars(block, text.View());
    WriteBlock(block.Data(), block.Size());
}

void SDataOutputStream::WriteUnicode(const SString& text) {
    ByteBlock block;
    ReserveLength(block);
    AppendChars(block, text.View());
    SetLength(block, (block.Size() - kLengthBytes) / 2);
    WriteBlock(block.Data(), block.Size());
}

// ---- SDataInputStream ---------------------------------------------------------------------------

SDataInputStream::SDataInputStream(SInputStream& stream) noexcept : SInputFilterStream(stream) {}

SDataInputStream::SDataInputStream(SInputStream* stream, bool own) noexcept
    : SInputFilterStream(stream, own) {}

SDataInputStream::~SDataInputStream() = default;

std::int32_t SDataInputStream::ReadInt() {
    const std::uint32_t high = ReadShort();
    return static_cast<std::int32_t>(high << 16 | ReadShort());
}

std::uint32_t SDataInputStream::ReadShort() {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < kLengthBytes; ++i) {
        const int byte = Wrapped().Read();
        if (byte == -1) brcore8::ThrowEndOfFile();
        value = value << 8 | (byte & 0xFF);
    }
    return value;
}

std::int64_t SDataInputStream::ReadLong() {
    const auto high = static_cast<std::uint64_t>(std::int64_t{ReadInt()});
    const auto low = static_cast<std::uint64_t>(std::int64_t{ReadInt()});
    return static_cast<std::int64_t>(high << 32 | low);
}

SString SDataInputStream::ReadUTF() {
    ByteBlock block;
    block.AppendFrom(Wrapped(), ReadShort());
    TextMaker text(block.Size());
    for (Utf8Reader reader(block.View()); !reader.AtEnd();)
        text.Add(reader.Next());
    return text.Text();
}

SString SDataInputStream::ReadUnicode() {
    ByteBlock block;
    block.AppendFrom(Wrapped(), std::uint64_t{ReadShort()} * 2);
    TextMaker text(block.Size() / 2);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(block.Data());
    for (std::size_t i = 0; i < block.Size(); i += 2)
        text.Add(static_cast<std::uint16_t>(bytes[i] << 8 | bytes[i + 1]));
    return text.Text();
}
