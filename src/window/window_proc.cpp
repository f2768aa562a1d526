// From the platform's window procedure to the handler of a message.

#include <brcore8/core/exception.h>
#include <brcore8/window/wnd.h>

#include "routing/routing.h"
#include "window/thread_state.h"

#include <cstdio>
#include <utility>

namespace {

// The thread's message while a window procedure runs for it.
class CurrentMessage {
public:
    CurrentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
        : saved_(std::exchange(brcore8::ThisWindowThread().lastMessage,
                               MSG{window, message, wParam, lParam, GetTime(), GetPoint()})) {}
    CurrentMessage(const CurrentMessage&) = delete;
    CurrentMessage& operator=(const CurrentMessage&) = delete;
    ~CurrentMessage() { brcore8::ThisWindowThread().lastMessage = saved_; }

private:
    static DWORD GetTime() noexcept { return static_cast<DWORD>(GetMessageTime()); }
    static POINT GetPoint() noexcept {
        const DWORD packed = GetMessagePos();
        return {static_cast<std::int16_t>(LOWORD(packed)),
                static_cast<std::int16_t>(HIWORD(packed))};
    }

    MSG saved_;
};

void ShowEscape(UINT message) noexcept {
    char text[96];
    std::snprintf(text, sizeof text, "Exception in SCallWndProc() while processing message %d",
                  static_cast<int>(message));
    SExceptionDialog(".\\src\\window", 376, text);
}

}  // namespace

LRESULT CALLBACK SCallWndProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    SWnd* const wrapper = SWnd::FromHandlePermanent(handle);
    return wrapper != nullptr ? wrapper->CallWndProc(message, wParam, lParam)
                              : DefWindowProcA(handle, message, wParam, lParam);
}

LRESULT SWnd::CallWndProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const CurrentMessage current(handle_, message, wParam, lParam);
    try {
        return WindowProc(message, wParam, lParam);
    } catch (...) {
        brcore8::TellOfEscape(message, 0);
        ShowEscape(message);
        return message == WM_CREATE ? -1 : 0;
    }
}

const MSG& SWnd::GetLastMessage() {
    return brcore8::ThisWindowThread().lastMessage;
}

LRESULT SWnd::Default() {
    const MSG& current = GetLastMessage();
    return DefWindowProc(current.message, current.wParam, current.lParam);
}

LRESULT SWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (!OnWndMsg(message, wParam, lParam, &result))
        result = DefWindowProc(message, wParam, lParam);
    return result;
}

// --- Commands and notifications -----------------------------------------------------------------

int SWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    UINT code = HIWORD(wParam);
    if (lParam != 0) {
        LRESULT ignored = 0;
        if (ReflectLastMsg(reinterpret_cast<HWND>(lParam), &ignored)) return 1;
    } else {
        code = 0;
    }
    return id != 0 ? OnCmdMsg(id, static_cast<int>(code), nullptr, nullptr) : 0;
}

int SWnd::OnNotify(WPARAM, NMHDR* header, LRESULT* result) {
    if (ReflectLastMsg(header->hwndFrom, result)) return 1;
    S_NOTIFICATION note{result, header};
    const UINT packed = (header->code & 0xFFFF) | static_cast<UINT>(WM_NOTIFY) << 16;
    return OnCmdMsg(static_cast<UINT>(header->idFrom), static_cast<int>(packed), &note, nullptr);
}

int SWnd::ReflectLastMsg(HWND child, LRESULT* result) {
    SWnd* const wrapper = FromHandlePermanent(child);
    return wrapper != nullptr ? wrapper->SendChildNotifyLastMsg(result) : 0;
}

int SWnd::SendChildNotifyLastMsg(LRESULT* result) {
    const MSG current = GetLastMessage();
    return OnChildNotify(current.message, current.wParam, current.lParam, result);
}

int SWnd::OnChildNotify(UINT, WPARAM, LPARAM, LRESULT*) {
    return 0;
}
