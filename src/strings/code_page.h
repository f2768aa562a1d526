// A code page as tables: lead bytes, case, classes, and both directions to UTF-16. Pages are made
// on first use, never change afterwards and live as long as the process, so that a reference
// stays valid and reading needs no lock. Any thread may call anything.
#ifndef BRCORE8_STRINGS_CODE_PAGE_H
#define BRCORE8_STRINGS_CODE_PAGE_H

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "platform/code_pages.h"

namespace brcore8 {

class CodePage {
public:
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    // The process's pages. The first use in a process loads the default page and ends the process
    // when there is no memory for that; later ones are a single load.
    static const CodePage& Ansi() noexcept {
        const CodePage* page = ansi_.load(std::memory_order_acquire);
        return page ? *page : LoadDefault(ansi_, false);
    }
    // Null until someone needed it.
    static const CodePage* AnsiIfLoaded() noexcept { return ansi_.load(std::memory_order_acquire); }
    static const CodePage& Oem() noexcept {
        const CodePage* page = oem_.load(std::memory_order_acquire);
        return page ? *page : LoadDefault(oem_, true);
    }
    static void SetAnsi(const CodePage& page) noexcept { ansi_.store(&page); }
    static void SetOem(const CodePage& page) noexcept { oem_.store(&page); }

    // Null when the platform has no such page; throws SEOutOfMemory.
    static const CodePage* Find(unsigned number);

    unsigned Number() const noexcept { return number_; }
    bool IsDoubleByte() const noexcept { return doubleByte_; }
    bool IsLead(unsigned char byte) const noexcept { return lead_[byte]; }

    // Folds of the 256 bytes; lead bytes stay as they are.
    const unsigned char* LowerBytes() const noexcept { return lowerBytes_; }
    const unsigned char* UpperBytes() const noexcept { return upperBytes_; }

    // A code is a byte, or lead * 256 + trail. Bits above the lowest 16 are ignored, so that a code
    // whose lead byte was taken as signed means the same character.
    unsigned ToLower(unsigned code) const noexcept {
        if (code < 256) return lowerBytes_[code];
        const Pairs* pairs = pairs_[code >> 8 & 0xFF];
        return pairs ? pairs->lower[code & 0xFF] : code;
    }
    unsigned ToUpper(unsigned code) const noexcept {
        if (code < 256) return upperBytes_[code];
        const Pairs* pairs = pairs_[code >> 8 & 0xFF];
        return pairs ? pairs->upper[code & 0xFF] : code;
    }

    enum Class : unsigned {
        Alpha = 1,
        Digit = 2,
        Lower = 4,
        Upper = 8,
        Space = 16,
        Punct = 32,
        Control = 64,
        Blank = 128,
        Hex = 256
    };
    unsigned Classes(unsigned code) const noexcept {
        if (code < 256) return classBytes_[code];
        const Pairs* pairs = pairs_[code >> 8 & 0xFF];
        return pairs ? pairs->classes[code & 0xFF] : 0;
    }

    // The UTF-16 unit of one code.
    std::uint16_t WideOf(unsigned code) const noexcept {
        if (code < 256) return wideBytes_[code];
        const Pairs* pairs = pairs_[code >> 8 & 0xFF];
        return pairs ? pairs->wide[code & 0xFF] : 0;
    }

    // And back: a byte, or lead * 256 + trail.
    unsigned CodeOf(std::uint16_t unit) const noexcept { return codes_[unit]; }
    // Whether the first 128 codes are the first 128 units, and nothing else is.
    bool IsPlainAscii() const noexcept { return plainAscii_; }

    // What a conversion could not keep: characters that became the default character or a best
    // fit, and the index of the first in the text converted. A surrogate pair is one character.
    struct Loss {
        std::size_t count = 0;
        std::size_t first = SIZE_MAX;
    };
    // Both conversions return the count that the whole result needs; only whole characters that
    // fit in `capacity` are written, and nothing when `out` is null. No terminator is added.
    std::size_t ToWide(const char* text, std::size_t bytes, std::uint16_t* out,
                       std::size_t capacity, Loss* loss = nullptr) const noexcept;
    std::size_t FromWide(const std::uint16_t* text, std::size_t units, char* out,
                         std::size_t capacity, Loss* loss = nullptr) const noexcept;

private:
    bool IsUndefined(unsigned code) const noexcept;

    struct Pairs {  // the characters of one lead byte, by trail byte
        std::uint16_t wide[256];
        std::uint16_t lower[256];
        std::uint16_t upper[256];
        std::uint16_t classes[256];
    };
    struct Builder;

    CodePage() = default;
    ~CodePage();
    static const CodePage& LoadDefault(std::atomic<const CodePage*>& slot, bool oem) noexcept;

    static std::atomic<const CodePage*> ansi_;
    static std::atomic<const CodePage*> oem_;

    unsigned number_ = 0;
    bool doubleByte_ = false;
    bool plainAscii_ = false;
    bool lead_[256] = {};
    unsigned char lowerBytes_[256] = {};
    unsigned char upperBytes_[256] = {};
    std::uint16_t classBytes_[256] = {};
    std::uint16_t wideBytes_[256] = {};
    Pairs* pairs_[256] = {};
    UnitCodes codes_;
    const CodePage* next_ = nullptr;  // in the list of loaded pages
};

}  // namespace brcore8

#endif
