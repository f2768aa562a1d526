// What the desktop keeps for each thread that has windows or waits for messages.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_THREAD_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_THREAD_H

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <vector>

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

struct Timer {
    HWND window;
    UINT_PTR id;
    DWORD interval;
    std::uint64_t due;
    TIMERPROC procedure;
};

struct Hook {
    HHOOK handle;
    HOOKPROC procedure;
};

// A message that another thread waits for.
struct SentMessage {
    MSG message;
    LRESULT result = 0;
    bool isDone = false;
};

struct Thread {
    DWORD id = 0;
    std::deque<MSG> posted;
    std::deque<MSG> input;  // keys and mouse
    std::deque<SentMessage*> sent;
    std::condition_variable_any changed;
    bool isQuitting = false;
    int quitCode = 0;
    std::vector<Timer> timers;
    UINT_PTR lastTimer = 0x8000;
    std::vector<Hook> hooks;  // the last is called first
    MSG current{};            // taken last
    short keys[256] = {};
    HWND focus = nullptr;
    HWND active = nullptr;
    HWND capture = nullptr;
};

Thread& ThisThread();
// The thread of that number, or null. Under the lock.
Thread* FindThread(DWORD id) noexcept;
std::uint64_t Milliseconds() noexcept;

}  // namespace brcore8::desktop

#endif
