// SImageList: pictures of one size, counted from 0, with transparent parts; what trees, lists and
// toolbars show beside their texts. SImageListEx finds them by the commands that they stand for.
//
//     SImageList images;
//     images.Create(16, 16);
//     const int folder = images.Add(bitmap, RGB(255, 0, 255));   // that colour is transparent
//     images.Draw(dc, folder, 10, 10);
//
// Threads: the one that runs the user interface.
// Ownership: a list that this wrapper made goes with it; of one that was attached it lets go. A
// control that shows a list does not own it.
#ifndef BRCORE8_GRAPHICS_IMAGE_LIST_H
#define BRCORE8_GRAPHICS_IMAGE_LIST_H

#include <brcore8/graphics/bitmap.h>
#include <brcore8/graphics/dc.h>

#include <vector>

class BRCORE8_API SImageList : public SObject {
    SDECLARE_CREATABLE(SImageList);

    SImageList() noexcept = default;
    SImageList(const SImageList&) = delete;
    SImageList& operator=(const SImageList&) = delete;
    ~SImageList() override;

    // --- Handles, as SWnd's ---------------------------------------------------------------------

    HIMAGELIST GetHandle() const noexcept { return brcore8::LiveHandle(handle_); }
    static SImageList* FromHandle(HIMAGELIST handle);
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();
    int Attach(HIMAGELIST handle);
    HIMAGELIST Detach();

    // --- The list
    // ---------------------------------------------------------------------------------

    // An empty list in the place of the one held, for images of that size in pixels: 1 or 0.
    int Create(int width, int height, UINT flags = ILC_COLOR32 | ILC_MASK, int initial = 0,
               int grow = 4);
    // Gives the list back, whoever made it; 0 when there is none.
    int DeleteImageList();
    int GetImageCount() const;
    // Zero when there is no list.
    SIZE GetImageSize() const;

    // The bitmap, which stays the caller's, holds one or more images side by side. Where the mask
    // is white, or the bitmap has the colour, they are transparent; the platform may turn the
    // pixels of that colour in the bitmap black. The number of the first, or -1.
    virtual int Add(const SBitmap& bitmap, const SBitmap* mask = nullptr);
    virtual int Add(const SBitmap& bitmap, COLORREF transparent);
    int Replace(int index, const SBitmap& bitmap, const SBitmap* mask = nullptr);
    // -1 removes all.
    virtual int Remove(int index);

    // 0 for an index that there is not.
    int Draw(SDC& dc, int index, int x, int y, UINT flags = ILD_NORMAL) const;
    // What lies under transparent parts; CLR_NONE is what was there. The colour before.
    COLORREF SetBkColor(COLORREF color);
    COLORREF GetBkColor() const;

private:
    template <class>
    friend class brcore8::WrapperMap;

    void LetGo();

    HIMAGELIST handle_ = nullptr;
    bool isOwn_ = false;
};

class BRCORE8_API SImageListEx : public SImageList {
    SDECLARE_CREATABLE(SImageListEx);

    SImageListEx() noexcept = default;

    using SImageList::Add;
    // Adds images for these commands, as many as there are commands: the first's number, or -1,
    // also when the bitmap holds another number of images; nothing is added then.
    int Add(const SBitmap& bitmap, COLORREF transparent, const UINT* commands, int count);
    int Remove(int index) override;
    // The image of a command; -1 when it has none.
    int Find(UINT command) const noexcept;
    // The command of an image; 0 when it has none.
    UINT GetCommand(int index) const noexcept;
    // 0 when the command has no image.
    int DrawCommand(SDC& dc, UINT command, int x, int y, UINT flags = ILD_NORMAL) const;

private:
    std::vector<UINT> commands_;  // of the images; those beyond its end have none
};

#endif
