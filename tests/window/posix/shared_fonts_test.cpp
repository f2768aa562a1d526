// Texts that windows of several threads measure and draw at once. The name leaves them out of what
// ThreadSanitizer runs: it does not see the locks of the libraries that find and draw fonts, which
// have a thread of their own.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kSize = 120;

// How large texts of many fonts are, and the pixels that they colour.
std::vector<long> DrawTexts() {
    const HDC screen = GetDC(nullptr), dc = CreateCompatibleDC(screen);
    const HBITMAP picture = CreateCompatibleBitmap(screen, kSize, kSize);
    const HGDIOBJ before = SelectObject(dc, picture);
    std::vector<long> seen;
    for (int height = 8; height < 32; ++height) {
        LOGFONTA info{};
        info.lfHeight = -height;
        info.lfItalic = height % 3 == 0;
        info.lfWeight = height % 2 == 0 ? 700 : 400;
        std::snprintf(info.lfFaceName, sizeof info.lfFaceName, "DejaVu Sans");
        const HFONT font = CreateFontIndirectA(&info);
        const HGDIOBJ old = SelectObject(dc, font);
        const std::string text = "Width " + std::to_string(height);
        SIZE size{};
        GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size);
        PatBlt(dc, 0, 0, kSize, kSize, WHITENESS);
        TextOutA(dc, 2, 2, text.data(), static_cast<int>(text.size()));
        long dark = 0;
        for (int y = 0; y < kSize; ++y)
            for (int x = 0; x < kSize; ++x)
                dark += 255 - GetGValue(GetPixel(dc, x, y));
        seen.insert(seen.end(), {size.cx, size.cy, dark});
        SelectObject(dc, old);
        DeleteObject(font);
    }
    SelectObject(dc, before);
    DeleteDC(dc);
    DeleteObject(picture);
    ReleaseDC(nullptr, screen);
    return seen;
}

TEST(SharedFonts, AreTheSameWhoeverUsesThem) {
    std::vector<std::vector<long>> seen(4);
    std::vector<std::thread> threads;
    for (auto& each : seen)
        threads.emplace_back([&each] { each = DrawTexts(); });
    for (std::thread& thread : threads)
        thread.join();
    const std::vector<long> alone = DrawTexts();
    ASSERT_GT(alone[2], 0) << "something is drawn";
    for (const auto& each : seen)
        EXPECT_EQ(each, alone);
}

}  // namespace
