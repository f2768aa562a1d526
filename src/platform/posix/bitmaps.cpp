#include "platform/posix/bitmaps.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "platform/bitmaps.h"
#include "platform/posix/gdi.h"

namespace {

struct Free {
    void operator()(void* block) const noexcept { std::free(block); }
};

class Bitmap final : public brcore8::GdiObject {
public:
    Bitmap() noexcept : GdiObject(Kind::Bitmap) {}
    // Null without memory.
    static Bitmap* Make(int width, int height, int bits, const void* rows) noexcept {
        const std::int64_t rowBytes = (std::int64_t{width} * bits + 15) / 16 * 2;
        if (rowBytes > INT32_MAX / height) return nullptr;
        const std::int64_t bytes = rowBytes * height;
        std::unique_ptr<Bitmap> bitmap(new (std::nothrow) Bitmap);
        if (!bitmap) return nullptr;
        bitmap->rows_.reset(static_cast<char*>(std::malloc(static_cast<std::size_t>(bytes))));
        if (!bitmap->rows_) return nullptr;
        std::memcpy(bitmap->rows_.get(), rows, static_cast<std::size_t>(bytes));
        bitmap->info_ = {0,      width,
                         height, static_cast<std::int32_t>(rowBytes),
                         1,      static_cast<std::uint16_t>(bits),
                         nullptr};
        return bitmap.release();
    }
    static bool Is(HBITMAP handle) noexcept {
        return reinterpret_cast<brcore8::GdiObject*>(handle)->kind == Kind::Bitmap;
    }
    static const Bitmap& Of(HBITMAP handle) noexcept {
        return *static_cast<Bitmap*>(reinterpret_cast<brcore8::GdiObject*>(handle));
    }

    HBITMAP Handle() noexcept {
        return reinterpret_cast<HBITMAP>(static_cast<brcore8::GdiObject*>(this));
    }
    const BITMAP& Info() const noexcept { return info_; }
    const char* Rows() const noexcept { return rows_.get(); }
    HBITMAP Copy() const noexcept {
        return CreateBitmap(info_.bmWidth, info_.bmHeight, 1, info_.bmBitsPixel, Rows());
    }

    int Describe(int size, void* out) const noexcept override {
        constexpr int needed = sizeof info_;
        if (size < needed) return 0;
        std::memcpy(out, &info_, sizeof info_);
        return needed;
    }

private:
    BITMAP info_ = {};
    std::unique_ptr<char, Free> rows_;
};

struct Icon {
    ~Icon() {
        DeleteObject(info.hbmMask);
        DeleteObject(info.hbmColor);
    }
    // Takes copies of the bitmaps; false without memory.
    bool Take(const ICONINFO& other) noexcept {
        info = other;
        info.hbmMask = Bitmap::Of(other.hbmMask).Copy();
        info.hbmColor = other.hbmColor ? Bitmap::Of(other.hbmColor).Copy() : nullptr;
        return info.hbmMask && (info.hbmColor || !other.hbmColor);
    }

    ICONINFO info = {};
};

}  // namespace

HBITMAP CreateBitmap(int width, int height, unsigned planes, unsigned bits,
                     const void* rows) noexcept {
    const bool known = planes == 1 && (bits == 1 || bits == 32);
    if (!known || width < 1 || height < 1 || rows == nullptr) return nullptr;
    Bitmap* const bitmap = Bitmap::Make(width, height, static_cast<int>(bits), rows);
    return bitmap ? bitmap->Handle() : nullptr;
}

bool brcore8::CopyBitmapRows(HBITMAP handle, int width, int height, int bits, void* rows) noexcept {
    if (!Bitmap::Is(handle)) return false;
    const Bitmap& bitmap = Bitmap::Of(handle);
    const BITMAP& info = bitmap.Info();
    if (width != info.bmWidth || height != info.bmHeight || bits != info.bmBitsPixel) return false;
    const auto from = static_cast<std::size_t>(info.bmWidthBytes);
    const std::size_t to = (from + 3) / 4 * 4;
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y)
        std::memcpy(static_cast<char*>(rows) + y * to, bitmap.Rows() + y * from, from);
    return true;
}

HICON CreateIconIndirect(ICONINFO* info) noexcept {
    if (info->hbmMask == nullptr || !Bitmap::Is(info->hbmMask)) return nullptr;
    if (info->hbmColor != nullptr && !Bitmap::Is(info->hbmColor)) return nullptr;
    std::unique_ptr<Icon> icon(new (std::nothrow) Icon);
    if (!icon || !icon->Take(*info)) return nullptr;
    if (info->fIcon) {
        const BITMAP& shape = Bitmap::Of(info->hbmColor ? info->hbmColor : info->hbmMask).Info();
        icon->info.xHotspot = static_cast<std::uint32_t>(shape.bmWidth / 2);
        icon->info.yHotspot = static_cast<std::uint32_t>(shape.bmHeight / (info->hbmColor ? 2 : 4));
    }
    return reinterpret_cast<HICON>(icon.release());
}

int GetIconInfo(HICON icon, ICONINFO* info) noexcept {
    if (icon == nullptr) return 0;
    Icon copy;
    if (!copy.Take(reinterpret_cast<Icon*>(icon)->info)) return 0;
    *info = copy.info;
    copy.info.hbmMask = copy.info.hbmColor = nullptr;
    return 1;
}

int DestroyIcon(HICON icon) noexcept {
    delete reinterpret_cast<Icon*>(icon);
    return icon != nullptr;
}
