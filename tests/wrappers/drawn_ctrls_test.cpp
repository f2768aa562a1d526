// Controls of the library's own: the same on every system.

#include <brcore8/controls/bar_ctrls.h>
#include <brcore8/controls/custom_progress_ctrl.h>
#include <brcore8/controls/drawn_ctrls.h>
#include <brcore8/controls/list_ctrls.h>
#include <brcore8/controls/static_ctrls.h>
#include <brcore8/graphics/window_dc.h>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

// Keeps the codes that its controls tell.
class STestParent : public SWnd {
public:
    std::vector<UINT> codes;
    SWnd* doomed = nullptr;

protected:
    int OnCommand(WPARAM wParam, LPARAM) override {
        codes.push_back(HIWORD(wParam));
        if (doomed != nullptr) std::exchange(doomed, nullptr)->DestroyWindow();
        return 1;
    }
};

class DrawnControls : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200),
                  1);
    }
    static void Click(SWnd& control, int x, int y) {
        control.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        control.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    static void Press(SWnd& control, UINT key) {
        control.SendMessage(WM_KEYDOWN, key);
        control.SendMessage(WM_KEYUP, key);
    }
    static COLORREF Pixel(SWnd& control, int x, int y) {
        control.UpdateWindow();
        return SClientDC(&control).GetPixel(x, y);
    }
    static bool Shows(SWnd& control, COLORREF color) {
        control.UpdateWindow();
        SClientDC dc(&control);
        const RECT client = control.GetClientRect();
        for (int y = 0; y < client.bottom; ++y)
            for (int x = 0; x < client.right; ++x)
                if (dc.GetPixel(x, y) == color) return true;
        return false;
    }
    // Whether there is a text: its edges may be softened, so that no pixel has its very colour.
    static bool ShowsText(SWnd& control) {
        control.UpdateWindow();
        SClientDC dc(&control);
        const RECT client = control.GetClientRect();
        for (int y = 3; y < client.bottom - 3; ++y)
            for (int x = 3; x < client.right - 3; ++x)
                if (GetGValue(dc.GetPixel(x, y)) < 0x60) return true;
        return false;
    }
    std::vector<UINT> TakeCodes() { return std::exchange(parent.codes, {}); }

    STestParent parent;
    using Codes = std::vector<UINT>;
};

constexpr DWORD kShown = WS_VISIBLE;

TEST_F(DrawnControls, AButtonIsClickedByMouseAndSpace) {
    SButtonExCtrl button;
    ASSERT_EQ(button.Create("Go", kShown, {0, 0, 60, 24}, &parent, 7), 1);
    Click(button, 5, 5);
    Press(button, VK_SPACE);
    EXPECT_EQ(TakeCodes(), Codes({0, 0}));
    // Released outside, it was not clicked.
    button.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(button.IsPressed(), 1);
    button.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, 5));
    EXPECT_EQ(button.IsPressed(), 0);
    button.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(200, 5));
    EXPECT_EQ(TakeCodes(), Codes());
    button.SetToggle(1);
    Click(button, 5, 5);
    EXPECT_EQ(button.GetCheck(), 1);
    EXPECT_EQ(button.SendMessage(BM_GETCHECK), 1);
    EXPECT_EQ(Pixel(button, 0, 0), GetSysColor(COLOR_BTNSHADOW));
    Click(button, 5, 5);
    EXPECT_EQ(Pixel(button, 0, 0), GetSysColor(COLOR_BTNHIGHLIGHT));
    EXPECT_TRUE(ShowsText(button));
    // The parent may close what told it.
    parent.doomed = &button;
    Click(button, 5, 5);
    EXPECT_EQ(button.GetHandle(), nullptr);
}

TEST_F(DrawnControls, AButtonFollowsDialogsAndFastFingers) {
    SButtonExCtrl button;
    ASSERT_EQ(button.Create("&Go", kShown, {0, 0, 60, 24}, &parent, 7), 1);
    Click(button, 5, 5);
    // The second click of two that come fast.
    button.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(button.IsPressed(), 1);
    button.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_EQ(TakeCodes(), Codes({0, 0}));
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(TakeCodes(), Codes({0}));
    button.EnableWindow(0);
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(TakeCodes(), Codes());
    button.EnableWindow(1);
    button.SendMessage(WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(button.IsPressed(), 1);
    button.SendMessage(WM_KILLFOCUS);
    EXPECT_EQ(button.IsPressed(), 0);
    button.SendMessage(WM_KEYUP, VK_SPACE);
    EXPECT_EQ(TakeCodes(), Codes());
}

TEST_F(DrawnControls, WellsHoldANodeAndAColor) {
    SNodeWellCtrl well("a style");
    ASSERT_EQ(well.Create("", kShown, {0, 0, 80, 24}, &parent, 1), 1);
    int node = 0;
    EXPECT_EQ(well.GetNode(), nullptr);
    well.SetNode(&node, "Heading");
    EXPECT_EQ(well.GetNode(), &node);
    EXPECT_STREQ(well.GetWindowText(), "Heading");
    well.Clear();
    EXPECT_STREQ(well.GetWindowText(), "");
    EXPECT_TRUE(Shows(well, GetSysColor(COLOR_BTNFACE)));
    Click(well, 5, 5);
    EXPECT_EQ(TakeCodes(), Codes({0}));

    SColorWellCtrl color;
    ASSERT_EQ(color.Create(kShown, {0, 30, 20, 50}, &parent, 2), 1);
    color.SetColor(RGB(10, 200, 30));
    color.SetColor(RGB(10, 200, 30));
    EXPECT_EQ(TakeCodes(), Codes({SColorWellCtrl::kColorChanged}));
    EXPECT_EQ(Pixel(color, 10, 10), RGB(10, 200, 30));
    Click(color, 5, 5);
    Press(color, VK_SPACE);
    EXPECT_EQ(TakeCodes(), Codes({0, 0}));
}

TEST_F(DrawnControls, TabsAreChosenAndRemoved) {
    STabBeam tabs;
    ASSERT_EQ(tabs.Create(kShown, {0, 0, 280, STabBeam::kHeight}, &parent, 1), 1);
    EXPECT_EQ(tabs.GetCurTab(), -1);
    for (const char* text : {"one", "two", "three"})
        tabs.AddTab(text);
    EXPECT_EQ(tabs.GetCurTab(), 0);
    const RECT third = tabs.GetTabRect(2);
    Click(tabs, third.left + 3, 5);
    EXPECT_EQ(tabs.GetCurTab(), 2);
    Click(tabs, third.left + 3, 5);
    Press(tabs, VK_LEFT);
    EXPECT_EQ(TakeCodes(), Codes({STabBeam::kTabChanged, STabBeam::kTabChanged}));
    EXPECT_EQ(tabs.GetCurTab(), 1);
    EXPECT_EQ(tabs.InsertTab(0, "zero"), 0);
    EXPECT_STREQ(tabs.GetTabText(tabs.GetCurTab()), "two");
    EXPECT_EQ(tabs.HitTest({275, 5}), -1);
    EXPECT_EQ(Pixel(tabs, 275, 5), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(tabs.SetCurTab(3), 1);
    EXPECT_EQ(tabs.RemoveTab(3), 1);
    EXPECT_STREQ(tabs.GetTabText(tabs.GetCurTab()), "two");
    while (tabs.RemoveTab(0)) {
    }
    EXPECT_EQ(tabs.GetCurTab(), -1);
    EXPECT_EQ(tabs.SetCurTab(0), 0);
}

TEST_F(DrawnControls, TextsAndFrames) {
    SStaticExCtrl text;
    ASSERT_EQ(text.Create("Read me", kShown, {0, 0, 100, 20}, &parent, 3), 1);
    text.SetTextColor(RGB(200, 0, 0));
    text.SetBkColor(RGB(255, 255, 0));
    EXPECT_EQ(Pixel(text, 99, 0), RGB(255, 255, 0));
    Click(text, 5, 5);
    EXPECT_EQ(TakeCodes(), Codes());
    text.SetLink(1);
    EXPECT_TRUE(Shows(text, RGB(200, 0, 0)));
    Click(text, 5, 5);
    EXPECT_EQ(TakeCodes(), Codes({0}));

    SFrameCtrl frame;
    ASSERT_EQ(frame.Create("Group", kShown, {0, 30, 120, 90}, &parent), 1);
    EXPECT_EQ(Pixel(frame, 0, 30), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(Pixel(frame, 60, 30), GetSysColor(COLOR_BTNFACE));
    EXPECT_TRUE(ShowsText(frame));
    EXPECT_GT(frame.GetInside().top, 10);
    EXPECT_EQ(frame.SendMessage(WM_NCHITTEST), HTTRANSPARENT);
}

TEST_F(DrawnControls, CheckedItems) {
    SCheckListBoxCtrl list;
    ASSERT_EQ(list.Create(kShown | LBS_SORT, {0, 0, 120, 80}, &parent, 4), 1);
    EXPECT_EQ(list.AddString("pear"), 0);
    EXPECT_EQ(list.AddString("Apple"), 0);
    EXPECT_EQ(list.AddString("quince"), 2);
    EXPECT_EQ(list.InsertString(3, "last"), 3);
    EXPECT_EQ(list.InsertString(9, "beyond"), -1);
    EXPECT_EQ(list.GetCount(), 4);
    EXPECT_STREQ(list.GetText(1), "pear");
    EXPECT_STREQ(list.GetText(9), "");
    EXPECT_EQ(list.FindString(0, "A"), 0);
    EXPECT_EQ(list.FindString(-1, "QUI"), 2);
    EXPECT_EQ(list.FindStringExact(-1, "QUI"), -1);
    list.SetItemData(2, 42);
    EXPECT_EQ(list.GetItemData(2), 42);

    const int height = list.GetItemHeight();
    Click(list, 3, height + 3);
    EXPECT_EQ(list.GetCurSel(), 1);
    EXPECT_EQ(list.GetCheck(1), SCheckListBoxCtrl::kChecked);
    // On the text it is only selected.
    Click(list, height + 20, 3);
    EXPECT_EQ(list.GetCurSel(), 0);
    EXPECT_EQ(list.GetCheckedCount(), 1);
    Press(list, VK_SPACE);
    Press(list, VK_END);
    EXPECT_EQ(list.GetCurSel(), 3);
    EXPECT_EQ(list.GetCheckedCount(), 2);
    EXPECT_EQ(TakeCodes(),
              Codes({SCheckListBoxCtrl::kCheckChanged, SCheckListBoxCtrl::kCheckChanged}));
    list.Enable(3, 0);
    Press(list, VK_SPACE);
    EXPECT_EQ(list.GetCheck(3), SCheckListBoxCtrl::kUnchecked);
    int outside = 0;
    EXPECT_EQ(list.ItemFromPoint({5, height * 2 + 1}, &outside), 2);
    EXPECT_EQ(outside, 0);
    EXPECT_EQ(list.DeleteString(0), 3);
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_EQ(list.GetCheckedCount(), 1);
    EXPECT_TRUE(Shows(list, GetSysColor(COLOR_HIGHLIGHT)));
    list.ResetContent();
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_FALSE(Shows(list, GetSysColor(COLOR_HIGHLIGHT)));
}

TEST_F(DrawnControls, CheckedItemsScroll) {
    SCheckListBoxCtrl list;
    ASSERT_EQ(list.Create(kShown | WS_VSCROLL, {0, 0, 120, 80}, &parent, 4), 1);
    const int height = list.GetItemHeight();
    list.MoveWindow({0, 0, 120, 4 * height + 1});
    for (int i = 0; i < 20; ++i)
        list.AddString(("item " + std::to_string(i)).c_str());
    const auto wheel = [](int delta) { return MAKEWPARAM(0, static_cast<WORD>(delta)); };
    const struct {
        const char* name;
        UINT message;
        WPARAM wParam;
        int top;
        int current;
    } steps[] = {
        {"wheel", WM_MOUSEWHEEL, wheel(-WHEEL_DELTA), 3, -1},
        {"part of a notch", WM_MOUSEWHEEL, wheel(-WHEEL_DELTA / 6), 3, -1},
        {"the next part", WM_MOUSEWHEEL, wheel(-WHEEL_DELTA / 6), 4, -1},
        {"wheel over the end", WM_MOUSEWHEEL, wheel(-WHEEL_DELTA * 50), 16, -1},
        {"wheel over the begin", WM_MOUSEWHEEL, wheel(WHEEL_DELTA * 50), 0, -1},
        {"line", WM_VSCROLL, SB_LINEDOWN, 1, -1},
        {"page", WM_VSCROLL, SB_PAGEDOWN, 5, -1},
        {"line back", WM_VSCROLL, SB_LINEUP, 4, -1},
        {"page back", WM_VSCROLL, SB_PAGEUP, 0, -1},
        {"end", WM_VSCROLL, SB_BOTTOM, 16, -1},
        {"thumb", WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 7), 7, -1},
        {"begin", WM_VSCROLL, SB_TOP, 0, -1},
        {"page key", WM_KEYDOWN, VK_NEXT, 1, 4},
        {"another", WM_KEYDOWN, VK_NEXT, 5, 8},
        {"page key back", WM_KEYDOWN, VK_PRIOR, 4, 4},
        {"to the begin", WM_KEYDOWN, VK_PRIOR, 0, 0},
        {"over the begin", WM_KEYDOWN, VK_PRIOR, 0, 0},
        {"last", WM_KEYDOWN, VK_END, 16, 19},
        {"over the end", WM_KEYDOWN, VK_NEXT, 16, 19},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.name);
        list.SendMessage(step.message, step.wParam);
        EXPECT_EQ(list.GetTopIndex(), step.top);
        EXPECT_EQ(list.GetCurSel(), step.current);
        SCROLLINFO bar{};
        bar.cbSize = sizeof bar;
        bar.fMask = SIF_ALL;
        EXPECT_TRUE(GetScrollInfo(list.GetHandle(), SB_VERT, &bar));
        EXPECT_EQ(bar.nPos, step.top);
        EXPECT_EQ(bar.nMax, 19);
        EXPECT_EQ(bar.nPage, 4u);
    }
    EXPECT_EQ(list.FindString(INT_MAX, "item 1"), 1);
    EXPECT_EQ(list.FindString(1, "item 1"), 10);
    EXPECT_EQ(list.FindString(19, "item 1"), 1);
    // Two fast clicks turn a check twice.
    Click(list, 3, 3);
    EXPECT_EQ(list.GetCheck(16), SCheckListBoxCtrl::kChecked);
    list.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(3, 3));
    EXPECT_EQ(list.GetCheck(16), SCheckListBoxCtrl::kUnchecked);
    list.ResetContent();
    EXPECT_NE(list.GetStyle() & WS_VSCROLL, 0u);
    list.SendMessage(WM_KEYDOWN, VK_NEXT);
    EXPECT_EQ(list.GetCurSel(), -1);
}

TEST_F(DrawnControls, ABarThatWaitedToPaintDoesNotWaitForEverInItsNextWindow) {
    SCustomProgressCtrl bar;
    for (int position : {50, 100}) {
        ASSERT_EQ(bar.Create(kShown, {0, 0, 102, 20}, &parent, 6), 1);
        bar.SetPos(0);
        bar.UpdateWindow();
        bar.SetPos(position);  // so soon behind the last that it waits
        if (position == 50) bar.DestroyWindow();
    }
    const COLORREF filled = GetSysColor(COLOR_HIGHLIGHT);
    MSG message;
    for (int i = 0; i < 500 && Pixel(bar, 90, 10) != filled; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    EXPECT_EQ(Pixel(bar, 90, 10), filled);
}

TEST_F(DrawnControls, ButtonsInCategories) {
    SToolBarCatCtrl list(nullptr);
    ASSERT_EQ(list.Create(kShown, {0, 0, 120, 80}, &parent, 5), 1);
    EXPECT_EQ(list.AddButton(0, 1, "none"), 0);
    EXPECT_EQ(list.AddCategory("File"), 0);
    EXPECT_EQ(list.AddCategory("Edit"), 1);
    list.AddButton(0, 100, "Open");
    list.AddButton(1, 200, "Cut");
    list.AddButton(1, 300, "Paste");
    EXPECT_EQ(list.GetButtonCount(1), 2);
    EXPECT_STREQ(list.GetCategoryName(1), "Edit");
    EXPECT_EQ(list.HitTest({5, 5}), 0u);
    EXPECT_EQ(list.SetCurCategory(2), 0);
    EXPECT_EQ(list.SetCurCategory(1), 1);
    Click(list, 5, 30);
    EXPECT_EQ(list.GetPicked(), 300u);
    EXPECT_EQ(TakeCodes(), Codes({SToolBarCatCtrl::kButtonPicked}));
    EXPECT_TRUE(Shows(list, GetSysColor(COLOR_HIGHLIGHT)));
    Click(list, 5, 70);
    EXPECT_EQ(TakeCodes(), Codes());
}

}  // namespace
