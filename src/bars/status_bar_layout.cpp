#include <brcore8/bars/status_bar.h>
#include <brcore8/core/exception.h>
#include <brcore8/window/scaled.h>

SIMPLEMENT_CREATABLE(SStatusBarLayout, SObject, 2);

SStatusBarLayout::SStatusBarLayout(SStatusBar* bar) {
    if (bar != nullptr) Attach(bar);
}

int SStatusBarLayout::Attach(SStatusBar* bar) {
    if (bar != bar_) Detach();
    if (bar == nullptr) return 1;
    if (bar != bar_) bar->attached_.Add(this);
    bar_ = bar;
    bar->SetExtraLayout(this);
    return 1;
}

SStatusBar* SStatusBarLayout::Detach() {
    SStatusBar* const bar = bar_;
    if (bar == nullptr) return nullptr;
    bar_ = nullptr;
    for (int i = bar->attached_.GetCount(); i-- > 0;)
        if (bar->attached_[i] == this) bar->attached_.Remove(i);
    if (bar->GetExtraLayout() == this) bar->SetExtraLayout(nullptr);
    return bar;
}

int SStatusBarLayout::Activate(int on) {
    if (bar_ == nullptr) return 0;
    bar_->SetExtraLayout(on ? this : nullptr);
    return 1;
}

void SStatusBarLayout::Recalc() {
    if (bar_ != nullptr) bar_->RecalcPanes();
}

void SStatusBarLayout::Refresh() {
    if (bar_ != nullptr) bar_->RefreshPanes();
}

int SStatusBarLayout::InsertPane(int index, unsigned int id, unsigned long style) {
    constexpr int kDefaultWidth = 80, kGrowth = 5;
    try {
        if (panes_.GetCount() == panes_.GetCapacity()) panes_.GrowTo(panes_.GetCount() + kGrowth);
        SStatusBarPane pane;
        pane.id = id;
        const HWND bar = bar_ != nullptr ? bar_->GetHandle() : nullptr;
        pane.width = (style & SStatusBarPane::SizeToText) != 0 ? 0 : SScaled(kDefaultWidth, bar);
        pane.style = style;
        panes_.Insert(index, std::move(pane));
    } catch (const SEOutOfMemory&) {
        return 0;
    }
    Recalc();
    return 1;
}

int SStatusBarLayout::DeletePane(int index) {
    panes_.Remove(index);
    Recalc();
    return 1;
}

int SStatusBarLayout::GetPaneText(int index, SString* text) const {
    *text = panes_[index].text;
    return 1;
}

int SStatusBarLayout::SetPaneText(int index, const SString* text, int update) {
    SStatusBarPane& pane = panes_[index];
    const bool isOther = pane.text != *text;
    const int oldWidth = pane.width;
    try {
        pane.text = *text;
    } catch (const SEOutOfMemory&) {
        return 0;
    }
    if (bar_ != nullptr && (pane.style & SStatusBarPane::SizeToText) != 0)
        pane.width = bar_->MeasureText(pane.text);
    if (isOther) pane.changed = 1;
    if (isOther && update) pane.width == oldWidth ? Refresh() : Recalc();
    return 1;
}

int SStatusBarLayout::SetPaneStyle(int index, unsigned long style) {
    SStatusBarPane& pane = panes_[index];
    if (pane.style == style) return 1;
    const bool isToggled = ((pane.style ^ style) & SStatusBarPane::Disabled) != 0;
    pane.style = style;
    pane.changed = 1;
    isToggled ? Recalc() : Refresh();
    return 1;
}

int SStatusBarLayout::SetPaneWidth(int index, int width) {
    if (panes_[index].width == width) return 1;
    panes_[index].width = width;
    Recalc();
    return 1;
}

int SStatusBarLayout::SetMainPaneText(const SString* text, int update) {
    if (bar_ == nullptr || bar_->GetHandle() == nullptr) return 0;
    return bar_->SetPaneText(-1, text, update);
}
