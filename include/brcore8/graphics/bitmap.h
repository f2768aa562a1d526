// SBitmap: owner of one of the platform's bitmaps, which binary streams carry.
//
// In a stream a bitmap is, low byte first and the same on every system:
//
//     bitmap := width (4 bytes), height (4 bytes), bits a pixel (2 bytes: 1 or 32), rows
//
// The rows come from top to bottom, each filled with zero bits to whole 2 bytes. Of 1-bit pixels
// the leftmost is the highest bit of a byte; 32-bit ones are blue, green, red, alpha. Three zeros
// are no bitmap at all.
//
// Threads: none; an owner belongs to one thread at a time.
//
//     SBitmap logo;
//     logo.Create({2, 1, 32}, pixels);        // std::uint32_t pixels[] = {0xFF0000FF, 0xFFFF0000};
//     out << logo;
#ifndef BRCORE8_GRAPHICS_BITMAP_H
#define BRCORE8_GRAPHICS_BITMAP_H

#include <brcore8/graphics/gdi_object.h>

#include <cstdint>

class SDC;
class SInputBinaryStream;
class SOutputBinaryStream;

class BRCORE8_API SBitmap : public SGdiObject {
    SDECLARE_CREATABLE(SBitmap);

    // Size in pixels, and bits of a pixel as they are streamed: 1 for a device's two-colour bitmap,
    // 32 for any other. All 0 where there is no bitmap.
    struct Shape {
        std::int32_t width = 0;
        std::int32_t height = 0;
        std::int32_t bits = 0;
        bool operator==(const Shape&) const = default;
    };

    // Takes the bitmap over; null holds none.
    explicit SBitmap(HBITMAP handle = nullptr) noexcept : SGdiObject(handle) {}
    SBitmap(SBitmap&& other) noexcept = default;
    SBitmap& operator=(SBitmap&& other) noexcept = default;
    ~SBitmap() override;

    HBITMAP GetBitmap() const noexcept { return static_cast<HBITMAP>(GetHandle()); }
    Shape GetShape() const noexcept;

    // A new bitmap of these pixels, in the rows described above, in place of the one held. Throws
    // SEConstructor when the shape is none that could be streamed or the platform refuses; the old
    // one is then still held.
    void Create(const Shape& shape, const void* rows);
    // A new bitmap to draw on, with the context's kind of pixels, black: 1, or 0 when the platform
    // refuses, and nothing changes.
    int CreateCompatible(const SDC& like, int width, int height) noexcept;

    // Throws SEIOException "Invalid binary format" when the pixels cannot be had, SEOutOfMemory
    // (nothing is written then), and what the stream throws.
    void Write(SOutputBinaryStream& stream) const;
    // Deletes the bitmap held and takes the streamed one. Throws SEIOException "Invalid binary
    // format" for a shape that Create refuses, or rows of 2^31 bytes or more; SEEOFException when
    // the input ends too early. No bitmap is held then, and memory was asked for only as rows came.
    void Read(SInputBinaryStream& stream);
};

BRCORE8_API SOutputBinaryStream& operator<<(SOutputBinaryStream& stream, const SBitmap& bitmap);
BRCORE8_API SInputBinaryStream& operator>>(SInputBinaryStream& stream, SBitmap& bitmap);

#endif
