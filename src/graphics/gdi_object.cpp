#include <brcore8/graphics/gdi_object.h>

#include "platform/platform.h"
#include "window/wrapper_map.h"

#include <mutex>

SIMPLEMENT_CREATABLE(SGdiObject, SObject, 1);

using Map = brcore8::WrapperMap<SGdiObject>;

namespace {

// Bitmaps are read and written by threads that have no windows.
std::recursive_mutex& MapLock() {
    static std::recursive_mutex& lock = *new std::recursive_mutex;
    return lock;
}

}  // namespace

SGdiObject* SGdiObject::FromHandle(HGDIOBJ handle) {
    const std::lock_guard guard(MapLock());
    return Map::From(handle);
}

SGdiObject* SGdiObject::FromHandlePermanent(HGDIOBJ handle) {
    const std::lock_guard guard(MapLock());
    return static_cast<SGdiObject*>(Map::Get().FromHandlePermanent(handle));
}

void SGdiObject::DeleteTempMap() {
    const std::lock_guard guard(MapLock());
    Map::Get().DeleteTempMap();
}

SHandleMap& SGdiObject::GetHandleMap() {
    return Map::Get();
}

SGdiObject& SGdiObject::operator=(SGdiObject&& other) noexcept {
    if (this != &other) Attach(other.Detach());
    return *this;
}

int SGdiObject::Attach(HGDIOBJ handle) noexcept {
    if (handle == handle_) return handle != nullptr;
    if (const HGDIOBJ old = Detach()) DeleteObject(old);
    handle_ = handle;
    if (handle == nullptr) return 0;
    try {
        const std::lock_guard guard(MapLock());
        Map::Attach(*this, handle);
    } catch (...) {
        // Owned without an entry.
    }
    return 1;
}

HGDIOBJ SGdiObject::Detach() noexcept {
    if (handle_ == nullptr) return nullptr;
    const std::lock_guard guard(MapLock());
    return Map::Detach(*this);
}
