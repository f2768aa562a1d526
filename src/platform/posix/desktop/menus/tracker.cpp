#include "platform/posix/desktop/menus/tracker.h"

#include <algorithm>
#include <utility>

#include "platform/posix/desktop/menus/menu_tracking.h"
#include "platform/posix/desktop/menus/menu_view.h"

namespace brcore8::desktop {

namespace {

constexpr const char* kPopupClass = "#32768";
constexpr UINT kGetMenuMessage = 0x01E1;
constexpr UINT kUninitPopup = 0x0125;

}  // namespace

LRESULT CALLBACK PopupMenuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto handle = reinterpret_cast<HMENU>(GetWindowLongPtrA(window, GWLP_USERDATA));
    switch (message) {
        case kGetMenuMessage:
            return reinterpret_cast<LRESULT>(handle);
        case WM_MOUSEACTIVATE:
            return MA_NOACTIVATE;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            PAINTSTRUCT paint;
            const HDC context = BeginPaint(window, &paint);
            RECT client{};
            GetClientRect(window, &client);
            const std::lock_guard guard(Lock());
            if (const Menu* const menu = FindMenu(handle)) {
                SetViewportOrgEx(context, 0, -menu->scroll, nullptr);
                PaintPopup(*menu, context, client.right);
            }
            EndPaint(window, &paint);
            return 0;
        }
        default:
            return DefWindowProcA(window, message, wParam, lParam);
    }
}

thread_local Tracker* Tracker::current = nullptr;

bool Tracker::Lives() {
    const std::lock_guard guard(Lock());
    if (isDone_ || !IsWindow(owner_)) return false;
    for (std::size_t i = 0; i < levels_.size(); ++i) {
        const Menu* const menu = FindMenu(levels_[i].menu);
        if (menu == nullptr) return false;
        if ((i > 0 || !isBar_) && menu->window != nullptr && !IsWindow(menu->window)) return false;
    }
    return true;
}

void Tracker::Begin() {
    SetCapture(owner_);
    Tell(WM_ENTERMENULOOP, !isBar_, 0);
    Tell(WM_INITMENU, reinterpret_cast<WPARAM>(levels_[0].menu), 0);
}

bool Tracker::Open(POINT at, const RECT* keepClear) {
    Tell(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(levels_[0].menu), 0);
    return Lives() && ShowPopup(levels_[0].menu, at, keepClear);
}

// --- Popups -------------------------------------------------------------------------------------

// On the screen, and clear of the rectangle where that is possible.
bool Tracker::ShowPopup(HMENU handle, POINT at, const RECT* keepClear) {
    SIZE size{};
    {
        const std::lock_guard guard(Lock());
        Menu* const menu = FindMenu(handle);
        if (menu == nullptr || menu->window != nullptr) return false;
        menu->scroll = 0;
        size = LayOutPopup(*menu);
    }
    const LONG wide = GetSystemMetrics(SM_CXSCREEN);
    const LONG high = GetSystemMetrics(SM_CYSCREEN);
    size.cy = std::min(size.cy, high);
    if ((flags_ & TPM_RIGHTALIGN) != 0 && levels_.size() == 1) at.x -= size.cx;
    if ((flags_ & TPM_CENTERALIGN) != 0 && levels_.size() == 1) at.x -= size.cx / 2;
    if ((flags_ & TPM_BOTTOMALIGN) != 0 && levels_.size() == 1) at.y -= size.cy;
    if ((flags_ & TPM_VCENTERALIGN) != 0 && levels_.size() == 1) at.y -= size.cy / 2;
    if (keepClear != nullptr && at.x + size.cx > wide && keepClear->left - size.cx >= 0 &&
        at.x >= keepClear->right)
        at.x = keepClear->left - size.cx;
    if (keepClear != nullptr && at.y + size.cy > high && keepClear->top - size.cy >= 0 &&
        at.y >= keepClear->bottom)
        at.y = keepClear->top - size.cy;
    at.x = std::clamp<LONG>(at.x, 0, std::max<LONG>(wide - size.cx, 0));
    at.y = std::clamp<LONG>(at.y, 0, std::max<LONG>(high - size.cy, 0));
    const HWND window =
        CreateWindowExA(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kPopupClass, nullptr, WS_POPUP, at.x,
                        at.y, size.cx, size.cy, owner_, nullptr, nullptr, nullptr);
    if (window == nullptr) return false;
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(handle));
    {
        const std::lock_guard guard(Lock());
        Menu* const menu = FindMenu(handle);
        if (menu != nullptr) menu->window = window;
        if (menu == nullptr) End();
    }
    if (isDone_) {
        DestroyWindow(window);
        return false;
    }
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    return true;
}

void Tracker::CloseBehind(std::size_t level) {
    while (levels_.size() > level + 1) {
        const HMENU handle = levels_.back().menu;
        levels_.pop_back();
        HWND window = nullptr;
        {
            const std::lock_guard guard(Lock());
            Menu* const menu = FindMenu(handle);
            if (menu == nullptr) continue;
            window = std::exchange(menu->window, nullptr);
            for (MenuItem& item : menu->items)
                item.state &= ~UINT{MFS_HILITE};
        }
        if (window != nullptr) DestroyWindow(window);
        Tell(kUninitPopup, reinterpret_cast<WPARAM>(handle), 0);
    }
}

void Tracker::EnterSelected(bool selectsFirst) {
    const std::size_t level = Deepest();
    HMENU sub = nullptr;
    RECT rect{};
    {
        const std::lock_guard guard(Lock());
        const MenuPlace place = Selected(level);
        if (!place || place.Item().subMenu == nullptr || place.Item().IsDisabled()) return;
        sub = place.Item().subMenu;
    }
    const std::size_t index = levels_[level].selected;
    Tell(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(sub), MAKELPARAM(index, 0));
    if (!Lives() || GetMenuItemCount(sub) <= 0) return;
    const HWND shower = level == 0 && isBar_ ? owner_ : nullptr;
    if (!GetMenuItemRect(shower, levels_[level].menu, static_cast<UINT>(index), &rect)) return;
    const bool isDown = level == 0 && isBar_;
    levels_.push_back({sub, kNoItem});
    if (!ShowPopup(sub, isDown ? POINT{rect.left, rect.bottom} : POINT{rect.right, rect.top},
                   &rect)) {
        if (levels_.size() > level + 1) levels_.pop_back();
        return;
    }
    if (selectsFirst) SelectNext(1);
}

// --- Selecting ----------------------------------------------------------------------------------

void Tracker::Repaint(std::size_t level) {
    if (level == 0 && isBar_) {
        RepaintMenuBar(owner_);
        return;
    }
    const std::lock_guard guard(Lock());
    const Menu* const menu = FindMenu(levels_[level].menu);
    if (menu != nullptr && menu->window != nullptr) InvalidateRect(menu->window, nullptr, 0);
}

// Scrolls a popup that is higher than the screen.
void Tracker::ShowSelected(std::size_t level) {
    const std::lock_guard guard(Lock());
    const MenuPlace place = Selected(level);
    if (!place || place.menu->window == nullptr) return;
    RECT client{};
    GetClientRect(place.menu->window, &client);
    const RECT& rect = place.Item().rect;
    int& scroll = place.menu->scroll;
    scroll = std::clamp<int>(scroll, rect.bottom - client.bottom, rect.top);
    scroll = std::max(scroll, 0);
}

void Tracker::Select(std::size_t level, std::size_t index) {
    CloseBehind(level);
    if (levels_[level].selected == index) return;
    levels_[level].selected = index;
    UINT item = 0;
    UINT flags = 0xFFFF;
    {
        const std::lock_guard guard(Lock());
        Menu* const menu = FindMenu(levels_[level].menu);
        if (menu == nullptr) return;
        for (MenuItem& each : menu->items)
            each.state &= ~UINT{MFS_HILITE};
        if (index < menu->items.size()) {
            MenuItem& each = menu->items[index];
            each.state |= MFS_HILITE;
            item = each.subMenu != nullptr ? static_cast<UINT>(index) : each.id;
            flags = each.type | each.state | (each.subMenu != nullptr ? MF_POPUP : 0);
        }
    }
    ShowSelected(level);
    Repaint(level);
    Tell(WM_MENUSELECT, MAKEWPARAM(item, flags), reinterpret_cast<LPARAM>(levels_[level].menu));
}

void Tracker::SelectNext(int step) {
    const std::size_t level = Deepest();
    std::size_t index = levels_[level].selected;
    {
        const std::lock_guard guard(Lock());
        const Menu* const menu = FindMenu(levels_[level].menu);
        if (menu == nullptr || menu->items.empty()) return;
        const std::size_t count = menu->items.size();
        if (index >= count) index = step > 0 ? count - 1 : 0;
        for (std::size_t tried = 0; tried < count; ++tried) {
            index = (index + count + static_cast<std::size_t>(step)) % count;
            if (!menu->items[index].IsSeparator()) break;
        }
        if (menu->items[index].IsSeparator()) return;
    }
    Select(level, index);
}

// To the neighbour in the bar, with its popup when one was open.
void Tracker::MoveInBar(int step) {
    const bool wasOpen = levels_.size() > 1;
    CloseBehind(0);
    SelectNext(step);
    if (wasOpen && Lives()) EnterSelected(true);
}

// The selected item: its popup opens, or it is what was wanted.
void Tracker::Choose() {
    HMENU sub = nullptr;
    {
        const std::lock_guard guard(Lock());
        const MenuPlace place = Selected(Deepest());
        if (!place || place.Item().IsDisabled() || place.Item().IsSeparator()) return;
        sub = place.Item().subMenu;
        if (sub == nullptr) chosen_ = place.Item().id;
    }
    if (sub != nullptr)
        EnterSelected(true);
    else
        End();
}

// --- The loop -----------------------------------------------------------------------------------

UINT Tracker::Run() {
    bool wasTold = false;
    while (Lives()) {
        MSG message;
        if (!wasTold && !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) {
            wasTold = true;
            HWND shown = nullptr;
            {
                const std::lock_guard guard(Lock());
                if (const Menu* const menu = FindMenu(levels_.back().menu)) shown = menu->window;
            }
            Tell(WM_ENTERIDLE, MSGF_MENU, reinterpret_cast<LPARAM>(shown));
            continue;
        }
        const BOOL got = GetMessageA(&message, nullptr, 0, 0);
        if (got == 0) PostQuitMessage(static_cast<int>(message.wParam));
        if (got <= 0) break;
        wasTold = false;
        HandleMessage(message);
        if (Lives() && GetCapture() != owner_) SetCapture(owner_);
    }
    Finish();
    return chosen_;
}

void Tracker::Leave() {
    End();
    if (GetCapture() == owner_) ReleaseCapture();
    std::vector<HWND> shown;
    {
        const std::lock_guard guard(Lock());
        for (const Level& level : levels_) {
            const Menu* const menu = FindMenu(level.menu);
            if (menu != nullptr && menu->window != nullptr) shown.push_back(menu->window);
        }
    }
    for (const HWND window : shown)
        ShowWindow(window, SW_HIDE);
}

void Tracker::Finish() {
    isDone_ = true;
    const HMENU top = levels_[0].menu;
    if (GetCapture() == owner_) ReleaseCapture();
    CloseBehind(0);
    HWND window = nullptr;
    {
        const std::lock_guard guard(Lock());
        if (Menu* const menu = FindMenu(top)) {
            window = std::exchange(menu->window, nullptr);
            for (MenuItem& item : menu->items)
                item.state &= ~UINT{MFS_HILITE};
        }
    }
    if (window != nullptr) DestroyWindow(window);
    if (window != nullptr) Tell(kUninitPopup, reinterpret_cast<WPARAM>(top), 0);
    if (isBar_) RepaintMenuBar(owner_);
    Tell(WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    Tell(WM_EXITMENULOOP, !isBar_, 0);
}

}  // namespace brcore8::desktop
