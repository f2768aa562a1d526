// Wrappers of the platform's list boxes and combo boxes. Items are counted from 0; -1 is none.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class (ERROR_CANNOT_FIND_WND_CLASS) or
// refuses. The other operations answer what the control does: -1 for an item that is not there, -2
// when it has no room.
#ifndef BRCORE8_CONTROLS_LIST_CTRLS_H
#define BRCORE8_CONTROLS_LIST_CTRLS_H

#include <brcore8/window/wnd.h>

#include <vector>

class BRCORE8_API SListBoxCtrl : public SWnd {
    SDECLARE_CREATABLE(SListBoxCtrl);

public:
    // A "LISTBOX" of the style LBS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("LISTBOX", nullptr, style, place, parent, id);
    }

    int GetCount() const { return Ask(LB_GETCOUNT); }
    // The new item's place: where it is sorted to, or the one given (-1 is behind all).
    int AddString(const char* text) { return Ask(LB_ADDSTRING, 0, text); }
    int InsertString(int index, const char* text) { return Ask(LB_INSERTSTRING, index, text); }
    // How many are left.
    int DeleteString(int index) { return Ask(LB_DELETESTRING, index); }
    void ResetContent() { Ask(LB_RESETCONTENT); }
    SString GetText(int index) const;
    int GetTextLen(int index) const { return Ask(LB_GETTEXTLEN, index); }
    // The next behind `after` that begins with the text, or is it, in any case; around the end.
    int FindString(int after, const char* text) const { return Ask(LB_FINDSTRING, after, text); }
    int FindStringExact(int after, const char* text) const {
        return Ask(LB_FINDSTRINGEXACT, after, text);
    }
    int SetItemData(int index, LPARAM data) { return Ask(LB_SETITEMDATA, index, data); }
    LPARAM GetItemData(int index) const { return Ask<LPARAM>(LB_GETITEMDATA, index); }

    // With one selection.
    int GetCurSel() const { return Ask(LB_GETCURSEL); }
    int SetCurSel(int index) { return Ask(LB_SETCURSEL, index); }
    int SelectString(int after, const char* text) { return Ask(LB_SELECTSTRING, after, text); }
    // With several (LBS_MULTIPLESEL, LBS_EXTENDEDSEL).
    int GetSel(int index) const { return Ask(LB_GETSEL, index); }
    int SetSel(int index, int on = 1) { return Ask(LB_SETSEL, on, index); }
    int GetSelCount() const { return Ask(LB_GETSELCOUNT); }
    std::vector<int> GetSelItems() const;

    int GetTopIndex() const { return Ask(LB_GETTOPINDEX); }
    int SetTopIndex(int index) { return Ask(LB_SETTOPINDEX, index); }
    int GetItemHeight(int index = 0) const { return Ask(LB_GETITEMHEIGHT, index); }
    int SetItemHeight(int index, int height) { return Ask(LB_SETITEMHEIGHT, index, height); }
    // 0 when the item is not there.
    int GetItemRect(int index, RECT* rect) const { return Ask(LB_GETITEMRECT, index, rect) > 0; }
    // The item at a client point; `outside` tells that it is only the nearest.
    int ItemFromPoint(POINT point, int* outside = nullptr) const;
    void SetHorizontalExtent(int width) { Ask(LB_SETHORIZONTALEXTENT, width); }
};

// A list box whose items have checks. It keeps and draws its items itself and so is the same on
// every system, also where the platform has no list box; the operations of SListBoxCtrl for one
// selection work on it. A click on the box, or Space, turns the check, and the parent is told by
// kCheckChanged in WM_COMMAND. The wheel scrolls it, and a bar where it is made with WS_VSCROLL.
class BRCORE8_API SCheckListBoxCtrl : public SListBoxCtrl {
    SDECLARE_CREATABLE(SCheckListBoxCtrl);
    SDECLARE_MESSAGE_MAP(SCheckListBoxCtrl);

public:
    static constexpr UINT kCheckChanged = 0x0B01;
    enum Check : int { kUnchecked = 0, kChecked = 1, kIndeterminate = 2 };

    SCheckListBoxCtrl();
    ~SCheckListBoxCtrl() override;

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CliDrawWnd", nullptr, style, place, parent, id);
    }

    // kUnchecked for an item that is not there. Setting tells nobody; 0 without the item.
    int GetCheck(int index) const;
    int SetCheck(int index, int check);
    // An item that is not enabled keeps its check.
    int IsEnabled(int index) const;
    int Enable(int index, int on = 1);
    int GetCheckedCount() const;

private:
    struct Item;

    Item* At(WPARAM index) noexcept;
    const Item* At(WPARAM index) const noexcept {
        return const_cast<SCheckListBoxCtrl*>(this)->At(index);
    }
    int ItemHeight() const;
    int VisibleCount() const;
    RECT PlaceOf(int index) const;
    void Select(int index);
    void ScrollTo(int top);
    void ShowScrolled();
    void Turn(int index);
    LRESULT Find(WPARAM after, LPARAM text, bool whole) const;
    LRESULT Insert(WPARAM index, LPARAM text);

    LRESULT OnAdd(WPARAM, LPARAM text);
    LRESULT OnInsert(WPARAM index, LPARAM text) { return Insert(index, text); }
    LRESULT OnDelete(WPARAM index, LPARAM);
    LRESULT OnReset(WPARAM, LPARAM);
    LRESULT OnCount(WPARAM, LPARAM);
    LRESULT OnGetText(WPARAM index, LPARAM out);
    LRESULT OnGetTextLen(WPARAM index, LPARAM);
    LRESULT OnFind(WPARAM after, LPARAM text) { return Find(after, text, false); }
    LRESULT OnFindExact(WPARAM after, LPARAM text) { return Find(after, text, true); }
    LRESULT OnSelectString(WPARAM after, LPARAM text);
    LRESULT OnGetData(WPARAM index, LPARAM);
    LRESULT OnSetData(WPARAM index, LPARAM data);
    LRESULT OnGetCurSel(WPARAM, LPARAM) { return current_; }
    LRESULT OnSetCurSel(WPARAM index, LPARAM);
    LRESULT OnGetTop(WPARAM, LPARAM) { return top_; }
    LRESULT OnSetTop(WPARAM index, LPARAM);
    LRESULT OnGetHeight(WPARAM, LPARAM) { return ItemHeight(); }
    LRESULT OnGetRect(WPARAM index, LPARAM rect);
    LRESULT OnFromPoint(WPARAM, LPARAM point);
    LRESULT OnSetFont(WPARAM font, LPARAM);
    UINT OnGetDlgCode() { return DLGC_WANTARROWS; }
    void OnPaint();
    void OnLButtonDown(UINT keys, int x, int y);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnFocusChanged(SWnd*) { Invalidate(0); }
    void OnVScroll(UINT code, SWnd*, UINT position);
    int OnMouseWheel(UINT keys, int delta, int x, int y);
    void OnSize(UINT how, int width, int height);

    std::vector<Item> items_;
    int current_ = -1;
    int top_ = 0;
    int turned_ = 0;  // of the wheel, beyond the last line
    HFONT font_ = nullptr;
};

class BRCORE8_API SComboBoxCtrl : public SWnd {
    SDECLARE_CREATABLE(SComboBoxCtrl);

public:
    // A "COMBOBOX" of the style CBS_...; the place is as high as the opened list.
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("COMBOBOX", nullptr, style, place, parent, id);
    }

    // As in SListBoxCtrl.
    int GetCount() const { return Ask(CB_GETCOUNT); }
    int AddString(const char* text) { return Ask(CB_ADDSTRING, 0, text); }
    int InsertString(int index, const char* text) { return Ask(CB_INSERTSTRING, index, text); }
    int DeleteString(int index) { return Ask(CB_DELETESTRING, index); }
    void ResetContent() { Ask(CB_RESETCONTENT); }
    SString GetLBText(int index) const;
    int GetLBTextLen(int index) const { return Ask(CB_GETLBTEXTLEN, index); }
    int FindString(int after, const char* text) const { return Ask(CB_FINDSTRING, after, text); }
    int FindStringExact(int after, const char* text) const {
        return Ask(CB_FINDSTRINGEXACT, after, text);
    }
    int SelectString(int after, const char* text) { return Ask(CB_SELECTSTRING, after, text); }
    int SetItemData(int index, LPARAM data) { return Ask(CB_SETITEMDATA, index, data); }
    LPARAM GetItemData(int index) const { return Ask<LPARAM>(CB_GETITEMDATA, index); }
    int GetCurSel() const { return Ask(CB_GETCURSEL); }
    int SetCurSel(int index) { return Ask(CB_SETCURSEL, index); }

    // Of the field that is edited.
    void GetEditSel(int* from, int* to) const;
    int SetEditSel(int from, int to) { return Ask(CB_SETEDITSEL, 0, MAKELPARAM(from, to)); }
    void LimitText(int most) { Ask(CB_LIMITTEXT, most); }

    int GetDroppedState() const { return Ask(CB_GETDROPPEDSTATE); }
    void ShowDropDown(int on = 1) { Ask(CB_SHOWDROPDOWN, on); }
    int SetDroppedWidth(int width) { return Ask(CB_SETDROPPEDWIDTH, width); }
    int GetItemHeight(int index = 0) const { return Ask(CB_GETITEMHEIGHT, index); }
    int SetItemHeight(int index, int height) { return Ask(CB_SETITEMHEIGHT, index, height); }
};

// A combo box that remembers: what was entered stands on top, each text once in any case, and at
// most so many of them.
class BRCORE8_API SComboBoxExCtrl : public SComboBoxCtrl {
    SDECLARE_CREATABLE(SComboBoxExCtrl);

public:
    SComboBoxExCtrl() noexcept = default;

    void SetMostEntries(int most);
    int GetMostEntries() const noexcept { return most_; }
    // Brings a text to the top, and selects it; empty ones are not kept. Its place, 0, or -1.
    int Remember(const char* text);
    // What stands in the field.
    int RememberText() { return Remember(GetWindowText()); }
    // The texts, the last entered first.
    std::vector<SString> GetEntries() const;

private:
    int most_ = 20;
};

#endif
