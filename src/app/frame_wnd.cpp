#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/win_app.h>

SIMPLEMENT_CREATABLE(SFrameWnd, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SFrameWnd, SWnd);

int SFrameWnd::CreateFrame(const char* text, SWnd* owner) {
    return CreateEx(0, "S_Window", text, WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, owner != nullptr ? owner->GetHandle() : nullptr);
}

int SFrameWnd::OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) {
    if (SWnd::OnCmdMsg(id, packed, extra, info)) return 1;
    SWinApp* const app = SGetApp();
    return app != nullptr ? app->OnCmdMsg(id, packed, extra, info) : 0;
}
