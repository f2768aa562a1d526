// A window that holds the controls under test and writes down what they tell it.
#ifndef BRCORE8_TESTS_CONTROLS_DESK_H
#define BRCORE8_TESTS_CONTROLS_DESK_H

#include <brcore8/platform/windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

class Desk : public testing::Test {
protected:
    Desk();
    ~Desk() override;

    // A visible child of the window; its number is `id`.
    HWND Make(const char* className, const char* text, DWORD style, int id = 1,
              RECT place = {10, 10, 110, 34}, DWORD exStyle = 0) const;
    // What was told since the last question, like "1:EN_UPDATE 1:EN_CHANGE".
    std::string Told();
    // Runs what is posted.
    static void Settle();

    const HWND window;
    // Sees the window's messages first; true for one that it answered.
    std::function<bool(UINT, WPARAM, LPARAM, LRESULT&)> answers;

private:
    static HWND TheWindow();
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    void Note(const std::string& what);

    std::string told_;
};

inline LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageA(window, message, wParam, lParam);
}

inline LRESULT SendText(HWND window, UINT message, WPARAM wParam, const char* text) {
    return SendMessageA(window, message, wParam, reinterpret_cast<LPARAM>(text));
}

std::string TextOf(HWND window);
// The client area's pixels, row by row, once it is painted.
std::vector<COLORREF> PixelsOf(HWND window);
int CountOf(const std::vector<COLORREF>& pixels, COLORREF color);
// How many pixels differ.
int Difference(const std::vector<COLORREF>& a, const std::vector<COLORREF>& b);

#endif
