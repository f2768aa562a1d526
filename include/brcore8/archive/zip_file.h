// SZipFile: the entries of an archive, by its central directory, walked like a folder.
//
//     SZipFile archive("parts.zip");
//     for (const SZipEntry& entry : archive)
//         if (entry.GetName().Match("*.txt"))
//             use(SReadAll(*archive.Open(entry)));
//
// Archives of one part without encryption are read, up to 65,535 entries and 4 GiB each; what
// precedes or follows the archive in its file is not accepted, except its own comment.
// Threads: an archive, with its iterators and streams, belongs to one thread at a time.
// Ownership: the archive's file stays open, and sharable for reading, as long as the object lives;
// iterators and streams must not outlive it.
// Errors: SEZipException with the text of what is wrong, an empty text when the archive cannot be
// opened or has no end record; SEIOException "Can't open for reading" when a read fails;
// SEOutOfMemory.
#ifndef BRCORE8_ARCHIVE_ZIP_FILE_H
#define BRCORE8_ARCHIVE_ZIP_FILE_H

#include <brcore8/archive/zip_entry.h>
#include <brcore8/streams/file.h>
#include <brcore8/streams/find.h>
#include <brcore8/streams/input_stream.h>

#include <cstddef>
#include <iterator>
#include <memory>

namespace brcore8 {

class FileWindow;
class ZipEntryReader;

}  // namespace brcore8

class BRCORE8_API SZipFile : public SBaseFind {
public:
    class const_iterator;

    // Opens the archive and reads its end record. Throws SEZipException: "invalid END header
    // signature" (the file changed meanwhile), "invalid END header format" (the directory is not
    // right before the end record, or too small for its entries), "cannot have more than one
    // drive".
    explicit SZipFile(const SString& path);
    ~SZipFile() override;

    // ---- Walk ---------------------------------------------------------------------------------
    // To the first entry; 0 when the archive has none. Mask and attributes choose nothing here:
    // every entry is visited, and MatchesMask tells of each. Throws SEZipException "invalid CEN
    // header signature" and "invalid CEN entry size" when the first entry is damaged.
    int FindFile(const char* mask = nullptr, unsigned long attributes = AllAttributes) override;
    // A damaged entry, or one that cannot be read, ends the walk with 0 and no word: whoever needs
    // to know compares GetIndex() with GetEntryCount(), or uses the iterators.
    int FindNextFileA() override;
    // The present entry, as it is after a FindFile or FindNextFileA that returned 1.
    const SZipEntry& GetEntry() const noexcept { return entry_; }
    // Its number from 0; GetEntryCount() once the walk has met the end.
    int GetIndex() const noexcept { return index_; }

    // Directory or Normal, by the entry's name.
    unsigned long GetAttributes() const override;
    int MatchesMask(unsigned long attributes) const override;
    // When the entry was last changed (SZipEntry::GetTime).
    int GetCreationTime(STime* time) const override;
    SString GetFileName() const override;  // the last part of its name
    SString GetFilePath() const override;  // the archive's path, "/" and the entry's name
    std::uint64_t GetLength() const override { return entry_.GetSize(); }

    // ---- Iterate ------------------------------------------------------------------------------
    // The same entries in the same order, apart from the walk above. Moving on throws for a damaged
    // entry what FindFile throws for the first.
    const_iterator begin();
    std::default_sentinel_t end() const noexcept { return std::default_sentinel; }

    // ---- Read ---------------------------------------------------------------------------------
    // The bytes of an entry, by the sizes that the directory gives, so that stored entries with a
    // descriptor can be read too. The last read throws when something does not agree:
    // SEZipException "invalid LOC header signature", "encrypted ZIP entry not supported", "invalid
    // compression method", "invalid entry compressed size", "invalid entry size", "invalid entry
    // CRC-32", "unexpected EOF"; "Invalid ZLIB data format"; the limits' texts. The stream is the
    // caller's.
    std::unique_ptr<SInputStream> Open(const SZipEntry& entry, const SZipLimits& limits = {});

    // ---- What the end record says -------------------------------------------------------------
    const SString& GetPath() const noexcept { return prefix_; }
    int GetEntryCount() const noexcept { return count_; }
    std::uint64_t GetArchiveLength() const noexcept { return length_; }
    std::uint64_t GetDirectoryOffset() const noexcept { return directoryOffset_; }
    std::uint64_t GetEndPosition() const noexcept { return endPosition_; }
    const SString& GetComment() const noexcept { return comment_; }

private:
    friend class brcore8::ZipEntryReader;

    void OpenArchive();
    void FindEnd();
    void ReadEnd();
    // Reads the entry at `position` of the directory and moves `position` behind it.
    void ReadEntry(std::uint64_t& position, SZipEntry& entry);

    SString prefix_;
    SString comment_;
    SFile file_;
    SZipEntry entry_;
    std::uint64_t length_ = 0;
    std::uint64_t endPosition_ = 0;
    std::uint64_t directoryOffset_ = 0;
    std::uint64_t position_ = 0;
    int count_ = 0;
    int index_ = 0;
    bool ended_ = true;
    std::unique_ptr<brcore8::FileWindow> directory_;
    std::unique_ptr<brcore8::FileWindow> data_;
};

// An input iterator that holds the entry it stands at.
class BRCORE8_API SZipFile::const_iterator {
public:
    using iterator_concept = std::input_iterator_tag;
    using iterator_category = std::input_iterator_tag;
    using value_type = SZipEntry;
    using difference_type = std::ptrdiff_t;
    using pointer = const SZipEntry*;
    using reference = const SZipEntry&;

    const_iterator() = default;
    const SZipEntry& operator*() const noexcept { return entry_; }
    const SZipEntry* operator->() const noexcept { return &entry_; }
    const_iterator& operator++();
    void operator++(int) { ++*this; }
    bool operator==(std::default_sentinel_t) const noexcept {
        return archive_ == nullptr || index_ >= archive_->count_;
    }
    // The entry's number from 0, and where the directory goes on behind it.
    int GetIndex() const noexcept { return index_; }
    std::uint64_t GetPosition() const noexcept { return position_; }

private:
    friend class SZipFile;
    explicit const_iterator(SZipFile& archive);

    SZipFile* archive_ = nullptr;
    SZipEntry entry_;
    std::uint64_t position_ = 0;
    int index_ = 0;
};

#endif
