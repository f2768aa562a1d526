// The handle map of one kind of wrapper; the wrapper makes it a friend.
#ifndef BRCORE8_SRC_WINDOW_WRAPPER_MAP_H
#define BRCORE8_SRC_WINDOW_WRAPPER_MAP_H

#include <brcore8/window/handle_map.h>

#include <iterator>
#include <new>
#include <utility>

namespace brcore8 {

template <class Wrapper>
class WrapperMap : public SHandleMap {
public:
    using Handle = decltype(Wrapper().GetHandle());

    // Never destroyed: wrappers of static objects leave late.
    static WrapperMap& Get() {
        static WrapperMap& map = *new WrapperMap;
        return map;
    }
    static Wrapper* From(Handle handle) { return static_cast<Wrapper*>(Get().FromHandle(handle)); }

    static int Attach(Wrapper& wrapper, Handle handle) {
        if (handle == nullptr) return 0;
        Get().SetPermanent(handle, &wrapper);
        // The one before must not lead here any more.
        if (wrapper.handle_ != handle) Detach(wrapper);
        wrapper.handle_ = handle;
        return 1;
    }
    static Handle Detach(Wrapper& wrapper) noexcept {
        if (wrapper.handle_ != nullptr && Get().FromHandlePermanent(wrapper.handle_) == &wrapper)
            Get().RemovePermanent(wrapper.handle_);
        return std::exchange(wrapper.handle_, nullptr);
    }

    SObject* CreateTemporary(void* handle) override {
        auto* const wrapper = ::new (pool_.Alloc()) Wrapper;
        wrapper->handle_ = static_cast<Handle>(handle);
        return wrapper;
    }
    void DeleteTemporary(SObject* object) override {
        auto* const wrapper = static_cast<Wrapper*>(object);
#ifdef NDEBUG
        Free(wrapper);
#else
        // Kept for a while without its handle, so that whoever uses it still is found.
        wrapper->handle_ = reinterpret_cast<Handle>(kEndedHandle);
        Wrapper*& oldest = ended_[nextEnded_++ % std::size(ended_)];
        if (oldest != nullptr) Free(oldest);
        oldest = wrapper;
#endif
    }

    SFixedAllocStats GetPoolStats() const override {
        return pool_.GetStats();
    }

private:
    void Free(Wrapper* wrapper) {
        wrapper->handle_ = nullptr;
        wrapper->~Wrapper();
        pool_.Free(wrapper);
    }

#ifndef NDEBUG
    Wrapper* ended_[256] = {};
    std::size_t nextEnded_ = 0;
#endif
    SFixedAlloc pool_{sizeof(Wrapper), 32, "Temporary wrappers", nullptr};
};

}  // namespace brcore8

#endif
