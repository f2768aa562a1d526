#include "window/message_cache.h"

namespace brcore8 {

// Whoever sees a part of what a writer stored sees the version that it raised before.
bool MessageCache::Find(const SMsgMap* map, UINT message, const SMsgEntry** row) noexcept {
    Count(asked_);
    const Slot& slot = SlotOf(map, message);
    const std::uint32_t version = slot.version.load(std::memory_order_acquire);
    if (slot.message.load(std::memory_order_acquire) != message ||
        slot.map.load(std::memory_order_acquire) != map)
        return false;
    *row = slot.row.load(std::memory_order_acquire);
    if ((version & 1) != 0 || slot.version.load(std::memory_order_relaxed) != version) return false;
    Count(hits_);
    return true;
}

void MessageCache::Keep(const SMsgMap* map, UINT message, const SMsgEntry* row) noexcept {
    Slot& slot = SlotOf(map, message);
    std::uint32_t version = slot.version.load(std::memory_order_relaxed);
    if ((version & 1) != 0 ||
        !slot.version.compare_exchange_strong(version, version + 1, std::memory_order_acquire))
        return;
    slot.message.store(message, std::memory_order_release);
    slot.map.store(map, std::memory_order_release);
    slot.row.store(row, std::memory_order_release);
    slot.version.store(version + 2, std::memory_order_release);
}

void MessageCache::Flush() noexcept {
    for (Slot& slot : slots_)
        slot.map.store(nullptr, std::memory_order_relaxed);
}

SMessageCacheStats MessageCache::GetStats() const noexcept {
    return {asked_.load(std::memory_order_relaxed), hits_.load(std::memory_order_relaxed)};
}

}  // namespace brcore8
