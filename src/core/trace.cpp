#include <brcore8/core/trace.h>

#include <brcore8/containers/rb_tree.h>
#include <brcore8/core/exception.h>
#include <brcore8/platform/light_lock.h>

#include "core/never_destroyed.h"
#include "core/trace_table.h"
#include "platform/platform.h"

#include <atomic>
#include <charconv>
#include <climits>
#include <string_view>

namespace {

constexpr int CategoriesPerGroup = 32;
constexpr int TraceLevel = 0;

using MaskTable = STreeMap<std::int32_t, std::uint32_t>;

// Used by what traces before main and after it.
constinit brcore8::NeverDestroyed<MaskTable> g_masks;
constinit brcore8::LightLock g_masksLock;
// Lets the usual program, which has no masks, pass without the lock.
constinit std::atomic<bool> g_anyMasks{false};

// Takes a number from the front of the text: decimal, or hexadecimal behind 0x when it is unsigned.
template <typename Number>
bool TakeNumber(std::string_view& text, Number& number) {
    int base = 10;
    if (std::is_unsigned_v<Number> && (text.starts_with("0x") || text.starts_with("0X"))) {
        text.remove_prefix(2);
        base = 16;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc();
}

bool SetMaskFrom(std::string_view part) {
    std::int32_t group = 0;
    std::uint32_t mask = 0;
    if (!TakeNumber(part, group) || !part.starts_with('=')) return false;
    part.remove_prefix(1);
    return TakeNumber(part, mask) && part.empty() && SSetTraceMask(group, mask) != 0;
}

std::size_t LengthLimit(int most) {
    return most < 0 ? SIZE_MAX / sizeof(wchar_t) : static_cast<std::size_t>(most);
}

}  // namespace

// --- Trace -----------------------------------------------------------------------------------

int STrace(int category, int level) noexcept {
    if (level > TraceLevel) return 0;
    const int bits = category & (CategoriesPerGroup - 1);
    if (bits == 0) return 0;
    return (SGetTraceMask(category / CategoriesPerGroup) & static_cast<unsigned>(bits)) != 0;
}

int SSetTraceMask(std::int32_t group, std::uint32_t mask) noexcept {
    const brcore8::LightLockGuard guard(g_masksLock);
    try {
        if (mask != 0)
            g_masks.object.Add(group, mask);
        else
            g_masks.object.Remove(group);
    } catch (const SEOutOfMemory&) {
        return 0;
    }
    g_anyMasks.store(!g_masks.object.IsEmpty(), std::memory_order_relaxed);
    return 1;
}

std::uint32_t SGetTraceMask(std::int32_t group) noexcept {
    if (!g_anyMasks.load(std::memory_order_relaxed)) return 0;
    const brcore8::LightLockGuard guard(g_masksLock);
    const std::uint32_t* const mask = g_masks.object.Find(group);
    return mask != nullptr ? *mask : 0;
}

int SReadTraceMasks(const char* text) noexcept {
    constexpr std::string_view separators = ";, \t";
    std::string_view rest = text != nullptr ? text : "";
    int count = 0;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(separators), rest.size());
        if (SetMaskFrom(rest.substr(0, end))) ++count;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return count;
}

void brcore8::ClearTraceMasks() noexcept {
    const LightLockGuard guard(g_masksLock);
    g_masks.object.Clear();
    g_anyMasks.store(false, std::memory_order_relaxed);
}

// --- Hooks -----------------------------------------------------------------------------------

int STraceEx(int, int, int, int) noexcept {
    return 0;
}

int SAssert(int a, int b) noexcept {
    return STraceEx(a, b, 0, 0);
}

void STraceAssert(int, int, int) noexcept {}
void STraceWarning(int, int, int) noexcept {}
void SWarning(int, int, int) noexcept {}

// --- Probes ----------------------------------------------------------------------------------

int SIsValidAddress(const void* address, unsigned size, int writable) noexcept {
    if (address == nullptr || IsBadReadPtr(address, size)) return 0;
    return writable == 0 || !IsBadWritePtr(const_cast<void*>(address), size) ? 1 : 0;
}

int SIsValidString(const char* text, int most) noexcept {
    return text != nullptr && !IsBadStringPtrA(text, LengthLimit(most)) ? 1 : 0;
}

int SIsValidString(const wchar_t* text, int most) noexcept {
    return text != nullptr && !IsBadStringPtrW(text, LengthLimit(most)) ? 1 : 0;
}
