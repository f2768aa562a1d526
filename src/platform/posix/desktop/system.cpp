// Measures and colours of the desktop.

#include <brcore8/platform/posix/desktop_testing.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/window_calls.h>

#include <atomic>

#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/fonts.h"

using brcore8::desktop::Scaled;

namespace {

// Of the desktop in memory.
constinit std::atomic<unsigned> g_dpi = brcore8::desktop::kUsualDpi;

SIZE ScreenSize() noexcept {
    const brcore8::desktop::Screen* const screen = brcore8::desktop::TheScreen();
    return screen != nullptr ? screen->GetSize() : SIZE{1024, 768};
}

}  // namespace

UINT GetDpiForSystem() noexcept {
    const brcore8::desktop::Screen* const screen = brcore8::desktop::TheScreen();
    return screen != nullptr ? screen->GetDpi() : g_dpi.load();
}

void SSetDesktopDpi(unsigned dpi) noexcept {
    g_dpi = brcore8::desktop::UsableDpi(dpi);
}

int brcore8::desktop::Scaled(int pixels) noexcept {
    return MulDiv(pixels, static_cast<int>(GetDpiForSystem()), kUsualDpi);
}

UINT GetDpiForWindow(HWND window) noexcept {
    return IsWindow(window) ? GetDpiForSystem() : 0;
}

int GetSystemMetrics(int index) noexcept {
    switch (index) {
        case SM_CXSCREEN:
        case SM_CXVIRTUALSCREEN:
            return ScreenSize().cx;
        case SM_CYSCREEN:
        case SM_CYVIRTUALSCREEN:
            return ScreenSize().cy;
        case SM_CYCAPTION:
            return Scaled(20);
        case SM_CXFRAME:
        case SM_CYFRAME:
            return Scaled(4);
        case SM_CXDLGFRAME:
        case SM_CYDLGFRAME:
            return 3;
        case SM_CXMIN:
            return Scaled(112);
        case SM_CYMIN:
            return Scaled(28);
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return Scaled(16);
        case SM_CYMENU:
            return Scaled(20);
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
            return Scaled(32);
        case SM_CXSMICON:
        case SM_CYSMICON:
            return Scaled(16);
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
        case COLOR_BACKGROUND:
            return RGB(58, 110, 165);
        case COLOR_INACTIVECAPTIONTEXT:
            return RGB(67, 78, 84);
        case COLOR_INFOBK:
            return RGB(255, 255, 225);
        default:
            return RGB(0, 0, 0);
    }
}

BOOL MessageBeep(UINT) noexcept {
    return 1;
}
