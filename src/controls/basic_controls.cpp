#include <brcore8/controls/button_ctrl.h>
#include <brcore8/controls/progress_ctrl.h>
#include <brcore8/controls/status_bar_ctrl.h>

#include "strings/mbs.h"

#include <algorithm>
#include <cstring>
#include <vector>

SIMPLEMENT_CREATABLE(SButtonCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SProgressCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SStatusBarCtrl, SWnd, 2);

// The control tells lengths in 16 bits, and whoever asks for a longer text gets all of it.
int SStatusBarCtrl::SetText(int part, const char* text, UINT look) {
    constexpr std::size_t kLongest = 0xFFFF;
    SString cut;
    if (text != nullptr && (look & SBT_OWNERDRAW) == 0 && std::strlen(text) > kLongest) {
        const auto& page = brcore8::CodePage::Ansi();
        const bool isWhole = brcore8::mbs::IsBoundary(page, text, text + kLongest);
        cut = SString(std::string_view(text, isWhole ? kLongest : kLongest - 1));
        text = cut;
    }
    return static_cast<int>(
        SendMessage(SB_SETTEXTA, static_cast<WPARAM>(part) | look, reinterpret_cast<LPARAM>(text)));
}

SString SStatusBarCtrl::GetText(int part, UINT* look) const {
    const auto index = static_cast<WPARAM>(part);
    const LRESULT told = SendMessage(SB_GETTEXTLENGTHA, index);
    if (look != nullptr) *look = HIWORD(told);
    // The first part's text is the window's, and may be as long as one.
    const int length = part == 0 ? GetWindowTextLength() : 0;
    // The control ends what it stores with a zero byte.
    std::vector<char> text(static_cast<std::size_t>(std::max<int>(length, LOWORD(told))) + 1);
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
