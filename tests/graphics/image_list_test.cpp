#include <brcore8/graphics/image_list.h>

#include <brcore8/graphics/window_dc.h>

#include <gtest/gtest.h>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);
constexpr COLORREF kHole = RGB(255, 0, 255), kWhite = RGB(255, 255, 255);

// Three images of 8 by 8: red, green and blue, each with a hole in its left upper quarter.
class Images : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(dc.CreateCompatibleDC(&screen), 1);
        ASSERT_EQ(strip.CreateCompatible(screen, 24, 8), 1);
        const HGDIOBJ old = dc.SelectObject(strip.GetHandle());
        const COLORREF colors[] = {kRed, kGreen, kBlue};
        for (int i = 0; i < 3; ++i) {
            dc.FillSolidRect({8 * i, 0, 8 * i + 8, 8}, colors[i]);
            dc.FillSolidRect({8 * i, 0, 8 * i + 4, 4}, kHole);
        }
        dc.SelectObject(old);
        ASSERT_EQ(canvas.CreateCompatible(screen, 20, 20), 1);
        old_ = dc.SelectObject(canvas.GetHandle());
        dc.FillSolidRect({0, 0, 20, 20}, kWhite);
    }
    void TearDown() override { dc.SelectObject(old_); }

    SScreenDC screen;
    SDC dc;
    SBitmap strip, canvas;

private:
    HGDIOBJ old_ = nullptr;
};

TEST_F(Images, AreDrawnWithTheirHoles) {
    SImageList list;
    EXPECT_EQ(list.GetImageCount(), 0);
    EXPECT_EQ(list.Add(strip, kHole), -1);
    ASSERT_EQ(list.Create(8, 8), 1);
    EXPECT_EQ(list.Add(strip), 0);
    EXPECT_EQ(list.Add(strip, kHole), 3);
    EXPECT_EQ(list.GetImageCount(), 6);
    EXPECT_EQ(list.GetImageSize().cx, 8);

    EXPECT_NE(list.Draw(dc, 4, 2, 2), 0);
    EXPECT_EQ(dc.GetPixel(3, 3), kWhite);
    EXPECT_EQ(dc.GetPixel(8, 8), kGreen);
    EXPECT_EQ(dc.GetPixel(10, 10), kWhite);
    // What was added without a colour has no hole.
    EXPECT_NE(list.Draw(dc, 2, 2, 2), 0);
    EXPECT_EQ(dc.GetPixel(3, 3), kHole);
    EXPECT_EQ(dc.GetPixel(8, 8), kBlue);
    // A background colour fills the holes.
    list.SetBkColor(RGB(1, 2, 3));
    EXPECT_EQ(list.GetBkColor(), RGB(1, 2, 3));
    EXPECT_NE(list.Draw(dc, 3, 2, 2), 0);
    EXPECT_EQ(dc.GetPixel(3, 3), RGB(1, 2, 3));

    EXPECT_NE(list.Remove(0), 0);
    EXPECT_EQ(list.GetImageCount(), 5);
    EXPECT_NE(list.Draw(dc, 0, 2, 2), 0);
    EXPECT_EQ(dc.GetPixel(8, 8), kGreen);
    EXPECT_EQ(list.Draw(dc, 5, 0, 0), 0);
    EXPECT_EQ(list.Draw(dc, -1, 0, 0), 0);
    EXPECT_NE(list.Remove(-1), 0);
    EXPECT_EQ(list.GetImageCount(), 0);
}

TEST_F(Images, BelongToTheWrapperThatMadeThem) {
    HIMAGELIST handle = nullptr;
    {
        SImageList list;
        ASSERT_EQ(list.Create(8, 8), 1);
        ASSERT_EQ(list.Add(strip, kHole), 0);
        EXPECT_EQ(SImageList::FromHandle(list.GetHandle()), &list);
        handle = list.Detach();
    }
    SImageList* const temporary = SImageList::FromHandle(handle);
    EXPECT_EQ(temporary->GetImageCount(), 3);
    SImageList::DeleteTempMap();
    SImageList other;
    EXPECT_EQ(other.Attach(handle), 1);
    EXPECT_EQ(other.GetImageCount(), 3);
    // Not this one's either: another list in its place leaves it alone.
    EXPECT_EQ(other.Create(4, 4), 1);
    EXPECT_EQ(SImageList::FromHandle(handle)->GetImageCount(), 3);
    EXPECT_EQ(SImageList::FromHandle(handle)->DeleteImageList(), 1);
    SImageList::DeleteTempMap();
    EXPECT_EQ(other.GetImageCount(), 0);
    EXPECT_EQ(other.DeleteImageList(), 1);
}

TEST_F(Images, AreFoundByTheirCommands) {
    SImageListEx list;
    ASSERT_EQ(list.Create(8, 8), 1);
    const UINT commands[] = {100, 200, 300};
    EXPECT_EQ(list.Add(strip, kHole, commands, 2), -1);
    EXPECT_EQ(list.GetImageCount(), 0);
    EXPECT_EQ(list.Add(strip, kHole), 0);
    EXPECT_EQ(list.Add(strip, kHole, commands, 3), 3);
    EXPECT_EQ(list.Find(200), 4);
    EXPECT_EQ(list.Find(0), -1);
    EXPECT_EQ(list.Find(400), -1);
    EXPECT_EQ(list.GetCommand(1), 0u);
    EXPECT_EQ(list.GetCommand(5), 300u);
    EXPECT_NE(list.Remove(0), 0);
    EXPECT_EQ(list.Find(200), 3);
    EXPECT_EQ(list.DrawCommand(dc, 300, 0, 0), 1);
    EXPECT_EQ(dc.GetPixel(6, 6), kBlue);
    EXPECT_EQ(list.DrawCommand(dc, 400, 0, 0), 0);
}

}  // namespace
