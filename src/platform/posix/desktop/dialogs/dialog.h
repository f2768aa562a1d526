// What the desktop keeps for each dialog.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_DIALOGS_DIALOG_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_DIALOGS_DIALOG_H

#include <brcore8/platform/posix/dialog_calls.h>

#include <vector>

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

constexpr const char* kDialogClass = "#32770";

struct Dialog {
    HWND focus = nullptr;  // the control that gets it when the dialog is active again
    UINT defaultId = 0;
    bool hasDefault = false;
    bool isRunning = false;
    bool isEnded = false;
    INT_PTR result = 0;
    HWND owner = nullptr;  // disabled while the dialog runs
    HFONT font = nullptr;  // of its controls; null for the system's
    SIZE units = {};       // pixels of four horizontal, eight vertical units
};

// The dialog's record, made on first use; null for what is no window. Under the lock.
Dialog* DialogOf(HWND handle);
// Ends the record, with its font.
void ForgetDialog(HWND handle);

// The pixels of four horizontal and eight vertical units in a font; null is the system's.
SIZE UnitsOf(HFONT font);

// The controls that the user may go to, in order; those in controls with WS_EX_CONTROLPARENT too.
std::vector<HWND> ControlsOf(HWND dialog);
// Gives a control the focus as the keyboard does: its text selected, push buttons the default.
void GoTo(HWND dialog, HWND control);
// Where the focus belongs when none had it.
void GoToFirst(HWND dialog);
// Clicks the dialog's button of that number, as a person would.
bool Press(HWND dialog, int id);
// What Enter does: presses the button that has the focus, else the default one.
void PressDefault(HWND dialog);

}  // namespace brcore8::desktop

#endif
