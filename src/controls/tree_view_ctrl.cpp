#include <brcore8/controls/tree_view_ctrl.h>

#include <map>
#include <string>
#include <utility>

SIMPLEMENT_CREATABLE(STreeViewCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(STreeViewExCtrl, STreeViewCtrl, 2);
SIMPLEMENT_CREATABLE(SCheckTreeViewCtrl, STreeViewCtrl, 2);
SIMPLEMENT_MESSAGE_MAP(SCheckTreeViewCtrl, STreeViewCtrl,
                       SOnMessage<&SCheckTreeViewCtrl::OnClick>(WM_LBUTTONDOWN),
                       SOnMessage<&SCheckTreeViewCtrl::OnClick>(WM_LBUTTONDBLCLK),
                       SOnMessage<&SCheckTreeViewCtrl::OnKey>(WM_KEYDOWN));
SIMPLEMENT_CLASS(SPathPickTreeViewCtrl, STreeViewCtrl, 2);

// --- Items --------------------------------------------------------------------------------------

HTREEITEM STreeViewCtrl::InsertItem(const char* text, HTREEITEM parent, HTREEITEM after,
                                    LPARAM data) {
    TVINSERTSTRUCTA insert{};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = const_cast<char*>(text);
    insert.item.lParam = data;
    return InsertItem(insert);
}

// The control does not tell how long a text is: the room grows until it fits.
SString STreeViewCtrl::GetItemText(HTREEITEM handle) const {
    std::vector<char> text(256);
    for (;;) {
        TVITEMA item{};
        item.mask = TVIF_HANDLE | TVIF_TEXT;
        item.hItem = handle;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        if (!GetItem(&item)) return SString();
        const std::string_view got(item.pszText);
        if (got.size() + 1 < text.size() || text.size() >= 0x100000) return SString(got);
        text.assign(text.size() * 4, '\0');
    }
}

int STreeViewCtrl::SetItemText(HTREEITEM handle, const char* text) {
    TVITEMA item{};
    item.mask = TVIF_HANDLE | TVIF_TEXT;
    item.hItem = handle;
    item.pszText = const_cast<char*>(text);
    return SetItem(item);
}

LPARAM STreeViewCtrl::GetItemData(HTREEITEM handle) const {
    TVITEMA item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM;
    item.hItem = handle;
    return GetItem(&item) ? item.lParam : 0;
}

int STreeViewCtrl::SetItemData(HTREEITEM handle, LPARAM data) {
    TVITEMA item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM;
    item.hItem = handle;
    item.lParam = data;
    return SetItem(item);
}

int STreeViewCtrl::SetItemState(HTREEITEM handle, UINT state, UINT mask) {
    TVITEMA item{};
    item.mask = TVIF_HANDLE | TVIF_STATE;
    item.hItem = handle;
    item.state = state;
    item.stateMask = mask;
    return SetItem(item);
}

// --- Paths --------------------------------------------------------------------------------------

namespace {

// An item and what is below it, parents first: by siblings and parents, not by recursion.
std::vector<HTREEITEM> BranchOf(const STreeViewCtrl& tree, HTREEITEM top) {
    std::vector<HTREEITEM> items;
    HTREEITEM at = top == TVI_ROOT ? tree.GetRootItem() : top;
    const HTREEITEM stop = top == TVI_ROOT ? nullptr : top;
    while (at != nullptr) {
        items.push_back(at);
        if (const HTREEITEM child = tree.GetChildItem(at)) {
            at = child;
            continue;
        }
        HTREEITEM next = nullptr;
        while (at != nullptr && at != stop && (next = tree.GetNextSiblingItem(at)) == nullptr)
            at = tree.GetParentItem(at);
        if (at == stop) break;
        at = next;
    }
    return items;
}

SString PathOf(const STreeViewCtrl& tree, HTREEITEM item, char separator) {
    SString path;
    for (; item != nullptr; item = tree.GetParentItem(item)) {
        const SString text = tree.GetItemText(item);
        path = path.LengthByte() == 0 ? text : text + separator + path;
    }
    return path;
}

HTREEITEM ChildOf(const STreeViewCtrl& tree, HTREEITEM parent, const SString& text) {
    HTREEITEM item = parent == TVI_ROOT ? tree.GetRootItem() : tree.GetChildItem(parent);
    while (item != nullptr && tree.GetItemText(item).CompareNoCase(text) != 0)
        item = tree.GetNextSiblingItem(item);
    return item;
}

// The item of a path; `child` answers with an item's of that text, or with null.
template <class Child>
HTREEITEM FollowPath(std::string_view path, char separator, Child child) {
    HTREEITEM item = TVI_ROOT;
    while (!path.empty() && item != nullptr) {
        const std::size_t end = path.find(separator);
        const SString part(path.substr(0, end));
        path = end != std::string_view::npos ? path.substr(end + 1) : std::string_view();
        if (part.LengthByte() == 0) continue;
        item = child(item, part);
    }
    return item != TVI_ROOT ? item : nullptr;
}

HTREEITEM FoundPath(const STreeViewCtrl& tree, std::string_view path, char separator) {
    return FollowPath(path, separator, [&tree](HTREEITEM parent, const SString& part) {
        return ChildOf(tree, parent, part);
    });
}

}  // namespace

SString STreeViewExCtrl::GetPath(HTREEITEM item, char separator) const {
    return PathOf(*this, item, separator);
}

HTREEITEM STreeViewExCtrl::FindPath(std::string_view path, char separator) const {
    return FoundPath(*this, path, separator);
}

HTREEITEM STreeViewExCtrl::InsertPath(std::string_view path, char separator) {
    return FollowPath(path, separator, [this](HTREEITEM parent, const SString& part) {
        const HTREEITEM child = ChildOf(*this, parent, part);
        return child != nullptr ? child : InsertItem(part, parent);
    });
}

std::vector<HTREEITEM> STreeViewExCtrl::GetBranch(HTREEITEM item) const {
    return BranchOf(*this, item);
}

void STreeViewExCtrl::ExpandBranch(HTREEITEM item, UINT how) {
    for (const HTREEITEM each : GetBranch(item))
        Expand(each, how);
}

// --- Checks -------------------------------------------------------------------------------------

namespace {

constexpr UINT StateImage(int number) {
    return static_cast<UINT>(number) << 12;
}

}  // namespace

int SCheckTreeViewCtrl::Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
    return STreeViewCtrl::Create(style | TVS_CHECKBOXES, place, parent, id);
}

int SCheckTreeViewCtrl::GetCheck(HTREEITEM item) const {
    return GetItemState(item, TVIS_STATEIMAGEMASK) == StateImage(2);
}

int SCheckTreeViewCtrl::SetCheck(HTREEITEM item, int on) {
    return SetItemState(item, StateImage(on ? 2 : 1), TVIS_STATEIMAGEMASK);
}

void SCheckTreeViewCtrl::CheckBranch(HTREEITEM item, int on) {
    for (const HTREEITEM each : BranchOf(*this, item))
        SetCheck(each, on);
}

// The control turns the check of the item that `find` tells, if any, and what is below follows. Who
// is told of the click may change the tree or end it: only an item that is found again is there.
template <class Find>
LRESULT SCheckTreeViewCtrl::Follow(Find find) {
    const HWND handle = GetHandle();
    const HTREEITEM item = find();
    const int before = item != nullptr ? GetCheck(item) : 0;
    const LRESULT result = Default();
    if (item == nullptr || FromHandlePermanent(handle) != this || find() != item) return result;
    if (const int now = GetCheck(item); now != before) CheckBranch(item, now);
    return result;
}

LRESULT SCheckTreeViewCtrl::OnClick(WPARAM, LPARAM place) {
    return Follow([this, place] {
        TVHITTESTINFO hit{};
        hit.pt = {static_cast<std::int16_t>(LOWORD(place)),
                  static_cast<std::int16_t>(HIWORD(place))};
        return HitTest(&hit);
    });
}

LRESULT SCheckTreeViewCtrl::OnKey(WPARAM key, LPARAM) {
    if (key != VK_SPACE) return Default();
    return Follow([this] { return GetSelectedItem(); });
}

// --- Picking ------------------------------------------------------------------------------------

int SPathPickTreeViewCtrl::SetPaths(const std::vector<SString>& paths) {
    DeleteAllItems();
    int shown = 0;
    // The control would be asked for each text of each item's neighbours.
    std::map<std::pair<HTREEITEM, std::string>, HTREEITEM> made;
    for (const SString& path : paths) {
        bool isNew = false;
        FollowPath(path.View(), separator_, [&](HTREEITEM parent, const SString& part) {
            SString folded = part;
            folded.ToLower();
            HTREEITEM& item = made[{parent, std::string(folded.View())}];
            if (item == nullptr) {
                item = InsertItem(part, parent);
                isNew = item != nullptr;
            }
            return item;
        });
        shown += isNew;
    }
    return shown;
}

SString SPathPickTreeViewCtrl::GetPickedPath() const {
    return PathOf(*this, GetSelectedItem(), separator_);
}

int SPathPickTreeViewCtrl::PickPath(std::string_view path) {
    const HTREEITEM item = FoundPath(*this, path, separator_);
    if (item == nullptr) return 0;
    EnsureVisible(item);
    return SelectItem(item);
}
