#include "core/static_use.h"

#include <brcore8/core/fixed_alloc.h>
#include <brcore8/core/module.h>
#include <brcore8/strings/string.h>

#include <cstdio>
#include <cstdlib>

StaticUse& GetStaticUse() {
    static StaticUse use{};
    return use;
}

namespace {

class STestEarly : public SObject {
    SDECLARE_CREATABLE(STestEarly);
};

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "after main: %s\n", what);
    std::_Exit(1);
}

// Made before main, destroyed after it and after most other static objects.
struct EarlyUser {
    EarlyUser() : text("made before main, in a block of a pool"), pool(24, 8, "early") {
        StaticUse& use = GetStaticUse();
        use.text = text;
        use.block = pool.Alloc();
        use.object = STestEarly::CreateObject();
        use.idleConsumers = SObjectFixedAllocatorBase::IdleQueue()->GetCount();
        resource = SString(SGetCoreInstance(), 115);
        use.resource = resource;
    }

    ~EarlyUser() {
        delete GetStaticUse().object;
        if (pool.GetStats().live != 1) Fail("the pool lost its block");
        pool.Free(GetStaticUse().block);
        SString late = text;
        late += " and changed after it";
        if (late != "made before main, in a block of a pool and changed after it")
            Fail("strings do not work");
        SIdleConsumerList* const queue = SObjectFixedAllocatorBase::IdleQueue();
        const SObjectFixedAllocatorBase latePool(24, 8);
        queue->OnIdleAll(1);
    }

    SString text;
    SObjectFixedAllocatorBase pool;
    SString resource;
} earlyUser;

// Its descriptor is constructed after the user above.
SIMPLEMENT_CREATABLE(STestEarly, SObject, 2);

}  // namespace
