// Threads that wait for messages or for answers, and timers that compete.

#include <brcore8/platform/posix/desktop_testing.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/last_error.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

constexpr UINT kThrow = WM_APP, kNote = WM_APP + 1, kQuit = WM_APP + 2;

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kThrow) throw std::runtime_error("as asked");
    if (message == kNote) SetWindowLongPtrA(window, GWLP_USERDATA, wParam * 100 + lParam);
    if (message == kNote) return 41;
    if (message == kQuit) PostQuitMessage(static_cast<int>(wParam));
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND Make() {
    WNDCLASSEXA info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = &Procedure;
    info.lpszClassName = "Waiting";
    RegisterClassExA(&info);
    return CreateWindowExA(0, "Waiting", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                           nullptr);
}

// Until it has answered one message, or thrown.
void AnswerOne() {
    MSG message;
    PostMessageA(nullptr, kNote, 0, 0);
    GetMessageA(&message, nullptr, kNote, kNote);
}

TEST(MessageWaitsThreads, AProcedureThatThrowsLetsItsSenderGo) {
    const HWND own = Make();
    std::promise<LRESULT> answers[2];
    std::thread sender([&] {
        answers[0].set_value(SendMessageA(own, kThrow, 0, 0));
        answers[1].set_value(SendMessageA(own, kNote, 1, 2));
    });
    MSG message;
    EXPECT_THROW(GetMessageA(&message, nullptr, 0, 0), std::runtime_error);
    EXPECT_EQ(answers[0].get_future().get(), 0);
    // The next one is answered as ever.
    std::future<LRESULT> next = answers[1].get_future();
    while (next.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
    EXPECT_EQ(next.get(), 41);
    sender.join();
    DestroyWindow(own);
}

// It waits for another thread's answer, and what it answers meanwhile throws.
TEST(MessageWaitsThreads, AMessageArrivesWhoseSenderGaveUp) {
    const HWND own = Make();
    std::promise<HWND> made;
    std::promise<void> go;
    LONG_PTR noted = 0;
    std::thread slow([&] {
        const HWND window = Make();
        made.set_value(window);
        go.get_future().wait();
        AnswerOne();
        noted = GetWindowLongPtrA(window, GWLP_USERDATA);
    });
    const HWND other = made.get_future().get();
    std::thread thrower([&] { EXPECT_EQ(SendMessageA(own, kThrow, 0, 0), 0); });
    EXPECT_THROW(SendMessageA(other, kNote, 7, 9), std::runtime_error);
    go.set_value();
    slow.join();
    thrower.join();
    EXPECT_EQ(noted, 709);
    DestroyWindow(own);
}

TEST(MessageWaitsThreads, AQuitThatASentMessageAsksForEndsTheWait) {
    std::promise<HWND> made;
    std::promise<int> code;
    std::thread waiting([&] {
        made.set_value(Make());
        MSG message{};
        while (message.message != WM_QUIT) {
            WaitMessage();
            PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);
        }
        code.set_value(static_cast<int>(message.wParam));
    });
    SendMessageA(made.get_future().get(), kQuit, 17, 0);
    EXPECT_EQ(code.get_future().get(), 17);
    waiting.join();
}

// --- Timers
// ---------------------------------------------------------------------------------------

TEST(Timers, AFastOneLeavesTheOthersTheirTurn) {
    SHoldDesktopClock();
    const HWND own = Make();
    for (const UINT_PTR id : {1, 2, 3})
        SetTimer(own, id, id == 1 ? 10 : 100, nullptr);
    std::map<WPARAM, int> counts;
    // Every time that the program looks, each is due.
    for (int i = 0; i < 12; ++i) {
        SAdvanceDesktopClock(1000);
        MSG message;
        ASSERT_TRUE(PeekMessageA(&message, own, WM_TIMER, WM_TIMER, PM_REMOVE));
        ++counts[message.wParam];
    }
    EXPECT_EQ(counts, (std::map<WPARAM, int>{{1, 4}, {2, 4}, {3, 4}}));
    SReleaseDesktopClock();
    DestroyWindow(own);
}

// --- Names
// ----------------------------------------------------------------------------------------

TEST(RegisteredNames, NullIsNone) {
    for (const auto& call : {&RegisterWindowMessageA, &RegisterClipboardFormatA}) {
        SetLastError(0);
        EXPECT_EQ(call(nullptr), 0u);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    }
}

// In a process of its own, whose table may be full.
TEST(RegisteredNames, AreKnownWhenThereIsRoomForNoMore) {
    const auto fill = [] {
        const UINT first = RegisterWindowMessageA("the first");
        int made = 0;
        while (RegisterWindowMessageA(("name " + std::to_string(made)).c_str()) != 0)
            ++made;
        const bool isKnown = first != 0 && RegisterWindowMessageA("The First") == first;
        std::_Exit(made > 10000 && isKnown ? 0 : 1);
    };
    EXPECT_EXIT(fill(), testing::ExitedWithCode(0), "");
}

}  // namespace
