// Keys and mouse in an edit field.

#include <brcore8/platform/posix/input_calls.h>

#include <algorithm>

#include "platform/posix/desktop/controls/edit.h"
#include "platform/posix/desktop/dialogs/dialog.h"

namespace brcore8::desktop {

namespace {

bool IsDown(int key) noexcept {
    return GetKeyState(key) < 0;
}

}  // namespace

// A field of many lines asks a dialog for all keys: those that the dialog cannot do without are
// given back. With Ctrl they are the field's.
bool Edit::IsDialogKey(WPARAM key) const noexcept {
    if (!isInDialog_ || !HasLines() || IsDown(VK_CONTROL)) return false;
    return key == VK_TAB || key == VK_ESCAPE ||
           (key == VK_RETURN && (Style() & ES_WANTRETURN) == 0);
}

bool Edit::PressForDialog(WPARAM key) {
    if (!IsDialogKey(key)) return false;
    const HWND dialog = Parent();
    if (key == VK_TAB)
        SendMessageA(dialog, WM_NEXTDLGCTL, IsDown(VK_SHIFT), 0);
    else if (key == VK_ESCAPE)
        PostMessageA(dialog, WM_CLOSE, 0, 0);
    else
        PressDefault(dialog);
    return true;
}

LRESULT Edit::PressKey(WPARAM key) {
    if (PressForDialog(key)) return 0;
    const bool isShift = IsDown(VK_SHIFT);
    const bool isControl = IsDown(VK_CONTROL);
    switch (key) {
        case VK_DELETE:
            if (IsReadOnly()) return 0;
            if (isShift && !isControl)
                SendMessageA(Handle(), WM_CUT, 0, 0);
            else
                DeleteOn();
            return 0;
        case VK_INSERT:
            if (isShift && !IsReadOnly())
                SendMessageA(Handle(), WM_PASTE, 0, 0);
            else if (isControl)
                SendMessageA(Handle(), WM_COPY, 0, 0);
            return 0;
        default:
            return MoveByKey(key, isControl) ? 0 : Default(WM_KEYDOWN, key, 0);
    }
}

bool Edit::MoveByKey(WPARAM key, bool isWord) {
    const std::size_t line = text_.LineOf(caret_);
    switch (key) {
        case VK_LEFT:
            MoveTo(isWord ? text_.WordBegin(caret_) : text_.Previous(caret_));
            return true;
        case VK_RIGHT:
            MoveTo(isWord ? text_.WordEnd(caret_) : text_.Next(caret_));
            return true;
        case VK_HOME:
            MoveTo(isWord ? 0 : text_.LineStart(line));
            return true;
        case VK_END:
            MoveTo(isWord ? text_.Size() : text_.LastPlace(line));
            return true;
        case VK_UP:
        case VK_DOWN:
            if (HasLines())
                MoveLines(key == VK_UP ? -1 : 1);
            else
                MoveTo(key == VK_UP ? text_.Previous(caret_) : text_.Next(caret_));
            return true;
        case VK_PRIOR:
        case VK_NEXT:
            if (HasLines()) MoveLines((key == VK_PRIOR ? -1 : 1) * VisibleLines());
            return true;
        default:
            return false;
    }
}

// The selection grows while Shift is down.
void Edit::MoveTo(std::size_t at) {
    Select(IsDown(VK_SHIFT) ? anchor_ : at, at);
    ScrollCaret();
}

void Edit::MoveLines(std::int64_t lines) {
    const std::size_t line = text_.LineOf(caret_);
    const auto last = static_cast<std::int64_t>(text_.LineCount()) - 1;
    const std::int64_t target =
        std::clamp<std::int64_t>(static_cast<std::int64_t>(line) + lines, 0, last);
    MoveTo(CharacterInLine(static_cast<std::size_t>(target), PlaceOf(caret_).x));
}

// --- The mouse ----------------------------------------------------------------------------------

void Edit::PressMouse(POINT point, bool extends) {
    SetFocus(Handle());
    if (!IsAlive()) return;
    SetCapture(Handle());
    const std::size_t at = CharacterAt(point);
    Select(extends ? anchor_ : at, at);
    ScrollCaret();
}

void Edit::DragMouse(POINT point) {
    Select(anchor_, CharacterAt(point));
    ScrollCaret();
}

void Edit::SelectWord(POINT point) {
    const std::size_t at = CharacterAt(point);
    const std::size_t end = text_.WordEnd(at);
    Select(text_.WordBegin(std::min(at + 1, end)), end);
}

void Edit::Focus(bool gains) {
    hasFocus_ = gains;
    lead_ = 0;
    if (anchor_ != caret_ && (Style() & ES_NOHIDESEL) == 0) Repaint();
    if (gains) {
        CreateCaret(Handle(), nullptr, 1, lineHeight_);
        PlaceCaret();
        ShowCaret(Handle());
    } else {
        DestroyCaret();
    }
    Notify(gains ? EN_SETFOCUS : EN_KILLFOCUS);
}

void Edit::PlaceCaret() const {
    if (!hasFocus_) return;
    const POINT place = PlaceOf(caret_);
    SetCaretPos(place.x, place.y);
}

}  // namespace brcore8::desktop
