#include "platform/posix/registry_keys.h"

#include <pthread.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/posix/registry_path.h"
#include "platform/posix/registry_work.h"
#include "strings/code_page.h"

namespace brcore8 {
namespace {

// Handles tell the slot of a key and which key of that slot, so that one closed stays unknown.
struct Slot {
    std::unique_ptr<RegistryKey> key;
    std::uint32_t use = 0;
};

struct State {
    std::recursive_mutex lock;
    std::vector<Slot> slots;
    std::vector<std::size_t> free;
    RegistryKey roots[2];  // the user's, the machine's
};

void AbandonInChild();

// Made on first use and never destroyed: settings may be written until the very end.
State& TheState() {
    static State* const state = [] {
        auto made = std::make_unique<State>();
        pthread_atfork([] { TheState().lock.lock(); }, [] { TheState().lock.unlock(); },
                       AbandonInChild);
        return made.release();
    }();
    return *state;
}

// The lock was taken by a thread that the child has not: it begins anew.
void AbandonInChild() {
    State& state = TheState();
    ::new (&state.lock) std::recursive_mutex;
    for (RegistryKey& root : state.roots)
        if (root.store) root.store->Abandon();
    for (Slot& slot : state.slots)
        if (slot.key) slot.key->store->Abandon();
}

HKEY HandleOf(std::size_t index, std::uint32_t use) {
    const std::uint64_t value = std::uint64_t{use & 0x7FFFFFFF} << 32 | (index + 1) << 2;
    return reinterpret_cast<HKEY>(static_cast<std::uintptr_t>(value));
}

Slot* SlotOf(State& state, HKEY handle) {
    const auto value = std::uint64_t{reinterpret_cast<std::uintptr_t>(handle)};
    const std::size_t index = (value & 0xFFFFFFFF) / 4 - 1;
    if (index >= state.slots.size()) return nullptr;
    Slot& slot = state.slots[index];
    return slot.key && HandleOf(index, slot.use) == handle ? &slot : nullptr;
}

RegistryKey* RootOf(State& state, bool machine) {
    RegistryKey& root = state.roots[machine];
    std::string path = StorePath(machine);
    // A store in use by a batch stays what it is until that ends.
    if (root.store && root.store->IsBusy()) return &root;
    if (!root.store || root.store->Path() != path || !root.store->IsCurrent())
        root = {std::make_shared<RegistryStore>(std::move(path), machine)};
    return &root;
}

// All that is open on the same key.
template <class Do>
void ForEachOf(const RegistryKey& key, Do act) {
    const auto same = [&](const RegistryKey& other) {
        return other.store == key.store && other.id == key.id;
    };
    for (RegistryKey& root : TheState().roots)
        if (same(root)) act(root);
    for (const Slot& slot : TheState().slots)
        if (slot.key && same(*slot.key)) act(*slot.key);
}

}  // namespace

// --- names ---------------------------------------------------------------------------------------

template <std::size_t Max>
FoldedName<Max>::FoldedName(std::string_view name) noexcept : size_(std::min(name.size(), Max)) {
    const CodePage& page = CodePage::Ansi();
    std::memcpy(bytes_, name.data(), size_);
    const auto at = [this](std::size_t index) { return static_cast<unsigned char>(bytes_[index]); };
    for (std::size_t i = 0; i < size_; ++i) {
        if (!page.IsLead(at(i)) || i + 1 == size_) {
            bytes_[i] = static_cast<char>(page.LowerBytes()[at(i)]);
            continue;
        }
        const unsigned code = page.ToLower(at(i) * 256u + at(i + 1));
        if (code > 0xFF) {
            bytes_[i] = static_cast<char>(code >> 8);
            bytes_[i + 1] = static_cast<char>(code);
        }
        ++i;
    }
}
template class FoldedName<kMaxKeyName>;
template class FoldedName<kMaxValueName>;

// --- questions ----------------------------------------------------------------------------------

LSTATUS AskOfKey(RegistryStore& store, StoreSql question, std::int64_t id, bool& answer) {
    StoreQuery query(store, question);
    query.Bind(1, id);
    answer = query.Next();
    return query.Status();
}

LSTATUS CheckExists(RegistryKey& key) {
    if (key.id == 0 || key.seen == key.store->Now()) return ERROR_SUCCESS;
    bool exists = false;
    const LSTATUS status = AskOfKey(*key.store, StoreSql::KeyExists, key.id, exists);
    if (status == ERROR_SUCCESS && exists) key.seen = key.store->Now();
    return status == ERROR_SUCCESS && !exists ? ERROR_KEY_DELETED : status;
}

// --- keys ----------------------------------------------------------------------------------------

Registry::Registry() : lock_(TheState().lock) {}

Registry::~Registry() = default;

RegistryKey* Registry::Find(HKEY handle) {
    State& state = TheState();
    if (handle == HKEY_CURRENT_USER) return RootOf(state, false);
    if (handle == HKEY_LOCAL_MACHINE) return RootOf(state, true);
    Slot* const slot = SlotOf(state, handle);
    return slot != nullptr ? slot->key.get() : nullptr;
}

HKEY Registry::Add(const RegistryKey& key) {
    State& state = TheState();
    auto made =
        std::make_unique<RegistryKey>(RegistryKey{key.store, key.id, key.level, key.writable});
    if (state.free.empty()) {
        // Room for its return comes first, so that closing a key needs no memory.
        if (state.free.capacity() <= state.slots.size())
            state.free.reserve(2 * state.slots.size() + 8);
        state.slots.emplace_back();
        state.free.push_back(state.slots.size() - 1);
    }
    const std::size_t index = state.free.back();
    state.free.pop_back();
    Slot& slot = state.slots[index];
    slot.key = std::move(made);
    return HandleOf(index, ++slot.use);
}

bool Registry::Close(HKEY handle) {
    if (handle == HKEY_CURRENT_USER || handle == HKEY_LOCAL_MACHINE) return true;
    State& state = TheState();
    Slot* const slot = SlotOf(state, handle);
    if (slot == nullptr) return false;
    slot->key.reset();
    state.free.push_back(static_cast<std::size_t>(slot - state.slots.data()));
    return true;
}

void Registry::Changed(Walk walk, const RegistryKey& key, std::string_view fold, int by) {
    ForEachOf(key, [=](RegistryKey& other) {
        if (fold < (other.*walk).from) (other.*walk).passed += by;
    });
}

bool Registry::IsWalked(Walk walk, const RegistryKey& key) {
    bool walked = false;
    ForEachOf(key, [&](RegistryKey& other) { walked |= (other.*walk).epoch != 0; });
    return walked;
}

}  // namespace brcore8
