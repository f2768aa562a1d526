// SCmdUI: what shows a command (a menu item, a button) while it asks how it is to look. Handlers of
// updates get one and tell it; each kind of element derives from it.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_ROUTING_CMD_UI_H
#define BRCORE8_ROUTING_CMD_UI_H

#include <brcore8/routing/cmd_target.h>

class BRCORE8_API SCmdUI {
public:
    SCmdUI() = default;
    virtual ~SCmdUI() = default;

    // How the element is to look. In slot order; a mark of a radio group for SetRadio.
    virtual void Enable(int on) = 0;
    virtual void SetCheck(int state) = 0;
    virtual void SetRadio(int on) = 0;
    virtual void SetText(const char* text) = 0;

    // Lets the next target answer too.
    void ContinueRouting() noexcept { continueRouting_ = 1; }
    // Whether a handler asked for that since the last time; forgets it.
    int TakeContinueRouting() noexcept;

    UINT GetID() const noexcept { return id_; }              // the command
    UINT GetIndex() const noexcept { return index_; }        // the element's place in its container
    SMenu* GetMenu() const noexcept { return menu_; }        // the menu it stands in, or null
    SMenu* GetSubMenu() const noexcept { return subMenu_; }  // the menu it opens, or null
    SWnd* GetSender() const noexcept { return sender_; }     // the window it is in, or null

    // Who sets these is who walks the elements.
    void SetElement(UINT id, UINT index, SWnd* sender, SMenu* menu = nullptr,
                    SMenu* subMenu = nullptr) noexcept;

protected:
    int continueRouting_ = 0;
    UINT id_ = 0;
    UINT index_ = 0;
    SMenu* menu_ = nullptr;
    SMenu* subMenu_ = nullptr;
    SWnd* sender_ = nullptr;
};

// A control, such as a button, that shows a command.
class BRCORE8_API SSysCmdUI : public SCmdUI {
public:
    // Enables or disables the control, and notes that someone did.
    void Enable(int on) override;
    // Sets the mark of a control that says it is a button; nothing for others.
    void SetCheck(int state) override;
    // SetCheck with 1 or 0.
    void SetRadio(int on) override;
    // Nothing: the control keeps its text.
    void SetText(const char* text) override;

    // Asks `target` how the command is to look, and returns its answer. With `disableIfNoHandler`,
    // where no handler spoke the element is enabled when the command has one and disabled else.
    // Identifiers 0 and 0xFFFF (of the low 16 bits) are no commands: 1 at once. A handler may end a
    // target that is a window: then the element, too, is left alone.
    int DoUpdate(SCmdTarget* target, int disableIfNoHandler);

private:
    int enableChanged_ = 0;
    [[maybe_unused]] std::int32_t reserved_[2] = {};
};
static_assert(sizeof(void*) != 4 || sizeof(SSysCmdUI) == 40);

#endif
