// How menus are entered in vain, and left while a handler runs.

#include <brcore8/platform/windows.h>

#include <gtest/gtest.h>

#include <string>

#include "dialogs/template.h"

namespace {

constexpr UINT kOpen = 100, kDeep = 101;

std::string g_log;
HMENU g_deep = nullptr;
LRESULT g_menuChar = 0;
void (*g_inMenu)(HWND) = nullptr;

bool IsPopupShown() {
    const HWND popup = FindWindowA("#32768", nullptr);
    return popup != nullptr && IsWindowVisible(popup);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ENTERMENULOOP:
            g_log += "enter;";
            break;
        case WM_EXITMENULOOP:
            g_log += "exit;";
            break;
        case WM_INITMENUPOPUP:
            g_log += reinterpret_cast<HMENU>(wParam) == g_deep ? "deep " : "popup ";
            g_log.append(std::to_string(LOWORD(lParam))).append(";");
            break;
        case WM_MENUCHAR:
            return g_menuChar;
        case WM_COMMAND:
            g_log += "command;";
            break;
        case WM_APP:
            g_log += "app;";
            if (g_inMenu != nullptr) g_inMenu(window);
            EndMenu();
            break;
        default:
            break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

class MenuModes : public testing::Test {
protected:
    MenuModes() {
        WNDCLASSEXA info{};
        info.cbSize = sizeof info;
        info.lpfnWndProc = &Procedure;
        info.lpszClassName = "MenuModes";
        RegisterClassExA(&info);
        g_deep = CreatePopupMenu();
        AppendMenuA(g_deep, MF_STRING, kDeep, "Deep");
        const HMENU file = CreatePopupMenu();
        AppendMenuA(file, MF_STRING, kOpen, "&Open");
        AppendMenuA(file, MF_SEPARATOR, 0, nullptr);
        AppendMenuA(file, MF_POPUP, reinterpret_cast<UINT_PTR>(g_deep), "More");
        const HMENU bar = CreateMenu();
        AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
        window = CreateWindowExA(0, "MenuModes", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300,
                                 200, nullptr, bar, nullptr, nullptr);
        Drain();
        g_log.clear();
        g_menuChar = 0;
        g_inMenu = nullptr;
    }
    ~MenuModes() override {
        DestroyWindow(window);
        Drain();
    }
    static void Drain() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    // Alt and a letter; what is posted comes in the menu if that is entered.
    std::string Enter(char letter) {
        g_log.clear();
        PostMessageA(window, WM_APP, 0, 0);
        SendMessageA(window, WM_SYSCOMMAND, SC_KEYMENU, letter);
        Drain();
        return g_log;
    }

    HWND window = nullptr;
};

TEST_F(MenuModes, ALetterThatNoMenuHasDoesNotEnterThem) {
    EXPECT_EQ(Enter('f'), "enter;popup 0;app;exit;");
    EXPECT_EQ(Enter('z'), "enter;exit;app;");
    g_menuChar = MAKELRESULT(0, MNC_CLOSE);
    EXPECT_EQ(Enter('z'), "enter;exit;app;");
    g_menuChar = MAKELRESULT(0, MNC_SELECT);
    EXPECT_EQ(Enter('z'), "enter;app;exit;");
}

TEST_F(MenuModes, ALetterThatAnOpenMenuHasNotLeavesItOpen) {
    PostMessageA(window, WM_CHAR, 'z', 1);
    PostMessageA(window, WM_CHAR, 'o', 1);
    EXPECT_EQ(Enter('f'), "enter;popup 0;exit;app;command;");
}

TEST_F(MenuModes, ADialogThatAHandlerShowsHasTheMouse) {
    g_inMenu = [](HWND) {
        EXPECT_NE(GetCapture(), nullptr);
        EXPECT_TRUE(IsPopupShown());
        const Template bytes(false);
        DialogBoxIndirectParamA(
            nullptr, reinterpret_cast<const DLGTEMPLATE*>(bytes.bytes.data()), nullptr,
            [](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
                if (message == WM_INITDIALOG) return PostMessageA(dialog, WM_APP, 0, 0);
                if (message != WM_APP) return 0;
                EXPECT_EQ(GetCapture(), nullptr);
                EXPECT_FALSE(IsPopupShown());
                g_log += "dialog;";
                return EndDialog(dialog, 1);
            },
            0);
    };
    EXPECT_EQ(Enter('f'), "enter;popup 0;app;dialog;exit;");
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(FindWindowA("#32768", nullptr), nullptr);
}

TEST_F(MenuModes, TheWheelScrollsAPopupThatIsHigherThanTheScreen) {
    const HMENU tall = CreatePopupMenu();
    constexpr UINT kItems = 300;
    for (UINT id = 1; id <= kItems; ++id)
        AppendMenuA(tall, MF_STRING, id, "Item");
    const int high = GetSystemMetrics(SM_CYSCREEN);
    const auto choose = [&](int y, std::initializer_list<int> turns) {
        for (const int turn : turns)
            PostMessageA(window, WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(turn)), 0);
        POINT at{20, y};
        ScreenToClient(window, &at);
        const LPARAM place = MAKELPARAM(static_cast<WORD>(at.x), static_cast<WORD>(at.y));
        PostMessageA(window, WM_MOUSEMOVE, 0, place);
        PostMessageA(window, WM_LBUTTONUP, 0, place);
        return TrackPopupMenu(tall, TPM_RETURNCMD, 0, 0, 0, window, nullptr);
    };
    const int usual = choose(high / 2, {});
    EXPECT_GT(usual, 1);
    EXPECT_EQ(choose(high / 2, {-WHEEL_DELTA}), usual + 3);
    EXPECT_EQ(choose(high / 2, {-WHEEL_DELTA, -WHEEL_DELTA, WHEEL_DELTA}), usual + 3);
    EXPECT_EQ(choose(high / 2, {WHEEL_DELTA}), usual);
    EXPECT_EQ(choose(high - 4, {-32000}), static_cast<int>(kItems));
    EXPECT_EQ(choose(4, {-32000, 32000}), 1);
    DestroyMenu(tall);
}

TEST_F(MenuModes, AKeyBringsThePopupUpToDateThatHoldsItsCommand) {
    const struct {
        WORD command;
        const char* log;
    } rows[] = {{kOpen, "popup 0;command;"}, {kDeep, "deep 2;command;"}};
    for (const auto& row : rows) {
        ACCEL key{FVIRTKEY, VK_F2, row.command};
        const HACCEL table = CreateAcceleratorTableA(&key, 1);
        MSG message{};
        message.hwnd = window;
        message.message = WM_KEYDOWN;
        message.wParam = VK_F2;
        g_log.clear();
        EXPECT_EQ(TranslateAcceleratorA(window, table, &message), 1);
        EXPECT_EQ(g_log, row.log);
        DestroyAcceleratorTable(table);
    }
}

}  // namespace
