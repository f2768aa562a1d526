// What is selected, shapes of many points, and areas copied in other sizes.

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/window_calls.h>

#include <cstring>

#include "platform/posix/desktop/device.h"
#include "platform/posix/desktop/sums.h"

using namespace brcore8::desktop;

namespace {

template <class Record>
int Give(const Record& record, int size, void* out) noexcept {
    if (out == nullptr) return sizeof record;
    if (size < static_cast<int>(sizeof record)) return 0;
    std::memcpy(out, &record, sizeof record);
    return sizeof record;
}

}  // namespace

namespace brcore8::desktop {

int Brush::Describe(int size, void* out) const noexcept {
    return Give(LOGBRUSH{isPainting ? BS_SOLID : BS_NULL, color, 0}, size, out);
}

int Pen::Describe(int size, void* out) const noexcept {
    const UINT style = isPainting ? static_cast<UINT>(stroke.style) : UINT{PS_NULL};
    return Give(LOGPEN{style, {stroke.width, 0}, stroke.color}, size, out);
}

}  // namespace brcore8::desktop

HGDIOBJ GetCurrentObject(HDC context, UINT kind) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr) return nullptr;
    switch (kind) {
        case OBJ_PEN:
            return device->penObject;
        case OBJ_BRUSH:
            return device->brushObject;
        case OBJ_FONT:
            return device->fontObject;
        case OBJ_BITMAP:
            return device->pictureObject;
        default:
            return nullptr;
    }
}

COLORREF GetTextColor(HDC context) noexcept {
    const Device* const device = DeviceOf(context);
    return device != nullptr ? device->textColor : CLR_INVALID;
}

COLORREF GetBkColor(HDC context) noexcept {
    const Device* const device = DeviceOf(context);
    return device != nullptr ? device->backColor : CLR_INVALID;
}

int GetBkMode(HDC context) noexcept {
    const Device* const device = DeviceOf(context);
    return device != nullptr ? device->backMode : 0;
}

BOOL GetCurrentPositionEx(HDC context, POINT* point) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    *point = device->at;
    return 1;
}

BOOL GetViewportOrgEx(HDC context, POINT* point) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    *point = device->viewport;
    return 1;
}

BOOL OffsetViewportOrgEx(HDC context, int dx, int dy, POINT* old) noexcept {
    POINT now;
    return GetViewportOrgEx(context, &now) &&
           SetViewportOrgEx(context, Sum(now.x, dx), Sum(now.y, dy), old);
}

BOOL Polyline(HDC context, const POINT* points, int count) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr || count < 2) return 0;
    for (int i = 1; i < count && device->isOutlining; ++i)
        device->surface->Line(device->clip, OnSurface(*device, points[i - 1]),
                              OnSurface(*device, points[i]), device->pen);
    return 1;
}

BOOL PatBlt(HDC context, int x, int y, int width, int height, DWORD operation) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return 0;
    const RECT place = OnSurface(*device, AreaOf(x, y, width, height));
    switch (operation) {
        case PATCOPY:
            if (device->isFilling) device->surface->Fill(device->clip, place, device->brush);
            return 1;
        case DSTINVERT:
            device->surface->Invert(device->clip, place);
            return 1;
        case BLACKNESS:
        case WHITENESS:
            device->surface->Fill(device->clip, place, operation == WHITENESS ? 0xFFFFFF : 0);
            return 1;
        default:
            SetLastError(ERROR_INVALID_PARAMETER);
            return 0;
    }
}

// Rows are filled a run of equal pixels at a time. The source is read while the target is written:
// a picture that is stretched into itself comes out as the platform's does not.
BOOL StretchBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY,
                int fromWidth, int fromHeight, DWORD operation) noexcept {
    Device* const target = DrawableOf(to);
    const Device* const source = DrawableOf(from);
    if (target == nullptr || source == nullptr || operation != SRCCOPY || width < 1 || height < 1 ||
        fromWidth < 1 || fromHeight < 1)
        return 0;
    if (width == fromWidth && height == fromHeight)
        return BitBlt(to, x, y, width, height, from, fromX, fromY, operation);
    const auto pixelAt = [&](int column, int row) {
        const POINT at{Sum(fromX, std::int64_t{column} * fromWidth / width),
                       Sum(fromY, std::int64_t{row} * fromHeight / height)};
        return source->surface->GetPixel(OnSurface(*source, at));
    };
    // Only what shows is looked at, however large it is asked to be.
    RECT shown = AreaOf(x, y, width, height);
    RECT box{};
    if (GetClipBox(to, &box) == 0 || !IntersectRect(&shown, &shown, &box)) return 1;
    const int right = shown.right - x;
    for (int row = shown.top - y; row < shown.bottom - y; ++row) {
        for (int column = shown.left - x; column < right;) {
            const COLORREF color = pixelAt(column, row);
            int end = column + 1;
            while (end < right && pixelAt(end, row) == color)
                ++end;
            const RECT run{x + column, y + row, x + end, y + row + 1};
            if (color != CLR_INVALID)
                target->surface->Fill(target->clip, OnSurface(*target, run), color);
            column = end;
        }
    }
    return 1;
}
