// std::make_unique whose want of memory is the library's.
#ifndef BRCORE8_SRC_CORE_MAKE_OWNED_H
#define BRCORE8_SRC_CORE_MAKE_OWNED_H

#include <brcore8/core/throw.h>

#include <memory>
#include <new>
#include <utility>

namespace brcore8 {

// Throws SEOutOfMemory, and what the constructor throws.
template <typename T, typename... Arguments>
std::unique_ptr<T> MakeOwned(Arguments&&... arguments) {
    try {
        return std::make_unique<T>(std::forward<Arguments>(arguments)...);
    } catch (const std::bad_alloc&) {
        ThrowOutOfMemory();
    }
}

}  // namespace brcore8

#endif
