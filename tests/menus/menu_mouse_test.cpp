// The mouse in menus: opening, sliding from popup to popup, choosing by letting go, and leaving.

#include <brcore8/app/frame_wnd.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>

namespace {

constexpr UINT kOpen = 100, kSave = 101, kGrey = 102, kCut = 200, kPaste = 201, kDeep = 300;

// Does the next step at each tick of a timer, which comes when all input was taken, and writes down
// what it is told.
class STestPointed : public SFrameWnd {
public:
    std::deque<std::function<void()>> steps;
    std::string log;
    bool isOpen = false;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_TIMER:
                Go();
                return 0;
            case WM_INITMENUPOPUP:
                log.append("popup ").append(std::to_string(LOWORD(lParam))).append(";");
                // Items whose commands nobody handles stay as they are here.
                return 0;
            case WM_COMMAND:
                log.append("command ").append(std::to_string(LOWORD(wParam))).append(";");
                return 0;
            case WM_ENTERMENULOOP:
                isOpen = true;
                break;
            case WM_EXITMENULOOP:
                log += "exit;";
                isOpen = false;
                break;
            default:
                break;
        }
        return SFrameWnd::WindowProc(message, wParam, lParam);
    }

private:
    void Go() {
        // A test that forgot to leave the menu ends all the same.
        if (!isOpen) return;
        if (steps.empty()) return static_cast<void>(PostMessage(WM_CANCELMODE));
        const auto step = steps.front();
        steps.pop_front();
        step();
    }
};

class MenuMouse : public testing::Test {
protected:
    MenuMouse() {
        EXPECT_EQ(frame.CreateFrame("Pointed"), 1);
        frame.MoveWindow({60, 60, 460, 360});
        file = ::CreatePopupMenu();
        edit = ::CreatePopupMenu();
        deep = ::CreatePopupMenu();
        bar = ::CreateMenu();
        ::AppendMenuA(file, MF_STRING, kOpen, "Open");
        ::AppendMenuA(file, MF_STRING, kSave, "Save");
        ::AppendMenuA(file, MF_STRING | MF_GRAYED, kGrey, "Grey");
        ::AppendMenuA(deep, MF_STRING, kDeep, "Deep");
        ::AppendMenuA(edit, MF_STRING, kCut, "Cut");
        ::AppendMenuA(edit, MF_POPUP, reinterpret_cast<UINT_PTR>(deep), "More");
        ::AppendMenuA(edit, MF_STRING, kPaste, "Paste");
        ::AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "File");
        ::AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(edit), "Edit");
        ::SetMenu(frame.GetHandle(), bar);
        frame.ShowWindow(SW_SHOWNORMAL);
        ::SetForegroundWindow(frame.GetHandle());
        Drain();
        frame.log.clear();
    }
    ~MenuMouse() override {
        if (frame.GetHandle() != nullptr) frame.DestroyWindow();
        Drain();
    }
    static void Drain() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }
    // The mouse over the middle of an item that shows.
    void Point(HMENU menu, UINT item) {
        RECT rect{};
        // Of a popup, in its own window.
        const HWND shower = menu == bar ? frame.GetHandle() : nullptr;
        EXPECT_TRUE(::GetMenuItemRect(shower, menu, item, &rect));
        ::SetCursorPos((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    }
    static void Press() { mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0); }
    static void Release() { mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0); }
    // The menu runs while the press is taken.
    void Open(UINT item) {
        ::SetTimer(frame.GetHandle(), 1, 20, nullptr);
        Point(bar, item);
        Press();
        Drain();
        ::KillTimer(frame.GetHandle(), 1);
    }
    // Presses the bar's item and lets the steps follow.
    std::string Run(UINT item, std::deque<std::function<void()>> steps) {
        frame.steps = std::move(steps);
        frame.log.clear();
        Open(item);
        Release();
        Drain();
        EXPECT_TRUE(frame.steps.empty()) << "it ended early";
        EXPECT_EQ(FindWindowA("#32768", nullptr), nullptr);
        EXPECT_EQ(GetCapture(), nullptr);
        return frame.log;
    }

    STestPointed frame;
    HMENU bar = nullptr, file = nullptr, edit = nullptr, deep = nullptr;
};

TEST_F(MenuMouse, AnItemIsChosenByLettingGoOverIt) {
    EXPECT_EQ(Run(0, {[&] { Point(file, 1); }, &Release}), "popup 0;exit;command 101;");
}

TEST_F(MenuMouse, AnItemIsChosenByAClickOfItsOwn) {
    EXPECT_EQ(Run(0, {&Release, [&] { Point(file, 0); }, &Press, &Release}),
              "popup 0;exit;command 100;");
}

TEST_F(MenuMouse, TheMouseSlidesToTheOtherPopup) {
    EXPECT_EQ(Run(0, {[&] { Point(file, 0); }, [&] { Point(bar, 1); }, [&] { Point(edit, 2); },
                      &Release}),
              "popup 0;popup 1;exit;command 201;");
}

TEST_F(MenuMouse, APopupInAPopupIsEntered) {
    EXPECT_EQ(
        Run(1, {[&] { Point(edit, 1); }, &Release, [&] { Point(deep, 0); }, &Press, &Release}),
        "popup 1;popup 1;exit;command 300;");
}

TEST_F(MenuMouse, AClickOutsideLeavesWithoutACommand) {
    EXPECT_EQ(Run(0, {&Release, [&] { ::SetCursorPos(300, 300); }, &Press}), "popup 0;exit;");
}

TEST_F(MenuMouse, WhatIsGreyIsNotChosen) {
    EXPECT_EQ(
        Run(0, {[&] { Point(file, 2); }, &Release, [&] { ::SetCursorPos(300, 300); }, &Press}),
        "popup 0;exit;");
}

TEST_F(MenuMouse, TheWindowMayGoWhileItsMenuIsOpen) {
    frame.steps = {[&] { frame.DestroyWindow(); }};
    Open(0);
    Release();
    Drain();
    EXPECT_EQ(frame.GetHandle(), nullptr);
    EXPECT_EQ(FindWindowA("#32768", nullptr), nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
}

}  // namespace
