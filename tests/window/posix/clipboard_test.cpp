// What becomes of things on the clipboard, and of the clipboard when somebody ends.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <future>
#include <thread>

namespace {

bool Exists(HBITMAP bitmap) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const bool canBeSelected = SelectObject(dc, bitmap) != nullptr;
    DeleteDC(dc);
    return canBeSelected;
}

HBITMAP NewBitmap() {
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 4, 4);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

HWND NewWindow() {
    return CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                           nullptr);
}

TEST(Clipboard, BitmapsGoWithWhatTheyWerePutOn) {
    const HBITMAP first = NewBitmap(), second = NewBitmap();
    ASSERT_TRUE(Exists(first));
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    EXPECT_EQ(SetClipboardData(CF_BITMAP, first), first);
    EXPECT_EQ(SetClipboardData(CF_BITMAP, second), second);
    EXPECT_FALSE(Exists(first)) << "another took its place";
    EXPECT_EQ(SetClipboardData(CF_BITMAP, second), second);
    EXPECT_TRUE(Exists(second)) << "the same again";
    EmptyClipboard();
    EXPECT_FALSE(Exists(second));
    EXPECT_TRUE(CloseClipboard());
}

TEST(Clipboard, IsNobodysOnceItsWindowEnded) {
    const HWND own = NewWindow();
    ASSERT_TRUE(OpenClipboard(own));
    EmptyClipboard();
    EXPECT_EQ(GetClipboardOwner(), own);
    EXPECT_EQ(GetOpenClipboardWindow(), own);
    DestroyWindow(own);
    EXPECT_EQ(GetClipboardOwner(), nullptr);
    EXPECT_EQ(GetOpenClipboardWindow(), nullptr);
    EXPECT_FALSE(CloseClipboard()) << "it is closed";
}

TEST(ClipboardThreads, AThreadThatEndedDoesNotKeepItOpen) {
    const auto canOpen = [] {
        if (!OpenClipboard(nullptr)) return false;
        EXPECT_TRUE(EmptyClipboard());
        return CloseClipboard() != 0;
    };
    std::promise<void> opened, end;
    std::thread other([&] {
        EXPECT_TRUE(OpenClipboard(nullptr));
        opened.set_value();
        end.get_future().wait();
    });
    opened.get_future().wait();
    EXPECT_FALSE(canOpen());
    end.set_value();
    other.join();
    EXPECT_TRUE(canOpen());
}

}  // namespace
