// What each class does with each message, remembered: 256 slots for the process, found by the
// address of the class's map and the message, and overwritten by whoever comes next.
//
// Threads: any. A slot is read and written whole: a reader that meets a writer asks the maps, and
// of two writers one gives way.
#ifndef BRCORE8_SRC_WINDOW_MESSAGE_CACHE_H
#define BRCORE8_SRC_WINDOW_MESSAGE_CACHE_H

#include <brcore8/window/wnd.h>

#include <atomic>

namespace brcore8 {

class MessageCache {
public:
    // Whether it knows; *row is then the handler's row, or null when there is none.
    bool Find(const SMsgMap* map, UINT message, const SMsgEntry** row) noexcept;
    void Keep(const SMsgMap* map, UINT message, const SMsgEntry* row) noexcept;
    void Flush() noexcept;
    SMessageCacheStats GetStats() const noexcept;

private:
    struct Slot {
        std::atomic<std::uint32_t> version{0};  // odd while someone writes
        std::atomic<UINT> message{0};
        std::atomic<const SMsgMap*> map{nullptr};
        std::atomic<const SMsgEntry*> row{nullptr};
    };

    Slot& SlotOf(const SMsgMap* map, UINT message) noexcept {
        return slots_[((reinterpret_cast<std::uintptr_t>(map) & 0xFFFF) ^ message) & 0xFF];
    }
    // Cheap counts: an increment that meets another thread's may be lost.
    static void Count(std::atomic<unsigned long long>& counter) noexcept {
        counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }

    Slot slots_[256];
    std::atomic<unsigned long long> asked_{0};
    std::atomic<unsigned long long> hits_{0};
};

}  // namespace brcore8

#endif
