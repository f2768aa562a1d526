#include "text/rtf_picture.h"

#include <cstddef>
#include <cstdint>

#include "text/rtf_control.h"

namespace brcore8::rtf {
namespace {

enum class Kind { Unknown, Metafile, EnhancedMetafile, Bitmap };

// The first bytes of a picture's data.
class Head {
public:
    bool Full() const noexcept { return size_ == sizeof bytes_; }
    void Add(unsigned byte) noexcept {
        if (!Full()) bytes_[size_++] = static_cast<unsigned char>(byte);
    }
    // A number of two or four bytes, its lowest first; 0 behind the end.
    std::uint32_t Number(std::size_t at, std::size_t bytes) const noexcept {
        std::uint32_t number = 0;
        for (std::size_t i = bytes; i-- > 0;)
            number = number << 8 | (at + i < size_ ? bytes_[at + i] : 0u);
        return number;
    }
    bool Begins(Kind kind) const noexcept {
        switch (kind) {
            case Kind::Metafile:
                return size_ >= 18 && Number(0, 2) - 1 < 2 && Number(2, 2) == 9;
            case Kind::EnhancedMetafile:
                return Number(0, 4) == 1 && Number(40, 4) == 0x464D4520;  // " EMF"
            case Kind::Bitmap:
                return size_ >= 40 && Number(0, 4) == 40;
            default:
                return false;
        }
    }

private:
    unsigned char bytes_[44];
    std::size_t size_ = 0;
};

// Behind a control word, having taken what it says about the picture.
const char* ReadAttribute(const char* p, const char* end, Kind& kind, Head& head) noexcept {
    const ControlWord word = ReadWord(p, end);
    if (word.name == "wmetafile") kind = Kind::Metafile;
    if (word.name == "emfblip") kind = Kind::EnhancedMetafile;
    if (word.name == "dibitmap") kind = Kind::Bitmap;
    p = word.end;
    if (word.name != "bin") return p;
    const char* const dataEnd = p + word.Count(static_cast<std::size_t>(end - p));
    for (; p < dataEnd && !head.Full(); ++p)
        head.Add(static_cast<unsigned char>(*p));
    return dataEnd;
}

}  // namespace

bool HoldsPicture(const char* p, const char* end) noexcept {
    Kind kind = Kind::Unknown;
    Head head;
    int high = -1;
    while (p && p < end && !head.Full()) {
        if (*p == '{') {
            p = FindGroupEnd(p + 1, end);
            if (p < end) ++p;
        } else if (*p == '\\') {
            const bool word = end - p > 1 && IsLetter(p[1]);
            p = word ? ReadAttribute(p, end, kind, head) : SkipControl(p, end);
        } else {
            const int digit = HexValue(*p++);
            if (digit < 0) continue;
            if (high >= 0) head.Add(static_cast<unsigned>(high * 16 + digit));
            high = high < 0 ? digit : -1;
        }
    }
    return head.Begins(kind);
}

}  // namespace brcore8::rtf
