// Pictures by Cairo, texts by Pango.
#ifndef BRCORE8_SRC_DISPLAY_CAIRO_SURFACE_H
#define BRCORE8_SRC_DISPLAY_CAIRO_SURFACE_H

#include <cairo.h>
#include <pango/pangocairo.h>

#include "platform/posix/desktop/display.h"

namespace brcore8::desktop {

class CairoSurface final : public Surface {
public:
    explicit CairoSurface(SIZE size);
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

private:
    void Prepare(Clip clip);

    SIZE size_;
    cairo_surface_t* surface_;
    cairo_t* cairo_;
};

// A layout of the text in the font, the caller's.
PangoLayout* NewLayout(const LOGFONTA& font, std::string_view text);

}  // namespace brcore8::desktop

#endif
