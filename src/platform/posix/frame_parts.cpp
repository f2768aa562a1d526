#include "platform/frame_parts.h"

namespace brcore8 {

LRESULT DefDocumentFrame(HWND window, HWND, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}

LRESULT DefDocumentChild(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcA(window, message, wParam, lParam);
}

DWORD DocumentStyle() noexcept {
    return 0;
}

// This desktop has not that class: the platform's code is left.
HWND CreateDocumentClient(HWND frame, UINT id) noexcept {
    return CreateWindowExA(0, "MDICLIENT", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, frame,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
}

}  // namespace brcore8
