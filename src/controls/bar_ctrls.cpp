#include <brcore8/controls/bar_ctrls.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

#include <cstddef>
#include <string_view>

SIMPLEMENT_CREATABLE(SToolBarCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SToolTipCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SRebarCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(STabCtrl, SWnd, 2);
SIMPLEMENT_CLASS(SToolBarCatCtrl, SWnd, 3);
SIMPLEMENT_MESSAGE_MAP(SToolBarCatCtrl, SWnd, SOnPaint<&SToolBarCatCtrl::OnPaint>(),
                       SOnLButtonDown<&SToolBarCatCtrl::OnLButtonDown>());

// --- Tool bars ----------------------------------------------------------------------------------

int SToolBarCtrl::Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
    if (!SWnd::Create(TOOLBARCLASSNAMEA, nullptr, style, place, parent, id)) return 0;
    // The control asks which version of its records the program knows.
    Ask(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    return 1;
}

int SToolBarCtrl::AddButton(UINT command, int image, BYTE style) {
    TBBUTTON button{};
    button.iBitmap = image;
    button.idCommand = static_cast<int>(command);
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = command != 0 ? style : BYTE{BTNS_SEP};
    return AddButtons(1, &button);
}

SIZE SToolBarCtrl::GetButtonSize() const {
    const auto packed = Ask<DWORD>(TB_GETBUTTONSIZE);
    return {LOWORD(packed), HIWORD(packed)};
}

// --- Tool tips ----------------------------------------------------------------------------------

namespace {

// A tool that is a rectangle of its window; one without a rectangle is the window itself.
TOOLINFOA ToolOf(const SWnd* window, UINT_PTR id) {
    TOOLINFOA tool{};
    // Without what later versions of the control added, and older ones refuse.
    tool.cbSize = offsetof(TOOLINFOA, lParam) + sizeof tool.lParam;
    tool.hwnd = window != nullptr ? window->GetHandle() : nullptr;
    tool.uId = id;
    return tool;
}

TOOLINFOA WindowTool(const SWnd* window) {
    const HWND handle = window != nullptr ? window->GetHandle() : nullptr;
    TOOLINFOA tool = ToolOf(window, reinterpret_cast<UINT_PTR>(handle));
    tool.uFlags = TTF_IDISHWND;
    return tool;
}

// Those that an identifier names: 0 is the window itself and a rectangle of it alike.
std::vector<TOOLINFOA> ToolsOf(const SWnd* window, UINT_PTR id) {
    std::vector<TOOLINFOA> tools{ToolOf(window, id)};
    if (id == 0) tools.push_back(WindowTool(window));
    return tools;
}

}  // namespace

int SToolTipCtrl::Create(SWnd* parent, DWORD style) {
    return CreateEx(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, style | WS_POPUP, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                    parent != nullptr ? parent->GetHandle() : nullptr);
}

int SToolTipCtrl::AddTool(SWnd* window, const char* text, const RECT* rect, UINT_PTR id) {
    TOOLINFOA tool = rect != nullptr || id != 0 ? ToolOf(window, id) : WindowTool(window);
    tool.uFlags |= TTF_SUBCLASS;
    if (rect != nullptr) tool.rect = *rect;
    tool.lpszText = const_cast<char*>(text);
    return Ask(TTM_ADDTOOLA, 0, &tool);
}

void SToolTipCtrl::DelTool(SWnd* window, UINT_PTR id) {
    for (const TOOLINFOA& tool : ToolsOf(window, id))
        Ask(TTM_DELTOOLA, 0, &tool);
}

void SToolTipCtrl::UpdateTipText(SWnd* window, const char* text, UINT_PTR id) {
    for (TOOLINFOA tool : ToolsOf(window, id)) {
        tool.lpszText = const_cast<char*>(text);
        Ask(TTM_UPDATETIPTEXTA, 0, &tool);
    }
}

SString SToolTipCtrl::GetText(SWnd* window, UINT_PTR id) const {
    char text[kLongest] = {};
    for (TOOLINFOA tool : ToolsOf(window, id)) {
        tool.lpszText = text;
        if (*text == '\0') Ask(TTM_GETTEXTA, kLongest, &tool);
    }
    return SString(text);
}

// --- Bands --------------------------------------------------------------------------------------

int SRebarCtrl::InsertBand(int index, SWnd* child, int minWidth, int minHeight, const char* text) {
    REBARBANDINFOA band{};
    band.cbSize = offsetof(REBARBANDINFOA, wID) + sizeof band.wID;  // as every version knows it
    band.fMask = RBBIM_CHILD | RBBIM_CHILDSIZE | RBBIM_SIZE;
    if (text != nullptr) band.fMask |= RBBIM_TEXT;
    band.lpText = const_cast<char*>(text);
    band.hwndChild = child != nullptr ? child->GetHandle() : nullptr;
    band.cxMinChild = static_cast<UINT>(minWidth);
    band.cyMinChild = static_cast<UINT>(minHeight);
    band.cx = static_cast<UINT>(minWidth);
    return InsertBand(index, band);
}

// --- Tabs ---------------------------------------------------------------------------------------

int STabCtrl::InsertItem(int index, const char* text, LPARAM data) {
    TCITEMA item{};
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = const_cast<char*>(text);
    item.lParam = data;
    return InsertItem(index, item);
}

SString STabCtrl::GetItemText(int index) const {
    char text[260] = {};
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    return GetItem(index, &item) ? SString(text) : SString();
}

LPARAM STabCtrl::GetItemData(int index) const {
    TCITEMA item{};
    item.mask = TCIF_PARAM;
    return GetItem(index, &item) ? item.lParam : 0;
}

// --- Categories ---------------------------------------------------------------------------------

int SToolBarCatCtrl::AddCategory(const char* name) {
    categories_.push_back({SString(name), {}});
    return GetCategoryCount() - 1;
}

SString SToolBarCatCtrl::GetCategoryName(int category) const {
    const auto at = static_cast<std::size_t>(category);
    return at < categories_.size() ? categories_[at].name : SString();
}

int SToolBarCatCtrl::AddButton(int category, UINT command, const char* text) {
    const auto at = static_cast<std::size_t>(category);
    if (at >= categories_.size()) return 0;
    categories_[at].buttons.push_back({command, SString(text)});
    if (category == current_ && GetHandle() != nullptr) Invalidate(1);
    return 1;
}

int SToolBarCatCtrl::GetButtonCount(int category) const {
    const auto at = static_cast<std::size_t>(category);
    return at < categories_.size() ? static_cast<int>(categories_[at].buttons.size()) : 0;
}

int SToolBarCatCtrl::SetCurCategory(int category) {
    if (static_cast<std::size_t>(category) >= categories_.size()) return 0;
    current_ = category;
    picked_ = 0;
    if (GetHandle() != nullptr) Invalidate(1);
    return 1;
}

UINT SToolBarCatCtrl::HitTest(POINT point) const {
    const RECT client = GetClientRect();
    if (current_ < 0 || !PtInRect(&client, point)) return 0;
    const std::vector<Button>& buttons = categories_[static_cast<std::size_t>(current_)].buttons;
    const auto row = static_cast<std::size_t>(point.y / RowHeight());
    return row < buttons.size() ? buttons[row].command : 0;
}

int SToolBarCatCtrl::RowHeight() const noexcept {
    return SScaled(22, GetHandle());
}

void SToolBarCatCtrl::OnLButtonDown(UINT, int x, int y) {
    const UINT command = HitTest({x, y});
    if (command == 0) return;
    picked_ = command;
    Invalidate(1);
    ::SendMessageA(::GetParent(GetHandle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), kButtonPicked),
                   reinterpret_cast<LPARAM>(GetHandle()));
}

void SToolBarCatCtrl::OnPaint() {
    SPaintDC dc(this);
    if (current_ < 0) return;
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.SetBkMode(TRANSPARENT);
    const int height = RowHeight(), edge = SScaled(3, GetHandle());
    RECT row{0, 0, GetClientRect().right, height};
    for (const Button& button : categories_[static_cast<std::size_t>(current_)].buttons) {
        const bool isPicked = button.command == picked_;
        if (isPicked) dc.FillSolidRect(row, ::GetSysColor(COLOR_HIGHLIGHT));
        if (images_ != nullptr)
            images_->DrawCommand(dc, button.command, row.left + edge, row.top + edge);
        RECT text{row.left + height + edge + 1, row.top, row.right, row.bottom};
        dc.SetTextColor(::GetSysColor(isPicked ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT));
        dc.DrawText(button.text, text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        OffsetRect(&row, 0, height);
    }
}
