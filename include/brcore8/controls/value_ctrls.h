// Wrappers of the platform's controls for one value: sliders, spin buttons, scroll bars, dates and
// short films.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class (ERROR_CANNOT_FIND_WND_CLASS) or
// refuses; the other operations answer what the control does.
#ifndef BRCORE8_CONTROLS_VALUE_CTRLS_H
#define BRCORE8_CONTROLS_VALUE_CTRLS_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SSliderCtrl : public SWnd {
    SDECLARE_CREATABLE(SSliderCtrl);

public:
    // A "msctls_trackbar32" of the style TBS_...; moves come to the parent as WM_HSCROLL or
    // WM_VSCROLL.
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(TRACKBAR_CLASSA, nullptr, style, place, parent, id);
    }

    int GetPos() const { return Ask(TBM_GETPOS); }
    void SetPos(int position) { Ask(TBM_SETPOS, 1, position); }
    int GetRangeMin() const { return Ask(TBM_GETRANGEMIN); }
    int GetRangeMax() const { return Ask(TBM_GETRANGEMAX); }
    void SetRange(int lower, int upper) {
        Ask(TBM_SETRANGEMIN, 0, lower);
        Ask(TBM_SETRANGEMAX, 1, upper);
    }
    // The steps of the arrow keys and of the pages; the ones before.
    int GetLineSize() const { return Ask(TBM_GETLINESIZE); }
    int SetLineSize(int size) { return Ask(TBM_SETLINESIZE, 0, size); }
    int GetPageSize() const { return Ask(TBM_GETPAGESIZE); }
    int SetPageSize(int size) { return Ask(TBM_SETPAGESIZE, 0, size); }
    void SetTicFreq(int every) { Ask(TBM_SETTICFREQ, every); }
    int SetTic(int position) { return Ask(TBM_SETTIC, 0, position); }
    void ClearTics() { Ask(TBM_CLEARTICS, 1); }
    int GetNumTics() const { return Ask(TBM_GETNUMTICS); }
    void SetSelection(int from, int to) {
        Ask(TBM_SETSELSTART, 0, from);
        Ask(TBM_SETSELEND, 1, to);
    }
    RECT GetThumbRect() const;
};

class BRCORE8_API SSpinButtonCtrl : public SWnd {
    SDECLARE_CREATABLE(SSpinButtonCtrl);

public:
    // A "msctls_updown32" of the style UDS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(UPDOWN_CLASSA, nullptr, style, place, parent, id);
    }

    int GetPos() const { return Ask(UDM_GETPOS32); }
    int SetPos(int position) { return Ask(UDM_SETPOS32, 0, position); }
    void SetRange(int lower, int upper) { Ask(UDM_SETRANGE32, lower, upper); }
    void GetRange(int* lower, int* upper) const { Ask(UDM_GETRANGE32, lower, upper); }
    // 10 or 16.
    int GetBase() const { return Ask(UDM_GETBASE); }
    int SetBase(int base) { return Ask(UDM_SETBASE, base); }
    // The window whose number it turns; the one before.
    SWnd* GetBuddy() const { return FromHandle(Ask<HWND>(UDM_GETBUDDY)); }
    SWnd* SetBuddy(const SWnd* buddy) {
        return FromHandle(Ask<HWND>(UDM_SETBUDDY, buddy != nullptr ? buddy->GetHandle() : nullptr));
    }
};

class BRCORE8_API SScrollBar : public SWnd {
    SDECLARE_CREATABLE(SScrollBar);

public:
    // A "SCROLLBAR", SBS_HORZ or SBS_VERT; moves come to the parent as WM_HSCROLL or WM_VSCROLL.
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("SCROLLBAR", nullptr, style, place, parent, id);
    }

    int GetScrollPos() const;
    // The position before.
    int SetScrollPos(int position, int redraw = 1);
    void GetScrollRange(int* lower, int* upper) const;
    void SetScrollRange(int lower, int upper, int redraw = 1);
    // SIF_... in the record tell which of its fields are meant; its size is set here.
    int GetScrollInfo(SCROLLINFO* info, UINT mask = SIF_ALL) const;
    int SetScrollInfo(const SCROLLINFO& info, int redraw = 1);
    // ESB_...
    int EnableScrollBar(UINT arrows) { return Ask(SBM_ENABLE_ARROWS, arrows); }
};

class BRCORE8_API SDateTimeCtrl : public SWnd {
    SDECLARE_CREATABLE(SDateTimeCtrl);

public:
    // A "SysDateTimePick32" of the style DTS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(DATETIMEPICK_CLASSA, nullptr, style, place, parent, id);
    }

    // GDT_VALID, GDT_NONE when the user took the date away, GDT_ERROR.
    int GetTime(SYSTEMTIME* time) const { return Ask(DTM_GETSYSTEMTIME, 0, time); }
    // Null takes the date away (DTS_SHOWNONE).
    int SetTime(const SYSTEMTIME* time) {
        return Ask(DTM_SETSYSTEMTIME, time != nullptr ? GDT_VALID : GDT_NONE, time);
    }
    // GDTR_MIN, GDTR_MAX: which of the two records counts.
    DWORD GetRange(SYSTEMTIME* range) const { return Ask<DWORD>(DTM_GETRANGE, 0, range); }
    int SetRange(DWORD which, const SYSTEMTIME* range) { return Ask(DTM_SETRANGE, which, range); }
    // As the platform writes dates, such as "yyyy-MM-dd"; null is the user's own.
    int SetFormat(const char* format) { return Ask(DTM_SETFORMATA, 0, format); }
};

class BRCORE8_API SAnimateCtrl : public SWnd {
    SDECLARE_CREATABLE(SAnimateCtrl);

public:
    // A "SysAnimate32" of the style ACS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(ANIMATE_CLASSA, nullptr, style, place, parent, id);
    }

    // A film without sound, by its file or its resource. 0 when it is none.
    int Open(const char* file) { return Ask(ACM_OPENA, 0, file); }
    int Open(UINT resource) { return Open(MAKEINTRESOURCEA(resource)); }
    // Frames from the first to the last (-1), so many times (-1: until Stop).
    int Play(UINT from = 0, UINT to = static_cast<UINT>(-1), UINT times = static_cast<UINT>(-1)) {
        return Ask(ACM_PLAY, times, MAKELPARAM(from, to));
    }
    int Seek(UINT frame) { return Play(frame, frame, 1); }
    int Stop() { return Ask(ACM_STOP); }
    int Close() { return Open(static_cast<const char*>(nullptr)); }
};

#endif
