#include "platform/posix/fonts.h"

#include <brcore8/core/throw.h>
#include <brcore8/platform/posix/input_calls.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include "core/memory.h"
#include "platform/posix/gdi.h"

using brcore8::Font;

int Font::Describe(int size, void* out) const noexcept {
    if (size < static_cast<int>(sizeof info)) return 0;
    std::memcpy(out, &info, sizeof info);
    return sizeof info;
}

HFONT CreateFontIndirectA(const LOGFONTA* info) noexcept {
    Font* const font =
        brcore8::MayAllocate(sizeof(Font)) ? new (std::nothrow) Font(*info) : nullptr;
    return static_cast<HFONT>(brcore8::GdiHandleOf(font));
}

int GetDeviceCaps(HDC, int index) noexcept {
    return index == LOGPIXELSX || index == LOGPIXELSY ? static_cast<int>(GetDpiForSystem()) : 0;
}

int MulDiv(int number, int numerator, int denominator) noexcept {
    if (denominator == 0) return -1;
    const std::int64_t product = std::int64_t{number} * numerator;
    const std::int64_t divisor = denominator;
    // Twice the remainder tells the nearer side.
    std::int64_t quotient = product / divisor;
    const std::int64_t rest = product % divisor;
    if (2 * (rest < 0 ? -rest : rest) >= (divisor < 0 ? -divisor : divisor))
        quotient += (product < 0) == (divisor < 0) ? 1 : -1;
    return quotient < INT_MIN || quotient > INT_MAX ? -1 : static_cast<int>(quotient);
}
