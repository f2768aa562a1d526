// Drawing objects in memory. Each call fails with 0 or null. Any thread, one thread an object.
//
// A handle is a place in a table and how often that place was used: one that is gone, or never was,
// is told from one that is good without looking at what it may point to.
#ifndef BRCORE8_PLATFORM_POSIX_GDI_H
#define BRCORE8_PLATFORM_POSIX_GDI_H

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/last_error.h>
#include <brcore8/platform/types.h>

#include <cstdint>

namespace brcore8 {

// What stands behind the handle of every kind of object, HGDIOBJ, HBITMAP and the others alike.
struct GdiObject {
    enum class Kind : std::uint8_t { Bitmap, Font, Brush, Pen, Region, Icon, ImageList };

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

// Takes the object, which ends here where there is no room for it: null with
// ERROR_NOT_ENOUGH_MEMORY. Null makes null.
void* GdiHandleOf(GdiObject* object) noexcept;
// The object of a handle, or null with ERROR_INVALID_HANDLE.
GdiObject* FindGdiObject(const void* handle) noexcept;
// The handle is none any more; the object is the caller's.
GdiObject* ForgetGdiHandle(const void* handle) noexcept;

// Only an object of that kind.
template <class Object>
Object* FindGdi(const void* handle, GdiObject::Kind kind) noexcept {
    GdiObject* const object = FindGdiObject(handle);
    if (object != nullptr && object->kind == kind) return static_cast<Object*>(object);
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

}  // namespace brcore8

#endif
