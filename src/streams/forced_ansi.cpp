#include <brcore8/core/throw.h>
#include <brcore8/streams/encodings.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/byte_search.h"
#include "streams/clamp.h"
#include "strings/ascii.h"
#include "strings/code_page.h"

SIMPLEMENT_CLASS(SInputForcedANSIStream, SInputMultiFormat, 0);

namespace {

constexpr unsigned kLineSeparator = 0x2028;
constexpr unsigned long kBlock = 32768;
constexpr unsigned long kLeastRoom = 64;  // for less, single bytes are good enough

// Converts text that is whole and well-formed, and of line ends CR LF and LF where the byte behind
// shows that no more belongs to them. Everything else it leaves where it is.
struct Conversion {
    const unsigned char* next;
    const unsigned char* const end;
    unsigned char* out;
    unsigned char* const outEnd;
    const brcore8::CodePage& page;

    std::size_t Left() const noexcept { return static_cast<std::size_t>(end - next); }
    std::size_t Room() const noexcept { return static_cast<std::size_t>(outEnd - out); }

    void FromBytes() noexcept {
        for (;;) {
            const std::size_t most = std::min(Left(), Room());
            const std::size_t run = brcore8::FindLineEnd(next, most);
            std::copy_n(next, run, out);
            next += run;
            out += run;
            if (run == most || !TakeLineEnd<1>()) return;
        }
    }

    void FromUtf8() noexcept {
        for (;;) {
            if (page.IsPlainAscii()) {
                const std::size_t run = brcore8::CopyAsciiText(next, std::min(Left(), Room()), out);
                next += run;
                out += run;
            }
            if (Left() < 1 || Room() < 2) return;
            if (*next == '\r' || *next == '\n' ? !TakeLineEnd<1>() : !TakeUtf8()) return;
        }
    }

    void FromUtf16() noexcept {
        for (;;) {
            if (page.IsPlainAscii()) {
                const std::size_t run =
                    brcore8::NarrowAsciiText(next, std::min(Left() / 2, Room()), out);
                next += 2 * run;
                out += run;
            }
            if (Left() < 2 || Room() < 2) return;
            const unsigned unit = next[0] | next[1] << 8;
            if (unit == '\r' || unit == '\n') {
                if (!TakeLineEnd<2>()) return;
            } else if (unit == kLineSeparator || unit == 0xFFFF) {
                return;
            } else {
                next += 2;
                Put(unit);
            }
        }
    }

private:
    void Put(unsigned unit) noexcept {
        const unsigned code = page.CodeOf(static_cast<std::uint16_t>(unit));
        if (code >= 256) *out++ = static_cast<unsigned char>(code >> 8);
        *out++ = static_cast<unsigned char>(code);
    }

    // One character of up to three bytes.
    bool TakeUtf8() noexcept {
        const auto follows = [this](std::size_t i) { return (next[i] & 0xC0) == 0x80; };
        const unsigned first = next[0];
        if (first < 0x80) {
            next += 1;
            Put(first);
        } else if (first >= 0xC0 && first < 0xE0 && Left() >= 2 && follows(1)) {
            const unsigned unit = (first & 0x1F) << 6 | (next[1] & 0x3F);
            if (unit == '\r' || unit == '\n') return false;
            next += 2;
            Put(unit);
        } else if (first >= 0xE0 && first < 0xF0 && Left() >= 3 && follows(1) && follows(2)) {
            const unsigned unit = (first & 0x0F) << 12 | (next[1] & 0x3F) << 6 | (next[2] & 0x3F);
            if (unit == '\r' || unit == '\n' || unit == kLineSeparator || unit == 0xFFFF)
                return false;
            next += 3;
            Put(unit);
        } else {
            return false;
        }
        return true;
    }

    // A line end of units of that many bytes.
    template <std::size_t Unit>
    bool TakeLineEnd() noexcept {
        if (Left() < 2 * Unit || Room() < 2) return false;
        const bool pair = next[0] == '\r' && next[Unit] == '\n' && (Unit == 1 || next[3] == 0);
        if (!pair && (next[0] != '\n' || next[Unit] == '\r')) return false;
        next += pair ? 2 * Unit : Unit;
        *out++ = '\r';
        *out++ = '\n';
        return true;
    }
};

}  // namespace

SInputForcedANSIStream::~SInputForcedANSIStream() {
    brcore8::Release(block_);
    brcore8::Release(marked_);
}

int SInputForcedANSIStream::Next() {
    if (pending_ >= 1) return std::exchange(pending_, -1);
    unsigned character;
    if (IsUnicode()) {
        character = ReadCharacter();
        if (character >= EndOfText) return -1;
    } else {
        const int byte = ReadByte();
        if (byte != '\r' && byte != '\n') return byte;
        character = static_cast<unsigned>(byte);
    }
    if (character == '\r' || character == '\n' || character == kLineSeparator) {
        ConsumeLineEnd(static_cast<int>(character));
        pending_ = '\n';
        return '\r';
    }
    char bytes[2] = {};
    const std::uint16_t unit = static_cast<std::uint16_t>(character);
    if (brcore8::CodePage::Ansi().FromWide(&unit, 1, bytes, 2) > 1) {
        pending_ = static_cast<unsigned char>(bytes[1]);
    }
    return static_cast<unsigned char>(bytes[0]);
}

int SInputForcedANSIStream::Read() {
    const int byte = Next();
    return byte < 0x80 ? byte : byte - 0x100;
}

// Takes a block of the wrapped stream, so small that all of it fits into `room` converted: a byte
// becomes two at most. When the room is full nothing is left of the block, unless a part of it was
// malformed or an end marker, and the stream stands where reading byte by byte would leave it.
void SInputForcedANSIStream::ReadAhead(unsigned long room) {
    if (ahead_.Count() != 0 || HasUnread() || room < kLeastRoom) return;
    if (block_ == nullptr) block_ = static_cast<unsigned char*>(brcore8::Allocate(kBlock));
    ahead_.next = ahead_.end = block_;
    ahead_.end += SBytesOf(Wrapped().Read(block_, std::min(room / 2, kBlock)));
}

// Converts from the start of what is read ahead; stops before what needs a closer look.
unsigned long SInputForcedANSIStream::ConvertAhead(unsigned char* out, unsigned long room) {
    if (HasUnread()) return 0;
    Conversion work{ahead_.next, ahead_.end, out, out + room, brcore8::CodePage::Ansi()};
    switch (GetFormat()) {
        case FormatUtf8:
            work.FromUtf8();
            break;
        case FormatUtf16:
            work.FromUtf16();
            break;
        default:
            work.FromBytes();
    }
    ahead_.next = work.next;
    return static_cast<unsigned long>(work.out - out);
}

unsigned long SInputForcedANSIStream::Read(void* buffer, unsigned long count) {
    auto* const bytes = static_cast<unsigned char*>(buffer);
    unsigned long stored = 0;
    while (stored < count) {
        if (pending_ < 1) {
            ReadAhead(count - stored);
            stored += ConvertAhead(bytes + stored, count - stored);
            if (stored == count) break;
        }
        const int byte = Next();
        if (byte == -1) break;
        bytes[stored++] = static_cast<unsigned char>(byte);
    }
    return stored;
}

unsigned long SInputForcedANSIStream::Skip(unsigned long count) {
    unsigned long skipped = 0;
    while (skipped < count && Next() != -1)
        ++skipped;
    return skipped;
}

int SInputForcedANSIStream::IsEOF() {
    return pending_ < 1 && ahead_.Count() == 0 && SInputMultiFormat::IsEOF();
}

unsigned long SInputForcedANSIStream::Available() {
    const unsigned long read = ahead_.Count() + (pending_ < 1 ? 0 : 1);
    return brcore8::AddCounts(read, SInputMultiFormat::Available());
}

// The wrapped stream stands behind what was read ahead, so its own mark is not enough.
void SInputForcedANSIStream::Mark(unsigned long limit) {
    const unsigned long count = ahead_.Count();
    auto* const kept = count != 0 ? static_cast<unsigned char*>(brcore8::Allocate(count)) : nullptr;
    try {
        SInputMultiFormat::Mark(limit);
    } catch (...) {
        brcore8::Release(kept);
        throw;
    }
    std::copy_n(ahead_.next, count, kept);
    brcore8::Release(std::exchange(marked_, kept));
    markedCount_ = count;
    markedPending_ = pending_;
    ahead_ = {marked_, marked_ + count};
}

void SInputForcedANSIStream::Reset() {
    SInputMultiFormat::Reset();
    ahead_ = {marked_, marked_ + markedCount_};
    pending_ = markedPending_;
}
