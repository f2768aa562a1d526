// The desktop of systems that have none: windows, their classes and threads. The calls of
// brcore8/platform/posix/window_calls.h work on it.
//
// Threads: a window is its thread's alone. The table of windows, the classes and the queues of
// messages are everyone's, under one lock that is never held while a program's code runs.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_DESKTOP_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_DESKTOP_H

#include <brcore8/platform/posix/window_calls.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace brcore8::desktop {

struct Thread;
class Control;
class Surface;

struct WindowClass {
    std::string name;  // as registered; found in any case
    WNDCLASSEXA info;
    ATOM atom;
    int windows = 0;        // that live
    bool isSystem = false;  // of a control: a program's class of that name goes first
};

// A scroll bar's numbers.
struct ScrollBar {
    int min = 0;
    int max = 100;
    unsigned page = 0;
    int position = 0;
    int track = 0;  // where the user holds the thumb
    bool isTracking = false;
    unsigned disabled = 0;  // ESB_DISABLE_ of its arrows
};

// A window. Siblings are linked from the topmost down.
struct Window {
    HWND handle = nullptr;
    WindowClass* windowClass = nullptr;
    Thread* thread = nullptr;
    WNDPROC procedure = nullptr;
    std::string text;
    DWORD style = 0;
    DWORD exStyle = 0;
    LONG_PTR id = 0;  // of a child
    HMENU menu = nullptr;
    LONG_PTR userData = 0;
    HINSTANCE instance = nullptr;
    HFONT font = nullptr;
    std::vector<char> extra;
    std::shared_ptr<Surface> surface;  // of a top-level window, once someone drew on it
    std::shared_ptr<Control> control;  // of one of the desktop's own controls

    Window* parent = nullptr;  // null for the desktop window alone
    HWND owner = nullptr;      // of top-level windows; one that is gone counts as none
    Window* firstChild = nullptr;
    Window* above = nullptr;
    Window* below = nullptr;

    RECT rect{};      // in the parent's client area; of a top-level window on the screen
    RECT client{};    // likewise
    RECT restored{};  // where a minimised or maximised window goes back to
    RECT update{};    // of the client area, what is to be painted; empty when nothing is
    bool erase = false;
    bool isFrameDue = true;      // WM_NCPAINT is to be sent
    bool isFrameActive = false;  // as WM_NCACTIVATE told
    bool isLost = false;         // the screen wants all of the surface again
    ScrollBar scroll[3];         // SB_HORZ, SB_VERT, and SB_CTL of a control that is one
    bool isDestroyed = false;    // it got WM_DESTROY, or will
    bool isLeaving = false;      // it gets WM_NCDESTROY: too late for new children
    bool wasSized = false;       // it got its first WM_SIZE
};

inline bool IsTopLevel(const Window& window) noexcept {
    return (window.style & WS_CHILD) == 0;
}

inline int Width(const RECT& rect) noexcept {
    return rect.right - rect.left;
}

inline int Height(const RECT& rect) noexcept {
    return rect.bottom - rect.top;
}

// Guards what threads share.
std::recursive_mutex& Lock() noexcept;

// The window of a handle, or null with ERROR_INVALID_WINDOW_HANDLE.
Window* Find(HWND handle) noexcept;
// The root of all windows, as large as the screen.
Window& Root() noexcept;
// A new window of the thread, without a place in the tree; null when there are 65,000 already.
Window* NewWindow(Thread* thread);
// Ends a window that is in no tree.
void FreeWindow(Window* window) noexcept;
// The window leaves screen, queues and tree with all it has, and is no more. Nobody is told.
void RemoveWindow(Window& window) noexcept;
// Every window of the table, for what concerns all.
std::vector<HWND> AllWindows();

// The class of that name or atom for a module, or null.
WindowClass* FindClass(HINSTANCE instance, const char* name) noexcept;

// --- The tree -----------------------------------------------------------------------------------

// Windows nest no deeper, nor do owners: what is done to one is done to those it has.
constexpr int kDeepest = 100;

// A place as the platform keeps it: in 16 bits, so that sums of places are numbers too.
RECT PlaceAt(int x, int y, int width, int height) noexcept;
// The parent; of a window that has the whole desktop for it the owner, or null.
Window* HolderOf(const Window& window) noexcept;
// How many windows hold the window, it included; 0 for none.
int DepthOf(const Window* window) noexcept;
// Whether the holder is the window itself, or held by it.
bool IsHeldBy(const Window* held, const Window& window) noexcept;
void Unlink(Window& window) noexcept;
// Links it as a child of `parent` under the sibling `after`; null is on top.
void Link(Window& window, Window& parent, Window* after) noexcept;
// Under all its siblings.
void LinkLast(Window& window, Window& parent) noexcept;
// Where the window's client area begins on the screen.
POINT ClientOrigin(const Window& window) noexcept;
// The client area of a window whose place is `rect`.
RECT ClientOf(const Window& window, const RECT& rect) noexcept;
bool IsShown(const Window& window) noexcept;
// What WM_SIZE tells of the window: minimised, maximised, or neither.
UINT SizeKind(const Window& window) noexcept;
// Sends the window its size and place.
void TellSize(HWND handle);

// --- Messages -----------------------------------------------------------------------------------

// Calls the procedure in the window's own thread, which this is. 0 for a window that is gone.
LRESULT Call(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Asks the thread's creation hooks; non-zero refuses.
LRESULT CallHooks(int code, WPARAM wParam, LPARAM lParam);
// The window is going: its messages and timers leave the queues, and focus and capture leave it.
void ForgetWindow(Window& window) noexcept;
// Wakes a thread that waits for messages.
void Wake(Thread& thread) noexcept;

// Makes a top-level window the active one, on top of the others.
void ActivateTop(HWND window, bool isClick);
// Where the cursor is, without moving the pointer of a screen.
void SetCursorPlace(POINT at) noexcept;

}  // namespace brcore8::desktop

#endif
