// SZipEntry: what an archive says of one of its members. SZipLimits: how much of what it says is
// believed.
//
// Threads: a value; several threads may read one.
#ifndef BRCORE8_ARCHIVE_ZIP_ENTRY_H
#define BRCORE8_ARCHIVE_ZIP_ENTRY_H

#include <brcore8/platform/export.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/time.h>

#include <cstdint>
#include <string>

namespace brcore8 {

struct ZipRecords;

}  // namespace brcore8

class BRCORE8_API SZipEntry {
public:
    enum Method : std::uint16_t { Stored = 0, Deflated = 8 };
    enum Flag : std::uint16_t {
        Encrypted = 0x1,
        Descriptor = 0x8,  // the sizes and the CRC-32 follow the data
        Utf8 = 0x800       // the name and the comment are UTF-8
    };

    // ---- As the archive has it ----------------------------------------------------------------
    // The bytes of the name, with "/" between folders and after a folder's own name.
    const SString& GetName() const noexcept { return name_; }
    const SString& GetComment() const noexcept { return comment_; }
    std::uint16_t GetVersionNeeded() const noexcept { return versionNeeded_; }
    std::uint16_t GetFlags() const noexcept { return flags_; }
    std::uint16_t GetMethod() const noexcept { return method_; }
    std::uint32_t GetCrc32() const noexcept { return crc32_; }
    std::uint32_t GetCompressedSize() const noexcept { return compressedSize_; }
    std::uint32_t GetSize() const noexcept { return size_; }
    // Where the entry's local header begins; 0 in an entry that was read in sequence, as are:
    std::uint32_t GetOffset() const noexcept { return offset_; }
    // the attributes that the packing system kept, and which system and version that was.
    std::uint32_t GetExternalAttributes() const noexcept { return externalAttributes_; }
    std::uint16_t GetVersionMadeBy() const noexcept { return versionMadeBy_; }

    // ---- What follows from it -----------------------------------------------------------------
    // When the entry was last changed, by a clock where it was packed: its digits as a file time
    // (steps of 100 ns since 1601-01-01), 0 when no calendar has them.
    std::uint64_t GetFileTime() const noexcept;
    // The same digits one by one, whether a calendar has them or not.
    SCalendarTime GetModified() const noexcept;
    // The moment at which a clock here shows those digits; 0 when no calendar has them.
    STime GetTime() const noexcept;
    bool IsDirectory() const noexcept;
    // A symbolic link, by the attributes of the packing system.
    bool IsLink() const noexcept;
    // No file, folder or link: a device, a pipe.
    bool IsSpecial() const noexcept;
    // The permissions of owner, group and others, rwxrwxrwx in nine bits, where a Unix system kept
    // them; else 0.
    unsigned GetPermissions() const noexcept;
    // The name or the comment in UTF-8 and in the process's code page: from UTF-8 where the entry
    // says so, else from the OEM code page, which archives that do not say so are meant to use.
    // Malformed UTF-8 becomes U+FFFD; what the code page lacks its best fit. Throw SEOutOfMemory.
    std::string GetNameUtf8() const { return ToUtf8(name_); }
    std::string GetCommentUtf8() const { return ToUtf8(comment_); }
    SString GetDecodedName() const { return Decode(name_); }
    SString GetDecodedComment() const { return Decode(comment_); }

private:
    friend struct brcore8::ZipRecords;
    std::string ToUtf8(const SString& text) const;
    SString Decode(const SString& text) const;

    SString name_;
    SString comment_;
    std::uint32_t crc32_ = 0;
    std::uint32_t compressedSize_ = 0;
    std::uint32_t size_ = 0;
    std::uint32_t offset_ = 0;
    std::uint32_t externalAttributes_ = 0;
    std::uint16_t versionMadeBy_ = 0;
    std::uint16_t versionNeeded_ = 0;
    std::uint16_t flags_ = 0;
    std::uint16_t method_ = 0;
    std::uint16_t dosTime_ = 0;
    std::uint16_t dosDate_ = 0;
};

// Bounds for archives from strangers; 0 is none. They count bytes as they are decompressed, so that
// an archive that lies about its sizes meets them too.
struct SZipLimits {
    std::uint64_t entrySize = 0;  // of one entry
    std::uint64_t totalSize = 0;  // of all entries read through one object
    // Decompressed bytes for a compressed byte, once an entry has given a MiB. Deflated data
    // reaches 1,032.
    std::uint32_t ratio = 0;
};

#endif
