// What the parts of SRegistry share: the platform's registry as this library uses it.
#ifndef BRCORE8_SRC_SETTINGS_REGISTRY_ACCESS_H
#define BRCORE8_SRC_SETTINGS_REGISTRY_ACCESS_H

#include <brcore8/containers/table.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>
#include <brcore8/settings/status.h>

#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/platform.h"
#include "platform/settings_batch.h"

namespace brcore8 {

// The status of `work`, which may run out of memory.
template <class Work>
long Guarded(Work work) noexcept {
    try {
        return work();
    } catch (const SEOutOfMemory&) {
        return SettingsFailed;
    }
}

// A key opened for reading, or made where it is missing and opened for everything; null on failure.
// Paths may be longer than the platform takes at once.
HKEY OpenSettingsKey(HKEY root, const char* path) noexcept;
HKEY MakeSettingsKey(HKEY root, const char* path) noexcept;

// An open key, closed in the end.
class KeyOwner {
public:
    explicit KeyOwner(HKEY key) noexcept : key_(key) {}
    ~KeyOwner() { Reset(nullptr); }
    KeyOwner(const KeyOwner&) = delete;
    KeyOwner& operator=(const KeyOwner&) = delete;

    HKEY Get() const noexcept { return key_; }
    HKEY Release() noexcept { return std::exchange(key_, nullptr); }
    void Reset(HKEY key) noexcept {
        if (key_ != nullptr) RegCloseKey(key_);
        key_ = key;
    }

private:
    HKEY key_;
};

// A batch that is taken back unless it is kept.
class BatchOwner {
public:
    BatchOwner(HKEY key, bool write) noexcept : batch_(BeginSettingsBatch(key, write)) {}
    ~BatchOwner() { EndSettingsBatch(batch_, false); }
    BatchOwner(const BatchOwner&) = delete;
    BatchOwner& operator=(const BatchOwner&) = delete;

    bool HasBegun() const noexcept { return batch_ != nullptr; }
    bool Keep() noexcept { return EndSettingsBatch(std::exchange(batch_, nullptr), true); }

private:
    SettingsBatch* batch_;
};

// What a value holds: room on the stack for most, in the heap for others.
class ValueData {
public:
    ValueData() noexcept = default;
    ~ValueData() { Release(heap_); }
    ValueData(const ValueData&) = delete;
    ValueData& operator=(const ValueData&) = delete;

    // Calls `read(BYTE* room, DWORD* size)` until the room suffices; its status.
    template <class Read>
    long Fill(Read read);

    std::string_view Bytes() const noexcept { return {Room(), size_}; }
    // The bytes before the first zero byte.
    std::string_view Text() const noexcept { return Bytes().substr(0, Bytes().find('\0')); }
    // With each %NAME% replaced; false when that is too long.
    bool Expand();

    DWORD type = 0;

private:
    const char* Room() const noexcept { return heap_ != nullptr ? heap_ : stack_; }
    // Makes room for so many bytes and keeps those read.
    char* Grow(std::size_t size);

    char stack_[1024];
    char* heap_ = nullptr;
    std::size_t room_ = sizeof stack_;
    std::size_t size_ = 0;
};

template <class Read>
long ValueData::Fill(Read read) {
    for (;;) {
        auto size = static_cast<DWORD>(room_);
        char* const room = heap_ != nullptr ? heap_ : stack_;
        const long status = read(reinterpret_cast<BYTE*>(room), &size);
        size_ = status == ERROR_SUCCESS ? size : 0;
        if (status != ERROR_MORE_DATA) return status;
        // The size asked for, with room for a terminator; more when it was not told.
        Grow(size > room_ ? std::size_t{size} + 2 : room_ * 2);
    }
}

// The name of the index-th key below; the platform's status, ERROR_NO_MORE_ITEMS behind the last.
constexpr std::size_t kKeyNameRoom = 1024;
long NameOfKey(HKEY key, DWORD index, char (&name)[kKeyNameRoom]) noexcept;
// The name and data of the index-th value, likewise.
constexpr std::size_t kValueNameRoom = 2 * 16384;
long ValueOfKey(HKEY key, DWORD index, char (&name)[kValueNameRoom], ValueData& data);

// Open keys one below the other, the way from a first one down to where a walk stands.
class KeyWay {
public:
    KeyWay() = default;
    ~KeyWay();
    KeyWay(const KeyWay&) = delete;
    KeyWay& operator=(const KeyWay&) = delete;

    struct Step {
        HKEY key;
        DWORD next = 0;  // the index of the key below to look at next
        SString name;
    };
    bool IsEmpty() const { return steps_.GetCount() == 0; }
    Step& Last() { return steps_[steps_.GetCount() - 1]; }
    // Goes down to a key below the last one, or below `from` at the beginning; false, and nothing
    // changes, when it cannot be opened.
    bool Down(HKEY from, const char* name);
    // Goes back up; the key gone back from is closed and, if told so, deleted. False when it could
    // not be deleted.
    bool Up(HKEY from, bool erase);

private:
    STable<Step> steps_;
};

}  // namespace brcore8

#endif
