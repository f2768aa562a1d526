// What the desktop's own controls have in common.
//
// A control is the state behind a window of one of the classes below. Whoever is notified may
// destroy the window: the state lives on until the message is answered, and calls with the handle
// of a window that is gone do nothing.
#ifndef BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_CONTROL_H
#define BRCORE8_PLATFORM_POSIX_DESKTOP_CONTROLS_CONTROL_H

#include <brcore8/platform/posix/control_messages.h>
#include <brcore8/platform/posix/drawing_calls.h>

#include <memory>
#include <string>

#include "platform/posix/desktop/desktop.h"

namespace brcore8::desktop {

class Control {
public:
    explicit Control(HWND handle) noexcept : handle_(handle) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    virtual LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;

protected:
    HWND Handle() const noexcept { return handle_; }
    bool IsAlive() const noexcept { return IsWindow(handle_) != 0; }
    DWORD Style() const noexcept;
    // Without the messages that tell of it.
    void ChangeStyle(DWORD remove, DWORD add) const noexcept;
    bool HasFocus() const noexcept { return GetFocus() == handle_; }
    HFONT Font() const noexcept;
    RECT ClientRect() const noexcept;
    std::string Text() const;
    HWND Parent() const noexcept;
    // The whole client area, with its background.
    void Repaint() const { InvalidateRect(handle_, nullptr, 1); }

    // WM_COMMAND to the parent.
    void Notify(int code) const;
    // Lets the parent choose the colours of a context by a message of WM_CTLCOLOR's kind, and
    // answers the brush for the background.
    HBRUSH AskColors(HDC dc, UINT message) const;
    // What every control does with the message, be it only the default procedure's answer.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) const;

private:
    HWND handle_;
};

// Draws a control with its font: what is to be painted, or everything on the context that came
// with WM_PAINT or WM_PRINTCLIENT.
class ControlPaint {
public:
    ControlPaint(HWND handle, HFONT font, WPARAM context);
    ~ControlPaint();
    ControlPaint(const ControlPaint&) = delete;
    ControlPaint& operator=(const ControlPaint&) = delete;

    HDC dc;
    RECT client{};

private:
    HWND handle_;
    PAINTSTRUCT paint_{};
    bool isOwn_;
    HGDIOBJ oldFont_ = nullptr;
};

// A context on which a control's texts are measured.
class ControlMeasure {
public:
    explicit ControlMeasure(HFONT font) : dc(GetDC(nullptr)) { SelectObject(dc, font); }
    ~ControlMeasure() { ReleaseDC(nullptr, dc); }
    ControlMeasure(const ControlMeasure&) = delete;
    ControlMeasure& operator=(const ControlMeasure&) = delete;

    TEXTMETRICA Metrics() const noexcept {
        TEXTMETRICA metrics{};
        GetTextMetricsA(dc, &metrics);
        return metrics;
    }
    int Width(const char* text, std::size_t length) const noexcept {
        SIZE size{};
        GetTextExtentPoint32A(dc, text, static_cast<int>(length), &size);
        return size.cx;
    }

    const HDC dc;
};

// The place that a mouse message tells.
inline POINT PointOf(LPARAM lParam) noexcept {
    return {static_cast<std::int16_t>(LOWORD(static_cast<WPARAM>(lParam))),
            static_cast<std::int16_t>(HIWORD(static_cast<WPARAM>(lParam)))};
}

// Fills a rectangle with a colour of the system.
inline void FillWith(HDC dc, const RECT& rect, int color) noexcept {
    FillRect(dc, &rect, GetSysColorBrush(color));
}

// The procedures of the classes. Each makes its control when WM_NCCREATE comes, so that a class
// of a program may stand on one.
LRESULT CALLBACK StaticProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK ButtonProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK StatusBarProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK ProgressProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK EditProcedure(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK ScrollProcedure(HWND, UINT, WPARAM, LPARAM);

// Hands a message to the window's control; `make` makes it.
LRESULT RunControl(HWND handle, UINT message, WPARAM wParam, LPARAM lParam,
                   std::shared_ptr<Control> (*make)(HWND));

template <class Kind>
std::shared_ptr<Control> MakeControl(HWND handle) {
    return std::make_shared<Kind>(handle);
}

}  // namespace brcore8::desktop

#endif
