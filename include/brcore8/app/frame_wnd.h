// SFrameWnd: a top-level window of the application, its main window as a rule. Frames take part in
// the idle updates, bring their menus' items up to date before a popup opens, and turn the keys of
// their table into commands. Their bars take strips at the edges of the client area, in the order
// in which they were made, and a view fills what is left.
#ifndef BRCORE8_APP_FRAME_WND_H
#define BRCORE8_APP_FRAME_WND_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SFrameWnd : public SWnd {
    SDECLARE_CREATABLE(SFrameWnd);
    SDECLARE_MESSAGE_MAP(SFrameWnd);

public:
    SFrameWnd() noexcept = default;
    // An overlapped window of "S_Window", placed by the platform. 1 or 0.
    int CreateFrame(const char* text, SWnd* owner = nullptr);

    // The keys that stand for the frame's commands; the table stays the caller's. Null is none.
    void SetAccelTable(HACCEL table) noexcept { accelerators_ = table; }
    HACCEL GetAccelTable() const noexcept { return accelerators_; }
    int PreTranslateMessage(MSG* message) override;

    // The child that fills what the bars leave, and is asked about commands behind the frame; null
    // is none. It stays the caller's and may end first. Where none was set it is the child with the
    // identifier ViewId. GetView answers it while it has a window in the frame, else null.
    static constexpr UINT ViewId = 0xE900;
    void SetView(SWnd* view) noexcept { view_ = view; }
    SWnd* GetView() const;
    // Gives the bars and the view their places; a new size of the frame does it too.
    virtual void RecalcLayout();

protected:
    void OnSize(UINT how, int width, int height);
    // The frame is asked first, then its view, then the application.
    int OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) override;
    // The frame and its view alone.
    int OfferCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info);
    // The child that RecalcLayout gives what the bars leave, or null: the view's window.
    virtual HWND FindFiller() const;

private:
    void OnInitMenuPopup(SMenu* popup, UINT index, BOOL isSystem);

    SWnd* view_ = nullptr;
    mutable HWND viewWindow_ = nullptr;  // as far as it was found last
    HWND layingOut_ = nullptr;
    HACCEL accelerators_ = nullptr;
};

#endif
