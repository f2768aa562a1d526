// What buttons do and tell.

#include "controls/desk.h"

namespace {

class Buttons : public Desk {};

constexpr LPARAM At(int x, int y) {
    return MAKELPARAM(x, y);
}
constexpr LPARAM kInside = At(5, 5), kOutside = At(300, 5);

TEST_F(Buttons, TheClassIsFoundInAnyCaseOfLetters) {
    for (const char* const name : {"BUTTON", "button", "Button"}) {
        const HWND button = Make(name, "Yes", BS_PUSHBUTTON);
        ASSERT_NE(button, nullptr) << name;
        char found[20] = {};
        EXPECT_EQ(GetClassNameA(button, found, sizeof found), 6);
        EXPECT_STREQ(found, "Button");
        EXPECT_EQ(TextOf(button), "Yes");
        DestroyWindow(button);
    }
}

TEST_F(Buttons, EachTypeHasItsDialogCodeAndChecks) {
    const struct {
        const char* name;
        DWORD type;
        LRESULT dialog;
        int checks[3];      // after BM_SETCHECK 0, 1, 2
        int afterClick[3];  // after a click on each of those
    } rows[] = {
        {"push", BS_PUSHBUTTON, DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, {0, 0, 0}, {0, 0, 0}},
        {"default", BS_DEFPUSHBUTTON, DLGC_BUTTON | DLGC_DEFPUSHBUTTON, {0, 0, 0}, {0, 0, 0}},
        {"check", BS_CHECKBOX, DLGC_BUTTON, {0, 1, 1}, {0, 1, 1}},
        {"auto check", BS_AUTOCHECKBOX, DLGC_BUTTON, {0, 1, 1}, {1, 0, 0}},
        {"radio", BS_RADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON, {0, 1, 1}, {0, 1, 1}},
        {"auto radio", BS_AUTORADIOBUTTON, DLGC_BUTTON | DLGC_RADIOBUTTON, {0, 1, 1}, {1, 1, 1}},
        {"three", BS_3STATE, DLGC_BUTTON, {0, 1, 2}, {0, 1, 2}},
        {"auto three", BS_AUTO3STATE, DLGC_BUTTON, {0, 1, 2}, {1, 2, 0}},
        {"group", BS_GROUPBOX, DLGC_STATIC, {0, 0, 0}, {0, 0, 0}},
        {"owner", BS_OWNERDRAW, DLGC_BUTTON, {0, 0, 0}, {0, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const HWND button = Make("BUTTON", "Text", row.type);
        EXPECT_EQ(Send(button, WM_GETDLGCODE), row.dialog);
        for (int check = 0; check < 3; ++check) {
            SCOPED_TRACE(check);
            Send(button, BM_SETCHECK, static_cast<WPARAM>(check));
            EXPECT_EQ(Send(button, BM_GETCHECK), row.checks[check]);
            Told();
            Send(button, BM_CLICK);
            EXPECT_EQ(Send(button, BM_GETCHECK), row.afterClick[check]);
        }
        DestroyWindow(button);
    }
}

TEST_F(Buttons, TheMousePressesDragsAndClicks) {
    const HWND button = Make("BUTTON", "Press", BS_PUSHBUTTON);
    const auto state = [button] { return Send(button, BM_GETSTATE) & BST_PUSHED; };
    Send(button, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
    EXPECT_EQ(GetCapture(), button);
    EXPECT_EQ(GetFocus(), button);
    EXPECT_EQ(state(), BST_PUSHED);
    Send(button, WM_MOUSEMOVE, MK_LBUTTON, kOutside);
    EXPECT_EQ(state(), 0);
    Send(button, WM_MOUSEMOVE, MK_LBUTTON, kInside);
    EXPECT_EQ(state(), BST_PUSHED);
    EXPECT_EQ(Told(), "");
    Send(button, WM_LBUTTONUP, 0, kInside);
    EXPECT_EQ(state(), 0);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(Told(), "1:BN_CLICKED");

    Send(button, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
    Send(button, WM_MOUSEMOVE, MK_LBUTTON, kOutside);
    Send(button, WM_LBUTTONUP, 0, kOutside);
    EXPECT_EQ(GetCapture(), nullptr);
    Send(button, WM_LBUTTONUP, 0, kInside);
    EXPECT_EQ(Told(), "");

    // Who loses the mouse is no longer pressed.
    Send(button, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
    SetCapture(window);
    EXPECT_EQ(state(), 0);
    ReleaseCapture();
    Send(button, WM_LBUTTONUP, 0, kInside);
    EXPECT_EQ(Told(), "");
}

TEST_F(Buttons, TheSpaceBarClicksWhenItIsLetGo) {
    const HWND button = Make("BUTTON", "Press", BS_AUTOCHECKBOX);
    SetFocus(button);
    Send(button, WM_KEYDOWN, VK_SPACE, 0x00390001);
    EXPECT_EQ(Send(button, BM_GETSTATE) & BST_PUSHED, BST_PUSHED);
    EXPECT_EQ(Told(), "");
    Send(button, WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0390001));
    EXPECT_EQ(Told(), "1:BN_CLICKED");
    EXPECT_EQ(Send(button, BM_GETCHECK), BST_CHECKED);
    Send(button, WM_KEYDOWN, VK_SPACE, 0x00390001);
    SetFocus(window);
    Send(button, WM_KEYUP, VK_SPACE, static_cast<LPARAM>(0xC0390001));
    EXPECT_EQ(Told(), "");
    EXPECT_EQ(Send(button, BM_GETSTATE), BST_CHECKED);
}

TEST_F(Buttons, AnAutomaticRadioButtonUnchecksItsGroup) {
    HWND radios[7];
    for (int i = 0; i < 7; ++i) {
        const DWORD group = i == 0 || i == 4 ? WS_GROUP : 0;
        // Plain radio buttons go along, check boxes do not.
        const DWORD type = i == 2 ? BS_RADIOBUTTON : i == 6 ? BS_CHECKBOX : BS_AUTORADIOBUTTON;
        radios[i] = Make("BUTTON", "Choice", type | group, 10 + i);
    }
    const auto checks = [&] {
        std::string text;
        for (const HWND radio : radios)
            text += Send(radio, BM_GETCHECK) != 0 ? '1' : '0';
        return text;
    };
    Send(radios[2], BM_SETCHECK, BST_CHECKED);
    Send(radios[4], BM_SETCHECK, BST_CHECKED);
    Send(radios[6], BM_SETCHECK, BST_CHECKED);
    EXPECT_EQ(checks(), "0010101");
    Send(radios[0], BM_CLICK);
    EXPECT_EQ(checks(), "1000101");
    Send(radios[3], BM_CLICK);
    EXPECT_EQ(checks(), "0001101");
    Send(radios[5], BM_CLICK);
    EXPECT_EQ(checks(), "0001011");
    Send(radios[2], BM_CLICK);
    EXPECT_EQ(checks(), "0001011");
    // The checked one alone is reached by the tabulator.
    EXPECT_NE(GetWindowLongA(radios[3], GWL_STYLE) & WS_TABSTOP, 0);
    EXPECT_EQ(GetWindowLongA(radios[0], GWL_STYLE) & WS_TABSTOP, 0);
}

TEST_F(Buttons, FocusIsToldToWhomAsks) {
    const HWND quiet = Make("BUTTON", "One", BS_PUSHBUTTON, 1);
    const HWND telling = Make("BUTTON", "Two", BS_PUSHBUTTON | BS_NOTIFY, 2);
    const HWND radio = Make("BUTTON", "Three", BS_AUTORADIOBUTTON, 3);
    SetFocus(quiet);
    EXPECT_EQ(Told(), "");
    EXPECT_EQ(Send(quiet, BM_GETSTATE), BST_FOCUS);
    SetFocus(telling);
    EXPECT_EQ(Told(), "2:BN_SETFOCUS");
    EXPECT_EQ(Send(quiet, BM_GETSTATE), 0);
    SetFocus(radio);
    EXPECT_EQ(Told(), "2:BN_KILLFOCUS");
    EXPECT_EQ(Send(radio, BM_GETCHECK), BST_UNCHECKED);
}

TEST_F(Buttons, ADoubleClickIsAClickUnlessSomeoneAsksForIt) {
    const struct {
        DWORD style;
        const char* told;
    } rows[] = {
        {BS_PUSHBUTTON, "1:BN_CLICKED"},      {BS_PUSHBUTTON | BS_NOTIFY, "1:BN_DOUBLECLICKED"},
        {BS_AUTOCHECKBOX, "1:BN_CLICKED"},    {BS_RADIOBUTTON, "1:BN_DOUBLECLICKED"},
        {BS_OWNERDRAW, "1:BN_DOUBLECLICKED"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.style);
        const HWND button = Make("BUTTON", "Text", row.style);
        Told();
        Send(button, WM_LBUTTONDBLCLK, MK_LBUTTON, kInside);
        Send(button, WM_LBUTTONUP, 0, kInside);
        EXPECT_EQ(Told(), row.told);
        DestroyWindow(button);
    }
}

TEST_F(Buttons, TheTypeChangesBySetStyle) {
    const HWND button = Make("BUTTON", "Text", BS_PUSHBUTTON | WS_TABSTOP);
    Send(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, 1);
    EXPECT_EQ(Send(button, WM_GETDLGCODE), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
    EXPECT_NE(GetWindowLongA(button, GWL_STYLE) & WS_TABSTOP, 0);
    Send(button, BM_SETSTATE, 1);
    EXPECT_EQ(Send(button, BM_GETSTATE), BST_PUSHED);
    Send(button, BM_SETSTATE, 0);
    EXPECT_EQ(Send(button, BM_GETSTATE), 0);
    EXPECT_EQ(Told(), "");
}

TEST_F(Buttons, WhatIsPressedOrCheckedLooksSo) {
    const struct {
        const char* name;
        DWORD type;
        UINT message;
        WPARAM value;
    } rows[] = {
        {"pressed", BS_PUSHBUTTON, BM_SETSTATE, 1},
        {"default", BS_PUSHBUTTON, BM_SETSTYLE, BS_DEFPUSHBUTTON},
        {"checked", BS_CHECKBOX, BM_SETCHECK, 1},
        {"undecided", BS_3STATE, BM_SETCHECK, 2},
        {"chosen", BS_RADIOBUTTON, BM_SETCHECK, 1},
        {"pressed mark", BS_CHECKBOX, BM_SETSTATE, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const HWND button = Make("BUTTON", "Text", row.type);
        const auto before = PixelsOf(button);
        Send(button, row.message, row.value, 1);
        const auto after = PixelsOf(button);
        EXPECT_GT(Difference(before, after), 5);
        Send(button, row.message, 0, 1);
        EXPECT_EQ(Difference(before, PixelsOf(button)), 0);
        SetWindowTextA(button, "Other");
        EXPECT_GT(Difference(before, PixelsOf(button)), 5);
        SetWindowTextA(button, "Text");
        EnableWindow(button, 0);
        EXPECT_GT(Difference(before, PixelsOf(button)), 5);
        DestroyWindow(button);
    }
}

TEST_F(Buttons, AnOwnerDrawsWhatItIsTold) {
    std::vector<DRAWITEMSTRUCT> items;
    answers = [&](UINT message, WPARAM, LPARAM lParam, LRESULT& result) {
        if (message != WM_DRAWITEM) return false;
        items.push_back(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
        FillRect(items.back().hDC, &items.back().rcItem,
                 static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        result = 1;
        return true;
    };
    const HWND button = Make("BUTTON", "Text", BS_OWNERDRAW, 7);
    const auto pixels = PixelsOf(button);
    EXPECT_EQ(CountOf(pixels, 0), 100 * 24);
    ASSERT_FALSE(items.empty());
    EXPECT_EQ(items.back().CtlType, UINT{ODT_BUTTON});
    EXPECT_EQ(items.back().CtlID, 7u);
    EXPECT_EQ(items.back().hwndItem, button);
    EXPECT_EQ(items.back().itemAction, UINT{ODA_DRAWENTIRE});
    EXPECT_EQ(items.back().itemState, 0u);
    items.clear();
    Send(button, WM_LBUTTONDOWN, MK_LBUTTON, kInside);
    UpdateWindow(button);
    ASSERT_FALSE(items.empty());
    EXPECT_EQ(items.back().itemState, UINT{ODS_SELECTED | ODS_FOCUS});
    Send(button, WM_LBUTTONUP, 0, kInside);
    UpdateWindow(button);
    EXPECT_EQ(items.back().itemState, UINT{ODS_FOCUS});
}

TEST_F(Buttons, AHandlerMayDestroyTheButton) {
    for (const DWORD type : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON}) {
        const HWND button = Make("BUTTON", "Text", type);
        answers = [&](UINT message, WPARAM, LPARAM, LRESULT&) {
            if (message == WM_COMMAND) DestroyWindow(button);
            return false;
        };
        Send(button, BM_CLICK);
        EXPECT_FALSE(IsWindow(button));
    }
}

}  // namespace
