// Panes: their places, what they show, and layouts that take their place.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/bars/status_bar.h>
#include <brcore8/controls/progress_ctrl.h>
#include <brcore8/controls/status_bar_ctrl.h>
#include <brcore8/routing/cmd_ui.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

constexpr UINT kLine = 201, kOverwrite = 202;
constexpr unsigned long kSized = SStatusBarPane::SizeToText;

class STestBarFrame : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(STestBarFrame);

public:
    SStatusBar* endsInUpdate = nullptr;
    bool isOverwriting = false;

private:
    void OnUpdateLine(SCmdUI* ui) {
        if (endsInUpdate != nullptr) endsInUpdate->DestroyWindow();
        ui->SetText("Ln 12");
    }
    void OnUpdateOverwrite(SCmdUI* ui) {
        ui->Enable(isOverwriting);
        ui->SetCheck(isOverwriting);
    }
};
SIMPLEMENT_MESSAGE_MAP(STestBarFrame, SFrameWnd, SOnUpdate<&STestBarFrame::OnUpdateLine>(kLine),
                       SOnUpdate<&STestBarFrame::OnUpdateOverwrite>(kOverwrite));

class StatusBar : public testing::Test {
protected:
    StatusBar() {
        EXPECT_EQ(frame.CreateFrame("Bars"), 1);
        frame.SetWindowPos(nullptr, 0, 0, 500, 300, SWP_NOZORDER);
        EXPECT_EQ(bar.Create(&frame, WS_CHILD | WS_VISIBLE, SBARS_SIZEGRIP, SStatusBar::DefaultId),
                  1);
        frame.RecalcLayout();
    }
    // What the control itself shows in a part.
    std::string Part(int index) const {
        char text[256] = {};
        bar.SendMessage(SB_GETTEXTA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
        return text;
    }
    UINT Look(int index) const {
        return HIWORD(bar.SendMessage(SB_GETTEXTLENGTHA, static_cast<WPARAM>(index)));
    }
    int Parts() const { return static_cast<int>(bar.SendMessage(SB_GETPARTS)); }
    int Width(int shown) const {
        const RECT rect = bar.GetShownRect(shown);
        return rect.right - rect.left;
    }
    void Update() { bar.CallWndProc(kIdleUpdateMessage, 1, 0); }

    STestBarFrame frame;
    SStatusBar bar;
};

int SetText(SStatusBar& bar, int index, const char* text) {
    const SString copy(text);
    return bar.SetPaneText(index, &copy, 1);
}

int SetText(SStatusBarLayout& layout, int index, const char* text, int update = 1) {
    const SString copy(text);
    return layout.SetPaneText(index, &copy, update);
}

TEST_F(StatusBar, LiesAtTheLowerEdgeAndLeavesTheRestToTheView) {
    SCtrlBar top;
    SWnd view;
    ASSERT_EQ(top.Create(&frame, SCtrlBar::Top, 24, 7), 1);
    ASSERT_EQ(view.Create("S_CliDrawWnd", nullptr, WS_VISIBLE, RECT{}, &frame, SFrameWnd::ViewId),
              1);
    frame.SetWindowPos(nullptr, 0, 0, 400, 260, SWP_NOZORDER | SWP_NOMOVE);
    const RECT client = frame.GetClientRect();
    RECT status = bar.GetWindowRect(), middle = view.GetWindowRect();
    ::MapWindowPoints(nullptr, frame.GetHandle(), reinterpret_cast<POINT*>(&status), 2);
    ::MapWindowPoints(nullptr, frame.GetHandle(), reinterpret_cast<POINT*>(&middle), 2);
    EXPECT_EQ(status.bottom, client.bottom);
    EXPECT_EQ(status.right, client.right);
    EXPECT_GT(status.bottom - status.top, 10);
    EXPECT_EQ(middle.top, 24);
    EXPECT_EQ(middle.bottom, status.top);
    EXPECT_EQ(middle.right, client.right);

    top.ShowWindow(SW_HIDE);
    frame.RecalcLayout();
    middle = view.GetWindowRect();
    ::MapWindowPoints(nullptr, frame.GetHandle(), reinterpret_cast<POINT*>(&middle), 2);
    EXPECT_EQ(middle.top, 0);
}

TEST_F(StatusBar, TheFirstPaneTakesWhatTheOthersLeave) {
    EXPECT_EQ(bar.GetPaneCount(), 1);
    EXPECT_EQ(bar.DeletePane(0), 0) << "the last one";
    ASSERT_EQ(bar.InsertPane(1, kLine, 0), 1);
    ASSERT_EQ(bar.InsertPane(2, kOverwrite, kSized), 1);
    EXPECT_EQ(bar.GetPaneWidth(1), 80);
    EXPECT_EQ(bar.GetPaneWidth(2), 0);
    EXPECT_EQ(Parts(), 3);
    EXPECT_GT(Width(1), 80);
    EXPECT_LT(Width(2), 10) << "no text, no room";
    const int first = Width(0);
    ASSERT_EQ(bar.SetPaneWidth(1, 120), 1);
    EXPECT_EQ(Width(0), first - 40);

    ASSERT_EQ(SetText(bar, 2, "OVR"), 1);
    EXPECT_EQ(bar.GetPaneWidth(2), bar.MeasureText("OVR"));
    EXPECT_GT(bar.GetPaneWidth(2), 10);
    EXPECT_EQ(Part(2), "OVR");
    EXPECT_LT(Width(0), first - 40);
    // Narrower than its panes, the bar shows what fits.
    frame.SetWindowPos(nullptr, 0, 0, 120, 200, SWP_NOZORDER | SWP_NOMOVE);
    const RECT client = bar.GetClientRect();
    for (int i = 0; i < 3; ++i)
        EXPECT_LE(bar.GetShownRect(i).right, client.right);
    EXPECT_EQ(bar.DeletePane(1), 1);
    EXPECT_EQ(Parts(), 2);
}

TEST_F(StatusBar, StylesChangeTheLook) {
    bar.InsertPane(1, 0, 0);
    SetText(bar, 1, "ready");
    struct Row {
        unsigned long style;
        UINT look;
        const char* text;
    };
    constexpr Row rows[] = {{SStatusBarPane::PopOut, SBT_POPOUT, "ready"},
                            {SStatusBarPane::NoBorders, SBT_NOBORDERS, "ready"},
                            {SStatusBarPane::Disabled, 0, ""},
                            {0, 0, "ready"}};
    for (const Row& row : rows) {
        EXPECT_EQ(bar.SetPaneStyle(1, row.style), 1);
        EXPECT_EQ(bar.GetPaneStyle(1), row.style);
        EXPECT_EQ(Part(1), row.text) << row.style;
        EXPECT_EQ(Look(1), row.look) << row.style;
    }
}

TEST_F(StatusBar, PanesShowTheirCommands) {
    constexpr UINT panes[] = {0, kLine, kOverwrite};
    ASSERT_EQ(bar.SetIndicators(panes, 3), 1);
    EXPECT_EQ(bar.SetIndicators(panes, 0), 0);
    SetText(bar, 2, "OVR");
    frame.ShowWindow(SW_SHOWNA);
    Update();
    EXPECT_EQ(Part(1), "Ln 12");
    EXPECT_EQ(Part(2), "") << "disabled";
    EXPECT_LT(Width(2), 10);
    frame.isOverwriting = true;
    Update();
    EXPECT_EQ(Part(2), "OVR");
    EXPECT_EQ(Look(2), UINT{SBT_POPOUT});
    // Updates stop with the bar.
    frame.endsInUpdate = &bar;
    Update();
    EXPECT_EQ(bar.GetHandle(), nullptr);
}

TEST_F(StatusBar, ALayoutStandsInForAllButTheFirstPane) {
    SetText(bar, 0, "message");
    bar.InsertPane(1, 0, 0);
    SetText(bar, 1, "own");
    SStatusBarLayout other(&bar);
    EXPECT_EQ(bar.GetExtraLayout(), &other);
    EXPECT_EQ(Parts(), 1);
    ASSERT_EQ(other.InsertPane(0, 0, kSized), 1);
    ASSERT_EQ(other.InsertPane(0, 0, 0), 1);
    EXPECT_EQ(SetText(other, 1, "late", 0), 1);
    EXPECT_EQ(Part(2), "") << "not before it is told to";
    EXPECT_EQ(other.GetPaneWidth(1), bar.MeasureText("late")) << "but measured";
    EXPECT_EQ(SetText(other, 0, "x"), 1);
    EXPECT_EQ(Part(1), "x");
    EXPECT_EQ(other.GetPaneText(0), "x");
    SString text;
    EXPECT_EQ(other.GetPaneText(1, &text), 1);
    EXPECT_EQ(text, "late");

    const SString message("reading");
    EXPECT_EQ(other.SetMainPaneText(&message, 1), 1);
    EXPECT_EQ(Part(0), "reading");
    EXPECT_EQ(bar.GetPaneText(-1), "reading");

    EXPECT_EQ(other.Activate(0), 1);
    EXPECT_EQ(bar.GetExtraLayout(), nullptr);
    EXPECT_EQ(Part(1), "own");
    EXPECT_EQ(other.GetStatusBar(), &bar) << "still attached";
    EXPECT_EQ(other.Activate(1), 1);
    EXPECT_EQ(Part(2), "late");
    EXPECT_EQ(other.DeletePane(0), 1);
    EXPECT_EQ(Part(1), "late");
    EXPECT_EQ(other.Detach(), &bar);
    EXPECT_EQ(Part(1), "own");
    EXPECT_EQ(other.Activate(1), 0);
    EXPECT_EQ(other.SetMainPaneText(&message, 1), 0);
    EXPECT_EQ(other.Detach(), nullptr);
}

TEST_F(StatusBar, BarAndLayoutEndInAnyOrder) {
    std::optional<SStatusBarLayout> first(&bar), second(&bar);
    EXPECT_EQ(bar.GetExtraLayout(), &*second);
    first.reset();
    EXPECT_EQ(bar.GetExtraLayout(), &*second);
    second.reset();
    EXPECT_EQ(bar.GetExtraLayout(), nullptr);

    SStatusBarLayout survivor;
    {
        SStatusBar shorter;
        EXPECT_EQ(survivor.Attach(&shorter), 1);
        EXPECT_EQ(survivor.InsertPane(0, 0, kSized), 1);
        EXPECT_EQ(SetText(survivor, 0, "x"), 1) << "without a window";
        EXPECT_EQ(survivor.SetMainPaneText(&survivor.GetPane(0).text, 1), 0);
        EXPECT_EQ(shorter.RecalcPanes(), 0);
        EXPECT_EQ(shorter.RefreshPanes(), 0);
        // From one bar to another.
        EXPECT_EQ(survivor.Attach(&bar), 1);
        EXPECT_EQ(shorter.GetExtraLayout(), nullptr);
        EXPECT_EQ(survivor.Attach(&shorter), 1);
        EXPECT_EQ(bar.GetExtraLayout(), nullptr);
    }
    EXPECT_EQ(survivor.GetStatusBar(), nullptr);
    EXPECT_EQ(survivor.GetPaneText(0), "x");
}

// Many panes, more than the control can number.
TEST_F(StatusBar, ShowsAsManyPanesAsThereAreNumbersFor) {
    for (int i = 0; i < 300; ++i)
        ASSERT_EQ(bar.InsertPane(1, 0, kSized), 1);
    EXPECT_EQ(bar.GetPaneCount(), 301);
    EXPECT_EQ(bar.GetShownCount(), Parts());
    EXPECT_EQ(SetText(bar, 300, "hidden"), 1);
}

TEST(BasicControls, ForwardToTheirWindows) {
    SFrameWnd frame;
    ASSERT_EQ(frame.CreateFrame("Controls"), 1);
    SProgressCtrl progress;
    ASSERT_EQ(progress.Create(0, RECT{0, 0, 100, 20}, &frame, 1), 1);
    progress.SetRange(-10, 90);
    EXPECT_EQ(progress.GetLower(), -10);
    EXPECT_EQ(progress.GetUpper(), 90);
    progress.SetPos(20);
    EXPECT_EQ(progress.OffsetPos(15), 20);
    EXPECT_EQ(progress.GetPos(), 35);
    progress.SetStep(5);
    progress.StepIt();
    EXPECT_EQ(progress.GetPos(), 40);

    SStatusBarCtrl status;
    ASSERT_EQ(status.Create(WS_VISIBLE, &frame, 2), 1);
    constexpr int edges[] = {50, 120, -1};
    EXPECT_EQ(status.SetParts(3, edges), 1);
    int read[3] = {};
    EXPECT_EQ(status.GetParts(3, read), 3);
    EXPECT_EQ(read[1], 120);
    EXPECT_EQ(status.SetText(1, "part", SBT_POPOUT), 1);
    UINT look = 0;
    EXPECT_EQ(status.GetText(1, &look), "part");
    EXPECT_EQ(look, UINT{SBT_POPOUT});
    EXPECT_EQ(status.GetRect(1).right, 120);
    int horizontal = -1, vertical = -1, between = -1;
    status.GetBorders(&horizontal, &vertical, &between);
    EXPECT_EQ(vertical, 2);
    EXPECT_EQ(between, 2);
    status.SetSimple(1);
    EXPECT_EQ(status.IsSimple(), 1);
}

}  // namespace
