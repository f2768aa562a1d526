// The platform's controls that this desktop has no classes for, by their numbers and records:
// wrappers of them compile everywhere, and their windows are refused with
// ERROR_CANNOT_FIND_WND_CLASS.
#ifndef BRCORE8_PLATFORM_POSIX_LIST_MESSAGES_H
#define BRCORE8_PLATFORM_POSIX_LIST_MESSAGES_H

#include <brcore8/platform/posix/control_messages.h>
#include <brcore8/platform/posix/graphics_calls.h>

inline constexpr char ANIMATE_CLASSA[] = "SysAnimate32";
inline constexpr char DATETIMEPICK_CLASSA[] = "SysDateTimePick32";
inline constexpr char REBARCLASSNAMEA[] = "ReBarWindow32";
inline constexpr char TOOLBARCLASSNAMEA[] = "ToolbarWindow32";
inline constexpr char TOOLTIPS_CLASSA[] = "tooltips_class32";
inline constexpr char TRACKBAR_CLASSA[] = "msctls_trackbar32";
inline constexpr char UPDOWN_CLASSA[] = "msctls_updown32";
inline constexpr char WC_HEADERA[] = "SysHeader32";
inline constexpr char WC_LISTVIEWA[] = "SysListView32";
inline constexpr char WC_TABCONTROLA[] = "SysTabControl32";
inline constexpr char WC_TREEVIEWA[] = "SysTreeView32";

// --- List boxes and combo boxes ------------------------------------------------------------------

constexpr int CB_ADDSTRING = 0x143;
constexpr int CB_DELETESTRING = 0x144;
constexpr int CB_FINDSTRING = 0x14c;
constexpr int CB_FINDSTRINGEXACT = 0x158;
constexpr int CB_GETCOUNT = 0x146;
constexpr int CB_GETCURSEL = 0x147;
constexpr int CB_GETDROPPEDSTATE = 0x157;
constexpr int CB_GETEDITSEL = 0x140;
constexpr int CB_GETITEMDATA = 0x150;
constexpr int CB_GETITEMHEIGHT = 0x154;
constexpr int CB_GETLBTEXT = 0x148;
constexpr int CB_GETLBTEXTLEN = 0x149;
constexpr int CB_INSERTSTRING = 0x14a;
constexpr int CB_LIMITTEXT = 0x141;
constexpr int CB_RESETCONTENT = 0x14b;
constexpr int CB_SELECTSTRING = 0x14d;
constexpr int CB_SETCURSEL = 0x14e;
constexpr int CB_SETDROPPEDWIDTH = 0x160;
constexpr int CB_SETEDITSEL = 0x142;
constexpr int CB_SETITEMDATA = 0x151;
constexpr int CB_SETITEMHEIGHT = 0x153;
constexpr int CB_SHOWDROPDOWN = 0x14f;
constexpr int LBS_EXTENDEDSEL = 0x800;
constexpr int LBS_MULTIPLESEL = 8;
constexpr int LBS_NOTIFY = 1;
constexpr int LBS_SORT = 2;
constexpr int LB_ADDSTRING = 0x180;
constexpr int LB_DELETESTRING = 0x182;
constexpr int LB_ERR = -1;
constexpr int LB_FINDSTRING = 0x18f;
constexpr int LB_FINDSTRINGEXACT = 0x1a2;
constexpr int LB_GETCOUNT = 0x18b;
constexpr int LB_GETCURSEL = 0x188;
constexpr int LB_GETITEMDATA = 0x199;
constexpr int LB_GETITEMHEIGHT = 0x1a1;
constexpr int LB_GETITEMRECT = 0x198;
constexpr int LB_GETSEL = 0x187;
constexpr int LB_GETSELCOUNT = 0x190;
constexpr int LB_GETSELITEMS = 0x191;
constexpr int LB_GETTEXT = 0x189;
constexpr int LB_GETTEXTLEN = 0x18a;
constexpr int LB_GETTOPINDEX = 0x18e;
constexpr int LB_INSERTSTRING = 0x181;
constexpr int LB_ITEMFROMPOINT = 0x1a9;
constexpr int LB_RESETCONTENT = 0x184;
constexpr int LB_SELECTSTRING = 0x18c;
constexpr int LB_SETCURSEL = 0x186;
constexpr int LB_SETHORIZONTALEXTENT = 0x194;
constexpr int LB_SETITEMDATA = 0x19a;
constexpr int LB_SETITEMHEIGHT = 0x1a0;
constexpr int LB_SETSEL = 0x185;
constexpr int LB_SETTOPINDEX = 0x197;

// --- Formatted text ------------------------------------------------------------------------------

constexpr int EM_EXGETSEL = 0x434;
constexpr int EM_EXLIMITTEXT = 0x435;
constexpr int EM_EXLINEFROMCHAR = 0x436;
constexpr int EM_EXSETSEL = 0x437;
constexpr int EM_GETCHARFORMAT = 0x43a;
constexpr int EM_GETSELTEXT = 0x43e;
constexpr int EM_SETBKGNDCOLOR = 0x443;
constexpr int EM_SETCHARFORMAT = 0x444;
constexpr int EM_SETEVENTMASK = 0x445;
constexpr int EM_SETPARAFORMAT = 0x447;
constexpr int EM_STREAMIN = 0x449;
constexpr int EM_STREAMOUT = 0x44a;
constexpr int ENM_CHANGE = 1;
constexpr int SCF_ALL = 4;
constexpr int SCF_SELECTION = 1;
constexpr int SFF_SELECTION = 0x8000;
constexpr int SF_RTF = 2;
constexpr int SF_TEXT = 1;
struct CHARRANGE {
    LONG cpMin;
    LONG cpMax;
};
struct CHARFORMATA {
    UINT cbSize;
    DWORD dwMask;
    DWORD dwEffects;
    LONG yHeight;
    LONG yOffset;
    COLORREF crTextColor;
    BYTE bCharSet;
    BYTE bPitchAndFamily;
    char szFaceName[32];
};
struct PARAFORMAT {
    UINT cbSize;
    DWORD dwMask;
    WORD wNumbering;
    WORD wEffects;
    LONG dxStartIndent;
    LONG dxRightIndent;
    LONG dxOffset;
    WORD wAlignment;
    short cTabCount;
    LONG rgxTabs[32];
};
using EDITSTREAMCALLBACK = DWORD(CALLBACK*)(DWORD_PTR cookie, BYTE* block, LONG size, LONG* taken);
struct EDITSTREAM {
    DWORD_PTR dwCookie;
    DWORD dwError;
    EDITSTREAMCALLBACK pfnCallback;
};

// --- Column titles and list views ----------------------------------------------------------------

constexpr int HDF_LEFT = 0;
constexpr int HDF_STRING = 0x4000;
constexpr int HDI_FORMAT = 4;
constexpr int HDI_TEXT = 2;
constexpr int HDI_WIDTH = 1;
constexpr int HDM_DELETEITEM = 0x1202;
constexpr int HDM_GETITEMA = 0x1203;
constexpr int HDM_GETITEMCOUNT = 0x1200;
constexpr int HDM_GETITEMRECT = 0x1207;
constexpr int HDM_HITTEST = 0x1206;
constexpr int HDM_INSERTITEMA = 0x1201;
constexpr int HDM_SETIMAGELIST = 0x1208;
constexpr int HDM_SETITEMA = 0x1204;
constexpr int LVCFMT_LEFT = 0;
constexpr int LVCF_FMT = 1;
constexpr int LVCF_TEXT = 4;
constexpr int LVCF_WIDTH = 2;
constexpr int LVIF_IMAGE = 2;
constexpr int LVIF_PARAM = 4;
constexpr int LVIF_TEXT = 1;
constexpr int LVIR_BOUNDS = 0;
constexpr int LVIS_FOCUSED = 1;
constexpr int LVIS_SELECTED = 2;
constexpr int LVIS_STATEIMAGEMASK = 0xf000;
constexpr int LVM_DELETEALLITEMS = 0x1009;
constexpr int LVM_DELETECOLUMN = 0x101c;
constexpr int LVM_DELETEITEM = 0x1008;
constexpr int LVM_EDITLABELA = 0x1017;
constexpr int LVM_ENSUREVISIBLE = 0x1013;
constexpr int LVM_GETBKCOLOR = 0x1000;
constexpr int LVM_GETCOLUMNA = 0x1019;
constexpr int LVM_GETCOLUMNWIDTH = 0x101d;
constexpr int LVM_GETCOUNTPERPAGE = 0x1028;
constexpr int LVM_GETEXTENDEDLISTVIEWSTYLE = 0x1037;
constexpr int LVM_GETHEADER = 0x101f;
constexpr int LVM_GETITEMA = 0x1005;
constexpr int LVM_GETITEMCOUNT = 0x1004;
constexpr int LVM_GETITEMRECT = 0x100e;
constexpr int LVM_GETITEMSTATE = 0x102c;
constexpr int LVM_GETITEMTEXTA = 0x102d;
constexpr int LVM_GETNEXTITEM = 0x100c;
constexpr int LVM_GETSELECTEDCOUNT = 0x1032;
constexpr int LVM_GETTOPINDEX = 0x1027;
constexpr int LVM_HITTEST = 0x1012;
constexpr int LVM_INSERTCOLUMNA = 0x101b;
constexpr int LVM_INSERTITEMA = 0x1007;
constexpr int LVM_REDRAWITEMS = 0x1015;
constexpr int LVM_SETBKCOLOR = 0x1001;
constexpr int LVM_SETCOLUMNA = 0x101a;
constexpr int LVM_SETCOLUMNWIDTH = 0x101e;
constexpr int LVM_SETEXTENDEDLISTVIEWSTYLE = 0x1036;
constexpr int LVM_SETIMAGELIST = 0x1003;
constexpr int LVM_SETITEMA = 0x1006;
constexpr int LVM_SETITEMCOUNT = 0x102f;
constexpr int LVM_SETITEMSTATE = 0x102b;
constexpr int LVM_SETITEMTEXTA = 0x102e;
constexpr int LVM_SETTEXTBKCOLOR = 0x1026;
constexpr int LVM_SETTEXTCOLOR = 0x1024;
constexpr int LVM_SORTITEMS = 0x1030;
constexpr int LVM_UPDATE = 0x102a;
constexpr int LVSIL_NORMAL = 0;
constexpr int LVSIL_SMALL = 1;
constexpr int LVSIL_STATE = 2;
constexpr int LVS_EX_CHECKBOXES = 4;
constexpr int LVS_SHAREIMAGELISTS = 0x40;
struct HDITEMA {
    UINT mask;
    int cxy;
    char* pszText;
    HBITMAP hbm;
    int cchTextMax;
    int fmt;
    LPARAM lParam;
    int iImage;
    int iOrder;
    UINT type;
    void* pvFilter;
};
struct HDHITTESTINFO {
    POINT pt;
    UINT flags;
    int iItem;
};
struct LVITEMA {
    UINT mask;
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    char* pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
    int iIndent;
};
struct LVCOLUMNA {
    UINT mask;
    int fmt;
    int cx;
    char* pszText;
    int cchTextMax;
    int iSubItem;
    int iImage;
    int iOrder;
};
struct LVHITTESTINFO {
    POINT pt;
    UINT flags;
    int iItem;
    int iSubItem;
};
using PFNLVCOMPARE = int(CALLBACK*)(LPARAM, LPARAM, LPARAM);

// --- Tree views ----------------------------------------------------------------------------------

constexpr int TVE_COLLAPSE = 1;
constexpr int TVE_EXPAND = 2;
constexpr int TVE_TOGGLE = 3;
constexpr int TVGN_CARET = 9;
constexpr int TVGN_CHILD = 4;
constexpr int TVGN_NEXT = 1;
constexpr int TVGN_PARENT = 3;
constexpr int TVGN_PREVIOUS = 2;
constexpr int TVGN_ROOT = 0;
constexpr int TVIF_HANDLE = 0x10;
constexpr int TVIF_PARAM = 4;
constexpr int TVIF_STATE = 8;
constexpr int TVIF_TEXT = 1;
constexpr int TVIS_STATEIMAGEMASK = 0xf000;
constexpr int TVM_DELETEITEM = 0x1101;
constexpr int TVM_EDITLABELA = 0x110e;
constexpr int TVM_ENSUREVISIBLE = 0x1114;
constexpr int TVM_EXPAND = 0x1102;
constexpr int TVM_GETCOUNT = 0x1105;
constexpr int TVM_GETINDENT = 0x1106;
constexpr int TVM_GETITEMA = 0x110c;
constexpr int TVM_GETITEMSTATE = 0x1127;
constexpr int TVM_GETNEXTITEM = 0x110a;
constexpr int TVM_GETVISIBLECOUNT = 0x1110;
constexpr int TVM_HITTEST = 0x1111;
constexpr int TVM_INSERTITEMA = 0x1100;
constexpr int TVM_SELECTITEM = 0x110b;
constexpr int TVM_SETIMAGELIST = 0x1109;
constexpr int TVM_SETINDENT = 0x1107;
constexpr int TVM_SETITEMA = 0x110d;
constexpr int TVM_SORTCHILDREN = 0x1113;
constexpr int TVSIL_NORMAL = 0;
constexpr int TVS_CHECKBOXES = 0x100;
struct _TREEITEM;
using HTREEITEM = _TREEITEM*;
inline const HTREEITEM TVI_ROOT = reinterpret_cast<HTREEITEM>(std::intptr_t{-0x10000});
inline const HTREEITEM TVI_FIRST = reinterpret_cast<HTREEITEM>(std::intptr_t{-0x0FFFF});
inline const HTREEITEM TVI_LAST = reinterpret_cast<HTREEITEM>(std::intptr_t{-0x0FFFE});
inline const HTREEITEM TVI_SORT = reinterpret_cast<HTREEITEM>(std::intptr_t{-0x0FFFD});
struct TVITEMA {
    UINT mask;
    HTREEITEM hItem;
    UINT state;
    UINT stateMask;
    char* pszText;
    int cchTextMax;
    int iImage;
    int iSelectedImage;
    int cChildren;
    LPARAM lParam;
};
struct TVINSERTSTRUCTA {
    HTREEITEM hParent;
    HTREEITEM hInsertAfter;
    TVITEMA item;
};
struct TVHITTESTINFO {
    POINT pt;
    UINT flags;
    HTREEITEM hItem;
};

// --- Tabs ----------------------------------------------------------------------------------------

constexpr int TCIF_PARAM = 8;
constexpr int TCIF_TEXT = 1;
constexpr int TCM_ADJUSTRECT = 0x1328;
constexpr int TCM_DELETEALLITEMS = 0x1309;
constexpr int TCM_DELETEITEM = 0x1308;
constexpr int TCM_GETCURSEL = 0x130b;
constexpr int TCM_GETITEMA = 0x1305;
constexpr int TCM_GETITEMCOUNT = 0x1304;
constexpr int TCM_GETITEMRECT = 0x130a;
constexpr int TCM_GETROWCOUNT = 0x132c;
constexpr int TCM_HITTEST = 0x130d;
constexpr int TCM_INSERTITEMA = 0x1307;
constexpr int TCM_SETCURSEL = 0x130c;
constexpr int TCM_SETIMAGELIST = 0x1303;
constexpr int TCM_SETITEMA = 0x1306;
constexpr unsigned TCN_SELCHANGE = 0u - 551;
struct TCITEMA {
    UINT mask;
    DWORD dwState;
    DWORD dwStateMask;
    char* pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
};
struct TCHITTESTINFO {
    POINT pt;
    UINT flags;
};

// --- Tool bars, tool tips and bands --------------------------------------------------------------

constexpr int BTNS_BUTTON = 0;
constexpr int BTNS_SEP = 1;
constexpr int RBBIM_CHILD = 0x10;
constexpr int RBBIM_CHILDSIZE = 0x20;
constexpr int RBBIM_SIZE = 0x40;
constexpr int RBBIM_TEXT = 4;
constexpr int RB_DELETEBAND = 0x402;
constexpr int RB_GETBANDCOUNT = 0x40c;
constexpr int RB_GETBANDINFOA = 0x41d;
constexpr int RB_GETBARHEIGHT = 0x41b;
constexpr int RB_GETRECT = 0x409;
constexpr int RB_GETROWCOUNT = 0x40d;
constexpr int RB_INSERTBANDA = 0x401;
constexpr int RB_MAXIMIZEBAND = 0x41f;
constexpr int RB_MINIMIZEBAND = 0x41e;
constexpr int RB_MOVEBAND = 0x427;
constexpr int RB_SETBANDINFOA = 0x406;
constexpr int RB_SETBKCOLOR = 0x413;
constexpr int RB_SHOWBAND = 0x423;
constexpr int RB_SIZETORECT = 0x417;
constexpr int TBSTATE_ENABLED = 4;
constexpr int TB_ADDBUTTONSA = 0x414;
constexpr int TB_AUTOSIZE = 0x421;
constexpr int TB_BUTTONCOUNT = 0x418;
constexpr int TB_BUTTONSTRUCTSIZE = 0x41e;
constexpr int TB_CHECKBUTTON = 0x402;
constexpr int TB_COMMANDTOINDEX = 0x419;
constexpr int TB_DELETEBUTTON = 0x416;
constexpr int TB_ENABLEBUTTON = 0x401;
constexpr int TB_GETBUTTON = 0x417;
constexpr int TB_GETBUTTONSIZE = 0x43a;
constexpr int TB_GETITEMRECT = 0x41d;
constexpr int TB_GETROWS = 0x428;
constexpr int TB_GETSTATE = 0x412;
constexpr int TB_HIDEBUTTON = 0x404;
constexpr int TB_INSERTBUTTONA = 0x415;
constexpr int TB_ISBUTTONCHECKED = 0x40a;
constexpr int TB_ISBUTTONENABLED = 0x409;
constexpr int TB_ISBUTTONHIDDEN = 0x40c;
constexpr int TB_ISBUTTONPRESSED = 0x40b;
constexpr int TB_PRESSBUTTON = 0x403;
constexpr int TB_SETBITMAPSIZE = 0x420;
constexpr int TB_SETBUTTONSIZE = 0x41f;
constexpr int TB_SETIMAGELIST = 0x430;
constexpr int TB_SETSTATE = 0x411;
constexpr int TTF_IDISHWND = 1;
constexpr int TTF_SUBCLASS = 0x10;
constexpr int TTM_ACTIVATE = 0x401;
constexpr int TTM_ADDTOOLA = 0x404;
constexpr int TTM_DELTOOLA = 0x405;
constexpr int TTM_GETTEXTA = 0x40b;
constexpr int TTM_GETTOOLCOUNT = 0x40d;
constexpr int TTM_POP = 0x41c;
constexpr int TTM_RELAYEVENT = 0x407;
constexpr int TTM_SETDELAYTIME = 0x403;
constexpr int TTM_SETMAXTIPWIDTH = 0x418;
constexpr int TTM_UPDATETIPTEXTA = 0x40c;
struct TBBUTTON {
    int iBitmap;
    int idCommand;
    BYTE fsState;
    BYTE fsStyle;
    BYTE bReserved[sizeof(void*) - 2];
    DWORD_PTR dwData;
    INT_PTR iString;
};
struct TOOLINFOA {
    UINT cbSize;
    UINT uFlags;
    HWND hwnd;
    UINT_PTR uId;
    RECT rect;
    HINSTANCE hinst;
    char* lpszText;
    LPARAM lParam;
};
struct REBARBANDINFOA {
    UINT cbSize;
    UINT fMask;
    UINT fStyle;
    COLORREF clrFore;
    COLORREF clrBack;
    char* lpText;
    UINT cch;
    int iImage;
    HWND hwndChild;
    UINT cxMinChild;
    UINT cyMinChild;
    UINT cx;
    HBITMAP hbmBack;
    UINT wID;
};

// --- Sliders, spin buttons, dates and films ------------------------------------------------------

constexpr int ACM_OPENA = 0x464;
constexpr int ACM_PLAY = 0x465;
constexpr int ACM_STOP = 0x466;
constexpr int DTM_GETRANGE = 0x1003;
constexpr int DTM_GETSYSTEMTIME = 0x1001;
constexpr int DTM_SETFORMATA = 0x1005;
constexpr int DTM_SETRANGE = 0x1004;
constexpr int DTM_SETSYSTEMTIME = 0x1002;
constexpr int DTS_SHOWNONE = 2;
constexpr int GDTR_MAX = 2;
constexpr int GDTR_MIN = 1;
constexpr int GDT_ERROR = -1;
constexpr int GDT_NONE = 1;
constexpr int GDT_VALID = 0;
constexpr int TBM_CLEARTICS = 0x409;
constexpr int TBM_GETLINESIZE = 0x418;
constexpr int TBM_GETNUMTICS = 0x410;
constexpr int TBM_GETPAGESIZE = 0x416;
constexpr int TBM_GETPOS = 0x400;
constexpr int TBM_GETRANGEMAX = 0x402;
constexpr int TBM_GETRANGEMIN = 0x401;
constexpr int TBM_GETTHUMBRECT = 0x419;
constexpr int TBM_SETLINESIZE = 0x417;
constexpr int TBM_SETPAGESIZE = 0x415;
constexpr int TBM_SETPOS = 0x405;
constexpr int TBM_SETRANGEMAX = 0x408;
constexpr int TBM_SETRANGEMIN = 0x407;
constexpr int TBM_SETSELEND = 0x40c;
constexpr int TBM_SETSELSTART = 0x40b;
constexpr int TBM_SETTIC = 0x404;
constexpr int TBM_SETTICFREQ = 0x414;
constexpr int UDM_GETBASE = 0x46e;
constexpr int UDM_GETBUDDY = 0x46a;
constexpr int UDM_GETPOS32 = 0x472;
constexpr int UDM_GETRANGE32 = 0x470;
constexpr int UDM_SETBASE = 0x46d;
constexpr int UDM_SETBUDDY = 0x469;
constexpr int UDM_SETPOS32 = 0x471;
constexpr int UDM_SETRANGE32 = 0x46f;
struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

#endif
