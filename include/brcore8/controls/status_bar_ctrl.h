// SStatusBarCtrl: the wrapper of the platform's status bar control, parts and all. Programs that
// want panes with commands use SStatusBar (brcore8/bars/status_bar.h).
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_CONTROLS_STATUS_BAR_CTRL_H
#define BRCORE8_CONTROLS_STATUS_BAR_CTRL_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SStatusBarCtrl : public SWnd {
    SDECLARE_CREATABLE(SStatusBarCtrl);

public:
    // A "msctls_statusbar32", which places itself at the lower edge of its parent; 1 or 0.
    using SWnd::Create;
    int Create(DWORD style, SWnd* parent, UINT id) {
        return SWnd::Create(STATUSCLASSNAMEA, nullptr, style, RECT{}, parent, id);
    }

    // Up to 255 parts by their right edges in client coordinates; -1 is the bar's. 1 or 0.
    int SetParts(int count, const int* rightEdges) {
        return static_cast<int>(SendMessage(SB_SETPARTS, static_cast<WPARAM>(count),
                                            reinterpret_cast<LPARAM>(rightEdges)));
    }
    // How many there are; the edges of the first `count` are stored where `rightEdges` is not null.
    int GetParts(int count, int* rightEdges) const {
        return static_cast<int>(SendMessage(SB_GETPARTS, static_cast<WPARAM>(count),
                                            reinterpret_cast<LPARAM>(rightEdges)));
    }
    // Each part has a text and a look of its own (0, SBT_POPOUT, SBT_NOBORDERS). Of a longer text
    // the control gets the whole characters of the first 0xFFFF bytes. 1 or 0.
    int SetText(int part, const char* text, UINT look = 0);
    SString GetText(int part, UINT* look = nullptr) const;
    // Empty for a part that is not there.
    RECT GetRect(int part) const;
    // The widths of the border below and above, of that at the sides, and between the parts.
    void GetBorders(int* horizontal, int* vertical, int* between) const;
    void SetMinHeight(int height) { SendMessage(SB_SETMINHEIGHT, static_cast<WPARAM>(height)); }
    // One part over the whole bar, its text kept beside the others'.
    void SetSimple(int on) { SendMessage(SB_SIMPLE, static_cast<WPARAM>(on)); }
    int IsSimple() const { return static_cast<int>(SendMessage(SB_ISSIMPLE)); }
};

#endif
