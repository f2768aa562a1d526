// 64-bit sizes in results of type unsigned long, which may have 32 bits.
#ifndef BRCORE8_SRC_STREAMS_CLAMP_H
#define BRCORE8_SRC_STREAMS_CLAMP_H

#include <cstdint>
#include <limits>

namespace brcore8 {

// The greatest unsigned long itself says "end of data" in places and is never a size.
inline unsigned long ClampCount(std::uint64_t count) noexcept {
    constexpr std::uint64_t most = std::numeric_limits<unsigned long>::max() - 1;
    return static_cast<unsigned long>(count < most ? count : most);
}

// The sum of two counts, neither of which wraps.
inline unsigned long AddCounts(unsigned long left, unsigned long right) noexcept {
    const unsigned long sum = left + right;
    return sum < left ? ClampCount(UINT64_MAX) : ClampCount(sum);
}

}  // namespace brcore8

#endif
