// Looking for two bytes at a distance from each other, and for units of 16 bits: several places a
// step where the processor has the instructions.
#ifndef BRCORE8_SRC_PLATFORM_BYTE_SEARCH_H
#define BRCORE8_SRC_PLATFORM_BYTE_SEARCH_H

#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>

#include <bit>
#endif

namespace brcore8 {

// One of two bytes, which may be the same.
struct ByteChoice {
    unsigned char one;
    unsigned char other;

    bool Has(char byte) const noexcept {
        const auto plain = static_cast<unsigned char>(byte);
        return plain == one || plain == other;
    }
};

// The first p from `from` to `last` where p[0] is one of `first` and p[distance] one of `second`;
// null when there is none. Reads nothing behind last[distance].
inline const char* FindBytePair(const char* from, const char* last, ByteChoice first,
                                std::size_t distance, ByteChoice second) noexcept {
    const char* p = from;
#if defined(__SSE2__)
    const auto load = [](const char* at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    };
    const auto all = [](unsigned char byte) { return _mm_set1_epi8(static_cast<char>(byte)); };
    const __m128i firstOne = all(first.one), firstOther = all(first.other);
    const __m128i secondOne = all(second.one), secondOther = all(second.other);
    for (; last - p >= 15; p += 16) {
        const __m128i begin = load(p);
        const __m128i end = load(p + distance);
        const __m128i hits = _mm_and_si128(
            _mm_or_si128(_mm_cmpeq_epi8(begin, firstOne), _mm_cmpeq_epi8(begin, firstOther)),
            _mm_or_si128(_mm_cmpeq_epi8(end, secondOne), _mm_cmpeq_epi8(end, secondOther)));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits));
        if (mask != 0) return p + std::countr_zero(mask);
    }
#endif
    for (; p <= last; ++p)
        if (first.Has(p[0]) && second.Has(p[distance])) return p;
    return nullptr;
}

// The first of the units that is one of three; `end` when there is none.
inline const char16_t* FindUnit(const char16_t* from, const char16_t* end, char16_t one,
                                char16_t other, char16_t third) noexcept {
    const char16_t* p = from;
#if defined(__SSE2__)
    const auto all = [](char16_t unit) { return _mm_set1_epi16(static_cast<short>(unit)); };
    const __m128i ones = all(one), others = all(other), thirds = all(third);
    for (; end - p >= 8; p += 8) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        const __m128i hits =
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi16(units, ones), _mm_cmpeq_epi16(units, others)),
                         _mm_cmpeq_epi16(units, thirds));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits));
        if (mask != 0) return p + std::countr_zero(mask) / 2;
    }
#endif
    while (p != end && *p != one && *p != other && *p != third)
        ++p;
    return p;
}

}  // namespace brcore8

#endif
