#include "text/rtf_control.h"

#include <array>

namespace brcore8::rtf {
namespace {

constexpr int kSafeDigits = 18;

const char* ReadNumber(const char* p, const char* end, ControlWord& word) noexcept {
    word.negative = p < end && *p == '-';
    if (word.negative) ++p;
    std::uint64_t number = 0;
    const char* const digits = p;
    for (; p < end && IsDigit(*p); ++p)
        number = number * 10 + static_cast<std::uint64_t>(*p - '0');
    word.overflow = p - digits > kSafeDigits;
    word.number = static_cast<std::int64_t>(word.negative ? 0 - number : number);
    return p;
}

const char* SkipHex(const char* p, const char* end) noexcept {
    const char* const digits = p + 2;
    for (p = digits; p < digits + 2; ++p) {
        if (p == end) return nullptr;
        if (HexValue(*p) < 0) return digits;
    }
    return p;
}

constexpr std::array<bool, 256> kStructure = [] {
    std::array<bool, 256> structure{};
    for (const unsigned char c : {'{', '}', '\\'})
        structure[c] = true;
    return structure;
}();

}  // namespace

ControlWord ReadWord(const char* p, const char* end) noexcept {
    ControlWord word;
    const char* const name = ++p;
    for (; p < end && IsLetter(*p); ++p)
        word.hash = HashLetter(word.hash, *p);
    word.name = {name, static_cast<std::size_t>(p - name)};
    if (p < end && (IsDigit(*p) || *p == '-')) p = ReadNumber(p, end, word);
    word.end = p < end && *p == ' ' ? p + 1 : p;
    return word;
}

const char* SkipControl(const char* p, const char* end) noexcept {
    if (end - p < 2) return nullptr;
    if (p[1] == '\'') return SkipHex(p, end);
    if (!IsLetter(p[1])) return p + 2;
    const ControlWord word = ReadWord(p, end);
    if (word.name != "bin") return word.end;
    const auto available = static_cast<std::size_t>(end - word.end);
    const std::size_t count = word.Count(available);
    // One more than there is would have been taken, had it been there.
    return word.Count(available + 1) > available ? nullptr : word.end + count;
}

const char* FindGroupEnd(const char* p, const char* end) noexcept {
    std::size_t open = 0;
    while (p < end) {
        if (!kStructure[static_cast<unsigned char>(*p)]) {
            ++p;
        } else if (*p == '\\') {
            // Only binary data could hide a brace; any other word ends before one.
            const bool plain = end - p > 1 && p[1] != 'b' && p[1] != '\'';
            p = plain ? p + 2 : SkipControl(p, end);
            if (!p) return end;
        } else if (*p == '{') {
            ++open;
            ++p;
        } else {
            if (open-- == 0) return p;
            ++p;
        }
    }
    return end;
}

}  // namespace brcore8::rtf
