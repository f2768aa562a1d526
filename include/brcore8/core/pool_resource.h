// SPoolResource: a pool as memory resource of the standard's containers.
//
//     SFixedAlloc pool(48, 128, "Nodes", nullptr);
//     SPoolResource resource(pool);
//     std::pmr::list<int> numbers(&resource);      // its nodes come from the pool
//
// What fits a block of the pool, and needs no more than a pointer's alignment, is a block; the rest
// is asked of the upstream resource. Memory that is refused throws std::bad_alloc, which those
// containers' users expect.
//
// Threads: as safe as the pool and the upstream resource, which both must outlive the resource.
// Ownership: owns neither.
#ifndef BRCORE8_CORE_POOL_RESOURCE_H
#define BRCORE8_CORE_POOL_RESOURCE_H

#include <brcore8/core/exception.h>
#include <brcore8/core/fixed_alloc.h>

#include <cstddef>
#include <memory_resource>
#include <new>

class SPoolResource : public std::pmr::memory_resource {
public:
    explicit SPoolResource(SFixedAlloc& pool, std::pmr::memory_resource* upstream =
                                                  std::pmr::get_default_resource()) noexcept
        : pool_(pool), upstream_(upstream) {}

private:
    bool IsBlock(std::size_t bytes, std::size_t alignment) const noexcept {
        return bytes <= pool_.GetAllocSize() && alignment <= alignof(void*);
    }

    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        if (!IsBlock(bytes, alignment)) return upstream_->allocate(bytes, alignment);
        try {
            return pool_.Alloc();
        } catch (const SEOutOfMemory&) {
            throw std::bad_alloc();
        }
    }

    void do_deallocate(void* block, std::size_t bytes, std::size_t alignment) override {
        if (IsBlock(bytes, alignment)) {
            pool_.Free(block);
        } else {
            upstream_->deallocate(block, bytes, alignment);
        }
    }

    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override {
        const auto* const same = dynamic_cast<const SPoolResource*>(&other);
        return same != nullptr && &same->pool_ == &pool_ && *same->upstream_ == *upstream_;
    }

    SFixedAlloc& pool_;
    std::pmr::memory_resource* upstream_;
};

#endif
