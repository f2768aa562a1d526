#include <brcore8/graphics/dc.h>

#include "window/wrapper_map.h"

SIMPLEMENT_CLASS(SDC, SObject, 2);

using Map = brcore8::WrapperMap<SDC>;

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
    return Map::Detach(*this);
}
