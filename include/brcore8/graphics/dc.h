// SDC: the wrapper of a device context, in which windows and pictures are drawn.
//
// Threads: the one that runs the user interface.
// Ownership: a context belongs to whom it came from; this class gives none back.
#ifndef BRCORE8_GRAPHICS_DC_H
#define BRCORE8_GRAPHICS_DC_H

#include <brcore8/platform/windows.h>
#include <brcore8/window/handle_map.h>

class BRCORE8_API SDC : public SObject {
    SDECLARE_CLASS(SDC);

    SDC() noexcept = default;
    SDC(const SDC&) = delete;
    SDC& operator=(const SDC&) = delete;
    ~SDC() override { Detach(); }

    // As SWnd's.
    HDC GetHandle() const noexcept { return handle_; }
    static SDC* FromHandle(HDC handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();
    int Attach(HDC handle);
    HDC Detach();

private:
    template <class>
    friend class brcore8::WrapperMap;

    HDC handle_ = nullptr;
};

#endif
