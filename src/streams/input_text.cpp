#include <brcore8/streams/encodings.h>

#include <brcore8/core/throw.h>
#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/multibyte.h>

#include <algorithm>
#include <new>
#include <string>

SIMPLEMENT_CLASS(SInputMultiFormat, SInputPushbackStream, 0);

namespace {

constexpr unsigned long kMarkBytes = 3;

bool IsContinuation(int byte) noexcept {
    return byte >= 0 && (byte & 0xC0) == 0x80;
}

}  // namespace

SInputMultiFormat::SInputMultiFormat(SInputStream& stream, unsigned long capacity)
    : SInputMultiFormat(stream, capacity, FormatAnsi) {}

SInputMultiFormat::SInputMultiFormat(SInputStream& stream, unsigned long capacity, Format format)
    : SInputMultiFormat(&stream, false, capacity, format) {}

SInputMultiFormat::SInputMultiFormat(SInputStream& stream, unsigned long capacity, Format format,
                                     SKnownFormat known)
    : SInputMultiFormat(&stream, false, capacity, format, known) {}

SInputMultiFormat::SInputMultiFormat(SInputStream* stream, bool own, unsigned long capacity)
    : SInputMultiFormat(stream, own, capacity, FormatAnsi) {}

SInputMultiFormat::SInputMultiFormat(SInputStream* stream, bool own, unsigned long capacity,
                                     Format format)
    : SInputMultiFormat(stream, own, capacity, format, SKnownFormat()) {
    Detect();
}

SInputMultiFormat::SInputMultiFormat(SInputStream* stream, bool own, unsigned long capacity,
                                     Format format, SKnownFormat)
    : SInputPushbackStream(stream, std::max(capacity, kMarkBytes), own), format_(format) {}

SInputMultiFormat::~SInputMultiFormat() = default;

void SInputMultiFormat::Detect() {
    unsigned char mark[kMarkBytes];
    if (SBytesOf(Wrapped().Read(mark, kMarkBytes)) < kMarkBytes) return;
    if (mark[0] == 0xEF && mark[1] == 0xBB && mark[2] == 0xBF) {
        format_ = FormatUtf8;
    } else if (mark[0] == 0xFE && mark[1] == 0xFF) {
        format_ = FormatUtf16;
    } else {
        Unread(mark, kMarkBytes);
    }
}

// Past the operations that a derived class converts.
int SInputMultiFormat::ReadByte() {
    return ahead_.Count() == 0 || HasUnread() ? SInputPushbackStream::Read() : *ahead_.next++;
}

unsigned SInputMultiFormat::ReadCharacter() {
    const int first = ReadByte();
    if (first == -1) return EndOfText;
    if (format_ == FormatUtf16) {
        const int high = ReadByte();
        if (high == -1) brcore8::ThrowEndOfFile();
        return static_cast<unsigned>(high) * 256 + static_cast<unsigned>(first);
    }
    if (first < 0x80) return static_cast<unsigned>(first);
    if (first < 0xC0 || first >= 0xF0) brcore8::ThrowUTFException(first, 0, 0);
    const int second = ReadByte();
    if (!IsContinuation(second)) brcore8::ThrowUTFException(first, second, 0);
    if (first < 0xE0) return static_cast<unsigned>((first & 0x1F) << 6 | (second & 0x3F));
    const int third = ReadByte();
    if (!IsContinuation(third)) brcore8::ThrowUTFException(first, second, third);
    return static_cast<unsigned>((first & 0x0F) << 12 | (second & 0x3F) << 6 | (third & 0x3F));
}

void SInputMultiFormat::ConsumeLineEnd(int first) {
    if ((first != '\r' && first != '\n') || (ahead_.Count() == 0 && SInputPushbackStream::IsEOF())) return;
    // Behind a CR or LF of UTF-16 text stands its high byte.
    const auto passHigh = [this] {
        if (format_ == FormatUtf16) ReadByte();
    };
    int byte = ReadByte();
    while (first == '\r' && byte == '\r') {
        passHigh();
        byte = ReadByte();
    }
    if (byte == (first == '\r' ? '\n' : '\r')) {
        passHigh();
    } else if (byte != -1) {
        Unread(static_cast<unsigned char>(byte));
    }
}

// ---- SInputStringStream -----------------------------------------------------------------------

SIMPLEMENT_CLASS(SInputStringStream, SInputMultiFormat, 0);

SInputStringStream::~SInputStringStream() = default;

SString SInputStringStream::ReadLn() {
    try {
        return IsUnicode() ? ReadUnicode() : ReadBytes();
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    }
}

SString SInputStringStream::ReadBytes() {
    std::string line;
    for (int byte; (byte = Read()) != -1;) {
        if (SIsLineEnd(static_cast<char>(byte))) {
            ConsumeLineEnd(byte);
            break;
        }
        line += static_cast<char>(byte);
    }
    return SString(std::string_view(line));
}

SString SInputStringStream::ReadUnicode() {
    std::u16string line;
    for (unsigned character; (character = ReadCharacter()) < EndOfText;) {
        if (SIsLineEnd(static_cast<char16_t>(character))) {
            ConsumeLineEnd(static_cast<int>(character));
            break;
        }
        line += static_cast<char16_t>(character);
    }
    return SString(std::string_view(STextFromUtf16(line)));
}
