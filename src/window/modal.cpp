#include <brcore8/window/wnd.h>

#include "routing/routing.h"

int SWnd::RunModalLoop() {
    const HWND handle = handle_;
    bits_ |= kInModalLoop;
    while (ContinueModal()) {
        int quitCode = 0;
        if (!brcore8::PumpOneMessage(&quitCode)) {
            // The quit message ends the outer loop as well.
            PostQuitMessage(quitCode);
            if (FromHandlePermanent(handle) == this) bits_ &= ~kInModalLoop;
            return -1;
        }
        if (FromHandlePermanent(handle) != this) return -1;
    }
    return modalResult_;
}

int SWnd::ContinueModal() {
    return (bits_ & kInModalLoop) != 0;
}

void SWnd::EndModalLoop(int result) {
    modalResult_ = result;
    if (!ContinueModal()) return;
    bits_ &= ~kInModalLoop;
    // The loop may be waiting for a message.
    PostMessage(kWakeUpMessage);
}
