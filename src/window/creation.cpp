// How a wrapper meets its window: a hook of the thread sees each window before its first message.

#include <brcore8/core/exception.h>
#include <brcore8/core/module.h>
#include <brcore8/window/wnd.h>

#include "window/thread_state.h"

#include <utility>

namespace brcore8 {

namespace {

// A window is the expected one when one is expected, and when none is, but it is no child: a stray
// child window is not of the library's making.
LRESULT CALLBACK SeeCreation(int code, WPARAM wParam, LPARAM lParam) {
    WindowThread& thread = ThisWindowThread();
    const HHOOK hook = thread.creationHook;
    if (code != HCBT_CREATEWND) return CallNextHookEx(hook, code, wParam, lParam);

    const auto* const info = reinterpret_cast<const CBT_CREATEWNDA*>(lParam);
    const bool isChild = (static_cast<DWORD>(info->lpcs->style) & WS_CHILD) != 0;
    try {
        if (thread.pending != nullptr || !isChild) AttachExpected(reinterpret_cast<HWND>(wParam));
    } catch (...) {
        // No exception crosses the platform's frames: a window that cannot be attached is refused.
        return 1;
    }
    const LRESULT answer = CallNextHookEx(hook, code, wParam, lParam);
    if (thread.creationHook != nullptr)
        UnhookWindowsHookEx(std::exchange(thread.creationHook, nullptr));
    return answer;
}

}  // namespace

WindowThread& ThisWindowThread() noexcept {
    static thread_local WindowThread state;
    return state;
}

void ExpectWindow(SWnd* wrapper) {
    WindowThread& thread = ThisWindowThread();
    if (thread.creationHook == nullptr)
        thread.creationHook =
            SetWindowsHookExA(WH_CBT, &SeeCreation, nullptr, GetCurrentThreadId());
    if (thread.creationHook == nullptr) throw SEConstructor();
    thread.pending = wrapper;
}

void AttachExpected(HWND handle) {
    SWnd* const wrapper = std::exchange(ThisWindowThread().pending, nullptr);
    if (wrapper == nullptr) return;
    wrapper->Attach(handle);
    const auto ours = reinterpret_cast<LONG_PTR>(&SCallWndProc);
    const LONG_PTR old = SetWindowLongPtrA(handle, GWLP_WNDPROC, ours);
    if (old != ours) wrapper->SetSuperWndProc(reinterpret_cast<WNDPROC>(old));
}

bool WindowCame() noexcept {
    WindowThread& thread = ThisWindowThread();
    if (thread.creationHook != nullptr)
        UnhookWindowsHookEx(std::exchange(thread.creationHook, nullptr));
    if (thread.dialogHook != nullptr)
        UnhookWindowsHookEx(std::exchange(thread.dialogHook, nullptr));
    return std::exchange(thread.pending, nullptr) == nullptr;
}

bool RegisterWindowClasses() noexcept {
    struct Row {
        const char* name;
        UINT style;
        int background;  // a system colour plus one, or 0
    };
    constexpr UINT kRedraw = CS_VREDRAW | CS_HREDRAW;
    static constexpr Row rows[] = {
        {"S_Window", kRedraw | CS_DBLCLKS, 0},
        {"S_CliDrawWnd", kRedraw | CS_DBLCLKS, COLOR_WINDOW + 1},
        {"S_CtrlWnd", 0, COLOR_BTNFACE + 1},
        {"S_CtrlWndEx", CS_DBLCLKS, COLOR_BTNFACE + 1},
        {"S_NoCliDrawWnd", CS_DBLCLKS, 0},
        {"S_TabWnd", kRedraw | CS_DBLCLKS | CS_GLOBALCLASS, COLOR_WINDOW + 1},
    };
    static const bool registered = [] {
        for (const Row& row : rows) {
            WNDCLASSEXA info{};
            info.cbSize = sizeof info;
            info.style = row.style;
            info.lpfnWndProc = &DefWindowProcA;
            info.hInstance = SGetCoreInstance();
            info.hCursor = LoadCursorA(nullptr, IDC_ARROW);
            info.hbrBackground = reinterpret_cast<HBRUSH>(std::intptr_t{row.background});
            info.lpszClassName = row.name;
            if (RegisterClassExA(&info) == 0) return false;
        }
        return true;
    }();
    return registered;
}

}  // namespace brcore8
