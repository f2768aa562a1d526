#include "streams/byte_block.h"

#include <algorithm>
#include <limits>

#include "strings/mbs.h"
#include "strings/utf8.h"

namespace brcore8 {
namespace {

constexpr std::uint64_t kFirstPiece = 0x10000;
constexpr std::uint64_t kLargestPiece = 0x40000000;

}  // namespace

char* ByteBlock::Room(std::uint64_t size) {
    if (size > std::numeric_limits<std::size_t>::max() - size_) ThrowOutOfMemory();
    data_ = static_cast<char*>(Reallocate(data_, size_ + static_cast<std::size_t>(size)));
    return data_ + size_;
}

void ByteBlock::AppendUtf8(std::string_view text) {
    const CodePage& page = CodePage::Ansi();
    constexpr std::uint64_t mostBytes = 3;  // of one UTF-16 unit
    char* const start = Room(text.size() * mostBytes);
    char* out = start;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p < end; p += mbs::CharBytes(page, p, end))
        out += utf8::Encode(page.WideOf(mbs::UnsignedCodeAt(page, p, end)), out);
    Added(static_cast<std::size_t>(out - start));
}

void ByteBlock::AppendFrom(SInputStream& stream, std::uint64_t size) {
    for (std::uint64_t left = size; left > 0;) {
        const auto most = std::clamp<std::uint64_t>(size_, kFirstPiece, kLargestPiece);
        const auto piece = static_cast<unsigned long>(std::min(left, most));
        const unsigned long read = SBytesOf(stream.Read(Room(piece), piece));
        if (read == 0) ThrowEndOfFile();
        Added(read);
        left -= read;
    }
}

}  // namespace brcore8
