#include <brcore8/routing/cmd_ui.h>
#include <brcore8/window/wnd.h>

#include "routing/target_life.h"

#include <utility>

int SCmdUI::TakeContinueRouting() noexcept {
    return std::exchange(continueRouting_, 0);
}

void SCmdUI::SetElement(UINT id, UINT index, SWnd* sender, SMenu* menu, SMenu* subMenu) noexcept {
    id_ = id;
    index_ = index;
    sender_ = sender;
    menu_ = menu;
    subMenu_ = subMenu;
}

void SSysCmdUI::Enable(int on) {
    enableChanged_ = 1;
    // Even a window that is disabled already would be told to end what it is in the middle of.
    if (sender_ != nullptr && (sender_->IsWindowEnabled() != 0) != (on != 0))
        sender_->EnableWindow(on);
}

void SSysCmdUI::SetCheck(int state) {
    if (sender_ != nullptr && (sender_->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) != 0)
        sender_->SendMessage(BM_SETCHECK, static_cast<WPARAM>(state));
}

void SSysCmdUI::SetRadio(int on) {
    SetCheck(on != 0);
}

void SSysCmdUI::SetText(const char*) {}

int SSysCmdUI::DoUpdate(SCmdTarget* target, int disableIfNoHandler) {
    if (id_ == 0 || LOWORD(id_) == 0xFFFF) return 1;
    enableChanged_ = 0;
    const brcore8::TargetLife life(target);
    const int result = target->OnCmdMsg(id_, kUpdateRequest, this, nullptr);
    if (life.IsOver()) return result;
    if (disableIfNoHandler && !enableChanged_) {
        S_CMDHANDLERINFO info{};
        Enable(target->OnCmdMsg(id_, 0, this, &info));
    }
    return result;
}
