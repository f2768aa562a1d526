#include <brcore8/bars/status_bar.h>
#include <brcore8/routing/cmd_ui.h>
#include <brcore8/window/scaled.h>

#include <algorithm>
#include <vector>

SIMPLEMENT_CREATABLE(SStatusBar, SCtrlBar, 2);
SIMPLEMENT_MESSAGE_MAP(SStatusBar, SCtrlBar, SOnSize<&SStatusBar::OnSize>());

namespace {

// Around a pane's text, left and right together.
constexpr int kTextMargin = 8;

// The control gives a byte to the number of a part, and 255 to the simple one.
constexpr int kMaxParts = 254;

UINT LookOf(unsigned long style) {
    if ((style & SStatusBarPane::NoBorders) != 0) return SBT_NOBORDERS;
    return (style & SStatusBarPane::PopOut) != 0 ? SBT_POPOUT : 0;
}

// A pane, while its command is asked. The handler may change the panes or end the bar before it
// tells.
class PaneUI : public SCmdUI {
public:
    PaneUI(SStatusBar& bar, int shown) noexcept
        : bar_(bar), handle_(bar.GetHandle()), shown_(shown) {}

    void Enable(int on) override { Change(SStatusBarPane::Disabled, !on); }
    void SetCheck(int state) override { Change(SStatusBarPane::PopOut, state != 0); }
    void SetRadio(int on) override { SetCheck(on); }
    void SetText(const char* text) override {
        if (!IsThere()) return;
        int index = shown_;
        const SString copy(text);
        bar_.LayoutOf(index).SetPaneText(index, &copy, 1);
    }

private:
    bool IsThere() const {
        return SWnd::FromHandlePermanent(handle_) == &bar_ && shown_ < bar_.GetShownCount();
    }
    void Change(unsigned long bit, bool on) {
        if (!IsThere()) return;
        int index = shown_;
        SStatusBarLayout& layout = bar_.LayoutOf(index);
        const unsigned long style = layout.GetPaneStyle(index);
        layout.SetPaneStyle(index, on ? style | bit : style & ~bit);
    }

    SStatusBar& bar_;
    const HWND handle_;
    const int shown_;
};

}  // namespace

SStatusBar::SStatusBar() {
    SetSide(Bottom);
    own_.bar_ = this;
    own_.InsertPane(0, 0, 0);
}

SStatusBar::~SStatusBar() {
    extra_ = nullptr;
    own_.bar_ = nullptr;
    for (SStatusBarLayout* const layout : attached_)
        layout->bar_ = nullptr;
}

int SStatusBar::Create(SWnd* parent, unsigned long style, unsigned long controlStyle,
                       unsigned int id) {
    const DWORD whole = static_cast<DWORD>(style | controlStyle);
    if (!SWnd::Create(STATUSCLASSNAMEA, nullptr, whole, RECT{}, parent, id)) return 0;
    RecalcPanes();
    return 1;
}

int SStatusBar::SetIndicators(const unsigned int* ids, int count) {
    if (count <= 0) return 0;
    while (GetPaneCount() > 1)
        own_.panes_.Remove(GetPaneCount() - 1);
    own_.panes_[0] = SStatusBarPane();
    own_.panes_[0].id = ids[0];
    for (int i = 1; i < count; ++i) {
        if (!own_.InsertPane(i, ids[i], SStatusBarPane::SizeToText)) return 0;
        SString text;
        if (ids[i] != 0 && text.LoadString(ids[i])) own_.SetPaneText(i, &text, 0);
    }
    RecalcPanes();
    return 1;
}

// --- What is shown -------------------------------------------------------------------------------

void SStatusBar::SetExtraLayout(SStatusBarLayout* layout) {
    if (layout == extra_ || (layout != nullptr && layout->bar_ != this)) return;
    extra_ = layout;
    RecalcPanes();
}

int SStatusBar::GetShownCount() const {
    const int count = extra_ != nullptr ? 1 + extra_->GetPaneCount() : GetPaneCount();
    return std::min(count, kMaxParts);
}

SStatusBarLayout& SStatusBar::LayoutOf(int& shown) {
    if (extra_ == nullptr || shown == 0) return own_;
    --shown;
    return *extra_;
}

SStatusBarPane& SStatusBar::Shown(int shown) {
    SStatusBarLayout& layout = LayoutOf(shown);
    return layout.panes_[shown];
}

RECT SStatusBar::GetShownRect(int shown) const {
    RECT rect{};
    SendMessage(SB_GETRECT, static_cast<WPARAM>(shown), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

int SStatusBar::MeasureText(const SString& text) const {
    if (GetHandle() == nullptr) return 0;
    const HDC context = ::GetDC(GetHandle());
    const HGDIOBJ old = ::SelectObject(context, ::GetStockObject(DEFAULT_GUI_FONT));
    SIZE size{};
    ::GetTextExtentPoint32A(context, text, text.LengthByte(), &size);
    ::SelectObject(context, old);
    ::ReleaseDC(GetHandle(), context);
    return size.cx;
}

int SStatusBar::RecalcPanes() {
    if (GetHandle() == nullptr) return 0;
    int borders[3] = {};
    SendMessage(SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
    const int between = borders[2];
    const int end = std::max(static_cast<int>(GetClientRect().right) - GetReservedWidth(), 0);

    const int margin = SScaled(kTextMargin, GetHandle());
    const int count = GetShownCount();
    std::vector<int> edges(static_cast<std::size_t>(count));
    const auto roomOf = [&](int shown) {
        const SStatusBarPane& pane = Shown(shown);
        const bool isGone = (pane.style & SStatusBarPane::SizeToText) != 0 &&
                            ((pane.style & SStatusBarPane::Disabled) != 0 || pane.width <= 0);
        return isGone ? 0 : std::clamp(pane.width, 0, end) + margin + between;
    };
    int first = end;
    for (int i = 1; i < count && first > 0; ++i)
        first = std::max(first - roomOf(i), 0);
    edges[0] = first;
    for (int i = 1; i < count; ++i)
        edges[static_cast<std::size_t>(i)] =
            std::min(edges[static_cast<std::size_t>(i) - 1] + roomOf(i), end);
    SendMessage(SB_SETPARTS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(edges.data()));
    for (int i = 0; i < count; ++i)
        Shown(i).changed = 1;
    return RefreshPanes();
}

int SStatusBar::RefreshPanes() {
    if (GetHandle() == nullptr) return 0;
    for (int i = 0; i < GetShownCount(); ++i) {
        SStatusBarPane& pane = Shown(i);
        if (!pane.changed) continue;
        pane.changed = 0;
        const bool isBlank = (pane.style & SStatusBarPane::Disabled) != 0;
        const char* const text = isBlank ? "" : static_cast<const char*>(pane.text);
        SendMessage(SB_SETTEXTA, static_cast<WPARAM>(i) | LookOf(pane.style),
                    reinterpret_cast<LPARAM>(text));
    }
    return 1;
}

void SStatusBar::OnUpdateCmdUI(SCmdTarget* target, int) {
    const HWND handle = GetHandle();
    // A handler may change the panes, or end the bar.
    for (int shown = 0; FromHandlePermanent(handle) == this && shown < GetShownCount(); ++shown) {
        const unsigned int id = Shown(shown).id;
        if (id == 0) continue;
        PaneUI element(*this, shown);
        element.SetElement(id, static_cast<UINT>(shown), this);
        target->OnCmdMsg(id, kUpdateRequest, &element, nullptr);
    }
}

// --- Place ---------------------------------------------------------------------------------------

int SStatusBar::GetGripWidth() const {
    if ((GetStyle() & SBARS_SIZEGRIP) == 0 || ::IsZoomed(::GetParent(GetHandle()))) return 0;
    return ::GetSystemMetrics(SM_CXVSCROLL);
}

int SStatusBar::GetReservedWidth() const {
    return GetGripWidth();
}

void SStatusBar::TakeRoom(RECT* room) {
    // The control knows its height and goes to its parent's lower edge when it is told a size.
    SendMessage(WM_SIZE);
    const RECT place = GetWindowRect();
    room->bottom = std::max(room->bottom - (place.bottom - place.top), room->top);
}

void SStatusBar::OnSize(UINT, int, int) {
    Default();
    RecalcPanes();
}
