// The first program with a window makes the system start its desktop, a process that outlives it
// and keeps what it inherits: a redirected output, the folder of a case. So it is started here,
// where there is nothing of a case yet.
#include <gtest/gtest.h>

#include <windows.h>

namespace {

class Desktop : public ::testing::Environment {
    void SetUp() override { ASSERT_NE(GetDesktopWindow(), nullptr); }
};
const auto* const desktop = ::testing::AddGlobalTestEnvironment(new Desktop);

}  // namespace
