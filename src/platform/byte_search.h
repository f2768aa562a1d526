// Looking for two bytes at a distance from each other, for units of 16 bits, and for line ends while
// text is copied: several places a step where the processor has the instructions.
#ifndef BRCORE8_SRC_PLATFORM_BYTE_SEARCH_H
#define BRCORE8_SRC_PLATFORM_BYTE_SEARCH_H

#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>

#include <bit>
#endif

namespace brcore8 {

// What a byte may be: this one, or one of two.
struct ByteIs {
    unsigned char one;

    bool Has(char byte) const noexcept { return static_cast<unsigned char>(byte) == one; }
#if defined(__SSE2__)
    __m128i In(__m128i bytes) const noexcept {
        return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(one)));
    }
#endif
};
struct ByteChoice {
    unsigned char one;
    unsigned char other;

    bool Has(char byte) const noexcept { return ByteIs{one}.Has(byte) || ByteIs{other}.Has(byte); }
#if defined(__SSE2__)
    __m128i In(__m128i bytes) const noexcept {
        return _mm_or_si128(ByteIs{one}.In(bytes), ByteIs{other}.In(bytes));
    }
#endif
};

// The first p from `from` to `last` where p[0] is one of `first` and p[distance] one of `second`;
// null when there is none. Reads nothing behind last[distance].
template <class Choice>
const char* FindBytePair(const char* from, const char* last, Choice first, std::size_t distance,
                         Choice second) noexcept {
    const char* p = from;
#if defined(__SSE2__)
    const auto load = [](const char* at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    };
    const auto hitsAt = [&](const char* at) {
        return static_cast<unsigned>(_mm_movemask_epi8(
            _mm_and_si128(first.In(load(at)), second.In(load(at + distance)))));
    };
    if (last - p >= 15) {
        const char* const end = last - 15;  // where the last step begins, going over places twice
        for (;; p = end - p > 16 ? p + 16 : end) {
            const unsigned hits = hitsAt(p);
            if (hits != 0) return p + std::countr_zero(hits);
            if (p == end) return nullptr;
        }
    }
#endif
    for (; p <= last; ++p)
        if (first.Has(p[0]) && second.Has(p[distance])) return p;
    return nullptr;
}

// The index of the first CR, LF or `third` byte; `count` when there is none.
inline std::size_t FindLineEnd(const unsigned char* text, std::size_t count,
                               unsigned char third = '\n') noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi8('\r'), lf = _mm_set1_epi8('\n');
    const __m128i thirds = _mm_set1_epi8(static_cast<char>(third));
    for (; count - i >= 16; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(bytes, cr), _mm_cmpeq_epi8(bytes, lf));
        const __m128i hits = _mm_or_si128(ends, _mm_cmpeq_epi8(bytes, thirds));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits));
        if (mask != 0) return i + static_cast<std::size_t>(std::countr_zero(mask));
    }
#endif
    while (i < count && text[i] != '\r' && text[i] != '\n' && text[i] != third)
        ++i;
    return i;
}

// Copies sixteen bytes and returns how many of them, from the start, are ASCII.
inline std::size_t CopySixteen(const unsigned char* text, unsigned char* out) noexcept {
#if defined(__SSE2__)
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), bytes);
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(bytes));
    return static_cast<std::size_t>(std::countr_zero(mask | 0x10000u));
#else
    std::size_t ascii = 0;
    for (std::size_t i = 0; i < 16; ++i) {
        out[i] = text[i];
        if (ascii == i && text[i] < 0x80) ++ascii;
    }
    return ascii;
#endif
}

// Copies ASCII up to the first CR, LF, or byte that is not ASCII, and returns how much that was.
// `out` has room for `count` bytes; what is behind the copy may be overwritten.
inline std::size_t CopyAsciiText(const unsigned char* text, std::size_t count,
                                 unsigned char* out) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi8('\r'), lf = _mm_set1_epi8('\n');
    for (; count - i >= 16; i += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(bytes, cr), _mm_cmpeq_epi8(bytes, lf));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), bytes);
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(bytes, ends)));
        if (mask != 0) return i + static_cast<std::size_t>(std::countr_zero(mask));
    }
#endif
    for (; i < count && text[i] < 0x80 && text[i] != '\r' && text[i] != '\n'; ++i)
        out[i] = text[i];
    return i;
}

// The same for units of two bytes, low byte first: `count` units become as many bytes.
inline std::size_t NarrowAsciiText(const unsigned char* text, std::size_t count,
                                   unsigned char* out) noexcept {
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128i cr = _mm_set1_epi16('\r'), lf = _mm_set1_epi16('\n');
    const __m128i beyond = _mm_set1_epi16(static_cast<short>(0xFF80));
    for (; count - i >= 8; i += 8) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + 2 * i));
        const __m128i plain = _mm_cmpeq_epi16(_mm_and_si128(units, beyond), _mm_setzero_si128());
        const __m128i ends = _mm_or_si128(_mm_cmpeq_epi16(units, cr), _mm_cmpeq_epi16(units, lf));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(out + i), _mm_packus_epi16(units, units));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_andnot_si128(ends, plain)));
        if (mask != 0xFFFF) return i + static_cast<std::size_t>(std::countr_one(mask)) / 2;
    }
#endif
    for (; i < count; ++i) {
        const unsigned unit = text[2 * i] | text[2 * i + 1] << 8;
        if (unit >= 0x80 || unit == '\r' || unit == '\n') break;
        out[i] = static_cast<unsigned char>(unit);
    }
    return i;
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
