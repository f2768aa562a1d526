// SWndSpy: tells what windows there are: for those who look for a fault.
//
//     STrace(SWndSpy().Describe(GetDesktopWindow()));
//
// Threads: any for its own windows.
#ifndef BRCORE8_VIEWS_WND_SPY_H
#define BRCORE8_VIEWS_WND_SPY_H

#include <brcore8/window/wnd.h>

#include <vector>

class BRCORE8_API SWndSpy : public SObject {
    SDECLARE_CREATABLE(SWndSpy);

    struct Entry {
        HWND window;
        int depth;          // 0 for the window itself
        SString className;  // of the platform
        SString wrapper;    // class of its permanent wrapper; empty without one
        SString text;
        RECT place;  // on the screen
        DWORD style;
    };

    SWndSpy() noexcept = default;

    // The window and all below it, each before its own children; none for what is no window.
    std::vector<Entry> Look(HWND window) const;
    // A line a window: two blanks a level, class, wrapper, text, place, style.
    SString Describe(HWND window) const;
};

#endif
