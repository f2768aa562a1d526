#include <brcore8/streams/mapped_file.h>

#include "platform/files.h"
#include "streams/file_filter.h"

using brcore8::FileOperation;
using brcore8::MayUseFile;

int SMappedFile::Open(const char* path) noexcept {
    Close();
    if (!MayUseFile(FileOperation::Open, path)) return -1;
    data_ = brcore8::MapFile(path, size_);
    return data_ != nullptr ? 0 : -1;
}

int SMappedFile::Close() noexcept {
    if (data_ == nullptr) return 0;
    const bool allowed = MayUseFile(FileOperation::Close, nullptr);
    const bool unmapped = brcore8::UnmapFile(data_, size_);
    data_ = nullptr;
    size_ = 0;
    return allowed && unmapped ? 0 : -1;
}
