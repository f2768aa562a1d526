// Pictures of windows, as files and as bitmaps.

#include <brcore8/platform/desktop_picture.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0);

class STestColored : public SWnd {
    SDECLARE_MESSAGE_MAP(STestColored);

public:
    explicit STestColored(COLORREF painted) : color(painted) {}
    COLORREF color;

private:
    void OnPaint() {
        PAINTSTRUCT paint;
        const HDC dc = BeginPaint(GetHandle(), &paint);
        const HBRUSH brush = CreateSolidBrush(color);
        RECT all;
        ::GetClientRect(GetHandle(), &all);
        FillRect(dc, &all, brush);
        DeleteObject(brush);
        EndPaint(GetHandle(), &paint);
    }
};
SIMPLEMENT_MESSAGE_MAP(STestColored, SWnd, SOnPaint<&STestColored::OnPaint>());

// A captured picture.
class Capture {
public:
    explicit Capture(HWND window) : bitmap_(SCaptureWindow(window)) {
        const HDC screen = GetDC(nullptr);
        dc_ = CreateCompatibleDC(screen);
        ReleaseDC(nullptr, screen);
        if (bitmap_ != nullptr) old_ = SelectObject(dc_, bitmap_);
    }
    ~Capture() {
        if (bitmap_ != nullptr) SelectObject(dc_, old_);
        DeleteDC(dc_);
        if (bitmap_ != nullptr) DeleteObject(bitmap_);
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    bool IsThere() const { return bitmap_ != nullptr; }
    COLORREF At(int x, int y) const { return GetPixel(dc_, x, y); }

private:
    HBITMAP bitmap_;
    HDC dc_ = nullptr;
    HGDIOBJ old_ = nullptr;
};

std::string Contents(const char* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

unsigned Number(const std::string& bytes, std::size_t at) {
    unsigned number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + i));
    return number;
}

TEST(Pictures, AWindowIsTakenWithWhatItsChildrenShow) {
    STestColored window(kRed), child(kGreen);
    ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 30,
                              20, 120, 90),
              1);
    ASSERT_EQ(child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 10, 12, 20, 20,
                             window.GetHandle()),
              1);
    {
        const Capture whole(window.GetHandle());
        ASSERT_TRUE(whole.IsThere());
        EXPECT_EQ(whole.At(5, 5), kRed);
        EXPECT_EQ(whole.At(119, 89), kRed);
        EXPECT_EQ(whole.At(10, 12), kGreen);
        EXPECT_EQ(whole.At(29, 31), kGreen);
        EXPECT_EQ(whole.At(30, 31), kRed);
        EXPECT_EQ(whole.At(120, 5), static_cast<COLORREF>(CLR_INVALID));
    }
    const Capture part(child.GetHandle());
    EXPECT_EQ(part.At(0, 0), kGreen);
    EXPECT_EQ(part.At(20, 0), static_cast<COLORREF>(CLR_INVALID));

    // What moved away uncovers its parent.
    SetWindowPos(child.GetHandle(), nullptr, 60, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    const Capture moved(window.GetHandle());
    EXPECT_EQ(moved.At(12, 14), kRed);
    EXPECT_EQ(moved.At(62, 42), kGreen);
    child.ShowWindow(SW_HIDE);
    const Capture hidden(window.GetHandle());
    EXPECT_EQ(hidden.At(62, 42), kRed);
}

TEST(Pictures, AFileIsAPngOfTheWindowsSize) {
    STestColored window(kRed);
    ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 30, 20, 123, 45), 1);
    constexpr const char* kPath = "brcore8_window_picture.png";
    ASSERT_TRUE(SWriteWindowPicture(window.GetHandle(), kPath));
    std::string png = Contents(kPath);
    ASSERT_GT(png.size(), 60u);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(Number(png, 16), 123u);
    EXPECT_EQ(Number(png, 20), 45u);
    EXPECT_NE(png.find("IEND"), std::string::npos);

    ASSERT_TRUE(SWriteDesktopPicture(kPath));
    png = Contents(kPath);
    EXPECT_EQ(Number(png, 16), static_cast<unsigned>(GetSystemMetrics(SM_CXSCREEN)));
    EXPECT_EQ(Number(png, 20), static_cast<unsigned>(GetSystemMetrics(SM_CYSCREEN)));
    std::remove(kPath);

    EXPECT_FALSE(SWriteWindowPicture(nullptr, kPath));
    EXPECT_FALSE(SWriteWindowPicture(window.GetHandle(), "no/such/folder/picture.png"));
    EXPECT_EQ(Contents(kPath), "");
}

}  // namespace
