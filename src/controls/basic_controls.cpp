#include <brcore8/controls/button_ctrl.h>
#include <brcore8/controls/progress_ctrl.h>
#include <brcore8/controls/status_bar_ctrl.h>

#include <vector>

SIMPLEMENT_CREATABLE(SButtonCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SProgressCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SStatusBarCtrl, SWnd, 2);

SString SStatusBarCtrl::GetText(int part, UINT* look) const {
    const auto index = static_cast<WPARAM>(part);
    const LRESULT told = SendMessage(SB_GETTEXTLENGTHA, index);
    if (look != nullptr) *look = HIWORD(told);
    // The control ends what it stores with a zero byte.
    std::vector<char> text(std::size_t{LOWORD(told)} + 1);
    SendMessage(SB_GETTEXTA, index, reinterpret_cast<LPARAM>(text.data()));
    return SString(text.data());
}

RECT SStatusBarCtrl::GetRect(int part) const {
    RECT rect{};
    SendMessage(SB_GETRECT, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(&rect));
    return rect;
}

void SStatusBarCtrl::GetBorders(int* horizontal, int* vertical, int* between) const {
    int borders[3] = {};
    SendMessage(SB_GETBORDERS, 0, reinterpret_cast<LPARAM>(borders));
    *horizontal = borders[0];
    *vertical = borders[1];
    *between = borders[2];
}
