// Standard containers over the library's checked memory: they throw SEOutOfMemory.
#ifndef BRCORE8_SRC_CORE_CHECKED_ALLOCATOR_H
#define BRCORE8_SRC_CORE_CHECKED_ALLOCATOR_H

#include <brcore8/core/throw.h>

#include <cstddef>
#include <string>
#include <vector>

namespace brcore8 {

template <class T>
struct CheckedAllocator {
    using value_type = T;

    CheckedAllocator() noexcept = default;
    template <class U>
    CheckedAllocator(const CheckedAllocator<U>&) noexcept {}

    // No object is near the size at which the product wraps: containers refuse to grow so far.
    T* allocate(std::size_t count) { return static_cast<T*>(Allocate(count * sizeof(T))); }
    void deallocate(T* block, std::size_t) noexcept { Release(block); }

    template <class U>
    bool operator==(const CheckedAllocator<U>&) const noexcept {
        return true;
    }
};

template <class T>
using CheckedVector = std::vector<T, CheckedAllocator<T>>;
using CheckedText = std::basic_string<char, std::char_traits<char>, CheckedAllocator<char>>;

}  // namespace brcore8

#endif
