#include <brcore8/platform/desktop_picture.h>

#include "platform/posix/bitmap_object.h"
#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/device.h"
#include "platform/posix/desktop/frame.h"
#include "platform/posix/desktop/thread.h"

using namespace brcore8::desktop;

namespace {

bool IsOnScreen(const Window& window) noexcept {
    return (window.style & (WS_VISIBLE | WS_MINIMIZE)) == WS_VISIBLE;
}

// The windows that the picture shows, from the bottom up.
std::vector<HWND> Shown(HWND window) {
    if (window != nullptr) return {window};
    const std::lock_guard guard(Lock());
    std::vector<HWND> shown;
    for (const Window* top = Root().firstChild; top != nullptr; top = top->below)
        if (IsOnScreen(*top)) shown.insert(shown.begin(), top->handle);
    return shown;
}

// Paints what is due in a window of this thread and in all below it.
void PaintAll(HWND handle) {
    const Window* const window = Find(handle);
    if (window == nullptr || window->thread != &ThisThread()) return;
    std::vector<HWND> family{handle};
    EnumChildWindows(
        handle,
        [](HWND child, LPARAM list) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(list)->push_back(child);
            return 1;
        },
        reinterpret_cast<LPARAM>(&family));
    for (const HWND each : family) {
        PaintDueFrame(each);
        UpdateWindow(each);
    }
}

// What a window shows on its top-level window's picture: that picture, and the part of it.
std::shared_ptr<Surface> PictureOf(HWND handle, RECT& part) {
    const Window* const window = Find(handle);
    const Window* const top = Find(GetAncestor(handle, GA_ROOT));
    if (window == nullptr || top == nullptr) return nullptr;
    GetWindowRect(handle, &part);
    OffsetRect(&part, -top->rect.left, -top->rect.top);
    return top->surface;
}

std::shared_ptr<Surface> Compose(HWND window) {
    const bool isScreen = window == nullptr || window == GetDesktopWindow();
    if (TheDisplay() == nullptr || (!isScreen && Find(window) == nullptr)) return nullptr;
    const std::vector<HWND> shown = Shown(isScreen ? nullptr : window);
    for (const HWND each : shown)
        PaintAll(isScreen ? each : GetAncestor(each, GA_ROOT));

    const std::lock_guard guard(Lock());
    RECT place = Root().rect;
    if (!isScreen) GetWindowRect(window, &place);
    const RECT whole{0, 0, Width(place), Height(place)};
    std::shared_ptr<Surface> picture =
        TheDisplay()->NewSurface({std::max<LONG>(whole.right, 1), std::max<LONG>(whole.bottom, 1)});
    if (picture == nullptr) return nullptr;
    const Clip clip(&whole, 1);
    picture->Fill(clip, whole, GetSysColor(COLOR_BACKGROUND));
    for (const HWND each : shown) {
        RECT part{};
        const std::shared_ptr<Surface> surface = PictureOf(each, part);
        RECT at{};
        GetWindowRect(each, &at);
        if (surface != nullptr)
            picture->Copy(clip, {at.left - place.left, at.top - place.top}, *surface, part, false);
    }
    return picture;
}

bool Write(HWND window, const char* path) {
    const std::shared_ptr<Surface> picture = Compose(window);
    return picture != nullptr && picture->WritePng(path);
}

}  // namespace

HBITMAP SCaptureWindow(HWND window) {
    std::shared_ptr<Surface> picture = Compose(window);
    if (picture == nullptr) return nullptr;
    auto* const made = new (std::nothrow) brcore8::Bitmap(std::move(picture));
    return static_cast<HBITMAP>(brcore8::GdiHandleOf(made));
}

bool SWriteDesktopPicture(const char* path) {
    return Write(nullptr, path);
}

bool SWriteWindowPicture(HWND window, const char* path) {
    return window != nullptr && Write(window, path);
}
