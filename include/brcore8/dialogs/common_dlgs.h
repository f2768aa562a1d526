// The platform's own dialogs: colours, fonts, files, folders, printing, and finding.
//
//     SFileDlg dialog(1, "Plans|*.brn|All files|*.*", "brn", &frame);
//     if (dialog.DoModal() == IDOK) Open(dialog.GetPath());
//
// DoModal answers IDOK when the user chose, else IDCANCEL. What was chosen is there after it. These
// dialogs have windows of the platform's making: message maps do not see them. Off Windows, files
// and folders are asked for with a field, and of the others there are none: IDCANCEL with
// ERROR_CALL_NOT_IMPLEMENTED in GetLastError.
//
// Threads: those of SWnd.
#ifndef BRCORE8_DIALOGS_COMMON_DLGS_H
#define BRCORE8_DIALOGS_COMMON_DLGS_H

#include <brcore8/dialogs/dlg.h>
#include <brcore8/platform/font_info.h>

class BRCORE8_API SColorDlg : public SDlg {
    SDECLARE_CLASS(SColorDlg);

public:
    explicit SColorDlg(COLORREF color = 0, SWnd* parent = nullptr) noexcept
        : SDlg(parent), color_(color) {}
    int DoModal() override;
    COLORREF GetColor() const noexcept { return color_; }

private:
    COLORREF color_;
};

class BRCORE8_API SFontDlg : public SDlg {
    SDECLARE_CLASS(SFontDlg);

public:
    explicit SFontDlg(const LOGFONTA& font, SWnd* parent = nullptr) noexcept
        : SDlg(parent), font_(font) {}
    int DoModal() override;
    const LOGFONTA& GetFont() const noexcept { return font_; }
    COLORREF GetColor() const noexcept { return color_; }
    void SetColor(COLORREF color) noexcept { color_ = color; }

private:
    LOGFONTA font_;
    COLORREF color_ = 0;
};

// A file to open, or a name to save as. The filter's parts, a name and a pattern each, are divided
// by bars.
class BRCORE8_API SFileDlg : public SDlg {
    SDECLARE_CLASS(SFileDlg);

public:
    explicit SFileDlg(int isOpen, const char* filter = nullptr, const char* extension = nullptr,
                      SWnd* parent = nullptr)
        : SDlg(parent), isOpen_(isOpen), filter_(filter), extension_(extension) {}
    int DoModal() override;

    void SetTitle(const char* title) { title_ = title; }
    void SetFlags(DWORD flags) noexcept { flags_ = flags; }  // OFN_
    // What is proposed, and what was chosen, with its folder.
    void SetPath(const char* path) { path_ = path; }
    const SString& GetPath() const noexcept { return path_; }

protected:
    SString title_;
    SString path_;

private:
    int isOpen_;
    DWORD flags_ = 0;
    SString filter_;
    SString extension_;
};

// A folder, through the dialog of files.
class BRCORE8_API SDirectoryDlg : public SFileDlg {
    SDECLARE_CLASS(SDirectoryDlg);

public:
    explicit SDirectoryDlg(SWnd* parent = nullptr) : SFileDlg(1, nullptr, nullptr, parent) {}
    int DoModal() override;
};

// A folder of the tree of all.
class BRCORE8_API SFolderDlg : public SDlg {
    SDECLARE_CLASS(SFolderDlg);

public:
    explicit SFolderDlg(const char* title = nullptr, SWnd* parent = nullptr)
        : SDlg(parent), title_(title) {}
    int DoModal() override;
    const SString& GetPath() const noexcept { return path_; }

private:
    SString title_;
    SString path_;
};

class BRCORE8_API SPrintDlg : public SDlg {
    SDECLARE_CLASS(SPrintDlg);

public:
    explicit SPrintDlg(SWnd* parent = nullptr) noexcept : SDlg(parent) {}
    int DoModal() override;
    int GetCopies() const noexcept { return copies_; }
    // 0: all pages.
    int GetFirstPage() const noexcept { return firstPage_; }
    int GetLastPage() const noexcept { return lastPage_; }
    // A context for the printer, the caller's to delete; null before it was chosen.
    HDC GetPrinterDC() const noexcept { return context_; }

private:
    int copies_ = 1;
    int firstPage_ = 0;
    int lastPage_ = 0;
    HDC context_ = nullptr;
};

class BRCORE8_API SPageSetupDlg : public SDlg {
    SDECLARE_CLASS(SPageSetupDlg);

public:
    // Thousandths of a millimetre.
    explicit SPageSetupDlg(const RECT& margins, SWnd* parent = nullptr) noexcept
        : SDlg(parent), margins_(margins) {}
    int DoModal() override;
    const RECT& GetMargins() const noexcept { return margins_; }

private:
    RECT margins_;
};

// The dialog that finds and replaces, beside its owner, who gets the message that
// GetFindMessage tells at each press of a button and asks this object what is wanted. It is
// attached to the dialog's window while that lives.
class BRCORE8_API SFindReplaceDlg : public SDlg {
    SDECLARE_CLASS(SFindReplaceDlg);

public:
    explicit SFindReplaceDlg(SWnd* parent = nullptr) noexcept : SDlg(parent) {}
    ~SFindReplaceDlg() override;

    // 1, or 0 when there is none. IDCANCEL answers DoModal: this dialog is not modal.
    int CreateFind(const char* text, const char* replacement, int isReplacing, DWORD flags);
    int DoModal() override;

    static UINT GetFindMessage();
    SString GetFindString() const;
    SString GetReplaceString() const;
    DWORD GetFlags() const;  // FR_

protected:
    // The platform's own dialog knows what its buttons mean.
    void OnOK() override;
    void OnCancel() override;

private:
    void* state_ = nullptr;
};

#endif
