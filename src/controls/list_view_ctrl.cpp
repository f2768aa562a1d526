#include <brcore8/controls/list_view_ctrl.h>

#include <vector>

SIMPLEMENT_CREATABLE(SHeaderCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SListViewCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SCheckListViewCtrl, SListViewCtrl, 2);

namespace {

constexpr int kLongestTitle = 260;

}  // namespace

// --- Titles -------------------------------------------------------------------------------------

int SHeaderCtrl::InsertItem(int index, const char* text, int width, int format) {
    HDITEMA item{};
    item.mask = HDI_TEXT | HDI_WIDTH | HDI_FORMAT;
    item.pszText = const_cast<char*>(text);
    item.cxy = width;
    item.fmt = format | HDF_STRING;
    return InsertItem(index, item);
}

int SHeaderCtrl::GetItemWidth(int index) const {
    HDITEMA item{};
    item.mask = HDI_WIDTH;
    return GetItem(index, &item) ? item.cxy : 0;
}

int SHeaderCtrl::SetItemWidth(int index, int width) {
    HDITEMA item{};
    item.mask = HDI_WIDTH;
    item.cxy = width;
    return SetItem(index, item);
}

SString SHeaderCtrl::GetItemText(int index) const {
    char text[kLongestTitle] = {};
    HDITEMA item{};
    item.mask = HDI_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    return GetItem(index, &item) ? SString(text) : SString();
}

// --- Items --------------------------------------------------------------------------------------

int SListViewCtrl::InsertItem(int index, const char* text, int image, LPARAM data) {
    LVITEMA item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    if (image >= 0) item.mask |= LVIF_IMAGE;
    item.iItem = index;
    item.pszText = const_cast<char*>(text);
    item.iImage = image;
    item.lParam = data;
    return InsertItem(item);
}

// The control does not tell how long a text is: the room grows until it fits.
SString SListViewCtrl::GetItemText(int index, int column) const {
    std::vector<char> text(256);
    for (;;) {
        LVITEMA item{};
        item.iSubItem = column;
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        const int length = Ask(LVM_GETITEMTEXTA, index, &item);
        if (length + 1 < item.cchTextMax || text.size() >= 0x100000)
            return SString(item.pszText, length > 0 ? length : 0);
        text.resize(text.size() * 4);
    }
}

int SListViewCtrl::SetItemText(int index, int column, const char* text) {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text);
    return Ask(LVM_SETITEMTEXTA, index, &item);
}

LPARAM SListViewCtrl::GetItemData(int index) const {
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    return GetItem(&item) ? item.lParam : 0;
}

int SListViewCtrl::SetItemData(int index, LPARAM data) {
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    item.lParam = data;
    return SetItem(item);
}

int SListViewCtrl::SetItemState(int index, UINT state, UINT mask) {
    LVITEMA item{};
    item.state = state;
    item.stateMask = mask;
    return Ask(LVM_SETITEMSTATE, index, &item);
}

int SListViewCtrl::InsertColumn(int index, const char* text, int width, int format) {
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = const_cast<char*>(text);
    column.cx = width;
    column.fmt = format;
    return InsertColumn(index, column);
}

// --- Checks -------------------------------------------------------------------------------------

namespace {

// A state image is kept above the other bits; the first is the empty box, the second the checked.
constexpr UINT StateImage(int number) {
    return static_cast<UINT>(number) << 12;
}

}  // namespace

int SCheckListViewCtrl::Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
    if (!SListViewCtrl::Create(style, place, parent, id)) return 0;
    SetExtendedStyle(LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
    return 1;
}

int SCheckListViewCtrl::GetCheck(int index) const {
    return GetItemState(index, LVIS_STATEIMAGEMASK) == StateImage(2);
}

int SCheckListViewCtrl::SetCheck(int index, int on) {
    return SetItemState(index, StateImage(on ? 2 : 1), LVIS_STATEIMAGEMASK);
}

int SCheckListViewCtrl::GetCheckedCount() const {
    int count = 0;
    for (int i = GetItemCount() - 1; i >= 0; --i)
        count += GetCheck(i);
    return count;
}
