// The platform's dialogs and sheets, each answered by its own buttons.

#include <brcore8/dialogs/common_dlgs.h>
#include <brcore8/dialogs/property_sheet.h>

#include <commdlg.h>

#include <cstdio>
#include <string>

#include "dialogs/answer.h"
#include "dialogs/template.h"

namespace {

class CommonDialogs : public OwnedDialogs {};

TEST_F(CommonDialogs, AnswerWhatTheyBeganWithOrStayAsTheyWere) {
    SColorDlg color(RGB(1, 2, 3), &owner);
    EXPECT_EQ(Answer(color, IDCANCEL), IDCANCEL);
    EXPECT_EQ(Answer(color, IDOK), IDOK);
    EXPECT_EQ(color.GetColor(), RGB(1, 2, 3));

    LOGFONTA font{};
    font.lfHeight = -16;
    std::strcpy(font.lfFaceName, "DejaVu Sans");
    SFontDlg fonts(font, &owner);
    EXPECT_EQ(Answer(fonts, IDCANCEL), IDCANCEL);
    EXPECT_EQ(Answer(fonts, IDOK), IDOK);
    EXPECT_STREQ(fonts.GetFont().lfFaceName, "DejaVu Sans");
    EXPECT_EQ(fonts.GetFont().lfHeight, -16);

    SPageSetupDlg pages({1, 2, 3, 4}, &owner);
    EXPECT_EQ(Answer(pages, IDCANCEL), IDCANCEL);
    EXPECT_EQ(pages.GetMargins().right, 3);
    // Whether there is a printer is the machine's affair.
    SPrintDlg print(&owner);
    EXPECT_EQ(Answer(print, IDCANCEL), IDCANCEL);
    EXPECT_EQ(print.GetPrinterDC(), nullptr);
}

TEST_F(CommonDialogs, FilesAndFolders) {
    char folder[MAX_PATH] = "";
    ASSERT_NE(GetTempPathA(sizeof folder, folder), 0u);
    const std::string path = std::string(folder) + "brcore8 dialogs.txt";
    std::FILE* const made = std::fopen(path.c_str(), "w");
    ASSERT_NE(made, nullptr);
    std::fclose(made);
    SFileDlg open(1, "Texts|*.txt|All files|*.*", "txt", &owner);
    open.SetPath(path.c_str());
    EXPECT_EQ(Answer(open, IDCANCEL), IDCANCEL);
    EXPECT_STREQ(open.GetPath(), path.c_str());
    EXPECT_EQ(Answer(open, IDOK), IDOK);
    EXPECT_STREQ(open.GetPath(), path.c_str());
    std::remove(path.c_str());

    SFileDlg save(0, "Plans|*.brn", "brn", &owner);
    save.SetPath((std::string(folder) + "brcore8 plan").c_str());
    EXPECT_EQ(Answer(save, IDOK), IDOK);
    EXPECT_STREQ(save.GetPath(), (std::string(folder) + "brcore8 plan.brn").c_str());

    SFolderDlg folders("Where?", &owner);
    EXPECT_EQ(Answer(folders, IDCANCEL), IDCANCEL);
    EXPECT_STREQ(folders.GetPath(), "");
    SDirectoryDlg directories(&owner);
    directories.SetPath("as it was");
    EXPECT_EQ(Answer(directories, IDCANCEL), IDCANCEL);
    EXPECT_STREQ(directories.GetPath(), "as it was");
}

// What a dialog that finds tells its owner.
class SFindOwner : public SWnd {
public:
    const SFindReplaceDlg* dialog = nullptr;
    std::string log;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != SFindReplaceDlg::GetFindMessage())
            return SWnd::WindowProc(message, wParam, lParam);
        const DWORD flags = dialog->GetFlags();
        if (flags & FR_FINDNEXT) log += "find " + std::string(dialog->GetFindString().View()) + ";";
        if (flags & FR_REPLACEALL)
            log += "all " + std::string(dialog->GetReplaceString().View()) + ";";
        if (flags & FR_DIALOGTERM) log += "end;";
        return 0;
    }
};

TEST(FindDialog, TellsItsOwner) {
    constexpr int kReplaceAll = 1025;  // of the platform's template
    SFindOwner owner;
    ASSERT_EQ(owner.CreateEx(0, "S_Window", "Owner", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200), 1);
    SFindReplaceDlg dialog(&owner);
    owner.dialog = &dialog;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL) << "it is never modal";
    ASSERT_EQ(dialog.CreateFind("wall", "door", 1, 0), 1);
    EXPECT_EQ(dialog.CreateFind("again", "", 1, 0), 0);
    EXPECT_STREQ(dialog.GetFindString(), "wall");
    for (const int button : {int{IDOK}, kReplaceAll, int{IDCANCEL}})
        dialog.SendMessage(WM_COMMAND, static_cast<WPARAM>(button));
    EXPECT_EQ(owner.log, "find wall;all door;end;");
    EXPECT_EQ(dialog.GetHandle(), nullptr);
    EXPECT_EQ(dialog.CreateFind("next", nullptr, 0, 0), 1) << "another one";
    EXPECT_STREQ(dialog.GetReplaceString(), "");
    owner.DestroyWindow();
}

class SLoggedPage : public SFontPropertyPage {
public:
    using SFontPropertyPage::ChooseLogFont;
    using SFontPropertyPage::SFontPropertyPage;
    std::string log;
    int refusals = 0;

protected:
    int OnSetActive() override {
        log += "set;";
        SetModified();
        return 1;
    }
    int OnKillActive() override {
        log += "kill;";
        return refusals-- <= 0;
    }
    int OnApply() override {
        log += "apply;";
        return 1;
    }
    void OnReset() override { log += "reset;"; }
};

TEST_F(CommonDialogs, ASheetTellsItsPages) {
    const Template bytes(true, u"Page");
    const struct {
        const char* name;
        int button;
        int first;
        int refusals;
        int answer;
        const char* log[2];
    } rows[] = {
        {"OK", IDOK, 0, 0, IDOK, {"set;kill;apply;", ""}},
        {"OK on the second", IDOK, 1, 0, IDOK, {"", "set;kill;apply;"}},
        {"refused once", IDOK, 0, 1, IDOK, {"set;kill;kill;apply;", ""}},
        {"Cancel", IDCANCEL, 0, 0, IDCANCEL, {"set;reset;", ""}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SLoggedPage pages[] = {SLoggedPage(bytes.bytes.data(), bytes.bytes.size()),
                               SLoggedPage(bytes.bytes.data(), bytes.bytes.size())};
        SPropertySheet sheet("Sheet", &owner);
        pages[0].refusals = row.refusals;
        pages[1].SetTitle("Second");
        for (SLoggedPage& page : pages)
            sheet.AddPage(&page);
        sheet.SetActivePage(row.first);
        EXPECT_EQ(Answer(sheet, row.button), row.answer);
        for (int i : {0, 1})
            EXPECT_EQ(pages[i].log, row.log[i]) << i;
    }
    SPropertySheet none("Sheet", &owner);
    EXPECT_EQ(none.DoModal(), -1);
    SLoggedPage cut(bytes.bytes.data(), 7);
    none.AddPage(&cut);
    EXPECT_EQ(none.DoModal(), -1) << "a template that is not whole";
}

TEST_F(CommonDialogs, APageKeepsTheFontThatIsChosen) {
    const Template bytes(true);
    SLoggedPage page(bytes.bytes.data(), bytes.bytes.size(), &owner);
    LOGFONTA font{};
    font.lfHeight = -20;
    std::strcpy(font.lfFaceName, "DejaVu Sans");
    page.SetLogFont(font);
    const Pressing pressing(IDOK);
    EXPECT_EQ(page.ChooseLogFont(), IDOK);
    EXPECT_STREQ(page.GetLogFont().lfFaceName, "DejaVu Sans");
}

}  // namespace
