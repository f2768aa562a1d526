#include "platform/posix/resources.h"

#include <brcore8/platform/light_lock.h>
#include <brcore8/platform/resources.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

using brcore8::LightLockGuard;
using brcore8::StringResource;
using brcore8::StringResources;

#define BRSTRING(id, text) {id, text},
constexpr StringResource kCoreStrings[] = {
#include "core/resources.def"
};
#undef BRSTRING

constinit brcore8::LightLock g_lock;
constinit StringResources* g_newest = nullptr;

const char* FindIn(const StringResource* strings, std::size_t count, unsigned id) {
    const StringResource* const end = strings + count;
    const StringResource* const found =
        std::find_if(strings, end, [id](const StringResource& string) { return string.id == id; });
    return found != end ? found->text : nullptr;
}

}  // namespace

// What reads and changes the registrations, under the lock.
struct brcore8::StringResourcesAccess {
    static const char* Find(HINSTANCE module, unsigned id) {
        for (const StringResources* table = g_newest; table != nullptr; table = table->next_) {
            if (table->module_ != module) continue;
            if (const char* text = FindIn(table->strings_, table->count_, id)) return text;
        }
        return module == SThisModule() ? FindIn(kCoreStrings, std::size(kCoreStrings), id)
                                       : nullptr;
    }
};

StringResources::StringResources(HINSTANCE module, const StringResource* strings,
                                 std::size_t count) noexcept
    : module_(module), strings_(strings), count_(count) {
    const LightLockGuard guard(g_lock);
    next_ = g_newest;
    g_newest = this;
}

StringResources::~StringResources() {
    const LightLockGuard guard(g_lock);
    StringResources** link = &g_newest;
    while (*link != this)
        link = &(*link)->next_;
    *link = next_;
}

int LoadStringA(HINSTANCE module, unsigned id, char* buffer, int size) {
    if (size <= 0) return -1;
    const LightLockGuard guard(g_lock);
    const char* text = brcore8::StringResourcesAccess::Find(module, id & 0xFFFF);
    if (text == nullptr) text = "";
    const std::size_t length = std::min(std::strlen(text), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}
