#include <brcore8/graphics/image_list.h>

#include "window/wrapper_map.h"

#include <algorithm>

SIMPLEMENT_CREATABLE(SImageList, SObject, 2);
SIMPLEMENT_CREATABLE(SImageListEx, SImageList, 2);

using Map = brcore8::WrapperMap<SImageList>;

SImageList::~SImageList() {
    LetGo();
}

void SImageList::LetGo() {
    if (isOwn_)
        DeleteImageList();
    else
        Detach();
}

SImageList* SImageList::FromHandle(HIMAGELIST handle) {
    return Map::From(handle);
}

void SImageList::DeleteTempMap() {
    Map::Get().DeleteTempMap();
}

SHandleMap& SImageList::GetHandleMap() {
    return Map::Get();
}

int SImageList::Attach(HIMAGELIST handle) {
    return Map::Attach(*this, handle);
}

HIMAGELIST SImageList::Detach() {
    isOwn_ = false;
    return Map::Detach(*this);
}

int SImageList::Create(int width, int height, UINT flags, int initial, int grow) {
    const HIMAGELIST made = ::ImageList_Create(width, height, flags, initial, grow);
    if (made == nullptr) return 0;
    LetGo();
    Attach(made);
    isOwn_ = true;
    return 1;
}

int SImageList::DeleteImageList() {
    const HIMAGELIST held = Detach();
    return held != nullptr && ::ImageList_Destroy(held);
}

int SImageList::GetImageCount() const {
    return ::ImageList_GetImageCount(handle_);
}

SIZE SImageList::GetImageSize() const {
    int width = 0;
    int height = 0;
    if (handle_ == nullptr || !::ImageList_GetIconSize(handle_, &width, &height)) return {};
    return {width, height};
}

int SImageList::Add(const SBitmap& bitmap, const SBitmap* mask) {
    return ::ImageList_Add(handle_, bitmap.GetBitmap(),
                           mask != nullptr ? mask->GetBitmap() : nullptr);
}

int SImageList::Add(const SBitmap& bitmap, COLORREF transparent) {
    return ::ImageList_AddMasked(handle_, bitmap.GetBitmap(), transparent);
}

int SImageList::Replace(int index, const SBitmap& bitmap, const SBitmap* mask) {
    return ::ImageList_Replace(handle_, index, bitmap.GetBitmap(),
                               mask != nullptr ? mask->GetBitmap() : nullptr);
}

int SImageList::Remove(int index) {
    return ::ImageList_Remove(handle_, index);
}

int SImageList::Draw(SDC& dc, int index, int x, int y, UINT flags) const {
    return ::ImageList_Draw(handle_, index, dc.GetHandle(), x, y, flags);
}

COLORREF SImageList::SetBkColor(COLORREF color) {
    return ::ImageList_SetBkColor(handle_, color);
}

COLORREF SImageList::GetBkColor() const {
    return ::ImageList_GetBkColor(handle_);
}

// --- By commands --------------------------------------------------------------------------------

int SImageListEx::Add(const SBitmap& bitmap, COLORREF transparent, const UINT* commands,
                      int count) {
    const SIZE size = GetImageSize();
    if (size.cx < 1 || count < 1 || bitmap.GetShape().width / size.cx != count) return -1;
    // Room first: the list is not undone.
    const auto needed = static_cast<std::size_t>(GetImageCount() + count);
    commands_.reserve(needed);
    const int first = SImageList::Add(bitmap, transparent);
    if (first < 0) return -1;
    commands_.resize(needed);
    std::copy_n(commands, count, commands_.begin() + first);
    return first;
}

int SImageListEx::Remove(int index) {
    if (!SImageList::Remove(index)) return 0;
    if (index == -1)
        commands_.clear();
    else if (static_cast<std::size_t>(index) < commands_.size())
        commands_.erase(commands_.begin() + index);
    return 1;
}

int SImageListEx::Find(UINT command) const noexcept {
    const auto found = std::find(commands_.begin(), commands_.end(), command);
    return command != 0 && found != commands_.end() ? static_cast<int>(found - commands_.begin())
                                                    : -1;
}

UINT SImageListEx::GetCommand(int index) const noexcept {
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < commands_.size() ? commands_[at] : 0;
}

int SImageListEx::DrawCommand(SDC& dc, UINT command, int x, int y, UINT flags) const {
    const int index = Find(command);
    return index >= 0 && Draw(dc, index, x, y, flags);
}
