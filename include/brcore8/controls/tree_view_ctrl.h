// Wrappers of the platform's tree view: the plain one, one with conveniences, one whose items have
// checks, and one that picks a path.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the class (ERROR_CANNOT_FIND_WND_CLASS) or
// refuses; the other operations answer what the control does.
#ifndef BRCORE8_CONTROLS_TREE_VIEW_CTRL_H
#define BRCORE8_CONTROLS_TREE_VIEW_CTRL_H

#include <brcore8/graphics/image_list.h>
#include <brcore8/window/wnd.h>

#include <string_view>
#include <vector>

class BRCORE8_API STreeViewCtrl : public SWnd {
    SDECLARE_CREATABLE(STreeViewCtrl);

public:
    // A "SysTreeView32" of the style TVS_...
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(WC_TREEVIEWA, nullptr, style, place, parent, id);
    }

    // --- Items ----------------------------------------------------------------------------------

    int GetCount() const { return Ask(TVM_GETCOUNT); }
    // Null when refused. TVI_ROOT stands for what is above the first items; TVI_FIRST, TVI_LAST and
    // TVI_SORT tell where among its siblings it goes.
    HTREEITEM InsertItem(const TVINSERTSTRUCTA& insert) {
        return Ask<HTREEITEM>(TVM_INSERTITEMA, 0, &insert);
    }
    HTREEITEM InsertItem(const char* text, HTREEITEM parent = TVI_ROOT, HTREEITEM after = TVI_LAST,
                         LPARAM data = 0);
    // With all that is below it; TVI_ROOT is everything.
    int DeleteItem(HTREEITEM item) { return Ask(TVM_DELETEITEM, 0, item); }
    int DeleteAllItems() { return DeleteItem(TVI_ROOT); }
    int GetItem(TVITEMA* item) const { return Ask(TVM_GETITEMA, 0, item); }
    int SetItem(const TVITEMA& item) { return Ask(TVM_SETITEMA, 0, &item); }
    SString GetItemText(HTREEITEM item) const;
    int SetItemText(HTREEITEM item, const char* text);
    LPARAM GetItemData(HTREEITEM item) const;
    int SetItemData(HTREEITEM item, LPARAM data);
    UINT GetItemState(HTREEITEM item, UINT mask) const {
        return Ask<UINT>(TVM_GETITEMSTATE, item, mask) & mask;
    }
    int SetItemState(HTREEITEM item, UINT state, UINT mask);
    int SortChildren(HTREEITEM parent) { return Ask(TVM_SORTCHILDREN, 0, parent); }

    // --- Walking --------------------------------------------------------------------------------

    HTREEITEM GetNextItem(HTREEITEM item, UINT which) const {
        return Ask<HTREEITEM>(TVM_GETNEXTITEM, which, item);
    }
    HTREEITEM GetRootItem() const { return GetNextItem(nullptr, TVGN_ROOT); }
    HTREEITEM GetChildItem(HTREEITEM item) const { return GetNextItem(item, TVGN_CHILD); }
    HTREEITEM GetNextSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_NEXT); }
    HTREEITEM GetPrevSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PREVIOUS); }
    HTREEITEM GetParentItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PARENT); }
    HTREEITEM GetSelectedItem() const { return GetNextItem(nullptr, TVGN_CARET); }

    // --- Selection, place and look --------------------------------------------------------------

    int SelectItem(HTREEITEM item) { return Ask(TVM_SELECTITEM, TVGN_CARET, item); }
    // TVE_EXPAND, TVE_COLLAPSE or TVE_TOGGLE.
    int Expand(HTREEITEM item, UINT how = TVE_EXPAND) { return Ask(TVM_EXPAND, how, item); }
    int EnsureVisible(HTREEITEM item) { return Ask(TVM_ENSUREVISIBLE, 0, item); }
    HTREEITEM HitTest(TVHITTESTINFO* info) const { return Ask<HTREEITEM>(TVM_HITTEST, 0, info); }
    int GetVisibleCount() const { return Ask(TVM_GETVISIBLECOUNT); }
    SWnd* EditLabel(HTREEITEM item) { return FromHandle(Ask<HWND>(TVM_EDITLABELA, 0, item)); }
    UINT GetIndent() const { return Ask<UINT>(TVM_GETINDENT); }
    void SetIndent(int pixels) { Ask(TVM_SETINDENT, pixels); }
    SImageList* SetImageList(const SImageList* images, int which = TVSIL_NORMAL) {
        return SImageList::FromHandle(Ask<HIMAGELIST>(
            TVM_SETIMAGELIST, which, images != nullptr ? images->GetHandle() : nullptr));
    }
};

// Items found by their paths: the texts from the first item down, with a separator between them.
class BRCORE8_API STreeViewExCtrl : public STreeViewCtrl {
    SDECLARE_CREATABLE(STreeViewExCtrl);

public:
    STreeViewExCtrl() noexcept = default;

    SString GetPath(HTREEITEM item, char separator = '\\') const;
    // Null when there is none; texts in any case.
    HTREEITEM FindPath(std::string_view path, char separator = '\\') const;
    // Adds what is missing of it. Null when the control refuses.
    HTREEITEM InsertPath(std::string_view path, char separator = '\\');
    // The item and all that are below it, parents first; TVI_ROOT is every item.
    std::vector<HTREEITEM> GetBranch(HTREEITEM item = TVI_ROOT) const;
    void ExpandBranch(HTREEITEM item = TVI_ROOT, UINT how = TVE_EXPAND);
};

// A tree view with a check box before each item; when the user checks one, by a click or by Space,
// all below it are checked too, and so with the check's end.
class BRCORE8_API SCheckTreeViewCtrl : public STreeViewCtrl {
    SDECLARE_CREATABLE(SCheckTreeViewCtrl);
    SDECLARE_MESSAGE_MAP(SCheckTreeViewCtrl);

public:
    using STreeViewCtrl::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id);

    int GetCheck(HTREEITEM item) const;
    // The item alone.
    int SetCheck(HTREEITEM item, int on = 1);
    // The item and what is below it.
    void CheckBranch(HTREEITEM item, int on = 1);

private:
    template <class Find>
    LRESULT Follow(Find find);
    LRESULT OnClick(WPARAM, LPARAM place);
    LRESULT OnKey(WPARAM key, LPARAM);
};

// A tree view that shows a list of paths, of which the user picks one.
class BRCORE8_API SPathPickTreeViewCtrl : public STreeViewCtrl {
    SDECLARE_CLASS(SPathPickTreeViewCtrl);

public:
    explicit SPathPickTreeViewCtrl(char separator) noexcept : separator_(separator) {}

    // In the place of those shown. How many paths are shown: one that is there already, and an
    // empty one, are passed over.
    int SetPaths(const std::vector<SString>& paths);
    // The path that the selected item stands for; empty when none is selected.
    SString GetPickedPath() const;
    // Selects it, and opens what is above it; 0 when it is not there.
    int PickPath(std::string_view path);

private:
    char separator_;
};

#endif
