// Sums of places, which a program chooses as it likes: they end at the first and the last number.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_SUMS_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_SUMS_H

#include <brcore8/platform/posix/window_types.h>

#include <algorithm>
#include <cstdint>

namespace brcore8::desktop {

inline LONG Sum(LONG value, std::int64_t delta) noexcept {
    return static_cast<LONG>(std::clamp<std::int64_t>(value + delta, INT32_MIN, INT32_MAX));
}

inline RECT Moved(const RECT& rect, std::int64_t dx, std::int64_t dy) noexcept {
    return {Sum(rect.left, dx), Sum(rect.top, dy), Sum(rect.right, dx), Sum(rect.bottom, dy)};
}

}  // namespace brcore8::desktop

#endif
