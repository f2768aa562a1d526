// What the wrappers of the tree view do beyond the control, by a tree of the test's own: this
// platform has none.

#include <brcore8/controls/tree_view_ctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr UINT kUnchecked = 0x1000;
constexpr UINT kChecked = 0x2000;
constexpr int kRow = 10;

struct Item {
    std::string text;
    Item* parent = nullptr;
    UINT state = kUnchecked;
    std::vector<std::unique_ptr<Item>> children;
};

// One tree: its items, those that a row shows, and how often each message came.
struct Tree {
    Item root;
    std::vector<Item*> rows;
    Item* selected = nullptr;
    std::map<UINT, int> asked;
    std::function<void()> told;  // of a click, before the check turns
};
Tree* theTree = nullptr;

Item* Neighbour(Item* item, UINT which) {
    if (which == TVGN_ROOT) item = &theTree->root;
    if (which == TVGN_ROOT || which == TVGN_CHILD)
        return item->children.empty() ? nullptr : item->children.front().get();
    if (which == TVGN_CARET) return theTree->selected;
    if (which == TVGN_PARENT) return item->parent != &theTree->root ? item->parent : nullptr;
    const auto& all = item->parent->children;
    const auto at = std::find_if(all.begin(), all.end(),
                                 [item](const auto& each) { return each.get() == item; });
    return std::next(at) != all.end() ? std::next(at)->get() : nullptr;
}

Item* Insert(const TVINSERTSTRUCTA& insert) {
    Item* const parent = insert.hParent == TVI_ROOT || insert.hParent == nullptr
                             ? &theTree->root
                             : reinterpret_cast<Item*>(insert.hParent);
    parent->children.push_back(std::make_unique<Item>());
    Item* const made = parent->children.back().get();
    made->text = insert.item.pszText;
    made->parent = parent;
    theTree->rows.push_back(made);
    return made;
}

void Turn(HWND window, Item* item) {
    if (const auto once = std::exchange(theTree->told, nullptr)) once();
    if (!IsWindow(window) || std::ranges::find(theTree->rows, item) == theTree->rows.end()) return;
    item->state = item->state == kChecked ? kUnchecked : kChecked;
}

Item* RowAt(int y) {
    const auto row = static_cast<std::size_t>(y / kRow);
    return row < theTree->rows.size() ? theTree->rows[row] : nullptr;
}

LRESULT CALLBACK TreeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ++theTree->asked[message];
    switch (message) {
        case TVM_INSERTITEMA:
            return reinterpret_cast<LRESULT>(
                Insert(*reinterpret_cast<const TVINSERTSTRUCTA*>(lParam)));
        case TVM_DELETEITEM:
            theTree->rows.clear();
            theTree->root.children.clear();
            return 1;
        case TVM_GETNEXTITEM:
            return reinterpret_cast<LRESULT>(
                Neighbour(reinterpret_cast<Item*>(lParam), static_cast<UINT>(wParam)));
        case TVM_GETITEMA: {
            auto& asked = *reinterpret_cast<TVITEMA*>(lParam);
            const auto& text = reinterpret_cast<Item*>(asked.hItem)->text;
            text.copy(asked.pszText, text.size() + 1);
            asked.pszText[text.size()] = '\0';
            return 1;
        }
        case TVM_SETITEMA: {
            const auto& wanted = *reinterpret_cast<const TVITEMA*>(lParam);
            reinterpret_cast<Item*>(wanted.hItem)->state = wanted.state & wanted.stateMask;
            return 1;
        }
        case TVM_GETITEMSTATE:
            return static_cast<LRESULT>(reinterpret_cast<Item*>(wParam)->state);
        case TVM_HITTEST: {
            auto& hit = *reinterpret_cast<TVHITTESTINFO*>(lParam);
            hit.hItem = reinterpret_cast<HTREEITEM>(RowAt(hit.pt.y));
            return reinterpret_cast<LRESULT>(hit.hItem);
        }
        case TVM_SELECTITEM:
            theTree->selected = reinterpret_cast<Item*>(lParam);
            return 1;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            // On its text a click turns no check.
            if (LOWORD(lParam) < kRow && RowAt(HIWORD(lParam)) != nullptr)
                Turn(window, RowAt(HIWORD(lParam)));
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_SPACE && theTree->selected != nullptr) Turn(window, theTree->selected);
            return 0;
        default:
            return DefWindowProcA(window, message, wParam, lParam);
    }
}

class Trees : public testing::Test {
protected:
    void SetUp() override {
        theTree = &tree;
        WNDCLASSEXA info{};
        info.cbSize = sizeof info;
        info.style = CS_GLOBALCLASS;
        info.lpfnWndProc = &TreeProcedure;
        info.lpszClassName = WC_TREEVIEWA;
        ASSERT_NE(RegisterClassExA(&info), 0);
        ASSERT_EQ(parent.CreateEx(0, "S_CliDrawWnd", "", WS_POPUP | WS_VISIBLE, 10, 10, 300, 200),
                  1);
    }
    void TearDown() override {
        parent.DestroyWindow();
        EXPECT_TRUE(UnregisterClassA(WC_TREEVIEWA, nullptr));
    }

    Tree tree;
    SWnd parent;
};

constexpr RECT kPlace{0, 0, 200, 100};

TEST_F(Trees, PathsAreShownWithoutAskingForTheTextsOfAll) {
    std::vector<SString> paths;
    for (int i = 0; i < 500; ++i)
        paths.push_back(("top/Name" + std::to_string(i)).c_str());
    // Those again, in another case, and what is part of a longer one.
    for (int i = 0; i < 500; ++i)
        paths.push_back(("TOP//nAME" + std::to_string(i)).c_str());
    paths.push_back("top");
    paths.push_back("top/Name7/leaf");
    paths.push_back("Name7/leaf");
    SPathPickTreeViewCtrl pick('/');
    ASSERT_EQ(pick.Create(0, kPlace, &parent, 1), 1);
    EXPECT_EQ(pick.SetPaths(paths), 502);
    EXPECT_EQ(tree.rows.size(), 504u);
    EXPECT_EQ(tree.asked[TVM_GETITEMA], 0);
    ASSERT_EQ(pick.PickPath("TOP/name7/LEAF"), 1);
    EXPECT_STREQ(pick.GetPickedPath(), "top/Name7/leaf");
    EXPECT_EQ(pick.SetPaths({"Name7"}), 1);
    EXPECT_EQ(tree.rows.size(), 1u);
}

class CheckTrees : public Trees {
protected:
    void SetUp() override {
        Trees::SetUp();
        ASSERT_EQ(checks.Create(0, kPlace, &parent, 1), 1);
        items.push_back(checks.InsertItem("top"));
        items.push_back(checks.InsertItem("below", items[0]));
        items.push_back(checks.InsertItem("far below", items[1]));
        items.push_back(checks.InsertItem("beside"));
    }
    void TearDown() override {
        checks.DestroyWindow();
        Trees::TearDown();
    }
    // Like "1101".
    std::string Checks() const {
        std::string shown;
        for (const HTREEITEM item : items)
            shown += checks.GetCheck(item) ? '1' : '0';
        return shown;
    }

    SCheckTreeViewCtrl checks;
    std::vector<HTREEITEM> items;
};

TEST_F(CheckTrees, WhatTheUserChecksIsCheckedWithAllBelow) {
    const auto on = [](int row) { return MAKELPARAM(2, row * kRow + 5); };
    const struct {
        const char* name;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
        const char* checks;
    } steps[] = {
        {"check", WM_LBUTTONDOWN, MK_LBUTTON, on(0), "1110"},
        {"one below", WM_LBUTTONDOWN, MK_LBUTTON, on(1), "1000"},
        {"beside, fast", WM_LBUTTONDBLCLK, MK_LBUTTON, on(3), "1001"},
        {"text", WM_LBUTTONDOWN, MK_LBUTTON, on(0) + 50, "1001"},
        {"nothing", WM_LBUTTONDOWN, MK_LBUTTON, on(7), "1001"},
        {"space", WM_KEYDOWN, VK_SPACE, 0, "1111"},
        {"another key", WM_KEYDOWN, VK_DOWN, 0, "1111"},
        {"off", WM_LBUTTONDOWN, MK_LBUTTON, on(0), "0001"},
    };
    checks.SelectItem(items[1]);
    for (const auto& step : steps) {
        checks.SendMessage(step.message, step.wParam, step.lParam);
        EXPECT_EQ(Checks(), step.checks) << step.name;
    }
    checks.SetCheck(items[0]);
    EXPECT_EQ(Checks(), "1001");
}

TEST_F(CheckTrees, WhoIsToldOfAClickMayEndTheTree) {
    tree.told = [this] { checks.DeleteAllItems(); };
    checks.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    EXPECT_TRUE(tree.rows.empty());
    checks.InsertItem("again");
    tree.told = [this] { checks.DestroyWindow(); };
    checks.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
    EXPECT_EQ(checks.GetHandle(), nullptr);
}

}  // namespace
