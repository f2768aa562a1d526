// How controls that handle the mouse take the focus.
#ifndef BRCORE8_SRC_CONTROLS_TAKE_FOCUS_H
#define BRCORE8_SRC_CONTROLS_TAKE_FOCUS_H

#include <brcore8/window/wnd.h>

namespace brcore8 {

// Whether the control is still there: who loses the focus may do anything, also to the control.
inline bool TakeFocus(SWnd& control) {
    const HWND handle = control.GetHandle();
    control.SetFocus();
    return SWnd::FromHandlePermanent(handle) == &control;
}

}  // namespace brcore8

#endif
