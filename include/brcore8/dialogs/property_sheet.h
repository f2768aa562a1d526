// SPropertySheet: a dialog of pages with tabs, the platform's. Off Windows there is none.
//
//     SPropertySheet sheet("Settings", &frame);
//     sheet.AddPage(&general);
//     sheet.AddPage(&fonts);
//     if (sheet.DoModal() == IDOK) ...
//
// Threads: those of SWnd. Ownership: pages stay the caller's and live as long as the sheet shows.
#ifndef BRCORE8_DIALOGS_PROPERTY_SHEET_H
#define BRCORE8_DIALOGS_PROPERTY_SHEET_H

#include <brcore8/dialogs/dlg.h>
#include <brcore8/platform/font_info.h>

#include <vector>

// A page is a dialog whose window the sheet makes when the page is first shown.
class BRCORE8_API SPropertyPage : public SDlg {
    SDECLARE_CLASS(SPropertyPage);

public:
    using SDlg::SDlg;
    // The tab's text; without one it is the template's title.
    void SetTitle(const char* title) { title_ = title; }
    // Lets the sheet know that there is something to apply.
    void SetModified(int on = 1);

protected:
    // 0 keeps the page from being shown, from being left, and the sheet from closing with OK.
    virtual int OnSetActive();
    virtual int OnKillActive();
    virtual int OnApply();
    // Cancel.
    virtual void OnReset();

    int OnNotify(WPARAM wParam, NMHDR* header, LRESULT* result) override;

private:
    friend class SPropertySheet;

    SString title_;
};

// A page that holds a font.
class BRCORE8_API SFontPropertyPage : public SPropertyPage {
    SDECLARE_CLASS(SFontPropertyPage);

public:
    using SPropertyPage::SPropertyPage;
    void SetLogFont(const LOGFONTA& font) noexcept { font_ = font; }
    const LOGFONTA& GetLogFont() const noexcept { return font_; }

protected:
    // Asks with the dialog of fonts, and tells the sheet of a change. IDOK or IDCANCEL.
    int ChooseLogFont();

private:
    LOGFONTA font_{};
};

class BRCORE8_API SPropertySheet : public SWnd {
    SDECLARE_CLASS(SPropertySheet);

public:
    explicit SPropertySheet(const char* title = nullptr, SWnd* parent = nullptr)
        : title_(title), parent_(parent) {}

    void AddPage(SPropertyPage* page) { pages_.push_back(page); }
    int GetPageCount() const noexcept { return static_cast<int>(pages_.size()); }
    // Null outside of the pages.
    SPropertyPage* GetPage(int index) const noexcept;
    // The page that shows first.
    void SetActivePage(int index) noexcept { first_ = index; }

    // IDOK or IDCANCEL; -1 without pages, when a template is not whole, and off Windows.
    int DoModal();

private:
    SString title_;
    SWnd* parent_;
    std::vector<SPropertyPage*> pages_;
    int first_ = 0;
};

#endif
