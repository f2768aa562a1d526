// SCustomProgressCtrl: a progress bar that draws itself and so looks alike everywhere. Its window
// text stands in the middle of the bar, in the colours of what is below it.
//
// It may be told a new position as often as one likes: it paints at most 50 times a second, and
// only when a pixel changes. The last position always shows.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_CONTROLS_CUSTOM_PROGRESS_CTRL_H
#define BRCORE8_CONTROLS_CUSTOM_PROGRESS_CTRL_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SCustomProgressCtrl : public SWnd {
    SDECLARE_CREATABLE(SCustomProgressCtrl);
    SDECLARE_MESSAGE_MAP(SCustomProgressCtrl);

public:
    // All that it shows. The position lies between the bounds, the lower of which may not be above
    // the upper one: then the bar is empty.
    struct Status {
        int lower = 0;
        int upper = 100;
        int position = 0;
        int step = 10;
    };

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CtrlWnd", nullptr, style, place, parent, id);
    }

    const Status& GetStatus() const noexcept { return status_; }
    void SetStatus(const Status& status);

    void SetRange(int lower, int upper);
    void SetStep(int step) noexcept { status_.step = step; }
    int GetPos() const noexcept { return status_.position; }
    // These move the position, no further than to a bound, and return the one from before.
    int SetPos(int position);
    int OffsetPos(int delta);
    int StepIt() { return OffsetPos(status_.step); }

    // Of the filled part and the rest; at first the platform's for what is selected, and for
    // windows.
    void SetColors(COLORREF filled, COLORREF rest);

private:
    static constexpr UINT_PTR kPaintTimer = 1;

    RECT BarRect() const;
    int FilledPixels(const RECT& bar) const;
    void Follow();
    void ShowNow();
    void PaintPart(HDC context, const RECT& part, COLORREF back, COLORREF front) const;

    void OnPaint();
    int OnEraseBkgnd(SDC*) { return 1; }
    void OnSize(UINT how, int width, int height);
    void OnTimer(UINT_PTR id);
    void OnDestroy();
    LRESULT OnSetText(WPARAM, LPARAM);

    Status status_;
    COLORREF filled_ = ::GetSysColor(COLOR_HIGHLIGHT);
    COLORREF rest_ = ::GetSysColor(COLOR_WINDOW);
    int shown_ = -1;     // pixels filled when it was painted last
    DWORD painted_ = 0;  // when
    int isWaiting_ = 0;  // for the timer
};

#endif
