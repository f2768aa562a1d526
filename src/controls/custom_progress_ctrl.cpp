#include <brcore8/controls/custom_progress_ctrl.h>

#include <algorithm>
#include <cstdint>

SIMPLEMENT_CREATABLE(SCustomProgressCtrl, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SCustomProgressCtrl, SWnd, SOnPaint<&SCustomProgressCtrl::OnPaint>(),
                       SOnEraseBkgnd<&SCustomProgressCtrl::OnEraseBkgnd>(),
                       SOnSize<&SCustomProgressCtrl::OnSize>(),
                       SOnTimer<&SCustomProgressCtrl::OnTimer>(),
                       SOnDestroy<&SCustomProgressCtrl::OnDestroy>(),
                       SOnMessage<&SCustomProgressCtrl::OnSetText>(WM_SETTEXT));

void SCustomProgressCtrl::SetStatus(const Status& status) {
    status_ = status;
    SetPos(status.position);
}

void SCustomProgressCtrl::SetRange(int lower, int upper) {
    status_.lower = lower;
    status_.upper = upper;
    SetPos(status_.position);
}

int SCustomProgressCtrl::SetPos(int position) {
    const int old = status_.position;
    status_.position = std::max(std::min(position, status_.upper), status_.lower);
    Follow();
    return old;
}

int SCustomProgressCtrl::OffsetPos(int delta) {
    const std::int64_t sum = std::int64_t{status_.position} + delta;
    return SetPos(static_cast<int>(std::clamp<std::int64_t>(sum, INT32_MIN, INT32_MAX)));
}

void SCustomProgressCtrl::SetColors(COLORREF filled, COLORREF rest) {
    filled_ = filled;
    rest_ = rest;
    if (GetHandle() != nullptr) Invalidate(0);
}

// --- Painting ------------------------------------------------------------------------------------

RECT SCustomProgressCtrl::BarRect() const {
    RECT bar = GetClientRect();
    ::InflateRect(&bar, -1, -1);
    return bar;
}

int SCustomProgressCtrl::FilledPixels(const RECT& bar) const {
    const std::int64_t range = std::int64_t{status_.upper} - status_.lower;
    const std::int64_t done = std::int64_t{status_.position} - status_.lower;
    const std::int64_t width = std::max<std::int64_t>(bar.right - bar.left, 0);
    return range > 0 ? static_cast<int>(width * done / range) : 0;
}

void SCustomProgressCtrl::Follow() {
    constexpr DWORD kInterval = 20;
    if (GetHandle() == nullptr || FilledPixels(BarRect()) == shown_) return;
    const DWORD passed = ::GetTickCount() - painted_;
    if (passed >= kInterval) {
        ShowNow();
    } else if (!isWaiting_) {
        isWaiting_ = SetTimer(kPaintTimer, kInterval - passed) != 0;
    }
}

void SCustomProgressCtrl::ShowNow() {
    if (isWaiting_) KillTimer(kPaintTimer);
    isWaiting_ = 0;
    Invalidate(0);
    UpdateWindow();
}

void SCustomProgressCtrl::OnTimer(UINT_PTR id) {
    if (id == kPaintTimer) ShowNow();
}

// The timer goes with the window.
void SCustomProgressCtrl::OnDestroy() {
    Default();
    isWaiting_ = 0;
}

void SCustomProgressCtrl::OnSize(UINT, int, int) {
    Default();
    Invalidate(0);
}

LRESULT SCustomProgressCtrl::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    Invalidate(0);
    return result;
}

void SCustomProgressCtrl::PaintPart(HDC context, const RECT& part, COLORREF back,
                                    COLORREF front) const {
    if (part.left >= part.right) return;
    const int saved = ::SaveDC(context);
    ::IntersectClipRect(context, part.left, part.top, part.right, part.bottom);
    const HBRUSH brush = ::CreateSolidBrush(back);
    ::FillRect(context, &part, brush);
    ::DeleteObject(brush);
    const SString text = GetWindowText();
    if (text.LengthByte() > 0) {
        ::SelectObject(context, ::GetStockObject(DEFAULT_GUI_FONT));
        ::SetBkMode(context, TRANSPARENT);
        ::SetTextColor(context, front);
        RECT bar = BarRect();
        ::DrawTextA(context, text, text.LengthByte(), &bar,
                    DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    ::RestoreDC(context, saved);
}

void SCustomProgressCtrl::OnPaint() {
    PAINTSTRUCT paint;
    const HDC context = ::BeginPaint(GetHandle(), &paint);
    if (context == nullptr) return;
    RECT frame = GetClientRect();
    const RECT bar = BarRect();
    ::DrawEdge(context, &frame, BDR_SUNKENOUTER, BF_RECT);
    shown_ = FilledPixels(bar);
    painted_ = ::GetTickCount();
    const int border = bar.left + shown_;
    PaintPart(context, {bar.left, bar.top, border, bar.bottom}, filled_, rest_);
    PaintPart(context, {border, bar.top, bar.right, bar.bottom}, rest_, filled_);
    ::EndPaint(GetHandle(), &paint);
}
