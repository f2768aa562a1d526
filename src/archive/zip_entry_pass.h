// A pass over the bytes of many entries, a block at a time, that tells how far it is.
#ifndef BRCORE8_SRC_ARCHIVE_ZIP_ENTRY_PASS_H
#define BRCORE8_SRC_ARCHIVE_ZIP_ENTRY_PASS_H

#include <brcore8/core/throw.h>
#include <brcore8/streams/progress.h>

#include "archive/zip_entry_reader.h"

#include <cstdint>
#include <memory>

namespace brcore8 {

class ZipEntryPass {
public:
    ZipEntryPass(SZipFile& archive, const SZipLimits& limits, SProgressIndicatorEx* progress)
        : reader_(archive, limits),
          progress_(progress),
          block_(static_cast<char*>(Allocate(kBlock))) {}

    // The entry counts with all of its bytes, read or not.
    void EntryDone(const SZipEntry& entry) {
        done_ += entry.GetCompressedSize();
        Tell(0);
    }

protected:
    ZipEntryReader& Reader() noexcept { return reader_; }
    const char* Block() const noexcept { return block_.get(); }
    // Reads the next bytes of the reader's entry; 0 behind its last. Throws the reader's
    // exceptions, and SEIOAbortedException when the indicator asks to stop.
    unsigned long ReadBlock() {
        const unsigned long count = reader_.Read(block_.get(), kBlock);
        Tell(reader_.GetConsumed());
        return count;
    }

private:
    static constexpr unsigned long kBlock = 256 * 1024;

    void Tell(std::uint64_t consumed) {
        if (progress_ == nullptr) return;
        progress_->SetPosition(done_ + consumed);
        if (progress_->IsAborted()) ThrowIOAborted();
    }

    ZipEntryReader reader_;
    SProgressIndicatorEx* progress_;
    std::uint64_t done_ = 0;
    std::unique_ptr<char, ReleaseBlock> block_;
};

}  // namespace brcore8

#endif
