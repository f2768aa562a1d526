#include <brcore8/streams/find.h>

#include <brcore8/core/throw.h>

#include "platform/files.h"
#include "platform/platform.h"

#include <new>
#include <string>
#include <string_view>

SBaseFind::~SBaseFind() = default;

struct SFileFind::State {
    ~State() {
        if (handle != INVALID_HANDLE_VALUE) FindClose(handle);
    }

    HANDLE handle = INVALID_HANDLE_VALUE;
    WIN32_FIND_DATAA found{};
    unsigned long wanted = 0;
    std::string folder;  // with the separator after it
};

namespace {

std::uint64_t Join(DWORD high, DWORD low) noexcept {
    return std::uint64_t{high} << 32 | low;
}

STime TimeOf(const FILETIME& time) noexcept {
    return STime::FromFileTime(Join(time.dwHighDateTime, time.dwLowDateTime));
}

}  // namespace

SFileFind::SFileFind() noexcept = default;

SFileFind::~SFileFind() = default;

void SFileFind::Close() noexcept {
    state_.reset();
}

int SFileFind::FindFile(const char* mask, unsigned long attributes) {
    Close();
    if (mask == nullptr) return 0;
    try {
        auto state = std::make_unique<State>();
        const std::string_view path = mask;
        const std::size_t slash = path.find_last_of(brcore8::kFolderSeparators);
        if (slash != path.npos) state->folder = path.substr(0, slash + 1);
        state->wanted = attributes;
        SetLastError(0);
        state->handle = FindFirstFileA(mask, &state->found);
        if (state->handle == INVALID_HANDLE_VALUE) {
            if (GetLastError() == ERROR_NOT_ENOUGH_MEMORY) brcore8::ThrowOutOfMemory();
            return 0;
        }
        state_ = std::move(state);
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    }
    return IsWanted() ? 1 : FindNextFileA();
}

int SFileFind::FindNextFileA() {
    if (state_ == nullptr) return 0;
    while (::FindNextFileA(state_->handle, &state_->found)) {
        if (IsWanted()) return 1;
    }
    Close();
    return 0;
}

bool SFileFind::IsWanted() const noexcept {
    const std::string_view name = state_->found.cFileName;
    return name != "." && name != ".." && MatchesMask(state_->wanted);
}

int SFileFind::MatchesMask(unsigned long attributes) const {
    return (GetAttributes() & attributes) != 0;
}

int SFileFind::GetCreationTime(STime* time) const {
    if (time == nullptr || state_ == nullptr) return 0;
    const STime made = TimeOf(state_->found.ftCreationTime);
    if (made.GetFileTime() == 0) return GetLastWriteTime(time);
    *time = made;
    return 1;
}

int SFileFind::GetLastWriteTime(STime* time) const {
    if (time == nullptr || state_ == nullptr) return 0;
    *time = TimeOf(state_->found.ftLastWriteTime);
    return 1;
}

SString SFileFind::GetFileName() const {
    return state_ != nullptr ? SString(std::string_view(state_->found.cFileName)) : SString();
}

SString SFileFind::GetFilePath() const {
    if (state_ == nullptr) return SString();
    SString path{std::string_view(state_->folder)};
    path += std::string_view(state_->found.cFileName);
    return path;
}

std::uint64_t SFileFind::GetLength() const {
    return state_ != nullptr ? Join(state_->found.nFileSizeHigh, state_->found.nFileSizeLow) : 0;
}

unsigned long SFileFind::GetAttributes() const {
    if (state_ == nullptr) return 0;
    const DWORD attributes = state_->found.dwFileAttributes;
    return attributes != 0 ? attributes : static_cast<unsigned long>(Normal);
}
