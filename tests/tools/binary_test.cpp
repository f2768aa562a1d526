#include <string>

#include "tools/run_command.h"

namespace {

using namespace std::string_literals;

using BinaryCommand = CommandTest;

TEST_F(BinaryCommand, PacksAndUnpacksItems) {
    const struct {
        const char* name;
        const char* options;
        std::string text;
        std::string packed;
    } rows[] = {
        {"nothing", "", "", "\0\0\0\0"s},
        {"lines", "", "one\n\ntwo\n", "\3\0\0\0\4one\0\1\0\4two\0"s},
        {"bytes above 7F", "", "caf\xE9\n", "\1\0\0\0\6caf\xC3\xA9\0"s},
        {"a double-byte page", " --code-page 932", "\x93\xFA\n", "\1\0\0\0\4\xE6\x97\xA5\0"s},
        {"zero bytes, with line ends inside", " -z", "a\nb\0c\r\n\0"s,
         "\2\0\0\0\4a\nb\0\4c\r\n\0"s},
        {"254 bytes", "", std::string(254, 'x') + "\n",
         "\1\0\0\0\xFF\xFF\0"s + std::string(254, 'x') + "\0"s},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Result packed = Run("binary pack"s + row.options, row.text);
        EXPECT_EQ(packed.status, 0) << packed.err;
        EXPECT_EQ(packed.out, row.packed);
        const Result unpacked = Run("binary unpack"s + row.options + " -", row.packed);
        EXPECT_EQ(unpacked.status, 0) << unpacked.err;
        EXPECT_EQ(unpacked.out, row.text);
    }
}

TEST_F(BinaryCommand, CarriesWhatNoPageHolds) {
    WriteFile("in", "\xEF\xBB\xBF\xE6\x97\xA5 x\n\xF0\x9F\x98\x80\n");
    EXPECT_EQ(Run("binary pack -o out in").err, "out: written\n");
    EXPECT_EQ(Run("binary pack in -o out").err, "out: unchanged\n");
    EXPECT_EQ(ReadFile("out"), "\2\0\0\0\6\xE6\x97\xA5 x\0\5\xF0\x9F\x98\x80\0"s);
    const Result lost = Run("binary unpack out");
    EXPECT_EQ(lost.status, 0);
    EXPECT_EQ(lost.out, "? x\n??\n");
    EXPECT_EQ(lost.err, "brcore8: out: 2 characters did not survive, the first at byte 5\n");
    EXPECT_EQ(Run("binary unpack --strict out").status, 1);
}

TEST_F(BinaryCommand, RefusesWhatItCannotKeep) {
    const struct {
        const char* name;
        const char* command;
        std::string input;
        const char* error;
    } rows[] = {
        {"a zero byte in a line", "pack", "a\0b\n"s, "item 1: it holds a zero byte"},
        {"a line end in an item", "unpack -", "\1\0\0\0\3a\n\0"s,
         "item 1: it holds a line end; -z ends items with a zero byte"},
        {"half a count", "unpack -", "\1\0"s, "standard input: Unexpected end of file"},
        {"fewer strings than told", "unpack -", "\2\0\0\0\1\0"s,
         "standard input: Unexpected end of file"},
        {"a length that lies", "unpack -", "\1\0\0\0\xFF\xFF\xFF\0\0\0\x80"s,
         "standard input: Invalid string in binary stream"},
        {"no UTF-8", "unpack -", "\1\0\0\0\3\xC3\x28\0"s,
         "standard input: Unexpected UTF encoding!"},
        {"more than the table", "unpack -", "\0\0\0\0x"s,
         "standard input: something follows the table"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Result result = Run("binary "s + row.command, row.input);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "brcore8: "s + row.error + "\n");
    }
    EXPECT_EQ(Run("binary").status, 2);
}

TEST_F(BinaryCommand, TakesLongStringsFromAPipe) {
    const std::string text = std::string(0x300010, 'x') + "\n";
    const Result packed = Run("binary pack", text);
    EXPECT_EQ(packed.out.size(), 4u + 7u + text.size());
    EXPECT_TRUE(Run("binary unpack -", packed.out).out == text);
}

}  // namespace
