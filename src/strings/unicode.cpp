#include <brcore8/strings/unicode.h>

#include <brcore8/core/throw.h>

#include <exception>

#include "strings/ascii.h"
#include "strings/utf8.h"

namespace brcore8::utf8 {
namespace {

struct Range {
    unsigned low, high;
};

// What the second byte may be: it excludes overlong forms, surrogates and what lies beyond
// U+10FFFF. The three-byte form would begin at U+0800 (E0 A0) and begins at U+0400 (E0 90) here.
Range SecondByte(unsigned lead) noexcept {
    switch (lead) {
        case 0xE0:
            return {0x90, 0xBF};
        case 0xED:
            return {0x80, 0x9F};
        case 0xF0:
            return {0x90, 0xBF};
        case 0xF4:
            return {0x80, 0x8F};
        default:
            return {0x80, 0xBF};
    }
}

std::size_t BytesAfter(unsigned lead) noexcept {
    if (lead >= 0xC2 && lead <= 0xDF) return 1;
    if (lead >= 0xE0 && lead <= 0xEF) return 2;
    if (lead >= 0xF0 && lead <= 0xF4) return 3;
    return 0;
}

}  // namespace

Character Decode(const char* p, const char* end) noexcept {
    const auto lead = static_cast<unsigned char>(*p);
    if (lead < 0x80) return {lead, 1, true};
    const std::size_t after = BytesAfter(lead);
    Character result;
    if (after == 0) return result;
    result.code = lead & (0x3Fu >> after);
    Range allowed = SecondByte(lead);
    for (; result.bytes <= after; ++result.bytes) {
        if (p + result.bytes == end) return result;
        const auto next = static_cast<unsigned char>(p[result.bytes]);
        if (next < allowed.low || next > allowed.high) return result;
        result.code = result.code << 6 | (next & 0x3F);
        allowed = {0x80, 0xBF};
    }
    result.valid = true;
    return result;
}

std::size_t Encode(char32_t code, char* out) noexcept {
    const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
        return 1;
    }
    const int after = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr char32_t kLead[] = {0, 0xC0, 0xE0, 0xF0};
    put(kLead[after] | code >> (6 * after));
    for (int i = after - 1; i >= 0; --i)
        put(0x80 | (code >> (6 * i) & 0x3F));
    return static_cast<std::size_t>(after) + 1;
}

}  // namespace brcore8::utf8

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t unit) {
    return (unit & 0xF800) == 0xD800;
}
bool IsPair(char32_t high, char32_t low) {
    return (high & 0xFC00) == 0xD800 && (low & 0xFC00) == 0xDC00;
}

}  // namespace

std::string SUtf8FromUtf16(std::u16string_view wide, std::size_t* malformed) try {
    // At most; a pair takes four bytes, not six.
    std::size_t most = wide.size();
    for (const char16_t unit : wide)
        most += static_cast<std::size_t>(unit >= 0x80) + static_cast<std::size_t>(unit >= 0x800);
    std::string utf8(most, '\0');
    char* out = utf8.data();
    std::size_t bad = std::u16string_view::npos;
    for (std::size_t i = 0; i < wide.size(); ++i) {
        const std::size_t run = brcore8::ConvertAscii(wide.data() + i, wide.size() - i, out);
        i += run;
        out += run;
        if (i == wide.size()) break;
        char32_t code = wide[i];
        if (IsSurrogate(code)) {
            if (i + 1 < wide.size() && IsPair(code, wide[i + 1])) {
                code = 0x10000 + ((code - 0xD800) << 10) + (wide[++i] - 0xDC00u);
            } else {
                if (bad == std::u16string_view::npos) bad = i;
                code = kReplacement;
            }
        }
        out += brcore8::utf8::Encode(code, out);
    }
    utf8.resize(static_cast<std::size_t>(out - utf8.data()));
    if (malformed) *malformed = bad;
    return utf8;
} catch (const std::exception&) {
    brcore8::ThrowOutOfMemory();
}

std::u16string SUtf16FromUtf8(std::string_view utf8, std::size_t* malformed) try {
    std::u16string wide(utf8.size(), u'\0');
    char16_t* out = wide.data();
    std::size_t bad = std::string_view::npos;
    const char* const begin = utf8.data();
    const char* const end = begin + utf8.size();
    for (const char* p = begin; p < end;) {
        const std::size_t run = brcore8::ConvertAscii(p, static_cast<std::size_t>(end - p), out);
        p += run;
        out += run;
        if (p == end) break;
        const brcore8::utf8::Character next = brcore8::utf8::Decode(p, end);
        if (!next.valid && bad == std::string_view::npos) bad = static_cast<std::size_t>(p - begin);
        const char32_t code = next.valid ? next.code : kReplacement;
        if (code >= 0x10000) {
            *out++ = static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            *out++ = static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        } else {
            *out++ = static_cast<char16_t>(code);
        }
        p += next.bytes;
    }
    wide.resize(static_cast<std::size_t>(out - wide.data()));
    if (malformed) *malformed = bad;
    return wide;
} catch (const std::exception&) {
    brcore8::ThrowOutOfMemory();
}
