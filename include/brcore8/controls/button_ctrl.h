// SButtonCtrl: the wrapper of the platform's button.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_CONTROLS_BUTTON_CTRL_H
#define BRCORE8_CONTROLS_BUTTON_CTRL_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SButtonCtrl : public SWnd {
    SDECLARE_CREATABLE(SButtonCtrl);

public:
    // A "BUTTON" of the style BS_...; clicks come to the parent as BN_CLICKED. 1 or 0.
    using SWnd::Create;
    int Create(const char* text, DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("BUTTON", text, style, place, parent, id);
    }

    void Click() { SendMessage(BM_CLICK); }
    // BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE.
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    // The check with BST_PUSHED and BST_FOCUS.
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    // Shows it pressed, or not.
    void SetState(int pressed) { SendMessage(BM_SETSTATE, static_cast<WPARAM>(pressed)); }
    // The style's low 16 bits.
    void SetButtonStyle(UINT style, int redraw = 1) { SendMessage(BM_SETSTYLE, style, redraw); }
};

#endif
