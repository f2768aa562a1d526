#include "display/cairo_surface.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brcore8::desktop {

namespace {

void SetColor(cairo_t* cairo, COLORREF color) {
    cairo_set_source_rgb(cairo, GetRValue(color) / 255.0, GetGValue(color) / 255.0,
                         GetBValue(color) / 255.0);
}

// No surface is wider, and nothing that is added to it comes near the end of an int.
int WidthOf(const Stroke& stroke) noexcept {
    constexpr int kWidest = 1 << 16;
    return std::min(stroke.width, kWidest);
}

void SetStroke(cairo_t* cairo, const Stroke& stroke) {
    SetColor(cairo, stroke.color);
    cairo_set_line_width(cairo, WidthOf(stroke));
    const double unit = stroke.style == 1 ? 3 : 1;
    cairo_set_dash(cairo, &unit, stroke.style == 0 ? 0 : 1, 0);
}

// A point that Cairo can still count to, with room around it.
POINT Reachable(POINT point) noexcept {
    constexpr LONG kFar = 1 << 21;
    return {std::clamp(point.x, -kFar, kFar), std::clamp(point.y, -kFar, kFar)};
}

void AddRectangle(cairo_t* cairo, const RECT& rect) {
    cairo_rectangle(cairo, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

}  // namespace

CairoSurface::CairoSurface(SIZE size)
    : size_(size),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.cx, size.cy)),
      cairo_(cairo_create(surface_)) {
    // Edges as sharp as the platform's.
    cairo_set_antialias(cairo_, CAIRO_ANTIALIAS_NONE);
}

CairoSurface::~CairoSurface() {
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
}

bool CairoSurface::IsGood() const noexcept {
    return cairo_status(cairo_) == CAIRO_STATUS_SUCCESS;
}

std::unique_ptr<CairoSurface> CairoSurface::Read(const char* path) {
    cairo_surface_t* const read = cairo_image_surface_create_from_png(path);
    std::unique_ptr<CairoSurface> made;
    if (cairo_surface_status(read) == CAIRO_STATUS_SUCCESS) {
        made = std::make_unique<CairoSurface>(
            SIZE{cairo_image_surface_get_width(read), cairo_image_surface_get_height(read)});
        cairo_set_source_surface(made->cairo_, read, 0, 0);
        cairo_paint(made->cairo_);
    }
    cairo_surface_destroy(read);
    return made;
}

void CairoSurface::Prepare(Clip clip, const RECT& reach) {
    cairo_reset_clip(cairo_);
    cairo_new_path(cairo_);
    for (const RECT& rect : clip) {
        AddRectangle(cairo_, rect);
        Damage({std::max(rect.left, reach.left), std::max(rect.top, reach.top),
                std::min(rect.right, reach.right), std::min(rect.bottom, reach.bottom)});
    }
    cairo_clip(cairo_);
}

void CairoSurface::Damage(const RECT& rect) noexcept {
    if (rect.left >= rect.right || rect.top >= rect.bottom) return;
    if (damage_.left >= damage_.right) {
        damage_ = rect;
        return;
    }
    damage_ = {std::min(damage_.left, rect.left), std::min(damage_.top, rect.top),
               std::max(damage_.right, rect.right), std::max(damage_.bottom, rect.bottom)};
}

RECT CairoSurface::TakeDamage() noexcept {
    const RECT taken{std::max(damage_.left, LONG{0}), std::max(damage_.top, LONG{0}),
                     std::min(damage_.right, size_.cx), std::min(damage_.bottom, size_.cy)};
    damage_ = {};
    return taken;
}

const unsigned char* CairoSurface::Pixels() const noexcept {
    cairo_surface_flush(surface_);
    return cairo_image_surface_get_data(surface_);
}

int CairoSurface::Stride() const noexcept {
    return cairo_image_surface_get_stride(surface_);
}

// Cairo counts in 24 bits of pixels: what lies far outside is cut off before.
RECT CairoSurface::Inside(const RECT& rect) const noexcept {
    return {std::clamp<LONG>(rect.left, 0, size_.cx), std::clamp<LONG>(rect.top, 0, size_.cy),
            std::clamp<LONG>(rect.right, 0, size_.cx), std::clamp<LONG>(rect.bottom, 0, size_.cy)};
}

void CairoSurface::Fill(Clip clip, const RECT& whole, COLORREF color) {
    const RECT rect = Inside(whole);
    Prepare(clip, rect);
    SetColor(cairo_, color);
    AddRectangle(cairo_, rect);
    cairo_fill(cairo_);
}

void CairoSurface::Invert(Clip clip, const RECT& whole) {
    const RECT rect = Inside(whole);
    Prepare(clip, rect);
    cairo_set_operator(cairo_, CAIRO_OPERATOR_DIFFERENCE);
    SetColor(cairo_, RGB(255, 255, 255));
    AddRectangle(cairo_, rect);
    cairo_fill(cairo_);
    cairo_set_operator(cairo_, CAIRO_OPERATOR_OVER);
}

// Through the middles of the pixels; the caps do not reach into the last one.
void CairoSurface::Line(Clip clip, POINT from, POINT to, const Stroke& stroke) {
    from = Reachable(from);
    to = Reachable(to);
    const int width = WidthOf(stroke);
    const int wide = width + 1;
    Prepare(clip, {std::min(from.x, to.x) - wide, std::min(from.y, to.y) - wide,
                   std::max(from.x, to.x) + wide, std::max(from.y, to.y) + wide});
    SetStroke(cairo_, stroke);
    if (from.x == to.x || from.y == to.y) {
        const int half = width / 2;
        const bool isVertical = from.x == to.x;
        RECT bar{std::min(from.x, to.x + (to.x < from.x)), std::min(from.y, to.y + (to.y < from.y)),
                 std::max(from.x + (to.x < from.x), to.x),
                 std::max(from.y + (to.y < from.y), to.y)};
        (isVertical ? bar.left : bar.top) -= half;
        (isVertical ? bar.right : bar.bottom) = (isVertical ? bar.left : bar.top) + width;
        if (stroke.style == 0) {
            AddRectangle(cairo_, bar);
            cairo_fill(cairo_);
            return;
        }
    }
    cairo_move_to(cairo_, from.x + 0.5, from.y + 0.5);
    cairo_line_to(cairo_, to.x + 0.5, to.y + 0.5);
    cairo_stroke(cairo_);
}

void CairoSurface::Ellipse(Clip clip, const RECT& whole, const Stroke* outline,
                           const COLORREF* fill) {
    const POINT begin = Reachable({whole.left, whole.top});
    const POINT end = Reachable({whole.right, whole.bottom});
    const RECT rect{begin.x, begin.y, end.x, end.y};
    const double width = rect.right - rect.left - 1;
    const double height = rect.bottom - rect.top - 1;
    if (width <= 0 || height <= 0) return;
    const int wide = outline != nullptr ? WidthOf(*outline) + 1 : 1;
    Prepare(clip, {rect.left - wide, rect.top - wide, rect.right + wide, rect.bottom + wide});
    cairo_save(cairo_);
    cairo_translate(cairo_, rect.left + 0.5 + width / 2, rect.top + 0.5 + height / 2);
    cairo_scale(cairo_, width / 2, height / 2);
    cairo_arc(cairo_, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_restore(cairo_);
    if (fill != nullptr) {
        SetColor(cairo_, *fill);
        cairo_fill_preserve(cairo_);
    }
    if (outline != nullptr) {
        SetStroke(cairo_, *outline);
        cairo_stroke_preserve(cairo_);
    }
    cairo_new_path(cairo_);
}

void CairoSurface::Text(Clip clip, POINT at, const LOGFONTA& font, std::string_view text,
                        COLORREF color) {
    at = Reachable(at);
    const Layout layout(font, text);
    PangoRectangle ink;
    PangoRectangle box;
    pango_layout_get_pixel_extents(layout.Get(), &ink, &box);
    // Edges may be drawn a pixel further out.
    Prepare(clip, {at.x + std::min(ink.x, box.x) - 2, at.y + std::min(ink.y, box.y) - 2,
                   at.x + std::max(ink.x + ink.width, box.x + box.width) + 2,
                   at.y + std::max(ink.y + ink.height, box.y + box.height) + 2});
    SetColor(cairo_, color);
    cairo_move_to(cairo_, at.x, at.y);
    pango_cairo_show_layout(cairo_, layout.Get());
}

void CairoSurface::Copy(Clip clip, POINT to, const Surface& from, const RECT& whole,
                        bool isInverting) {
    const auto& source = static_cast<const CairoSurface&>(from);
    const RECT part = source.Inside(whole);
    to = Reachable(to);
    const POINT origin = Reachable({whole.left, whole.top});
    const POINT begin{to.x + part.left - origin.x, to.y + part.top - origin.y};
    const RECT target{begin.x, begin.y, begin.x + part.right - part.left,
                      begin.y + part.bottom - part.top};
    if (target.left >= target.right || target.top >= target.bottom) return;
    // A picture that is copied into itself is copied as it was.
    cairo_surface_t* pixels = source.surface_;
    POINT corner{part.left, part.top};
    std::unique_ptr<CairoSurface> between;
    if (&source == this) {
        between =
            std::make_unique<CairoSurface>(SIZE{part.right - part.left, part.bottom - part.top});
        cairo_set_source_surface(between->cairo_, pixels, -part.left, -part.top);
        cairo_paint(between->cairo_);
        cairo_surface_flush(between->surface_);
        pixels = between->surface_;
        corner = {0, 0};
    }
    Prepare(clip, target);
    if (isInverting) cairo_set_operator(cairo_, CAIRO_OPERATOR_DIFFERENCE);
    cairo_set_source_surface(cairo_, pixels, target.left - corner.x, target.top - corner.y);
    AddRectangle(cairo_, target);
    cairo_fill(cairo_);
    cairo_set_operator(cairo_, CAIRO_OPERATOR_OVER);
    SetColor(cairo_, 0);
}

COLORREF CairoSurface::GetPixel(POINT at) const noexcept {
    if (at.x < 0 || at.y < 0 || at.x >= size_.cx || at.y >= size_.cy) return 0xFFFFFFFF;
    cairo_surface_flush(surface_);
    const unsigned char* const row =
        cairo_image_surface_get_data(surface_) +
        std::ptrdiff_t{cairo_image_surface_get_stride(surface_)} * at.y;
    std::uint32_t pixel = 0;
    std::copy_n(row + std::ptrdiff_t{4} * at.x, 4, reinterpret_cast<unsigned char*>(&pixel));
    return RGB(pixel >> 16, pixel >> 8, pixel);
}

bool CairoSurface::WritePng(const char* path) const {
    return cairo_surface_write_to_png(surface_, path) == CAIRO_STATUS_SUCCESS;
}

}  // namespace brcore8::desktop
