#include "tools/run_command.h"

namespace {

class CommandRtf : public CommandTest {
protected:
    static void Fetch(const std::string& name) {
        WriteFile(name + ".rtf", ReadFile(BRCORE8_DOCUMENTS + name + ".rtf"));
    }
};

TEST_F(CommandRtf, ShowsPartsOfDocuments) {
    const struct {
        const char* name;
        const char* part;
        const char* document;
        const char* out;
    } rows[] = {
        {"words up to one of the writer's own", "header", "desktop_editor",
         "{\\rtf1\\ansi\\ansicpg1252"},
        {"all words", "header", "edit_control", "{\\rtf1\\ansi\\ansicpg1251\\deff0"},
        {"words in another order", "header", "word_processor", "{\\rtf1"},
        {"fonts without braces", "fonts", "desktop_editor",
         "0\tHelvetica\t\\\\fswiss\\\\fcharset0\n1\tHelvetica-Bold\t\\\\fswiss\\\\fcharset0\n"
         "2\tMenlo-Regular\t\\\\fnil\\\\fcharset0\n"},
        {"fonts with alternative names", "fonts", "office_suite",
         "0\tTimes New Roman\t\\\\froman\\\\fprq2\\\\fcharset0\n"
         "1\tSymbol\t\\\\froman\\\\fprq2\\\\fcharset2\n"
         "2\tArial\t\\\\fswiss\\\\fprq2\\\\fcharset0\n"
         "3\tLiberation Serif\t\\\\froman\\\\fprq2\\\\fcharset0\n"
         "4\tLiberation Sans\t\\\\fswiss\\\\fprq2\\\\fcharset0\n"
         "5\tNoto Sans CJK SC\t\\\\fnil\\\\fprq2\\\\fcharset0\n"},
        {"one name twice", "fonts", "edit_control",
         "0\tCalibri\t\\\\fnil\\\\fcharset0\n1\tSymbol\t\\\\fnil\\\\fcharset2\n"},
        {"no automatic colour", "colors", "report",
         "0\t\n1\t\\\\red0\\\\green0\\\\blue0\n2\t\\\\red192\\\\green0\\\\blue0\n"},
        {"blank before the first colour", "colors", "edit_control",
         "0\t\n1\t\\\\red255\\\\green0\\\\blue0\n"},
        {"no styles", "styles", "report", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Fetch(row.document);
        const Result result = Run(std::string("rtf ") + row.part + " " + row.document + ".rtf");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, row.out);
        EXPECT_EQ(result.err, "");
    }
    Fetch("office_suite");
    const std::string styles = Run("rtf styles -", ReadFile("office_suite.rtf")).out;
    EXPECT_TRUE(styles.starts_with("{\\stylesheet{\\s0\\snext0")) << styles;
    EXPECT_TRUE(styles.ends_with(" Heading;}\n}")) << styles;
}

TEST_F(CommandRtf, MergesTwoDocuments) {
    Fetch("report");
    Fetch("edit_control");
    const Result first = Run("rtf merge report.rtf edit_control.rtf -o both.rtf");
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.out, "");
    EXPECT_EQ(first.err, "both.rtf: written\n");
    EXPECT_EQ(Run("rtf merge report.rtf edit_control.rtf -o both.rtf").err,
              "both.rtf: unchanged\n");
    EXPECT_EQ(Run("rtf colors both.rtf").out,
              "0\t\n1\t\\\\red0\\\\green0\\\\blue0\n2\t\\\\red192\\\\green0\\\\blue0\n"
              "3\t\\\\red255\\\\green0\\\\blue0\n");
    // The bodies, with their numbers alone changed and every line end and blank kept.
    const std::string both = ReadFile("both.rtf");
    for (const char* part :
         {"\n\\f0\\fs18\\cf1 job 17: \\cf2FAILED\\cf1, \\f1see log\\line\n\\f0 job 18: ok\\par}",
          "\r\n\\pard\\sa200\\sl276\\slmult1\\f2\\fs22\\lang9 Hello, "
          "\\f3\\lang1049\\'ec\\'e8\\'f0!",
          "\r\n\\cf3\\b\\f3\\'c2\\'f2\\'ee\\'f0\\'e0\\'ff\\f2  "
          "line\\cf0\\b0\\par\r\n\r\n\\pard{\\pntext\\f4"})
        EXPECT_NE(both.find(part), std::string::npos) << part;
    EXPECT_TRUE(both.ends_with(" point\\par\r\n}}")) << both;
}

TEST_F(CommandRtf, PrintsPlainText) {
    const struct {
        const char* arguments;
        const char* document;
        const char* out;
    } rows[] = {
        {"", "code_paste", "int main() {\n\t// greet\n\tputs(\"a\\n\");\n}"},
        {"--code-page 1251 ", "edit_control",
         "Hello, \xEC\xE8\xF0!\n\xC2\xF2\xEE\xF0\xE0\xFF line\npoint"},
        {"--code-page 932 ", "editor_japanese",
         "\x90\x7D\x96\xCA\x88\xEA\x97\x97\x95\x5C\n"
         "\x83\x5C\x83\x74\x83\x67\x83\x45\x83\x46\x83\x41 2.0 \x94\xC5\n"
         "\x95\x5C\x8E\xA6\x81\x7B\x97\x5C\x92\xE8\x81\x6D\x31\x81\x6E\n"
         "\xB6\xC0\xB6\xC5 \x94\xBC\x8A\x70"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.document);
        Fetch(row.document);
        const Result result = Run(std::string(row.arguments) + "rtf text " + row.document + ".rtf");
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, row.out);
        EXPECT_EQ(result.err, "");
    }
    EXPECT_EQ(Run("rtf text -", "{\\rtf1\\ansi}").out, "") << "a document without text is one";
}

TEST_F(CommandRtf, BringsTextsBack) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n') bytes += static_cast<char>(byte);
    const struct {
        const char* name;
        const char* page;
        std::string text;
        std::string back;
    } rows[] = {
        {"lines", "1252", "a\nb\n", "a\nb\n"},
        {"an open end", "1252", "a\r\nb", "a\nb"},
        {"every byte", "1251", bytes, bytes},
        {"Unicode that no page holds", "1253", "\xEF\xBB\xBF\xCE\xB1 \xC3\xA9\n", "\xE1 e\n"},
        {"nothing", "1252", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string page = std::string("--code-page ") + row.page;
        const Result made = Run(page + " rtf from-text - -o made.rtf", row.text);
        EXPECT_EQ(made.status, 0) << made.err;
        EXPECT_EQ(Run(page + " rtf text made.rtf").out, row.back);
    }
    EXPECT_EQ(Run("rtf from-text - -o made.rtf", "a").err, "made.rtf: written\n");
    EXPECT_EQ(Run("rtf text made.rtf -o made.txt").err, "made.txt: written\n");
    EXPECT_EQ(Run("rtf text made.rtf -o made.txt").err, "made.txt: unchanged\n");
    EXPECT_EQ(ReadFile("made.txt"), "a");
}

TEST_F(CommandRtf, TellsWhatDoesNotSurvive) {
    const std::string document =
        "{\\rtf1\\ansi\\uc0 caf\\'e9\\par\\u26085\\u-10179\\u-8704 x\\u1078}";
    const std::string what =
        "brcore8: standard input: 3 characters did not survive, the first at byte 5 of the text\n";
    const Result lenient = Run("rtf text -", document);
    EXPECT_EQ(lenient.status, 0);
    EXPECT_EQ(lenient.out, "caf\xE9\n???x?");
    EXPECT_EQ(lenient.err, what);
    const Result strict = Run("--strict rtf text - -o new", document);
    EXPECT_EQ(strict.status, 1);
    EXPECT_EQ(strict.err, what);
    EXPECT_FALSE(std::filesystem::exists("new"));
    const Result zero = Run("rtf from-text - -o new", std::string("a\0b", 3));
    EXPECT_EQ(zero.status, 1);
    EXPECT_EQ(zero.err, "brcore8: standard input: it holds a zero byte, which RTF cannot\n");
    EXPECT_FALSE(std::filesystem::exists("new"));
}

TEST_F(CommandRtf, RefusesWhatIsNoRtf) {
    Fetch("report");
    WriteFile("text", "no RTF");
    const struct {
        const char* arguments;
        int status;
        const char* err;
    } rows[] = {
        {"fonts text", 1, "brcore8: text: it is no RTF document\n"},
        {"header -", 1, "brcore8: standard input: it is no RTF document\n"},
        {"merge report.rtf text -o new", 1, "brcore8: text: it is no RTF document\n"},
        {"text text", 1, "brcore8: text: it is no RTF document\n"},
        {"colors absent", 1, "brcore8: absent: "},
        {"merge report.rtf report.rtf", 2, "brcore8: "},
        {"fonts", 2, "brcore8: "},
        {"", 2, "brcore8: "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments);
        const Result result = Run(std::string("rtf ") + row.arguments);
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(result.err.starts_with(row.err)) << result.err;
    }
    EXPECT_FALSE(std::filesystem::exists("new"));
}

}  // namespace
