// The records of an archive, little-endian, decoded field by field:
//
//     archive   = { local data [descriptor] } directory end
//     local     = 04034B50 needed:2 flags:2 method:2 time:2 date:2 crc:4 packed:4 size:4
//                 nameLength:2 extraLength:2 name extra
//     descriptor= 08074B50 crc:4 packed:4 size:4
//     directory = { 02014B50 madeBy:2 needed:2 flags:2 method:2 time:2 date:2 crc:4 packed:4
//                   size:4 nameLength:2 extraLength:2 commentLength:2 disk:2 internal:2
//                   external:4 offset:4 name extra comment }
//     end       = 06054B50 disk:2 startDisk:2 diskEntries:2 entries:2 directorySize:4
//                 directoryOffset:4 commentLength:2 comment
#ifndef BRCORE8_SRC_ARCHIVE_ZIP_RECORDS_H
#define BRCORE8_SRC_ARCHIVE_ZIP_RECORDS_H

#include <brcore8/archive/zip_entry.h>

#include <cstddef>
#include <cstdint>

namespace brcore8 {

inline std::uint16_t Get16(const unsigned char* p) noexcept {
    return static_cast<std::uint16_t>(p[0] | p[1] << 8);
}

inline std::uint32_t Get32(const unsigned char* p) noexcept {
    return Get16(p) | static_cast<std::uint32_t>(Get16(p + 2)) << 16;
}

// Sizes and signatures of the fixed parts, and how each becomes an entry.
struct ZipRecords {
    enum : std::uint32_t {
        LocalSignature = 0x04034B50,
        DescriptorSignature = 0x08074B50,
        DirectorySignature = 0x02014B50,
        EndSignature = 0x06054B50
    };
    enum : std::size_t {
        LocalSize = 30,
        DescriptorSize = 16,
        DirectorySize = 46,
        EndSize = 22,
        LongestText = 65535
    };

    struct Lengths {
        std::uint16_t name;
        std::uint16_t extra;
        std::uint16_t comment;
        std::size_t Sum() const noexcept { return std::size_t{name} + extra + comment; }
    };
    static Lengths LocalLengths(const unsigned char* record) noexcept;
    static Lengths DirectoryLengths(const unsigned char* record) noexcept;

    // All but the texts; the CRC-32 and the sizes of a local header only where they are there.
    static void ReadLocal(SZipEntry& entry, const unsigned char* record) noexcept;
    static void ReadDirectory(SZipEntry& entry, const unsigned char* record) noexcept;
    // `record` begins behind the descriptor's signature.
    static void ReadDescriptor(SZipEntry& entry, const unsigned char* record) noexcept;
    static void SetName(SZipEntry& entry, const void* text, std::size_t length);
    static void SetComment(SZipEntry& entry, const void* text, std::size_t length);
};

// Throws SEZipException "entry is too large", "archive is too large" or "compression ratio is too
// high" when an entry, of which `out` bytes came from `in`, may not go on behind others of `before`
// bytes.
void CheckZipLimits(const SZipLimits& limits, std::uint64_t before, std::uint64_t in,
                    std::uint64_t out);

}  // namespace brcore8

#endif
