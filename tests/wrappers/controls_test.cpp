// The wrappers of the platform's controls: where the platform has the class they work, and where it
// has not, Create says so with the platform's code.

#include <brcore8/controls/bar_ctrls.h>
#include <brcore8/controls/button_ctrl.h>
#include <brcore8/controls/edit_ctrls.h>
#include <brcore8/controls/list_ctrls.h>
#include <brcore8/controls/list_view_ctrl.h>
#include <brcore8/controls/static_ctrls.h>
#include <brcore8/controls/tree_view_ctrl.h>
#include <brcore8/controls/value_ctrls.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

constexpr RECT kPlace{0, 0, 200, 100};

class Controls : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200),
                  1);
    }
    // Whether the platform has the class; when it has not, Create's failure is checked here.
    static bool IsThere(const char* className, int created) {
        const DWORD code = GetLastError();
        WNDCLASSEXA info{};
        info.cbSize = sizeof info;
        const bool has = GetClassInfoExA(nullptr, className, &info) != 0;
        EXPECT_EQ(created, has ? 1 : 0) << className;
        if (!has) {
            EXPECT_EQ(code, static_cast<DWORD>(ERROR_CANNOT_FIND_WND_CLASS)) << className;
        }
        return has;
    }

    SWnd parent;
};

TEST_F(Controls, Edit) {
    SEditCtrl edit;
    if (!IsThere("EDIT", edit.Create(ES_MULTILINE | ES_AUTOVSCROLL, kPlace, &parent, 1))) return;
    edit.SetWindowText("one\r\ntwo\r\nthree");
    EXPECT_EQ(edit.GetLineCount(), 3);
    EXPECT_STREQ(edit.GetLine(1), "two");
    EXPECT_STREQ(edit.GetLine(7), "");
    EXPECT_EQ(edit.LineIndex(2), 10);
    EXPECT_EQ(edit.LineFromChar(6), 1);
    EXPECT_EQ(edit.LineLength(10), 5);
    edit.SetSel(5, 8);
    int from = 0, to = 0;
    edit.GetSel(&from, &to);
    EXPECT_EQ(from, 5);
    EXPECT_EQ(to, 8);
    EXPECT_STREQ(edit.GetSelText(), "two");
    edit.ReplaceSel("2", 1);
    EXPECT_STREQ(edit.GetWindowText(), "one\r\n2\r\nthree");
    EXPECT_EQ(edit.GetModify(), 1);
    edit.SetModify(0);
    EXPECT_EQ(edit.GetModify(), 0);
    EXPECT_EQ(edit.CanUndo(), 1);
    edit.SetReadOnly(1);
    EXPECT_NE(edit.GetStyle() & ES_READONLY, 0u);
    edit.LimitText(100);
    EXPECT_EQ(edit.GetLimitText(), 100);
}

TEST_F(Controls, RichEdit) {
    SRichEditCtrl edit;
    if (!IsThere("RichEdit20A", edit.Create(ES_MULTILINE, kPlace, &parent, 1))) return;
    edit.SetWindowText("some text");
    edit.SetSel(0, 4);
    EXPECT_STREQ(edit.GetSelText(), "some");
    edit.ReplaceSel("more");
    EXPECT_STREQ(edit.GetWindowText(), "more text");
    CHARFORMATA format{};
    format.cbSize = sizeof format;
    format.dwMask = 1;  // bold
    format.dwEffects = 1;
    EXPECT_EQ(edit.SetCharFormat(format, SCF_ALL), 1);
    format = {};
    format.cbSize = sizeof format;
    edit.GetSelectionCharFormat(&format);
    EXPECT_NE(format.dwEffects & 1, 0u);
}

// What the parent is told of its buttons, and which of them it was.
class SButtonParent : public SWnd {
public:
    std::string log;

protected:
    int OnCommand(WPARAM wParam, LPARAM lParam) override {
        log += std::to_string(LOWORD(wParam)) + (HIWORD(wParam) == BN_CLICKED ? "c" : "?") +
               (lParam != 0 ? ";" : " of nobody;");
        return 1;
    }
};

TEST(ButtonControls, AreClickedCheckedAndPressed) {
    SButtonParent parent;
    ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200), 1);
    SButtonCtrl push, check, radios[2];
    ASSERT_EQ(push.Create("&Push", BS_PUSHBUTTON | WS_VISIBLE, {0, 0, 80, 20}, &parent, 1), 1);
    ASSERT_EQ(check.Create("Check", BS_AUTO3STATE | WS_VISIBLE, {0, 20, 80, 40}, &parent, 2), 1);
    for (int i : {0, 1}) {
        const DWORD style = BS_AUTORADIOBUTTON | WS_VISIBLE | (i == 0 ? WS_GROUP : 0);
        const RECT place{0, 40 + 20 * i, 80, 60 + 20 * i};
        ASSERT_EQ(radios[i].Create("Radio", style, place, &parent, 3 + static_cast<UINT>(i)), 1);
    }
    push.Click();
    check.Click();
    EXPECT_EQ(check.GetCheck(), BST_CHECKED);
    check.Click();
    EXPECT_EQ(check.GetCheck(), BST_INDETERMINATE);
    radios[0].Click();
    radios[1].Click();
    EXPECT_EQ(parent.log.substr(0, 9), "1c;2c;2c;");
    EXPECT_EQ(radios[0].GetCheck(), BST_UNCHECKED);
    EXPECT_EQ(radios[1].GetCheck(), BST_CHECKED);
    check.SetCheck(BST_CHECKED);
    EXPECT_EQ(check.GetState() & 3, UINT{BST_CHECKED});
    push.SetState(1);
    EXPECT_NE(push.GetState() & BST_PUSHED, 0u);
    push.SetState(0);
    EXPECT_EQ(push.GetState() & BST_PUSHED, 0u);
    push.SetButtonStyle(BS_DEFPUSHBUTTON);
    EXPECT_EQ(push.GetStyle() & BS_TYPEMASK, DWORD{BS_DEFPUSHBUTTON});
    parent.DestroyWindow();
}

TEST_F(Controls, Lists) {
    SListBoxCtrl list;
    if (IsThere("LISTBOX", list.Create(LBS_SORT, kPlace, &parent, 1))) {
        EXPECT_EQ(list.AddString("pear"), 0);
        EXPECT_EQ(list.AddString("apple"), 0);
        EXPECT_EQ(list.GetCount(), 2);
        EXPECT_STREQ(list.GetText(1), "pear");
        EXPECT_EQ(list.FindString(-1, "PE"), 1);
        EXPECT_NE(list.SetItemData(1, 77), -1);
        EXPECT_EQ(list.GetItemData(1), 77);
        EXPECT_EQ(list.SetCurSel(1), 1);
        EXPECT_EQ(list.GetCurSel(), 1);
        EXPECT_EQ(list.DeleteString(0), 1);
    }
    SComboBoxCtrl box;
    if (IsThere("COMBOBOX", box.Create(3 /* a list alone */, kPlace, &parent, 3))) {
        EXPECT_EQ(box.AddString("pear"), 0);
        EXPECT_EQ(box.AddString("plum"), 1);
        EXPECT_EQ(box.InsertString(0, "apple"), 0);
        EXPECT_EQ(box.FindString(-1, "PL"), 2);
        EXPECT_EQ(box.FindStringExact(-1, "pl"), -1);
        EXPECT_EQ(box.SelectString(-1, "pe"), 1);
        EXPECT_EQ(box.GetCurSel(), 1);
        EXPECT_STREQ(box.GetLBText(1), "pear");
        EXPECT_NE(box.SetItemData(2, 77), -1);
        EXPECT_EQ(box.DeleteString(1), 2);
        EXPECT_EQ(box.GetItemData(1), 77);
        EXPECT_EQ(box.GetDroppedState(), 0);
        box.ResetContent();
        EXPECT_EQ(box.GetCount(), 0);
    }
    SComboBoxExCtrl combo;
    if (IsThere("COMBOBOX", combo.Create(2 /* a field above a list */, kPlace, &parent, 2))) {
        combo.SetMostEntries(2);
        EXPECT_EQ(combo.Remember("first"), 0);
        EXPECT_EQ(combo.Remember("second"), 0);
        EXPECT_EQ(combo.Remember("FIRST"), 0);
        EXPECT_EQ(combo.Remember(""), -1);
        ASSERT_EQ(combo.GetEntries().size(), 2u);
        EXPECT_STREQ(combo.GetLBText(0), "FIRST");
        EXPECT_STREQ(combo.GetLBText(1), "second");
        EXPECT_EQ(combo.GetCurSel(), 0);
    }
}

TEST_F(Controls, ListViews) {
    SCheckListViewCtrl list;
    if (IsThere(WC_LISTVIEWA, list.Create(1 /* report */, kPlace, &parent, 1))) {
        EXPECT_EQ(list.InsertColumn(0, "Name", 80), 0);
        EXPECT_EQ(list.InsertColumn(1, "Size", 60), 1);
        EXPECT_EQ(list.GetColumnWidth(1), 60);
        EXPECT_EQ(list.InsertItem(0, "a", -1, 5), 0);
        EXPECT_EQ(list.InsertItem(1, "b"), 1);
        list.SetItemText(1, 1, "12");
        EXPECT_STREQ(list.GetItemText(1, 1), "12");
        EXPECT_EQ(list.GetItemData(0), 5);
        const std::string wide(1000, 'x');
        list.SetItemText(0, 0, wide.c_str());
        EXPECT_GE(list.GetItemText(0).LengthByte(), 255);
        list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
        EXPECT_EQ(list.GetSelectedCount(), 1);
        EXPECT_EQ(list.GetNextItem(-1, LVIS_SELECTED), 1);
        list.SetCheck(0);
        EXPECT_EQ(list.GetCheck(0), 1);
        EXPECT_EQ(list.GetCheckedCount(), 1);
        EXPECT_EQ(list.DeleteItem(0), 1);
        EXPECT_EQ(list.GetItemCount(), 1);
    }
    SHeaderCtrl header;
    if (IsThere(WC_HEADERA, header.Create(0, kPlace, &parent, 2))) {
        EXPECT_EQ(header.InsertItem(0, "Title", 50), 0);
        EXPECT_STREQ(header.GetItemText(0), "Title");
        EXPECT_NE(header.SetItemWidth(0, 70), 0);
        EXPECT_EQ(header.GetItemWidth(0), 70);
    }
}

TEST_F(Controls, TreeViews) {
    STreeViewExCtrl tree;
    if (!IsThere(WC_TREEVIEWA, tree.Create(0, kPlace, &parent, 1))) return;
    const HTREEITEM leaf = tree.InsertPath("root\\branch\\leaf");
    const HTREEITEM other = tree.InsertPath("Root\\twig");
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(tree.GetCount(), 4);
    EXPECT_STREQ(tree.GetPath(leaf), "root\\branch\\leaf");
    EXPECT_EQ(tree.FindPath("ROOT\\TWIG"), other);
    EXPECT_EQ(tree.FindPath("root\\none"), nullptr);
    EXPECT_EQ(tree.GetBranch().size(), 4u);
    EXPECT_EQ(tree.GetBranch(tree.GetParentItem(leaf)).size(), 2u);
    tree.SetItemData(leaf, 9);
    EXPECT_EQ(tree.GetItemData(leaf), 9);
    tree.SelectItem(other);
    EXPECT_EQ(tree.GetSelectedItem(), other);
    EXPECT_EQ(tree.DeleteAllItems(), 1);
    EXPECT_EQ(tree.GetCount(), 0);

    SCheckTreeViewCtrl checks;
    ASSERT_EQ(checks.Create(0, kPlace, &parent, 2), 1);
    const HTREEITEM top = checks.InsertItem("top");
    const HTREEITEM below = checks.InsertItem("below", top);
    checks.CheckBranch(top);
    EXPECT_EQ(checks.GetCheck(below), 1);
    checks.SetCheck(top, 0);
    EXPECT_EQ(checks.GetCheck(top), 0);
    EXPECT_EQ(checks.GetCheck(below), 1);

    SPathPickTreeViewCtrl pick('/');
    ASSERT_EQ(pick.Create(0, kPlace, &parent, 3), 1);
    EXPECT_EQ(pick.SetPaths({"a/b", "a/c", "A/B", ""}), 2);
    EXPECT_EQ(pick.PickPath("a/c"), 1);
    EXPECT_STREQ(pick.GetPickedPath(), "a/c");
    EXPECT_EQ(pick.PickPath("a/d"), 0);
}

TEST_F(Controls, Bars) {
    SToolBarCtrl tools;
    if (IsThere(TOOLBARCLASSNAMEA, tools.Create(0, kPlace, &parent, 1))) {
        EXPECT_EQ(tools.AddButton(100, 0), 1);
        EXPECT_EQ(tools.AddButton(0, 0), 1);
        EXPECT_EQ(tools.AddButton(200, 1), 1);
        EXPECT_EQ(tools.ButtonCount(), 3);
        EXPECT_EQ(tools.CommandToIndex(200), 2);
        tools.EnableButton(100, 0);
        EXPECT_EQ(tools.IsButtonEnabled(100), 0);
        tools.CheckButton(200);
        EXPECT_EQ(tools.IsButtonChecked(200), 1);
    }
    STabCtrl tabs;
    if (IsThere(WC_TABCONTROLA, tabs.Create(0, kPlace, &parent, 2))) {
        EXPECT_EQ(tabs.InsertItem(0, "one", 4), 0);
        EXPECT_EQ(tabs.InsertItem(1, "two"), 1);
        EXPECT_STREQ(tabs.GetItemText(1), "two");
        EXPECT_EQ(tabs.GetItemData(0), 4);
        tabs.SetCurSel(1);
        EXPECT_EQ(tabs.GetCurSel(), 1);
    }
    SToolTipCtrl tips;
    if (IsThere(TOOLTIPS_CLASSA, tips.Create(&parent))) {
        EXPECT_EQ(tips.AddTool(&parent, "a tip"), 1);
        EXPECT_EQ(tips.GetToolCount(), 1);
        EXPECT_STREQ(tips.GetText(&parent), "a tip");
        tips.UpdateTipText(&parent, "another");
        EXPECT_STREQ(tips.GetText(&parent), "another");
        tips.DelTool(&parent);
        EXPECT_EQ(tips.GetToolCount(), 0);
        const RECT place{0, 0, 20, 20};
        EXPECT_EQ(tips.AddTool(&parent, "of a place", &place), 1);
        EXPECT_STREQ(tips.GetText(&parent), "of a place");
        tips.UpdateTipText(&parent, "another");
        EXPECT_STREQ(tips.GetText(&parent), "another");
        tips.DelTool(&parent);
        EXPECT_EQ(tips.GetToolCount(), 0);
    }
    SRebarCtrl bands;
    if (IsThere(REBARCLASSNAMEA, bands.Create(0, kPlace, &parent, 3))) {
        SWnd child;
        ASSERT_EQ(child.Create("S_CtrlWnd", "", 0, kPlace, &bands, 1), 1);
        EXPECT_EQ(bands.InsertBand(-1, &child, 30, 20), 1);
        EXPECT_EQ(bands.GetBandCount(), 1);
        EXPECT_EQ(bands.DeleteBand(0), 1);
    }
}

TEST_F(Controls, Values) {
    SSliderCtrl slider;
    if (IsThere(TRACKBAR_CLASSA, slider.Create(0, kPlace, &parent, 1))) {
        slider.SetRange(10, 20);
        slider.SetPos(15);
        EXPECT_EQ(slider.GetPos(), 15);
        slider.SetPos(50);
        EXPECT_EQ(slider.GetPos(), 20);
        EXPECT_EQ(slider.GetRangeMin(), 10);
    }
    SSpinButtonCtrl spin;
    if (IsThere(UPDOWN_CLASSA, spin.Create(0, kPlace, &parent, 2))) {
        spin.SetRange(-5, 5);
        spin.SetPos(3);
        EXPECT_EQ(spin.GetPos(), 3);
        int lower = 0, upper = 0;
        spin.GetRange(&lower, &upper);
        EXPECT_EQ(lower, -5);
        EXPECT_EQ(upper, 5);
    }
    SScrollBar bar;
    if (IsThere("SCROLLBAR", bar.Create(0, kPlace, &parent, 3))) {
        bar.SetScrollRange(0, 100000);
        EXPECT_EQ(bar.SetScrollPos(70000), 0);
        EXPECT_EQ(bar.GetScrollPos(), 70000);
        int lower = 0, upper = 0;
        bar.GetScrollRange(&lower, &upper);
        EXPECT_EQ(upper, 100000);
    }
    SDateTimeCtrl date;
    if (IsThere(DATETIMEPICK_CLASSA, date.Create(0, kPlace, &parent, 4))) {
        SYSTEMTIME time{};
        time.wYear = 2020;
        time.wMonth = 2;
        time.wDay = 29;
        EXPECT_EQ(date.SetTime(&time), 1);
        SYSTEMTIME got{};
        EXPECT_EQ(date.GetTime(&got), GDT_VALID);
        EXPECT_EQ(got.wYear, 2020);
        EXPECT_EQ(got.wDay, 29);
    }
    SAnimateCtrl film;
    if (IsThere(ANIMATE_CLASSA, film.Create(0, kPlace, &parent, 5))) {
        EXPECT_EQ(film.Open("no such film"), 0);
    }
    SStaticCtrl text;
    if (IsThere("STATIC", text.Create("hello", 0, kPlace, &parent))) {
        EXPECT_STREQ(text.GetWindowText(), "hello");
    }
}

}  // namespace
