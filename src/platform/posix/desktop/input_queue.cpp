// How input becomes messages, at the moment when a thread takes it.

#include <brcore8/platform/posix/input_calls.h>

#include <algorithm>
#include <cstdlib>

#include "platform/posix/desktop/input.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

using Guard = std::unique_lock<std::recursive_mutex>;

bool IsMouseDown(UINT message) noexcept {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

// --- Who gets it ----------------------------------------------------------------------------

struct Target {
    HWND window = nullptr;
    LRESULT part = HTCLIENT;
};

LRESULT AskPart(HWND window, POINT at) {
    return SendMessageA(window, WM_NCHITTEST, 0,
                        MAKELPARAM(static_cast<WORD>(at.x), static_cast<WORD>(at.y)));
}

HWND TopWindowAt(POINT at) {
    const std::lock_guard guard(Lock());
    for (const Window* top = Root().firstChild; top != nullptr; top = top->below)
        if ((top->style & (WS_VISIBLE | WS_MINIMIZE)) == WS_VISIBLE && PtInRect(&top->rect, at))
            return top->handle;
    return nullptr;
}

// The windows of one tree that lie under the point, the innermost first. A disabled child leaves
// the mouse to its parent; what is in a disabled window is out of the mouse's reach.
std::vector<HWND> WindowsAt(HWND top, POINT at) {
    const std::lock_guard guard(Lock());
    std::vector<HWND> found;
    const Window* window = top != nullptr ? Find(top) : nullptr;
    while (window != nullptr) {
        found.push_back(window->handle);
        const POINT origin = ClientOrigin(*window);
        const RECT client{origin.x, origin.y, origin.x + Width(window->client),
                          origin.y + Height(window->client)};
        if ((window->style & WS_DISABLED) != 0 || !PtInRect(&client, at)) break;
        const POINT inside{at.x - origin.x, at.y - origin.y};
        const Window* child = window->firstChild;
        while (child != nullptr &&
               ((child->style & WS_VISIBLE) == 0 || (child->style & WS_DISABLED) != 0 ||
                !PtInRect(&child->rect, inside)))
            child = child->below;
        window = child;
    }
    std::reverse(found.begin(), found.end());
    return found;
}

Target FindTarget(const Input& input) {
    const HWND top = input.window != nullptr ? input.window : TopWindowAt(input.at);
    for (const HWND window : WindowsAt(top, input.at)) {
        const Window* const found = Find(window);
        if (found == nullptr) continue;
        if ((found->style & WS_DISABLED) != 0) return {window, HTERROR};
        // Other threads decide about their own windows.
        if (found->thread != &ThisThread()) return {};
        const LRESULT part = AskPart(window, input.at);
        if (part != HTTRANSPARENT) return {window, part};
    }
    return {};
}

// --- The mouse --------------------------------------------------------------------------------

// The second of two clicks near one another is another message.
bool IsDoubleClick(Thread& thread, const MSG& message, UINT down, bool removes) {
    const Click last = thread.click;
    const bool isDouble =
        last.window == message.hwnd && last.message == down &&
        message.time - last.time <= GetDoubleClickTime() &&
        std::abs(message.pt.x - last.at.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
        std::abs(message.pt.y - last.at.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
    if (removes)
        thread.click = isDouble ? Click{} : Click{message.hwnd, down, message.time, message.pt};
    return isDouble;
}

void TellParents(HWND window, UINT message, POINT at) {
    for (HWND child = window; child != nullptr;) {
        const Window* const found = Find(child);
        if (found == nullptr || IsTopLevel(*found) || (found->exStyle & WS_EX_NOPARENTNOTIFY) != 0)
            return;
        child = found->parent->handle;
        POINT inside = at;
        ScreenToClient(child, &inside);
        SendMessageA(child, WM_PARENTNOTIFY, MAKEWPARAM(message, 0),
                     MAKELPARAM(static_cast<WORD>(inside.x), static_cast<WORD>(inside.y)));
    }
}

// A click into a window that is not the active one may activate it; false when it eats the click.
bool ActivateByClick(const Target& target, UINT message) {
    const HWND top = GetAncestor(target.window, GA_ROOT);
    if (top == nullptr || top == GetActiveWindow()) return true;
    const LRESULT answer =
        SendMessageA(target.window, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top),
                     MAKELPARAM(static_cast<WORD>(target.part), message));
    if (answer == MA_ACTIVATE || answer == MA_ACTIVATEANDEAT || answer == 0) ActivateTop(top, true);
    return answer != MA_ACTIVATEANDEAT && answer != MA_NOACTIVATEANDEAT;
}

void PressForThread(Thread& thread, BYTE key, bool isDown) noexcept {
    BYTE& state = thread.keys[key];
    if (isDown && (state & 0x80) == 0) state ^= 1;
    state = static_cast<BYTE>(isDown ? state | 0x80 : state & 0x7F);
}

// What the message becomes in the part of the window.
UINT InPart(UINT message, LRESULT part, bool isDouble) noexcept {
    if (isDouble) message += WM_LBUTTONDBLCLK - WM_LBUTTONDOWN;
    return part == HTCLIENT ? message : message - WM_MOUSEMOVE + WM_NCMOUSEMOVE;
}

LPARAM PackPoint(POINT at) noexcept {
    return MAKELPARAM(static_cast<WORD>(at.x), static_cast<WORD>(at.y));
}

// Builds the message; false when there is nobody for it. `isEaten` when it may not be seen, which
// a window that the click would activate says only when it is removed.
bool MakeMouse(Thread& thread, const Input& input, const Target& target, MSG& out, bool removes,
               bool& isEaten) {
    if (target.window == nullptr) return false;
    const bool isCaptured = target.window == thread.capture;
    out = {target.window, input.message, 0, 0, input.time, input.at};
    if (input.message == WM_MOUSEWHEEL) {
        out.hwnd = thread.focus != nullptr ? thread.focus : target.window;
        out.wParam = MAKEWPARAM(MouseKeys(thread), static_cast<WORD>(input.wheel));
        out.lParam = PackPoint(input.at);
        return true;
    }
    const Window* const window = Find(target.window);
    const bool wantsDouble =
        target.part != HTCLIENT || (window != nullptr && window->windowClass != nullptr &&
                                    (window->windowClass->info.style & CS_DBLCLKS) != 0);
    const bool isDown = IsMouseDown(input.message);
    const bool isDouble =
        isDown && IsDoubleClick(thread, out, input.message, removes) && wantsDouble;
    out.message = InPart(input.message, target.part, isDouble);
    if (target.part == HTCLIENT) {
        POINT inside = input.at;
        ScreenToClient(target.window, &inside);
        out.wParam = MouseKeys(thread);
        out.lParam = PackPoint(inside);
    } else {
        out.wParam = static_cast<WPARAM>(target.part);
        out.lParam = PackPoint(input.at);
    }
    isEaten = target.part == HTERROR || target.part == HTNOWHERE;
    if (!removes || isCaptured) return true;
    if (isDown && target.part != HTERROR) {
        TellParents(target.window, input.message, input.at);
        if (!ActivateByClick(target, input.message)) isEaten = true;
    }
    SendMessageA(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window),
                 MAKELPARAM(static_cast<WORD>(target.part), input.message));
    return IsWindow(target.window);
}

// --- Keys -------------------------------------------------------------------------------------

BYTE PlainKey(BYTE key) noexcept {
    if (key == VK_LSHIFT || key == VK_RSHIFT) return VK_SHIFT;
    if (key == VK_LCONTROL || key == VK_RCONTROL) return VK_CONTROL;
    return key == VK_LMENU || key == VK_RMENU ? VK_MENU : key;
}

// With Alt held and not Ctrl, and for F10 and Alt itself, keys speak to menus; so they do where no
// window has the focus. Alt that comes up after another key is a key like any other.
bool IsSystemKey(const Thread& thread, BYTE key, bool isDown) noexcept {
    const bool alt = (thread.keys[VK_MENU] & 0x80) != 0;
    const bool control = (thread.keys[VK_CONTROL] & 0x80) != 0;
    if (thread.focus == nullptr || key == VK_F10) return true;
    if (key == VK_MENU) return !control && (isDown || thread.isAltAlone);
    return alt && !control;
}

bool MakeKey(Thread& thread, const Input& input, MSG& out, bool removes) {
    const HWND window = thread.focus != nullptr ? thread.focus : thread.active;
    if (window == nullptr) return false;
    const BYTE key = PlainKey(input.key);
    const bool isDown = input.message == WM_KEYDOWN;
    const bool wasDown = (thread.keys[key] & 0x80) != 0;
    const bool isSystem = IsSystemKey(thread, key, isDown);
    UINT message = input.message;
    if (isSystem) message = isDown ? WM_SYSKEYDOWN : WM_SYSKEYUP;
    const bool isAltDown = key != VK_MENU ? (thread.keys[VK_MENU] & 0x80) != 0 : isDown;
    const DWORD bits = 1u | static_cast<DWORD>(input.scan & 0xFF) << 16 |
                       (input.isExtended ? 1u << 24 : 0) | (isAltDown && isSystem ? 1u << 29 : 0) |
                       (wasDown ? 1u << 30 : 0) | (isDown ? 0 : 1u << 31);
    out = {window, message, key, static_cast<LPARAM>(bits), input.time, input.at};
    GetCursorPos(&out.pt);
    if (!removes) return true;
    thread.isAltAlone = key == VK_MENU && isDown ? true : key == VK_MENU && thread.isAltAlone;
    PressForThread(thread, input.key, isDown);
    if (key != input.key) PressForThread(thread, key, isDown);
    thread.text = input.text;
    thread.knowsText = input.knowsText;
    return true;
}

// The index of the next input after `number`, or its size.
std::size_t Next(const Thread& thread, std::uint64_t number) noexcept {
    std::size_t at = 0;
    while (at < thread.input.size() && thread.input[at].number <= number)
        ++at;
    return at;
}

void Drop(Thread& thread, std::uint64_t number) {
    std::erase_if(thread.input, [=](const Input& each) { return each.number == number; });
}

}  // namespace

WPARAM MouseKeys(const Thread& thread) noexcept {
    const auto flag = [&](int key, int bit) { return (thread.keys[key] & 0x80) != 0 ? bit : 0; };
    return static_cast<WPARAM>(flag(VK_LBUTTON, MK_LBUTTON) | flag(VK_RBUTTON, MK_RBUTTON) |
                               flag(VK_MBUTTON, MK_MBUTTON) | flag(VK_SHIFT, MK_SHIFT) |
                               flag(VK_CONTROL, MK_CONTROL));
}

bool TakeInput(Thread& thread, Guard& lock, MSG& out, HWND window, UINT first, UINT last,
               bool remove) {
    std::uint64_t number = 0;
    for (;;) {
        const std::size_t at = Next(thread, number);
        if (at == thread.input.size()) return false;
        const Input input = thread.input[at];
        number = input.number;
        const bool isKey = input.message == WM_KEYDOWN || input.message == WM_KEYUP;

        // First as if it stayed: the filter may not want it.
        MSG message{};
        bool isEaten = false;
        lock.unlock();
        Target target{isKey ? nullptr : thread.capture, HTCLIENT};
        if (!isKey && target.window == nullptr) target = FindTarget(input);
        const bool isGood = isKey ? MakeKey(thread, input, message, false)
                                  : MakeMouse(thread, input, target, message, false, isEaten);
        lock.lock();
        if (!isGood) {
            Drop(thread, number);
            continue;
        }
        if (!Matches(message, window, first, last)) continue;
        // What nobody may see goes, whoever looks.
        if (!remove && !isEaten) {
            out = message;
            return true;
        }
        Drop(thread, number);
        lock.unlock();
        if (!isKey && input.key != 0) PressForThread(thread, input.key, IsMouseDown(input.message));
        const bool isThere = isKey ? MakeKey(thread, input, message, true)
                                   : MakeMouse(thread, input, target, message, true, isEaten);
        lock.lock();
        if (!isThere || isEaten) continue;
        out = message;
        return true;
    }
}

}  // namespace brcore8::desktop
