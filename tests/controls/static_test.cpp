// Static texts and frames.

#include "controls/desk.h"

namespace {

class Statics : public Desk {};

TEST_F(Statics, WhatIsClickedTellsItsParentWhenAsked) {
    const struct {
        DWORD style;
        LRESULT hit;
        const char* told;
    } rows[] = {
        {SS_LEFT, HTTRANSPARENT, ""},
        {SS_LEFT | SS_NOTIFY, HTCLIENT, "1:STN_CLICKED 1:STN_DBLCLK 1:STN_DISABLE 1:STN_ENABLE"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.style);
        const HWND text = Make("STATIC", "Text", row.style);
        ASSERT_NE(text, nullptr);
        POINT point{5, 5};
        ClientToScreen(text, &point);
        EXPECT_EQ(Send(text, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y)), row.hit);
        EXPECT_EQ(Send(text, WM_GETDLGCODE), DLGC_STATIC);
        Send(text, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        Send(text, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
        EnableWindow(text, 0);
        EnableWindow(text, 1);
        EXPECT_EQ(Told(), row.told);
        DestroyWindow(text);
    }
}

TEST_F(Statics, FramesAndAreasHaveTheSystemsColours) {
    const struct {
        const char* name;
        DWORD type;
        int color;
        int pixels;
    } rows[] = {
        {"black", SS_BLACKRECT, COLOR_3DDKSHADOW, 100 * 24},
        {"gray", SS_GRAYRECT, COLOR_BTNSHADOW, 100 * 24},
        {"white", SS_WHITERECT, COLOR_BTNHIGHLIGHT, 100 * 24},
        {"black frame", SS_BLACKFRAME, COLOR_3DDKSHADOW, 2 * 100 + 2 * 22},
        {"gray frame", SS_GRAYFRAME, COLOR_BTNSHADOW, 2 * 100 + 2 * 22},
        // The white window behind shows inside of frames.
        {"white frame", SS_WHITEFRAME, COLOR_BTNHIGHLIGHT, 100 * 24},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const HWND area = Make("STATIC", "never shown", row.type);
        EXPECT_EQ(CountOf(PixelsOf(area), GetSysColor(row.color)), row.pixels);
        DestroyWindow(area);
    }
}

TEST_F(Statics, TheSunkenOneHasAnEdge) {
    const HWND text = Make("STATIC", "", SS_SUNKEN);
    RECT client{};
    GetClientRect(text, &client);
    EXPECT_EQ(client.right, 98);
    EXPECT_EQ(client.bottom, 22);
    EXPECT_NE(GetWindowLongA(text, GWL_EXSTYLE) & WS_EX_STATICEDGE, 0);
}

// The columns of the client area that hold a pixel of another colour than its corner.
RECT InkOf(HWND window) {
    const auto pixels = PixelsOf(window);
    RECT client{};
    GetClientRect(window, &client);
    RECT ink{client.right, client.bottom, 0, 0};
    for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; ++x) {
            if (pixels[static_cast<std::size_t>(y * client.right + x)] == pixels.back()) continue;
            ink.left = std::min<LONG>(ink.left, x);
            ink.top = std::min<LONG>(ink.top, y);
            ink.right = std::max<LONG>(ink.right, x + 1);
            ink.bottom = std::max<LONG>(ink.bottom, y + 1);
        }
    return ink;
}

TEST_F(Statics, TextGoesWhereItsStyleSays) {
    HWND texts[4];
    const DWORD styles[] = {SS_LEFT, SS_CENTER, SS_RIGHT, SS_LEFT | SS_CENTERIMAGE};
    for (int i = 0; i < 4; ++i) {
        texts[i] = Make("STATIC", "Text", styles[i], 1, {0, 60 * i, 200, 60 * i + 60});
        Send(texts[i], WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), 1);
    }
    EXPECT_LT(InkOf(texts[0]).left, 5);
    EXPECT_LT(InkOf(texts[0]).bottom, 25);
    EXPECT_NEAR(InkOf(texts[1]).left + InkOf(texts[1]).right, 200, 6);
    EXPECT_GT(InkOf(texts[2]).right, 190);
    EXPECT_NEAR(InkOf(texts[3]).top + InkOf(texts[3]).bottom, 60, 12);
}

TEST_F(Statics, LongTextIsBrokenBetweenWords) {
    const HWND text =
        Make("STATIC", "one two three four five six seven", SS_LEFT, 1, {0, 0, 80, 100});
    const HWND line = Make("STATIC", "one two three four five six seven", SS_LEFTNOWORDWRAP, 2,
                           {100, 0, 180, 100});
    EXPECT_GT(InkOf(text).bottom, 2 * InkOf(line).bottom - 10);
    EXPECT_EQ(InkOf(line).right, 80);
}

TEST_F(Statics, TextAndFontChangeWhatIsShown) {
    LOGFONTA info{};
    info.lfHeight = -20;
    const HFONT font = CreateFontIndirectA(&info);
    const HWND text = Make("STATIC", "Text", SS_LEFT);
    EXPECT_EQ(Send(text, WM_GETFONT), 0);
    const auto first = PixelsOf(text);
    SetWindowTextA(text, "Other");
    const auto second = PixelsOf(text);
    EXPECT_GT(Difference(first, second), 10);
    Send(text, WM_SETFONT, reinterpret_cast<WPARAM>(font), 1);
    EXPECT_EQ(Send(text, WM_GETFONT), reinterpret_cast<LRESULT>(font));
    EXPECT_GT(Difference(second, PixelsOf(text)), 10);
    // An ampersand underlines, unless the text is to be shown as it is.
    SetWindowTextA(text, "&Other");
    const auto marked = PixelsOf(text);
    SetWindowLongA(text, GWL_STYLE, GetWindowLongA(text, GWL_STYLE) | SS_NOPREFIX);
    InvalidateRect(text, nullptr, 1);
    EXPECT_GT(Difference(marked, PixelsOf(text)), 10);
    DestroyWindow(text);
    DeleteObject(font);
}

TEST_F(Statics, TheParentChoosesTheColours) {
    const HBRUSH brush = CreateSolidBrush(RGB(0, 0, 255));
    HWND asked = nullptr;
    answers = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
        if (message != WM_CTLCOLORSTATIC) return false;
        asked = reinterpret_cast<HWND>(lParam);
        SetTextColor(reinterpret_cast<HDC>(wParam), RGB(255, 0, 0));
        SetBkColor(reinterpret_cast<HDC>(wParam), RGB(0, 0, 255));
        result = reinterpret_cast<LRESULT>(brush);
        return true;
    };
    const HWND text = Make("STATIC", "Text", SS_LEFT);
    const auto pixels = PixelsOf(text);
    EXPECT_EQ(asked, text);
    EXPECT_EQ(pixels.back(), RGB(0, 0, 255));
    EXPECT_EQ(CountOf(pixels, GetSysColor(COLOR_BTNFACE)), 0);
    EXPECT_LT(CountOf(pixels, RGB(0, 0, 255)), 100 * 24 - 20);
    DestroyWindow(text);
    DeleteObject(brush);
}

}  // namespace
