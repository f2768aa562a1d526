// Choosing without a jump.
#ifndef BRCORE8_PLATFORM_SELECT_H
#define BRCORE8_PLATFORM_SELECT_H

#include <concepts>
#include <type_traits>

namespace brcore8 {

// When `left` is less than `right`, two pointers get other values; else they keep theirs. In a
// search, where half of all answers are a surprise, a jump that the processor foretells wrongly
// costs more than all else in a step, and compilers make one of every `?:` here that loads from
// memory; where the processor is known, this is one comparison and two conditional moves.
template <std::integral Key, class T>
inline void SelectIfLess(Key left, Key right, T*& first, T* otherFirst, T*& second,
                         T* otherSecond) noexcept {
#if defined(__x86_64__) && defined(__GNUC__)
    using Wide = decltype(+left);
    const Wide wideLeft = left;
    const Wide wideRight = right;
    if constexpr (std::is_signed_v<Wide>) {
        asm("cmp {%[right], %[left]|%[left], %[right]}\n\t"
            "cmovl {%[otherFirst], %[first]|%[first], %[otherFirst]}\n\t"
            "cmovl {%[otherSecond], %[second]|%[second], %[otherSecond]}"
            : [first] "+&r"(first), [second] "+&r"(second)
            : [left] "r"(wideLeft), [right] "r"(wideRight), [otherFirst] "r"(otherFirst),
              [otherSecond] "r"(otherSecond)
            : "cc");
    } else {
        asm("cmp {%[right], %[left]|%[left], %[right]}\n\t"
            "cmovb {%[otherFirst], %[first]|%[first], %[otherFirst]}\n\t"
            "cmovb {%[otherSecond], %[second]|%[second], %[otherSecond]}"
            : [first] "+&r"(first), [second] "+&r"(second)
            : [left] "r"(wideLeft), [right] "r"(wideRight), [otherFirst] "r"(otherFirst),
              [otherSecond] "r"(otherSecond)
            : "cc");
    }
#else
    if (left < right) {
        first = otherFirst;
        second = otherSecond;
    }
#endif
}

}  // namespace brcore8

#endif
