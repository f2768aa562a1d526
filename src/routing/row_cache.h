// What classes do with messages and commands, remembered by the address of the class's map and what
// was asked; a slot is overwritten by whoever comes next. Maps never change, so that what is
// remembered stays true until the module of a map goes.
//
// Threads: any. A slot is read and written whole: a reader that meets a writer asks the maps, and
// of two writers one gives way.
#ifndef BRCORE8_SRC_ROUTING_ROW_CACHE_H
#define BRCORE8_SRC_ROUTING_ROW_CACHE_H

#include <brcore8/routing/message_map.h>

#include <atomic>

namespace brcore8 {

template <std::size_t Slots>
class RowCache {
public:
    // Whether it knows; *row is then the handler's row, or null when there is none. Whoever sees a
    // part of what a writer stored sees the version that it raised before.
    bool Find(std::size_t place, const SMsgMap* map, std::uint64_t asked,
              const SMsgEntry** row) noexcept {
        const Slot& slot = slots_[place % Slots];
        const std::uint32_t version = slot.version.load(std::memory_order_acquire);
        if (slot.asked.load(std::memory_order_acquire) != asked ||
            slot.map.load(std::memory_order_acquire) != map) [[unlikely]]
            return false;
        *row = slot.row.load(std::memory_order_acquire);
        return (version & 1) == 0 && slot.version.load(std::memory_order_relaxed) == version;
    }

    void Keep(std::size_t place, const SMsgMap* map, std::uint64_t asked,
              const SMsgEntry* row) noexcept {
        Slot& slot = slots_[place % Slots];
        std::uint32_t version = slot.version.load(std::memory_order_relaxed);
        if ((version & 1) != 0 ||
            !slot.version.compare_exchange_strong(version, version + 1, std::memory_order_acquire))
            return;
        slot.asked.store(asked, std::memory_order_release);
        slot.map.store(map, std::memory_order_release);
        slot.row.store(row, std::memory_order_release);
        slot.version.store(version + 2, std::memory_order_release);
        // Last: what a flush in between has missed, the next one sees.
        isUsed_.store(true, std::memory_order_release);
    }

    // Costs nothing while nothing is kept.
    void Flush() noexcept {
        if (!isUsed_.exchange(false)) return;
        for (Slot& slot : slots_)
            slot.map.store(nullptr, std::memory_order_relaxed);
    }

private:
    struct Slot {
        std::atomic<std::uint32_t> version{0};  // odd while someone writes
        std::atomic<std::uint64_t> asked{0};
        std::atomic<const SMsgMap*> map{nullptr};
        std::atomic<const SMsgEntry*> row{nullptr};
    };

    std::atomic<bool> isUsed_{false};
    Slot slots_[Slots];
};

// The rows of messages, by the map's address and the message; and those of commands, notifications
// and updates, by all that a row is found by.
extern constinit RowCache<256> g_messageRows;
extern constinit RowCache<4096> g_commandRows;

// The first row in the map and those that it is based on, or null; what was found is kept.
const SMsgEntry* WalkForMessage(const SMsgMap* map, UINT message);
const SMsgEntry* WalkForCommand(const SMsgMap* map, UINT message, UINT code, UINT id);

inline std::size_t MessagePlace(const SMsgMap* map, UINT message) noexcept {
    return (reinterpret_cast<std::uintptr_t>(map) & 0xFFFF) ^ message;
}

// An update is asked for with the message 0, which is none, so that a code has 16 bits.
inline std::uint64_t CommandAsked(UINT message, UINT code, UINT id) noexcept {
    const UINT kind = code == kUpdateCode ? 0 : message << 16 | code;
    return std::uint64_t{kind} << 32 | id;
}

// A program's identifiers follow one another: for one map they have places of their own.
inline std::size_t CommandPlace(const SMsgMap* map, std::uint64_t asked) noexcept {
    const auto kind = static_cast<std::uint32_t>(asked >> 32);
    const auto where = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(map) >> 3);
    return ((where + kind) * 0x9E3779B1u >> 16) + static_cast<std::uint32_t>(asked);
}

// For commands as OnCmdMsg takes them apart: a message and a code of 16 bits, or WM_COMMAND and
// kUpdateCode.
inline const SMsgEntry* FindCommandRow(const SMsgMap* map, UINT message, UINT code, UINT id) {
    const std::uint64_t asked = CommandAsked(message, code, id);
    const SMsgEntry* row = nullptr;
    return g_commandRows.Find(CommandPlace(map, asked), map, asked, &row)
               ? row
               : WalkForCommand(map, message, code, id);
}

}  // namespace brcore8

#endif
