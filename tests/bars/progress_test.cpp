// Progress in the status bar: what shows, what cancels, and what else may happen meanwhile.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>
#include <brcore8/bars/progress_status_bar.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

namespace {

constexpr UINT kRun = WM_APP + 1;

// Runs what a test posts to it.
class STestWorkFrame : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(STestWorkFrame);

public:
    std::function<void()> work;

private:
    LRESULT OnRun(WPARAM, LPARAM) {
        const std::function<void()> now = std::exchange(work, nullptr);
        if (now) now();
        return 0;
    }
};
SIMPLEMENT_MESSAGE_MAP(STestWorkFrame, SFrameWnd, SOnMessage<&STestWorkFrame::OnRun>(kRun));

// Answers the next question box. Its loop dispatches the timer.
struct Answer {
    static inline int button = 0;
    static inline int boxes = 0;
    static inline bool quits = false;

    static void CALLBACK Look(HWND, UINT, UINT_PTR timer, DWORD) {
        const HWND box = ::FindWindowA("#32770", nullptr);
        if (box == nullptr) return;
        ::KillTimer(nullptr, timer);
        ++boxes;
        char text[100] = {};
        ::GetWindowTextA(::GetDlgItem(box, 0xFFFF), text, sizeof text);
        EXPECT_STREQ(text, "Do you really want to cancel operation?");
        EXPECT_NE(::GetDlgItem(box, IDYES), nullptr);
        EXPECT_NE(::GetDlgItem(box, IDNO), nullptr);
        quits ? ::PostQuitMessage(9) : void(::PostMessageA(box, WM_COMMAND, button, 0));
    }
    static void With(int which) {
        button = which;
        quits = false;
        boxes = 0;
        ::SetTimer(nullptr, 0, 10, &Look);
    }
    static void WithQuit() {
        With(0);
        quits = true;
    }
};

// Does something when the focus leaves it, or comes to it.
class STestField : public SWnd {
    SDECLARE_MESSAGE_MAP(STestField);

public:
    std::function<void()> atFocus, atLoss;

private:
    void OnSetFocus(SWnd*) { atFocus ? atFocus() : void(); }
    void OnKillFocus(SWnd*) { atLoss ? atLoss() : void(); }
};
SIMPLEMENT_MESSAGE_MAP(STestField, SWnd, SOnSetFocus<&STestField::OnSetFocus>(),
                       SOnKillFocus<&STestField::OnKillFocus>());

class Progress : public testing::Test {
protected:
    Progress() {
        EXPECT_EQ(frame->CreateFrame("Progress"), 1);
        frame->SetWindowPos(nullptr, 0, 0, 600, 300, SWP_NOZORDER);
        EXPECT_EQ(
            bar->Create(frame.get(), WS_CHILD | WS_VISIBLE, SBARS_SIZEGRIP, SStatusBar::DefaultId),
            1);
        app.SetMainWnd(frame.get());
        frame->ShowWindow(SW_SHOWNA);
        frame->RecalcLayout();
        Drain();
    }
    ~Progress() override {
        bar.reset();
        frame.reset();
        Drain();
    }
    static void Drain() {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            ::DispatchMessageA(&message);
    }
    static bool IsShown(const SWnd& window) { return (window.GetStyle() & WS_VISIBLE) != 0; }
    static void PressEscape() { ::PostMessageA(::GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0); }
    // Within the next poll.
    void InPoll(std::function<void()> work) {
        frame->work = std::move(work);
        frame->PostMessage(kRun);
    }
    static bool TakeQuit(WPARAM code) {
        MSG message;
        return ::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) &&
               message.wParam == code;
    }

    SWinApp app{"Progress"};
    std::unique_ptr<STestWorkFrame> frame = std::make_unique<STestWorkFrame>();
    std::unique_ptr<SProgressStatusBar> bar = std::make_unique<SProgressStatusBar>();
};

TEST_F(Progress, ShowsItsControlsWhileItLasts) {
    EXPECT_FALSE(IsShown(bar->GetProgress()) || IsShown(bar->GetCancelButton()));
    SWnd other;
    ASSERT_EQ(other.Create("S_CtrlWnd", nullptr, WS_VISIBLE, RECT{0, 0, 9, 9}, frame.get(), 5), 1);
    ::SetFocus(other.GetHandle());
    const RECT pane = bar->GetShownRect(0);

    bar->StartProgress(0);
    EXPECT_TRUE(bar->InProgress());
    EXPECT_TRUE(IsShown(bar->GetProgress()));
    EXPECT_FALSE(IsShown(bar->GetCancelButton()));
    EXPECT_EQ(::GetFocus(), other.GetHandle());
    bar->StartProgress(1);
    EXPECT_TRUE(IsShown(bar->GetCancelButton()));
    EXPECT_EQ(::GetFocus(), bar->GetCancelButton().GetHandle());
    EXPECT_EQ(bar->GetCancelButton().GetWindowText(), "Cancel");

    // Side by side, right of the panes and inside of the bar; after a resize too.
    for (const int width : {600, 400}) {
        frame->SetWindowPos(nullptr, 0, 0, width, 300, SWP_NOZORDER | SWP_NOMOVE);
        RECT places[2] = {bar->GetProgress().GetWindowRect(),
                          bar->GetCancelButton().GetWindowRect()};
        ::MapWindowPoints(nullptr, bar->GetHandle(), reinterpret_cast<POINT*>(places), 4);
        EXPECT_LE(bar->GetShownRect(0).right, places[0].left);
        EXPECT_GT(places[0].right - places[0].left, 50);
        EXPECT_LE(places[0].right, places[1].left);
        EXPECT_GT(places[1].right - places[1].left, 20);
        EXPECT_LE(places[1].right, bar->GetClientRect().right);
    }
    frame->SetWindowPos(nullptr, 0, 0, 600, 300, SWP_NOZORDER | SWP_NOMOVE);

    bar->EndProgress();
    bar->EndProgress();
    EXPECT_FALSE(IsShown(bar->GetProgress()) || IsShown(bar->GetCancelButton()));
    EXPECT_EQ(::GetFocus(), other.GetHandle()) << "back where it was";
    EXPECT_EQ(bar->GetShownRect(0).right, pane.right);

    EXPECT_THROW(
        {
            const SProgressScope scope(*bar, 1);
            throw std::runtime_error("broken off");
        },
        std::runtime_error);
    EXPECT_FALSE(bar->InProgress());
}

TEST_F(Progress, PollsOnlyWhatCanBeCancelled) {
    EXPECT_EQ(bar->PollCancel(), 0);
    bar->StartProgress(0);
    bool ran = false;
    InPoll([&] { ran = true; });
    PressEscape();
    EXPECT_EQ(bar->PollCancel(), 0);
    EXPECT_FALSE(ran) << "the queue was left alone";
    bar->GetCancelButton().Click();
    EXPECT_EQ(bar->PollCancel(), 0);
    Drain();
    bar->StartProgress(1);
    InPoll([&] { ran = true; });
    EXPECT_EQ(bar->PollCancel(), 0);
    EXPECT_TRUE(ran);
    EXPECT_EQ(bar->PollCancel(), 0) << "nothing waits";
}

TEST_F(Progress, AsksWhetherItWasMeant) {
    bar->StartProgress(1);
    // No: the operation goes on until it is asked for again.
    PressEscape();
    Answer::With(IDNO);
    EXPECT_EQ(bar->PollCancel(), 0);
    EXPECT_EQ(Answer::boxes, 1);
    EXPECT_EQ(bar->PollCancel(), 0);
    EXPECT_EQ(Answer::boxes, 1);
    EXPECT_TRUE(bar->GetCancelButton().IsWindowEnabled());
    // The button, and yes.
    bar->GetCancelButton().Click();
    Answer::With(IDYES);
    EXPECT_NE(bar->PollCancel(), 0);
    EXPECT_EQ(Answer::boxes, 1);
    bar->EndProgress();
    bar->StartProgress(1);
    EXPECT_EQ(bar->PollCancel(), 0) << "forgotten";
}

TEST_F(Progress, TheFocusComesBackFromWhereItWasTaken) {
    SWnd field;
    const HWND cancel = bar->GetCancelButton().GetHandle();
    ASSERT_EQ(field.Create("S_CtrlWnd", nullptr, WS_VISIBLE, RECT{0, 0, 9, 9}, frame.get(), 5), 1);
    ::SetFocus(field.GetHandle());
    bar->StartProgress(1);
    PressEscape();
    Answer::With(IDNO);
    EXPECT_EQ(bar->PollCancel(), 0);
    EXPECT_EQ(::GetFocus(), cancel) << "the question took it";
    bar->EndProgress();
    EXPECT_EQ(::GetFocus(), field.GetHandle());

    // The user went elsewhere meanwhile.
    bar->StartProgress(1);
    ::SetFocus(frame->GetHandle());
    bar->EndProgress();
    EXPECT_EQ(::GetFocus(), frame->GetHandle());

    // There is nowhere to go back to.
    ::SetFocus(nullptr);
    bar->StartProgress(1);
    bar->EndProgress();
    EXPECT_EQ(::GetFocus(), frame->GetHandle());
    ::SetFocus(field.GetHandle());
    bar->StartProgress(1);
    field.DestroyWindow();
    bar->EndProgress();
    EXPECT_EQ(::GetFocus(), frame->GetHandle());
}

TEST_F(Progress, EndsWithTheProgram) {
    bar->StartProgress(1);
    InPoll([] { ::PostQuitMessage(7); });
    EXPECT_EQ(bar->PollCancel(), 1);
    EXPECT_TRUE(TakeQuit(7));
    EXPECT_FALSE(TakeQuit(7)) << "once";

    bar->EndProgress();
    bar->StartProgress(1);
    PressEscape();
    Answer::WithQuit();
    EXPECT_EQ(bar->PollCancel(), 1);
    EXPECT_EQ(Answer::boxes, 1);
    EXPECT_TRUE(TakeQuit(9));
    EXPECT_FALSE(TakeQuit(9)) << "once";
}

TEST_F(Progress, SurvivesWhatHandlersDo) {
    // A poll inside the poll is none.
    int inner = -1;
    bar->StartProgress(1);
    InPoll([&] { inner = bar->PollCancel(); });
    EXPECT_EQ(bar->PollCancel(), 0);
    EXPECT_EQ(inner, 0);
    // The operation's end.
    InPoll([&] { bar->EndProgress(); });
    EXPECT_EQ(bar->PollCancel(), 0);
    // The window's, and the bar's.
    bar->StartProgress(1);
    InPoll([&] { frame->DestroyWindow(); });
    EXPECT_EQ(bar->PollCancel(), 1);
    EXPECT_EQ(bar->GetHandle(), nullptr);
    bar->EndProgress();
    bar->StartProgress(1);
    EXPECT_EQ(bar->PollCancel(), 0) << "without a window";
}

TEST_F(Progress, TheBarMayEndInItsPoll) {
    bar->StartProgress(1);
    InPoll([&] { bar.reset(); });
    EXPECT_EQ(bar->PollCancel(), 1);
}

TEST_F(Progress, TheBarMayEndWhenTheFocusMoves) {
    for (const bool atStart : {true, false}) {
        SCOPED_TRACE(atStart);
        if (bar == nullptr) {
            bar = std::make_unique<SProgressStatusBar>();
            ASSERT_EQ(bar->Create(frame.get(), WS_CHILD | WS_VISIBLE, 0, SStatusBar::DefaultId), 1);
        }
        STestField field;
        ASSERT_EQ(field.Create("S_CtrlWnd", nullptr, WS_VISIBLE, RECT{0, 0, 9, 9}, frame.get(), 5),
                  1);
        field.SetFocus();
        (atStart ? field.atLoss : field.atFocus) = [&] { bar.reset(); };
        SProgressStatusBar& working = *bar;
        working.StartProgress(1);
        EXPECT_EQ(bar == nullptr, atStart);
        if (!atStart) working.EndProgress();
        EXPECT_EQ(bar, nullptr);
        field.atLoss = nullptr;
    }
}

TEST_F(Progress, StatusIsTakenAndPutBack) {
    bar->StartProgress(1);
    bar->GetProgress().SetRange(0, 1000);
    bar->GetProgress().SetPos(250);
    SProgressStatusBar::Status outer, ended;
    bar->GetSetProgressStatus(&outer, nullptr);
    EXPECT_EQ(outer.state, SProgressStatusBar::InProgressBit | SProgressStatusBar::CancellableBit);
    EXPECT_EQ(outer.progress.position, 250);
    bar->GetSetProgressStatus(nullptr, &ended);
    EXPECT_FALSE(bar->InProgress());
    EXPECT_FALSE(IsShown(bar->GetProgress()));
    bar->GetSetProgressStatus(&ended, &outer);
    EXPECT_EQ(ended.state, 0);
    EXPECT_TRUE(IsShown(bar->GetCancelButton()));
    EXPECT_EQ(bar->GetProgress().GetPos(), 250);
    EXPECT_EQ(bar->GetProgress().GetStatus().upper, 1000);
}

// --- The progress control -----------------------------------------------------------------------

TEST_F(Progress, PositionsStayInTheRange) {
    SCustomProgressCtrl& control = bar->GetProgress();
    struct Row {
        int lower, upper, position, step, after;
    };
    constexpr Row rows[] = {
        {0, 100, 50, 10, 60},
        {0, 100, 95, 10, 100},
        {0, 100, 5, -10, 0},
        {-50, 50, -60, 0, -50},
        {INT_MIN, INT_MAX, INT_MAX - 1, INT_MAX, INT_MAX},
        {INT_MIN, INT_MAX, INT_MIN + 1, INT_MIN, INT_MIN},
        {10, 10, 99, 1, 10},
    };
    for (const Row& row : rows) {
        control.SetStatus({row.lower, row.upper, row.position, row.step});
        control.StepIt();
        EXPECT_EQ(control.GetPos(), row.after) << row.lower << ' ' << row.position;
    }
}

TEST_F(Progress, FillsInProportion) {
    constexpr COLORREF kFull = RGB(0, 0, 200), kEmpty = RGB(240, 240, 240);
    bar->StartProgress(0);
    SCustomProgressCtrl& control = bar->GetProgress();
    control.SetColors(kFull, kEmpty);
    control.SetRange(0, 4);
    for (const int position : {0, 1, 3, 4}) {
        control.SetPos(position);
        control.Invalidate();
        control.UpdateWindow();
        const RECT client = control.GetClientRect();
        const int y = client.bottom / 2;
        const HDC dc = ::GetDC(control.GetHandle());
        int full = 0, empty = 0;
        for (int x = 0; x < client.right; ++x) {
            const COLORREF pixel = ::GetPixel(dc, x, y);
            full += pixel == kFull;
            empty += pixel == kEmpty;
        }
        ::ReleaseDC(control.GetHandle(), dc);
        EXPECT_EQ(full, (client.right - 2) * position / 4);
        EXPECT_EQ(empty, client.right - 2 - full);
    }
}

}  // namespace
