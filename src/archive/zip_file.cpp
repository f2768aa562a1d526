#include <brcore8/archive/zip_file.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include "archive/file_window.h"
#include "archive/zip_entry_reader.h"
#include "archive/zip_records.h"
#include "core/make_owned.h"
#include "platform/platform.h"

#include <algorithm>
#include <string_view>

using brcore8::ThrowZipException;
using brcore8::ZipRecords;

namespace {

constexpr std::uint64_t kSearched = 65535;  // bytes at the end that may hold the end record

}  // namespace

SZipFile::SZipFile(const SString& path) : prefix_(path) {
    OpenArchive();
    directory_ = brcore8::MakeOwned<brcore8::FileWindow>(file_);
    data_ = brcore8::MakeOwned<brcore8::FileWindow>(file_);
    FindEnd();
    ReadEnd();
}

SZipFile::~SZipFile() = default;

void SZipFile::OpenArchive() {
    // Opening a pipe would wait for a writer.
    if ((GetFileAttributesA(prefix_) & (FILE_ATTRIBUTE_DEVICE | FILE_ATTRIBUTE_DIRECTORY)) != 0)
        ThrowZipException("");
    const std::int64_t size = file_.Open(prefix_) < 0 ? -1 : file_.GetSize();
    if (size < 0) ThrowZipException("");
    length_ = static_cast<std::uint64_t>(size);
}

// From the end backwards: the comment may hold what looks like an end record, but none whose own
// comment reaches exactly to the end of the file, unless it is the true one.
void SZipFile::FindEnd() {
    const std::uint64_t first = length_ - std::min(length_, kSearched);
    const auto size = static_cast<std::size_t>(length_ - first);
    const unsigned char* const tail = directory_->At(first, size);
    if (tail == nullptr) ThrowZipException("");
    for (std::size_t at = size; at-- > 0;) {
        const unsigned char* const record = tail + at;
        const std::size_t rest = size - at;
        if (rest < ZipRecords::EndSize || brcore8::Get32(record) != ZipRecords::EndSignature ||
            ZipRecords::EndSize + brcore8::Get16(record + 20) != rest) {
            continue;
        }
        endPosition_ = first + at;
        comment_ = std::string_view(reinterpret_cast<const char*>(record) + ZipRecords::EndSize,
                                    rest - ZipRecords::EndSize);
        return;
    }
    ThrowZipException("");
}

// From the file itself, which may have changed.
void SZipFile::ReadEnd() {
    unsigned char record[ZipRecords::EndSize];
    if (file_.Seek(static_cast<std::int64_t>(endPosition_), SFile::Origin::Begin) < 0 ||
        file_.Read(record, sizeof record) < 0) {
        brcore8::ThrowIOException("Can't open for reading");
    }
    if (brcore8::Get32(record) != ZipRecords::EndSignature)
        ThrowZipException("invalid END header signature");
    const std::uint64_t size = brcore8::Get32(record + 12);
    const std::uint64_t offset = brcore8::Get32(record + 16);
    const int total = brcore8::Get16(record + 10);
    if (offset + size != endPosition_ ||
        static_cast<std::uint64_t>(total) * ZipRecords::DirectorySize > size) {
        ThrowZipException("invalid END header format");
    }
    if (brcore8::Get16(record + 8) != total) ThrowZipException("cannot have more than one drive");
    count_ = total;
    directoryOffset_ = offset;
}

void SZipFile::ReadEntry(std::uint64_t& position, SZipEntry& entry) {
    const unsigned char* record = directory_->At(position, ZipRecords::DirectorySize);
    if (record == nullptr || brcore8::Get32(record) != ZipRecords::DirectorySignature)
        ThrowZipException("invalid CEN header signature");
    const ZipRecords::Lengths lengths = ZipRecords::DirectoryLengths(record);
    const std::uint64_t next = position + ZipRecords::DirectorySize + lengths.Sum();
    ZipRecords::ReadDirectory(entry, record);
    if (std::uint64_t{entry.GetOffset()} + entry.GetCompressedSize() > directoryOffset_ ||
        next > endPosition_) {
        ThrowZipException("invalid CEN entry size");
    }
    record = directory_->At(position, static_cast<std::size_t>(next - position));
    if (record == nullptr) ThrowZipException("invalid CEN entry size");
    const unsigned char* const name = record + ZipRecords::DirectorySize;
    ZipRecords::SetName(entry, name, lengths.name);
    ZipRecords::SetComment(entry, name + lengths.name + lengths.extra, lengths.comment);
    position = next;
}

int SZipFile::FindFile(const char*, unsigned long) {
    index_ = 0;
    position_ = directoryOffset_;
    ended_ = true;
    if (count_ == 0) return 0;
    ReadEntry(position_, entry_);
    ended_ = false;
    return 1;
}

int SZipFile::FindNextFileA() {
    if (ended_ || index_ >= count_) return 0;
    ++index_;
    try {
        ReadEntry(position_, entry_);
        return 1;
    } catch (const SException&) {
        ended_ = true;
        return 0;
    }
}

unsigned long SZipFile::GetAttributes() const {
    return entry_.IsDirectory() ? Directory : Normal;
}

int SZipFile::MatchesMask(unsigned long attributes) const {
    return (GetAttributes() & attributes) != 0;
}

int SZipFile::GetCreationTime(STime* time) const {
    if (time == nullptr) return 0;
    *time = entry_.GetTime();
    return 1;
}

SString SZipFile::GetFileName() const {
    std::string_view name = entry_.GetName();
    if (name.ends_with('/')) name.remove_suffix(1);
    return SString(name.substr(name.rfind('/') + 1));
}

SString SZipFile::GetFilePath() const {
    SString path = prefix_;
    path += '/';
    path += entry_.GetName();
    return path;
}

std::unique_ptr<SInputStream> SZipFile::Open(const SZipEntry& entry, const SZipLimits& limits) {
    auto reader = brcore8::MakeOwned<brcore8::ZipEntryReader>(*this, limits);
    reader->Start(entry);
    return reader;
}

SZipFile::const_iterator SZipFile::begin() {
    return const_iterator(*this);
}

SZipFile::const_iterator::const_iterator(SZipFile& archive)
    : archive_(&archive), position_(archive.directoryOffset_) {
    if (archive.count_ > 0) archive.ReadEntry(position_, entry_);
}

SZipFile::const_iterator& SZipFile::const_iterator::operator++() {
    if (index_ + 1 < archive_->count_) archive_->ReadEntry(position_, entry_);
    ++index_;
    return *this;
}
