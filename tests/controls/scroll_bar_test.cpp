// Scroll bars of windows, and those that are windows.

#include "controls/desk.h"

#include <algorithm>
#include <utility>

namespace {

class ScrollBars : public Desk {
protected:
    SCROLLINFO InfoOf(HWND bar, int which) const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        EXPECT_NE(GetScrollInfo(bar, which, &info), 0);
        return info;
    }
};

TEST_F(ScrollBars, NumbersStayInTheirRange) {
    const struct {
        const char* name;
        UINT mask;
        int min, max;
        UINT page;
        int position;
        int answer;
        int afterMin, afterMax;
        UINT afterPage;
    } steps[] = {
        {"range", SIF_RANGE, 0, 50, 0, 0, 0, 0, 50, 0},
        {"position", SIF_POS, 0, 0, 0, 20, 20, 0, 50, 0},
        {"above", SIF_POS, 0, 0, 0, 90, 50, 0, 50, 0},
        {"page moves the position", SIF_PAGE, 0, 0, 11, 0, 40, 0, 50, 11},
        {"below", SIF_POS, 0, 0, 0, -7, 0, 0, 50, 11},
        {"all", SIF_ALL, 10, 30, 5, 28, 26, 10, 30, 5},
        {"page above the range", SIF_PAGE | SIF_DISABLENOSCROLL, 0, 0, 99, 0, 10, 10, 30, 21},
    };
    const HWND bar = Make("STATIC", "", WS_VSCROLL | WS_HSCROLL, 1, {0, 0, 200, 200});
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = step.mask;
        info.nMin = step.min;
        info.nMax = step.max;
        info.nPage = step.page;
        info.nPos = step.position;
        EXPECT_EQ(SetScrollInfo(bar, SB_VERT, &info, 1), step.answer);
        const SCROLLINFO after = InfoOf(bar, SB_VERT);
        EXPECT_EQ(after.nMin, step.afterMin);
        EXPECT_EQ(after.nMax, step.afterMax);
        EXPECT_EQ(after.nPage, step.afterPage);
        EXPECT_EQ(after.nPos, step.answer);
        EXPECT_EQ(GetScrollPos(bar, SB_VERT), step.answer);
    }
    EXPECT_EQ(SetScrollRange(bar, SB_HORZ, 3, 8, 1), 1);
    EXPECT_EQ(SetScrollPos(bar, SB_HORZ, 5, 1), 3);
    EXPECT_EQ(SetScrollPos(bar, SB_HORZ, 6, 1), 5);
    int low = 0, high = 0;
    EXPECT_EQ(GetScrollRange(bar, SB_HORZ, &low, &high), 1);
    EXPECT_EQ(low, 3);
    EXPECT_EQ(high, 8);
}

TEST_F(ScrollBars, ABarThatScrollsNothingGoesAway) {
    const HWND bar = Make("STATIC", "", WS_VSCROLL, 1, {0, 0, 200, 200});
    const auto width = [bar] {
        RECT client{};
        GetClientRect(bar, &client);
        return client.right;
    };
    const int narrow = 200 - GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(width(), narrow);
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nMax = 10;
    info.nPage = 11;
    SetScrollInfo(bar, SB_VERT, &info, 1);
    EXPECT_EQ(width(), 200);
    EXPECT_EQ(GetWindowLongA(bar, GWL_STYLE) & WS_VSCROLL, 0);
    info.nPage = 5;
    SetScrollInfo(bar, SB_VERT, &info, 1);
    EXPECT_EQ(width(), narrow);
    info.nPage = 11;
    info.fMask |= SIF_DISABLENOSCROLL;
    SetScrollInfo(bar, SB_VERT, &info, 1);
    EXPECT_EQ(width(), narrow);
    EXPECT_EQ(ShowScrollBar(bar, SB_VERT, 0), 1);
    EXPECT_EQ(width(), 200);
    EXPECT_EQ(ShowScrollBar(bar, SB_BOTH, 1), 1);
    EXPECT_EQ(width(), narrow);
}

// What WM_VSCROLL told, as "code:position ".
TEST_F(ScrollBars, TheMouseScrolls) {
    std::string told;
    HWND from = nullptr;
    answers = [&](UINT message, WPARAM wParam, LPARAM lParam, LRESULT&) {
        if (message != WM_VSCROLL) return false;
        told += std::to_string(LOWORD(wParam)) + ':' + std::to_string(HIWORD(wParam)) + ' ';
        from = reinterpret_cast<HWND>(lParam);
        return true;
    };
    const HWND bar = Make("SCROLLBAR", "", SBS_VERT, 1, {0, 0, 16, 232});
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(SetScrollRange(bar, SB_CTL, 0, 100, 1), 1);
    SetScrollPos(bar, SB_CTL, 50, 1);
    const struct {
        const char* name;
        int y;
        const char* told;
    } rows[] = {
        {"first arrow", 5, "0:0 8:0 "},
        {"last arrow", 227, "1:0 8:0 "},
        {"page up", 40, "2:0 8:0 "},
        {"page down", 190, "3:0 8:0 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        told.clear();
        // The button is let go at once.
        PostMessageA(bar, WM_LBUTTONUP, 0, MAKELPARAM(8, row.y));
        Send(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, row.y));
        EXPECT_EQ(told, row.told);
        EXPECT_EQ(from, bar);
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

// Each code with the position that GetScrollInfo knows, all 32 bits of it.
TEST_F(ScrollBars, ADraggedThumbTellsWhereItIs) {
    const HWND bar = Make("SCROLLBAR", "", SBS_VERT, 1, {0, 0, 16, 232});
    SetScrollRange(bar, SB_CTL, 0, 1'000'000, 1);
    std::vector<std::pair<int, int>> told;
    answers = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
        if (message != WM_VSCROLL) return false;
        const SCROLLINFO info = InfoOf(bar, SB_CTL);
        told.emplace_back(LOWORD(wParam), info.nTrackPos);
        const bool tellsPlace =
            LOWORD(wParam) == SB_THUMBTRACK || LOWORD(wParam) == SB_THUMBPOSITION;
        EXPECT_EQ(HIWORD(wParam), tellsPlace ? LOWORD(info.nTrackPos) : 0);
        if (LOWORD(wParam) == SB_THUMBPOSITION) SetScrollPos(bar, SB_CTL, info.nTrackPos, 1);
        return true;
    };
    const auto drag = [bar](std::initializer_list<int> places) {
        for (const int y : places)
            PostMessageA(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(8, y));
        PostMessageA(bar, WM_LBUTTONUP, 0, MAKELPARAM(8, *(places.end() - 1)));
        Send(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, *places.begin()));
    };
    // From the thumb at the upper end to the middle, and to the lower end.
    drag({20, 116, 231});
    ASSERT_GE(told.size(), 4u);
    EXPECT_EQ(told.back().first, SB_ENDSCROLL);
    EXPECT_EQ(told[told.size() - 2], std::pair(int{SB_THUMBPOSITION}, 1'000'000));
    const auto middle = std::find_if(told.begin(), told.end(), [](const auto& each) {
        return each.first == SB_THUMBTRACK && each.second > 400'000 && each.second < 600'000;
    });
    EXPECT_NE(middle, told.end());
    EXPECT_EQ(GetScrollPos(bar, SB_CTL), 1'000'000);
    EXPECT_EQ(GetCapture(), nullptr);
    // And back to the upper end.
    told.clear();
    drag({212, 0});
    EXPECT_EQ(GetScrollPos(bar, SB_CTL), 0);
}

// Who is told may end the bar.
TEST_F(ScrollBars, ABarMayGoWhileItIsHeld) {
    for (const int code : {SB_THUMBTRACK, SB_THUMBPOSITION, SB_LINEUP}) {
        const HWND bar = Make("SCROLLBAR", "", SBS_VERT, 1, {0, 0, 16, 232});
        SetScrollRange(bar, SB_CTL, 0, 100, 1);
        answers = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
            if (message == WM_VSCROLL && LOWORD(wParam) == code) DestroyWindow(bar);
            return false;
        };
        const int y = code == SB_LINEUP ? 5 : 20;
        PostMessageA(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(8, 100));
        PostMessageA(bar, WM_LBUTTONUP, 0, MAKELPARAM(8, 100));
        Send(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(8, y));
        EXPECT_FALSE(IsWindow(bar)) << code;
        EXPECT_EQ(GetCapture(), nullptr);
        Settle();
        answers = nullptr;
    }
}

TEST_F(ScrollBars, TheThumbStandsWhereThePositionIs) {
    const HWND bar = Make("SCROLLBAR", "", SBS_VERT, 1, {0, 0, 16, 232});
    SetScrollRange(bar, SB_CTL, 0, 100, 1);
    std::vector<std::vector<COLORREF>> pictures;
    for (const int position : {0, 50, 100}) {
        SetScrollPos(bar, SB_CTL, position, 1);
        pictures.push_back(PixelsOf(bar));
    }
    EXPECT_GT(Difference(pictures[0], pictures[1]), 20);
    EXPECT_GT(Difference(pictures[1], pictures[2]), 20);
    SetScrollPos(bar, SB_CTL, 50, 1);
    EXPECT_EQ(Difference(pictures[1], PixelsOf(bar)), 0);
    EnableScrollBar(bar, SB_CTL, ESB_DISABLE_BOTH);
    EXPECT_GT(Difference(pictures[1], PixelsOf(bar)), 20);
}

}  // namespace
