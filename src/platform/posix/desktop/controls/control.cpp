#include "platform/posix/desktop/controls/control.h"

#include <new>

namespace brcore8::desktop {

DWORD Control::Style() const noexcept {
    const Window* const window = Find(handle_);
    return window != nullptr ? window->style : 0;
}

void Control::ChangeStyle(DWORD remove, DWORD add) const noexcept {
    if (Window* const window = Find(handle_)) window->style = (window->style & ~remove) | add;
}

HFONT Control::Font() const noexcept {
    const Window* const window = Find(handle_);
    if (window != nullptr && window->font != nullptr) return window->font;
    return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

RECT Control::ClientRect() const noexcept {
    RECT client{};
    GetClientRect(handle_, &client);
    return client;
}

std::string Control::Text() const {
    const Window* const window = Find(handle_);
    return window != nullptr ? window->text : std::string();
}

HWND Control::Parent() const noexcept {
    return GetParent(handle_);
}

void Control::Notify(int code) const {
    const int id = GetDlgCtrlID(handle_);
    SendMessageA(Parent(), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), static_cast<WORD>(code)),
                 reinterpret_cast<LPARAM>(handle_));
}

HBRUSH Control::AskColors(HDC dc, UINT message) const {
    const HWND parent = Parent() != nullptr ? Parent() : handle_;
    const auto context = reinterpret_cast<WPARAM>(dc);
    const auto self = reinterpret_cast<LPARAM>(handle_);
    LRESULT brush = SendMessageA(parent, message, context, self);
    if (brush == 0) brush = DefWindowProcA(parent, message, context, self);
    return reinterpret_cast<HBRUSH>(brush);
}

LRESULT Control::Default(UINT message, WPARAM wParam, LPARAM lParam) const {
    Window* const window = Find(handle_);
    if (window == nullptr) return 0;
    switch (message) {
        case WM_SETFONT:
            window->font = reinterpret_cast<HFONT>(wParam);
            if (LOWORD(static_cast<WPARAM>(lParam)) != 0) Repaint();
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(window->font);
        default:
            return DefWindowProcA(handle_, message, wParam, lParam);
    }
}

ControlPaint::ControlPaint(HWND handle, HFONT font, WPARAM context)
    : dc(reinterpret_cast<HDC>(context)), handle_(handle), isOwn_(context == 0) {
    if (isOwn_) dc = BeginPaint(handle, &paint_);
    GetClientRect(handle, &client);
    oldFont_ = SelectObject(dc, font);
}

ControlPaint::~ControlPaint() {
    SelectObject(dc, oldFont_);
    if (isOwn_) EndPaint(handle_, &paint_);
}

LRESULT RunControl(HWND handle, UINT message, WPARAM wParam, LPARAM lParam,
                   std::shared_ptr<Control> (*make)(HWND)) {
    Window* const window = Find(handle);
    if (window == nullptr) return 0;
    try {
        if (message == WM_NCCREATE && window->control == nullptr) window->control = make(handle);
        const std::shared_ptr<Control> control = window->control;
        return control != nullptr ? control->Answer(message, wParam, lParam)
                                  : DefWindowProcA(handle, message, wParam, lParam);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return message == WM_CREATE ? -1 : 0;
    }
}

}  // namespace brcore8::desktop
