// Measures and colours of the desktop.

#include <brcore8/platform/posix/window_calls.h>

int GetSystemMetrics(int index) noexcept {
    switch (index) {
        case SM_CXSCREEN:
        case SM_CXVIRTUALSCREEN:
            return 1024;
        case SM_CYSCREEN:
        case SM_CYVIRTUALSCREEN:
            return 768;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return 16;
        case SM_CYMENU:
            return 20;
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CXEDGE:
        case SM_CYEDGE:
            return 2;
        case SM_CXICON:
        case SM_CYICON:
        case SM_CXCURSOR:
        case SM_CYCURSOR:
            return 32;
        case SM_CXSMICON:
        case SM_CYSMICON:
            return 16;
        case SM_CXDOUBLECLK:
        case SM_CYDOUBLECLK:
            return 4;
        default:
            return 0;
    }
}

DWORD GetSysColor(int index) noexcept {
    switch (index) {
        case COLOR_WINDOW:
        case COLOR_HIGHLIGHTTEXT:
        case COLOR_CAPTIONTEXT:
        case COLOR_BTNHIGHLIGHT:
            return RGB(255, 255, 255);
        case COLOR_BTNFACE:
        case COLOR_MENU:
        case COLOR_SCROLLBAR:
        case COLOR_ACTIVEBORDER:
        case COLOR_INACTIVEBORDER:
            return RGB(240, 240, 240);
        case COLOR_BTNSHADOW:
        case COLOR_APPWORKSPACE:
            return RGB(160, 160, 160);
        case COLOR_3DDKSHADOW:
            return RGB(105, 105, 105);
        case COLOR_3DLIGHT:
            return RGB(227, 227, 227);
        case COLOR_GRAYTEXT:
            return RGB(109, 109, 109);
        case COLOR_HIGHLIGHT:
        case COLOR_ACTIVECAPTION:
            return RGB(0, 90, 158);
        case COLOR_INACTIVECAPTION:
            return RGB(191, 205, 219);
        case COLOR_INFOBK:
            return RGB(255, 255, 225);
        default:
            return RGB(0, 0, 0);
    }
}

BOOL MessageBeep(UINT) noexcept {
    return 1;
}
