// SZipExtractor: the entries of an archive as files under a folder, every name vetted first.
//
//     SZipFile archive("parts.zip");
//     SZipExtractor extractor(archive);
//     extractor.Extract("parts", [](const SZipFinding& finding) { say(finding.name, finding.text);
//     });
//
// Threads: one thread at a time. Errors: SEOutOfMemory, SEIOAbortedException when the progress
// indicator asks to stop, SEZipException "the names take too much memory" above 24 MiB of them,
// what the report throws. All else is a finding.
#ifndef BRCORE8_ARCHIVE_ZIP_EXTRACTOR_H
#define BRCORE8_ARCHIVE_ZIP_EXTRACTOR_H

#include <brcore8/archive/zip_verifier.h>
#include <brcore8/strings/string_table.h>

#include <string_view>
#include <vector>

// Why no file may bear this name of an entry, in a few words; null when one may. A name is refused
// when it
//   - is empty, absolute, or begins with a drive ("c:") or a server ("//");
//   - has a part that is "..", or nothing but dots and blanks otherwise ("." is left out);
//   - holds a backslash or a zero byte;
//   - has a part that Windows reserves for a device ("con", "nul.txt", "com1"), in any case;
//   - is longer than 4,095 bytes, or a part of it longer than 255;
//   - has a part that is no name of a file on this system (on Windows a colon, a blank at the end).
BRCORE8_API const char* SZipNameFault(std::string_view name) noexcept;

class BRCORE8_API SZipExtractor {
public:
    // The archive must outlive the extractor. Limits hold for the sizes that the archive announces,
    // before anything is written, and for those that come.
    explicit SZipExtractor(SZipFile& archive, const SZipLimits& limits = {}) noexcept
        : archive_(archive), limits_(limits) {}

    // Files get the names in the process's code page (SZipEntry::GetDecodedName) instead of the
    // names' bytes as they are stored.
    void DecodeNames(bool decode = true) noexcept { decode_ = decode; }
    // Extracts this entry, by its stored name, or what lies in this folder, and no longer all.
    void Choose(const SString& name);

    // Looks at every entry, chosen or not, and at no data: reports names that are refused, links
    // and special files, entries that overlap, sizes beyond the limits, names that stand twice or
    // differ in case alone, that are a file's and a folder's, chosen names that are not there, and
    // a damaged directory. Returns the number of findings.
    int Vet(const SZipReport& report = {});

    // Vets, and writes nothing when there is a finding. Else makes `folder` and what leads to it,
    // then the entries. Files and folders take the time of their entry, folders once all is written.
    // Where files have permissions for owner, group and others, they take those that a Unix system
    // kept, less what the process keeps from new files; no others (set-user and the like), and a
    // folder's owner keeps all. A file that is there is replaced, in one step and only by an entry
    // that was sound to its end; one that fails leaves no file, is reported, and the others go on,
    // unless the disk failed. Nothing is written through links below `folder`. Returns the number
    // of findings. The indicator counts compressed bytes.
    int Extract(const SString& folder, const SZipReport& report = {},
                SProgressIndicatorEx* progress = nullptr);

private:
    struct Sizes {
        std::uint64_t announced = 0;
        std::uint64_t packed = 0;
    };
    SString NameOf(const SZipEntry& entry) const;
    SString VetEntry(const SZipEntry& entry, std::uint64_t boundary, Sizes& sizes) const;
    void MarkChosen(std::string_view name, std::vector<bool>& found) const;
    int ReportMissing(const std::vector<bool>& found, const SZipReport& report) const;
    bool IsChosen(std::string_view name) const;

    SZipFile& archive_;
    SZipLimits limits_;
    SStringTable chosen_;
    std::uint64_t packed_ = 0;  // bytes of what was vetted last
    bool decode_ = false;
};

#endif
