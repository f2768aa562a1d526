// What a window carries: its fields and its text.

#include <unistd.h>

#include <algorithm>
#include <cstring>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

// Values in the window's own bytes are as wide as the call that asks.
template <class Value>
LONG_PTR ExchangeExtra(Window& window, int index, const LONG_PTR* value) {
    const auto at = static_cast<std::size_t>(index);
    if (index < 0 || at + sizeof(Value) > window.extra.size()) {
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
    Value old = 0;
    std::memcpy(&old, window.extra.data() + at, sizeof old);
    if (value != nullptr) {
        const auto wanted = static_cast<Value>(*value);
        std::memcpy(window.extra.data() + at, &wanted, sizeof wanted);
    }
    return old;
}

// False for an owner that the window holds itself, or that is held by too many.
bool SetOwner(Window& window, HWND owner) noexcept {
    if (!IsTopLevel(window)) return true;
    const Window* const holder = owner != nullptr ? Find(owner) : nullptr;
    if (IsHeldBy(holder, window) || DepthOf(holder) >= kDeepest) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    window.owner = holder != nullptr && holder != &Root() ? owner : nullptr;
    return true;
}

// A field's value, read and written; null for no field.
template <class Value>
LONG_PTR Exchange(Window& window, int index, const LONG_PTR* value) {
    const std::lock_guard guard(Lock());
    const auto exchange = [value](auto& field) {
        const auto old = (LONG_PTR)field;
        if (value != nullptr) field = (std::remove_reference_t<decltype(field)>)*value;
        return old;
    };
    switch (index) {
        case GWL_STYLE:
            return exchange(window.style);
        case GWL_EXSTYLE:
            return exchange(window.exStyle);
        case GWLP_WNDPROC:
            return exchange(window.procedure);
        case GWLP_HINSTANCE:
            return exchange(window.instance);
        case GWLP_ID:
            return exchange(window.id);
        case GWLP_USERDATA:
            return exchange(window.userData);
        case GWLP_HWNDPARENT: {
            const Window* const holder = IsTopLevel(window) ? HolderOf(window) : window.parent;
            const auto old =
                reinterpret_cast<LONG_PTR>(holder != nullptr ? holder->handle : nullptr);
            if (value != nullptr && !SetOwner(window, reinterpret_cast<HWND>(*value))) return 0;
            return old;
        }
        default:
            return ExchangeExtra<Value>(window, index, value);
    }
}

template <class Value>
LONG_PTR Get(HWND handle, int index) noexcept {
    Window* const window = Find(handle);
    return window != nullptr ? Exchange<Value>(*window, index, nullptr) : 0;
}

template <class Value>
LONG_PTR Set(HWND handle, int index, LONG_PTR value) {
    Window* window = Find(handle);
    if (window == nullptr) return 0;
    if (index != GWL_STYLE && index != GWL_EXSTYLE) return Exchange<Value>(*window, index, &value);
    // Whether it is shown is ShowWindow's alone.
    struct {
        DWORD styleOld;
        DWORD styleNew;
    } change{index == GWL_STYLE ? window->style : window->exStyle, static_cast<DWORD>(value)};
    SendMessageA(handle, WM_STYLECHANGING, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&change));
    window = Find(handle);
    if (window == nullptr) return 0;
    if (index == GWL_STYLE)
        change.styleNew = (change.styleNew & ~DWORD{WS_VISIBLE}) | (window->style & WS_VISIBLE);
    const LONG_PTR wanted = change.styleNew;
    const LONG_PTR old = Exchange<Value>(*window, index, &wanted);
    SendMessageA(handle, WM_STYLECHANGED, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&change));
    return old;
}

}  // namespace

LONG_PTR GetWindowLongPtrA(HWND window, int index) noexcept {
    return Get<LONG_PTR>(window, index);
}

LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
    return Set<LONG_PTR>(window, index, value);
}

LONG GetWindowLongA(HWND window, int index) noexcept {
    return static_cast<LONG>(Get<LONG>(window, index));
}

LONG SetWindowLongA(HWND window, int index, LONG value) {
    return static_cast<LONG>(Set<LONG>(window, index, value));
}

int GetClassNameA(HWND handle, char* name, int size) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr || window->windowClass == nullptr || size <= 0) return 0;
    const std::string& text = window->windowClass->name;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(name, text.data(), length);
    name[length] = '\0';
    return static_cast<int>(length);
}

ULONG_PTR GetClassLongPtrA(HWND handle, int index) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr || window->windowClass == nullptr) return 0;
    const WNDCLASSEXA& info = window->windowClass->info;
    switch (index) {
        case GCL_STYLE:
            return info.style;
        case GCLP_WNDPROC:
            return reinterpret_cast<ULONG_PTR>(info.lpfnWndProc);
        case GCLP_HBRBACKGROUND:
            return reinterpret_cast<ULONG_PTR>(info.hbrBackground);
        case GCLP_HCURSOR:
            return reinterpret_cast<ULONG_PTR>(info.hCursor);
        default:
            SetLastError(ERROR_INVALID_INDEX);
            return 0;
    }
}

BOOL SetWindowTextA(HWND window, const char* text) {
    return SendMessageA(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

int GetWindowTextA(HWND window, char* text, int size) {
    if (size <= 0) return 0;
    text[0] = '\0';
    return static_cast<int>(SendMessageA(window, WM_GETTEXT, static_cast<WPARAM>(size),
                                         reinterpret_cast<LPARAM>(text)));
}

int GetWindowTextLengthA(HWND window) {
    return static_cast<int>(SendMessageA(window, WM_GETTEXTLENGTH, 0, 0));
}

DWORD GetWindowThreadProcessId(HWND handle, DWORD* process) noexcept {
    const Window* const window = Find(handle);
    if (window == nullptr) return 0;
    if (process != nullptr) *process = static_cast<DWORD>(getpid());
    return window->thread != nullptr ? window->thread->id : 0;
}

DWORD GetCurrentThreadId() noexcept {
    return static_cast<DWORD>(gettid());
}
