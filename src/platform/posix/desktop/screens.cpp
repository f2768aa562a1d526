#include "platform/screens.h"

RECT brcore8::ScreenNear(const RECT&) noexcept {
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

RECT brcore8::RestoredPlace(HWND window) noexcept {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    return placement.rcNormalPosition;
}
