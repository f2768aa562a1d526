// How far owners and parents go on this desktop, and what threads do to each other's windows.

#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kDeepest = 100;
// It paints no text: ThreadSanitizer does not see the locks of the libraries that find fonts.
constexpr char kPlain[] = "msctls_progress32";

HWND MakePopup(HWND owner = nullptr, DWORD style = 0) {
    return CreateWindowExA(0, kPlain, "", WS_POPUP | style, 10, 10, 100, 80, owner, nullptr,
                           nullptr, nullptr);
}

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

TEST(TreeLimits, OwnersMakeNoRingAndNoEndlessChain) {
    std::vector<HWND> chain{MakePopup()};
    while (const HWND next = MakePopup(chain.back()))
        chain.push_back(next);
    EXPECT_EQ(chain.size(), std::size_t{kDeepest});
    for (const HWND owner : {chain[0], chain[1], chain.back()}) {
        SetLastError(0);
        SetWindowLongPtrA(chain[0], GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    }
    EXPECT_EQ(GetAncestor(chain.back(), GA_ROOTOWNER), chain[0]);
    DestroyWindow(chain[0]);
    for (const HWND window : chain)
        EXPECT_FALSE(IsWindow(window));
}

TEST(TreeLimits, ParentsNestNoDeeperByMoving) {
    HWND ends[2][2];
    for (auto& end : ends) {
        HWND at = end[0] = MakePopup();
        for (int i = 1; i < kDeepest / 2 + 1; ++i)
            at = CreateWindowExA(0, kPlain, "", WS_CHILD, 0, 0, 10, 10, at, nullptr, nullptr,
                                 nullptr);
        end[1] = at;
        ASSERT_NE(at, nullptr);
    }
    EXPECT_EQ(SetParent(ends[1][0], ends[0][1]), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(SetParent(GetWindow(ends[1][0], GW_CHILD), GetParent(ends[0][1])), ends[1][0]);
    for (auto& end : ends)
        DestroyWindow(end[0]);
    EXPECT_FALSE(IsWindow(ends[1][1]));
}

TEST(TreeLimits, ClassesGetNumbersAgainThatWereGivenBack) {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = &DefWindowProcA;
    info.lpszClassName = "TestPassingClass";
    for (int i = 0; i < 0x4000 + 2; ++i) {
        ASSERT_GE(RegisterClassExA(&info), 0xC000) << i;
        ASSERT_TRUE(UnregisterClassA(info.lpszClassName, nullptr)) << i;
    }
}

TEST(TreeLimits, WhatIsInADisabledWindowIsOutOfTheMousesReach) {
    class Pressed : public SWnd {
    public:
        int presses = 0;

    protected:
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            presses += message == WM_LBUTTONDOWN;
            return SWnd::WindowProc(message, wParam, lParam);
        }
    };
    Pressed top;
    Pressed child;
    ASSERT_EQ(top.CreateEx(0, "S_Window", "", WS_POPUP | WS_VISIBLE, 0, 0, 100, 100), 1);
    ASSERT_EQ(child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 10, 10, 50, 50,
                             top.GetHandle(), nullptr),
              1);
    for (const BOOL isEnabled : {0, 1}) {
        EnableWindow(top.GetHandle(), isEnabled);
        SetCursorPos(20, 20);
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        Pump();
        EXPECT_EQ(child.presses, isEnabled);
        EXPECT_EQ(top.presses, 0);
    }
}

// Its thread answers nothing until the test lets it.
class StillThread {
public:
    StillThread() : thread_([this] { Run(); }) { window = made_.get_future().get(); }
    ~StillThread() {
        if (thread_.joinable()) LetPump();
    }
    StillThread(const StillThread&) = delete;
    StillThread& operator=(const StillThread&) = delete;
    void LetPump() {
        go_.set_value();
        thread_.join();
    }

    HWND window = nullptr;
    HWND wasActive = nullptr;

private:
    void Run() {
        const HWND own = MakePopup(nullptr, WS_VISIBLE);
        SetActiveWindow(nullptr);
        made_.set_value(own);
        go_.get_future().wait();
        Pump();
        wasActive = GetActiveWindow();
        DestroyWindow(own);
    }

    std::promise<HWND> made_;
    std::promise<void> go_;
    std::thread thread_;
};

TEST(TreeThreads, AnotherThreadsWindowIsAskedNotCalled) {
    const HWND own = MakePopup(nullptr, WS_VISIBLE);
    StillThread other;
    SetActiveWindow(own);
    EXPECT_EQ(SetFocus(other.window), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(SetActiveWindow(other.window), nullptr);
    EXPECT_EQ(GetActiveWindow(), own);
    ShowWindow(own, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), nullptr) << "the other's window is not this thread's to activate";
    DestroyWindow(own);
    EXPECT_TRUE(SetForegroundWindow(other.window));
    other.LetPump();
    EXPECT_EQ(other.wasActive, other.window);
}

TEST(TreeThreads, AWindowInTheMidstOfItsEndGoesWithItsThread) {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    info.lpszClassName = "TestUnwillingClass";
    info.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message == WM_DESTROY) throw std::runtime_error("not now");
        return DefWindowProcA(window, message, wParam, lParam);
    };
    ASSERT_NE(RegisterClassExA(&info), 0);
    HWND window = nullptr;
    std::thread([&] {
        window = CreateWindowExA(0, info.lpszClassName, "", WS_POPUP, 0, 0, 10, 10, nullptr,
                                 nullptr, nullptr, nullptr);
        EXPECT_THROW(DestroyWindow(window), std::runtime_error);
        EXPECT_TRUE(IsWindow(window));
    }).join();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(UnregisterClassA(info.lpszClassName, nullptr));
}

}  // namespace
