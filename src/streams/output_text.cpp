#include <brcore8/streams/encodings.h>

#include <brcore8/core/throw.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include <limits>
#include <new>
#include <string>
#include <string_view>

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
                return WriteBlock(SUtf8FromUtf16(SUtf16FromText(text.View())));
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
