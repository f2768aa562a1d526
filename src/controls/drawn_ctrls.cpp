#include <brcore8/controls/drawn_ctrls.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

#include "controls/take_focus.h"

#include <algorithm>

SIMPLEMENT_CREATABLE(SButtonExCtrl, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SButtonExCtrl, SWnd, SOnPaint<&SButtonExCtrl::OnPaint>(),
                       SOnLButtonDown<&SButtonExCtrl::OnLButtonDown>(),
                       SOnLButtonDblClk<&SButtonExCtrl::OnLButtonDown>(),
                       SOnMouseMove<&SButtonExCtrl::OnMouseMove>(),
                       SOnLButtonUp<&SButtonExCtrl::OnLButtonUp>(),
                       SOnCaptureChanged<&SButtonExCtrl::OnCaptureChanged>(),
                       SOnKeyDown<&SButtonExCtrl::OnKeyDown>(), SOnKeyUp<&SButtonExCtrl::OnKeyUp>(),
                       SOnSetFocus<&SButtonExCtrl::OnFocusChanged>(),
                       SOnKillFocus<&SButtonExCtrl::OnKillFocus>(),
                       SOnEnable<&SButtonExCtrl::OnEnable>(),
                       SOnGetDlgCode<&SButtonExCtrl::OnGetDlgCode>(),
                       SOnMessage<&SButtonExCtrl::OnSetText>(WM_SETTEXT),
                       SOnMessage<&SButtonExCtrl::OnClickMessage>(BM_CLICK),
                       SOnMessage<&SButtonExCtrl::OnGetCheck>(BM_GETCHECK),
                       SOnMessage<&SButtonExCtrl::OnSetCheck>(BM_SETCHECK));
SIMPLEMENT_CLASS(SNodeWellCtrl, SButtonExCtrl, 2);
SIMPLEMENT_CREATABLE(SColorWellCtrl, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SColorWellCtrl, SWnd, SOnPaint<&SColorWellCtrl::OnPaint>(),
                       SOnLButtonUp<&SColorWellCtrl::OnLButtonUp>(),
                       SOnKeyDown<&SColorWellCtrl::OnKeyDown>(),
                       SOnSetFocus<&SColorWellCtrl::OnFocusChanged>(),
                       SOnKillFocus<&SColorWellCtrl::OnFocusChanged>());
SIMPLEMENT_CREATABLE(STabBeam, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(STabBeam, SWnd, SOnPaint<&STabBeam::OnPaint>(),
                       SOnLButtonDown<&STabBeam::OnLButtonDown>(),
                       SOnLButtonDblClk<&STabBeam::OnLButtonDown>(),
                       SOnKeyDown<&STabBeam::OnKeyDown>(),
                       SOnGetDlgCode<&STabBeam::OnGetDlgCode>());

namespace {

constexpr UINT kClicked = 0;  // BN_CLICKED

// The parent may do anything, also to the control: the last that a handler does.
void TellParent(const SWnd& control, UINT code) {
    ::SendMessageA(::GetParent(control.GetHandle()), WM_COMMAND,
                   MAKEWPARAM(control.GetDlgCtrlID(), code),
                   reinterpret_cast<LPARAM>(control.GetHandle()));
}

}  // namespace

// --- Buttons ------------------------------------------------------------------------------------

void SButtonExCtrl::SetImage(const SImageList* images, int index) {
    images_ = images;
    image_ = index;
    if (GetHandle() != nullptr) Invalidate(1);
}

void SButtonExCtrl::SetFlat(int on) {
    isFlat_ = on != 0;
    if (GetHandle() != nullptr) Invalidate(1);
}

void SButtonExCtrl::SetCheck(int on) {
    isChecked_ = on != 0;
    if (GetHandle() != nullptr) Invalidate(1);
}

LRESULT SButtonExCtrl::OnSetCheck(WPARAM on, LPARAM) {
    SetCheck(on != 0);
    return 0;
}

LRESULT SButtonExCtrl::OnClickMessage(WPARAM, LPARAM) {
    Click();
    return 0;
}

LRESULT SButtonExCtrl::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    Invalidate(1);
    return result;
}

void SButtonExCtrl::Press(int on) {
    if (isPressed_ == on) return;
    isPressed_ = on;
    Invalidate(1);
}

void SButtonExCtrl::Click() {
    if (!IsWindowEnabled()) return;
    if (isToggle_) SetCheck(!isChecked_);
    OnClick();
}

void SButtonExCtrl::OnClick() {
    TellParent(*this, kClicked);
}

void SButtonExCtrl::OnLButtonDown(UINT, int, int) {
    if (!brcore8::TakeFocus(*this)) return;
    SetCapture();
    isTracking_ = 1;
    Press(1);
}

void SButtonExCtrl::OnMouseMove(UINT, int x, int y) {
    const RECT client = GetClientRect();
    if (isTracking_) Press(PtInRect(&client, {x, y}) != 0);
}

void SButtonExCtrl::OnLButtonUp(UINT, int, int) {
    if (!isTracking_) return;
    const int isInside = isPressed_;
    ::ReleaseCapture();
    isTracking_ = 0;
    Press(0);
    if (isInside) Click();
}

void SButtonExCtrl::OnCaptureChanged(SWnd*) {
    isTracking_ = 0;
    Press(0);
}

void SButtonExCtrl::OnKeyDown(UINT key, UINT, UINT) {
    if (key == VK_SPACE)
        Press(1);
    else
        Default();
}

void SButtonExCtrl::OnKeyUp(UINT key, UINT, UINT) {
    if (key != VK_SPACE || !isPressed_) {
        Default();
        return;
    }
    Press(0);
    Click();
}

// The key that holds it down is released somewhere else then.
void SButtonExCtrl::OnKillFocus(SWnd*) {
    Press(0);
    Invalidate(1);
}

void SButtonExCtrl::OnPaint() {
    SPaintDC dc(this);
    RECT face = GetClientRect();
    const bool isDown = isPressed_ || isChecked_;
    dc.FillSolidRect(face, ::GetSysColor(COLOR_BTNFACE));
    if (isDown || !isFlat_)
        dc.Draw3dRect(face, ::GetSysColor(isDown ? COLOR_BTNSHADOW : COLOR_BTNHIGHLIGHT),
                      ::GetSysColor(isDown ? COLOR_BTNHIGHLIGHT : COLOR_BTNSHADOW));
    InflateRect(&face, -3, -3);
    DrawFace(dc, face, isDown);
    if (::GetFocus() == GetHandle()) dc.DrawFocusRect(face);
}

void SButtonExCtrl::DrawFace(SDC& dc, RECT face, int shift) {
    OffsetRect(&face, shift, shift);
    const SString text = GetWindowText();
    if (images_ != nullptr && image_ >= 0) {
        const SIZE size = images_->GetImageSize();
        const int room = face.right - face.left - size.cx;
        const int x = face.left + (text.LengthByte() == 0 ? room / 2 : 2);
        images_->Draw(dc, image_, x, (face.top + face.bottom - size.cy) / 2, ILD_TRANSPARENT);
        face.left += size.cx + 4;
    }
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    dc.DrawText(text, face, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
}

// --- Wells --------------------------------------------------------------------------------------

void SNodeWellCtrl::SetNode(void* node, const char* name) {
    node_ = node;
    if (GetHandle() != nullptr) SetWindowText(node != nullptr ? name : "");
}

void SNodeWellCtrl::DrawFace(SDC& dc, RECT face, int shift) {
    if (node_ != nullptr) {
        SButtonExCtrl::DrawFace(dc, face, shift);
        return;
    }
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(COLOR_GRAYTEXT));
    dc.DrawText(kind_, face, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}

void SColorWellCtrl::Tell(UINT code) {
    TellParent(*this, code);
}

void SColorWellCtrl::SetColor(COLORREF color) {
    if (color == color_) return;
    color_ = color;
    if (GetHandle() == nullptr) return;
    Invalidate(0);
    Tell(kColorChanged);
}

void SColorWellCtrl::OnLButtonUp(UINT, int, int) {
    if (brcore8::TakeFocus(*this)) Tell(kClicked);
}

void SColorWellCtrl::OnKeyDown(UINT key, UINT, UINT) {
    if (key == VK_SPACE)
        Tell(kClicked);
    else
        Default();
}

void SColorWellCtrl::OnPaint() {
    SPaintDC dc(this);
    RECT rect = GetClientRect();
    dc.Draw3dRect(rect, ::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_BTNHIGHLIGHT));
    InflateRect(&rect, -1, -1);
    dc.FillSolidRect(rect, IsWindowEnabled() ? color_ : ::GetSysColor(COLOR_BTNFACE));
    InflateRect(&rect, -2, -2);
    if (::GetFocus() == GetHandle()) dc.DrawFocusRect(rect);
}

// --- Tabs ---------------------------------------------------------------------------------------

int STabBeam::InsertTab(int index, const char* text) {
    const int count = GetTabCount();
    const int at = index < 0 || index > count ? count : index;
    tabs_.insert(tabs_.begin() + at, SString(text));
    if (current_ < 0 || current_ >= at) ++current_;
    if (GetHandle() != nullptr) Invalidate(1);
    return at;
}

int STabBeam::RemoveTab(int index) {
    if (index < 0 || index >= GetTabCount()) return 0;
    tabs_.erase(tabs_.begin() + index);
    if (current_ > index || current_ == GetTabCount()) --current_;
    if (GetHandle() != nullptr) Invalidate(1);
    return 1;
}

SString STabBeam::GetTabText(int index) const {
    return index >= 0 && index < GetTabCount() ? tabs_[static_cast<std::size_t>(index)] : SString();
}

int STabBeam::SetTabText(int index, const char* text) {
    if (index < 0 || index >= GetTabCount()) return 0;
    tabs_[static_cast<std::size_t>(index)] = text;
    if (GetHandle() != nullptr) Invalidate(1);
    return 1;
}

int STabBeam::SetCurTab(int index) {
    if (index < 0 || index >= GetTabCount()) return 0;
    current_ = index;
    if (GetHandle() != nullptr) Invalidate(1);
    return 1;
}

RECT STabBeam::GetTabRect(int index) const {
    if (index < 0 || index >= GetTabCount()) return {};
    SScreenDC dc;
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const int margin = SScaled(16, GetHandle());
    RECT rect{2, 0, 2, SScaled(kHeight, GetHandle())};
    for (int i = 0; i <= index; ++i) {
        rect.left = rect.right;
        rect.right += dc.GetTextExtent(tabs_[static_cast<std::size_t>(i)]).cx + margin;
    }
    return rect;
}

int STabBeam::HitTest(POINT point) const {
    for (int i = 0; i < GetTabCount(); ++i) {
        const RECT rect = GetTabRect(i);
        if (PtInRect(&rect, point)) return i;
    }
    return -1;
}

void STabBeam::Choose(int index) {
    if (index == current_ || !SetCurTab(index)) return;
    TellParent(*this, kTabChanged);
}

void STabBeam::OnLButtonDown(UINT, int x, int y) {
    if (brcore8::TakeFocus(*this)) Choose(HitTest({x, y}));
}

void STabBeam::OnKeyDown(UINT key, UINT, UINT) {
    if (key == VK_LEFT)
        Choose(current_ - 1);
    else if (key == VK_RIGHT)
        Choose(current_ + 1);
    else
        Default();
}

void STabBeam::OnPaint() {
    SPaintDC dc(this);
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(COLOR_BTNTEXT));
    dc.FillSolidRect(GetClientRect(), ::GetSysColor(COLOR_BTNSHADOW));
    for (int i = 0; i < GetTabCount(); ++i) {
        RECT rect = GetTabRect(i);
        dc.FillSolidRect(rect, ::GetSysColor(i == current_ ? COLOR_WINDOW : COLOR_BTNFACE));
        dc.Draw3dRect(rect, ::GetSysColor(COLOR_BTNHIGHLIGHT), ::GetSysColor(COLOR_3DDKSHADOW));
        dc.DrawText(tabs_[static_cast<std::size_t>(i)], rect,
                    DT_SINGLELINE | DT_CENTER | DT_VCENTER);
    }
}
