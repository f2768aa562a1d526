#include <brcore8/views/layout_map.h>

#include <algorithm>

SIMPLEMENT_CREATABLE(SLayoutMap, SObject, 2);

namespace {

SIZE ClientSize(HWND window) {
    RECT client{};
    ::GetClientRect(window, &client);
    return {client.right, client.bottom};
}

}  // namespace

int SLayoutMap::Attach(SWnd* window) {
    rows_.clear();
    window_ = window != nullptr ? window->GetHandle() : nullptr;
    if (window_ == nullptr) return 0;
    size_ = ClientSize(window_);
    return 1;
}

int SLayoutMap::Add(int id, const Share& share) {
    const HWND control = window_ != nullptr ? ::GetDlgItem(window_, id) : nullptr;
    if (control == nullptr) return 0;
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
    rows_.erase(
        std::remove_if(rows_.begin(), rows_.end(), [id](const Row& row) { return row.id == id; }),
        rows_.end());
    rows_.push_back({id, share, place});
    return 1;
}

void SLayoutMap::Apply() {
    if (window_ == nullptr || !::IsWindow(window_)) return;
    const SIZE now = ClientSize(window_);
    const int dx = now.cx - size_.cx;
    const int dy = now.cy - size_.cy;
    // A window that is placed may tell its parent, and that change the rows.
    const std::vector<Row> rows = rows_;
    for (const Row& row : rows) {
        const HWND control = ::GetDlgItem(window_, row.id);
        if (control == nullptr) continue;
        const RECT& at = row.place;
        const int width = at.right - at.left + dx * row.share.growX / 100;
        const int height = at.bottom - at.top + dy * row.share.growY / 100;
        ::SetWindowPos(control, nullptr, at.left + dx * row.share.moveX / 100,
                       at.top + dy * row.share.moveY / 100, std::max(width, 0), std::max(height, 0),
                       SWP_NOZORDER | SWP_NOACTIVATE);
    }
}
