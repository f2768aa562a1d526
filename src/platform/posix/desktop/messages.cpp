// Messages: sent, posted, waited for, and handed to their windows.

#include <algorithm>

#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

LRESULT Call(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const Window* const window = Find(handle);
    return window != nullptr ? window->procedure(handle, message, wParam, lParam) : 0;
}

void ForgetWindow(Window& window) noexcept {
    const std::lock_guard guard(Lock());
    Thread& thread = *window.thread;
    const HWND handle = window.handle;
    const auto isIts = [handle](const MSG& message) { return message.hwnd == handle; };
    std::erase_if(thread.posted, isIts);
    std::erase_if(thread.timers, [handle](const Timer& timer) { return timer.window == handle; });
    LeaveClipboard(handle);
    // The screen would keep the mouse for a window that is no more.
    if (thread.capture == handle)
        if (Screen* const screen = TheScreen()) screen->Capture(nullptr);
    for (HWND* const place : {&thread.focus, &thread.active, &thread.capture, &thread.caret.window})
        if (*place == handle) *place = nullptr;
}

bool Matches(const MSG& message, HWND window, UINT first, UINT last) noexcept {
    const bool isAnyMessage = first == 0 && last == 0;
    if (!isAnyMessage && (message.message < first || message.message > last)) return false;
    const auto onlyThreads = reinterpret_cast<HWND>(std::intptr_t{-1});
    if (window == onlyThreads) return message.hwnd == nullptr;
    return window == nullptr || message.hwnd == window || IsChild(window, message.hwnd);
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

namespace {

constexpr std::size_t kMostPosted = 10000;

using Guard = std::unique_lock<std::recursive_mutex>;

POINT CursorPoint() noexcept {
    POINT point{};
    GetCursorPos(&point);
    return point;
}

bool Take(std::deque<MSG>& queue, MSG& out, HWND window, UINT first, UINT last, bool remove) {
    for (auto at = queue.begin(); at != queue.end(); ++at) {
        if (!Matches(*at, window, first, last)) continue;
        out = *at;
        if (remove) queue.erase(at);
        return true;
    }
    return false;
}

// The first window of the thread that has something to paint, parents before children: what a
// parent paints would lie over theirs.
bool TakePaint(const Thread& thread, MSG& out, HWND window, UINT first, UINT last) {
    const Window& root = Root();
    const Window* at = root.firstChild;
    while (at != nullptr) {
        if (at->thread == &thread && !IsRectEmpty(&at->update) && IsShown(*at)) {
            out = {at->handle, WM_PAINT, 0, 0, GetTickCount(), CursorPoint()};
            if (Matches(out, window, first, last)) return true;
        }
        if (at->firstChild != nullptr) {
            at = at->firstChild;
            continue;
        }
        while (at != &root && at->below == nullptr)
            at = at->parent;
        at = at != &root ? at->below : nullptr;
    }
    return false;
}

// The one that waited longest: a fast timer in a slow program would hide all others.
bool TakeTimer(Thread& thread, MSG& out, HWND window, UINT first, UINT last, bool remove) {
    const std::uint64_t now = Milliseconds();
    Timer* next = nullptr;
    for (Timer& timer : thread.timers) {
        if (timer.due > now || (next != nullptr && next->due <= timer.due)) continue;
        const MSG message{timer.window,
                          timer.message,
                          timer.id,
                          reinterpret_cast<LPARAM>(timer.procedure),
                          static_cast<DWORD>(now),
                          CursorPoint()};
        if (!Matches(message, window, first, last)) continue;
        next = &timer;
        out = message;
    }
    if (next != nullptr && remove) next->due = now + next->interval;
    return next != nullptr;
}

// Runs what other threads sent; under the lock, which is let go meanwhile.
void AnswerSent(Thread& thread, Guard& lock) {
    // A procedure that throws has answered 0: nobody waits for it forever.
    struct Answering {
        ~Answering() {
            lock.lock();
            sent.isDone = true;
            thread.changed->notify_all();
        }
        Thread& thread;
        Guard& lock;
        SentMessage& sent;
    };
    while (!thread.sent.empty()) {
        const std::shared_ptr<SentMessage> sent = std::move(thread.sent.front());
        thread.sent.pop_front();
        lock.unlock();
        const Answering answering{thread, lock, *sent};
        const MSG& message = sent->message;
        sent->result = Call(message.hwnd, message.message, message.wParam, message.lParam);
    }
}

bool TakeMessage(Thread& thread, Guard& lock, MSG& out, HWND window, UINT first, UINT last,
                 bool remove) {
    if (Take(thread.posted, out, window, first, last, remove)) return true;
    if (thread.isQuitting) {
        if (remove) thread.isQuitting = false;
        out = {nullptr, WM_QUIT,        static_cast<WPARAM>(thread.quitCode),
               0,       GetTickCount(), CursorPoint()};
        return true;
    }
    return TakeInput(thread, lock, out, window, first, last, remove) ||
           TakePaint(thread, out, window, first, last) ||
           TakeTimer(thread, out, window, first, last, remove);
}

// Waits unless something came after `seen`. Time that a test holds does not pass by waiting.
void WaitForChange(Thread& thread, Guard& lock, std::uint64_t seen) {
    lock.unlock();
    PresentWindows();
    HearScreen();
    lock.lock();
    if (thread.changes != seen) return;
    if (thread.timers.empty() || IsClockVirtual()) {
        thread.changed->wait(lock);
        return;
    }
    const auto next =
        std::min_element(thread.timers.begin(), thread.timers.end(),
                         [](const Timer& a, const Timer& b) { return a.due < b.due; });
    const std::uint64_t now = Milliseconds();
    if (next->due > now) thread.changed->wait_for(lock, std::chrono::milliseconds(next->due - now));
}

BOOL Post(Thread& thread, const MSG& message) {
    if (thread.posted.size() >= kMostPosted) {
        SetLastError(ERROR_NOT_ENOUGH_QUOTA);
        return 0;
    }
    thread.posted.push_back(message);
    Wake(thread);
    return 1;
}

}  // namespace

LRESULT SendMessageA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Thread& own = ThisThread();
    std::unique_lock lock(Lock());
    const Window* const window = Find(handle);
    if (window == nullptr) return 0;
    if (window->thread == nullptr || window->thread == &own) {
        lock.unlock();
        return Call(handle, message, wParam, lParam);
    }
    Thread& other = *window->thread;
    const auto sent = std::make_shared<SentMessage>();
    sent->message = {handle, message, wParam, lParam, GetTickCount(), CursorPoint()};
    other.sent.push_back(sent);
    const auto changed = other.changed;
    Wake(other);
    // Whoever is sent to may send back meanwhile.
    while (!sent->isDone) {
        AnswerSent(own, lock);
        if (!sent->isDone) changed->wait_for(lock, std::chrono::milliseconds(10));
    }
    return sent->result;
}

BOOL PostMessageA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const MSG posted{handle, message, wParam, lParam, GetTickCount(), CursorPoint()};
    if (handle == nullptr) {
        Thread& own = ThisThread();
        const std::lock_guard guard(Lock());
        return Post(own, posted);
    }
    const std::lock_guard guard(Lock());
    const Window* const window = Find(handle);
    return window != nullptr && window->thread != nullptr && Post(*window->thread, posted);
}

BOOL PostThreadMessageA(DWORD id, UINT message, WPARAM wParam, LPARAM lParam) {
    const MSG posted{nullptr, message, wParam, lParam, GetTickCount(), CursorPoint()};
    const std::lock_guard guard(Lock());
    Thread* const thread = FindThread(id);
    if (thread == nullptr) SetLastError(ERROR_INVALID_THREAD_ID);
    return thread != nullptr && Post(*thread, posted);
}

void PostQuitMessage(int code) {
    Thread& thread = ThisThread();
    const std::lock_guard guard(Lock());
    thread.isQuitting = true;
    thread.quitCode = code;
    // What a waiting thread is told of runs after it looked.
    Wake(thread);
}

BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT remove) {
    Thread& thread = ThisThread();
    PresentWindows();
    HearScreen();
    Guard lock(Lock());
    AnswerSent(thread, lock);
    const bool removes = (remove & PM_REMOVE) != 0;
    if (!TakeMessage(thread, lock, *message, window, first, last, removes)) return 0;
    if (removes) thread.current = *message;
    return 1;
}

BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last) {
    if (window != nullptr && window != reinterpret_cast<HWND>(std::intptr_t{-1}) &&
        Find(window) == nullptr)
        return -1;
    Thread& thread = ThisThread();
    Guard lock(Lock());
    for (;;) {
        AnswerSent(thread, lock);
        const std::uint64_t seen = thread.changes;
        if (TakeMessage(thread, lock, *message, window, first, last, true)) {
            thread.current = *message;
            return message->message != WM_QUIT;
        }
        WaitForChange(thread, lock, seen);
    }
}

BOOL WaitMessage() {
    Thread& thread = ThisThread();
    Guard lock(Lock());
    MSG ignored;
    for (;;) {
        const std::uint64_t seen = thread.changes;
        if (TakeMessage(thread, lock, ignored, nullptr, 0, 0, false)) return 1;
        AnswerSent(thread, lock);
        WaitForChange(thread, lock, seen);
    }
}

LRESULT DispatchMessageA(const MSG* message) {
    if (message->message == kCaretMessage) {
        BlinkCaret();
        return 0;
    }
    if (message->message == WM_TIMER && message->lParam != 0) {
        reinterpret_cast<TIMERPROC>(message->lParam)(message->hwnd, WM_TIMER, message->wParam,
                                                     GetTickCount());
        return 0;
    }
    return message->hwnd != nullptr
               ? Call(message->hwnd, message->message, message->wParam, message->lParam)
               : 0;
}

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam,
                        LPARAM lParam) {
    return procedure != nullptr ? procedure(window, message, wParam, lParam) : 0;
}

DWORD GetMessageTime() noexcept {
    return ThisThread().current.time;
}

DWORD GetMessagePos() noexcept {
    const POINT& point = ThisThread().current.pt;
    return static_cast<DWORD>(MAKELONG(static_cast<WORD>(point.x), static_cast<WORD>(point.y)));
}
