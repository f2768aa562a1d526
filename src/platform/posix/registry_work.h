// What the platform's functions on keys and on values share.
#ifndef BRCORE8_PLATFORM_POSIX_REGISTRY_WORK_H
#define BRCORE8_PLATFORM_POSIX_REGISTRY_WORK_H

#include <memory>
#include <new>

#include "platform/posix/registry_keys.h"

namespace brcore8 {

// Whether the statement, which asks about a key, gives a row.
LSTATUS AskOfKey(RegistryStore& store, StoreSql question, std::int64_t id, bool& answer);

// ERROR_KEY_DELETED when the key is no more.
LSTATUS CheckExists(RegistryKey& key);

// Delete is a write for which the rights of the open key do not count.
enum class KeyUse { Read, Write, Delete };

// Runs `work` on an open key, in one transaction of its store.
template <class Work>
LSTATUS DoWithKey(HKEY handle, KeyUse use, Work work) noexcept {
    try {
        Registry registry;
        RegistryKey* const key = registry.Find(handle);
        if (key == nullptr) return ERROR_INVALID_HANDLE;
        if (use == KeyUse::Write && !key->writable) return ERROR_ACCESS_DENIED;
        const std::shared_ptr<RegistryStore> store = key->store;
        LSTATUS status = store->Begin(use != KeyUse::Read);
        if (status != ERROR_SUCCESS) return status;
        try {
            status = work(registry, *key);
        } catch (const std::bad_alloc&) {
            status = store->Fail(ERROR_NOT_ENOUGH_MEMORY);
        }
        return store->End(status);
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

}  // namespace brcore8

#endif
