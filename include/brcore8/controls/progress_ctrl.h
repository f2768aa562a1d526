// SProgressCtrl: the wrapper of the platform's progress bar.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_CONTROLS_PROGRESS_CTRL_H
#define BRCORE8_CONTROLS_PROGRESS_CTRL_H

#include <brcore8/window/wnd.h>

class BRCORE8_API SProgressCtrl : public SWnd {
    SDECLARE_CREATABLE(SProgressCtrl);

public:
    // A "msctls_progress32" of the style PBS_...; 1 or 0.
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(PROGRESS_CLASSA, nullptr, style, place, parent, id);
    }

    void SetRange(int lower, int upper) {
        SendMessage(PBM_SETRANGE32, static_cast<WPARAM>(lower), upper);
    }
    int GetLower() const { return static_cast<int>(SendMessage(PBM_GETRANGE, 1)); }
    int GetUpper() const { return static_cast<int>(SendMessage(PBM_GETRANGE, 0)); }
    int GetPos() const { return static_cast<int>(SendMessage(PBM_GETPOS)); }
    // These return the position from before, SetStep the step.
    int SetPos(int position) {
        return static_cast<int>(SendMessage(PBM_SETPOS, static_cast<WPARAM>(position)));
    }
    int OffsetPos(int delta) {
        return static_cast<int>(SendMessage(PBM_DELTAPOS, static_cast<WPARAM>(delta)));
    }
    int SetStep(int step) {
        return static_cast<int>(SendMessage(PBM_SETSTEP, static_cast<WPARAM>(step)));
    }
    int StepIt() { return static_cast<int>(SendMessage(PBM_STEPIT)); }
};

#endif
