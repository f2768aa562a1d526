#include <brcore8/window/menu.h>

#include "window/wrapper_map.h"

SIMPLEMENT_CREATABLE(SMenu, SObject, 2);

using Map = brcore8::WrapperMap<SMenu>;

SMenu* SMenu::FromHandle(HMENU handle) {
    return Map::From(handle);
}

void SMenu::DeleteTempMap() {
    Map::Get().DeleteTempMap();
}

SHandleMap& SMenu::GetHandleMap() {
    return Map::Get();
}

int SMenu::Attach(HMENU handle) {
    return Map::Attach(*this, handle);
}

HMENU SMenu::Detach() {
    return Map::Detach(*this);
}
