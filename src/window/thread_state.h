// What the window layer keeps for each thread.
#ifndef BRCORE8_SRC_WINDOW_THREAD_STATE_H
#define BRCORE8_SRC_WINDOW_THREAD_STATE_H

#include <brcore8/platform/windows.h>

class SWnd;

namespace brcore8 {

struct WindowThread {
    MSG lastMessage{};        // what the innermost window procedure runs for
    SWnd* pending = nullptr;  // the wrapper whose window is being made
    HHOOK creationHook = nullptr;
    HHOOK dialogHook = nullptr;  // a second one while a dialog is made
};
WindowThread& ThisWindowThread() noexcept;

// --- Creation -----------------------------------------------------------------------------------

// From here the next window that this thread makes is `wrapper`'s. Throws SEConstructor when the
// hook is refused.
void ExpectWindow(SWnd* wrapper);
// After the creation: removes what is left of the hook. Whether the window came.
bool WindowCame() noexcept;
// Attaches the expected wrapper to its window, with the library's procedure.
void AttachExpected(HWND handle);

// The six classes of windows, made by the first call; false when one was refused.
bool RegisterWindowClasses() noexcept;

}  // namespace brcore8

#endif
