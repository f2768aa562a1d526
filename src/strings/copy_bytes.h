// Copying short texts without a call.
#ifndef BRCORE8_SRC_STRINGS_COPY_BYTES_H
#define BRCORE8_SRC_STRINGS_COPY_BYTES_H

#include <cstddef>
#include <cstring>

namespace brcore8 {

// The first and the last `Step` bytes, which overlap where there are fewer than two steps.
template <std::size_t Step>
inline void CopyEnds(char* to, const char* from, std::size_t bytes) noexcept {
    char first[Step], last[Step];
    std::memcpy(first, from, Step);
    std::memcpy(last, from + bytes - Step, Step);
    std::memcpy(to, first, Step);
    std::memcpy(to + bytes - Step, last, Step);
}

// As memmove, but both pointers may be null where there is nothing to copy.
inline void CopyBytes(char* to, const char* from, std::size_t bytes) noexcept {
    if (bytes < 2) {
        if (bytes == 1) *to = *from;
    } else if (bytes < 8) {
        bytes < 4 ? CopyEnds<2>(to, from, bytes) : CopyEnds<4>(to, from, bytes);
    } else if (bytes <= 32) {
        bytes <= 16 ? CopyEnds<8>(to, from, bytes) : CopyEnds<16>(to, from, bytes);
    } else if (bytes <= 64) {
        CopyEnds<32>(to, from, bytes);
    } else {
        std::memmove(to, from, bytes);
    }
}

}  // namespace brcore8

#endif
