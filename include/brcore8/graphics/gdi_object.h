// SGdiObject: owner of one of the platform's drawing objects (a bitmap, a font, ...) by its handle.
// The classes derived from it know one kind each and how to make it.
//
// Threads: none; an owner belongs to one thread at a time.
// Errors: none here; what makes an object says how it fails.
//
//     SGdiObject owner(handle);               // deletes the object at its end
//     HGDIOBJ mine = owner.Detach();          // not any more
#ifndef BRCORE8_GRAPHICS_GDI_OBJECT_H
#define BRCORE8_GRAPHICS_GDI_OBJECT_H

#include <brcore8/core/object.h>
#include <brcore8/platform/types.h>

#include <utility>

class BRCORE8_API SGdiObject : public SObject {
    SDECLARE_CREATABLE(SGdiObject);

    // Takes the object over; null holds none.
    explicit SGdiObject(HGDIOBJ handle = nullptr) noexcept : handle_(handle) {}
    // Moving leaves the other without an object; what this one held is deleted.
    SGdiObject(SGdiObject&& other) noexcept : SObject(), handle_(other.Detach()) {}
    SGdiObject& operator=(SGdiObject&& other) noexcept;
    ~SGdiObject() override { Delete(); }

    // The handle, still this owner's; null when none is held.
    HGDIOBJ GetHandle() const noexcept { return handle_; }
    bool IsNull() const noexcept { return handle_ == nullptr; }

    // Deletes what is held and takes this object over; the one held already stays as it is.
    void Attach(HGDIOBJ handle) noexcept;
    // Gives up the object: the caller owns it from now on.
    HGDIOBJ Detach() noexcept { return std::exchange(handle_, nullptr); }
    // Deletes what is held. The platform refuses while a drawing context has the object selected;
    // it is then nobody's.
    void Delete() noexcept { Attach(nullptr); }

private:
    HGDIOBJ handle_;
};

#endif
