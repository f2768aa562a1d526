// Menus at work: items brought up to date, keys that stand for commands, and the user in a menu.

#include <brcore8/app/frame_wnd.h>
#include <brcore8/window/menu_cmd_ui.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr UINT kSave = 100, kSnap = 101, kSmall = 102, kLarge = 103, kNobody = 104, kName = 105;

class STestMenuFrame : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(STestMenuFrame);

public:
    std::string log;
    bool canSave = false;
    void (*inInit)(STestMenuFrame&) = nullptr;

private:
    void OnSave() { log += "save;"; }
    void OnSnap() { log += "snap;"; }
    void OnZoom(UINT id) { log.append("size ").append(std::to_string(id)).append(";"); }
    void OnUpdateSave(SCmdUI* ui) { ui->Enable(canSave); }
    void OnUpdateSnap(SCmdUI* ui) { ui->SetCheck(1); }
    void OnUpdateSize(SCmdUI* ui, UINT id) { ui->SetRadio(id == kLarge); }
    void OnUpdateName(SCmdUI* ui) {
        EXPECT_NE(ui->GetMenu(), nullptr);
        ui->SetText("Renamed\tF2");
    }
    void OnInitMenu(SMenu*) {
        log += "init;";
        if (inInit != nullptr) inInit(*this);
    }
    LRESULT OnExit(WPARAM, LPARAM) {
        log += "exit;";
        return 0;
    }
};
SIMPLEMENT_MESSAGE_MAP(STestMenuFrame, SFrameWnd, SOnCommand<&STestMenuFrame::OnSave>(kSave),
                       SOnCommand<&STestMenuFrame::OnSnap>(kSnap),
                       SOnCommandRange<&STestMenuFrame::OnZoom>(kSmall, kLarge),
                       SOnCommand<&STestMenuFrame::OnSnap>(kName),
                       SOnUpdate<&STestMenuFrame::OnUpdateSave>(kSave),
                       SOnUpdate<&STestMenuFrame::OnUpdateSnap>(kSnap),
                       SOnUpdateRange<&STestMenuFrame::OnUpdateSize>(kSmall, kLarge),
                       SOnUpdate<&STestMenuFrame::OnUpdateName>(kName),
                       SOnInitMenu<&STestMenuFrame::OnInitMenu>(),
                       SOnMessage<&STestMenuFrame::OnExit>(WM_EXITMENULOOP));

// Deletes itself with its window, which the question about an item closes.
class STestPassingFrame : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(STestPassingFrame);

public:
    explicit STestPassingFrame(int& asked) : asked_(asked) {}

protected:
    void PostNcDestroy() override { delete this; }

private:
    void OnUpdate(SCmdUI*, UINT id) {
        ++asked_;
        if (id == kSnap) DestroyWindow();
    }

    int& asked_;
};
SIMPLEMENT_MESSAGE_MAP(STestPassingFrame, SFrameWnd,
                       SOnUpdateRange<&STestPassingFrame::OnUpdate>(kSave, kLarge));

class MenuCommands : public testing::Test {
protected:
    MenuCommands() {
        EXPECT_EQ(frame.CreateFrame("Menus"), 1);
        popup.CreatePopupMenu();
        for (const UINT id : {kSave, kSnap, kSmall, kLarge, kNobody, kName})
            popup.AppendMenu(MF_STRING, id, std::to_string(id).c_str());
        popup.InsertMenu(2, MF_BYPOSITION | MF_SEPARATOR);
        bar.CreateMenu();
        bar.AppendMenu(MF_STRING, popup, "&Plan");
        frame.SetMenu(&bar);
        frame.ShowWindow(SW_SHOWNORMAL);
        Drain();
        frame.log.clear();
    }
    ~MenuCommands() override {
        if (frame.GetHandle() != nullptr) frame.DestroyWindow();
        SMenu::DeleteTempMap();
        Drain();
    }
    static void Drain() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    void Type(std::initializer_list<int> keys) {
        for (const int key : keys)
            frame.PostMessage(WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    }

    SMenu bar, popup;
    STestMenuFrame frame;
};

bool Is(SMenu& menu, UINT id, UINT bit) {
    return (menu.GetMenuState(id, MF_BYCOMMAND) & bit) != 0;
}

TEST_F(MenuCommands, ItemsAskHowTheyAreToLook) {
    frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup.GetHandle()));
    EXPECT_TRUE(Is(popup, kSave, MF_GRAYED));
    EXPECT_TRUE(Is(popup, kSnap, MF_CHECKED));
    EXPECT_FALSE(Is(popup, kSnap, MF_GRAYED)) << "it has a handler";
    EXPECT_TRUE(Is(popup, kNobody, MF_GRAYED)) << "it has none";
    EXPECT_FALSE(Is(popup, kSmall, MF_CHECKED));
    EXPECT_TRUE(Is(popup, kLarge, MF_CHECKED));
    EXPECT_STREQ(popup.GetMenuString(kName, MF_BYCOMMAND), "Renamed\tF2");
    MENUITEMINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE;
    EXPECT_TRUE(popup.GetMenuItemInfo(kLarge, &info));
    EXPECT_NE(info.fType & MFT_RADIOCHECK, 0u);
    frame.canSave = true;
    frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup.GetHandle()));
    EXPECT_FALSE(Is(popup, kSave, MF_GRAYED));
    // The system's menu is not asked.
    popup.EnableMenuItem(kSave, MF_GRAYED);
    frame.SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup.GetHandle()),
                      MAKELPARAM(0, 1));
    EXPECT_TRUE(Is(popup, kSave, MF_GRAYED));
}

TEST_F(MenuCommands, AnItemsHandlerMayEndTheFrame) {
    int asked = 0;
    auto* const passing = new STestPassingFrame(asked);
    ASSERT_EQ(passing->CreateFrame("Passing"), 1);
    const HWND handle = passing->GetHandle();
    // The menu belongs to no window and lives on.
    passing->SendMessage(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup.GetHandle()));
    EXPECT_FALSE(IsWindow(handle));
    EXPECT_EQ(asked, 2) << "kSave and kSnap";
    EXPECT_TRUE(Is(popup, kSave, MF_GRAYED)) << "no command handles it";
    for (const UINT id : {kSnap, kSmall, kLarge, kNobody})
        EXPECT_FALSE(Is(popup, id, MF_GRAYED)) << id;
}

TEST_F(MenuCommands, KeysStandForCommandsThatAreAllowed) {
    ACCEL keys[] = {{FVIRTKEY, 'S', kSave},
                    {FVIRTKEY, VK_F2, kSnap},
                    {0, 'x', kSmall},
                    {FVIRTKEY | FSHIFT, VK_F3, kLarge}};
    EXPECT_EQ(CreateAcceleratorTableA(keys, 0), nullptr);
    const HACCEL table = CreateAcceleratorTableA(keys, 4);
    ASSERT_NE(table, nullptr);
    ACCEL copy[4] = {};
    EXPECT_EQ(CopyAcceleratorTableA(table, nullptr, 0), 4);
    EXPECT_EQ(CopyAcceleratorTableA(table, copy, 3), 3);
    EXPECT_EQ(copy[2].cmd, kSmall);
    const struct {
        const char* name;
        UINT message;
        WPARAM key;
        bool canSave;
        int taken;
        const char* log;
    } rows[] = {
        {"a command", WM_KEYDOWN, VK_F2, false, 1, "init;snap;"},
        {"one that is disabled", WM_KEYDOWN, 'S', false, 1, "init;"},
        {"and allowed", WM_KEYDOWN, 'S', true, 1, "init;save;"},
        {"another key", WM_KEYDOWN, 'T', true, 0, ""},
        {"the key goes up", WM_KEYUP, VK_F2, true, 0, ""},
        {"Shift is missing", WM_KEYDOWN, VK_F3, true, 0, ""},
        {"a character", WM_CHAR, 'x', true, 1, "init;size 102;"},
        {"another", WM_CHAR, 'X', true, 0, ""},
    };
    frame.SetAccelTable(table);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        frame.log.clear();
        frame.canSave = row.canSave;
        MSG message{};
        message.hwnd = frame.GetHandle();
        message.message = row.message;
        message.wParam = row.key;
        EXPECT_EQ(SWnd::WalkPreTranslateTree(frame.GetHandle(), &message), row.taken);
        EXPECT_EQ(frame.log, row.log);
    }
    EXPECT_TRUE(DestroyAcceleratorTable(table));
    EXPECT_FALSE(DestroyAcceleratorTable(table));
    MSG message{};
    message.hwnd = frame.GetHandle();
    message.message = WM_KEYDOWN;
    message.wParam = VK_F2;
    EXPECT_EQ(frame.PreTranslateMessage(&message), 0) << "the table is gone";
}

TEST_F(MenuCommands, APopupIsLeftWithACommandOrWithout) {
    frame.canSave = true;
    const struct {
        const char* name;
        std::initializer_list<int> keys;
        int chosen;
    } rows[] = {
        {"the first", {VK_DOWN, VK_RETURN}, kSave},
        {"over the separator", {VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN}, kSmall},
        {"the last", {VK_UP, VK_RETURN}, kName},
        {"left", {VK_DOWN, VK_ESCAPE}, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        frame.log.clear();
        Type(row.keys);
        EXPECT_EQ(popup.TrackPopupMenu(TPM_RETURNCMD, 50, 50, &frame), row.chosen);
        EXPECT_EQ(frame.log, "init;exit;");
        EXPECT_EQ(FindWindowA("#32768", nullptr), nullptr);
        EXPECT_EQ(GetCapture(), nullptr);
        Drain();
    }
    Type({VK_DOWN, VK_RETURN});
    frame.log.clear();
    EXPECT_TRUE(popup.TrackPopupMenu(0, 50, 50, &frame));
    Drain();
    EXPECT_EQ(frame.log, "init;exit;save;") << "the command comes as a message";
}

TEST_F(MenuCommands, TheBarIsEnteredByKeyboard) {
    frame.canSave = true;
    Type({VK_DOWN, VK_DOWN, VK_RETURN});
    frame.SendMessage(WM_SYSCOMMAND, SC_KEYMENU, 0);
    Drain();
    EXPECT_EQ(frame.log, "init;exit;snap;");
    frame.log.clear();
    Type({VK_ESCAPE, VK_ESCAPE});
    frame.SendMessage(WM_SYSCOMMAND, SC_KEYMENU, 'p');
    Drain();
    EXPECT_EQ(frame.log, "init;exit;");
}

TEST_F(MenuCommands, WhatIsTrackedMayGo) {
    frame.inInit = [](STestMenuFrame& self) { self.GetMenu()->GetSubMenu(0)->DestroyMenu(); };
    Type({VK_DOWN, VK_ESCAPE, VK_ESCAPE});
    popup.TrackPopupMenu(TPM_RETURNCMD, 50, 50, &frame);
    EXPECT_FALSE(popup.IsMenu());
    EXPECT_EQ(FindWindowA("#32768", nullptr), nullptr);
    Drain();
    frame.inInit = [](STestMenuFrame& self) { self.DestroyWindow(); };
    frame.SendMessage(WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_EQ(frame.GetHandle(), nullptr);
    EXPECT_EQ(FindWindowA("#32768", nullptr), nullptr);
}

}  // namespace
