// The scroll bars of windows, and the default procedures of frames with documents inside: what
// differs between the systems. windows/frame_parts.cpp and posix/frame_parts.cpp answer.
#ifndef BRCORE8_PLATFORM_FRAME_PARTS_H
#define BRCORE8_PLATFORM_FRAME_PARTS_H

#include <brcore8/platform/windows.h>

namespace brcore8 {

// The window shows `page` of `total`, from `position` on; the bar hides where all fits. Where
// windows have no bars nothing happens.
void SetWindowScroll(HWND window, int bar, int total, int page, int position) noexcept;
// Where the user holds the thumb: `carried` is what the message said, in 16 bits.
int GetWindowTrack(HWND window, int bar, int carried) noexcept;

// What frames of documents do by themselves; DefWindowProcA where there are none.
LRESULT DefDocumentFrame(HWND window, HWND client, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT DefDocumentChild(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// The style of a window that is a document.
DWORD DocumentStyle() noexcept;
// The window of the class "MDICLIENT" in which documents live; null with the platform's code.
HWND CreateDocumentClient(HWND frame, UINT id) noexcept;

}  // namespace brcore8

#endif
