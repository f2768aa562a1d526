#include <brcore8/streams/encodings.h>

#include <brcore8/core/throw.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "platform/byte_search.h"
#include "streams/byte_block.h"
#include "strings/code_page.h"

SIMPLEMENT_CLASS(SOutputStringStream, SOutputFilterStream, 0);

namespace {

std::string LowByteFirst(std::u16string_view units) {
    std::string bytes;
    bytes.reserve(units.size() * 2);
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

// Writes four bytes, of which those before the result are a unit that is no surrogate. Nothing here
// is a branch: which characters stand in a text cannot be foretold.
unsigned char* PutUnit(std::uint32_t unit, unsigned char* out) {
    const std::uint32_t last = 0x80 | (unit & 0x3F);
    const std::uint32_t two = 0xC0 | unit >> 6 | last << 8;
    const std::uint32_t three = 0xE0 | unit >> 12 | (0x80 | (unit >> 6 & 0x3F)) << 8 | last << 16;
    const std::uint32_t bytes = unit < 0x80 ? unit : unit < 0x800 ? two : three;
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<unsigned char>(bytes >> 8 * i);
    return out + 1 + (unit >= 0x80) + (unit >= 0x800);
}

}  // namespace

SOutputStringStream::SOutputStringStream(SOutputStream& stream, Format format) noexcept
    : SOutputFilterStream(stream), format_(format) {}

SOutputStringStream::SOutputStringStream(SOutputStream* stream, bool own, Format format) noexcept
    : SOutputFilterStream(stream, own), format_(format) {}

SOutputStringStream::~SOutputStringStream() = default;

void SOutputStringStream::WriteBlock(std::string_view bytes) {
    if (bytes.size() > std::numeric_limits<unsigned long>::max()) brcore8::ThrowOutOfMemory();
    const auto count = static_cast<unsigned long>(bytes.size());
    if (Wrapped().Write(bytes.data(), count) != count) brcore8::ThrowIOException("Write failed");
}

// In one pass where a byte is a character: into what is needed if every character that is not
// ASCII takes three bytes, and the length of a step.
void SOutputStringStream::WriteUtf8(std::string_view text) {
    const brcore8::CodePage& page = brcore8::CodePage::Ansi();
    if (page.IsDoubleByte()) return WriteBlock(SUtf8FromUtf16(SUtf16FromText(text)));
    const auto* next = reinterpret_cast<const unsigned char*>(text.data());
    const unsigned char* const end = next + text.size();
    const auto beyond = std::count_if(next, end, [](unsigned char byte) { return byte >= 0x80; });
    constexpr std::size_t kStep = 16;
    brcore8::ByteBlock utf8;
    auto* const begin = reinterpret_cast<unsigned char*>(
        utf8.Room(text.size() + 2 * static_cast<std::uint64_t>(beyond) + kStep));
    unsigned char* out = begin;
    // A run of ASCII, which may be empty, and the character behind it.
    while (page.IsPlainAscii() && end - next > std::ptrdiff_t{kStep}) {
        const std::size_t run = brcore8::CopySixteen(next, out);
        next += run;
        out = PutUnit(page.WideOf(*next++), out + run);
    }
    while (next != end)
        out = PutUnit(page.WideOf(*next++), out);
    WriteBlock({utf8.Data(), static_cast<std::size_t>(out - begin)});
}

void SOutputStringStream::Write(const SString& text) {
    try {
        switch (format_) {
            case FormatOem: {
                SString oem = text;
                oem.CharToOemA();
                return WriteBlock(oem.View());
            }
            case FormatUtf16:
                return WriteBlock(LowByteFirst(SUtf16FromText(text.View())));
            case FormatUtf8:
                return WriteUtf8(text.View());
            case FormatAnsi:
                break;
        }
        WriteBlock(text.View());
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    }
}

void SOutputStringStream::WriteLn() {
    Write(SString("\r\n"));
}

void SOutputStringStream::WriteLn(const SString& text) {
    Write(text);
    WriteLn();
}
