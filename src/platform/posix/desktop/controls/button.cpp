#include "platform/posix/desktop/controls/button.h"

namespace brcore8::desktop {

namespace {

class Button final : public Control {
public:
    using Control::Control;
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    DWORD Type() const noexcept { return Style() & BS_TYPEMASK; }
    bool IsRadio() const noexcept {
        return Type() == BS_RADIOBUTTON || Type() == BS_AUTORADIOBUTTON;
    }
    bool IsPush() const noexcept {
        return Type() == BS_PUSHBUTTON || Type() == BS_DEFPUSHBUTTON || Type() == BS_OWNERDRAW;
    }
    // Tells the parent what it only wants to know with BS_NOTIFY.
    void Tell(int code) const {
        if ((Style() & BS_NOTIFY) != 0) Notify(code);
    }
    LRESULT DialogCode() const noexcept;

    void Press(bool captures);
    // Lets go of the button; one that was pressed `inside` was clicked.
    void Release(bool inside);
    void Click();
    void Drag(POINT point);
    void Leave();
    void DoubleClick(LPARAM place);
    void TakeFocus();
    void SetPushed(bool pushed);
    void SetCheck(UINT check);
    void UncheckOthers() const;
    void ChangeType(DWORD style, bool redraws) const;

    void Paint(WPARAM context);
    void AskOwner(const ControlPaint& paint);
    // An owner draws at once what changed.
    void Show(UINT action);

    UINT state_ = 0;       // BST_
    bool isHeld_ = false;  // by the mouse or the space bar
    bool isClickingItself_ = false;
    UINT action_ = ODA_DRAWENTIRE;
};

LRESULT Button::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DialogCode();
        case WM_NCHITTEST:
            return Type() == BS_GROUPBOX ? HTTRANSPARENT : Default(message, wParam, lParam);
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(wParam);
            return 0;
        case WM_SETTEXT: {
            const LRESULT result = Default(message, wParam, lParam);
            Repaint();
            return result;
        }
        case WM_ENABLE:
            if (wParam == 0) Leave();
            Repaint();
            return 0;
        case WM_LBUTTONDOWN:
            SetFocus(Handle());
            Press(true);
            return 0;
        case WM_LBUTTONDBLCLK:
            DoubleClick(lParam);
            return 0;
        case WM_LBUTTONUP: {
            const RECT client = ClientRect();
            Release(PtInRect(&client, PointOf(lParam)) != 0);
            return 0;
        }
        case WM_MOUSEMOVE:
            if (isHeld_ && GetCapture() == Handle()) Drag(PointOf(lParam));
            return 0;
        case WM_CAPTURECHANGED:
        case WM_CANCELMODE:
            if (isHeld_) Leave();
            return 0;
        case WM_KEYDOWN:
            if (wParam != VK_SPACE) return Default(message, wParam, lParam);
            Press(true);
            return 0;
        case WM_KEYUP:
            if (wParam != VK_SPACE) return Default(message, wParam, lParam);
            Release(true);
            return 0;
        case WM_SETFOCUS:
            TakeFocus();
            return 0;
        case WM_KILLFOCUS:
            if (isHeld_) Leave();
            state_ &= ~UINT{BST_FOCUS};
            Show(ODA_FOCUS);
            Tell(BN_KILLFOCUS);
            return 0;
        case BM_GETCHECK:
            return state_ & 3;
        case BM_SETCHECK:
            SetCheck(static_cast<UINT>(wParam));
            return 0;
        case BM_GETSTATE:
            return static_cast<LRESULT>(state_);
        case BM_SETSTATE:
            SetPushed(wParam != 0);
            return 0;
        case BM_SETSTYLE:
            ChangeType(static_cast<DWORD>(wParam), lParam != 0);
            return 0;
        case BM_CLICK:
            Click();
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

LRESULT Button::DialogCode() const noexcept {
    switch (Type()) {
        case BS_PUSHBUTTON:
        case BS_USERBUTTON:
            return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
        case BS_DEFPUSHBUTTON:
            return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return DLGC_BUTTON | DLGC_RADIOBUTTON;
        case BS_GROUPBOX:
            return DLGC_STATIC;
        default:
            return DLGC_BUTTON;
    }
}

// --- Pressing and clicking -----------------------------------------------------------------------

void Button::Press(bool captures) {
    if (Type() == BS_GROUPBOX || !IsAlive()) return;
    if (captures) SetCapture(Handle());
    isHeld_ = true;
    SetPushed(true);
}

void Button::Drag(POINT point) {
    const RECT client = ClientRect();
    SetPushed(PtInRect(&client, point) != 0);
}

void Button::Leave() {
    const bool wasHeld = isHeld_;
    isHeld_ = false;
    SetPushed(false);
    if (wasHeld && GetCapture() == Handle()) ReleaseCapture();
}

void Button::Release(bool inside) {
    if (!isHeld_) return;
    const bool isClicked = inside && (state_ & BST_PUSHED) != 0;
    Leave();
    if (!isClicked || !IsAlive()) return;
    const UINT check = state_ & 3;
    switch (Type()) {
        case BS_AUTOCHECKBOX:
            SendMessageA(Handle(), BM_SETCHECK, check == BST_UNCHECKED, 0);
            break;
        case BS_AUTO3STATE:
            SendMessageA(Handle(), BM_SETCHECK, (check + 1) % 3, 0);
            break;
        case BS_AUTORADIOBUTTON:
            SendMessageA(Handle(), BM_SETCHECK, BST_CHECKED, 0);
            break;
        default:
            break;
    }
    Notify(BN_CLICKED);
}

// A click inside of a click is none.
void Button::Click() {
    if (isClickingItself_) return;
    isClickingItself_ = true;
    SendMessageA(Handle(), WM_LBUTTONDOWN, 0, 0);
    SendMessageA(Handle(), WM_LBUTTONUP, 0, 0);
    isClickingItself_ = false;
}

void Button::DoubleClick(LPARAM place) {
    const bool isTold = (Style() & BS_NOTIFY) != 0 || IsRadio() || Type() == BS_USERBUTTON ||
                        Type() == BS_OWNERDRAW;
    if (isTold)
        Notify(BN_DOUBLECLICKED);
    else
        SendMessageA(Handle(), WM_LBUTTONDOWN, 0, place);
}

void Button::TakeFocus() {
    state_ |= BST_FOCUS;
    Show(ODA_FOCUS);
    Tell(BN_SETFOCUS);
}

void Button::SetPushed(bool pushed) {
    const UINT old = state_;
    state_ = pushed ? state_ | BST_PUSHED : state_ & ~UINT{BST_PUSHED};
    if (state_ != old) Show(ODA_SELECT);
}

// --- Checks --------------------------------------------------------------------------------------

void Button::SetCheck(UINT check) {
    const DWORD type = Type();
    const bool hasThree = type == BS_3STATE || type == BS_AUTO3STATE;
    if (IsPush() || type == BS_GROUPBOX || type == BS_USERBUTTON) return;
    check = std::min<UINT>(check, hasThree ? BST_INDETERMINATE : BST_CHECKED);
    if (IsRadio()) ChangeStyle(WS_TABSTOP, check != 0 ? WS_TABSTOP : 0);
    if ((state_ & 3) != check) {
        state_ = (state_ & ~3u) | check;
        Show(ODA_SELECT);
    }
    if (type == BS_AUTORADIOBUTTON && check == BST_CHECKED && (Style() & WS_CHILD) != 0)
        UncheckOthers();
}

// A group begins with a window of WS_GROUP and ends before the next one.
void Button::UncheckOthers() const {
    const Window* begin = Find(Handle());
    while (begin != nullptr && (begin->style & WS_GROUP) == 0 && begin->above != nullptr)
        begin = begin->above;
    std::vector<HWND> others;
    for (const Window* at = begin; at != nullptr; at = at->below) {
        if (at != begin && (at->style & WS_GROUP) != 0) break;
        const auto* const button = dynamic_cast<const Button*>(at->control.get());
        if (button != nullptr && button != this && button->IsRadio()) others.push_back(at->handle);
    }
    for (const HWND other : others)
        SendMessageA(other, BM_SETCHECK, BST_UNCHECKED, 0);
}

void Button::ChangeType(DWORD style, bool redraws) const {
    ChangeStyle(0xFFFF, style & 0xFFFF);
    if (redraws) Repaint();
}

// --- Painting ------------------------------------------------------------------------------------

void Button::Show(UINT action) {
    if (!IsWindowVisible(Handle())) return;
    action_ = action;
    Repaint();
    if (Type() == BS_OWNERDRAW) UpdateWindow(Handle());
    action_ = ODA_DRAWENTIRE;
}

void Button::Paint(WPARAM context) {
    const ControlPaint paint(Handle(), Font(), context);
    const bool isPushed = IsPush() || Type() == BS_USERBUTTON || (Style() & BS_PUSHLIKE) != 0;
    const HBRUSH back = AskColors(paint.dc, isPushed ? WM_CTLCOLORBTN : WM_CTLCOLORSTATIC);
    if (!IsAlive()) return;
    if (Type() == BS_OWNERDRAW) {
        AskOwner(paint);
        return;
    }
    const ButtonLook look{Handle(), Style(), state_, Text(), back};
    SetBkMode(paint.dc, TRANSPARENT);
    if (look.Type() == BS_GROUPBOX)
        DrawGroupBox(paint, look);
    else if (isPushed)
        DrawPushButton(paint, look);
    else
        DrawMarkButton(paint, look);
}

void Button::AskOwner(const ControlPaint& paint) {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(Handle()));
    item.itemAction = action_;
    if ((state_ & BST_PUSHED) != 0) item.itemState |= ODS_SELECTED;
    if ((state_ & BST_FOCUS) != 0) item.itemState |= ODS_FOCUS;
    if ((Style() & WS_DISABLED) != 0) item.itemState |= ODS_DISABLED;
    item.hwndItem = Handle();
    item.hDC = paint.dc;
    item.rcItem = paint.client;
    SendMessageA(Parent(), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

}  // namespace

LRESULT CALLBACK ButtonProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(handle, message, wParam, lParam, &MakeControl<Button>);
}

}  // namespace brcore8::desktop
