// How large things are on the screen. Measures in this desktop's code are pixels of a screen with
// 96 of them an inch; on others fonts, frames, menus and controls grow alike.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_SCALE_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_SCALE_H

#include <algorithm>

namespace brcore8::desktop {

constexpr unsigned kUsualDpi = 96;

// What a setting or a program says, made into something that windows can be laid out for: below
// the usual texts are no longer read, and eight times of it is wider than any screen.
constexpr unsigned UsableDpi(long long dpi) noexcept {
    constexpr long long kMost = 768;
    return static_cast<unsigned>(std::clamp<long long>(dpi, kUsualDpi, kMost));
}

// The pixels of this screen. Lines and edges of one or two pixels are not scaled, as the
// platform's are not.
int Scaled(int pixels) noexcept;

}  // namespace brcore8::desktop

#endif
