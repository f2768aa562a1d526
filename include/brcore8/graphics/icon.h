// Icons and cursors in binary streams.
//
//     icon := 1 for an icon, 0 for a cursor (4 bytes), hot spot x, y (4 bytes each), mask, colours
//
// Mask and colours are bitmaps as graphics/bitmap.h streams them: a mask of 1-bit pixels and
// colours of the same size; or no colours, and a mask of twice the height whose lower half holds
// them. An icon's hot spot is its middle, whatever was streamed.
#ifndef BRCORE8_GRAPHICS_ICON_H
#define BRCORE8_GRAPHICS_ICON_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/types.h>

class SInputBinaryStream;
class SOutputBinaryStream;

// Throws SEIOException "Invalid binary format" when the handle is no icon's (nothing is written
// then), SEOutOfMemory, and what the stream throws.
BRCORE8_API SOutputBinaryStream& operator<<(SOutputBinaryStream& stream, HICON icon);

// Makes a new icon, the caller's; what `icon` held before is only overwritten. Throws
// SEIOException "Invalid binary format" when the bitmaps make no icon, SEEOFException when the
// input ends too early, SEOutOfMemory; `icon` is null then.
BRCORE8_API SInputBinaryStream& operator>>(SInputBinaryStream& stream, HICON& icon);

// Gives an icon back; null does nothing.
BRCORE8_API void SDestroyIcon(HICON icon) noexcept;

#endif
