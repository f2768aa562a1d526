// Styles, flags and other numbers that the calls of the desktop take and answer.
#ifndef BRCORE8_PLATFORM_POSIX_WINDOW_CONSTANTS_H
#define BRCORE8_PLATFORM_POSIX_WINDOW_CONSTANTS_H

// Window styles.
constexpr int WS_OVERLAPPED = 0;
constexpr unsigned WS_POPUP = 0x80000000;
constexpr int WS_CHILD = 0x40000000;
constexpr int WS_MINIMIZE = 0x20000000;
constexpr int WS_VISIBLE = 0x10000000;
constexpr int WS_DISABLED = 0x8000000;
constexpr int WS_CLIPSIBLINGS = 0x4000000;
constexpr int WS_CLIPCHILDREN = 0x2000000;
constexpr int WS_MAXIMIZE = 0x1000000;
constexpr int WS_CAPTION = 0xC00000;
constexpr int WS_BORDER = 0x800000;
constexpr int WS_DLGFRAME = 0x400000;
constexpr int WS_VSCROLL = 0x200000;
constexpr int WS_HSCROLL = 0x100000;
constexpr int WS_SYSMENU = 0x80000;
constexpr int WS_THICKFRAME = 0x40000;
constexpr int WS_GROUP = 0x20000;
constexpr int WS_TABSTOP = 0x10000;
constexpr int WS_MINIMIZEBOX = 0x20000;
constexpr int WS_MAXIMIZEBOX = 0x10000;
constexpr int WS_OVERLAPPEDWINDOW = 0xCF0000;
constexpr unsigned WS_POPUPWINDOW = 0x80880000;
constexpr int WS_EX_DLGMODALFRAME = 1;
constexpr int WS_EX_TOPMOST = 8;
constexpr int WS_EX_TRANSPARENT = 0x20;
constexpr int WS_EX_TOOLWINDOW = 0x80;
constexpr int WS_EX_WINDOWEDGE = 0x100;
constexpr int WS_EX_CLIENTEDGE = 0x200;
constexpr int WS_EX_CONTROLPARENT = 0x10000;
constexpr int WS_EX_STATICEDGE = 0x20000;
constexpr int WS_EX_APPWINDOW = 0x40000;
constexpr int WS_EX_NOPARENTNOTIFY = 4;

// Class styles.
constexpr int CS_VREDRAW = 1;
constexpr int CS_HREDRAW = 2;
constexpr int CS_DBLCLKS = 8;
constexpr int CS_OWNDC = 0x20;
constexpr int CS_PARENTDC = 0x80;
constexpr int CS_NOCLOSE = 0x200;
constexpr int CS_SAVEBITS = 0x800;
constexpr int CS_GLOBALCLASS = 0x4000;

// Where a created window goes when its place is left to the platform.
constexpr int CW_USEDEFAULT = -0x7FFFFFFF - 1;

// Fields of a window.
constexpr int GWL_STYLE = -16;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWL_ID = -12;
constexpr int GWLP_WNDPROC = -4;
constexpr int GWLP_HINSTANCE = -6;
constexpr int GWLP_HWNDPARENT = -8;
constexpr int GWLP_ID = -12;
constexpr int GWLP_USERDATA = -21;
constexpr int GCL_STYLE = -26;
constexpr int GCLP_WNDPROC = -24;
constexpr int GCLP_HBRBACKGROUND = -10;
constexpr int GCLP_HCURSOR = -12;

// Showing.
constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_MINIMIZE = 6;
constexpr int SW_SHOWMINNOACTIVE = 7;
constexpr int SW_SHOWNA = 8;
constexpr int SW_RESTORE = 9;
constexpr int SW_SHOWDEFAULT = 10;

// Placing.
constexpr int SWP_NOSIZE = 1;
constexpr int SWP_NOMOVE = 2;
constexpr int SWP_NOZORDER = 4;
constexpr int SWP_NOREDRAW = 8;
constexpr int SWP_NOACTIVATE = 0x10;
constexpr int SWP_FRAMECHANGED = 0x20;
constexpr int SWP_SHOWWINDOW = 0x40;
constexpr int SWP_HIDEWINDOW = 0x80;
constexpr int SWP_NOCOPYBITS = 0x100;
constexpr int SWP_NOOWNERZORDER = 0x200;
constexpr int SWP_NOSENDCHANGING = 0x400;

// Relations of windows.
constexpr int GW_HWNDFIRST = 0;
constexpr int GW_HWNDLAST = 1;
constexpr int GW_HWNDNEXT = 2;
constexpr int GW_HWNDPREV = 3;
constexpr int GW_OWNER = 4;
constexpr int GW_CHILD = 5;
constexpr int GA_PARENT = 1;
constexpr int GA_ROOT = 2;
constexpr int GA_ROOTOWNER = 3;

// Redrawing.
constexpr int RDW_INVALIDATE = 1;
constexpr int RDW_INTERNALPAINT = 2;
constexpr int RDW_ERASE = 4;
constexpr int RDW_VALIDATE = 8;
constexpr int RDW_NOINTERNALPAINT = 0x10;
constexpr int RDW_NOERASE = 0x20;
constexpr int RDW_NOCHILDREN = 0x40;
constexpr int RDW_ALLCHILDREN = 0x80;
constexpr int RDW_UPDATENOW = 0x100;
constexpr int RDW_ERASENOW = 0x200;
constexpr int RDW_FRAME = 0x400;
constexpr int RDW_NOFRAME = 0x800;

// Looking at the queue.
constexpr int PM_NOREMOVE = 0;
constexpr int PM_REMOVE = 1;
constexpr int PM_NOYIELD = 2;

// Hooks.
constexpr int WH_CBT = 5;
constexpr int HCBT_CREATEWND = 3;
constexpr int HCBT_DESTROYWND = 4;

// Accelerators.
constexpr int FVIRTKEY = 1;
constexpr int FNOINVERT = 2;
constexpr int FSHIFT = 4;
constexpr int FCONTROL = 8;
constexpr int FALT = 16;

// Identifiers of standard buttons.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
constexpr int IDCLOSE = 8;
constexpr int IDHELP = 9;

// Message boxes.
constexpr int MB_OK = 0;
constexpr int MB_OKCANCEL = 1;
constexpr int MB_ABORTRETRYIGNORE = 2;
constexpr int MB_YESNOCANCEL = 3;
constexpr int MB_YESNO = 4;
constexpr int MB_RETRYCANCEL = 5;
constexpr int MB_ICONHAND = 0x10;
constexpr int MB_ICONQUESTION = 0x20;
constexpr int MB_ICONEXCLAMATION = 0x30;
constexpr int MB_ICONASTERISK = 0x40;
constexpr int MB_ICONERROR = MB_ICONHAND;
constexpr int MB_ICONWARNING = MB_ICONEXCLAMATION;
constexpr int MB_ICONINFORMATION = MB_ICONASTERISK;
constexpr int MB_DEFBUTTON1 = 0;
constexpr int MB_DEFBUTTON2 = 0x100;
constexpr int MB_DEFBUTTON3 = 0x200;
constexpr int MB_APPLMODAL = 0;
constexpr int MB_SYSTEMMODAL = 0x1000;
constexpr int MB_TASKMODAL = 0x2000;
constexpr int MB_SETFOREGROUND = 0x10000;

// Menus.
constexpr int MF_INSERT = 0;
constexpr int MF_CHANGE = 0x80;
constexpr int MF_APPEND = 0x100;
constexpr int MF_DELETE = 0x200;
constexpr int MF_REMOVE = 0x1000;
constexpr int MF_BYCOMMAND = 0;
constexpr int MF_BYPOSITION = 0x400;
constexpr int MF_SEPARATOR = 0x800;
constexpr int MF_ENABLED = 0;
constexpr int MF_GRAYED = 1;
constexpr int MF_DISABLED = 2;
constexpr int MF_UNCHECKED = 0;
constexpr int MF_CHECKED = 8;
constexpr int MF_STRING = 0;
constexpr int MF_BITMAP = 4;
constexpr int MF_OWNERDRAW = 0x100;
constexpr int MF_POPUP = 0x10;
constexpr int MF_MENUBARBREAK = 0x20;
constexpr int MF_MENUBREAK = 0x40;
constexpr int MF_HILITE = 0x80;
constexpr int MF_DEFAULT = 0x1000;
constexpr int MF_SYSMENU = 0x2000;
constexpr int MF_MOUSESELECT = 0x8000;
constexpr int MFT_STRING = 0;
constexpr int MFT_SEPARATOR = 0x800;
constexpr int MFT_RADIOCHECK = 0x200;
constexpr int MFS_GRAYED = 3;
constexpr int MFS_CHECKED = 8;
constexpr int MFS_HILITE = 0x80;
constexpr int MFS_ENABLED = 0;
constexpr int MFS_DEFAULT = 0x1000;
constexpr int MIIM_STATE = 1;
constexpr int MIIM_ID = 2;
constexpr int MIIM_SUBMENU = 4;
constexpr int MIIM_CHECKMARKS = 8;
constexpr int MIIM_TYPE = 0x10;
constexpr int MIIM_DATA = 0x20;
constexpr int MIIM_STRING = 0x40;
constexpr int MIIM_FTYPE = 0x100;
constexpr int TPM_LEFTALIGN = 0;
constexpr int TPM_RIGHTALIGN = 8;
constexpr int TPM_TOPALIGN = 0;
constexpr int TPM_BOTTOMALIGN = 0x20;
constexpr int TPM_LEFTBUTTON = 0;
constexpr int TPM_RIGHTBUTTON = 2;
constexpr int TPM_NONOTIFY = 0x80;
constexpr int TPM_RETURNCMD = 0x100;
constexpr int MNC_IGNORE = 0;
constexpr int MNC_CLOSE = 1;
constexpr int MNC_EXECUTE = 2;
constexpr int MNC_SELECT = 3;

// Colours of the system.
constexpr int COLOR_SCROLLBAR = 0;
constexpr int COLOR_BACKGROUND = 1;
constexpr int COLOR_ACTIVECAPTION = 2;
constexpr int COLOR_INACTIVECAPTION = 3;
constexpr int COLOR_MENU = 4;
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWFRAME = 6;
constexpr int COLOR_MENUTEXT = 7;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_CAPTIONTEXT = 9;
constexpr int COLOR_ACTIVEBORDER = 10;
constexpr int COLOR_INACTIVEBORDER = 11;
constexpr int COLOR_APPWORKSPACE = 12;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_BTNFACE = 15;
constexpr int COLOR_BTNSHADOW = 16;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_BTNTEXT = 18;
constexpr int COLOR_INACTIVECAPTIONTEXT = 19;
constexpr int COLOR_BTNHIGHLIGHT = 20;
constexpr int COLOR_3DDKSHADOW = 21;
constexpr int COLOR_3DLIGHT = 22;
constexpr int COLOR_INFOTEXT = 23;
constexpr int COLOR_INFOBK = 24;

// Measures of the system.
constexpr int SM_CXSCREEN = 0;
constexpr int SM_CYSCREEN = 1;
constexpr int SM_CXVSCROLL = 2;
constexpr int SM_CYHSCROLL = 3;
constexpr int SM_CYCAPTION = 4;
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYBORDER = 6;
constexpr int SM_CXDLGFRAME = 7;
constexpr int SM_CYDLGFRAME = 8;
constexpr int SM_CYMENU = 15;
constexpr int SM_CXCURSOR = 13;
constexpr int SM_CYCURSOR = 14;
constexpr int SM_CXFRAME = 32;
constexpr int SM_CYFRAME = 33;
constexpr int SM_CXEDGE = 45;
constexpr int SM_CYEDGE = 46;
constexpr int SM_CXSMICON = 49;
constexpr int SM_CYSMICON = 50;
constexpr int SM_CXICON = 11;
constexpr int SM_CYICON = 12;
constexpr int SM_CXDOUBLECLK = 36;
constexpr int SM_CYDOUBLECLK = 37;
constexpr int SM_CXMIN = 28;
constexpr int SM_CYMIN = 29;
constexpr int SM_XVIRTUALSCREEN = 76;
constexpr int SM_YVIRTUALSCREEN = 77;
constexpr int SM_CXVIRTUALSCREEN = 78;
constexpr int SM_CYVIRTUALSCREEN = 79;
constexpr int SPI_GETWORKAREA = 48;

// Buttons.
constexpr int BM_GETCHECK = 0x00F0;
constexpr int BM_SETCHECK = 0x00F1;

#endif
