// Whom a frame asks about a command, and what the idle passes touch.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>
#include <brcore8/bars/status_bar.h>
#include <brcore8/bars/tool_bar.h>
#include <brcore8/window/menu_cmd_ui.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

// Who has a handler: commands 1 to 4 by the digits of what is left when the earlier ones lack it.
enum Command : UINT { kAll = 1, kViewAndApp, kAppAlone, kNobody, kLeftByFrame, kEndsFrame };

std::string g_handled;

class STestRouteApp : public SWinApp {
    SDECLARE_CLASS(STestRouteApp);
    SDECLARE_MESSAGE_MAP(STestRouteApp);

    void On(UINT id) { g_handled += "app " + std::to_string(id) + ";"; }
    void OnUpdate(SCmdUI*) { g_handled += "app updates;"; }
};
SIMPLEMENT_CLASS(STestRouteApp, SWinApp, 1);
SIMPLEMENT_MESSAGE_MAP(STestRouteApp, SWinApp, SOnCommandRange<&STestRouteApp::On>(kAll, kAppAlone),
                       SOnCommandRange<&STestRouteApp::On>(kLeftByFrame, kEndsFrame),
                       SOnUpdate<&STestRouteApp::OnUpdate>(kAll));

class STestRouteView : public SWnd {
    SDECLARE_CLASS(STestRouteView);
    SDECLARE_MESSAGE_MAP(STestRouteView);

    void On(UINT id) { g_handled += "view " + std::to_string(id) + ";"; }
    void OnUpdate(SCmdUI* ui) {
        g_handled += "view updates;";
        ui->ContinueRouting();
    }
};
SIMPLEMENT_CLASS(STestRouteView, SWnd, 1);
SIMPLEMENT_MESSAGE_MAP(STestRouteView, SWnd,
                       SOnCommandRange<&STestRouteView::On>(kAll, kViewAndApp),
                       SOnCommandRange<&STestRouteView::On>(kLeftByFrame, kEndsFrame),
                       SOnUpdate<&STestRouteView::OnUpdate>(kAll));

class STestRouteFrame : public SFrameWnd {
    SDECLARE_CLASS(STestRouteFrame);
    SDECLARE_MESSAGE_MAP(STestRouteFrame);

public:
    bool deletesItself = false;

protected:
    void PostNcDestroy() override {
        if (deletesItself) delete this;
    }

private:
    void On(UINT id) { g_handled += "frame " + std::to_string(id) + ";"; }
    int Leave() {
        g_handled += "frame leaves;";
        return 0;
    }
    int End() {
        g_handled += "frame ends;";
        DestroyWindow();
        return 0;
    }
};
SIMPLEMENT_CLASS(STestRouteFrame, SFrameWnd, 1);
SIMPLEMENT_MESSAGE_MAP(STestRouteFrame, SFrameWnd,
                       SOnCommandRange<&STestRouteFrame::On>(kAll, kAll),
                       SOnCommandEx<&STestRouteFrame::Leave>(kLeftByFrame),
                       SOnCommandEx<&STestRouteFrame::End>(kEndsFrame));

class FrameRouting : public testing::Test {
protected:
    void SetUp() override {
        g_handled.clear();
        ASSERT_EQ(frame.CreateFrame("Routing"), 1);
        ASSERT_EQ(MakeView(view), 1);
    }
    int MakeView(SWnd& window) {
        return window.Create("S_CliDrawWnd", nullptr, WS_VISIBLE, RECT{0, 0, 9, 9}, &frame,
                             SFrameWnd::ViewId);
    }
    std::string Send(UINT id) {
        g_handled.clear();
        const int result = static_cast<SCmdTarget&>(frame).OnCmdMsg(id, 0, nullptr, nullptr);
        return g_handled + std::to_string(result);
    }
    std::string Whose(UINT id, int packed = 0) {
        const S_CMDHANDLERINFO info = SFindCommandHandler(frame, id, packed);
        return info.target != nullptr ? info.target->GetClassInfo()->className : "nobody's";
    }

    STestRouteApp app;
    STestRouteFrame frame;
    STestRouteView view;
};

TEST_F(FrameRouting, TheFrameThenItsViewThenTheApplication) {
    EXPECT_EQ(Send(kAll), "frame 1;1");
    EXPECT_EQ(Send(kViewAndApp), "view 2;1");
    EXPECT_EQ(Send(kAppAlone), "app 3;1");
    EXPECT_EQ(Send(kNobody), "0");
    EXPECT_EQ(Send(kLeftByFrame), "frame leaves;view 5;1");
    // Updates go the same way, on from who asks for that.
    SMenuCmdUI element;
    element.SetElement(kAll, 0, nullptr);
    element.DoUpdate(&frame, 0);
    EXPECT_EQ(g_handled, "frame leaves;view 5;view updates;app updates;");
}

TEST_F(FrameRouting, WhoHandlesACommandIsToldAndNobodyCalled) {
    g_handled.clear();
    EXPECT_EQ(Whose(kAll), "STestRouteFrame");
    EXPECT_EQ(Whose(kViewAndApp), "STestRouteView");
    EXPECT_EQ(Whose(kAppAlone), "STestRouteApp");
    EXPECT_EQ(Whose(kNobody), "nobody's");
    EXPECT_EQ(Whose(kAll, kUpdateRequest), "STestRouteView");
    EXPECT_EQ(Whose(kViewAndApp, kUpdateRequest), "nobody's");
    const S_CMDHANDLERINFO info = SFindCommandHandler(frame, kViewAndApp);
    EXPECT_EQ(info.target, &view);
    EXPECT_EQ(g_handled, "");
    ASSERT_NE(info.handler.word, nullptr);
    info.handler.word(info.target, 77);
    EXPECT_EQ(g_handled, "view 77;");
}

TEST_F(FrameRouting, AViewThatIsGoneIsNotAsked) {
    auto set = std::make_unique<STestRouteView>();
    frame.SetView(set.get());
    EXPECT_EQ(Whose(kViewAndApp), "STestRouteApp") << "it has no window yet";
    EXPECT_EQ(frame.GetView(), nullptr);
    ASSERT_EQ(MakeView(*set), 1);
    EXPECT_EQ(SFindCommandHandler(frame, kViewAndApp).target, set.get());
    EXPECT_EQ(frame.GetView(), set.get());
    set->DestroyWindow();
    EXPECT_EQ(frame.GetView(), nullptr);
    EXPECT_EQ(Whose(kViewAndApp), "STestRouteApp");
    ASSERT_EQ(MakeView(*set), 1);
    EXPECT_EQ(SFindCommandHandler(frame, kViewAndApp).target, set.get());
    set.reset();
    EXPECT_EQ(frame.GetView(), nullptr);
    EXPECT_EQ(Whose(kViewAndApp), "STestRouteApp");
    frame.RecalcLayout();
    frame.SetView(nullptr);
    EXPECT_EQ(SFindCommandHandler(frame, kViewAndApp).target, &view);
}

TEST_F(FrameRouting, AHandlerThatLeavesACommandMayEndTheFrame) {
    auto* const other = new STestRouteFrame;
    other->deletesItself = true;
    ASSERT_EQ(other->CreateFrame("Ends"), 1);
    g_handled.clear();
    EXPECT_EQ(static_cast<SCmdTarget*>(other)->OnCmdMsg(kEndsFrame, 0, nullptr, nullptr), 1);
    EXPECT_EQ(g_handled, "frame ends;app 6;");
}

// --- Idle passes --------------------------------------------------------------------------------

constexpr UINT kTick = 10, kShort = 11, kGrey = 12, kLine = 13, kUnknown = 14;

// Counts what is painted of it, and what it is told besides.
template <class Window>
class Counting : public Window {
public:
    int paints = 0;
    int told = 0;
    void Forget() { paints = told = 0; }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_PAINT:
            case WM_NCPAINT:
            case WM_ERASEBKGND:
                ++paints;
                break;
            case BM_SETCHECK:
            case WM_ENABLE:
            case WM_CANCELMODE:
            case SB_SETTEXTA:
            case SB_SETPARTS:
                ++told;
                break;
            default:
                break;
        }
        return Window::WindowProc(message, wParam, lParam);
    }
};

class STestIdleFrame : public Counting<SFrameWnd> {
    SDECLARE_MESSAGE_MAP(STestIdleFrame);

public:
    bool isTicked = true;
    std::string line = "Ln 1";
    SWnd* check = nullptr;
    SWnd* push = nullptr;
    SMenu* popup = nullptr;

private:
    void On(UINT) {}
    void OnUpdateTick(SCmdUI* ui) { ui->SetCheck(isTicked); }
    void OnUpdateShort(SCmdUI* ui) { ui->SetRadio(isTicked); }
    void OnUpdateGrey(SCmdUI* ui) { ui->Enable(!isTicked); }
    void OnUpdateLine(SCmdUI* ui) {
        ui->SetText(line.c_str());
        ui->Enable(1);
        ui->SetCheck(0);
    }
    // A frame's own controls and menu follow in idle time too.
    void OnIdleUpdate(BOOL disableIfNoHandler) {
        SSysCmdUI element;
        element.SetElement(kTick, 0, check);
        element.DoUpdate(this, disableIfNoHandler);
        element.SetElement(kGrey, 0, push);
        element.DoUpdate(this, disableIfNoHandler);
        SUpdateMenu(popup, this, disableIfNoHandler);
    }
};
SIMPLEMENT_MESSAGE_MAP(STestIdleFrame, SFrameWnd, SOnIdleUpdate<&STestIdleFrame::OnIdleUpdate>(),
                       SOnCommandRange<&STestIdleFrame::On>(kTick, kGrey),
                       SOnUpdate<&STestIdleFrame::OnUpdateTick>(kTick),
                       SOnUpdate<&STestIdleFrame::OnUpdateShort>(kShort),
                       SOnUpdate<&STestIdleFrame::OnUpdateGrey>(kGrey),
                       SOnUpdate<&STestIdleFrame::OnUpdateLine>(kLine));

class IdlePaints : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(frame.CreateFrame("Idle"), 1);
        ASSERT_EQ(menu.CreateMenu() + popup.CreatePopupMenu(), 2);
        for (const UINT command : {kTick, kShort, kGrey, kUnknown})
            popup.AppendMenu(MF_STRING, command, "Item");
        menu.AppendMenu(MF_STRING, popup, "&Items");
        frame.SetMenu(&menu);
        frame.popup = &popup;
        for (const UINT command : {kTick, kShort, kGrey, kUnknown})
            tools.AddButton(command, "Tool");
        ASSERT_EQ(tools.Create(&frame, SCtrlBar::Top, 28, 90), 1);
        ASSERT_EQ(
            status.Create(&frame, WS_CHILD | WS_VISIBLE, SBARS_SIZEGRIP, SStatusBar::DefaultId), 1);
        status.InsertPane(1, kLine, SStatusBarPane::SizeToText);
        constexpr DWORD look = WS_CHILD | WS_VISIBLE;
        ASSERT_EQ(check.CreateEx(0, "BUTTON", "Check", look | BS_CHECKBOX, 5, 50, 80, 20,
                                 frame.GetHandle()),
                  1);
        ASSERT_EQ(push.CreateEx(0, "BUTTON", "Push", look, 95, 50, 80, 20, frame.GetHandle()), 1);
        frame.check = &check;
        frame.push = &push;
        app.SetMainWnd(&frame);
        frame.ShowWindow(SW_SHOWNOACTIVATE);
        Idle();
        Idle();
    }
    // Both passes, and what they have left to paint.
    void Idle() {
        frame.Forget();
        tools.Forget();
        status.Forget();
        check.Forget();
        push.Forget();
        needsPaint = 0;
        app.OnIdle(0);
        app.OnIdle(1);
        const SWnd* const windows[] = {&frame, &tools, &status, &check, &push};
        for (const SWnd* const window : windows)
            needsPaint += ::GetUpdateRect(window->GetHandle(), nullptr, 0) != 0;
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }

    SWinApp app;
    STestIdleFrame frame;
    SMenu menu, popup;
    Counting<SToolBar> tools;
    Counting<SStatusBar> status;
    Counting<SWnd> check, push;
    int needsPaint = 0;
};

TEST_F(IdlePaints, WhatHasNotChangedIsLeftAlone) {
    for (int pass = 0; pass < 3; ++pass) {
        Idle();
        EXPECT_EQ(needsPaint, 0);
        EXPECT_EQ(frame.paints + tools.paints + status.paints + check.paints + push.paints, 0);
        EXPECT_EQ(status.told + push.told, 0);
    }
    // A check box is told its mark, and paints it only when it is another.
    EXPECT_EQ(check.told, 1);
    EXPECT_EQ(tools.IsChecked(kTick) + tools.IsChecked(kShort), 2);
    EXPECT_EQ(tools.IsEnabled(kGrey) + tools.IsEnabled(kUnknown), 0);
    EXPECT_EQ(status.GetPaneText(1), "Ln 1");
}

TEST_F(IdlePaints, WhatHasChangedIsShown) {
    frame.line = "Ln 200";
    Idle();
    EXPECT_GT(status.told, 0);
    EXPECT_GT(status.paints, 0);
    EXPECT_EQ(tools.paints + check.paints, 0);
    frame.isTicked = false;
    Idle();
    EXPECT_GT(tools.paints, 0);
    EXPECT_EQ(check.SendMessage(BM_GETCHECK), BST_UNCHECKED);
    EXPECT_EQ(push.told, 1);
    EXPECT_TRUE(push.IsWindowEnabled());
    EXPECT_EQ(status.paints, 0);
    EXPECT_EQ(popup.GetMenuState(kGrey, MF_BYCOMMAND) & MF_GRAYED, 0u);
    EXPECT_EQ(popup.GetMenuState(kTick, MF_BYCOMMAND) & MF_CHECKED, 0u);
    Idle();
    EXPECT_EQ(needsPaint, 0);
}

}  // namespace
