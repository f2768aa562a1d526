// What the bytes of an RTF document mean: characters of the page that its font or the document
// names.
#ifndef BRCORE8_SRC_TEXT_RTF_BYTES_H
#define BRCORE8_SRC_TEXT_RTF_BYTES_H

#include <cstddef>
#include <cstdint>

#include "platform/rich_text.h"
#include "strings/code_page.h"

namespace brcore8::rtf {

// Numbers of pages, and two that are no tables: the bytes of symbol fonts, each a character of its
// own far up in the private use area, and UTF-8.
enum PageNumber : std::uint16_t { kNoPage = 0, kSymbolPage = 42, kUtf8Page = 65001 };

// Whether bytes of that page can be read here.
bool HasPage(std::int64_t number);

// The page that a font's character set stands for; kNoPage when it stands for the document's.
std::uint16_t PageOfCharset(std::int64_t charset);

// The page of each font by its number. Numbers beyond a million are no fonts.
class FontPages {
public:
    void Set(std::int64_t font, std::uint16_t page);
    // kNoPage for a font that was never set.
    std::uint16_t Find(std::int64_t font) const noexcept;

private:
    RichBuffer<std::uint16_t> pages_;
};

// Turns bytes into UTF-16 units. A character of several bytes may come in pieces.
class ByteDecoder {
public:
    // Only where no character is begun.
    void SetPage(std::uint16_t number);
    std::uint16_t Page() const noexcept { return number_; }

    // Whether the next byte, if it is one of ASCII, is a unit by itself.
    bool TakesAscii() const noexcept { return count_ == 0 && number_ != kSymbolPage; }

    // Both write at most two units, but never more in all than there were bytes, and return the
    // end of them. Flush ends a character that was begun and not finished.
    char16_t* Put(unsigned char byte, char16_t* out) noexcept;
    char16_t* Flush(char16_t* out) noexcept;

private:
    char16_t* PutUtf8(unsigned char byte, char16_t* out) noexcept;

    std::uint16_t number_ = kNoPage;
    const CodePage* page_ = nullptr;
    char begun_[4];
    std::size_t count_ = 0;
    std::size_t needed_ = 0;
};

}  // namespace brcore8::rtf

#endif
