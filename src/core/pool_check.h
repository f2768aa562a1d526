// In debug builds the pools' chunks are known, and which of their blocks are in use: a block that
// is given back twice, or that is none of the pool's, ends the program there and then.
#ifndef BRCORE8_SRC_CORE_POOL_CHECK_H
#define BRCORE8_SRC_CORE_POOL_CHECK_H

#include <cstdint>

class SFixedAlloc;

namespace brcore8 {

#ifdef NDEBUG
constexpr bool kChecksPools = false;
#else
constexpr bool kChecksPools = true;
#endif

// A chunk is known by its first block. False without the memory to remember it.
bool RememberChunk(const SFixedAlloc& pool, const void* first, std::uint32_t blockSize,
                   std::uint32_t blocks) noexcept;
void ForgetChunk(const void* first) noexcept;

void CheckTaken(const SFixedAlloc& pool, const void* block) noexcept;
void CheckGivenBack(const SFixedAlloc& pool, const void* block) noexcept;

}  // namespace brcore8

#endif
