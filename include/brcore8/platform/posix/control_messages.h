// The platform's controls by their numbers: styles, messages and notifications of static texts,
// buttons, edit fields, status bars, progress bars and scroll bars.
#ifndef BRCORE8_PLATFORM_POSIX_CONTROL_MESSAGES_H
#define BRCORE8_PLATFORM_POSIX_CONTROL_MESSAGES_H

#include <brcore8/platform/posix/window_constants.h>
#include <brcore8/platform/posix/window_messages.h>
#include <brcore8/platform/posix/window_types.h>

// --- Static texts and frames --------------------------------------------------------------------

inline constexpr char WC_STATICA[] = "Static";
constexpr int SS_LEFT = 0;
constexpr int SS_CENTER = 1;
constexpr int SS_RIGHT = 2;
constexpr int SS_BLACKRECT = 4;
constexpr int SS_GRAYRECT = 5;
constexpr int SS_WHITERECT = 6;
constexpr int SS_BLACKFRAME = 7;
constexpr int SS_GRAYFRAME = 8;
constexpr int SS_WHITEFRAME = 9;
constexpr int SS_SIMPLE = 0xB;
constexpr int SS_LEFTNOWORDWRAP = 0xC;
constexpr int SS_OWNERDRAW = 0xD;
constexpr int SS_ETCHEDHORZ = 0x10;
constexpr int SS_ETCHEDVERT = 0x11;
constexpr int SS_ETCHEDFRAME = 0x12;
constexpr int SS_TYPEMASK = 0x1F;
constexpr int SS_NOPREFIX = 0x80;
constexpr int SS_NOTIFY = 0x100;
constexpr int SS_CENTERIMAGE = 0x200;
constexpr int SS_SUNKEN = 0x1000;
constexpr int SS_ENDELLIPSIS = 0x4000;
constexpr int STN_CLICKED = 0;
constexpr int STN_DBLCLK = 1;
constexpr int STN_ENABLE = 2;
constexpr int STN_DISABLE = 3;

// --- Buttons ------------------------------------------------------------------------------------

inline constexpr char WC_BUTTONA[] = "Button";
constexpr int BS_PUSHBUTTON = 0;
constexpr int BS_DEFPUSHBUTTON = 1;
constexpr int BS_CHECKBOX = 2;
constexpr int BS_AUTOCHECKBOX = 3;
constexpr int BS_RADIOBUTTON = 4;
constexpr int BS_3STATE = 5;
constexpr int BS_AUTO3STATE = 6;
constexpr int BS_GROUPBOX = 7;
constexpr int BS_USERBUTTON = 8;
constexpr int BS_AUTORADIOBUTTON = 9;
constexpr int BS_OWNERDRAW = 0xB;
constexpr int BS_TYPEMASK = 0xF;
constexpr int BS_LEFTTEXT = 0x20;
constexpr int BS_RIGHTBUTTON = 0x20;
constexpr int BS_LEFT = 0x100;
constexpr int BS_RIGHT = 0x200;
constexpr int BS_CENTER = 0x300;
constexpr int BS_TOP = 0x400;
constexpr int BS_BOTTOM = 0x800;
constexpr int BS_VCENTER = 0xC00;
constexpr int BS_PUSHLIKE = 0x1000;
constexpr int BS_MULTILINE = 0x2000;
constexpr int BS_NOTIFY = 0x4000;
constexpr int BS_FLAT = 0x8000;
constexpr int BM_GETSTATE = 0xF2;
constexpr int BM_SETSTATE = 0xF3;
constexpr int BM_SETSTYLE = 0xF4;
constexpr int BM_CLICK = 0xF5;
constexpr int BST_UNCHECKED = 0;
constexpr int BST_CHECKED = 1;
constexpr int BST_INDETERMINATE = 2;
constexpr int BST_PUSHED = 4;
constexpr int BST_FOCUS = 8;
constexpr int BN_CLICKED = 0;
constexpr int BN_HILITE = 2;
constexpr int BN_UNHILITE = 3;
constexpr int BN_DISABLE = 4;
constexpr int BN_DOUBLECLICKED = 5;
constexpr int BN_SETFOCUS = 6;
constexpr int BN_KILLFOCUS = 7;

// What WM_DRAWITEM tells.
constexpr unsigned ODT_MENU = 1;
constexpr unsigned ODT_BUTTON = 4;
constexpr unsigned ODT_STATIC = 5;
constexpr unsigned ODA_DRAWENTIRE = 1;
constexpr unsigned ODA_SELECT = 2;
constexpr unsigned ODA_FOCUS = 4;
constexpr unsigned ODS_SELECTED = 1;
constexpr unsigned ODS_GRAYED = 2;
constexpr unsigned ODS_DISABLED = 4;
constexpr unsigned ODS_CHECKED = 8;
constexpr unsigned ODS_FOCUS = 0x10;
constexpr unsigned ODS_DEFAULT = 0x20;

// --- Edit fields --------------------------------------------------------------------------------

inline constexpr char WC_EDITA[] = "Edit";
constexpr int ES_LEFT = 0;
constexpr int ES_CENTER = 1;
constexpr int ES_RIGHT = 2;
constexpr int ES_MULTILINE = 4;
constexpr int ES_UPPERCASE = 8;
constexpr int ES_LOWERCASE = 0x10;
constexpr int ES_PASSWORD = 0x20;
constexpr int ES_AUTOVSCROLL = 0x40;
constexpr int ES_AUTOHSCROLL = 0x80;
constexpr int ES_NOHIDESEL = 0x100;
constexpr int ES_READONLY = 0x800;
constexpr int ES_WANTRETURN = 0x1000;
constexpr int ES_NUMBER = 0x2000;
constexpr int EM_GETSEL = 0xB0;
constexpr int EM_SETSEL = 0xB1;
constexpr int EM_GETRECT = 0xB2;
constexpr int EM_SETRECT = 0xB3;
constexpr int EM_SETRECTNP = 0xB4;
constexpr int EM_SCROLL = 0xB5;
constexpr int EM_LINESCROLL = 0xB6;
constexpr int EM_SCROLLCARET = 0xB7;
constexpr int EM_GETMODIFY = 0xB8;
constexpr int EM_SETMODIFY = 0xB9;
constexpr int EM_GETLINECOUNT = 0xBA;
constexpr int EM_LINEINDEX = 0xBB;
constexpr int EM_LINELENGTH = 0xC1;
constexpr int EM_REPLACESEL = 0xC2;
constexpr int EM_GETLINE = 0xC4;
constexpr int EM_LIMITTEXT = 0xC5;
constexpr int EM_SETLIMITTEXT = 0xC5;
constexpr int EM_CANUNDO = 0xC6;
constexpr int EM_UNDO = 0xC7;
constexpr int EM_LINEFROMCHAR = 0xC9;
constexpr int EM_SETTABSTOPS = 0xCB;
constexpr int EM_SETPASSWORDCHAR = 0xCC;
constexpr int EM_EMPTYUNDOBUFFER = 0xCD;
constexpr int EM_GETFIRSTVISIBLELINE = 0xCE;
constexpr int EM_SETREADONLY = 0xCF;
constexpr int EM_GETPASSWORDCHAR = 0xD2;
constexpr int EM_SETMARGINS = 0xD3;
constexpr int EM_GETMARGINS = 0xD4;
constexpr int EM_GETLIMITTEXT = 0xD5;
constexpr int EM_POSFROMCHAR = 0xD6;
constexpr int EM_CHARFROMPOS = 0xD7;
constexpr int EC_LEFTMARGIN = 1;
constexpr int EC_RIGHTMARGIN = 2;
constexpr int EC_USEFONTINFO = 0xFFFF;
constexpr int EN_SETFOCUS = 0x100;
constexpr int EN_KILLFOCUS = 0x200;
constexpr int EN_CHANGE = 0x300;
constexpr int EN_UPDATE = 0x400;
constexpr int EN_ERRSPACE = 0x500;
constexpr int EN_MAXTEXT = 0x501;
constexpr int EN_HSCROLL = 0x601;
constexpr int EN_VSCROLL = 0x602;

// --- Common controls ----------------------------------------------------------------------------

struct INITCOMMONCONTROLSEX {
    DWORD dwSize;
    DWORD dwICC;
};
constexpr int ICC_LISTVIEW_CLASSES = 1;
constexpr int ICC_TREEVIEW_CLASSES = 2;
constexpr int ICC_BAR_CLASSES = 4;
constexpr int ICC_TAB_CLASSES = 8;
constexpr int ICC_PROGRESS_CLASS = 0x20;
constexpr int ICC_STANDARD_CLASSES = 0x4000;
constexpr int CCM_SETBKCOLOR = 0x2001;
constexpr unsigned CLR_DEFAULT = 0xFF000000;

// What a mouse notification carries.
struct NMMOUSE {
    NMHDR hdr;
    DWORD_PTR dwItemSpec;
    DWORD_PTR dwItemData;
    POINT pt;
    LPARAM dwHitInfo;
};

inline constexpr char STATUSCLASSNAMEA[] = "msctls_statusbar32";
constexpr int CCS_TOP = 1;
constexpr int CCS_NOMOVEY = 2;
constexpr int CCS_BOTTOM = 3;
constexpr int CCS_NORESIZE = 4;
constexpr int CCS_NOPARENTALIGN = 8;
constexpr int CCS_NODIVIDER = 0x40;
constexpr int SBARS_SIZEGRIP = 0x100;
constexpr int SB_SETTEXTA = WM_USER + 1;
constexpr int SB_GETTEXTA = WM_USER + 2;
constexpr int SB_GETTEXTLENGTHA = WM_USER + 3;
constexpr int SB_SETPARTS = WM_USER + 4;
constexpr int SB_GETPARTS = WM_USER + 6;
constexpr int SB_GETBORDERS = WM_USER + 7;
constexpr int SB_SETMINHEIGHT = WM_USER + 8;
constexpr int SB_SIMPLE = WM_USER + 9;
constexpr int SB_GETRECT = WM_USER + 10;
constexpr int SB_ISSIMPLE = WM_USER + 14;
constexpr int SB_SETTIPTEXTA = WM_USER + 16;
constexpr int SB_GETTIPTEXTA = WM_USER + 18;
constexpr int SB_SETBKCOLOR = CCM_SETBKCOLOR;
constexpr int SB_SIMPLEID = 0xFF;
constexpr int SBT_NOBORDERS = 0x100;
constexpr int SBT_POPOUT = 0x200;
constexpr int SBT_NOTABPARSING = 0x800;
constexpr int SBT_OWNERDRAW = 0x1000;
constexpr unsigned SBN_SIMPLEMODECHANGE = 0u - 880;

inline constexpr char PROGRESS_CLASSA[] = "msctls_progress32";
constexpr int PBS_SMOOTH = 1;
constexpr int PBS_VERTICAL = 4;
constexpr int PBS_MARQUEE = 8;
constexpr int PBM_SETRANGE = WM_USER + 1;
constexpr int PBM_SETPOS = WM_USER + 2;
constexpr int PBM_DELTAPOS = WM_USER + 3;
constexpr int PBM_SETSTEP = WM_USER + 4;
constexpr int PBM_STEPIT = WM_USER + 5;
constexpr int PBM_SETRANGE32 = WM_USER + 6;
constexpr int PBM_GETRANGE = WM_USER + 7;
constexpr int PBM_GETPOS = WM_USER + 8;
constexpr int PBM_SETBARCOLOR = WM_USER + 9;
constexpr int PBM_SETBKCOLOR = CCM_SETBKCOLOR;
constexpr int PBM_GETSTEP = WM_USER + 13;
constexpr int PBM_GETBKCOLOR = WM_USER + 14;
constexpr int PBM_GETBARCOLOR = WM_USER + 15;
struct PBRANGE {
    int iLow;
    int iHigh;
};

// --- Scroll bars --------------------------------------------------------------------------------

inline constexpr char WC_SCROLLBARA[] = "ScrollBar";
constexpr int SB_HORZ = 0;
constexpr int SB_VERT = 1;
constexpr int SB_CTL = 2;
constexpr int SB_BOTH = 3;
constexpr int SB_LINEUP = 0;
constexpr int SB_LINELEFT = 0;
constexpr int SB_LINEDOWN = 1;
constexpr int SB_LINERIGHT = 1;
constexpr int SB_PAGEUP = 2;
constexpr int SB_PAGELEFT = 2;
constexpr int SB_PAGEDOWN = 3;
constexpr int SB_PAGERIGHT = 3;
constexpr int SB_THUMBPOSITION = 4;
constexpr int SB_THUMBTRACK = 5;
constexpr int SB_TOP = 6;
constexpr int SB_LEFT = 6;
constexpr int SB_BOTTOM = 7;
constexpr int SB_RIGHT = 7;
constexpr int SB_ENDSCROLL = 8;
constexpr int SIF_RANGE = 1;
constexpr int SIF_PAGE = 2;
constexpr int SIF_POS = 4;
constexpr int SIF_DISABLENOSCROLL = 8;
constexpr int SIF_TRACKPOS = 0x10;
constexpr int SIF_ALL = 0x17;
constexpr int ESB_ENABLE_BOTH = 0;
constexpr int ESB_DISABLE_LTUP = 1;
constexpr int ESB_DISABLE_RTDN = 2;
constexpr int ESB_DISABLE_BOTH = 3;
constexpr int SBS_HORZ = 0;
constexpr int SBS_VERT = 1;
constexpr int SBM_SETPOS = 0xE0;
constexpr int SBM_GETPOS = 0xE1;
constexpr int SBM_SETRANGE = 0xE2;
constexpr int SBM_GETRANGE = 0xE3;
constexpr int SBM_ENABLE_ARROWS = 0xE4;
constexpr int SBM_SETRANGEREDRAW = 0xE6;
constexpr int SBM_SETSCROLLINFO = 0xE9;
constexpr int SBM_GETSCROLLINFO = 0xEA;
struct SCROLLINFO {
    UINT cbSize;
    UINT fMask;
    int nMin;
    int nMax;
    UINT nPage;
    int nPos;
    int nTrackPos;
};

#endif
