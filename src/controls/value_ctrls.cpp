#include <brcore8/controls/value_ctrls.h>

SIMPLEMENT_CREATABLE(SSliderCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SSpinButtonCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SScrollBar, SWnd, 2);
SIMPLEMENT_CREATABLE(SDateTimeCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SAnimateCtrl, SWnd, 2);

RECT SSliderCtrl::GetThumbRect() const {
    RECT rect{};
    Ask(TBM_GETTHUMBRECT, 0, &rect);
    return rect;
}

// --- Scroll bars ------------------------------------------------------------------------------
// By the one message that knows wide numbers.

int SScrollBar::GetScrollInfo(SCROLLINFO* info, UINT mask) const {
    info->cbSize = sizeof *info;
    info->fMask = mask;
    return Ask(SBM_GETSCROLLINFO, 0, info);
}

int SScrollBar::SetScrollInfo(const SCROLLINFO& info, int redraw) {
    SCROLLINFO sized = info;
    sized.cbSize = sizeof sized;
    return Ask(SBM_SETSCROLLINFO, redraw, &sized);
}

int SScrollBar::GetScrollPos() const {
    SCROLLINFO info{};
    GetScrollInfo(&info, SIF_POS);
    return info.nPos;
}

int SScrollBar::SetScrollPos(int position, int redraw) {
    const int old = GetScrollPos();
    SCROLLINFO info{};
    info.fMask = SIF_POS;
    info.nPos = position;
    SetScrollInfo(info, redraw);
    return old;
}

void SScrollBar::GetScrollRange(int* lower, int* upper) const {
    SCROLLINFO info{};
    GetScrollInfo(&info, SIF_RANGE);
    *lower = info.nMin;
    *upper = info.nMax;
}

void SScrollBar::SetScrollRange(int lower, int upper, int redraw) {
    SCROLLINFO info{};
    info.fMask = SIF_RANGE;
    info.nMin = lower;
    info.nMax = upper;
    SetScrollInfo(info, redraw);
}
