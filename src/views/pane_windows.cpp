#include <brcore8/views/pane_windows.h>

#include <brcore8/window/scaled.h>

#include "views/pane.h"

#include <algorithm>
#include <utility>

SIMPLEMENT_CREATABLE(SSplitterWnd, SWnd, 2);
SIMPLEMENT_MESSAGE_MAP(SSplitterWnd, SWnd, SOnSize<&SSplitterWnd::OnSize>(),
                       SOnLButtonDown<&SSplitterWnd::OnLButtonDown>(),
                       SOnMouseMove<&SSplitterWnd::OnMouseMove>(),
                       SOnLButtonUp<&SSplitterWnd::OnLButtonUp>(),
                       SOnCaptureChanged<&SSplitterWnd::OnCaptureChanged>(),
                       SOnDestroy<&SSplitterWnd::OnDestroy>());
SIMPLEMENT_MESSAGE_MAP(STabPages, SWnd, SOnCreate<&STabPages::OnCreate>(),
                       SOnDestroy<&STabPages::OnDestroy>(), SOnSize<&STabPages::OnSize>(),
                       SOnControl<&STabPages::OnTabChanged>(STabBeam::kTabChanged, 1));
SIMPLEMENT_CREATABLE(STabWnd, SWnd, 2);
SIMPLEMENT_CREATABLE(STabExWnd, SWnd, 2);

std::unique_ptr<SWnd> brcore8::CreatePaneOf(const SClassInfo* info, SWnd* parent, const RECT& place,
                                            UINT id) {
    if (info == nullptr || (info != &SWnd::m_SWnd && !info->IsDerivedFrom(&SWnd::m_SWnd)))
        return nullptr;
    SObject* const object = info->CreateObject();
    std::unique_ptr<SWnd> pane(static_cast<SWnd*>(object));
    if (pane == nullptr) return nullptr;
    if (!pane->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, place, parent, id)) return nullptr;
    return pane;
}

// --- Splitters ----------------------------------------------------------------------------------

SSplitterWnd::~SSplitterWnd() {
    Clear();
}

// The windows go before their owners forget them: a pane's end may ask for another.
void SSplitterWnd::Clear() {
    const std::vector<std::unique_ptr<SWnd>> leaving = std::exchange(panes_, {});
}

void SSplitterWnd::OnDestroy() {
    Clear();
    rows_.clear();
    columns_.clear();
}

int SSplitterWnd::CreateStatic(SWnd* parent, int rows, int columns, const RECT& place, UINT id) {
    constexpr int kMost = 16;
    if (rows < 1 || columns < 1 || rows > kMost || columns > kMost) return 0;
    if (!SWnd::Create("S_CtrlWnd", nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, place, parent,
                      id))
        return 0;
    const RECT client = GetClientRect();
    rows_.assign(static_cast<std::size_t>(rows), std::max<int>(client.bottom / rows, kSmallest));
    columns_.assign(static_cast<std::size_t>(columns),
                    std::max<int>(client.right / columns, kSmallest));
    panes_.resize(rows_.size() * columns_.size());
    return 1;
}

SWnd* SSplitterWnd::GetPane(int row, int column) const {
    if (row < 0 || column < 0 || row >= GetRowCount() || column >= GetColumnCount()) return nullptr;
    const std::size_t at = static_cast<std::size_t>(row) * columns_.size() + column;
    return at < panes_.size() ? panes_[at].get() : nullptr;
}

SWnd* SSplitterWnd::CreatePane(int row, int column, const SClassInfo* info, SIZE size) {
    if (row < 0 || column < 0 || row >= GetRowCount() || column >= GetColumnCount()) return nullptr;
    const std::size_t at = static_cast<std::size_t>(row) * columns_.size() + column;
    const auto isFree = [&] { return at < panes_.size() && panes_[at] == nullptr; };
    if (!isFree()) return nullptr;
    const UINT id = 0xE900 + static_cast<UINT>(row) * 16 + static_cast<UINT>(column);
    std::unique_ptr<SWnd> pane = brcore8::CreatePaneOf(info, this, {}, id);
    // Its creation may have filled the place, or ended all of them.
    if (pane == nullptr || !isFree()) return nullptr;
    panes_[at] = std::move(pane);
    if (size.cy > 0) rows_[static_cast<std::size_t>(row)] = std::min<int>(size.cy, kLargest);
    if (size.cx > 0) columns_[static_cast<std::size_t>(column)] = std::min<int>(size.cx, kLargest);
    RecalcLayout();
    return GetPane(row, column);
}

// Where a row or column begins and ends in its room; the last one takes what is left.
int SSplitterWnd::Ends(const std::vector<int>& sizes, int room, int index, int* begin) const {
    const int bar = SScaled(kBar, GetHandle());
    int at = 0;
    for (int i = 0; i < index; ++i)
        at += sizes[static_cast<std::size_t>(i)] + bar;
    *begin = at;
    const bool isLast = index + 1 == static_cast<int>(sizes.size());
    return isLast ? std::max(room, at) : at + sizes[static_cast<std::size_t>(index)];
}

int SSplitterWnd::GetRowHeight(int row) const {
    if (row < 0 || row >= GetRowCount()) return 0;
    int begin = 0;
    const int end = Ends(rows_, GetClientRect().bottom, row, &begin);
    return end - begin;
}

int SSplitterWnd::GetColumnWidth(int column) const {
    if (column < 0 || column >= GetColumnCount()) return 0;
    int begin = 0;
    const int end = Ends(columns_, GetClientRect().right, column, &begin);
    return end - begin;
}

int SSplitterWnd::SetRowHeight(int row, int height) {
    if (row < 0 || row >= GetRowCount()) return 0;
    rows_[static_cast<std::size_t>(row)] = std::clamp(height, kSmallest, kLargest);
    RecalcLayout();
    return 1;
}

int SSplitterWnd::SetColumnWidth(int column, int width) {
    if (column < 0 || column >= GetColumnCount()) return 0;
    columns_[static_cast<std::size_t>(column)] = std::clamp(width, kSmallest, kLargest);
    RecalcLayout();
    return 1;
}

void SSplitterWnd::RecalcLayout() {
    const RECT client = GetClientRect();
    for (int row = 0; row < GetRowCount(); ++row) {
        for (int column = 0; column < GetColumnCount(); ++column) {
            SWnd* const pane = GetPane(row, column);
            if (pane == nullptr) continue;
            int top = 0;
            int left = 0;
            const int bottom = Ends(rows_, client.bottom, row, &top);
            const int right = Ends(columns_, client.right, column, &left);
            pane->MoveWindow({left, top, right, bottom});
        }
    }
    Invalidate(1);
}

void SSplitterWnd::OnSize(UINT, int, int) {
    RecalcLayout();
}

// The row or column that the bar at this place ends; -1 beside the bars.
int SSplitterWnd::BarAt(const std::vector<int>& sizes, int room, int at) const {
    for (int i = 0; i + 1 < static_cast<int>(sizes.size()); ++i) {
        int begin = 0;
        const int end = Ends(sizes, room, i, &begin);
        if (at >= end && at < end + SScaled(kBar, GetHandle())) return i;
    }
    return -1;
}

void SSplitterWnd::OnLButtonDown(UINT, int x, int y) {
    const RECT client = GetClientRect();
    const int row = BarAt(rows_, client.bottom, y);
    const int column = BarAt(columns_, client.right, x);
    if (row < 0 && column < 0) return;
    SetCapture();
    dragRow_ = row;
    dragColumn_ = column;
}

void SSplitterWnd::OnMouseMove(UINT, int x, int y) {
    int begin = 0;
    const RECT client = GetClientRect();
    if (dragRow_ >= 0) {
        Ends(rows_, client.bottom, dragRow_, &begin);
        SetRowHeight(dragRow_,
                     std::min<int>(y, client.bottom - SScaled(kBar, GetHandle())) - begin);
    }
    if (dragColumn_ >= 0) {
        Ends(columns_, client.right, dragColumn_, &begin);
        SetColumnWidth(dragColumn_,
                       std::min<int>(x, client.right - SScaled(kBar, GetHandle())) - begin);
    }
}

void SSplitterWnd::OnLButtonUp(UINT, int, int) {
    if (dragRow_ >= 0 || dragColumn_ >= 0) ::ReleaseCapture();
    dragRow_ = dragColumn_ = -1;
}

// --- Pages --------------------------------------------------------------------------------------

STabPages::~STabPages() {
    const std::vector<Page> leaving = std::exchange(pages_, {});
}

int STabPages::OnCreate(CREATESTRUCT*) {
    const RECT place{0, 0, GetClientRect().right, SScaled(STabBeam::kHeight, GetHandle())};
    return beam_.Create(WS_VISIBLE, place, this, 1) ? 0 : -1;
}

void STabPages::OnDestroy() {
    const std::vector<Page> leaving = std::exchange(pages_, {});
    while (beam_.RemoveTab(0)) {
    }
}

void STabPages::OnSize(UINT, int, int) {
    Arrange();
}

void STabPages::Arrange() {
    const RECT client = GetClientRect();
    const int tabs = SScaled(STabBeam::kHeight, GetHandle());
    if (beam_.GetHandle() != nullptr) beam_.MoveWindow({0, 0, client.right, tabs});
    const RECT place{0, tabs, client.right, std::max<LONG>(client.bottom, tabs)};
    // A page that hears of its size may add others.
    for (std::size_t i = 0; i < pages_.size(); ++i)
        if (pages_[i].window != nullptr) pages_[i].window->MoveWindow(place);
}

SWnd* STabPages::GetPage(int index) const {
    const auto at = static_cast<std::size_t>(index);
    return at < pages_.size() ? pages_[at].window.get() : nullptr;
}

// A window that is being made may add pages, close some, or show its own.
bool STabPages::Make(std::size_t at) {
    if (pages_[at].window != nullptr) return true;
    const SClassInfo* const info = pages_[at].info;
    std::unique_ptr<SWnd> made = brcore8::CreatePaneOf(info, this, {}, 2);
    if (made == nullptr || at >= pages_.size() || pages_[at].info != info) return false;
    if (pages_[at].window == nullptr) pages_[at].window = std::move(made);
    Arrange();
    return at < pages_.size();
}

int STabPages::AppendPage(const char* text, const SClassInfo* info, bool madeAtOnce) {
    Page page{info, nullptr};
    if (GetHandle() == nullptr || info == nullptr || info->factory == nullptr) return -1;
    if (madeAtOnce) {
        page.window = brcore8::CreatePaneOf(info, this, {}, 2);
        if (page.window == nullptr) return -1;
        page.window->ShowWindow(SW_HIDE);
    }
    const int added = GetPageCount();
    pages_.push_back(std::move(page));
    beam_.AddTab(text);
    Arrange();
    if (added == 0) SetCurPage(0);
    return added;
}

int STabPages::ErasePage(int index) {
    const auto at = static_cast<std::size_t>(index);
    if (at >= pages_.size()) return 0;
    const Page leaving = std::move(pages_[at]);
    pages_.erase(pages_.begin() + index);
    beam_.RemoveTab(index);
    SetCurPage(beam_.GetCurTab());
    return 1;
}

int STabPages::SetCurPage(int index) {
    const auto at = static_cast<std::size_t>(index);
    if (at >= pages_.size() || !Make(at)) return 0;
    beam_.SetCurTab(index);
    for (std::size_t i = 0; i < pages_.size(); ++i)
        if (pages_[i].window != nullptr)
            pages_[i].window->ShowWindow(i == at ? SW_SHOWNA : SW_HIDE);
    return 1;
}
