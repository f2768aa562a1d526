#include <brcore8/core/cast.h>
#include <brcore8/views/docking.h>
#include <brcore8/views/help.h>
#include <brcore8/views/layout_map.h>
#include <brcore8/views/pane_windows.h>
#include <brcore8/views/view.h>
#include <brcore8/views/wnd_spy.h>

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <utility>

namespace {

class Panes : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200),
                  1);
    }
    static RECT PlaceIn(const SWnd& window, const SWnd& outer) {
        RECT rect = window.GetWindowRect();
        MapWindowPoints(nullptr, outer.GetHandle(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }

    SWnd parent;
};

constexpr RECT kAll{0, 0, 300, 200};

// Asks its splitter for its neighbour when it ends.
class STestPane : public SWnd {
    SDECLARE_CREATABLE(STestPane);
    SDECLARE_MESSAGE_MAP(STestPane);

public:
    static inline int asked = 0;

    STestPane() noexcept = default;
    ~STestPane() override {
        if (GetHandle() != nullptr) DestroyWindow();
    }
    int PreCreateWindow(CREATESTRUCT& create) override {
        create.lpszClass = "S_CtrlWnd";
        return 1;
    }

private:
    void OnDestroy() {
        auto* const splitter =
            static_cast<SSplitterWnd*>(FromHandlePermanent(::GetParent(GetHandle())));
        EXPECT_EQ(splitter->GetPane(0, 0), nullptr);
        EXPECT_EQ(splitter->CreatePane(1, 1, &SAboutView::m_SAboutView, {}), nullptr);
        ++asked;
    }
};
SIMPLEMENT_CREATABLE(STestPane, SWnd, 1);
SIMPLEMENT_MESSAGE_MAP(STestPane, SWnd, SOnDestroy<&STestPane::OnDestroy>());

TEST_F(Panes, APaneThatEndsFindsNoOthers) {
    SSplitterWnd splitter;
    ASSERT_EQ(splitter.CreateStatic(&parent, 2, 2, kAll, 1), 1);
    ASSERT_NE(splitter.CreatePane(0, 1, &STestPane::m_STestPane, {}), nullptr);
    STestPane::asked = 0;
    splitter.DestroyWindow();
    EXPECT_EQ(STestPane::asked, 1);
}

TEST_F(Panes, TheSizesOfPanesEndAtTheLargestWindow) {
    SSplitterWnd splitter;
    ASSERT_EQ(splitter.CreateStatic(&parent, 4, 4, kAll, 1), 1);
    ASSERT_NE(splitter.CreatePane(0, 0, &SAboutView::m_SAboutView, {INT_MAX, INT_MAX}), nullptr);
    EXPECT_EQ(splitter.GetRowHeight(0), int{SSplitterWnd::kLargest});
    EXPECT_EQ(splitter.GetColumnWidth(0), int{SSplitterWnd::kLargest});
    for (int i : {0, 1, 2, 3}) {
        EXPECT_EQ(splitter.SetRowHeight(i, INT_MAX), 1);
        EXPECT_EQ(splitter.SetColumnWidth(i, INT_MAX), 1);
    }
    EXPECT_EQ(splitter.GetRowHeight(1), int{SSplitterWnd::kLargest});
    EXPECT_EQ(splitter.GetColumnWidth(2), int{SSplitterWnd::kLargest});
    EXPECT_EQ(splitter.GetRowHeight(3), 0);
}

TEST_F(Panes, ASplitterMakesItsPanesAndIsDragged) {
    SSplitterWnd splitter;
    EXPECT_EQ(splitter.CreateStatic(&parent, 0, 2, kAll, 1), 0);
    ASSERT_EQ(splitter.CreateStatic(&parent, 1, 2, kAll, 1), 1);
    // Neither what is no window, nor what has no factory.
    EXPECT_EQ(splitter.CreatePane(0, 0, &SLayoutMap::m_SLayoutMap, {}), nullptr);
    EXPECT_EQ(splitter.CreatePane(0, 0, &SView::m_SView, {}), nullptr);
    EXPECT_EQ(splitter.CreatePane(0, 2, &SAboutView::m_SAboutView, {}), nullptr);
    SWnd* const left = splitter.CreatePane(0, 0, &SAboutView::m_SAboutView, {100, 0});
    SWnd* const right = splitter.CreatePane(0, 1, &SPreviewView::m_SPreviewView, {});
    ASSERT_NE(left, nullptr);
    ASSERT_NE(right, nullptr);
    EXPECT_EQ(splitter.CreatePane(0, 0, &SAboutView::m_SAboutView, {}), nullptr);
    EXPECT_EQ(splitter.GetPane(0, 1), right);
    EXPECT_TRUE(left->IsKindOf(&SAboutView::m_SAboutView));
    EXPECT_EQ(PlaceIn(*left, splitter).right, 100);
    EXPECT_EQ(PlaceIn(*right, splitter).left, 105);
    EXPECT_EQ(PlaceIn(*right, splitter).right, 300);

    splitter.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(102, 50));
    splitter.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(150, 50));
    splitter.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(150, 50));
    EXPECT_EQ(splitter.GetColumnWidth(0), 150);
    EXPECT_EQ(PlaceIn(*right, splitter).left, 155);
    splitter.SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(50, 50));
    EXPECT_EQ(splitter.GetColumnWidth(0), 150);
    splitter.SetColumnWidth(0, -5);
    EXPECT_EQ(splitter.GetColumnWidth(0), int{SSplitterWnd::kSmallest});
    splitter.DestroyWindow();
    EXPECT_EQ(splitter.GetPane(0, 0), nullptr);
}

TEST_F(Panes, PagesShowOneAtATime) {
    STabWnd tabs;
    EXPECT_EQ(tabs.AddPage("early", &SAboutView::m_SAboutView), -1);
    ASSERT_EQ(tabs.Create(WS_VISIBLE, kAll, &parent, 1), 1);
    EXPECT_EQ(tabs.AddPage("none", &SView::m_SView), -1);
    EXPECT_EQ(tabs.AddPage("one", &SAboutView::m_SAboutView), 0);
    EXPECT_EQ(tabs.AddPage("two", &SPreviewView::m_SPreviewView), 1);
    EXPECT_TRUE(tabs.GetPage(0)->IsWindowVisible());
    EXPECT_FALSE(tabs.GetPage(1)->IsWindowVisible());
    EXPECT_EQ(PlaceIn(*tabs.GetPage(1), tabs).top, int{STabBeam::kHeight});
    const RECT tab = tabs.GetTabs().GetTabRect(1);
    tabs.GetTabs().SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(tab.left + 2, 5));
    EXPECT_EQ(tabs.GetCurPage(), 1);
    EXPECT_TRUE(tabs.GetPage(1)->IsWindowVisible());
    EXPECT_FALSE(tabs.GetPage(0)->IsWindowVisible());
    EXPECT_EQ(tabs.SetCurPage(2), 0);

    STabExWnd late;
    ASSERT_EQ(late.Create(WS_VISIBLE, kAll, &parent, 2), 1);
    late.AddPage("one", &SAboutView::m_SAboutView);
    late.AddPage("two", &SAboutView::m_SAboutView);
    EXPECT_NE(late.GetPage(0), nullptr);
    EXPECT_EQ(late.GetPage(1), nullptr);
    EXPECT_EQ(late.SetCurPage(1), 1);
    EXPECT_NE(late.GetPage(1), nullptr);
    EXPECT_EQ(late.ClosePage(1), 1);
    EXPECT_EQ(late.GetPageCount(), 1);
    EXPECT_TRUE(late.GetPage(0)->IsWindowVisible());
    EXPECT_EQ(late.ClosePage(1), 0);
}

// A page that changes its tab window's pages while it is made.
class STestPage : public SWnd {
    SDECLARE_CREATABLE(STestPage);
    SDECLARE_MESSAGE_MAP(STestPage);

public:
    static inline std::function<void(STabExWnd&)> change;

    STestPage() noexcept = default;
    int PreCreateWindow(CREATESTRUCT& create) override {
        create.lpszClass = "S_CtrlWnd";
        return 1;
    }

private:
    int OnCreate(CREATESTRUCT* create) {
        if (const auto once = std::exchange(change, nullptr))
            once(*static_cast<STabExWnd*>(FromHandlePermanent(create->hwndParent)));
        return 0;
    }
};
SIMPLEMENT_CREATABLE(STestPage, SWnd, 1);
SIMPLEMENT_MESSAGE_MAP(STestPage, SWnd, SOnCreate<&STestPage::OnCreate>());

TEST_F(Panes, APageMayChangeThePagesWhileItIsMade) {
    const SClassInfo* const page = &STestPage::m_STestPage;
    STabExWnd tabs;
    ASSERT_EQ(tabs.Create(WS_VISIBLE, kAll, &parent, 1), 1);
    ASSERT_EQ(tabs.AddPage("first", &SAboutView::m_SAboutView), 0);
    ASSERT_EQ(tabs.AddPage("grows", page), 1);
    STestPage::change = [&](STabExWnd& made) {
        for (int i = 0; i < 100; ++i)
            EXPECT_EQ(made.AddPage("more", page), i + 2);
    };
    EXPECT_EQ(tabs.SetCurPage(1), 1);
    EXPECT_EQ(tabs.GetPageCount(), 102);
    EXPECT_EQ(tabs.GetCurPage(), 1);
    ASSERT_NE(tabs.GetPage(1), nullptr);
    EXPECT_TRUE(tabs.GetPage(1)->IsWindowVisible());
    EXPECT_EQ(tabs.GetPage(2), nullptr);

    STestPage::change = [](STabExWnd& made) {
        while (made.GetPageCount() > 1)
            made.ClosePage(made.GetPageCount() - 1);
    };
    EXPECT_EQ(tabs.SetCurPage(2), 0);
    EXPECT_EQ(tabs.GetPageCount(), 1);
    EXPECT_EQ(tabs.GetCurPage(), 0);

    // What is added to an empty one shows at once; what that adds comes behind it.
    STabExWnd other;
    ASSERT_EQ(other.Create(WS_VISIBLE, kAll, &parent, 2), 1);
    STestPage::change = [&](STabExWnd& made) { EXPECT_EQ(made.AddPage("second", page), 1); };
    EXPECT_EQ(other.AddPage("first", page), 0);
    EXPECT_EQ(other.GetPageCount(), 2);
}

TEST_F(Panes, DockedWindowsTakeTheirStripsAndFloat) {
    SDockHostWnd host;
    ASSERT_EQ(host.Create(WS_VISIBLE, kAll, &parent, 1), 1);
    SWnd* const center = host.CreateCenter(&SAboutView::m_SAboutView);
    ASSERT_NE(center, nullptr);
    SDockWnd left("Left"), bottom("Bottom");
    ASSERT_EQ(left.CreateDock(&host, &SAboutView::m_SAboutView), 1);
    ASSERT_EQ(bottom.CreateDock(&host, &SPreviewView::m_SPreviewView), 1);
    EXPECT_EQ(host.Dock(&left, SDockHostWnd::kLeft, 80), 1);
    EXPECT_EQ(host.Dock(&bottom, SDockHostWnd::kBottom, 50), 1);
    EXPECT_EQ(PlaceIn(left, host).right, 80);
    EXPECT_EQ(PlaceIn(left, host).bottom, 200);
    EXPECT_EQ(PlaceIn(bottom, host).left, 80);
    EXPECT_EQ(PlaceIn(bottom, host).top, 150);
    EXPECT_EQ(PlaceIn(*center, host).left, 80);
    EXPECT_EQ(PlaceIn(*center, host).bottom, 150);
    EXPECT_EQ(PlaceIn(*left.GetContent(), left).top, int{SDockWnd::kCaption});

    EXPECT_EQ(left.Float({50, 60, 200, 220}), 1);
    EXPECT_EQ(left.IsFloating(), 1);
    EXPECT_EQ(host.GetDockedCount(), 1);
    EXPECT_EQ(PlaceIn(*center, host).left, 0);
    SWnd* const frame = SWnd::FromHandlePermanent(GetParent(left.GetHandle()));
    ASSERT_NE(SCast<SMiniDockFrameWnd>(frame), nullptr);
    EXPECT_STREQ(frame->GetWindowText(), "Left");
    frame->SendMessage(WM_CLOSE);  // which puts it back
    EXPECT_EQ(left.IsFloating(), 0);
    EXPECT_EQ(host.GetDockedCount(), 2);
    EXPECT_EQ(PlaceIn(left, host).right, 300 - 220);
    EXPECT_EQ(host.Undock(&left), 1);
    EXPECT_EQ(host.Undock(&left), 0);
    host.DestroyWindow();
    EXPECT_EQ(left.GetHandle(), nullptr);
    EXPECT_EQ(left.DockBack(), 0);
}

TEST_F(Panes, DockedWindowsOutliveTheirHostAndTheOtherWayRound) {
    SDockWnd floating("Floating"), hidden("Hidden"), docked("Docked"), undocked("Undocked");
    {
        SDockHostWnd host;
        ASSERT_EQ(host.Create(WS_VISIBLE, kAll, &parent, 1), 1);
        for (SDockWnd* const window : {&floating, &hidden, &docked, &undocked})
            ASSERT_EQ(window->CreateDock(&host, &SAboutView::m_SAboutView), 1);
        for (SDockWnd* const window : {&floating, &docked, &undocked})
            ASSERT_EQ(host.Dock(window, SDockHostWnd::kLeft, 50), 1);
        EXPECT_EQ(host.Undock(&undocked), 1);
        ASSERT_EQ(floating.Float({50, 60, 200, 220}), 1);
        {
            SDockWnd brief("Brief"), gone("Gone");
            ASSERT_EQ(brief.CreateDock(&host, &SAboutView::m_SAboutView), 1);
            ASSERT_EQ(gone.CreateDock(&host, &SAboutView::m_SAboutView), 1);
            ASSERT_EQ(host.Dock(&brief, SDockHostWnd::kTop, 20), 1);
            gone.DestroyWindow();
        }
        EXPECT_EQ(host.GetDockedCount(), 1);
    }
    for (SDockWnd* const window : {&hidden, &docked, &undocked})
        EXPECT_EQ(window->GetHandle(), nullptr) << window->GetTitle();
    ASSERT_EQ(floating.IsFloating(), 1);
    SWnd* const frame = SWnd::FromHandlePermanent(GetParent(floating.GetHandle()));
    frame->SendMessage(WM_CLOSE);  // there is nothing left to put it back to
    EXPECT_EQ(floating.IsFloating(), 1);
    EXPECT_FALSE(frame->IsWindowVisible());
    EXPECT_EQ(floating.Float({50, 60, 200, 220}), 0);
}

TEST_F(Panes, AHostWithoutAWindowDocksNothing) {
    SDockHostWnd host;
    ASSERT_EQ(host.Create(WS_VISIBLE, kAll, &parent, 1), 1);
    SDockWnd window("Floating");
    ASSERT_EQ(window.CreateDock(&host, &SAboutView::m_SAboutView), 1);
    ASSERT_EQ(host.Dock(&window, SDockHostWnd::kLeft, 50), 1);
    ASSERT_EQ(window.Float({50, 60, 200, 220}), 1);
    host.DestroyWindow();
    EXPECT_EQ(window.DockBack(), 0);
    EXPECT_EQ(window.IsFloating(), 1);
}

TEST_F(Panes, FramesFloatAndSplash) {
    SFloatFrameWnd frame;
    ASSERT_EQ(frame.CreateFloat("Tools", {50, 50, 250, 200}, &parent), 1);
    SAboutView view;
    ASSERT_EQ(view.Create(0, {0, 0, 5, 5}, &parent, 1), 1);
    frame.SetContent(&view);
    EXPECT_EQ(frame.GetContent(), &view);
    EXPECT_EQ(view.GetParent(), &frame);
    EXPECT_EQ(view.GetClientRect().right, frame.GetClientRect().right);
    frame.MoveWindow({50, 50, 350, 300});
    EXPECT_EQ(view.GetClientRect().right, frame.GetClientRect().right);
    EXPECT_EQ(view.GetClientRect().bottom, frame.GetClientRect().bottom);

    SSplashWnd splash;
    ASSERT_EQ(splash.ShowSplash("Starting", nullptr, 0), 1);
    EXPECT_TRUE(splash.IsWindowVisible());
    splash.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    EXPECT_EQ(splash.GetHandle(), nullptr);
    ASSERT_EQ(splash.ShowSplash("Again", nullptr, 5), 1);
    splash.SendMessage(WM_TIMER, 1);
    EXPECT_EQ(splash.GetHandle(), nullptr);
}

TEST_F(Panes, DocumentsLiveInTheirFrameWhereTheSystemHasSuch) {
    SMDIFrameWnd frame;
    ASSERT_EQ(frame.CreateFrame("Documents"), 1);
    SMDIChildWnd first, second;
    EXPECT_EQ(first.CreateDocument("none", &frame), 0);
    if (!frame.CreateClient()) {
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CANNOT_FIND_WND_CLASS));
        return;
    }
    EXPECT_EQ(frame.CreateClient(), 0);
    frame.ShowWindow(SW_SHOWNOACTIVATE);
    ASSERT_EQ(first.CreateDocument("First", &frame), 1);
    ASSERT_EQ(second.CreateDocument("Second", &frame), 1);
    second.Activate();
    EXPECT_EQ(frame.GetActiveChild(), &second);
    first.Activate();
    EXPECT_EQ(frame.GetActiveChild(), &first);
}

TEST_F(Panes, ALayoutFollowsTheSizeOfItsWindow) {
    SWnd list, button;
    ASSERT_EQ(list.Create("S_CtrlWnd", "", WS_VISIBLE, {10, 10, 200, 150}, &parent, 5), 1);
    ASSERT_EQ(button.Create("S_CtrlWnd", "", WS_VISIBLE, {220, 170, 290, 190}, &parent, 6), 1);
    SLayoutMap layout;
    EXPECT_EQ(layout.Add(5, {}), 0);
    ASSERT_EQ(layout.Attach(&parent), 1);
    EXPECT_EQ(layout.Add(5, {0, 0, 100, 50}), 1);
    EXPECT_EQ(layout.Add(6, {100, 100, 0, 0}), 1);
    EXPECT_EQ(layout.Add(7, {}), 0);
    parent.SetWindowPos(nullptr, 0, 0, 340, 220, SWP_NOZORDER | SWP_NOACTIVATE);
    layout.Apply();
    EXPECT_EQ(PlaceIn(list, parent).right, 240);
    EXPECT_EQ(PlaceIn(list, parent).bottom, 160);
    EXPECT_EQ(PlaceIn(button, parent).left, 260);
    EXPECT_EQ(PlaceIn(button, parent).bottom, 210);
    // No remainder stays behind.
    parent.SetWindowPos(nullptr, 0, 0, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    layout.Apply();
    EXPECT_EQ(PlaceIn(list, parent).right, 200);
    button.DestroyWindow();
    layout.Apply();
}

TEST_F(Panes, ASpyListsWindowsInTheirOrder) {
    SAboutView view;
    ASSERT_EQ(view.Create(WS_VISIBLE, kAll, &parent, 1), 1);
    SWnd inner;
    ASSERT_EQ(inner.Create("S_CtrlWnd", "inner", WS_VISIBLE, {5, 5, 9, 9}, &view, 2), 1);
    const std::vector<SWndSpy::Entry> entries = SWndSpy().Look(parent.GetHandle());
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].window, view.GetHandle());
    EXPECT_STREQ(entries[1].wrapper, "SAboutView");
    EXPECT_EQ(entries[2].depth, 2);
    EXPECT_STREQ(entries[2].className, "S_CtrlWnd");
    EXPECT_STREQ(entries[2].text, "inner");
    const std::string lines(SWndSpy().Describe(parent.GetHandle()).View());
    EXPECT_NE(lines.find("    S_CtrlWnd SWnd \"inner\" (15, 15, 19, 19)"), std::string::npos)
        << lines;
    EXPECT_TRUE(SWndSpy().Look(nullptr).empty());
}

class STestHelp : public SHelp {
public:
    std::string shown;

protected:
    int OnShow(const SString& file, const SString& page) override {
        shown = std::string(file.View()) + "|" + std::string(page.View());
        return 1;
    }
};

TEST(Help, TheFirstModuleWithAPageIsAsked) {
    SHelpModule core("core.chm", 1, 99), program("program.chm", 50, 200);
    EXPECT_EQ(core.AddTopic(60, "shared.htm"), 1);
    EXPECT_EQ(core.AddTopic(100, "beyond.htm"), 0);
    program.AddTopic(60, "own.htm");
    program.AddTopic(150, "open.htm");
    STestHelp help;
    EXPECT_EQ(help.Show(60), 0);
    help.AddModule(&program);
    help.AddModule(&core);
    help.AddModule(&program);
    EXPECT_EQ(help.Show(60), 1);
    EXPECT_EQ(help.shown, "program.chm|own.htm");
    EXPECT_EQ(help.RemoveModule(&program), 1);
    EXPECT_EQ(help.RemoveModule(&program), 0);
    EXPECT_EQ(help.Show(60), 1);
    EXPECT_EQ(help.shown, "core.chm|shared.htm");
    EXPECT_EQ(help.Show(150), 0);
}

}  // namespace
