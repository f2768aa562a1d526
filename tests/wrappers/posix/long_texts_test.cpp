// Texts longer than the 16 bits in which the controls' messages tell of them.

#include <brcore8/controls/edit_ctrls.h>
#include <brcore8/controls/status_bar_ctrl.h>
#include <brcore8/strings/multibyte.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class LongTexts : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200),
                  1);
    }

    // A field of many lines without an end.
    void MakeEndless(SEditCtrl& edit) {
        ASSERT_EQ(edit.Create(WS_VISIBLE | ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL,
                              {0, 0, 200, 100}, &parent, 1),
                  1);
        edit.LimitText(0x7FFFFFFE);
    }

    SWnd parent;
};

TEST_F(LongTexts, OfAStatusBarAreCut) {
    SStatusBarCtrl bar;
    ASSERT_EQ(bar.Create(WS_VISIBLE, &parent, 1), 1);
    const int edges[] = {100, -1};
    ASSERT_EQ(bar.SetParts(2, edges), 1);
    const std::string text(70000, 'a');
    for (int part : {0, 1}) {
        EXPECT_EQ(bar.SetText(part, text.c_str(), SBT_POPOUT), 1);
        UINT look = 0;
        EXPECT_EQ(bar.GetText(part, &look).View(), text.substr(0, 0xFFFF));
        EXPECT_EQ(look, UINT{SBT_POPOUT});
    }
    EXPECT_EQ(bar.SetText(1, text.substr(0, 0xFFFF).c_str()), 1);
    EXPECT_EQ(bar.GetText(1).LengthByte(), 0xFFFF);
    // The first part's comes by another way too, and is told as far as lengths go.
    bar.SetWindowText(text.c_str());
    EXPECT_EQ(bar.GetText(0).LengthByte(), 0xFFFF);

    const int page = _getmbcp();
    ASSERT_EQ(_setmbcp(932), 0);
    std::string wide;
    while (wide.size() < 70000)
        wide += "\x82\xA0";
    bar.SetText(1, wide.c_str());
    EXPECT_EQ(bar.GetText(1).View(), wide.substr(0, 0xFFFE));
    bar.SetText(1, ("a" + wide).c_str());
    EXPECT_EQ(bar.GetText(1).View(), ("a" + wide).substr(0, 0xFFFF));
    EXPECT_EQ(_setmbcp(page), 0);
}

TEST_F(LongTexts, OfAFieldAreReadAndHit) {
    SEditCtrl edit;
    ASSERT_NO_FATAL_FAILURE(MakeEndless(edit));
    std::string text;
    for (int i = 0; i < 200; ++i)
        text += std::string(1000, static_cast<char>('a' + i % 26)) + "\r\n";
    text += std::string(70000, 'z');
    edit.SetWindowText(text.c_str());
    ASSERT_EQ(edit.GetLineCount(), 201);
    EXPECT_EQ(edit.GetLine(200).View(), std::string(70000, 'z'));
    EXPECT_EQ(edit.GetLine(199).View(), std::string(1000, static_cast<char>('a' + 199 % 26)));
    for (int line : {0, 60, 70, 140, 190}) {
        SCOPED_TRACE(line);
        edit.LineScroll(line - edit.GetFirstVisibleLine());
        ASSERT_EQ(edit.GetFirstVisibleLine(), line);
        EXPECT_EQ(edit.CharFromPos({1, 2}), edit.LineIndex(line));
        const int later = edit.LineIndex(line + 2) + 3;
        const POINT place = edit.PosFromChar(later);
        EXPECT_EQ(edit.CharFromPos({place.x + 1, place.y + 1}), later);
    }
    EXPECT_EQ(edit.CharFromPos({-5, 2}), -1);
    EXPECT_EQ(edit.CharFromPos({5, 200}), -1);

    SEditCtrl line;
    ASSERT_EQ(line.Create(WS_VISIBLE | ES_AUTOHSCROLL, {0, 100, 200, 120}, &parent, 2), 1);
    line.LimitText(0x7FFFFFFE);
    line.SetWindowText(std::string(150000, 'x').c_str());
    line.SetSel(140000, 140000);
    line.ScrollCaret();
    const int shown = line.GetFirstVisibleLine();
    ASSERT_GT(shown, 130000);
    const POINT place = line.PosFromChar(shown + 3);
    EXPECT_EQ(line.CharFromPos({place.x + 1, place.y + 1}), shown + 3);
    EXPECT_EQ(line.GetLine(0).LengthByte(), 150000);
}

// Lines beyond the 16 bits, too.
TEST_F(LongTexts, HaveManyLines) {
    SEditCtrl edit;
    ASSERT_NO_FATAL_FAILURE(MakeEndless(edit));
    std::string text;
    for (int i = 0; i < 70000; ++i)
        text += "line\r\n";
    edit.SetWindowText(text.c_str());
    edit.LineScroll(68000);
    ASSERT_EQ(edit.GetFirstVisibleLine(), 68000);
    EXPECT_EQ(edit.CharFromPos({1, 2}), edit.LineIndex(68000));
}

}  // namespace
