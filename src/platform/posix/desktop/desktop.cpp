#include "platform/posix/desktop/desktop.h"

#include <strings.h>

#include <algorithm>

#include "platform/posix/desktop/controls/classes.h"
#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

// A handle is a slot's number and how often the slot was used, so that the handle of a window that
// is gone is not soon another's.
constexpr std::size_t kMostWindows = 65000;
constexpr unsigned kFirstSlot = 0x10;

struct Slot {
    std::unique_ptr<Window> window;
    unsigned uses = 1;
};

struct Tables {
    std::recursive_mutex lock;
    std::vector<Slot> slots;
    std::vector<unsigned> freeSlots;
    std::vector<std::unique_ptr<WindowClass>> classes;
    Window* root = nullptr;
};

// Never destroyed: windows may outlive static objects.
Tables& TheTables() {
    static Tables& tables = []() -> Tables& {
        auto& made = *new Tables;
        made.classes = SystemClasses();
        return made;
    }();
    return tables;
}

Slot* SlotOf(HWND handle) noexcept {
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    const std::size_t number = (value & 0xFFFF) - kFirstSlot;
    std::vector<Slot>& slots = TheTables().slots;
    if (number >= slots.size()) return nullptr;
    Slot& slot = slots[number];
    return slot.window != nullptr && slot.window->handle == handle ? &slot : nullptr;
}

}  // namespace

std::recursive_mutex& Lock() noexcept {
    return TheTables().lock;
}

Window* Find(HWND handle) noexcept {
    const std::lock_guard guard(Lock());
    if (const Slot* const slot = SlotOf(handle)) return slot->window.get();
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

Window& Root() noexcept {
    const std::lock_guard guard(Lock());
    Tables& tables = TheTables();
    if (tables.root == nullptr) {
        tables.root = NewWindow(nullptr);
        tables.root->style = WS_POPUP | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
        tables.root->procedure = &DefWindowProcA;
        tables.root->rect = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        tables.root->client = tables.root->rect;
    }
    return *tables.root;
}

Window* NewWindow(Thread* thread) {
    const std::lock_guard guard(Lock());
    Tables& tables = TheTables();
    unsigned number = 0;
    if (!tables.freeSlots.empty()) {
        number = tables.freeSlots.back();
        tables.freeSlots.pop_back();
    } else {
        if (tables.slots.size() >= kMostWindows) return nullptr;
        number = static_cast<unsigned>(tables.slots.size());
        tables.slots.emplace_back();
    }
    Slot& slot = tables.slots[number];
    slot.window = std::make_unique<Window>();
    slot.window->thread = thread;
    const std::uintptr_t value = (number + kFirstSlot) | std::uintptr_t{slot.uses & 0x7FFF} << 16;
    slot.window->handle = reinterpret_cast<HWND>(value);
    return slot.window.get();
}

void FreeWindow(Window* window) noexcept {
    const std::lock_guard guard(Lock());
    Slot* const slot = SlotOf(window->handle);
    if (slot == nullptr) return;
    if (window->windowClass != nullptr) --window->windowClass->windows;
    TheTables().freeSlots.push_back(static_cast<unsigned>(slot - TheTables().slots.data()));
    slot->window.reset();
    ++slot->uses;
}

std::vector<HWND> AllWindows() {
    const std::lock_guard guard(Lock());
    std::vector<HWND> handles;
    for (const Slot& slot : TheTables().slots)
        if (slot.window != nullptr) handles.push_back(slot.window->handle);
    return handles;
}

// --- Classes -------------------------------------------------------------------------------------

WindowClass* FindClass(HINSTANCE instance, const char* name) noexcept {
    const std::lock_guard guard(Lock());
    const auto atom = reinterpret_cast<std::uintptr_t>(name);
    WindowClass* system = nullptr;
    for (const auto& windowClass : TheTables().classes) {
        const bool isNamed = atom < 0x10000 ? windowClass->atom == atom
                                            : strcasecmp(windowClass->name.c_str(), name) == 0;
        if (!isNamed || (windowClass->info.hInstance != instance &&
                         (windowClass->info.style & CS_GLOBALCLASS) == 0))
            continue;
        if (!windowClass->isSystem) return windowClass.get();
        system = windowClass.get();
    }
    return system;
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

namespace {

// The next that no class has, of the numbers that programs' classes get; 0 when all are taken.
ATOM FreeAtom() {
    constexpr unsigned kFirst = 0xC000;
    constexpr unsigned kCount = 0x4000;
    static constinit unsigned next = 0;
    std::vector<bool> isTaken(kCount);
    for (const auto& each : TheTables().classes)
        if (each->atom >= kFirst) isTaken[each->atom - kFirst] = true;
    for (unsigned i = 0; i < kCount; ++i, next = (next + 1) % kCount)
        if (!isTaken[next]) return static_cast<ATOM>(kFirst + next);
    return 0;
}

}  // namespace

ATOM RegisterClassExA(const WNDCLASSEXA* info) noexcept {
    const std::lock_guard guard(Lock());
    const auto name = reinterpret_cast<std::uintptr_t>(info->lpszClassName);
    if (info->cbSize != sizeof *info || info->lpfnWndProc == nullptr || name < 0x10000) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const WindowClass* const old = FindClass(info->hInstance, info->lpszClassName);
    if (old != nullptr && !old->isSystem) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    try {
        const ATOM atom = FreeAtom();
        if (atom == 0) {
            SetLastError(ERROR_NOT_ENOUGH_MEMORY);
            return 0;
        }
        auto made = std::make_unique<WindowClass>();
        made->name = info->lpszClassName;
        made->info = *info;
        made->info.lpszClassName = made->name.c_str();
        made->atom = atom;
        TheTables().classes.push_back(std::move(made));
        return atom;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
}

BOOL UnregisterClassA(const char* name, HINSTANCE instance) noexcept {
    const std::lock_guard guard(Lock());
    WindowClass* const windowClass = FindClass(instance, name);
    const bool isThere = windowClass != nullptr && !windowClass->isSystem;
    if (!isThere || windowClass->windows > 0) {
        SetLastError(!isThere ? ERROR_CLASS_DOES_NOT_EXIST : ERROR_CLASS_HAS_WINDOWS);
        return 0;
    }
    std::erase_if(TheTables().classes, [&](const auto& each) { return each.get() == windowClass; });
    return 1;
}

BOOL GetClassInfoExA(HINSTANCE instance, const char* name, WNDCLASSEXA* info) noexcept {
    const std::lock_guard guard(Lock());
    const WindowClass* const windowClass = FindClass(instance, name);
    if (windowClass == nullptr) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return 0;
    }
    *info = windowClass->info;
    return windowClass->atom;
}

BOOL IsWindow(HWND window) noexcept {
    const std::lock_guard guard(Lock());
    return SlotOf(window) != nullptr;
}
