#include "text/rtf_bytes.h"

#include <algorithm>

#include "platform/code_pages.h"
#include "strings/utf8.h"

namespace brcore8::rtf {
namespace {

constexpr std::int64_t kMostFonts = 1 << 20;
constexpr char16_t kReplacement = 0xFFFD;
constexpr unsigned kSymbolArea = 0xF000;

constexpr struct {
    std::uint8_t charset;
    std::uint16_t page;
} kCharsets[] = {
    {0, 1252},   {2, kSymbolPage}, {77, 10000}, {128, 932},  {129, 949},  {130, 1361},
    {134, 936},  {136, 950},       {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255},
    {178, 1256}, {186, 1257},      {204, 1251}, {222, 874},  {238, 1250}, {254, 437},
};
constexpr std::int64_t kOemCharset = 255;

}  // namespace

bool HasPage(std::int64_t number) {
    if (number <= 0 || number > UINT16_MAX) return false;
    if (number == kSymbolPage || number == kUtf8Page) return true;
    return CodePage::Find(static_cast<unsigned>(number)) != nullptr;
}

std::uint16_t PageOfCharset(std::int64_t charset) {
    std::int64_t page = kNoPage;
    if (charset == kOemCharset) page = DefaultOemCodePage();
    for (const auto& known : kCharsets)
        if (known.charset == charset) page = known.page;
    return HasPage(page) ? static_cast<std::uint16_t>(page) : std::uint16_t{kNoPage};
}

void FontPages::Set(std::int64_t font, std::uint16_t page) {
    if (font < 0 || font >= kMostFonts) return;
    const auto index = static_cast<std::size_t>(font);
    if (index >= pages_.Size()) {
        const std::size_t missing = index + 1 - pages_.Size();
        std::uint16_t* end = pages_.Reserve(missing);
        pages_.SetEnd(std::fill_n(end, missing, std::uint16_t{kNoPage}));
    }
    pages_[index] = page;
}

std::uint16_t FontPages::Find(std::int64_t font) const noexcept {
    const bool known = font >= 0 && static_cast<std::uint64_t>(font) < pages_.Size();
    return known ? pages_.Data()[font] : std::uint16_t{kNoPage};
}

void ByteDecoder::SetPage(std::uint16_t number) {
    if (number == number_) return;
    const bool table = number != kSymbolPage && number != kUtf8Page;
    page_ = table ? CodePage::Find(number) : nullptr;
    number_ = number;
}

char16_t* ByteDecoder::Put(unsigned char byte, char16_t* out) noexcept {
    if (number_ == kUtf8Page) return PutUtf8(byte, out);
    if (number_ == kSymbolPage) {
        *out++ = static_cast<char16_t>(kSymbolArea + byte);
        return out;
    }
    if (count_ == 1) {
        count_ = 0;
        *out++ = page_->WideOf(static_cast<unsigned char>(begun_[0]) * 256u + byte);
    } else if (page_->IsLead(byte)) {
        begun_[0] = static_cast<char>(byte);
        count_ = 1;
    } else {
        *out++ = page_->WideOf(byte);
    }
    return out;
}

char16_t* ByteDecoder::PutUtf8(unsigned char byte, char16_t* out) noexcept {
    if ((byte & 0xC0) != 0x80) {
        out = Flush(out);
        if (byte < 0x80) {
            *out++ = byte;
            return out;
        }
        needed_ = byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    } else if (count_ == 0) {
        *out++ = kReplacement;
        return out;
    }
    begun_[count_++] = static_cast<char>(byte);
    if (count_ < needed_) return out;
    const utf8::Character character = utf8::Decode(begun_, begun_ + count_);
    if (!character.valid) {
        // Bytes that no character has in this order count each for itself.
        out = std::fill_n(out, count_, kReplacement);
        count_ = 0;
        return out;
    }
    count_ = 0;
    if (character.code < 0x10000) {
        *out++ = static_cast<char16_t>(character.code);
    } else {
        *out++ = static_cast<char16_t>(0xD7C0 + (character.code >> 10));
        *out++ = static_cast<char16_t>(0xDC00 + (character.code & 0x3FF));
    }
    return out;
}

char16_t* ByteDecoder::Flush(char16_t* out) noexcept {
    if (count_ == 0) return out;
    count_ = 0;
    *out++ = page_ ? page_->WideOf(static_cast<unsigned char>(begun_[0])) : kReplacement;
    return out;
}

}  // namespace brcore8::rtf
