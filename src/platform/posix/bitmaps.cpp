#include "platform/posix/bitmaps.h"

#include <brcore8/platform/posix/window_calls.h>

#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "platform/bitmaps.h"
#include "platform/posix/bitmap_object.h"

namespace brcore8 {

Bitmap::Bitmap(std::shared_ptr<desktop::Surface> pixels) noexcept
    : GdiObject(Kind::Bitmap), surface_(std::move(pixels)) {
    const SIZE size = surface_->GetSize();
    info = {0, size.cx, size.cy, size.cx * 4, 1, 32, nullptr};
}

Bitmap* Bitmap::Make(int width, int height, int bits, const void* rows) noexcept {
    const std::int64_t rowBytes = (std::int64_t{width} * bits + 15) / 16 * 2;
    if (rowBytes > INT32_MAX / height) return nullptr;
    const auto bytes = static_cast<std::size_t>(rowBytes * height);
    std::unique_ptr<Bitmap> bitmap(new (std::nothrow) Bitmap);
    if (!bitmap) return nullptr;
    bitmap->rows_.reset(static_cast<char*>(std::malloc(bytes)));
    if (!bitmap->rows_) return nullptr;
    std::memcpy(bitmap->rows_.get(), rows, bytes);
    bitmap->info = {0,      width,
                    height, static_cast<std::int32_t>(rowBytes),
                    1,      static_cast<std::uint16_t>(bits),
                    nullptr};
    return bitmap.release();
}

COLORREF Bitmap::ColorOf(int x, int y) const noexcept {
    const auto* const row =
        reinterpret_cast<const unsigned char*>(rows_.get() + std::ptrdiff_t{info.bmWidthBytes} * y);
    if (info.bmBitsPixel == 1) return (row[x / 8] & 0x80 >> x % 8) != 0 ? 0xFFFFFF : 0;
    const unsigned char* const at = row + std::ptrdiff_t{4} * x;
    return RGB(at[2], at[1], at[0]);
}

std::shared_ptr<desktop::Surface> Bitmap::GetSurface() {
    if (surface_ != nullptr || desktop::TheDisplay() == nullptr) return surface_;
    std::shared_ptr<desktop::Surface> made =
        desktop::TheDisplay()->NewSurface({info.bmWidth, info.bmHeight});
    if (made == nullptr) return nullptr;
    const RECT whole{0, 0, info.bmWidth, info.bmHeight};
    for (int y = 0; y < info.bmHeight; ++y)
        for (int x = 0; x < info.bmWidth;) {
            const COLORREF color = ColorOf(x, y);
            int end = x + 1;
            while (end < info.bmWidth && ColorOf(end, y) == color)
                ++end;
            made->Fill(desktop::Clip(&whole, 1), {x, y, end, y + 1}, color);
            x = end;
        }
    return surface_ = std::move(made);
}

// Of two colours a pixel is the nearer one; the fourth byte of 32 bits stays as it was given.
void Bitmap::TakeDrawn(int y, char* row) const noexcept {
    for (int x = 0; x < info.bmWidth; ++x) {
        const COLORREF color = surface_->GetPixel({x, y});
        if (info.bmBitsPixel == 32) {
            char* const at = row + std::ptrdiff_t{4} * x;
            at[0] = static_cast<char>(GetBValue(color));
            at[1] = static_cast<char>(GetGValue(color));
            at[2] = static_cast<char>(GetRValue(color));
            continue;
        }
        const int light = GetRValue(color) + GetGValue(color) + GetBValue(color);
        const int bit = 0x80 >> x % 8;
        row[x / 8] = static_cast<char>(light > 3 * 127 ? row[x / 8] | bit : row[x / 8] & ~bit);
    }
}

void Bitmap::CopyRows(char* out, std::size_t stride) const noexcept {
    const auto bytes = static_cast<std::size_t>(info.bmWidthBytes);
    for (int y = 0; y < info.bmHeight; ++y) {
        char* const row = out + stride * static_cast<std::size_t>(y);
        if (rows_ != nullptr)
            std::memcpy(row, rows_.get() + bytes * static_cast<std::size_t>(y), bytes);
        else
            std::memset(row, 0, bytes);
        if (surface_ != nullptr) TakeDrawn(y, row);
    }
}

HBITMAP Bitmap::Copy() const noexcept {
    const auto bytes = static_cast<std::size_t>(info.bmWidthBytes);
    const std::unique_ptr<char, Free> rows(
        static_cast<char*>(std::malloc(bytes * static_cast<std::size_t>(info.bmHeight))));
    if (rows == nullptr) return nullptr;
    CopyRows(rows.get(), bytes);
    return CreateBitmap(info.bmWidth, info.bmHeight, 1, info.bmBitsPixel, rows.get());
}

int Bitmap::Describe(int size, void* out) const noexcept {
    constexpr int needed = sizeof info;
    if (size < needed) return 0;
    std::memcpy(out, &info, sizeof info);
    return needed;
}

bool CopyBitmapRows(HBITMAP handle, int width, int height, int bits, void* rows) noexcept {
    const Bitmap* const bitmap = FindBitmap(handle);
    if (bitmap == nullptr) return false;
    const BITMAP& info = bitmap->info;
    if (width != info.bmWidth || height != info.bmHeight || bits != info.bmBitsPixel) return false;
    const auto bytes = static_cast<std::size_t>(info.bmWidthBytes);
    bitmap->CopyRows(static_cast<char*>(rows), (bytes + 3) / 4 * 4);
    return true;
}

}  // namespace brcore8

namespace {

using brcore8::Bitmap;
using brcore8::FindBitmap;

struct Icon final : brcore8::GdiObject {
    Icon() noexcept : GdiObject(Kind::Icon) {}
    ~Icon() override {
        DeleteObject(info.hbmMask);
        DeleteObject(info.hbmColor);
    }
    // Takes copies of the bitmaps; false without memory.
    bool Take(const ICONINFO& other) noexcept {
        info = other;
        info.hbmMask = CopyOf(other.hbmMask);
        info.hbmColor = CopyOf(other.hbmColor);
        return info.hbmMask && (info.hbmColor || !other.hbmColor);
    }

    ICONINFO info = {};

private:
    static HBITMAP CopyOf(HBITMAP handle) noexcept {
        const Bitmap* const bitmap = handle != nullptr ? FindBitmap(handle) : nullptr;
        return bitmap != nullptr ? bitmap->Copy() : nullptr;
    }
};

Icon* FindIcon(HICON handle) noexcept {
    return brcore8::FindGdi<Icon>(handle, brcore8::GdiObject::Kind::Icon);
}

}  // namespace

HBITMAP CreateBitmap(int width, int height, unsigned planes, unsigned bits,
                     const void* rows) noexcept {
    const bool known = planes == 1 && (bits == 1 || bits == 32);
    if (!known || width < 1 || height < 1 || rows == nullptr) return nullptr;
    return static_cast<HBITMAP>(
        brcore8::GdiHandleOf(Bitmap::Make(width, height, static_cast<int>(bits), rows)));
}

HICON CreateIconIndirect(ICONINFO* info) noexcept {
    const Bitmap* const mask = FindBitmap(info->hbmMask);
    const Bitmap* const color = info->hbmColor != nullptr ? FindBitmap(info->hbmColor) : nullptr;
    if (mask == nullptr || (info->hbmColor != nullptr && color == nullptr)) return nullptr;
    std::unique_ptr<Icon> icon(new (std::nothrow) Icon);
    if (!icon || !icon->Take(*info)) return nullptr;
    if (info->fIcon) {
        const BITMAP& shape = (color != nullptr ? color : mask)->info;
        icon->info.xHotspot = static_cast<std::uint32_t>(shape.bmWidth / 2);
        icon->info.yHotspot = static_cast<std::uint32_t>(shape.bmHeight / (color ? 2 : 4));
    }
    return static_cast<HICON>(brcore8::GdiHandleOf(icon.release()));
}

int GetIconInfo(HICON handle, ICONINFO* info) noexcept {
    const Icon* const icon = FindIcon(handle);
    Icon copy;
    if (icon == nullptr || !copy.Take(icon->info)) return 0;
    *info = copy.info;
    copy.info.hbmMask = copy.info.hbmColor = nullptr;
    return 1;
}

int DestroyIcon(HICON handle) noexcept {
    if (FindIcon(handle) == nullptr) return 0;
    delete brcore8::ForgetGdiHandle(handle);
    return 1;
}
