// The screen that shows top-level windows, where there is one. Without one the desktop is memory
// alone: it draws the frames of windows itself, and its picture can be written to a file.
//
// BRCORE8_DISPLAY=memory asks for the latter; otherwise DISPLAY names the X server.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_SCREEN_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_SCREEN_H

#include <optional>
#include <string>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/display.h"
#include "platform/posix/desktop/input.h"

namespace brcore8::desktop {

struct ScreenNews;

// Told by a thread of the screen's own, of what happens to the windows that it shows.
class ScreenListener {
public:
    virtual void OnInput(const Input& input) = 0;
    // The user moved or sized the window: its place on the screen.
    virtual void OnPlace(HWND window, const RECT& rect) = 0;
    virtual void OnActivate(HWND window, bool isActive) = 0;
    virtual void OnClose(HWND window) = 0;
    // A window that was minimised is to be as it was.
    virtual void OnRestore(HWND window) = 0;
    // What is shown of the window was lost.
    virtual void OnExpose(HWND window) = 0;

protected:
    ~ScreenListener() = default;
};

// How a top-level window is to show.
struct WindowLook {
    HWND window = nullptr;
    HWND owner = nullptr;
    RECT rect{};
    std::string title;  // UTF-8
    bool isShown = false;
    bool isFramed = false;  // by whoever manages the screen; the others, menus say, go unmanaged
    bool isSizable = false;
    bool isMinimized = false;
    bool isMaximized = false;
};

// Any thread.
class Screen {
public:
    virtual SIZE GetSize() const noexcept = 0;
    virtual unsigned GetDpi() const noexcept = 0;
    // Makes the window when it is new.
    virtual void Show(const WindowLook& look) = 0;
    virtual void Remove(HWND window) noexcept = 0;
    virtual void Activate(HWND window) noexcept = 0;
    // Puts what changed of the surface since the last time, or all of it, on the screen.
    virtual void Present(HWND window, Surface& surface, bool isWhole) = 0;
    // The number of one of the platform's cursors; 0 for none.
    virtual void SetCursor(unsigned number) noexcept = 0;
    virtual void SetPointer(POINT at) noexcept = 0;
    // The mouse is the window's alone, wherever it is; null lets it go.
    virtual void Capture(HWND window) noexcept = 0;
    // The clipboard is this program's from now on; others find the text in it, or nothing. UTF-8.
    virtual void OfferText(std::optional<std::string> text) = 0;
    virtual bool OwnsText() const noexcept = 0;
    // The text of another program arrives within a second or is empty.
    virtual std::string AskForText() = 0;

protected:
    ~Screen() = default;
};

// Null on a desktop in memory. Opened by whoever asks first.
Screen* TheScreen() noexcept;
// Whether it was asked for, without opening it.
bool IsScreenWanted() noexcept;

// The window's look changed: text, place, style, order. Nothing happens without a screen.
void TellScreen(const Window& window);
// What happened to a window, for its thread to follow. Any thread.
void AddNews(const ScreenNews& news);
// Does with this thread's windows what the user did to them on the screen, and what other threads
// ask for.
void HearScreen();
// Shows what was drawn on this thread's windows since the last time.
void PresentWindows();

}  // namespace brcore8::desktop

#endif
