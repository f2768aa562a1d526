// SMenu: the wrapper of a menu. Its operations are the platform's calls for this menu, under the
// platform's names and with its results; wrappers stand in the place of handles.
//
//     SMenu bar, file;
//     bar.CreateMenu();
//     file.CreatePopupMenu();
//     file.AppendMenu(MF_STRING, ID_OPEN, "&Open...\tCtrl+O");
//     bar.AppendMenu(MF_STRING, file, "&File");
//     frame.SetMenu(&bar);
//
// Items are named by command, or by position with MF_BYPOSITION.
//
// Threads: the one that runs the user interface.
// Ownership: a wrapper owns the menu that it created and destroys it at its own end, until the menu
// goes to a window or into another menu, which then own it; of a menu that was attached it lets go.
#ifndef BRCORE8_WINDOW_MENU_H
#define BRCORE8_WINDOW_MENU_H

#include <brcore8/platform/windows.h>
#include <brcore8/strings/string.h>
#include <brcore8/window/handle_map.h>

class SWnd;

class BRCORE8_API SMenu : public SObject {
    SDECLARE_CREATABLE(SMenu);

    SMenu() noexcept = default;
    SMenu(const SMenu&) = delete;
    SMenu& operator=(const SMenu&) = delete;
    ~SMenu() override;

    // --- Handles and wrappers -----------------------------------------------------------------

    // As SWnd's.
    HMENU GetHandle() const noexcept { return brcore8::LiveHandle(handle_); }
    static SMenu* FromHandle(HMENU handle);
    static SMenu* FromHandlePermanent(HMENU handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();
    int Attach(HMENU handle);
    HMENU Detach();

    // --- Menus --------------------------------------------------------------------------------

    // A menu of a window's bar, and one that opens. A menu that the wrapper has already ends as at
    // the wrapper's end. 1, or 0 when the platform refuses.
    int CreateMenu();
    int CreatePopupMenu();
    // The popups in it too. 0 when there is none.
    BOOL DestroyMenu();
    BOOL IsMenu() const { return ::IsMenu(handle_); }

    // --- Items --------------------------------------------------------------------------------

    BOOL AppendMenu(UINT flags, UINT_PTR id = 0, const char* text = nullptr) {
        return ::AppendMenuA(handle_, flags, id, text);
    }
    BOOL InsertMenu(UINT item, UINT flags, UINT_PTR id = 0, const char* text = nullptr) {
        return ::InsertMenuA(handle_, item, flags, id, text);
    }
    BOOL ModifyMenu(UINT item, UINT flags, UINT_PTR id = 0, const char* text = nullptr) {
        return ::ModifyMenuA(handle_, item, flags, id, text);
    }
    // An item that opens `popup`, which this menu owns from then on.
    BOOL AppendMenu(UINT flags, SMenu& popup, const char* text);
    BOOL InsertMenu(UINT item, UINT flags, SMenu& popup, const char* text);
    // RemoveMenu leaves the item's popup to the caller, DeleteMenu destroys it.
    BOOL RemoveMenu(UINT item, UINT flags) { return ::RemoveMenu(handle_, item, flags); }
    BOOL DeleteMenu(UINT item, UINT flags) { return ::DeleteMenu(handle_, item, flags); }
    BOOL InsertMenuItem(UINT item, const MENUITEMINFO* info, BOOL byPosition = 0) {
        return ::InsertMenuItemA(handle_, item, byPosition, info);
    }
    BOOL SetMenuItemInfo(UINT item, const MENUITEMINFO* info, BOOL byPosition = 0) {
        return ::SetMenuItemInfoA(handle_, item, byPosition, info);
    }
    BOOL GetMenuItemInfo(UINT item, MENUITEMINFO* info, BOOL byPosition = 0) const {
        return ::GetMenuItemInfoA(handle_, item, byPosition, info);
    }

    int GetMenuItemCount() const { return ::GetMenuItemCount(handle_); }
    UINT GetMenuItemID(int position) const { return ::GetMenuItemID(handle_, position); }
    SMenu* GetSubMenu(int position) const { return FromHandle(::GetSubMenu(handle_, position)); }
    SString GetMenuString(UINT item, UINT flags) const;
    UINT GetMenuState(UINT item, UINT flags) const { return ::GetMenuState(handle_, item, flags); }

    DWORD CheckMenuItem(UINT item, UINT check) { return ::CheckMenuItem(handle_, item, check); }
    BOOL EnableMenuItem(UINT item, UINT enable) { return ::EnableMenuItem(handle_, item, enable); }
    BOOL CheckMenuRadioItem(UINT first, UINT last, UINT check, UINT flags) {
        return ::CheckMenuRadioItem(handle_, first, last, check, flags);
    }
    BOOL SetDefaultItem(UINT item, BOOL byPosition = 0) {
        return ::SetMenuDefaultItem(handle_, item, static_cast<UINT>(byPosition));
    }
    UINT GetDefaultItem(UINT flags = 0, BOOL byPosition = 0) const {
        return ::GetMenuDefaultItem(handle_, static_cast<UINT>(byPosition), flags);
    }

    // --- Showing ------------------------------------------------------------------------------

    // Opens the popup at a point of the screen and runs until the user chose. The command goes to
    // `window`; with TPM_RETURNCMD it is returned instead.
    BOOL TrackPopupMenu(UINT flags, int x, int y, SWnd* window);

private:
    template <class>
    friend class brcore8::WrapperMap;
    friend class SWnd;

    int Own(HMENU made);
    // The menu got another owner.
    void Give() noexcept { owns_ = false; }

    HMENU handle_ = nullptr;
    bool owns_ = false;
};

#endif
