// What checked memory shares with the pools.
#ifndef BRCORE8_SRC_CORE_MEMORY_H
#define BRCORE8_SRC_CORE_MEMORY_H

#include <cstddef>

namespace brcore8 {

// Whether an allocation of `size` bytes is possible at all and the installed filter, if any, lets
// it pass.
bool MayAllocate(std::size_t size);

}  // namespace brcore8

#endif
