// Drawing objects in memory. Each call fails with 0 or null. Any thread, one thread an object.
#ifndef BRCORE8_PLATFORM_POSIX_GDI_H
#define BRCORE8_PLATFORM_POSIX_GDI_H

#include <brcore8/platform/types.h>

namespace brcore8 {

// What stands behind the handle of every kind of object, HGDIOBJ, HBITMAP and the others alike.
struct GdiObject {
    GdiObject() = default;
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;
    virtual ~GdiObject() = default;

    // Fills `out` with the record of the object's kind and returns the record's size; 0 when
    // `size` is less.
    virtual int Describe(int size, void* out) const noexcept = 0;
};

}  // namespace brcore8

// Deletes an object of any kind: 1, or 0 for null.
int DeleteObject(HGDIOBJ object) noexcept;
// The record that describes the object: see GdiObject::Describe.
int GetObjectA(HGDIOBJ object, int size, void* out) noexcept;

#endif
