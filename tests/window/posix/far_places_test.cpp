// Places at the ends of the numbers: sums end there.

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

namespace {

constexpr int kLast = 2147483647, kFirst = -kLast - 1;

testing::AssertionResult Is(const RECT& rect, const RECT& expected) {
    if (EqualRect(&rect, &expected)) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom;
}

TEST(FarPlaces, RectanglesAreInflatedToTheEnds) {
    RECT rect{0, -1, 10, 20};
    InflateRect(&rect, kFirst, kLast);
    EXPECT_TRUE(Is(rect, {kLast, kFirst, kFirst + 10, kLast}));
    rect = {-2, -1, 10, 20};
    OffsetRect(&rect, kLast, kFirst);
    EXPECT_TRUE(Is(rect, {kLast - 2, kFirst, kLast, kFirst + 20}));
}

TEST(FarPlaces, TheMouseStopsAtTheScreensEdges) {
    const struct {
        int by;
        bool isFirst;
    } rows[] = {{kLast, false}, {kFirst, true}};
    for (const auto& row : rows) {
        SetCursorPos(100, 100);
        mouse_event(MOUSEEVENTF_MOVE, static_cast<DWORD>(row.by), static_cast<DWORD>(row.by), 0, 0);
        POINT at{};
        GetCursorPos(&at);
        EXPECT_EQ(at.x, row.isFirst ? 0 : GetSystemMetrics(SM_CXSCREEN) - 1);
        EXPECT_EQ(at.y, row.isFirst ? 0 : GetSystemMetrics(SM_CYSCREEN) - 1);
    }
}

// A context whose origin is not its surface's.
class FarOrigin : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(top.CreateEx(0, "S_Window", "", WS_POPUP | WS_VISIBLE, 10, 10, 100, 100), 1);
        ASSERT_EQ(child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 50, 40, 30, 20,
                                 top.GetHandle()),
                  1);
        dc = GetDC(child.GetHandle());
        GetClipBox(dc, &usual);
        ASSERT_TRUE(Is(usual, {0, 0, 30, 20}));
    }
    void TearDown() override { ReleaseDC(child.GetHandle(), dc); }

    SWnd top, child;
    HDC dc = nullptr;
    RECT usual{};
};

TEST_F(FarOrigin, MovesToTheEndsAndBack) {
    SetViewportOrgEx(dc, kLast, 10, nullptr);
    OffsetViewportOrgEx(dc, kLast, -10, nullptr);
    POINT at{};
    GetViewportOrgEx(dc, &at);
    EXPECT_EQ(at.x, kLast);
    EXPECT_EQ(at.y, 0);
    RECT box{};
    GetClipBox(dc, &box);
    EXPECT_TRUE(Is(box, {-kLast, 0, -kLast + 30, 20}));
    EXPECT_TRUE(PtVisible(dc, -kLast + 29, 0));
    EXPECT_FALSE(PtVisible(dc, -kLast + 30, 0));
    SetViewportOrgEx(dc, kFirst, kFirst, nullptr);
    SetViewportOrgEx(dc, 0, 0, nullptr);
    GetClipBox(dc, &box);
    EXPECT_TRUE(Is(box, usual));
}

TEST_F(FarOrigin, FramesBeyondEverythingPaintNothing) {
    SetPixel(dc, 5, 5, RGB(1, 2, 3));
    const RECT rows[] = {{kLast, kLast, kLast, kLast},
                         {kFirst, kFirst, kFirst, kFirst},
                         {kFirst, kFirst, kLast, kLast},
                         {kLast, kFirst, kFirst, kLast}};
    const auto brush = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    for (RECT row : rows) {
        FrameRect(dc, &row, brush);
        DrawEdge(dc, &row, EDGE_RAISED, BF_RECT);
        EXPECT_EQ(GetPixel(dc, 5, 5), RGB(1, 2, 3));
    }
    EXPECT_FALSE(PtVisible(dc, kLast, kLast));
}

}  // namespace
