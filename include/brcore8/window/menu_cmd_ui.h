// SMenuCmdUI: a menu item that asks how it is to look, before its popup opens.
//
//     void SPlan::OnUpdateSave(SCmdUI* ui) { ui->Enable(isChanged_); }
//
// Frames do this for their menus in WM_INITMENUPOPUP; other windows may call SUpdateMenu there.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_WINDOW_MENU_CMD_UI_H
#define BRCORE8_WINDOW_MENU_CMD_UI_H

#include <brcore8/routing/cmd_ui.h>
#include <brcore8/window/menu.h>

class BRCORE8_API SMenuCmdUI : public SSysCmdUI {
public:
    // An item that opens a popup keeps its look: its handler is asked for the popup's sake, with
    // the identifier of the popup's first item.
    void Enable(int on) override;
    void SetCheck(int state) override;
    // A dot instead of a tick.
    void SetRadio(int on) override;
    // The text with its letter and, behind a tab, its key.
    void SetText(const char* text) override;

private:
    bool IsPlain() const noexcept { return menu_ != nullptr && subMenu_ == nullptr; }
};

// Asks `target` about each item of the popup. With `disableIfNoHandler` items whose command nobody
// handles are disabled. A handler may change the menu, items that it adds are not asked; the menu
// may be gone afterwards. One that ends the target's window is the last that is asked.
BRCORE8_API void SUpdateMenu(SMenu* popup, SCmdTarget* target, int disableIfNoHandler);

#endif
