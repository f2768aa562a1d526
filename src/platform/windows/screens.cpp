#include "platform/screens.h"

RECT brcore8::ScreenNear(const RECT& place) noexcept {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

RECT brcore8::RestoredPlace(HWND window) noexcept {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    RECT place = placement.rcNormalPosition;
    // It counts from the corner of the part that windows may take.
    const RECT work = ScreenNear(place);
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    OffsetRect(&place, work.left - info.rcMonitor.left, work.top - info.rcMonitor.top);
    return place;
}
