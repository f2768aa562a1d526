// SDlg: a dialog, made from a template in memory or in the program's resources.
//
//     class SGoTo : public SDlg {
//         SDECLARE_MESSAGE_MAP(SGoTo);
//     public:
//         explicit SGoTo(SWnd* parent) : SDlg(kTemplate, sizeof kTemplate, parent) {}
//         int line = 1;
//     protected:
//         int OnInitDialog() override { SetDlgItemInt(IDC_LINE, line); return 1; }
//         void OnOK() override { line = GetDlgItemInt(IDC_LINE); SDlg::OnOK(); }
//     };
//     SGoTo dialog(&frame);
//     if (dialog.DoModal() == IDOK) GoTo(dialog.line);
//
// Its message map works as any window's; OnOK and OnCancel are the commands IDOK and IDCANCEL.
//
// Threads: those of SWnd. Errors: -1 or 0, and the platform's code in GetLastError; a template that
// is not whole is ERROR_INVALID_PARAMETER. Off Windows there are no resources.
#ifndef BRCORE8_DIALOGS_DLG_H
#define BRCORE8_DIALOGS_DLG_H

#include <brcore8/window/wnd.h>

#include <cstddef>

class BRCORE8_API SDlg : public SWnd {
    SDECLARE_CLASS(SDlg);
    SDECLARE_MESSAGE_MAP(SDlg);

public:
    // Without a template, for dialogs that the platform makes, and for CreateModeless.
    explicit SDlg(SWnd* parent = nullptr) noexcept : parent_(parent) {}
    // The template, plain or extended, stays the caller's and must live until the dialog is made.
    SDlg(const void* bytes, std::size_t size, SWnd* parent = nullptr) noexcept
        : parent_(parent), template_(bytes), templateSize_(size) {}
    // The template of that number in the current resource module.
    explicit SDlg(UINT resource, SWnd* parent = nullptr) noexcept
        : parent_(parent), resource_(resource) {}

    // Shows the dialog until it is ended, its parent's top-level window disabled meanwhile; without
    // a parent the application's main window is it. The result that it was ended with: IDOK and
    // IDCANCEL, unless the dialog says otherwise; -1 when it could not be made or the program ends.
    virtual int DoModal();
    // Makes a dialog that works beside other windows. 1, or 0, also when OnInitDialog ended it.
    int CreateModeless(SWnd* parent = nullptr);
    int CreateModeless(const void* bytes, std::size_t size, SWnd* parent = nullptr);
    // Ends DoModal; a dialog that was made modeless is destroyed.
    void EndDialog(int result);

    // Tab, arrows, Enter, Escape and letters.
    int PreTranslateMessage(MSG* message) override;

    // --- The platform's calls -----------------------------------------------------------------

    SString GetDlgItemText(int id) const;
    BOOL SetDlgItemText(int id, const char* text) {
        return ::SetDlgItemTextA(GetHandle(), id, text != nullptr ? text : "");
    }
    // 0, and *isNumber 0, for what is no number.
    int GetDlgItemInt(int id, BOOL* isNumber = nullptr) const {
        return static_cast<int>(::GetDlgItemInt(GetHandle(), id, isNumber, 1));
    }
    BOOL SetDlgItemInt(int id, int value) {
        return ::SetDlgItemInt(GetHandle(), id, static_cast<UINT>(value), 1);
    }
    BOOL CheckDlgButton(int id, UINT check) { return ::CheckDlgButton(GetHandle(), id, check); }
    UINT IsDlgButtonChecked(int id) const { return ::IsDlgButtonChecked(GetHandle(), id); }
    BOOL CheckRadioButton(int first, int last, int check) {
        return ::CheckRadioButton(GetHandle(), first, last, check);
    }
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return ::SendDlgItemMessageA(GetHandle(), id, message, wParam, lParam);
    }
    // From dialog units to pixels.
    BOOL MapDialogRect(RECT* rect) const { return ::MapDialogRect(GetHandle(), rect); }
    // The button that Enter presses.
    void SetDefID(UINT id) { SendMessage(DM_SETDEFID, id); }
    UINT GetDefID() const { return LOWORD(SendMessage(DM_GETDEFID)); }
    void NextDlgCtrl() { SendMessage(WM_NEXTDLGCTL, 0, 0); }
    void PrevDlgCtrl() { SendMessage(WM_NEXTDLGCTL, 1, 0); }

protected:
    // The controls are there. 1 gives the first of them the focus, 0 when the dialog did so itself.
    virtual int OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();

    // The window that owns the dialog: the parent's top-level one, or the application's main
    // window; null without either.
    HWND FindOwner() const;
    // Where the template is: the one that was given, or the resource's; null when there is none.
    const void* FindTemplate(std::size_t& size) const;

private:
    HWND Make(HWND owner);
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);

    SWnd* parent_ = nullptr;
    const void* template_ = nullptr;
    std::size_t templateSize_ = 0;
    UINT resource_ = 0;
    bool isModal_ = false;
    bool isEnded_ = false;
    int result_ = -1;
};

#endif
