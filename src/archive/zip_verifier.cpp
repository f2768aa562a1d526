#include <brcore8/archive/zip_verifier.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>
#include <brcore8/streams/progress.h>

#include "archive/file_window.h"
#include "archive/zip_entry_pass.h"
#include "archive/zip_extents.h"

using brcore8::Get32;
using brcore8::ZipEntryReader;
using brcore8::ZipRecords;

namespace {

bool SameSums(const SZipEntry& left, const SZipEntry& right) noexcept {
    return left.GetCrc32() == right.GetCrc32() && left.GetSize() == right.GetSize() &&
           left.GetCompressedSize() == right.GetCompressedSize();
}

// Null when the entry's header says what the directory says.
const char* HeaderFault(const SZipEntry& entry, const ZipEntryReader& reader) noexcept {
    const SZipEntry& header = reader.GetHeader();
    constexpr int compared = SZipEntry::Encrypted | SZipEntry::Descriptor | SZipEntry::Utf8;
    if (!reader.IsSameName()) return "the local name differs from the directory's";
    if (((header.GetFlags() ^ entry.GetFlags()) & compared) != 0)
        return "the local flags differ from the directory's";
    if (header.GetMethod() != entry.GetMethod())
        return "the local method differs from the directory's";
    if ((header.GetFlags() & SZipEntry::Descriptor) == 0 && !SameSums(header, entry))
        return "the local sizes or CRC-32 differ from the directory's";
    return nullptr;
}

// How long the descriptor behind the data is, which may lack its signature; 0 when there is none
// that says what the directory says.
std::size_t DescriptorLength(const SZipEntry& entry, std::string_view trailer) noexcept {
    const auto* const bytes = reinterpret_cast<const unsigned char*>(trailer.data());
    for (const std::size_t signature : {std::size_t{4}, std::size_t{0}}) {
        if (trailer.size() < signature + 12) continue;
        if (signature != 0 && Get32(bytes) != ZipRecords::DescriptorSignature) continue;
        SZipEntry found;
        ZipRecords::ReadDescriptor(found, bytes + signature);
        if (SameSums(found, entry)) return signature + 12;
    }
    return 0;
}

class EntryCheck : public brcore8::ZipEntryPass {
public:
    using ZipEntryPass::ZipEntryPass;

    // Null when the entry is sound. Throws the reader's exceptions, whose text says the same.
    const char* FindFault(const SZipEntry& entry, std::uint64_t boundary) {
        Reader().Start(entry);
        if (const char* const fault = HeaderFault(entry, Reader())) return fault;
        if (Reader().GetDataEnd() > boundary) return brcore8::kOverlaps;
        while (ReadBlock() != 0) {
        }
        if ((entry.GetFlags() & SZipEntry::Descriptor) == 0) return nullptr;
        const std::size_t length = DescriptorLength(entry, Reader().GetTrailer());
        if (length == 0) return "the descriptor differs from the directory";
        return Reader().GetDataEnd() + length > boundary ? brcore8::kOverlaps : nullptr;
    }
};

// The text of what a call throws, null when it throws nothing. What is no fault of the archive's
// goes on.
template <typename Call>
SString FaultOf(Call call) {
    try {
        const char* const fault = call();
        return fault != nullptr ? SString(fault) : SString();
    } catch (const SEOutOfMemory&) {
        throw;
    } catch (const SEIOAbortedException&) {
        throw;
    } catch (const SException& error) {
        return SString(error.GetText());
    }
}

}  // namespace

int SZipVerifier::Verify(const SZipReport& report, SProgressIndicatorEx* progress) {
    brcore8::ZipExtents extents;
    int faults = extents.Read(archive_, report, [](const SZipEntry&, int) {});
    seen_ = extents.GetCount();
    if (progress != nullptr) progress->SetRange(0, extents.GetPackedSize());
    EntryCheck check(archive_, limits_, progress);
    SZipFile::const_iterator entry;
    for (int index = 0; index < seen_; ++index) {
        const SString fault = FaultOf([&] {
            if (index == 0)
                entry = archive_.begin();
            else
                ++entry;
            return check.FindFault(*entry, extents.GetBoundary(index));
        });
        if (!fault.IsEmpty()) {
            brcore8::Report(report, index, entry->GetName(), fault);
            ++faults;
        }
        check.EntryDone(*entry);
    }
    return faults;
}
