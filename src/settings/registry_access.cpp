#include "settings/registry_access.h"

#include <cstring>

#include "platform/key_path.h"

namespace brcore8 {

namespace {

constexpr std::size_t kPathAtOnce = 255;
constexpr DWORD kMaxExpanded = 32767;  // with the terminator

HKEY OpenAtOnce(HKEY root, const char* path) noexcept {
    HKEY key = nullptr;
    return RegOpenKeyExA(root, path, 0, KEY_READ, &key) == ERROR_SUCCESS ? key : nullptr;
}

HKEY MakeAtOnce(HKEY root, const char* path) noexcept {
    HKEY key = nullptr;
    char noClass[] = "";
    const long status = RegCreateKeyExA(root, path, 0, noClass, REG_OPTION_NON_VOLATILE,
                                        KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return status == ERROR_SUCCESS ? key : nullptr;
}

// Takes names off the path, as many as the platform takes at once.
void NextPiece(const char*& path, char (&piece)[kPathAtOnce + 1]) noexcept {
    std::size_t size = 0;
    std::string_view name;
    const char* next = path;
    while (NextName(next, name) && size + (size != 0) + name.size() <= kPathAtOnce) {
        if (size != 0) piece[size++] = '\\';
        size += name.copy(piece + size, name.size());
        path = next;
    }
    if (name.empty()) path = next;
    piece[size] = '\0';
}

HKEY Descend(HKEY root, const char* path, HKEY (*open)(HKEY, const char*)) noexcept {
    char piece[kPathAtOnce + 1];
    KeyOwner key(nullptr);
    for (HKEY from = root;; from = key.Get()) {
        NextPiece(path, piece);
        key.Reset(open(from, piece));
        if (key.Get() == nullptr || *path == '\0') return key.Release();
    }
}

}  // namespace

HKEY OpenSettingsKey(HKEY root, const char* path) noexcept {
    return CountNames(path) >= 0 ? Descend(root, path, OpenAtOnce) : nullptr;
}

HKEY MakeSettingsKey(HKEY root, const char* path) noexcept {
    if (CountNames(path) < 0) return nullptr;
    if (std::strlen(path) <= kPathAtOnce) return MakeAtOnce(root, path);
    // All keys of the path or none.
    BatchOwner batch(root, true);
    KeyOwner key(Descend(root, path, MakeAtOnce));
    return key.Get() != nullptr && batch.Keep() ? key.Release() : nullptr;
}

char* ValueData::Grow(std::size_t size) {
    const bool first = heap_ == nullptr;
    heap_ = static_cast<char*>(Reallocate(heap_, size));
    if (first) std::memcpy(heap_, stack_, size_);
    room_ = size;
    return heap_;
}

bool ValueData::Expand() {
    if (Text().find('%') == std::string_view::npos) return true;
    if (Text().size() >= kMaxExpanded) return false;
    Grow(size_ + 1)[size_] = '\0';
    ValueData expanded;
    const long status = expanded.Fill([this](BYTE* room, DWORD* size) -> long {
        const DWORD needed = ExpandEnvironmentStringsA(heap_, reinterpret_cast<char*>(room), *size);
        const bool fits = needed <= *size;
        *size = needed;
        if (needed == 0 || needed > kMaxExpanded) return ERROR_INVALID_PARAMETER;
        return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
    });
    if (status != ERROR_SUCCESS) return false;
    Grow(expanded.size_ + 1);
    size_ = expanded.Bytes().copy(heap_, expanded.size_);
    return true;
}

long NameOfKey(HKEY key, DWORD index, char (&name)[kKeyNameRoom]) noexcept {
    DWORD size = sizeof name;
    return RegEnumKeyExA(key, index, name, &size, nullptr, nullptr, nullptr, nullptr);
}

long ValueOfKey(HKEY key, DWORD index, char (&name)[kValueNameRoom], ValueData& data) {
    return data.Fill([&](BYTE* room, DWORD* size) -> long {
        DWORD nameSize = sizeof name;
        return RegEnumValueA(key, index, name, &nameSize, nullptr, &data.type, room, size);
    });
}

KeyWay::~KeyWay() {
    for (const Step& step : steps_)
        RegCloseKey(step.key);
}

bool KeyWay::Down(HKEY from, const char* name) {
    KeyOwner key(OpenSettingsKey(IsEmpty() ? from : Last().key, name));
    if (key.Get() == nullptr) return false;
    steps_.Add(Step{key.Get(), 0, name});
    key.Release();
    return true;
}

bool KeyWay::Up(HKEY from, bool erase) {
    const SString name = Last().name;
    RegCloseKey(Last().key);
    steps_.Remove(steps_.GetCount() - 1);
    if (!erase) return true;
    return RegDeleteKeyA(IsEmpty() ? from : Last().key, name) == ERROR_SUCCESS;
}

}  // namespace brcore8
