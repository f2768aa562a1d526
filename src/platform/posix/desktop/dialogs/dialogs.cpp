// How dialogs are made from templates, what they do by themselves, and how they run.

#include <brcore8/platform/posix/drawing_calls.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/menu_calls.h>
#include <brcore8/strings/multibyte.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "platform/dialog_template.h"
#include "platform/posix/desktop/dialogs/dialog.h"
#include "platform/posix/fonts.h"

namespace brcore8::desktop {

namespace {

// Templates have no size of their own; nothing whole is longer.
constexpr std::size_t kLargestTemplate = 1 << 20;

std::map<HWND, Dialog>& Dialogs() {
    static auto& dialogs = *new std::map<HWND, Dialog>;
    return dialogs;
}

HFONT FontOf(const DialogTemplate& from) {
    if (from.pointSize == 0 || from.face.empty()) return nullptr;
    LOGFONTA info{};
    info.lfHeight = -MulDiv(from.pointSize, static_cast<int>(GetDpiForSystem()), 72);
    info.lfWeight = from.weight;
    info.lfItalic = from.isItalic;
    const std::string face = STextFromUtf16(from.face);
    std::copy_n(face.begin(), std::min(face.size(), sizeof info.lfFaceName - 1), info.lfFaceName);
    return CreateFontIndirectA(&info);
}

// The platform's six classes have numbers.
std::string ClassName(const DialogText& name) {
    static constexpr const char* kNames[] = {"BUTTON",  "EDIT",      "STATIC",
                                             "LISTBOX", "SCROLLBAR", "COMBOBOX"};
    constexpr unsigned kFirst = 0x80;
    if (name.number == 0) return STextFromUtf16(name.text);
    const unsigned index = name.number - kFirst;
    return index < std::size(kNames) ? kNames[index] : "";
}

template <class Placed>
RECT PlaceOf(const Placed& placed, const SIZE& units) noexcept {
    const int left = MulDiv(placed.x, units.cx, 4), top = MulDiv(placed.y, units.cy, 8);
    return {left, top, left + MulDiv(placed.cx, units.cx, 4), top + MulDiv(placed.cy, units.cy, 8)};
}

DWORD StyleOf(const DialogTemplate& from) noexcept {
    DWORD style = from.style & ~DWORD{WS_VISIBLE};
    if ((style & DS_CONTROL) != 0) style &= ~DWORD{WS_CAPTION | WS_SYSMENU};
    return style;
}

DWORD ExStyleOf(const DialogTemplate& from) noexcept {
    DWORD bits = from.exStyle;
    if ((from.style & DS_MODALFRAME) != 0) bits |= WS_EX_DLGMODALFRAME;
    if ((from.style & (WS_CHILD | DS_CONTROL)) != 0) bits |= WS_EX_CONTROLPARENT;
    return bits;
}

// On the screen: where the template says, from the owner's client area or in the middle.
RECT WindowPlace(const DialogTemplate& from, const SIZE& units, HWND owner) {
    RECT place = PlaceOf(from, units);
    const int width = Width(place), height = Height(place);
    RECT window{0, 0, width, height};
    AdjustWindowRectEx(&window, StyleOf(from), 0, ExStyleOf(from));
    POINT at{place.left, place.top};
    const bool isChild = (from.style & WS_CHILD) != 0;
    if ((from.style & DS_CENTER) != 0 && !isChild) {
        RECT around = Root().rect;
        if (owner != nullptr) GetWindowRect(owner, &around);
        at = {(around.left + around.right - Width(window)) / 2,
              (around.top + around.bottom - Height(window)) / 2};
    } else if (!isChild && (from.style & DS_ABSALIGN) == 0 && owner != nullptr) {
        ClientToScreen(owner, &at);
    }
    if (!isChild) {
        const RECT& screen = Root().rect;
        at.x = std::max<LONG>(0, std::min<LONG>(at.x, screen.right - Width(window)));
        at.y = std::max<LONG>(0, std::min<LONG>(at.y, screen.bottom - Height(window)));
    }
    return {at.x, at.y, at.x + Width(window), at.y + Height(window)};
}

bool MakeControls(HWND dialog, const DialogTemplate& from, const SIZE& units, HFONT font,
                  HINSTANCE instance) {
    for (const DialogItem& item : from.items) {
        const RECT place = PlaceOf(item, units);
        const std::string name = ClassName(item.className);
        const std::string title = STextFromUtf16(item.title.text);
        const HWND control = CreateWindowExA(
            item.exStyle | WS_EX_NOPARENTNOTIFY, name.c_str(), title.c_str(),
            (item.style & ~DWORD{WS_POPUP}) | WS_CHILD, place.left, place.top, Width(place),
            Height(place), dialog, reinterpret_cast<HMENU>(std::uintptr_t{item.id}), instance,
            const_cast<void*>(item.data));
        if (!IsWindow(dialog)) return false;
        if (control == nullptr) {
            if ((from.style & DS_NOFAILCREATE) != 0) continue;
            return false;
        }
        if (font != nullptr) SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    }
    return IsWindow(dialog);
}

// The button that the template made the default.
void FindDefault(HWND handle) {
    for (const HWND control : ControlsOf(handle)) {
        if ((SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) == 0) continue;
        const std::lock_guard guard(Lock());
        Dialog* const dialog = DialogOf(handle);
        if (dialog == nullptr) return;
        dialog->defaultId = static_cast<UINT>(GetDlgCtrlID(control));
        dialog->hasDefault = true;
        return;
    }
}

bool IsEnded(HWND handle) {
    const std::lock_guard guard(Lock());
    const auto at = Dialogs().find(handle);
    return at == Dialogs().end() || at->second.isEnded;
}

HWND Make(HINSTANCE instance, const DLGTEMPLATE* bytes, HWND owner, DLGPROC procedure, LPARAM param,
          bool isModal) {
    if (bytes == nullptr) return nullptr;
    const auto from = ReadDialogTemplate(bytes, kLargestTemplate);
    if (!from) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HFONT font = FontOf(*from);
    const SIZE units = UnitsOf(font);
    const bool isOwn = from->className.number == 0 && !from->className.text.empty();
    const std::string name = isOwn ? STextFromUtf16(from->className.text) : kDialogClass;
    const std::string title = STextFromUtf16(from->title);
    const RECT place = WindowPlace(*from, units, owner);
    const HWND handle =
        CreateWindowExA(ExStyleOf(*from), name.c_str(), title.c_str(), StyleOf(*from), place.left,
                        place.top, Width(place), Height(place), owner, nullptr, instance, nullptr);
    if (handle == nullptr) {
        if (font != nullptr) DeleteObject(font);
        return nullptr;
    }
    {
        const std::lock_guard guard(Lock());
        Dialog& dialog = *DialogOf(handle);
        dialog.font = font;
        dialog.units = units;
        dialog.isRunning = isModal;
    }
    SetWindowLongPtrA(handle, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(procedure));
    if (font != nullptr) SendMessageA(handle, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    if (!MakeControls(handle, *from, units, font, instance)) {
        if (IsWindow(handle)) DestroyWindow(handle);
        return nullptr;
    }
    FindDefault(handle);
    HWND first = GetNextDlgTabItem(handle, nullptr, 0);
    if (first == nullptr) first = GetTopWindow(handle);
    const LRESULT takesFocus =
        SendMessageA(handle, WM_INITDIALOG, reinterpret_cast<WPARAM>(first), param);
    if (!IsWindow(handle)) return nullptr;
    if (takesFocus != 0 && (from->style & DS_CONTROL) == 0) {
        // The controls that are there now decide.
        const HWND target = GetNextDlgTabItem(handle, nullptr, 0);
        if (target != nullptr)
            GoTo(handle, target);
        else
            SetFocus(handle);
    }
    const bool shows = (from->style & WS_VISIBLE) != 0 && !IsEnded(handle);
    if (IsWindow(handle) && shows && !IsWindowVisible(handle)) ShowWindow(handle, SW_SHOWNORMAL);
    return IsWindow(handle) ? handle : nullptr;
}

}  // namespace

Dialog* DialogOf(HWND handle) {
    const auto at = Dialogs().find(handle);
    if (at != Dialogs().end()) return &at->second;
    if (Find(handle) == nullptr) return nullptr;
    Dialog& made = Dialogs()[handle];
    made.units = UnitsOf(nullptr);
    return &made;
}

void ForgetDialog(HWND handle) {
    const std::lock_guard guard(Lock());
    const auto at = Dialogs().find(handle);
    if (at == Dialogs().end()) return;
    if (at->second.font != nullptr) DeleteObject(at->second.font);
    Dialogs().erase(at);
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

HWND CreateDialogIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* bytes, HWND owner,
                                DLGPROC procedure, LPARAM param) {
    return Make(instance, bytes, owner, procedure, param, false);
}

INT_PTR DialogBoxIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* bytes, HWND owner,
                                DLGPROC procedure, LPARAM param) {
    // The mouse is the dialog's, whoever held it.
    if (const HWND holder = GetCapture()) SendMessageA(holder, WM_CANCELMODE, 0, 0);
    if (owner != nullptr && Find(owner) == nullptr) return 0;
    if (owner != nullptr) owner = GetAncestor(owner, GA_ROOT);
    const bool disables = owner != nullptr && IsWindowEnabled(owner);
    const HWND handle = Make(instance, bytes, owner, procedure, param, true);
    if (handle == nullptr) return -1;
    {
        const std::lock_guard guard(Lock());
        DialogOf(handle)->owner = disables ? owner : nullptr;
    }
    if (disables && !IsEnded(handle)) EnableWindow(owner, 0);
    const bool isQuiet = (GetWindowLongA(handle, GWL_STYLE) & DS_NOIDLEMSG) != 0;
    bool wasTold = isQuiet || owner == nullptr;
    while (!IsEnded(handle)) {
        MSG message;
        if (!wasTold && !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) {
            wasTold = true;
            SendMessageA(owner, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(handle));
            continue;
        }
        const BOOL got = GetMessageA(&message, nullptr, 0, 0);
        if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
        if (got <= 0) break;
        wasTold = isQuiet || owner == nullptr;
        if (IsDialogMessageA(handle, &message)) continue;
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    INT_PTR result = 0;
    {
        const std::lock_guard guard(Lock());
        const auto at = IsWindow(handle) ? DialogOf(handle) : nullptr;
        if (at != nullptr) result = at->result;
    }
    if (disables && IsWindow(owner)) EnableWindow(owner, 1);
    if (IsWindow(handle)) DestroyWindow(handle);
    return result;
}

BOOL EndDialog(HWND handle, INT_PTR result) {
    HWND owner = nullptr;
    {
        const std::lock_guard guard(Lock());
        Dialog* const dialog = DialogOf(handle);
        if (dialog == nullptr) return 0;
        dialog->isEnded = true;
        dialog->result = result;
        owner = dialog->owner;
    }
    // The owner first: it is active next.
    if (owner != nullptr && IsWindow(owner)) EnableWindow(owner, 1);
    if (IsWindow(handle)) ShowWindow(handle, SW_HIDE);
    // The loop may be waiting for a message.
    PostMessageA(handle, WM_NULL, 0, 0);
    return 1;
}

namespace {

void SaveFocus(HWND handle) {
    const HWND focus = GetFocus();
    if (focus == nullptr || !IsChild(handle, focus)) return;
    const std::lock_guard guard(Lock());
    if (Dialog* const dialog = DialogOf(handle)) dialog->focus = focus;
}

void RestoreFocus(HWND handle) {
    HWND focus = nullptr;
    {
        const std::lock_guard guard(Lock());
        if (const Dialog* const dialog = DialogOf(handle)) focus = dialog->focus;
    }
    if (focus != nullptr && IsWindow(focus) && IsChild(handle, focus))
        SetFocus(focus);
    else
        GoToFirst(handle);
}

void NextControl(HWND handle, WPARAM wParam, LPARAM isHandle) {
    HWND next = reinterpret_cast<HWND>(wParam);
    if (LOWORD(static_cast<std::uint64_t>(isHandle)) == 0) {
        const HWND focus = GetFocus();
        next = GetNextDlgTabItem(handle, IsChild(handle, focus) ? focus : nullptr, wParam != 0);
    }
    if (next != nullptr) GoTo(handle, next);
}

LRESULT GetDefaultId(HWND handle) {
    const std::lock_guard guard(Lock());
    const Dialog* const dialog = DialogOf(handle);
    return dialog != nullptr && dialog->hasDefault ? MAKELRESULT(dialog->defaultId, DC_HASDEFID)
                                                   : 0;
}

void SetDefaultId(HWND handle, UINT id) {
    const std::lock_guard guard(Lock());
    Dialog* const dialog = DialogOf(handle);
    if (dialog == nullptr) return;
    dialog->defaultId = id;
    dialog->hasDefault = true;
}

LRESULT EraseDialog(HWND handle, HDC context) {
    const LRESULT brush = SendMessageA(handle, WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(context),
                                       reinterpret_cast<LPARAM>(handle));
    RECT box;
    if (GetClipBox(context, &box) == 0) return 0;
    FillRect(context, &box,
             brush != 0 ? reinterpret_cast<HBRUSH>(brush) : GetSysColorBrush(COLOR_BTNFACE));
    return 1;
}

LRESULT DoDefault(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return EraseDialog(handle, reinterpret_cast<HDC>(wParam));
        case WM_SHOWWINDOW:
            if (wParam == 0) SaveFocus(handle);
            break;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                SaveFocus(handle);
            } else {
                RestoreFocus(handle);
            }
            return 0;
        case WM_SETFOCUS:
            RestoreFocus(handle);
            return 0;
        case DM_SETDEFID:
            SetDefaultId(handle, static_cast<UINT>(wParam));
            return 1;
        case DM_GETDEFID:
            return GetDefaultId(handle);
        case WM_NEXTDLGCTL:
            NextControl(handle, wParam, lParam);
            return 0;
        case WM_CLOSE: {
            const HWND cancel = GetDlgItem(handle, IDCANCEL);
            if (cancel == nullptr || IsWindowEnabled(cancel))
                PostMessageA(handle, WM_COMMAND, IDCANCEL, reinterpret_cast<LPARAM>(cancel));
            return 0;
        }
        case WM_GETFONT: {
            const std::lock_guard guard(Lock());
            const Dialog* const dialog = DialogOf(handle);
            return reinterpret_cast<LRESULT>(dialog != nullptr ? dialog->font : nullptr);
        }
        case WM_INITDIALOG:
            return 0;
        default:
            break;
    }
    return DefWindowProcA(handle, message, wParam, lParam);
}

// What the dialog's procedure answers is the message's own result.
bool AnswersItself(UINT message) noexcept {
    return message == WM_INITDIALOG || message == WM_COMPAREITEM || message == WM_VKEYTOITEM ||
           message == WM_CHARTOITEM || message == WM_QUERYDRAGICON ||
           (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC);
}

}  // namespace

LRESULT DefDlgProcA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (Find(handle) == nullptr) return 0;
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrA(handle, DWLP_DLGPROC));
    SetWindowLongPtrA(handle, DWLP_MSGRESULT, 0);
    const INT_PTR answer =
        procedure != nullptr ? procedure(handle, message, wParam, lParam) : INT_PTR{0};
    LRESULT result = 0;
    if (!IsWindow(handle) || (answer != 0 && AnswersItself(message)))
        result = answer;
    else
        result = answer != 0 ? GetWindowLongPtrA(handle, DWLP_MSGRESULT)
                             : DoDefault(handle, message, wParam, lParam);
    if (message == WM_NCDESTROY) ForgetDialog(handle);
    return result;
}
