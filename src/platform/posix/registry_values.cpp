#include <algorithm>
#include <cstring>

#include "platform/posix/registry.h"
#include "platform/posix/registry_work.h"

namespace brcore8 {
namespace {

using ValueFold = FoldedName<kMaxValueName>;

bool IsText(std::int64_t type) {
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

// Hands out a value as RegQueryValueExA promises.
LSTATUS GiveData(StoreQuery& query, int column, DWORD* type, BYTE* data, DWORD* size) {
    const std::int64_t kind = query.Number(column);
    const std::string_view bytes = query.Text(column + 1);
    if (query.Status() != ERROR_SUCCESS) return query.Status();
    if (type != nullptr) *type = static_cast<DWORD>(kind);
    if (size == nullptr) return ERROR_SUCCESS;
    const std::size_t room = *size;
    *size = static_cast<DWORD>(bytes.size());
    if (data == nullptr) return ERROR_SUCCESS;
    if (room < bytes.size()) return ERROR_MORE_DATA;
    std::copy(bytes.begin(), bytes.end(), data);
    if (IsText(kind) && room > bytes.size() && !bytes.ends_with('\0')) data[bytes.size()] = 0;
    return ERROR_SUCCESS;
}

LSTATUS GiveName(std::string_view name, char* out, DWORD* size) {
    if (*size <= name.size()) return ERROR_MORE_DATA;
    std::copy(name.begin(), name.end(), out);
    out[name.size()] = '\0';
    *size = static_cast<DWORD>(name.size());
    return ERROR_SUCCESS;
}

// Puts the query on the index-th row of a walk through the key's rows, and the walk behind it once
// `give` has succeeded.
template <class Give>
LSTATUS WalkTo(RegistryKey& key, Registry::Walk walk, StoreSql sql, DWORD index, Give give) {
    RegistryCursor& cursor = key.*walk;
    const std::uint64_t epoch = key.store->Epoch();
    if (cursor.epoch != epoch || index < cursor.passed) cursor = {epoch, 0, ""};
    LSTATUS status = ERROR_NO_MORE_ITEMS;
    {
        StoreQuery query(*key.store, sql);
        query.Bind(1, key.id).Bind(2, cursor.from).Bind(3, index - cursor.passed);
        if (query.Next()) {
            // No name holds a zero byte: what follows this one begins here.
            std::string next = std::string(query.Text(0)) + '\1';
            status = give(query);
            if (status == ERROR_SUCCESS) cursor = {epoch, std::int64_t{index} + 1, std::move(next)};
        }
        if (query.Status() != ERROR_SUCCESS) return query.Status();
    }
    if (status != ERROR_NO_MORE_ITEMS) return status;
    const LSTATUS exists = CheckExists(key);
    return exists != ERROR_SUCCESS ? exists : status;
}

// A store that is not there has no rows.
LSTATUS RowStatus(LSTATUS status) {
    return status == ERROR_FILE_NOT_FOUND ? ERROR_NO_MORE_ITEMS : status;
}

LSTATUS PutValue(Registry& registry, RegistryKey& key, std::string_view name, DWORD type,
                 const BYTE* data, DWORD size) {
    LSTATUS status = CheckExists(key);
    const ValueFold fold(name);
    bool added = false;
    if (status == ERROR_SUCCESS && registry.IsWalked(&RegistryKey::values, key)) {
        StoreQuery query(*key.store, StoreSql::FindValue);
        added = !query.Bind(1, key.id).Bind(2, fold.View()).Next();
        status = query.Status();
    }
    if (status != ERROR_SUCCESS) return status;
    StoreQuery put(*key.store, StoreSql::PutValue);
    put.Bind(1, key.id).Bind(2, fold.View()).Bind(3, name).Bind(4, std::int64_t{type});
    status = put.BindData(5, data, size).Run();
    if (status == ERROR_SUCCESS && added)
        registry.Changed(&RegistryKey::values, key, fold.View(), 1);
    return status;
}

LSTATUS DropValue(Registry& registry, RegistryKey& key, std::string_view name) {
    const LSTATUS status = CheckExists(key);
    if (status != ERROR_SUCCESS) return status;
    const ValueFold fold(name);
    StoreQuery drop(*key.store, StoreSql::DropValue);
    if (drop.Bind(1, key.id).Bind(2, fold.View()).Run() != ERROR_SUCCESS) return drop.Status();
    if (drop.Changes() == 0) return ERROR_FILE_NOT_FOUND;
    registry.Changed(&RegistryKey::values, key, fold.View(), -1);
    return ERROR_SUCCESS;
}

std::string_view NameOf(const char* name) {
    return name != nullptr ? std::string_view(name) : std::string_view();
}

}  // namespace
}  // namespace brcore8

using namespace brcore8;

LSTATUS RegSetValueExA(HKEY handle, const char* name, DWORD, DWORD type, const BYTE* data,
                       DWORD size) noexcept {
    const std::string_view text = NameOf(name);
    if (text.size() > kMaxValueName || (data == nullptr && size != 0))
        return ERROR_INVALID_PARAMETER;
    return DoWithKey(handle, KeyUse::Write, [&](Registry& registry, RegistryKey& key) {
        return PutValue(registry, key, text, type, data, size);
    });
}

LSTATUS RegDeleteValueA(HKEY handle, const char* name) noexcept {
    const std::string_view text = NameOf(name);
    if (text.size() > kMaxValueName) return ERROR_FILE_NOT_FOUND;
    return DoWithKey(handle, KeyUse::Write, [&](Registry& registry, RegistryKey& key) {
        return DropValue(registry, key, text);
    });
}

LSTATUS RegQueryValueExA(HKEY handle, const char* name, DWORD*, DWORD* type, BYTE* data,
                         DWORD* size) noexcept {
    const std::string_view text = NameOf(name);
    if (data != nullptr && size == nullptr) return ERROR_INVALID_PARAMETER;
    if (text.size() > kMaxValueName) return ERROR_FILE_NOT_FOUND;
    return DoWithKey(handle, KeyUse::Read, [&](Registry&, RegistryKey& key) -> LSTATUS {
        const ValueFold fold(text);
        StoreQuery query(*key.store, StoreSql::FindValue);
        query.Bind(1, key.id).Bind(2, fold.View());
        if (query.Next()) return GiveData(query, 0, type, data, size);
        if (query.Status() != ERROR_SUCCESS) return query.Status();
        const LSTATUS exists = CheckExists(key);
        return exists != ERROR_SUCCESS ? exists : ERROR_FILE_NOT_FOUND;
    });
}

LSTATUS RegEnumKeyExA(HKEY handle, DWORD index, char* name, DWORD* size, DWORD*, char* keyClass,
                      DWORD* classSize, void*) noexcept {
    if (name == nullptr || size == nullptr) return ERROR_INVALID_PARAMETER;
    return RowStatus(DoWithKey(handle, KeyUse::Read, [&](Registry&, RegistryKey& key) {
        return WalkTo(key, &RegistryKey::keys, StoreSql::NthKey, index, [&](StoreQuery& query) {
            const std::string_view text = query.Text(1);
            if (query.Status() != ERROR_SUCCESS) return query.Status();
            if (keyClass != nullptr && classSize != nullptr) {
                const LSTATUS given = GiveName("", keyClass, classSize);
                if (given != ERROR_SUCCESS) return given;
            }
            return GiveName(text, name, size);
        });
    }));
}

LSTATUS RegEnumValueA(HKEY handle, DWORD index, char* name, DWORD* nameSize, DWORD*, DWORD* type,
                      BYTE* data, DWORD* size) noexcept {
    if (name == nullptr || nameSize == nullptr || (data != nullptr && size == nullptr))
        return ERROR_INVALID_PARAMETER;
    return RowStatus(DoWithKey(handle, KeyUse::Read, [&](Registry&, RegistryKey& key) {
        return WalkTo(key, &RegistryKey::values, StoreSql::NthValue, index,
                      [&](StoreQuery& query) -> LSTATUS {
                          const std::string text(query.Text(1));
                          if (query.Status() != ERROR_SUCCESS) return query.Status();
                          if (*nameSize <= text.size()) return ERROR_MORE_DATA;
                          const LSTATUS given = GiveData(query, 2, type, data, size);
                          return given != ERROR_SUCCESS ? given : GiveName(text, name, nameSize);
                      });
    }));
}
