// Pictures of what windows show, for documents, bug reports and tests. Where the desktop lives in
// memory this is the way to look at it.
//
// The thread's own windows are painted first where they are due. Windows of other threads are taken
// as they are.
#ifndef BRCORE8_PLATFORM_DESKTOP_PICTURE_H
#define BRCORE8_PLATFORM_DESKTOP_PICTURE_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/windows.h>

// A bitmap of the caller's, to be deleted: of the window with its frame, or of the whole screen
// when it is null. Null when there is no such window, nothing that draws, or no memory.
BRCORE8_API HBITMAP SCaptureWindow(HWND window);

// A new PNG file of the same. False when there is nothing to write, or the file cannot be written.
BRCORE8_API bool SWriteDesktopPicture(const char* path);
BRCORE8_API bool SWriteWindowPicture(HWND window, const char* path);

#endif
