#include <brcore8/app/frame_wnd.h>
#include <brcore8/bars/tool_bar.h>
#include <brcore8/graphics/window_dc.h>
#include <brcore8/routing/cmd_ui.h>

#include <gtest/gtest.h>

namespace {

class STestCommands : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(STestCommands);

public:
    int opened = 0;
    int isBold = 0;

private:
    void OnOpen() { ++opened; }
    void OnBold() { isBold = !isBold; }
    void OnUpdateBold(SCmdUI* ui) { ui->SetCheck(isBold); }
    void OnUpdateCut(SCmdUI* ui) { ui->Enable(0); }
};
SIMPLEMENT_MESSAGE_MAP(STestCommands, SFrameWnd, SOnCommand<&STestCommands::OnOpen>(100),
                       SOnCommand<&STestCommands::OnBold>(200),
                       SOnUpdate<&STestCommands::OnUpdateBold>(200),
                       SOnUpdate<&STestCommands::OnUpdateCut>(300));

void Click(SToolBar& bar, int index) {
    const RECT rect = bar.GetButtonRect(index);
    const LPARAM at = MAKELPARAM(rect.left + 2, rect.top + 2);
    bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at);
    bar.SendMessage(WM_LBUTTONUP, 0, at);
}

TEST(ToolBar, ButtonsSendCommandsAndFollowTheirUpdates) {
    STestCommands frame;
    ASSERT_EQ(frame.CreateFrame("Tools"), 1);
    SToolBar bar;
    EXPECT_EQ(bar.AddButton(0, "none"), 0);
    bar.AddButton(100, "Open");
    bar.AddSeparator();
    bar.AddButton(200, "Bold");
    bar.AddButton(300, "Cut");
    bar.AddButton(400, "Unknown");
    ASSERT_EQ(bar.Create(&frame, SCtrlBar::Top, 28, 90), 1);
    frame.RecalcLayout();
    EXPECT_EQ(bar.GetClientRect().right, frame.GetClientRect().right);
    EXPECT_EQ(bar.GetClientRect().bottom, 28);
    EXPECT_EQ(bar.GetCommand(1), 0u);

    Click(bar, 0);
    EXPECT_EQ(frame.opened, 1);
    Click(bar, 1);
    Click(bar, 2);
    EXPECT_EQ(frame.isBold, 1);
    bar.OnUpdateCmdUI(&frame, 1);
    EXPECT_EQ(bar.IsChecked(200), 1);
    EXPECT_EQ(bar.IsEnabled(100), 1);
    EXPECT_EQ(bar.IsEnabled(300), 0);
    EXPECT_EQ(bar.IsEnabled(400), 0);
    Click(bar, 3);
    // Released beside it, a button was not clicked.
    const RECT rect = bar.GetButtonRect(0);
    bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(rect.left + 2, rect.top + 2));
    bar.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(rect.left + 2, 200));
    EXPECT_EQ(frame.opened, 1);
    EXPECT_EQ(bar.HitTest({500, 5}), -1);
}

TEST(ToolBar, ImagesStandForTheirCommands) {
    STestCommands frame;
    ASSERT_EQ(frame.CreateFrame("Tools"), 1);
    SScreenDC screen;
    SBitmap picture;
    ASSERT_EQ(picture.CreateCompatible(screen, 16, 16), 1);
    {
        SDC dc;
        ASSERT_EQ(dc.CreateCompatibleDC(&screen), 1);
        const SSelected selected(dc, picture);
        dc.FillSolidRect({0, 0, 16, 16}, RGB(0, 200, 0));
    }
    SImageListEx images;
    ASSERT_EQ(images.Create(16, 16), 1);
    const UINT command = 100;
    ASSERT_EQ(images.Add(picture, RGB(255, 0, 255), &command, 1), 0);
    SToolBar bar;
    bar.AddButton(100, "Open");
    bar.AddButton(200, "Bold");
    bar.SetImages(&images);
    ASSERT_EQ(bar.Create(&frame, SCtrlBar::Top, 28, 90), 1);
    frame.RecalcLayout();
    frame.ShowWindow(SW_SHOWNOACTIVATE);
    bar.UpdateWindow();
    const RECT first = bar.GetButtonRect(0);
    EXPECT_EQ(first.right - first.left, 16 + 8);
    EXPECT_EQ(SClientDC(&bar).GetPixel((first.left + first.right) / 2, 14), RGB(0, 200, 0));
}

}  // namespace
