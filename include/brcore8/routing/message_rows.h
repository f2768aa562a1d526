// The rows of message maps: one function a message, which takes the member handler as a template
// argument and checks its form, the one that the line shows. Coordinates and sizes are pixels.
//
//     SOnLButtonDown<&SGraph::OnLButtonDown>()          // void OnLButtonDown(UINT keys, int x, int
//     y) SOnCommand<&SGraph::OnZoom>(ID_ZOOM)              // void OnZoom()
//
// Pointers among a handler's arguments belong to the caller; windows, menus and device contexts are
// wrappers, temporary ones mostly, that are good until the next idle pass.
#ifndef BRCORE8_ROUTING_MESSAGE_ROWS_H
#define BRCORE8_ROUTING_MESSAGE_ROWS_H

#include <brcore8/routing/message_kinds.h>

// --- Commands -------------------------------------------------------------------------------

// A menu, accelerator or toolbar command: void().
template <auto Handler>
constexpr SMsgEntry SOnCommand(UINT id) noexcept {
    return brcore8::CommandRow<15, void(), Handler>(0, id, id);
}
// Every command from `first` to `last`: void(UINT id).
template <auto Handler>
constexpr SMsgEntry SOnCommandRange(UINT first, UINT last) noexcept {
    return brcore8::CommandRow<16, void(UINT), Handler>(0, first, last);
}
// The same, by handlers that answer whether they took it; 0 leaves it to the next target: int(),
// int(UINT id).
template <auto Handler>
constexpr SMsgEntry SOnCommandEx(UINT id) noexcept {
    return brcore8::CommandRow<38, int(), Handler>(0, id, id);
}
template <auto Handler>
constexpr SMsgEntry SOnCommandRangeEx(UINT first, UINT last) noexcept {
    return brcore8::CommandRow<2, int(UINT), Handler>(0, first, last);
}
// Commands that carry what their sender passed along: void(void*), int(void*).
template <auto Handler>
constexpr SMsgEntry SOnCommandExtra(UINT id) noexcept {
    return brcore8::CommandRow<49, void(void*), Handler>(0, id, id);
}
template <auto Handler>
constexpr SMsgEntry SOnCommandExtraEx(UINT id) noexcept {
    return brcore8::CommandRow<50, int(void*), Handler>(0, id, id);
}

// How what shows a command is to look: void(SCmdUI*), and for several void(SCmdUI*, UINT id). The
// handler calls Enable, SetCheck and so on; ContinueRouting leaves it to the next target.
template <auto Handler>
constexpr SMsgEntry SOnUpdate(UINT id) noexcept {
    return brcore8::CommandRow<47, void(SCmdUI*), Handler>(kUpdateCode, id, id);
}
template <auto Handler>
constexpr SMsgEntry SOnUpdateRange(UINT first, UINT last) noexcept {
    return brcore8::CommandRow<48, void(SCmdUI*, UINT), Handler>(kUpdateCode, first, last);
}

// --- What controls tell their parent ----------------------------------------------------------

// The notification `code` of a control, such as EN_CHANGE: void(), void(UINT id).
template <auto Handler>
constexpr SMsgEntry SOnControl(UINT code, UINT id) noexcept {
    return brcore8::CommandRow<15, void(), Handler>(code, id, id);
}
template <auto Handler>
constexpr SMsgEntry SOnControlRange(UINT code, UINT first, UINT last) noexcept {
    return brcore8::CommandRow<16, void(UINT), Handler>(code, first, last);
}

// WM_NOTIFY with the low 16 bits of `code`: void(NMHDR*, LRESULT* result). The Ex forms answer
// whether they took it, those for several controls are told which: int(UINT id, NMHDR*, LRESULT*).
template <auto Handler>
constexpr SMsgEntry SOnNotify(UINT code, UINT id) noexcept {
    return brcore8::CommandRow<41, void(NMHDR*, LRESULT*), Handler>(code & 0xFFFF, id, id,
                                                                    WM_NOTIFY);
}
template <auto Handler>
constexpr SMsgEntry SOnNotifyEx(UINT code, UINT id) noexcept {
    return brcore8::CommandRow<42, int(NMHDR*, LRESULT*), Handler>(code & 0xFFFF, id, id,
                                                                   WM_NOTIFY);
}
template <auto Handler>
constexpr SMsgEntry SOnNotifyRange(UINT code, UINT first, UINT last) noexcept {
    return brcore8::CommandRow<43, void(UINT, NMHDR*, LRESULT*), Handler>(code & 0xFFFF, first,
                                                                          last, WM_NOTIFY);
}
template <auto Handler>
constexpr SMsgEntry SOnNotifyRangeEx(UINT code, UINT first, UINT last) noexcept {
    return brcore8::CommandRow<44, int(UINT, NMHDR*, LRESULT*), Handler>(code & 0xFFFF, first, last,
                                                                         WM_NOTIFY);
}

// --- Messages by number -----------------------------------------------------------------------

// Any message below 0xC000: LRESULT(WPARAM, LPARAM).
template <auto Handler>
constexpr SMsgEntry SOnMessage(UINT message) noexcept {
    return brcore8::WindowRow<12, LRESULT(WPARAM, LPARAM), Handler>(message);
}
// A message of RegisterWindowMessageA, whose number is in `message` by the time one comes.
template <auto Handler>
constexpr SMsgEntry SOnRegisteredMessage(const UINT& message) noexcept {
    SMsgEntry row = SOnMessage<Handler>(kRegisteredMessage);
    row.signature = SMsgSignature(&message);
    return row;
}
// With the signature kind given, for handlers of the form `Declared`.
template <unsigned Kind, class Declared, auto Handler>
constexpr SMsgEntry SOnMessageOfKind(UINT message) noexcept {
    return brcore8::WindowRow<Kind, Declared, Handler>(message);
}

// --- The platform's messages --------------------------------------------------------------------

#define BRCORE8_ROW(Name, Message, Kind, ...)                           \
    template <auto Handler>                                             \
    constexpr SMsgEntry Name() noexcept {                               \
        return brcore8::WindowRow<Kind, __VA_ARGS__, Handler>(Message); \
    }

// A window's life. -1 from OnCreate, 0 from OnNcCreate refuse the creation.
BRCORE8_ROW(SOnNcCreate, WM_NCCREATE, 45, int(CREATESTRUCT*))
BRCORE8_ROW(SOnCreate, WM_CREATE, 11, int(CREATESTRUCT*))
BRCORE8_ROW(SOnClose, WM_CLOSE, 15, void())
BRCORE8_ROW(SOnDestroy, WM_DESTROY, 15, void())
BRCORE8_ROW(SOnNcDestroy, WM_NCDESTROY, 15, void())
BRCORE8_ROW(SOnQueryEndSession, WM_QUERYENDSESSION, 14, int())
BRCORE8_ROW(SOnEndSession, WM_ENDSESSION, 16, void(BOOL))
BRCORE8_ROW(SOnSettingChange, WM_SETTINGCHANGE, 17, void(UINT, const char*))
BRCORE8_ROW(SOnSysColorChange, WM_SYSCOLORCHANGE, 15, void())

// Place and look.
BRCORE8_ROW(SOnMove, WM_MOVE, 18, void(int x, int y))
BRCORE8_ROW(SOnSize, WM_SIZE, 19, void(UINT how, int width, int height))
BRCORE8_ROW(SOnShowWindow, WM_SHOWWINDOW, 17, void(BOOL show, UINT why))
BRCORE8_ROW(SOnEnable, WM_ENABLE, 16, void(BOOL))
BRCORE8_ROW(SOnWindowPosChanging, WM_WINDOWPOSCHANGING, 34, void(WINDOWPOS*))
BRCORE8_ROW(SOnWindowPosChanged, WM_WINDOWPOSCHANGED, 34, void(WINDOWPOS*))
BRCORE8_ROW(SOnGetMinMaxInfo, WM_GETMINMAXINFO, 34, void(MINMAXINFO*))
BRCORE8_ROW(SOnSizing, WM_SIZING, 35, void(UINT edge, RECT*))
BRCORE8_ROW(SOnMoving, WM_MOVING, 35, void(UINT edge, RECT*))
BRCORE8_ROW(SOnNcHitTest, WM_NCHITTEST, 37, LRESULT(int x, int y))

// Painting.
BRCORE8_ROW(SOnPaint, WM_PAINT, 15, void())
BRCORE8_ROW(SOnEraseBkgnd, WM_ERASEBKGND, 1, int(SDC*))
BRCORE8_ROW(SOnCtlColorStatic, WM_CTLCOLORSTATIC, 5, HBRUSH(SDC*, SWnd*))
BRCORE8_ROW(SOnCtlColorEdit, WM_CTLCOLOREDIT, 5, HBRUSH(SDC*, SWnd*))
BRCORE8_ROW(SOnCtlColorBtn, WM_CTLCOLORBTN, 5, HBRUSH(SDC*, SWnd*))
BRCORE8_ROW(SOnDrawItem, WM_DRAWITEM, 35, void(UINT id, DRAWITEMSTRUCT*))
BRCORE8_ROW(SOnMeasureItem, WM_MEASUREITEM, 35, void(UINT id, MEASUREITEMSTRUCT*))

// Activation, focus and keyboard. The window is the other one, null for one of another program.
BRCORE8_ROW(SOnActivate, WM_ACTIVATE, 31, void(UINT how, SWnd* other, UINT minimized))
BRCORE8_ROW(SOnActivateApp, WM_ACTIVATEAPP, 17, void(BOOL active, DWORD thread))
BRCORE8_ROW(SOnMouseActivate, WM_MOUSEACTIVATE, 10, int(SWnd* top, int hit, UINT message))
BRCORE8_ROW(SOnSetFocus, WM_SETFOCUS, 26, void(SWnd* from))
BRCORE8_ROW(SOnKillFocus, WM_KILLFOCUS, 26, void(SWnd* to))
BRCORE8_ROW(SOnKeyDown, WM_KEYDOWN, 19, void(UINT key, UINT repeat, UINT flags))
BRCORE8_ROW(SOnKeyUp, WM_KEYUP, 19, void(UINT key, UINT repeat, UINT flags))
BRCORE8_ROW(SOnChar, WM_CHAR, 19, void(UINT character, UINT repeat, UINT flags))
BRCORE8_ROW(SOnSysKeyDown, WM_SYSKEYDOWN, 19, void(UINT key, UINT repeat, UINT flags))
BRCORE8_ROW(SOnSysKeyUp, WM_SYSKEYUP, 19, void(UINT key, UINT repeat, UINT flags))
BRCORE8_ROW(SOnSysChar, WM_SYSCHAR, 19, void(UINT character, UINT repeat, UINT flags))
BRCORE8_ROW(SOnGetDlgCode, WM_GETDLGCODE, 14, UINT())

// The mouse. A wheel handler's 0 leaves the turn to the default procedure.
BRCORE8_ROW(SOnMouseMove, WM_MOUSEMOVE, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnLButtonDown, WM_LBUTTONDOWN, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnLButtonUp, WM_LBUTTONUP, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnLButtonDblClk, WM_LBUTTONDBLCLK, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnRButtonDown, WM_RBUTTONDOWN, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnRButtonUp, WM_RBUTTONUP, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnMButtonDown, WM_MBUTTONDOWN, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnMButtonUp, WM_MBUTTONUP, 52, void(UINT keys, int x, int y))
BRCORE8_ROW(SOnNcLButtonDown, WM_NCLBUTTONDOWN, 52, void(UINT hit, int x, int y))
BRCORE8_ROW(SOnMouseWheel, WM_MOUSEWHEEL, 48, int(UINT keys, int delta, int x, int y))
BRCORE8_ROW(SOnSetCursor, WM_SETCURSOR, 3, int(SWnd*, int hit, UINT message))
BRCORE8_ROW(SOnContextMenu, WM_CONTEXTMENU, 28, void(SWnd*, int x, int y))
BRCORE8_ROW(SOnCaptureChanged, WM_CAPTURECHANGED, 47, void(SWnd* to))
BRCORE8_ROW(SOnCancelMode, WM_CANCELMODE, 15, void())

// Scroll bars, menus, timers. A scroll bar window is null for the window's own bars.
BRCORE8_ROW(SOnHScroll, WM_HSCROLL, 31, void(UINT code, SWnd* bar, UINT position))
BRCORE8_ROW(SOnVScroll, WM_VSCROLL, 31, void(UINT code, SWnd* bar, UINT position))
BRCORE8_ROW(SOnInitMenu, WM_INITMENU, 24, void(SMenu*))
BRCORE8_ROW(SOnInitMenuPopup, WM_INITMENUPOPUP, 25, void(SMenu*, UINT index, BOOL system))
BRCORE8_ROW(SOnMenuSelect, WM_MENUSELECT, 51, void(UINT item, UINT flags, HMENU))
BRCORE8_ROW(SOnMenuChar, WM_MENUCHAR, 13, LRESULT(UINT character, UINT flags, SMenu*))
BRCORE8_ROW(SOnEnterIdle, WM_ENTERIDLE, 30, void(UINT why, SWnd*))
BRCORE8_ROW(SOnSysCommand, WM_SYSCOMMAND, 17, void(UINT id, LPARAM))
BRCORE8_ROW(SOnTimer, WM_TIMER, 16, void(UINT_PTR id))
BRCORE8_ROW(SOnParentNotify, WM_PARENTNOTIFY, 51, void(UINT event, UINT id, LPARAM))
BRCORE8_ROW(SOnMDIActivate, WM_MDIACTIVATE, 22, void(BOOL, SWnd* activated, SWnd* other))
// The library's own message in idle time: bring what shows commands up to date.
BRCORE8_ROW(SOnIdleUpdate, kIdleUpdateMessage, 16, void(BOOL disableIfNoHandler))

#undef BRCORE8_ROW

#endif
