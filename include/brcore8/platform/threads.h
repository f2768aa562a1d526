// Whether the process still has one thread only, so that a count may be changed without an atomic
// operation. Always false where the system does not tell. The answer turns false before a second
// thread runs, and whatever was written before then is visible to that thread.
#ifndef BRCORE8_PLATFORM_THREADS_H
#define BRCORE8_PLATFORM_THREADS_H

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>

namespace brcore8 {
inline bool IsSingleThreaded() noexcept {
    return __libc_single_threaded != 0;
}
}  // namespace brcore8
#else
namespace brcore8 {
inline constexpr bool IsSingleThreaded() noexcept {
    return false;
}
}  // namespace brcore8
#endif

#endif
