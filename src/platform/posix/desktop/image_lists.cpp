// Image lists: small pictures kept as their pixels, since they are drawn in runs of one colour.

#include <brcore8/platform/posix/graphics_calls.h>
#include <brcore8/platform/posix/window_calls.h>

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "platform/bitmaps.h"
#include "platform/posix/bitmaps.h"
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

Pixels PixelsOf(const Surface& surface) {
    const SIZE size = surface.GetSize();
    Pixels pixels{size.cx, size.cy, {}};
    for (int y = 0; y < size.cy; ++y)
        for (int x = 0; x < size.cx; ++x)
            pixels.colors.push_back(surface.GetPixel({x, y}));
    return pixels;
}

// Of a bitmap without a surface.
Pixels PixelsOf(HBITMAP bitmap, const BITMAP& info) {
    const int bits = info.bmBitsPixel;
    const std::size_t rowBytes = (static_cast<std::size_t>(info.bmWidth) * bits + 31) / 32 * 4;
    std::vector<unsigned char> rows(rowBytes * info.bmHeight);
    Pixels pixels{info.bmWidth, info.bmHeight, {}};
    if (!brcore8::CopyBitmapRows(bitmap, info.bmWidth, info.bmHeight, bits, rows.data())) return {};
    for (int y = 0; y < info.bmHeight; ++y) {
        const unsigned char* const row = rows.data() + rowBytes * y;
        for (int x = 0; x < info.bmWidth; ++x) {
            const bool isSet = (row[x / 8] & 0x80 >> x % 8) != 0;
            const unsigned char* const at = row + std::ptrdiff_t{4} * x;
            pixels.colors.push_back(bits == 1 ? (isSet ? 0xFFFFFF : 0) : RGB(at[2], at[1], at[0]));
        }
    }
    return pixels;
}

Pixels PixelsOf(HBITMAP bitmap) {
    using brcore8::GdiObject;
    const auto* const object = reinterpret_cast<const GdiObject*>(bitmap);
    if (object == nullptr) return {};
    if (object->kind == GdiObject::Kind::Picture)
        return PixelsOf(*static_cast<const Picture*>(object)->surface);
    BITMAP info{};
    if (object->kind != GdiObject::Kind::Bitmap || !object->Describe(sizeof info, &info)) return {};
    return PixelsOf(bitmap, info);
}

}  // namespace

struct _IMAGELIST {
    int width;
    int height;
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

namespace {

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
    return new (std::nothrow) _IMAGELIST{width, height, CLR_NONE, {}};
}

BOOL ImageList_Destroy(HIMAGELIST list) noexcept {
    delete list;
    return list != nullptr;
}

int ImageList_GetImageCount(HIMAGELIST list) noexcept {
    return list != nullptr ? static_cast<int>(list->images.size()) : 0;
}

BOOL ImageList_GetIconSize(HIMAGELIST list, int* width, int* height) noexcept {
    if (list == nullptr) return 0;
    *width = list->width;
    *height = list->height;
    return 1;
}

int ImageList_Add(HIMAGELIST list, HBITMAP bitmap, HBITMAP mask) noexcept {
    return Guarded(-1, [&] { return list != nullptr ? list->Add(Masked(bitmap, mask)) : -1; });
}

int ImageList_AddMasked(HIMAGELIST list, HBITMAP bitmap, COLORREF color) noexcept {
    return Guarded(-1, [&] {
        if (list == nullptr) return -1;
        Pixels pixels = PixelsOf(bitmap);
        if (color == kFirstPixel && !pixels.colors.empty()) color = pixels.colors[0];
        std::replace(pixels.colors.begin(), pixels.colors.end(), color, kTransparent);
        return list->Add(pixels);
    });
}

BOOL ImageList_Replace(HIMAGELIST list, int index, HBITMAP bitmap, HBITMAP mask) noexcept {
    return Guarded(0, [&] {
        if (list == nullptr || !list->Has(index)) return 0;
        const Pixels pixels = Masked(bitmap, mask);
        if (pixels.width < list->width) return 0;
        list->images[static_cast<std::size_t>(index)] = list->Cut(pixels, 0);
        return 1;
    });
}

BOOL ImageList_Remove(HIMAGELIST list, int index) noexcept {
    if (list == nullptr || (index != -1 && !list->Has(index))) return 0;
    if (index == -1)
        list->images.clear();
    else
        list->images.erase(list->images.begin() + index);
    return 1;
}

BOOL ImageList_Draw(HIMAGELIST list, int index, HDC context, int x, int y, UINT flags) noexcept {
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

COLORREF ImageList_SetBkColor(HIMAGELIST list, COLORREF color) noexcept {
    return list != nullptr ? std::exchange(list->background, color) : CLR_NONE;
}

COLORREF ImageList_GetBkColor(HIMAGELIST list) noexcept {
    return list != nullptr ? list->background : CLR_NONE;
}
