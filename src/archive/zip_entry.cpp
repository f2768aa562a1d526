#include <brcore8/archive/zip_entry.h>

#include <brcore8/core/throw.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include "archive/zip_records.h"
#include "platform/platform.h"

#include <new>
#include <string_view>

namespace {

// The kind of file in the mode bits that Unix systems keep in the upper half.
constexpr std::uint32_t kKindMask = 0170000u << 16;
constexpr std::uint32_t kKindLink = 0120000u << 16;
constexpr std::uint32_t kKindFolder = 0040000u << 16;
constexpr std::uint32_t kKindFile = 0100000u << 16;
constexpr std::uint32_t kReparsePoint = 0x400;  // in the lower half, of Windows systems

bool PackedByUnix(std::uint16_t madeBy) noexcept {
    const int system = madeBy >> 8;
    return system == 3 || system == 19;
}

template <typename Call>
auto Checked(Call call) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    }
}

}  // namespace

SCalendarTime SZipEntry::GetModified() const noexcept {
    return {1980 + (dosDate_ >> 9), dosDate_ >> 5 & 15, dosDate_ & 31,
            dosTime_ >> 11,         dosTime_ >> 5 & 63, (dosTime_ & 31) * 2};
}

std::uint64_t SZipEntry::GetFileTime() const noexcept {
    FILETIME time;
    if (!DosDateTimeToFileTime(dosDate_, dosTime_, &time)) return 0;
    return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
}

STime SZipEntry::GetTime() const noexcept {
    return GetFileTime() != 0 ? STime::FromLocal(GetModified(), -1) : STime();
}

bool SZipEntry::IsDirectory() const noexcept {
    return name_.View().ends_with('/');
}

bool SZipEntry::IsLink() const noexcept {
    if ((externalAttributes_ & kKindMask) == kKindLink) return true;
    return !PackedByUnix(versionMadeBy_) && (externalAttributes_ & kReparsePoint) != 0;
}

bool SZipEntry::IsSpecial() const noexcept {
    const std::uint32_t kind = externalAttributes_ & kKindMask;
    return PackedByUnix(versionMadeBy_) && kind != 0 && kind != kKindLink && kind != kKindFolder &&
           kind != kKindFile;
}

unsigned SZipEntry::GetPermissions() const noexcept {
    return PackedByUnix(versionMadeBy_) ? externalAttributes_ >> 16 & 0777 : 0;
}

std::string SZipEntry::ToUtf8(const SString& text) const {
    return Checked([&] {
        if ((flags_ & Utf8) != 0) return SUtf8FromUtf16(SUtf16FromUtf8(text.View()));
        return SUtf8FromUtf16(SUtf16FromText(text.View(), nullptr, SCodePageKind::Oem));
    });
}

SString SZipEntry::Decode(const SString& text) const {
    return Checked([&] {
        return SString(std::string_view(STextFromUtf16(
            (flags_ & Utf8) != 0 ? SUtf16FromUtf8(text.View())
                                 : SUtf16FromText(text.View(), nullptr, SCodePageKind::Oem))));
    });
}

namespace brcore8 {

ZipRecords::Lengths ZipRecords::LocalLengths(const unsigned char* record) noexcept {
    return {Get16(record + 26), Get16(record + 28), 0};
}

ZipRecords::Lengths ZipRecords::DirectoryLengths(const unsigned char* record) noexcept {
    return {Get16(record + 28), Get16(record + 30), Get16(record + 32)};
}

void ZipRecords::ReadDescriptor(SZipEntry& entry, const unsigned char* record) noexcept {
    entry.crc32_ = Get32(record);
    entry.compressedSize_ = Get32(record + 4);
    entry.size_ = Get32(record + 8);
}

void ZipRecords::ReadLocal(SZipEntry& entry, const unsigned char* record) noexcept {
    entry.versionNeeded_ = Get16(record + 4);
    entry.flags_ = Get16(record + 6);
    entry.method_ = Get16(record + 8);
    entry.dosTime_ = Get16(record + 10);
    entry.dosDate_ = Get16(record + 12);
    entry.crc32_ = entry.compressedSize_ = entry.size_ = 0;
    if ((entry.flags_ & SZipEntry::Descriptor) == 0) ReadDescriptor(entry, record + 14);
}

void ZipRecords::ReadDirectory(SZipEntry& entry, const unsigned char* record) noexcept {
    entry.versionMadeBy_ = Get16(record + 4);
    entry.versionNeeded_ = Get16(record + 6);
    entry.flags_ = Get16(record + 8);
    entry.method_ = Get16(record + 10);
    entry.dosTime_ = Get16(record + 12);
    entry.dosDate_ = Get16(record + 14);
    ReadDescriptor(entry, record + 16);
    entry.externalAttributes_ = Get32(record + 38);
    entry.offset_ = Get32(record + 42);
}

void ZipRecords::SetName(SZipEntry& entry, const void* text, std::size_t length) {
    entry.name_ = std::string_view(static_cast<const char*>(text), length);
}

void ZipRecords::SetComment(SZipEntry& entry, const void* text, std::size_t length) {
    entry.comment_ = std::string_view(static_cast<const char*>(text), length);
}

void CheckZipLimits(const SZipLimits& limits, std::uint64_t before, std::uint64_t in,
                    std::uint64_t out) {
    constexpr std::uint64_t unchecked = 1 << 20;
    if (limits.entrySize != 0 && out > limits.entrySize) ThrowZipException("entry is too large");
    if (limits.totalSize != 0 && before + out > limits.totalSize)
        ThrowZipException("archive is too large");
    if (limits.ratio != 0 && out > unchecked && out / limits.ratio > in)
        ThrowZipException("compression ratio is too high");
}

}  // namespace brcore8
