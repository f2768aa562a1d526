#include "platform/posix/gdi.h"

namespace {

brcore8::GdiObject* ObjectOf(HGDIOBJ handle) noexcept {
    return static_cast<brcore8::GdiObject*>(handle);
}

}  // namespace

int DeleteObject(HGDIOBJ object) noexcept {
    delete ObjectOf(object);
    return object != nullptr;
}

int GetObjectA(HGDIOBJ object, int size, void* out) noexcept {
    return object != nullptr ? ObjectOf(object)->Describe(size, out) : 0;
}
