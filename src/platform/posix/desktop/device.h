// Device contexts, and the objects that are selected into them.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_DEVICE_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_DEVICE_H

#include <brcore8/platform/posix/drawing_calls.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/posix/desktop/display.h"
#include "platform/posix/desktop/region.h"
#include "platform/posix/gdi.h"

namespace brcore8::desktop {

struct Brush : GdiObject {
    Brush(COLORREF brushColor, bool paints) noexcept
        : GdiObject(Kind::Brush), color(brushColor), isPainting(paints) {}
    int Describe(int size, void* out) const noexcept override;
    const COLORREF color;
    const bool isPainting;  // not so the null brush
};

struct Pen : GdiObject {
    Pen(const Stroke& penStroke, bool paints) noexcept
        : GdiObject(Kind::Pen), stroke(penStroke), isPainting(paints) {}
    int Describe(int size, void* out) const noexcept override;
    const Stroke stroke;
    const bool isPainting;
};

// What SaveDC saves.
struct DeviceState {
    Region visible;    // of the surface, what the platform lets the program paint
    Region clip;       // of that, what the program lets itself
    POINT origin{};    // of the coordinates, on the surface, as long as the program leaves it
    POINT viewport{};  // how far the program moved it
    POINT at{};
    COLORREF textColor = 0;
    COLORREF backColor = 0xFFFFFF;
    int backMode = OPAQUE;
    // What is selected, and copies of what that means: its owner may delete it.
    HGDIOBJ fontObject = nullptr;
    HGDIOBJ brushObject = nullptr;
    HGDIOBJ penObject = nullptr;
    HGDIOBJ pictureObject = nullptr;  // of a device in memory alone, which always has one
    LOGFONTA font{};
    COLORREF brush = 0xFFFFFF;
    bool isFilling = true;
    Stroke pen;
    bool isOutlining = true;
    std::shared_ptr<Surface> surface;  // what is drawn on; null for the screen
};

struct Device : DeviceState {
    std::vector<DeviceState> saved;
};

// The device of a handle, or null.
Device* DeviceOf(HDC context) noexcept;
// The same where there is something to draw on.
Device* DrawableOf(HDC context) noexcept;

// Sums that would overflow end at the largest number.
RECT AreaOf(int x, int y, int width, int height) noexcept;
// From the context's coordinates to the surface's.
RECT OnSurface(const Device& device, const RECT& rect) noexcept;
POINT OnSurface(const Device& device, POINT point) noexcept;

}  // namespace brcore8::desktop

#endif
