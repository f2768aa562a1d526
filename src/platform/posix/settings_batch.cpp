#include "platform/settings_batch.h"

#include <memory>
#include <new>

#include "platform/posix/registry_keys.h"

namespace brcore8 {

struct SettingsBatch {
    Registry registry;  // the lock, held as long as the batch
    std::shared_ptr<RegistryStore> store;
};

SettingsBatch* BeginSettingsBatch(HKEY key, bool write) noexcept {
    try {
        auto batch = std::make_unique<SettingsBatch>();
        const RegistryKey* const found = batch->registry.Find(key);
        if (found == nullptr) return nullptr;
        batch->store = found->store;
        return batch->store->Begin(write) == ERROR_SUCCESS ? batch.release() : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool EndSettingsBatch(SettingsBatch* batch, bool keep) noexcept {
    if (batch == nullptr) return true;
    const std::unique_ptr<SettingsBatch> ended(batch);
    if (!keep) ended->store->Fail(ERROR_GEN_FAILURE);
    return ended->store->End(ERROR_SUCCESS) == ERROR_SUCCESS;
}

}  // namespace brcore8
