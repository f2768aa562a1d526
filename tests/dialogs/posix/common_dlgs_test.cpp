// The platform's dialogs where it has none: files and folders are asked for with a field, and the
// others say that they are not there.

#include <brcore8/dialogs/common_dlgs.h>
#include <brcore8/dialogs/property_sheet.h>

#include <string>

#include "dialogs/answer.h"
#include "dialogs/template.h"

namespace {

class AbsentDialogs : public OwnedDialogs {
protected:
    void ExpectAbsent(const char* name, int answer, int expected) {
        EXPECT_EQ(answer, expected) << name;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_CALL_NOT_IMPLEMENTED}) << name;
        SetLastError(0);
    }
};

TEST_F(AbsentDialogs, AnswerAsIfCancelled) {
    LOGFONTA font{};
    std::strcpy(font.lfFaceName, "Sans");
    SColorDlg color(RGB(1, 2, 3), &owner);
    ExpectAbsent("colour", color.DoModal(), IDCANCEL);
    EXPECT_EQ(color.GetColor(), RGB(1, 2, 3));
    SFontDlg fonts(font, &owner);
    ExpectAbsent("font", fonts.DoModal(), IDCANCEL);
    EXPECT_STREQ(fonts.GetFont().lfFaceName, "Sans");
    SPrintDlg print(&owner);
    ExpectAbsent("print", print.DoModal(), IDCANCEL);
    EXPECT_EQ(print.GetPrinterDC(), nullptr);
    SPageSetupDlg pages({1, 2, 3, 4}, &owner);
    ExpectAbsent("page setup", pages.DoModal(), IDCANCEL);
    EXPECT_EQ(pages.GetMargins().right, 3);
    SFindReplaceDlg find(&owner);
    ExpectAbsent("find", find.CreateFind("a", "b", 1, 0), 0);
    EXPECT_EQ(find.GetHandle(), nullptr);
    EXPECT_STREQ(find.GetFindString(), "");
    EXPECT_EQ(find.GetFlags(), 0u);

    const Template bytes(true);
    class Page : public SFontPropertyPage {
    public:
        using SFontPropertyPage::ChooseLogFont;
        using SFontPropertyPage::SFontPropertyPage;
    } page(bytes.bytes.data(), bytes.bytes.size());
    page.SetLogFont(font);
    ExpectAbsent("font of a page", page.ChooseLogFont(), IDCANCEL);
    EXPECT_STREQ(page.GetLogFont().lfFaceName, "Sans");
    SPropertySheet sheet("Sheet", &owner);
    EXPECT_EQ(sheet.DoModal(), -1) << "no pages";
    sheet.AddPage(&page);
    EXPECT_EQ(sheet.GetPageCount(), 1);
    EXPECT_EQ(sheet.GetPage(0), &page);
    EXPECT_EQ(sheet.GetPage(1), nullptr);
    SetLastError(0);
    ExpectAbsent("sheet", sheet.DoModal(), -1);
}

TEST_F(AbsentDialogs, PathsAreAskedForWithAField) {
    const struct {
        const char* proposed;
        const char* extension;
        int button;
        const char* chosen;
        int answer;
    } rows[] = {
        {"/tmp/plan", "brn", IDOK, "/tmp/plan.brn", IDOK},
        {"/tmp/plan.txt", "brn", IDOK, "/tmp/plan.txt", IDOK},
        {"/tmp.d/plan", "brn", IDOK, "/tmp.d/plan.brn", IDOK},
        {"/tmp/plan", nullptr, IDOK, "/tmp/plan", IDOK},
        {"/tmp/plan", "brn", IDCANCEL, "/tmp/plan", IDCANCEL},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.proposed);
        SFileDlg file(0, "Plans|*.brn", row.extension, &owner);
        file.SetPath(row.proposed);
        EXPECT_EQ(Answer(file, row.button), row.answer);
        EXPECT_STREQ(file.GetPath(), row.chosen);
    }
    SDirectoryDlg directory(&owner);
    directory.SetPath("/tmp");
    EXPECT_EQ(Answer(directory, IDOK), IDOK);
    EXPECT_STREQ(directory.GetPath(), "/tmp");
    SFolderDlg folder("Where?", &owner);
    EXPECT_EQ(Answer(folder, IDCANCEL), IDCANCEL) << "OK with an empty field does nothing";
    EXPECT_STREQ(folder.GetPath(), "");
}

}  // namespace
