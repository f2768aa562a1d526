#include "controls/desk.h"

#include <algorithm>
#include <cstring>

namespace {

Desk* g_desk = nullptr;

struct Name {
    const char* className;
    int code;
    const char* name;
};

constexpr Name kNames[] = {
    {"Static", STN_CLICKED, "STN_CLICKED"},
    {"Static", STN_DBLCLK, "STN_DBLCLK"},
    {"Static", STN_ENABLE, "STN_ENABLE"},
    {"Static", STN_DISABLE, "STN_DISABLE"},
    {"Button", BN_CLICKED, "BN_CLICKED"},
    {"Button", BN_HILITE, "BN_HILITE"},
    {"Button", BN_UNHILITE, "BN_UNHILITE"},
    {"Button", BN_DISABLE, "BN_DISABLE"},
    {"Button", BN_DOUBLECLICKED, "BN_DOUBLECLICKED"},
    {"Button", BN_SETFOCUS, "BN_SETFOCUS"},
    {"Button", BN_KILLFOCUS, "BN_KILLFOCUS"},
    {"Edit", EN_SETFOCUS, "EN_SETFOCUS"},
    {"Edit", EN_KILLFOCUS, "EN_KILLFOCUS"},
    {"Edit", EN_CHANGE, "EN_CHANGE"},
    {"Edit", EN_UPDATE, "EN_UPDATE"},
    {"Edit", EN_MAXTEXT, "EN_MAXTEXT"},
    {"Edit", EN_HSCROLL, "EN_HSCROLL"},
    {"Edit", EN_VSCROLL, "EN_VSCROLL"},
};

std::string NameOf(HWND control, int code) {
    char className[64] = {};
    GetClassNameA(control, className, sizeof className);
    for (const Name& each : kNames)
        if (std::strcmp(each.className, className) == 0 && each.code == code) return each.name;
    return std::to_string(code);
}

}  // namespace

// One window for all tests: where screens are far away, to show one takes seconds.
HWND Desk::TheWindow() {
    static const HWND window = [] {
        WNDCLASSEXA info{};
        info.cbSize = sizeof info;
        info.lpfnWndProc = &Desk::Procedure;
        info.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
        info.lpszClassName = "ControlsDesk";
        RegisterClassExA(&info);
        return CreateWindowExA(0, info.lpszClassName, "", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                               50, 50, 400, 300, nullptr, nullptr, nullptr, nullptr);
    }();
    return window;
}

Desk::Desk() : window(TheWindow()) {
    EXPECT_NE(window, nullptr);
    SetWindowPos(window, nullptr, 50, 50, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    SetActiveWindow(window);
    SetFocus(window);
    Settle();
    g_desk = this;
}

Desk::~Desk() {
    g_desk = nullptr;
    while (const HWND child = GetWindow(window, GW_CHILD))
        DestroyWindow(child);
}

HWND Desk::Make(const char* className, const char* text, DWORD style, int id, RECT place,
                DWORD exStyle) const {
    return CreateWindowExA(exStyle, className, text, WS_CHILD | WS_VISIBLE | style, place.left,
                           place.top, place.right - place.left, place.bottom - place.top, window,
                           reinterpret_cast<HMENU>(std::intptr_t{id}), nullptr, nullptr);
}

std::string Desk::Told() {
    std::string told;
    told.swap(told_);
    return told;
}

void Desk::Settle() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

void Desk::Note(const std::string& what) {
    if (!told_.empty()) told_ += ' ';
    told_ += what;
}

LRESULT CALLBACK Desk::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (g_desk != nullptr) {
        if (message == WM_COMMAND)
            g_desk->Note(std::to_string(LOWORD(wParam)) + ':' +
                         NameOf(reinterpret_cast<HWND>(lParam), HIWORD(wParam)));
        LRESULT result = 0;
        if (g_desk->answers && g_desk->answers(message, wParam, lParam, result)) return result;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::vector<COLORREF> PixelsOf(HWND window) {
    UpdateWindow(window);
    RECT client{};
    GetClientRect(window, &client);
    // Copied first: to ask a window for each pixel takes a while.
    const HDC dc = GetDC(window);
    const HDC copy = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, client.right, client.bottom);
    const HGDIOBJ old = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, client.right, client.bottom, dc, 0, 0, SRCCOPY);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < client.bottom; ++y)
        for (int x = 0; x < client.right; ++x)
            pixels.push_back(GetPixel(copy, x, y));
    SelectObject(copy, old);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(window, dc);
    return pixels;
}

int CountOf(const std::vector<COLORREF>& pixels, COLORREF color) {
    return static_cast<int>(std::count(pixels.begin(), pixels.end(), color));
}

int Difference(const std::vector<COLORREF>& a, const std::vector<COLORREF>& b) {
    int count = 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        count += a[i] != b[i];
    return count + static_cast<int>(std::max(a.size(), b.size()) - std::min(a.size(), b.size()));
}
