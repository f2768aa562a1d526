// Shapes, and the objects that colour them.

#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>
#include <new>
#include <utility>

#include "platform/posix/desktop/device.h"
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
    const auto* const object = reinterpret_cast<const brcore8::GdiObject*>(brush);
    color = static_cast<const Brush*>(object)->color;
    return static_cast<const Brush*>(object)->isPainting;
}

template <class Object, class... Arguments>
HGDIOBJ Make(Arguments&&... arguments) noexcept {
    brcore8::GdiObject* const made =
        new (std::nothrow) Object(std::forward<Arguments>(arguments)...);
    return made;
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
    if (brushes[index] == nullptr) {
        brushes[index] = CreateSolidBrush(GetSysColor(index));
        if (brushes[index] != nullptr)
            reinterpret_cast<brcore8::GdiObject*>(brushes[index])->isStock = true;
    }
    return brushes[index];
}

HGDIOBJ GetStockObject(int which) noexcept {
    static HGDIOBJ objects[18] = {};
    if (which < 0 || which >= 18) return nullptr;
    if (objects[which] != nullptr) return objects[which];
    HGDIOBJ made = nullptr;
    static constexpr COLORREF kBrushes[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0x000000, 0};
    if (which <= NULL_BRUSH) made = Make<Brush>(kBrushes[which], which != NULL_BRUSH);
    if (which == WHITE_PEN || which == BLACK_PEN || which == NULL_PEN)
        made =
            CreatePen(which == NULL_PEN ? PS_NULL : PS_SOLID, 1, which == WHITE_PEN ? 0xFFFFFF : 0);
    if (which == SYSTEM_FONT || which == DEFAULT_GUI_FONT) {
        LOGFONTA font{};
        font.lfHeight = which == SYSTEM_FONT ? -13 : -11;
        font.lfWeight = which == SYSTEM_FONT ? 700 : 400;
        std::copy_n("DejaVu Sans", 12, font.lfFaceName);
        made = CreateFontIndirectA(&font);
    }
    if (made != nullptr) static_cast<brcore8::GdiObject*>(made)->isStock = true;
    return objects[which] = made;
}

HGDIOBJ SelectObject(HDC context, HGDIOBJ handle) noexcept {
    using Kind = brcore8::GdiObject::Kind;
    Device* const device = DeviceOf(context);
    const auto* const object = static_cast<const brcore8::GdiObject*>(handle);
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
        case Kind::Picture: {
            device->surface = static_cast<const Picture*>(object)->surface;
            const SIZE size = device->surface->GetSize();
            device->clip = device->visible = {{0, 0, size.cx, size.cy}};
            return std::exchange(device->pictureObject, handle);
        }
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
    const RECT sides[] = {{rect->left, rect->top, rect->right, rect->top + 1},
                          {rect->left, rect->bottom - 1, rect->right, rect->bottom},
                          {rect->left, rect->top, rect->left + 1, rect->bottom},
                          {rect->right - 1, rect->top, rect->right, rect->bottom}};
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

// --- Lines and points
// -----------------------------------------------------------------------------

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
    device->surface->Fill(device->clip, OnSurface(*device, RECT{x, y, x + 1, y + 1}), color);
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
    const RECT part = OnSurface(*source, RECT{fromX, fromY, fromX + width, fromY + height});
    target->surface->Copy(target->clip, OnSurface(*target, POINT{x, y}), *source->surface, part,
                          operation == SRCINVERT);
    return 1;
}

// --- Edges
// ----------------------------------------------------------------------------------------

BOOL DrawEdge(HDC context, RECT* rect, UINT edge, UINT) noexcept {
    const auto ring = [&](int light, int dark) {
        const RECT& r = *rect;
        const RECT sides[] = {{r.left, r.top, r.right - 1, r.top + 1},
                              {r.left, r.top, r.left + 1, r.bottom - 1},
                              {r.left, r.bottom - 1, r.right, r.bottom},
                              {r.right - 1, r.top, r.right, r.bottom}};
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
    if (DrawableOf(context) == nullptr) return 0;
    for (int x = rect->left; x < rect->right; x += 2)
        for (const int y : {rect->top, rect->bottom - 1}) {
            const RECT dot{x, y, x + 1, y + 1};
            InvertRect(context, &dot);
        }
    for (int y = rect->top + 1; y < rect->bottom - 1; y += 2)
        for (const int x : {rect->left, rect->right - 1}) {
            const RECT dot{x, y, x + 1, y + 1};
            InvertRect(context, &dot);
        }
    return 1;
}
