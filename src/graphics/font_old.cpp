#include <brcore8/graphics/font_old.h>

#include "window/wrapper_map.h"

#include <string_view>

SIMPLEMENT_CLASS(SGDIObject, SObject, 1);
SIMPLEMENT_CLASS(SFontOld, SGDIObject, 2);

using Map = brcore8::WrapperMap<SFontOld>;

SFontOld::~SFontOld() {
    DeleteObject();
}

int SFontOld::Create(const char* face, int height, int weight, int italic) {
    LOGFONTA info{};
    info.lfHeight = height;
    info.lfWeight = weight;
    info.lfItalic = italic != 0;
    std::string_view(face).copy(info.lfFaceName, sizeof info.lfFaceName - 1);
    const HFONT made = ::CreateFontIndirectA(&info);
    if (made == nullptr) return 0;
    DeleteObject();
    return Attach(made);
}

int SFontOld::DeleteObject() {
    const HGDIOBJ held = Detach();
    return held != nullptr && ::DeleteObject(held);
}

SFontOld* SFontOld::FromHandle(HGDIOBJ handle) {
    return Map::From(handle);
}

void SFontOld::DeleteTempMap() {
    Map::Get().DeleteTempMap();
}

SHandleMap& SFontOld::GetHandleMap() {
    return Map::Get();
}

int SFontOld::Attach(HGDIOBJ handle) {
    return Map::Attach(*this, handle);
}

HGDIOBJ SFontOld::Detach() {
    return Map::Detach(*this);
}
