#include <brcore8/archive/zip_file.h>

#include "archive/zip_builder.h"
#include "streams/support.h"
#include "support/failing_allocator.h"
#include "support/page_scope.h"

#include <iterator>
#include <vector>

namespace {

constexpr char kNoArchive[] = "SEZipException: ";

class ZipFile : public ::testing::Test {
protected:
    std::string Path(const std::string& bytes) {
        const std::string path = folder_ / ("archive" + std::to_string(++count_) + ".zip").c_str();
        Put(path, bytes);
        return path;
    }
    std::string OpeningThrows(const std::string& bytes) {
        const std::string path = Path(bytes);
        return Thrown([&] { SZipFile archive(path.c_str()); });
    }
    // The names by FindFile and FindNextFileA.
    static std::vector<std::string> Walk(SZipFile& archive) {
        std::vector<std::string> names;
        for (int more = archive.FindFile(); more; more = archive.FindNextFileA())
            names.emplace_back(archive.GetEntry().GetName().View());
        return names;
    }
    static ZipBuilder Two() {
        ZipBuilder zip;
        zip.Add({.name = "a.txt", .data = "stored", .comment = "first"});
        zip.Add({.name = "dir/b", .data = std::string(5000, 'b'), .method = 8, .flags = 8});
        return zip;
    }

    Folder folder_;
    int count_ = 0;
};

TEST_F(ZipFile, TellsWhatTheDirectorySays) {
    ZipBuilder zip;
    zip.Add({.name = "dir/", .external = 0x10});
    zip.Add({.name = "dir/a.txt", .data = "text", .comment = "a comment", .extra = "XX\1\0y"s});
    const std::string path = Path(zip.Bytes("of the archive"));
    SZipFile archive(path.c_str());
    EXPECT_EQ(archive.GetEntryCount(), 2);
    EXPECT_EQ(archive.GetComment(), "of the archive");
    EXPECT_EQ(archive.GetDirectoryOffset(), zip.DirectoryAt());

    ASSERT_EQ(archive.FindFile("no such*", 0), 1) << "mask and attributes choose nothing";
    EXPECT_EQ(archive.GetFileName(), "dir");
    EXPECT_EQ(archive.MatchesMask(SBaseFind::Directory), 1);
    EXPECT_EQ(archive.MatchesMask(SBaseFind::Normal | SBaseFind::ReadOnly), 0);
    ASSERT_EQ(archive.FindNextFileA(), 1);
    EXPECT_EQ(archive.MatchesMask(SBaseFind::Normal), 1);
    EXPECT_EQ(archive.GetFileName(), "a.txt");
    EXPECT_EQ(archive.GetFilePath().View(), path + "/dir/a.txt");
    EXPECT_EQ(archive.GetLength(), 4u);
    const SZipEntry& entry = archive.GetEntry();
    EXPECT_EQ(entry.GetComment(), "a comment");
    EXPECT_EQ(entry.GetCrc32(), Crc("text"));
    EXPECT_EQ(entry.GetCompressedSize(), 4u);
    EXPECT_EQ(entry.GetVersionNeeded(), 20);
    EXPECT_EQ(entry.GetOffset(), zip.LocalAt(1));
    const SCalendarTime modified{2038, 2, 28, 12, 30, 8};
    EXPECT_EQ(entry.GetModified(), modified);
    EXPECT_EQ(STime::FromFileTime(entry.GetFileTime()).GetUtc(), modified);
    STime time;
    EXPECT_EQ(archive.GetCreationTime(&time), 1);
    EXPECT_EQ(time.GetLocal(), modified);
    EXPECT_EQ(archive.GetCreationTime(nullptr), 0);
    EXPECT_EQ(archive.FindNextFileA(), 0);
    EXPECT_EQ(archive.GetIndex(), 2);
    EXPECT_EQ(archive.FindNextFileA(), 0);
}

TEST_F(ZipFile, AcceptsTheRightEndRecord) {
    const std::string zip = Two().Bytes();
    const std::string end = zip.substr(Two().EndAt());
    const std::string fake = "PK\5\6" + std::string(18, '\0');  // a comment of 0 bytes
    const struct {
        const char* name;
        std::string bytes;
        std::string thrown;
    } rows[] = {
        {"plain", zip, ""},
        {"comment of 100 bytes", Two().Bytes(std::string(100, 'c')), ""},
        {"comment as long as can be", Two().Bytes(std::string(65513, 'c')), ""},
        {"one byte longer", Two().Bytes(std::string(65514, 'c')), kNoArchive},
        {"comment of 65,535 bytes", Two().Bytes(std::string(65535, 'c')), kNoArchive},
        {"signature in the comment", Two().Bytes("PK\5\6"), ""},
        {"signatures overlap", Two().Bytes("PKPK\5\6PK\5\6"), ""},
        {"record with other length in the comment", Two().Bytes(fake + "!"), ""},
        {"true end record in the comment", Two().Bytes("!" + end),
         "SEZipException: invalid END header format"},
        {"empty record at the end of the comment", Two().Bytes(fake),
         "SEZipException: invalid END header format"},
        {"comment one byte too short", Two().Bytes("c").substr(0, zip.size()), kNoArchive},
        {"one byte behind the comment", zip + "c", kNoArchive},
        {"no entries", ZipBuilder().Bytes(), ""},
        {"no entries, with comment", ZipBuilder().Bytes("nothing here"), ""},
        {"something before", "MZ" + zip, "SEZipException: invalid END header format"},
        {"empty file", "", kNoArchive},
        {"22 zero bytes", std::string(22, '\0'), kNoArchive},
        {"signature alone", "PK\5\6", kNoArchive},
        {"large and no archive", std::string(200'000, 'P'), kNoArchive},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(OpeningThrows(row.bytes), row.thrown);
    }
    for (std::size_t cut = 0; cut < zip.size(); ++cut)
        EXPECT_EQ(OpeningThrows(zip.substr(0, cut)), kNoArchive) << cut;
    EXPECT_EQ(Thrown([&] { SZipFile archive((folder_ / "absent").c_str()); }), kNoArchive);
    EXPECT_EQ(Thrown([&] { SZipFile archive(folder_.Path().string().c_str()); }), kNoArchive);
}

// A number put in the place of another, and what is then thrown; null: nothing.
struct Lie {
    const char* name;
    std::size_t at;
    std::uint64_t value;
    int size;
    const char* text;
};

TEST_F(ZipFile, ComparesTheEndRecord) {
    const ZipBuilder zip = Two();
    const Lie rows[] = {
        {"offset too small", 16, 1, 4, "invalid END header format"},
        {"offset and size wrap 32 bits", 16, 0xFFFFFFFF, 4, "invalid END header format"},
        {"size too large", 12, 0x7FFFFFFF, 4, "invalid END header format"},
        {"too many entries", 8, 0xFFFF'FFFF, 4, "invalid END header format"},
        {"one of two drives", 8, 0x0002'0001, 4, "cannot have more than one drive"},
        {"the number of the disk is ignored", 4, 0x0007'0007, 4, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string bytes = zip.Bytes();
        SetNumber(bytes, zip.EndAt() + row.at, row.value, row.size);
        EXPECT_EQ(OpeningThrows(bytes),
                  row.text != nullptr ? "SEZipException: "s + row.text : "");
    }
}

TEST_F(ZipFile, EndsTheWalkAtADamagedEntry) {
    const ZipBuilder zip = Two();
    const Lie rows[] = {
        {"signature", 0, 0x02014B51, 4, "invalid CEN header signature"},
        {"offset beyond the directory", 42, 0x7FFFFFFF, 4, "invalid CEN entry size"},
        {"offset and size wrap 32 bits", 42, 0xFFFFFFFF, 4, "invalid CEN entry size"},
        {"compressed size too large", 20, 0xFFFFFFFF, 4, "invalid CEN entry size"},
        {"name reaches beyond the directory", 28, 0xFFFF, 2, "invalid CEN entry size"},
        {"comment reaches beyond the directory", 32, 200, 2, "invalid CEN entry size"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (const std::size_t index : {0u, 1u}) {
            std::string bytes = zip.Bytes();
            SetNumber(bytes, zip.HeadAt(index) + row.at, row.value, row.size);
            SZipFile archive(Path(bytes).c_str());
            const std::string thrown = "SEZipException: "s + row.text;
            if (index == 0) {
                EXPECT_EQ(Thrown([&] { archive.FindFile(); }), thrown);
                EXPECT_EQ(archive.FindNextFileA(), 0);
            } else {
                EXPECT_EQ(Walk(archive), std::vector<std::string>{"a.txt"});
                EXPECT_LT(archive.GetIndex(), archive.GetEntryCount());
                EXPECT_EQ(archive.FindNextFileA(), 0);
            }
            EXPECT_EQ(Thrown([&] {
                          for (const SZipEntry& entry : archive)
                              (void)entry;
                      }),
                      thrown);
        }
    }
}

TEST_F(ZipFile, HoldsNoEntryOrAsManyAsThereCanBe) {
    SZipFile none(Path(ZipBuilder().Bytes()).c_str());
    EXPECT_EQ(Walk(none).size(), 0u);
    EXPECT_TRUE(none.begin() == none.end());

    ZipBuilder zip;
    for (int i = 0; i < 65535; ++i)
        zip.Add({.name = "entry" + std::to_string(i), .data = std::to_string(i)});
    SZipFile archive(Path(zip.Bytes()).c_str());
    int count = 0;
    SZipEntry last;
    for (const SZipEntry& entry : archive) {
        last = entry;
        ++count;
    }
    EXPECT_EQ(count, 65535);
    EXPECT_EQ(SReadAll(*archive.Open(last)), "65534");
    EXPECT_EQ(Walk(archive).size(), 65535u);
}

TEST_F(ZipFile, OpensEntriesInAnyOrderAndTogether) {
    ZipBuilder zip;
    std::vector<std::string> texts;
    for (int i = 0; i < 6; ++i) {
        std::string text;
        for (int line = 0; line < 3000 * i; ++line)
            text += std::to_string(line * (i + 7919));
        zip.Add({.name = std::to_string(i), .data = text, .method = i % 2 * 8, .flags = i & 8});
        texts.push_back(std::move(text));
    }
    zip.Add({.name = "stored with descriptor", .data = "text", .flags = 8});
    SZipFile archive(Path(zip.Bytes()).c_str());
    std::vector<std::unique_ptr<SInputStream>> streams;
    for (const SZipEntry& entry : archive)
        streams.push_back(archive.Open(entry));
    EXPECT_EQ(SReadAll(*streams.back()), "text");
    std::vector<std::string> read(texts.size());
    char block[1000];
    for (bool more = true; more;) {
        more = false;
        for (std::size_t i = texts.size(); i-- > 0;) {
            const unsigned long count = streams[i]->Read(block, 100 * (i + 1));
            read[i].append(block, count);
            more = more || count != 0;
        }
    }
    EXPECT_TRUE(read == texts);
}

TEST_F(ZipFile, OpenComparesEverything) {
    const ZipBuilder zip = Two();
    const Lie rows[] = {
        {"local signature", zip.LocalAt(1), 0, 4, "invalid LOC header signature"},
        {"local extra reaches beyond the data", zip.LocalAt(1) + 28, 0xFFFF, 2,
         "invalid entry compressed size"},
        {"encrypted", zip.LocalAt(1) + 6, 9, 2, "encrypted ZIP entry not supported"},
        {"method", zip.HeadAt(1) + 10, 12, 2, "invalid compression method"},
        {"compressed size too small", zip.HeadAt(1) + 20, 5, 4, "invalid entry compressed size"},
        {"compressed size too large", zip.HeadAt(1) + 20, 30, 4, "invalid entry compressed size"},
        {"size too small", zip.HeadAt(1) + 24, 4999, 4, "invalid entry size"},
        {"size too large", zip.HeadAt(1) + 24, 5001, 4, "invalid entry size"},
        {"CRC-32", zip.HeadAt(1) + 16, 7, 4, "invalid entry CRC-32"},
        {"data", zip.DataAt(1), 0xFFFF, 2, "Invalid ZLIB data format"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string bytes = zip.Bytes();
        SetNumber(bytes, row.at, row.value, row.size);
        SZipFile archive(Path(bytes).c_str());
        auto entry = archive.begin();
        EXPECT_EQ(SReadAll(*archive.Open(*entry)), "stored");
        ++entry;
        EXPECT_EQ(Thrown([&] { SReadAll(*archive.Open(*entry)); }), "SEZipException: "s + row.text);
    }
}

TEST_F(ZipFile, KeepsLimits) {
    const ZipBuilder zip = [] {
        ZipBuilder made;
        made.Add({.name = "zeros", .data = std::string(3 << 20, '\0'), .method = 8});
        return made;
    }();
    const std::string path = Path(zip.Bytes());
    const struct {
        const char* name;
        SZipLimits limits;
        const char* text;
    } rows[] = {
        {"none", {}, nullptr},
        {"just enough", {3 << 20, 3 << 20, 1100}, nullptr},
        {"entry", {(3 << 20) - 1, 0, 0}, "entry is too large"},
        {"total", {0, 1 << 20, 0}, "archive is too large"},
        {"ratio", {0, 0, 100}, "compression ratio is too high"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SZipFile archive(path.c_str());
        EXPECT_EQ(Thrown([&] { SReadAll(*archive.Open(*archive.begin(), row.limits)); }),
                  row.text != nullptr ? "SEZipException: "s + row.text : "");
    }
}

TEST_F(ZipFile, DecodesNamesOnRequest) {
    const PageScope page(1252);
    ZipBuilder zip;
    zip.Add({.name = "\xC3\xA9\xE2\x82\xAC", .flags = 0x800, .comment = "\xC3\xA4"});
    zip.Add({.name = "\x82", .comment = "\x84"});  // of the OEM code page 437
    zip.Add({.name = "\xFF", .flags = 0x800});
    SZipFile archive(Path(zip.Bytes()).c_str());
    std::vector<SZipEntry> entries;
    for (const SZipEntry& entry : archive)
        entries.push_back(entry);
    EXPECT_EQ(entries[0].GetName(), "\xC3\xA9\xE2\x82\xAC") << "as stored";
    EXPECT_EQ(entries[0].GetDecodedName(), "\xE9\x80");
    EXPECT_EQ(entries[0].GetDecodedComment(), "\xE4");
    EXPECT_EQ(entries[1].GetDecodedName(), "\xE9");
    EXPECT_EQ(entries[1].GetNameUtf8(), "\xC3\xA9");
    EXPECT_EQ(entries[1].GetCommentUtf8(), "\xC3\xA4");
    EXPECT_EQ(entries[2].GetNameUtf8(), "\xEF\xBF\xBD");
}

TEST_F(ZipFile, SurvivesEveryFailure) {
    const std::string path = Path(Two().Bytes());
    const auto use = [&] {
        SZipFile archive(path.c_str());
        for (const SZipEntry& entry : archive)
            SReadAll(*archive.Open(entry));
    };
    for (int nth = 1;; ++nth) {
        FailNthAllocation fail(nth);
        const std::string thrown = Thrown(use);
        if (!fail.Triggered()) break;
        EXPECT_TRUE(thrown == "SEOutOfMemory" || thrown.ends_with("Invalid ZLIB data format"))
            << thrown;
        ASSERT_LT(nth, 200);
    }
    int failures = 0;
    for (int nth = 1;; ++nth, ++failures) {
        FailNthFileOperation fail(nth);
        const std::string thrown = Thrown(use);
        if (!fail.Triggered()) break;
        EXPECT_TRUE(thrown == kNoArchive || thrown.ends_with("Can't open for reading") ||
                    thrown.empty())  // closing
            << thrown;
    }
    EXPECT_GT(failures, 5);
}

}  // namespace
