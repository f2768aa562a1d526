// The controls of RTF: a backslash and what belongs to it.
#ifndef BRCORE8_SRC_TEXT_RTF_CONTROL_H
#define BRCORE8_SRC_TEXT_RTF_CONTROL_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/rtf_words.h"

namespace brcore8::rtf {

constexpr bool IsLetter(char c) {
    return static_cast<unsigned char>((c | 0x20) - 'a') < 26;
}
constexpr bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}
// The value of a hexadecimal digit; negative for any other byte.
constexpr int HexValue(char c) {
    if (IsDigit(c)) return c - '0';
    const int letter = (c | 0x20) - 'a';
    return letter >= 0 && letter < 6 ? letter + 10 : -1;
}

// A control word with its number and the blank that ends it.
struct ControlWord {
    std::string_view name;
    std::uint32_t hash = 0;
    const char* end = nullptr;
    // Of too many digits the lowest 64 bits; 0 without a number.
    std::int64_t number = 0;
    bool negative = false;
    bool overflow = false;

    // As many bytes as the number says, and there are.
    std::size_t Count(std::size_t available) const {
        if (negative) return 0;
        if (overflow) return available;
        const auto count = static_cast<std::uint64_t>(number);
        return count < available ? static_cast<std::size_t>(count) : available;
    }
};

// The word whose backslash is at `p`; a letter follows it.
ControlWord ReadWord(const char* p, const char* end) noexcept;

// Behind the control at `p`: a word, with the data of \binN, a symbol, or \'hh, of which bad digits
// are no part. Null when the text ends within it.
const char* SkipControl(const char* p, const char* end) noexcept;

// From inside a group to the brace that closes it, or to the end of the text.
const char* FindGroupEnd(const char* p, const char* end) noexcept;

}  // namespace brcore8::rtf

#endif
