// Wrappers of the platform's bars: tool bars, tool tips, bands of bars, tabs; and a tool bar whose
// buttons stand in categories.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class (ERROR_CANNOT_FIND_WND_CLASS) or
// refuses; the other operations answer what the control does.
#ifndef BRCORE8_CONTROLS_BAR_CTRLS_H
#define BRCORE8_CONTROLS_BAR_CTRLS_H

#include <brcore8/graphics/image_list.h>
#include <brcore8/window/wnd.h>

#include <vector>

class BRCORE8_API SToolBarCtrl : public SWnd {
    SDECLARE_CREATABLE(SToolBarCtrl);

public:
    // A "ToolbarWindow32" of the style TBSTYLE_... and CCS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id);

    int ButtonCount() const { return Ask(TB_BUTTONCOUNT); }
    int AddButtons(int count, const TBBUTTON* buttons) {
        return Ask(TB_ADDBUTTONSA, count, buttons);
    }
    // A button of a command, or with 0 a gap.
    int AddButton(UINT command, int image, BYTE style = BTNS_BUTTON);
    int InsertButton(int index, const TBBUTTON& button) {
        return Ask(TB_INSERTBUTTONA, index, &button);
    }
    int DeleteButton(int index) { return Ask(TB_DELETEBUTTON, index); }
    int GetButton(int index, TBBUTTON* button) const { return Ask(TB_GETBUTTON, index, button); }
    // -1 when there is none.
    int CommandToIndex(UINT command) const { return Ask(TB_COMMANDTOINDEX, command); }
    int GetItemRect(int index, RECT* rect) const { return Ask(TB_GETITEMRECT, index, rect); }

    // By command.
    int EnableButton(UINT command, int on = 1) {
        return Ask(TB_ENABLEBUTTON, command, MAKELPARAM(on, 0));
    }
    int CheckButton(UINT command, int on = 1) {
        return Ask(TB_CHECKBUTTON, command, MAKELPARAM(on, 0));
    }
    int PressButton(UINT command, int on = 1) {
        return Ask(TB_PRESSBUTTON, command, MAKELPARAM(on, 0));
    }
    int HideButton(UINT command, int on = 1) {
        return Ask(TB_HIDEBUTTON, command, MAKELPARAM(on, 0));
    }
    int IsButtonEnabled(UINT command) const { return Ask(TB_ISBUTTONENABLED, command); }
    int IsButtonChecked(UINT command) const { return Ask(TB_ISBUTTONCHECKED, command); }
    int IsButtonPressed(UINT command) const { return Ask(TB_ISBUTTONPRESSED, command); }
    int IsButtonHidden(UINT command) const { return Ask(TB_ISBUTTONHIDDEN, command); }
    // TBSTATE_...; -1 without the button.
    int GetState(UINT command) const { return Ask(TB_GETSTATE, command); }
    int SetState(UINT command, UINT state) {
        return Ask(TB_SETSTATE, command, MAKELPARAM(state, 0));
    }

    int SetButtonSize(SIZE size) { return Ask(TB_SETBUTTONSIZE, 0, MAKELPARAM(size.cx, size.cy)); }
    int SetBitmapSize(SIZE size) { return Ask(TB_SETBITMAPSIZE, 0, MAKELPARAM(size.cx, size.cy)); }
    SIZE GetButtonSize() const;
    void AutoSize() { Ask(TB_AUTOSIZE); }
    int GetRows() const { return Ask(TB_GETROWS); }
    SImageList* SetImageList(const SImageList* images) {
        return SImageList::FromHandle(
            Ask<HIMAGELIST>(TB_SETIMAGELIST, 0, images != nullptr ? images->GetHandle() : nullptr));
    }
};

// Buttons with a text, in categories of which one is shown at a time: the list from which a user
// takes buttons to put them on a tool bar. It draws itself; a click selects a button and tells the
// parent kButtonPicked in WM_COMMAND. There is no factory: a list is made for its categories.
class BRCORE8_API SToolBarCatCtrl : public SWnd {
    SDECLARE_CLASS(SToolBarCatCtrl);
    SDECLARE_MESSAGE_MAP(SToolBarCatCtrl);

public:
    static constexpr UINT kButtonPicked = 0x0B02;

    // The images are found by the commands, and may be null; the list must outlive this.
    explicit SToolBarCatCtrl(const SImageListEx* images) noexcept : images_(images) {}

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CtrlWnd", nullptr, style, place, parent, id);
    }

    // Its number.
    int AddCategory(const char* name);
    int GetCategoryCount() const noexcept { return static_cast<int>(categories_.size()); }
    // Empty for a category that is not there.
    SString GetCategoryName(int category) const;
    // 0 for a category that is not there.
    int AddButton(int category, UINT command, const char* text);
    int GetButtonCount(int category) const;
    // The one shown: -1 at first, and 0 for one that is not there.
    int SetCurCategory(int category);
    int GetCurCategory() const noexcept { return current_; }
    // The command of the button picked last; 0 when none is.
    UINT GetPicked() const noexcept { return picked_; }
    // The command under a client point, or 0.
    UINT HitTest(POINT point) const;

private:
    struct Button {
        UINT command;
        SString text;
    };
    struct Category {
        SString name;
        std::vector<Button> buttons;
    };
    int RowHeight() const noexcept;

    void OnPaint();
    void OnLButtonDown(UINT keys, int x, int y);

    const SImageListEx* images_;
    std::vector<Category> categories_;
    int current_ = -1;
    UINT picked_ = 0;
};

class BRCORE8_API SToolTipCtrl : public SWnd {
    SDECLARE_CREATABLE(SToolTipCtrl);

public:
    // A "tooltips_class32" that `parent` owns, of the style TTS_...
    using SWnd::Create;
    int Create(SWnd* parent, DWORD style = 0);

    void Activate(int on = 1) { Ask(TTM_ACTIVATE, on); }
    // A tip for a rectangle of a window, or, null, for all of it. The control keeps the text.
    int AddTool(SWnd* window, const char* text, const RECT* rect = nullptr, UINT_PTR id = 0);
    // 0 names what was added without an identifier: the window's tip, and that of a rectangle. Of
    // two texts the rectangle's is told.
    void DelTool(SWnd* window, UINT_PTR id = 0);
    void UpdateTipText(SWnd* window, const char* text, UINT_PTR id = 0);
    SString GetText(SWnd* window, UINT_PTR id = 0) const;
    int GetToolCount() const { return Ask(TTM_GETTOOLCOUNT); }
    // TTDT_...; milliseconds.
    void SetDelayTime(UINT which, int time) { Ask(TTM_SETDELAYTIME, which, MAKELPARAM(time, 0)); }
    int SetMaxTipWidth(int pixels) { return Ask(TTM_SETMAXTIPWIDTH, 0, pixels); }
    void Pop() { Ask(TTM_POP); }
    void RelayEvent(const MSG& message) { Ask(TTM_RELAYEVENT, 0, &message); }

private:
    static constexpr std::size_t kLongest = 80;  // with the terminator, as the control answers it
};

class BRCORE8_API SRebarCtrl : public SWnd {
    SDECLARE_CREATABLE(SRebarCtrl);

public:
    // A "ReBarWindow32" of the style RBS_... and CCS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(REBARCLASSNAMEA, nullptr, style, place, parent, id);
    }

    int GetBandCount() const { return Ask(RB_GETBANDCOUNT); }
    int GetRowCount() const { return Ask(RB_GETROWCOUNT); }
    int GetBarHeight() const { return Ask(RB_GETBARHEIGHT); }
    // -1 is behind all.
    int InsertBand(int index, const REBARBANDINFOA& band) {
        return Ask(RB_INSERTBANDA, index, &band);
    }
    // A band for a child window, at least as large as given.
    int InsertBand(int index, SWnd* child, int minWidth, int minHeight, const char* text = nullptr);
    int DeleteBand(int index) { return Ask(RB_DELETEBAND, index); }
    int GetBandInfo(int index, REBARBANDINFOA* band) const {
        return Ask(RB_GETBANDINFOA, index, band);
    }
    int SetBandInfo(int index, const REBARBANDINFOA& band) {
        return Ask(RB_SETBANDINFOA, index, &band);
    }
    int ShowBand(int index, int on = 1) { return Ask(RB_SHOWBAND, index, on); }
    int MoveBand(int from, int to) { return Ask(RB_MOVEBAND, from, to); }
    void MaximizeBand(int index) { Ask(RB_MAXIMIZEBAND, index, 0); }
    void MinimizeBand(int index) { Ask(RB_MINIMIZEBAND, index, 0); }
    int GetRect(int index, RECT* rect) const { return Ask(RB_GETRECT, index, rect); }
    int SizeToRect(const RECT& rect) { return Ask(RB_SIZETORECT, 0, &rect); }
    COLORREF SetBkColor(COLORREF color) { return Ask<COLORREF>(RB_SETBKCOLOR, 0, color); }
};

class BRCORE8_API STabCtrl : public SWnd {
    SDECLARE_CREATABLE(STabCtrl);

public:
    // A "SysTabControl32" of the style TCS_...; a new choice comes to the parent as TCN_SELCHANGE.
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(WC_TABCONTROLA, nullptr, style, place, parent, id);
    }

    int GetItemCount() const { return Ask(TCM_GETITEMCOUNT); }
    int InsertItem(int index, const TCITEMA& item) { return Ask(TCM_INSERTITEMA, index, &item); }
    int InsertItem(int index, const char* text, LPARAM data = 0);
    int DeleteItem(int index) { return Ask(TCM_DELETEITEM, index); }
    int DeleteAllItems() { return Ask(TCM_DELETEALLITEMS); }
    int GetItem(int index, TCITEMA* item) const { return Ask(TCM_GETITEMA, index, item); }
    int SetItem(int index, const TCITEMA& item) { return Ask(TCM_SETITEMA, index, &item); }
    SString GetItemText(int index) const;
    LPARAM GetItemData(int index) const;
    int GetCurSel() const { return Ask(TCM_GETCURSEL); }
    // The one before.
    int SetCurSel(int index) { return Ask(TCM_SETCURSEL, index); }
    int GetItemRect(int index, RECT* rect) const { return Ask(TCM_GETITEMRECT, index, rect); }
    int HitTest(TCHITTESTINFO* info) const { return Ask(TCM_HITTEST, 0, info); }
    // From the control's rectangle to that of the pages, or, `larger`, back.
    void AdjustRect(int larger, RECT* rect) const { Ask(TCM_ADJUSTRECT, larger, rect); }
    int GetRowCount() const { return Ask(TCM_GETROWCOUNT); }
    SImageList* SetImageList(const SImageList* images) {
        return SImageList::FromHandle(Ask<HIMAGELIST>(
            TCM_SETIMAGELIST, 0, images != nullptr ? images->GetHandle() : nullptr));
    }
};

#endif
