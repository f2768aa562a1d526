// What only this desktop's edit fields let be tested: characters of two bytes, which depend on the
// process's code page, and a lower bar that knows the widest line.

#include "controls/desk.h"
#include "support/page_scope.h"

#include <random>
#include <string>

namespace {

class EditParts : public Desk {
protected:
    HWND MakeEdit(DWORD style, const char* text = "") const {
        return Make("EDIT", text, style, 1, {0, 0, 200, 100});
    }
    static int Range(HWND edit) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_RANGE;
        EXPECT_NE(GetScrollInfo(edit, SB_HORZ, &info), 0);
        return info.nMax;
    }
    static std::string Selection(HWND edit) {
        DWORD begin = 0, end = 0;
        Send(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
        return std::to_string(begin) + "-" + std::to_string(end);
    }
    static void Type(HWND edit, const char* text) {
        for (; *text != '\0'; ++text)
            Send(edit, WM_CHAR, static_cast<unsigned char>(*text), 1);
    }
};

constexpr DWORD kWide = ES_MULTILINE | ES_AUTOHSCROLL | WS_HSCROLL;

TEST_F(EditParts, ACharacterOfTwoBytesIsOne) {
    const PageScope page(932);
    const HWND edit = MakeEdit(ES_AUTOHSCROLL);
    Type(edit, "a\x82");
    EXPECT_EQ(TextOf(edit), "a") << "its second byte is still to come";
    Type(edit, "\xA0");
    EXPECT_EQ(TextOf(edit), "a\x82\xA0");
    EXPECT_EQ(Told(), "1:EN_UPDATE 1:EN_CHANGE 1:EN_UPDATE 1:EN_CHANGE");
    // The second byte may look like a letter of its own.
    Type(edit, "\x83\x41");
    EXPECT_EQ(TextOf(edit), "a\x82\xA0\x83\x41");
    Send(edit, WM_KEYDOWN, VK_LEFT, 1);
    EXPECT_EQ(Selection(edit), "3-3");
    Send(edit, WM_KEYDOWN, VK_DELETE, 1);
    EXPECT_EQ(TextOf(edit), "a\x82\xA0");
    Type(edit, "\b");
    EXPECT_EQ(TextOf(edit), "a");
    // Whole or not at all at the limit, and a first byte waits for nobody elsewhere.
    Send(edit, EM_LIMITTEXT, 2);
    Type(edit, "\x82\xA0");
    EXPECT_EQ(TextOf(edit), "a");
    Send(edit, EM_LIMITTEXT, 0);
    SetFocus(edit);
    Type(edit, "\x82");
    SetFocus(window);
    SetFocus(edit);
    Type(edit, "b");
    EXPECT_EQ(TextOf(edit), "ab");
}

TEST_F(EditParts, AHalfCharacterAtTheEndIsKept) {
    const PageScope page(932);
    const HWND edit = MakeEdit(kWide, "x\x82");
    Send(edit, EM_SETSEL, 2, 2);
    Send(edit, EM_REPLACESEL, 1, reinterpret_cast<LPARAM>("\xA0y\r\n\x82"));
    EXPECT_EQ(TextOf(edit), "x\x82\xA0y\r\n\x82");
    EXPECT_GT(Range(edit), 0);
    UpdateWindow(edit);
}

TEST_F(EditParts, TheLowerBarGoesAsFarAsTheWidestLine) {
    const HWND edit = MakeEdit(kWide);
    std::mt19937 random(20251122);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int step = 0; step < 400; ++step) {
        SCOPED_TRACE(step);
        const std::size_t size = static_cast<std::size_t>(GetWindowTextLengthA(edit));
        const std::size_t begin = below(size + 1);
        Send(edit, EM_SETSEL, begin, static_cast<LPARAM>(std::min(size, begin + below(12))));
        static constexpr const char* kTexts[] = {"", "", "x", "wide", "\r\n", "a\tb", "W\r\nW\r\n"};
        Send(edit, EM_REPLACESEL, 1, reinterpret_cast<LPARAM>(kTexts[below(std::size(kTexts))]));
        if (below(10) == 0) Send(edit, EM_UNDO);
        const HWND fresh = MakeEdit(kWide, TextOf(edit).c_str());
        ASSERT_EQ(Range(edit), Range(fresh));
        DestroyWindow(fresh);
    }
    // The font and the tab stops are part of it.
    SetWindowTextA(edit, "a\tb\r\nwide line");
    const int usual = Range(edit);
    Send(edit, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(SYSTEM_FONT)));
    EXPECT_GT(Range(edit), usual);
    const int stop = 400;
    Send(edit, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&stop));
    EXPECT_GT(Range(edit), 500);
}

// Only what changes is laid out and measured anew: thousands of changes are no more work than the
// text was.
TEST_F(EditParts, ManyChangesOfALargeTextAreNoBurden) {
    std::string text;
    while (text.size() < 2'000'000)
        text += "A line of a large text, as long as most lines are in such a text.\r\n";
    const HWND edit = MakeEdit(kWide | WS_VSCROLL);
    Send(edit, EM_LIMITTEXT, 0);
    SetWindowTextA(edit, text.c_str());
    Send(edit, EM_SETSEL, text.size() / 2, static_cast<LPARAM>(text.size() / 2));
    const int before = Range(edit);
    for (int i = 0; i < 1000; ++i)
        Type(edit, "ab\b");
    EXPECT_EQ(GetWindowTextLengthA(edit), static_cast<int>(text.size() + 1000));
    EXPECT_GT(Range(edit), before + 1000);
}

}  // namespace
