#include "archive/zip_extents.h"

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include <algorithm>
#include <new>
#include <numeric>

namespace brcore8 {

void Report(const SZipReport& report, int index, std::string_view name, const char* text) {
    if (report) report({index, SString(name), SString(text)});
}

int ZipExtents::Read(SZipFile& archive, const SZipReport& report,
                     const std::function<void(const SZipEntry& entry, int index)>& visit) {
    int faults = 0;
    std::uint64_t position = archive.GetDirectoryOffset();
    try {
        for (auto entry = archive.begin(); entry != archive.end(); ++entry) {
            visit(*entry, entry.GetIndex());
            offsets_.push_back(entry->GetOffset());
            packed_ += entry->GetCompressedSize();
            position = entry.GetPosition();
        }
    } catch (const std::bad_alloc&) {
        ThrowOutOfMemory();
    } catch (const SEOutOfMemory&) {
        throw;
    } catch (const SException& error) {
        Report(report, GetCount(), "", error.GetText());
        ++faults;
    }
    if (faults == 0 && position != archive.GetEndPosition()) {
        Report(report, -1, "", "the directory goes on behind its last entry");
        ++faults;
    }
    FindBoundaries(archive.GetDirectoryOffset());
    return faults;
}

void ZipExtents::FindBoundaries(std::uint64_t directory) {
    try {
        std::vector<int> order(offsets_.size());
        std::iota(order.begin(), order.end(), 0);
        std::ranges::stable_sort(order, {}, [&](int index) { return offsets_[Place(index)]; });
        boundaries_.assign(offsets_.size(), directory);
        for (std::size_t i = 0; i + 1 < order.size(); ++i)
            boundaries_[Place(order[i])] = offsets_[Place(order[i + 1])];
        // The first of several at one place keeps the room, the others have none.
        for (std::size_t i = order.size(); i-- > 1;) {
            const std::size_t here = Place(order[i]);
            const std::size_t before = Place(order[i - 1]);
            if (offsets_[here] != offsets_[before]) continue;
            boundaries_[before] = boundaries_[here];
            boundaries_[here] = offsets_[here];
        }
    } catch (const std::bad_alloc&) {
        ThrowOutOfMemory();
    }
}

}  // namespace brcore8
