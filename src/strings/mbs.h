// Walking, comparing and searching byte text character by character. Text is zero-terminated
// unless a length stands beside it. A lead byte that has no trail byte, because the terminator or
// the given end follows it, is a character of one byte, so no operation steps over a terminator.
// Functions without a CodePage argument use the process's page. Nothing here locks, and nothing
// throws unless it says so.
#ifndef BRCORE8_STRINGS_MBS_H
#define BRCORE8_STRINGS_MBS_H

#include <cstddef>
#include <string_view>

#include "strings/code_page.h"

namespace brcore8::mbs {

// --- one character ---------------------------------------------------------------------------

inline unsigned char Byte(const char* p) noexcept {
    return static_cast<unsigned char>(*p);
}

// 1 or 2; 1 at the terminator. The second form takes `end`, not a terminator, as the limit.
inline std::size_t CharBytes(const CodePage& page, const char* p) noexcept {
    return page.IsLead(Byte(p)) && p[1] != 0 ? 2 : 1;
}

inline std::size_t CharBytes(const CodePage& page, const char* p, const char* end) noexcept {
    return page.IsLead(Byte(p)) && end - p > 1 && p[1] != 0 ? 2 : 1;
}

// One character on; stays at the terminator.
inline const char* Next(const CodePage& page, const char* p) noexcept {
    return *p ? p + CharBytes(page, p) : p;
}

// Whether a character begins at p, given that one begins at `known`. Every byte before a run of
// possible lead bytes ends a character, and the run itself pairs up.
inline bool IsBoundary(const CodePage& page, const char* known, const char* p) noexcept {
    const char* run = p;
    while (run > known && page.IsLead(Byte(run - 1)))
        --run;
    return (p - run) % 2 == 0;
}

// lead * 256 + trail, or the byte.
inline unsigned UnsignedCodeAt(const CodePage& page, const char* p) noexcept {
    return CharBytes(page, p) == 2 ? Byte(p) * 256u + Byte(p + 1) : Byte(p);
}

inline unsigned UnsignedCodeAt(const CodePage& page, const char* p, const char* end) noexcept {
    return CharBytes(page, p, end) == 2 ? Byte(p) * 256u + Byte(p + 1) : Byte(p);
}

// The same with the lead byte taken as signed, so that a double-byte character is negative.
inline int CodeAt(const CodePage& page, const char* p) noexcept {
    const unsigned code = UnsignedCodeAt(page, p);
    return code < 256 ? static_cast<int>(code) : static_cast<int>(code) - 0x10000;
}

// The unsigned code that a caller's character means: signed lead bytes and sign-extended single
// bytes are accepted.
inline unsigned Normalize(const CodePage& page, unsigned code) noexcept {
    const unsigned lead = code >> 8 & 0xFF;
    return lead != 0 && page.IsLead(static_cast<unsigned char>(lead)) ? code & 0xFFFF : code & 0xFF;
}

// Writes the character's one or two bytes and returns how many.
inline std::size_t Put(const CodePage& page, unsigned code, char* out) noexcept {
    const unsigned plain = Normalize(page, code);
    if (plain < 256) {
        out[0] = static_cast<char>(plain);
        return 1;
    }
    out[0] = static_cast<char>(plain >> 8);
    out[1] = static_cast<char>(plain & 0xFF);
    return 2;
}

inline bool HasClass(unsigned code, unsigned classes) noexcept {
    const CodePage& page = CodePage::Ansi();
    return (page.Classes(Normalize(page, code)) & classes) != 0;
}
inline bool IsSpace(unsigned code) noexcept {
    return HasClass(code, CodePage::Space);
}
inline bool IsAlpha(unsigned code) noexcept {
    return HasClass(code, CodePage::Alpha);
}
inline bool IsDigit(unsigned code) noexcept {
    return HasClass(code, CodePage::Digit);
}
inline bool IsAlphaNum(unsigned code) noexcept {
    return HasClass(code, CodePage::Alpha | CodePage::Digit);
}
inline bool IsLower(unsigned code) noexcept {
    return HasClass(code, CodePage::Lower);
}
inline bool IsUpper(unsigned code) noexcept {
    return HasClass(code, CodePage::Upper);
}

// --- runs of characters ----------------------------------------------------------------------

// Characters in exactly that many bytes; a zero byte is a character like any other.
std::size_t CountBytes(const CodePage& page, const char* text, std::size_t bytes) noexcept;
inline int Count(const CodePage& page, const char* text, std::size_t bytes) noexcept {
    return static_cast<int>(page.IsDoubleByte() ? CountBytes(page, text, bytes) : bytes);
}

// n characters on, or `end`; zero bytes inside are stepped over like any other.
const char* Advance(const CodePage& page, const char* p, const char* end, int n) noexcept;

// --- comparison: -1, 0 or 1 ------------------------------------------------------------------

// Characters compare by their unsigned codes; without case, by the codes of their lower case, for
// every letter of the page. The counted forms stop after n bytes.
int Compare(const char* left, const char* right) noexcept;
int CompareNoCase(const char* left, const char* right) noexcept;
int CompareBytes(const char* left, const char* right, std::size_t n) noexcept;
int CompareNoCaseBytes(const char* left, const char* right, std::size_t n) noexcept;

// The same of texts that a length ends: zero bytes are characters, and the lowest.
int CompareWhole(std::string_view left, std::string_view right) noexcept;
int CompareWholeNoCase(std::string_view left, std::string_view right) noexcept;

// In the order of the user's locale; the order of Compare where that is the C locale. Long texts
// need memory: throws SEOutOfMemory.
int Collate(const char* left, const char* right);
int CollateNoCase(const char* left, const char* right);
int CollateBytes(const char* left, const char* right, std::size_t n);
int CollateNoCaseBytes(const char* left, const char* right, std::size_t n);

// --- search: null when not found -------------------------------------------------------------

// Code 0 finds the terminator.
const char* Find(const char* text, unsigned code) noexcept;
const char* ReverseFind(const char* text, unsigned code) noexcept;

// An empty `what` is found at the start. Searches take time linear in both lengths.
const char* FindText(const char* text, const char* what) noexcept;
const char* FindText(const char* text, std::size_t bytes, const char* what,
                     std::size_t whatBytes) noexcept;
const char* FindTextNoCase(const char* text, const char* what) noexcept;
const char* FindTextNoCase(const char* text, std::size_t bytes, const char* what,
                           std::size_t whatBytes) noexcept;

}  // namespace brcore8::mbs

#endif
