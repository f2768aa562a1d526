// How controls, menus and message boxes look. The pictures are in tests/controls/pictures.

#include <brcore8/platform/posix/desktop_testing.h>

#include "controls/desk.h"
#include "support/posix/stored_picture.h"

#include <functional>
#include <string>

namespace {

// In pixels of 96 an inch.
struct Placed {
    const char* className;
    const char* text;
    DWORD style;
    RECT place;
    std::function<void(HWND)> prepare = nullptr;
};

void Check(HWND button) {
    Send(button, BM_SETCHECK, BST_CHECKED);
}

void SelectPart(HWND edit) {
    Send(edit, EM_SETSEL, 4, 12);
}

const Placed kControls[] = {
    {"STATIC", "On the left", SS_LEFT, {8, 8, 108, 24}},
    {"STATIC", "in the middle", SS_CENTER, {112, 8, 212, 24}},
    {"STATIC", "on the right", SS_RIGHT, {216, 8, 316, 24}},
    {"STATIC",
     "Words that are broken between lines where they get too long",
     SS_LEFT,
     {8, 28, 158, 76}},
    {"STATIC", "Sunken && &marked", SS_SUNKEN, {164, 28, 316, 48}},
    {"STATIC", "Disabled", WS_DISABLED, {164, 54, 316, 72}},
    {"BUTTON", "&Push", BS_PUSHBUTTON, {8, 80, 80, 104}},
    {"BUTTON", "Default", BS_DEFPUSHBUTTON, {86, 80, 158, 104}},
    {"BUTTON", "Disabled", BS_PUSHBUTTON | WS_DISABLED, {164, 80, 236, 104}},
    {"BUTTON",
     "Pressed",
     BS_PUSHBUTTON,
     {242, 80, 316, 104},
     [](HWND b) { Send(b, BM_SETSTATE, 1); }},
    {"BUTTON", "Off", BS_AUTOCHECKBOX, {8, 110, 80, 128}},
    {"BUTTON", "&On", BS_AUTOCHECKBOX, {86, 110, 158, 128}, &Check},
    {"BUTTON",
     "Neither",
     BS_AUTO3STATE,
     {164, 110, 236, 128},
     [](HWND b) { Send(b, BM_SETCHECK, BST_INDETERMINATE); }},
    {"BUTTON", "Not now", BS_AUTOCHECKBOX | WS_DISABLED, {242, 110, 316, 128}, &Check},
    {"BUTTON", "Radio", BS_RADIOBUTTON, {8, 132, 80, 150}},
    {"BUTTON", "Chosen", BS_RADIOBUTTON, {86, 132, 158, 150}, &Check},
    {"BUTTON", "Right", BS_AUTOCHECKBOX | BS_RIGHTBUTTON, {164, 132, 236, 150}, &Check},
    {"BUTTON", "Like push", BS_AUTOCHECKBOX | BS_PUSHLIKE, {242, 132, 316, 154}, &Check},
    {"BUTTON", "A &group", BS_GROUPBOX, {8, 158, 158, 224}},
    {"EDIT",
     "One line, selected",
     WS_BORDER | ES_AUTOHSCROLL | ES_NOHIDESEL,
     {16, 178, 150, 198},
     &SelectPart},
    {"EDIT", "secret", WS_BORDER | ES_PASSWORD, {16, 201, 80, 219}},
    {"EDIT", "gone", WS_BORDER | WS_DISABLED, {86, 201, 150, 219}},
    {"EDIT",
     "Many lines\r\nwith\ttabs\r\nand bars, as\r\nlong as these",
     ES_MULTILINE | ES_AUTOHSCROLL | WS_HSCROLL | WS_VSCROLL | ES_NOHIDESEL,
     {164, 158, 316, 224},
     &SelectPart},
    {"SCROLLBAR",
     "",
     SBS_HORZ,
     {8, 232, 158, 248},
     [](HWND b) {
         SetScrollRange(b, SB_CTL, 0, 10, 1);
         SetScrollPos(b, SB_CTL, 5, 1);
     }},
    {"SCROLLBAR", "", SBS_HORZ | WS_DISABLED, {164, 232, 236, 248}},
    {PROGRESS_CLASSA, "", 0, {242, 232, 316, 248}, [](HWND b) { Send(b, PBM_SETPOS, 60); }},
};

class Pictures : public Desk {
protected:
    Pictures() { SetFocus(window); }
    ~Pictures() override {
        SetWindowLongPtrA(window, GWL_STYLE,
                          GetWindowLongPtrA(window, GWL_STYLE) | WS_CLIPCHILDREN);
        SSetDesktopDpi(96);
    }

    static int Scaled(int pixels) { return pixels * static_cast<int>(GetDpiForSystem()) / 96; }
    // The controls from one height to another.
    void Fill(unsigned dpi, int top, int bottom) {
        SSetDesktopDpi(dpi);
        SetWindowPos(window, nullptr, 50, 50, Scaled(324), Scaled(bottom - top + 24), SWP_NOZORDER);
        answers = [](UINT message, WPARAM wParam, LPARAM, LRESULT& result) {
            if (message != WM_ERASEBKGND) return false;
            const RECT all{0, 0, 2000, 2000};
            FillRect(reinterpret_cast<HDC>(wParam), &all, GetSysColorBrush(COLOR_BTNFACE));
            result = 1;
            return true;
        };
        // A group's box is transparent: what is under it is its parent's.
        SetWindowLongPtrA(window, GWL_STYLE,
                          GetWindowLongPtrA(window, GWL_STYLE) & ~LONG_PTR{WS_CLIPCHILDREN});
        InvalidateRect(window, nullptr, 1);
        for (const Placed& each : kControls) {
            RECT at = each.place;
            if (at.top < top || at.bottom > bottom) continue;
            OffsetRect(&at, 0, -top);
            const HWND made =
                Make(each.className, each.text, each.style, 1,
                     {Scaled(at.left), Scaled(at.top), Scaled(at.right), Scaled(at.bottom)});
            ASSERT_NE(made, nullptr) << each.text;
            if (each.prepare != nullptr) each.prepare(made);
        }
        const HWND bar = Make(STATUSCLASSNAMEA, "Ready", SBARS_SIZEGRIP);
        const int parts[] = {Scaled(150), Scaled(230), -1};
        Send(bar, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(parts));
        SendText(bar, SB_SETTEXTA, 1, "\tmiddle");
        SendText(bar, SB_SETTEXTA, 2 | SBT_POPOUT, "out");
    }
};

TEST_F(Pictures, Controls) {
    Fill(96, 0, 256);
    EXPECT_TRUE(LooksAsStored(window, "controls"));
}

TEST_F(Pictures, ControlsOfAFineScreen) {
    Fill(192, 104, 158);
    EXPECT_TRUE(LooksAsStored(window, "controls_192"));
}

// The focus shows where the keyboard is.
TEST_F(Pictures, TheFocus) {
    SetWindowPos(window, nullptr, 50, 50, 200, 90, SWP_NOZORDER);
    const HWND push = Make("BUTTON", "Push", 0, 1, {8, 8, 88, 32});
    Make("BUTTON", "Check", BS_AUTOCHECKBOX, 2, {8, 40, 88, 58});
    const HWND edit = Make("EDIT", "field", WS_BORDER, 3, {100, 8, 180, 28});
    Send(edit, EM_SETSEL, 0, 3);
    SetFocus(push);
    EXPECT_TRUE(LooksAsStored(window, "focus_button"));
    SetFocus(edit);
    HideCaret(edit);
    EXPECT_TRUE(LooksAsStored(window, "focus_edit"));
}

// --- Windows of their own -----------------------------------------------------------------------

// A framed window with a menu, which takes the pictures while a menu or a box is open.
class Framed {
public:
    Framed() {
        WNDCLASSEXA info{};
        info.cbSize = sizeof info;
        info.lpfnWndProc = &Procedure;
        info.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
        info.lpszClassName = "PicturesFrame";
        RegisterClassExA(&info);
        const int scale = static_cast<int>(GetDpiForSystem()) / 96;
        handle =
            CreateWindowExA(0, info.lpszClassName, "A frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40,
                            40, 260 * scale, 120 * scale, nullptr, MakeBar(), nullptr, nullptr);
        SetActiveWindow(handle);
    }
    ~Framed() {
        whenIdle = nullptr;
        DestroyWindow(handle);
    }
    Framed(const Framed&) = delete;
    Framed& operator=(const Framed&) = delete;

    HWND handle;
    static inline std::function<void()> whenIdle;

private:
    static HMENU MakeBar() {
        const HMENU bar = CreateMenu(), popup = CreatePopupMenu(), more = CreatePopupMenu();
        AppendMenuA(more, MF_STRING, 9, "Deep");
        AppendMenuA(popup, MF_STRING, 1, "&Open...\tCtrl+O");
        AppendMenuA(popup, MF_STRING | MF_CHECKED, 2, "&Checked\tF5");
        AppendMenuA(popup, MF_STRING | MF_GRAYED, 3, "&Grey");
        AppendMenuA(popup, MF_SEPARATOR, 0, nullptr);
        AppendMenuA(popup, MF_STRING, 4, "One of a group");
        CheckMenuRadioItem(popup, 4, 4, 4, MF_BYCOMMAND);
        AppendMenuA(popup, MF_POPUP, reinterpret_cast<UINT_PTR>(more), "&More");
        AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), "&File");
        AppendMenuA(bar, MF_STRING, 7, "&Help");
        return bar;
    }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_ENTERIDLE && whenIdle) whenIdle();
        return DefWindowProcA(window, message, wParam, lParam);
    }
};

class FramePictures : public testing::TestWithParam<int> {
protected:
    FramePictures() { SSetDesktopDpi(static_cast<unsigned>(GetParam())); }
    ~FramePictures() override { SSetDesktopDpi(96); }
    static std::string Named(const char* name) {
        return GetParam() == 96 ? name : std::string(name) + "_" + std::to_string(GetParam());
    }
};
INSTANTIATE_TEST_SUITE_P(AtDpi, FramePictures, testing::Values(96, 192));

TEST_P(FramePictures, AMenuThatIsOpen) {
    const Framed frame;
    bool wasSeen = false;
    Framed::whenIdle = [&] {
        const HWND popup = FindWindowA("#32768", nullptr);
        if (popup == nullptr || wasSeen) return;
        wasSeen = true;
        EXPECT_TRUE(LooksAsStored(frame.handle, Named("menu_bar")));
        EXPECT_TRUE(LooksAsStored(popup, Named("menu_popup")));
        for (int i = 0; i < 2; ++i)
            PostMessageA(frame.handle, WM_KEYDOWN, VK_ESCAPE, 1);
    };
    PostMessageA(frame.handle, WM_KEYDOWN, VK_DOWN, 1);
    PostMessageA(frame.handle, WM_KEYDOWN, VK_DOWN, 1);
    SendMessageA(frame.handle, WM_SYSCOMMAND, SC_KEYMENU, 0);
    EXPECT_TRUE(wasSeen);
}

TEST_P(FramePictures, AMessageBox) {
    const Framed frame;
    bool wasSeen = false;
    Framed::whenIdle = [&] {
        const HWND box = FindWindowA("#32770", "A question");
        if (box == nullptr || wasSeen) return;
        wasSeen = true;
        EXPECT_TRUE(LooksAsStored(box, Named("message_box")));
        PostMessageA(box, WM_COMMAND, IDNO, 0);
    };
    EXPECT_EQ(MessageBoxA(frame.handle, "Do you want to keep it?\nIt has been changed.",
                          "A question", MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON2),
              IDNO);
    EXPECT_TRUE(wasSeen);
}

}  // namespace
