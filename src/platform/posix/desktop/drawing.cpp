// Shapes, and the objects that colour them.

#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>
#include <new>
#include <utility>

#include "platform/posix/bitmap_object.h"
#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/device.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/sums.h"
#include "platform/posix/fonts.h"

using namespace brcore8::desktop;

namespace {

// A brush, or a system colour plus one in its place; false for one that does not paint.
bool ColorOf(HBRUSH brush, COLORREF& color) noexcept {
    const auto value = reinterpret_cast<std::uintptr_t>(brush);
    if (value == 0) return false;
    if (value <= 64) {
        color = GetSysColor(static_cast<int>(value) - 1);
        return true;
    }
    const auto* const object = brcore8::FindGdi<Brush>(brush, brcore8::GdiObject::Kind::Brush);
    if (object == nullptr) return false;
    color = object->color;
    return object->isPainting;
}

template <class Object, class... Arguments>
HGDIOBJ Make(Arguments&&... arguments) noexcept {
    return brcore8::GdiHandleOf(new (std::nothrow) Object(std::forward<Arguments>(arguments)...));
}

void MakeStock(HGDIOBJ handle) noexcept {
    if (brcore8::GdiObject* const object = brcore8::FindGdiObject(handle)) object->isStock = true;
}

}  // namespace

// --- Objects ----------------------------------------------------------------------------------

HBRUSH CreateSolidBrush(COLORREF color) noexcept {
    return static_cast<HBRUSH>(Make<Brush>(color, true));
}

HPEN CreatePen(int style, int width, COLORREF color) noexcept {
    const Stroke stroke{color, std::max(width, 1), style == PS_NULL ? PS_SOLID : style};
    return static_cast<HPEN>(Make<Pen>(stroke, style != PS_NULL));
}

HBRUSH GetSysColorBrush(int index) noexcept {
    static HBRUSH brushes[32] = {};
    if (index < 0 || index >= 32) return nullptr;
    const std::lock_guard guard(Lock());
    if (brushes[index] == nullptr) {
        brushes[index] = CreateSolidBrush(GetSysColor(index));
        MakeStock(brushes[index]);
    }
    return brushes[index];
}

namespace {

HGDIOBJ MakeStockObject(int which, int fontHeight) noexcept {
    HGDIOBJ made = nullptr;
    static constexpr COLORREF kBrushes[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0x000000, 0};
    if (which >= WHITE_BRUSH && which <= NULL_BRUSH)
        made = Make<Brush>(kBrushes[which], which != NULL_BRUSH);
    if (which == WHITE_PEN || which == BLACK_PEN || which == NULL_PEN)
        made =
            CreatePen(which == NULL_PEN ? PS_NULL : PS_SOLID, 1, which == WHITE_PEN ? 0xFFFFFF : 0);
    if (fontHeight != 0) {
        LOGFONTA font{};
        font.lfHeight = fontHeight;
        font.lfWeight = which == SYSTEM_FONT ? 700 : 400;
        std::copy_n("DejaVu Sans", 12, font.lfFaceName);
        made = CreateFontIndirectA(&font);
    }
    MakeStock(made);
    return made;
}

int StockFontHeight(int which) noexcept {
    if (which == SYSTEM_FONT) return -Scaled(13);
    return which == DEFAULT_GUI_FONT ? -Scaled(11) : 0;
}

}  // namespace

// The fonts of each scale that there was stay: windows may use them still.
HGDIOBJ GetStockObject(int which) noexcept {
    struct Stock {
        int which;
        int fontHeight;
        HGDIOBJ object;
    };
    static auto& made = *new std::vector<Stock>;
    const int height = StockFontHeight(which);
    const std::lock_guard guard(Lock());
    for (const Stock& each : made)
        if (each.which == which && each.fontHeight == height) return each.object;
    try {
        made.reserve(made.size() + 1);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    const HGDIOBJ object = MakeStockObject(which, height);
    if (object != nullptr) made.push_back({which, height, object});
    return object;
}

namespace {

// A window's context keeps what it draws on.
HGDIOBJ SelectBitmap(Device& device, brcore8::Bitmap& bitmap, HGDIOBJ handle) noexcept {
    if (device.pictureObject == nullptr) return nullptr;
    try {
        std::shared_ptr<Surface> surface = bitmap.GetSurface();
        if (surface == nullptr) return nullptr;
        const SIZE size = surface->GetSize();
        device.clip = device.visible = {{0, 0, size.cx, size.cy}};
        device.surface = std::move(surface);
        return std::exchange(device.pictureObject, handle);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

}  // namespace

HGDIOBJ SelectObject(HDC context, HGDIOBJ handle) noexcept {
    using Kind = brcore8::GdiObject::Kind;
    Device* const device = DeviceOf(context);
    brcore8::GdiObject* const object = brcore8::FindGdiObject(handle);
    if (device == nullptr || object == nullptr) return nullptr;
    switch (object->kind) {
        case Kind::Font:
            device->font = static_cast<const brcore8::Font*>(object)->info;
            return std::exchange(device->fontObject, handle);
        case Kind::Brush:
            device->brush = static_cast<const Brush*>(object)->color;
            device->isFilling = static_cast<const Brush*>(object)->isPainting;
            return std::exchange(device->brushObject, handle);
        case Kind::Pen:
            device->pen = static_cast<const Pen*>(object)->stroke;
            device->isOutlining = static_cast<const Pen*>(object)->isPainting;
            return std::exchange(device->penObject, handle);
        case Kind::Bitmap:
            return SelectBitmap(*device, static_cast<brcore8::Bitmap&>(*object), handle);
        default:
            return nullptr;
    }
}

// --- Areas --------------------------------------------------------------------------------------

int FillRect(HDC context, const RECT* rect, HBRUSH brush) noexcept {
    Device* const device = DrawableOf(context);
    COLORREF color = 0;
    if (device == nullptr) return 0;
    if (ColorOf(brush, color))
        device->surface->Fill(device->clip, OnSurface(*device, *rect), color);
    return 1;
}

int FrameRect(HDC context, const RECT* rect, HBRUSH brush) noexcept {
    const RECT sides[] = {{rect->left, rect->top, rect->right, Sum(rect->top, 1)},
                          {rect->left, Sum(rect->bottom, -1), rect->right, rect->bottom},
                          {rect->left, rect->top, Sum(rect->left, 1), rect->bottom},
                          {Sum(rect->right, -1), rect->top, rect->right, rect->bottom}};
    for (const RECT& side : sides)
        if (!FillRect(context, &side, brush)) return 0;
    return 1;
}

BOOL InvertRect(HDC context, const RECT* rect) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return 0;
    device->surface->Invert(device->clip, OnSurface(*device, *rect));
    return 1;
}

BOOL Rectangle(HDC context, int left, int top, int right, int bottom) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return 0;
    const RECT rect = OnSurface(*device, {left, top, right, bottom});
    if (device->isFilling) device->surface->Fill(device->clip, rect, device->brush);
    if (!device->isOutlining) return 1;
    const POINT corners[] = {{rect.left, rect.top},
                             {rect.right - 1, rect.top},
                             {rect.right - 1, rect.bottom - 1},
                             {rect.left, rect.bottom - 1},
                             {rect.left, rect.top}};
    for (int i = 0; i < 4; ++i)
        device->surface->Line(device->clip, corners[i], corners[i + 1], device->pen);
    return 1;
}

BOOL Ellipse(HDC context, int left, int top, int right, int bottom) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return 0;
    device->surface->Ellipse(device->clip, OnSurface(*device, {left, top, right, bottom}),
                             device->isOutlining ? &device->pen : nullptr,
                             device->isFilling ? &device->brush : nullptr);
    return 1;
}

// --- Lines and points ----------------------------------------------------------------------------

BOOL MoveToEx(HDC context, int x, int y, POINT* old) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    if (old != nullptr) *old = device->at;
    device->at = {x, y};
    return 1;
}

BOOL LineTo(HDC context, int x, int y) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return 0;
    if (device->isOutlining)
        device->surface->Line(device->clip, OnSurface(*device, device->at),
                              OnSurface(*device, POINT{x, y}), device->pen);
    device->at = {x, y};
    return 1;
}

COLORREF SetPixel(HDC context, int x, int y, COLORREF color) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return CLR_INVALID;
    device->surface->Fill(device->clip, OnSurface(*device, AreaOf(x, y, 1, 1)), color);
    return color;
}

COLORREF GetPixel(HDC context, int x, int y) noexcept {
    const Device* const device = DrawableOf(context);
    return device != nullptr ? device->surface->GetPixel(OnSurface(*device, POINT{x, y}))
                             : CLR_INVALID;
}

BOOL BitBlt(HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY,
            DWORD operation) noexcept {
    Device* const target = DrawableOf(to);
    const Device* const source = DrawableOf(from);
    if (target == nullptr || source == nullptr || (operation != SRCCOPY && operation != SRCINVERT))
        return 0;
    const RECT part = OnSurface(*source, AreaOf(fromX, fromY, width, height));
    target->surface->Copy(target->clip, OnSurface(*target, POINT{x, y}), *source->surface, part,
                          operation == SRCINVERT);
    return 1;
}

// --- Edges ---------------------------------------------------------------------------------------

BOOL DrawEdge(HDC context, RECT* rect, UINT edge, UINT) noexcept {
    const auto ring = [&](int light, int dark) {
        const RECT& r = *rect;
        const LONG right = Sum(r.right, -1), bottom = Sum(r.bottom, -1);
        const RECT sides[] = {{r.left, r.top, right, Sum(r.top, 1)},
                              {r.left, r.top, Sum(r.left, 1), bottom},
                              {r.left, bottom, r.right, r.bottom},
                              {right, r.top, r.right, r.bottom}};
        for (int i = 0; i < 4; ++i)
            FillRect(context, &sides[i], GetSysColorBrush(i < 2 ? light : dark));
        InflateRect(rect, -1, -1);
    };
    const RECT whole = *rect;
    constexpr UINT kOuter = 3, kInner = 12;
    if ((edge & kOuter) != 0)
        (edge & BDR_SUNKENOUTER) != 0 ? ring(COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT)
                                      : ring(COLOR_3DLIGHT, COLOR_3DDKSHADOW);
    if ((edge & kInner) != 0)
        (edge & BDR_RAISEDINNER) != 0 ? ring(COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW)
                                      : ring(COLOR_3DDKSHADOW, COLOR_3DLIGHT);
    *rect = whole;
    return DrawableOf(context) != nullptr;
}

BOOL DrawFocusRect(HDC context, const RECT* rect) noexcept {
    RECT box{};
    if (DrawableOf(context) == nullptr) return 0;
    if (IsRectEmpty(rect) || GetClipBox(context, &box) == 0) return 1;
    // Every other pixel of those that show.
    const auto dot = [context](LONG x, LONG y) {
        const RECT pixel = AreaOf(x, y, 1, 1);
        InvertRect(context, &pixel);
    };
    const auto first = [](LONG begin, LONG shown) {
        return std::int64_t{begin} + std::max<std::int64_t>(std::int64_t{shown} - begin, 0) / 2 * 2;
    };
    for (std::int64_t x = first(rect->left, box.left); x < std::min(rect->right, box.right); x += 2)
        for (const LONG y : {rect->top, rect->bottom - 1})
            dot(static_cast<LONG>(x), y);
    for (std::int64_t y = first(rect->top, box.top) + 1;
         y < std::min<std::int64_t>(std::int64_t{rect->bottom} - 1, box.bottom); y += 2)
        for (const LONG x : {rect->left, rect->right - 1})
            dot(x, static_cast<LONG>(y));
    return 1;
}
