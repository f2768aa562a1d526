// What keys and the mouse do in menus.

#include <algorithm>
#include <cctype>

#include "platform/posix/desktop/menus/menu_view.h"
#include "platform/posix/desktop/menus/tracker.h"

namespace brcore8::desktop {

// --- Keys ---------------------------------------------------------------------------------------

void Tracker::HandleKey(UINT key) {
    const std::size_t level = Deepest();
    const bool isInBar = isBar_ && level == 0;
    switch (key) {
        case VK_LEFT:
        case VK_RIGHT: {
            const int step = key == VK_RIGHT ? 1 : -1;
            if (isInBar) return MoveInBar(step);
            if (step > 0) EnterSelected(true);
            if (levels_.size() != level + 1) return;
            if (step < 0 && level > (isBar_ ? 1u : 0u)) return CloseBehind(level - 1);
            if (isBar_) MoveInBar(step);
            return;
        }
        case VK_UP:
        case VK_DOWN:
            return isInBar ? EnterSelected(true) : SelectNext(key == VK_DOWN ? 1 : -1);
        case VK_HOME:
        case VK_END:
            levels_[level].selected = kNoItem;
            return SelectNext(key == VK_HOME ? 1 : -1);
        case VK_RETURN:
            return Choose();
        case VK_ESCAPE:
            if (level == 0) return End();
            return CloseBehind(level - 1);
        case VK_MENU:
        case VK_F10:
            return End();
        default:
            return;
    }
}

void Tracker::HandleCharacter(char character) {
    const auto lower = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    const std::size_t level = Deepest();
    std::size_t found = kNoItem;
    std::size_t next = kNoItem;
    std::size_t count = 0;
    {
        const std::lock_guard guard(Lock());
        const Menu* const menu = FindMenu(levels_[level].menu);
        if (menu == nullptr) return;
        for (std::size_t i = 0; i < menu->items.size(); ++i) {
            const MenuItem& item = menu->items[i];
            if (item.IsSeparator() || MnemonicOf(item.text) != lower) continue;
            if (found == kNoItem) found = i;
            const bool isBehind = levels_[level].selected == kNoItem || i > levels_[level].selected;
            if (next == kNoItem && isBehind) next = i;
            ++count;
        }
    }
    if (count > 0) {
        Select(level, count == 1 || next == kNoItem ? found : next);
        if (count == 1 && Lives()) Choose();
        return;
    }
    const LRESULT answer =
        Tell(WM_MENUCHAR, MAKEWPARAM(static_cast<unsigned char>(character), isBar_ ? 0 : MF_POPUP),
             reinterpret_cast<LPARAM>(levels_[level].menu));
    if (!Lives()) return;
    const UINT what = HIWORD(static_cast<std::uint64_t>(answer));
    if (what == MNC_IGNORE) MessageBeep(0);
    // A letter that nobody knows does not enter the bar.
    const bool isIdle = isBar_ && level == 0 && levels_[0].selected == kNoItem;
    if (what == MNC_CLOSE || (what == MNC_IGNORE && isIdle)) End();
    if (what != MNC_EXECUTE && what != MNC_SELECT) return;
    Select(level, LOWORD(static_cast<std::uint64_t>(answer)));
    if (what == MNC_EXECUTE && Lives()) Choose();
}

// --- The mouse ----------------------------------------------------------------------------------

bool Tracker::Hit(POINT screen, std::size_t& level, std::size_t& index) {
    const std::lock_guard guard(Lock());
    for (level = levels_.size(); level-- > 0;) {
        const Menu* const menu = FindMenu(levels_[level].menu);
        if (menu == nullptr) return false;
        const bool isInBar = level == 0 && isBar_;
        const HWND shower = isInBar ? owner_ : menu->window;
        RECT rect{};
        if (shower == nullptr || !GetWindowRect(shower, &rect)) continue;
        POINT inside{screen.x - rect.left, screen.y - rect.top + (isInBar ? 0 : menu->scroll)};
        index = ItemAt(*menu, inside);
        if (index != kNoItem) return true;
        if (!isInBar && PtInRect(&rect, screen)) return true;
    }
    return false;
}

void Tracker::HandleMove(POINT screen) {
    std::size_t level = 0;
    std::size_t index = kNoItem;
    if (!Hit(screen, level, index) || index == kNoItem) return;
    if (level == 0 && isBar_ && levels_.size() == 1) return Select(level, index);
    if (levels_[level].selected == index) return;
    Select(level, index);
    if (Lives()) EnterSelected(false);
}

void Tracker::HandleButton(POINT screen) {
    std::size_t level = 0;
    std::size_t index = kNoItem;
    if (!Hit(screen, level, index)) return End();
    if (index == kNoItem) return;
    const bool isOpen = levels_.size() > level + 1 && levels_[level].selected == index;
    if (isOpen && level == 0 && isBar_) return End();
    if (isOpen) return;
    Select(level, index);
    if (Lives()) EnterSelected(false);
}

void Tracker::HandleRelease(POINT screen) {
    std::size_t level = 0;
    std::size_t index = kNoItem;
    if (!Hit(screen, level, index) || index == kNoItem || levels_[level].selected != index) return;
    bool opens = false;
    {
        const std::lock_guard guard(Lock());
        const MenuPlace place = Selected(level);
        opens = !place || place.Item().subMenu != nullptr;
    }
    if (!opens) Choose();
}

// Three items a notch, of the popup that opened last.
void Tracker::HandleWheel(int turn) {
    const std::size_t level = Deepest();
    {
        const std::lock_guard guard(Lock());
        Menu* const menu = FindMenu(levels_[level].menu);
        if (menu == nullptr || menu->window == nullptr || menu->items.empty()) return;
        RECT client{};
        GetClientRect(menu->window, &client);
        const RECT& last = menu->items.back().rect;
        menu->scroll = std::clamp<int>(menu->scroll - turn * 3 * Height(last) / WHEEL_DELTA, 0,
                                       std::max<int>(last.bottom - client.bottom, 0));
    }
    Repaint(level);
}

void Tracker::HandleMessage(const MSG& message) {
    POINT point{static_cast<std::int16_t>(LOWORD(static_cast<std::uint64_t>(message.lParam))),
                static_cast<std::int16_t>(HIWORD(static_cast<std::uint64_t>(message.lParam)))};
    const bool isClient = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
    if (isClient) ClientToScreen(message.hwnd, &point);
    switch (message.message) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            TranslateMessage(&message);
            return HandleKey(static_cast<UINT>(message.wParam));
        case WM_KEYUP:
        case WM_SYSKEYUP:
            return;
        case WM_CHAR:
        case WM_SYSCHAR:
            if (message.wParam > ' ') HandleCharacter(static_cast<char>(message.wParam));
            return;
        case WM_MOUSEMOVE:
        case WM_NCMOUSEMOVE:
            return HandleMove(point);
        case WM_LBUTTONDOWN:
        case WM_NCLBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_NCLBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_NCRBUTTONDOWN:
            return HandleButton(point);
        case WM_LBUTTONUP:
        case WM_NCLBUTTONUP:
            return HandleRelease(point);
        case WM_RBUTTONUP:
        case WM_NCRBUTTONUP:
            if ((flags_ & TPM_RIGHTBUTTON) != 0) HandleRelease(point);
            return;
        case WM_MOUSEWHEEL:
            return HandleWheel(static_cast<std::int16_t>(HIWORD(message.wParam)));
        default:
            if (!isClient) DispatchMessageA(&message);
    }
}

}  // namespace brcore8::desktop
