// A number of its own for each of the first threads that live at once, so that an array may hold
// something of each thread's; a number is used again when its thread has ended, and the next thread
// then sees what the one before wrote. With it comes the fence that lets another thread stop the
// owner of such a thing, while the owner itself pays for no fence.
#ifndef BRCORE8_SRC_PLATFORM_THREAD_SLOT_H
#define BRCORE8_SRC_PLATFORM_THREAD_SLOT_H

namespace brcore8 {

constexpr unsigned kThreadSlots = 32;

// What ThreadSlot() answers before ClaimThreadSlot is called; other answers of kThreadSlots or more
// mean that this thread has no number and never will.
constexpr unsigned kUnclaimedSlot = ~0u;

#if __has_include(<linux/membarrier.h>)

extern constinit thread_local unsigned threadSlot [[gnu::tls_model("initial-exec")]];

inline unsigned ThreadSlot() noexcept {
    return threadSlot;
}

// Takes a number for this thread, if there is one left, and returns what ThreadSlot does from then
// on.
unsigned ClaimThreadSlot() noexcept;

// When it returns, every other thread of the process has passed a full fence.
void FenceOtherThreads() noexcept;

#else

// No thread has a number where one thread cannot put a fence into another.
inline constexpr unsigned ThreadSlot() noexcept {
    return kThreadSlots;
}
inline constexpr unsigned ClaimThreadSlot() noexcept {
    return kThreadSlots;
}
inline void FenceOtherThreads() noexcept {}

#endif

}  // namespace brcore8

#endif
