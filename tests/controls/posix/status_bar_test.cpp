// Status bars that are given more than they can say.

#include "controls/desk.h"

#include <climits>
#include <string>

namespace {

class FarStatusBars : public Desk {
protected:
    const HWND bar = CreateWindowExA(0, STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0,
                                     window, nullptr, nullptr, nullptr);
};

TEST_F(FarStatusBars, ATextIsNoLongerThanItsAnsweredLength) {
    const std::string text(70'000, 'x');
    const auto check = [&](const char* name) {
        SCOPED_TRACE(name);
        const std::size_t length = LOWORD(static_cast<WPARAM>(Send(bar, SB_GETTEXTLENGTHA)));
        EXPECT_EQ(length, 0xFFFFu);
        std::string out(length + 100, '!');
        EXPECT_EQ(LOWORD(static_cast<WPARAM>(SendText(bar, SB_GETTEXTA, 0, out.data()))), length);
        EXPECT_EQ(out, std::string(length, 'x') + '\0' + std::string(99, '!'));
    };
    SetWindowTextA(bar, text.c_str());
    check("the window's text");
    SendText(bar, SB_SETTEXTA, 0, text.c_str());
    check("the part's text");
}

TEST_F(FarStatusBars, PartsAndHeightsEndAtTheEndOfTheNumbers) {
    const int rights[] = {INT_MAX, -1};
    Send(bar, SB_SETPARTS, 2, reinterpret_cast<LPARAM>(rights));
    RECT rect{};
    EXPECT_EQ(Send(bar, SB_GETRECT, 1, reinterpret_cast<LPARAM>(&rect)), 1);
    EXPECT_EQ(rect.left, INT_MAX);
    PixelsOf(bar);
    Send(bar, SB_SETMINHEIGHT, INT_MAX);
    Send(bar, WM_SIZE);
    GetWindowRect(bar, &rect);
    EXPECT_GT(rect.bottom - rect.top, 1000);
}

}  // namespace
