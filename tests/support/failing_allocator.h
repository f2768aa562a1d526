// Refuses the n-th allocation that the library makes, on the thread that asks for it.
//
//     for (int nth = 1;; ++nth) {
//         FailNthAllocation fail(nth);
//         try { operation(); } catch (const SEOutOfMemory&) {}
//         if (!fail.Triggered()) break;      // it made fewer than nth allocations
//     }
#ifndef BRCORE8_TESTS_SUPPORT_FAILING_ALLOCATOR_H
#define BRCORE8_TESTS_SUPPORT_FAILING_ALLOCATOR_H

#include <brcore8/core/throw.h>

#include <cstddef>

class FailNthAllocation {
public:
    // `nth` counts from 1; all later allocations fail too when `forever` is set.
    explicit FailNthAllocation(int nth, bool forever = false) : forever_(forever) {
        countdown_ = nth;
        active_ = this;
        previous_ = brcore8::SetAllocationFilter(&FailNthAllocation::Filter);
    }
    ~FailNthAllocation() {
        brcore8::SetAllocationFilter(previous_);
        active_ = nullptr;
    }
    FailNthAllocation(const FailNthAllocation&) = delete;
    FailNthAllocation& operator=(const FailNthAllocation&) = delete;

    // Whether an allocation was refused.
    bool Triggered() const { return triggered_; }

private:
    static bool Filter(std::size_t) {
        if (active_ == nullptr) return true;
        if (countdown_ > 0) --countdown_;
        if (countdown_ != 0 || (active_->triggered_ && !active_->forever_)) return true;
        active_->triggered_ = true;
        return false;
    }

    static inline thread_local FailNthAllocation* active_ = nullptr;
    static inline thread_local int countdown_ = 0;

    brcore8::AllocationFilter previous_;
    bool forever_;
    bool triggered_ = false;
};

#endif
