// A bar of texts that stays at the bottom of its parent.

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/posix/desktop/controls/control.h"
#include "platform/posix/desktop/scale.h"
#include "platform/posix/desktop/sums.h"

namespace brcore8::desktop {

namespace {

constexpr int kVerticalBorder = 2;
constexpr int kGap = 2;
constexpr int kLeastHeight = 20;
constexpr int kMostParts = 256;
constexpr int kGrip = 12;
constexpr std::size_t kLongestText = 0xFFFF;  // an answer has 16 bits for the length

struct Part {
    int right = -1;  // -1 reaches to the end of the bar
    UINT type = 0;   // SBT_
    std::string text;
    LPARAM data = 0;  // what the owner draws
};

class StatusBar final : public Control {
public:
    using Control::Control;
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT AnswerParts(UINT message, WPARAM wParam, LPARAM lParam);
    void Create();
    int Height() const;
    void Dock();
    bool HasGrip() const;
    LRESULT HitTest(WPARAM wParam, LPARAM lParam) const;

    Part* PartOf(WPARAM number) noexcept;
    LRESULT SetParts(WPARAM count, const int* rights);
    LRESULT GetParts(WPARAM count, int* rights) const noexcept;
    LRESULT SetText(WPARAM wParam, LPARAM lParam);
    LRESULT GetText(WPARAM number, char* out);
    LRESULT SetSimple(bool simple);
    // The place of a part; empty without one.
    RECT RectOf(std::size_t number) const noexcept;
    LRESULT GetRect(WPARAM number, RECT* out) const noexcept;
    LRESULT SetBackground(COLORREF color);

    void TellMouse(UINT code, LPARAM lParam) const;
    void Paint(WPARAM context) const;
    void DrawPart(const ControlPaint& paint, const Part& part, RECT rect, std::size_t number) const;
    void DrawGrip(const ControlPaint& paint) const;

    std::vector<Part> parts_{1};
    Part simple_;
    bool isSimple_ = false;
    int minimum_ = 0;
    COLORREF background_ = CLR_DEFAULT;
};

LRESULT StatusBar::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            Create();
            return 0;
        case WM_PAINT:
        case WM_PRINTCLIENT:
            Paint(wParam);
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            Dock();
            return 0;
        case WM_SETFONT: {
            const LRESULT result = Default(message, wParam, lParam);
            Dock();
            return result;
        }
        case WM_SETTEXT:
            parts_[0].text = lParam != 0 ? reinterpret_cast<const char*>(lParam) : "";
            Repaint();
            return 1;
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(parts_[0].text.size());
        case WM_GETTEXT: {
            if (wParam == 0) return 0;
            const std::string& text = parts_[0].text;
            const std::size_t length = std::min<std::size_t>(text.size(), wParam - 1);
            auto* const out = reinterpret_cast<char*>(lParam);
            std::memcpy(out, text.data(), length);
            out[length] = '\0';
            return static_cast<LRESULT>(length);
        }
        case WM_NCHITTEST:
            return HitTest(wParam, lParam);
        case WM_LBUTTONDOWN:
            TellMouse(NM_CLICK, lParam);
            return 0;
        case WM_LBUTTONDBLCLK:
            TellMouse(NM_DBLCLK, lParam);
            return 0;
        case WM_RBUTTONDOWN:
            TellMouse(NM_RCLICK, lParam);
            return 0;
        case WM_RBUTTONDBLCLK:
            TellMouse(NM_RDBLCLK, lParam);
            return 0;
        default:
            return AnswerParts(message, wParam, lParam);
    }
}

LRESULT StatusBar::AnswerParts(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case SB_SETPARTS:
            return SetParts(wParam, reinterpret_cast<const int*>(lParam));
        case SB_GETPARTS:
            return GetParts(wParam, reinterpret_cast<int*>(lParam));
        case SB_SETTEXTA:
            return SetText(wParam, lParam);
        case SB_GETTEXTA:
            return GetText(wParam, reinterpret_cast<char*>(lParam));
        case SB_GETTEXTLENGTHA:
            return GetText(wParam, nullptr);
        case SB_GETRECT:
            return GetRect(wParam, reinterpret_cast<RECT*>(lParam));
        case SB_GETBORDERS: {
            auto* const borders = reinterpret_cast<int*>(lParam);
            borders[0] = 0;
            borders[1] = kVerticalBorder;
            borders[2] = kGap;
            return 1;
        }
        case SB_SETMINHEIGHT:
            minimum_ = static_cast<int>(wParam);
            return 1;
        case SB_SIMPLE:
            return SetSimple(wParam != 0);
        case SB_ISSIMPLE:
            return isSimple_;
        case SB_SETBKCOLOR:
            return SetBackground(static_cast<COLORREF>(lParam));
        default:
            return Default(message, wParam, lParam);
    }
}

// --- Place ---------------------------------------------------------------------------------------

void StatusBar::Create() {
    Window* const window = Find(Handle());
    parts_[0].text = window->text;
    // A frame that can be sized is sized by the corner of its bar too.
    const Window* const parent = Find(Parent());
    if (parent != nullptr && (parent->style & WS_THICKFRAME) != 0 &&
        (window->style & CCS_NOPARENTALIGN) == 0)
        window->style |= SBARS_SIZEGRIP;
    Dock();
}

int StatusBar::Height() const {
    const TEXTMETRICA metrics = ControlMeasure(Font()).Metrics();
    const int leading = metrics.tmInternalLeading != 0 ? metrics.tmInternalLeading : 2;
    return std::max({metrics.tmHeight + leading + Scaled(4), Sum(minimum_, kVerticalBorder),
                     Scaled(kLeastHeight)});
}

void StatusBar::Dock() {
    const DWORD style = Style();
    RECT parent{};
    if (!IsAlive() || (style & CCS_NORESIZE) != 0 || !GetClientRect(Parent(), &parent)) return;
    const int height = Height();
    RECT place{};
    GetWindowRect(Handle(), &place);
    MapWindowPoints(nullptr, Parent(), reinterpret_cast<POINT*>(&place), 2);
    if ((style & CCS_NOPARENTALIGN) == 0) {
        place = {0, parent.bottom - height, parent.right, 0};
    }
    SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    Repaint();
}

bool StatusBar::HasGrip() const {
    return (Style() & SBARS_SIZEGRIP) != 0 && !IsZoomed(GetAncestor(Handle(), GA_ROOT));
}

LRESULT StatusBar::HitTest(WPARAM wParam, LPARAM lParam) const {
    POINT point = PointOf(lParam);
    ScreenToClient(Handle(), &point);
    const RECT client = ClientRect();
    const int grip = Scaled(kGrip);
    const RECT corner{client.right - grip, client.bottom - grip, client.right, client.bottom};
    return HasGrip() && PtInRect(&corner, point) ? HTBOTTOMRIGHT
                                                 : Default(WM_NCHITTEST, wParam, lParam);
}

// --- Parts ---------------------------------------------------------------------------------------

Part* StatusBar::PartOf(WPARAM number) noexcept {
    number &= 0xFF;
    if (number == SB_SIMPLEID) return &simple_;
    return number < parts_.size() ? &parts_[number] : nullptr;
}

LRESULT StatusBar::SetParts(WPARAM count, const int* rights) {
    if (count < 1 || count > kMostParts || rights == nullptr) return 0;
    parts_.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        parts_[i].right = rights[i];
    Repaint();
    return 1;
}

LRESULT StatusBar::GetParts(WPARAM count, int* rights) const noexcept {
    for (std::size_t i = 0; rights != nullptr && i < std::min(parts_.size(), count); ++i)
        rights[i] = parts_[i].right;
    return static_cast<LRESULT>(parts_.size());
}

LRESULT StatusBar::SetText(WPARAM wParam, LPARAM lParam) {
    Part* const part = PartOf(wParam);
    if (part == nullptr) return 0;
    part->type = static_cast<UINT>(wParam & 0xFF00);
    if ((part->type & SBT_OWNERDRAW) != 0) {
        part->data = lParam;
        part->text.clear();
    } else {
        part->text = lParam != 0 ? reinterpret_cast<const char*>(lParam) : "";
    }
    Repaint();
    return 1;
}

// The length and the type; of what the owner draws, its number.
LRESULT StatusBar::GetText(WPARAM number, char* out) {
    const Part* const part = PartOf(number);
    if (part == nullptr) return 0;
    if ((part->type & SBT_OWNERDRAW) != 0) return part->data;
    const std::size_t length = std::min(part->text.size(), kLongestText);
    if (out != nullptr) {
        std::memcpy(out, part->text.data(), length);
        out[length] = '\0';
    }
    return MAKELRESULT(length, part->type);
}

LRESULT StatusBar::SetSimple(bool simple) {
    if (isSimple_ == simple) return 1;
    isSimple_ = simple;
    Repaint();
    NMHDR header{Handle(), static_cast<UINT_PTR>(GetDlgCtrlID(Handle())), SBN_SIMPLEMODECHANGE};
    SendMessageA(Parent(), WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
    return 1;
}

RECT StatusBar::RectOf(std::size_t number) const noexcept {
    const RECT client = ClientRect();
    const int left = number == 0 ? 0 : Sum(parts_[number - 1].right, kGap);
    int right = parts_[number].right;
    if (right == -1) right = client.right;
    return {left, kVerticalBorder, right, client.bottom};
}

LRESULT StatusBar::GetRect(WPARAM number, RECT* out) const noexcept {
    if (number >= parts_.size()) return 0;
    *out = RectOf(number);
    return 1;
}

LRESULT StatusBar::SetBackground(COLORREF color) {
    const COLORREF old = std::exchange(background_, color);
    Repaint();
    return static_cast<LRESULT>(old);
}

void StatusBar::TellMouse(UINT code, LPARAM lParam) const {
    const auto id = static_cast<UINT_PTR>(GetDlgCtrlID(Handle()));
    NMMOUSE mouse{{Handle(), id, code}, ~DWORD_PTR{0}, 0, PointOf(lParam), 0};
    for (std::size_t i = 0; !isSimple_ && i < parts_.size(); ++i) {
        const RECT rect = RectOf(i);
        if (PtInRect(&rect, mouse.pt)) mouse.dwItemSpec = i;
    }
    SendMessageA(Parent(), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&mouse));
}

// --- Painting ------------------------------------------------------------------------------------

void StatusBar::Paint(WPARAM context) const {
    const ControlPaint paint(Handle(), Font(), context);
    const HBRUSH brush =
        CreateSolidBrush(background_ != CLR_DEFAULT ? background_ : GetSysColor(COLOR_BTNFACE));
    FillRect(paint.dc, &paint.client, brush);
    DeleteObject(brush);
    SetBkMode(paint.dc, TRANSPARENT);
    if (isSimple_) {
        RECT rect = paint.client;
        rect.top += kVerticalBorder;
        DrawPart(paint, simple_, rect, SB_SIMPLEID);
    }
    // Whoever draws a part of its own may change them.
    for (std::size_t i = 0; !isSimple_ && i < parts_.size(); ++i) {
        const RECT rect = RectOf(i);
        if (!IsRectEmpty(&rect)) DrawPart(paint, Part(parts_[i]), rect, i);
    }
    if (HasGrip()) DrawGrip(paint);
}

void StatusBar::DrawPart(const ControlPaint& paint, const Part& part, RECT rect,
                         std::size_t number) const {
    if ((part.type & SBT_NOBORDERS) == 0)
        DrawEdge(paint.dc, &rect, (part.type & SBT_POPOUT) != 0 ? BDR_RAISEDINNER : BDR_SUNKENOUTER,
                 BF_RECT);
    InflateRect(&rect, -1, -1);
    if ((part.type & SBT_OWNERDRAW) != 0) {
        DRAWITEMSTRUCT item{};
        item.CtlID = static_cast<UINT>(GetDlgCtrlID(Handle()));
        item.itemID = static_cast<UINT>(number);
        item.hwndItem = Handle();
        item.hDC = paint.dc;
        item.rcItem = rect;
        item.itemData = static_cast<ULONG_PTR>(part.data);
        SendMessageA(Parent(), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
        return;
    }
    // A tab centres what follows, a second one puts it to the right.
    UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
    const char* text = part.text.c_str();
    if (*text == '\t' && (part.type & SBT_NOTABPARSING) == 0) {
        ++text;
        format |= *text == '\t' ? DT_RIGHT : DT_CENTER;
        text += *text == '\t';
    }
    InflateRect(&rect, -2, 0);
    DrawTextA(paint.dc, text, -1, &rect, format);
}

void StatusBar::DrawGrip(const ControlPaint& paint) const {
    const RECT& all = paint.client;
    const int grip = Scaled(kGrip);
    for (int i = 0; i < grip; ++i)
        for (int k = 0; k < 3; ++k) {
            const int x = all.right - 2 - i;
            const int y = all.bottom - grip + grip * k / 3 + i;
            if (y >= all.bottom - 1) continue;
            const RECT dots[] = {{x, y, x + 1, y + 1}, {x, y + 1, x + 1, y + 2}};
            FillWith(paint.dc, dots[0], COLOR_BTNHIGHLIGHT);
            FillWith(paint.dc, dots[1], COLOR_BTNSHADOW);
        }
}

}  // namespace

LRESULT CALLBACK StatusBarProcedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    return RunControl(handle, message, wParam, lParam, &MakeControl<StatusBar>);
}

}  // namespace brcore8::desktop
