// SCmdTarget: whoever handles commands and messages. Commands, the notifications of controls and
// the updates of what shows commands are routed by OnCmdMsg along the target's message maps; the
// messages of windows by SWnd.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_ROUTING_CMD_TARGET_H
#define BRCORE8_ROUTING_CMD_TARGET_H

#include <brcore8/core/object.h>
#include <brcore8/routing/message_rows.h>

// Where a command is handled; a null target is nowhere.
struct S_CMDHANDLERINFO {
    SCmdTarget* target;
    SMsgHandler handler;
};

// What travels as the `extra` of a notification.
struct S_NOTIFICATION {
    LRESULT* result;
    NMHDR* header;
};

// The `packed` of OnCmdMsg: -1 asks for an update; else the message in the high 16 bits, 0 for
// WM_COMMAND, and the notification code in the low ones.
inline constexpr int kUpdateRequest = -1;

class BRCORE8_API SCmdTarget : public SObject {
    SDECLARE_CREATABLE(SCmdTarget);

    SCmdTarget() = default;

    // Finds the first row for the identifier, message and code in this class's map and those of its
    // ancestors, and calls its handler with what its kind tells of `extra`: the S_NOTIFICATION of a
    // notification, the SCmdUI of an update. Non-zero when it was handled; a handler that throws
    // counts as one that handled it, and the observer below is told. With `info`, nothing is
    // called: it is filled, and 1 returned, when there is a handler. `this` may be gone afterwards.
    virtual int OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info);

    // The wait cursor of the application; nothing happens without one. Each Begin wants its End;
    // Restore ends the waiting altogether.
    void BeginWaitCursor();
    void EndWaitCursor();
    void RestoreWaitCursor();

protected:
    static const SMsgMap msgMap;
    static const SMsgMap* _GetBaseMessageMap();
    // The class's own map.
    virtual const SMsgMap* GetMessageMap() const;

private:
    int CallCommandHandler(const SMsgEntry& row, UINT id, void* extra);
};

// Who handles a command, or with another `packed` what OnCmdMsg takes (kUpdateRequest: who tells
// how it looks). `from` is asked and all that it routes to, a frame so its view and the
// application; nothing is called. The target is null where nobody does; its class is
// target->GetClassInfo().
//
//     const S_CMDHANDLERINFO save = SFindCommandHandler(frame, ID_SAVE);
//     if (save.target == &view) ...
BRCORE8_API S_CMDHANDLERINFO SFindCommandHandler(SCmdTarget& from, UINT id, int packed = 0);

// Told of an exception that a handler let escape, inside the catch that contains it: `throw;` there
// gives it again, to look at. It learns the message, and of commands and notifications the
// identifier; the handler's object may be gone. Null, the beginning, is no observer. Returns the
// previous one.
using SEscapeObserver = void (*)(UINT message, UINT id) noexcept;
BRCORE8_API SEscapeObserver SSetEscapeObserver(SEscapeObserver observer) noexcept;

// Shows the wait cursor while it lives, also when an exception ends its scope.
class SWaitCursor {
public:
    explicit SWaitCursor(SCmdTarget& target) : target_(target) { target_.BeginWaitCursor(); }
    SWaitCursor(const SWaitCursor&) = delete;
    SWaitCursor& operator=(const SWaitCursor&) = delete;
    ~SWaitCursor() { target_.EndWaitCursor(); }

private:
    SCmdTarget& target_;
};

#endif
