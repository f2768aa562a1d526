// Dialogs from templates in memory, and message boxes.

#include <brcore8/dialogs/dlg.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "dialogs/answer.h"
#include "dialogs/template.h"

namespace {

constexpr WORD kButton = 0x80, kStatic = 0x82;
constexpr WORD kApply = 100, kLabel = 101, kCheck = 102, kRadio = 110;

Template Usual(bool isExtended) {
    Template made(isExtended);
    made.Item(kStatic, 0, kLabel, u"Hello")
        .Item(kButton, BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK, u"OK")
        .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP, IDCANCEL, u"Cancel")
        .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP, kApply, u"&Apply")
        .Item(kButton, BS_AUTOCHECKBOX | WS_TABSTOP, kCheck, u"&Check");
    return made;
}

class STestDialog : public SDlg {
    SDECLARE_MESSAGE_MAP(STestDialog);

public:
    using SDlg::SDlg;
    std::string log;
    void (*inInit)(STestDialog&) = nullptr;

    // What the loop finds: messages in the dialog's queue.
    void Press(int id) { PostMessage(WM_COMMAND, static_cast<WPARAM>(id)); }
    void Type(int key) {
        ::PostMessageA(::GetFocus() != nullptr ? ::GetFocus() : GetHandle(), WM_KEYDOWN,
                       static_cast<WPARAM>(key), 1);
    }

protected:
    int OnInitDialog() override {
        log += "init;";
        if (inInit != nullptr) inInit(*this);
        return 1;
    }
    void OnCancel() override {
        log += "cancel;";
        SDlg::OnCancel();
    }

private:
    void OnApply() { log += "apply;"; }
    LRESULT OnThrow(WPARAM, LPARAM) { throw std::runtime_error("escapes"); }
};
SIMPLEMENT_MESSAGE_MAP(STestDialog, SDlg, SOnCommand<&STestDialog::OnApply>(kApply),
                       SOnMessage<&STestDialog::OnThrow>(WM_APP));

using Dialogs = OwnedDialogs;

TEST_F(Dialogs, ADialogRunsUntilItIsEnded) {
    const struct {
        const char* name;
        void (*inInit)(STestDialog&);
        int result;
        const char* log;
    } rows[] = {
        {"OK", [](STestDialog& d) { d.Press(IDOK); }, IDOK, "init;"},
        {"Cancel", [](STestDialog& d) { d.Press(IDCANCEL); }, IDCANCEL, "init;cancel;"},
        {"a button of its own",
         [](STestDialog& d) {
             d.Press(kApply);
             d.Press(IDOK);
         },
         IDOK, "init;apply;"},
        {"closed", [](STestDialog& d) { d.PostMessage(WM_CLOSE); }, IDCANCEL, "init;cancel;"},
        {"ended before it shows", [](STestDialog& d) { d.EndDialog(77); }, 77, "init;"},
        {"an exception is contained",
         [](STestDialog& d) {
             d.PostMessage(WM_APP);
             d.Press(IDOK);
         },
         IDOK, "init;"},
        {"its window goes", [](STestDialog& d) { d.PostMessage(WM_SYSCOMMAND, SC_CLOSE); },
         IDCANCEL, "init;cancel;"},
        {"Escape", [](STestDialog& d) { d.PostMessage(WM_KEYDOWN, VK_ESCAPE, 1); }, IDCANCEL,
         "init;cancel;"},
        {"Enter", [](STestDialog& d) { d.PostMessage(WM_KEYDOWN, VK_RETURN, 1); }, IDOK, "init;"},
    };
    for (const bool isExtended : {false, true}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(testing::Message() << row.name << (isExtended ? ", extended" : ""));
            const Template bytes = Usual(isExtended);
            STestDialog dialog(bytes.bytes.data(), bytes.bytes.size(), &owner);
            dialog.inInit = row.inInit;
            EXPECT_EQ(dialog.DoModal(), row.result);
            EXPECT_EQ(dialog.log, row.log);
            EXPECT_EQ(dialog.GetHandle(), nullptr);
            EXPECT_TRUE(owner.IsWindowEnabled());
        }
    }
}

TEST_F(Dialogs, ADialogMayEndInItsOwnBeginning) {
    static HWND window;
    const Template bytes = Usual(true);
    for (const bool isModal : {true, false}) {
        SCOPED_TRACE(isModal);
        auto* const dialog = new STestDialog(bytes.bytes.data(), bytes.bytes.size(), &owner);
        dialog->inInit = [](STestDialog& d) {
            window = d.GetHandle();
            delete &d;
        };
        if (isModal)
            EXPECT_EQ(dialog->DoModal(), -1);
        else
            EXPECT_EQ(dialog->CreateModeless(), 0);
        EXPECT_TRUE(owner.IsWindowEnabled());
        EXPECT_EQ(SWnd::FromHandlePermanent(window), nullptr);
        ::DestroyWindow(window);
    }
    STestDialog closed(bytes.bytes.data(), bytes.bytes.size(), &owner);
    closed.inInit = [](STestDialog& d) { d.DestroyWindow(); };
    EXPECT_EQ(closed.DoModal(), -1);
    EXPECT_EQ(closed.CreateModeless(), 0);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

TEST_F(Dialogs, TheMouseIsTheDialogsWhoeverHeldIt) {
    const Template bytes = Usual(true);
    STestDialog dialog(bytes.bytes.data(), bytes.bytes.size(), &owner);
    dialog.inInit = [](STestDialog& d) {
        d.log += ::GetCapture() == nullptr ? "free;" : "held;";
        d.Press(IDOK);
    };
    SWnd child;
    ASSERT_EQ(child.CreateEx(0, "S_Window", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50,
                             owner.GetHandle(), nullptr),
              1);
    child.SetCapture();
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.log, "init;free;");
    child.DestroyWindow();
}

TEST_F(Dialogs, ControlsAreWhereTheTemplateSays) {
    for (const bool isExtended : {false, true}) {
        SCOPED_TRACE(isExtended);
        const Template bytes = Usual(isExtended);
        STestDialog dialog(bytes.bytes.data(), bytes.bytes.size());
        ASSERT_EQ(dialog.CreateModeless(&owner), 1);
        EXPECT_STREQ(dialog.GetWindowText(), "Test");
        EXPECT_STREQ(dialog.GetDlgItemText(kLabel), "Hello");
        EXPECT_EQ(dialog.GetDefID(), unsigned{IDOK});
        RECT unit{5, 5, 40, 14};
        EXPECT_TRUE(dialog.MapDialogRect(&unit));
        RECT place{};
        ::GetWindowRect(::GetDlgItem(dialog.GetHandle(), kApply), &place);
        ::MapWindowPoints(nullptr, dialog.GetHandle(), reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(place.left, unit.left);
        EXPECT_EQ(place.top, unit.top);
        EXPECT_EQ(place.right - place.left, unit.right);
        EXPECT_EQ(place.bottom - place.top, unit.bottom);

        EXPECT_TRUE(dialog.SetDlgItemText(kLabel, "4711x"));
        BOOL isNumber = 0;
        EXPECT_TRUE(dialog.SetDlgItemInt(kLabel, -12));
        EXPECT_EQ(dialog.GetDlgItemInt(kLabel, &isNumber), -12);
        EXPECT_TRUE(isNumber);
        for (const char* none : {"", "x", "99999999999", "-"}) {
            SCOPED_TRACE(none);
            dialog.SetDlgItemText(kLabel, none);
            EXPECT_EQ(dialog.GetDlgItemInt(kLabel, &isNumber), 0);
            EXPECT_FALSE(isNumber);
        }
        EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), 0u);
        dialog.CheckDlgButton(kCheck, 1);
        EXPECT_EQ(dialog.IsDlgButtonChecked(kCheck), 1u);
        dialog.EndDialog(1);
        EXPECT_EQ(dialog.GetHandle(), nullptr) << "a modeless one is destroyed";
    }
}

TEST_F(Dialogs, TheKeyboardGoesFromControlToControl) {
    Template bytes(false);
    bytes.Item(kButton, BS_PUSHBUTTON | WS_TABSTOP | WS_GROUP, kApply, u"&Apply")
        .Item(kButton, BS_PUSHBUTTON | WS_TABSTOP | WS_DISABLED, 103, u"Off")
        .Item(kButton, BS_AUTORADIOBUTTON | WS_TABSTOP | WS_GROUP, kRadio, u"&One")
        .Item(kButton, BS_AUTORADIOBUTTON, kRadio + 1, u"&Two")
        .Item(kButton, BS_AUTORADIOBUTTON, kRadio + 2, u"T&hree")
        .Item(kButton, BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP, IDOK, u"OK");
    STestDialog dialog(bytes.bytes.data(), bytes.bytes.size());
    ASSERT_EQ(dialog.CreateModeless(&owner), 1);
    dialog.ShowWindow(SW_SHOW);
    const HWND handle = dialog.GetHandle();
    const auto next = [=](HWND from, BOOL back) {
        return ::GetDlgCtrlID(GetNextDlgTabItem(handle, from, back));
    };
    const auto item = [=](int id) { return ::GetDlgItem(handle, id); };
    EXPECT_EQ(next(nullptr, 0), kApply);
    EXPECT_EQ(next(item(kApply), 0), kRadio) << "not the disabled one";
    EXPECT_EQ(next(item(IDOK), 0), kApply) << "around";
    EXPECT_EQ(next(item(kApply), 1), IDOK);
    EXPECT_EQ(::GetDlgCtrlID(GetNextDlgGroupItem(handle, item(kRadio), 0)), kRadio + 1);
    EXPECT_EQ(::GetDlgCtrlID(GetNextDlgGroupItem(handle, item(kRadio), 1)), kRadio + 2);
    EXPECT_EQ(::GetDlgCtrlID(GetNextDlgGroupItem(handle, item(kRadio + 2), 0)), kRadio);

    ::SetFocus(item(kApply));
    dialog.NextDlgCtrl();
    EXPECT_EQ(::GetFocus(), item(kRadio));
    dialog.PrevDlgCtrl();
    EXPECT_EQ(::GetFocus(), item(kApply));
    MSG key{};
    key.hwnd = item(kApply);
    key.message = WM_KEYDOWN;
    key.wParam = VK_TAB;
    EXPECT_TRUE(dialog.PreTranslateMessage(&key));
    EXPECT_EQ(::GetFocus(), item(kRadio));
    dialog.CheckRadioButton(kRadio, kRadio + 2, kRadio + 1);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kRadio), 0u);
    EXPECT_EQ(dialog.IsDlgButtonChecked(kRadio + 1), 1u);
    key.hwnd = item(kRadio);
    key.message = WM_CHAR;
    key.wParam = 'a';
    EXPECT_TRUE(dialog.PreTranslateMessage(&key));
    EXPECT_EQ(dialog.log, "init;apply;") << "its letter presses the button";
    key.hwnd = owner.GetHandle();
    EXPECT_FALSE(::IsDialogMessageA(handle, &key)) << "another window's";
}

TEST_F(Dialogs, HostileTemplatesAreRefused) {
    for (const bool isExtended : {false, true}) {
        const Template whole = Usual(isExtended);
        for (std::size_t size = 0; size < whole.bytes.size(); ++size) {
            SCOPED_TRACE(size);
            const std::vector<unsigned char> cut(whole.bytes.begin(),
                                                 whole.bytes.begin() + static_cast<long>(size));
            STestDialog dialog(cut.data(), cut.size(), &owner);
            SetLastError(0);
            EXPECT_EQ(dialog.DoModal(), -1);
            EXPECT_EQ(dialog.log, "");
            EXPECT_TRUE(owner.IsWindowEnabled());
        }
        for (const WORD count : {WORD{6}, WORD{1000}, WORD{0xFFFF}}) {
            Template lying = Usual(isExtended);
            lying.SetCount(count);
            STestDialog dialog(lying.bytes.data(), lying.bytes.size(), &owner);
            EXPECT_EQ(dialog.DoModal(), -1);
        }
        // A class that there is not.
        Template unknown = Usual(isExtended);
        unknown.Item(0x99, 0, 5, u"?");
        STestDialog dialog(unknown.bytes.data(), unknown.bytes.size(), &owner);
        EXPECT_EQ(dialog.DoModal(), -1);
        EXPECT_EQ(dialog.GetHandle(), nullptr);
    }
    SDlg none(&owner);
    EXPECT_EQ(none.DoModal(), -1);
    SDlg missing(4711u, &owner);
    EXPECT_EQ(missing.DoModal(), -1);
}

// --- The platform's procedures ------------------------------------------------------------------

INT_PTR CALLBACK AnswerForty(HWND dialog, UINT message, WPARAM, LPARAM param) {
    if (message != WM_INITDIALOG) return 0;
    EXPECT_EQ(param, 5);
    EndDialog(dialog, 40 + param);
    return 1;
}

TEST_F(Dialogs, ThePlatformsOwnProceduresWork) {
    const Template bytes = Usual(false);
    std::vector<std::uint32_t> aligned(bytes.bytes.size() / 4 + 2);
    std::memcpy(aligned.data(), bytes.bytes.data(), bytes.bytes.size());
    const auto* const from = reinterpret_cast<const DLGTEMPLATE*>(aligned.data());
    EXPECT_EQ(DialogBoxIndirectParamA(nullptr, from, owner.GetHandle(), &AnswerForty, 5), 45);
    EXPECT_TRUE(owner.IsWindowEnabled());
}

// --- Message boxes ------------------------------------------------------------------------------

// Presses a button of the box that shows when the timer comes.
class STestAsker : public SWnd {
    SDECLARE_MESSAGE_MAP(STestAsker);

public:
    int press = IDOK;
    bool byKey = false;
    bool sawDisabled = false;
    std::string text;

private:
    void OnTimer(UINT_PTR) {
        const HWND box = FindWindowA("#32770", "A question");
        if (box == nullptr) return;
        KillTimer(1);
        sawDisabled = !IsWindowEnabled();
        char bytes[100] = "";
        GetDlgItemTextA(box, 0xFFFF, bytes, sizeof bytes);
        text = bytes;
        if (byKey)
            ::PostMessageA(box, WM_KEYDOWN, static_cast<WPARAM>(press), 1);
        else
            ::SendMessageA(::GetDlgItem(box, press), BM_CLICK, 0, 0);
    }
};
SIMPLEMENT_MESSAGE_MAP(STestAsker, SWnd, SOnTimer<&STestAsker::OnTimer>());

TEST_F(Dialogs, AMessageBoxAnswersTheButtonThatWasPressed) {
    const struct {
        const char* name;
        UINT style;
        int press;
        bool byKey;
        int result;
    } rows[] = {
        {"Yes", MB_YESNO | MB_ICONQUESTION, IDYES, false, IDYES},
        {"No", MB_YESNO | MB_ICONQUESTION, IDNO, false, IDNO},
        {"OK", MB_OK, IDOK, false, IDOK},
        {"Cancel", MB_OKCANCEL | MB_ICONHAND, IDCANCEL, false, IDCANCEL},
        {"Retry", MB_ABORTRETRYIGNORE | MB_ICONEXCLAMATION, IDRETRY, false, IDRETRY},
        {"Escape", MB_YESNOCANCEL, VK_ESCAPE, true, IDCANCEL},
        {"Escape where there is only OK", MB_OK, VK_ESCAPE, true, IDCANCEL},
        {"Enter", MB_YESNO, VK_RETURN, true, IDYES},
        {"Enter on another default", MB_YESNO | MB_DEFBUTTON2, VK_RETURN, true, IDNO},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        STestAsker asker;
        ASSERT_EQ(
            asker.CreateEx(0, "S_Window", "Asker", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 99, 99),
            1);
        asker.press = row.press;
        asker.byKey = row.byKey;
        asker.SetTimer(1, 20);
        EXPECT_EQ(asker.MessageBox("Do you want to\nsave it?", "A question", row.style),
                  row.result);
        EXPECT_TRUE(asker.sawDisabled);
        EXPECT_EQ(asker.text, "Do you want to\nsave it?");
        EXPECT_TRUE(asker.IsWindowEnabled());
        EXPECT_EQ(FindWindowA("#32770", "A question"), nullptr);
    }
}

}  // namespace
