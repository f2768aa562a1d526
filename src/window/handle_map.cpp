#include <brcore8/window/handle_map.h>

#include <cstdio>
#include <cstdlib>

namespace {

constinit int g_locks = 0;

// As an entry of a handle map: three links, a colour, a handle and a wrapper.
constexpr std::uint32_t kNodeSize = sizeof(void*) == 4 ? 24 : 48;

}  // namespace

// Never destroyed: wrappers of static objects leave their maps late.
constinit SFixedAlloc SHandleMapAllocator::m_Nodes(kNodeSize, 64, "Handle map", nullptr);

SObject* SHandleMap::FromHandle(void* handle) {
    if (handle == nullptr) return nullptr;
    if (SObject* const wrapper = FromHandlePermanent(handle)) return wrapper;
    const auto key = reinterpret_cast<std::uintptr_t>(handle);
    if (SObject* const* const wrapper = temporary_.Find(key)) return *wrapper;

    SObject*& place = temporary_.FindOrAdd(key);
    try {
        place = CreateTemporary(handle);
    } catch (...) {
        temporary_.Remove(key);
        throw;
    }
    SObject* const wrapper = place;
    if (wrapper == nullptr)
        temporary_.Remove(key);
    else
        ++made_;
    return wrapper;
}

SObject* SHandleMap::FromHandlePermanent(void* handle) const {
    SObject* const* const wrapper = permanent_.Find(reinterpret_cast<std::uintptr_t>(handle));
    return wrapper != nullptr ? *wrapper : nullptr;
}

void SHandleMap::SetPermanent(void* handle, SObject* wrapper) {
    permanent_.FindOrAdd(reinterpret_cast<std::uintptr_t>(handle)) = wrapper;
}

void SHandleMap::RemovePermanent(void* handle) {
    permanent_.Remove(reinterpret_cast<std::uintptr_t>(handle));
}

void SHandleMap::DeleteTempMap() {
    if (g_locks > 0) return;
    // Taken out first: what a destructor asks for goes to a new map.
    Wrappers ending(std::move(temporary_));
    for (auto& [handle, wrapper] : ending)
        DeleteTemporary(wrapper);
}

void brcore8::EndedWrapperUsed() noexcept {
    std::fputs("brcore8: a temporary wrapper was used after its idle pass\n", stderr);
    std::abort();
}

SHandleMapLock::SHandleMapLock() noexcept {
    ++g_locks;
}

SHandleMapLock::~SHandleMapLock() {
    --g_locks;
}

int SHandleMapLock::GetCount() noexcept {
    return g_locks;
}
