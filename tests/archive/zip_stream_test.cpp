#include <brcore8/archive/zip_stream.h>

#include "archive/zip_builder.h"
#include "streams/support.h"
#include "support/failing_allocator.h"

#include <algorithm>
#include <chrono>

namespace {

// What the entries of an archive are, one after the other: "name=data;".
std::string Entries(const std::string& bytes, unsigned long portion = 0xFFFF,
                    unsigned long buffer = SZipInputStream::DefaultBuffer) {
    Source source(bytes, portion);
    SZipInputStream stream(source, buffer);
    std::string all;
    while (const SZipEntry* entry = stream.GetNextEntry()) {
        all += std::string(entry->GetName().View()) + "=";
        all += SReadAll(stream) + ";";
    }
    return all;
}

ZipBuilder Mixed() {
    ZipBuilder zip;
    zip.Add({.name = "stored", .data = "one"});
    zip.Add({.name = "empty", .extra = std::string(1500, 'x')});
    zip.Add({.name = "deflated", .data = std::string(3000, 'd'), .method = 8});
    zip.Add({.name = "later", .data = "two", .method = 8, .flags = 8});
    zip.Add({.name = "dir/"});
    zip.Add({.name = std::string(60'000, 'n'), .data = "three", .level = 0});
    return zip;
}

TEST(ZipStream, ReadsWhateverThePortions) {
    const std::string expected = "stored=one;empty=;deflated=" + std::string(3000, 'd') +
                                 ";later=two;dir/=;" + std::string(60'000, 'n') + "=three;";
    for (const unsigned long portion : {1ul, 7ul, 0xFFFFul}) {
        for (const unsigned long buffer : {1ul, 100ul, 1ul << 17})
            EXPECT_EQ(Entries(Mixed().Bytes(), portion, buffer), expected);
    }
}

TEST(ZipStream, TellsOfTheEntry) {
    Source source(Mixed().Bytes());
    SZipInputStream stream(source);
    EXPECT_EQ(stream.Read(), -1) << "no entry yet";
    const SZipEntry* entry = stream.GetNextEntry();
    EXPECT_EQ(entry->GetSize(), 3u);
    EXPECT_EQ(entry->GetCrc32(), Crc("one"));
    EXPECT_EQ(stream.IsEOF(), 0);
    EXPECT_EQ(stream.Read(), 'o');
    EXPECT_EQ(stream.Skip(10), 2u);
    EXPECT_EQ(stream.GetCrc32(), Crc("one"));
    EXPECT_EQ(stream.IsEOF(), 1);
    stream.GetNextEntry();
    char byte;
    EXPECT_EQ(stream.Read(&byte, 1), 0u) << "stored, without bytes";
    EXPECT_EQ(stream.GetNextEntry()->GetModified(), (SCalendarTime{2038, 2, 28, 12, 30, 8}));
    EXPECT_EQ(stream.Read(&byte, 0), 0u);
    EXPECT_EQ(stream.Read(), 'd') << "not the end";
    entry = stream.GetNextEntry();
    EXPECT_EQ(entry->GetSize(), 0u) << "not known yet";
    EXPECT_EQ(SReadAll(stream), "two");
    EXPECT_EQ(entry->GetSize(), 3u);
    EXPECT_EQ(entry->GetCrc32(), stream.GetCrc32());
    stream.GetNextEntry();
    stream.GetNextEntry();
    EXPECT_EQ(stream.GetNextEntry(), nullptr);
    EXPECT_EQ(stream.GetNextEntry(), nullptr);
    EXPECT_EQ(stream.Read(), -1);
}

TEST(ZipStream, RefusesWhatItDoesNotSupport) {
    const ZipBuilder zip = Mixed();
    const std::size_t descriptor = zip.LocalAt(4) - 16;
    const struct {
        const char* name;
        std::size_t at;
        std::uint64_t value;
        int size;
        const char* thrown;  // null: nothing is
    } rows[] = {
        {"encrypted", zip.LocalAt(2) + 6, 1, 2, "encrypted ZIP entry not supported"},
        {"stored with descriptor", zip.LocalAt(0) + 6, 8, 2,
         "only DEFLATED entries can have EXT descriptor"},
        {"no name", zip.LocalAt(0) + 26, 0, 2, "missing entry name"},
        {"method", zip.LocalAt(2) + 8, 12, 2, "invalid compression method"},
        {"descriptor signature", descriptor, 0, 4, "invalid EXT descriptor signature"},
        {"descriptor size", descriptor + 12, 4, 4, "invalid entry size"},
        {"descriptor compressed size", descriptor + 8, 4, 4, "invalid entry compressed size"},
        {"compressed size", zip.LocalAt(2) + 18, 4, 4, "invalid entry compressed size"},
        {"data", zip.DataAt(2), 0xFFFF, 2, "Invalid ZLIB data format"},
        {"size of deflated data", zip.LocalAt(2) + 22, 4, 4, nullptr},
        {"CRC-32", zip.LocalAt(2) + 14, 4, 4, nullptr},
        {"CRC-32 of the descriptor", descriptor + 4, 4, 4, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string bytes = zip.Bytes();
        SetNumber(bytes, row.at, row.value, row.size);
        EXPECT_EQ(Thrown([&] { Entries(bytes); }),
                  row.thrown != nullptr ? "SEZipException: "s + row.thrown : "");
    }
    // Bytes that are others and inflate all the same.
    std::string other = zip.Bytes();
    const std::string packed = Deflated(std::string(3000, 'e'));
    other.replace(zip.DataAt(2), packed.size(), packed);
    EXPECT_NE(Entries(other).find("eee"), std::string::npos);
}

TEST(ZipStream, MeetsTheEndOfItsSource) {
    const ZipBuilder zip = Mixed();
    const std::string bytes = zip.Bytes();
    constexpr char end[] = "SEEOFException: Unexpected end of file";
    const struct {
        const char* name;
        std::size_t from, to;
        std::string thrown;
    } rows[] = {
        {"header", 0, zip.DataAt(0), end},
        {"stored data", zip.DataAt(0), zip.LocalAt(1), "SEZipException: unexpected EOF"},
        {"deflated data", zip.DataAt(2), zip.LocalAt(3),
         "SEZipException: Invalid ZLIB data format"},
        {"descriptor", zip.LocalAt(4) - 16, zip.LocalAt(4), end},
        {"behind the last entry", zip.DirectoryAt(), zip.DirectoryAt() + 4, end},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (std::size_t cut = row.from; cut < row.to; ++cut)
            ASSERT_EQ(Thrown([&] { Entries(bytes.substr(0, cut)); }), row.thrown) << cut;
    }
    EXPECT_EQ(Entries(bytes.substr(0, zip.DirectoryAt() + 4)), Entries(bytes));
    EXPECT_EQ(Entries(ZipBuilder().Bytes()), "");
    EXPECT_EQ(Entries("this is no archive"), "");
}

TEST(ZipStream, LyingLengthsAtTheEndAreNoLongWait) {
    const auto start = std::chrono::steady_clock::now();
    for (const std::size_t field : {26u, 28u}) {
        ZipBuilder zip;
        zip.Add({.name = "last"});
        std::string bytes = zip.Bytes();
        SetNumber(bytes, field, 65535, 2);
        Truncate(bytes, zip.DirectoryAt());
        EXPECT_EQ(Thrown([&] { Entries(bytes); }), "SEEOFException: Unexpected end of file");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(ZipStream, KeepsLimits) {
    ZipBuilder zip;
    zip.Add({.name = "zeros", .data = std::string(3 << 20, '\0'), .method = 8, .flags = 8});
    zip.Add({.name = "more", .data = std::string(1 << 20, '\0')});
    const struct {
        const char* name;
        SZipLimits limits;
        const char* text;
    } rows[] = {
        {"just enough", {3 << 20, 4 << 20, 1100}, nullptr},
        {"entry", {(3 << 20) - 1, 0, 0}, "entry is too large"},
        {"total", {0, (4 << 20) - 1, 0}, "archive is too large"},
        {"ratio", {0, 0, 100}, "compression ratio is too high"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Source source(zip.Bytes());
        SZipInputStream stream(source);
        stream.SetLimits(row.limits);
        EXPECT_EQ(Thrown([&] {
                      while (stream.GetNextEntry())
                          SReadAll(stream);
                  }),
                  row.text != nullptr ? "SEZipException: "s + row.text : "");
    }
}

TEST(ZipStream, SurvivesEveryFailure) {
    const std::string bytes = Mixed().Bytes();
    const std::string expected = Entries(bytes);
    for (int nth = 1;; ++nth) {
        FailNthAllocation fail(nth);
        std::string read;
        const std::string thrown = Thrown([&] { read = Entries(bytes); });
        if (!fail.Triggered()) break;
        EXPECT_TRUE(thrown == "SEOutOfMemory" || thrown.ends_with("Invalid ZLIB data format") ||
                    read == expected)  // strings try again
            << nth << thrown;
        ASSERT_LT(nth, 100);
    }
    for (int nth = 1; nth < 20; ++nth) {
        Source source(bytes, 5000, nth);
        SZipInputStream stream(source, 5000);
        const std::string thrown = Thrown([&] {
            while (stream.GetNextEntry())
                SReadAll(stream);
        });
        EXPECT_TRUE(thrown.empty() || thrown == "SEIOException: Source failed" ||
                    thrown == "SEZipException: Invalid ZLIB data format")
            << thrown;
    }
}

}  // namespace
