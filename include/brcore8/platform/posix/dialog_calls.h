// Dialogs and message boxes: the calls of the desktop that this library offers where the system has
// none, with the platform's meaning. Dialogs are windows of the class "#32770"; templates are in
// memory, for there are none in resources.
//
// Threads: as for windows. Errors: 0, null or -1, and the code in GetLastError.
#ifndef BRCORE8_PLATFORM_POSIX_DIALOG_CALLS_H
#define BRCORE8_PLATFORM_POSIX_DIALOG_CALLS_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/posix/last_error.h>
#include <brcore8/platform/posix/window_calls.h>

constexpr int DS_ABSALIGN = 1;
constexpr int DS_SYSMODAL = 2;
constexpr int DS_3DLOOK = 4;
constexpr int DS_FIXEDSYS = 8;
constexpr int DS_NOFAILCREATE = 0x10;
constexpr int DS_SETFONT = 0x40;
constexpr int DS_MODALFRAME = 0x80;
constexpr int DS_NOIDLEMSG = 0x100;
constexpr int DS_SETFOREGROUND = 0x200;
constexpr int DS_CONTROL = 0x400;
constexpr int DS_CENTER = 0x800;
constexpr int DS_SHELLFONT = 0x48;
constexpr int DM_GETDEFID = WM_USER;
constexpr int DM_SETDEFID = WM_USER + 1;
constexpr int DM_REPOSITION = WM_USER + 2;
constexpr int DC_HASDEFID = 0x534B;

using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

// What dialogs keep with their window, and how much room a class of one's own leaves for it.
constexpr int DWLP_MSGRESULT = 0;
constexpr int DWLP_DLGPROC = sizeof(LRESULT);
constexpr int DWLP_USER = 2 * sizeof(LRESULT);
constexpr int DLGWINDOWEXTRA = 6 * sizeof(LRESULT);

// The beginnings of a plain template and of its items; texts follow each.
#pragma pack(push, 2)
struct DLGTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;
    short x;
    short y;
    short cx;
    short cy;
};
struct DLGITEMTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    short x;
    short y;
    short cx;
    short cy;
    WORD id;
};
#pragma pack(pop)

// --- Dialogs --------------------------------------------------------------------------------

// A template says nothing of its size: what is not whole within a mebibyte is refused with
// ERROR_INVALID_PARAMETER, but memory that ends earlier is read past its end. SDlg, which is told
// the size, checks it. A control of a class that there is not ends the creation, unless
// DS_NOFAILCREATE says otherwise. Menus of templates are left out.
BRCORE8_API HWND CreateDialogIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* bytes,
                                            HWND owner, DLGPROC procedure, LPARAM param);
// Runs until EndDialog, and returns its result; the owner is disabled meanwhile and gets
// WM_ENTERIDLE. -1 when the dialog cannot be made, 0 when its owner is no window.
BRCORE8_API INT_PTR DialogBoxIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* bytes,
                                            HWND owner, DLGPROC procedure, LPARAM param);
// Hides a dialog that runs, and ends it when its procedure returns.
BRCORE8_API BOOL EndDialog(HWND dialog, INT_PTR result);
BRCORE8_API LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
// From dialog units to pixels.
BRCORE8_API BOOL MapDialogRect(HWND dialog, RECT* rect);
// The units of the system's font: the width's quarters in the low word, the height's eighths in the
// high one.
BRCORE8_API LONG GetDialogBaseUnits() noexcept;

// --- Their controls -------------------------------------------------------------------------

// The next control of the group, by arrows: the groups begin at WS_GROUP.
BRCORE8_API HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) noexcept;
BRCORE8_API UINT GetDlgItemTextA(HWND dialog, int id, char* text, int size);
BRCORE8_API BOOL SetDlgItemTextA(HWND dialog, int id, const char* text);
// 0, and *isNumber 0, for what is no number or too large.
BRCORE8_API UINT GetDlgItemInt(HWND dialog, int id, BOOL* isNumber, BOOL isSigned);
BRCORE8_API BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
BRCORE8_API BOOL CheckDlgButton(HWND dialog, int id, UINT check);
BRCORE8_API UINT IsDlgButtonChecked(HWND dialog, int id);
BRCORE8_API BOOL CheckRadioButton(HWND dialog, int first, int last, int check);

#endif
