// The default procedures of frames with documents inside: what differs between the systems.
// windows/frame_parts.cpp and posix/frame_parts.cpp answer.
#ifndef BRCORE8_PLATFORM_FRAME_PARTS_H
#define BRCORE8_PLATFORM_FRAME_PARTS_H

#include <brcore8/platform/windows.h>

namespace brcore8 {

// What frames of documents do by themselves; DefWindowProcA where there are none.
LRESULT DefDocumentFrame(HWND window, HWND client, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT DefDocumentChild(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// The style of a window that is a document.
DWORD DocumentStyle() noexcept;
// The window of the class "MDICLIENT" in which documents live; null with the platform's code.
HWND CreateDocumentClient(HWND frame, UINT id) noexcept;

}  // namespace brcore8

#endif
