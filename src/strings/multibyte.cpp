#include <brcore8/strings/multibyte.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <exception>

#include "platform/code_pages.h"
#include "strings/mbs.h"
#include "strings/utf8.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

static_assert(sizeof(unsigned short) == sizeof(std::uint16_t));

namespace {

constexpr int kSupportedPages[] = {437,  850,  852,  866,  874,  932,  936,  949,  950,  1250,
                                   1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 1361, 10000};

enum SpecialPage { kSingleByte = 0, kOem = -2, kAnsi = -3, kLocale = -4 };

unsigned ResolvePage(int page) noexcept {
    switch (page) {
        case kSingleByte:
            return 1252;
        case kOem:
            return CodePage::Oem().Number();
        case kAnsi:
        case kLocale:
            return brcore8::DefaultAnsiCodePage();
        default:
            return page < 0 ? 0 : static_cast<unsigned>(page);
    }
}

const CodePage* FindPage(unsigned number) noexcept {
    try {
        return number == 0 ? nullptr : CodePage::Find(number);
    } catch (const SEOutOfMemory&) {
        return nullptr;
    }
}

const CodePage& PageOf(SCodePageKind kind) noexcept {
    return kind == SCodePageKind::Oem ? CodePage::Oem() : CodePage::Ansi();
}

const char* OrEmpty(const char* text) noexcept {
    return text ? text : "";
}

}  // namespace

// --- the process's code pages ----------------------------------------------------------------

int _setmbcp(int page) {
    const CodePage* found = FindPage(ResolvePage(page));
    if (!found) return -1;
    CodePage::SetAnsi(*found);
    brcore8::SetRuntimeCodePage(found->Number());
    return 0;
}

int _getmbcp() {
    return static_cast<int>(CodePage::Ansi().Number());
}

int SSetOemCodePage(int page) {
    const CodePage* found = page > 0 ? FindPage(static_cast<unsigned>(page)) : nullptr;
    if (!found) return -1;
    CodePage::SetOem(*found);
    return 0;
}

int SGetOemCodePage() {
    return static_cast<int>(CodePage::Oem().Number());
}

bool SIsDoubleByteCodePage() {
    return CodePage::Ansi().IsDoubleByte();
}

std::span<const int> SSupportedCodePages() {
    return kSupportedPages;
}

// --- search and case -------------------------------------------------------------------------

const char* _tcsistr(const char* text, const char* what) {
    return text && what ? mbs::FindTextNoCase(text, what) : nullptr;
}

const char* _tcsistr(const char* text, const char* what, int) {
    return _tcsistr(text, what);
}

const char* _tcsichr(const char* text, unsigned int ch) {
    if (!text) return nullptr;
    const CodePage& page = CodePage::Ansi();
    const unsigned plain = mbs::Normalize(page, ch);
    const unsigned lower = page.ToLower(plain);
    const unsigned other = lower != plain ? lower : page.ToUpper(plain);
    const char* first = mbs::Find(text, plain);
    if (other == plain) return first;
    const char* second = mbs::Find(text, other);
    return !first || (second && second < first) ? second : first;
}

char* CharToggle(char* text) {
    if (!text) return text;
    const CodePage& page = CodePage::Ansi();
    for (char* p = text; *p;) {
        const unsigned code = mbs::UnsignedCodeAt(page, p);
        const unsigned lower = page.ToLower(code);
        p += mbs::Put(page, lower != code ? lower : page.ToUpper(code), p);
    }
    return text;
}

// --- wide text -------------------------------------------------------------------------------

int Swcstombsz(char* out, const unsigned short* wide, unsigned int outSize) {
    if (out && outSize == 0) return 0;
    const CodePage& page = CodePage::Ansi();
    std::size_t units = 0;
    while (wide && wide[units] != 0)
        ++units;
    const std::size_t capacity = out ? outSize - 1 : 0;
    const std::size_t bytes = page.FromWide(wide, units, out, capacity);
    if (bytes >= INT_MAX) return 0;
    if (!out) return static_cast<int>(bytes) + 1;
    if (bytes <= capacity) {
        out[bytes] = 0;
        return static_cast<int>(bytes) + 1;
    }
    std::size_t written = 0;
    for (std::size_t i = 0; i < units; ++i) {
        const std::size_t width = page.FromWide(wide + i, 1, nullptr, 0);
        if (written + width > capacity) break;
        written += width;
    }
    out[written] = 0;
    return 0;
}

int Smbstowcsz(unsigned short* out, const char* text, unsigned int outSize) {
    if (out && outSize == 0) return 0;
    text = OrEmpty(text);
    const std::size_t capacity = out ? outSize - 1 : 0;
    const std::size_t units = CodePage::Ansi().ToWide(text, std::strlen(text), out, capacity);
    if (out) out[std::min(units, capacity)] = 0;
    if (units >= INT_MAX || (out && units > capacity)) return 0;
    return static_cast<int>(units) + 1;
}

char* ST2UTF8Helper(char* out, const char* text, int count) {
    if (!out) return out;
    const CodePage& page = CodePage::Ansi();
    char* end = out;
    for (const char* p = OrEmpty(text); *p && count > 0; p = mbs::Next(page, p), --count) {
        const unsigned unit = page.WideOf(mbs::UnsignedCodeAt(page, p));
        const auto put = [&end](unsigned byte) { *end++ = static_cast<char>(byte); };
        if (unit < 0x80) {
            put(unit);
        } else if (unit < 0x400) {
            put(0xC0 | unit >> 6);
            put(0x80 | (unit & 0x3F));
        } else {
            put(0xE0 | unit >> 12);
            put(0x80 | (unit >> 6 & 0x3F));
            put(0x80 | (unit & 0x3F));
        }
    }
    *end = 0;
    return out;
}

char* SUTF82THelper(char* out, const char* utf8, int outSize) {
    if (!out || outSize < 1) return out;
    const CodePage& page = CodePage::Ansi();
    utf8 = OrEmpty(utf8);
    const char* const utf8End = utf8 + std::strlen(utf8);
    char* end = out;
    auto room = static_cast<std::size_t>(outSize) - 1;
    while (utf8 < utf8End) {
        const brcore8::utf8::Character next = brcore8::utf8::Decode(utf8, utf8End);
        utf8 += next.bytes;
        // What no page holds becomes the default character the way every such unit does; a code
        // point of four bytes is two of them, as on the platform.
        constexpr std::uint16_t kNoCharacter = 0xFFFD;
        const bool single = next.valid && next.code < 0x10000;
        const auto unit = single ? static_cast<std::uint16_t>(next.code) : kNoCharacter;
        const std::uint16_t units[2] = {unit, kNoCharacter};
        const std::size_t count = next.valid && !single ? 2 : 1;
        const std::size_t bytes = page.FromWide(units, count, nullptr, 0);
        if (bytes > room) break;
        page.FromWide(units, count, end, room);
        end += bytes;
        room -= bytes;
    }
    *end = 0;
    return out;
}

// --- conversion that reports what it could not keep -------------------------------------------

std::string STextFromUtf16(std::u16string_view wide, SConversionLoss* loss,
                           SCodePageKind kind) try {
    const CodePage& page = PageOf(kind);
    const auto* units = reinterpret_cast<const std::uint16_t*>(wide.data());
    std::string text(2 * wide.size(), '\0');
    CodePage::Loss lost;
    text.resize(
        page.FromWide(units, wide.size(), text.data(), text.size(), loss ? &lost : nullptr));
    if (loss) *loss = {lost.count, lost.first};
    return text;
} catch (const std::exception&) {
    brcore8::ThrowOutOfMemory();
}

std::u16string SUtf16FromText(std::string_view text, SConversionLoss* loss,
                              SCodePageKind kind) try {
    std::u16string wide(text.size(), u'\0');
    auto* units = reinterpret_cast<std::uint16_t*>(wide.data());
    CodePage::Loss lost;
    wide.resize(PageOf(kind).ToWide(text.data(), text.size(), units, wide.size(), &lost));
    if (loss) *loss = {lost.count, lost.first};
    return wide;
} catch (const std::exception&) {
    brcore8::ThrowOutOfMemory();
}
