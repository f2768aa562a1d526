// What drawing leaves in the pixels, on pictures in memory and in windows.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// A context on a white picture of 60 by 40 pixels.
class Drawing : public testing::Test {
protected:
    Drawing()
        : screen_(GetDC(nullptr)),
          dc(CreateCompatibleDC(screen_)),
          picture_(CreateCompatibleBitmap(screen_, 60, 40)),
          old_(SelectObject(dc, picture_)) {
        const RECT all{0, 0, 60, 40};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
    ~Drawing() override {
        SelectObject(dc, old_);
        DeleteDC(dc);
        DeleteObject(picture_);
        ReleaseDC(nullptr, screen_);
    }
    int Count(COLORREF color) const {
        int count = 0;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 60; ++x)
                count += GetPixel(dc, x, y) == color;
        return count;
    }
    // Selects an object of its own while it lives.
    struct Selected {
        Selected(HDC context, HGDIOBJ object)
            : dc(context), mine(object), old(SelectObject(dc, mine)) {}
        ~Selected() {
            SelectObject(dc, old);
            DeleteObject(mine);
        }
        HDC dc;
        HGDIOBJ mine, old;
    };

private:
    HDC screen_;

protected:
    HDC dc;

private:
    HBITMAP picture_;
    HGDIOBJ old_;
};

TEST_F(Drawing, AreasHaveTheirRightAndBottomOutside) {
    const Selected brush(dc, CreateSolidBrush(kRed));
    const RECT rect{10, 10, 20, 15};
    EXPECT_NE(FillRect(dc, &rect, static_cast<HBRUSH>(brush.mine)), 0);
    EXPECT_EQ(Count(kRed), 50);
    EXPECT_EQ(GetPixel(dc, 10, 10), kRed);
    EXPECT_EQ(GetPixel(dc, 19, 14), kRed);
    EXPECT_EQ(GetPixel(dc, 20, 14), kWhite);
    InvertRect(dc, &rect);
    EXPECT_EQ(GetPixel(dc, 10, 10), RGB(0, 255, 255));
    InvertRect(dc, &rect);
    EXPECT_EQ(Count(kRed), 50);
    FrameRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(Count(kRed), 50 - 26);

    const Selected pen(dc, CreatePen(PS_SOLID, 1, kBlue));
    Rectangle(dc, 30, 10, 40, 20);
    EXPECT_EQ(Count(kBlue), 36);
    EXPECT_EQ(GetPixel(dc, 31, 11), kRed);
}

TEST_F(Drawing, LinesLeaveTheirLastPixelOut) {
    const Selected pen(dc, CreatePen(PS_SOLID, 1, kGreen));
    MoveToEx(dc, 5, 5, nullptr);
    LineTo(dc, 15, 5);
    EXPECT_EQ(Count(kGreen), 10);
    EXPECT_EQ(GetPixel(dc, 15, 5), kWhite);
    LineTo(dc, 15, 9);
    EXPECT_EQ(Count(kGreen), 14);
    POINT at{};
    MoveToEx(dc, 0, 0, &at);
    EXPECT_EQ(at.x, 15);
    EXPECT_EQ(at.y, 9);
    EXPECT_EQ(SetPixel(dc, 0, 0, kGreen), kGreen);
    EXPECT_EQ(GetPixel(dc, 0, 0), kGreen);
    EXPECT_EQ(GetPixel(dc, -1, 0), static_cast<COLORREF>(CLR_INVALID));
}

TEST_F(Drawing, TheClipAndTheOriginMoveWithTheirState) {
    const Selected brush(dc, CreateSolidBrush(kRed));
    const RECT all{-100, -100, 100, 100};
    const int state = SaveDC(dc);
    IntersectClipRect(dc, 10, 10, 30, 30);
    ExcludeClipRect(dc, 15, 15, 20, 20);
    FillRect(dc, &all, static_cast<HBRUSH>(brush.mine));
    EXPECT_EQ(Count(kRed), 400 - 25);
    RECT box{};
    GetClipBox(dc, &box);
    EXPECT_EQ(box.left, 10);
    EXPECT_EQ(box.bottom, 30);
    EXPECT_NE(RestoreDC(dc, state), 0);
    EXPECT_EQ(RestoreDC(dc, state), 0);

    SetViewportOrgEx(dc, 40, 5, nullptr);
    const RECT rect{0, 0, 2, 2};
    FillRect(dc, &rect, static_cast<HBRUSH>(brush.mine));
    SetViewportOrgEx(dc, 0, 0, nullptr);
    EXPECT_EQ(GetPixel(dc, 40, 5), kRed);
    EXPECT_EQ(GetPixel(dc, 41, 6), kRed);
}

TEST_F(Drawing, PicturesAreCopiedAlsoOntoThemselves) {
    const Selected brush(dc, CreateSolidBrush(kRed));
    const RECT rect{0, 0, 5, 5};
    FillRect(dc, &rect, static_cast<HBRUSH>(brush.mine));
    EXPECT_NE(BitBlt(dc, 2, 2, 5, 5, dc, 0, 0, SRCCOPY), 0);
    EXPECT_EQ(Count(kRed), 25 + 25 - 9);
    EXPECT_NE(BitBlt(dc, 0, 0, 7, 7, dc, 0, 0, SRCINVERT), 0);
    EXPECT_EQ(Count(kRed), 0);
}

TEST_F(Drawing, TextIsMeasuredAndDrawnInItsBox) {
    LOGFONTA info{};
    info.lfHeight = -16;
    std::strcpy(info.lfFaceName, "DejaVu Sans");
    const Selected font(dc, CreateFontIndirectA(&info));
    SIZE one{}, two{};
    EXPECT_NE(GetTextExtentPoint32A(dc, "M", 1, &one), 0);
    EXPECT_NE(GetTextExtentPoint32A(dc, "MM", 2, &two), 0);
    EXPECT_GT(one.cx, 5);
    EXPECT_NEAR(two.cx, 2 * one.cx, 2);
    TEXTMETRICA metrics{};
    EXPECT_NE(GetTextMetricsA(dc, &metrics), 0);
    EXPECT_EQ(metrics.tmHeight, one.cy);
    EXPECT_EQ(metrics.tmAscent + metrics.tmDescent, metrics.tmHeight);

    SetTextColor(dc, kBlue);
    SetBkMode(dc, TRANSPARENT);
    RECT box{20, 10, 60, 40};
    RECT needed = box;
    EXPECT_EQ(DrawTextA(dc, "&M", -1, &needed, DT_CALCRECT | DT_SINGLELINE), one.cy);
    EXPECT_EQ(needed.right - needed.left, one.cx);
    DrawTextA(dc, "&M", -1, &box, DT_SINGLELINE);
    int inside = 0, outside = 0;
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 60; ++x)
            if (GetPixel(dc, x, y) != kWhite)
                ++(x >= 19 && x <= 21 + one.cx && y >= 9 ? inside : outside);
    EXPECT_GT(inside, 20);
    EXPECT_EQ(outside, 0);

    SetBkMode(dc, OPAQUE);
    SetBkColor(dc, kGreen);
    TextOutA(dc, 0, 0, "  ", 2);
    EXPECT_GT(Count(kGreen), 20);
}

// --- Windows -------------------------------------------------------------------------------------

class STestPainted : public SWnd {
    SDECLARE_MESSAGE_MAP(STestPainted);

public:
    int paints = 0;
    COLORREF color = kRed;

private:
    void OnPaint() {
        ++paints;
        PAINTSTRUCT paint;
        const HDC dc = BeginPaint(GetHandle(), &paint);
        const HBRUSH brush = CreateSolidBrush(color);
        const RECT corner{0, 0, 10, 10};
        FillRect(dc, &corner, brush);
        DeleteObject(brush);
        EndPaint(GetHandle(), &paint);
    }
};
SIMPLEMENT_MESSAGE_MAP(STestPainted, SWnd, SOnPaint<&STestPainted::OnPaint>());

COLORREF PixelOf(const SWnd& window, int x, int y) {
    const HDC dc = GetDC(window.GetHandle());
    const COLORREF color = GetPixel(dc, x, y);
    ReleaseDC(window.GetHandle(), dc);
    return color;
}

TEST(Painting, TheBackgroundIsErasedAndTheRestPaintedOnce) {
    STestPainted window;
    ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 20,
                              20, 100, 80),
              1);
    window.UpdateWindow();
    EXPECT_GE(window.paints, 1);
    const int before = window.paints;
    window.UpdateWindow();
    EXPECT_EQ(window.paints, before);
    EXPECT_EQ(PixelOf(window, 5, 5), kRed);
    EXPECT_EQ(PixelOf(window, 50, 50), GetSysColor(COLOR_WINDOW));

    // Only what was invalid changes.
    window.color = kGreen;
    const RECT half{0, 0, 5, 10};
    window.InvalidateRect(&half);
    window.UpdateWindow();
    EXPECT_EQ(PixelOf(window, 2, 2), kGreen);
    EXPECT_EQ(PixelOf(window, 7, 2), kRed);

    // A child is not painted over.
    STestPainted child;
    child.color = kBlue;
    ASSERT_EQ(
        child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 2, 2, 6, 6, window.GetHandle()),
        1);
    child.UpdateWindow();
    window.Invalidate();
    window.UpdateWindow();
    EXPECT_EQ(PixelOf(window, 0, 0), kGreen);
    EXPECT_EQ(PixelOf(child, 1, 1), kBlue);
}

}  // namespace
