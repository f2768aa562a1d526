#include "tools/run_command.h"

#include <vector>

using namespace std::string_literals;

namespace {

using Command = CommandTest;

TEST_F(Command, PreprocessFollowsDirectives) {
    ExpectAll({
        {"no-input", "preprocess", "", 0, ""},
        {"words-and-one-space-each", "preprocess", "two  words\n", 0, "two words "},
        {"defined-by-directive", "preprocess", "#define A 1\n#ifdef A\nyes\n#else\nno\n#endif\n", 0,
         "yes "},
        {"defined-on-the-line", "preprocess -D A", "#ifdef A\nyes\n#endif\n#ifdef B\nno\n#endif", 0,
         "yes "},
        {"defined-with-value", "preprocess -DA=7 --define=B=x", "#ifdef A\na\n#endif #ifdef B b", 0,
         "a b "},
        {"comments", "preprocess", "a #/* gone\n gone */ b #// gone\nc", 0, "a b c "},
        {"open-comment-reaches-the-end", "preprocess", "a #/* gone #else gone", 0, "a "},
        {"open-quotes-reach-the-end", "preprocess", "a #error \"gone gone", 0, "a "},
        {"two-directive-characters", "preprocess", "a ##b", 0, "a ## b "},
        {"other-directive-character", "preprocess -c +", "+ifdef A\nno\n+endif\nyes", 0, "yes "},
        {"standard-input-by-name", "preprocess -", "x", 0, "x "},
        {"char-of-two-bytes", "preprocess -c ab", "", 2, "", "one byte"},
        {"definition-without-name", "preprocess -D=3", "", 2, "", "name"},
    });
}

TEST_F(Command, PreprocessKeepsEveryByte) {
    std::string text, expected;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string word = std::string(1, static_cast<char>(byte)) + " ";
        if (byte == '#') continue;
        text += word;
        if (std::string_view(" \t\r\n").find(word[0]) == std::string_view::npos) expected += word;
    }
    EXPECT_EQ(Run("preprocess", text).out, expected);
}

TEST_F(Command, ConvertReencodesLines) {
    ExpectAll({
        {"empty", "convert --to utf8", "", 0, ""},
        {"one-byte", "convert --to ansi", "a", 0, "a\r\n"},
        {"line-ends", "convert --to ansi", "a\nb\n\rc\r\nd\r\r\ne\rf\n\n", 0,
         "a\r\nb\r\nc\r\nd\r\ne\r\nf\r\n\r\n"},
        {"ansi-to-utf8", "convert --to utf8", "\x80\xE9", 0, "\xE2\x82\xAC\xC3\xA9\r\n"},
        {"ansi-to-utf16", "convert --to utf16", "\x80", 0, "\xAC\x20\r\0\n\0"s},
        {"utf8-mark", "convert --to ansi", "\xEF\xBB\xBF\xC3\xA9\n", 0, "\xE9\r\n"},
        {"utf16-low-first", "convert --to utf8", "\xFF\xFE\xE9\0\n\0"s, 0, "\xC3\xA9\r\n"},
        {"utf16-high-first", "convert --to utf8", "\xFE\xFF\0\xE9\0\n"s, 0, "\xC3\xA9\r\n"},
        {"mark-alone", "convert --to utf8", "\xFF\xFE", 0, ""},
        {"unit-with-line-feed-byte", "convert --to utf16", "\xFF\xFE\n\0\x0D\x4E"s, 0,
         "\r\0\n\0\x0D\x4E\r\0\n\0"s},
        {"end-marker-character", "convert --to utf16", "\xFF\xFE\xFF\xFF"s, 0, "\xFF\xFF\r\0\n\0"s},
        {"line-separator", "convert --to utf8",
         "\xEF\xBB\xBF"
         "a\xE2\x80\xA8"
         "b",
         0, "a\r\nb\r\n"},
        {"four-bytes-to-a-pair", "convert --from utf8 --to utf16", "\xF0\x9F\x98\x80", 0,
         "\x3D\xD8\0\xDE\r\0\n\0"s},
        {"standard-two-bytes", "convert --from utf16 --to utf8", "\x10\x04", 0, "\xD0\x90\r\n"},
        {"from-decides-against-the-mark", "convert --from ansi --to utf8", "\xFF\xFE", 0,
         "\xC3\xBF\xC3\xBE\r\n"},
        {"oem", "convert --from oem --to utf8", "\x82", 0, "\xC3\xA9\r\n"},
        {"oem-page", "convert --oem-code-page 866 --from oem --to utf8", "\x80", 0, "\xD0\x90\r\n"},
        {"double-byte", "convert --code-page 932 --to utf8", "\x82\xA0", 0, "\xE3\x81\x82\r\n"},
        {"undefined-pair-is-told", "convert --code-page 932 --to utf8", "a\x81\x20", 0,
         "a\xE3\x83\xBB\r\n", "1 character did not survive, the first at byte 1"},
        {"option-before-the-command", "--code-page=932 convert --to utf8", "\x82\xA0", 0,
         "\xE3\x81\x82\r\n"},
        {"best-fit-is-told", "convert --from utf8 --to ansi", "a\xC4\x80", 0, "aA\r\n",
         "standard input: 1 character did not survive, the first at byte 1"},
        {"offset-counts-the-mark", "convert --to ansi", "\xEF\xBB\xBF\xC4\x80\xE4\xB8\x80", 0,
         "A?\r\n", "2 characters did not survive, the first at byte 3"},
        {"losses-of-many-lines", "convert --from utf8 --to ansi", "a\n\xC4\x80\n\xC4\x80\xC4\x80",
         0, "a\r\nA\r\nAA\r\n", "3 characters did not survive, the first at byte 2"},
        {"from-oem-to-ansi", "convert --from oem --to ansi", "a\n\x82\xDB", 0, "a\r\n\xE9\xA6\r\n",
         "1 character did not survive, the first at byte 3"},
        {"undefined-and-lost-is-one", "convert --code-page 932 --to oem", "x\na\x81\x20", 0,
         "x\r\na\xFA\r\n", "1 character did not survive, the first at byte 3"},
        {"pair-cut-short", "convert --code-page 932 --to utf8", "a\x82\nb", 0,
         "a\xE3\x83\xBB\r\nb\r\n", "1 character did not survive, the first at byte 1"},
        {"strict", "convert --strict --from utf8 --to ansi", "\xC4\x80", 1, "",
         "brcore8: standard input: 1 character did not survive, the first at byte 0"},
        {"broken-utf8", "convert --from utf8 --to ansi", "\xC3\x28", 1, "",
         "brcore8: standard input: Unexpected UTF encoding!"},
        {"overlong", "convert --from utf8 --to ansi", "\xC0\x80", 1, "",
         "Unexpected UTF encoding!"},
        {"odd-utf16", "convert --from utf16 --to ansi", "abc", 1, "", "Unexpected end of file"},
        {"lone-surrogate", "convert --from utf16 --to utf8", "\0\xD8"s, 1, "",
         "Unexpected UTF encoding!"},
    });
    EXPECT_EQ(Run("convert --to ansi", "\x01\xFF\0\x1A\x81\x8D"s).out,
              "\x01\xFF\0\x1A\x81\x8D\r\n"s);
}

TEST_F(Command, SortOrdersLines) {
    ExpectAll({
        {"by-code", "sort", "b\nB\na\n", 0, "B\na\nb\n"},
        {"without-case", "sort -i", "b\nB\na", 0, "a\nB\nb\n"},
        {"numbered", "sort -n", "page10\npage9\npage1\n", 0, "page1\npage9\npage10\n"},
        {"bundled-descending", "sort -nr", "page10\npage9\npage1\n", 0, "page10\npage9\npage1\n"},
        {"numbered-without-case", "sort -ni", "B2\na10\na9", 0, "a9\na10\nB2\n"},
        {"zero-byte-is-kept", "sort", "b\0x\na"s, 0, "a\nb\0x\n"s},
        {"folds-every-letter", "sort -i",
         "\xE9z\n\xC9"
         "a\n",
         0,
         "\xC9"
         "a\n\xE9z\n"},
    });
}

TEST_F(Command, MatchFindsLines) {
    ExpectAll({
        {"stars", "match \"*.t?t\"", "file.txt\nfile.c\n", 0, "file.txt\n"},
        {"escaped", "match \"\\*a\"", "*a\nba\n", 0, "*a\n"},
        {"none", "match x", "a\nb\n", 1, ""},
        {"without-case", "match -i \"A*\"", "abc\nb", 0, "abc\n"},
        {"zero-byte-is-text", "match \"a?b\"", "a\0b\nab"s, 0, "a\0b\n"s},
        {"pattern-after-dashes", "match -- -x", "-x\n", 0, "-x\n"},
        {"no-pattern", "match", "", 2, "", "PATTERN"},
    });
}

TEST_F(Command, TellsAboutItself) {
    EXPECT_NE(Run("classes").out.find("\n  SInputStream "), std::string::npos);
    EXPECT_EQ(Run("--version").out.find("brcore8 8."), 0u);
    EXPECT_NE(Run("version").out.find("platform: "), std::string::npos);
    EXPECT_EQ(Run("help").out, Run("--help").out);
    EXPECT_EQ(Run("help sort").out, Run("sort --help").out);
    ExpectAll({
        {"no-command", "", "", 2, "", "Usage"},
        {"unknown-command", "frobnicate", "", 2, "", "Usage"},
        {"unknown-option", "sort --frobnicate", "", 2, "", "Usage: brcore8 sort"},
        {"a-slash-begins-no-option", "sort /nowhere", "", 1, "", "/nowhere: Can't open"},
        {"unknown-code-page", "sort --code-page 77", "", 2, "", "no code page 77"},
        {"code-page-with-a-meaning-of-its-own", "sort --code-page=-2", "", 2, "", "number from 1"},
        {"the-last-of-an-option-counts", "sort --code-page 77 --code-page 1252", "a", 0, "a\n"},
        {"attached-value-missing", "convert --to= ansi", "", 2, "", "--to: the value is missing"},
        {"input-without-a-name", "sort \"\"", "a", 1, "", "brcore8: : Can't open for reading"},
        {"output-without-a-name", "convert --to ansi -o \"\"", "a", 1, "",
         "brcore8: : Can't open for writing"},
        {"missing-file", "sort nowhere", "", 1, "", "brcore8: nowhere: Can't open for reading"},
        {"a-folder", "sort .", "", 1, "", "brcore8: .: Can't open for reading"},
        {"no-such-target-folder", "convert --to ansi -o no/where", "x", 1, "",
         "brcore8: no/where: Can't open for writing"},
    });
}

TEST_F(Command, OutputIsWrittenOnlyWhenItChanges) {
    EXPECT_EQ(Run("preprocess -o out", "a").err, "out: written\n");
    EXPECT_EQ(ReadFile("out"), "a ");
    const auto before = std::filesystem::last_write_time("out");
    EXPECT_EQ(Run("preprocess -o out", "a").err, "out: unchanged\n");
    EXPECT_EQ(std::filesystem::last_write_time("out"), before);
    EXPECT_EQ(Run("preprocess -o out", "b").err, "out: written\n");
    EXPECT_EQ(ReadFile("out"), "b ");
    EXPECT_EQ(Run("convert --to ansi -o out out").err, "out: written\n");
    EXPECT_EQ(ReadFile("out"), "b \r\n");
}

TEST_F(Command, FailureLeavesNoOutput) {
    EXPECT_EQ(Run("convert --from utf8 --to ansi -o new", "\xFF").status, 1);
    EXPECT_FALSE(std::filesystem::exists("new"));
    WriteFile("old", "whole");
    EXPECT_EQ(Run("convert --from utf8 --to ansi -o old", "\xFF").status, 1);
    EXPECT_EQ(ReadFile("old"), "whole");
}

}  // namespace
