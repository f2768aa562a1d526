// SGdiObject: owner of one of the platform's drawing objects (a bitmap, a font, ...) by its handle.
// The classes derived from it know one kind each and how to make it.
//
// An object that one of these owns has it as its permanent wrapper; FromHandle answers for any
// other with a temporary one, which owns nothing and is good until the next idle pass.
//
// Threads: an owner belongs to one thread at a time, and owners of several threads may come and go
// at once; FromHandle and temporary wrappers are for the one that runs the user interface.
// Errors: none here; what makes an object says how it fails. Where no memory is left to enter an
// owner as the permanent wrapper, it owns the object all the same.
//
//     SGdiObject owner(handle);               // deletes the object at its end
//     HGDIOBJ mine = owner.Detach();          // not any more
#ifndef BRCORE8_GRAPHICS_GDI_OBJECT_H
#define BRCORE8_GRAPHICS_GDI_OBJECT_H

#include <brcore8/platform/types.h>
#include <brcore8/window/handle_map.h>

class BRCORE8_API SGdiObject : public SObject {
    SDECLARE_CREATABLE(SGdiObject);

    // Takes the object over; null holds none.
    explicit SGdiObject(HGDIOBJ handle = nullptr) noexcept { Attach(handle); }
    // Moving leaves the other without an object; what this one held is deleted.
    SGdiObject(SGdiObject&& other) noexcept : SObject() { Attach(other.Detach()); }
    SGdiObject& operator=(SGdiObject&& other) noexcept;
    ~SGdiObject() override { Delete(); }

    // The handle, still this owner's; null when none is held.
    HGDIOBJ GetHandle() const noexcept { return brcore8::LiveHandle(handle_); }
    bool IsNull() const noexcept { return handle_ == nullptr; }

    // As SWnd's.
    static SGdiObject* FromHandle(HGDIOBJ handle);
    static SGdiObject* FromHandlePermanent(HGDIOBJ handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();

    // Deletes what is held and takes this object over; the one held already stays as it is. 0 for
    // null, else 1.
    int Attach(HGDIOBJ handle) noexcept;
    // Gives up the object: the caller owns it from now on.
    HGDIOBJ Detach() noexcept;
    // Deletes what is held. The platform refuses while a drawing context has the object selected;
    // it is then nobody's.
    void Delete() noexcept { Attach(nullptr); }

protected:
    // Takes over what the platform made: 1, or 0 when it refused, and nothing changes.
    int Take(HGDIOBJ made) noexcept { return made != nullptr ? Attach(made) : 0; }

private:
    template <class>
    friend class brcore8::WrapperMap;

    HGDIOBJ handle_ = nullptr;
};

#endif
