#include <brcore8/graphics/dc.h>

#include "window/wrapper_map.h"

SIMPLEMENT_CLASS(SDC, SObject, 2);

using Map = brcore8::WrapperMap<SDC>;

SDC::~SDC() {
    if (isOwn_)
        DeleteDC();
    else
        Detach();
}

SDC* SDC::FromHandle(HDC handle) {
    return Map::From(handle);
}

void SDC::DeleteTempMap() {
    Map::Get().DeleteTempMap();
}

SHandleMap& SDC::GetHandleMap() {
    return Map::Get();
}

int SDC::Attach(HDC handle) {
    return Map::Attach(*this, handle);
}

HDC SDC::Detach() {
    isOwn_ = false;
    return Map::Detach(*this);
}

int SDC::CreateCompatibleDC(const SDC* like) {
    if (handle_ != nullptr) return 0;
    const HDC made = ::CreateCompatibleDC(like != nullptr ? like->handle_ : nullptr);
    if (made == nullptr) return 0;
    try {
        Attach(made);
    } catch (...) {
        ::DeleteDC(made);
        throw;
    }
    isOwn_ = true;
    return 1;
}

int SDC::DeleteDC() {
    const HDC handle = Detach();
    return handle != nullptr && ::DeleteDC(handle);
}

void SDC::FillSolidRect(const RECT& rect, COLORREF color) {
    const COLORREF old = SetBkColor(color);
    ::ExtTextOutA(handle_, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
    SetBkColor(old);
}

void SDC::FrameSolidRect(const RECT& rect, COLORREF color) {
    Draw3dRect(rect, color, color);
}

void SDC::Draw3dRect(const RECT& rect, COLORREF leftTop, COLORREF rightBottom) {
    FillSolidRect({rect.left, rect.top, rect.right - 1, rect.top + 1}, leftTop);
    FillSolidRect({rect.left, rect.top, rect.left + 1, rect.bottom - 1}, leftTop);
    FillSolidRect({rect.right - 1, rect.top, rect.right, rect.bottom}, rightBottom);
    FillSolidRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, rightBottom);
}

SIZE SDC::GetTextExtent(std::string_view text) const {
    SIZE size{};
    ::GetTextExtentPoint32A(handle_, text.data(), static_cast<int>(text.size()), &size);
    return size;
}
