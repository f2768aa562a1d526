// Where the entries of an archive lie, by its directory, so that none is read into another.
#ifndef BRCORE8_SRC_ARCHIVE_ZIP_EXTENTS_H
#define BRCORE8_SRC_ARCHIVE_ZIP_EXTENTS_H

#include <brcore8/archive/zip_file.h>
#include <brcore8/archive/zip_verifier.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace brcore8 {

inline constexpr char kOverlaps[] = "the entry overlaps another one";

class ZipExtents {
public:
    // Reads the directory as far as it goes and hands every entry to `visit`; reports what is wrong
    // with the directory and returns the number of these faults.
    int Read(SZipFile& archive, const SZipReport& report,
             const std::function<void(const SZipEntry& entry, int index)>& visit);

    int GetCount() const noexcept { return static_cast<int>(offsets_.size()); }
    // The compressed bytes of all entries.
    std::uint64_t GetPackedSize() const noexcept { return packed_; }
    // Where entry `index` must end at the latest: where the next one, or the directory, begins. Of
    // several that begin together all but the first have no room at all.
    std::uint64_t GetBoundary(int index) const noexcept { return boundaries_[Place(index)]; }

private:
    static std::size_t Place(int index) noexcept { return static_cast<std::size_t>(index); }
    void FindBoundaries(std::uint64_t directory);

    std::vector<std::uint32_t> offsets_;
    std::vector<std::uint64_t> boundaries_;
    std::uint64_t packed_ = 0;
};

void Report(const SZipReport& report, int index, std::string_view name, const char* text);

}  // namespace brcore8

#endif
