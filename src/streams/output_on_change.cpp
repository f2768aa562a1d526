#include <brcore8/streams/output_on_change.h>

#include <brcore8/core/throw.h>
#include <brcore8/streams/global.h>
#include <brcore8/streams/output_file.h>
#include <brcore8/streams/output_memory.h>

#include "platform/platform.h"
#include "streams/file_rewrite.h"

#include <new>
#include <utility>

SIMPLEMENT_CLASS(SOutputFileOnChange, SOutputStream, 0);

SOutputFileOnChange::SOutputFileOnChange(const SString& path)
    : path_(path), existed_(GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES) {
    if (existed_) {
        inner_ = new (std::nothrow) SOutputGlobal;
    } else {
        inner_ = new (std::nothrow) SOutputFile(path, SOutputFile::Truncate);
    }
}

SOutputFileOnChange::~SOutputFileOnChange() {
    Abandon();
}

void SOutputFileOnChange::Abandon() noexcept {
    if (inner_ == nullptr) return;
    delete std::exchange(inner_, nullptr);
    if (!existed_) brcore8::RemoveFile(path_);
}

SOutputStream& SOutputFileOnChange::Inner() const {
    if (inner_ == nullptr) brcore8::ThrowIOException("Write failed");
    return *inner_;
}

unsigned long SOutputFileOnChange::Write(const void* data, unsigned long count) {
    return Inner().Write(data, count);
}

void SOutputFileOnChange::Write(int byte) {
    Inner().Write(byte);
}

void SOutputFileOnChange::Flush() {
    if (inner_ != nullptr) inner_->Flush();
}

void SOutputFileOnChange::Close(int* changed) {
    if (inner_ != nullptr && existed_) {
        changed_ = Rewrite();
    } else if (inner_ != nullptr) {
        try {
            inner_->Close();
        } catch (...) {
            Abandon();
            throw;
        }
        delete std::exchange(inner_, nullptr);
        changed_ = 1;
    }
    if (changed != nullptr) *changed = changed_;
}

// Writes the file anew if it differs, and says whether it did.
bool SOutputFileOnChange::Rewrite() {
    auto* const memory = static_cast<SOutputGlobal*>(inner_);
    const unsigned long size = memory->UsedSize();
    SHGlobal block(memory->Detach());
    delete std::exchange(inner_, nullptr);
    const void* const data = block.Lock();
    const bool differs = brcore8::FileDiffers(path_, data, size);
    if (differs) brcore8::RewriteFile(path_, data, size);
    return differs;
}
