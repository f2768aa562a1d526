// What keyboard and mouse do, from whoever tells it to the messages that windows get.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_INPUT_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_INPUT_H

#include <brcore8/platform/posix/window_types.h>

#include <cstdint>
#include <mutex>

namespace brcore8::desktop {

struct Thread;

struct Input {
    UINT message = 0;  // of the mouse, in a client area; or WM_KEYDOWN, WM_KEYUP
    BYTE key = 0;      // which of two alike too: VK_LSHIFT. Of the mouse that of the button
    WORD scan = 0;
    bool isExtended = false;  // of the keys that a keyboard has twice, the later one
    char32_t text = 0;        // what the key means, where whoever tells of it knows
    bool knowsText = false;   // and if that is nothing
    int wheel = 0;
    POINT at{};      // of the mouse, on the screen
    DWORD time = 0;  // 0: now
    HWND window =
        nullptr;  // the top-level window that it happened to; null leaves it to the desktop
    std::uint64_t number = 0;  // of the input in its queue
};

// Any thread. Keys and buttons are down from here on for GetAsyncKeyState.
void AddInput(Input input);

// The next message that the thread's input means; under the lock, which is let go while windows
// are asked. What means nothing any more is dropped.
bool TakeInput(Thread& thread, std::unique_lock<std::recursive_mutex>& lock, MSG& out, HWND window,
               UINT first, UINT last, bool remove);
// Whether a message passes the filter of PeekMessageA.
bool Matches(const MSG& message, HWND window, UINT first, UINT last) noexcept;

// MK_LBUTTON and the like, of the keys that are down for the thread.
WPARAM MouseKeys(const Thread& thread) noexcept;
// Moves or sizes the window as the user's mouse does, until the button comes up.
void RunMoveSize(HWND window, UINT command, POINT from);
// Waits for the button to come up over the box, which shows pressed meanwhile.
bool RunBox(HWND window, int part);

// --- Keyboards ----------------------------------------------------------------------------------

// What a key means on the American keyboard with these keys down; 0 for nothing.
char32_t CharacterOf(UINT key, const BYTE* keys) noexcept;

// --- The caret ----------------------------------------------------------------------------------

// Message 280, by which the caret blinks.
constexpr UINT kCaretMessage = 280;
void BlinkCaret();
// While the window is painted.
void HideCaretOf(HWND window);
void ShowCaretOf(HWND window);

// --- The desktop's clock ------------------------------------------------------------------------

// Milliseconds; it stands still between moves once a test has taken it over.
std::uint64_t Milliseconds() noexcept;
bool IsClockVirtual() noexcept;

}  // namespace brcore8::desktop

#endif
