#include <brcore8/graphics/gdi_object.h>

#include "platform/platform.h"

SIMPLEMENT_CREATABLE(SGdiObject, SObject, 1);

SGdiObject& SGdiObject::operator=(SGdiObject&& other) noexcept {
    if (this != &other) Attach(other.Detach());
    return *this;
}

void SGdiObject::Attach(HGDIOBJ handle) noexcept {
    const HGDIOBJ old = std::exchange(handle_, handle);
    if (old != nullptr && old != handle) DeleteObject(old);
}
