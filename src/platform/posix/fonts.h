// Fonts. Any thread.
#ifndef BRCORE8_PLATFORM_POSIX_FONTS_H
#define BRCORE8_PLATFORM_POSIX_FONTS_H

#include <brcore8/platform/font_info.h>
#include <brcore8/platform/posix/graphics_calls.h>

#include "platform/posix/gdi.h"

constexpr int FW_NORMAL = 400;
constexpr int FW_BOLD = 700;

// number * numerator / denominator, rounded to the nearest, halves away from zero; -1 when that
// is no 32-bit number.
int MulDiv(int number, int numerator, int denominator) noexcept;

namespace brcore8 {

struct Font : GdiObject {
    explicit Font(const LOGFONTA& described) noexcept : GdiObject(Kind::Font), info(described) {}
    int Describe(int size, void* out) const noexcept override;

    const LOGFONTA info;
};

}  // namespace brcore8

#endif
