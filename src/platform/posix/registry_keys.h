// The registry's open keys, its one lock, and names.
#ifndef BRCORE8_PLATFORM_POSIX_REGISTRY_KEYS_H
#define BRCORE8_PLATFORM_POSIX_REGISTRY_KEYS_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>

#include "platform/key_path.h"
#include "platform/posix/registry.h"
#include "platform/posix/registry_store.h"

namespace brcore8 {

constexpr std::size_t kMaxValueName = 16383;

// The name in lower case, which is how names are told apart and ordered.
template <std::size_t Max>
class FoldedName {
public:
    // What is too long is cut; the caller has checked.
    explicit FoldedName(std::string_view name) noexcept;
    std::string_view View() const noexcept { return {bytes_, size_}; }

private:
    std::size_t size_;
    char bytes_[Max];
};

// How far a walk by index has come: `passed` rows have a name below `from`.
struct RegistryCursor {
    std::uint64_t epoch = 0;  // 0: nowhere yet
    std::int64_t passed = 0;
    std::string from;
};

struct RegistryKey {
    std::shared_ptr<RegistryStore> store;
    std::int64_t id = 0;  // 0: the root
    int level = 0;        // how deep it stands
    bool writable = true;
    std::uint64_t seen = 0;  // when it was last known to exist; see RegistryStore::Now
    RegistryCursor keys{};
    RegistryCursor values{};
};

// Everything of the registry happens between a Registry's construction and its destruction: they
// hold the lock, which the same thread may take again. The constructor throws std::bad_alloc.
class Registry {
public:
    Registry();
    ~Registry();
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    // The key behind a handle; null when there is none. Valid until Close. A root's store is the
    // one that its path names now. Throws std::bad_alloc.
    RegistryKey* Find(HKEY handle);
    // Throws std::bad_alloc.
    HKEY Add(const RegistryKey& key);
    bool Close(HKEY handle);

    using Walk = RegistryCursor RegistryKey::*;
    // Keeps the walks of all that is open on a key in step with a row added (1) or deleted (-1) by
    // us; whether there are any.
    void Changed(Walk walk, const RegistryKey& key, std::string_view fold, int by);
    bool IsWalked(Walk walk, const RegistryKey& key);

private:
    std::unique_lock<std::recursive_mutex> lock_;
};

}  // namespace brcore8

#endif
