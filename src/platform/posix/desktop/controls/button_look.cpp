#include <algorithm>

#include "platform/posix/desktop/controls/button.h"
#include "platform/posix/desktop/scale.h"

namespace brcore8::desktop {

namespace {

constexpr int kMark = 13;  // pixels a side of a check box
constexpr int kGap = 4;
constexpr int kTitleLeft = 9;  // of a group box

UINT FormatOf(const ButtonLook& look, UINT usual) noexcept {
    UINT format = (look.style & BS_MULTILINE) != 0 ? DT_WORDBREAK : DT_SINGLELINE;
    switch (look.style & BS_CENTER) {
        case BS_LEFT:
            format |= DT_LEFT;
            break;
        case BS_RIGHT:
            format |= DT_RIGHT;
            break;
        case BS_CENTER:
            format |= DT_CENTER;
            break;
        default:
            format |= usual;
    }
    switch (look.style & BS_VCENTER) {
        case BS_TOP:
            return format;
        case BS_BOTTOM:
            return format | DT_BOTTOM;
        default:
            return format | DT_VCENTER;
    }
}

// Draws the text inside of `rect` and answers the box that it takes.
RECT DrawCaption(HDC dc, const ButtonLook& look, const RECT& rect, UINT format) {
    const int length = static_cast<int>(look.text.size());
    RECT box = rect;
    DrawTextA(dc, look.text.data(), length, &box, format | DT_CALCRECT);
    const int height = box.bottom - box.top;
    const int width = std::min(box.right - box.left, rect.right - rect.left);
    if ((format & DT_VCENTER) != 0) box.top = rect.top + (rect.bottom - rect.top - height) / 2;
    if ((format & DT_BOTTOM) != 0) box.top = rect.bottom - height;
    if ((format & DT_CENTER) != 0) box.left = rect.left + (rect.right - rect.left - width) / 2;
    if ((format & DT_RIGHT) != 0) box.left = rect.right - width;
    box.right = box.left + width;
    box.bottom = box.top + height;
    const UINT plain = format & ~(DT_VCENTER | DT_BOTTOM);
    if (look.IsDisabled()) {
        RECT shadow = box;
        OffsetRect(&shadow, 1, 1);
        SetTextColor(dc, GetSysColor(COLOR_BTNHIGHLIGHT));
        DrawTextA(dc, look.text.data(), length, &shadow, plain);
        SetTextColor(dc, GetSysColor(COLOR_BTNSHADOW));
    }
    DrawTextA(dc, look.text.data(), length, &box, plain);
    return box;
}

// A tick of three pixels' thickness.
void DrawTick(HDC dc, const RECT& box, int color) {
    const int edge = Scaled(3), turn = Scaled(2), end = Scaled(7);
    for (int i = 0; i < end; ++i) {
        const int x = box.left + edge + i;
        const int y = box.top + edge + (i < turn ? turn + i : 3 * turn - i);
        FillWith(dc, {x, y, x + 1, y + edge}, color);
    }
}

void DrawDisc(HDC dc, const RECT& box, int outline, int fill) {
    const HPEN pen = CreatePen(PS_SOLID, 1, GetSysColor(outline));
    const HGDIOBJ oldPen = SelectObject(dc, pen);
    const HGDIOBJ oldBrush = SelectObject(dc, GetSysColorBrush(fill));
    Ellipse(dc, box.left, box.top, box.right, box.bottom);
    SelectObject(dc, oldBrush);
    SelectObject(dc, oldPen);
    DeleteObject(pen);
}

void DrawMark(HDC dc, const ButtonLook& look, RECT box) {
    const UINT check = look.state & 3;
    const bool isDim = look.IsPushed() || look.IsDisabled() || check == BST_INDETERMINATE;
    const int field = isDim ? COLOR_BTNFACE : COLOR_WINDOW;
    const int ink =
        look.IsDisabled() || check == BST_INDETERMINATE ? COLOR_BTNSHADOW : COLOR_WINDOWTEXT;
    if (look.Type() == BS_RADIOBUTTON || look.Type() == BS_AUTORADIOBUTTON) {
        DrawDisc(dc, box, COLOR_3DDKSHADOW, field);
        InflateRect(&box, -Scaled(4), -Scaled(4));
        if (check != BST_UNCHECKED) DrawDisc(dc, box, ink, ink);
        return;
    }
    FillWith(dc, box, field);
    DrawEdge(dc, &box, EDGE_SUNKEN, BF_RECT);
    if (check != BST_UNCHECKED) DrawTick(dc, box, ink);
}

}  // namespace

void DrawPushButton(const ControlPaint& paint, const ButtonLook& look) {
    const HDC dc = paint.dc;
    const bool isDown = look.IsPushed() || (look.state & 3) != 0;
    RECT rect = paint.client;
    FillWith(dc, rect, COLOR_BTNFACE);
    if (look.Type() == BS_DEFPUSHBUTTON || (look.state & BST_FOCUS) != 0) {
        FrameRect(dc, &rect, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&rect, -1, -1);
    }
    if (isDown && (look.style & BS_PUSHLIKE) == 0)
        FrameRect(dc, &rect, GetSysColorBrush(COLOR_BTNSHADOW));
    else
        DrawEdge(dc, &rect, isDown ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    InflateRect(&rect, -3, -3);
    RECT caption = rect;
    if (isDown) OffsetRect(&caption, 1, 1);
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    DrawCaption(dc, look, caption, FormatOf(look, DT_CENTER));
    if ((look.state & BST_FOCUS) != 0) DrawFocusRect(dc, &rect);
}

void DrawMarkButton(const ControlPaint& paint, const ButtonLook& look) {
    const HDC dc = paint.dc;
    const RECT& all = paint.client;
    FillRect(dc, &all, look.back);
    const bool isRight = (look.style & BS_RIGHTBUTTON) != 0;
    const int mark = Scaled(kMark);
    const int top = all.top + (all.bottom - all.top - mark) / 2;
    const int left = isRight ? all.right - mark : all.left;
    DrawMark(dc, look, {left, top, left + mark, top + mark});
    RECT text = all;
    (isRight ? text.right : text.left) += (isRight ? -1 : 1) * (mark + Scaled(kGap));
    RECT box = DrawCaption(dc, look, text, FormatOf(look, DT_LEFT));
    InflateRect(&box, 1, 1);
    if ((look.state & BST_FOCUS) != 0 && !look.text.empty()) DrawFocusRect(dc, &box);
}

void DrawGroupBox(const ControlPaint& paint, const ButtonLook& look) {
    const HDC dc = paint.dc;
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc, &metrics);
    RECT frame = paint.client;
    frame.top += metrics.tmHeight / 2;
    DrawEdge(dc, &frame, EDGE_ETCHED, BF_RECT);
    if (look.text.empty()) return;
    const int side = Scaled(kTitleLeft);
    RECT text{side, 0, paint.client.right - side, metrics.tmHeight};
    RECT gap = text;
    const UINT format = DT_SINGLELINE;
    DrawTextA(dc, look.text.data(), static_cast<int>(look.text.size()), &gap, format | DT_CALCRECT);
    InflateRect(&gap, 2, 0);
    FillRect(dc, &gap, look.back);
    DrawCaption(dc, look, text, format);
}

}  // namespace brcore8::desktop
