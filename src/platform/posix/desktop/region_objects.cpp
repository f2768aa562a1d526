// Regions as objects, and what of a context they let through.

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>
#include <new>

#include "platform/posix/desktop/device.h"

using namespace brcore8::desktop;

namespace {

struct RegionObject : brcore8::GdiObject {
    explicit RegionObject(Region set) noexcept : GdiObject(Kind::Region), pixels(std::move(set)) {}
    Region pixels;
};

// Null with ERROR_INVALID_HANDLE for what is no region.
RegionObject* RegionOf(HRGN handle) noexcept {
    return brcore8::FindGdi<RegionObject>(handle, brcore8::GdiObject::Kind::Region);
}

// A rectangle's corners come in any order.
Region RectangleOf(int left, int top, int right, int bottom) {
    const RECT rect{std::min(left, right), std::min(top, bottom), std::max(left, right),
                    std::max(top, bottom)};
    return IsRectEmpty(&rect) ? Region() : Region{rect};
}

Region Difference(Region from, const Region& other) {
    for (const RECT& part : other)
        Subtract(from, part);
    return from;
}

Region Union(const Region& a, const Region& b) {
    Region all = Difference(a, b);
    all.insert(all.end(), b.begin(), b.end());
    return all;
}

Region Intersection(const Region& a, const Region& b) {
    Region common;
    for (const RECT& part : b) {
        Region cut = a;
        Intersect(cut, part);
        common.insert(common.end(), cut.begin(), cut.end());
    }
    return common;
}

int KindOf(const Region& region) noexcept {
    return region.empty() ? NULLREGION : region.size() == 1 ? SIMPLEREGION : COMPLEXREGION;
}

// Runs `call` with 0 as its answer when memory is short.
template <class Call>
int Guarded(Call call) noexcept {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
}

// A region of the context's own coordinates on its surface.
Region OnSurface(const Device& device, Region region) {
    for (RECT& part : region)
        OffsetRect(&part, device.origin.x, device.origin.y);
    return region;
}

}  // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) noexcept {
    try {
        return static_cast<HRGN>(
            brcore8::GdiHandleOf(new RegionObject(RectangleOf(left, top, right, bottom))));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

HRGN CreateRectRgnIndirect(const RECT* rect) noexcept {
    return CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
}

BOOL SetRectRgn(HRGN handle, int left, int top, int right, int bottom) noexcept {
    return Guarded([&] {
        RegionObject* const region = RegionOf(handle);
        if (region == nullptr) return 0;
        region->pixels = RectangleOf(left, top, right, bottom);
        return 1;
    });
}

int CombineRgn(HRGN handle, HRGN first, HRGN second, int operation) noexcept {
    return Guarded([&] {
        RegionObject* const to = RegionOf(handle);
        const RegionObject* const a = RegionOf(first);
        const RegionObject* const b = operation == RGN_COPY ? a : RegionOf(second);
        if (to == nullptr || a == nullptr || b == nullptr) return 0;
        switch (operation) {
            case RGN_AND:
                to->pixels = Intersection(a->pixels, b->pixels);
                break;
            case RGN_OR:
                to->pixels = Union(a->pixels, b->pixels);
                break;
            case RGN_XOR:
                to->pixels =
                    Union(Difference(a->pixels, b->pixels), Difference(b->pixels, a->pixels));
                break;
            case RGN_DIFF:
                to->pixels = Difference(a->pixels, b->pixels);
                break;
            case RGN_COPY:
                to->pixels = Region(a->pixels);
                break;
            default:
                SetLastError(ERROR_INVALID_PARAMETER);
                return 0;
        }
        return KindOf(to->pixels);
    });
}

int OffsetRgn(HRGN handle, int dx, int dy) noexcept {
    RegionObject* const region = RegionOf(handle);
    if (region == nullptr) return 0;
    for (RECT& part : region->pixels)
        OffsetRect(&part, dx, dy);
    return KindOf(region->pixels);
}

int GetRgnBox(HRGN handle, RECT* box) noexcept {
    const RegionObject* const region = RegionOf(handle);
    if (region == nullptr) return 0;
    *box = BoxOf(region->pixels);
    return KindOf(region->pixels);
}

BOOL PtInRegion(HRGN handle, int x, int y) noexcept {
    const RegionObject* const region = RegionOf(handle);
    return region != nullptr &&
           std::any_of(region->pixels.begin(), region->pixels.end(), [&](const RECT& part) {
               return PtInRect(&part, {x, y}) != 0;
           });
}

BOOL RectInRegion(HRGN handle, const RECT* rect) noexcept {
    const RegionObject* const region = RegionOf(handle);
    RECT common;
    return region != nullptr &&
           std::any_of(region->pixels.begin(), region->pixels.end(),
                       [&](const RECT& part) { return IntersectRect(&common, &part, rect) != 0; });
}

BOOL EqualRgn(HRGN first, HRGN second) noexcept {
    return Guarded([&] {
        const RegionObject* const a = RegionOf(first);
        const RegionObject* const b = RegionOf(second);
        return a != nullptr && b != nullptr && Difference(a->pixels, b->pixels).empty() &&
               Difference(b->pixels, a->pixels).empty();
    });
}

BOOL FillRgn(HDC context, HRGN handle, HBRUSH brush) noexcept {
    const RegionObject* const region = RegionOf(handle);
    if (region == nullptr || DrawableOf(context) == nullptr) return 0;
    for (const RECT& part : region->pixels)
        FillRect(context, &part, brush);
    return 1;
}

int SelectClipRgn(HDC context, HRGN handle) noexcept {
    return Guarded([&] {
        Device* const device = DeviceOf(context);
        if (device == nullptr) return 0;
        if (handle == nullptr) {
            device->clip = Region(device->visible);
            return KindOf(device->clip);
        }
        const RegionObject* const region = RegionOf(handle);
        if (region == nullptr) return 0;
        device->clip = Intersection(device->visible, OnSurface(*device, region->pixels));
        return KindOf(device->clip);
    });
}

BOOL RectVisible(HDC context, const RECT* rect) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    const RECT place = OnSurface(*device, *rect);
    RECT common;
    return std::any_of(device->clip.begin(), device->clip.end(), [&](const RECT& part) {
        return IntersectRect(&common, &part, &place) != 0;
    });
}

BOOL PtVisible(HDC context, int x, int y) noexcept {
    const RECT pixel = AreaOf(x, y, 1, 1);
    return RectVisible(context, &pixel);
}
