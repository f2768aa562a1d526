// Windows on an X server, between a window manager, a user and another program. Run by
// managed_test.sh on a screen of its own.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "manager.h"

namespace {

std::unique_ptr<Manager> g_manager;

// Before anything of the library asks for the screen.
class Screen : public testing::Environment {
public:
    void SetUp() override {
        g_manager = std::make_unique<Manager>("Xft.antialias:\t1\nXft.dpi:\t144\n");
        ASSERT_TRUE(g_manager->IsGood()) << "no X server of its own";
    }
    void TearDown() override { g_manager.reset(); }
};
const testing::Environment* const g_screen = testing::AddGlobalTestEnvironment(new Screen);

struct Seen {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

class STestManaged : public SWnd {
public:
    std::vector<Seen> seen;
    bool keepsOpen = true;

    int Count(UINT message) const {
        int count = 0;
        for (const Seen& each : seen)
            count += each.message == message;
        return count;
    }
    Seen Last(UINT message) const {
        for (auto at = seen.rbegin(); at != seen.rend(); ++at)
            if (at->message == message) return *at;
        return {};
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back({message, wParam, lParam});
        if (message == WM_CLOSE && keepsOpen) return 0;
        return SWnd::WindowProc(message, wParam, lParam);
    }
};

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

// Takes messages until `done`, for five seconds at most.
bool PumpUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    for (;;) {
        Pump();
        if (done()) return true;
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// A window that the manager framed and that has the keyboard.
class Managed : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "caf\xE9", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                  100, 80, 300, 200),
                  1);
        client = g_manager->Client();
        ASSERT_NE(client, 0u);
        ASSERT_TRUE(PumpUntil([&] { return Place().top == 80 + Manager::kCaption; }));
        ASSERT_TRUE(PumpUntil([&] { return GetFocus() == window.GetHandle(); }));
        window.seen.clear();
    }
    void TearDown() override {
        window.keepsOpen = false;
        if (window.GetHandle() != nullptr) window.DestroyWindow();
        Pump();
    }
    RECT Place() const { return window.GetWindowRect(); }
    bool Waits(UINT message, int count = 1) {
        return PumpUntil([&] { return window.Count(message) >= count; });
    }
    static void Press(xcb_keysym_t symbol) {
        EXPECT_TRUE(g_manager->Key(symbol, true));
        EXPECT_TRUE(g_manager->Key(symbol, false));
    }

    STestManaged window;
    xcb_window_t client = 0;
};

constexpr xcb_keysym_t kShift = 0xFFE1, kGrave = 0x60, kDeadAcute = 0xFE51, kLeft = 0xFF51;

TEST_F(Managed, TheTitleIsUtf8) {
    EXPECT_EQ(g_manager->TitleOf(client), "caf\xC3\xA9");
    window.SetWindowText("na\xEFve \x80");
    EXPECT_TRUE(
        PumpUntil([&] { return g_manager->TitleOf(client) == "na\xC3\xAFve \xE2\x82\xAC"; }));
}

TEST_F(Managed, TheFrameIsTheManagers) {
    const RECT client_ = window.GetClientRect();
    EXPECT_EQ(client_.right, Place().right - Place().left);
    EXPECT_EQ(client_.bottom, Place().bottom - Place().top);
}

TEST_F(Managed, ClosingAsksTheWindow) {
    g_manager->Close(client);
    ASSERT_TRUE(Waits(WM_CLOSE));
    EXPECT_EQ(LOWORD(window.Last(WM_SYSCOMMAND).wParam), SC_CLOSE);
    EXPECT_NE(window.GetHandle(), nullptr) << "it did not want to";
    window.keepsOpen = false;
    g_manager->Close(client);
    EXPECT_TRUE(PumpUntil([&] { return window.GetHandle() == nullptr; }));
}

TEST_F(Managed, TheManagerMovesAndSizes) {
    g_manager->Place(client, 210, 150, 410, 320);
    ASSERT_TRUE(PumpUntil([&] { return Place().right - Place().left == 410; }));
    EXPECT_EQ(window.Last(WM_SIZE).lParam, MAKELPARAM(410, 320));
    EXPECT_TRUE(PumpUntil([&] { return Place().left == 210; }));
    EXPECT_EQ(Place().top, 150 + Manager::kCaption);
    EXPECT_EQ(window.Last(WM_MOVE).lParam, MAKELPARAM(210, 150 + Manager::kCaption));
    // And the program.
    window.SetWindowPos(nullptr, 50, 60, 222, 111, SWP_NOZORDER);
    EXPECT_EQ(window.Last(WM_SIZE).lParam, MAKELPARAM(222, 111));
    window.ShowWindow(SW_MINIMIZE);
    EXPECT_TRUE(PumpUntil([] { return g_manager->IconRequests() > 0; }));
    window.ShowWindow(SW_RESTORE);
}

std::string PastedText(HWND window) {
    if (!OpenClipboard(window)) return "it cannot be opened";
    std::string text;
    if (const HANDLE block = GetClipboardData(CF_TEXT)) {
        text = static_cast<const char*>(GlobalLock(block));
        GlobalUnlock(block);
    } else {
        text = "nothing";
    }
    CloseClipboard();
    return text;
}

TEST_F(Managed, TheManagerRestores) {
    const RECT before = Place();
    for (int round = 0; round < 2; ++round) {
        const int requests = g_manager->IconRequests() + 1;
        window.seen.clear();
        window.ShowWindow(SW_MINIMIZE);
        ASSERT_TRUE(PumpUntil([&] { return g_manager->IconRequests() == requests; }));
        // An answer that comes later: all that the server told before is known by then.
        g_manager->Offer("later", 0);
        ASSERT_TRUE(PumpUntil([&] { return PastedText(window.GetHandle()) == "later"; }));
        EXPECT_EQ(window.Count(WM_SYSCOMMAND), 0);
        EXPECT_TRUE(IsIconic(window.GetHandle()));
        g_manager->Restore(client);
        ASSERT_TRUE(PumpUntil([&] { return !IsIconic(window.GetHandle()); }));
        EXPECT_EQ(LOWORD(window.Last(WM_SYSCOMMAND).wParam), SC_RESTORE);
        const RECT after = Place();
        EXPECT_TRUE(EqualRect(&before, &after));
    }
}

TEST_F(Managed, TheUserTypes) {
    Press('a');
    ASSERT_TRUE(Waits(WM_KEYUP));
    EXPECT_EQ(window.Last(WM_KEYDOWN).wParam, WPARAM{'A'});
    EXPECT_EQ(window.Last(WM_CHAR).wParam, WPARAM{'a'});
    window.seen.clear();
    g_manager->Key(kShift, true);
    Press('a');
    g_manager->Key(kShift, false);
    ASSERT_TRUE(Waits(WM_KEYUP, 2));
    EXPECT_EQ(window.Last(WM_CHAR).wParam, WPARAM{'A'});
    window.seen.clear();
    Press(kLeft);
    ASSERT_TRUE(Waits(WM_KEYUP));
    EXPECT_EQ(window.Last(WM_KEYDOWN).wParam, WPARAM{VK_LEFT});
    EXPECT_NE(window.Last(WM_KEYDOWN).lParam & 1 << 24, 0) << "an extended key";
    EXPECT_EQ(window.Count(WM_CHAR), 0);
}

TEST_F(Managed, ADeadKeyWaitsForItsLetter) {
    // The layout changes while the program runs.
    ASSERT_TRUE(g_manager->Remap(kGrave, kDeadAcute));
    const auto compose = [&] {
        window.seen.clear();
        Press(kDeadAcute);
        Press('e');
        EXPECT_TRUE(PumpUntil(
            [&] { return window.Last(WM_KEYUP).wParam == 'E' && window.Count(WM_KEYUP) > 0; }));
        std::string typed;
        for (const Seen& each : window.seen)
            if (each.message == WM_CHAR) typed += static_cast<char>(each.wParam);
        return typed;
    };
    // The server tells of the change in its own time.
    std::string typed;
    for (int tries = 0; tries < 20 && typed != "\xE9"; ++tries)
        typed = compose();
    EXPECT_EQ(typed, "\xE9");
    EXPECT_EQ(compose(), "\xE9");
    // Before what it does not go with.
    window.seen.clear();
    Press('e');
    ASSERT_TRUE(Waits(WM_KEYUP));
    EXPECT_EQ(window.Last(WM_CHAR).wParam, WPARAM{'e'});
    EXPECT_TRUE(g_manager->Remap(kDeadAcute, kGrave));
}

TEST_F(Managed, TheUserPointsAndClicks) {
    const RECT place = Place();
    g_manager->Move(place.left + 30, place.top + 40);
    ASSERT_TRUE(Waits(WM_MOUSEMOVE));
    EXPECT_EQ(window.Last(WM_MOUSEMOVE).lParam, MAKELPARAM(30, 40));
    g_manager->Button(1, true);
    g_manager->Button(1, false);
    ASSERT_TRUE(Waits(WM_LBUTTONUP));
    EXPECT_EQ(window.Last(WM_LBUTTONDOWN).lParam, MAKELPARAM(30, 40));
    g_manager->Button(3, true);
    g_manager->Button(3, false);
    ASSERT_TRUE(Waits(WM_RBUTTONUP));
    g_manager->Button(5, true);
    g_manager->Button(5, false);
    ASSERT_TRUE(Waits(WM_MOUSEWHEEL));
    EXPECT_EQ(static_cast<short>(HIWORD(window.Last(WM_MOUSEWHEEL).wParam)), -WHEEL_DELTA);
}

TEST_F(Managed, AWindowThatEndsLetsTheMouseGo) {
    STestManaged child;
    ASSERT_EQ(child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 10, 10, 50, 50,
                             window.GetHandle()),
              1);
    ::SetCapture(child.GetHandle());
    EXPECT_TRUE(PumpUntil([] { return !g_manager->CanGrabPointer(); }));
    child.DestroyWindow();
    EXPECT_TRUE(PumpUntil([] { return g_manager->CanGrabPointer(); }));
}

// --- The clipboard ------------------------------------------------------------------------------

void CopyText(HWND window, const std::string& text) {
    ASSERT_TRUE(OpenClipboard(window));
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(GlobalLock(block), text.c_str(), text.size() + 1);
    GlobalUnlock(block);
    EXPECT_NE(SetClipboardData(CF_TEXT, block), nullptr);
    EXPECT_TRUE(CloseClipboard());
}

// As the program has it, and as others do.
void LongText(std::string& own, std::string& others) {
    for (int line = 0; own.size() < 700'000; ++line) {
        own += std::to_string(line) + " caf\xE9\r\n";
        others += std::to_string(line) + " caf\xC3\xA9\n";
    }
}

TEST_F(Managed, CopiedTextGoesToOtherPrograms) {
    int pieces = 0;
    CopyText(window.GetHandle(), "one\r\ncaf\xE9");
    EXPECT_EQ(g_manager->Ask(&pieces), "one\ncaf\xC3\xA9");
    EXPECT_EQ(pieces, 1);
    std::string own, others;
    LongText(own, others);
    CopyText(window.GetHandle(), own);
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(g_manager->Ask(&pieces) == others) << "a long text arrives whole";
        EXPECT_GT(pieces, 5);
    }
    CopyText(window.GetHandle(), "short again");
    EXPECT_EQ(g_manager->Ask(&pieces), "short again");
}

TEST_F(Managed, TextOfOtherProgramsIsPasted) {
    CopyText(window.GetHandle(), "mine");
    std::string own, others;
    LongText(own, others);
    const struct {
        const char* name;
        std::string offered;
        int piece;
        std::string pasted;
    } rows[] = {
        {"at once", "one\ncaf\xC3\xA9", 0, "one\r\ncaf\xE9"},
        {"in pieces", others, 100'000, own},
        {"in one piece", "small", 1000, "small"},
        {"in pieces that cut characters", "\xC3\xA9\xC3\xA9\xC3\xA9", 1, "\xE9\xE9\xE9"},
        {"an owner that says nothing", "lost", -1, "nothing"},
        {"and one that does", "found", 0, "found"},
    };
    for (const auto& row : rows) {
        g_manager->Offer(row.offered, row.piece);
        EXPECT_TRUE(PumpUntil([&] { return PastedText(window.GetHandle()) == row.pasted; }))
            << row.name;
    }
    // Our own again.
    CopyText(window.GetHandle(), "mine");
    EXPECT_EQ(PastedText(window.GetHandle()), "mine");
}

TEST_F(Managed, WhatIsOnTheClipboardIsTheLastOnes) {
    const HWND own = window.GetHandle();
    const UINT format = RegisterClipboardFormatA("BRCORE8 managed test");
    const auto puts = [&](bool isData) {
        ASSERT_TRUE(OpenClipboard(own));
        EXPECT_TRUE(EmptyClipboard());
        if (isData) SetClipboardData(format, GlobalAlloc(GMEM_MOVEABLE, 4));
        EXPECT_TRUE(CloseClipboard());
    };
    for (const bool isData : {false, true, true}) {
        g_manager->Offer("theirs", 0);
        ASSERT_TRUE(PumpUntil([&] { return PastedText(own) == "theirs"; }));
        EXPECT_FALSE(IsClipboardFormatAvailable(format));
        puts(isData);
        EXPECT_EQ(PastedText(own), "nothing");
        EXPECT_EQ(IsClipboardFormatAvailable(format) != 0, isData);
        int pieces = 0;
        EXPECT_TRUE(PumpUntil([&] { return g_manager->Ask(&pieces).empty(); }));
    }
    // One that has no text takes it away all the same.
    g_manager->Offer("", 0);
    EXPECT_TRUE(PumpUntil([&] { return !IsClipboardFormatAvailable(format); }));
}

TEST_F(Managed, ThreadsPasteAtOnce) {
    std::string own, others;
    LongText(own, others);
    g_manager->Offer(others, 100'000);
    ASSERT_TRUE(PumpUntil([&] { return PastedText(window.GetHandle()) == own; }));
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 3; ++round)
                EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_TRUE(PastedText(window.GetHandle()) == own);
}

// --- The scale ----------------------------------------------------------------------------------

TEST_F(Managed, TheUsersResolutionIsFollowed) {
    EXPECT_EQ(GetDpiForSystem(), 144u);
    EXPECT_EQ(GetDpiForWindow(window.GetHandle()), 144u);
    EXPECT_EQ(GetSystemMetrics(SM_CYMENU), 30);
    LOGFONTA font{};
    ::GetObjectA(::GetStockObject(DEFAULT_GUI_FONT), sizeof font, &font);
    EXPECT_EQ(font.lfHeight, -17);
}

}  // namespace
