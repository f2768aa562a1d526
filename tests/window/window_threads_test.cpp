// Windows and threads: whose procedure runs where, and what becomes of messages.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace {

LRESULT CALLBACK Echo(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_APP) return static_cast<LRESULT>(GetCurrentThreadId());
    if (message == WM_APP + 1) return SendMessageA(reinterpret_cast<HWND>(lParam), WM_APP, 0, 0);
    if (message == WM_APP + 2) PostQuitMessage(static_cast<int>(wParam));
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeEcho() {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = &Echo;
    info.lpszClassName = "Echo";
    RegisterClassExA(&info);
    return CreateWindowExA(0, "Echo", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
}

// A thread with a window of its own and a loop.
class EchoThread {
public:
    EchoThread()
        : thread_([this] {
              made_.set_value(MakeEcho());
              MSG message;
              while (GetMessageA(&message, nullptr, 0, 0) > 0)
                  DispatchMessageA(&message);
          }) {
        window_ = made_.get_future().get();
    }
    ~EchoThread() {
        PostMessageA(window_, WM_APP + 2, 0, 0);
        thread_.join();
        // Its window went with it.
        EXPECT_FALSE(IsWindow(window_));
    }
    HWND GetWindow() const { return window_; }

private:
    // Not an atomic's wait, which may miss its notification with the run-time of MinGW-w64.
    std::promise<HWND> made_;
    HWND window_ = nullptr;
    std::thread thread_;
};

TEST(WindowThreads, SentMessagesRunInTheWindowsThread) {
    const EchoThread other;
    const HWND own = MakeEcho();
    const auto thread = SendMessageA(other.GetWindow(), WM_APP, 0, 0);
    EXPECT_EQ(static_cast<DWORD>(thread), GetWindowThreadProcessId(other.GetWindow(), nullptr));
    EXPECT_NE(static_cast<DWORD>(thread), GetCurrentThreadId());
    // The other sends back while this one waits.
    EXPECT_EQ(static_cast<DWORD>(SendMessageA(other.GetWindow(), WM_APP + 1, 0,
                                              reinterpret_cast<LPARAM>(own))),
              GetCurrentThreadId());
    // Another thread's window is not this one's to destroy.
    EXPECT_FALSE(DestroyWindow(other.GetWindow()));
    EXPECT_TRUE(DestroyWindow(own));
}

TEST(WindowThreads, PostedMessagesAllArriveInTheirOrder) {
    const HWND own = MakeEcho();
    constexpr int kThreads = 4, kEach = 500;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([=] {
            for (int i = 0; i < kEach; ++i)
                while (!PostMessageA(own, WM_APP + 3, static_cast<WPARAM>(t), i))
                    std::this_thread::yield();
        });
    LPARAM next[kThreads] = {};
    MSG message;
    for (int taken = 0; taken < kThreads * kEach;) {
        ASSERT_GT(GetMessageA(&message, own, WM_APP + 3, WM_APP + 3), 0);
        EXPECT_EQ(message.lParam, next[message.wParam]++);
        ++taken;
    }
    for (std::thread& thread : threads)
        thread.join();
    DestroyWindow(own);
}

}  // namespace
