#include "platform/posix/desktop/scroll_bars.h"

#include <algorithm>
#include <utility>

#include "platform/posix/desktop/scale.h"

namespace brcore8::desktop {

ScrollBar* ScrollBarOf(HWND handle, int bar) noexcept {
    Window* const window = Find(handle);
    if (window == nullptr) return nullptr;
    if (bar >= SB_HORZ && bar <= SB_CTL) return &window->scroll[bar];
    SetLastError(ERROR_INVALID_PARAMETER);
    return nullptr;
}

bool IsUpright(const Window& window, int bar) noexcept {
    return bar == SB_CTL ? (window.style & SBS_VERT) != 0 : bar == SB_VERT;
}

RECT ScrollBarRect(const Window& window, int bar) noexcept {
    const int width = Width(window.client);
    const int height = Height(window.client);
    if (bar == SB_CTL) return {0, 0, width, height};
    if (bar == SB_VERT && (window.style & WS_VSCROLL) != 0)
        return {width, 0, width + GetSystemMetrics(SM_CXVSCROLL), height};
    if (bar == SB_HORZ && (window.style & WS_HSCROLL) != 0)
        return {0, height, width, height + GetSystemMetrics(SM_CYHSCROLL)};
    return {};
}

// The thumb is as long as the page in the range; without room, or when off, there is none.
ScrollParts PartsOf(const Window& window, int bar) noexcept {
    const ScrollBar& data = window.scroll[bar];
    const RECT rect = ScrollBarRect(window, bar);
    const bool isUpright = IsUpright(window, bar);
    ScrollParts parts{};
    parts.begin = isUpright ? rect.top : rect.left;
    parts.end = isUpright ? rect.bottom : rect.right;
    const int arrow = std::min(GetSystemMetrics(SM_CXVSCROLL), (parts.end - parts.begin) / 2);
    parts.trackBegin = parts.begin + arrow;
    parts.trackEnd = parts.end - arrow;
    parts.thumbBegin = parts.thumbEnd = parts.trackBegin;
    const std::int64_t range = std::int64_t{data.max} - data.min;
    const std::int64_t track = parts.trackEnd - parts.trackBegin;
    const int least = Scaled(8);
    parts.lastPosition =
        static_cast<int>(data.max - std::max<std::int64_t>(std::int64_t{data.page} - 1, 0));
    if (data.disabled == ESB_DISABLE_BOTH || track < least || range <= 0 ||
        parts.lastPosition < data.min)
        return parts;
    const std::int64_t usual = GetSystemMetrics(SM_CXVSCROLL);
    const std::int64_t length = std::clamp(data.page > 0 ? track * data.page / (range + 1) : usual,
                                           std::int64_t{least}, track);
    const std::int64_t way = std::max<std::int64_t>(std::int64_t{parts.lastPosition} - data.min, 1);
    const int position = data.isTracking ? data.track : data.position;
    parts.thumbBegin +=
        static_cast<int>((track - length) * (std::int64_t{position} - data.min) / way);
    parts.thumbEnd = parts.thumbBegin + static_cast<int>(length);
    return parts;
}

// --- Painting -----------------------------------------------------------------------------------

namespace {

void FillWithColor(HDC dc, const RECT& rect, int color) noexcept {
    FillRect(dc, &rect, GetSysColorBrush(color));
}

// A button with an arrow, `direction` -1 or 1 along the bar.
void DrawArrow(HDC dc, RECT box, bool isUpright, int direction, bool isOff) {
    FillWithColor(dc, box, COLOR_BTNFACE);
    DrawEdge(dc, &box, EDGE_RAISED, BF_RECT);
    const int middleX = (box.left + box.right) / 2;
    const int middleY = (box.top + box.bottom) / 2;
    const int size = Scaled(4);
    for (int i = 0; i < size; ++i) {
        const int along = direction * (i - size / 2);
        const RECT row =
            isUpright ? RECT{middleX - i, middleY - along, middleX + 1 + i, middleY - along + 1}
                      : RECT{middleX - along, middleY - i, middleX - along + 1, middleY + i + 1};
        FillWithColor(dc, row, isOff ? COLOR_BTNSHADOW : COLOR_BTNTEXT);
    }
}

}  // namespace

void DrawScrollBar(HDC dc, const Window& window, int bar) {
    const RECT rect = ScrollBarRect(window, bar);
    if (IsRectEmpty(&rect)) return;
    const bool isUpright = IsUpright(window, bar);
    const ScrollParts parts = PartsOf(window, bar);
    const auto along = [&](int begin, int end) {
        return isUpright ? RECT{rect.left, begin, rect.right, end}
                         : RECT{begin, rect.top, end, rect.bottom};
    };
    const UINT disabled = window.scroll[bar].disabled;
    FillWithColor(dc, rect, COLOR_3DLIGHT);
    DrawArrow(dc, along(parts.begin, parts.trackBegin), isUpright, -1,
              (disabled & ESB_DISABLE_LTUP) != 0);
    DrawArrow(dc, along(parts.trackEnd, parts.end), isUpright, 1,
              (disabled & ESB_DISABLE_RTDN) != 0);
    if (!parts.HasThumb()) return;
    RECT thumb = along(parts.thumbBegin, parts.thumbEnd);
    FillWithColor(dc, thumb, COLOR_BTNFACE);
    DrawEdge(dc, &thumb, EDGE_RAISED, BF_RECT);
}

void DrawScrollBars(HDC dc, const Window& window) {
    DrawScrollBar(dc, window, SB_HORZ);
    DrawScrollBar(dc, window, SB_VERT);
    const RECT across = ScrollBarRect(window, SB_HORZ);
    const RECT along = ScrollBarRect(window, SB_VERT);
    if (!IsRectEmpty(&across) && !IsRectEmpty(&along))
        FillWithColor(dc, {along.left, across.top, along.right, across.bottom}, COLOR_BTNFACE);
}

void ShowScrollBarAnew(HWND handle, int bar) {
    const Window* const window = Find(handle);
    if (window == nullptr || !IsShown(*window)) return;
    if (bar == SB_CTL) {
        InvalidateRect(handle, nullptr, 0);
        return;
    }
    const HDC dc = GetWindowDC(handle);
    SetViewportOrgEx(dc, window->client.left - window->rect.left,
                     window->client.top - window->rect.top, nullptr);
    DrawScrollBar(dc, *window, bar);
    ReleaseDC(handle, dc);
}

}  // namespace brcore8::desktop

// --- Calls --------------------------------------------------------------------------------------

using namespace brcore8::desktop;

namespace {

bool IsNeeded(const ScrollBar& data) noexcept {
    const std::int64_t range = std::int64_t{data.max} - data.min;
    return range > 0 && range >= data.page;
}

void Clamp(ScrollBar& data) noexcept {
    const std::int64_t range = std::max<std::int64_t>(std::int64_t{data.max} - data.min, 0);
    data.page = static_cast<UINT>(std::min<std::int64_t>(data.page, range + 1));
    const std::int64_t last = data.max - std::max<std::int64_t>(std::int64_t{data.page} - 1, 0);
    data.position = static_cast<int>(
        std::clamp<std::int64_t>(data.position, data.min, std::max<std::int64_t>(last, data.min)));
}

}  // namespace

int SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw) {
    ScrollBar* const data = ScrollBarOf(window, bar);
    if (data == nullptr || info == nullptr || info->cbSize < sizeof *info - sizeof(int)) return 0;
    if ((info->fMask & SIF_RANGE) != 0 && info->nMin <= info->nMax) {
        data->min = info->nMin;
        data->max = info->nMax;
    } else if ((info->fMask & SIF_RANGE) != 0) {
        data->min = data->max = 0;
    }
    if ((info->fMask & SIF_PAGE) != 0) data->page = info->nPage;
    if ((info->fMask & SIF_POS) != 0) data->position = info->nPos;
    Clamp(*data);
    const int position = data->position;
    const bool isNeeded = IsNeeded(*data);
    if ((info->fMask & (SIF_RANGE | SIF_PAGE)) != 0) {
        if ((info->fMask & SIF_DISABLENOSCROLL) != 0)
            data->disabled = isNeeded ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH;
        else if (bar != SB_CTL)
            ShowScrollBar(window, bar, isNeeded);
    }
    if (redraw) ShowScrollBarAnew(window, bar);
    return position;
}

BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO* info) noexcept {
    const ScrollBar* const data = ScrollBarOf(window, bar);
    if (data == nullptr || info->cbSize < sizeof *info - sizeof(int)) return 0;
    if ((info->fMask & SIF_RANGE) != 0) {
        info->nMin = data->min;
        info->nMax = data->max;
    }
    if ((info->fMask & SIF_PAGE) != 0) info->nPage = data->page;
    if ((info->fMask & SIF_POS) != 0) info->nPos = data->position;
    if ((info->fMask & SIF_TRACKPOS) != 0 && info->cbSize == sizeof *info)
        info->nTrackPos = data->isTracking ? data->track : data->position;
    return 1;
}

int SetScrollPos(HWND window, int bar, int position, BOOL redraw) {
    const ScrollBar* const data = ScrollBarOf(window, bar);
    if (data == nullptr) return 0;
    const int old = data->position;
    const SCROLLINFO info{sizeof info, SIF_POS, 0, 0, 0, position, 0};
    SetScrollInfo(window, bar, &info, redraw);
    return old;
}

int GetScrollPos(HWND window, int bar) noexcept {
    const ScrollBar* const data = ScrollBarOf(window, bar);
    return data != nullptr ? data->position : 0;
}

BOOL SetScrollRange(HWND window, int bar, int low, int high, BOOL redraw) {
    if (ScrollBarOf(window, bar) == nullptr) return 0;
    const SCROLLINFO info{sizeof info, SIF_RANGE, low, high, 0, 0, 0};
    SetScrollInfo(window, bar, &info, redraw);
    return 1;
}

BOOL GetScrollRange(HWND window, int bar, int* low, int* high) noexcept {
    const ScrollBar* const data = ScrollBarOf(window, bar);
    if (data == nullptr) return 0;
    *low = data->min;
    *high = data->max;
    return 1;
}

BOOL ShowScrollBar(HWND handle, int bar, BOOL show) {
    Window* const window = Find(handle);
    if (window == nullptr) return 0;
    if (bar == SB_CTL) {
        ShowWindow(handle, show ? SW_SHOW : SW_HIDE);
        return 1;
    }
    DWORD bits = 0;
    if (bar == SB_HORZ || bar == SB_BOTH) bits |= WS_HSCROLL;
    if (bar == SB_VERT || bar == SB_BOTH) bits |= WS_VSCROLL;
    const DWORD wanted = show ? window->style | bits : window->style & ~bits;
    if (std::exchange(window->style, wanted) == wanted) return 1;
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    return 1;
}

BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows) {
    if (Find(window) == nullptr) return 0;
    bool isChanged = false;
    for (const int each : {SB_HORZ, SB_VERT, SB_CTL}) {
        if (bar != static_cast<UINT>(each) && (bar != SB_BOTH || each == SB_CTL)) continue;
        ScrollBar* const data = ScrollBarOf(window, each);
        if (data == nullptr || std::exchange(data->disabled, arrows) == arrows) continue;
        isChanged = true;
        ShowScrollBarAnew(window, each);
    }
    return isChanged;
}
