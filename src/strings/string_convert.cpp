#include <brcore8/strings/string.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

// --- Characters --------------------------------------------------------------------------------

const char* SString::GetPointerAt(int index) const noexcept {
    return index < 0 || index > Length() ? nullptr : text_ + ByteOffset(index);
}

int SString::GetAt(int index) const noexcept {
    if (index < 0 || index >= Length()) return 0;
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte())
        return index < LengthByte() ? static_cast<signed char>(text_[index]) : 0;
    return mbs::CodeAt(page, text_ + ByteOffset(index));
}

int SString::IsAlpha(int index) const noexcept {
    return mbs::IsAlpha(static_cast<unsigned>(GetAt(index)));
}

int SString::IsDigit(int index) const noexcept {
    return mbs::IsDigit(static_cast<unsigned>(GetAt(index)));
}

int SString::IsAlphaNum(int index) const noexcept {
    return mbs::IsAlphaNum(static_cast<unsigned>(GetAt(index)));
}

int SString::IsLower(int index) const noexcept {
    return mbs::IsLower(static_cast<unsigned>(GetAt(index)));
}

int SString::IsUpper(int index) const noexcept {
    return mbs::IsUpper(static_cast<unsigned>(GetAt(index)));
}

int SString::IsWhitespace(int index) const noexcept {
    return mbs::IsSpace(static_cast<unsigned>(GetAt(index)));
}

int SString::IsASCII(int index) const noexcept {
    return static_cast<unsigned>(GetAt(index)) < 128;
}

// --- Numbers and kinds of text -----------------------------------------------------------------

long SString::ToLong() const noexcept {
    return std::atol(text_);
}

double SString::ToDouble() const noexcept {
    return std::atof(text_);
}

int SString::ToTruth() const noexcept {
    return CompareNoCase("Yes") == 0 || std::atol(text_) != 0;
}

int SString::IsNumber() const noexcept {
    const auto skipDigits = [](const char* p) {
        while (*p >= '0' && *p <= '9')
            ++p;
        return p;
    };
    const char* p = text_;
    if (*p == '+' || *p == '-') ++p;
    p = skipDigits(p);
    if (*p == ',' || *p == '.') p = skipDigits(p + 1);
    return !IsEmpty() && p == End();
}

int SString::IsRtfText(const char* text) noexcept {
    return text && (std::strncmp(text, "{\\rtf", 5) == 0 || std::strncmp(text, "{\\urtf", 6) == 0);
}

int SString::SafeStrlen(const char* text) noexcept {
    return text ? static_cast<int>(std::strlen(text)) : 0;
}

// --- Copies in other shapes --------------------------------------------------------------------

void SString::ToAnsi(char* buffer) const noexcept {
    if (buffer) std::memcpy(buffer, text_, static_cast<std::size_t>(LengthByte()) + 1);
}

void SString::ToUnicode(unsigned short* buffer) const {
    const auto units = static_cast<std::size_t>(LengthByte()) + 1;
    if (buffer) CodePage::Ansi().ToWide(text_, units, buffer, units);
}

// --- Case and code page, in place --------------------------------------------------------------

namespace {

void FoldBytes(char* text, std::size_t bytes, const unsigned char* fold) {
    for (std::size_t i = 0; i < bytes; ++i)
        text[i] = static_cast<char>(fold[mbs::Byte(text + i)]);
}

// Every character becomes what `fold` makes of it, unless that has another width.
template <typename Fold>
void FoldCharacters(const CodePage& page, char* text, const char* end, Fold fold) {
    while (text < end) {
        const std::size_t width = mbs::CharBytes(page, text);
        const unsigned code = fold(mbs::UnsignedCodeAt(page, text));
        if ((code < 256) == (width == 1)) mbs::Put(page, code, text);
        text += width;
    }
}

}  // namespace

void SString::ToUpper() {
    if (IsEmpty()) return;
    CopyBeforeWrite();
    const CodePage& page = CodePage::Ansi();
    if (page.IsDoubleByte())
        FoldCharacters(page, text_, End(), [&](unsigned code) { return page.ToUpper(code); });
    else
        FoldBytes(text_, static_cast<std::size_t>(LengthByte()), page.UpperBytes());
}

void SString::ToLower() {
    if (IsEmpty()) return;
    CopyBeforeWrite();
    const CodePage& page = CodePage::Ansi();
    if (page.IsDoubleByte())
        FoldCharacters(page, text_, End(), [&](unsigned code) { return page.ToLower(code); });
    else
        FoldBytes(text_, static_cast<std::size_t>(LengthByte()), page.LowerBytes());
}

void SString::ToUpper(int index) {
    const CodePage& page = CodePage::Ansi();
    SetAt(index, page.ToUpper(mbs::Normalize(page, static_cast<unsigned>(GetAt(index)))));
}

void SString::ToLower(int index) {
    const CodePage& page = CodePage::Ansi();
    SetAt(index, page.ToLower(mbs::Normalize(page, static_cast<unsigned>(GetAt(index)))));
}

void SString::Recode(const CodePage& from, const CodePage& to) {
    const auto bytes = static_cast<std::size_t>(LengthByte());
    if (bytes == 0 || &from == &to) return;
    const std::size_t units = from.ToWide(text_, bytes, nullptr, 0);
    // Wide text needs at most as many units as there are bytes; its room is a string's too.
    SString wide, recoded;
    wide.AllocBuffer(static_cast<std::int64_t>(units) * 2);
    auto* unitText = reinterpret_cast<std::uint16_t*>(wide.text_);
    from.ToWide(text_, bytes, unitText, units);
    const std::size_t size = to.FromWide(unitText, units, nullptr, 0);
    recoded.AllocBuffer(static_cast<std::int64_t>(size));
    to.FromWide(unitText, units, recoded.text_, size);
    AssignCopy(static_cast<std::int64_t>(size), recoded.text_);
}

void SString::CharToOemA() {
    Recode(CodePage::Ansi(), CodePage::Oem());
}

void SString::OemToCharA() {
    Recode(CodePage::Oem(), CodePage::Ansi());
}
