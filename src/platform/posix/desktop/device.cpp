#include "platform/posix/desktop/device.h"

#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <set>
#include <utility>

#include "platform/posix/bitmap_object.h"
#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/input.h"
#include "platform/posix/desktop/sums.h"

namespace brcore8::desktop {

namespace {

// The contexts that there are: a handle that is none is refused.
std::set<Device*>& Devices() {
    static std::set<Device*>& devices = *new std::set<Device*>;
    return devices;
}

HDC Register(std::unique_ptr<Device> device) {
    const auto handle = reinterpret_cast<HDC>(device.get());
    {
        const std::lock_guard guard(Lock());
        Devices().insert(device.get());
        static_cast<void>(device.release());
    }
    for (const int which : {SYSTEM_FONT, WHITE_BRUSH, BLACK_PEN})
        SelectObject(handle, GetStockObject(which));
    return handle;
}

// A window's place in the picture of its top-level window.
RECT InTop(const Window& window, const RECT& own, const Window& top) noexcept {
    RECT rect = own;
    for (const Window* at = window.parent; at != nullptr && &window != &top; at = at->parent) {
        OffsetRect(&rect, at->client.left, at->client.top);
        if (at == &top) break;
    }
    OffsetRect(&rect, -top.rect.left, -top.rect.top);
    return rect;
}

// What of a window's `part` shows: inside its parents, and not under children or siblings that it
// keeps clear of.
Region VisibleOf(const Window& window, const RECT& part, const Window& top) {
    Region region{InTop(window, part, top)};
    for (const Window* at = &window; at != &top && at->parent != nullptr; at = at->parent)
        Intersect(region, InTop(*at->parent, at->parent->client, top));
    if ((window.style & WS_CLIPCHILDREN) != 0)
        for (const Window* child = window.firstChild; child != nullptr; child = child->below)
            if ((child->style & WS_VISIBLE) != 0) Subtract(region, InTop(*child, child->rect, top));
    if (&window != &top && (window.style & WS_CLIPSIBLINGS) != 0)
        for (const Window* each = window.above; each != nullptr; each = each->above)
            if ((each->style & WS_VISIBLE) != 0) Subtract(region, InTop(*each, each->rect, top));
    return region;
}

Window& TopOf(Window& window) noexcept {
    Window* top = &window;
    while (top->parent != nullptr && top->parent != &Root())
        top = top->parent;
    return *top;
}

// The picture of a top-level window, as large as it is now.
std::shared_ptr<Surface> SurfaceOf(Window& top) {
    const SIZE size{std::max(Width(top.rect), 1), std::max(Height(top.rect), 1)};
    if (top.surface != nullptr) {
        const SIZE old = top.surface->GetSize();
        if (old.cx == size.cx && old.cy == size.cy) return top.surface;
    }
    Display* const display = TheDisplay();
    const std::shared_ptr<Surface> old = std::move(top.surface);
    top.surface = nullptr;
    if (display != nullptr) top.surface = display->NewSurface(size);
    if (top.surface == nullptr) return nullptr;
    // What a window without a background leaves out looks like paper.
    const RECT whole{0, 0, size.cx, size.cy};
    top.surface->Fill(Clip(&whole, 1), whole, GetSysColor(COLOR_WINDOW));
    if (old != nullptr) {
        const SIZE was = old->GetSize();
        top.surface->Copy(Clip(&whole, 1), {0, 0}, *old, {0, 0, was.cx, was.cy}, false);
    }
    return top.surface;
}

HDC DeviceForWindow(HWND handle, bool isWhole) noexcept {
    Window* const window = Find(handle);
    if (window == nullptr) return nullptr;
    try {
        Window& top = TopOf(*window);
        auto device = std::make_unique<Device>();
        device->surface = SurfaceOf(top);
        if (device->surface == nullptr) return nullptr;
        const RECT& part = isWhole ? window->rect : window->client;
        const RECT place = InTop(*window, part, top);
        device->origin = {place.left, place.top};
        if (IsShown(*window)) device->clip = device->visible = VisibleOf(*window, part, top);
        return Register(std::move(device));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

}  // namespace

Device* DeviceOf(HDC context) noexcept {
    const std::lock_guard guard(Lock());
    auto* const device = reinterpret_cast<Device*>(context);
    return Devices().contains(device) ? device : nullptr;
}

Device* DrawableOf(HDC context) noexcept {
    Device* const device = DeviceOf(context);
    return device != nullptr && device->surface != nullptr ? device : nullptr;
}

RECT AreaOf(int x, int y, int width, int height) noexcept {
    RECT area{0, 0, width, height};
    OffsetRect(&area, x, y);
    return area;
}

// No surface reaches so far, and sums of such places and the sizes of what is drawn there do not
// run over.
static LONG OnAxis(LONG at, LONG origin, LONG viewport) noexcept {
    constexpr std::int64_t far = 1 << 28;
    return static_cast<LONG>(std::clamp(std::int64_t{at} + origin + viewport, -far, far));
}

POINT OnSurface(const Device& device, POINT point) noexcept {
    return {OnAxis(point.x, device.origin.x, device.viewport.x),
            OnAxis(point.y, device.origin.y, device.viewport.y)};
}

RECT OnSurface(const Device& device, const RECT& rect) noexcept {
    const POINT begin = OnSurface(device, POINT{rect.left, rect.top});
    const POINT end = OnSurface(device, POINT{rect.right, rect.bottom});
    return {begin.x, begin.y, end.x, end.y};
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

HDC GetDC(HWND window) noexcept {
    if (window != nullptr) return DeviceForWindow(window, false);
    try {
        return Register(std::make_unique<Device>());
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

HDC GetWindowDC(HWND window) noexcept {
    return DeviceForWindow(window != nullptr ? window : GetDesktopWindow(), true);
}

BOOL DeleteDC(HDC context) noexcept {
    const std::lock_guard guard(Lock());
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    Devices().erase(device);
    delete device;
    return 1;
}

int ReleaseDC(HWND, HDC context) noexcept {
    return DeleteDC(context);
}

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    *paint = {};
    HideCaretOf(handle);
    Window* window = Find(handle);
    if (window == nullptr) return nullptr;
    paint->rcPaint = window->update;
    const bool erases = window->erase;
    ValidateRect(handle, nullptr);
    if (std::exchange(window->isFrameDue, false)) {
        SendMessageA(handle, WM_NCPAINT, 1, 0);
        if (Find(handle) == nullptr) return nullptr;
    }
    paint->hdc = GetDC(handle);
    if (Device* const device = DrawableOf(paint->hdc)) {
        Intersect(device->visible, OnSurface(*device, paint->rcPaint));
        device->clip = device->visible;
    }
    if (erases)
        paint->fErase =
            SendMessageA(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(paint->hdc), 0) == 0;
    return paint->hdc;
}

BOOL EndPaint(HWND window, const PAINTSTRUCT* paint) noexcept {
    DeleteDC(paint->hdc);
    ShowCaretOf(window);
    return 1;
}

namespace {

// What is selected into every context in memory at first: one pixel. Null without a display.
HGDIOBJ PlainPicture() {
    static const HGDIOBJ picture = []() -> HGDIOBJ {
        std::shared_ptr<Surface> surface;
        if (TheDisplay() != nullptr) surface = TheDisplay()->NewSurface({1, 1});
        if (surface == nullptr) return nullptr;
        auto* const made = new brcore8::Bitmap(std::move(surface));
        made->isStock = true;
        return brcore8::GdiHandleOf(made);
    }();
    return picture;
}

}  // namespace

HDC CreateCompatibleDC(HDC) noexcept {
    try {
        auto device = std::make_unique<Device>();
        const HGDIOBJ plain = PlainPicture();
        if (plain == nullptr) return nullptr;
        device->pictureObject = plain;
        const HDC made = Register(std::move(device));
        SelectObject(made, plain);
        return made;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

HBITMAP CreateCompatibleBitmap(HDC, int width, int height) noexcept {
    Display* const display = TheDisplay();
    if (display == nullptr) return nullptr;
    try {
        auto surface = display->NewSurface({width, height});
        if (surface == nullptr) return nullptr;
        return static_cast<HBITMAP>(brcore8::GdiHandleOf(new brcore8::Bitmap(std::move(surface))));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int SaveDC(HDC context) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    try {
        device->saved.push_back(*device);
        return static_cast<int>(device->saved.size());
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

BOOL RestoreDC(HDC context, int state) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    const int count = static_cast<int>(device->saved.size());
    const int number = state < 0 ? count + 1 + state : state;
    if (number < 1 || number > count) return 0;
    const auto index = static_cast<std::size_t>(number) - 1;
    static_cast<DeviceState&>(*device) = std::move(device->saved[index]);
    device->saved.resize(index);
    return 1;
}

namespace {

int KindOf(const Region& region) noexcept {
    constexpr int kEmpty = 1, kSimple = 2, kComplex = 3;
    return region.empty() ? kEmpty : region.size() == 1 ? kSimple : kComplex;
}

}  // namespace

int IntersectClipRect(HDC context, int left, int top, int right, int bottom) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    Intersect(device->clip, OnSurface(*device, {left, top, right, bottom}));
    return KindOf(device->clip);
}

int ExcludeClipRect(HDC context, int left, int top, int right, int bottom) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    Subtract(device->clip, OnSurface(*device, {left, top, right, bottom}));
    return KindOf(device->clip);
}

int GetClipBox(HDC context, RECT* box) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    *box = Moved(BoxOf(device->clip), -std::int64_t{device->origin.x} - device->viewport.x,
                 -std::int64_t{device->origin.y} - device->viewport.y);
    return KindOf(device->clip);
}

BOOL SetViewportOrgEx(HDC context, int x, int y, POINT* old) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr) return 0;
    if (old != nullptr) *old = device->viewport;
    device->viewport = {x, y};
    return 1;
}
