// A bitmap: bytes as a program gave them, or a surface that is drawn on.
#ifndef BRCORE8_PLATFORM_POSIX_BITMAP_OBJECT_H
#define BRCORE8_PLATFORM_POSIX_BITMAP_OBJECT_H

#include <cstddef>
#include <cstdlib>
#include <memory>

#include "platform/posix/bitmaps.h"
#include "platform/posix/desktop/display.h"
#include "platform/posix/gdi.h"

namespace brcore8 {

struct Bitmap final : GdiObject {
    explicit Bitmap(std::shared_ptr<desktop::Surface> pixels) noexcept;
    // With a copy of the rows, each filled to whole 2 bytes; null without memory.
    static Bitmap* Make(int width, int height, int bits, const void* rows) noexcept;

    // What is drawn on, made of the rows when it is first asked for; null where nothing can draw.
    std::shared_ptr<desktop::Surface> GetSurface();
    // The rows, each `stride` bytes after the one before.
    void CopyRows(char* out, std::size_t stride) const noexcept;
    // Null without memory.
    HBITMAP Copy() const noexcept;
    int Describe(int size, void* out) const noexcept override;

    BITMAP info{};

private:
    struct Free {
        void operator()(void* block) const noexcept { std::free(block); }
    };

    Bitmap() noexcept : GdiObject(Kind::Bitmap) {}
    COLORREF ColorOf(int x, int y) const noexcept;
    // Puts what was drawn into the bytes of a row.
    void TakeDrawn(int y, char* row) const noexcept;

    std::unique_ptr<char, Free> rows_;
    std::shared_ptr<desktop::Surface> surface_;
};

inline Bitmap* FindBitmap(HBITMAP handle) noexcept {
    return FindGdi<Bitmap>(handle, GdiObject::Kind::Bitmap);
}

}  // namespace brcore8

#endif
