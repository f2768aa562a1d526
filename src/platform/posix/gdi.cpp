#include "platform/posix/gdi.h"

#include <brcore8/platform/light_lock.h>

#include <memory>
#include <new>
#include <vector>

namespace brcore8 {

namespace {

// Lower values are system colours in the place of brushes.
constexpr std::uintptr_t kFirst = 0x100;
constexpr unsigned kPlaceBits = 20;
constexpr unsigned kUses = 1u << 11;
constexpr std::uintptr_t kPlaceMask = (std::uintptr_t{1} << kPlaceBits) - 1;

struct Slot {
    GdiObject* object = nullptr;
    unsigned uses = 0;
};

struct Table {
    LightLock lock;
    std::vector<Slot> slots;
    std::vector<std::uint32_t> free;  // has room for all slots
};

// Never destroyed: objects may outlive static ones.
Table& TheTable() noexcept {
    static Table& table = *new Table;
    return table;
}

void* HandleOf(std::size_t place, unsigned uses) noexcept {
    return reinterpret_cast<void*>(std::uintptr_t{uses} << kPlaceBits | (place + kFirst));
}

// Under the lock; null for what is no handle.
Slot* SlotOf(Table& table, const void* handle) noexcept {
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    const std::uintptr_t place = (value & kPlaceMask) - kFirst;
    if (place >= table.slots.size()) return nullptr;
    Slot& slot = table.slots[place];
    return slot.object != nullptr && slot.uses == value >> kPlaceBits ? &slot : nullptr;
}

std::uint32_t FreePlace(Table& table) {
    if (table.free.empty()) {
        if (table.slots.size() > kPlaceMask - kFirst) throw std::bad_alloc();
        table.slots.emplace_back();
        table.free.reserve(table.slots.capacity());
        table.free.push_back(static_cast<std::uint32_t>(table.slots.size() - 1));
    }
    const std::uint32_t place = table.free.back();
    table.free.pop_back();
    return place;
}

}  // namespace

void* GdiHandleOf(GdiObject* made) noexcept {
    std::unique_ptr<GdiObject> object(made);
    if (object == nullptr) return nullptr;
    Table& table = TheTable();
    try {
        const LightLockGuard guard(table.lock);
        const std::uint32_t place = FreePlace(table);
        table.slots[place].object = object.release();
        return HandleOf(place, table.slots[place].uses);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

GdiObject* FindGdiObject(const void* handle) noexcept {
    Table& table = TheTable();
    {
        const LightLockGuard guard(table.lock);
        if (const Slot* const slot = SlotOf(table, handle)) return slot->object;
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
}

GdiObject* ForgetGdiHandle(const void* handle) noexcept {
    Table& table = TheTable();
    const LightLockGuard guard(table.lock);
    Slot* const slot = SlotOf(table, handle);
    if (slot == nullptr) return nullptr;
    GdiObject* const object = slot->object;
    slot->object = nullptr;
    slot->uses = (slot->uses + 1) % kUses;
    table.free.push_back(static_cast<std::uint32_t>(slot - table.slots.data()));
    return object;
}

}  // namespace brcore8

using brcore8::GdiObject;

int DeleteObject(HGDIOBJ handle) noexcept {
    const GdiObject* const object = brcore8::FindGdiObject(handle);
    if (object == nullptr) return 0;
    if (object->kind == GdiObject::Kind::Icon || object->kind == GdiObject::Kind::ImageList) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    if (!object->isStock) delete brcore8::ForgetGdiHandle(handle);
    return 1;
}

int GetObjectA(HGDIOBJ handle, int size, void* out) noexcept {
    const GdiObject* const object = brcore8::FindGdiObject(handle);
    return object != nullptr ? object->Describe(size, out) : 0;
}
