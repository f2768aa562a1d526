#include "platform/posix/desktop/region.h"

#include <brcore8/platform/posix/window_calls.h>

namespace brcore8::desktop {

void Intersect(Region& region, const RECT& rect) {
    Region common;
    for (const RECT& part : region) {
        RECT both;
        if (IntersectRect(&both, &part, &rect)) common.push_back(both);
    }
    region.swap(common);
}

// What is left of a part are the bands above and below, and the ends beside.
void Subtract(Region& region, const RECT& rect) {
    Region left;
    const auto keep = [&left](const RECT& part) {
        if (!IsRectEmpty(&part)) left.push_back(part);
    };
    for (const RECT& part : region) {
        RECT hole;
        if (!IntersectRect(&hole, &part, &rect)) {
            left.push_back(part);
            continue;
        }
        keep({part.left, part.top, part.right, hole.top});
        keep({part.left, hole.bottom, part.right, part.bottom});
        keep({part.left, hole.top, hole.left, hole.bottom});
        keep({hole.right, hole.top, part.right, hole.bottom});
    }
    region.swap(left);
}

RECT BoxOf(const Region& region) noexcept {
    RECT box{};
    for (const RECT& part : region)
        UnionRect(&box, &box, &part);
    return box;
}

}  // namespace brcore8::desktop
