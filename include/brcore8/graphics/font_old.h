// SGDIObject and SFontOld: the owners of drawing objects and fonts from before SGdiObject and
// SFont, which programs written then still name. Neither root derives from the other, and each
// kind has its own wrappers.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_GRAPHICS_FONT_OLD_H
#define BRCORE8_GRAPHICS_FONT_OLD_H

#include <brcore8/platform/windows.h>
#include <brcore8/window/handle_map.h>

class BRCORE8_API SGDIObject : public SObject {
    SDECLARE_CLASS(SGDIObject);

    SGDIObject() noexcept = default;
    SGDIObject(const SGDIObject&) = delete;
    SGDIObject& operator=(const SGDIObject&) = delete;

    HGDIOBJ GetHandle() const noexcept { return brcore8::LiveHandle(handle_); }

protected:
    template <class>
    friend class brcore8::WrapperMap;

    HGDIOBJ handle_ = nullptr;
};

class BRCORE8_API SFontOld : public SGDIObject {
    SDECLARE_CLASS(SFontOld);

    SFontOld() noexcept = default;
    // Deletes the font held.
    ~SFontOld() override;

    // A font in the place of the one held; the height in pixels as LOGFONTA counts it. 1, or 0 when
    // the platform refuses.
    int Create(const char* face, int height, int weight = 400, int italic = 0);
    // Deletes the font; 0 when there is none.
    int DeleteObject();

    // As SWnd's; the font that is held stays undeleted.
    static SFontOld* FromHandle(HGDIOBJ handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();
    int Attach(HGDIOBJ handle);
    HGDIOBJ Detach();
};

#endif
