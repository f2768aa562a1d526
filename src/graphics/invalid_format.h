// What bitmaps and icons throw alike.
#ifndef BRCORE8_SRC_GRAPHICS_INVALID_FORMAT_H
#define BRCORE8_SRC_GRAPHICS_INVALID_FORMAT_H

namespace brcore8 {

// SEIOException "Invalid binary format".
[[noreturn]] void ThrowInvalidFormat();

}  // namespace brcore8

#endif
