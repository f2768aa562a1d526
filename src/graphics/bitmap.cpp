#include <brcore8/graphics/bitmap.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>
#include <brcore8/graphics/dc.h>
#include <brcore8/streams/binary_stream.h>

#include <cstring>
#include <limits>

#include "graphics/invalid_format.h"
#include "platform/bitmaps.h"
#include "platform/platform.h"
#include "streams/byte_block.h"

SIMPLEMENT_CREATABLE(SBitmap, SGdiObject, 2);

using brcore8::ByteBlock;

namespace {

// Bytes of a row, filled to whole units.
std::int64_t RowBytes(const SBitmap::Shape& shape, int unit) {
    const std::int64_t bits = std::int64_t{shape.width} * shape.bits;
    return (bits + 8 * unit - 1) / (8 * unit) * unit;
}

constexpr int kStreamUnit = 2;
constexpr int kSystemUnit = 4;

// Bytes of all rows; 0 for a shape that no bitmap has.
std::int64_t AllBytes(const SBitmap::Shape& shape, int unit) {
    const bool known = shape.bits == 1 || shape.bits == 32;
    if (!known || shape.width < 1 || shape.height < 1) return 0;
    const std::int64_t row = RowBytes(shape, unit);
    return row <= std::numeric_limits<std::int32_t>::max() / shape.height ? row * shape.height : 0;
}

// Takes the system's filling from each row and puts zero bits there.
void NarrowRows(const SBitmap::Shape& shape, char* rows) {
    const auto from = static_cast<std::size_t>(RowBytes(shape, kSystemUnit));
    const auto to = static_cast<std::size_t>(RowBytes(shape, kStreamUnit));
    const std::int64_t used = std::int64_t{shape.width} * shape.bits;
    for (std::size_t y = 0; y < static_cast<std::size_t>(shape.height); ++y) {
        char* const row = rows + y * to;
        std::memmove(row, rows + y * from, to);
        if (used % 8 != 0) row[used / 8] &= static_cast<char>(0xFF00 >> used % 8);
        for (auto filled = static_cast<std::size_t>((used + 7) / 8); filled < to; ++filled)
            row[filled] = 0;
    }
}

}  // namespace

void brcore8::ThrowInvalidFormat() {
    ThrowIOException("Invalid binary format");
}

SBitmap::~SBitmap() = default;

SBitmap::Shape SBitmap::GetShape() const noexcept {
    BITMAP info = {};
    if (IsNull() || GetObjectA(GetHandle(), sizeof info, &info) == 0) return {};
    const bool plain = info.bmBitsPixel == 1 && info.bmPlanes == 1 && info.bmBits == nullptr;
    return {info.bmWidth, info.bmHeight, plain ? 1 : 32};
}

void SBitmap::Create(const Shape& shape, const void* rows) {
    HBITMAP made = nullptr;
    if (AllBytes(shape, kStreamUnit) != 0 && rows != nullptr)
        made = CreateBitmap(shape.width, shape.height, 1, static_cast<unsigned>(shape.bits), rows);
    if (made == nullptr) throw SEConstructor();
    Attach(made);
}

int SBitmap::CreateCompatible(const SDC& like, int width, int height) noexcept {
    return Take(::CreateCompatibleBitmap(like.GetHandle(), width, height));
}

void SBitmap::Write(SOutputBinaryStream& stream) const {
    const Shape shape = GetShape();
    const std::int64_t bytes = AllBytes(shape, kSystemUnit);
    ByteBlock rows;
    if (!IsNull()) {
        if (bytes == 0) brcore8::ThrowInvalidFormat();
        char* const room = rows.Room(static_cast<std::uint64_t>(bytes));
        if (!brcore8::CopyBitmapRows(GetBitmap(), shape.width, shape.height, shape.bits, room))
            brcore8::ThrowInvalidFormat();
        NarrowRows(shape, room);
        rows.Added(static_cast<std::size_t>(AllBytes(shape, kStreamUnit)));
    }
    stream << shape.width << shape.height << static_cast<std::int16_t>(shape.bits);
    stream.WriteBytes(rows.Data(), rows.Size());
}

void SBitmap::Read(SInputBinaryStream& stream) {
    Delete();
    Shape shape;
    std::int16_t bits = 0;
    stream >> shape.width >> shape.height >> bits;
    shape.bits = bits;
    if (shape == Shape()) return;
    const std::int64_t bytes = AllBytes(shape, kStreamUnit);
    if (bytes == 0) brcore8::ThrowInvalidFormat();
    ByteBlock rows;
    rows.AppendFrom(stream, static_cast<std::uint64_t>(bytes));
    try {
        Create(shape, rows.Data());
    } catch (const SEConstructor&) {
        brcore8::ThrowInvalidFormat();
    }
}

SOutputBinaryStream& operator<<(SOutputBinaryStream& stream, const SBitmap& bitmap) {
    bitmap.Write(stream);
    return stream;
}

SInputBinaryStream& operator>>(SInputBinaryStream& stream, SBitmap& bitmap) {
    bitmap.Read(stream);
    return stream;
}
