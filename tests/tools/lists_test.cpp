// list, map and scan.
#include "tools/run_command.h"

using namespace std::string_literals;

namespace {

using Lists = CommandTest;

TEST_F(Lists, ListParsePrintsItems) {
    ExpectAll({
        {"items", "list parse \"a;b c;;d\"", "", 0, "a\nb c\nd\n"},
        {"empty", "list parse \"\"", "", 0, ""},
        {"a leading separator", "list parse \";a\"", "", 0, "\na\n"},
        {"escaped", "list parse \"a\\;b;c\\d\"", "", 0, "a;b\ncd\n"},
        {"escape at the end", "list parse \"a;b\\,\" -s \",;\"", "", 0, "a\nb,\n"},
        {"other characters", "list parse -s \", \" -e ! \"a,b c!,d\"", "", 0, "a\nb\nc,d\n"},
        {"no escape", "list parse --escape \"\" \"a\\;b\"", "", 0, "a\\\nb\n"},
        {"zero bytes end items", "list parse -z \"a;b\"", "", 0, "a\0b\0"s},
        {"brackets and braces", "list parse \"[a];{}\"", "", 0, "[a]\n{}\n"},
        {"after dashes", "list parse -- -a", "", 0, "-a\n"},
        {"no text", "list parse", "", 2, "", "TEXT"},
        {"long escape", "list parse -e xy a", "", 2, "", "--escape: one character is wanted"},
        {"no part", "list", "", 2, "", "Usage: brcore8 list"},
        {"unknown part", "list sort", "", 2, "", "Usage: brcore8 list"},
    });
}

TEST_F(Lists, ListFormatMakesAList) {
    ExpectAll({
        {"lines", "list format", "a\nb;c\r\nd\\", 0, "a;b\\;c;d\\\\\n"},
        {"nothing", "list format", "", 0, "\n"},
        {"by name", "list format -", "a", 0, "a\n"},
        {"other characters", "list format -s , -e !", "a,b\n!", 0, "a!,b,!!\n"},
        {"no escape", "list format -e \"\"", "a;b\nc", 0, "a;b;c\n"},
        {"zero bytes in lines", "list format", "a\0b\nc"s, 0, "a\0b;c\n"s},
        {"zero bytes between items", "list format -z", "a\nb\0\0;\0c"s, 0, "a\nb;;\\;;c\n"},
        {"double-byte separator", "list format --code-page 932 -s \"\x81\x41\"", "a\nb", 0,
         "a\x81\x41"
         "b\n"},
        {"UTF-8 between zero bytes", "list format -z", "\xEF\xBB\xBF\xC3\xA9\0\xC4\x80"s, 0,
         "\xE9;A\n", "1 character did not survive, the first at byte 6"},
        {"two characters", "list format -s ab", "", 2, "", "--separator: one character is wanted"},
        {"no separator", "list format -s \"\"", "", 2, "", "--separator: one character is wanted"},
        {"no such file", "list format nowhere", "", 1, "", "brcore8: nowhere: Can't open"},
    });
}

TEST_F(Lists, MapParsePrintsPairs) {
    ExpectAll({
        {"pairs in key order", "map parse \"b=1;a=2\"", "", 0, "a\t2\nb\t1\n"},
        {"made keys", "map parse \"x;y\"", "", 0, "1\tx\n2\ty\n"},
        {"first of a value only", "map parse \"k=v=w\"", "", 0, "k\tv=w\n"},
        {"empty", "map parse \"\"", "", 0, ""},
        {"without case", "map parse -i \"Key=1;KEY=2;a=3\"", "", 0, "a\t3\nKEY\t2\n"},
        {"unsorted", "map parse -u \"b=1;a=2;b=3\"", "", 0, "b\t3\na\t2\n"},
        {"unsorted without case", "map parse -iu \"b=1;a=2;B=3\"", "", 0, "B\t3\na\t2\n"},
        {"key format", "map parse --key-format \"k%03d\" --first 9 \"x;y\"", "", 0,
         "k009\tx\nk010\ty\n"},
        {"first index at its end", "map parse -u --first 2147483647 \"x;y\"", "", 0,
         "2147483647\tx\n-2147483648\ty\n"},
        {"other characters", "map parse -a : -s \", \" -e ! \"a!:b:c!,d,e:f g\"", "", 0,
         "3\tg\na:b\tc,d\ne\tf\n"},
        {"fields are escaped", "map parse -e ! \"a\\b=c\\d\"", "", 0, "a\\\\b\tc\\\\d\n"},
        {"format of text", "map parse --key-format \"%s\" x", "", 2, "", "--key-format: one"},
        {"format that writes", "map parse --key-format \"%n\" x", "", 2, "", "--key-format: one"},
        {"two conversions", "map parse --key-format \"%d %d\" x", "", 2, "", "--key-format: one"},
        {"no conversion", "map parse --key-format key x", "", 2, "", "--key-format: one"},
        {"index beyond an int", "map parse --first 2147483648 x", "", 2, "", "--first"},
        {"assignment of two", "map parse -a == x", "", 2, "", "--assign: one character is wanted"},
        {"no text", "map parse", "", 2, "", "TEXT"},
    });
}

TEST_F(Lists, ScanPrintsTokens) {
    WriteFile("keys", "if\n\nthen\n&\nIf\n\xE9");
    ExpectAll({
        {"keywords and runs", "scan -k keys", "IF (a + b)\nTHEN c", 0,
         "1\tIF\n-1\ta+b\n3\tTHEN\n-1\tc\n"},
        {"a keyword of one character", "scan -k keys", "a&\xC9", 0, "-1\ta\n4\t&\n6\t\xC9\n"},
        {"nothing", "scan -k keys", "", 0, ""},
        {"nothing is left", "scan -k keys", "( ) [\n]", 0, ""},
        {"other delimiters", "scan -k keys -d ,", "x,if,(y", 0, "-1\tx\n1\tif\n-1\t(y\n"},
        {"no delimiters", "scan -k keys --delimiters \"\"", "(x if", 0, "-1\t(x\n1\tif\n"},
        {"fields are escaped", "scan -k keys", "a\\b \0"s, 0, "-1\ta\\\\b\0\n"s},
        {"Unicode", "scan -k keys", "\xEF\xBB\xBFx \xC3\x89", 0, "-1\tx\n6\t\xC9\n"},
        {"keywords from standard input", "scan -k - keys", "if", 0,
         "1\tif\n-1\tthen&\n1\tIf\n-1\t\xE9\n"},
        {"no keywords", "scan", "", 2, "", "--keywords"},
        {"no such file", "scan -k nowhere", "", 1, "", "brcore8: nowhere: Can't open"},
    });
}

}  // namespace
