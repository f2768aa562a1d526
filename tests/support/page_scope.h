// Chooses the process's code page for as long as it lives.
#ifndef BRCORE8_TESTS_SUPPORT_PAGE_SCOPE_H
#define BRCORE8_TESTS_SUPPORT_PAGE_SCOPE_H

#include <brcore8/strings/multibyte.h>

#include <gtest/gtest.h>

class PageScope {
public:
    explicit PageScope(int page) : previous_(_getmbcp()) { EXPECT_EQ(_setmbcp(page), 0) << page; }
    ~PageScope() { _setmbcp(previous_); }
    PageScope(const PageScope&) = delete;
    PageScope& operator=(const PageScope&) = delete;

private:
    int previous_;
};

#endif
