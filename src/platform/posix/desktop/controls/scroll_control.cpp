// A scroll bar that is a window of its own.

#include "platform/posix/desktop/controls/control.h"
#include "platform/posix/desktop/scroll_bars.h"

namespace brcore8::desktop {

namespace {

class ScrollControl final : public Control {
public:
    using Control::Control;
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT AnswerBar(UINT message, WPARAM wParam, LPARAM lParam) const;
    LRESULT PressKey(WPARAM key) const;
    void Paint(WPARAM context) const;
};

LRESULT ScrollControl::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            // Empty, where a window's own bar goes to 100.
            SetScrollRange(Handle(), SB_CTL, 0, 0, 0);
            return 0;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(wParam);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_LBUTTONDOWN:
            TrackScrollBar(Handle(), SB_CTL, PointOf(lParam), Parent());
            return 0;
        case WM_KEYDOWN:
            return PressKey(wParam);
        case WM_ENABLE:
            EnableScrollBar(Handle(), SB_CTL, wParam != 0 ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH);
            return 0;
        default:
            return AnswerBar(message, wParam, lParam);
    }
}

LRESULT ScrollControl::AnswerBar(UINT message, WPARAM wParam, LPARAM lParam) const {
    const auto low = static_cast<int>(wParam);
    const auto high = static_cast<int>(lParam);
    switch (message) {
        case SBM_SETPOS:
            return SetScrollPos(Handle(), SB_CTL, low, lParam != 0);
        case SBM_GETPOS:
            return GetScrollPos(Handle(), SB_CTL);
        case SBM_SETRANGE:
        case SBM_SETRANGEREDRAW: {
            const int old = GetScrollPos(Handle(), SB_CTL);
            SetScrollRange(Handle(), SB_CTL, low, high, message == SBM_SETRANGEREDRAW);
            const int now = GetScrollPos(Handle(), SB_CTL);
            return now != old ? old : 0;
        }
        case SBM_GETRANGE:
            return GetScrollRange(Handle(), SB_CTL, reinterpret_cast<int*>(wParam),
                                  reinterpret_cast<int*>(lParam));
        case SBM_ENABLE_ARROWS:
            return EnableScrollBar(Handle(), SB_CTL, static_cast<UINT>(wParam));
        case SBM_SETSCROLLINFO:
            return SetScrollInfo(Handle(), SB_CTL, reinterpret_cast<const SCROLLINFO*>(lParam),
                                 wParam != 0);
        case SBM_GETSCROLLINFO:
            return GetScrollInfo(Handle(), SB_CTL, reinterpret_cast<SCROLLINFO*>(lParam));
        default:
            return Default(message, wParam, lParam);
    }
}

LRESULT ScrollControl::PressKey(WPARAM key) const {
    int code = 0;
    switch (key) {
        case VK_PRIOR:
            code = SB_PAGEUP;
            break;
        case VK_NEXT:
            code = SB_PAGEDOWN;
            break;
        case VK_HOME:
            code = SB_TOP;
            break;
        case VK_END:
            code = SB_BOTTOM;
            break;
        case VK_UP:
        case VK_LEFT:
            code = SB_LINEUP;
            break;
        case VK_DOWN:
        case VK_RIGHT:
            code = SB_LINEDOWN;
            break;
        default:
            return 0;
    }
    SendMessageA(Parent(), (Style() & SBS_VERT) != 0 ? WM_VSCROLL : WM_HSCROLL,
                 static_cast<WPARAM>(code), reinterpret_cast<LPARAM>(Handle()));
    return 0;
}

void ScrollControl::Paint(WPARAM context) const {
    const ControlPaint paint(Handle(), Font(), context);
    if (const Window* const window = Find(Handle())) DrawScrollBar(paint.dc, *window, SB_CTL);
}

}  // namespace

LRESULT CALLBACK ScrollProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(handle, message, wParam, lParam, &MakeControl<ScrollControl>);
}

}  // namespace brcore8::desktop
