// A bar that fills while something goes on.

#include <algorithm>
#include <utility>

#include "platform/posix/desktop/controls/control.h"

namespace brcore8::desktop {

namespace {

class Progress final : public Control {
public:
    using Control::Control;
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT SetRange(int low, int high);
    // The position before.
    LRESULT MoveTo(std::int64_t position);
    LRESULT StepOn();
    LRESULT GetRange(bool wantsLow, PBRANGE* out) const noexcept;
    LRESULT SetColor(COLORREF& color, LPARAM wanted) const;
    void Paint(WPARAM context) const;
    // How far `length` pixels are filled.
    int Filled(int length) const noexcept;

    int low_ = 0;
    int high_ = 100;
    int position_ = 0;
    int step_ = 10;
    COLORREF barColor_ = CLR_DEFAULT;
    COLORREF backColor_ = CLR_DEFAULT;
};

LRESULT Progress::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(wParam);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case PBM_SETRANGE:
            return SetRange(LOWORD(static_cast<WPARAM>(lParam)),
                            HIWORD(static_cast<WPARAM>(lParam)));
        case PBM_SETRANGE32:
            return SetRange(static_cast<int>(wParam), static_cast<int>(lParam));
        case PBM_SETPOS:
            return MoveTo(static_cast<int>(wParam));
        case PBM_DELTAPOS:
            return MoveTo(std::int64_t{position_} + static_cast<int>(wParam));
        case PBM_SETSTEP:
            return std::exchange(step_, static_cast<int>(wParam));
        case PBM_STEPIT:
            return StepOn();
        case PBM_GETRANGE:
            return GetRange(wParam != 0, reinterpret_cast<PBRANGE*>(lParam));
        case PBM_GETPOS:
            return position_;
        case PBM_GETSTEP:
            return step_;
        case PBM_SETBARCOLOR:
            return SetColor(barColor_, lParam);
        case PBM_SETBKCOLOR:
            return SetColor(backColor_, lParam);
        case PBM_GETBARCOLOR:
            return static_cast<LRESULT>(barColor_);
        case PBM_GETBKCOLOR:
            return static_cast<LRESULT>(backColor_);
        default:
            return Default(message, wParam, lParam);
    }
}

LRESULT Progress::SetRange(int low, int high) {
    const LRESULT old = MAKELRESULT(static_cast<WORD>(low_), static_cast<WORD>(high_));
    low_ = low;
    high_ = high > low ? high : low + (low < INT32_MAX);
    position_ = std::clamp(position_, low_, high_);
    Repaint();
    return old;
}

LRESULT Progress::MoveTo(std::int64_t position) {
    const int old = position_;
    position_ = static_cast<int>(std::clamp<std::int64_t>(position, low_, high_));
    if (position_ != old) Repaint();
    return old;
}

// Past either end it goes on from the other.
LRESULT Progress::StepOn() {
    const std::int64_t span = std::max<std::int64_t>(std::int64_t{high_} - low_, 1);
    std::int64_t next = std::int64_t{position_} + step_;
    if (next > high_) next = (next - low_) % span + low_;
    if (next < low_) next = high_ - (low_ - next) % span;
    return MoveTo(next);
}

LRESULT Progress::GetRange(bool wantsLow, PBRANGE* out) const noexcept {
    if (out != nullptr) *out = {low_, high_};
    return wantsLow ? low_ : high_;
}

LRESULT Progress::SetColor(COLORREF& color, LPARAM wanted) const {
    const COLORREF old = std::exchange(color, static_cast<COLORREF>(wanted));
    Repaint();
    return static_cast<LRESULT>(old);
}

int Progress::Filled(int length) const noexcept {
    const std::int64_t span = std::int64_t{high_} - low_;
    if (span <= 0) return 0;
    return static_cast<int>((std::int64_t{position_} - low_) * length / span);
}

// Without gaps, be it PBS_SMOOTH or not.
void Progress::Paint(WPARAM context) const {
    const ControlPaint paint(Handle(), Font(), context);
    const auto colorOr = [](COLORREF color, int system) {
        return color != CLR_DEFAULT ? color : GetSysColor(system);
    };
    const HBRUSH back = CreateSolidBrush(colorOr(backColor_, COLOR_BTNFACE));
    const HBRUSH bar = CreateSolidBrush(colorOr(barColor_, COLOR_HIGHLIGHT));
    FillRect(paint.dc, &paint.client, back);
    const bool isVertical = (Style() & PBS_VERTICAL) != 0;
    RECT rect = paint.client;
    DrawEdge(paint.dc, &rect, BDR_SUNKENOUTER, BF_RECT);
    InflateRect(&rect, -1, -1);
    const int length = isVertical ? rect.bottom - rect.top : rect.right - rect.left;
    if (isVertical)
        rect.top = rect.bottom - Filled(length);
    else
        rect.right = rect.left + Filled(length);
    FillRect(paint.dc, &rect, bar);
    DeleteObject(bar);
    DeleteObject(back);
}

}  // namespace

LRESULT CALLBACK ProgressProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(handle, message, wParam, lParam, &MakeControl<Progress>);
}

}  // namespace brcore8::desktop
