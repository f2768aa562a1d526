// Status bars and progress bars.

#include "controls/desk.h"

#include <algorithm>
#include <utility>

namespace {

// --- Progress bars ------------------------------------------------------------------------------

class ProgressBars : public Desk {};

TEST_F(ProgressBars, PositionsStayInTheirRange) {
    const struct {
        const char* name;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT answer;
        int low, high, position;  // afterwards
    } steps[] = {
        {"position", PBM_SETPOS, 30, 0, 0, 0, 100, 30},
        {"delta", PBM_DELTAPOS, 25, 0, 30, 0, 100, 55},
        {"delta back", PBM_DELTAPOS, static_cast<WPARAM>(-15), 0, 55, 0, 100, 40},
        {"step", PBM_STEPIT, 0, 0, 40, 0, 100, 50},
        {"set step", PBM_SETSTEP, 30, 0, 10, 0, 100, 50},
        {"step 30", PBM_STEPIT, 0, 0, 50, 0, 100, 80},
        {"step over the end", PBM_STEPIT, 0, 0, 80, 0, 100, 10},
        {"above", PBM_SETPOS, 1000, 0, 10, 0, 100, 100},
        {"below", PBM_SETPOS, static_cast<WPARAM>(-5), 0, 100, 0, 100, 0},
        {"range", PBM_SETRANGE, 0, MAKELPARAM(20, 50), MAKELPARAM(0, 100), 20, 50, 20},
        {"delta over", PBM_DELTAPOS, 100, 0, 20, 20, 50, 50},
        {"smaller range", PBM_SETRANGE, 0, MAKELPARAM(10, 30), MAKELPARAM(20, 50), 10, 30, 30},
        {"wide range", PBM_SETRANGE32, static_cast<WPARAM>(-1000000), 2000000, MAKELPARAM(10, 30),
         -1000000, 2000000, 30},
        {"wide position", PBM_SETPOS, 1500000, 0, 30, -1000000, 2000000, 1500000},
    };
    const HWND bar = Make(PROGRESS_CLASSA, "", 0);
    ASSERT_NE(bar, nullptr);
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        EXPECT_EQ(Send(bar, step.message, step.wParam, step.lParam), step.answer);
        PBRANGE range{};
        EXPECT_EQ(Send(bar, PBM_GETRANGE, 1, reinterpret_cast<LPARAM>(&range)), step.low);
        EXPECT_EQ(Send(bar, PBM_GETRANGE, 0, 0), step.high);
        EXPECT_EQ(range.iLow, step.low);
        EXPECT_EQ(range.iHigh, step.high);
        EXPECT_EQ(Send(bar, PBM_GETPOS), step.position);
    }
}

TEST_F(ProgressBars, TheBarFillsAsFarAsItIs) {
    for (const DWORD style : {PBS_SMOOTH, PBS_SMOOTH | PBS_VERTICAL, 0}) {
        SCOPED_TRACE(style);
        const HWND bar = Make(PROGRESS_CLASSA, "", style, 1, {0, 0, 104, 104});
        RECT client{};
        GetClientRect(bar, &client);
        EXPECT_EQ(client.right, 104);
        const auto empty = PixelsOf(bar);
        const int all = client.right * client.bottom;
        for (const int percent : {25, 50, 75, 100}) {
            Send(bar, PBM_SETPOS, static_cast<WPARAM>(percent));
            EXPECT_NEAR(Difference(empty, PixelsOf(bar)), all * percent / 100, all * 8 / 100);
        }
        // Upright bars fill from the bottom, the others from the left.
        Send(bar, PBM_SETPOS, 50);
        const auto pixels = PixelsOf(bar);
        const auto isFilled = [&](int x, int y) {
            const auto at = static_cast<std::size_t>(y * client.right + x);
            return pixels[at] != empty[at];
        };
        EXPECT_TRUE(isFilled(5, client.bottom - 5));
        EXPECT_FALSE(isFilled(client.right - 5, 5));
        EXPECT_EQ(isFilled(5, 5), (style & PBS_VERTICAL) == 0);
        DestroyWindow(bar);
    }
}

TEST_F(ProgressBars, ColoursAreKept) {
    const HWND bar = Make(PROGRESS_CLASSA, "", 0);
    const auto kDefault = static_cast<LRESULT>(DWORD{CLR_DEFAULT});
    EXPECT_EQ(Send(bar, PBM_SETBARCOLOR, 0, RGB(255, 0, 0)), kDefault);
    EXPECT_EQ(Send(bar, PBM_SETBKCOLOR, 0, RGB(0, 255, 0)), kDefault);
    EXPECT_EQ(Send(bar, PBM_GETBARCOLOR), static_cast<LRESULT>(RGB(255, 0, 0)));
    EXPECT_EQ(Send(bar, PBM_GETBKCOLOR), static_cast<LRESULT>(RGB(0, 255, 0)));
}

// --- Status bars --------------------------------------------------------------------------------

class StatusBars : public Desk {
protected:
    HWND MakeBar(DWORD style = 0) const {
        return CreateWindowExA(0, STATUSCLASSNAMEA, "First", WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                               0, window, reinterpret_cast<HMENU>(std::intptr_t{9}), nullptr,
                               nullptr);
    }
    RECT PlaceOf(HWND bar) const {
        RECT rect{};
        GetWindowRect(bar, &rect);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
};

TEST_F(StatusBars, TheBarStaysAtTheBottom) {
    const HWND bar = MakeBar();
    ASSERT_NE(bar, nullptr);
    const int height = static_cast<int>(PlaceOf(bar).bottom - PlaceOf(bar).top);
    EXPECT_GT(height, 10);
    SetWindowPos(window, nullptr, 0, 0, 250, 200, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Send(bar, WM_SIZE);
    const RECT place = PlaceOf(bar);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.right, 250);
    EXPECT_EQ(place.bottom, 200);
    EXPECT_EQ(place.bottom - place.top, height);

    // No style takes it elsewhere.
    const HWND top = MakeBar(CCS_TOP);
    EXPECT_EQ(PlaceOf(top).bottom, 200);
    EXPECT_EQ(PlaceOf(top).right, 250);
    const HWND still = MakeBar(CCS_NORESIZE);
    EXPECT_EQ(PlaceOf(still).right, 0);
}

TEST_F(StatusBars, ItsHeightComesFromTheFontAndTheMinimum) {
    const HWND bar = MakeBar();
    for (const int size : {8, 11, 16, 30}) {
        SCOPED_TRACE(size);
        LOGFONTA info{};
        info.lfHeight = -size;
        const HFONT font = CreateFontIndirectA(&info);
        const HDC dc = GetDC(bar);
        const HGDIOBJ old = SelectObject(dc, font);
        TEXTMETRICA metrics{};
        GetTextMetricsA(dc, &metrics);
        SelectObject(dc, old);
        ReleaseDC(bar, dc);
        Send(bar, WM_SETFONT, reinterpret_cast<WPARAM>(font), 1);
        Send(bar, WM_SIZE);
        const RECT place = PlaceOf(bar);
        const int leading = metrics.tmInternalLeading != 0 ? metrics.tmInternalLeading : 2;
        EXPECT_EQ(place.bottom - place.top, std::max<LONG>(20, metrics.tmHeight + leading + 4));
        Send(bar, WM_SETFONT, 0, 0);
        DeleteObject(font);
    }
    LOGFONTA info{};
    info.lfHeight = -8;
    const HFONT font = CreateFontIndirectA(&info);
    Send(bar, WM_SETFONT, reinterpret_cast<WPARAM>(font), 1);
    for (const auto& [minimum, height] : {std::pair{60, 62}, {5, 20}, {25, 27}}) {
        Send(bar, SB_SETMINHEIGHT, static_cast<WPARAM>(minimum));
        Send(bar, WM_SIZE);
        EXPECT_EQ(PlaceOf(bar).bottom - PlaceOf(bar).top, height);
    }
    DestroyWindow(bar);
    DeleteObject(font);
}

TEST_F(StatusBars, PartsKeepTheirTexts) {
    const HWND bar = MakeBar();
    int rights[] = {50, 120, -1};
    EXPECT_EQ(Send(bar, SB_GETPARTS), 1);
    EXPECT_EQ(TextOf(bar), "First");
    EXPECT_EQ(Send(bar, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(rights)), 1);
    int found[3] = {};
    EXPECT_EQ(Send(bar, SB_GETPARTS, 3, reinterpret_cast<LPARAM>(found)), 3);
    EXPECT_EQ(found[0], 50);
    EXPECT_EQ(found[2], -1);
    EXPECT_EQ(SendText(bar, SB_SETTEXTA, 1 | SBT_POPOUT, "Second part"), 1);
    EXPECT_EQ(SendText(bar, SB_SETTEXTA, 2 | SBT_NOBORDERS, "Third"), 1);
    EXPECT_EQ(SendText(bar, SB_SETTEXTA, 3, "None"), 0);
    EXPECT_EQ(Send(bar, SB_GETTEXTLENGTHA, 1), MAKELONG(11, SBT_POPOUT));
    char text[64] = {};
    EXPECT_EQ(SendText(bar, SB_GETTEXTA, 1, text), MAKELONG(11, SBT_POPOUT));
    EXPECT_STREQ(text, "Second part");
    EXPECT_EQ(SendText(bar, SB_GETTEXTA, 0, text), 5);
    EXPECT_STREQ(text, "First");
    SetWindowTextA(bar, "Anew");
    EXPECT_EQ(SendText(bar, SB_GETTEXTA, 0, text), 4);
    EXPECT_STREQ(text, "Anew");

    // Fewer parts forget the texts of the others.
    EXPECT_EQ(Send(bar, SB_SETPARTS, 1, reinterpret_cast<LPARAM>(rights)), 1);
    EXPECT_EQ(Send(bar, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(rights)), 1);
    EXPECT_EQ(Send(bar, SB_GETTEXTLENGTHA, 1), 0);
}

TEST_F(StatusBars, PartsHaveTheirPlaces) {
    const HWND bar = MakeBar();
    int rights[] = {50, 120, -1};
    Send(bar, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(rights));
    int borders[3] = {-1, -1, -1};
    EXPECT_EQ(Send(bar, SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders)), 1);
    EXPECT_EQ(borders[0], 0);
    EXPECT_EQ(borders[1], 2);
    EXPECT_EQ(borders[2], 2);
    RECT client{};
    GetClientRect(bar, &client);
    const RECT places[] = {{0, 2, 50, client.bottom},
                           {52, 2, 120, client.bottom},
                           {122, 2, client.right, client.bottom}};
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        RECT rect{};
        EXPECT_EQ(Send(bar, SB_GETRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&rect)),
                  1);
        EXPECT_EQ(rect.left, places[i].left);
        EXPECT_EQ(rect.top, places[i].top);
        EXPECT_EQ(rect.right, places[i].right);
        EXPECT_EQ(rect.bottom, places[i].bottom);
    }
    RECT none{};
    EXPECT_EQ(Send(bar, SB_GETRECT, 3, reinterpret_cast<LPARAM>(&none)), 0);
}

TEST_F(StatusBars, TheSimpleOneShowsOneText) {
    std::vector<UINT> codes;
    answers = [&](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        if (message == WM_NOTIFY) codes.push_back(reinterpret_cast<NMHDR*>(lParam)->code);
        return false;
    };
    const HWND bar = MakeBar();
    int rights[] = {50, 120, -1};
    Send(bar, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(rights));
    const auto parts = PixelsOf(bar);
    codes.clear();
    EXPECT_EQ(Send(bar, SB_ISSIMPLE), 0);
    Send(bar, SB_SIMPLE, 1);
    EXPECT_EQ(Send(bar, SB_ISSIMPLE), 1);
    EXPECT_EQ(codes, std::vector<UINT>{static_cast<UINT>(SBN_SIMPLEMODECHANGE)});
    EXPECT_EQ(SendText(bar, SB_SETTEXTA, SB_SIMPLEID, "Only this"), 1);
    EXPECT_GT(Difference(parts, PixelsOf(bar)), 20);
    EXPECT_EQ(Send(bar, SB_GETPARTS), 3);
    Send(bar, SB_SIMPLE, 0);
    EXPECT_EQ(Difference(parts, PixelsOf(bar)), 0);
    // A click tells the part.
    codes.clear();
    DWORD_PTR part = 77;
    answers = [&](UINT message, WPARAM, LPARAM lParam, LRESULT&) {
        if (message != WM_NOTIFY) return false;
        codes.push_back(reinterpret_cast<NMHDR*>(lParam)->code);
        part = reinterpret_cast<NMMOUSE*>(lParam)->dwItemSpec;
        return false;
    };
    Send(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 8));
    Send(bar, WM_LBUTTONUP, 0, MAKELPARAM(60, 8));
    EXPECT_EQ(codes, std::vector<UINT>{static_cast<UINT>(NM_CLICK)});
    EXPECT_EQ(part, 1u);
}

TEST_F(StatusBars, AnOwnerDrawsItsPart) {
    DRAWITEMSTRUCT item{};
    answers = [&](UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
        if (message != WM_DRAWITEM) return false;
        item = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
        FillRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        result = 1;
        return true;
    };
    const HWND bar = MakeBar();
    int rights[] = {50, -1};
    Send(bar, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(rights));
    Send(bar, SB_SETTEXTA, 1 | SBT_OWNERDRAW, 1234);
    EXPECT_EQ(SendText(bar, SB_GETTEXTA, 1, nullptr), 1234);
    EXPECT_GT(CountOf(PixelsOf(bar), 0), 1000);
    EXPECT_EQ(item.CtlID, 9u);
    EXPECT_EQ(item.itemID, 1u);
    EXPECT_EQ(item.hwndItem, bar);
    EXPECT_EQ(item.itemData, 1234u);
}

TEST_F(StatusBars, TheCornerSizesTheWindow) {
    const HWND bar = MakeBar(SBARS_SIZEGRIP);
    RECT rect{};
    GetWindowRect(bar, &rect);
    EXPECT_EQ(Send(bar, WM_NCHITTEST, 0, MAKELPARAM(rect.right - 3, rect.bottom - 3)),
              HTBOTTOMRIGHT);
    EXPECT_EQ(Send(bar, WM_NCHITTEST, 0, MAKELPARAM(rect.left + 3, rect.bottom - 3)), HTCLIENT);
}

TEST_F(StatusBars, WhatIsNotThereIsRefused) {
    INITCOMMONCONTROLSEX families{sizeof families, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS};
    EXPECT_EQ(InitCommonControlsEx(&families), 1);
    families.dwSize = 3;
    EXPECT_EQ(InitCommonControlsEx(&families), 0);
    EXPECT_EQ(Make("No such control", "", 0), nullptr);
}

}  // namespace
