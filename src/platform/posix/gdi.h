// Drawing objects in memory. Each call fails with 0 or null. Any thread, one thread an object.
#ifndef BRCORE8_PLATFORM_POSIX_GDI_H
#define BRCORE8_PLATFORM_POSIX_GDI_H

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/types.h>

#include <cstdint>

namespace brcore8 {

// What stands behind the handle of every kind of object, HGDIOBJ, HBITMAP and the others alike.
struct GdiObject {
    enum class Kind : std::uint8_t { Bitmap, Picture, Font, Brush, Pen, Region };

    explicit GdiObject(Kind objectKind) noexcept : kind(objectKind) {}
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    virtual ~GdiObject() = default;

    // Fills `out` with the record of the object's kind and returns the record's size; 0 when
    // `size` is less, or the kind has no record.
    virtual int Describe(int, void*) const noexcept { return 0; }

    const Kind kind;
    bool isStock = false;  // one of the platform's own, which nobody deletes
};

}  // namespace brcore8

#endif
