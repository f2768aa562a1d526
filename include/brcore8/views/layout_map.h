// SLayoutMap: how the controls of a window follow its size, in hundredths of what it grows.
//
//     SLayoutMap layout;
//     layout.Attach(&window);                          // the sizes now are those to begin with
//     layout.Add(IDC_LIST, {0, 0, 100, 100});          // grows with it
//     layout.Add(IDOK, {100, 100, 0, 0});              // moves with its right lower corner
//     ...OnSize: layout.Apply();
//
// Threads: the window's.
#ifndef BRCORE8_VIEWS_LAYOUT_MAP_H
#define BRCORE8_VIEWS_LAYOUT_MAP_H

#include <brcore8/window/wnd.h>

#include <vector>

class BRCORE8_API SLayoutMap : public SObject {
    SDECLARE_CREATABLE(SLayoutMap);

    // Hundredths of the window's growth by which a control moves, and grows.
    struct Share {
        int moveX;
        int moveY;
        int growX;
        int growY;
    };

    SLayoutMap() noexcept = default;

    // Forgets the controls added before. 0 for a window that is not there.
    int Attach(SWnd* window);
    // 0 without a window, or a control of that identifier. A second share replaces the first.
    int Add(int id, const Share& share);
    int GetCount() const noexcept { return static_cast<int>(rows_.size()); }
    // Gives each its place. One that is gone is passed over.
    void Apply();

private:
    struct Row {
        int id;
        Share share;
        RECT place;  // at first, in the window's client area
    };

    HWND window_ = nullptr;
    SIZE size_{};  // of the client area, at first
    std::vector<Row> rows_;
};

#endif
