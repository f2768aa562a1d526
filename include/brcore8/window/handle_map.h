// Handle maps tie the platform's handles to their wrappers. Permanent entries are wrappers that the
// program made or attached; temporary ones are made when a handle without a wrapper turns up, say
// in a message, and go in the next idle pass: they must not be kept. Where library and program are
// compiled for debugging, GetHandle of one that was kept ends the program.
//
// Threads: the one that runs the user interface.
#ifndef BRCORE8_WINDOW_HANDLE_MAP_H
#define BRCORE8_WINDOW_HANDLE_MAP_H

#include <brcore8/containers/rb_tree.h>
#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/object.h>

namespace brcore8 {

template <class Wrapper>
class WrapperMap;

// What a temporary wrapper holds after its idle pass, for a while, in a debug build: no handle.
inline constexpr std::uintptr_t kEndedHandle = 0xDEAD8;
// Says so and ends the program.
[[noreturn]] BRCORE8_API void EndedWrapperUsed() noexcept;

template <class Handle>
Handle LiveHandle(Handle handle) noexcept {
#ifndef NDEBUG
    if (reinterpret_cast<std::uintptr_t>(handle) == kEndedHandle) EndedWrapperUsed();
#endif
    return handle;
}

}  // namespace brcore8

// The entries of all handle maps come from one pool.
class BRCORE8_API SHandleMapAllocator {
public:
    static SFixedAlloc m_Nodes;

    static void* Allocate(std::size_t) { return m_Nodes.Alloc(); }
    static void Free(void* block, std::size_t) noexcept { m_Nodes.Free(block); }
};

// One map a kind of handle, made on first use and never destroyed.
class BRCORE8_API SHandleMap {
public:
    using Wrappers = STreeMap<std::uintptr_t, SObject*, STreeCompare, SHandleMapAllocator>;

    SHandleMap() = default;
    SHandleMap(const SHandleMap&) = delete;
    SHandleMap& operator=(const SHandleMap&) = delete;

    // Virtual operations, in slot order: a new wrapper for a handle, or null, and its end.
    virtual SObject* CreateTemporary(void* handle) = 0;
    virtual void DeleteTemporary(SObject* wrapper) = 0;
    // The pool that temporary wrappers come from.
    virtual SFixedAllocStats GetPoolStats() const = 0;

    // The permanent wrapper, else the temporary one, else a new temporary one; null for null.
    // Throws SEOutOfMemory.
    SObject* FromHandle(void* handle);
    // The permanent wrapper or null.
    SObject* FromHandlePermanent(void* handle) const;

    // Enters a permanent wrapper in the place of another, and takes it out.
    void SetPermanent(void* handle, SObject* wrapper);
    void RemovePermanent(void* handle);

    // Ends all temporary wrappers; nothing while SHandleMapLock holds them.
    void DeleteTempMap();

    // How many there are of each.
    int GetPermanentCount() const { return permanent_.GetCount(); }
    int GetTemporaryCount() const { return temporary_.GetCount(); }
    // How many temporary wrappers were made so far.
    unsigned long long GetMadeCount() const { return made_; }

protected:
    virtual ~SHandleMap() = default;

private:
    Wrappers permanent_;
    Wrappers temporary_;
    unsigned long long made_ = 0;
};

// Keeps temporary wrappers of every kind alive while it lives, over idle passes too.
class BRCORE8_API SHandleMapLock {
public:
    SHandleMapLock() noexcept;
    SHandleMapLock(const SHandleMapLock&) = delete;
    SHandleMapLock& operator=(const SHandleMapLock&) = delete;
    ~SHandleMapLock();

    // How many live.
    static int GetCount() noexcept;
};

#endif
