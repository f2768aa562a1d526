// The system's header first, ours afterwards.
#include "platform/system_header.h"

#include <brcore8/core/object.h>
#include <gtest/gtest.h>

namespace {

class STestAfter : public SObject {
    SDECLARE_CREATABLE(STestAfter);
};
SIMPLEMENT_CREATABLE(STestAfter, SObject, 2);

TEST(ObjectAfterSystemHeader, SeesTheSameClass) {
    const STestAfter object;
    const SObject& base = object;
    EXPECT_EQ(base.GetClassInfo(), &STestAfter::m_STestAfter);
    EXPECT_EQ(base.GetClassInfoA(), &STestAfter::m_STestAfter);
    EXPECT_EQ(base.GetClassInfoW(), &STestAfter::m_STestAfter);
    EXPECT_EQ(base.IsKindOf(&SObject::m_SObject), 1);
}

}  // namespace
