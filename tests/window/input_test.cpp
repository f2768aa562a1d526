// What mouse and keyboard do to windows, by the calls that programs have for it.

#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Seen {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// Writes down the messages of mouse, keyboard and activation.
class STestInput : public SWnd {
public:
    std::vector<Seen> seen;
    int part =
        HTNOWHERE;  // what it says lies under the cursor; HTNOWHERE leaves it to the platform
    LRESULT activation = 0;

    int Make(const char* name, DWORD style, int x, int y, int width, int height,
             SWnd* parent = nullptr) {
        return CreateEx(0, name, "Input", style, x, y, width, height,
                        parent != nullptr ? parent->GetHandle() : nullptr);
    }
    int Count(UINT message) const {
        int count = 0;
        for (const Seen& each : seen)
            count += each.message == message;
        return count;
    }
    Seen Last(UINT message) const {
        for (auto at = seen.rbegin(); at != seen.rend(); ++at)
            if (at->message == message) return *at;
        return {};  // all zero
    }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        seen.push_back({message, wParam, lParam});
        if (message == WM_NCHITTEST && part != HTNOWHERE) return part;
        if (message == WM_MOUSEACTIVATE && activation != 0) return activation;
        return SWnd::WindowProc(message, wParam, lParam);
    }
};

// Takes messages until `done`, for two seconds at most.
bool PumpUntil(const std::function<bool()>& done) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    for (;;) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        if (done()) return true;
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

void MoveTo(const SWnd& window, int x, int y) {
    POINT at{x, y};
    ClientToScreen(window.GetHandle(), &at);
    SetCursorPos(at.x, at.y);
}

void ClickAt(const SWnd& window, int x, int y) {
    MoveTo(window, x, y);
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

void Key(int key, bool isDown) {
    keybd_event(static_cast<BYTE>(key),
                static_cast<BYTE>(MapVirtualKeyA(static_cast<UINT>(key), 0)),
                isDown ? 0 : KEYEVENTF_KEYUP, 0);
}

void Type(int key, bool shift = false) {
    if (shift) Key(VK_SHIFT, true);
    Key(key, true);
    Key(key, false);
    if (shift) Key(VK_SHIFT, false);
}

// A window in the foreground, 200 by 150 pixels inside, on which double clicks are told of.
class InputTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(window.Make("S_CliDrawWnd", WS_POPUP | WS_VISIBLE, 100, 100, 200, 150), 1);
        SetForegroundWindow(window.GetHandle());
        SetFocus(window.GetHandle());
        PumpUntil([&] { return GetForegroundWindow() == window.GetHandle(); });
        MoveTo(window, 190, 140);
        PumpUntil([&] { return window.Count(WM_MOUSEMOVE) > 0; });
        window.seen.clear();
    }

    STestInput window;
};

TEST_F(InputTest, TheMouseTellsItsPlaceAndItsButtons) {
    MoveTo(window, 30, 40);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_MOUSEMOVE) > 0; }));
    EXPECT_EQ(window.Last(WM_MOUSEMOVE).lParam, MAKELPARAM(30, 40));
    EXPECT_EQ(window.Last(WM_MOUSEMOVE).wParam, 0u);
    EXPECT_GE(window.Count(WM_NCHITTEST), 1);
    EXPECT_GE(window.Count(WM_SETCURSOR), 1);
    EXPECT_EQ(LOWORD(window.Last(WM_SETCURSOR).lParam), HTCLIENT);

    Key(VK_CONTROL, true);
    mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_LBUTTONDOWN) > 0; }));
    EXPECT_EQ(window.Last(WM_LBUTTONDOWN).wParam, WPARAM{MK_LBUTTON | MK_CONTROL});
    EXPECT_EQ(window.Last(WM_LBUTTONDOWN).lParam, MAKELPARAM(30, 40));
    EXPECT_LT(GetKeyState(VK_LBUTTON), 0);
    EXPECT_LT(GetAsyncKeyState(VK_LBUTTON), 0);
    mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    Key(VK_CONTROL, false);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_LBUTTONUP) > 0; }));
    EXPECT_EQ(window.Last(WM_LBUTTONUP).wParam & MK_LBUTTON, 0u);
    EXPECT_GE(GetAsyncKeyState(VK_LBUTTON), 0);
}

TEST_F(InputTest, ASecondClickIsDoubleWhereTheClassWantsIt) {
    ClickAt(window, 50, 50);
    ClickAt(window, 50, 50);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_LBUTTONUP) == 2; }));
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), 1);
    // The third begins anew, and so does one elsewhere.
    ClickAt(window, 50, 50);
    ClickAt(window, 90, 50);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_LBUTTONUP) == 4; }));
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 3);
    EXPECT_EQ(window.Count(WM_LBUTTONDBLCLK), 1);
}

TEST_F(InputTest, ACapturedMouseBelongsToItsWindowEverywhere) {
    STestInput child;
    ASSERT_EQ(child.Make("S_Window", WS_CHILD | WS_VISIBLE, 20, 30, 40, 40, &window), 1);
    ClickAt(child, 5, 6);
    ASSERT_TRUE(PumpUntil([&] { return child.Count(WM_LBUTTONUP) > 0; }));
    EXPECT_EQ(child.Last(WM_LBUTTONDOWN).lParam, MAKELPARAM(5, 6));
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(LOWORD(window.Last(WM_PARENTNOTIFY).wParam), WM_LBUTTONDOWN);
    EXPECT_EQ(window.Last(WM_PARENTNOTIFY).lParam, MAKELPARAM(25, 36));

    SetCapture(window.GetHandle());
    window.seen.clear();
    MoveTo(child, 7, 7);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_MOUSEMOVE) > 0; }));
    EXPECT_EQ(window.Last(WM_MOUSEMOVE).lParam, MAKELPARAM(27, 37));
    EXPECT_EQ(window.Count(WM_NCHITTEST), 0);
    ReleaseCapture();
    EXPECT_EQ(window.Count(WM_CAPTURECHANGED), 1);

    // A disabled child leaves the mouse to its parent, a transparent one too.
    for (const bool isDisabled : {true, false}) {
        EnableWindow(child.GetHandle(), !isDisabled);
        child.part = HTTRANSPARENT;
        window.seen.clear();
        child.seen.clear();
        MoveTo(child, isDisabled ? 9 : 11, 9);
        ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_MOUSEMOVE) > 0; }));
        EXPECT_EQ(child.Count(WM_MOUSEMOVE), 0);
    }
}

TEST_F(InputTest, OtherPartsGetTheirOwnMessages) {
    window.part = HTMENU;
    ClickAt(window, 60, 70);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_NCLBUTTONUP) > 0; }));
    EXPECT_EQ(window.Last(WM_NCLBUTTONDOWN).wParam, WPARAM{HTMENU});
    EXPECT_EQ(window.Last(WM_NCLBUTTONDOWN).lParam, MAKELPARAM(160, 170));
    EXPECT_GE(window.Count(WM_NCMOUSEMOVE), 1);
    EXPECT_EQ(window.Count(WM_LBUTTONDOWN), 0);
}

TEST_F(InputTest, AClickActivatesUnlessTheWindowRefuses) {
    STestInput other;
    ASSERT_EQ(other.Make("S_CliDrawWnd", WS_POPUP | WS_VISIBLE, 400, 100, 100, 100), 1);
    SetActiveWindow(window.GetHandle());
    PumpUntil([] { return true; });

    other.activation = MA_NOACTIVATEANDEAT;
    ClickAt(other, 10, 10);
    ASSERT_TRUE(PumpUntil([&] { return other.Count(WM_LBUTTONUP) > 0; }));
    EXPECT_EQ(other.Count(WM_MOUSEACTIVATE), 1);
    EXPECT_EQ(other.Count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(GetActiveWindow(), window.GetHandle());

    other.activation = 0;
    other.seen.clear();
    ClickAt(other, 40, 40);
    ASSERT_TRUE(PumpUntil([&] { return other.Count(WM_LBUTTONUP) > 0; }));
    EXPECT_EQ(other.Count(WM_LBUTTONDOWN), 1);
    EXPECT_EQ(GetActiveWindow(), other.GetHandle());
    EXPECT_EQ(GetFocus(), other.GetHandle());
    EXPECT_EQ(LOWORD(other.Last(WM_ACTIVATE).wParam), WA_CLICKACTIVE);
    EXPECT_EQ(other.Count(WM_NCACTIVATE), 1);
}

// A window that gives the focus away when it becomes active.
class STestGiving : public STestInput {
public:
    HWND favourite = nullptr;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        const LRESULT result = STestInput::WindowProc(message, wParam, lParam);
        if (message == WM_ACTIVATE && LOWORD(wParam) != WA_INACTIVE) ::SetFocus(favourite);
        return result;
    }
};

TEST_F(InputTest, TheFocusIsInOnePlaceHoweverOftenItMoved) {
    STestGiving other;
    STestInput favourite, wanted;
    ASSERT_EQ(other.Make("S_CliDrawWnd", WS_POPUP | WS_VISIBLE, 400, 100, 100, 100), 1);
    for (STestInput* const child : {&favourite, &wanted})
        ASSERT_EQ(child->Make("S_Window", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20, &other), 1);
    other.favourite = favourite.GetHandle();
    SetActiveWindow(window.GetHandle());
    SetFocus(window.GetHandle());
    for (STestInput* const each : {static_cast<STestInput*>(&window), &favourite, &wanted})
        each->seen.clear();
    ::SetFocus(wanted.GetHandle());
    EXPECT_EQ(GetFocus(), wanted.GetHandle());
    EXPECT_EQ(window.Count(WM_KILLFOCUS), 1);
    EXPECT_EQ(favourite.Count(WM_SETFOCUS), favourite.Count(WM_KILLFOCUS));
    EXPECT_EQ(wanted.Count(WM_SETFOCUS), 1);
    EXPECT_EQ(wanted.Count(WM_KILLFOCUS), 0);
    EXPECT_EQ(GetActiveWindow(), other.GetHandle());
}

TEST_F(InputTest, KeysGoToTheFocusAndBecomeCharacters) {
    struct Row {
        const char* name;
        int key;
        bool shift;
        int character;
    };
    constexpr Row rows[] = {{"letter", 'A', false, 'a'},       {"capital", 'A', true, 'A'},
                            {"digit", '7', false, '7'},        {"above a digit", '7', true, '&'},
                            {"space", VK_SPACE, false, ' '},   {"enter", VK_RETURN, false, '\r'},
                            {"tab", VK_TAB, false, '\t'},      {"back", VK_BACK, false, '\b'},
                            {"escape", VK_ESCAPE, false, 27},  {"arrow", VK_LEFT, false, 0},
                            {"function key", VK_F5, false, 0}, {"delete", VK_DELETE, false, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        window.seen.clear();
        Type(row.key, row.shift);
        ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYUP) == (row.shift ? 2 : 1); }));
        ASSERT_EQ(window.Count(WM_KEYDOWN), row.shift ? 2 : 1);
        EXPECT_EQ(window.Last(WM_KEYDOWN).wParam, static_cast<WPARAM>(row.key));
        EXPECT_EQ(window.Last(WM_KEYDOWN).lParam & 0xFFFF, 1);
        ASSERT_EQ(window.Count(WM_CHAR), row.character != 0 ? 1 : 0);
        EXPECT_EQ(window.Last(WM_CHAR).wParam, static_cast<WPARAM>(row.character));
    }
    // Ctrl makes control characters.
    window.seen.clear();
    Key(VK_CONTROL, true);
    Type('C');
    Key(VK_CONTROL, false);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYUP) == 2; }));
    EXPECT_EQ(window.Last(WM_CHAR).wParam, 3u);
    // Bits tell that it is down already, and that it comes up.
    window.seen.clear();
    Key('B', true);
    Key('B', true);
    Key('B', false);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYUP) == 1; }));
    EXPECT_EQ(window.Count(WM_CHAR), 2);
    EXPECT_NE(window.Last(WM_KEYDOWN).lParam & 1 << 30, 0);
    EXPECT_EQ(window.Last(WM_KEYUP).lParam >> 30 & 3, 3);
}

TEST_F(InputTest, AltMakesSystemKeys) {
    Key(VK_MENU, true);
    Key('X', true);
    Key('X', false);
    Key(VK_MENU, false);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYUP) == 1; }));
    EXPECT_EQ(window.Last(WM_KEYUP).wParam, WPARAM{VK_MENU});
    EXPECT_EQ(window.Count(WM_SYSKEYDOWN), 2);
    EXPECT_EQ(window.Last(WM_SYSKEYDOWN).wParam, WPARAM{'X'});
    EXPECT_NE(window.Last(WM_SYSKEYDOWN).lParam & 1 << 29, 0);
    EXPECT_EQ(window.Count(WM_KEYDOWN), 0);
    ASSERT_EQ(window.Count(WM_SYSCHAR), 1);
    EXPECT_EQ(window.Last(WM_SYSCHAR).wParam, WPARAM{'x'});
}

TEST_F(InputTest, TheStateOfKeysFollowsWhatWasTaken) {
    PumpUntil([] { return true; });
    Key(VK_SHIFT, true);
    EXPECT_LT(GetAsyncKeyState(VK_SHIFT), 0);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYDOWN) == 1; }));
    EXPECT_LT(GetKeyState(VK_SHIFT), 0);
    BYTE keys[256];
    ASSERT_TRUE(GetKeyboardState(keys));
    EXPECT_NE(keys[VK_SHIFT] & 0x80, 0);
    EXPECT_EQ(keys['A'] & 0x80, 0);
    Key(VK_SHIFT, false);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYUP) == 1; }));
    EXPECT_GE(GetKeyState(VK_SHIFT), 0);
    EXPECT_GE(GetAsyncKeyState(VK_SHIFT), 0);
    EXPECT_EQ(VkKeyScanA('a'), 'A');
    EXPECT_EQ(VkKeyScanA('A'), 'A' | 0x100);
    EXPECT_EQ(VkKeyScanA('%'), '5' | 0x100);
    EXPECT_EQ(MapVirtualKeyA(VK_RETURN, 0), 0x1Cu);
    EXPECT_EQ(MapVirtualKeyA(0x1C, 1), UINT{VK_RETURN});
    EXPECT_EQ(MapVirtualKeyA('Q', 2), UINT{'Q'});
}

TEST_F(InputTest, TheWheelTurnsWhereTheFocusIs) {
    mouse_event(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(-2 * WHEEL_DELTA), 0);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_MOUSEWHEEL) == 1; }));
    const Seen wheel = window.Last(WM_MOUSEWHEEL);
    EXPECT_EQ(static_cast<short>(HIWORD(wheel.wParam)), -2 * WHEEL_DELTA);
    EXPECT_EQ(wheel.lParam, MAKELPARAM(290, 240));
}

TEST_F(InputTest, SeveralInputsGoInOneCall) {
    INPUT inputs[2]{};
    for (INPUT& input : inputs) {
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = 'K';
    }
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    EXPECT_EQ(SendInput(2, inputs, sizeof(INPUT)), 2u);
    ASSERT_TRUE(PumpUntil([&] { return window.Count(WM_KEYUP) == 1; }));
    EXPECT_EQ(window.Count(WM_KEYDOWN), 1);
    EXPECT_EQ(SendInput(1, inputs, 3), 0u);
}

// --- Caret --------------------------------------------------------------------------------------

TEST_F(InputTest, TheCaretHasAPlaceAndAWindow) {
    POINT at{};
    ASSERT_TRUE(CreateCaret(window.GetHandle(), nullptr, 2, 14));
    EXPECT_TRUE(SetCaretPos(12, 20));
    EXPECT_TRUE(GetCaretPos(&at));
    EXPECT_EQ(at.x, 12);
    EXPECT_EQ(at.y, 20);
    EXPECT_TRUE(ShowCaret(window.GetHandle()));
    EXPECT_FALSE(ShowCaret(GetDesktopWindow()));
    EXPECT_TRUE(HideCaret(nullptr));
    EXPECT_TRUE(DestroyCaret());
    EXPECT_FALSE(ShowCaret(window.GetHandle()));
    EXPECT_GT(GetCaretBlinkTime(), 100u);
}

// --- Clipboard ----------------------------------------------------------------------------------

HGLOBAL BlockOf(const char* text) {
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, std::strlen(text) + 1);
    std::strcpy(static_cast<char*>(GlobalLock(block)), text);
    GlobalUnlock(block);
    return block;
}

TEST_F(InputTest, TheClipboardHoldsTextInTwoFormats) {
    ASSERT_TRUE(OpenClipboard(window.GetHandle()));
    ASSERT_TRUE(EmptyClipboard());
    EXPECT_EQ(GetClipboardOwner(), window.GetHandle());
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);
    EXPECT_NE(SetClipboardData(CF_TEXT, BlockOf("caf\xE9")), nullptr);
    EXPECT_TRUE(CloseClipboard());
    EXPECT_FALSE(CloseClipboard());
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_EQ(GetClipboardData(CF_TEXT), nullptr);  // it is closed

    ASSERT_TRUE(OpenClipboard(window.GetHandle()));
    const HANDLE text = GetClipboardData(CF_TEXT);
    ASSERT_NE(text, nullptr);
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(text)), "caf\xE9");
    GlobalUnlock(text);
    const HANDLE wide = GetClipboardData(CF_UNICODETEXT);
    ASSERT_NE(wide, nullptr);
    EXPECT_EQ(std::u16string(static_cast<const char16_t*>(GlobalLock(wide))), u"caf\u00E9");
    GlobalUnlock(wide);
    const UINT own = RegisterClipboardFormatA("BRCORE8 test");
    EXPECT_GE(own, 0xC000u);
    EXPECT_EQ(RegisterClipboardFormatA("brcore8 TEST"), own);
    EXPECT_NE(SetClipboardData(own, BlockOf("mine")), nullptr);
    EXPECT_TRUE(IsClipboardFormatAvailable(own));
    EXPECT_TRUE(EmptyClipboard());
    EXPECT_FALSE(IsClipboardFormatAvailable(own));
    EXPECT_EQ(window.Count(WM_DESTROYCLIPBOARD), 1);
    EXPECT_TRUE(CloseClipboard());
}

}  // namespace
