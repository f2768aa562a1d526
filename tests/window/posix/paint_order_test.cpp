// In which order windows are asked to paint.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class STestPainted : public SWnd {
public:
    STestPainted(std::string& log, char name) : log_(log), name_(name) {}

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_PAINT) log_ += name_;
        return SWnd::WindowProc(message, wParam, lParam);
    }

private:
    std::string& log_;
    const char name_;
};

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

// Handles of windows that are gone are given again: that of a child may be less than its parent's.
TEST(PaintOrder, ParentsPaintBeforeTheirChildren) {
    std::string log;
    {
        STestPainted early(log, 'x'), late(log, 'x');
        early.CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 10, 10);
        late.CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 10, 10);
        early.DestroyWindow();
    }
    for (int round = 0; round < 3; ++round) {
        STestPainted parent(log, 'p'), child(log, 'c'), inner(log, 'i'), sibling(log, 's');
        ASSERT_EQ(parent.CreateEx(0, "S_Window", "", WS_POPUP | WS_VISIBLE, 0, 0, 90, 90), 1);
        const HWND own = parent.GetHandle();
        ASSERT_EQ(child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, own), 1);
        ASSERT_EQ(inner.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20,
                                 child.GetHandle()),
                  1);
        ASSERT_EQ(sibling.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 50, 0, 20, 20, own),
                  1);
        Pump();
        log.clear();
        RedrawWindow(own, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        Pump();
        EXPECT_EQ(log, "pcis") << round;
    }
}

}  // namespace
