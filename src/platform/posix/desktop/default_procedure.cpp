// What windows do by themselves.

#include <algorithm>
#include <cstring>

#include <brcore8/platform/posix/drawing_calls.h>

#include "platform/posix/desktop/desktop.h"
#include "platform/posix/desktop/frame.h"
#include "platform/posix/desktop/input.h"
#include "platform/posix/desktop/menus/menu_tracking.h"
#include "platform/posix/desktop/screen.h"
#include "platform/posix/desktop/scroll_bars.h"

using namespace brcore8::desktop;

namespace {

LRESULT GiveText(const Window& window, std::size_t size, char* out) {
    if (size == 0 || out == nullptr) return 0;
    const std::size_t length = std::min(window.text.size(), size - 1);
    std::memcpy(out, window.text.data(), length);
    out[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT Erase(const Window& window, HDC context) {
    const HBRUSH brush =
        window.windowClass != nullptr ? window.windowClass->info.hbrBackground : nullptr;
    RECT box;
    if (brush == nullptr || GetClipBox(context, &box) == 0) return 0;
    FillRect(context, &box, brush);
    return 1;
}

// The place changed: windows that do not look at it themselves learn of moves and sizes.
void TellPlace(HWND handle, const WINDOWPOS& pos) {
    const Window* window = Find(handle);
    if (window == nullptr) return;
    const RECT client = window->client;
    const UINT how = SizeKind(*window);
    if ((pos.flags & SWP_NOMOVE) == 0)
        SendMessageA(handle, WM_MOVE, 0, MAKELPARAM(client.left, client.top));
    if ((pos.flags & SWP_NOSIZE) == 0 && Find(handle) != nullptr)
        SendMessageA(handle, WM_SIZE, how, MAKELPARAM(Width(client), Height(client)));
}

// The colours of controls: fields are written on, the others look like their surroundings.
HBRUSH ChooseColors(UINT message, HDC context) noexcept {
    const bool isField = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    int back = isField ? COLOR_WINDOW : COLOR_BTNFACE;
    if (message == WM_CTLCOLORSCROLLBAR) back = COLOR_SCROLLBAR;
    SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(context, GetSysColor(back));
    return GetSysColorBrush(back);
}

POINT PointOf(LPARAM lParam) noexcept {
    return {static_cast<std::int16_t>(LOWORD(static_cast<WPARAM>(lParam))),
            static_cast<std::int16_t>(HIWORD(static_cast<WPARAM>(lParam)))};
}

LRESULT RunSystemCommand(HWND handle, UINT command, LPARAM lParam) {
    switch (command & 0xFFF0) {
        case SC_MOVE:
        case SC_SIZE:
            RunMoveSize(handle, command, PointOf(lParam));
            break;
        case SC_CLOSE:
            SendMessageA(handle, WM_CLOSE, 0, 0);
            break;
        case SC_MINIMIZE:
            ShowWindow(handle, SW_MINIMIZE);
            break;
        case SC_MAXIMIZE:
            ShowWindow(handle, SW_SHOWMAXIMIZED);
            break;
        case SC_RESTORE:
            ShowWindow(handle, SW_RESTORE);
            break;
        default:
            break;
    }
    return 0;
}

HWND ParentOfChild(const Window& window) noexcept {
    return IsTopLevel(window) ? nullptr : window.parent->handle;
}

// The parent chooses the cursor first, then the class.
LRESULT ChooseCursor(const Window& window, WPARAM wParam, LPARAM lParam) {
    const HWND parent = ParentOfChild(window);
    const HCURSOR own = window.windowClass != nullptr ? window.windowClass->info.hCursor : nullptr;
    if (parent != nullptr && SendMessageA(parent, WM_SETCURSOR, wParam, lParam) != 0) return 1;
    if (LOWORD(lParam) == HTCLIENT && own == nullptr) return 0;
    switch (static_cast<std::int16_t>(LOWORD(lParam))) {
        case HTCLIENT:
            SetCursor(own);
            return 0;
        case HTLEFT:
        case HTRIGHT:
            SetCursor(LoadCursorA(nullptr, IDC_SIZEWE));
            return 1;
        case HTTOP:
        case HTBOTTOM:
            SetCursor(LoadCursorA(nullptr, IDC_SIZENS));
            return 1;
        case HTTOPLEFT:
        case HTBOTTOMRIGHT:
            SetCursor(LoadCursorA(nullptr, IDC_SIZENWSE));
            return 1;
        case HTTOPRIGHT:
        case HTBOTTOMLEFT:
            SetCursor(LoadCursorA(nullptr, IDC_SIZENESW));
            return 1;
        default:
            SetCursor(LoadCursorA(nullptr, IDC_ARROW));
            return 1;
    }
}

// Other threads look for windows by their texts.
void KeepText(Window& window, const char* text) {
    const std::lock_guard guard(Lock());
    window.text = text;
}

// The caption shows another text, or that the window is active now.
void ChangeCaption(Window& window) {
    TellScreen(window);
    const RECT caption = CaptionOf(window);
    if (!IsRectEmpty(&caption)) RepaintFrame(window.handle);
}

UINT ZoomCommand(const Window& window) noexcept {
    return (window.style & (WS_MAXIMIZE | WS_MINIMIZE)) != 0 ? SC_RESTORE : SC_MAXIMIZE;
}

// A press on the frame: each part is a system command, begun or waited for.
LRESULT PressFrame(const Window& window, int part, LPARAM lParam) {
    const HWND handle = window.handle;
    const auto command = [&](UINT what) { SendMessageA(handle, WM_SYSCOMMAND, what, lParam); };
    switch (part) {
        case HTCAPTION:
            command(SC_MOVE + HTCAPTION);
            break;
        case HTCLOSE:
            if (RunBox(handle, part)) command(SC_CLOSE);
            break;
        case HTMINBUTTON:
            if (RunBox(handle, part)) command(SC_MINIMIZE);
            break;
        case HTMAXBUTTON:
            if (RunBox(handle, part)) command(ZoomCommand(window));
            break;
        case HTVSCROLL:
        case HTHSCROLL: {
            POINT point = PointOf(lParam);
            ScreenToClient(handle, &point);
            TrackScrollBar(handle, part == HTVSCROLL ? SB_VERT : SB_HORZ, point, handle);
            break;
        }
        default:
            if (part >= HTLEFT && part <= HTBOTTOMRIGHT)
                command(SC_SIZE + static_cast<UINT>(part - HTLEFT + 1));
    }
    return 0;
}

}  // namespace

LRESULT DefWindowProcA(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* const window = Find(handle);
    if (window == nullptr || DoMenuDefault(handle, message, wParam, lParam)) return 0;
    switch (message) {
        case WM_NCCREATE: {
            const auto* const create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
            if (create->lpszName != nullptr) KeepText(*window, create->lpszName);
            return 1;
        }
        case WM_SETTEXT:
            KeepText(*window, lParam != 0 ? reinterpret_cast<const char*>(lParam) : "");
            ChangeCaption(*window);
            return 1;
        case WM_GETTEXT:
            return GiveText(*window, wParam, reinterpret_cast<char*>(lParam));
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(window->text.size());
        case WM_CLOSE:
            DestroyWindow(handle);
            return 0;
        case WM_CANCELMODE:
            if (GetCapture() == handle) ReleaseCapture();
            return 0;
        case WM_QUERYENDSESSION:
        case WM_QUERYOPEN:
            return 1;
        case WM_WINDOWPOSCHANGED:
            TellPlace(handle, *reinterpret_cast<const WINDOWPOS*>(lParam));
            return 0;
        case WM_PAINT: {
            PAINTSTRUCT paint;
            BeginPaint(handle, &paint);
            EndPaint(handle, &paint);
            return 0;
        }
        case WM_NCPAINT:
            PaintFrame(*window);
            return 0;
        case WM_CTLCOLORMSGBOX:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSCROLLBAR:
        case WM_CTLCOLORSTATIC:
            return reinterpret_cast<LRESULT>(ChooseColors(message, reinterpret_cast<HDC>(wParam)));
        case WM_ERASEBKGND:
            return Erase(*window, reinterpret_cast<HDC>(wParam));
        case WM_SYSCOMMAND:
            return RunSystemCommand(handle, static_cast<UINT>(wParam), lParam);
        case WM_NCACTIVATE:
            window->isFrameActive = wParam != 0;
            ChangeCaption(*window);
            return 1;
        case WM_NCHITTEST:
            return HitFrame(*window, PointOf(lParam));
        case WM_NCLBUTTONDOWN:
            return PressFrame(*window, static_cast<int>(wParam), lParam);
        case WM_NCLBUTTONDBLCLK:
            if (wParam != HTCAPTION) return PressFrame(*window, static_cast<int>(wParam), lParam);
            if ((window->style & WS_MAXIMIZEBOX) != 0)
                SendMessageA(handle, WM_SYSCOMMAND, ZoomCommand(*window), lParam);
            return 0;
        case WM_SYSKEYDOWN:
            if (wParam == VK_F4 && (lParam & 1 << 29) != 0)
                PostMessageA(GetAncestor(handle, GA_ROOT), WM_SYSCOMMAND, SC_CLOSE, 0);
            return 0;
        case WM_RBUTTONUP: {
            POINT point = PointOf(lParam);
            ClientToScreen(handle, &point);
            SendMessageA(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle),
                         MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y)));
            return 0;
        }
        case WM_MOUSEACTIVATE: {
            const HWND parent = ParentOfChild(*window);
            return parent != nullptr ? SendMessageA(parent, message, wParam, lParam) : MA_ACTIVATE;
        }
        case WM_ACTIVATE:
            if (LOWORD(wParam) != WA_INACTIVE && !IsIconic(handle)) SetFocus(handle);
            return 0;
        case WM_SETCURSOR:
            return ChooseCursor(*window, wParam, lParam);
        case WM_MOUSEWHEEL:
        case WM_CONTEXTMENU: {
            const HWND parent = ParentOfChild(*window);
            return parent != nullptr ? SendMessageA(parent, message, wParam, lParam) : 0;
        }
        default:
            return 0;
    }
}
