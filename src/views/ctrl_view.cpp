#include <brcore8/views/ctrl_view.h>

#include "platform/platform.h"

#include <string>

SIMPLEMENT_CLASS(SCtrlView, SView, 1);
SIMPLEMENT_CREATABLE(SEditView, SCtrlView, 2);
SIMPLEMENT_CREATABLE(SRichEditView, SCtrlView, 2);
SIMPLEMENT_CREATABLE(SListView, SCtrlView, 2);
SIMPLEMENT_CREATABLE(STreeView, SCtrlView, 2);

int SCtrlView::PreCreateWindow(CREATESTRUCT& create) {
    if (create.lpszClass == nullptr) create.lpszClass = class_;
    create.style |= static_cast<LONG>(style_);
    return 1;
}

void SCtrlView::OnDraw(SDC&) {}

void SCtrlView::OnPaint() {
    Default();
}

// --- Text ---------------------------------------------------------------------------------------

SEditView::SEditView() noexcept
    : SCtrlView("EDIT", ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL) {}

void SEditView::Load(SInputStream& from) {
    std::string text;
    for (const char character : SReadAll(from)) {
        if (character == '\n' && (text.empty() || text.back() != '\r')) text += '\r';
        text += character;
    }
    Ask(EM_SETLIMITTEXT, 0x7FFFFFFE);
    SetWindowText(text.c_str());
    SetModify(0);
}

void SEditView::Save(SOutputStream& to) const {
    std::string text;
    const SString shown = GetWindowText();
    for (const char character : shown.View())
        if (character != '\r') text += character;
    to.Write(text.data(), static_cast<unsigned long>(text.size()));
}

int SEditView::FindNext(const char* text) {
    DWORD from = 0;
    DWORD to = 0;
    Ask(EM_GETSEL, &from, &to);
    const SString shown = GetWindowText();
    const std::string_view wanted(text);
    const std::size_t at = shown.View().find(wanted, to);
    if (wanted.empty() || at == std::string_view::npos) return 0;
    SetSel(static_cast<int>(at), static_cast<int>(at + wanted.size()));
    Ask(EM_SCROLLCARET);
    return 1;
}

SRichEditView::SRichEditView() noexcept
    : SCtrlView("RichEdit20A", ES_MULTILINE | ES_AUTOVSCROLL | ES_NOHIDESEL) {}

// The class lives as long as its library.
int SRichEditView::PreCreateWindow(CREATESTRUCT& create) {
    [[maybe_unused]] static const HMODULE library = LoadLibraryA("riched20.dll");
    return SCtrlView::PreCreateWindow(create);
}

void SRichEditView::SetSel(LONG from, LONG to) {
    const CHARRANGE range{from, to};
    Ask(EM_EXSETSEL, 0, &range);
}

// --- Lists and trees ----------------------------------------------------------------------------

SListView::SListView() noexcept : SCtrlView(WC_LISTVIEWA, 1 /* in columns */) {}

int SListView::AddColumn(const char* title, int width) {
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
    column.pszText = const_cast<char*>(title);
    column.cx = width;
    if (GetHandle() == nullptr) return -1;
    const int at = Ask(LVM_INSERTCOLUMNA, columns_, &column);
    if (at >= 0) ++columns_;
    return at;
}

int SListView::AddItem(const char* text) {
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = 0x7FFFFFFF;
    item.pszText = const_cast<char*>(text);
    return GetHandle() != nullptr ? Ask(LVM_INSERTITEMA, 0, &item) : -1;
}

int SListView::SetItemText(int index, int column, const char* text) {
    LVITEMA item{};
    item.iSubItem = column;
    item.pszText = const_cast<char*>(text);
    return Ask(LVM_SETITEMTEXTA, index, &item);
}

STreeView::STreeView() noexcept
    : SCtrlView(WC_TREEVIEWA, 7 /* buttons, and lines from the root on */) {}

HTREEITEM STreeView::AddItem(const char* text, HTREEITEM parent, LPARAM data) {
    TVINSERTSTRUCTA insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = const_cast<char*>(text);
    insert.item.lParam = data;
    return Ask<HTREEITEM>(TVM_INSERTITEMA, 0, &insert);
}
