// Runs the string tests under a single-byte and a double-byte code page, and speaks their terms.
#ifndef BRCORE8_TESTS_STRINGS_STRING_FIXTURE_H
#define BRCORE8_TESTS_STRINGS_STRING_FIXTURE_H

#include <brcore8/strings/string.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/page_scope.h"

// A test that runs once a page.
class PagedTest : public testing::TestWithParam<int> {
protected:
    bool IsDoubleByte() const { return GetParam() == 932; }

private:
    PageScope page_{GetParam()};
};

#define BRCORE8_BOTH_PAGES(suite)                \
    INSTANTIATE_TEST_SUITE_P(                    \
        Page, suite, testing::Values(1252, 932), \
        [](const testing::TestParamInfo<int>& page) { return std::to_string(page.param); })

// The text, its terminator and both lengths are as they must be.
inline void ExpectText(const SString& text, std::string_view expected) {
    EXPECT_EQ(text.View(), expected);
    EXPECT_TRUE(text.AssertValid());
}

// A string whose buffer nobody else holds.
inline SString Owned(std::string_view text) {
    return SString(text);
}

#endif
