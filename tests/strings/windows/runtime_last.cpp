// As runtime_first.cpp, with our header before the run-time's.
#include <brcore8/strings/multibyte.h>

#include <mbctype.h>
#include <windows.h>

#include <gtest/gtest.h>

TEST(RuntimeHeaderLast, FindsTheLibrarysPage) {
    EXPECT_EQ(_setmbcp(936), 0);
    EXPECT_EQ(_getmbcp(), 936);
    EXPECT_TRUE(SIsDoubleByteCodePage());
    _setmbcp(0);
    EXPECT_EQ(_getmbcp(), 1252);
}
