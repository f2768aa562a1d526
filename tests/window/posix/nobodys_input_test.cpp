// The mouse over windows that may not be told of it.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

namespace {

class STestDeaf : public SWnd {
public:
    bool isNowhere = false;
    int cursors = 0;  // how often it was asked about a press

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_NCHITTEST && isNowhere) return HTNOWHERE;
        if (message == WM_SETCURSOR && HIWORD(lParam) == WM_LBUTTONDOWN) ++cursors;
        return SWnd::WindowProc(message, wParam, lParam);
    }
};

TEST(NobodysInput, IsNoMessageForWhoeverLooks) {
    for (const bool isNowhere : {false, true}) {
        SCOPED_TRACE(isNowhere);
        STestDeaf window;
        ASSERT_EQ(window.CreateEx(0, "S_Window", "Deaf", WS_POPUP | WS_VISIBLE, 100, 100, 100, 100),
                  1);
        SetForegroundWindow(window.GetHandle());
        window.isNowhere = isNowhere;
        if (!isNowhere) window.EnableWindow(0);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        SetCursorPos(150, 150);
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE));
        EXPECT_EQ(window.cursors, 0) << "nobody looked for it yet";
        EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) << message.message;
        EXPECT_EQ(window.cursors, 1);
        EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) << message.message;
        EXPECT_EQ(window.cursors, 1);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) << message.message;
        window.DestroyWindow();
    }
}

}  // namespace
