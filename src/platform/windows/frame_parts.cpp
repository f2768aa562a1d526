#include "platform/frame_parts.h"

namespace brcore8 {

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
