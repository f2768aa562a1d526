// Refuses the n-th allocation that the standard library makes, on the thread that asks for it: what
// FailNthAllocation does for the library's own memory. One source of a test program includes it,
// for it replaces the program's operators.
#ifndef BRCORE8_TESTS_SUPPORT_FAILING_NEW_H
#define BRCORE8_TESTS_SUPPORT_FAILING_NEW_H

#include <brcore8/core/exception.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>

class FailNthNew {
public:
    // `nth` counts from 1; all later allocations fail too when `forever` is set.
    explicit FailNthNew(int nth, bool forever = false) {
        left_ = nth;
        forever_ = forever;
        triggered_ = false;
    }
    FailNthNew(const FailNthNew&) = delete;
    FailNthNew& operator=(const FailNthNew&) = delete;
    ~FailNthNew() { left_ = 0; }

    // Whether an allocation was refused.
    bool Triggered() const { return triggered_; }

    [[gnu::noinline]] static void* Allocate(std::size_t size) noexcept {
        if (left_ > 0 && (left_ == 1 || --left_ == 0)) {
            left_ = forever_ ? 1 : 0;
            triggered_ = true;
            return nullptr;
        }
        return std::malloc(size != 0 ? size : 1);
    }
    [[gnu::noinline]] static void* AllocateOrThrow(std::size_t size) {
        if (void* const block = Allocate(size)) return block;
        throw std::bad_alloc();
    }
    [[gnu::noinline]] static void Release(void* block) noexcept { std::free(block); }

private:
    static inline thread_local int left_ = 0;  // 0: nothing is refused
    static inline thread_local bool forever_ = false;
    static inline thread_local bool triggered_ = false;
};

// Runs the operation until none of its allocations is refused; each that is must come out as
// SEOutOfMemory, and nothing else may. `after` looks at what it left behind.
template <class Run, class After>
void RefuseEachNew(const char* name, Run run, After after) {
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(std::string(name) + ", refused from " + std::to_string(nth));
        ASSERT_LT(nth, 1000);
        bool thrown = false;
        bool refused = true;
        {
            const FailNthNew fail(nth, true);
            try {
                run();
            } catch (const SEOutOfMemory&) {
                thrown = true;
            }
            refused = fail.Triggered();
        }
        EXPECT_TRUE(nth > 1 || refused) << "it asks for no memory";
        EXPECT_EQ(thrown, refused);
        after(thrown);
        if (!refused) return;
    }
}

// Neither kind calls the other: the compiler would see the one's memory given to the other.
void* operator new(std::size_t size) {
    return FailNthNew::AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return FailNthNew::AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return FailNthNew::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return FailNthNew::Allocate(size);
}
void operator delete(void* block) noexcept {
    FailNthNew::Release(block);
}
void operator delete[](void* block) noexcept {
    FailNthNew::Release(block);
}
void operator delete(void* block, std::size_t) noexcept {
    FailNthNew::Release(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    FailNthNew::Release(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
    FailNthNew::Release(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
    FailNthNew::Release(block);
}

#endif
