#include <brcore8/settings/registry.h>

#include <brcore8/core/module.h>

#include "settings/registry_access.h"
#include "settings/setting_text.h"

using namespace brcore8;

namespace {

// A number of 32 bits, low byte first or last.
std::uint32_t NumberOf(const ValueData& data) {
    std::uint32_t number = 0;
    const std::string_view bytes = data.Bytes();
    for (std::size_t i = 0; i < 4; ++i) {
        const std::size_t place = data.type == REG_DWORD ? 3 - i : i;
        number = number << 8 | static_cast<unsigned char>(bytes[place]);
    }
    return number;
}

bool IsNumber(const ValueData& data) {
    return (data.type == REG_DWORD || data.type == REG_DWORD_BIG_ENDIAN) &&
           data.Bytes().size() == 4;
}

// A value as text for GetProfile; false when it has a type that is none.
bool TextOf(ValueData& data, SString& text) {
    if (IsNumber(data)) {
        text = SString(static_cast<long>(static_cast<std::int32_t>(NumberOf(data))));
        return true;
    }
    if (data.type != REG_SZ && data.type != REG_EXPAND_SZ) return false;
    if (data.type == REG_EXPAND_SZ && !data.Expand()) return false;
    text = SString(data.Text());
    return true;
}

long ReadText(HKEY key, const SString& name, SString& text, unsigned long* type) {
    if (key == nullptr) return SettingsFailed;
    ValueData data;
    const long status = data.Fill([&](BYTE* room, DWORD* size) -> long {
        return RegQueryValueExA(key, name, nullptr, &data.type, room, size);
    });
    if (status != ERROR_SUCCESS) return SettingsFailed;
    if (type != nullptr) *type = data.type;
    return TextOf(data, text) ? SettingsDone : SettingsFailed;
}

long Write(HKEY key, const SString& name, DWORD type, const void* data, std::size_t size) {
    if (key == nullptr) return SettingsDone;
    const long status = RegSetValueExA(key, name, 0, type, static_cast<const BYTE*>(data),
                                       static_cast<DWORD>(size));
    return status == ERROR_SUCCESS ? SettingsDone : SettingsFailed;
}

bool HasValue(HKEY root, const SString& path, const SString& name) {
    const SRegistry key(root, path, 0);
    return key.IsOpen() && RegQueryValueExA(key.GetKey(), name, nullptr, nullptr, nullptr,
                                            nullptr) == ERROR_SUCCESS;
}

}  // namespace

// --- open ----------------------------------------------------------------------------------------

HKEY SRegistry::CurrentUser() noexcept {
    return HKEY_CURRENT_USER;
}

HKEY SRegistry::LocalMachine() noexcept {
    return HKEY_LOCAL_MACHINE;
}

SString SRegistry::ApplicationRoot() {
    return SString(SGetCoreInstance(), 114u);
}

long SRegistry::Open(HKEY root, const SString& path, int create) {
    if (root == HKEY_LOCAL_MACHINE) create = 0;
    Done();
    SString trimmed = path;
    trimmed.TrimRight('\\');
    key_ = create != 0 ? MakeSettingsKey(root, trimmed) : OpenSettingsKey(root, trimmed);
    if (key_ == nullptr) return SettingsFailed;
    path_ = path;
    create_ = create;
    if (root == HKEY_CURRENT_USER) origin_ = Origin::User;
    if (root == HKEY_LOCAL_MACHINE) origin_ = Origin::Machine;
    return SettingsDone;
}

long SRegistry::Init(HKEY root, const SString& subKey, int create) {
    if (key_ != nullptr && create_ == create && path_.Compare(subKey) == 0) return SettingsDone;
    const long status = Guarded([&]() -> long {
        if (root != nullptr) return Open(root, subKey, create);
        const long first = Open(HKEY_CURRENT_USER, subKey, 0);
        // The user's own key: for writing too, where that is asked for.
        if (first >= 0) return create != 0 ? Open(HKEY_CURRENT_USER, subKey, create) : first;
        if (Open(HKEY_LOCAL_MACHINE, subKey, 0) >= 0) return SettingsDone;
        return create != 0 ? Open(HKEY_CURRENT_USER, subKey, create) : first;
    });
    if (status < 0) Done();
    return status;
}

long SRegistry::Done() {
    if (key_ != nullptr) RegCloseKey(key_);
    key_ = nullptr;
    origin_ = Origin::None;
    return SettingsDone;
}

// --- write ---------------------------------------------------------------------------------------

long SRegistry::WriteProfile(const SString& name, int value) {
    return Write(key_, name, REG_SZ, value != 0 ? "Yes" : "No", value != 0 ? 4 : 3);
}

long SRegistry::WriteProfile(const SString& name, long value, int asDword) {
    if (asDword == 0) return Guarded([&] { return WriteProfile(name, SString(value)); });
    const auto number = static_cast<std::uint32_t>(value);
    const unsigned char bytes[] = {
        static_cast<unsigned char>(number), static_cast<unsigned char>(number >> 8),
        static_cast<unsigned char>(number >> 16), static_cast<unsigned char>(number >> 24)};
    return Write(key_, name, REG_DWORD, bytes, sizeof bytes);
}

long SRegistry::WriteProfile(const SString& name, const SString& value) {
    const std::string_view text(static_cast<const char*>(value));
    return Write(key_, name, REG_SZ, text.data(), text.size() + 1);
}

// --- read ----------------------------------------------------------------------------------------

long SRegistry::GetProfile(const SString& name, int* value, int defaultValue) const {
    if (value == nullptr) return SettingsNullPointer;
    *value = defaultValue;
    return Guarded([&] {
        SString text;
        const long status = ReadText(key_, name, text, nullptr);
        if (status < 0) return status;
        *value = TruthOfSetting(text);
        return status;
    });
}

long SRegistry::GetProfile(const SString& name, long* value, long defaultValue,
                           unsigned long* type) const {
    if (value == nullptr) return SettingsNullPointer;
    *value = defaultValue;
    return Guarded([&] {
        SString text;
        const long status = ReadText(key_, name, text, type);
        if (status < 0) return status;
        *value = NumberOfSetting(text);
        return status;
    });
}

long SRegistry::GetProfile(const SString& name, SString* value, const SString& defaultValue,
                           unsigned long* type) const {
    if (value == nullptr) return SettingsNullPointer;
    SString text;
    const long status = Guarded([&] { return ReadText(key_, name, text, type); });
    *value = status >= 0 ? text : defaultValue;
    return status;
}

SRegistry::Origin SRegistry::FindProfile(const SString& subKey, const SString& name) {
    if (HasValue(HKEY_CURRENT_USER, subKey, name)) return Origin::User;
    return HasValue(HKEY_LOCAL_MACHINE, subKey, name) ? Origin::Machine : Origin::None;
}

// --- enumerate -----------------------------------------------------------------------------------

long SRegistry::GetEnumKey(long index, SString* name, SString& className) const {
    if (name == nullptr) return SettingsNullPointer;
    if (key_ == nullptr || index < 0) return SettingsFailed;
    return Guarded([&]() -> long {
        char text[kKeyNameRoom];
        char kind[kKeyNameRoom];
        DWORD size = sizeof text;
        DWORD kindSize = sizeof kind;
        if (RegEnumKeyExA(key_, static_cast<DWORD>(index), text, &size, nullptr, kind, &kindSize,
                          nullptr) != ERROR_SUCCESS)
            return SettingsFailed;
        SString found(text);
        className = kind;
        *name = std::move(found);
        return SettingsDone;
    });
}

long SRegistry::GetEnumValue(long index, SString* name, SString& value, unsigned long* type) const {
    if (name == nullptr) return SettingsNullPointer;
    if (key_ == nullptr || index < 0) return SettingsFailed;
    return Guarded([&]() -> long {
        ValueData data;
        char text[kValueNameRoom];
        if (ValueOfKey(key_, static_cast<DWORD>(index), text, data) != ERROR_SUCCESS)
            return SettingsFailed;
        const bool isText = data.type == REG_SZ || data.type == REG_EXPAND_SZ;
        SString found(text);
        value = IsNumber(data) ? SString(static_cast<unsigned long>(NumberOf(data)))
                               : SString(isText ? data.Text() : data.Bytes());
        *name = std::move(found);
        if (type != nullptr) *type = data.type;
        return SettingsDone;
    });
}
