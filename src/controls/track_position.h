// Where the user holds the thumb of a window's own scroll bar.
#ifndef BRCORE8_SRC_CONTROLS_TRACK_POSITION_H
#define BRCORE8_SRC_CONTROLS_TRACK_POSITION_H

#include <brcore8/platform/windows.h>

namespace brcore8 {

// The message carries the lower 16 bits; one that does not carry those is a program's own, and
// meant as it says.
inline int TrackPosition(HWND window, int bar, UINT carried) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    const bool isKnown = ::GetScrollInfo(window, bar, &info) != 0;
    return isKnown && static_cast<WORD>(info.nTrackPos) == carried ? info.nTrackPos
                                                                   : static_cast<int>(carried);
}

}  // namespace brcore8

#endif
