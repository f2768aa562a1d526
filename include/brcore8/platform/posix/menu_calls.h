// Menus and accelerators: the calls of the desktop that this library offers where the system has
// none, with the platform's meaning.
//
// Menus are held in memory; the bar of a top-level window is painted in the strip above its client
// area, and popups are windows of the class "#32768". Items are named by command, which searches
// the popups below too, or with MF_BYPOSITION by position. There are no menus in resources.
//
// Threads: handles are everyone's; a menu is changed by one thread at a time.
// Ownership: a window owns the menu that it shows and a menu the popups in it: both end with their
// owner, but for what RemoveMenu and SetMenu take out before.
// Errors: 0, null or -1, and the code in GetLastError: ERROR_INVALID_MENU_HANDLE for what is no
// menu, ERROR_MENU_ITEM_NOT_FOUND.
#ifndef BRCORE8_PLATFORM_POSIX_MENU_CALLS_H
#define BRCORE8_PLATFORM_POSIX_MENU_CALLS_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/posix/last_error.h>
#include <brcore8/platform/posix/window_constants.h>
#include <brcore8/platform/posix/window_types.h>

constexpr long ERROR_INVALID_ACCEL_HANDLE = 1403;
constexpr long ERROR_CHILD_WINDOW_MENU = 1436;
constexpr long ERROR_POPUP_ALREADY_ACTIVE = 1446;
constexpr long ERROR_MENU_ITEM_NOT_FOUND = 1456;

constexpr int MFT_MENUBARBREAK = 0x20;
constexpr int MFT_MENUBREAK = 0x40;
constexpr int MFT_OWNERDRAW = 0x100;
constexpr int MFT_RIGHTJUSTIFY = 0x4000;
constexpr int MFS_DISABLED = 3;
constexpr int MFS_UNCHECKED = 0;
constexpr int MFS_UNHILITE = 0;
constexpr int MIIM_BITMAP = 0x80;
constexpr int MF_UNHILITE = 0;
constexpr unsigned GMDI_USEDISABLED = 1;
constexpr unsigned GMDI_GOINTOPOPUPS = 2;
constexpr int TPM_CENTERALIGN = 4;
constexpr int TPM_VCENTERALIGN = 0x10;
constexpr int TPM_HORIZONTAL = 0;
constexpr int TPM_VERTICAL = 0x40;
constexpr int MSGF_DIALOGBOX = 0;
constexpr int MSGF_MENU = 2;

// A rectangle of the screen that a popup keeps clear of.
struct TPMPARAMS {
    UINT cbSize;
    RECT rcExclude;
};

// --- Menus ----------------------------------------------------------------------------------

BRCORE8_API HMENU CreateMenu();
BRCORE8_API HMENU CreatePopupMenu();
// The popups in it too.
BRCORE8_API BOOL DestroyMenu(HMENU menu);
BRCORE8_API BOOL IsMenu(HMENU menu) noexcept;

// --- Items ----------------------------------------------------------------------------------

// `id` is the popup's handle with MF_POPUP. A position behind the last item appends, as does a
// command that is not there. A menu in itself, at any depth, is refused with
// ERROR_INVALID_PARAMETER, and so are menus nested deeper than 25.
BRCORE8_API BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR id, const char* text);
BRCORE8_API BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, const char* text);
// A popup that the item opened before is destroyed when another takes its place.
BRCORE8_API BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR id, const char* text);
// RemoveMenu leaves the item's popup to the caller, DeleteMenu destroys it.
BRCORE8_API BOOL RemoveMenu(HMENU menu, UINT item, UINT flags);
BRCORE8_API BOOL DeleteMenu(HMENU menu, UINT item, UINT flags);
BRCORE8_API BOOL InsertMenuItemA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info);
BRCORE8_API BOOL SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition,
                                  const MENUITEMINFOA* info);
// Fills what fMask asks for; the text is cut to `cch`, which becomes its length.
BRCORE8_API BOOL GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOA* info);

BRCORE8_API int GetMenuItemCount(HMENU menu) noexcept;
// -1 for an item that opens a popup, and where there is none.
BRCORE8_API UINT GetMenuItemID(HMENU menu, int position) noexcept;
BRCORE8_API HMENU GetSubMenu(HMENU menu, int position) noexcept;
// The length of the text; a null buffer only asks for it.
BRCORE8_API int GetMenuStringA(HMENU menu, UINT item, char* text, int size, UINT flags);
// MF_ bits; of an item with a popup they are in the low byte, the popup's count in the next.
BRCORE8_API UINT GetMenuState(HMENU menu, UINT item, UINT flags);
// The state before; -1 where there is no such item.
BRCORE8_API DWORD CheckMenuItem(HMENU menu, UINT item, UINT check);
BRCORE8_API BOOL EnableMenuItem(HMENU menu, UINT item, UINT enable);
BRCORE8_API BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT check, UINT flags);
// -1 takes the mark from all.
BRCORE8_API BOOL SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition);
BRCORE8_API UINT GetMenuDefaultItem(HMENU menu, UINT byPosition, UINT flags);
BRCORE8_API BOOL HiliteMenuItem(HWND window, HMENU menu, UINT item, UINT hilite);

// --- Menus of windows -----------------------------------------------------------------------

BRCORE8_API HMENU GetMenu(HWND window) noexcept;
// The menu before stays the caller's. Not for children.
BRCORE8_API BOOL SetMenu(HWND window, HMENU menu);
BRCORE8_API BOOL DrawMenuBar(HWND window);
// Of an item of the window's bar, or of a popup that is open, on the screen.
BRCORE8_API BOOL GetMenuItemRect(HWND window, HMENU menu, UINT item, RECT* rect);
// Runs until an item is chosen or the popup left. The item's WM_COMMAND is posted to the window;
// with TPM_RETURNCMD its identifier is returned, 0 for none.
BRCORE8_API BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND window,
                                const RECT* ignored);
BRCORE8_API BOOL TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND window,
                                  TPMPARAMS* keepClear);
// Ends the tracking of this thread.
BRCORE8_API BOOL EndMenu();

// --- Accelerators ---------------------------------------------------------------------------

// Null with ERROR_INVALID_PARAMETER for a count below 1 or above 32,767.
BRCORE8_API HACCEL CreateAcceleratorTableA(ACCEL* table, int count);
BRCORE8_API BOOL DestroyAcceleratorTable(HACCEL table);
// The number of entries; a null buffer only asks for it.
BRCORE8_API int CopyAcceleratorTableA(HACCEL table, ACCEL* out, int count);
// Sends the command of the key with 1 in the high word of wParam, unless the window's menu has it
// disabled. 1 when the key is in the table.
BRCORE8_API int TranslateAcceleratorA(HWND window, HACCEL table, MSG* message);

#endif
