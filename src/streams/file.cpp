#include <brcore8/streams/file.h>

#include "platform/platform.h"
#include "streams/file_filter.h"

#include <atomic>

namespace brcore8 {

namespace {

constinit std::atomic<FileFilter> g_filter{nullptr};

// A handle of the platform may be null; SFile keeps null for "closed".
void* Store(HANDLE handle) noexcept {
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(handle) + 1);
}

HANDLE HandleOf(void* stored) noexcept {
    return reinterpret_cast<HANDLE>(reinterpret_cast<std::uintptr_t>(stored) - 1);
}

// The platform counts in 32 bits.
DWORD PartOf(std::size_t count) noexcept {
    constexpr std::size_t most = 0x40000000;
    return static_cast<DWORD>(count < most ? count : most);
}

}  // namespace

FileFilter SetFileFilter(FileFilter filter) noexcept {
    return g_filter.exchange(filter, std::memory_order_acq_rel);
}

bool MayUseFile(FileOperation operation, const char* path) noexcept {
    const FileFilter filter = g_filter.load(std::memory_order_acquire);
    return filter == nullptr || filter(operation, path);
}

}  // namespace brcore8

using brcore8::FileOperation;
using brcore8::MayUseFile;

int SFile::OpenAs(const char* path, std::uint32_t access, std::uint32_t share,
                  std::uint32_t disposition) noexcept {
    Close();
    const HANDLE file = CreateFileA(path, access, share == UsualSharing ? ShareRead : share,
                                    nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    handle_ = brcore8::Store(file);
    return 0;
}

int SFile::Open(const char* path, std::uint32_t access, std::uint32_t share) noexcept {
    if (!MayUseFile(FileOperation::Open, path)) return -1;
    return OpenAs(path, access == UsualAccess ? ReadAccess : access, share, OPEN_EXISTING);
}

int SFile::Create(const char* path, std::uint32_t access, std::uint32_t share) noexcept {
    if (!MayUseFile(FileOperation::Create, path)) return -1;
    return OpenAs(path, access == UsualAccess ? ReadAccess | WriteAccess : access, share,
                  CREATE_ALWAYS);
}

int SFile::CreateNew(const char* path, std::uint32_t access, std::uint32_t share) noexcept {
    if (!MayUseFile(FileOperation::Create, path)) return -1;
    return OpenAs(path, access == UsualAccess ? ReadAccess | WriteAccess : access, share,
                  CREATE_NEW);
}

std::int64_t SFile::GetSize() noexcept {
    LARGE_INTEGER size;
    if (handle_ == nullptr || !MayUseFile(FileOperation::Size, nullptr) ||
        !GetFileSizeEx(brcore8::HandleOf(handle_), &size)) {
        return -1;
    }
    return size.QuadPart;
}

std::int64_t SFile::Read(void* buffer, std::size_t count) noexcept {
    if (handle_ == nullptr || !MayUseFile(FileOperation::Read, nullptr)) return -1;
    std::size_t done = 0;
    while (done < count) {
        DWORD read = 0;
        if (!ReadFile(brcore8::HandleOf(handle_), static_cast<char*>(buffer) + done,
                      brcore8::PartOf(count - done), &read, nullptr)) {
            return -1;
        }
        if (read == 0) break;
        done += read;
    }
    return static_cast<std::int64_t>(done);
}

std::int64_t SFile::Write(const void* data, std::size_t count) noexcept {
    if (handle_ == nullptr || !MayUseFile(FileOperation::Write, nullptr)) return -1;
    std::size_t done = 0;
    while (done < count) {
        DWORD written = 0;
        if (!WriteFile(brcore8::HandleOf(handle_), static_cast<const char*>(data) + done,
                       brcore8::PartOf(count - done), &written, nullptr) ||
            written == 0) {
            return -1;
        }
        done += written;
    }
    return static_cast<std::int64_t>(done);
}

std::int64_t SFile::Seek(std::int64_t offset, Origin origin) noexcept {
    if (handle_ == nullptr || !MayUseFile(FileOperation::Seek, nullptr)) return -1;
    constexpr DWORD methods[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
    LARGE_INTEGER distance;
    LARGE_INTEGER position;
    distance.QuadPart = offset;
    return SetFilePointerEx(brcore8::HandleOf(handle_), distance, &position,
                            methods[static_cast<int>(origin)])
               ? position.QuadPart
               : -1;
}

int SFile::SetEndOfFile() noexcept {
    return handle_ != nullptr && MayUseFile(FileOperation::Truncate, nullptr) &&
                   ::SetEndOfFile(brcore8::HandleOf(handle_))
               ? 0
               : -1;
}

int SFile::SetModified(std::uint64_t fileTime) noexcept {
    const FILETIME time{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    return handle_ != nullptr &&
                   SetFileTime(brcore8::HandleOf(handle_), nullptr, nullptr, &time)
               ? 0
               : -1;
}

int SFile::Flush() noexcept {
    return handle_ != nullptr && MayUseFile(FileOperation::Flush, nullptr) &&
                   FlushFileBuffers(brcore8::HandleOf(handle_))
               ? 0
               : -1;
}

int SFile::Close() noexcept {
    if (handle_ == nullptr) return 0;
    const bool allowed = MayUseFile(FileOperation::Close, nullptr);
    const bool closed = CloseHandle(brcore8::HandleOf(handle_)) != 0;
    handle_ = nullptr;
    return allowed && closed ? 0 : -1;
}
