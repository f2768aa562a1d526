#include "platform/posix/gdi.h"

namespace {

brcore8::GdiObject* ObjectOf(HGDIOBJ handle) noexcept {
    return static_cast<brcore8::GdiObject*>(handle);
}

}  // namespace

int DeleteObject(HGDIOBJ object) noexcept {
    if (object == nullptr) return 0;
    if (!ObjectOf(object)->isStock) delete ObjectOf(object);
    return 1;
}

int GetObjectA(HGDIOBJ object, int size, void* out) noexcept {
    return object != nullptr ? ObjectOf(object)->Describe(size, out) : 0;
}
