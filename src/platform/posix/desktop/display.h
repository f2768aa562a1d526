// What draws and shows windows: a module of its own, loaded by the first who wants to draw, so that
// programs without windows load neither it nor the libraries that it stands on.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_DISPLAY_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_DISPLAY_H

#include <brcore8/platform/font_info.h>
#include <brcore8/platform/posix/window_types.h>

#include <memory>
#include <span>
#include <string_view>

namespace brcore8::desktop {

// What may be painted: rectangles that do not overlap.
using Clip = std::span<const RECT>;

struct Stroke {
    COLORREF color = 0;
    int width = 1;
    int style = 0;  // PS_SOLID, PS_DASH, PS_DOT
};

// A picture in memory. Coordinates are pixels from its left upper corner; what lies outside of it
// or of the clip is not painted.
class Surface {
public:
    virtual ~Surface() = default;

    virtual SIZE GetSize() const noexcept = 0;
    virtual void Fill(Clip clip, const RECT& rect, COLORREF color) = 0;
    virtual void Invert(Clip clip, const RECT& rect) = 0;
    // The end is not painted.
    virtual void Line(Clip clip, POINT from, POINT to, const Stroke& stroke) = 0;
    // Filled and outlined, where there is something to do it with.
    virtual void Ellipse(Clip clip, const RECT& rect, const Stroke* outline,
                         const COLORREF* fill) = 0;
    // UTF-8, its box's left upper corner at the point.
    virtual void Text(Clip clip, POINT at, const LOGFONTA& font, std::string_view text,
                      COLORREF color) = 0;
    virtual void Copy(Clip clip, POINT to, const Surface& from, const RECT& part,
                      bool isInverting) = 0;
    virtual COLORREF GetPixel(POINT at) const noexcept = 0;
    virtual bool WritePng(const char* path) const = 0;
};

struct FontMeasure {
    int ascent;
    int descent;
    int averageWidth;
};

class Screen;
class ScreenListener;

class Display {
public:
    // Black. Null without memory, or above 32,767 pixels a side.
    virtual std::unique_ptr<Surface> NewSurface(SIZE size) = 0;
    virtual SIZE MeasureText(const LOGFONTA& font, std::string_view text) = 0;
    virtual FontMeasure MeasureFont(const LOGFONTA& font) = 0;
    // A picture from a file; null when there is none.
    virtual std::unique_ptr<Surface> ReadPng(const char* path) = 0;
    // The screen that DISPLAY names; null when there is none, or another has it already.
    virtual Screen* OpenScreen(ScreenListener& listener) = 0;

protected:
    ~Display() = default;
};

// The display of the process; null when the module is not there.
Display* TheDisplay() noexcept;

}  // namespace brcore8::desktop

// What the module exports. It is made on first use and never destroyed.
extern "C" brcore8::desktop::Display* brcore8_display();

#endif
