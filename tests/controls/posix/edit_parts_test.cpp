// What only this desktop's edit fields let be tested: characters of two bytes, which depend on the
// process's code page, and a lower bar that knows the widest line.

#include "controls/desk.h"
#include "support/page_scope.h"

#include <climits>
#include <random>
#include <string>
#include <vector>

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

// The place of the first character tells how far the field is scrolled.
int LeftOf(HWND edit) {
    return static_cast<std::int16_t>(LOWORD(static_cast<WPARAM>(Send(edit, EM_POSFROMCHAR, 0))));
}

TEST_F(EditParts, LinesAreScrolledAsFarAsTheTextGoes) {
    const HWND edit = MakeEdit(kWide, std::string(100, 'W').c_str());
    const int left = LeftOf(edit);
    const auto scroll = [&](int across, int down) {
        Send(edit, EM_LINESCROLL, static_cast<WPARAM>(across), down);
        return left - LeftOf(edit);
    };
    const int most = scroll(INT_MAX, INT_MAX);
    RECT format{};
    Send(edit, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&format));
    EXPECT_EQ(most, Range(edit) - (format.right - format.left));
    EXPECT_EQ(scroll(INT_MAX, 0), most);
    EXPECT_EQ(scroll(0, INT_MIN), most);
    EXPECT_EQ(scroll(INT_MIN, INT_MIN), 0);
}

TEST_F(EditParts, TabStopsMayBeAsFarAsTheyLike) {
    const HWND edit = MakeEdit(kWide, "\t\tx");
    const struct {
        const char* name;
        WPARAM count;
        int stops[2];
        LRESULT answer;
        bool isFar;
    } rows[] = {
        {"more than there are", ~WPARAM{0}, {INT_MAX, 1}, 0, false},
        {"a negative count", 0x80000000u, {INT_MAX, 1}, 0, false},
        {"far", 1, {INT_MAX, 0}, 1, true},
        {"two of them", 2, {INT_MAX, INT_MAX}, 1, true},
        {"before all", 1, {INT_MIN, 0}, 1, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Send(edit, EM_SETTABSTOPS, row.count, reinterpret_cast<LPARAM>(row.stops)),
                  row.answer);
        EXPECT_GT(Range(edit), 0);
        EXPECT_EQ(Range(edit) > 1'000'000, row.isFar);
        UpdateWindow(edit);
    }
}

TEST_F(EditParts, TheEndOfAWrappedLineIsOnThatLine) {
    const struct {
        const char* name;
        int page;
        const char* text;
        int bytes;  // of the last character
    } rows[] = {
        {"words", 1252, "some words that need quite a few lines to be all there", 1},
        {"one word", 1252, "somewordsthatneedquiteafewlinestobeallthereeee", 1},
        {"pairs", 932,
         "\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0\x82\xA0",
         2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const PageScope page(row.page);
        const HWND edit = Make("EDIT", row.text, ES_MULTILINE, 1, {0, 0, 70, 100});
        const auto next = static_cast<int>(Send(edit, EM_LINEINDEX, 1));
        ASSERT_GT(next, 0);
        const std::string end = std::to_string(next - row.bytes);
        Send(edit, WM_KEYDOWN, VK_END, 1);
        EXPECT_EQ(Selection(edit), end + "-" + end);
        Send(edit, EM_SETSEL, 0, 0);
        Send(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(68, 4));
        Send(edit, WM_LBUTTONUP, 0, MAKELPARAM(68, 4));
        EXPECT_EQ(Selection(edit), end + "-" + end);
        // The last line has its end.
        Send(edit, EM_SETSEL, 1000, 1000);
        Send(edit, WM_KEYDOWN, VK_HOME, 1);
        Send(edit, WM_KEYDOWN, VK_END, 1);
        const std::string all = std::to_string(GetWindowTextLengthA(edit));
        EXPECT_EQ(Selection(edit), all + "-" + all);
        DestroyWindow(edit);
    }
}

TEST_F(EditParts, APasswordShowsAMarkForACharacter) {
    const PageScope page(932);
    const HWND pairs = MakeEdit(ES_PASSWORD, "\x82\xA0x");
    const auto drawn = PixelsOf(pairs);
    const HWND plain = MakeEdit(ES_PASSWORD, "yx");
    EXPECT_EQ(Difference(drawn, PixelsOf(plain)), 0);
}

TEST_F(EditParts, NothingIsCutWhereNothingIsSelected) {
    const HWND edit = MakeEdit(ES_AUTOHSCROLL, "text");
    Told();
    Send(edit, WM_CUT);
    EXPECT_EQ(Told(), "");
}

// A field that changed and one that got its text at once have the same lines, wherever they were
// broken.
TEST_F(EditParts, ChangesBreakLinesAsTheWholeTextDoes) {
    static constexpr const char* kTexts[] = {"",     "",           "i",
                                             " ",    "W",          "\r\n",
                                             "\r",   "\n",         "i ",
                                             "a\tb", "some words", "WWWWWWWWWWWW",
                                             "\x82", "\xA0\x82",   "\r\nii W\r\n",
                                             "  \t "};
    const auto linesOf = [](HWND edit) {
        std::vector<LRESULT> lines;
        for (LRESULT i = 0; i < Send(edit, EM_GETLINECOUNT); ++i)
            lines.push_back(Send(edit, EM_LINEINDEX, static_cast<WPARAM>(i)));
        return lines;
    };
    for (const int code : {1252, 932}) {
        for (const int width : {4, 24, 70}) {
            SCOPED_TRACE(testing::Message() << code << ", " << width);
            const PageScope page(code);
            const RECT place{0, 0, width, 100};
            const HWND edit = Make("EDIT", "", ES_MULTILINE | ES_AUTOVSCROLL, 1, place);
            std::mt19937 random(20251122);
            const auto below = [&](std::size_t limit) { return random() % limit; };
            std::size_t most = 0;
            for (int step = 0; step < 800; ++step) {
                const auto size = static_cast<std::size_t>(GetWindowTextLengthA(edit));
                const std::size_t begin = below(size + 1);
                const std::size_t longest = below(40) == 0 ? 200 : 6;
                Send(edit, EM_SETSEL, begin,
                     static_cast<LPARAM>(std::min(size, begin + below(longest))));
                SendText(edit, EM_REPLACESEL, 1, kTexts[below(std::size(kTexts))]);
                if (below(10) == 0) Send(edit, EM_UNDO);
                const std::string text = TextOf(edit);
                const HWND fresh =
                    Make("EDIT", text.c_str(), ES_MULTILINE | ES_AUTOVSCROLL, 1, place);
                most = std::max(most, linesOf(fresh).size());
                ASSERT_EQ(linesOf(edit), linesOf(fresh)) << step;
                DestroyWindow(fresh);
            }
            EXPECT_GT(most, 20u);
            DestroyWindow(edit);
        }
    }
}

TEST_F(EditParts, TheWidestLineIsKnownAfterManyChanges) {
    const auto most = [](HWND edit) {
        Send(edit, EM_LINESCROLL, static_cast<WPARAM>(INT_MIN));
        Send(edit, EM_LINESCROLL, INT_MAX);
        return LeftOf(edit);
    };
    constexpr DWORD kBare = ES_MULTILINE | ES_AUTOHSCROLL;
    const HWND edit = MakeEdit(kBare);
    std::mt19937 random(20251122);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int step = 0; step < 300; ++step) {
        for (std::size_t changes = 1 + below(6); changes > 0; --changes) {
            const auto size = static_cast<std::size_t>(GetWindowTextLengthA(edit));
            const std::size_t begin = below(size + 1);
            Send(edit, EM_SETSEL, begin, static_cast<LPARAM>(std::min(size, begin + below(40))));
            static constexpr const char* kTexts[] = {"",     "wide and wider than the field is",
                                                     "\r\n", "W\r\nW\r\nW\r\n",
                                                     "x",    "ab\r\nwide and wider\r\n"};
            SendText(edit, EM_REPLACESEL, 1, kTexts[below(std::size(kTexts))]);
        }
        const HWND fresh = MakeEdit(kBare, TextOf(edit).c_str());
        ASSERT_EQ(most(edit), most(fresh)) << step;
        DestroyWindow(fresh);
    }
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
