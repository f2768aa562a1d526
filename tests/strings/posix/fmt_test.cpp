#define FMT_HEADER_ONLY
#include <brcore8/fmt.h>
#include <gtest/gtest.h>

namespace {

TEST(Fmt, FormatsStringsAsStrings) {
    const SString text("ab\0c", 4);
    const std::string_view all(text);
    EXPECT_EQ(fmt::format("{}|{:>6}|{:.2}", text, text, text),
              fmt::format("{}|{:>6}|{:.2}", all, all, all));
    EXPECT_EQ(fmt::format("{:*^5}", SString("x")), "**x**");
    EXPECT_EQ(fmt::format("<{}>", SString()), "<>");
}

}  // namespace
