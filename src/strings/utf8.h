// One character of UTF-8 at a time, without memory; strings/unicode.h is built on it.
#ifndef BRCORE8_STRINGS_UTF8_H
#define BRCORE8_STRINGS_UTF8_H

#include <cstddef>

namespace brcore8::utf8 {

struct Character {
    char32_t code = 0;
    std::size_t bytes = 1;  // of a malformed sequence, its longest part that could begin one
    bool valid = false;
};

// The character at p < end. Three bytes are accepted from U+0400 on.
Character Decode(const char* p, const char* end) noexcept;

// Writes the one to four bytes of a code point in standard form and returns how many.
std::size_t Encode(char32_t code, char* out) noexcept;

}  // namespace brcore8::utf8

#endif
