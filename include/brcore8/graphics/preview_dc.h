// SPreviewDC: a context on a page in memory, which is shown in whatever size there is room for.
//
//     SPreviewDC page;
//     page.CreatePage({600, 800}, &screen);
//     page.TextOut(50, 50, "Page 1");            // as the printer would
//     page.ShowPage(window, {10, 10, 160, 210}); // a quarter as large
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_GRAPHICS_PREVIEW_DC_H
#define BRCORE8_GRAPHICS_PREVIEW_DC_H

#include <brcore8/graphics/bitmap.h>
#include <brcore8/graphics/dc.h>

class BRCORE8_API SPreviewDC : public SDC {
    SDECLARE_CREATABLE(SPreviewDC);

    SPreviewDC() noexcept = default;
    ~SPreviewDC() override;

    // A white page of that size in pixels, in the place of the one before. 1, or 0 when the
    // platform refuses; there is no page then.
    int CreatePage(SIZE size, const SDC* like);
    void DeletePage();
    SIZE GetPageSize() const noexcept { return size_; }
    // Shrinks or stretches the page into `place`; 0 without a page.
    int ShowPage(SDC& to, const RECT& place) const;
    // The largest place of the page's proportions in the middle of `room`.
    RECT FitPage(const RECT& room) const noexcept;

private:
    SBitmap picture_;
    HGDIOBJ old_ = nullptr;
    SIZE size_{};
};

#endif
