// Menus and their items: what the platform's calls make of them, through the wrapper.

#include <brcore8/window/menu.h>
#include <brcore8/window/wnd.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr UINT kNone = static_cast<UINT>(-1);

// The items as a text: id, marks for grey, disabled, checked, radio, default, and the label; a
// popup with its items in brackets.
std::string Show(HMENU menu) {
    std::string text;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        if (i > 0) text += ' ';
        char label[40] = "";
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_STATE | MIIM_ID | MIIM_FTYPE | MIIM_SUBMENU | MIIM_STRING;
        info.dwTypeData = label;
        info.cch = sizeof label;
        if (!GetMenuItemInfoA(menu, static_cast<UINT>(i), 1, &info)) return text + "?";
        if (info.fType & MFT_SEPARATOR) {
            text += '-';
            continue;
        }
        if (info.hSubMenu == nullptr) text += std::to_string(info.wID);
        if (info.fState & MF_GRAYED) text += 'g';
        if (info.fState & MF_DISABLED) text += 'd';
        if (info.fState & MFS_CHECKED) text += 'c';
        if (info.fType & MFT_RADIOCHECK) text += 'r';
        if (info.fState & MFS_DEFAULT) text += '!';
        text += label;
        if (info.hSubMenu != nullptr) text.append("[").append(Show(info.hSubMenu)).append("]");
    }
    return text;
}

// 1A 2B - [File: 10New 11Open] 3C
class Menus : public testing::Test {
protected:
    Menus() {
        menu.CreatePopupMenu();
        sub.CreatePopupMenu();
        EXPECT_TRUE(sub.AppendMenu(MF_STRING, 10, "New"));
        EXPECT_TRUE(sub.AppendMenu(MF_STRING, 11, "Open"));
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, 1, "A"));
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, 2, "B"));
        EXPECT_TRUE(menu.AppendMenu(MF_SEPARATOR));
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, sub, "File"));
        EXPECT_TRUE(menu.AppendMenu(MF_STRING, 3, "C"));
    }
    void TearDown() override { SMenu::DeleteTempMap(); }
    std::string Now() const { return Show(menu.GetHandle()); }

    SMenu menu, sub;
};

TEST_F(Menus, ItemsAreAddedChangedAndTakenOut) {
    EXPECT_EQ(Now(), "1A 2B - File[10New 11Open] 3C");
    // Each row acts on what the one before left.
    const struct {
        const char* name;
        BOOL (*act)(HMENU);
        BOOL result;
        const char* after;
    } rows[] = {
        {"before a position",
         [](HMENU m) { return InsertMenuA(m, 1, MF_BYPOSITION | MF_CHECKED, 4, "D"); }, 1,
         "1A 4cD 2B - File[10New 11Open] 3C"},
        {"before a command", [](HMENU m) { return InsertMenuA(m, 3, MF_GRAYED, 5, "E"); }, 1,
         "1A 4cD 2B - File[10New 11Open] 5gE 3C"},
        {"before a command in a popup", [](HMENU m) { return InsertMenuA(m, 11, 0, 12, "Save"); },
         1, "1A 4cD 2B - File[10New 12Save 11Open] 5gE 3C"},
        {"behind the end", [](HMENU m) { return InsertMenuA(m, 99, MF_BYPOSITION, 6, "F"); }, 1,
         "1A 4cD 2B - File[10New 12Save 11Open] 5gE 3C 6F"},
        {"changed", [](HMENU m) { return ModifyMenuA(m, 4, MF_BYCOMMAND, 40, "DD"); }, 1,
         "1A 40DD 2B - File[10New 12Save 11Open] 5gE 3C 6F"},
        {"nothing to change", [](HMENU m) { return ModifyMenuA(m, 99, MF_BYCOMMAND, 40, "D"); }, 0,
         "1A 40DD 2B - File[10New 12Save 11Open] 5gE 3C 6F"},
        {"deleted below", [](HMENU m) { return DeleteMenu(m, 12, MF_BYCOMMAND); }, 1,
         "1A 40DD 2B - File[10New 11Open] 5gE 3C 6F"},
        {"deleted by position", [](HMENU m) { return DeleteMenu(m, 1, MF_BYPOSITION); }, 1,
         "1A 2B - File[10New 11Open] 5gE 3C 6F"},
        {"nothing to delete", [](HMENU m) { return DeleteMenu(m, 7, MF_BYPOSITION); }, 0,
         "1A 2B - File[10New 11Open] 5gE 3C 6F"},
        {"removed", [](HMENU m) { return RemoveMenu(m, 5, MF_BYCOMMAND); }, 1,
         "1A 2B - File[10New 11Open] 3C 6F"},
        {"no text is a separator", [](HMENU m) { return AppendMenuA(m, 0, 7, nullptr); }, 1,
         "1A 2B - File[10New 11Open] 3C 6F -"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.act(menu.GetHandle()) != 0, row.result != 0);
        EXPECT_EQ(Now(), row.after);
    }
}

TEST_F(Menus, QuestionsAreAnswered) {
    EXPECT_EQ(menu.GetMenuItemCount(), 5);
    EXPECT_EQ(menu.GetMenuItemID(0), 1u);
    EXPECT_EQ(menu.GetMenuItemID(3), kNone) << "a popup";
    EXPECT_EQ(menu.GetMenuItemID(5), kNone);
    EXPECT_EQ(menu.GetMenuItemID(-1), kNone);
    EXPECT_EQ(menu.GetSubMenu(3), &sub);
    EXPECT_EQ(menu.GetSubMenu(0), nullptr);
    EXPECT_STREQ(menu.GetMenuString(11, MF_BYCOMMAND), "Open");
    EXPECT_STREQ(menu.GetMenuString(3, MF_BYPOSITION), "File");
    EXPECT_STREQ(menu.GetMenuString(99, MF_BYCOMMAND), "");
    EXPECT_EQ(menu.GetMenuState(99, MF_BYCOMMAND), kNone);
    EXPECT_EQ(menu.GetMenuState(2, MF_BYPOSITION) & MF_SEPARATOR, unsigned{MF_SEPARATOR});
    EXPECT_EQ(menu.GetMenuState(3, MF_BYPOSITION), 2u << 8 | MF_POPUP);
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    EXPECT_TRUE(menu.GetMenuItemInfo(11, &info));
    EXPECT_EQ(info.cch, 4u);
    char cut[8] = "";
    info.dwTypeData = cut;
    EXPECT_TRUE(menu.GetMenuItemInfo(11, &info));
    EXPECT_EQ(std::string(cut, 3), "Ope") << "no more than there is room for";
    info.cbSize = 7;
    EXPECT_FALSE(menu.GetMenuItemInfo(11, &info));
    EXPECT_FALSE(menu.SetMenuItemInfo(11, &info));
    EXPECT_FALSE(menu.InsertMenuItem(11, &info));
}

TEST_F(Menus, StatesAreSetAndTheOldOnesTold) {
    EXPECT_EQ(menu.CheckMenuItem(2, MF_CHECKED), unsigned{MF_UNCHECKED});
    EXPECT_EQ(menu.CheckMenuItem(1, MF_BYPOSITION | MF_UNCHECKED), unsigned{MF_CHECKED});
    EXPECT_EQ(menu.CheckMenuItem(99, MF_CHECKED), kNone);
    EXPECT_EQ(menu.EnableMenuItem(10, MF_GRAYED), MF_ENABLED);
    EXPECT_EQ(menu.EnableMenuItem(10, MF_GRAYED), MF_GRAYED);
    EXPECT_EQ(static_cast<UINT>(menu.EnableMenuItem(99, MF_GRAYED)), kNone);
    EXPECT_NE(menu.GetMenuState(10, MF_BYCOMMAND) & MF_GRAYED, 0u);
    EXPECT_EQ(menu.EnableMenuItem(10, MF_ENABLED), MF_GRAYED);

    EXPECT_TRUE(menu.CheckMenuRadioItem(0, 1, 0, MF_BYPOSITION));
    EXPECT_EQ(Now(), "1crA 2B - File[10New 11Open] 3C");
    EXPECT_TRUE(menu.CheckMenuRadioItem(1, 2, 2, MF_BYCOMMAND));
    EXPECT_NE(menu.GetMenuState(2, MF_BYCOMMAND) & MF_CHECKED, 0u);
    EXPECT_EQ(menu.GetMenuState(1, MF_BYCOMMAND) & MF_CHECKED, 0u);
    EXPECT_TRUE(sub.CheckMenuRadioItem(10, 11, 11, MF_BYCOMMAND));
    EXPECT_NE(sub.GetMenuState(11, MF_BYCOMMAND) & MF_CHECKED, 0u);

    EXPECT_EQ(menu.GetDefaultItem(), kNone);
    EXPECT_TRUE(menu.SetDefaultItem(2));
    EXPECT_EQ(menu.GetDefaultItem(), 2u);
    EXPECT_TRUE(menu.SetDefaultItem(0, 1));
    EXPECT_EQ(menu.GetDefaultItem(), 1u);
    EXPECT_FALSE(menu.SetDefaultItem(99));
    EXPECT_TRUE(menu.SetDefaultItem(kNone));
    EXPECT_EQ(menu.GetDefaultItem(), kNone);
}

TEST_F(Menus, ThePlatformsRecordsWork) {
    char text[] = "Recent";
    SMenu recent;
    recent.CreatePopupMenu();
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_ID | MIIM_STATE | MIIM_DATA;
    info.dwTypeData = text;
    info.wID = 20;
    info.fState = MFS_CHECKED;
    info.dwItemData = 4711;
    EXPECT_TRUE(menu.InsertMenuItem(3, &info));
    EXPECT_EQ(Now(), "1A 2B - File[10New 11Open] 20cRecent 3C");
    info.fMask = MIIM_DATA;
    info.dwItemData = 0;
    EXPECT_TRUE(menu.GetMenuItemInfo(20, &info));
    EXPECT_EQ(info.dwItemData, 4711u);
    info.fMask = MIIM_STATE | MIIM_ID;
    info.fState = MFS_GRAYED;
    info.wID = 21;
    EXPECT_TRUE(menu.SetMenuItemInfo(4, &info, 1));
    EXPECT_EQ(Now(), "1A 2B - File[10New 11Open] 21gdRecent 3C");
}

// --- Whose menus are ----------------------------------------------------------------------------

TEST_F(Menus, PopupsEndWithTheirMenuUnlessTheyAreTakenOut) {
    SMenu other;
    other.CreatePopupMenu();
    const HMENU kept = other.GetHandle();
    EXPECT_TRUE(menu.AppendMenu(0, other, "Other"));
    EXPECT_TRUE(menu.RemoveMenu(5, MF_BYPOSITION));
    EXPECT_TRUE(::IsMenu(kept));
    EXPECT_TRUE(menu.DeleteMenu(3, MF_BYPOSITION));
    EXPECT_FALSE(sub.IsMenu());
    EXPECT_EQ(sub.GetMenuItemCount(), -1);
    EXPECT_TRUE(menu.AppendMenu(0, other, "Other"));
    EXPECT_TRUE(menu.DestroyMenu());
    EXPECT_FALSE(::IsMenu(kept));
    EXPECT_EQ(menu.GetHandle(), nullptr);
    EXPECT_FALSE(menu.DestroyMenu());
}

TEST_F(Menus, AWrapperDestroysWhatItMadeAndNothingElse) {
    HMENU made = nullptr;
    const HMENU attached = CreatePopupMenu();
    {
        SMenu owner, visitor;
        EXPECT_EQ(owner.CreatePopupMenu(), 1);
        made = owner.GetHandle();
        visitor.Attach(attached);
        EXPECT_EQ(SMenu::FromHandlePermanent(attached), &visitor);
        EXPECT_EQ(SMenu::FromHandle(made), &owner);
        EXPECT_EQ(owner.CreateMenu(), 1);
        EXPECT_FALSE(::IsMenu(made));
        made = owner.GetHandle();
        EXPECT_TRUE(::IsMenu(made));
    }
    EXPECT_FALSE(::IsMenu(made));
    EXPECT_TRUE(::IsMenu(attached));
    EXPECT_EQ(SMenu::FromHandlePermanent(attached), nullptr);
    EXPECT_EQ(SMenu::FromHandle(attached), SMenu::FromHandle(attached));
    DestroyMenu(attached);
}

TEST_F(Menus, AWindowTakesItsMenuWithIt) {
    SMenu bar;
    bar.CreateMenu();
    EXPECT_TRUE(bar.AppendMenu(0, menu, "Menu"));
    const HMENU handle = bar.GetHandle();
    SWnd window;
    ASSERT_EQ(window.CreateEx(0, "S_CliDrawWnd", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200), 1);
    const RECT without = window.GetClientRect();
    EXPECT_EQ(window.GetMenu(), nullptr);
    EXPECT_TRUE(window.SetMenu(&bar));
    EXPECT_EQ(window.GetMenu(), &bar);
    EXPECT_LT(window.GetClientRect().bottom, without.bottom) << "the bar takes its strip";
    EXPECT_FALSE(::SetMenu(window.GetHandle(), reinterpret_cast<HMENU>(std::intptr_t{0x7777})));
    EXPECT_EQ(window.GetMenu(), &bar);
    EXPECT_TRUE(window.SetMenu(nullptr));
    EXPECT_EQ(window.GetClientRect().bottom, without.bottom);
    EXPECT_TRUE(window.SetMenu(&bar));
    SWnd child;
    ASSERT_EQ(child.Create("S_Window", "", 0, {0, 0, 9, 9}, &window, 3), 1);
    EXPECT_FALSE(::SetMenu(child.GetHandle(), handle));
    window.DestroyWindow();
    EXPECT_FALSE(::IsMenu(handle));
    EXPECT_FALSE(sub.IsMenu());
}

// --- What programs get wrong ---------------------------------------------------------------------

TEST_F(Menus, NoMenuGetsIntoItself) {
    EXPECT_FALSE(AppendMenuA(menu.GetHandle(), MF_POPUP,
                             reinterpret_cast<UINT_PTR>(menu.GetHandle()), "Me"));
    EXPECT_FALSE(AppendMenuA(sub.GetHandle(), MF_POPUP,
                             reinterpret_cast<UINT_PTR>(menu.GetHandle()), "Above"));
    EXPECT_EQ(GetSubMenu(menu.GetHandle(), 5), nullptr);
    EXPECT_EQ(GetSubMenu(sub.GetHandle(), 2), nullptr);
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_SUBMENU;
    info.hSubMenu = menu.GetHandle();
    EXPECT_FALSE(SetMenuItemInfoA(sub.GetHandle(), 0, 1, &info));
    // Deep, and deeper than it may be.
    HMENU top = CreatePopupMenu();
    int depth = 0;
    for (; depth < 100; ++depth) {
        const HMENU outer = CreatePopupMenu();
        if (!AppendMenuA(outer, MF_POPUP, reinterpret_cast<UINT_PTR>(top), "In")) {
            DestroyMenu(outer);
            break;
        }
        top = outer;
    }
    EXPECT_GE(depth, 20);
    EXPECT_LT(depth, 100);
    EXPECT_TRUE(DestroyMenu(top));
}

TEST_F(Menus, HandlesOfNothingAreRefused) {
    SMenu gone;
    gone.CreatePopupMenu();
    const HMENU destroyed = gone.GetHandle();
    gone.DestroyMenu();
    for (const HMENU none : {HMENU{nullptr}, destroyed, reinterpret_cast<HMENU>(std::intptr_t{-8}),
                             reinterpret_cast<HMENU>(GetDesktopWindow())}) {
        SCOPED_TRACE(none);
        MENUITEMINFOA info{};
        info.cbSize = sizeof info;
        char text[4];
        EXPECT_FALSE(IsMenu(none));
        EXPECT_FALSE(DestroyMenu(none));
        EXPECT_EQ(GetMenuItemCount(none), -1);
        EXPECT_EQ(GetMenuItemID(none, 0), kNone);
        EXPECT_EQ(GetSubMenu(none, 0), nullptr);
        EXPECT_FALSE(AppendMenuA(none, 0, 1, "x"));
        // An item, but one that opens nothing.
        EXPECT_TRUE(AppendMenuA(menu.GetHandle(), MF_POPUP, reinterpret_cast<UINT_PTR>(none), "x"));
        EXPECT_EQ(GetSubMenu(menu.GetHandle(), 5), nullptr);
        EXPECT_TRUE(DeleteMenu(menu.GetHandle(), 5, MF_BYPOSITION));
        EXPECT_FALSE(ModifyMenuA(none, 0, MF_BYPOSITION, 1, "x"));
        EXPECT_FALSE(RemoveMenu(none, 0, MF_BYPOSITION));
        EXPECT_FALSE(DeleteMenu(none, 0, MF_BYPOSITION));
        EXPECT_EQ(GetMenuStringA(none, 0, text, sizeof text, MF_BYPOSITION), 0);
        EXPECT_EQ(GetMenuState(none, 0, MF_BYPOSITION), kNone);
        EXPECT_FALSE(GetMenuItemInfoA(none, 0, 1, &info));
        EXPECT_FALSE(CheckMenuRadioItem(none, 0, 0, 0, MF_BYPOSITION));
        EXPECT_FALSE(SetMenuDefaultItem(none, 0, 1));
    }
    EXPECT_EQ(menu.GetMenuItemCount(), 5);
}

}  // namespace
