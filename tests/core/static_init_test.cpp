// Strings, pools, descriptors and resources in static initialisers of another file. What happens
// in the static destructors ends the process with an error of its own when it goes wrong.
#include <gtest/gtest.h>

#include <cstring>

#include "core/static_use.h"

namespace {

TEST(StaticInit, EverythingWorksBeforeMain) {
    const StaticUse& use = GetStaticUse();
    EXPECT_STREQ(use.text, "made before main, in a block of a pool");
    ASSERT_NE(use.block, nullptr);
    ASSERT_NE(use.object, nullptr);
    EXPECT_EQ(use.object->IsKindOf(&SObject::m_SObject), 1);
    EXPECT_STREQ(use.object->GetClassInfo()->className, "STestEarly");
    EXPECT_GE(use.idleConsumers, 1);
    EXPECT_STREQ(use.resource, "brgrid8.dll");
    std::memset(use.block, 0x55, 24);
}

}  // namespace
