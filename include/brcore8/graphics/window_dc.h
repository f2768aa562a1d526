// The contexts of windows, taken at the beginning of a scope and given back at its end.
//
//     void SGraph::OnPaint() {
//         SPaintDC dc(this);
//         dc.FillSolidRect(dc.GetPaintRect(), RGB(255, 255, 255));
//     }
//
// Threads: the window's.
// Errors: where the platform gives no context GetHandle is null, and all drawing fails.
#ifndef BRCORE8_GRAPHICS_WINDOW_DC_H
#define BRCORE8_GRAPHICS_WINDOW_DC_H

#include <brcore8/graphics/dc.h>

class SWnd;

// The client area of a window, or of the screen for null.
class BRCORE8_API SClientDC : public SDC {
    SDECLARE_CLASS(SClientDC);

    explicit SClientDC(SWnd* window);
    ~SClientDC() override;

private:
    HWND window_;
};

// What is to be painted of a window, in its handler of WM_PAINT. The background was erased, when
// that was asked for.
class BRCORE8_API SPaintDC : public SDC {
    SDECLARE_CLASS(SPaintDC);

    explicit SPaintDC(SWnd* window);
    ~SPaintDC() override;

    // In the window's client area.
    const RECT& GetPaintRect() const noexcept { return paint_.rcPaint; }

private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

// All of a window, from the left upper corner of its frame.
class BRCORE8_API SWindowDC : public SDC {
    SDECLARE_CLASS(SWindowDC);

    explicit SWindowDC(SWnd* window);
    ~SWindowDC() override;

private:
    HWND window_;
};

// The screen: to measure texts and to make pictures like it.
class BRCORE8_API SScreenDC : public SWindowDC {
    SDECLARE_CLASS(SScreenDC);

    SScreenDC();
};

#endif
