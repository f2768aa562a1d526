#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>
#include <brcore8/window/menu_cmd_ui.h>

SIMPLEMENT_CREATABLE(SFrameWnd, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SFrameWnd, SWnd, SOnSize<&SFrameWnd::OnSize>(),
                       SOnInitMenuPopup<&SFrameWnd::OnInitMenuPopup>());

int SFrameWnd::CreateFrame(const char* text, SWnd* owner) {
    return CreateEx(0, "S_Window", text, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, owner != nullptr ? owner->GetHandle() : nullptr);
}

int SFrameWnd::OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) {
    if (const int handled = OfferCmdMsg(id, packed, extra, info)) return handled;
    SWinApp* const app = SGetApp();
    return app != nullptr ? app->OnCmdMsg(id, packed, extra, info) : 0;
}

int SFrameWnd::OfferCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) {
    const HWND handle = GetHandle();
    if (const int handled = SWnd::OnCmdMsg(id, packed, extra, info)) return handled;
    // A handler that leaves the command to others may have ended the frame.
    if (FromHandlePermanent(handle) != this) return 0;
    SCmdTarget* const view = GetView();
    return view != nullptr ? view->OnCmdMsg(id, packed, extra, info) : 0;
}

int SFrameWnd::PreTranslateMessage(MSG* message) {
    return accelerators_ != nullptr && TranslateAcceleratorA(GetHandle(), accelerators_, message);
}

void SFrameWnd::OnInitMenuPopup(SMenu* popup, UINT, BOOL isSystem) {
    if (!isSystem) SUpdateMenu(popup, this, 1);
}

// --- Layout -------------------------------------------------------------------------------------

// The view as long as it has a window here: who ends it does not say so.
SWnd* SFrameWnd::GetView() const {
    if (view_ == nullptr) return FromHandlePermanent(::GetDlgItem(GetHandle(), ViewId));
    if (FromHandlePermanent(viewWindow_) == view_) return view_;
    viewWindow_ = ::GetWindow(GetHandle(), GW_CHILD);
    while (viewWindow_ != nullptr && FromHandlePermanent(viewWindow_) != view_)
        viewWindow_ = ::GetWindow(viewWindow_, GW_HWNDNEXT);
    return viewWindow_ != nullptr ? view_ : nullptr;
}

HWND SFrameWnd::FindFiller() const {
    const SWnd* const view = GetView();
    return view != nullptr ? view->GetHandle() : nullptr;
}

void SFrameWnd::RecalcLayout() {
    const HWND handle = GetHandle();
    // A bar that changes its size may ask for the layout that it is in.
    if (handle == nullptr || layingOut_ == handle) return;
    layingOut_ = handle;
    RECT room = GetClientRect();
    for (HWND child = ::GetWindow(handle, GW_CHILD), next; child != nullptr; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT);
        ::SendMessageA(child, kLayoutBarsMessage, 0, reinterpret_cast<LPARAM>(&room));
    }
    if (FromHandlePermanent(handle) != this) return;
    if (const HWND filler = FindFiller())
        ::SetWindowPos(filler, nullptr, room.left, room.top, room.right - room.left,
                       room.bottom - room.top, SWP_NOZORDER | SWP_NOACTIVATE);
    // Whoever was told of a new size may have ended the frame.
    if (FromHandlePermanent(handle) == this) layingOut_ = nullptr;
}

void SFrameWnd::OnSize(UINT how, int, int) {
    Default();
    if (how != SIZE_MINIMIZED) RecalcLayout();
}
