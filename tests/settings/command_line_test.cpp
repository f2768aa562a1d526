#include <brcore8/settings/command_line.h>

#include "support/failing_allocator.h"
#include "support/page_scope.h"

#include <brcore8/core/exception.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(CommandLine, TellsWhatWasAskedFor) {
    const struct {
        const char* name;
        const char* line;
        unsigned command;
        const char* file;
        int embedding;
        int automation;
    } rows[] = {
        {"nothing", "", SCommandLine::None, "", 0, 0},
        {"null", nullptr, SCommandLine::None, "", 0, 0},
        {"spaces alone", " \t ", SCommandLine::None, "", 0, 0},
        {"a file", "plan.brn", SCommandLine::Open, "plan.brn", 0, 0},
        {"spaces around", "  plan.brn ", SCommandLine::Open, "plan.brn", 0, 0},
        {"the first of two files", "a b", SCommandLine::Open, "a", 0, 0},
        {"quotes are text", "\"a b\"", SCommandLine::Open, "\"a", 0, 0},
        {"print", "-p a", SCommandLine::Print, "a", 0, 0},
        {"print, the file first", "a /p", SCommandLine::Print, "a", 0, 0},
        {"print to", "/pt a printer", SCommandLine::PrintTo, "a", 0, 0},
        {"print to in capitals", "-PT a", SCommandLine::Open, "a", 0, 0},
        {"a request", "/dde", SCommandLine::Dde, "", 0, 0},
        {"a request in capitals", "/DDE", SCommandLine::None, "", 0, 0},
        {"a workspace", "-workspace w", SCommandLine::OpenWorkspace, "w", 0, 0},
        {"unregister", "-uNREGISTER", SCommandLine::Unregister, "", 0, 0},
        {"unregister the server", "/unregserver", SCommandLine::Unregister, "", 0, 0},
        {"the last command of two", "-p -dde", SCommandLine::Dde, "", 0, 0},
        {"embedding", "-eMBEDDING", SCommandLine::None, "", 1, 0},
        {"automation of a file", "/AUTOMATION a", SCommandLine::Open, "a", 0, 1},
        {"both", "-Automation -Embedding", SCommandLine::None, "", 1, 1},
        {"a lone switch character", "- /", SCommandLine::None, "", 0, 0},
        {"another switch", "-other --p", SCommandLine::None, "", 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SCommandLine line("/Embedding -p before");
        line.SetCmdLineString(row.line);
        for (const SCommandLine& same : {line, SCommandLine(row.line)}) {
            EXPECT_EQ(same.GetShellCommand(), row.command);
            EXPECT_STREQ(same.GetFileName(), row.file);
            EXPECT_EQ(same.IsEmbedding(), row.embedding);
            EXPECT_EQ(same.IsAutomation(), row.automation);
            EXPECT_EQ(same.ShowSplash(), !row.embedding && !row.automation);
            EXPECT_STREQ(same.GetCmdLineString(), row.line ? row.line : "");
        }
    }
}

// What ParseParam is given, word by word.
class Recorder : public SCommandLine {
public:
    explicit Recorder(const char* line, const char* again = nullptr)
        : SCommandLine(""), again_(again) {
        SetCmdLineString(line);
    }
    std::vector<std::string> words;

protected:
    void ParseParam(const SString& param, int isFlag, int isLast) override {
        std::string& word = words.emplace_back(isFlag ? "-" : "");
        word.append(param);
        if (isLast) word.push_back('.');
        if (param == "again")
            SetCmdLineString(again_ ? again_ : GetCmdLineString().GetPointerAt(2));
        SCommandLine::ParseParam(param, isFlag, isLast);
    }

private:
    const char* again_;
};

TEST(CommandLine, GivesEveryWordToAnOverride) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(Recorder("").words, Words());
    EXPECT_EQ(Recorder("-a b /c").words, (Words{"-a", "b", "-c."}));
    EXPECT_EQ(Recorder(" x - ").words, (Words{"", "x", "-."}));
    // A trail byte may look like a switch character.
    const PageScope page(932);
    EXPECT_EQ(Recorder("\x83/ -\x83-").words.size(), 2u);
}

TEST(CommandLine, MayBeSetAnewWhileItIsParsed) {
    const Recorder another("a -again b c", "d -p");
    EXPECT_EQ(another.words, (std::vector<std::string>{"a", "-again", "d", "-p."}));
    EXPECT_STREQ(another.GetFileName(), "d");
    EXPECT_EQ(another.GetShellCommand(), unsigned{SCommandLine::Print});
    // A part of the very line, and no line at all.
    EXPECT_EQ(Recorder("a -again").words,
              (std::vector<std::string>{"a", "-again.", "-again.", "gain."}));
    EXPECT_EQ(Recorder("-again b", "").words, std::vector<std::string>{"-again"});
}

TEST(CommandLine, IsLinearInItsWords) {
    std::string text;
    for (int i = 0; i < 1000000; ++i)
        text += "/p ";
    EXPECT_EQ(SCommandLine(text.c_str()).GetShellCommand(), unsigned{SCommandLine::Print});
}

TEST(CommandLine, SurvivesEveryRefusedAllocation) {
    bool triggered = true;
    for (int nth = 1; triggered; ++nth) {
        SCommandLine line("old");
        FailNthAllocation fail(nth, true);
        try {
            line.SetCmdLineString((std::string(3000, 'x') + " -p").c_str());
            EXPECT_EQ(line.GetFileName().Length(), 3000);
        } catch (const SEOutOfMemory&) {
            EXPECT_TRUE(line.GetFileName().AssertValid());
        }
        triggered = fail.Triggered();
    }
}

}  // namespace
