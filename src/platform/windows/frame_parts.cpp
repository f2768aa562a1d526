#include "platform/frame_parts.h"

namespace brcore8 {

void SetWindowScroll(HWND window, int bar, int total, int page, int position) noexcept {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = total > 0 ? total - 1 : 0;
    info.nPage = static_cast<UINT>(page > 0 ? page : 0);
    info.nPos = position;
    SetScrollInfo(window, bar, &info, TRUE);
}

int GetWindowTrack(HWND window, int bar, int carried) noexcept {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS | SIF_POS;
    // A message that a program sent, not the user, is meant as it says.
    if (!GetScrollInfo(window, bar, &info) || info.nTrackPos == info.nPos) return carried;
    return info.nTrackPos;
}

LRESULT DefDocumentFrame(HWND window, HWND client, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefFrameProcA(window, client, message, wParam, lParam);
}

LRESULT DefDocumentChild(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefMDIChildProcA(window, message, wParam, lParam);
}

DWORD DocumentStyle() noexcept {
    return WS_EX_MDICHILD;
}

HWND CreateDocumentClient(HWND frame, UINT id) noexcept {
    CLIENTCREATESTRUCT create{nullptr, id + 1};
    return CreateWindowExA(WS_EX_CLIENTEDGE, "MDICLIENT", nullptr,
                           WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 0, 0, frame,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, &create);
}

}  // namespace brcore8
