// The desktop in memory: frames that it draws and follows itself, its clock, and recordings.

#include <brcore8/platform/desktop_picture.h>
#include <brcore8/platform/posix/desktop_testing.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class STestFramed : public SWnd {
public:
    std::vector<UINT> seen;
    std::string typed;
    SIZE least{};

    int Make(DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE) {
        return CreateEx(0, "S_CliDrawWnd", "Plan", style, 100, 80, 300, 200);
    }
    int Count(UINT message) const {
        int count = 0;
        for (const UINT each : seen)
            count += each == message;
        return count;
    }
    RECT Rect() const {
        RECT rect{};
        ::GetWindowRect(GetHandle(), &rect);
        return rect;
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back(message);
        if (message == WM_CHAR) typed += static_cast<char>(wParam);
        if (message == WM_GETMINMAXINFO && least.cx > 0)
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
        return SWnd::WindowProc(message, wParam, lParam);
    }
};

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void Drag(POINT from, POINT to) {
    SetCursorPos(from.x, from.y);
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    SetCursorPos((from.x + to.x) / 2, (from.y + to.y) / 2);
    SetCursorPos(to.x, to.y);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    Pump();
}

// The clock stands still, so that clicks of one test are no double clicks of another.
class Desktop : public testing::Test {
protected:
    void SetUp() override {
        SHoldDesktopClock();
        SAdvanceDesktopClock(10000);
        Pump();
    }
    void TearDown() override { SReleaseDesktopClock(); }
};

TEST_F(Desktop, EveryPartOfAFrameIsWhereItIsDrawn) {
    STestFramed window;
    ASSERT_EQ(window.Make(), 1);
    const RECT all = window.Rect();
    const auto part = [&](int x, int y) {
        return SendMessageA(window.GetHandle(), WM_NCHITTEST, 0, MAKELPARAM(x, y));
    };
    const int middle = (all.left + all.right) / 2;
    EXPECT_EQ(part(all.left, all.top), HTTOPLEFT);
    EXPECT_EQ(part(middle, all.top + 1), HTTOP);
    EXPECT_EQ(part(all.right - 1, all.bottom - 1), HTBOTTOMRIGHT);
    EXPECT_EQ(part(all.left + 1, all.bottom - 60), HTLEFT);
    EXPECT_EQ(part(all.left, all.top - 1), HTNOWHERE);
    EXPECT_EQ(part(middle, all.top + 12), HTCAPTION);
    EXPECT_EQ(part(all.right - 12, all.top + 12), HTCLOSE);
    EXPECT_EQ(part(all.right - 32, all.top + 12), HTMAXBUTTON);
    EXPECT_EQ(part(all.right - 48, all.top + 12), HTMINBUTTON);
    EXPECT_EQ(part(middle, all.top + 60), HTCLIENT);

    RECT around{0, 0, 200, 100};
    AdjustWindowRectEx(&around, WS_OVERLAPPEDWINDOW, 0, 0);
    RECT client{};
    ::GetClientRect(window.GetHandle(), &client);
    EXPECT_EQ(all.right - all.left - client.right, around.right - around.left - 200);
    EXPECT_EQ(all.bottom - all.top - client.bottom, around.bottom - around.top - 100);

    // The caption has the colour of an active one, and the text.
    const HBITMAP picture = SCaptureWindow(window.GetHandle());
    const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
    const HGDIOBJ old = SelectObject(dc, picture);
    EXPECT_EQ(GetPixel(dc, 150, 8), GetSysColor(COLOR_ACTIVECAPTION));
    int bright = 0;
    for (int x = 6; x < 60; ++x)
        for (int y = 5; y < 23; ++y)
            bright += GetGValue(GetPixel(dc, x, y)) > 200;
    EXPECT_GT(bright, 15);
    SelectObject(dc, old);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    DeleteObject(picture);
}

TEST_F(Desktop, FramesAreMovedAndSized) {
    STestFramed window;
    window.least = {250, 150};
    ASSERT_EQ(window.Make(), 1);
    Drag({200, 92}, {240, 112});
    RECT rect = window.Rect();
    EXPECT_EQ(rect.left, 140);
    EXPECT_EQ(rect.top, 100);
    EXPECT_EQ(rect.right - rect.left, 300);
    EXPECT_EQ(window.Count(WM_ENTERSIZEMOVE), 1);
    EXPECT_EQ(window.Count(WM_EXITSIZEMOVE), 1);
    EXPECT_EQ(GetCapture(), nullptr);

    SAdvanceDesktopClock(1000);
    Drag({rect.right - 1, rect.bottom - 1}, {rect.right + 29, rect.bottom + 9});
    EXPECT_EQ(window.Rect().right, rect.right + 30);
    EXPECT_EQ(window.Rect().bottom, rect.bottom + 10);
    // No smaller than it says, and the other side stays.
    SAdvanceDesktopClock(1000);
    rect = window.Rect();
    Drag({rect.left + 1, rect.bottom - 60}, {rect.left + 300, rect.bottom - 60});
    EXPECT_EQ(window.Rect().right, rect.right);
    EXPECT_EQ(window.Rect().right - window.Rect().left, 250);
}

TEST_F(Desktop, TheBoxesOfACaptionWorkWhenReleasedOverThem) {
    STestFramed window;
    ASSERT_EQ(window.Make(), 1);
    const RECT all = window.Rect();
    Drag({all.right - 12, all.top + 12}, {all.right - 12, all.top + 100});
    EXPECT_NE(window.GetHandle(), nullptr);
    SAdvanceDesktopClock(1000);
    Drag({all.right - 32, all.top + 12}, {all.right - 31, all.top + 12});
    EXPECT_TRUE(IsZoomed(window.GetHandle()));
    SendMessageA(window.GetHandle(), WM_SYSCOMMAND, SC_RESTORE, 0);
    EXPECT_TRUE(::EqualRect(&all, [rect = window.Rect()]() mutable { return &rect; }()));
    SAdvanceDesktopClock(1000);
    Drag({all.right - 12, all.top + 12}, {all.right - 11, all.top + 12});
    EXPECT_EQ(window.GetHandle(), nullptr);
    EXPECT_EQ(window.Count(WM_CLOSE), 1);
}

TEST_F(Desktop, TimersAndTheCaretFollowTheHeldClock) {
    STestFramed window;
    ASSERT_EQ(window.Make(), 1);
    Pump();
    window.seen.clear();
    SetTimer(window.GetHandle(), 1, 100, nullptr);
    SAdvanceDesktopClock(99);
    Pump();
    EXPECT_EQ(window.Count(WM_TIMER), 0);
    SAdvanceDesktopClock(1);
    Pump();
    EXPECT_EQ(window.Count(WM_TIMER), 1);
    KillTimer(window.GetHandle(), 1);

    const auto pixel = [&] {
        const HDC dc = GetDC(window.GetHandle());
        const COLORREF color = GetPixel(dc, 20, 20);
        ReleaseDC(window.GetHandle(), dc);
        return color;
    };
    const COLORREF plain = pixel();
    CreateCaret(window.GetHandle(), nullptr, 2, 10);
    SetCaretPos(20, 15);
    EXPECT_EQ(pixel(), plain);
    ShowCaret(window.GetHandle());
    EXPECT_EQ(pixel(), plain ^ 0xFFFFFF);
    SAdvanceDesktopClock(GetCaretBlinkTime());
    MSG blink{};
    ASSERT_TRUE(PeekMessageA(&blink, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(blink.message, 280u);
    DispatchMessageA(&blink);
    EXPECT_EQ(pixel(), plain);
    SAdvanceDesktopClock(GetCaretBlinkTime());
    Pump();
    EXPECT_EQ(pixel(), plain ^ 0xFFFFFF);
    // Painting leaves it above what is painted.
    window.Invalidate();
    window.UpdateWindow();
    EXPECT_EQ(pixel(), plain ^ 0xFFFFFF);
    DestroyCaret();
    EXPECT_EQ(pixel(), plain);
}

TEST_F(Desktop, ARecordingIsPlayedAgain) {
    STestFramed window;
    ASSERT_EQ(window.Make(), 1);
    SetFocus(window.GetHandle());
    SRecordInput();
    SetCursorPos(200, 200);
    for (int click = 0; click < 2; ++click) {
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        SAdvanceDesktopClock(click == 0 ? 50 : 700);
    }
    keybd_event(VK_SHIFT, 0x2A, 0, 0);
    for (const BYTE key : {BYTE{'H'}, BYTE{'I'}}) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
        if (key == 'H') keybd_event(VK_SHIFT, 0x2A, KEYEVENTF_KEYUP, 0);
    }
    const std::string text = SStopRecordingInput();
    EXPECT_EQ(text.substr(0, text.find("key")),
              "0 move 200 200 0\n"
              "0 left-down 200 200 0\n0 left-up 200 200 0\n"
              "50 left-down 200 200 0\n50 left-up 200 200 0\n"
              "750 ");
    Pump();
    EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), 1);
    EXPECT_EQ(window.typed, "Hi");

    for (int round = 1; round <= 2; ++round) {
        SAdvanceDesktopClock(5000);
        window.seen.clear();
        window.typed.clear();
        EXPECT_EQ(SReplayInput(text, &Pump), 0);
        EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 1);
        EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), 1);
        EXPECT_EQ(window.typed, "Hi");
    }
    for (const char* wrong : {"0 dance 1 2 0", "x", "0 move 1", "0 key-down 300 0 0 0",
                              "0 move 1 2 0 3", "0 key-down 65 0 2 0"})
        EXPECT_EQ(SReplayInput("0 move 1 1 0\n" + std::string(wrong), nullptr), 2) << wrong;
    EXPECT_EQ(SReplayInput("5 move 1 1 0\n4 move 1 1 0\n", nullptr), 2);
}

TEST_F(Desktop, TheWholeScreenIsComposedInOrder) {
    STestFramed below, above;
    ASSERT_EQ(below.Make(WS_POPUP | WS_VISIBLE), 1);
    ASSERT_EQ(above.Make(), 1);
    const auto pixel = [](int x, int y) {
        const HBITMAP picture = SCaptureWindow(nullptr);
        const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
        const HGDIOBJ old = SelectObject(dc, picture);
        const COLORREF color = GetPixel(dc, x, y);
        SelectObject(dc, old);
        DeleteDC(dc);
        ReleaseDC(nullptr, screen);
        DeleteObject(picture);
        return color;
    };
    EXPECT_EQ(pixel(250, 92), GetSysColor(COLOR_ACTIVECAPTION));
    EXPECT_EQ(pixel(50, 50), GetSysColor(COLOR_BACKGROUND));
    BringWindowToTop(below.GetHandle());
    EXPECT_EQ(pixel(250, 92), GetSysColor(COLOR_WINDOW));
    below.ShowWindow(SW_HIDE);
    EXPECT_EQ(pixel(250, 92), GetSysColor(COLOR_ACTIVECAPTION));
}

}  // namespace
