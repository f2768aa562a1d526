// The C run-time declares _setmbcp and _getmbcp too, and defines macros that the standard headers
// bear badly: a program that includes its header before ours compiles, and gets ours.
#include <windows.h>

#include <mbctype.h>

#include <brcore8/strings/multibyte.h>
#include <gtest/gtest.h>

TEST(RuntimeHeaderFirst, FindsTheLibrarysPage) {
    EXPECT_EQ(_setmbcp(932), 0);
    EXPECT_EQ(_getmbcp(), 932);
    EXPECT_TRUE(SIsDoubleByteCodePage());
    EXPECT_NE(_ismbblead(0x81), 0) << "the run-time was told";
    EXPECT_EQ(_setmbcp(1252), 0);
    EXPECT_EQ(_getmbcp(), 1252) << "the run-time's own would answer 0";
    EXPECT_EQ(_ismbblead(0x81), 0);
    _setmbcp(0);
}
