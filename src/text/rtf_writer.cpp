#include <algorithm>
#include <charconv>

#include "text/rtf_control.h"
#include "text/rtf_reader.h"

namespace brcore8::rtf {
namespace {

constexpr std::string_view kHead =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fnil\\fcharset0 Arial;}}\r\n"
    "\\pard\\f0\\fs20 ";
constexpr std::string_view kParagraph = "\\par\r\n";
constexpr std::string_view kTab = "\\tab ";
// The longest that one unit becomes: \u-32768?
constexpr std::size_t kLongest = 9;

char* Put(char* out, std::string_view text) {
    return std::copy(text.begin(), text.end(), out);
}

char* PutHex(char* out, unsigned byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    *out++ = '\\';
    *out++ = '\'';
    *out++ = kDigits[byte >> 4];
    *out++ = kDigits[byte & 15];
    return out;
}

char* PutUnit(char* out, char16_t unit) {
    switch (unit) {
        case 0:
            return out;
        case '\t':
            return Put(out, kTab);
        case '\\':
        case '{':
        case '}':
            *out++ = '\\';
            break;
        default:
            break;
    }
    // Where page 1252 has what UTF-16 has, a byte is what most readers know.
    constexpr unsigned kFirstShared = 0xA0;
    if (unit < ' ' || (unit >= kFirstShared && unit <= 0xFF)) return PutHex(out, unit);
    if (unit < 0x80) {
        *out++ = static_cast<char>(unit);
        return out;
    }
    out = Put(out, "\\u");
    out = std::to_chars(out, out + kLongest, static_cast<std::int16_t>(unit)).ptr;
    *out++ = '?';
    return out;
}

}  // namespace

void WriteText(std::u16string_view text, RichBuffer<char>& rtf) {
    rtf.Append(kHead.data(), kHead.size());
    constexpr std::size_t kBlock = 4096;
    while (!text.empty()) {
        const std::u16string_view block = text.substr(0, kBlock);
        text.remove_prefix(block.size());
        char* out = rtf.Reserve(block.size() * kLongest);
        for (const char16_t unit : block) {
            if (unit == '\n')
                out = Put(out, kParagraph);
            else if (unit != '\r')
                out = PutUnit(out, unit);
        }
        rtf.SetEnd(out);
    }
    rtf.Append(kParagraph.data(), kParagraph.size());
    rtf.Append('}');
}

void WriteWhole(std::string_view rtf, RichBuffer<char>& whole) {
    const char* const end = rtf.data() + rtf.size();
    const char* p = rtf.data();
    std::size_t open = 0;
    while (p < end) {
        const char* next = *p == '\\' ? SkipControl(p, end) : p + 1;
        if (!next) break;
        if (*p == '{') ++open;
        const bool closes = *p == '}';
        p = next;
        if (closes && --open == 0) break;
    }
    whole.Append(rtf.data(), static_cast<std::size_t>(p - rtf.data()));
    whole.SetEnd(std::fill_n(whole.Reserve(open), open, '}'));
}

std::size_t DeepestGroup(std::string_view rtf) noexcept {
    const char* const end = rtf.data() + rtf.size();
    std::size_t depth = 0, deepest = 0;
    for (const char* p = rtf.data(); p && p < end;) {
        if (*p == '\\') {
            p = SkipControl(p, end);
            continue;
        }
        if (*p == '{') deepest = std::max(deepest, ++depth);
        if (*p == '}' && depth-- <= 1) break;
        ++p;
    }
    return deepest;
}

}  // namespace brcore8::rtf
