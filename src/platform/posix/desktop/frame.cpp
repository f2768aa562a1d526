#include "platform/posix/desktop/frame.h"

#include <brcore8/platform/posix/drawing_calls.h>

#include <algorithm>

#include "platform/posix/desktop/menus/menu_view.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/scroll_bars.h"

namespace brcore8::desktop {

namespace {

// Sizing begins this far from a corner.
constexpr int kCorner = 16;

bool HasCaption(DWORD style) noexcept {
    return (style & WS_CAPTION) == WS_CAPTION;
}

int BorderOf(DWORD style, DWORD exStyle) noexcept {
    if ((style & WS_THICKFRAME) != 0) return GetSystemMetrics(SM_CXFRAME);
    if ((style & WS_DLGFRAME) != 0 || (exStyle & WS_EX_DLGMODALFRAME) != 0)
        return GetSystemMetrics(SM_CXDLGFRAME);
    return (style & WS_BORDER) != 0 ? GetSystemMetrics(SM_CXBORDER) : 0;
}

bool IsFramedByScreen(DWORD style) noexcept {
    return (style & WS_CHILD) == 0 && (style & (WS_CAPTION | WS_THICKFRAME)) != 0 &&
           TheScreen() != nullptr;
}

// Of both kinds of sunken edges.
int EdgeOf(DWORD exStyle) noexcept {
    return ((exStyle & WS_EX_CLIENTEDGE) != 0 ? GetSystemMetrics(SM_CXEDGE) : 0) +
           ((exStyle & WS_EX_STATICEDGE) != 0 ? GetSystemMetrics(SM_CXBORDER) : 0);
}

RECT OwnRect(const Window& window) noexcept {
    return {0, 0, Width(window.rect), Height(window.rect)};
}

RECT OwnClient(const Window& window) noexcept {
    RECT client = window.client;
    OffsetRect(&client, -window.rect.left, -window.rect.top);
    return client;
}

}  // namespace

RECT FrameMargins(DWORD style, DWORD exStyle) noexcept {
    const int edge = EdgeOf(exStyle);
    if (IsFramedByScreen(style)) return {edge, edge, edge, edge};
    const int side = BorderOf(style, exStyle) + edge;
    return {side, side + (HasCaption(style) ? GetSystemMetrics(SM_CYCAPTION) : 0), side, side};
}

RECT CaptionOf(const Window& window) noexcept {
    if (!HasCaption(window.style) || IsFramedByScreen(window.style)) return {};
    RECT caption = OwnRect(window);
    const int border = BorderOf(window.style, window.exStyle);
    InflateRect(&caption, -border, -border);
    caption.bottom = caption.top + GetSystemMetrics(SM_CYCAPTION);
    return caption;
}

RECT BoxOf(const Window& window, int part) noexcept {
    const RECT caption = CaptionOf(window);
    const DWORD sizes = window.style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX);
    const bool hasSizes = sizes != 0 && IsTopLevel(window);
    const bool isMissing = part == HTMINBUTTON   ? !hasSizes || (sizes & WS_MINIMIZEBOX) == 0
                           : part == HTMAXBUTTON ? !hasSizes || (sizes & WS_MAXIMIZEBOX) == 0
                                                 : false;
    if (IsRectEmpty(&caption) || (window.style & WS_SYSMENU) == 0 || isMissing) return {};
    const int gap = Scaled(2);
    const int size = Height(caption) - 2 * gap;
    int right = caption.right - gap;
    if (part != HTCLOSE) right -= size + gap;
    if (part == HTMINBUTTON && (sizes & WS_MAXIMIZEBOX) != 0) right -= size;
    return {right - size, caption.top + gap, right, caption.top + gap + size};
}

// --- Under the cursor ---------------------------------------------------------------------------

namespace {

LRESULT HitBorder(const Window& window, const RECT& own, POINT at) noexcept {
    if ((window.style & WS_THICKFRAME) == 0 || (window.style & WS_MAXIMIZE) != 0) return HTBORDER;
    const int corner = Scaled(kCorner);
    const bool left = at.x < own.left + corner, right = at.x >= own.right - corner;
    const bool top = at.y < own.top + corner, bottom = at.y >= own.bottom - corner;
    if (top && left) return HTTOPLEFT;
    if (top && right) return HTTOPRIGHT;
    if (bottom && left) return HTBOTTOMLEFT;
    if (bottom && right) return HTBOTTOMRIGHT;
    const int border = BorderOf(window.style, window.exStyle);
    if (at.y < own.top + border) return HTTOP;
    if (at.y >= own.bottom - border) return HTBOTTOM;
    return at.x < own.left + border ? HTLEFT : HTRIGHT;
}

}  // namespace

LRESULT HitFrame(const Window& window, POINT screen) noexcept {
    RECT own{};
    GetWindowRect(window.handle, &own);
    const POINT at{screen.x - own.left, screen.y - own.top};
    own = OwnRect(window);
    if (!PtInRect(&own, at)) return HTNOWHERE;
    const RECT client = OwnClient(window);
    if (PtInRect(&client, at)) return HTCLIENT;
    for (const int part : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON}) {
        const RECT box = BoxOf(window, part);
        if (PtInRect(&box, at)) return part;
    }
    RECT inside = own;
    const int border = IsFramedByScreen(window.style) ? 0 : BorderOf(window.style, window.exStyle);
    InflateRect(&inside, -border, -border);
    if (!PtInRect(&inside, at)) return HitBorder(window, own, at);
    const RECT caption = CaptionOf(window);
    if (PtInRect(&caption, at)) return HTCAPTION;
    const RECT bar = MenuBarOf(window);
    if (PtInRect(&bar, at)) return HTMENU;
    const bool isRight = at.x >= client.right, isBelow = at.y >= client.bottom;
    if ((window.style & WS_VSCROLL) != 0 && isRight && !isBelow) return HTVSCROLL;
    if ((window.style & WS_HSCROLL) != 0 && isBelow && !isRight) return HTHSCROLL;
    return HTBORDER;
}

// --- Painting -----------------------------------------------------------------------------------

namespace {

void PaintLine(HDC dc, POINT from, POINT to) {
    MoveToEx(dc, from.x, from.y, nullptr);
    LineTo(dc, to.x, to.y);
}

void PaintBox(HDC dc, const RECT& box, int part) {
    if (IsRectEmpty(&box)) return;
    FillRect(dc, &box, GetSysColorBrush(COLOR_BTNFACE));
    RECT edge = box;
    DrawEdge(dc, &edge, EDGE_RAISED, BF_RECT);
    RECT sign = box;
    InflateRect(&sign, -Scaled(5), -Scaled(5));
    const HGDIOBJ old = SelectObject(dc, GetStockObject(BLACK_PEN));
    const int thick = Scaled(2);
    const RECT bar{sign.left, sign.bottom - thick, sign.right - 1, sign.bottom};
    switch (part) {
        case HTCLOSE:
            for (int shift = 0; shift < thick; ++shift) {
                PaintLine(dc, {sign.left + shift, sign.top}, {sign.right + shift, sign.bottom});
                PaintLine(dc, {sign.left + shift, sign.bottom - 1},
                          {sign.right + shift, sign.top - 1});
            }
            break;
        case HTMAXBUTTON:
            for (int line = 0; line < thick / 2; ++line) {
                FrameRect(dc, &sign, GetSysColorBrush(COLOR_BTNTEXT));
                InflateRect(&sign, -1, -1);
            }
            break;
        default:
            FillRect(dc, &bar, GetSysColorBrush(COLOR_BTNTEXT));
    }
    SelectObject(dc, old);
}

void PaintCaption(HDC dc, const Window& window) {
    RECT caption = CaptionOf(window);
    if (IsRectEmpty(&caption)) return;
    FillRect(dc, &caption,
             GetSysColorBrush(window.isFrameActive ? COLOR_ACTIVECAPTION : COLOR_INACTIVECAPTION));
    for (const int part : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON}) {
        const RECT box = BoxOf(window, part);
        PaintBox(dc, box, part);
        if (!IsRectEmpty(&box)) caption.right = std::min(caption.right, box.left);
    }
    InflateRect(&caption, -Scaled(4), 0);
    const HGDIOBJ old = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc,
                 GetSysColor(window.isFrameActive ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT));
    DrawTextA(dc, window.text.c_str(), static_cast<int>(window.text.size()), &caption,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(dc, old);
}

// From the outside inwards; `rect` becomes what is left.
void PaintBorder(HDC dc, const Window& window, RECT& rect) {
    if (IsFramedByScreen(window.style)) return;
    const int border = BorderOf(window.style, window.exStyle);
    RECT ring = rect;
    if (border == 1) FrameRect(dc, &ring, GetSysColorBrush(COLOR_WINDOWFRAME));
    if (border > 1) DrawEdge(dc, &ring, EDGE_RAISED, BF_RECT);
    for (int width = 2; width < border; ++width) {
        ring = rect;
        InflateRect(&ring, -width, -width);
        FrameRect(dc, &ring, GetSysColorBrush(COLOR_BTNFACE));
    }
    InflateRect(&rect, -border, -border);
}

void PaintEdges(HDC dc, const Window& window, RECT& rect) {
    if ((window.exStyle & WS_EX_CLIENTEDGE) != 0) {
        DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT);
        InflateRect(&rect, -2, -2);
    }
    if ((window.exStyle & WS_EX_STATICEDGE) != 0) {
        DrawEdge(dc, &rect, BDR_SUNKENOUTER, BF_RECT);
        InflateRect(&rect, -1, -1);
    }
}

}  // namespace

void PaintFrame(const Window& window) {
    RECT rest = OwnRect(window);
    const RECT client = OwnClient(window);
    if (EqualRect(&rest, &client)) return;
    const HDC dc = GetWindowDC(window.handle);
    if (dc == nullptr) return;
    ExcludeClipRect(dc, client.left, client.top, client.right, client.bottom);
    // A child's edges lie around its border line, a frame around everything.
    if (!IsTopLevel(window)) PaintEdges(dc, window, rest);
    PaintBorder(dc, window, rest);
    PaintCaption(dc, window);
    PaintMenuBar(window, dc);
    if (IsTopLevel(window)) {
        rest.top += Height(CaptionOf(window)) + Height(MenuBarOf(window));
        PaintEdges(dc, window, rest);
    }
    SetViewportOrgEx(dc, client.left, client.top, nullptr);
    DrawScrollBars(dc, window);
    ReleaseDC(window.handle, dc);
}

void PaintDueFrame(HWND handle) {
    Window* const window = Find(handle);
    if (window == nullptr || !window->isFrameDue || !IsShown(*window)) return;
    RepaintFrame(handle);
}

void RepaintFrame(HWND handle) {
    Window* const window = Find(handle);
    if (window == nullptr || !IsShown(*window)) return;
    window->isFrameDue = false;
    SendMessageA(handle, WM_NCPAINT, 1, 0);
}

}  // namespace brcore8::desktop
