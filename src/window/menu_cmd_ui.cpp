#include <brcore8/window/menu_cmd_ui.h>

#include "routing/target_life.h"

void SMenuCmdUI::Enable(int on) {
    SSysCmdUI::Enable(on);
    if (IsPlain()) menu_->EnableMenuItem(index_, MF_BYPOSITION | (on ? MF_ENABLED : MF_GRAYED));
}

void SMenuCmdUI::SetCheck(int state) {
    if (IsPlain())
        menu_->CheckMenuItem(index_, MF_BYPOSITION | (state ? MF_CHECKED : MF_UNCHECKED));
}

void SMenuCmdUI::SetRadio(int on) {
    if (!IsPlain()) return;
    MENUITEMINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_STATE;
    if (!menu_->GetMenuItemInfo(index_, &info, 1)) return;
    info.fType |= MFT_RADIOCHECK;
    info.fState = (info.fState & ~UINT{MFS_CHECKED}) | (on ? MFS_CHECKED : MFS_UNCHECKED);
    menu_->SetMenuItemInfo(index_, &info, 1);
}

void SMenuCmdUI::SetText(const char* text) {
    if (!IsPlain() || text == nullptr || menu_->GetMenuString(index_, MF_BYPOSITION) == text)
        return;
    MENUITEMINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    // The platform's record asks for a text that may be written to, and does not.
    info.dwTypeData = const_cast<char*>(text);
    menu_->SetMenuItemInfo(index_, &info, 1);
}

void SUpdateMenu(SMenu* popup, SCmdTarget* target, int disableIfNoHandler) {
    if (popup == nullptr) return;
    const HMENU handle = popup->GetHandle();
    const SHandleMapLock keep;
    const brcore8::TargetLife life(target);
    const int count = GetMenuItemCount(handle);
    for (int i = 0; !life.IsOver() && i < count && i < GetMenuItemCount(handle); ++i) {
        SMenu* const sub = SMenu::FromHandle(GetSubMenu(handle, i));
        const UINT id = sub != nullptr ? sub->GetMenuItemID(0) : GetMenuItemID(handle, i);
        SMenuCmdUI ui;
        ui.SetElement(id, static_cast<UINT>(i), nullptr, SMenu::FromHandle(handle), sub);
        ui.DoUpdate(target, disableIfNoHandler && sub == nullptr);
    }
}
