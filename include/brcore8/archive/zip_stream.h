// SZipInputStream: the entries of an archive one after the other, from any stream, without the
// archive's directory.
//
//     SInputFile file("parts.zip");
//     SZipInputStream entries(file);
//     while (const SZipEntry* entry = entries.GetNextEntry())
//         use(entry->GetName(), SReadAll(entries));
//
// Since sizes and the CRC-32 may follow the data, an entry is complete only when a read has
// returned 0. The CRC-32 is computed and never compared: GetCrc32() and the entry's own tell.
// Errors: SEZipException with the texts below, "Invalid ZLIB data format" for damaged data;
// SEEOFException "Unexpected end of file" where the source ends within a header or descriptor;
// what the source throws; SEOutOfMemory.
#ifndef BRCORE8_ARCHIVE_ZIP_STREAM_H
#define BRCORE8_ARCHIVE_ZIP_STREAM_H

#include <brcore8/archive/crc32.h>
#include <brcore8/archive/inflater_stream.h>
#include <brcore8/archive/zip_entry.h>

class BRCORE8_API SZipInputStream : public SInflaterInputStream {
public:
    // The size of the buffer that reads ahead in the source.
    enum : unsigned long { DefaultBuffer = 65536 };

    explicit SZipInputStream(SInputStream& archive, unsigned long buffer = DefaultBuffer);
    ~SZipInputStream() override;

    // Passes over what is left of the present entry and goes to the next one, which lives until
    // the next call; null where no entry begins. Of its fields the comment, the offset and the
    // attributes are not known here; with a descriptor, CRC-32 and sizes only at the end of the
    // data. Throws "encrypted ZIP entry not supported", "only DEFLATED entries can have EXT
    // descriptor", "missing entry name", and what reading the present entry throws.
    const SZipEntry* GetNextEntry();
    // Passes over what is left of the present entry.
    void CloseEntry();

    // Bytes of the present entry; 0 at its end and when there is none. Throws "unexpected EOF" in a
    // stored entry, "invalid compression method", and at the end of a deflated one "invalid EXT
    // descriptor signature", "invalid entry size", "invalid entry compressed size".
    unsigned long Read(void* buffer, unsigned long count) override;
    using SInflaterInputStream::Read;
    // Whether the present entry has ended, or there is none.
    int IsEOF() override { return entryOpen_ == 0; }

    // The CRC-32 of the bytes of the present entry that were delivered.
    std::uint32_t GetCrc32() const noexcept { return sum_.GetValue(); }

    // From now on a read throws when one of the limits is exceeded: "entry is too large", "archive
    // is too large", "compression ratio is too high".
    void SetLimits(const SZipLimits& limits) noexcept { limits_ = limits; }

protected:
    // Reads the header of the next entry; 0 when there is none.
    int ReadLOC();
    // Ends a deflated entry: what the inflater did not need belongs to the source again.
    void ReadEnd();
    // Exactly `count` bytes of the source. Throws SEEOFException when there are fewer.
    void ReadFully(void* buffer, unsigned long count);

private:
    unsigned long ReadSource(void* buffer, unsigned long count);
    unsigned long ReadStored(void* buffer, unsigned long count);
    void SkipSource(unsigned long count);

    SZipEntry entry_;
    SZipLimits limits_;
    SCRC32 sum_;
    int entryOpen_ = 0;
    int noMore_ = 0;
    std::uint64_t remaining_ = 0;  // of a stored entry
    std::uint64_t total_ = 0;      // decompressed bytes of the entries before this one
};

#endif
