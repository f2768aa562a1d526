// Pictures by Cairo, texts by Pango.
#ifndef BRCORE8_SRC_DISPLAY_CAIRO_SURFACE_H
#define BRCORE8_SRC_DISPLAY_CAIRO_SURFACE_H

#include <cairo.h>
#include <pango/pangocairo.h>

#include <memory>
#include <mutex>

#include "platform/posix/desktop/display.h"

namespace brcore8::desktop {

class CairoSurface final : public Surface {
public:
    explicit CairoSurface(SIZE size);
    static std::unique_ptr<CairoSurface> Read(const char* path);
    ~CairoSurface() override;
    CairoSurface(const CairoSurface&) = delete;
    CairoSurface& operator=(const CairoSurface&) = delete;
    bool IsGood() const noexcept;

    SIZE GetSize() const noexcept override { return size_; }
    void Fill(Clip clip, const RECT& rect, COLORREF color) override;
    void Invert(Clip clip, const RECT& rect) override;
    void Line(Clip clip, POINT from, POINT to, const Stroke& stroke) override;
    void Ellipse(Clip clip, const RECT& rect, const Stroke* outline, const COLORREF* fill) override;
    void Text(Clip clip, POINT at, const LOGFONTA& font, std::string_view text,
              COLORREF color) override;
    void Copy(Clip clip, POINT to, const Surface& from, const RECT& part,
              bool isInverting) override;
    COLORREF GetPixel(POINT at) const noexcept override;
    bool WritePng(const char* path) const override;

    // The rectangle around what was drawn since the last time.
    RECT TakeDamage() noexcept;
    // The rows, each of four bytes a pixel: blue, green, red, nothing.
    const unsigned char* Pixels() const noexcept;
    int Stride() const noexcept;

private:
    // Makes ready for drawing inside of the clip, and inside of `reach`.
    void Prepare(Clip clip, const RECT& reach);

    // The part of it that there is.
    RECT Inside(const RECT& rect) const noexcept;
    void Damage(const RECT& rect) noexcept;

    SIZE size_;
    RECT damage_{};
    cairo_surface_t* surface_;
    cairo_t* cairo_;
};

// A layout of the text in the font. Others wait meanwhile: all layouts share their fonts, which are
// one thread's at a time.
class Layout {
public:
    Layout(const LOGFONTA& font, std::string_view text);
    ~Layout();
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;
    PangoLayout* Get() const noexcept { return layout_; }

private:
    std::lock_guard<std::mutex> guard_;
    PangoLayout* layout_;
};

}  // namespace brcore8::desktop

#endif
