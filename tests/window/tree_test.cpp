// Parents, owners, and what windows are told of their beginning and end: the platform's own calls,
// which the wrappers stand on.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr char kClass[] = "TestTreeWindow";

// What the windows were told, each by the letter that is its text.
std::string g_log;
UINT g_refused = 0;
bool g_disables = false;  // once, when its mode is cancelled
HWND g_rescued = nullptr;
HWND g_rescuer = nullptr;

std::string NameOf(HWND window) {
    char text[8] = "";
    ::GetWindowTextA(window, text, sizeof text);
    return text;
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const struct {
        UINT message;
        const char* name;
    } kLogged[] = {{WM_NCCREATE, "begin"},
                   {WM_CREATE, "create"},
                   {WM_DESTROY, "destroy"},
                   {WM_NCDESTROY, "end"},
                   {WM_PAINT, "paint"}};
    for (const auto& each : kLogged)
        if (each.message == message) g_log += NameOf(window) + each.name + ";";
    if (message == g_refused) return message == WM_CREATE ? -1 : 0;
    if (message == WM_DESTROY && g_rescued != nullptr) ::SetParent(g_rescued, g_rescuer);
    if (message == WM_CANCELMODE && std::exchange(g_disables, false)) ::EnableWindow(window, 0);
    return ::DefWindowProcA(window, message, wParam, lParam);
}

class WindowTree : public testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSEXA info{};
        info.cbSize = sizeof info;
        info.lpfnWndProc = &Procedure;
        info.cbWndExtra = 16;
        info.lpszClassName = kClass;
        ASSERT_NE(::RegisterClassExA(&info), 0);
    }
    static void TearDownTestSuite() { ::UnregisterClassA(kClass, nullptr); }
    void SetUp() override {
        g_log.clear();
        g_refused = 0;
        g_rescued = g_rescuer = nullptr;
    }
    void TearDown() override {
        g_rescued = nullptr;
        for (const HWND window : made_)
            if (::IsWindow(window)) ::DestroyWindow(window);
    }
    HWND Make(const char* name, DWORD style, HWND parent = nullptr) {
        const HWND window = ::CreateWindowExA(0, kClass, name, style, 10, 10, 100, 80, parent,
                                              nullptr, nullptr, nullptr);
        made_.push_back(window);
        return window;
    }

private:
    std::vector<HWND> made_;
};

TEST_F(WindowTree, AnOwnerThatIsGoneIsNobodys) {
    const HWND first = Make("a", WS_POPUP);
    const HWND second = Make("b", WS_POPUP);
    const HWND owned = Make("c", WS_POPUP, first);
    EXPECT_EQ(::GetWindow(owned, GW_OWNER), first);
    ::SetWindowLongPtrA(owned, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(second));
    ::DestroyWindow(first);
    EXPECT_TRUE(::IsWindow(owned));
    EXPECT_EQ(::GetWindow(owned, GW_OWNER), second);
    EXPECT_EQ(::GetAncestor(owned, GA_ROOTOWNER), second);
    g_log.clear();
    ::DestroyWindow(second);
    EXPECT_FALSE(::IsWindow(owned));
    EXPECT_LT(g_log.find("cend"), g_log.find("bdestroy")) << g_log;
}

TEST_F(WindowTree, AFieldIsAsWideAsTheCall) {
    const HWND window = Make("a", WS_POPUP);
    EXPECT_EQ(::SetWindowLongA(window, 12, -2), 0);
    EXPECT_EQ(::SetWindowLongA(window, 8, 7), 0);
    EXPECT_EQ(::GetWindowLongA(window, 12), -2);
    EXPECT_EQ(::GetWindowLongA(window, 8), 7);
    EXPECT_EQ(::SetWindowLongPtrA(window, 0, -3), 0);
    EXPECT_EQ(::GetWindowLongPtrA(window, 0), -3);
    ::SetLastError(0);
    EXPECT_EQ(::GetWindowLongA(window, 13), 0);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_INDEX});
}

TEST_F(WindowTree, WhatNeverBeganIsNotDestroyed) {
    g_refused = WM_NCCREATE;
    EXPECT_EQ(Make("a", WS_POPUP), nullptr);
    EXPECT_EQ(g_log, "begin;end;");
}

TEST_F(WindowTree, NoWindowIsBelowItself) {
    const HWND top = Make("a", WS_POPUP);
    const HWND child = Make("b", WS_CHILD, top);
    const HWND grandchild = Make("c", WS_CHILD, child);
    const struct {
        HWND window;
        HWND parent;
    } rows[] = {{child, child}, {child, grandchild}, {top, grandchild}};
    for (const auto& row : rows) {
        EXPECT_EQ(::SetParent(row.window, row.parent), nullptr);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    }
    EXPECT_EQ(::SetParent(grandchild, top), child);
    EXPECT_EQ(::GetParent(grandchild), top);
    EXPECT_EQ(::SetParent(child, grandchild), top);
    EXPECT_TRUE(::IsChild(grandchild, child));
}

TEST_F(WindowTree, AChildThatIsTakenElsewhereLivesOn) {
    const HWND doomed = Make("a", WS_POPUP);
    g_rescuer = Make("b", WS_POPUP);
    const HWND rescued = Make("c", WS_CHILD, doomed);
    Make("d", WS_CHILD, doomed);
    g_rescued = rescued;
    g_log.clear();
    ::DestroyWindow(doomed);
    EXPECT_EQ(g_log, "adestroy;ddestroy;dend;aend;");
    g_rescued = nullptr;
    ASSERT_TRUE(::IsWindow(rescued));
    EXPECT_EQ(::GetParent(rescued), g_rescuer);
    EXPECT_TRUE(::DestroyWindow(rescued));
    EXPECT_FALSE(::IsWindow(rescued));
}

TEST_F(WindowTree, AnUpdateReachesChildren) {
    const HWND top = Make("a", WS_POPUP | WS_VISIBLE);
    const HWND child = Make("b", WS_CHILD | WS_VISIBLE, top);
    ::UpdateWindow(top);
    g_log.clear();
    ::InvalidateRect(child, nullptr, 1);
    ::UpdateWindow(top);
    EXPECT_EQ(g_log, "bpaint;");
}

TEST_F(WindowTree, ACancelledModeGivesTheMouseBack) {
    const HWND window = Make("a", WS_POPUP | WS_VISIBLE);
    ::SetCapture(window);
    ::SendMessageA(window, WM_CANCELMODE, 0, 0);
    EXPECT_EQ(::GetCapture(), nullptr);
    g_disables = true;
    ::EnableWindow(window, 0);
    EXPECT_FALSE(::IsWindowEnabled(window)) << "its procedure had disabled it already";
}

TEST_F(WindowTree, PlacesHaveSixteenBits) {
    const HWND top = Make("a", WS_POPUP);
    const HWND child = Make("b", WS_CHILD, top);
    const struct {
        int x, y, width, height;
        RECT expected;
    } rows[] = {
        {INT_MAX, INT_MIN, INT_MAX, INT_MAX, {32767, -32768, 65534, -1}},
        {INT_MIN, 5, -1, INT_MIN, {-32768, 5, -32768, 5}},
    };
    for (const auto& row : rows) {
        ::MoveWindow(child, row.x, row.y, row.width, row.height, 0);
        RECT rect;
        ::GetWindowRect(child, &rect);
        ::MapWindowPoints(nullptr, top, reinterpret_cast<POINT*>(&rect), 2);
        EXPECT_EQ(rect.left, row.expected.left);
        EXPECT_EQ(rect.top, row.expected.top);
        EXPECT_EQ(rect.right, row.expected.right);
        EXPECT_EQ(rect.bottom, row.expected.bottom);
    }
}

}  // namespace
