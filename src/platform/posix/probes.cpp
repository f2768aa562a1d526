#include "platform/posix/probes.h"

#include <fcntl.h>
#include <unistd.h>
#include <cerrno>
#include <cstdint>
#include <optional>

namespace {

// A mapping of this process.
struct Mapping {
    std::uintptr_t start;
    std::uintptr_t end;
    bool readable;
    bool writable;
};

// The process's mappings in ascending order, read without taking memory. A line is
// "START-END rwxp ..." with hexadecimal addresses.
class Mappings {
public:
    Mappings() noexcept : file_(open("/proc/self/maps", O_RDONLY | O_CLOEXEC)) {}
    ~Mappings() {
        if (file_ >= 0) close(file_);
    }
    Mappings(const Mappings&) = delete;
    Mappings& operator=(const Mappings&) = delete;

    bool IsOpen() const noexcept { return file_ >= 0; }

    std::optional<Mapping> Next() noexcept {
        Mapping mapping{};
        if (!ReadAddress(mapping.start) || !ReadAddress(mapping.end)) return std::nullopt;
        mapping.readable = ReadByte() == 'r';
        mapping.writable = ReadByte() == 'w';
        int byte = ReadByte();
        while (byte != '\n' && byte >= 0)
            byte = ReadByte();
        return mapping;
    }

private:
    // The digits and the character behind them.
    bool ReadAddress(std::uintptr_t& address) noexcept {
        int byte = ReadByte();
        for (; byte != '-' && byte != ' '; byte = ReadByte()) {
            if (byte < 0) return false;
            address =
                address * 16 + static_cast<unsigned>(byte <= '9' ? byte - '0' : byte - 'a' + 10);
        }
        return true;
    }

    int ReadByte() noexcept {
        if (at_ == filled_) {
            ssize_t count = read(file_, buffer_, sizeof buffer_);
            while (count < 0 && errno == EINTR)
                count = read(file_, buffer_, sizeof buffer_);
            if (count <= 0) return -1;
            filled_ = static_cast<std::size_t>(count);
            at_ = 0;
        }
        return static_cast<unsigned char>(buffer_[at_++]);
    }

    int file_;
    std::size_t at_ = 0;
    std::size_t filled_ = 0;
    char buffer_[4096];
};

// How many bytes from the address on can be read, and written where that is asked; nothing where
// the system does not tell.
std::optional<std::size_t> UsableBytes(const void* address, bool writable) noexcept {
    Mappings mappings;
    if (!mappings.IsOpen()) return std::nullopt;
    const auto begin = reinterpret_cast<std::uintptr_t>(address);
    std::uintptr_t end = begin;
    while (const std::optional<Mapping> mapping = mappings.Next()) {
        if (mapping->end <= end) continue;
        if (mapping->start > end || !mapping->readable || (writable && !mapping->writable)) break;
        end = mapping->end;
    }
    return end - begin;
}

BOOL IsBadRange(const void* address, std::size_t size, bool writable) noexcept {
    if (size == 0) return 0;
    const std::optional<std::size_t> usable = UsableBytes(address, writable);
    return usable ? *usable < size : address == nullptr;
}

template <typename Char>
BOOL IsBadString(const Char* text, std::size_t most) noexcept {
    if (most == 0) return 0;
    const std::optional<std::size_t> usable = UsableBytes(text, false);
    if (!usable) return text == nullptr;
    const std::size_t readable = *usable / sizeof(Char);
    for (std::size_t i = 0; i < readable; ++i) {
        if (i == most || text[i] == 0) return 0;
    }
    return readable < most;
}

}  // namespace

BOOL IsBadReadPtr(const void* address, std::size_t size) noexcept {
    return IsBadRange(address, size, false);
}

BOOL IsBadWritePtr(void* address, std::size_t size) noexcept {
    return IsBadRange(address, size, true);
}

BOOL IsBadStringPtrA(const char* text, std::size_t most) noexcept {
    return IsBadString(text, most);
}

BOOL IsBadStringPtrW(const wchar_t* text, std::size_t most) noexcept {
    return IsBadString(text, most);
}
