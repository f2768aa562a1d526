// The scale of a window's screen, for layout that counts pixels:
//
//     const int gap = SScaled(8, GetHandle());   // 8 of 96 an inch, 16 of 192
//
// The system's fonts and GetSystemMetrics are scaled already, and so is what is measured with them.
// Lines of one pixel stay so. On Windows the scale is what the process is told of: one that has not
// said that it knows about resolutions is told of 96, and its windows are stretched.
#ifndef BRCORE8_WINDOW_SCALED_H
#define BRCORE8_WINDOW_SCALED_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/windows.h>

// `pixels` of 96 an inch as pixels of the window's screen, rounded to the nearest; of the main
// screen for null. Any thread.
BRCORE8_API int SScaled(int pixels, HWND window) noexcept;

#endif
