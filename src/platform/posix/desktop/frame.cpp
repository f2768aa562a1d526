// What surrounds the client area of a window.

#include <brcore8/platform/posix/drawing_calls.h>

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

// Edges lie around the border line.
void PaintFrame(const Window& window) {
    RECT rect{0, 0, Width(window.rect), Height(window.rect)};
    const HDC dc = GetWindowDC(window.handle);
    if (dc == nullptr) return;
    if ((window.exStyle & WS_EX_CLIENTEDGE) != 0) {
        DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT);
        InflateRect(&rect, -2, -2);
    }
    if ((window.exStyle & WS_EX_STATICEDGE) != 0) {
        DrawEdge(dc, &rect, BDR_SUNKENOUTER, BF_RECT);
        InflateRect(&rect, -1, -1);
    }
    if (!IsTopLevel(window) && (window.style & WS_BORDER) != 0)
        FrameRect(dc, &rect, GetSysColorBrush(COLOR_WINDOWFRAME));
    ReleaseDC(window.handle, dc);
}

}  // namespace brcore8::desktop
