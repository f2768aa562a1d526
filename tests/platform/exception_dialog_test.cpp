#include <brcore8/core/exception.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/exception_text.h"

namespace {

std::string g_shown;

class ExceptionDialogText : public testing::Test {
protected:
    ExceptionDialogText() { SExceptionActivateDialog(1); }
    ~ExceptionDialogText() override {
        SExceptionActivateDialog(0);
        brcore8::g_showErrorBox = platformBox_;
    }
    static void Show(brcore8::ErrorBox box) { brcore8::g_showErrorBox = box; }

private:
    brcore8::ErrorBox platformBox_ = brcore8::g_showErrorBox;
};

TEST_F(ExceptionDialogText, NamesPositionAndText) {
    const std::string sixty(60, 'x');
    const std::string sixtyOne(61, 'x');
    const struct {
        const char* name;
        const char* file;
        const char* text;
        std::string shown;
    } rows[] = {
        {"short text", "a.cpp", "Bad", "a.cpp (12) : Bad"},
        {"no text", "a.cpp", nullptr, "a.cpp (12) : Unexpected exception!"},
        {"empty text", "a.cpp", "", "a.cpp (12) : "},
        {"60 characters", "a.cpp", sixty.c_str(), "a.cpp (12) : " + sixty},
        {"61 characters", "a.cpp", sixtyOne.c_str(), "a.cpp (12) :\n" + sixtyOne},
        {"leading line feed", "a.cpp", "\nBad", "a.cpp (12) :\n\nBad"},
        {"text with format characters", "a%s.cpp", "100%n %s", "a%s.cpp (12) : 100%n %s"},
        {"no file", nullptr, "Bad", "(null) (12) : Bad"},
    };
    Show([](const char* text, const char* caption, unsigned style) {
        g_shown = text;
        EXPECT_STREQ(caption, "Unexpected exception");
        EXPECT_EQ(style, 16u);
    });
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(SExceptionDialog(row.file, 12, row.text), 1);
        EXPECT_EQ(g_shown, row.shown);
    }
    const std::string endless(5000, 'y');
    EXPECT_EQ(SExceptionDialog(endless.c_str(), 12, "Bad"), 1);
    EXPECT_EQ(g_shown, endless.substr(0, 1023));
}

TEST_F(ExceptionDialogText, OpensNoBoxOverAnother) {
    g_shown.clear();
    Show([](const char* text, const char*, unsigned) {
        g_shown += text;
        EXPECT_EQ(SExceptionDialog("paint.cpp", 2, "Bad"), 0);
    });
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(SExceptionDialog("a.cpp", 1, "Bad"), 1);
    EXPECT_EQ(g_shown, "a.cpp (1) : Bada.cpp (1) : Bad");
}

TEST_F(ExceptionDialogText, SurvivesABoxThatFails) {
    Show([](const char*, const char*, unsigned) { throw SEOutOfMemory(); });
    EXPECT_EQ(SExceptionDialog("a.cpp", 1, "Bad"), 1);
    EXPECT_EQ(SExceptionDialog("a.cpp", 1, "Bad"), 1);
}

}  // namespace
