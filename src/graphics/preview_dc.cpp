#include <brcore8/graphics/preview_dc.h>

#include <algorithm>

SIMPLEMENT_CREATABLE(SPreviewDC, SDC, 2);

SPreviewDC::~SPreviewDC() {
    DeletePage();
}

int SPreviewDC::CreatePage(SIZE size, const SDC* like) {
    DeletePage();
    if (!CreateCompatibleDC(like)) return 0;
    if (!picture_.CreateCompatible(like != nullptr ? *like : *this, size.cx, size.cy)) {
        DeleteDC();
        return 0;
    }
    old_ = SelectObject(picture_.GetHandle());
    size_ = size;
    FillSolidRect({0, 0, size.cx, size.cy}, RGB(255, 255, 255));
    return 1;
}

void SPreviewDC::DeletePage() {
    if (old_ != nullptr) SelectObject(old_);
    old_ = nullptr;
    DeleteDC();
    picture_.Delete();
    size_ = {};
}

int SPreviewDC::ShowPage(SDC& to, const RECT& place) const {
    return old_ != nullptr && to.StretchBlt(place, *this, {0, 0, size_.cx, size_.cy}) != 0;
}

RECT SPreviewDC::FitPage(const RECT& room) const noexcept {
    const std::int64_t width = std::max<LONG>(room.right - room.left, 0);
    const std::int64_t height = std::max<LONG>(room.bottom - room.top, 0);
    if (size_.cx < 1 || size_.cy < 1) return {room.left, room.top, room.left, room.top};
    // As wide as the room, or as high where that is less.
    const std::int64_t wide = std::min(width, height * size_.cx / size_.cy);
    const std::int64_t high = std::min(height, width * size_.cy / size_.cx);
    const auto left = static_cast<LONG>(room.left + (width - wide) / 2);
    const auto top = static_cast<LONG>(room.top + (height - high) / 2);
    return {left, top, static_cast<LONG>(left + wide), static_cast<LONG>(top + high)};
}
