// The module's one object.

#include "display/cairo_surface.h"
#include "display/x_screen.h"

#include <brcore8/platform/export.h>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace brcore8::desktop {

namespace {

// Of the context and its fonts.
std::mutex& FontLock() noexcept {
    static constinit std::mutex lock;
    return lock;
}

// One context for all layouts: texts on every surface are as large as on any other. Under its lock.
PangoContext* LayoutContext() {
    static PangoContext* const context = [] {
        PangoFontMap* const fonts = pango_cairo_font_map_new();
        pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fonts), 96);
        PangoContext* const made = pango_font_map_create_context(fonts);
        cairo_font_options_t* const options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
        pango_cairo_context_set_font_options(made, options);
        cairo_font_options_destroy(options);
        return made;
    }();
    return context;
}

PangoFontDescription* Describe(const LOGFONTA& font) {
    PangoFontDescription* const description = pango_font_description_new();
    pango_font_description_set_family(description, font.lfFaceName);
    pango_font_description_set_weight(
        description, static_cast<PangoWeight>(font.lfWeight > 0 ? font.lfWeight : 400));
    pango_font_description_set_style(description,
                                     font.lfItalic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    const double pixels = font.lfHeight != 0 ? std::fabs(font.lfHeight) : 12;
    // A positive height is that of a line, somewhat more than the characters'.
    const double size = font.lfHeight > 0 ? pixels * 0.85 : pixels;
    pango_font_description_set_absolute_size(description,
                                             std::clamp(size, 1.0, 4096.0) * PANGO_SCALE);
    return description;
}

class CairoDisplay final : public Display {
public:
    std::unique_ptr<Surface> NewSurface(SIZE size) override {
        constexpr LONG kLargest = 32767;
        if (size.cx < 1 || size.cy < 1 || size.cx > kLargest || size.cy > kLargest) return nullptr;
        auto surface = std::make_unique<CairoSurface>(size);
        if (!surface->IsGood()) return nullptr;
        return surface;
    }
    std::unique_ptr<Surface> ReadPng(const char* path) override { return CairoSurface::Read(path); }
    Screen* OpenScreen(ScreenListener& listener) override { return OpenXScreen(listener); }
    SIZE MeasureText(const LOGFONTA& font, std::string_view text) override {
        const Layout layout(font, text);
        int width = 0;
        int height = 0;
        pango_layout_get_pixel_size(layout.Get(), &width, &height);
        return {width, height};
    }
    FontMeasure MeasureFont(const LOGFONTA& font) override {
        const std::lock_guard guard(FontLock());
        PangoFontDescription* const description = Describe(font);
        PangoFontMetrics* const metrics =
            pango_context_get_metrics(LayoutContext(), description, nullptr);
        const FontMeasure measure{
            PANGO_PIXELS_CEIL(pango_font_metrics_get_ascent(metrics)),
            PANGO_PIXELS_CEIL(pango_font_metrics_get_descent(metrics)),
            PANGO_PIXELS(pango_font_metrics_get_approximate_char_width(metrics))};
        pango_font_metrics_unref(metrics);
        pango_font_description_free(description);
        return measure;
    }
};

}  // namespace

Layout::Layout(const LOGFONTA& font, std::string_view text)
    : guard_(FontLock()), layout_(pango_layout_new(LayoutContext())) {
    PangoFontDescription* const description = Describe(font);
    pango_layout_set_font_description(layout_, description);
    pango_font_description_free(description);
    pango_layout_set_single_paragraph_mode(layout_, TRUE);
    pango_layout_set_text(layout_, text.data(), static_cast<int>(text.size()));
    if (font.lfUnderline || font.lfStrikeOut) {
        PangoAttrList* const attributes = pango_attr_list_new();
        if (font.lfUnderline)
            pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
        if (font.lfStrikeOut)
            pango_attr_list_insert(attributes, pango_attr_strikethrough_new(TRUE));
        pango_layout_set_attributes(layout_, attributes);
        pango_attr_list_unref(attributes);
    }
}

Layout::~Layout() {
    g_object_unref(layout_);
}

}  // namespace brcore8::desktop

extern "C" __attribute__((visibility("default"))) brcore8::desktop::Display* brcore8_display() {
    static brcore8::desktop::CairoDisplay& display = *new brcore8::desktop::CairoDisplay;
    return &display;
}
