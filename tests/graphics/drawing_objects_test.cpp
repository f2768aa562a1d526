// Contexts, the objects selected into them, and what both leave in the pixels.

#include <brcore8/graphics/drawing_objects.h>
#include <brcore8/graphics/font.h>
#include <brcore8/graphics/font_old.h>
#include <brcore8/graphics/metafile.h>
#include <brcore8/graphics/preview_dc.h>
#include <brcore8/graphics/window_dc.h>
#include <brcore8/streams/binary_stream.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);
constexpr COLORREF kWhite = RGB(255, 255, 255);

// A white picture of 40 by 30 pixels.
class Picture : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(dc.CreateCompatibleDC(&screen), 1);
        ASSERT_EQ(bitmap.CreateCompatible(screen, 40, 30), 1);
        old = dc.SelectObject(bitmap.GetHandle());
        dc.FillSolidRect({0, 0, 40, 30}, kWhite);
    }
    void TearDown() override {
        dc.SelectObject(old);
        EXPECT_EQ(dc.DeleteDC(), 1);
        EXPECT_EQ(dc.DeleteDC(), 0);
    }
    int Count(COLORREF color) const {
        int count = 0;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                count += dc.GetPixel(x, y) == color;
        return count;
    }

    SScreenDC screen;
    SDC dc;
    SBitmap bitmap;
    HGDIOBJ old = nullptr;
};

struct Sink : SOutputStream {
    void Write(int byteValue) override { bytes += static_cast<char>(byteValue); }
    unsigned long Write(const void* data, unsigned long count) override {
        return SOutputStream::Write(data, count);
    }
    std::string bytes;
};

HGDIOBJ MakeObject(int kind) {
    LOGFONTA font{};
    font.lfHeight = -12;
    switch (kind) {
        case 0:
            return ::CreatePen(PS_SOLID, 1, kRed);
        case 1:
            return ::CreateSolidBrush(kRed);
        case 2:
            return ::CreateFontIndirectA(&font);
        case 3: {
            SBitmap made;
            made.Create({1, 1, 32}, "\1\2\3\4");
            return made.Detach();
        }
        case 4:
            return ::CreateCompatibleBitmap(SScreenDC().GetHandle(), 2, 2);
        default:
            return ::CreateRectRgn(0, 0, 5, 5);
    }
}

// Handles of what is gone, and values that never were handles.
TEST_F(Picture, WhatIsNoObjectIsRefused) {
    std::vector<HGDIOBJ> none{nullptr, reinterpret_cast<HGDIOBJ>(std::uintptr_t{0x0BADF00D})};
    for (int kind = 0; kind < 6; ++kind) {
        const HGDIOBJ made = MakeObject(kind);
        ASSERT_NE(made, nullptr) << kind;
        EXPECT_TRUE(::DeleteObject(made)) << kind;
        none.push_back(made);
    }
    char record[128];
    const RECT area{0, 0, 5, 5};
    for (const HGDIOBJ each : none) {
        SCOPED_TRACE(each);
        EXPECT_FALSE(::DeleteObject(each));
        EXPECT_EQ(::GetObjectA(each, sizeof record, record), 0);
        EXPECT_EQ(::SelectObject(dc.GetHandle(), each), nullptr);
        EXPECT_EQ(::GetRgnBox(static_cast<HRGN>(each), reinterpret_cast<RECT*>(record)), 0);
        // Nothing is painted, as the pixels tell in the end.
        ::FillRect(dc.GetHandle(), &area, static_cast<HBRUSH>(each));
    }
    EXPECT_EQ(Count(kWhite), 40 * 30);
    // One of another kind is not taken for what it is not.
    const HGDIOBJ pen = MakeObject(0);
    EXPECT_EQ(::GetRgnBox(static_cast<HRGN>(pen), reinterpret_cast<RECT*>(record)), 0);
    EXPECT_TRUE(::DeleteObject(pen));
}

TEST_F(Picture, BitmapsOfGivenBytesAreDrawnOn) {
    SBitmap given;
    given.Create({2, 2, 32}, "\xFF\0\0\0\0\xFF\0\0\0\0\xFF\0\xFF\xFF\xFF\0");
    SDC source;
    ASSERT_EQ(source.CreateCompatibleDC(&screen), 1);
    const HGDIOBJ before = source.SelectObject(given.GetHandle());
    ASSERT_NE(before, nullptr);
    EXPECT_EQ(source.GetPixel(0, 0), kBlue);
    EXPECT_EQ(source.GetPixel(1, 0), kGreen);
    EXPECT_EQ(source.GetPixel(0, 1), kRed);
    EXPECT_EQ(dc.BitBlt(10, 20, 2, 2, source, 0, 0), 1);
    EXPECT_EQ(dc.GetPixel(10, 20), kBlue);
    EXPECT_EQ(dc.GetPixel(10, 21), kRed);
    EXPECT_EQ(Count(kWhite), 40 * 30 - 3);
    // What is drawn is in the bitmap's bytes.
    source.SetPixel(1, 1, kRed);
    source.SelectObject(before);
    Sink sink;
    SOutputBinaryStream out(sink);
    given.Write(out);
    constexpr std::size_t kHeader = 10;
    ASSERT_EQ(sink.bytes.size(), kHeader + 16);
    EXPECT_EQ(sink.bytes.substr(kHeader, 3), std::string("\xFF\0\0", 3));
    EXPECT_EQ(sink.bytes.substr(kHeader + 12, 3), std::string("\0\0\xFF", 3));

    // Of two colours, in rows of two bytes.
    SBitmap two;
    two.Create({3, 2, 1}, "\xA0\0\x40\0");
    source.SelectObject(two.GetHandle());
    EXPECT_EQ(source.GetPixel(0, 0), kWhite);
    EXPECT_EQ(source.GetPixel(1, 0), 0u);
    EXPECT_EQ(dc.BitBlt(0, 0, 3, 2, source, 0, 0), 1);
    EXPECT_EQ(dc.GetPixel(1, 0), 0u);
    EXPECT_EQ(dc.GetPixel(1, 1), kWhite);
    EXPECT_EQ(Count(0), 3);
    source.SelectObject(before);
    // A window's context keeps the window.
    SWnd window;
    ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP, 0, 0, 20, 20), 1);
    SClientDC own(&window);
    EXPECT_EQ(own.SelectObject(two.GetHandle()), nullptr);
}

// What is missing says so; anything else is a failure.
void ExpectMissing() {
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CALL_NOT_IMPLEMENTED));
}

TEST_F(Picture, SolidAreasAndEdgesLeaveTheSelectionAlone) {
    dc.SetBkColor(kGreen);
    dc.FillSolidRect({2, 2, 12, 7}, kRed);
    EXPECT_EQ(Count(kRed), 50);
    EXPECT_EQ(dc.GetBkColor(), kGreen);
    dc.Draw3dRect({2, 2, 12, 7}, kGreen, kBlue);
    EXPECT_EQ(dc.GetPixel(2, 2), kGreen);
    EXPECT_EQ(dc.GetPixel(11, 6), kBlue);
    EXPECT_EQ(Count(kRed), 8 * 3);
    EXPECT_EQ(Count(kGreen) + Count(kBlue), 26);
    EXPECT_NE(dc.PatBlt(0, 20, 40, 10, BLACKNESS), 0);
    EXPECT_NE(dc.PatBlt(0, 20, 20, 10, DSTINVERT), 0);
    EXPECT_EQ(Count(RGB(0, 0, 0)), 200);
}

TEST_F(Picture, APenMayBeWiderThanThePicture) {
    SPen pen(PS_SOLID, std::numeric_limits<int>::max(), kBlue);
    LOGPEN info{};
    EXPECT_EQ(pen.GetLogPen(&info), 1);
    EXPECT_EQ(info.lopnWidth.x, std::numeric_limits<int>::max());
    const SSelected withPen(dc, pen);
    for (const POINT to : {POINT{30, 5}, POINT{5, 20}, POINT{30, 20}}) {
        dc.MoveTo(5, 5);
        EXPECT_NE(dc.LineTo(to.x, to.y), 0);
    }
    dc.Ellipse({5, 5, 30, 20});
}

TEST_F(Picture, PensAndBrushesDrawAndTellWhatTheyAre) {
    SPen pen(PS_SOLID, 1, kBlue);
    SBrush brush(kRed);
    LOGPEN penInfo{};
    LOGBRUSH brushInfo{};
    EXPECT_EQ(pen.GetLogPen(&penInfo), 1);
    EXPECT_EQ(penInfo.lopnColor, kBlue);
    EXPECT_EQ(penInfo.lopnWidth.x, 1);
    EXPECT_EQ(brush.GetLogBrush(&brushInfo), 1);
    EXPECT_EQ(brushInfo.lbColor, kRed);
    EXPECT_EQ(SPen().GetLogPen(&penInfo), 0);
    {
        const SSelected withPen(dc, pen);
        const SSelected withBrush(dc, brush);
        EXPECT_EQ(dc.GetCurrentObject(OBJ_PEN), &pen);
        dc.Rectangle({0, 0, 10, 10});
        const POINT corner[] = {{20, 0}, {30, 0}, {30, 5}};
        EXPECT_NE(dc.Polyline(corner, 3), 0);
    }
    EXPECT_EQ(Count(kRed), 64);
    EXPECT_EQ(Count(kBlue), 36 + 10 + 5);
    EXPECT_NE(dc.GetCurrentObject(OBJ_PEN), &pen);
    EXPECT_EQ(brush.CreateSysColorBrush(COLOR_WINDOW), 1);
    dc.FillRect({0, 0, 1, 1}, &brush);
    EXPECT_EQ(dc.GetPixel(0, 0), GetSysColor(COLOR_WINDOW));
    if (!brush.CreateHatchBrush(0, kRed)) ExpectMissing();
    if (!brush.CreatePatternBrush(bitmap)) ExpectMissing();
}

TEST_F(Picture, AFontChangesWhatTextMeasures) {
    LOGFONTA info{};
    info.lfHeight = -8;
    std::strcpy(info.lfFaceName, "DejaVu Sans");
    SFont small;
    ASSERT_EQ(small.Create(info), 1);
    SFontOld large;
    ASSERT_EQ(large.Create("DejaVu Sans", -24), 1);
    EXPECT_EQ(SFontOld::FromHandle(large.GetHandle()), &large);
    const SSelected first(dc, small);
    const SIZE before = dc.GetTextExtent("Hello");
    const SSelected second(dc, large.GetHandle());
    const SIZE after = dc.GetTextExtent("Hello");
    EXPECT_GT(before.cx, 0);
    EXPECT_GT(after.cx, 2 * before.cx);
    EXPECT_GT(after.cy, 2 * before.cy);
    dc.SetBkMode(TRANSPARENT);
    EXPECT_EQ(dc.GetBkMode(), TRANSPARENT);
    RECT box{0, 0, 40, 30};
    EXPECT_GT(dc.DrawText("H", box, DT_SINGLELINE), 20);
    EXPECT_LT(Count(kWhite), 1200 - 20);
}

// --- Regions ----------------------------------------------------------------------------------

struct Combination {
    const char* name;
    int operation;
    int kind;
    int pixels;
};

TEST_F(Picture, RegionsAreCombinedAndClip) {
    const Combination rows[] = {
        {"both", RGN_AND, SIMPLEREGION, 25},
        {"either", RGN_OR, COMPLEXREGION, 175},
        {"one alone", RGN_XOR, COMPLEXREGION, 150},
        {"the first alone", RGN_DIFF, COMPLEXREGION, 75},
        {"a copy", RGN_COPY, SIMPLEREGION, 100},
    };
    const SRgn a(RECT{0, 0, 10, 10});
    const SRgn b(RECT{5, 5, 15, 15});
    for (const Combination& row : rows) {
        SCOPED_TRACE(row.name);
        SRgn region(RECT{0, 0, 1, 1});
        EXPECT_EQ(region.CombineRgn(a, b, row.operation), row.kind);
        int inside = 0;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x)
                inside += region.PtInRegion(x, y) != 0;
        EXPECT_EQ(inside, row.pixels);
        // Moved, selected and painted through.
        region.OffsetRgn(10, 5);
        EXPECT_NE(dc.SelectClipRgn(&region), 0);
        dc.FillSolidRect({0, 0, 40, 30}, kRed);
        EXPECT_EQ(Count(kRed), row.pixels);
        EXPECT_EQ(dc.PtVisible(9, 4), 0);
        dc.SelectClipRgn(nullptr);
        EXPECT_NE(dc.PtVisible(9, 4), 0);
        dc.FillSolidRect({0, 0, 40, 30}, kWhite);
    }
    SRgn moved(RECT{100, 100, 110, 110});
    EXPECT_EQ(moved.EqualRgn(a), 0);
    moved.OffsetRgn(-100, -100);
    EXPECT_NE(moved.EqualRgn(a), 0);
    RECT box{};
    EXPECT_EQ(moved.GetRgnBox(&box), SIMPLEREGION);
    EXPECT_EQ(box.right, 10);
    EXPECT_EQ(moved.CombineRgn(a, a, RGN_DIFF), NULLREGION);
    EXPECT_EQ(moved.RectInRegion({0, 0, 40, 30}), 0);
    EXPECT_EQ(moved.CombineRgn(SRgn(), a, RGN_AND), 0);
    SBrush brush(kBlue);
    EXPECT_NE(dc.FillRgn(&b, &brush), 0);
    EXPECT_EQ(Count(kBlue), 100);
    if (!moved.CreateEllipticRgn({0, 0, 5, 5})) ExpectMissing();
}

// --- Pages and recordings -----------------------------------------------------------------------

TEST_F(Picture, APageIsShownInAnySize) {
    SPreviewDC page;
    EXPECT_EQ(page.ShowPage(dc, {0, 0, 10, 10}), 0);
    ASSERT_EQ(page.CreatePage({100, 200}, &screen), 1);
    page.FillSolidRect({0, 100, 100, 200}, kRed);
    const RECT fit = page.FitPage({0, 0, 40, 30});
    EXPECT_EQ(fit.right - fit.left, 15);
    EXPECT_EQ(fit.bottom - fit.top, 30);
    EXPECT_EQ(page.ShowPage(dc, {0, 0, 10, 20}), 1);
    EXPECT_EQ(Count(kRed), 100);
    EXPECT_EQ(dc.GetPixel(5, 9), kWhite);
    EXPECT_EQ(dc.GetPixel(5, 10), kRed);
    // Another page begins white.
    ASSERT_EQ(page.CreatePage({10, 10}, &screen), 1);
    EXPECT_EQ(page.ShowPage(dc, {0, 0, 10, 20}), 1);
    EXPECT_EQ(Count(kRed), 0);
}

TEST_F(Picture, ARecordingIsPlayedWhereTheSystemRecords) {
    SMetaFile drawing;
    EXPECT_EQ(drawing.Play(dc, {0, 0, 10, 10}), 0);
    EXPECT_EQ(drawing.EndRecording(), 0);
    SDC* const recorder = drawing.StartRecording(&screen);
    if (recorder == nullptr) {
        ExpectMissing();
        return;
    }
    EXPECT_EQ(drawing.StartRecording(&screen), nullptr);
    SBrush brush(kRed);
    recorder->FillRect({0, 0, 100, 100}, &brush);
    EXPECT_EQ(drawing.EndRecording(), 1);
    EXPECT_EQ(drawing.Play(dc, {0, 0, 20, 20}), 1);
    EXPECT_NEAR(Count(kRed), 400, 60);
}

TEST_F(Picture, APaletteIsMadeWhereTheSystemHasThem) {
    struct {
        LOGPALETTE head;
        PALETTEENTRY second;
    } info{{0x300, 2, {{255, 0, 0, 0}}}, {0, 0, 255, 0}};
    SPalette palette;
    if (!palette.CreatePalette(&info.head)) {
        ExpectMissing();
        return;
    }
    EXPECT_EQ(palette.GetNearestPaletteIndex(RGB(10, 0, 200)), 1u);
    PALETTEENTRY entry{};
    EXPECT_EQ(palette.GetPaletteEntries(1, 1, &entry), 1u);
    EXPECT_EQ(entry.peBlue, 255);
    EXPECT_NE(palette.ResizePalette(1), 0);
}

// --- Contexts of windows ------------------------------------------------------------------------

class STestCanvas : public SWnd {
    SDECLARE_MESSAGE_MAP(STestCanvas);

public:
    RECT painted{};

private:
    void OnPaint() {
        SPaintDC dc(this);
        painted = dc.GetPaintRect();
        EXPECT_EQ(SDC::FromHandle(dc.GetHandle()), &dc);
        dc.FillSolidRect(GetClientRect(), kBlue);
    }
};
SIMPLEMENT_MESSAGE_MAP(STestCanvas, SWnd, SOnPaint<&STestCanvas::OnPaint>());

TEST(WindowContexts, ComeAndGoWithTheirScope) {
    const int before = SDC::GetHandleMap().GetPermanentCount();
    STestCanvas window;
    ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 20, 20, 60, 40), 1);
    window.UpdateWindow();
    EXPECT_EQ(window.painted.right, 60);
    {
        SClientDC dc(&window);
        EXPECT_EQ(dc.GetPixel(30, 20), kBlue);
        SWindowDC whole(&window);
        EXPECT_EQ(whole.GetPixel(1, 1), kBlue);
        // Of what is to be painted only the invalid part is let through.
        dc.FillSolidRect({0, 0, 60, 40}, kGreen);
        const RECT part{0, 0, 10, 40};
        window.InvalidateRect(&part, 0);
        window.UpdateWindow();
        EXPECT_EQ(dc.GetPixel(5, 5), kBlue);
        EXPECT_EQ(dc.GetPixel(15, 5), kGreen);
    }
    EXPECT_EQ(SDC::GetHandleMap().GetPermanentCount(), before);
    EXPECT_EQ(SClientDC(&window).GetDeviceCaps(LOGPIXELSX), SScreenDC().GetDeviceCaps(LOGPIXELSX));
}

}  // namespace
