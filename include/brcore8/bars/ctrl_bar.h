// SCtrlBar: a bar at an edge of a frame, such as a status bar or a toolbar. The frame asks its bars
// in turn to take their strips of its client area, and gives the rest to its view; in idle time the
// bar brings what it shows of commands up to date.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_BARS_CTRL_BAR_H
#define BRCORE8_BARS_CTRL_BAR_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SCtrlBar : public SWnd {
    SDECLARE_CREATABLE(SCtrlBar);
    SDECLARE_MESSAGE_MAP(SCtrlBar);

public:
    enum Side { Top, Bottom, Left, Right };

    SCtrlBar() noexcept = default;

    // An empty bar at that side of `parent`, `thickness` pixels high or wide. 1 or 0.
    using SWnd::Create;
    int Create(SWnd* parent, Side side, int thickness, UINT id);

    Side GetSide() const noexcept { return side_; }
    // Take effect with the frame's next RecalcLayout.
    void SetSide(Side side) noexcept { side_ = side; }
    void SetThickness(int pixels) noexcept { thickness_ = pixels; }

    // How high, or wide at the left and right, the bar wants to be: what SetThickness said.
    virtual int GetThickness() const;
    // Brings what the bar shows up to date: asks `target` about its commands. Nothing here.
    virtual void OnUpdateCmdUI(SCmdTarget* target, int disableIfNoHandler);

protected:
    // Takes the bar's strip of the room and moves there.
    virtual void TakeRoom(RECT* room);

private:
    void OnIdleUpdate(BOOL disableIfNoHandler);
    LRESULT OnLayoutBars(WPARAM, LPARAM room);

    Side side_ = Top;
    int thickness_ = 0;
};

#endif
