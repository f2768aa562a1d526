// Sets of pixels, as rectangles that do not overlap.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_REGION_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_REGION_H

#include <brcore8/platform/posix/window_types.h>

#include <vector>

namespace brcore8::desktop {

using Region = std::vector<RECT>;

void Intersect(Region& region, const RECT& rect);
void Subtract(Region& region, const RECT& rect);
// The smallest rectangle around it.
RECT BoxOf(const Region& region) noexcept;

}  // namespace brcore8::desktop

#endif
