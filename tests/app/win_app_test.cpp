// The message loop, its idle passes, and the wait cursor.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>
#include <brcore8/core/module.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>

namespace {

// Writes down what the loop does; quits after its second idle pass unless told otherwise.
class STestApp : public SWinApp {
public:
    STestApp() : SWinApp("Test") {}

    std::string log;
    int passes = 2;

    int OnIdle(long count) override {
        log += "idle" + std::to_string(count) + ";";
        const int more = SWinApp::OnIdle(count);
        if (--passes == 0) PostQuitMessage(3);
        return more;
    }
    int PreTranslateMessage(MSG* message) override {
        log += std::to_string(message->message) + ";";
        return SWinApp::PreTranslateMessage(message);
    }
};

class STestFrame : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(STestFrame);

public:
    int updates = 0;
    bool closesInUpdate = false;

private:
    void OnIdleUpdate(BOOL) {
        ++updates;
        if (closesInUpdate) DestroyWindow();
    }
};
SIMPLEMENT_MESSAGE_MAP(STestFrame, SFrameWnd, SOnIdleUpdate<&STestFrame::OnIdleUpdate>());

// What earlier tests left in the queue is gone.
class Application : public testing::Test {
protected:
    void SetUp() override { Drain(); }
    void TearDown() override { Drain(); }
    static void Drain() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
};

TEST_F(Application, TheLastOneConstructedIsTheProcesss) {
    EXPECT_EQ(SGetApp(), nullptr);
    SWinApp first("First");
    EXPECT_EQ(SGetApp(), &first);
    {
        SWinApp second;
        EXPECT_EQ(SGetApp(), &second);
        EXPECT_EQ(second.GetName(), nullptr);
    }
    EXPECT_EQ(SGetApp(), &first);
    EXPECT_STREQ(first.GetName(), "First");
    EXPECT_EQ(first.GetShowCommand(), -1);
    char line[] = "-p plan.brn";
    EXPECT_EQ(first.Init(SGetCoreInstance(), nullptr, line, SW_SHOWNORMAL), 1);
    EXPECT_EQ(first.GetCommmandLine().GetShellCommand(), unsigned{SCommandLine::Print});
    EXPECT_EQ(first.GetCmdLineString(), line);
    EXPECT_EQ(first.GetShowCommand(), SW_SHOWNORMAL);
    EXPECT_EQ(first.InitApplication() + first.InitInstance(), 2);
}

TEST_F(Application, ApplicationsEndInAnyOrder) {
    auto first = std::make_unique<SWinApp>("First");
    auto second = std::make_unique<SWinApp>("Second");
    auto third = std::make_unique<SWinApp>("Third");
    second.reset();
    EXPECT_EQ(SGetApp(), third.get());
    third.reset();
    EXPECT_EQ(SGetApp(), first.get());
    auto last = std::make_unique<SWinApp>("Last");
    first.reset();
    EXPECT_EQ(SGetApp(), last.get());
    last.reset();
    EXPECT_EQ(SGetApp(), nullptr);
}

TEST_F(Application, TwoIdlePassesFollowWhatCounts) {
    STestApp app;
    PostMessageA(nullptr, WM_APP, 0, 0);
    PostMessageA(nullptr, WM_APP + 1, 0, 0);
    EXPECT_EQ(app.Run(), 3);
    const std::string first = std::to_string(WM_APP), second = std::to_string(WM_APP + 1);
    EXPECT_EQ(app.log, first + ";" + second + ";idle0;idle1;");
}

TEST_F(Application, WakingUpRestartsTheIdlePasses) {
    STestApp app;
    app.passes = 4;
    std::thread other([thread = GetCurrentThreadId()] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        while (!PostThreadMessageA(thread, kWakeUpMessage, 0, 0)) {
        }
    });
    EXPECT_EQ(app.Run(), 3);
    other.join();
    // The message was neither translated nor dispatched.
    EXPECT_EQ(app.log, "idle0;idle1;idle0;idle1;");
}

TEST_F(Application, WhichMessagesCount) {
    SWinApp app;
    struct Row {
        int message;
        int x;
        int counts;
    };
    constexpr Row rows[] = {{WM_MOUSEMOVE, 5, 1},
                            {WM_MOUSEMOVE, 5, 0},
                            {WM_NCMOUSEMOVE, 5, 1},
                            {WM_NCMOUSEMOVE, 5, 0},
                            {WM_NCMOUSEMOVE, 6, 1},
                            {WM_PAINT, 6, 0},
                            {280, 6, 0},
                            {WM_TIMER, 6, 1},
                            {WM_NCMOUSEMOVE, 6, 0},
                            {874, 6, 1}};
    for (const Row& row : rows) {
        MSG message{};
        message.message = static_cast<UINT>(row.message);
        message.pt.x = row.x;
        EXPECT_EQ(app.IsIdleMessage(&message), row.counts) << row.message << ' ' << row.x;
    }
}

TEST_F(Application, IdleUpdatesReachTheVisibleFramesOfTheApplication) {
    STestApp app;
    STestFrame main, owned, hidden, stranger, child;
    for (STestFrame* frame : {&main, &stranger})
        ASSERT_EQ(frame->CreateFrame("A frame"), 1);
    for (STestFrame* frame : {&owned, &hidden})
        ASSERT_EQ(frame->CreateFrame("Owned", &main), 1);
    ASSERT_EQ(
        child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, main.GetHandle()), 1);
    for (STestFrame* frame : {&main, &owned, &stranger})
        frame->ShowWindow(SW_SHOWNOACTIVATE);
    EXPECT_EQ(app.SWinApp::OnIdle(0), 1);
    EXPECT_EQ(main.updates, 0);
    app.SetMainWnd(&main);
    EXPECT_EQ(app.SWinApp::OnIdle(0), 1);
    EXPECT_EQ(main.updates, 1);
    EXPECT_EQ(child.updates, 1);
    EXPECT_EQ(owned.updates, 1);
    EXPECT_EQ(hidden.updates, 0);
    EXPECT_EQ(stranger.updates, 0);

    main.closesInUpdate = true;
    EXPECT_EQ(app.SWinApp::OnIdle(0), 1);
    EXPECT_EQ(main.updates, 2);
    EXPECT_EQ(main.GetHandle(), nullptr);
    EXPECT_EQ(owned.GetHandle(), nullptr);
}

TEST_F(Application, TheSecondPassEndsTemporaryWrappersUnlessHeld) {
    SWinApp app;
    SWnd::FromHandle(GetDesktopWindow());
    {
        const SHandleMapLock held;
        EXPECT_EQ(app.OnIdle(1), 0);
        EXPECT_EQ(SWnd::GetHandleMap().GetTemporaryCount(), 1);
    }
    EXPECT_EQ(app.OnIdle(1), 0);
    EXPECT_EQ(SWnd::GetHandleMap().GetTemporaryCount(), 0);
}

TEST_F(Application, TheWaitCursorCounts) {
    SWinApp app;
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    const HCURSOR wait = LoadCursorA(nullptr, IDC_WAIT);
    SetCursor(arrow);
    app.BeginWaitCursor();
    app.BeginWaitCursor();
    EXPECT_EQ(app.GetWaitCount(), 2);
    EXPECT_EQ(GetCursor(), wait);
    app.RestoreWaitCursor();
    EXPECT_EQ(app.GetWaitCount(), 0);
    EXPECT_EQ(GetCursor(), arrow);
    {
        const SWaitCursor outer(app);
        const SWaitCursor inner(app);
        EXPECT_EQ(GetCursor(), wait);
    }
    EXPECT_EQ(GetCursor(), arrow);
    app.EndWaitCursor();
    EXPECT_EQ(app.GetWaitCount(), 0);
    app.DoWaitCursor(INT32_MAX);
    app.DoWaitCursor(INT32_MAX);
    EXPECT_EQ(app.GetWaitCount(), INT32_MAX);
    app.DoWaitCursor(0);
}

TEST_F(Application, AMessageReachesItsWindowThroughTheLoop) {
    class STestQuitter : public SWnd {
    public:
        int asked = 0;

    protected:
        int PreTranslateMessage(MSG* message) override {
            asked += message->message == WM_APP;
            return message->message == WM_APP + 1;
        }
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            EXPECT_NE(message, static_cast<UINT>(WM_APP + 1));
            if (message == WM_APP) PostQuitMessage(static_cast<int>(wParam));
            return SWnd::WindowProc(message, wParam, lParam);
        }
    } window;
    ASSERT_EQ(window.CreateEx(0, "S_Window", "", WS_POPUP, 0, 0, 5, 5), 1);
    SWinApp app;
    window.PostMessage(WM_APP + 1);
    window.PostMessage(WM_APP, 11);
    EXPECT_EQ(app.Run(), 11);
    EXPECT_EQ(window.asked, 1);
}

}  // namespace
