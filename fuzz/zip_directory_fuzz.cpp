// A file that may be an archive: walked, every entry read, verified and vetted. What the verifier
// finds sound must be delivered whole.
#include <brcore8/archive/zip_extractor.h>
#include <brcore8/archive/zip_file.h>
#include <brcore8/archive/zip_verifier.h>
#include <brcore8/core/exception.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

const std::string& Scratch() {
    static const std::string path = [] {
        std::random_device random;
        return (std::filesystem::temp_directory_path() /
                ("brcore8-fuzz-" + std::to_string(random()) + ".zip"))
            .string();
    }();
    static const int cleaned = std::atexit([] { std::filesystem::remove(Scratch()); });
    (void)cleaned;
    return path;
}

constexpr SZipLimits Limits{1 << 22, 1 << 24, 0};

void CheckSound(SZipFile& archive, const std::set<int>& bad, int seen) {
    char block[4096];
    auto entry = archive.begin();
    for (int index = 0; index < seen; ++index) {
        if (index != 0) ++entry;
        if (bad.contains(index)) continue;
        const auto stream = archive.Open(*entry);
        std::uint64_t size = 0;
        while (const unsigned long count = stream->Read(block, sizeof block))
            size += count;
        Require(size == entry->GetSize());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(Scratch(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    try {
        SZipFile archive(Scratch().c_str());
        SZipVerifier verifier(archive, Limits);
        std::set<int> bad;
        verifier.Verify([&](const SZipFinding& finding) { bad.insert(finding.index); });
        CheckSound(archive, bad, verifier.GetEntriesSeen());
        SZipExtractor(archive, Limits).Vet();
        int walked = archive.FindFile();
        while (walked != 0 && archive.FindNextFileA())
            ++walked;
        Require(walked == verifier.GetEntriesSeen());
    } catch (const SException&) {
        // Not an archive, or one whose first entry is damaged.
    }
    return 0;
}
