// Controls of the library's own, which draw themselves and so are the same on every system.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 when the platform refuses the window.
#ifndef BRCORE8_CONTROLS_DRAWN_CTRLS_H
#define BRCORE8_CONTROLS_DRAWN_CTRLS_H

#include <brcore8/graphics/image_list.h>
#include <brcore8/window/wnd.h>

#include <vector>

// A push button with an image beside its text, flat where one likes; it tells its parent
// BN_CLICKED. The mouse presses it, and so does Space while it has the focus; BM_CLICK, which
// dialogs send for its letter, clicks it.
class BRCORE8_API SButtonExCtrl : public SWnd {
    SDECLARE_CREATABLE(SButtonExCtrl);
    SDECLARE_MESSAGE_MAP(SButtonExCtrl);

public:
    SButtonExCtrl() noexcept = default;

    using SWnd::Create;
    int Create(const char* text, DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CtrlWndEx", text, style, place, parent, id);
    }

    // The list must outlive the button; null shows none.
    void SetImage(const SImageList* images, int index);
    // Without edges until it is pressed.
    void SetFlat(int on);
    // One that stays down (SetCheck) until the next click.
    void SetToggle(int on) noexcept { isToggle_ = on != 0; }
    int GetCheck() const noexcept { return isChecked_; }
    void SetCheck(int on);
    // Whether the mouse or Space holds it down.
    int IsPressed() const noexcept { return isPressed_; }
    // Presses and releases it, as the user would.
    void Click();

protected:
    // The face inside of the edges; `shift` is 1 while it is down.
    virtual void DrawFace(SDC& dc, RECT face, int shift);
    // What a click does; here the parent is told.
    virtual void OnClick();

private:
    void Press(int on);
    void OnPaint();
    void OnLButtonDown(UINT keys, int x, int y);
    void OnMouseMove(UINT keys, int x, int y);
    void OnLButtonUp(UINT keys, int x, int y);
    void OnCaptureChanged(SWnd* to);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnKeyUp(UINT key, UINT repeat, UINT flags);
    void OnFocusChanged(SWnd*) { Invalidate(1); }
    void OnEnable(BOOL) { Invalidate(1); }
    UINT OnGetDlgCode() { return DLGC_BUTTON; }
    void OnKillFocus(SWnd* to);
    LRESULT OnClickMessage(WPARAM, LPARAM);
    LRESULT OnSetText(WPARAM, LPARAM);
    LRESULT OnGetCheck(WPARAM, LPARAM) { return isChecked_; }
    LRESULT OnSetCheck(WPARAM on, LPARAM);

    const SImageList* images_ = nullptr;
    int image_ = -1;
    int isFlat_ = 0;
    int isToggle_ = 0;
    int isChecked_ = 0;
    int isPressed_ = 0;
    int isTracking_ = 0;  // the mouse went down on it
};

// A well that holds one node of a model: it shows the node's name and image, or in grey what kind
// of node it waits for. There is no factory: a well is made for a kind.
class BRCORE8_API SNodeWellCtrl : public SButtonExCtrl {
    SDECLARE_CLASS(SNodeWellCtrl);

public:
    explicit SNodeWellCtrl(const char* kind) : kind_(kind) {}

    // A node is whatever the program means by the pointer, which stays the program's; null
    // empties the well.
    void SetNode(void* node, const char* name);
    void* GetNode() const noexcept { return node_; }
    void Clear() { SetNode(nullptr, nullptr); }
    const SString& GetKind() const noexcept { return kind_; }

protected:
    void DrawFace(SDC& dc, RECT face, int shift) override;

private:
    SString kind_;
    void* node_ = nullptr;
};

// A well that shows a colour. A click, or Space, tells the parent BN_CLICKED, that it may offer
// others; a new colour tells it kColorChanged.
class BRCORE8_API SColorWellCtrl : public SWnd {
    SDECLARE_CREATABLE(SColorWellCtrl);
    SDECLARE_MESSAGE_MAP(SColorWellCtrl);

public:
    static constexpr UINT kColorChanged = 0x0B03;

    SColorWellCtrl() noexcept = default;

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CtrlWnd", nullptr, style, place, parent, id);
    }

    COLORREF GetColor() const noexcept { return color_; }
    void SetColor(COLORREF color);

private:
    void Tell(UINT code);
    void OnPaint();
    void OnLButtonUp(UINT keys, int x, int y);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    void OnFocusChanged(SWnd*) { Invalidate(0); }

    COLORREF color_ = 0;
};

// A row of tabs, as long as their texts; the parent is told kTabChanged.
class BRCORE8_API STabBeam : public SWnd {
    SDECLARE_CREATABLE(STabBeam);
    SDECLARE_MESSAGE_MAP(STabBeam);

public:
    static constexpr UINT kTabChanged = 0x0B04;
    // Pixels of 96 an inch: SScaled makes them the screen's.
    static constexpr int kHeight = 22;

    STabBeam() noexcept = default;

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_TabWnd", nullptr, style, place, parent, id);
    }

    // The new tab's place; -1 is behind all, as are places that there are not. The first one added
    // is the current one.
    int InsertTab(int index, const char* text);
    int AddTab(const char* text) { return InsertTab(-1, text); }
    // 0 for a tab that is not there. Behind the current one's removal its neighbour is current.
    int RemoveTab(int index);
    int GetTabCount() const noexcept { return static_cast<int>(tabs_.size()); }
    SString GetTabText(int index) const;
    int SetTabText(int index, const char* text);
    int GetCurTab() const noexcept { return current_; }
    // Tells nobody; 0 for a tab that is not there.
    int SetCurTab(int index);
    // In client coordinates; empty for one that is not there.
    RECT GetTabRect(int index) const;
    // -1 beside the tabs.
    int HitTest(POINT point) const;

private:
    void Choose(int index);
    void OnPaint();
    void OnLButtonDown(UINT keys, int x, int y);
    void OnKeyDown(UINT key, UINT repeat, UINT flags);
    UINT OnGetDlgCode() { return DLGC_WANTARROWS; }

    std::vector<SString> tabs_;
    int current_ = -1;
};

#endif
