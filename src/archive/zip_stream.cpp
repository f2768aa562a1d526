#include <brcore8/archive/zip_stream.h>

#include <brcore8/core/throw.h>

#include "archive/zip_records.h"

#include <algorithm>
#include <cstring>

using brcore8::ThrowZipException;
using brcore8::ZipRecords;

namespace {

constexpr unsigned long kStep = 512;  // bytes passed over at once

}  // namespace

SZipInputStream::SZipInputStream(SInputStream& archive, unsigned long buffer)
    : SInflaterInputStream(archive, buffer) {}

SZipInputStream::~SZipInputStream() = default;

// What was read ahead lies with the inflater, whether it is needed for an entry or behind it.
unsigned long SZipInputStream::ReadSource(void* buffer, unsigned long count) {
    SInflater& inflater = Inflater();
    if (inflater.GetInputLength() == 0) {
        if (count >= DefaultBuffer) return SBytesOf(Wrapped().Read(buffer, count));
        if (FillSome() == 0) return 0;
    }
    const auto* const ahead = static_cast<const char*>(inflater.GetInput());
    const int length = inflater.GetInputLength();
    const unsigned long taken = std::min(count, static_cast<unsigned long>(length));
    std::memcpy(buffer, ahead, taken);
    inflater.SetInput(ahead + taken, length - static_cast<int>(taken));
    return taken;
}

void SZipInputStream::ReadFully(void* buffer, unsigned long count) {
    auto* bytes = static_cast<char*>(buffer);
    while (count != 0) {
        const unsigned long read = ReadSource(bytes, count);
        if (read == 0) brcore8::ThrowEndOfFile();
        bytes += read;
        count -= read;
    }
}

void SZipInputStream::SkipSource(unsigned long count) {
    char block[kStep];
    for (; count > kStep; count -= kStep)
        ReadFully(block, kStep);
    ReadFully(block, count);
}

const SZipEntry* SZipInputStream::GetNextEntry() {
    if (entryOpen_) CloseEntry();
    sum_.Reset();
    SInflater& inflater = Inflater();
    const void* const ahead = inflater.GetInput();
    const int length = inflater.GetInputLength();
    inflater.Reset();
    inflater.SetInput(ahead, length);
    if (noMore_ || !ReadLOC()) return nullptr;
    remaining_ = entry_.GetSize();
    entryOpen_ = 1;
    return &entry_;
}

int SZipInputStream::ReadLOC() {
    unsigned char record[ZipRecords::LocalSize];
    // An archive without entries holds fewer bytes than a header.
    ReadFully(record, 4);
    if (brcore8::Get32(record) != ZipRecords::LocalSignature) {
        noMore_ = 1;
        return 0;
    }
    ReadFully(record + 4, sizeof record - 4);
    SZipEntry entry;
    ZipRecords::ReadLocal(entry, record);
    if ((entry.GetFlags() & SZipEntry::Encrypted) != 0)
        ThrowZipException("encrypted ZIP entry not supported");
    if ((entry.GetFlags() & SZipEntry::Descriptor) != 0 &&
        entry.GetMethod() != SZipEntry::Deflated) {
        ThrowZipException("only DEFLATED entries can have EXT descriptor");
    }
    const ZipRecords::Lengths lengths = ZipRecords::LocalLengths(record);
    if (lengths.name == 0) ThrowZipException("missing entry name");
    char small[kStep];
    std::unique_ptr<char, brcore8::ReleaseBlock> large;
    if (lengths.name > sizeof small)
        large.reset(static_cast<char*>(brcore8::Allocate(lengths.name)));
    char* const name = large != nullptr ? large.get() : small;
    ReadFully(name, lengths.name);
    ZipRecords::SetName(entry, name, lengths.name);
    SkipSource(lengths.extra);
    entry_ = std::move(entry);
    return 1;
}

unsigned long SZipInputStream::ReadStored(void* buffer, unsigned long count) {
    if (remaining_ == 0) {
        entryOpen_ = 0;
        return 0;
    }
    const auto wanted = static_cast<unsigned long>(std::min<std::uint64_t>(count, remaining_));
    const unsigned long read = ReadSource(buffer, wanted);
    if (read == 0) ThrowZipException("unexpected EOF");
    remaining_ -= read;
    return read;
}

unsigned long SZipInputStream::Read(void* buffer, unsigned long count) {
    if (!entryOpen_ || count == 0) return 0;
    unsigned long read = 0;
    std::uint64_t in = 0;
    std::uint64_t out = 0;
    if (entry_.GetMethod() == SZipEntry::Deflated) {
        read = SInflaterInputStream::Read(buffer, count);
        in = Inflater().GetTotalIn();
        out = Inflater().GetTotalOut();
    } else if (entry_.GetMethod() == SZipEntry::Stored) {
        read = ReadStored(buffer, count);
        in = out = entry_.GetSize() - remaining_;
    } else {
        ThrowZipException("invalid compression method");
    }
    brcore8::CheckZipLimits(limits_, total_, in, out);
    sum_.Update(buffer, read);
    if (read != 0) return read;
    total_ += out;
    if (entry_.GetMethod() == SZipEntry::Deflated) ReadEnd();
    return 0;
}

void SZipInputStream::ReadEnd() {
    const std::uint64_t in = Inflater().GetTotalIn();
    const std::uint64_t out = Inflater().GetTotalOut();
    entryOpen_ = 0;
    if ((entry_.GetFlags() & SZipEntry::Descriptor) != 0) {
        unsigned char record[ZipRecords::DescriptorSize];
        ReadFully(record, sizeof record);
        if (brcore8::Get32(record) != ZipRecords::DescriptorSignature)
            ThrowZipException("invalid EXT descriptor signature");
        ZipRecords::ReadDescriptor(entry_, record + 4);
        if (entry_.GetSize() != out) ThrowZipException("invalid entry size");
    }
    if (entry_.GetCompressedSize() != in) ThrowZipException("invalid entry compressed size");
}

void SZipInputStream::CloseEntry() {
    char block[kStep];
    while (Read(block, sizeof block) != 0) {
    }
}
