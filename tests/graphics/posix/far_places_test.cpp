// Places and sizes that no screen has: sums with them must not run over, nor take for ever.

#include <brcore8/graphics/bitmap.h>
#include <brcore8/graphics/font.h>
#include <brcore8/graphics/window_dc.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kWhite = RGB(255, 255, 255);

class FarPlaces : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(dc.CreateCompatibleDC(&screen), 1);
        ASSERT_EQ(bitmap.CreateCompatible(screen, 20, 10), 1);
        dc.SelectObject(bitmap.GetHandle());
        dc.FillSolidRect({0, 0, 20, 10}, kWhite);
    }
    int Count(COLORREF color) const {
        int count = 0;
        for (int y = 0; y < 10; ++y)
            for (int x = 0; x < 20; ++x)
                count += dc.GetPixel(x, y) == color;
        return count;
    }
    HDC Handle() const { return dc.GetHandle(); }

    SScreenDC screen;
    SDC dc;
    SBitmap bitmap;
    const RECT everything{INT_MIN, INT_MIN, INT_MAX, INT_MAX};
};

TEST_F(FarPlaces, AnAreaWithoutEndCoversAll) {
    dc.SetViewportOrg(5, 5);
    dc.FillSolidRect(everything, kRed);
    dc.SetViewportOrg(0, 0);
    EXPECT_EQ(Count(kRed), 200);
    ::InvertRect(Handle(), &everything);
    EXPECT_EQ(Count(kRed ^ 0xFFFFFF), 200);
    EXPECT_NE(::PatBlt(Handle(), -10, -10, INT_MAX, INT_MAX, WHITENESS), 0);
    EXPECT_EQ(Count(kWhite), 200);
}

TEST_F(FarPlaces, LinesComeFromFarAway) {
    const HGDIOBJ old = dc.SelectObject(::GetStockObject(BLACK_PEN));
    ::MoveToEx(Handle(), INT_MIN, 4, nullptr);
    ::LineTo(Handle(), INT_MAX, 4);
    EXPECT_EQ(Count(0), 20);
    ::MoveToEx(Handle(), 3, INT_MIN, nullptr);
    ::LineTo(Handle(), 3, INT_MAX);
    EXPECT_EQ(Count(0), 29);
    dc.SelectObject(old);
    // Far from everything there is nothing to see.
    ::Ellipse(Handle(), INT_MAX - 10, INT_MAX - 10, INT_MAX, INT_MAX);
    ::TextOutA(Handle(), INT_MIN, INT_MAX, "far", 3);
    EXPECT_EQ(Count(0), 29);
}

TEST_F(FarPlaces, ACopyTakesWhatThereIs) {
    dc.FillSolidRect({0, 0, 4, 10}, kBlue);
    SDC other;
    SBitmap copy;
    ASSERT_EQ(other.CreateCompatibleDC(&screen), 1);
    ASSERT_EQ(copy.CreateCompatible(screen, 30, 10), 1);
    other.SelectObject(copy.GetHandle());
    other.FillSolidRect({0, 0, 30, 10}, kRed);
    EXPECT_NE(::BitBlt(other.GetHandle(), 0, 0, INT_MAX, INT_MAX, Handle(), 0, 0, SRCCOPY), 0);
    EXPECT_EQ(::GetPixel(other.GetHandle(), 3, 9), kBlue);
    EXPECT_EQ(::GetPixel(other.GetHandle(), 19, 9), kWhite);
    EXPECT_EQ(::GetPixel(other.GetHandle(), 20, 9), kRed) << "there is no more";
    // What lies before the source moves the rest along.
    EXPECT_NE(::BitBlt(other.GetHandle(), 10, 0, 20, 10, Handle(), -6, 0, SRCCOPY), 0);
    EXPECT_EQ(::GetPixel(other.GetHandle(), 15, 0), kWhite);
    EXPECT_EQ(::GetPixel(other.GetHandle(), 16, 0), kBlue);
    // And into itself.
    EXPECT_NE(::BitBlt(Handle(), 10, 0, INT_MAX, 10, Handle(), 0, 0, SRCCOPY), 0);
    EXPECT_EQ(dc.GetPixel(10, 0), kBlue);
    EXPECT_EQ(dc.GetPixel(14, 0), kWhite);
}

TEST_F(FarPlaces, WhatCannotBeSeenTakesNoTime) {
    ::DrawFocusRect(Handle(), &everything);
    EXPECT_EQ(Count(kWhite), 200);
    const RECT wide{-1'000'000'000, 2, 1'000'000'000, 5};
    ::DrawFocusRect(Handle(), &wide);
    EXPECT_EQ(Count(0), 20) << "every other pixel of two rows";
    dc.FillSolidRect({0, 0, 20, 10}, kRed);
    EXPECT_NE(::StretchBlt(Handle(), -5, 0, INT_MAX, 1'000'000, Handle(), 0, 0, 1, 1, SRCCOPY), 0);
    EXPECT_EQ(Count(kRed), 200);
}

TEST_F(FarPlaces, FontsOfAnyHeightAreMeasured) {
    for (const int height : {INT_MIN, -100'000, 0, 100'000, INT_MAX}) {
        LOGFONTA info{};
        info.lfHeight = height;
        std::strcpy(info.lfFaceName, "DejaVu Sans");
        const HFONT font = ::CreateFontIndirectA(&info);
        const HGDIOBJ old = dc.SelectObject(font);
        TEXTMETRICA metrics{};
        EXPECT_NE(::GetTextMetricsA(Handle(), &metrics), 0);
        EXPECT_GT(metrics.tmHeight, 0) << height;
        EXPECT_GE(metrics.tmInternalLeading, 0) << height;
        dc.SelectObject(old);
        ::DeleteObject(font);
    }
}

}  // namespace
