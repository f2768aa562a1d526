#include "platform/posix/registry.h"

#include "platform/posix/registry_keys.h"
#include "platform/posix/registry_work.h"

namespace brcore8 {
namespace {

constexpr REGSAM kWriteRights = 0x40000006;  // set a value, make a key, both

bool MayWrite(REGSAM access) {
    return (access & kWriteRights) != 0;
}

// The row of the key `fold` below `parent`; 0 when there is none.
LSTATUS FindChild(RegistryStore& store, std::int64_t parent, std::string_view fold,
                  std::int64_t& id) {
    StoreQuery query(store, StoreSql::FindKey);
    query.Bind(1, parent).Bind(2, fold);
    id = query.Next() ? query.Number(0) : 0;
    return query.Status();
}

// Follows the path as far as there are keys: `id` is the last one, `path` stands behind it.
LSTATUS Follow(RegistryStore& store, std::int64_t& id, const char*& path) {
    const char* next = path;
    for (std::string_view name; NextName(next, name); path = next) {
        std::int64_t child = 0;
        const LSTATUS status = FindChild(store, id, FoldedName<kMaxKeyName>(name).View(), child);
        if (status != ERROR_SUCCESS || child == 0) return status;
        id = child;
    }
    path = next;
    return ERROR_SUCCESS;
}

// Follows the whole path.
LSTATUS FindPath(RegistryKey& key, const char* path, std::int64_t& id) {
    LSTATUS status = CheckExists(key);
    id = key.id;
    if (status == ERROR_SUCCESS) status = Follow(*key.store, id, path);
    return status == ERROR_SUCCESS && *path != '\0' ? ERROR_FILE_NOT_FOUND : status;
}

// Hands out a key that was added, unless its transaction failed in the end.
void GiveKey(LSTATUS status, HKEY added, HKEY* opened) {
    if (status == ERROR_SUCCESS)
        *opened = added;
    else if (added != nullptr)
        RegCloseKey(added);
}

LSTATUS OpenPath(HKEY handle, const char* path, int names, REGSAM access, HKEY* opened) {
    HKEY added = nullptr;
    const auto find = [&](Registry& registry, RegistryKey& key) -> LSTATUS {
        std::int64_t id = 0;
        const LSTATUS found = FindPath(key, path, id);
        if (found != ERROR_SUCCESS) return found;
        if (MayWrite(access) && key.store->IsReadOnly()) return ERROR_ACCESS_DENIED;
        added = registry.Add({key.store, id, key.level + names, MayWrite(access)});
        return ERROR_SUCCESS;
    };
    const LSTATUS status = DoWithKey(handle, KeyUse::Read, find);
    GiveKey(status, added, opened);
    return status;
}

LSTATUS OpenRoot(HKEY handle, REGSAM access, HKEY* opened) noexcept {
    try {
        Registry registry;
        const RegistryKey* const key = registry.Find(handle);
        if (key == nullptr || key->id != 0) return ERROR_FILE_NOT_FOUND;
        *opened = registry.Add({key->store, 0, 0, MayWrite(access)});
        return ERROR_SUCCESS;
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

LSTATUS AddChild(Registry& registry, RegistryStore& store, RegistryKey& parent,
                 std::string_view name) {
    const FoldedName<kMaxKeyName> fold(name);
    StoreQuery add(store, StoreSql::AddKey);
    const LSTATUS status = add.Bind(1, parent.id).Bind(2, fold.View()).Bind(3, name).Run();
    if (status != ERROR_SUCCESS) return status;
    registry.Changed(&RegistryKey::keys, parent, fold.View(), 1);
    parent.id = add.NewRow();
    ++parent.level;
    return ERROR_SUCCESS;
}

// Makes the keys of the path that are not there. All writes before the handle: when that fails,
// they are taken back.
LSTATUS MakePath(Registry& registry, RegistryKey& from, const char* path, REGSAM access,
                 HKEY& added, bool& made) {
    RegistryStore& store = *from.store;
    LSTATUS status = CheckExists(from);
    RegistryKey key{from.store, from.id, from.level, MayWrite(access)};
    const int names = CountNames(path);
    if (status == ERROR_SUCCESS) status = Follow(store, key.id, path);
    key.level += names - CountNames(path);
    made = *path != '\0';
    for (std::string_view name; status == ERROR_SUCCESS && NextName(path, name);)
        status = AddChild(registry, store, key, name);
    if (status == ERROR_SUCCESS) added = registry.Add(key);
    return status;
}

LSTATUS Drop(RegistryStore& store, StoreSql which, std::int64_t id) {
    StoreQuery query(store, which);
    return query.Bind(1, id).Run();
}

struct Place {
    std::int64_t parent = 0;
    std::string fold;
};

LSTATUS FindPlace(RegistryStore& store, std::int64_t id, Place& place) {
    StoreQuery query(store, StoreSql::PlaceOfKey);
    query.Bind(1, id);
    if (query.Next()) place = {query.Number(0), std::string(query.Text(1))};
    return query.Status();
}

LSTATUS DeleteRow(Registry& registry, const RegistryKey& key, std::int64_t id) {
    RegistryStore& store = *key.store;
    bool hasKeys = false;
    LSTATUS status = AskOfKey(store, StoreSql::HasKeys, id, hasKeys);
    if (id == 0 || hasKeys) return ERROR_ACCESS_DENIED;
    Place place;
    if (status == ERROR_SUCCESS) status = FindPlace(store, id, place);
    if (status == ERROR_SUCCESS) status = Drop(store, StoreSql::DropValuesOf, id);
    if (status == ERROR_SUCCESS) status = Drop(store, StoreSql::DropKey, id);
    if (status != ERROR_SUCCESS) return status;
    store.KeyDropped();
    registry.Changed(&RegistryKey::keys, {key.store, place.parent}, place.fold, -1);
    return ERROR_SUCCESS;
}

}  // namespace
}  // namespace brcore8

using namespace brcore8;

LSTATUS RegOpenKeyExA(HKEY key, const char* path, DWORD, REGSAM access, HKEY* opened) noexcept {
    if (opened == nullptr) return ERROR_INVALID_PARAMETER;
    if (path == nullptr) path = "";
    const int names = CountNames(path);
    if (names < 0) return ERROR_INVALID_PARAMETER;
    const LSTATUS status = OpenPath(key, path, names, access, opened);
    // The root is there even when its store is not.
    return status == ERROR_FILE_NOT_FOUND && names == 0 ? OpenRoot(key, access, opened) : status;
}

LSTATUS RegCreateKeyExA(HKEY key, const char* path, DWORD, char*, DWORD, REGSAM access, void*,
                        HKEY* opened, DWORD* disposition) noexcept {
    if (opened == nullptr || path == nullptr) return ERROR_INVALID_PARAMETER;
    // A key that is there is opened without waiting for other writers.
    LSTATUS status = RegOpenKeyExA(key, path, 0, access, opened);
    bool made = false;
    if (status == ERROR_FILE_NOT_FOUND) {
        HKEY added = nullptr;
        status = DoWithKey(key, KeyUse::Write, [&](Registry& registry, RegistryKey& from) {
            return MakePath(registry, from, path, access, added, made);
        });
        GiveKey(status, added, opened);
    }
    if (status == ERROR_SUCCESS && disposition != nullptr)
        *disposition = made ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return status;
}

LSTATUS RegCloseKey(HKEY key) noexcept {
    try {
        return Registry().Close(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

LSTATUS RegDeleteKeyA(HKEY key, const char* path) noexcept {
    if (path == nullptr || CountNames(path) < 0) return ERROR_INVALID_PARAMETER;
    return DoWithKey(key, KeyUse::Delete, [&](Registry& registry, RegistryKey& from) {
        std::int64_t id = 0;
        const LSTATUS status = FindPath(from, path, id);
        return status == ERROR_SUCCESS ? DeleteRow(registry, from, id) : status;
    });
}
