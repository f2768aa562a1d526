// Our header first, the system's afterwards: its macros now rewrite our names.
#include <brcore8/core/object.h>
#include <gtest/gtest.h>

#include "platform/system_header.h"

namespace {

class STestBefore : public SObject {
    SDECLARE_CREATABLE(STestBefore);
};
SIMPLEMENT_CREATABLE(STestBefore, SObject, 2);

TEST(ObjectBeforeSystemHeader, SeesTheSameClass) {
    const STestBefore object;
    const SObject& base = object;
    EXPECT_EQ(base.GetClassInfo(), &STestBefore::m_STestBefore);
    EXPECT_EQ(base.GetClassInfoA(), &STestBefore::m_STestBefore);
    EXPECT_EQ(base.GetClassInfoW(), &STestBefore::m_STestBefore);
    EXPECT_EQ(base.IsKindOf(&SObject::m_SObject), 1);
}

}  // namespace
