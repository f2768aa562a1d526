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
    if (SWnd::OnCmdMsg(id, packed, extra, info)) return 1;
    SWinApp* const app = SGetApp();
    return app != nullptr ? app->OnCmdMsg(id, packed, extra, info) : 0;
}

int SFrameWnd::PreTranslateMessage(MSG* message) {
    return accelerators_ != nullptr && TranslateAcceleratorA(GetHandle(), accelerators_, message);
}

void SFrameWnd::OnInitMenuPopup(SMenu* popup, UINT, BOOL isSystem) {
    if (!isSystem) SUpdateMenu(popup, this, 1);
}

// --- Layout -------------------------------------------------------------------------------------

SWnd* SFrameWnd::GetView() const {
    return view_ != nullptr ? view_ : FromHandlePermanent(::GetDlgItem(GetHandle(), ViewId));
}

void SFrameWnd::RecalcLayout() {
    const HWND handle = GetHandle();
    // A bar that changes its size may ask for the layout that it is in.
    if (handle == nullptr || isLayingOut_) return;
    isLayingOut_ = 1;
    RECT room = GetClientRect();
    for (HWND child = ::GetWindow(handle, GW_CHILD), next; child != nullptr; child = next) {
        next = ::GetWindow(child, GW_HWNDNEXT);
        ::SendMessageA(child, kLayoutBarsMessage, 0, reinterpret_cast<LPARAM>(&room));
    }
    if (FromHandlePermanent(handle) != this) return;
    if (SWnd* const view = GetView(); view != nullptr && view->GetHandle() != nullptr)
        view->SetWindowPos(nullptr, room.left, room.top, room.right - room.left,
                           room.bottom - room.top, SWP_NOZORDER | SWP_NOACTIVATE);
    // Whoever was told of a new size may have ended the frame.
    if (FromHandlePermanent(handle) == this) isLayingOut_ = 0;
}

void SFrameWnd::OnSize(UINT how, int, int) {
    Default();
    if (how != SIZE_MINIMIZED) RecalcLayout();
}
