// The keyboard in dialogs.

#include <algorithm>
#include <cctype>
#include <string>

#include "platform/posix/desktop/dialogs/dialog.h"
#include "platform/posix/desktop/menus/menu_view.h"

namespace brcore8::desktop {

namespace {

constexpr UINT kSetStyle = 0x00F4;      // BM_SETSTYLE
constexpr UINT kClick = 0x00F5;         // BM_CLICK
constexpr UINT kSetSelection = 0x00B1;  // EM_SETSEL
constexpr WPARAM kPlainButton = 0, kDefaultButton = 1;

bool CanBeUsed(const Window& window) noexcept {
    return (window.style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

LRESULT CodeOf(HWND control, const MSG* message = nullptr) {
    return SendMessageA(control, WM_GETDLGCODE, message != nullptr ? message->wParam : 0,
                        reinterpret_cast<LPARAM>(message));
}

bool HasStyle(HWND control, DWORD bits) noexcept {
    return (static_cast<DWORD>(GetWindowLongA(control, GWL_STYLE)) & bits) == bits;
}

bool CanBeUsed(HWND control) noexcept {
    return HasStyle(control, WS_VISIBLE) && !HasStyle(control, WS_DISABLED);
}

// The control of the list that the window is, or is in; the list's size when there is none.
std::size_t PlaceOf(const std::vector<HWND>& controls, HWND window) noexcept {
    return static_cast<std::size_t>(
        std::find_if(controls.begin(), controls.end(),
                     [=](HWND each) { return each == window || IsChild(each, window); }) -
        controls.begin());
}

void SetDefaultLook(HWND button, bool isDefault) {
    if (button == nullptr) return;
    const LRESULT code = CodeOf(button);
    const LRESULT other = isDefault ? DLGC_UNDEFPUSHBUTTON : DLGC_DEFPUSHBUTTON;
    if ((code & other) != 0)
        SendMessageA(button, kSetStyle, isDefault ? kDefaultButton : kPlainButton, 1);
}

// The button with the default's look: the one that has the focus, else the dialog's default.
void MoveDefaultLook(HWND dialog, HWND focused) {
    const auto answer = static_cast<DWORD>(SendMessageA(dialog, DM_GETDEFID, 0, 0));
    const HWND own = HIWORD(answer) == DC_HASDEFID ? GetDlgItem(dialog, LOWORD(answer)) : nullptr;
    const bool isButton = (CodeOf(focused) & (DLGC_UNDEFPUSHBUTTON | DLGC_DEFPUSHBUTTON)) != 0;
    const HWND wanted = isButton ? focused : own;
    for (const HWND each : ControlsOf(dialog))
        if (each != wanted && IsWindow(each)) SetDefaultLook(each, false);
    if (IsWindow(wanted)) SetDefaultLook(wanted, true);
}

char Lower(WPARAM character) noexcept {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

std::string TextOf(HWND control) {
    std::string text(static_cast<std::size_t>(std::max(GetWindowTextLengthA(control), 0)), '\0');
    const int length = GetWindowTextA(control, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    return text;
}

// The control whose letter it is, from the one behind the focus on.
bool FollowLetter(HWND dialog, char letter) {
    const std::vector<HWND> controls = ControlsOf(dialog);
    const std::size_t count = controls.size();
    const std::size_t focused = PlaceOf(controls, GetFocus());
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t at = (focused % count + step) % count;
        const HWND control = controls[at];
        if (!CanBeUsed(control)) continue;
        const LRESULT code = CodeOf(control);
        if ((code & DLGC_WANTCHARS) != 0 || MnemonicOf(TextOf(control)) != letter) continue;
        if ((code & DLGC_BUTTON) != 0) {
            GoTo(dialog, control);
            SendMessageA(control, kClick, 0, 0);
            return true;
        }
        // A label's letter leads to the control behind it.
        std::size_t target = at;
        while ((CodeOf(controls[target]) & DLGC_STATIC) != 0 && target + 1 < count)
            ++target;
        if (!CanBeUsed(controls[target])) continue;
        GoTo(dialog, controls[target]);
        return true;
    }
    return false;
}

void Arrow(HWND dialog, HWND from, bool isBack) {
    const HWND next = GetNextDlgGroupItem(dialog, from, isBack);
    if (next == nullptr || next == from) return;
    GoTo(dialog, next);
    if (IsWindow(next) && (CodeOf(next) & DLGC_RADIOBUTTON) != 0 &&
        SendMessageA(next, BM_GETCHECK, 0, 0) == 0)
        SendMessageA(next, kClick, 0, 0);
}

// Whether the key was the dialog's.
bool DoKey(HWND dialog, const MSG& message) {
    const LRESULT code = CodeOf(message.hwnd, &message);
    if ((code & DLGC_WANTMESSAGE) != 0) return false;
    switch (message.wParam) {
        case VK_TAB:
            if ((code & DLGC_WANTTAB) != 0) return false;
            SendMessageA(dialog, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0, 0);
            return true;
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
            if ((code & DLGC_WANTARROWS) != 0) return false;
            Arrow(dialog, GetFocus(), message.wParam == VK_LEFT || message.wParam == VK_UP);
            return true;
        case VK_ESCAPE:
        case VK_CANCEL:
            Press(dialog, IDCANCEL);
            return true;
        case VK_RETURN:
            PressDefault(dialog);
            return true;
        default:
            return false;
    }
}

bool DoCharacter(HWND dialog, const MSG& message) {
    if (message.wParam <= ' ') return false;
    if (message.message == WM_CHAR &&
        (CodeOf(message.hwnd, &message) & (DLGC_WANTCHARS | DLGC_WANTMESSAGE)) != 0)
        return false;
    return FollowLetter(dialog, Lower(message.wParam)) || message.message == WM_CHAR;
}

}  // namespace

std::vector<HWND> ControlsOf(HWND dialog) {
    std::vector<HWND> controls;
    const Window* const top = Find(dialog);
    const Window* at = top != nullptr ? top->firstChild : nullptr;
    while (at != nullptr) {
        const bool isGroup = (at->exStyle & WS_EX_CONTROLPARENT) != 0;
        if (!isGroup) controls.push_back(at->handle);
        if (isGroup && CanBeUsed(*at) && at->firstChild != nullptr) {
            at = at->firstChild;
            continue;
        }
        while (at != top && at->below == nullptr)
            at = at->parent;
        if (at == top) break;
        at = at->below;
    }
    return controls;
}

void GoTo(HWND dialog, HWND control) {
    if (!IsWindow(control)) return;
    if ((CodeOf(control) & DLGC_HASSETSEL) != 0) SendMessageA(control, kSetSelection, 0, -1);
    SetFocus(control);
    if (IsWindow(dialog) && IsWindow(control)) MoveDefaultLook(dialog, control);
}

void GoToFirst(HWND dialog) {
    HWND first = GetNextDlgTabItem(dialog, nullptr, 0);
    if (first == nullptr) first = GetNextDlgGroupItem(dialog, nullptr, 0);
    if (first != nullptr) GoTo(dialog, first);
}

bool Press(HWND dialog, int id) {
    const HWND button = GetDlgItem(dialog, id);
    if (button != nullptr && !IsWindowEnabled(button)) return false;
    SendMessageA(dialog, WM_COMMAND, static_cast<WORD>(id), reinterpret_cast<LPARAM>(button));
    return true;
}

void PressDefault(HWND dialog) {
    const HWND focus = GetFocus();
    const LRESULT code = focus != nullptr && IsChild(dialog, focus) ? CodeOf(focus) : 0;
    if ((code & DLGC_DEFPUSHBUTTON) != 0) {
        Press(dialog, GetDlgCtrlID(focus));
        return;
    }
    const auto answer = static_cast<DWORD>(SendMessageA(dialog, DM_GETDEFID, 0, 0));
    Press(dialog, HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : IDOK);
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) noexcept {
    std::vector<HWND> stops;
    const std::vector<HWND> controls = ControlsOf(dialog);
    const std::size_t from = PlaceOf(controls, control);
    const std::size_t count = controls.size();
    if (control != nullptr && from == count) return nullptr;
    const std::size_t begin = control != nullptr ? from : previous ? 0 : count - 1;
    for (std::size_t step = 1; step <= count; ++step) {
        const HWND each = controls[(begin + (previous ? count - step : step)) % count];
        if (HasStyle(each, WS_TABSTOP) && CanBeUsed(each)) return each;
    }
    return control;
}

HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) noexcept {
    const std::vector<HWND> controls = ControlsOf(dialog);
    const std::size_t count = controls.size();
    if (count == 0) return nullptr;
    std::size_t from = PlaceOf(controls, control);
    if (control != nullptr && from == count) return nullptr;
    if (control == nullptr) from = 0;
    std::size_t first = from;
    while (first > 0 && !HasStyle(controls[first], WS_GROUP))
        --first;
    std::size_t last = from + 1;
    while (last < count && !HasStyle(controls[last], WS_GROUP))
        ++last;
    const std::size_t size = last - first;
    for (std::size_t step = control != nullptr ? 1 : 0; step <= size; ++step) {
        const std::size_t shift = previous ? size - step % size : step;
        const HWND each = controls[first + (from - first + shift) % size];
        if (CanBeUsed(each)) return each;
    }
    return control;
}

BOOL IsDialogMessageA(HWND dialog, MSG* message) {
    if (Find(dialog) == nullptr || (message->hwnd != dialog && !IsChild(dialog, message->hwnd)))
        return 0;
    bool isDone = false;
    if (message->message == WM_KEYDOWN) isDone = DoKey(dialog, *message);
    if (message->message == WM_CHAR || message->message == WM_SYSCHAR)
        isDone = DoCharacter(dialog, *message);
    if (isDone) return 1;
    TranslateMessage(message);
    DispatchMessageA(message);
    return 1;
}
