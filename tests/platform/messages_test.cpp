// The recorded message table equals the platform's answers: on Windows the platform is asked,
// elsewhere the functions that read the table.
#include <gtest/gtest.h>

#include <string>

#include "platform/platform.h"

namespace {

std::string Message(unsigned code) {
    char text[512] = "";
    FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, 0x400, text, sizeof text, nullptr);
    return text;
}

TEST(Messages, EveryRowIsThePlatforms) {
#define BRMESSAGE(code, text) {code, text "\r\n"},
    constexpr struct {
        unsigned code;
        const char* text;
    } kRows[] = {
#include "platform/posix/messages.def"
    };
#undef BRMESSAGE
    for (const auto& row : kRows) {
        EXPECT_EQ(Message(row.code), row.text) << row.code;
        if (row.code < 0x10000) {
            EXPECT_EQ(Message(0x80070000 | row.code), row.text) << row.code;
        }
    }
}

TEST(Messages, OtherCodesHaveNone) {
    for (const unsigned code : {107u, 182u, 0x7FFFu, 0x12345678u, 0x80004002u, 0x8007FFFFu})
        EXPECT_EQ(Message(code), "") << code;
}

TEST(Messages, NeedTheirRoom) {
    char text[64] = "";
    const auto fits = static_cast<unsigned>(Message(2).size() + 1);
    for (unsigned size = 1; size <= fits; ++size) {
        const unsigned length =
            FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, 2, 0x400, text, size, nullptr);
        EXPECT_EQ(length, size == fits ? fits - 1 : 0u) << size;
    }
    EXPECT_EQ(text, Message(2));
}

}  // namespace
