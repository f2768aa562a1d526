// Keys in dialogs that have fields of many lines, and controls that may not be used.

#include <brcore8/platform/windows.h>

#include <string>

#include "dialogs/answer.h"
#include "dialogs/template.h"

namespace {

constexpr WORD kButton = 0x80, kEdit = 0x81, kStatic = 0x82;
constexpr WORD kField = 100, kGone = 101, kOff = 102, kOther = 103, kOffField = 104;

std::string g_log;

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_COMMAND:
            if (HIWORD(wParam) == BN_CLICKED)
                g_log.append(std::to_string(LOWORD(wParam))).append(";");
            return 1;
        case WM_APP:
            g_log += GetCapture() == nullptr ? "free;" : "held;";
            EndDialog(dialog, 7);
            return 1;
        case WM_INITDIALOG:
            PostMessageA(dialog, WM_APP, 0, 0);
            return 1;
        default:
            return 0;
    }
}

class DialogKeys : public OwnedDialogs {
protected:
    ~DialogKeys() override {
        if (dialog_ != nullptr) DestroyWindow(dialog_);
    }
    static const DLGTEMPLATE* Bytes(const Template& made) {
        return reinterpret_cast<const DLGTEMPLATE*>(made.bytes.data());
    }
    void Show(const Template& made) {
        if (dialog_ != nullptr) DestroyWindow(dialog_);
        dialog_ = CreateDialogIndirectParamA(
            nullptr, Bytes(made), owner.GetHandle(),
            [](HWND dialog, UINT message, WPARAM w, LPARAM l) {
                return message == WM_INITDIALOG ? INT_PTR{1} : Procedure(dialog, message, w, l);
            },
            0);
        ASSERT_NE(dialog_, nullptr);
        ShowWindow(dialog_, SW_SHOW);
        SetForegroundWindow(dialog_);
        Pump();
        g_log.clear();
    }
    HWND Item(int id) const { return GetDlgItem(dialog_, id); }
    void Pump() const {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (IsDialogMessageA(dialog_, &message)) continue;
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    void Type(int key, int with) const {
        const auto press = [](int each, DWORD flags) {
            if (each == 0) return;
            const UINT scan = MapVirtualKeyA(static_cast<UINT>(each), 0);
            keybd_event(static_cast<BYTE>(each), static_cast<BYTE>(scan), flags, 0);
        };
        press(with, 0);
        press(key, 0);
        press(key, KEYEVENTF_KEYUP);
        press(with, KEYEVENTF_KEYUP);
        Pump();
    }

private:
    HWND dialog_ = nullptr;
};

TEST_F(DialogKeys, AFieldOfManyLinesLeavesTheDialogItsKeys) {
    const struct {
        const char* name;
        DWORD style;
        int key, with;
        const char* text;
        const char* log;
        int focus;
    } rows[] = {
        {"Tab goes on", 0, VK_TAB, 0, "", "", IDOK},
        {"Shift and Tab go back", 0, VK_TAB, VK_SHIFT, "", "", kOther},
        {"Ctrl and Tab do not", 0, VK_TAB, VK_CONTROL, "", "", kField},
        {"Escape closes", 0, VK_ESCAPE, 0, "", "2;", kField},
        {"Enter presses the default button", 0, VK_RETURN, 0, "", "1;", kField},
        {"or is the field's", ES_WANTRETURN, VK_RETURN, 0, "\r\n", "", kField},
        {"whose Tab goes on", ES_WANTRETURN, VK_TAB, 0, "", "", IDOK},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Template made(false);
        made.Item(kEdit, ES_MULTILINE | WS_TABSTOP | row.style, kField, u"")
            .Item(kButton, BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK, u"OK")
            .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP, kOther, u"Other");
        Show(made);
        SetFocus(Item(kField));
        Type(row.key, row.with);
        char text[16] = "";
        GetWindowTextA(Item(kField), text, sizeof text);
        EXPECT_STREQ(text, row.text);
        EXPECT_EQ(g_log, row.log);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), row.focus);
    }
}

TEST_F(DialogKeys, LettersLeadOnlyToWhatMayBeUsed) {
    Template made(false);
    made.Item(kButton, BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK, u"OK")
        .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP, kGone, u"&Go")
        .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP | WS_DISABLED, kOff, u"&Off")
        .Item(kStatic, 0, 0xFFFF, u"&Name")
        .Item(kEdit, WS_TABSTOP | WS_DISABLED, kOffField, u"")
        .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP, kOther, u"A&gain");
    Show(made);
    ShowWindow(Item(kGone), SW_HIDE);
    const struct {
        char letter;
        const char* log;
        int focus;
    } rows[] = {{'o', "", IDOK}, {'n', "", IDOK}, {'g', "103;", kOther}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.letter);
        SetFocus(Item(IDOK));
        g_log.clear();
        MSG letter{};
        letter.hwnd = Item(IDOK);
        letter.message = WM_SYSCHAR;
        letter.wParam = static_cast<WPARAM>(row.letter);
        IsDialogMessageA(GetParent(letter.hwnd), &letter);
        EXPECT_EQ(g_log, row.log);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), row.focus);
    }
}

TEST_F(DialogKeys, ADialogTakesTheMouseFromWhoeverHeldIt) {
    for (const HWND over : {HWND{}, owner.GetHandle()}) {
        SetCapture(owner.GetHandle());
        g_log.clear();
        EXPECT_EQ(DialogBoxIndirectParamA(nullptr, Bytes(Template(false)), over, &Procedure, 0), 7);
        EXPECT_EQ(g_log, "free;");
        ReleaseCapture();
    }
}

}  // namespace
