// Image lists: small pictures kept as their pixels, since they are drawn in runs of one colour.

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "platform/posix/bitmap_object.h"
#include "platform/posix/desktop/device.h"

using namespace brcore8::desktop;

namespace {

constexpr COLORREF kTransparent = CLR_NONE;
constexpr COLORREF kFirstPixel = 0xFF000000;  // the colour of the left upper one
constexpr int kLargest = 2048;

// A picture in rows from the top.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<COLORREF> colors;
    COLORREF At(int x, int y) const { return colors[static_cast<std::size_t>(y) * width + x]; }
};

Pixels PixelsOf(HBITMAP handle) {
    const brcore8::Bitmap* const bitmap = brcore8::FindBitmap(handle);
    if (bitmap == nullptr) return {};
    const BITMAP& info = bitmap->info;
    const auto rowBytes = static_cast<std::size_t>(info.bmWidthBytes);
    std::vector<unsigned char> rows(rowBytes * static_cast<std::size_t>(info.bmHeight));
    bitmap->CopyRows(reinterpret_cast<char*>(rows.data()), rowBytes);
    Pixels pixels{info.bmWidth, info.bmHeight, {}};
    for (int y = 0; y < info.bmHeight; ++y) {
        const unsigned char* const row = rows.data() + rowBytes * static_cast<std::size_t>(y);
        for (int x = 0; x < info.bmWidth; ++x) {
            const bool isSet = (row[x / 8] & 0x80 >> x % 8) != 0;
            const unsigned char* const at = row + std::ptrdiff_t{4} * x;
            pixels.colors.push_back(info.bmBitsPixel == 1 ? (isSet ? 0xFFFFFF : 0)
                                                          : RGB(at[2], at[1], at[0]));
        }
    }
    return pixels;
}

struct ImageList final : brcore8::GdiObject {
    ImageList(int imageWidth, int imageHeight) noexcept
        : GdiObject(Kind::ImageList), width(imageWidth), height(imageHeight) {}

    const int width;
    const int height;
    COLORREF background = CLR_NONE;
    std::vector<std::vector<COLORREF>> images;

    // One image out of a picture that holds several side by side.
    std::vector<COLORREF> Cut(const Pixels& from, int number) const {
        std::vector<COLORREF> image;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                image.push_back(y < from.height ? from.At(number * width + x, y) : 0);
        return image;
    }
    int Add(const Pixels& pixels) {
        const int count = pixels.width / width;
        if (count < 1) return -1;
        const int first = static_cast<int>(images.size());
        for (int i = 0; i < count; ++i)
            images.push_back(Cut(pixels, i));
        return first;
    }
    bool Has(int index) const { return index >= 0 && index < static_cast<int>(images.size()); }
};

ImageList* FindList(HIMAGELIST handle) noexcept {
    return brcore8::FindGdi<ImageList>(handle, brcore8::GdiObject::Kind::ImageList);
}

// The picture with its transparent pixels marked.
Pixels Masked(HBITMAP bitmap, HBITMAP mask) {
    Pixels pixels = PixelsOf(bitmap);
    const Pixels holes = PixelsOf(mask);
    for (int y = 0; y < std::min(pixels.height, holes.height); ++y)
        for (int x = 0; x < std::min(pixels.width, holes.width); ++x)
            if (holes.At(x, y) != 0)
                pixels.colors[static_cast<std::size_t>(y) * pixels.width + x] = kTransparent;
    return pixels;
}

template <class Call>
int Guarded(int failure, Call call) noexcept {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return failure;
    }
}

}  // namespace

HIMAGELIST ImageList_Create(int width, int height, UINT, int, int) noexcept {
    if (width < 1 || height < 1 || width > kLargest || height > kLargest) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return reinterpret_cast<HIMAGELIST>(
        brcore8::GdiHandleOf(new (std::nothrow) ImageList(width, height)));
}

BOOL ImageList_Destroy(HIMAGELIST handle) noexcept {
    if (FindList(handle) == nullptr) return 0;
    delete brcore8::ForgetGdiHandle(handle);
    return 1;
}

int ImageList_GetImageCount(HIMAGELIST handle) noexcept {
    ImageList* const list = FindList(handle);
    return list != nullptr ? static_cast<int>(list->images.size()) : 0;
}

BOOL ImageList_GetIconSize(HIMAGELIST handle, int* width, int* height) noexcept {
    ImageList* const list = FindList(handle);
    if (list == nullptr) return 0;
    *width = list->width;
    *height = list->height;
    return 1;
}

int ImageList_Add(HIMAGELIST handle, HBITMAP bitmap, HBITMAP mask) noexcept {
    ImageList* const list = FindList(handle);
    return Guarded(-1, [&] { return list != nullptr ? list->Add(Masked(bitmap, mask)) : -1; });
}

int ImageList_AddMasked(HIMAGELIST handle, HBITMAP bitmap, COLORREF color) noexcept {
    ImageList* const list = FindList(handle);
    return Guarded(-1, [&] {
        if (list == nullptr) return -1;
        Pixels pixels = PixelsOf(bitmap);
        if (color == kFirstPixel && !pixels.colors.empty()) color = pixels.colors[0];
        std::replace(pixels.colors.begin(), pixels.colors.end(), color, kTransparent);
        return list->Add(pixels);
    });
}

BOOL ImageList_Replace(HIMAGELIST handle, int index, HBITMAP bitmap, HBITMAP mask) noexcept {
    ImageList* const list = FindList(handle);
    return Guarded(0, [&] {
        if (list == nullptr || !list->Has(index)) return 0;
        const Pixels pixels = Masked(bitmap, mask);
        if (pixels.width < list->width) return 0;
        list->images[static_cast<std::size_t>(index)] = list->Cut(pixels, 0);
        return 1;
    });
}

BOOL ImageList_Remove(HIMAGELIST handle, int index) noexcept {
    ImageList* const list = FindList(handle);
    if (list == nullptr || (index != -1 && !list->Has(index))) return 0;
    if (index == -1)
        list->images.clear();
    else
        list->images.erase(list->images.begin() + index);
    return 1;
}

BOOL ImageList_Draw(HIMAGELIST handle, int index, HDC context, int x, int y, UINT flags) noexcept {
    ImageList* const list = FindList(handle);
    Device* const device = DrawableOf(context);
    if (list == nullptr || !list->Has(index) || device == nullptr) return 0;
    const std::vector<COLORREF>& image = list->images[static_cast<std::size_t>(index)];
    const COLORREF under = (flags & ILD_TRANSPARENT) != 0 ? CLR_NONE : list->background;
    for (int row = 0; row < list->height; ++row) {
        const COLORREF* const pixels = image.data() + static_cast<std::size_t>(row) * list->width;
        for (int column = 0; column < list->width;) {
            int end = column + 1;
            while (end < list->width && pixels[end] == pixels[column])
                ++end;
            const COLORREF color = pixels[column] == kTransparent ? under : pixels[column];
            const RECT run{x + column, y + row, x + end, y + row + 1};
            if (color != CLR_NONE)
                device->surface->Fill(device->clip, OnSurface(*device, run), color);
            column = end;
        }
    }
    return 1;
}

COLORREF ImageList_SetBkColor(HIMAGELIST handle, COLORREF color) noexcept {
    ImageList* const list = FindList(handle);
    return list != nullptr ? std::exchange(list->background, color) : CLR_NONE;
}

COLORREF ImageList_GetBkColor(HIMAGELIST handle) noexcept {
    ImageList* const list = FindList(handle);
    return list != nullptr ? list->background : CLR_NONE;
}
