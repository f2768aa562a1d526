#include <brcore8/bars/ctrl_bar.h>

#include <algorithm>

SIMPLEMENT_CREATABLE(SCtrlBar, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SCtrlBar, SWnd, SOnIdleUpdate<&SCtrlBar::OnIdleUpdate>(),
                       SOnMessage<&SCtrlBar::OnLayoutBars>(kLayoutBarsMessage));

int SCtrlBar::Create(SWnd* parent, Side side, int thickness, UINT id) {
    side_ = side;
    thickness_ = thickness;
    return SWnd::Create("S_CtrlWnd", nullptr, WS_VISIBLE | WS_CLIPSIBLINGS, RECT{}, parent, id);
}

int SCtrlBar::GetThickness() const {
    return thickness_;
}

void SCtrlBar::OnUpdateCmdUI(SCmdTarget*, int) {}

void SCtrlBar::TakeRoom(RECT* room) {
    RECT strip = *room;
    const int height = std::min<int>(GetThickness(), room->bottom - room->top);
    const int width = std::min<int>(GetThickness(), room->right - room->left);
    switch (side_) {
        case Top:
            strip.bottom = room->top += height;
            break;
        case Bottom:
            strip.top = room->bottom -= height;
            break;
        case Left:
            strip.right = room->left += width;
            break;
        case Right:
            strip.left = room->right -= width;
            break;
    }
    SetWindowPos(nullptr, strip.left, strip.top, strip.right - strip.left, strip.bottom - strip.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void SCtrlBar::OnIdleUpdate(BOOL disableIfNoHandler) {
    if (!IsWindowVisible()) return;
    SWnd* const frame = FromHandlePermanent(::GetParent(GetHandle()));
    if (frame != nullptr) OnUpdateCmdUI(frame, disableIfNoHandler);
}

LRESULT SCtrlBar::OnLayoutBars(WPARAM, LPARAM room) {
    // A bar of a frame that is not shown yet takes its room all the same.
    if ((GetStyle() & WS_VISIBLE) != 0) TakeRoom(reinterpret_cast<RECT*>(room));
    return 1;
}
