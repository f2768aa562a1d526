#include <brcore8/app/main_wnd_settings.h>

#include "platform/screens.h"
#include "settings/registry_access.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr struct {
    const char* name;
    int SMainWndSettings::*field;
} kFlags[] = {{"MaximizeApp", &SMainWndSettings::maximizeApp},
              {"MaximizeDoc", &SMainWndSettings::maximizeDoc},
              {"FlatToolBars", &SMainWndSettings::flatToolBars},
              {"ToolTips", &SMainWndSettings::toolTips}};

constexpr struct {
    const char* name;
    std::uint32_t SMainWndSettings::*first;
    std::uint32_t SMainWndSettings::*second;
} kPairs[] = {{"AppWindow", &SMainWndSettings::left, &SMainWndSettings::top},
              {"AppWindowSize", &SMainWndSettings::width, &SMainWndSettings::height}};

// A number as it was written, of 32 bits with or without a sign.
std::uint32_t NumberOf(const char* digits) {
    const long long number = std::strtoll(digits, nullptr, 10);
    return static_cast<std::uint32_t>(
        std::clamp(number, static_cast<long long>(INT32_MIN), static_cast<long long>(UINT32_MAX)));
}

// Two numbers, where the value is a text with a comma between them; else they stay.
void ReadPair(HKEY key, const char* name, std::uint32_t& first, std::uint32_t& second) {
    // Longer texts are no two numbers of this window's.
    char text[128] = {};
    DWORD type = 0, size = sizeof text - 1;
    if (RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text), &size) !=
            ERROR_SUCCESS ||
        type != REG_SZ)
        return;
    const char* const comma = std::strchr(text, ',');
    if (comma == nullptr) return;
    first = NumberOf(text);
    second = NumberOf(comma + 1);
}

}  // namespace

int SMainWndSettings::Load() {
    HKEY opened = nullptr;
    if (RegOpenKeyExA(root, keyPath, 0, KEY_ALL_ACCESS, &opened) != ERROR_SUCCESS) return 0;
    const brcore8::KeyOwner key(opened);
    for (const auto& pair : kPairs)
        ReadPair(key.Get(), pair.name, this->*pair.first, this->*pair.second);
    bool found = false;
    for (const auto& flag : kFlags) {
        DWORD value = 0, type = 0, size = sizeof value;
        found = RegQueryValueExA(key.Get(), flag.name, nullptr, &type,
                                 reinterpret_cast<BYTE*>(&value), &size) == ERROR_SUCCESS;
        this->*flag.field = !found || value != 0;
    }
    return found;
}

int SMainWndSettings::Save() const {
    const brcore8::KeyOwner key(brcore8::MakeSettingsKey(root, keyPath));
    if (key.Get() == nullptr) return 0;
    if (!maximizeApp) {
        for (const auto& pair : kPairs) {
            char text[32];
            const int length =
                std::snprintf(text, sizeof text, "%d,%d", static_cast<int>(this->*pair.first),
                              static_cast<int>(this->*pair.second));
            if (RegSetValueExA(key.Get(), pair.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                               static_cast<DWORD>(length) + 1) != ERROR_SUCCESS)
                return 0;
        }
    }
    for (const auto& flag : kFlags) {
        const DWORD value = this->*flag.field != 0;
        if (RegSetValueExA(key.Get(), flag.name, 0, REG_DWORD,
                           reinterpret_cast<const BYTE*>(&value), sizeof value) != ERROR_SUCCESS)
            return 0;
    }
    return 1;
}

void SMainWndSettings::Apply(SWnd& window) const {
    if (width == 0 || height == 0) return;
    const auto coordinate = [](std::uint32_t number) { return static_cast<LONG>(number); };
    constexpr std::uint32_t kLargest = 32767;
    const LONG wide = coordinate(std::min(width, kLargest));
    const LONG high = coordinate(std::min(height, kLargest));
    // What screens are made of lies between these.
    const LONG x = std::clamp<LONG>(coordinate(left), -kLargest - 1, kLargest);
    const LONG y = std::clamp<LONG>(coordinate(top), -kLargest - 1, kLargest);
    const RECT room = brcore8::ScreenNear({x, y, x + wide, y + high});
    const LONG cx = std::min(wide, room.right - room.left);
    const LONG cy = std::min(high, room.bottom - room.top);
    window.SetWindowPos(nullptr, std::clamp(x, room.left, room.right - cx),
                        std::clamp(y, room.top, room.bottom - cy), cx, cy,
                        SWP_NOZORDER | SWP_NOACTIVATE);
}

void SMainWndSettings::Capture(const SWnd& window) {
    const RECT place = brcore8::RestoredPlace(window.GetHandle());
    left = static_cast<std::uint32_t>(place.left);
    top = static_cast<std::uint32_t>(place.top);
    width = static_cast<std::uint32_t>(place.right - place.left);
    height = static_cast<std::uint32_t>(place.bottom - place.top);
    maximizeApp = window.IsZoomed() != 0;
}
