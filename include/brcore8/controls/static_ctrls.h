// Texts and frames that are only looked at.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class or refuses.
#ifndef BRCORE8_CONTROLS_STATIC_CTRLS_H
#define BRCORE8_CONTROLS_STATIC_CTRLS_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SStaticCtrl : public SWnd {
    SDECLARE_CREATABLE(SStaticCtrl);

public:
    // A "STATIC" of the style SS_...
    using SWnd::Create;
    int Create(const char* text, DWORD style, const RECT& place, SWnd* parent, UINT id = 0xFFFF) {
        return SWnd::Create("STATIC", text, style, place, parent, id);
    }
};

// A text in colours of its own, cut with dots where it is too long; or a link, which is underlined
// and tells its parent STN_CLICKED. It draws itself and so looks alike everywhere.
class BRCORE8_API SStaticExCtrl : public SStaticCtrl {
    SDECLARE_CREATABLE(SStaticExCtrl);
    SDECLARE_MESSAGE_MAP(SStaticExCtrl);

public:
    SStaticExCtrl() noexcept = default;

    int Create(const char* text, DWORD style, const RECT& place, SWnd* parent, UINT id = 0xFFFF) {
        return SWnd::Create("S_CtrlWnd", text, style, place, parent, id);
    }

    void SetTextColor(COLORREF color);
    void SetBkColor(COLORREF color);
    // DT_LEFT, DT_CENTER or DT_RIGHT.
    void SetAlignment(UINT alignment);
    void SetLink(int on);
    int IsLink() const noexcept { return isLink_; }

private:
    void OnPaint();
    int OnEraseBkgnd(SDC*) { return 1; }
    void OnLButtonUp(UINT keys, int x, int y);
    LRESULT OnSetText(WPARAM, LPARAM);
    LRESULT OnSetFont(WPARAM font, LPARAM redraw);

    COLORREF text_ = ::GetSysColor(COLOR_WINDOWTEXT);
    COLORREF back_ = ::GetSysColor(COLOR_BTNFACE);
    UINT alignment_ = DT_LEFT;
    int isLink_ = 0;
    HFONT font_ = nullptr;
};

// A frame around a group of controls, with a title in its upper edge.
class BRCORE8_API SFrameCtrl : public SWnd {
    SDECLARE_CREATABLE(SFrameCtrl);
    SDECLARE_MESSAGE_MAP(SFrameCtrl);

public:
    SFrameCtrl() noexcept = default;

    using SWnd::Create;
    int Create(const char* text, DWORD style, const RECT& place, SWnd* parent, UINT id = 0xFFFF) {
        return SWnd::Create("S_CtrlWnd", text, style, place, parent, id);
    }
    // What lies inside of the frame and below the title, in client coordinates.
    RECT GetInside() const;

private:
    int TitleHeight() const noexcept;

    void OnPaint();
    LRESULT OnSetText(WPARAM, LPARAM);
    // The controls inside get the clicks.
    LRESULT OnNcHitTest(int, int) { return HTTRANSPARENT; }
};

#endif
