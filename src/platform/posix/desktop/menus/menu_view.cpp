#include "platform/posix/desktop/menus/menu_view.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "platform/posix/desktop/scale.h"

namespace brcore8::desktop {

namespace {

// Scaled where they are used.
constexpr int kBarPadding = 8;
constexpr int kMarkWidth = 22;   // left of a popup's texts
constexpr int kArrowWidth = 18;  // right of them
constexpr int kGap = 24;         // between a text and its key
constexpr int kSeparatorHeight = 8;
constexpr int kItemPadding = 3;
constexpr int kPopupBorder = 2;

// A context that measures and draws with the font of menus.
class MenuContext {
public:
    MenuContext() : own_(GetDC(nullptr)), context_(own_) { Select(); }
    explicit MenuContext(HDC context) : context_(context) {
        Select();
        SetBkMode(context_, TRANSPARENT);
    }
    MenuContext(const MenuContext&) = delete;
    MenuContext& operator=(const MenuContext&) = delete;
    ~MenuContext() {
        SelectObject(context_, font_);
        if (own_ != nullptr) ReleaseDC(nullptr, own_);
    }

    // Where nothing can draw, as if every character were alike.
    SIZE Measure(std::string_view text) const {
        RECT rect{};
        const int length = static_cast<int>(text.size());
        if (DrawTextA(context_, text.data(), length, &rect, DT_SINGLELINE | DT_CALCRECT) == 0)
            return {Scaled(7) * length, Scaled(14)};
        return {rect.right, rect.bottom};
    }
    void Text(std::string_view text, RECT rect, UINT format) const {
        DrawTextA(context_, text.data(), static_cast<int>(text.size()), &rect,
                  format | DT_SINGLELINE | DT_VCENTER | DT_NOCLIP);
    }
    HDC Get() const noexcept { return context_; }

private:
    void Select() { font_ = SelectObject(context_, GetStockObject(DEFAULT_GUI_FONT)); }

    HDC own_ = nullptr;
    HDC context_;
    HGDIOBJ font_ = nullptr;
};

struct Parts {
    std::string_view text;
    std::string_view key;  // behind the tab
};

Parts PartsOf(const std::string& text) noexcept {
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos) return {text, {}};
    return {std::string_view(text).substr(0, tab), std::string_view(text).substr(tab + 1)};
}

// The background of an item; the colour of its text is set.
void PrepareItem(HDC context, const MenuItem& item) {
    const bool isLit = (item.state & MFS_HILITE) != 0 && !item.IsSeparator();
    FillRect(context, &item.rect, GetSysColorBrush(isLit ? COLOR_HIGHLIGHT : COLOR_MENU));
    const int lit = isLit ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT;
    SetTextColor(context, GetSysColor(item.IsDisabled() ? COLOR_GRAYTEXT : lit));
}

// A dot for the chosen one of a group, else a tick.
void PaintMark(HDC context, const MenuItem& item) {
    if ((item.state & MFS_CHECKED) == 0) return;
    const COLORREF color = SetTextColor(context, 0);
    SetTextColor(context, color);
    const HPEN pen = CreatePen(PS_SOLID, 1, color);
    const HGDIOBJ old = SelectObject(context, pen);
    const int x = item.rect.left + Scaled(kMarkWidth) / 2;
    const int y = (item.rect.top + item.rect.bottom) / 2;
    if ((item.type & MFT_RADIOCHECK) != 0) {
        const int radius = Scaled(3);
        const HBRUSH brush = CreateSolidBrush(color);
        const HGDIOBJ oldBrush = SelectObject(context, brush);
        Ellipse(context, x - radius, y - radius, x + radius + 1, y + radius + 1);
        SelectObject(context, oldBrush);
        DeleteObject(brush);
    } else {
        const int arm = Scaled(3), reach = Scaled(6), thick = Scaled(2);
        const POINT turn{x - Scaled(1), y + Scaled(2)};
        for (int shift = 0; shift < thick; ++shift) {
            MoveToEx(context, turn.x - arm, turn.y - arm + shift, nullptr);
            LineTo(context, turn.x, turn.y + shift);
            LineTo(context, turn.x + reach, turn.y - reach + shift);
        }
    }
    SelectObject(context, old);
    DeleteObject(pen);
}

void PaintSeparator(HDC context, const RECT& rect) {
    const int middle = (rect.top + rect.bottom) / 2;
    RECT line{rect.left + 2, middle - 1, rect.right - 2, middle};
    FillRect(context, &line, GetSysColorBrush(COLOR_BTNSHADOW));
    OffsetRect(&line, 0, 1);
    FillRect(context, &line, GetSysColorBrush(COLOR_BTNHIGHLIGHT));
}

void PaintItem(const MenuContext& context, const MenuItem& item) {
    PrepareItem(context.Get(), item);
    if (item.IsSeparator()) {
        PaintSeparator(context.Get(), item.rect);
        return;
    }
    PaintMark(context.Get(), item);
    RECT text = item.rect;
    text.left += Scaled(kMarkWidth);
    text.right -= Scaled(kArrowWidth);
    const Parts parts = PartsOf(item.text);
    context.Text(parts.text, text, DT_LEFT);
    context.Text(parts.key, text, DT_RIGHT | DT_NOPREFIX);
    if (item.subMenu == nullptr) return;
    RECT arrow = item.rect;
    arrow.left = arrow.right - Scaled(kArrowWidth);
    context.Text(">", arrow, DT_CENTER | DT_NOPREFIX);
}

}  // namespace

RECT MenuBarOf(const Window& window) noexcept {
    if (!IsTopLevel(window) || window.menu == nullptr) return {};
    RECT bar = window.client;
    OffsetRect(&bar, -window.rect.left, -window.rect.top);
    const int edge = (window.exStyle & WS_EX_CLIENTEDGE) != 0 ? GetSystemMetrics(SM_CXEDGE) : 0;
    InflateRect(&bar, edge, 0);
    bar.bottom = bar.top - edge;
    bar.top = bar.bottom - GetSystemMetrics(SM_CYMENU);
    return bar;
}

void LayOutBar(const Window& window, Menu& menu) {
    const MenuContext context;
    const RECT bar = MenuBarOf(window);
    int x = bar.left;
    for (MenuItem& item : menu.items) {
        const int width = context.Measure(item.text).cx + 2 * Scaled(kBarPadding);
        item.rect = {x, bar.top, x + width, bar.bottom};
        x += width;
    }
}

void PaintMenuBar(const Window& window, HDC target) {
    Menu* const menu = window.menu != nullptr ? FindMenu(window.menu) : nullptr;
    const RECT bar = MenuBarOf(window);
    if (IsRectEmpty(&bar)) return;
    FillRect(target, &bar, GetSysColorBrush(COLOR_MENU));
    if (menu == nullptr) return;
    LayOutBar(window, *menu);
    const int saved = SaveDC(target);
    IntersectClipRect(target, bar.left, bar.top, bar.right, bar.bottom);
    {
        const MenuContext context(target);
        for (const MenuItem& item : menu->items) {
            PrepareItem(target, item);
            context.Text(item.text, item.rect, DT_CENTER);
        }
    }
    RestoreDC(target, saved);
}

void RepaintMenuBar(HWND handle) {
    const Window* const window = Find(handle);
    if (window != nullptr && window->menu != nullptr && IsShown(*window))
        SendMessageA(handle, WM_NCPAINT, 1, 0);
}

SIZE LayOutPopup(Menu& menu) {
    const MenuContext context;
    int textWidth = 0;
    int keyWidth = 0;
    for (const MenuItem& item : menu.items) {
        const Parts parts = PartsOf(item.text);
        textWidth = std::max<int>(textWidth, context.Measure(parts.text).cx);
        if (!parts.key.empty())
            keyWidth = std::max<int>(keyWidth, context.Measure(parts.key).cx + Scaled(kGap));
    }
    const int width = Scaled(kMarkWidth) + textWidth + keyWidth + Scaled(kArrowWidth);
    const int height = context.Measure("X").cy + 2 * Scaled(kItemPadding);
    int y = kPopupBorder;
    for (MenuItem& item : menu.items) {
        const int high = item.IsSeparator() ? Scaled(kSeparatorHeight) : height;
        item.rect = {kPopupBorder, y, kPopupBorder + width, y + high};
        y += high;
    }
    return {width + 2 * kPopupBorder, y + kPopupBorder};
}

void PaintPopup(const Menu& menu, HDC target, int width) {
    const int height = menu.items.empty() ? 0 : menu.items.back().rect.bottom;
    RECT all{0, 0, width, height + kPopupBorder};
    FillRect(target, &all, GetSysColorBrush(COLOR_MENU));
    const MenuContext context(target);
    for (const MenuItem& item : menu.items)
        PaintItem(context, item);
    DrawEdge(target, &all, EDGE_RAISED, BF_RECT);
}

std::size_t ItemAt(const Menu& menu, POINT point) noexcept {
    for (std::size_t i = 0; i < menu.items.size(); ++i)
        if (PtInRect(&menu.items[i].rect, point)) return i;
    return kNoItem;
}

char MnemonicOf(const std::string& text) noexcept {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '&') continue;
        if (text[++i] != '&')
            return static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
    }
    return 0;
}

}  // namespace brcore8::desktop
