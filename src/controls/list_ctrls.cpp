#include <brcore8/controls/list_ctrls.h>

SIMPLEMENT_CREATABLE(SListBoxCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SComboBoxCtrl, SWnd, 2);
SIMPLEMENT_CREATABLE(SComboBoxExCtrl, SComboBoxCtrl, 2);

namespace {

// What the control writes into a block of its own length and a terminator.
SString TextOf(const SWnd& control, UINT getLength, UINT getText, int index) {
    const int length = control.Ask(getLength, index);
    if (length <= 0) return SString();
    std::vector<char> text(static_cast<std::size_t>(length) + 1);
    const int taken = control.Ask(getText, index, text.data());
    return SString(text.data(), taken > 0 ? taken : 0);
}

}  // namespace

SString SListBoxCtrl::GetText(int index) const {
    return TextOf(*this, LB_GETTEXTLEN, LB_GETTEXT, index);
}

std::vector<int> SListBoxCtrl::GetSelItems() const {
    const int count = GetSelCount();
    if (count <= 0) return {};
    std::vector<int> items(static_cast<std::size_t>(count));
    const int taken = Ask(LB_GETSELITEMS, count, items.data());
    items.resize(static_cast<std::size_t>(taken > 0 ? taken : 0));
    return items;
}

int SListBoxCtrl::ItemFromPoint(POINT point, int* outside) const {
    const auto packed = Ask<DWORD>(LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
    if (outside != nullptr) *outside = HIWORD(packed) != 0;
    return static_cast<std::int16_t>(LOWORD(packed));
}

SString SComboBoxCtrl::GetLBText(int index) const {
    return TextOf(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index);
}

void SComboBoxCtrl::GetEditSel(int* from, int* to) const {
    DWORD first = 0;
    DWORD last = 0;
    Ask(CB_GETEDITSEL, &first, &last);
    *from = static_cast<int>(first);
    *to = static_cast<int>(last);
}

// --- Remembered texts ---------------------------------------------------------------------------

void SComboBoxExCtrl::SetMostEntries(int most) {
    most_ = most > 0 ? most : 1;
    while (GetCount() > most_)
        DeleteString(GetCount() - 1);
}

int SComboBoxExCtrl::Remember(const char* text) {
    if (text == nullptr || *text == '\0') return -1;
    // The text may be the control's own.
    const SString kept(text);
    const int old = FindStringExact(-1, kept);
    if (old >= 0) DeleteString(old);
    const int at = InsertString(0, kept);
    while (GetCount() > most_)
        DeleteString(GetCount() - 1);
    if (at == 0) SetCurSel(0);
    return at;
}

std::vector<SString> SComboBoxExCtrl::GetEntries() const {
    std::vector<SString> entries;
    for (int i = 0; i < GetCount(); ++i)
        entries.push_back(GetLBText(i));
    return entries;
}
