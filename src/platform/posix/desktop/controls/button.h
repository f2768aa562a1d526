// A button of any type: what it does is in button.cpp, how it looks in button_look.cpp.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_BUTTON_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_BUTTON_H

#include "platform/posix/desktop/controls/control.h"

namespace brcore8::desktop {

// How a button is to look.
struct ButtonLook {
    HWND handle;
    DWORD style;
    UINT state;  // BST_
    std::string text;
    HBRUSH back;

    DWORD Type() const noexcept { return style & BS_TYPEMASK; }
    bool IsPushed() const noexcept { return (state & BST_PUSHED) != 0; }
    bool IsDisabled() const noexcept { return (style & WS_DISABLED) != 0; }
};

void DrawPushButton(const ControlPaint& paint, const ButtonLook& look);
// Check boxes and radio buttons: a mark and a text beside it.
void DrawMarkButton(const ControlPaint& paint, const ButtonLook& look);
void DrawGroupBox(const ControlPaint& paint, const ButtonLook& look);

}  // namespace brcore8::desktop

#endif
