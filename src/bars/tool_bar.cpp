#include <brcore8/bars/tool_bar.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/routing/cmd_ui.h>
#include <brcore8/window/scaled.h>

#include <utility>

SIMPLEMENT_CREATABLE(SToolBar, SCtrlBar, 2);
SIMPLEMENT_MESSAGE_MAP(SToolBar, SCtrlBar, SOnPaint<&SToolBar::OnPaint>(),
                       SOnLButtonDown<&SToolBar::OnLButtonDown>(),
                       SOnLButtonUp<&SToolBar::OnLButtonUp>(),
                       SOnCaptureChanged<&SToolBar::OnCaptureChanged>());

// What a handler of updates sees of a button.
class SToolBar::ButtonUI : public SCmdUI {
public:
    ButtonUI(SToolBar& bar, UINT index) : bar_(bar) {
        SetElement(bar.buttons_[index].command, index, &bar);
    }
    void Enable(int on) override {
        wasEnabled_ = true;
        bar_.EnableButton(id_, on);
    }
    void SetCheck(int state) override { bar_.CheckButton(id_, state != 0); }
    void SetRadio(int on) override { bar_.CheckButton(id_, on); }
    // A button keeps its text.
    void SetText(const char*) override {}
    bool WasEnabled() const noexcept { return wasEnabled_; }

private:
    SToolBar& bar_;
    bool wasEnabled_ = false;
};

// --- Buttons ------------------------------------------------------------------------------------

void SToolBar::SetImages(const SImageListEx* images) {
    images_ = images;
    if (GetHandle() != nullptr) Invalidate(1);
}

int SToolBar::AddButton(UINT command, const char* text) {
    if (command == 0) return 0;
    buttons_.push_back({command, SString(text), 1, 0});
    if (GetHandle() != nullptr) Invalidate(1);
    return 1;
}

void SToolBar::AddSeparator() {
    buttons_.push_back({0, SString(), 0, 0});
    if (GetHandle() != nullptr) Invalidate(1);
}

UINT SToolBar::GetCommand(int index) const noexcept {
    const auto at = static_cast<std::size_t>(index);
    return at < buttons_.size() ? buttons_[at].command : 0;
}

SToolBar::Button* SToolBar::Find(UINT command) noexcept {
    for (Button& button : buttons_)
        if (button.command == command && command != 0) return &button;
    return nullptr;
}

int SToolBar::IsEnabled(UINT command) const noexcept {
    const Button* const button = Find(command);
    return button != nullptr && button->isEnabled;
}

int SToolBar::IsChecked(UINT command) const noexcept {
    const Button* const button = Find(command);
    return button != nullptr && button->isChecked;
}

void SToolBar::Change(int& state, int on) {
    if (state == (on != 0)) return;
    state = on != 0;
    if (GetHandle() != nullptr) Invalidate(1);
}

int SToolBar::EnableButton(UINT command, int on) {
    Button* const button = Find(command);
    if (button != nullptr) Change(button->isEnabled, on);
    return button != nullptr;
}

int SToolBar::CheckButton(UINT command, int on) {
    Button* const button = Find(command);
    if (button != nullptr) Change(button->isChecked, on);
    return button != nullptr;
}

// Handlers may add buttons, or close the bar: all is asked again for each.
void SToolBar::OnUpdateCmdUI(SCmdTarget* target, int disableIfNoHandler) {
    const HWND handle = GetHandle();
    for (UINT i = 0; i < buttons_.size(); ++i) {
        const UINT command = buttons_[i].command;
        if (command == 0) continue;
        ButtonUI ui(*this, i);
        target->OnCmdMsg(command, kUpdateRequest, &ui, nullptr);
        if (FromHandlePermanent(handle) != this) return;
        if (!disableIfNoHandler || ui.WasEnabled()) continue;
        S_CMDHANDLERINFO info{};
        EnableButton(command, target->OnCmdMsg(command, 0, nullptr, &info));
    }
}

// --- The mouse ----------------------------------------------------------------------------------

void SToolBar::OnLButtonDown(UINT, int x, int y) {
    const int index = HitTest({x, y});
    if (!IsEnabled(GetCommand(index))) return;
    SetCapture();
    pressed_ = index;
    Invalidate(1);
}

void SToolBar::OnLButtonUp(UINT, int x, int y) {
    const int pressed = pressed_;
    if (pressed < 0) return;
    ::ReleaseCapture();
    if (HitTest({x, y}) != pressed) return;
    // The command may close the bar: nothing follows.
    ::SendMessageA(::GetParent(GetHandle()), WM_COMMAND, MAKEWPARAM(GetCommand(pressed), 0), 0);
}

void SToolBar::OnCaptureChanged(SWnd*) {
    pressed_ = -1;
    Invalidate(1);
}

// --- The look -----------------------------------------------------------------------------------

int SToolBar::WidthOf(SDC& dc, const Button& button) const {
    const int gap = SScaled(kGap, GetHandle());
    if (button.command == 0) return gap;
    if (images_ != nullptr && images_->Find(button.command) >= 0)
        return images_->GetImageSize().cx + gap;
    return dc.GetTextExtent(button.text).cx + 2 * gap;
}

RECT SToolBar::GetButtonRect(int index) const {
    if (index < 0 || index >= GetButtonCount()) return {};
    SScreenDC dc;
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const int bottom = GetHandle() != nullptr ? GetClientRect().bottom : GetThickness();
    RECT rect{2, 2, 2, bottom - 2};
    for (int i = 0; i <= index; ++i) {
        rect.left = rect.right;
        rect.right += WidthOf(dc, buttons_[static_cast<std::size_t>(i)]);
    }
    return rect;
}

int SToolBar::HitTest(POINT point) const {
    for (int i = 0; i < GetButtonCount(); ++i) {
        const RECT rect = GetButtonRect(i);
        if (PtInRect(&rect, point)) return i;
    }
    return -1;
}

void SToolBar::OnPaint() {
    SPaintDC dc(this);
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF dark = ::GetSysColor(COLOR_BTNSHADOW);
    dc.FillSolidRect(GetClientRect(), ::GetSysColor(COLOR_BTNFACE));
    dc.SetBkMode(TRANSPARENT);
    for (int i = 0; i < GetButtonCount(); ++i) {
        const Button& button = buttons_[static_cast<std::size_t>(i)];
        RECT rect = GetButtonRect(i);
        if (button.command == 0) {
            const int middle = (rect.left + rect.right) / 2;
            dc.FillSolidRect({middle, rect.top, middle + 1, rect.bottom}, dark);
            continue;
        }
        const bool isDown = i == pressed_ || button.isChecked;
        if (isDown) dc.Draw3dRect(rect, dark, light);
        if (images_ != nullptr && images_->Find(button.command) >= 0) {
            const SIZE size = images_->GetImageSize();
            images_->DrawCommand(dc, button.command,
                                 rect.left + SScaled(kGap, GetHandle()) / 2 + isDown,
                                 (rect.top + rect.bottom - size.cy) / 2 + isDown, ILD_TRANSPARENT);
            continue;
        }
        OffsetRect(&rect, isDown, isDown);
        dc.SetTextColor(::GetSysColor(button.isEnabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
        dc.DrawText(button.text, rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    }
}
