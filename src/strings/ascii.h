// Runs of ASCII, which most text consists of, converted sixteen characters a step.
#ifndef BRCORE8_SRC_STRINGS_ASCII_H
#define BRCORE8_SRC_STRINGS_ASCII_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace brcore8 {

constexpr std::size_t kAsciiStep = 16;

// Whether the next kAsciiStep characters are ASCII.
inline bool IsAsciiStep(const char* text) noexcept {
    std::uint64_t words[2];
    std::memcpy(words, text, sizeof words);
    return ((words[0] | words[1]) & 0x8080808080808080u) == 0;
}

template <typename Unit>  // of 16 bits
bool IsAsciiStep(const Unit* text) noexcept {
    static_assert(sizeof(Unit) == 2);
    std::uint64_t words[4];
    std::memcpy(words, text, sizeof words);
    return ((words[0] | words[1] | words[2] | words[3]) & 0xFF80FF80FF80FF80u) == 0;
}

// Converts whole steps from the start of the text, up to the first that is not all ASCII; returns
// how many characters that were.
template <typename From, typename To>
std::size_t ConvertAscii(const From* text, std::size_t count, To* out) noexcept {
    std::size_t done = 0;
    for (; count - done >= kAsciiStep && IsAsciiStep(text + done); done += kAsciiStep) {
        for (std::size_t i = 0; i < kAsciiStep; ++i)
            out[done + i] = static_cast<To>(text[done + i]);
    }
    return done;
}

// The same without converting.
template <typename From>
std::size_t CountAscii(const From* text, std::size_t count) noexcept {
    std::size_t done = 0;
    while (count - done >= kAsciiStep && IsAsciiStep(text + done))
        done += kAsciiStep;
    return done;
}

}  // namespace brcore8

#endif
