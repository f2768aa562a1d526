// SZipVerifier: reads a whole archive and tells what in it is not as it says: entries whose data,
// size or CRC-32 is another, local headers and descriptors that differ from the directory, entries
// that overlap, a directory that ends before its count or goes on behind it.
//
//     SZipFile archive("parts.zip");
//     SZipVerifier verifier(archive);
//     verifier.Verify([](const SZipFinding& finding) { say(finding.name, finding.text); });
//
// Every byte of the archive is decompressed at most once, whatever its directory says.
// Threads: one thread at a time. Errors: SEOutOfMemory, SEIOAbortedException when the progress
// indicator asks to stop, what the report throws. All else is a finding.
#ifndef BRCORE8_ARCHIVE_ZIP_VERIFIER_H
#define BRCORE8_ARCHIVE_ZIP_VERIFIER_H

#include <brcore8/archive/zip_file.h>

#include <functional>

class SProgressIndicatorEx;

// Something that is wrong with an archive.
struct SZipFinding {
    int index = -1;  // the entry's number from 0; -1 for the archive as a whole
    SString name;    // the entry's name as stored; empty where it could not be read
    SString text;    // what is wrong, in a few words
};

using SZipReport = std::function<void(const SZipFinding& finding)>;

class BRCORE8_API SZipVerifier {
public:
    // The archive must outlive the verifier. An entry that exceeds a limit is a finding.
    explicit SZipVerifier(SZipFile& archive, const SZipLimits& limits = {}) noexcept
        : archive_(archive), limits_(limits) {}

    // Reports the first fault of each bad entry, in the directory's order, and returns how many
    // there were; 0 is a sound archive. The indicator counts compressed bytes.
    int Verify(const SZipReport& report = {}, SProgressIndicatorEx* progress = nullptr);
    // How many entries could be read from the directory by the last Verify.
    int GetEntriesSeen() const noexcept { return seen_; }

private:
    SZipFile& archive_;
    SZipLimits limits_;
    int seen_ = 0;
};

#endif
