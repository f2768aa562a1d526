#include <brcore8/graphics/icon.h>

#include <brcore8/graphics/bitmap.h>
#include <brcore8/streams/binary_stream.h>

#include "graphics/invalid_format.h"
#include "platform/platform.h"

namespace {

// A mask as high as the colours, or, without them, with room for them.
bool MakesIcon(const SBitmap& mask, const SBitmap& color) {
    const SBitmap::Shape shape = mask.GetShape();
    if (shape.bits != 1) return false;
    const SBitmap::Shape other = color.GetShape();
    return color.IsNull() ? shape.height % 2 == 0
                          : shape.width == other.width && shape.height == other.height;
}

}  // namespace

SOutputBinaryStream& operator<<(SOutputBinaryStream& stream, HICON icon) {
    ICONINFO info = {};
    if (icon == nullptr || !GetIconInfo(icon, &info)) brcore8::ThrowInvalidFormat();
    const SBitmap mask(info.hbmMask);
    const SBitmap color(info.hbmColor);
    stream << std::int32_t{info.fIcon != 0} << static_cast<std::uint32_t>(info.xHotspot)
           << static_cast<std::uint32_t>(info.yHotspot);
    return stream << mask << color;
}

SInputBinaryStream& operator>>(SInputBinaryStream& stream, HICON& icon) {
    icon = nullptr;
    std::int32_t isIcon = 0;
    std::uint32_t x = 0;
    std::uint32_t y = 0;
    SBitmap mask;
    SBitmap color;
    stream >> isIcon >> x >> y >> mask >> color;
    if (!MakesIcon(mask, color)) brcore8::ThrowInvalidFormat();
    ICONINFO info = {isIcon != 0, x, y, mask.GetBitmap(), color.GetBitmap()};
    icon = CreateIconIndirect(&info);
    if (icon == nullptr) brcore8::ThrowInvalidFormat();
    return stream;
}

void SDestroyIcon(HICON icon) noexcept {
    if (icon != nullptr) DestroyIcon(icon);
}
