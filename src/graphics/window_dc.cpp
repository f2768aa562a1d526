#include <brcore8/graphics/window_dc.h>
#include <brcore8/window/wnd.h>

SIMPLEMENT_CLASS(SClientDC, SDC, 2);
SIMPLEMENT_CLASS(SPaintDC, SDC, 2);
SIMPLEMENT_CLASS(SWindowDC, SDC, 2);
SIMPLEMENT_CLASS(SScreenDC, SWindowDC, 0);

namespace {

HWND HandleOf(const SWnd* window) noexcept {
    return window != nullptr ? window->GetHandle() : nullptr;
}

}  // namespace

SClientDC::SClientDC(SWnd* window) : window_(::HandleOf(window)) {
    Attach(::GetDC(window_));
}

SClientDC::~SClientDC() {
    if (const HDC dc = Detach()) ::ReleaseDC(window_, dc);
}

SPaintDC::SPaintDC(SWnd* window) : window_(::HandleOf(window)) {
    Attach(::BeginPaint(window_, &paint_));
}

SPaintDC::~SPaintDC() {
    if (Detach() != nullptr) ::EndPaint(window_, &paint_);
}

// The screen's context is that of the null window on every system.
SWindowDC::SWindowDC(SWnd* window) : window_(::HandleOf(window)) {
    Attach(window_ != nullptr ? ::GetWindowDC(window_) : ::GetDC(nullptr));
}

SWindowDC::~SWindowDC() {
    if (const HDC dc = Detach()) ::ReleaseDC(window_, dc);
}

SScreenDC::SScreenDC() : SWindowDC(nullptr) {}
