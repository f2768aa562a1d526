// Wrappers of the platform's list view and its header, and the list view whose items have checks.
// Items and columns are counted from 0; -1 is none.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class (ERROR_CANNOT_FIND_WND_CLASS) or
// refuses; the other operations answer what the control does.
#ifndef BRCORE8_CONTROLS_LIST_VIEW_CTRL_H
#define BRCORE8_CONTROLS_LIST_VIEW_CTRL_H

#include <brcore8/graphics/image_list.h>
#include <brcore8/window/wnd.h>

// The row of column titles above a list.
class BRCORE8_API SHeaderCtrl : public SWnd {
    SDECLARE_CREATABLE(SHeaderCtrl);

public:
    // A "SysHeader32" of the style HDS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(WC_HEADERA, nullptr, style, place, parent, id);
    }

    int GetItemCount() const { return Ask(HDM_GETITEMCOUNT); }
    // Its place, or -1.
    int InsertItem(int index, const HDITEMA& item) { return Ask(HDM_INSERTITEMA, index, &item); }
    int InsertItem(int index, const char* text, int width, int format = HDF_LEFT);
    int DeleteItem(int index) { return Ask(HDM_DELETEITEM, index); }
    // The record says which of its fields are meant.
    int GetItem(int index, HDITEMA* item) const { return Ask(HDM_GETITEMA, index, item); }
    int SetItem(int index, const HDITEMA& item) { return Ask(HDM_SETITEMA, index, &item); }
    int GetItemWidth(int index) const;
    int SetItemWidth(int index, int width);
    SString GetItemText(int index) const;
    int GetItemRect(int index, RECT* rect) const { return Ask(HDM_GETITEMRECT, index, rect); }
    int HitTest(HDHITTESTINFO* info) const { return Ask(HDM_HITTEST, 0, info); }
    SImageList* SetImageList(const SImageList* images) {
        return SImageList::FromHandle(Ask<HIMAGELIST>(
            HDM_SETIMAGELIST, 0, images != nullptr ? images->GetHandle() : nullptr));
    }
};

class BRCORE8_API SListViewCtrl : public SWnd {
    SDECLARE_CREATABLE(SListViewCtrl);

public:
    // A "SysListView32" of the style LVS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(WC_LISTVIEWA, nullptr, style, place, parent, id);
    }

    // --- Items ----------------------------------------------------------------------------------

    int GetItemCount() const { return Ask(LVM_GETITEMCOUNT); }
    void SetItemCount(int count) { Ask(LVM_SETITEMCOUNT, count); }
    // Its place, or -1.
    int InsertItem(const LVITEMA& item) { return Ask(LVM_INSERTITEMA, 0, &item); }
    int InsertItem(int index, const char* text, int image = -1, LPARAM data = 0);
    int DeleteItem(int index) { return Ask(LVM_DELETEITEM, index); }
    int DeleteAllItems() { return Ask(LVM_DELETEALLITEMS); }
    int GetItem(LVITEMA* item) const { return Ask(LVM_GETITEMA, 0, item); }
    int SetItem(const LVITEMA& item) { return Ask(LVM_SETITEMA, 0, &item); }
    SString GetItemText(int index, int column = 0) const;
    int SetItemText(int index, int column, const char* text);
    LPARAM GetItemData(int index) const;
    int SetItemData(int index, LPARAM data);
    // LVIS_SELECTED, LVIS_FOCUSED, ...
    UINT GetItemState(int index, UINT mask) const {
        return Ask<UINT>(LVM_GETITEMSTATE, index, mask);
    }
    // -1 sets it for all items.
    int SetItemState(int index, UINT state, UINT mask);
    // The next behind `after` that is as LVNI_... say.
    int GetNextItem(int after, UINT flags) const { return Ask(LVM_GETNEXTITEM, after, flags); }
    int GetSelectedCount() const { return Ask(LVM_GETSELECTEDCOUNT); }
    // Compares two items' data: below, above or equal to 0.
    int SortItems(PFNLVCOMPARE compare, LPARAM data) {
        return Ask(LVM_SORTITEMS, data, reinterpret_cast<LPARAM>(compare));
    }

    // --- Columns --------------------------------------------------------------------------------

    int InsertColumn(int index, const LVCOLUMNA& column) {
        return Ask(LVM_INSERTCOLUMNA, index, &column);
    }
    int InsertColumn(int index, const char* text, int width, int format = LVCFMT_LEFT);
    int DeleteColumn(int index) { return Ask(LVM_DELETECOLUMN, index); }
    int GetColumn(int index, LVCOLUMNA* column) const { return Ask(LVM_GETCOLUMNA, index, column); }
    int SetColumn(int index, const LVCOLUMNA& column) {
        return Ask(LVM_SETCOLUMNA, index, &column);
    }
    int GetColumnWidth(int index) const { return Ask(LVM_GETCOLUMNWIDTH, index); }
    int SetColumnWidth(int index, int width) {
        return Ask(LVM_SETCOLUMNWIDTH, index, MAKELPARAM(width, 0));
    }
    SWnd* GetHeader() const { return FromHandle(Ask<HWND>(LVM_GETHEADER)); }

    // --- Place and look -------------------------------------------------------------------------

    int GetItemRect(int index, RECT* rect, int part = LVIR_BOUNDS) const {
        rect->left = part;
        return Ask(LVM_GETITEMRECT, index, rect);
    }
    int HitTest(LVHITTESTINFO* info) const { return Ask(LVM_HITTEST, 0, info); }
    int EnsureVisible(int index, int partly = 0) {
        return Ask(LVM_ENSUREVISIBLE, index, MAKELPARAM(partly, 0));
    }
    int GetTopIndex() const { return Ask(LVM_GETTOPINDEX); }
    int GetCountPerPage() const { return Ask(LVM_GETCOUNTPERPAGE); }
    SWnd* EditLabel(int index) { return FromHandle(Ask<HWND>(LVM_EDITLABELA, index)); }
    int Update(int index) { return Ask(LVM_UPDATE, index); }
    int RedrawItems(int first, int last) { return Ask(LVM_REDRAWITEMS, first, last); }
    // LVS_EX_...: those of the mask are set; the ones before.
    DWORD SetExtendedStyle(DWORD mask, DWORD style) {
        return Ask<DWORD>(LVM_SETEXTENDEDLISTVIEWSTYLE, mask, style);
    }
    DWORD GetExtendedStyle() const { return Ask<DWORD>(LVM_GETEXTENDEDLISTVIEWSTYLE); }
    COLORREF GetBkColor() const { return Ask<COLORREF>(LVM_GETBKCOLOR); }
    int SetBkColor(COLORREF color) { return Ask(LVM_SETBKCOLOR, 0, color); }
    int SetTextColor(COLORREF color) { return Ask(LVM_SETTEXTCOLOR, 0, color); }
    int SetTextBkColor(COLORREF color) { return Ask(LVM_SETTEXTBKCOLOR, 0, color); }
    // LVSIL_NORMAL, LVSIL_SMALL or LVSIL_STATE. The list stays the caller's with
    // LVS_SHAREIMAGELISTS.
    SImageList* SetImageList(const SImageList* images, int which) {
        return SImageList::FromHandle(Ask<HIMAGELIST>(
            LVM_SETIMAGELIST, which, images != nullptr ? images->GetHandle() : nullptr));
    }
};

// A list view with a check box before each item.
class BRCORE8_API SCheckListViewCtrl : public SListViewCtrl {
    SDECLARE_CREATABLE(SCheckListViewCtrl);

public:
    using SListViewCtrl::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id);

    int GetCheck(int index) const;
    int SetCheck(int index, int on = 1);
    void CheckAll(int on = 1) { SetCheck(-1, on); }
    int GetCheckedCount() const;
};

#endif
