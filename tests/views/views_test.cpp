#include <brcore8/graphics/window_dc.h>
#include <brcore8/views/ctrl_view.h>
#include <brcore8/views/view.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);

struct Source : SInputStream {
    explicit Source(std::string text) : bytes(std::move(text)) {}
    int Read() override { return at < bytes.size() ? static_cast<unsigned char>(bytes[at++]) : -1; }
    unsigned long Read(void* buffer, unsigned long count) override {
        return SInputStream::Read(buffer, count);
    }
    void Close() override {}
    std::string bytes;
    std::size_t at = 0;
};

struct Sink : SOutputStream {
    void Write(int byteValue) override { bytes += static_cast<char>(byteValue); }
    unsigned long Write(const void* data, unsigned long count) override {
        return SOutputStream::Write(data, count);
    }
    std::string bytes;
};

class Views : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 200, 150),
                  1);
    }
    static COLORREF Pixel(SWnd& view, int x, int y) {
        view.UpdateWindow();
        return SClientDC(&view).GetPixel(x, y);
    }

    SWnd parent;
};

class STestBuffered : public SBufferizedView {
public:
    int draws = 0;

protected:
    void OnDraw(SDC& dc) override {
        ++draws;
        dc.FillSolidRect({10, 10, 20, 20}, kRed);
    }
};

TEST_F(Views, ABufferizedViewShowsWhatItDrewAndItsBackground) {
    STestBuffered view;
    view.SetBkColor(kBlue);
    ASSERT_EQ(view.Create(WS_VISIBLE, {0, 0, 100, 80}, &parent, 1), 1);
    EXPECT_EQ(Pixel(view, 15, 15), kRed);
    EXPECT_EQ(Pixel(view, 5, 5), kBlue);
    const int before = view.draws;
    view.SetBkColor(kGreen);
    EXPECT_EQ(Pixel(view, 5, 5), kGreen);
    EXPECT_EQ(view.draws, before + 1);
    view.MoveWindow({0, 0, 150, 100});
    EXPECT_EQ(Pixel(view, 140, 90), kGreen);
}

class STestScrolled : public SScrollView {
protected:
    // A green line every 100 pixels, 1000 in all.
    void OnDraw(SDC& dc) override {
        for (int y = 0; y < 1000; y += 100)
            dc.FillSolidRect({0, y, 500, y + 1}, kGreen);
    }
};

struct Scrolling {
    const char* name;
    UINT code;
    int position;
    int at;
};

TEST_F(Views, AScrollViewMovesByLinesAndPagesToItsEnds) {
    STestScrolled view;
    ASSERT_EQ(view.Create(WS_VISIBLE, {0, 0, 120, 100}, &parent, 1), 1);
    view.SetScrollSizes({100, 1000}, {0, 80}, {0, 7});
    const int last = 1000 - view.GetClientRect().bottom;
    const Scrolling rows[] = {
        {"a line down", SB_LINEDOWN, 0, 7}, {"a page down", SB_PAGEDOWN, 0, 87},
        {"a line up", SB_LINEUP, 0, 80},    {"a page up", SB_PAGEUP, 0, 0},
        {"above the top", SB_LINEUP, 0, 0}, {"to the bottom", SB_BOTTOM, 0, last},
        {"below it", SB_LINEDOWN, 0, last}, {"to the thumb", SB_THUMBPOSITION, 500, 500},
        {"an end", SB_ENDSCROLL, 0, 500},   {"to the top", SB_TOP, 0, 0},
    };
    for (const Scrolling& row : rows) {
        view.SendMessage(WM_VSCROLL, MAKEWPARAM(row.code, row.position));
        EXPECT_EQ(view.GetScrollPosition().y, row.at) << row.name;
    }
    view.ScrollToPosition({0, 260});
    EXPECT_EQ(Pixel(view, 5, 40), kGreen);
    EXPECT_EQ(Pixel(view, 5, 41), GetSysColor(COLOR_WINDOW));
    view.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)));
    EXPECT_EQ(view.GetScrollPosition().y, 260 + 21);
    view.SetScrollSizes({10, 10});
    EXPECT_EQ(view.GetScrollPosition().y, 0);
}

struct Bars {
    const char* name;
    SIZE total;
    DWORD shown;
};

TEST_F(Views, AScrollViewHasTheBarsThatItNeeds) {
    STestScrolled view;
    ASSERT_EQ(view.Create(WS_VISIBLE, {0, 0, 120, 100}, &parent, 1), 1);
    const Bars rows[] = {
        {"all fits", {50, 50}, 0},
        {"just", {120, 100}, 0},
        {"a pixel too high", {50, 101}, WS_VSCROLL},
        {"a pixel too wide", {121, 50}, WS_HSCROLL},
        {"one bar takes the other's room", {120, 101}, WS_VSCROLL | WS_HSCROLL},
        {"both", {1000, 1000}, WS_VSCROLL | WS_HSCROLL},
        {"and all fits again", {120, 100}, 0},
        {"nothing", {0, 0}, 0},
    };
    for (const Bars& row : rows) {
        SCOPED_TRACE(row.name);
        view.SetScrollSizes(row.total);
        EXPECT_EQ(view.GetStyle() & (WS_VSCROLL | WS_HSCROLL), row.shown);
        const RECT client = view.GetClientRect();
        const bool isTall = (row.shown & WS_VSCROLL) != 0, isWide = (row.shown & WS_HSCROLL) != 0;
        EXPECT_EQ(client.right, 120 - (isTall ? GetSystemMetrics(SM_CXVSCROLL) : 0));
        EXPECT_EQ(client.bottom, 100 - (isWide ? GetSystemMetrics(SM_CYHSCROLL) : 0));
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        if (!isTall) continue;
        EXPECT_TRUE(GetScrollInfo(view.GetHandle(), SB_VERT, &info));
        EXPECT_EQ(info.nPage, static_cast<UINT>(client.bottom));
        EXPECT_EQ(info.nMax, row.total.cy - 1);
    }
    // The thumb follows the view, and a larger window needs no bar.
    view.SetScrollSizes({50, 300});
    view.ScrollToPosition({0, 70});
    EXPECT_EQ(GetScrollPos(view.GetHandle(), SB_VERT), 70);
    view.MoveWindow({0, 0, 120, 400});
    EXPECT_EQ(view.GetStyle() & (WS_VSCROLL | WS_HSCROLL), 0u);
    EXPECT_EQ(view.GetScrollPosition().y, 0);
}

// Messages carry 16 bits of the thumb's position.
TEST_F(Views, TheThumbOfALongViewIsDraggedToItsEnd) {
    constexpr int kHigh = 200'000;
    STestScrolled view;
    ASSERT_EQ(view.Create(WS_VISIBLE, {0, 0, 120, 100}, &parent, 1), 1);
    view.SetScrollSizes({50, kHigh});
    SetForegroundWindow(parent.GetHandle());
    const RECT place = view.GetWindowRect();
    const int x = place.right - 5;
    SetCursorPos(x, place.top + GetSystemMetrics(SM_CYHSCROLL) + 3);
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    SetCursorPos(x, place.bottom - 1);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
    EXPECT_EQ(view.GetScrollPosition().y, kHigh - view.GetClientRect().bottom);
    EXPECT_EQ(GetScrollPos(view.GetHandle(), SB_VERT), view.GetScrollPosition().y);
    EXPECT_EQ(GetCapture(), nullptr);
}

class STestPages : public SPreviewView {
protected:
    void OnDrawPage(SDC& dc, int page) override {
        dc.FillSolidRect({0, 0, 600, 900}, page == 0 ? kRed : kGreen);
    }
};

TEST_F(Views, APreviewShowsItsPageInTheMiddle) {
    STestPages view;
    ASSERT_EQ(view.Create(WS_VISIBLE, {0, 0, 200, 100}, &parent, 1), 1);
    view.SetPages(2, {600, 900});
    EXPECT_EQ(Pixel(view, 100, 50), kRed);
    EXPECT_EQ(Pixel(view, 2, 2), GetSysColor(COLOR_APPWORKSPACE));
    EXPECT_EQ(view.SetCurPage(2), 0);
    EXPECT_EQ(view.SetCurPage(1), 1);
    EXPECT_EQ(Pixel(view, 100, 50), kGreen);
    view.SetPages(1, {600, 900});
    EXPECT_EQ(view.GetCurPage(), 0);
}

TEST_F(Views, AnAboutViewShowsItsText) {
    SAboutView view;
    ASSERT_EQ(view.Create(WS_VISIBLE, {0, 0, 200, 100}, &parent, 1), 1);
    const auto inked = [&view] {
        view.UpdateWindow();
        SClientDC dc(&view);
        int count = 0;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 200; ++x)
                count += dc.GetPixel(x, y) != GetSysColor(COLOR_WINDOW);
        return count;
    };
    EXPECT_EQ(inked(), 0);
    view.SetTitle("Program");
    const int title = inked();
    EXPECT_GT(title, 30);
    view.AddLine("Version 1");
    EXPECT_GT(inked(), title + 20);
    EXPECT_EQ(view.GetLineCount(), 1);
}

// Whether the platform has the class; when it has not, the creation's failure is checked here.
bool IsThere(const char* className, int created) {
    const DWORD code = GetLastError();
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    const bool has = GetClassInfoExA(nullptr, className, &info) != 0;
    EXPECT_EQ(created, has ? 1 : 0) << className;
    if (!has) {
        EXPECT_EQ(code, static_cast<DWORD>(ERROR_CANNOT_FIND_WND_CLASS)) << className;
    }
    return has;
}

TEST_F(Views, ViewsThatAreControls) {
    constexpr RECT place{0, 0, 150, 100};
    SEditView edit;
    if (IsThere("EDIT", edit.Create(WS_VISIBLE, place, &parent, 1))) {
        Source source("one\ntwo\r\nthree");
        edit.Load(source);
        EXPECT_STREQ(edit.GetWindowText(), "one\r\ntwo\r\nthree");
        EXPECT_EQ(edit.GetLineCount(), 3);
        EXPECT_EQ(edit.GetModify(), 0);
        EXPECT_EQ(edit.FindNext("t"), 1);
        edit.ReplaceSel("T");
        EXPECT_EQ(edit.GetModify(), 1);
        EXPECT_EQ(edit.FindNext("t"), 1);
        EXPECT_EQ(edit.FindNext("t"), 0);
        Sink sink;
        edit.Save(sink);
        EXPECT_EQ(sink.bytes, "one\nTwo\nthree");
    }
    SRichEditView rich;
    if (IsThere("RichEdit20A", rich.Create(WS_VISIBLE, place, &parent, 2))) {
        rich.ReplaceSel("text");
        EXPECT_STREQ(rich.GetWindowText(), "text");
    }
    SListView list;
    if (IsThere(WC_LISTVIEWA, list.Create(WS_VISIBLE, place, &parent, 3))) {
        EXPECT_EQ(list.AddColumn("Name", 50), 0);
        EXPECT_EQ(list.AddColumn("Size", 50), 1);
        EXPECT_EQ(list.AddItem("a"), 0);
        EXPECT_EQ(list.SetItemText(0, 1, "2"), 1);
        EXPECT_EQ(list.GetItemCount(), 1);
    }
    STreeView tree;
    if (IsThere(WC_TREEVIEWA, tree.Create(WS_VISIBLE, place, &parent, 4))) {
        const HTREEITEM root = tree.AddItem("root");
        tree.AddItem("leaf", root);
        EXPECT_EQ(tree.GetItemCount(), 2);
        tree.SelectItem(root);
        EXPECT_EQ(tree.GetSelectedItem(), root);
    }
}

}  // namespace
