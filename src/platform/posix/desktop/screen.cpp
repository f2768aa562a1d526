#include "platform/posix/desktop/screen.h"

#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include <atomic>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

// What the screen tells becomes input, or a message to the window's own thread.
class Listener final : public ScreenListener {
public:
    void OnInput(const Input& input) override { AddInput(input); }
    void OnPlace(HWND window, const RECT& rect) override { AddNews({kPlaced, window, rect}); }
    void OnActivate(HWND window, bool isActive) override {
        AddNews({isActive ? kActivated : kDeactivated, window, {}});
    }
    void OnClose(HWND window) override {
        if (IsWindow(window)) PostMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
    }
    void OnRestore(HWND window) override {
        if (IsWindow(window)) PostMessageA(window, WM_SYSCOMMAND, SC_RESTORE, 0);
    }
    void OnExpose(HWND window) override {
        const std::lock_guard guard(Lock());
        Window* const found = Find(window);
        if (found == nullptr || found->thread == nullptr) return;
        found->isLost = true;
        Wake(*found->thread);
    }
};

constinit std::atomic<bool> g_isOpen = false;

Screen* Open() noexcept {
    if (!IsScreenWanted()) return nullptr;
    static Listener& listener = *new Listener;
    Display* const display = TheDisplay();
    Screen* const screen = display != nullptr ? display->OpenScreen(listener) : nullptr;
    g_isOpen = screen != nullptr;
    return screen;
}

void Apply(const ScreenNews& news) {
    const Window* const window = Find(news.window);
    if (window == nullptr) return;
    switch (news.kind) {
        case kPlaced: {
            if (EqualRect(&window->rect, &news.rect)) return;
            const RECT& rect = news.rect;
            SetWindowPos(news.window, nullptr, rect.left, rect.top, Width(rect), Height(rect),
                         SWP_NOZORDER | SWP_NOACTIVATE);
            break;
        }
        case kActivated:
            if (GetActiveWindow() != news.window) ActivateTop(news.window, false);
            break;
        case kDeactivated:
            // A window of ours may have become active meanwhile.
            if (GetActiveWindow() == news.window) {
                SetFocus(nullptr);
                SetActiveWindow(nullptr);
            }
            break;
    }
}

}  // namespace

bool IsScreenWanted() noexcept {
    const char* const wanted = std::getenv("BRCORE8_DISPLAY");
    if (wanted != nullptr && *wanted != '\0') return std::string_view(wanted) == "x11";
    const char* const server = std::getenv("DISPLAY");
    return server != nullptr && *server != '\0';
}

Screen* TheScreen() noexcept {
    static Screen* const screen = Open();
    return screen;
}

void TellScreen(const Window& window) {
    Screen* const screen = TheScreen();
    if (screen == nullptr || !IsTopLevel(window) || window.isDestroyed || window.parent != &Root())
        return;
    WindowLook look;
    look.window = window.handle;
    look.owner = window.owner;
    look.rect = window.rect;
    look.title = SUtf8FromUtf16(SUtf16FromText(window.text));
    look.isShown = (window.style & WS_VISIBLE) != 0;
    look.isFramed = (window.style & (WS_CAPTION | WS_THICKFRAME)) != 0;
    look.isSizable = (window.style & WS_THICKFRAME) != 0;
    look.isMinimized = (window.style & WS_MINIMIZE) != 0;
    look.isMaximized = (window.style & WS_MAXIMIZE) != 0;
    screen->Show(look);
}

void AddNews(const ScreenNews& news) {
    const std::lock_guard guard(Lock());
    const Window* const found = Find(news.window);
    if (found == nullptr || found->thread == nullptr) return;
    std::vector<ScreenNews>& list = found->thread->news;
    // Of many sizes only the last matters.
    if (!list.empty() && news.kind == kPlaced && list.back().kind == kPlaced &&
        list.back().window == news.window)
        list.back() = news;
    else
        list.push_back(news);
    Wake(*found->thread);
}

void HearScreen() {
    Thread& thread = ThisThread();
    std::vector<ScreenNews> news;
    {
        const std::lock_guard guard(Lock());
        news.swap(thread.news);
    }
    for (const ScreenNews& each : news)
        Apply(each);
}

void PresentWindows() {
    if (!g_isOpen) return;
    Screen* const screen = TheScreen();
    const std::lock_guard guard(Lock());
    const Thread& thread = ThisThread();
    for (Window* top = Root().firstChild; top != nullptr; top = top->below) {
        if (top->thread != &thread || top->surface == nullptr || !IsShown(*top)) continue;
        screen->Present(top->handle, *top->surface, std::exchange(top->isLost, false));
    }
}

}  // namespace brcore8::desktop
