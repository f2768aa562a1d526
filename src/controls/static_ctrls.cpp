#include <brcore8/controls/static_ctrls.h>

#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/scaled.h>

SIMPLEMENT_CREATABLE(SStaticCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SStaticExCtrl, SStaticCtrl, 2);
SIMPLEMENT_MESSAGE_MAP(SStaticExCtrl, SStaticCtrl, SOnPaint<&SStaticExCtrl::OnPaint>(),
                       SOnEraseBkgnd<&SStaticExCtrl::OnEraseBkgnd>(),
                       SOnLButtonUp<&SStaticExCtrl::OnLButtonUp>(),
                       SOnMessage<&SStaticExCtrl::OnSetText>(WM_SETTEXT),
                       SOnMessage<&SStaticExCtrl::OnSetFont>(WM_SETFONT));
SIMPLEMENT_CREATABLE(SFrameCtrl, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SFrameCtrl, SWnd, SOnPaint<&SFrameCtrl::OnPaint>(),
                       SOnMessage<&SFrameCtrl::OnSetText>(WM_SETTEXT),
                       SOnNcHitTest<&SFrameCtrl::OnNcHitTest>());

// --- Texts --------------------------------------------------------------------------------------

void SStaticExCtrl::SetTextColor(COLORREF color) {
    text_ = color;
    if (GetHandle() != nullptr) Invalidate(0);
}

void SStaticExCtrl::SetBkColor(COLORREF color) {
    back_ = color;
    if (GetHandle() != nullptr) Invalidate(0);
}

void SStaticExCtrl::SetAlignment(UINT alignment) {
    alignment_ = alignment;
    if (GetHandle() != nullptr) Invalidate(0);
}

void SStaticExCtrl::SetLink(int on) {
    isLink_ = on != 0;
    if (GetHandle() != nullptr) Invalidate(0);
}

LRESULT SStaticExCtrl::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    Invalidate(0);
    return result;
}

LRESULT SStaticExCtrl::OnSetFont(WPARAM font, LPARAM redraw) {
    font_ = reinterpret_cast<HFONT>(font);
    if (redraw != 0) Invalidate(0);
    return 0;
}

void SStaticExCtrl::OnLButtonUp(UINT, int x, int y) {
    const RECT client = GetClientRect();
    if (!isLink_ || !PtInRect(&client, {x, y})) return;
    constexpr UINT kClicked = 0;  // STN_CLICKED
    ::SendMessageA(::GetParent(GetHandle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), kClicked),
                   reinterpret_cast<LPARAM>(GetHandle()));
}

void SStaticExCtrl::OnPaint() {
    SPaintDC dc(this);
    RECT rect = GetClientRect();
    dc.FillSolidRect(rect, back_);
    const HGDIOBJ font = font_ != nullptr ? font_ : ::GetStockObject(DEFAULT_GUI_FONT);
    const SSelected selected(dc, font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(IsWindowEnabled() ? text_ : ::GetSysColor(COLOR_GRAYTEXT));
    const SString text = GetWindowText();
    dc.DrawText(text, rect, alignment_ | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
    if (!isLink_ || alignment_ != DT_LEFT) return;
    const SIZE size = dc.GetTextExtent(text);
    const int y = (rect.top + rect.bottom + size.cy) / 2 - 1;
    dc.FillSolidRect({rect.left, y, rect.left + size.cx, y + 1}, text_);
}

// --- Frames -------------------------------------------------------------------------------------

int SFrameCtrl::TitleHeight() const noexcept {
    return SScaled(16, GetHandle());
}

RECT SFrameCtrl::GetInside() const {
    RECT rect = GetClientRect();
    const int edge = SScaled(4, GetHandle());
    InflateRect(&rect, -edge, -edge);
    rect.top += TitleHeight() - edge;
    return rect;
}

LRESULT SFrameCtrl::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    Invalidate(1);
    return result;
}

// The title interrupts the upper line, which runs through its middle.
void SFrameCtrl::OnPaint() {
    SPaintDC dc(this);
    const RECT client = GetClientRect();
    const COLORREF dark = ::GetSysColor(COLOR_BTNSHADOW);
    const COLORREF light = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    const RECT line{0, TitleHeight() / 2, client.right - 1, client.bottom - 1};
    const RECT beside{line.left + 1, line.top + 1, line.right + 1, line.bottom + 1};
    dc.FrameSolidRect(beside, light);
    dc.FrameSolidRect(line, dark);
    const SString text = GetWindowText();
    if (text.LengthByte() == 0) return;
    const SSelected font(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    const SIZE size = dc.GetTextExtent(text);
    const int left = SScaled(8, GetHandle());
    RECT title{left, 0, left + size.cx + left / 2, TitleHeight()};
    dc.FillSolidRect(title, ::GetSysColor(COLOR_BTNFACE));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(::GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    dc.DrawText(text, title, DT_SINGLELINE | DT_VCENTER | DT_CENTER);
}
