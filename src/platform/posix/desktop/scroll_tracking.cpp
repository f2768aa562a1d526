// The user on a scroll bar.

#include <algorithm>

#include "platform/posix/desktop/scroll_bars.h"

namespace brcore8::desktop {

namespace {

constexpr UINT_PTR kTimer = 0xFFF0;
constexpr UINT kFirstDelay = 200;  // milliseconds
constexpr UINT kNextDelay = 50;
constexpr int kNothing = -1;

class Tracking {
public:
    Tracking(HWND window, int bar, HWND target) noexcept
        : window_(window), target_(target), bar_(bar) {}

    void Run(POINT point) {
        code_ = CodeAt(*Find(window_), point);
        if (code_ == kNothing) return;
        // Who had it may end the window.
        SetCapture(window_);
        Window* const window = Find(window_);
        if (window == nullptr) return;
        if (code_ == SB_THUMBTRACK)
            Grip(*window, point);
        else
            Tell(code_, 0);
        SetTimer(window_, kTimer, kFirstDelay, nullptr);
        while (GetCapture() == window_ && !isDone_)
            Step();
        KillTimer(window_, kTimer);
        if (GetCapture() == window_) ReleaseCapture();
        Finish();
    }

private:
    int Along(const Window& window, POINT point) const noexcept {
        return IsUpright(window, bar_) ? point.y : point.x;
    }

    // What a press of that place asks for.
    int CodeAt(const Window& window, POINT point) const noexcept {
        const RECT rect = ScrollBarRect(window, bar_);
        const ScrollParts parts = PartsOf(window, bar_);
        const int at = Along(window, point);
        const UINT disabled = window.scroll[bar_].disabled;
        if (!PtInRect(&rect, point)) return kNothing;
        if (at < parts.trackBegin) return (disabled & ESB_DISABLE_LTUP) == 0 ? SB_LINEUP : kNothing;
        if (at >= parts.trackEnd)
            return (disabled & ESB_DISABLE_RTDN) == 0 ? SB_LINEDOWN : kNothing;
        if (!parts.HasThumb()) return kNothing;
        if (at < parts.thumbBegin) return SB_PAGEUP;
        return at < parts.thumbEnd ? SB_THUMBTRACK : SB_PAGEDOWN;
    }

    void Tell(int code, int position) const {
        const Window* const window = Find(window_);
        if (window == nullptr) return;
        const LPARAM from = bar_ == SB_CTL ? reinterpret_cast<LPARAM>(window_) : 0;
        SendMessageA(target_, IsUpright(*window, bar_) ? WM_VSCROLL : WM_HSCROLL,
                     MAKEWPARAM(static_cast<WORD>(code), static_cast<WORD>(position)), from);
    }

    void Step() {
        MSG message;
        if (!GetMessageA(&message, nullptr, 0, 0)) {
            // The outer loop is to end too.
            PostQuitMessage(static_cast<int>(message.wParam));
            isDone_ = true;
            return;
        }
        const bool isMine = message.hwnd == window_;
        if (isMine && message.message == WM_LBUTTONUP) {
            isDone_ = true;
        } else if (isMine && message.message == WM_MOUSEMOVE) {
            Move({static_cast<std::int16_t>(LOWORD(static_cast<WPARAM>(message.lParam))),
                  static_cast<std::int16_t>(HIWORD(static_cast<WPARAM>(message.lParam)))});
        } else if (isMine && message.message == WM_TIMER && message.wParam == kTimer) {
            Repeat();
        } else {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }

    void Move(POINT point) {
        Window* const window = Find(window_);
        if (window == nullptr) return;
        point_ = point;
        hasMoved_ = true;
        if (code_ != SB_THUMBTRACK) return;
        ScrollBar& data = window->scroll[bar_];
        const ScrollParts parts = PartsOf(*window, bar_);
        const std::int64_t room =
            (parts.trackEnd - parts.trackBegin) - (parts.thumbEnd - parts.thumbBegin);
        const std::int64_t begin = std::clamp<std::int64_t>(
            Along(*window, point) - grip_ - parts.trackBegin, 0, std::max<std::int64_t>(room, 0));
        const std::int64_t way = std::int64_t{parts.lastPosition} - data.min;
        const int position =
            static_cast<int>(data.min + (room > 0 ? (begin * way + room / 2) / room : 0));
        if (position == data.track) return;
        data.track = position;
        ShowScrollBarAnew(window_, bar_);
        Tell(SB_THUMBTRACK, position);
    }

    void Grip(Window& window, POINT point) noexcept {
        ScrollBar& data = window.scroll[bar_];
        grip_ = Along(window, point) - PartsOf(window, bar_).thumbBegin;
        data.track = data.position;
        data.isTracking = true;
    }

    // As long as the mouse stays on what it pressed.
    void Repeat() {
        const Window* const window = Find(window_);
        if (window == nullptr || code_ == SB_THUMBTRACK) return;
        SetTimer(window_, kTimer, kNextDelay, nullptr);
        if (!hasMoved_ || CodeAt(*window, point_) == code_) Tell(code_, 0);
    }

    void Finish() {
        if (ScrollBar* const data = ScrollBarOf(window_, bar_);
            data != nullptr && data->isTracking) {
            // GetScrollInfo knows all of the position as long as this is told.
            Tell(SB_THUMBPOSITION, data->track);
            if (ScrollBar* const after = ScrollBarOf(window_, bar_)) after->isTracking = false;
        }
        Tell(SB_ENDSCROLL, 0);
        ShowScrollBarAnew(window_, bar_);
    }

    HWND window_;
    HWND target_;
    int bar_;
    int code_ = kNothing;
    int grip_ = 0;  // from the thumb's begin to the mouse
    POINT point_{};
    bool hasMoved_ = false;
    bool isDone_ = false;
};

}  // namespace

void TrackScrollBar(HWND window, int bar, POINT point, HWND target) {
    if (Find(window) != nullptr) Tracking(window, bar, target).Run(point);
}

}  // namespace brcore8::desktop
