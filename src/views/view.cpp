#include <brcore8/views/view.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

#include "controls/track_position.h"

#include <algorithm>

SIMPLEMENT_CLASS(SView, SWnd, 1);
SIMPLEMENT_MESSAGE_MAP(SView, SWnd, SOnPaint<&SView::OnPaint>());
SIMPLEMENT_CLASS(SBufferizedView, SView, 2);
SIMPLEMENT_MESSAGE_MAP(SBufferizedView, SView, SOnEraseBkgnd<&SBufferizedView::OnEraseBkgnd>());
SIMPLEMENT_CLASS(SScrollView, SView, 1);
SIMPLEMENT_MESSAGE_MAP(SScrollView, SView, SOnSize<&SScrollView::OnSize>(),
                       SOnHScroll<&SScrollView::OnHScroll>(), SOnVScroll<&SScrollView::OnVScroll>(),
                       SOnMouseWheel<&SScrollView::OnMouseWheel>());
SIMPLEMENT_CREATABLE(SPreviewView, SView, 2);
SIMPLEMENT_CREATABLE(SAboutView, SBufferizedView, 2);

int SView::PreCreateWindow(CREATESTRUCT& create) {
    if (create.lpszClass == nullptr) create.lpszClass = "S_CliDrawWnd";
    return 1;
}

void SView::OnPrepareDC(SDC&) {}

void SView::OnPaint() {
    SPaintDC dc(this);
    OnPrepareDC(dc);
    OnDraw(dc);
}

// --- Through a picture --------------------------------------------------------------------------

void SBufferizedView::SetBkColor(COLORREF color) {
    back_ = color;
    if (GetHandle() != nullptr) Invalidate(0);
}

void SBufferizedView::OnPaint() {
    SPaintDC dc(this);
    const RECT client = GetClientRect();
    if (client.right < 1 || client.bottom < 1) return;
    if (picture_.IsNull() || size_.cx != client.right || size_.cy != client.bottom) {
        if (!picture_.CreateCompatible(dc, client.right, client.bottom)) return;
        size_ = {client.right, client.bottom};
    }
    SDC memory;
    if (!memory.CreateCompatibleDC(&dc)) return;
    const SSelected selected(memory, picture_);
    memory.FillSolidRect(client, back_);
    OnPrepareDC(memory);
    OnDraw(memory);
    memory.SetViewportOrg(0, 0);
    memory.SelectClipRgn(nullptr);
    dc.BitBlt(0, 0, client.right, client.bottom, memory, 0, 0);
}

// --- Scrolling ----------------------------------------------------------------------------------

namespace {

// The window shows `page` of `total`, from `position` on; the bar hides where all fits.
void SetBar(HWND window, int bar, int total, int page, int position) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(total - 1, 0);
    info.nPage = static_cast<UINT>(std::max(page, 1));
    info.nPos = position;
    ::SetScrollInfo(window, bar, &info, 1);
}

}  // namespace

void SScrollView::SetScrollSizes(SIZE total, SIZE page, SIZE line) {
    total_ = total;
    page_ = page;
    line_ = line;
    if (GetHandle() == nullptr) return;
    ScrollToPosition(at_);
    TellBars();
}

void SScrollView::ScrollToPosition(POINT point) {
    const RECT client = GetClientRect();
    const POINT wanted{std::clamp<LONG>(point.x, 0, std::max<LONG>(total_.cx - client.right, 0)),
                       std::clamp<LONG>(point.y, 0, std::max<LONG>(total_.cy - client.bottom, 0))};
    if (wanted.x == at_.x && wanted.y == at_.y) return;
    at_ = wanted;
    TellBars();
    Invalidate(1);
}

// Whether each bar is needed follows from the window without any, so that two bars do not stay
// only because of each other. A bar that comes or goes changes the client area, whose WM_SIZE ends
// here again, with the same answer.
void SScrollView::TellBars() {
    RECT room = GetClientRect();
    const DWORD style = GetStyle();
    const int across = GetSystemMetrics(SM_CXVSCROLL), along = GetSystemMetrics(SM_CYHSCROLL);
    if ((style & WS_VSCROLL) != 0) room.right += across;
    if ((style & WS_HSCROLL) != 0) room.bottom += along;
    bool isTall = total_.cy > room.bottom;
    const bool isWide = total_.cx > room.right - (isTall ? across : 0);
    isTall = total_.cy > room.bottom - (isWide ? along : 0);
    SetBar(GetHandle(), SB_HORZ, total_.cx, room.right - (isTall ? across : 0), at_.x);
    if (GetHandle() == nullptr) return;
    SetBar(GetHandle(), SB_VERT, total_.cy, room.bottom - (isWide ? along : 0), at_.y);
}

void SScrollView::OnPrepareDC(SDC& dc) {
    dc.OffsetViewportOrg(-at_.x, -at_.y);
}

void SScrollView::OnSize(UINT, int, int) {
    Default();
    ScrollToPosition(at_);
    TellBars();
}

// Where the scroll code leads, before the ends are looked at.
int SScrollView::Target(int bar, UINT code, UINT position) const {
    const bool isVertical = bar == SB_VERT;
    const RECT client = GetClientRect();
    const int shown = isVertical ? client.bottom : client.right;
    const int wantedPage = isVertical ? page_.cy : page_.cx;
    const int wantedLine = isVertical ? line_.cy : line_.cx;
    const int page = wantedPage > 0 ? wantedPage : shown;
    const int line = wantedLine > 0 ? wantedLine : std::max(page / 10, 1);
    const int at = isVertical ? at_.y : at_.x;
    switch (code) {
        case SB_LINEUP:
            return at - line;
        case SB_LINEDOWN:
            return at + line;
        case SB_PAGEUP:
            return at - page;
        case SB_PAGEDOWN:
            return at + page;
        case SB_TOP:
            return 0;
        case SB_BOTTOM:
            return isVertical ? total_.cy : total_.cx;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            return brcore8::TrackPosition(GetHandle(), bar, position);
        default:
            return at;
    }
}

void SScrollView::OnHScroll(UINT code, SWnd*, UINT position) {
    ScrollToPosition({Target(SB_HORZ, code, position), at_.y});
}

void SScrollView::OnVScroll(UINT code, SWnd*, UINT position) {
    ScrollToPosition({at_.x, Target(SB_VERT, code, position)});
}

// Three lines a notch.
int SScrollView::OnMouseWheel(UINT, int delta, int, int) {
    const int line = Target(SB_VERT, SB_LINEDOWN, 0) - at_.y;
    ScrollToPosition({at_.x, at_.y - 3 * line * delta / WHEEL_DELTA});
    return 1;
}

// --- Pages --------------------------------------------------------------------------------------

void SPreviewView::SetPages(int count, SIZE size) {
    count_ = std::max(count, 1);
    size_ = size;
    page_ = std::min(page_, count_ - 1);
    if (GetHandle() != nullptr) Invalidate(1);
}

int SPreviewView::SetCurPage(int page) {
    if (page < 0 || page >= count_) return 0;
    page_ = page;
    if (GetHandle() != nullptr) Invalidate(1);
    return 1;
}

void SPreviewView::OnDrawPage(SDC&, int) {}

void SPreviewView::OnDraw(SDC& dc) {
    SPreviewDC page;
    if (!page.CreatePage(size_, &dc)) return;
    OnDrawPage(page, page_);
    RECT room = GetClientRect();
    dc.FillSolidRect(room, ::GetSysColor(COLOR_APPWORKSPACE));
    const int margin = SScaled(8, GetHandle());
    InflateRect(&room, -margin, -margin);
    RECT place = page.FitPage(room);
    page.ShowPage(dc, place);
    InflateRect(&place, 1, 1);
    dc.FrameSolidRect(place, ::GetSysColor(COLOR_WINDOWFRAME));
}

// --- The program --------------------------------------------------------------------------------

void SAboutView::SetTitle(const char* title) {
    title_ = title;
    if (GetHandle() != nullptr) Invalidate(0);
}

void SAboutView::AddLine(const char* line) {
    lines_.emplace_back(line);
    if (GetHandle() != nullptr) Invalidate(0);
}

void SAboutView::OnDraw(SDC& dc) {
    RECT row = GetClientRect();
    dc.SetBkMode(TRANSPARENT);
    const auto draw = [&](const SString& text, int stock, COLORREF color) {
        const SSelected font(dc, ::GetStockObject(stock));
        const int height = dc.GetTextExtent("M").cy;
        row.bottom = row.top + height;
        dc.SetTextColor(color);
        dc.DrawText(text, row, DT_SINGLELINE | DT_CENTER | DT_NOPREFIX);
        row.top = row.bottom + height / 4;
    };
    row.top = SScaled(10, GetHandle());
    draw(title_, SYSTEM_FONT, ::GetSysColor(COLOR_HIGHLIGHT));
    for (const SString& line : lines_)
        draw(line, DEFAULT_GUI_FONT, ::GetSysColor(COLOR_WINDOWTEXT));
}
