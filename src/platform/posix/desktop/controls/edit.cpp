#include "platform/posix/desktop/controls/edit.h"

#include <algorithm>
#include <cstring>

namespace brcore8::desktop {

LRESULT Edit::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    for (const auto family : {&Edit::AnswerText, &Edit::AnswerEdit, &Edit::AnswerLines,
                              &Edit::AnswerLook, &Edit::AnswerInput})
        if (const auto answer = (this->*family)(message, wParam, lParam)) return *answer;
    return Default(message, wParam, lParam);
}

void Edit::Create() {
    const DWORD style = Style();
    if ((style & ES_MULTILINE) != 0) {
        if ((style & WS_VSCROLL) != 0) ChangeStyle(0, ES_AUTOVSCROLL);
        if ((style & WS_HSCROLL) != 0) ChangeStyle(0, ES_AUTOHSCROLL);
    }
    if ((style & ES_PASSWORD) != 0) password_ = '*';
    widths_.fill(-1);
    Remeasure();
    const Window* const window = Find(Handle());
    if (window != nullptr && !window->text.empty()) SetText(std::string(window->text).c_str());
}

std::optional<LRESULT> Edit::AnswerText(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Create();
            return 0;
        case WM_SETTEXT:
            SetText(reinterpret_cast<const char*>(lParam));
            return 1;
        case WM_GETTEXT:
            return GetText(wParam, reinterpret_cast<char*>(lParam));
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(text_.Size());
        case EM_GETSEL:
            return GetSelection(reinterpret_cast<DWORD*>(wParam), reinterpret_cast<DWORD*>(lParam));
        case EM_SETSEL:
            SetSelection(static_cast<int>(wParam), static_cast<int>(lParam));
            return 1;
        case EM_REPLACESEL:
            if (lParam != 0) ReplaceSelection(reinterpret_cast<const char*>(lParam), wParam != 0);
            return 1;
        case EM_CANUNDO:
            return text_.CanUndo();
        case EM_UNDO:
        case WM_UNDO:
            Undo();
            return 1;
        case EM_EMPTYUNDOBUFFER:
            text_.ForgetUndo();
            return 0;
        case WM_CUT:
            Copy();
            if (!IsReadOnly() && password_ == 0 && anchor_ != caret_) ReplaceSelection({}, true);
            return 0;
        case WM_COPY:
            Copy();
            return 0;
        case WM_PASTE:
            Paste();
            return 0;
        case WM_CLEAR:
            if (!IsReadOnly() && anchor_ != caret_) ReplaceSelection({}, true);
            return 0;
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Edit::AnswerEdit(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case EM_GETMODIFY:
            return isModified_;
        case EM_SETMODIFY:
            isModified_ = wParam != 0;
            return 0;
        case EM_LIMITTEXT:
            limit_ = wParam != 0 ? wParam : HasLines() ? 0xFFFFFFFF : 0x7FFFFFFE;
            return 0;
        case EM_GETLIMITTEXT:
            return static_cast<LRESULT>(limit_);
        case EM_SETREADONLY:
            ChangeStyle(ES_READONLY, wParam != 0 ? ES_READONLY : 0);
            Repaint();
            return 1;
        case EM_SETPASSWORDCHAR:
            return SetPasswordChar(static_cast<char>(wParam));
        case EM_GETPASSWORDCHAR:
            return static_cast<unsigned char>(password_);
        case EM_SETTABSTOPS:
            return SetTabStops(wParam, reinterpret_cast<const int*>(lParam));
        case EM_SETMARGINS:
            if ((wParam & EC_LEFTMARGIN) != 0) marginLeft_ = LOWORD(static_cast<WPARAM>(lParam));
            if ((wParam & EC_RIGHTMARGIN) != 0) marginRight_ = HIWORD(static_cast<WPARAM>(lParam));
            if (marginLeft_ == EC_USEFONTINFO) marginLeft_ = averageWidth_ / 2;
            if (marginRight_ == EC_USEFONTINFO) marginRight_ = averageWidth_ / 2;
            LayOut();
            return 0;
        case EM_GETMARGINS:
            return MAKELRESULT(static_cast<WORD>(marginLeft_), static_cast<WORD>(marginRight_));
        case EM_GETRECT:
            *reinterpret_cast<RECT*>(lParam) = FormatRect();
            return 1;
        case EM_SETRECT:
        case EM_SETRECTNP:
            if (!HasLines()) return 0;
            format_.reset();
            if (lParam != 0) format_ = *reinterpret_cast<const RECT*>(lParam);
            LayOut();
            return 0;
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Edit::AnswerLines(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto index = static_cast<std::int32_t>(wParam);
    const auto number = static_cast<std::size_t>(wParam);
    switch (message) {
        case EM_GETLINECOUNT:
            return static_cast<LRESULT>(text_.LineCount());
        case EM_LINEINDEX: {
            const std::size_t line = index == -1 ? text_.LineOf(caret_) : number;
            return line < text_.LineCount() ? static_cast<LRESULT>(text_.LineStart(line)) : -1;
        }
        case EM_LINEFROMCHAR:
            return static_cast<LRESULT>(text_.LineOf(index == -1 ? SelectionBegin() : number));
        case EM_LINELENGTH:
            return LineLength(wParam);
        case EM_GETLINE:
            return GetLine(HasLines() ? number : 0, reinterpret_cast<char*>(lParam));
        case EM_GETFIRSTVISIBLELINE:
            return HasLines() ? static_cast<LRESULT>(firstLine_)
                              : static_cast<LRESULT>(CharacterInLine(0, FormatRect().left));
        case EM_LINESCROLL:
            if (!HasLines()) return 0;
            ScrollTo(std::min(static_cast<std::int64_t>(firstLine_) + static_cast<int>(lParam),
                              LastFirstLine()),
                     index != 0 ? AcrossWithin(scrollX_ + std::int64_t{index} * averageWidth_)
                                : scrollX_);
            return 1;
        case EM_SCROLL:
            return HasLines() ? ScrollBy(wParam) : 0;
        case EM_SCROLLCARET:
            ScrollCaret();
            return 1;
        case EM_POSFROMCHAR: {
            if (number >= text_.Size()) return -1;
            const POINT place = PlaceOf(number);
            return MAKELONG(static_cast<WORD>(place.x), static_cast<WORD>(place.y));
        }
        case EM_CHARFROMPOS: {
            const POINT point = PointOf(lParam);
            const RECT client = ClientRect();
            if (!PtInRect(&client, point)) return -1;
            const std::size_t at = CharacterAt(point);
            return MAKELONG(at, text_.LineOf(at));
        }
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Edit::AnswerLook(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(wParam);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            LayOut();
            return 0;
        case WM_SETFONT:
            Default(WM_SETFONT, wParam, lParam);
            Remeasure();
            return 0;
        case WM_ENABLE:
            Repaint();
            return 0;
        case WM_STYLECHANGED:
            LayOut();
            return 0;
        case WM_VSCROLL:
            if (LOWORD(wParam) == SB_THUMBTRACK || LOWORD(wParam) == SB_THUMBPOSITION)
                ScrollTo(TrackOf(SB_VERT, HIWORD(wParam)), scrollX_);
            else
                ScrollBy(LOWORD(wParam));
            return 0;
        case WM_HSCROLL:
            ScrollAcross(wParam);
            return 0;
        case WM_MOUSEWHEEL: {
            if (!HasLines()) return std::nullopt;
            const int delta = static_cast<std::int16_t>(HIWORD(wParam));
            ScrollTo(static_cast<std::int64_t>(firstLine_) - delta * 3 / WHEEL_DELTA, scrollX_);
            return 0;
        }
        case WM_GETDLGCODE:
            // Only dialogs ask about a message.
            if (lParam != 0) isInDialog_ = true;
            return DialogCode();
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> Edit::AnswerInput(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CHAR:
            Type(static_cast<char>(wParam));
            return 0;
        case WM_KEYDOWN:
            return PressKey(wParam);
        case WM_LBUTTONDOWN:
            PressMouse(PointOf(lParam), (wParam & MK_SHIFT) != 0);
            return 0;
        case WM_LBUTTONDBLCLK:
            SelectWord(PointOf(lParam));
            return 0;
        case WM_MOUSEMOVE:
            if (GetCapture() == Handle()) DragMouse(PointOf(lParam));
            return 0;
        case WM_LBUTTONUP:
            if (GetCapture() == Handle()) ReleaseCapture();
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Focus(message == WM_SETFOCUS);
            return 0;
        default:
            return std::nullopt;
    }
}

LRESULT Edit::DialogCode() const noexcept {
    constexpr LRESULT kLine = DLGC_WANTARROWS | DLGC_WANTCHARS | DLGC_HASSETSEL;
    return HasLines() ? kLine | DLGC_WANTALLKEYS : kLine;
}

LRESULT Edit::GetText(WPARAM size, char* out) const {
    if (size == 0 || out == nullptr) return 0;
    const std::size_t length = std::min<std::size_t>(text_.Size(), size - 1);
    std::memcpy(out, text_.Get().data(), length);
    out[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT Edit::GetSelection(DWORD* begin, DWORD* end) const noexcept {
    const std::size_t from = SelectionBegin();
    const std::size_t to = SelectionEnd();
    if (begin != nullptr) *begin = static_cast<DWORD>(from);
    if (end != nullptr) *end = static_cast<DWORD>(to);
    return from > 0xFFFF || to > 0xFFFF ? -1 : MAKELONG(from, to);
}

// The first two bytes of the block tell how long it is; what is copied has no end mark.
LRESULT Edit::GetLine(std::size_t line, char* out) const {
    if (line >= text_.LineCount()) return 0;
    WORD size = 0;
    std::memcpy(&size, out, sizeof size);
    const std::size_t begin = text_.LineStart(line);
    const std::size_t length = std::min<std::size_t>(text_.LineEnd(line) - begin, size);
    std::memcpy(out, text_.Get().data() + begin, length);
    return static_cast<LRESULT>(length);
}

// Of the line that the character is in; -1 asks for what is not selected of the selection's lines.
LRESULT Edit::LineLength(WPARAM at) const noexcept {
    if (static_cast<std::int32_t>(at) == -1) {
        const std::size_t first = text_.LineOf(SelectionBegin());
        const std::size_t last = text_.LineOf(SelectionEnd());
        return static_cast<LRESULT>(SelectionBegin() - text_.LineStart(first) +
                                    text_.LineEnd(last) - SelectionEnd());
    }
    if (!HasLines()) return static_cast<LRESULT>(text_.Size());
    const std::size_t line = text_.LineOf(at);
    return at <= text_.Size() ? static_cast<LRESULT>(text_.LineEnd(line) - text_.LineStart(line))
                              : 0;
}

LRESULT Edit::SetPasswordChar(char c) {
    if (HasLines()) return 0;
    password_ = c;
    ChangeStyle(ES_PASSWORD, c != 0 ? ES_PASSWORD : 0);
    LayOut();
    return 1;
}

LRESULT Edit::SetTabStops(WPARAM count, const int* stops) {
    constexpr WPARAM kMost = 0xFFFF;
    if (!HasLines() || count > kMost || (count > 0 && stops == nullptr)) return 0;
    tabStops_.assign(stops, stops + count);
    LayOut();
    return 1;
}

LRESULT CALLBACK EditProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(handle, message, wParam, lParam, &MakeControl<Edit>);
}

}  // namespace brcore8::desktop
