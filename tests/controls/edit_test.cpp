// Edit fields: their text, lines and selection, typing and taking back.

#include "controls/desk.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>

namespace {

class Edits : public Desk {
protected:
    HWND MakeEdit(DWORD style, const char* text = "", RECT place = {0, 0, 300, 100}) const {
        const HWND edit = Make("EDIT", text, style, 1, place);
        EXPECT_NE(edit, nullptr);
        return edit;
    }
    static constexpr DWORD kMany = ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL;
    static constexpr DWORD kOne = ES_AUTOHSCROLL;
};

void Type(HWND edit, const char* text) {
    for (; *text != '\0'; ++text)
        Send(edit, WM_CHAR, static_cast<unsigned char>(*text), 1);
}

std::string SelectionOf(HWND edit) {
    DWORD begin = 0, end = 0;
    Send(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    return std::to_string(begin) + "-" + std::to_string(end);
}

std::string LineOf(HWND edit, int line) {
    char buffer[200] = {};
    const WORD size = sizeof buffer - 1;
    std::memcpy(buffer, &size, sizeof size);
    const LRESULT length =
        Send(edit, EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(buffer));
    return {buffer, static_cast<std::size_t>(length)};
}

TEST_F(Edits, TypingTellsAndMarksAsChanged) {
    const HWND edit = MakeEdit(kOne, "abc");
    EXPECT_EQ(TextOf(edit), "abc");
    EXPECT_EQ(SelectionOf(edit), "0-0");
    Send(edit, EM_SETMODIFY, 0);
    EXPECT_EQ(Send(edit, EM_GETMODIFY), 0);
    Told();
    Type(edit, "x");
    EXPECT_EQ(TextOf(edit), "xabc");
    EXPECT_EQ(Told(), "1:EN_UPDATE 1:EN_CHANGE");
    EXPECT_EQ(Send(edit, EM_GETMODIFY), 1);
    EXPECT_EQ(SelectionOf(edit), "1-1");
    Send(edit, EM_SETSEL, 1, 3);
    EXPECT_EQ(Told(), "");
    Type(edit, "Y");
    EXPECT_EQ(TextOf(edit), "xYc");
    Type(edit, "\b");
    EXPECT_EQ(TextOf(edit), "xc");
    Send(edit, WM_KEYDOWN, VK_DELETE, 0x01530001);
    EXPECT_EQ(TextOf(edit), "x");
    Told();
    Type(edit, "\b\b");
    EXPECT_EQ(TextOf(edit), "");
    Told();
    SetWindowTextA(edit, "anew");
    EXPECT_EQ(Told(), "1:EN_UPDATE 1:EN_CHANGE");
    EXPECT_EQ(Send(edit, EM_GETMODIFY), 0);
    EXPECT_EQ(Send(edit, EM_CANUNDO), 0);
    SetFocus(edit);
    SetFocus(window);
    EXPECT_EQ(Told(), "1:EN_SETFOCUS 1:EN_KILLFOCUS");
}

TEST_F(Edits, StylesChooseWhatMayBeTyped) {
    const struct {
        const char* name;
        DWORD style;
        const char* typed;
        const char* text;
    } rows[] = {
        {"plain", kOne, "aB\r\n\t1", "aB1"},
        {"upper", kOne | ES_UPPERCASE, "aBc1", "ABC1"},
        {"lower", kOne | ES_LOWERCASE, "aBc1", "abc1"},
        {"number", kOne | ES_NUMBER, "a1b2-3", "123"},
        {"password", kOne | ES_PASSWORD, "secret", "secret"},
        {"read only", kOne | ES_READONLY, "no\b", ""},
        {"many", kMany | ES_WANTRETURN, "a\rb\tc", "a\r\nb\tc"},
        {"back over a line end", kMany | ES_WANTRETURN, "ab\r\bc", "abc"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const HWND edit = MakeEdit(row.style);
        Type(edit, row.typed);
        EXPECT_EQ(TextOf(edit), row.text);
        DestroyWindow(edit);
    }
    const HWND one = MakeEdit(kOne, "first\r\nsecond");
    SetWindowTextA(one, "first\r\nsecond");
    EXPECT_EQ(Send(one, EM_GETLINECOUNT), 1);
}

TEST_F(Edits, LinesAreCountedAndFound) {
    const HWND edit = MakeEdit(kMany, "one\r\n\r\nthree\r\nfour");
    EXPECT_EQ(Send(edit, EM_GETLINECOUNT), 4);
    const struct {
        int line;
        LRESULT index, length;
        const char* text;
    } rows[] = {{0, 0, 3, "one"}, {1, 5, 0, ""}, {2, 7, 5, "three"}, {3, 14, 4, "four"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(Send(edit, EM_LINEINDEX, static_cast<WPARAM>(row.line)), row.index);
        EXPECT_EQ(Send(edit, EM_LINEFROMCHAR, static_cast<WPARAM>(row.index)), row.line);
        EXPECT_EQ(Send(edit, EM_LINELENGTH, static_cast<WPARAM>(row.index)), row.length);
        EXPECT_EQ(LineOf(edit, row.line), row.text);
    }
    EXPECT_EQ(Send(edit, EM_LINEINDEX, 4), -1);
    EXPECT_EQ(LineOf(edit, 4), "");
    EXPECT_EQ(Send(edit, EM_LINEFROMCHAR, 1000), 3);
    Send(edit, EM_SETSEL, 8, 15);
    EXPECT_EQ(Send(edit, EM_LINEINDEX, static_cast<WPARAM>(-1)), 14);
    EXPECT_EQ(Send(edit, EM_LINEFROMCHAR, static_cast<WPARAM>(-1)), 2);
    EXPECT_EQ(Send(edit, EM_LINELENGTH, static_cast<WPARAM>(-1)), 1 + 3);
    // A short block takes a part of the line.
    char small[8] = {3, 0};
    EXPECT_EQ(Send(edit, EM_GETLINE, 2, reinterpret_cast<LPARAM>(small)), 3);
    EXPECT_EQ(std::string(small, 3), "thr");

    // New line ends make new lines.
    Send(edit, EM_SETSEL, 9, 9);
    SendText(edit, EM_REPLACESEL, 0, "X\r\nY");
    EXPECT_EQ(Send(edit, EM_GETLINECOUNT), 5);
    EXPECT_EQ(LineOf(edit, 3), "Yree");
    Send(edit, EM_SETSEL, 0, -1);
    SendText(edit, EM_REPLACESEL, 0, "\r\n");
    EXPECT_EQ(Send(edit, EM_GETLINECOUNT), 2);
    EXPECT_EQ(Send(edit, EM_LINEINDEX, 1), 2);
}

TEST_F(Edits, TheSelectionFollowsItsRules) {
    const struct {
        int begin, end;
        const char* selection;
    } rows[] = {
        {2, 4, "2-4"}, {0, -1, "0-8"}, {4, 2, "2-4"},   {-1, 0, "2-2"},
        {3, 3, "3-3"}, {5, 99, "5-8"}, {99, 99, "8-8"},
    };
    const HWND edit = MakeEdit(kOne, "abcdefgh");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.selection);
        Send(edit, EM_SETSEL, static_cast<WPARAM>(row.begin), row.end);
        EXPECT_EQ(SelectionOf(edit), row.selection);
    }
    Send(edit, EM_SETSEL, 1, 3);
    EXPECT_EQ(Send(edit, EM_GETSEL), MAKELONG(1, 3));
    Send(edit, WM_CLEAR);
    EXPECT_EQ(TextOf(edit), "adefgh");
    EXPECT_EQ(SelectionOf(edit), "1-1");
}

TEST_F(Edits, KeysMoveTheCaret) {
    const HWND edit = MakeEdit(kMany, "abc\r\nde\r\nfghi");
    const struct {
        const char* name;
        int from;
        WPARAM key;
        const char* selection;
    } rows[] = {
        {"left", 2, VK_LEFT, "1-1"},
        {"left over a line end", 5, VK_LEFT, "3-3"},
        {"right over a line end", 3, VK_RIGHT, "5-5"},
        {"right at the end", 13, VK_RIGHT, "13-13"},
        {"home", 7, VK_HOME, "5-5"},
        {"end", 5, VK_END, "7-7"},
        {"up at the top", 1, VK_UP, "1-1"},
        {"down to a line's begin", 0, VK_DOWN, "5-5"},
        {"up to a line's begin", 9, VK_UP, "5-5"},
        {"down to a shorter line's end", 3, VK_DOWN, "7-7"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Send(edit, EM_SETSEL, static_cast<WPARAM>(row.from), row.from);
        Send(edit, WM_KEYDOWN, row.key, 0x01000001);
        EXPECT_EQ(SelectionOf(edit), row.selection);
    }
}

// Shift and Ctrl for as long as it lives.
class Held {
public:
    explicit Held(bool shift, bool control) {
        GetKeyboardState(keys_);
        BYTE held[256];
        std::memcpy(held, keys_, sizeof held);
        held[VK_SHIFT] = shift ? 0x80 : 0;
        held[VK_CONTROL] = control ? 0x80 : 0;
        SetKeyboardState(held);
    }
    ~Held() { SetKeyboardState(keys_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    BYTE keys_[256];
};

TEST_F(Edits, ShiftSelectsAndCtrlGoesByWords) {
    const HWND one = MakeEdit(kOne, "one two  three");
    const HWND many = MakeEdit(kMany, "abc\r\nde\r\nfghi");
    const struct {
        const char* name;
        HWND edit;
        int begin, end;
        WPARAM key;
        bool shift, control;
        const char* selection;
    } rows[] = {
        {"a character on", one, 3, 3, VK_RIGHT, true, false, "3-4"},
        {"and back over the begin", one, 3, 3, VK_LEFT, true, false, "2-3"},
        {"the selection shrinks", one, 2, 6, VK_LEFT, true, false, "2-5"},
        {"the caret leaves the selection", one, 2, 6, VK_LEFT, false, false, "5-5"},
        {"to the begin", one, 5, 5, VK_HOME, true, false, "0-5"},
        {"to the end", one, 5, 5, VK_END, true, false, "5-14"},
        {"a word on", one, 0, 0, VK_RIGHT, false, true, "4-4"},
        {"over two spaces", one, 4, 4, VK_RIGHT, false, true, "9-9"},
        {"from a word's middle", one, 5, 5, VK_RIGHT, true, true, "5-9"},
        {"a word back", one, 14, 14, VK_LEFT, false, true, "9-9"},
        {"to a word's begin", one, 11, 11, VK_LEFT, true, true, "9-11"},
        {"a line down", many, 1, 1, VK_DOWN, true, false, "1-6"},
        {"a line up", many, 6, 6, VK_UP, true, false, "1-6"},
        {"to a line's end", many, 5, 5, VK_END, true, false, "5-7"},
        {"to the text's end", many, 5, 5, VK_END, true, true, "5-13"},
        {"to the text's begin", many, 5, 5, VK_HOME, false, true, "0-0"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Send(row.edit, EM_SETSEL, static_cast<WPARAM>(row.begin), row.end);
        const Held held(row.shift, row.control);
        Send(row.edit, WM_KEYDOWN, row.key, 0x01000001);
        EXPECT_EQ(SelectionOf(row.edit), row.selection);
    }
    // What Shift selected is typed over, and Ctrl with Back types nothing.
    Send(one, EM_SETSEL, 0, 0);
    {
        const Held held(true, true);
        Send(one, WM_KEYDOWN, VK_RIGHT, 0x01000001);
    }
    Type(one, "1 ");
    EXPECT_EQ(TextOf(one), "1 two  three");
}

TEST_F(Edits, TheLimitHoldsForTyping) {
    const HWND edit = MakeEdit(kOne);
    EXPECT_EQ(Send(edit, EM_GETLIMITTEXT), 30000);
    Send(edit, EM_LIMITTEXT, 4);
    Type(edit, "abcd");
    Told();
    Type(edit, "e");
    EXPECT_EQ(TextOf(edit), "abcd");
    EXPECT_NE(Told().find("1:EN_MAXTEXT"), std::string::npos);
    Send(edit, EM_SETSEL, 1, 3);
    SendText(edit, EM_REPLACESEL, 0, "12345");
    EXPECT_EQ(TextOf(edit), "a12d");
    EXPECT_NE(Told().find("1:EN_MAXTEXT"), std::string::npos);
    // Not for a text that is set.
    SetWindowTextA(edit, "longer than four");
    EXPECT_EQ(TextOf(edit), "longer than four");
}

TEST_F(Edits, WhatWasDoneLastIsTakenBackAndDoneAgain) {
    const HWND edit = MakeEdit(kOne, "hello");
    EXPECT_EQ(Send(edit, EM_CANUNDO), 0);
    Send(edit, EM_SETSEL, 5, 5);
    Type(edit, " you");
    EXPECT_EQ(Send(edit, EM_CANUNDO), 1);
    Told();
    EXPECT_EQ(Send(edit, EM_UNDO), 1);
    EXPECT_EQ(TextOf(edit), "hello");
    // Some tell of the change twice.
    EXPECT_EQ(Told().find("1:EN_UPDATE 1:EN_CHANGE"), 0u);
    Send(edit, EM_UNDO);
    EXPECT_EQ(TextOf(edit), "hello you");
    Send(edit, EM_SETSEL, 0, 5);
    Type(edit, "HI");
    EXPECT_EQ(TextOf(edit), "HI you");
    Send(edit, EM_UNDO);
    EXPECT_EQ(TextOf(edit), "hello you");
    EXPECT_EQ(SelectionOf(edit), "0-5");
    Send(edit, EM_EMPTYUNDOBUFFER);
    EXPECT_EQ(Send(edit, EM_CANUNDO), 0);
    SendText(edit, EM_REPLACESEL, 1, "X");
    EXPECT_EQ(Send(edit, EM_CANUNDO), 1);
    SendText(edit, EM_REPLACESEL, 0, "Y");
    EXPECT_EQ(Send(edit, EM_CANUNDO), 0);
}

TEST_F(Edits, FlagsAndPlacesAreAnswered) {
    const HWND one = MakeEdit(kOne, "abcdef");
    const HWND many = MakeEdit(kMany, "one\r\ntwo\r\nthree");
    EXPECT_EQ(Send(one, WM_GETDLGCODE), DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS);
    EXPECT_EQ(Send(many, WM_GETDLGCODE),
              DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_WANTALLKEYS);
    EXPECT_EQ(Send(one, EM_SETREADONLY, 1), 1);
    EXPECT_NE(GetWindowLongA(one, GWL_STYLE) & ES_READONLY, 0);
    EXPECT_EQ(Send(one, EM_GETPASSWORDCHAR), 0);
    Send(one, EM_SETPASSWORDCHAR, '#');
    EXPECT_EQ(Send(one, EM_GETPASSWORDCHAR), '#');
    EXPECT_NE(GetWindowLongA(one, GWL_STYLE) & ES_PASSWORD, 0);
    EXPECT_EQ(Send(many, EM_GETFIRSTVISIBLELINE), 0);
    // What shows as a whole does not scroll.
    EXPECT_EQ(Send(many, EM_LINESCROLL, 0, 1), 1);
    EXPECT_EQ(Send(many, EM_GETFIRSTVISIBLELINE), 0);
    std::string lines;
    for (int i = 0; i < 50; ++i)
        lines += "line\r\n";
    const HWND longer = MakeEdit(kMany, lines.c_str());
    EXPECT_EQ(Send(longer, EM_LINESCROLL, 0, 3), 1);
    EXPECT_EQ(Send(longer, EM_GETFIRSTVISIBLELINE), 3);
    EXPECT_EQ(Send(longer, EM_LINESCROLL, 0, -2), 1);
    EXPECT_EQ(Send(longer, EM_GETFIRSTVISIBLELINE), 1);
    EXPECT_EQ(Send(one, EM_LINESCROLL, 0, 1), 0);

    // A character's place leads back to it.
    for (const int at : {0, 2, 5, 7, 12}) {
        SCOPED_TRACE(at);
        const LRESULT place = Send(many, EM_POSFROMCHAR, static_cast<WPARAM>(at));
        const int x = static_cast<short>(LOWORD(place)), y = static_cast<short>(HIWORD(place));
        const LRESULT found = Send(many, EM_CHARFROMPOS, 0, MAKELPARAM(x + 1, y + 1));
        EXPECT_EQ(LOWORD(found), at);
        EXPECT_EQ(HIWORD(found), Send(many, EM_LINEFROMCHAR, static_cast<WPARAM>(at)));
    }
    EXPECT_EQ(Send(many, EM_POSFROMCHAR, 1000), -1);
    EXPECT_EQ(Send(many, EM_CHARFROMPOS, 0, MAKELPARAM(1000, 5)), -1);
    Send(many, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(7, 9));
    EXPECT_EQ(Send(many, EM_GETMARGINS), MAKELONG(7, 9));
}

TEST_F(Edits, TheMouseSelects) {
    const HWND edit = MakeEdit(kOne, "first second third");
    const auto placeOf = [edit](int at) {
        const LRESULT place = Send(edit, EM_POSFROMCHAR, static_cast<WPARAM>(at));
        return MAKELPARAM(LOWORD(place) + 1, HIWORD(place) + 2);
    };
    Send(edit, WM_LBUTTONDOWN, MK_LBUTTON, placeOf(2));
    EXPECT_EQ(GetFocus(), edit);
    Send(edit, WM_MOUSEMOVE, MK_LBUTTON, placeOf(8));
    Send(edit, WM_LBUTTONUP, 0, placeOf(8));
    EXPECT_EQ(SelectionOf(edit), "2-8");
    EXPECT_EQ(GetCapture(), nullptr);
    Send(edit, WM_MOUSEMOVE, 0, placeOf(12));
    EXPECT_EQ(SelectionOf(edit), "2-8");
    Send(edit, WM_LBUTTONDBLCLK, MK_LBUTTON, placeOf(8));
    Send(edit, WM_LBUTTONUP, 0, placeOf(8));
    EXPECT_EQ(SelectionOf(edit), "6-13");
    // With Shift from where the selection began, before it too.
    for (const auto& [at, selection] : {std::pair(10, "4-10"), std::pair(2, "2-4")}) {
        Send(edit, WM_LBUTTONDOWN, MK_LBUTTON, placeOf(4));
        Send(edit, WM_LBUTTONUP, 0, placeOf(4));
        Send(edit, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, placeOf(at));
        Send(edit, WM_LBUTTONUP, MK_SHIFT, placeOf(at));
        EXPECT_EQ(SelectionOf(edit), selection);
    }
}

TEST_F(Edits, LongLinesAreWrappedBetweenWords) {
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += "word" + std::to_string(i) + (i % 20 == 19 ? "\r\n" : " ");
    const HWND edit = MakeEdit(ES_MULTILINE | ES_AUTOVSCROLL, text.c_str(), {0, 0, 150, 100});
    const auto check = [&] {
        const int lines = static_cast<int>(Send(edit, EM_GETLINECOUNT));
        std::string all;
        for (int i = 0; i < lines; ++i) {
            const LRESULT begin = Send(edit, EM_LINEINDEX, static_cast<WPARAM>(i));
            all.resize(static_cast<std::size_t>(begin), '?');
            all += LineOf(edit, i);
            EXPECT_EQ(Send(edit, EM_LINEFROMCHAR, static_cast<WPARAM>(begin)), i);
            if (i > 0) {
                const char before = TextOf(edit)[static_cast<std::size_t>(begin) - 1];
                EXPECT_TRUE(before == ' ' || before == '\n') << before;
            }
        }
        std::string expected = TextOf(edit);
        for (char& c : expected)
            if (c == '\r' || c == '\n') c = '?';
        all.resize(expected.size(), '?');
        EXPECT_EQ(all, expected);
        return lines;
    };
    const int narrow = check();
    EXPECT_GT(narrow, 15);
    SetWindowPos(edit, nullptr, 0, 0, 290, 100, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_LT(check(), narrow);
    Send(edit, EM_SETSEL, 30, 300);
    SendText(edit, EM_REPLACESEL, 0, "x y z ");
    check();
}

TEST_F(Edits, SelectedTextLooksSelected) {
    const HWND edit = MakeEdit(kOne | ES_NOHIDESEL, "some text");
    Send(edit, EM_SETSEL, 0, 0);
    const auto before = PixelsOf(edit);
    Send(edit, EM_SETSEL, 0, 4);
    EXPECT_GT(CountOf(PixelsOf(edit), GetSysColor(COLOR_HIGHLIGHT)), 50);
    EXPECT_EQ(CountOf(before, GetSysColor(COLOR_HIGHLIGHT)), 0);
    Send(edit, EM_SETSEL, 0, 0);
    EXPECT_EQ(Difference(before, PixelsOf(edit)), 0);
    const HWND hidden = MakeEdit(kOne | ES_PASSWORD, "some text", {0, 110, 300, 210});
    EXPECT_GT(Difference(before, PixelsOf(hidden)), 20);
}

TEST_F(Edits, TextTravelsByTheClipboard) {
    const HWND from = MakeEdit(kOne, "some text");
    const HWND to = MakeEdit(kMany, "[]");
    Send(from, EM_SETSEL, 0, 4);
    Send(from, WM_COPY);
    Send(to, EM_SETSEL, 1, 1);
    Send(to, WM_PASTE);
    EXPECT_EQ(TextOf(to), "[some]");
    Send(from, EM_SETSEL, 4, 9);
    Send(from, WM_CUT);
    EXPECT_EQ(TextOf(from), "some");
    Send(to, WM_PASTE);
    EXPECT_EQ(TextOf(to), "[some text]");
    Send(from, EM_UNDO);
    EXPECT_EQ(TextOf(from), "some text");
    Send(from, EM_SETREADONLY, 1);
    Send(from, WM_PASTE);
    EXPECT_EQ(TextOf(from), "some text");
}

// --- A random run -------------------------------------------------------------------------------

// What an edit field of many lines holds.
struct Model {
    std::string text;
    std::size_t begin = 0, end = 0;

    void Replace(const std::string& with) {
        text.replace(begin, end - begin, with);
        begin = end = begin + with.size();
    }
    // A line end is one character for who deletes.
    void Back() {
        if (begin == end) {
            if (begin == 0) return;
            begin -= begin >= 2 && text.compare(begin - 2, 2, "\r\n") == 0 ? 2 : 1;
        }
        Replace("");
    }
    LRESULT Lines() const {
        LRESULT lines = 1;
        for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; at += 2)
            ++lines;
        return lines;
    }
};

TEST_F(Edits, ARandomRunEndsAsItsModel) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&](std::size_t count) { return random() % count; };
    const char* const pieces[] = {"", "a", "two words", "\r\n", "end\r\nbegin", "\t", "\r\n\r\n"};
    const HWND edit = MakeEdit(kMany | ES_WANTRETURN);
    Model model;
    for (int step = 0; step < 1500; ++step) {
        const auto kind = below(8);
        SCOPED_TRACE("step " + std::to_string(step) + " kind " + std::to_string(kind));
        switch (kind) {
            case 0:
            case 1: {
                const char c = "abc \r1"[below(6)];
                Send(edit, WM_CHAR, static_cast<unsigned char>(c), 1);
                model.Replace(c == '\r' ? "\r\n" : std::string(1, c));
                break;
            }
            case 2:
                Send(edit, WM_CHAR, '\b', 1);
                model.Back();
                break;
            case 3:
            case 4: {
                // Never inside of a line end.
                std::size_t at[2];
                for (std::size_t& each : at) {
                    each = below(model.text.size() + 1);
                    if (each > 0 && each < model.text.size() && model.text[each] == '\n') --each;
                }
                model.begin = std::min(at[0], at[1]);
                model.end = std::max(at[0], at[1]);
                Send(edit, EM_SETSEL, model.begin, static_cast<LPARAM>(model.end));
                break;
            }
            case 5:
            case 6: {
                const char* const piece = pieces[below(std::size(pieces))];
                SendText(edit, EM_REPLACESEL, below(4) != 0, piece);
                model.Replace(piece);
                break;
            }
            default: {
                // A change is taken back, and done again.
                const char* const piece = pieces[1 + below(std::size(pieces) - 1)];
                const std::string before = model.text;
                Send(edit, EM_EMPTYUNDOBUFFER);
                SendText(edit, EM_REPLACESEL, 1, piece);
                model.Replace(piece);
                Send(edit, EM_UNDO);
                ASSERT_EQ(TextOf(edit), before);
                Send(edit, EM_UNDO);
                ASSERT_EQ(TextOf(edit), model.text);
                Send(edit, EM_SETSEL, model.begin, static_cast<LPARAM>(model.end));
            }
        }
        ASSERT_EQ(TextOf(edit), model.text);
        ASSERT_EQ(SelectionOf(edit), std::to_string(model.begin) + "-" + std::to_string(model.end));
        ASSERT_EQ(Send(edit, EM_GETLINECOUNT), model.Lines());
    }
}

TEST_F(Edits, ALargeTextIsNoBurden) {
    std::string text;
    while (text.size() < 2'000'000)
        text += "A line of a large text, as long as most lines are in such a text.\r\n";
    for (const DWORD style : {kMany | WS_VSCROLL, kMany | WS_HSCROLL | WS_VSCROLL,
                              DWORD{ES_MULTILINE | ES_AUTOVSCROLL}}) {
        SCOPED_TRACE(style);
        const HWND edit = MakeEdit(style);
        Send(edit, EM_LIMITTEXT, 0);
        SetWindowTextA(edit, text.c_str());
        UpdateWindow(edit);
        const LRESULT lines = Send(edit, EM_GETLINECOUNT);
        EXPECT_GT(lines, 28'000);
        Send(edit, EM_SETSEL, text.size() / 2, static_cast<LPARAM>(text.size() / 2));
        Send(edit, EM_SCROLLCARET);
        Type(edit, "typed");
        UpdateWindow(edit);
        EXPECT_EQ(GetWindowTextLengthA(edit), static_cast<int>(text.size() + 5));
        DestroyWindow(edit);
    }
}

TEST_F(Edits, AHandlerMayDestroyTheField) {
    for (const int code : {EN_UPDATE, EN_CHANGE, EN_MAXTEXT, EN_SETFOCUS}) {
        SCOPED_TRACE(code);
        const HWND edit = MakeEdit(kOne, "text");
        Send(edit, EM_LIMITTEXT, code == EN_MAXTEXT ? 4 : 100);
        answers = [&](UINT message, WPARAM wParam, LPARAM, LRESULT&) {
            if (message == WM_COMMAND && HIWORD(wParam) == code) DestroyWindow(edit);
            return false;
        };
        if (code == EN_SETFOCUS) SetFocus(edit);
        if (code != EN_SETFOCUS) Type(edit, "x");
        answers = nullptr;
        EXPECT_FALSE(IsWindow(edit));
    }
}

}  // namespace
