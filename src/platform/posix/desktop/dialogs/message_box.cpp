// Message boxes: dialogs of a text, a sign and some buttons.

#include <brcore8/platform/posix/control_messages.h>
#include <brcore8/platform/posix/dialog_calls.h>
#include <brcore8/platform/posix/drawing_calls.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <span>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/display.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/screen.h"

using namespace brcore8::desktop;

namespace {

constexpr int kTextId = 0xFFFF;

// Where things go, in pixels of this screen.
struct Measures {
    int margin = Scaled(12);
    int sign = Scaled(32);
    int buttonWidth = Scaled(75), buttonHeight = Scaled(23), buttonGap = Scaled(8);
};

struct Choice {
    int id;
    const char* caption;
};
constexpr Choice kOk{IDOK, "OK"}, kCancel{IDCANCEL, "Cancel"}, kRetry{IDRETRY, "&Retry"};
constexpr Choice kYes{IDYES, "&Yes"}, kNo{IDNO, "&No"};
constexpr Choice kOkOnly[] = {kOk}, kOkCancel[] = {kOk, kCancel}, kYesNo[] = {kYes, kNo};
constexpr Choice kYesNoCancel[] = {kYes, kNo, kCancel}, kRetryCancel[] = {kRetry, kCancel};
constexpr Choice kAbort[] = {{IDABORT, "&Abort"}, kRetry, {IDIGNORE, "&Ignore"}};

std::span<const Choice> ChoicesOf(UINT style) noexcept {
    switch (style & 0xF) {
        case MB_OKCANCEL:
            return kOkCancel;
        case MB_ABORTRETRYIGNORE:
            return kAbort;
        case MB_YESNOCANCEL:
            return kYesNoCancel;
        case MB_YESNO:
            return kYesNo;
        case MB_RETRYCANCEL:
            return kRetryCancel;
        default:
            return kOkOnly;
    }
}

int DefaultOf(UINT style) noexcept {
    const std::span<const Choice> choices = ChoicesOf(style);
    const std::size_t index = (style & 0xF00) >> 8;
    return choices[index < choices.size() ? index : 0].id;
}

struct Box {
    const char* text;
    const char* caption;
    UINT style;
};

bool HasSign(UINT style) noexcept {
    return (style & 0xF0) != 0;
}

SIZE Measure(HWND window, const char* text) {
    const HDC context = GetDC(window);
    const HGDIOBJ old = SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
    RECT rect{0, 0, GetSystemMetrics(SM_CXSCREEN) * 5 / 8, 0};
    DrawTextA(context, text, -1, &rect, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
    SelectObject(context, old);
    ReleaseDC(window, context);
    return {rect.right, rect.bottom};
}

HWND MakeControl(HWND box, const char* className, const char* text, DWORD style, const RECT& at,
                 int id) {
    const HWND made = CreateWindowExA(
        WS_EX_NOPARENTNOTIFY, className, text, style | WS_CHILD | WS_VISIBLE, at.left, at.top,
        Width(at), Height(at), box, reinterpret_cast<HMENU>(std::intptr_t{id}), nullptr, nullptr);
    SendMessageA(made, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), 0);
    return made;
}

void Fill(HWND window, const Box& box) {
    const std::span<const Choice> choices = ChoicesOf(box.style);
    const int count = static_cast<int>(choices.size());
    const SIZE text = Measure(window, box.text);
    const Measures in;
    const int sign = HasSign(box.style) ? in.sign + in.margin : 0;
    const int row = count * in.buttonWidth + (count - 1) * in.buttonGap;
    const int width = std::max<int>(sign + text.cx, row) + 2 * in.margin;
    const int textHeight = std::max<int>(text.cy, sign != 0 ? in.sign : 0);
    const int height = textHeight + 3 * in.margin + in.buttonHeight;

    RECT place{0, 0, width, height};
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    AdjustWindowRectEx(&place, style, 0, static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE)));
    const RECT& screen = Root().rect;
    SetWindowPos(window, nullptr, std::max(0, (Width(screen) - Width(place)) / 2),
                 std::max(0, (Height(screen) - Height(place)) / 2), Width(place), Height(place),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    const int top = in.margin + (textHeight - text.cy) / 2;
    MakeControl(window, "STATIC", box.text, SS_NOPREFIX,
                {in.margin + sign, top, in.margin + sign + text.cx, top + text.cy}, kTextId);
    int x = (width - row) / 2;
    const int y = height - in.margin - in.buttonHeight;
    for (const Choice& choice : choices) {
        const bool isDefault = choice.id == DefaultOf(box.style);
        const DWORD look = isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        MakeControl(window, "BUTTON", choice.caption,
                    look | WS_TABSTOP | (&choice == choices.data() ? WS_GROUP : 0),
                    {x, y, x + in.buttonWidth, y + in.buttonHeight}, choice.id);
        x += in.buttonWidth + in.buttonGap;
    }
}

// A disc with the sign's letter.
void PaintSign(HWND window, UINT style) {
    PAINTSTRUCT paint;
    const HDC context = BeginPaint(window, &paint);
    if (HasSign(style)) {
        const UINT kind = style & 0xF0;
        const bool isWarning = kind == MB_ICONEXCLAMATION;
        const COLORREF color = kind == MB_ICONHAND ? RGB(200, 30, 30)
                               : isWarning         ? RGB(250, 200, 40)
                                                   : RGB(30, 90, 200);
        const HBRUSH brush = CreateSolidBrush(color);
        const HGDIOBJ oldBrush = SelectObject(context, brush);
        const Measures in;
        RECT rect{in.margin, in.margin, in.margin + in.sign, in.margin + in.sign};
        Ellipse(context, rect.left, rect.top, rect.right, rect.bottom);
        SelectObject(context, oldBrush);
        DeleteObject(brush);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, isWarning ? RGB(0, 0, 0) : RGB(255, 255, 255));
        const char* const letter = kind == MB_ICONHAND       ? "X"
                                   : kind == MB_ICONQUESTION ? "?"
                                   : isWarning               ? "!"
                                                             : "i";
        DrawTextA(context, letter, 1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }
    EndPaint(window, &paint);
}

INT_PTR CALLBACK BoxProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* const box = reinterpret_cast<const Box*>(GetWindowLongPtrA(window, DWLP_USER));
    switch (message) {
        case WM_INITDIALOG: {
            SetWindowLongPtrA(window, DWLP_USER, lParam);
            const auto& made = *reinterpret_cast<const Box*>(lParam);
            SetWindowTextA(window, made.caption);
            Fill(window, made);
            const int first = DefaultOf(made.style);
            SendMessageA(window, DM_SETDEFID, static_cast<WPARAM>(first), 0);
            // As the keyboard goes there: the default look goes along.
            SendMessageA(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(window, first)),
                         1);
            return 0;
        }
        case WM_COMMAND: {
            const int id = LOWORD(wParam);
            const std::span<const Choice> choices = ChoicesOf(box->style);
            const bool isThere = std::any_of(choices.begin(), choices.end(),
                                             [=](const Choice& each) { return each.id == id; });
            if (isThere) EndDialog(window, id);
            if (!isThere && id == IDCANCEL && choices.size() == 1) EndDialog(window, IDCANCEL);
            return 1;
        }
        case WM_PAINT:
            if (box == nullptr) return 0;
            PaintSign(window, box->style);
            return 1;
        default:
            return 0;
    }
}

}  // namespace

int MessageBoxA(HWND owner, const char* text, const char* caption, UINT style) {
    if (text == nullptr) text = "";
    if (caption == nullptr) caption = "Error";
    if (owner != nullptr && !IsWindow(owner)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    if (TheDisplay() == nullptr || (owner == nullptr && TheScreen() == nullptr)) {
        std::fprintf(stderr, "%s: %s\n", caption, text);
        return DefaultOf(style);
    }
    // A dialog without controls; they come when the text was measured.
    struct {
        DLGTEMPLATE begin;
        WORD menu, className, title;
    } bytes{};
    bytes.begin.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | DS_MODALFRAME;
    Box box{text, caption, style};
    const INT_PTR result = DialogBoxIndirectParamA(nullptr, &bytes.begin, owner, &BoxProcedure,
                                                   reinterpret_cast<LPARAM>(&box));
    return result > 0 ? static_cast<int>(result) : 0;
}
