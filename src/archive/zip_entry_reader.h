// The bytes of one entry after the other, by the sizes of the directory, each compared in the end
// with what the archive says of it.
#ifndef BRCORE8_SRC_ARCHIVE_ZIP_ENTRY_READER_H
#define BRCORE8_SRC_ARCHIVE_ZIP_ENTRY_READER_H

#include <brcore8/archive/crc32.h>
#include <brcore8/archive/inflater.h>
#include <brcore8/archive/zip_file.h>

#include "archive/zip_records.h"

#include <string_view>

namespace brcore8 {

class ZipEntryReader : public SInputStream {
public:
    // The archive must outlive the reader.
    ZipEntryReader(SZipFile& archive, const SZipLimits& limits);

    // Goes to the first byte of an entry, whatever was read before. Throws what SZipFile::Open
    // announces for a header.
    void Start(const SZipEntry& entry);

    // The last bytes come only when all is as it should be; see SZipFile::Open.
    unsigned long Read(void* buffer, unsigned long count) override;
    int Read() override;
    int IsEOF() override { return finished_; }
    unsigned long Available() override;
    void Close() override { finished_ = 1; }

    // What the entry's own header says, without its name; and whether that is the directory's.
    const SZipEntry& GetHeader() const noexcept { return header_; }
    bool IsSameName() const noexcept { return sameName_; }
    // Where the data begins, and where it ends by the directory.
    std::uint64_t GetDataBegin() const noexcept { return begin_; }
    std::uint64_t GetDataEnd() const noexcept { return begin_ + entry_.GetCompressedSize(); }
    std::uint64_t GetConsumed() const noexcept { return position_ - begin_; }
    // The first bytes behind the data, as many as a descriptor has or the archive still holds.
    std::string_view GetTrailer();

private:
    void ReadHeader();
    std::size_t ReadStored(void* buffer, std::size_t count);
    std::size_t ReadDeflated(void* buffer, std::size_t count);
    void CheckEnd();

    SZipFile& archive_;
    SZipLimits limits_;
    std::uint64_t total_ = 0;  // bytes of the entries before this one
    SZipEntry entry_;
    SZipEntry header_;
    SInflater inflater_;
    SCRC32 sum_;
    std::uint64_t begin_ = 0;
    std::uint64_t position_ = 0;
    std::uint64_t produced_ = 0;
    int finished_ = 1;
    bool sameName_ = false;
};

}  // namespace brcore8

#endif
