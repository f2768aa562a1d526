#include <brcore8/graphics/font.h>

#include "platform/platform.h"

SIMPLEMENT_CREATABLE(SFont, SGdiObject, 2);

int SFont::Create(const LOGFONTA& info) noexcept {
    const HFONT font = CreateFontIndirectA(&info);
    if (font == nullptr) return 0;
    Attach(font);
    return 1;
}

int SFont::GetInfo(LOGFONTA* info) const noexcept {
    return !IsNull() && GetObjectA(GetHandle(), sizeof *info, info) != 0;
}
