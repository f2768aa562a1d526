// Texts and frames that only show.

#include "platform/posix/desktop/controls/control.h"

namespace brcore8::desktop {

namespace {

class Static final : public Control {
public:
    using Control::Control;
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    DWORD Type() const noexcept { return Style() & SS_TYPEMASK; }
    void Create() const noexcept;
    void Paint(WPARAM context) const;
    void DrawCaption(const ControlPaint& paint) const;
    void AskOwner(const ControlPaint& paint) const;
    void Tell(int code) const;
};

LRESULT Static::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCREATE:
            Create();
            return Default(message, wParam, lParam);
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(wParam);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SETTEXT: {
            const LRESULT result = Default(message, wParam, lParam);
            Repaint();
            return result;
        }
        case WM_ENABLE:
            Repaint();
            Tell(wParam != 0 ? STN_ENABLE : STN_DISABLE);
            return 0;
        case WM_NCHITTEST:
            return (Style() & SS_NOTIFY) != 0 ? HTCLIENT : HTTRANSPARENT;
        case WM_GETDLGCODE:
            return DLGC_STATIC;
        case WM_LBUTTONDOWN:
            Tell(STN_CLICKED);
            return 0;
        case WM_LBUTTONDBLCLK:
            Tell(STN_DBLCLK);
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void Static::Create() const noexcept {
    Window* const window = Find(Handle());
    if ((window->style & SS_SUNKEN) != 0) window->exStyle |= WS_EX_STATICEDGE;
}

void Static::Tell(int code) const {
    if ((Style() & SS_NOTIFY) != 0) Notify(code);
}

void Static::Paint(WPARAM context) const {
    const ControlPaint paint(Handle(), Font(), context);
    RECT rect = paint.client;
    const HBRUSH back = AskColors(paint.dc, WM_CTLCOLORSTATIC);
    if (!IsAlive()) return;
    const DWORD type = Type();
    constexpr int kColors[] = {COLOR_3DDKSHADOW, COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT};
    if (type >= SS_BLACKRECT && type <= SS_WHITERECT) {
        FillWith(paint.dc, rect, kColors[type - SS_BLACKRECT]);
        return;
    }
    switch (type) {
        case SS_BLACKFRAME:
        case SS_GRAYFRAME:
        case SS_WHITEFRAME:
            FrameRect(paint.dc, &rect, GetSysColorBrush(kColors[type - SS_BLACKFRAME]));
            break;
        case SS_ETCHEDHORZ:
            rect.bottom = rect.top + 2;
            DrawEdge(paint.dc, &rect, EDGE_ETCHED, BF_RECT);
            break;
        case SS_ETCHEDVERT:
            rect.right = rect.left + 2;
            DrawEdge(paint.dc, &rect, EDGE_ETCHED, BF_RECT);
            break;
        case SS_ETCHEDFRAME:
            DrawEdge(paint.dc, &rect, EDGE_ETCHED, BF_RECT);
            break;
        case SS_OWNERDRAW:
            AskOwner(paint);
            break;
        default:
            FillRect(paint.dc, &rect, back);
            DrawCaption(paint);
    }
}

void Static::DrawCaption(const ControlPaint& paint) const {
    const std::string text = Text();
    const DWORD style = Style();
    UINT format = DT_EXPANDTABS;
    switch (Type()) {
        case SS_LEFT:
            format |= DT_WORDBREAK;
            break;
        case SS_CENTER:
            format |= DT_WORDBREAK | DT_CENTER;
            break;
        case SS_RIGHT:
            format |= DT_WORDBREAK | DT_RIGHT;
            break;
        case SS_SIMPLE:
            format |= DT_SINGLELINE;
            break;
        default:
            break;
    }
    if ((style & SS_NOPREFIX) != 0) format |= DT_NOPREFIX;
    if ((style & SS_ENDELLIPSIS) != 0) format |= DT_END_ELLIPSIS | DT_SINGLELINE;
    if ((style & SS_CENTERIMAGE) != 0 && text.find('\n') == std::string::npos)
        format |= DT_SINGLELINE | DT_VCENTER;
    if ((style & WS_DISABLED) != 0) SetTextColor(paint.dc, GetSysColor(COLOR_GRAYTEXT));
    SetBkMode(paint.dc, TRANSPARENT);
    RECT rect = paint.client;
    DrawTextA(paint.dc, text.data(), static_cast<int>(text.size()), &rect, format);
}

void Static::AskOwner(const ControlPaint& paint) const {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_STATIC;
    item.CtlID = static_cast<UINT>(GetDlgCtrlID(Handle()));
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = (Style() & WS_DISABLED) != 0 ? ODS_DISABLED : 0;
    item.hwndItem = Handle();
    item.hDC = paint.dc;
    item.rcItem = paint.client;
    SendMessageA(Parent(), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

}  // namespace

LRESULT CALLBACK StaticProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(handle, message, wParam, lParam, &MakeControl<Static>);
}

}  // namespace brcore8::desktop
