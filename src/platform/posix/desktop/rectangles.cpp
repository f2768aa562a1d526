// Rectangles.

#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>

#include "platform/posix/desktop/sums.h"

using namespace brcore8::desktop;

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom) noexcept {
    *rect = {left, top, right, bottom};
    return 1;
}

BOOL SetRectEmpty(RECT* rect) noexcept {
    *rect = {};
    return 1;
}

BOOL IsRectEmpty(const RECT* rect) noexcept {
    return rect->left >= rect->right || rect->top >= rect->bottom;
}

BOOL EqualRect(const RECT* a, const RECT* b) noexcept {
    return a->left == b->left && a->top == b->top && a->right == b->right && a->bottom == b->bottom;
}

BOOL OffsetRect(RECT* rect, int dx, int dy) noexcept {
    *rect = Moved(*rect, dx, dy);
    return 1;
}

BOOL InflateRect(RECT* rect, int dx, int dy) noexcept {
    *rect = {Sum(rect->left, -std::int64_t{dx}), Sum(rect->top, -std::int64_t{dy}),
             Sum(rect->right, dx), Sum(rect->bottom, dy)};
    return 1;
}

BOOL IntersectRect(RECT* out, const RECT* a, const RECT* b) noexcept {
    const RECT common{std::max(a->left, b->left), std::max(a->top, b->top),
                      std::min(a->right, b->right), std::min(a->bottom, b->bottom)};
    if (IsRectEmpty(a) || IsRectEmpty(b) || IsRectEmpty(&common)) return !SetRectEmpty(out);
    *out = common;
    return 1;
}

BOOL UnionRect(RECT* out, const RECT* a, const RECT* b) noexcept {
    if (IsRectEmpty(a) && IsRectEmpty(b)) return !SetRectEmpty(out);
    if (IsRectEmpty(a) || IsRectEmpty(b)) {
        *out = IsRectEmpty(a) ? *b : *a;
        return 1;
    }
    *out = {std::min(a->left, b->left), std::min(a->top, b->top), std::max(a->right, b->right),
            std::max(a->bottom, b->bottom)};
    return 1;
}

BOOL PtInRect(const RECT* rect, POINT point) noexcept {
    return point.x >= rect->left && point.x < rect->right && point.y >= rect->top &&
           point.y < rect->bottom;
}
