// Tells AddressSanitizer which memory nobody may touch; nothing without it.
#ifndef BRCORE8_SRC_PLATFORM_SANITIZER_H
#define BRCORE8_SRC_PLATFORM_SANITIZER_H

#if defined(__SANITIZE_ADDRESS__)
#define BRCORE8_ASAN
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BRCORE8_ASAN
#endif
#endif

#include <cstddef>

#if defined(BRCORE8_ASAN)
#include <sanitizer/asan_interface.h>
#endif

namespace brcore8 {

#if defined(BRCORE8_ASAN)
inline void PoisonMemory(void* start, std::size_t size) noexcept {
    __asan_poison_memory_region(start, size);
}
inline void UnpoisonMemory(void* start, std::size_t size) noexcept {
    __asan_unpoison_memory_region(start, size);
}
inline bool IsPoisoned(const void* address) noexcept {
    return __asan_address_is_poisoned(address) != 0;
}
constexpr bool kPoisons = true;
#else
inline void PoisonMemory(void*, std::size_t) noexcept {}
inline void UnpoisonMemory(void*, std::size_t) noexcept {}
inline bool IsPoisoned(const void*) noexcept {
    return false;
}
constexpr bool kPoisons = false;
#endif

}  // namespace brcore8

#endif
