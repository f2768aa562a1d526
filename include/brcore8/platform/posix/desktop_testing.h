// What tests of programs with windows do with the desktop that this library offers where the system
// has none: hold its clock, write down what the user does to play it again, and look at windows as
// screens of other resolutions show them.
//
// While the clock is held, timers, double clicks, the caret and GetTickCount see no time pass but
// what the test lets pass; GetMessageA waits for messages alone. Any thread.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_TESTING_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_TESTING_H

#include <brcore8/platform/export.h>

#include <string>

BRCORE8_API void SHoldDesktopClock() noexcept;
// Does nothing while the clock runs by itself.
BRCORE8_API void SAdvanceDesktopClock(unsigned milliseconds) noexcept;
// It goes on from the system's time, which may be before or after the held one.
BRCORE8_API void SReleaseDesktopClock() noexcept;

// How many pixels an inch the desktop in memory has: 96 until this says otherwise, at least 96 and
// at most 768. Fonts, measures of the system and new windows follow; windows that are there keep
// their places and fonts until they are laid out again. A real screen keeps its own.
BRCORE8_API void SSetDesktopDpi(unsigned dpi) noexcept;

// Begins a recording of all input, by the user and by SendInput; one that runs is dropped.
BRCORE8_API void SRecordInput();
// Its text: a line an input, "120 left-down 40 55 0", beginning with the milliseconds since the
// recording began.
BRCORE8_API std::string SStopRecordingInput();
// Gives the desktop the input of a recording; the clock, when it is held, advances as it went then.
// `pump` is called after each, to let windows have it; it may be null. 0, else the number of the
// first line that is none, before which all was done.
BRCORE8_API int SReplayInput(const std::string& text, void (*pump)());

#endif
