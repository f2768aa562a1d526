// What the desktop keeps for each thread that has windows or waits for messages.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_THREAD_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_THREAD_H

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/input.h"

namespace brcore8::desktop {

struct Timer {
    HWND window;
    UINT_PTR id;
    DWORD interval;
    std::uint64_t due;
    TIMERPROC procedure;
    UINT message = WM_TIMER;
};

struct Hook {
    HHOOK handle;
    HOOKPROC procedure;
};

// A message that another thread waits for; both threads' while it is on its way, since either may
// give up early.
struct SentMessage {
    MSG message;
    LRESULT result = 0;
    bool isDone = false;
};

// A press of a button, which another may make a double click.
struct Click {
    HWND window = nullptr;
    UINT message = 0;
    DWORD time = 0;
    POINT at{};
};

struct Caret {
    HWND window = nullptr;
    SIZE size{};
    POINT at{};
    int hidden = 1;  // how many more hid it than showed it
    bool isPainted = false;
    bool isLit = false;  // in the half of its time when it shows
};

// What the user did to a window on the screen, for its thread to follow.
enum ScreenNewsKind : std::uint8_t { kPlaced, kActivated, kDeactivated };

struct ScreenNews {
    ScreenNewsKind kind;
    HWND window;
    RECT rect;
};

struct Thread {
    DWORD id = 0;
    std::deque<MSG> posted;
    std::deque<Input> input;
    std::uint64_t lastInput = 0;
    std::deque<std::shared_ptr<SentMessage>> sent;
    // Those who wait on it may do so a little longer than the thread lives.
    std::shared_ptr<std::condition_variable_any> changed =
        std::make_shared<std::condition_variable_any>();
    std::uint64_t changes = 0;
    bool isQuitting = false;
    int quitCode = 0;
    std::vector<Timer> timers;
    UINT_PTR lastTimer = 0x8000;
    std::vector<Hook> hooks;  // the last is called first
    MSG current{};            // taken last
    BYTE keys[256] = {};      // as of the last input taken: 0x80 is down, 1 is on
    char32_t text = 0;        // what the last key means, where its driver knows
    bool knowsText = false;   // and if that is nothing
    bool isAltAlone = false;  // no other key since it went down
    Click click;
    Caret caret;
    std::vector<ScreenNews> news;
    HWND focus = nullptr;
    HWND active = nullptr;
    HWND capture = nullptr;
};

Thread& ThisThread();
// The thread of that number, or null. Under the lock.
Thread* FindThread(DWORD id) noexcept;
void WakeAll() noexcept;
// What is going neither owns the clipboard nor keeps it open.
void LeaveClipboard(HWND window) noexcept;
void LeaveClipboard(const Thread& thread) noexcept;

}  // namespace brcore8::desktop

#endif
