#include "strings/short_number.h"

#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdint>

namespace brcore8 {

char* PutShortNumber(double value, char* out) noexcept {
    constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
    constexpr double kSmallest = 1e-4, kLargest = 999999;  // beyond them exponents are written
    const double size = std::fabs(value);
    if (!(size >= kSmallest && size <= kLargest)) return nullptr;

    // Six digits as a whole number.
    int decimals = 0;
    while (decimals < 9 && size * kPowers[decimals] < 1e5)
        ++decimals;
    const double scaled = size * kPowers[decimals];
    auto digits = static_cast<std::uint32_t>(scaled);
    const double rest = scaled - digits;
    // The product is off by less than 2^-33, so that only near a half the digit is in doubt.
    if (std::fabs(rest - 0.5) < 1e-9) return nullptr;
    if (rest > 0.5) ++digits;
    for (; decimals > 0 && digits % 10 == 0; --decimals)
        digits /= 10;

    const auto unit = static_cast<std::uint32_t>(kPowers[decimals]);
    if (value < 0) *out++ = '-';
    out = std::to_chars(out, out + 7, digits / unit).ptr;
    if (decimals == 0) return out;
    const char* const point = std::localeconv()->decimal_point;
    if (point[0] == 0 || point[1] != 0) return nullptr;
    *out = *point;
    std::uint32_t fraction = digits % unit;
    for (int i = decimals; i > 0; --i, fraction /= 10)
        out[i] = static_cast<char>('0' + fraction % 10);
    return out + 1 + decimals;
}

}  // namespace brcore8
