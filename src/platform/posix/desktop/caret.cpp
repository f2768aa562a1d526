// The caret: a block that inverts what it covers, and blinks.

#include <brcore8/platform/posix/drawing_calls.h>
#include <brcore8/platform/posix/input_calls.h>
#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>

#include "platform/posix/desktop/device.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

constexpr UINT kBlinkTime = 530;
constexpr UINT_PTR kCaretTimer = 0xFFFF;

// Inverts the caret's block; twice is as if it had never been.
void Flip(Caret& caret) {
    const HDC dc = GetDC(caret.window);
    const RECT block = AreaOf(caret.at.x, caret.at.y, caret.size.cx, caret.size.cy);
    InvertRect(dc, &block);
    ReleaseDC(caret.window, dc);
    caret.isPainted = !caret.isPainted;
}

void Wipe(Caret& caret) {
    if (caret.isPainted) Flip(caret);
}

void Paint(Caret& caret) {
    if (caret.hidden == 0 && caret.isLit && !caret.isPainted) Flip(caret);
}

void StopBlinking(Thread& thread) {
    const std::lock_guard guard(Lock());
    std::erase_if(thread.timers, [](const Timer& timer) { return timer.message == kCaretMessage; });
}

// Begins a lit half.
void StartBlinking(Thread& thread) {
    const std::lock_guard guard(Lock());
    StopBlinking(thread);
    thread.caret.isLit = true;
    thread.timers.push_back({thread.caret.window, kCaretTimer, kBlinkTime,
                             Milliseconds() + kBlinkTime, nullptr, kCaretMessage});
}

// The thread's caret when it has one, in this window if it is not null.
Caret* FindCaret(HWND window) noexcept {
    Caret& caret = ThisThread().caret;
    const bool isThere = caret.window != nullptr && (window == nullptr || window == caret.window);
    if (!isThere) SetLastError(ERROR_ACCESS_DENIED);
    return isThere ? &caret : nullptr;
}

}  // namespace

void brcore8::desktop::BlinkCaret() {
    Caret* const caret = FindCaret(nullptr);
    if (caret == nullptr) return;
    caret->isLit = !caret->isLit;
    caret->isLit ? Paint(*caret) : Wipe(*caret);
}

void brcore8::desktop::HideCaretOf(HWND window) {
    if (ThisThread().caret.window == window) HideCaret(window);
}

void brcore8::desktop::ShowCaretOf(HWND window) {
    if (ThisThread().caret.window == window) ShowCaret(window);
}

BOOL CreateCaret(HWND window, HBITMAP, int width, int height) {
    const Window* const found = Find(window);
    Thread& thread = ThisThread();
    if (found == nullptr || found->thread != &thread) return 0;
    DestroyCaret();
    thread.caret = {};
    thread.caret.window = window;
    thread.caret.size = {std::max(width, 1), std::max(height, 1)};
    return 1;
}

BOOL DestroyCaret() {
    Caret* const caret = FindCaret(nullptr);
    if (caret == nullptr) return 0;
    Wipe(*caret);
    StopBlinking(ThisThread());
    *caret = {};
    return 1;
}

BOOL SetCaretPos(int x, int y) {
    Caret* const caret = FindCaret(nullptr);
    if (caret == nullptr) return 0;
    if (caret->at.x == x && caret->at.y == y) return 1;
    Wipe(*caret);
    caret->at = {x, y};
    if (caret->hidden > 0) return 1;
    StartBlinking(ThisThread());
    Paint(*caret);
    return 1;
}

BOOL GetCaretPos(POINT* point) noexcept {
    const Caret& caret = ThisThread().caret;
    *point = caret.window != nullptr ? caret.at : POINT{};
    return 1;
}

BOOL ShowCaret(HWND window) {
    Caret* const caret = FindCaret(window);
    if (caret == nullptr) return 0;
    if (caret->hidden == 0 || --caret->hidden > 0) return 1;
    StartBlinking(ThisThread());
    Paint(*caret);
    return 1;
}

BOOL HideCaret(HWND window) {
    Caret* const caret = FindCaret(window);
    if (caret == nullptr) return 0;
    if (caret->hidden++ > 0) return 1;
    Wipe(*caret);
    StopBlinking(ThisThread());
    return 1;
}

UINT GetCaretBlinkTime() noexcept {
    return kBlinkTime;
}
