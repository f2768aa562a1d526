#include <brcore8/graphics/bitmap.h>

#include <brcore8/graphics/icon.h>
#include <brcore8/streams/binary_stream.h>

#include "streams/support.h"
#include "support/failing_allocator.h"

#include <cstdint>
#include <utility>

namespace {

constexpr const char* kInvalid = "SEIOException: Invalid binary format";
constexpr const char* kEnd = "SEEOFException: Unexpected end of file";

template <class Value>
std::string Packed(const Value& value) {
    Sink sink;
    SOutputBinaryStream out(sink);
    out << value;
    return std::move(sink.bytes);
}

std::string Header(std::int32_t width, std::int32_t height, std::int16_t bits) {
    return Packed(width) + Packed(height) + Packed(bits);
}

std::string Golden(const char* name) {
    return Get(std::string(BRCORE8_GOLDEN_FOLDER "/") + name);
}

// An icon's three fields.
std::string Fields(std::int32_t isIcon) {
    return Packed(isIcon) + Packed(0) + Packed(0);
}

TEST(Bitmap, WritesTheGoldenBytesAndReadsThem) {
    SBitmap two;
    // What fills a row is not kept.
    two.Create({10, 2, 1}, "\xA0\x7F\x40\xBF");
    SBitmap color;
    color.Create({2, 2, 32}, "\xFF\0\0\xFF\0\0\xFF\x80\1\2\3\4\5\6\7\x8");
    const std::string golden = Golden("bitmaps.bin");
    EXPECT_EQ(Packed(two) + Packed(color) + Packed(SBitmap()), golden);

    Source source(golden, 5);
    SInputBinaryStream in(source);
    const SBitmap::Shape shapes[] = {{10, 2, 1}, {2, 2, 32}, {}};
    std::string again;
    for (const SBitmap::Shape& shape : shapes) {
        SBitmap bitmap;
        bitmap.Create({1, 1, 32}, "old");
        in >> bitmap;
        EXPECT_EQ(bitmap.GetShape(), shape);
        again += Packed(bitmap);
    }
    EXPECT_EQ(again, golden);
}

struct Damaged {
    const char* name;
    std::string input;
    std::string thrown;
};

TEST(Bitmap, IsReadWholeOrNotAtAll) {
    const Damaged rows[] = {
        {"nothing", "", kEnd},
        {"half a header", Header(1, 1, 1).substr(0, 9), kEnd},
        {"no rows", Header(1, 1, 1), kEnd},
        {"a row less", Header(1, 2, 32) + "1234", kEnd},
        {"a great bitmap of which nothing came", Header(20000, 20000, 32) + "1234", kEnd},
        {"no width", Header(0, 1, 1) + "12", kInvalid},
        {"a negative height", Header(1, -1, 32) + "1234", kInvalid},
        {"bits of another kind", Header(1, 1, 24) + "1234", kInvalid},
        {"a size that wraps at 32 bits", Header(0x10000, 0x10000, 32) + "1234", kInvalid},
        {"a size that wraps at 64 bits", Header(0x7FFFFFFF, 0x7FFFFFFF, 32) + "1234", kInvalid},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.input);
        SInputBinaryStream in(source);
        SBitmap bitmap;
        bitmap.Create({1, 1, 32}, "old");
        EXPECT_EQ(Thrown([&] { in >> bitmap; }), row.thrown);
        EXPECT_TRUE(bitmap.IsNull());
    }
}

TEST(Bitmap, KeepsTheOldOneWhenNoneCanBeMade) {
    SBitmap bitmap;
    bitmap.Create({1, 1, 32}, "\1\2\3\4");
    const HBITMAP held = bitmap.GetBitmap();
    const SBitmap::Shape bad[] = {{}, {1, 1, 2}, {-1, 1, 1}, {1, 0, 1}, {0x7FFFFFFF, 2, 32}};
    for (const SBitmap::Shape& shape : bad)
        EXPECT_EQ(Thrown([&] { bitmap.Create(shape, "data"); }),
                  "SException: Constructor exception");
    EXPECT_EQ(Thrown([&] {
                  bitmap.Create({1, 1, 1}, nullptr);
              }),
              "SException: Constructor exception");
    EXPECT_EQ(bitmap.GetBitmap(), held);
    SBitmap other(std::move(bitmap));
    bitmap = std::move(other);
    bitmap.Attach(bitmap.GetHandle());
    EXPECT_EQ(bitmap.GetBitmap(), held);
    EXPECT_EQ(Packed(bitmap), Header(1, 1, 32) + "\1\2\3\4");
    EXPECT_EQ(SBitmap(static_cast<HBITMAP>(bitmap.Detach())).GetShape().bits, 32);
    EXPECT_TRUE(bitmap.IsNull());
}

TEST(Bitmap, SurvivesEveryRefusedAllocation) {
    const std::string golden = Golden("bitmaps.bin");
    bool triggered = true;
    for (int nth = 1; triggered; ++nth) {
        Source source(golden);
        SInputBinaryStream in(source);
        SBitmap bitmap;
        std::string written;
        FailNthAllocation fail(nth);
        const std::string thrown = Thrown([&] { in >> bitmap, written = Packed(bitmap); });
        triggered = fail.Triggered();
        EXPECT_EQ(thrown, triggered ? "SEOutOfMemory" : "");
        EXPECT_EQ(written, triggered ? "" : golden.substr(0, 14));
    }
}

TEST(Icon, WritesTheGoldenBytesAndReadsThem) {
    const std::string golden = Golden("icons.bin");
    Source source(golden, 7);
    SInputBinaryStream in(source);
    std::string again;
    for (const char* name : {"icon", "cursor", "cursor of two colours"}) {
        SCOPED_TRACE(name);
        HICON icon = nullptr;
        in >> icon;
        ASSERT_NE(icon, nullptr);
        again += Packed(icon);
        SDestroyIcon(icon);
    }
    EXPECT_EQ(again, golden);
}

TEST(Icon, IsReadWholeOrNotAtAll) {
    const std::string mask = Header(2, 2, 1) + "1234";
    const std::string none = Header(0, 0, 0);
    const Damaged rows[] = {
        {"nothing", "", kEnd},
        {"no colours", Fields(1) + mask, kEnd},
        {"no mask", Fields(1) + none + mask, kInvalid},
        {"no bitmap at all", Fields(1) + none + none, kInvalid},
        {"a mask of odd height alone", Fields(1) + Header(1, 1, 1) + "12" + none, kInvalid},
        {"colours of another size", Fields(1) + mask + Header(1, 1, 32) + "1234", kInvalid},
        {"a mask of many colours", Fields(0) + Header(1, 2, 32) + "12345678" + none, kInvalid},
        {"a mask that is no bitmap", Fields(1) + Header(1, 1, 7), kInvalid},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(row.input);
        SInputBinaryStream in(source);
        HICON icon = reinterpret_cast<HICON>(&source);
        EXPECT_EQ(Thrown([&] { in >> icon; }), row.thrown);
        EXPECT_EQ(icon, nullptr);
    }
    Sink sink;
    SOutputBinaryStream out(sink);
    EXPECT_EQ(Thrown([&] { out << HICON(); }), kInvalid);
    EXPECT_EQ(sink.bytes, "");
    SDestroyIcon(nullptr);
}

}  // namespace
