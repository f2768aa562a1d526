#include <brcore8/streams/output_file.h>

#include <brcore8/core/throw.h>

#include "platform/files.h"
#include "streams/file_filter.h"

#include <limits>

using brcore8::FileOperation;
using brcore8::MayUseFile;

SIMPLEMENT_CLASS(SOutputFile, SOutputStream, 0);

SOutputFile::SOutputFile(const SString& path, int flags) {
    SOutputFile::Init(path, flags);
}

SOutputFile::~SOutputFile() {
    if (stream_ != nullptr) std::fclose(stream_);
}

void SOutputFile::Init(const SString& path, int flags) {
    SOutputFile::Close();
    const char* const mode = flags == Append ? "ab" : "wb";
    stream_ = MayUseFile(FileOperation::Create, path) ? brcore8::OpenStream(path, mode) : nullptr;
    if (stream_ == nullptr) brcore8::ThrowIOException("Can't open for writing");
    // Where an appending stream stands before its first write differs between systems.
    if (flags == Append) brcore8::SeekStream(stream_, 0, SEEK_END);
}

unsigned long SOutputFile::Write(const void* data, unsigned long count) {
    if (stream_ == nullptr || !MayUseFile(FileOperation::Write, nullptr) ||
        std::fwrite(data, 1, count, stream_) < count) {
        brcore8::ThrowIOException("Write failed");
    }
    return count;
}

void SOutputFile::Write(int byte) {
    const auto low = static_cast<unsigned char>(byte);
    SOutputFile::Write(&low, 1);
}

void SOutputFile::Flush() {
    if (stream_ == nullptr) return;
    if (!MayUseFile(FileOperation::Flush, nullptr) || std::fflush(stream_) != 0) {
        brcore8::ThrowIOException("Write failed");
    }
}

void SOutputFile::Close() {
    if (stream_ == nullptr) return;
    std::FILE* const stream = stream_;
    stream_ = nullptr;
    const bool allowed = MayUseFile(FileOperation::Close, nullptr);
    // An error of an earlier write that was buffered may have been seen by nobody yet.
    const bool sound = std::ferror(stream) == 0;
    if (std::fclose(stream) != 0 || !allowed || !sound) {
        brcore8::ThrowIOException("Write failed");
    }
}

long SOutputFile::GetPosition() {
    const std::int64_t position = stream_ != nullptr ? brcore8::TellStream(stream_) : -1;
    constexpr std::int64_t most = std::numeric_limits<long>::max();
    return static_cast<long>(position < most ? position : most);
}
