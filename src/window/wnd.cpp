#include <brcore8/core/exception.h>
#include <brcore8/core/module.h>
#include <brcore8/window/wnd.h>

#include "window/thread_state.h"
#include "window/wrapper_map.h"

#include <vector>

SIMPLEMENT_CREATABLE(SWnd, SCmdTarget, 2);
SIMPLEMENT_MESSAGE_MAP(SWnd, SCmdTarget, SOnNcDestroy<&SWnd::OnNcDestroy>());

// --- Handles and wrappers ---------------------------------------------------------------------

using WindowMap = brcore8::WrapperMap<SWnd>;

SHandleMap& SWnd::GetHandleMap() {
    return WindowMap::Get();
}

SWnd* SWnd::FromHandle(HWND handle) {
    return WindowMap::From(handle);
}

SWnd* SWnd::FromHandlePermanent(HWND handle) {
    return static_cast<SWnd*>(GetHandleMap().FromHandlePermanent(handle));
}

void SWnd::DeleteTempMap() {
    GetHandleMap().DeleteTempMap();
}

SWnd::~SWnd() {
    brcore8::WindowThread& thread = brcore8::ThisWindowThread();
    if (thread.pending == this) thread.pending = nullptr;
    if (handle_ == nullptr || FromHandlePermanent(handle_) != this) return;
    // The derived class is gone: its window gets no more messages from here, but its own procedure
    // is told of the end and gives back what it holds.
    const bool owns = (bits_ & kOwnsWindow) != 0;
    const HWND handle = owns || (bits_ & kSubclassed) != 0 ? UnsubclassWindow() : Detach();
    if (owns) ::DestroyWindow(handle);
}

int SWnd::Attach(HWND handle) {
    if (handle != nullptr && handle != handle_) bits_ &= ~kOwnsWindow;
    return WindowMap::Attach(*this, handle);
}

HWND SWnd::Detach() {
    bits_ &= ~kOwnsWindow;
    return WindowMap::Detach(*this);
}

int SWnd::SubclassWindow(HWND handle) {
    if (!Attach(handle)) return 0;
    const auto ours = reinterpret_cast<LONG_PTR>(&SCallWndProc);
    const LONG_PTR old = SetWindowLongPtrA(handle, GWLP_WNDPROC, ours);
    const WNDPROC classWide = GetSuperWndProc();
    if (classWide == nullptr) {
        if (old != ours) SetSuperWndProc(reinterpret_cast<WNDPROC>(old));
        bits_ |= kSubclassed;
    } else if (reinterpret_cast<WNDPROC>(old) != classWide) {
        SetWindowLongPtrA(handle, GWLP_WNDPROC, old);
    }
    return 1;
}

int SWnd::SubclassChild(int id, SWnd* wrapper) {
    return wrapper != nullptr ? wrapper->SubclassWindow(::GetDlgItem(handle_, id)) : 0;
}

HWND SWnd::UnsubclassWindow() {
    if (handle_ != nullptr && superProc_ != nullptr)
        SetWindowLongPtrA(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(superProc_));
    superProc_ = nullptr;
    bits_ &= ~kSubclassed;
    return Detach();
}

// --- Creation ---------------------------------------------------------------------------------

int SWnd::Create(const char* className, const char* text, DWORD style, const RECT& place,
                 SWnd* parent, UINT id, void* param) {
    return CreateEx(0, className, text, style | WS_CHILD, place.left, place.top,
                    place.right - place.left, place.bottom - place.top,
                    parent != nullptr ? parent->handle_ : nullptr,
                    reinterpret_cast<HMENU>(std::uintptr_t{id}), param);
}

int SWnd::CreateEx(DWORD exStyle, const char* className, const char* text, DWORD style, int x,
                   int y, int width, int height, HWND parent, HMENU menu, void* param) {
    if (handle_ != nullptr || !brcore8::RegisterWindowClasses()) throw SEConstructor();
    CREATESTRUCTA create{};
    create.dwExStyle = exStyle;
    create.lpszClass = className;
    create.lpszName = text;
    create.style = static_cast<LONG>(style);
    create.x = x;
    create.y = y;
    create.cx = width;
    create.cy = height;
    create.hwndParent = parent;
    create.hMenu = menu;
    create.hInstance = SGetModuleState()->GetInstance();
    create.lpCreateParams = param;
    if (!PreCreateWindow(create)) return 0;

    brcore8::ExpectWindow(this);
    const HWND handle =
        CreateWindowExA(create.dwExStyle, create.lpszClass, create.lpszName,
                        static_cast<DWORD>(create.style), create.x, create.y, create.cx, create.cy,
                        create.hwndParent, create.hMenu, create.hInstance, create.lpCreateParams);
    if (!brcore8::WindowCame() || handle == nullptr) return 0;
    // A handler may have let go of it, or deleted this.
    if (FromHandlePermanent(handle) == this) Own();
    return 1;
}

int SWnd::PreCreateWindow(CREATESTRUCT&) {
    return 1;
}

int SWnd::DestroyWindow() {
    return handle_ != nullptr && ::DestroyWindow(handle_);
}

// The window's last message: afterwards the wrapper may be gone.
void SWnd::OnNcDestroy() {
    Default();
    if ((bits_ & kSubclassed) != 0)
        UnsubclassWindow();
    else
        Detach();
    superProc_ = nullptr;
    bits_ = 0;
    PostNcDestroy();
}

void SWnd::PostNcDestroy() {}

// --- What derived classes decide ----------------------------------------------------------------

int SWnd::PreTranslateMessage(MSG*) {
    return 0;
}

void SWnd::CalcWindowRect(RECT* rect) {
    AdjustWindowRectEx(rect, GetStyle(), 0, GetExStyle());
}

SWnd* SWnd::GetScrollBarCtrl(int) {
    return nullptr;
}

int SWnd::SetReadOnly(int) {
    return 0;
}

WNDPROC SWnd::GetSuperWndProc() const {
    return nullptr;
}

void SWnd::SetSuperWndProc(WNDPROC procedure) {
    superProc_ = procedure;
}

LRESULT SWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC super = superProc_ != nullptr ? superProc_ : GetSuperWndProc();
    if (super != nullptr) return CallWindowProcA(super, handle_, message, wParam, lParam);
    return ::DefWindowProcA(handle_, message, wParam, lParam);
}

// --- Asking the window ---------------------------------------------------------------------------

int SWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags) {
    const DWORD old = GetStyle();
    const DWORD style = (old & ~remove) | add;
    if (style == old) return 0;
    SetWindowLongA(handle_, GWL_STYLE, static_cast<LONG>(style));
    if (flags != 0)
        SetWindowPos(nullptr, 0, 0, 0, 0,
                     flags | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    return 1;
}

SString SWnd::GetWindowText() const {
    const int length = ::GetWindowTextLengthA(handle_);
    if (length <= 0) return SString();
    std::vector<char> text(static_cast<std::size_t>(length) + 1);
    const int taken = ::GetWindowTextA(handle_, text.data(), length + 1);
    return SString(text.data(), taken > 0 ? taken : 0);
}

RECT SWnd::GetWindowRect() const {
    RECT rect{};
    ::GetWindowRect(handle_, &rect);
    return rect;
}

RECT SWnd::GetClientRect() const {
    RECT rect{};
    ::GetClientRect(handle_, &rect);
    return rect;
}

void SWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, int deep,
                                    int permanentOnly) {
    // The children are listed first: a handler may close any of them.
    std::vector<HWND> windows;
    for (HWND child = ::GetTopWindow(handle_); child != nullptr;
         child = ::GetWindow(child, GW_HWNDNEXT))
        windows.push_back(child);
    // A stack of its own: windows nest as deep as a program likes.
    while (!windows.empty()) {
        const HWND child = windows.back();
        windows.pop_back();
        if (!::IsWindow(child)) continue;
        if (!permanentOnly)
            ::SendMessageA(child, message, wParam, lParam);
        else if (SWnd* const wrapper = FromHandlePermanent(child))
            wrapper->CallWndProc(message, wParam, lParam);
        if (!deep || !::IsWindow(child)) continue;
        for (HWND next = ::GetTopWindow(child); next != nullptr;
             next = ::GetWindow(next, GW_HWNDNEXT))
            windows.push_back(next);
    }
}

int SWnd::WalkPreTranslateTree(HWND stop, MSG* message) {
    for (HWND window = message->hwnd; window != nullptr; window = ::GetParent(window)) {
        SWnd* const wrapper = FromHandlePermanent(window);
        if (wrapper != nullptr && wrapper->PreTranslateMessage(message)) return 1;
        if (window == stop) break;
    }
    return 0;
}
