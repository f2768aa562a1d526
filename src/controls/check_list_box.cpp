// The list box that keeps and draws its items itself.

#include <brcore8/controls/list_ctrls.h>
#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

#include "controls/take_focus.h"
#include "controls/track_position.h"

#include <algorithm>
#include <cstring>

SIMPLEMENT_CREATABLE(SCheckListBoxCtrl, SListBoxCtrl, 2);
SIMPLEMENT_MESSAGE_MAP(
    SCheckListBoxCtrl, SListBoxCtrl, SOnMessage<&SCheckListBoxCtrl::OnAdd>(LB_ADDSTRING),
    SOnMessage<&SCheckListBoxCtrl::OnInsert>(LB_INSERTSTRING),
    SOnMessage<&SCheckListBoxCtrl::OnDelete>(LB_DELETESTRING),
    SOnMessage<&SCheckListBoxCtrl::OnReset>(LB_RESETCONTENT),
    SOnMessage<&SCheckListBoxCtrl::OnCount>(LB_GETCOUNT),
    SOnMessage<&SCheckListBoxCtrl::OnGetText>(LB_GETTEXT),
    SOnMessage<&SCheckListBoxCtrl::OnGetTextLen>(LB_GETTEXTLEN),
    SOnMessage<&SCheckListBoxCtrl::OnFind>(LB_FINDSTRING),
    SOnMessage<&SCheckListBoxCtrl::OnFindExact>(LB_FINDSTRINGEXACT),
    SOnMessage<&SCheckListBoxCtrl::OnSelectString>(LB_SELECTSTRING),
    SOnMessage<&SCheckListBoxCtrl::OnGetData>(LB_GETITEMDATA),
    SOnMessage<&SCheckListBoxCtrl::OnSetData>(LB_SETITEMDATA),
    SOnMessage<&SCheckListBoxCtrl::OnGetCurSel>(LB_GETCURSEL),
    SOnMessage<&SCheckListBoxCtrl::OnSetCurSel>(LB_SETCURSEL),
    SOnMessage<&SCheckListBoxCtrl::OnGetTop>(LB_GETTOPINDEX),
    SOnMessage<&SCheckListBoxCtrl::OnSetTop>(LB_SETTOPINDEX),
    SOnMessage<&SCheckListBoxCtrl::OnGetHeight>(LB_GETITEMHEIGHT),
    SOnMessage<&SCheckListBoxCtrl::OnGetRect>(LB_GETITEMRECT),
    SOnMessage<&SCheckListBoxCtrl::OnFromPoint>(LB_ITEMFROMPOINT),
    SOnMessage<&SCheckListBoxCtrl::OnSetFont>(WM_SETFONT),
    SOnGetDlgCode<&SCheckListBoxCtrl::OnGetDlgCode>(), SOnPaint<&SCheckListBoxCtrl::OnPaint>(),
    SOnLButtonDown<&SCheckListBoxCtrl::OnLButtonDown>(),
    SOnLButtonDblClk<&SCheckListBoxCtrl::OnLButtonDown>(),
    SOnVScroll<&SCheckListBoxCtrl::OnVScroll>(), SOnMouseWheel<&SCheckListBoxCtrl::OnMouseWheel>(),
    SOnSize<&SCheckListBoxCtrl::OnSize>(), SOnKeyDown<&SCheckListBoxCtrl::OnKeyDown>(),
    SOnSetFocus<&SCheckListBoxCtrl::OnFocusChanged>(),
    SOnKillFocus<&SCheckListBoxCtrl::OnFocusChanged>());

struct SCheckListBoxCtrl::Item {
    SString text;
    LPARAM data = 0;
    int check = kUnchecked;
    bool isEnabled = true;
};

SCheckListBoxCtrl::SCheckListBoxCtrl() = default;
SCheckListBoxCtrl::~SCheckListBoxCtrl() = default;

// --- Items --------------------------------------------------------------------------------------

SCheckListBoxCtrl::Item* SCheckListBoxCtrl::At(WPARAM index) noexcept {
    return index < items_.size() ? &items_[index] : nullptr;
}

int SCheckListBoxCtrl::GetCheck(int index) const {
    const Item* const item = At(static_cast<WPARAM>(index));
    return item != nullptr ? item->check : kUnchecked;
}

int SCheckListBoxCtrl::SetCheck(int index, int check) {
    Item* const item = At(static_cast<WPARAM>(index));
    if (item == nullptr) return 0;
    item->check = std::clamp<int>(check, kUnchecked, kIndeterminate);
    Invalidate(1);
    return 1;
}

int SCheckListBoxCtrl::IsEnabled(int index) const {
    const Item* const item = At(static_cast<WPARAM>(index));
    return item != nullptr && item->isEnabled;
}

int SCheckListBoxCtrl::Enable(int index, int on) {
    Item* const item = At(static_cast<WPARAM>(index));
    if (item == nullptr) return 0;
    item->isEnabled = on != 0;
    Invalidate(1);
    return 1;
}

int SCheckListBoxCtrl::GetCheckedCount() const {
    return static_cast<int>(std::count_if(items_.begin(), items_.end(),
                                          [](const Item& item) { return item.check == kChecked; }));
}

LRESULT SCheckListBoxCtrl::Insert(WPARAM index, LPARAM text) {
    const std::size_t at = static_cast<int>(index) == -1 ? items_.size() : index;
    if (at > items_.size()) return LB_ERR;
    Item item;
    item.text = reinterpret_cast<const char*>(text);
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(at), std::move(item));
    if (current_ >= static_cast<int>(at)) ++current_;
    ShowScrolled();
    return static_cast<LRESULT>(at);
}

// Sorted in where the style says so.
LRESULT SCheckListBoxCtrl::OnAdd(WPARAM, LPARAM text) {
    std::size_t at = items_.size();
    if ((GetStyle() & LBS_SORT) != 0) {
        const SString added(reinterpret_cast<const char*>(text));
        const auto place = std::upper_bound(
            items_.begin(), items_.end(), added,
            [](const SString& a, const Item& b) { return a.CompareNoCase(b.text) < 0; });
        at = static_cast<std::size_t>(place - items_.begin());
    }
    return Insert(at, text);
}

LRESULT SCheckListBoxCtrl::OnDelete(WPARAM index, LPARAM) {
    if (At(index) == nullptr) return LB_ERR;
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
    const int at = static_cast<int>(index);
    if (current_ == at) current_ = -1;
    if (current_ > at) --current_;
    top_ = std::max(0, std::min(top_, static_cast<int>(items_.size()) - 1));
    ShowScrolled();
    return static_cast<LRESULT>(items_.size());
}

LRESULT SCheckListBoxCtrl::OnReset(WPARAM, LPARAM) {
    items_.clear();
    current_ = -1;
    top_ = 0;
    ShowScrolled();
    return 0;
}

LRESULT SCheckListBoxCtrl::OnCount(WPARAM, LPARAM) {
    return static_cast<LRESULT>(items_.size());
}

LRESULT SCheckListBoxCtrl::OnGetText(WPARAM index, LPARAM out) {
    const Item* const item = At(index);
    if (item == nullptr) return LB_ERR;
    const auto length = static_cast<std::size_t>(item->text.LengthByte());
    std::memcpy(reinterpret_cast<char*>(out), static_cast<const char*>(item->text), length + 1);
    return static_cast<LRESULT>(length);
}

LRESULT SCheckListBoxCtrl::OnGetTextLen(WPARAM index, LPARAM) {
    const Item* const item = At(index);
    return item != nullptr ? static_cast<LRESULT>(item->text.LengthByte()) : LRESULT{LB_ERR};
}

LRESULT SCheckListBoxCtrl::OnGetData(WPARAM index, LPARAM) {
    const Item* const item = At(index);
    return item != nullptr ? item->data : LRESULT{LB_ERR};
}

LRESULT SCheckListBoxCtrl::OnSetData(WPARAM index, LPARAM data) {
    Item* const item = At(index);
    if (item == nullptr) return LB_ERR;
    item->data = data;
    return 0;
}

LRESULT SCheckListBoxCtrl::Find(WPARAM after, LPARAM text, bool whole) const {
    const SString wanted(reinterpret_cast<const char*>(text));
    const std::size_t count = items_.size();
    const std::size_t first = At(after) != nullptr ? after + 1 : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = (first + i) % count;
        const SString& found = items_[at].text;
        if ((whole ? found : found.Left(wanted.Length())).CompareNoCase(wanted) == 0)
            return static_cast<LRESULT>(at);
    }
    return LB_ERR;
}

// --- The selection ------------------------------------------------------------------------------

void SCheckListBoxCtrl::Select(int index) {
    current_ = index;
    if (index >= 0) {
        top_ = std::min(top_, index);
        top_ = std::max(top_, index - VisibleCount() + 1);
    }
    ShowScrolled();
}

LRESULT SCheckListBoxCtrl::OnSetCurSel(WPARAM index, LPARAM) {
    const bool isThere = At(index) != nullptr;
    Select(isThere ? static_cast<int>(index) : -1);
    return isThere ? static_cast<LRESULT>(index) : LRESULT{LB_ERR};
}

LRESULT SCheckListBoxCtrl::OnSelectString(WPARAM after, LPARAM text) {
    const LRESULT found = Find(after, text, false);
    if (found >= 0) Select(static_cast<int>(found));
    return found;
}

LRESULT SCheckListBoxCtrl::OnSetTop(WPARAM index, LPARAM) {
    if (At(index) == nullptr) return LB_ERR;
    top_ = static_cast<int>(index);
    ShowScrolled();
    return 0;
}

// Tells the parent last: it may do anything, also to this control.
void SCheckListBoxCtrl::Turn(int index) {
    if (!IsEnabled(index)) return;
    SetCheck(index, GetCheck(index) == kChecked ? kUnchecked : kChecked);
    ::SendMessageA(::GetParent(GetHandle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), kCheckChanged),
                   reinterpret_cast<LPARAM>(GetHandle()));
}

void SCheckListBoxCtrl::OnLButtonDown(UINT, int x, int y) {
    if (!brcore8::TakeFocus(*this)) return;
    const int index = top_ + y / ItemHeight();
    if (y < 0 || At(static_cast<WPARAM>(index)) == nullptr) return;
    Select(index);
    if (x < ItemHeight()) Turn(index);
}

void SCheckListBoxCtrl::OnKeyDown(UINT key, UINT, UINT) {
    const int last = static_cast<int>(items_.size()) - 1;
    switch (key) {
        case VK_SPACE:
            Turn(current_);
            break;
        case VK_UP:
            if (current_ > 0) Select(current_ - 1);
            break;
        case VK_DOWN:
            if (current_ < last) Select(current_ + 1);
            break;
        case VK_HOME:
            if (last >= 0) Select(0);
            break;
        case VK_END:
            Select(last);
            break;
        case VK_PRIOR:
            if (last >= 0) Select(std::max(current_ - VisibleCount(), 0));
            break;
        case VK_NEXT:
            if (last >= 0) Select(std::min(std::max(current_, 0) + VisibleCount(), last));
            break;
        default:
            Default();
    }
}

// --- Scrolling ----------------------------------------------------------------------------------

// The bar stays, grey, where all fits: a list that has none was not made with one.
void SCheckListBoxCtrl::ShowScrolled() {
    Invalidate(1);
    if ((GetStyle() & WS_VSCROLL) == 0) return;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = std::max(static_cast<int>(items_.size()) - 1, 0);
    info.nPage = static_cast<UINT>(VisibleCount());
    info.nPos = top_;
    ::SetScrollInfo(GetHandle(), SB_VERT, &info, 1);
}

void SCheckListBoxCtrl::ScrollTo(int top) {
    const int most = std::max(static_cast<int>(items_.size()) - VisibleCount(), 0);
    const int wanted = std::clamp(top, 0, most);
    if (wanted == top_) return;
    top_ = wanted;
    ShowScrolled();
}

void SCheckListBoxCtrl::OnVScroll(UINT code, SWnd*, UINT position) {
    switch (code) {
        case SB_LINEUP:
            ScrollTo(top_ - 1);
            break;
        case SB_LINEDOWN:
            ScrollTo(top_ + 1);
            break;
        case SB_PAGEUP:
            ScrollTo(top_ - VisibleCount());
            break;
        case SB_PAGEDOWN:
            ScrollTo(top_ + VisibleCount());
            break;
        case SB_TOP:
            ScrollTo(0);
            break;
        case SB_BOTTOM:
            ScrollTo(static_cast<int>(items_.size()));
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            ScrollTo(brcore8::TrackPosition(GetHandle(), SB_VERT, position));
            break;
    }
}

// Three lines a notch; fine wheels turn by parts of one.
int SCheckListBoxCtrl::OnMouseWheel(UINT, int delta, int, int) {
    turned_ += 3 * delta;
    const int lines = turned_ / WHEEL_DELTA;
    turned_ -= lines * WHEEL_DELTA;
    ScrollTo(top_ - lines);
    return 1;
}

void SCheckListBoxCtrl::OnSize(UINT, int, int) {
    Default();
    ShowScrolled();
}

// --- The look -----------------------------------------------------------------------------------

LRESULT SCheckListBoxCtrl::OnSetFont(WPARAM font, LPARAM) {
    font_ = reinterpret_cast<HFONT>(font);
    ShowScrolled();
    return 0;
}

// Of a line of text and two pixels around it.
int SCheckListBoxCtrl::ItemHeight() const {
    SClientDC dc(const_cast<SCheckListBoxCtrl*>(this));
    const HGDIOBJ font = font_ != nullptr ? font_ : ::GetStockObject(DEFAULT_GUI_FONT);
    const SSelected selected(dc, font);
    TEXTMETRICA metrics{};
    dc.GetTextMetrics(&metrics);
    return std::max<int>(metrics.tmHeight, SScaled(12, GetHandle())) + SScaled(4, GetHandle());
}

int SCheckListBoxCtrl::VisibleCount() const {
    return std::max<int>(1, GetClientRect().bottom / ItemHeight());
}

RECT SCheckListBoxCtrl::PlaceOf(int index) const {
    const int height = ItemHeight();
    const int y = (index - top_) * height;
    return {0, y, GetClientRect().right, y + height};
}

LRESULT SCheckListBoxCtrl::OnGetRect(WPARAM index, LPARAM rect) {
    if (At(index) == nullptr) return LB_ERR;
    *reinterpret_cast<RECT*>(rect) = PlaceOf(static_cast<int>(index));
    return 1;
}

LRESULT SCheckListBoxCtrl::OnFromPoint(WPARAM, LPARAM point) {
    const auto packed = static_cast<std::uintptr_t>(point);
    const int y = static_cast<std::int16_t>(HIWORD(packed));
    const int last = static_cast<int>(items_.size()) - 1;
    const int index = top_ + (y >= 0 ? y / ItemHeight() : -1);
    const bool outside = index < top_ || index > last;
    return MAKELRESULT(std::clamp(index, std::min(0, last), last), outside);
}

void SCheckListBoxCtrl::OnPaint() {
    SPaintDC dc(this);
    const HGDIOBJ font = font_ != nullptr ? font_ : ::GetStockObject(DEFAULT_GUI_FONT);
    const SSelected selected(dc, font);
    dc.SetBkMode(TRANSPARENT);
    const int end = std::min(static_cast<int>(items_.size()), top_ + VisibleCount() + 1);
    for (int i = top_; i < end; ++i) {
        const Item& item = items_[static_cast<std::size_t>(i)];
        const RECT row = PlaceOf(i);
        const bool isCurrent = i == current_;
        RECT box{2, row.top + 2, row.bottom - row.top - 2, row.bottom - 2};
        dc.FillSolidRect(row, ::GetSysColor(isCurrent ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        dc.FillSolidRect(box, ::GetSysColor(item.isEnabled ? COLOR_WINDOW : COLOR_BTNFACE));
        dc.FrameSolidRect(box, ::GetSysColor(COLOR_WINDOWFRAME));
        const int mark = SScaled(3, GetHandle());
        InflateRect(&box, -mark, -mark);
        if (item.check != kUnchecked)
            dc.FillSolidRect(
                box, ::GetSysColor(item.check == kChecked ? COLOR_WINDOWTEXT : COLOR_BTNSHADOW));
        RECT text{row.bottom - row.top + 2, row.top, row.right, row.bottom};
        dc.SetTextColor(::GetSysColor(isCurrent         ? COLOR_HIGHLIGHTTEXT
                                      : !item.isEnabled ? COLOR_GRAYTEXT
                                                        : COLOR_WINDOWTEXT));
        dc.DrawText(item.text, text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
        if (isCurrent && ::GetFocus() == GetHandle()) dc.DrawFocusRect(text);
    }
}
