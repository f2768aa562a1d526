#include <brcore8/settings/registry.h>

#include "settings/registry_access.h"

using namespace brcore8;

namespace {

// Whether the path names a key of its own: an empty one would mean the open key, or a root.
bool NamesKey(const SString& path) {
    SString trimmed = path;
    trimmed.Trim('\\');
    return !trimmed.IsEmpty();
}

// Each key below is looked at once by a rising index, although deleting one moves the others down:
// every second is passed over, and programs rely on what then remains.
long DeleteRising(HKEY from, const SString& path) {
    KeyWay way;
    char name[kKeyNameRoom];
    bool deleted = false;
    if (!way.Down(from, path)) return SettingsFailed;
    while (!way.IsEmpty()) {
        if (NameOfKey(way.Last().key, way.Last().next, name) == ERROR_SUCCESS) {
            ++way.Last().next;
            way.Down(from, name);
        } else {
            deleted = way.Up(from, true);
        }
    }
    return deleted ? SettingsDone : SettingsFailed;
}

long DeleteAll(HKEY from, const SString& path) {
    KeyWay way;
    char name[kKeyNameRoom];
    if (!way.Down(from, path)) return SettingsFailed;
    while (!way.IsEmpty()) {
        const bool below = NameOfKey(way.Last().key, 0, name) == ERROR_SUCCESS;
        const bool done = below ? way.Down(from, name) : way.Up(from, true);
        if (!done) return SettingsFailed;
    }
    return SettingsDone;
}

}  // namespace

long SRegistry::DeleteProfile(const SString& name, int recursive) const {
    if (key_ == nullptr) return SettingsFailed;
    if (RegDeleteValueA(key_, name) == ERROR_SUCCESS) return SettingsDone;
    if (recursive == 0) return SettingsFailed;
    return Guarded([&]() -> long {
        if (!NamesKey(name)) return SettingsFailed;
        // As one write, which keeps what was deleted although not everything could be.
        BatchOwner batch(key_, true);
        const long status = DeleteRising(key_, name);
        return batch.Keep() ? status : SettingsFailed;
    });
}

long SRegistry::DeleteTree(const SString& name) const {
    if (key_ == nullptr) return SettingsFailed;
    return Guarded([&]() -> long {
        if (!NamesKey(name)) return SettingsFailed;
        BatchOwner batch(key_, true);
        if (!batch.HasBegun() || DeleteAll(key_, name) < 0) return SettingsFailed;
        return batch.Keep() ? SettingsDone : SettingsFailed;
    });
}

// --- batch ---------------------------------------------------------------------------------------

SRegistryBatch::SRegistryBatch(HKEY key) {
    if (key == nullptr) return;
    batch_ = BeginSettingsBatch(key, true);
    if (batch_ == nullptr) status_ = SettingsFailed;
}

SRegistryBatch::~SRegistryBatch() {
    EndSettingsBatch(batch_, false);
}

long SRegistryBatch::Commit() {
    if (!EndSettingsBatch(std::exchange(batch_, nullptr), true)) status_ = SettingsFailed;
    return status_;
}
