#include "archive/zip_entry_reader.h"

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include "archive/file_window.h"
#include "streams/clamp.h"

#include <algorithm>
#include <cstring>

namespace brcore8 {

namespace {

constexpr std::size_t kMostAtOnce = 0x40000000;  // counts of the inflater are ints

}  // namespace

ZipEntryReader::ZipEntryReader(SZipFile& archive, const SZipLimits& limits)
    : archive_(archive), limits_(limits) {}

void ZipEntryReader::Start(const SZipEntry& entry) {
    finished_ = 1;
    entry_ = entry;
    ReadHeader();
    if ((header_.GetFlags() & SZipEntry::Encrypted) != 0 ||
        (entry_.GetFlags() & SZipEntry::Encrypted) != 0) {
        ThrowZipException("encrypted ZIP entry not supported");
    }
    if (entry_.GetMethod() != SZipEntry::Stored && entry_.GetMethod() != SZipEntry::Deflated)
        ThrowZipException("invalid compression method");
    if (GetDataEnd() > archive_.directoryOffset_)
        ThrowZipException("invalid entry compressed size");
    position_ = begin_;
    produced_ = 0;
    inflater_.Reset();
    sum_.Reset();
    finished_ = 0;
    if (entry_.GetMethod() == SZipEntry::Stored && entry_.GetCompressedSize() == 0) CheckEnd();
}

void ZipEntryReader::ReadHeader() {
    const std::uint64_t offset = entry_.GetOffset();
    const unsigned char* record = archive_.data_->At(offset, ZipRecords::LocalSize);
    if (record == nullptr || Get32(record) != ZipRecords::LocalSignature)
        ThrowZipException("invalid LOC header signature");
    ZipRecords::ReadLocal(header_, record);
    const ZipRecords::Lengths lengths = ZipRecords::LocalLengths(record);
    begin_ = offset + ZipRecords::LocalSize + lengths.Sum();
    const std::string_view name = entry_.GetName();
    record = archive_.data_->At(offset, ZipRecords::LocalSize + name.size());
    sameName_ = record != nullptr && lengths.name == name.size() &&
                std::memcmp(record + ZipRecords::LocalSize, name.data(), name.size()) == 0;
}

std::size_t ZipEntryReader::ReadStored(void* buffer, std::size_t count) {
    const unsigned char* const bytes = archive_.data_->At(position_, 1);
    if (bytes == nullptr) ThrowZipException("unexpected EOF");
    const std::uint64_t left = GetDataEnd() - position_;
    const std::size_t here = std::min(count, archive_.data_->CountAt(position_));
    const auto taken = static_cast<std::size_t>(std::min<std::uint64_t>(here, left));
    std::memcpy(buffer, bytes, taken);
    position_ += taken;
    finished_ = position_ == GetDataEnd();
    return taken;
}

// The window may be another reader's between two calls: the inflater keeps no input of it.
std::size_t ZipEntryReader::ReadDeflated(void* buffer, std::size_t count) {
    const std::uint64_t before = inflater_.GetTotalOut();
    while (!inflater_.IsFinished() && inflater_.GetTotalOut() == before) {
        const std::uint64_t left = GetDataEnd() - position_;
        const unsigned char* const bytes = left != 0 ? archive_.data_->At(position_, 1) : nullptr;
        if (left != 0 && bytes == nullptr) ThrowZipException("unexpected EOF");
        const auto here = left != 0 ? archive_.data_->CountAt(position_) : 0;
        inflater_.SetInput(bytes, static_cast<int>(std::min<std::uint64_t>(here, left)));
        const std::uint64_t consumed = inflater_.GetTotalIn();
        inflater_.Inflate(buffer, static_cast<int>(std::min(count, kMostAtOnce)));
        position_ += inflater_.GetTotalIn() - consumed;
        const bool stuck = inflater_.GetTotalIn() == consumed;
        if (stuck && !inflater_.IsFinished() && inflater_.GetTotalOut() == before)
            ThrowZipException("invalid entry compressed size");
    }
    finished_ = inflater_.IsFinished();
    return static_cast<std::size_t>(inflater_.GetTotalOut() - before);
}

unsigned long ZipEntryReader::Read(void* buffer, unsigned long count) {
    if (finished_ || count == 0) return 0;
    std::size_t read;
    try {
        read = entry_.GetMethod() == SZipEntry::Stored ? ReadStored(buffer, count)
                                                       : ReadDeflated(buffer, count);
    } catch (const SEZipException& error) {
        const bool damaged = std::strcmp(error.GetText(), "zlib error!!!") == 0;
        if (!damaged) throw;
        ThrowZipException("Invalid ZLIB data format");
    }
    sum_.Update(buffer, static_cast<unsigned long>(read));
    produced_ += read;
    if (produced_ > entry_.GetSize()) ThrowZipException("invalid entry size");
    CheckZipLimits(limits_, total_, position_ - begin_, produced_);
    if (finished_) CheckEnd();
    return static_cast<unsigned long>(read);
}

void ZipEntryReader::CheckEnd() {
    finished_ = 1;
    total_ += produced_;
    if (position_ != GetDataEnd()) ThrowZipException("invalid entry compressed size");
    if (produced_ != entry_.GetSize()) ThrowZipException("invalid entry size");
    if (sum_.GetValue() != entry_.GetCrc32()) ThrowZipException("invalid entry CRC-32");
}

std::string_view ZipEntryReader::GetTrailer() {
    const std::uint64_t left = archive_.length_ - std::min(archive_.length_, GetDataEnd());
    const auto size =
        static_cast<std::size_t>(std::min<std::uint64_t>(left, ZipRecords::DescriptorSize));
    const unsigned char* const bytes = archive_.data_->At(GetDataEnd(), size);
    return {reinterpret_cast<const char*>(bytes), bytes != nullptr ? size : 0};
}

int ZipEntryReader::Read() {
    unsigned char byte;
    return Read(&byte, 1) == 1 ? byte : -1;
}

unsigned long ZipEntryReader::Available() {
    return finished_ ? 0 : ClampCount(entry_.GetSize() - produced_);
}

}  // namespace brcore8
