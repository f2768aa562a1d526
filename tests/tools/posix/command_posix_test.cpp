#include "tools/run_command.h"

#include <sstream>
#include <vector>

namespace {

using CommandPosix = CommandTest;

TEST_F(CommandPosix, AFullDiskIsNoticed) {
    const std::string line = "brcore8: standard output: Write failed\n";
    for (const char* arguments :
         {"sort", "help", "--help", "sort --help", "--version", "classes"}) {
        SCOPED_TRACE(arguments);
        const Result result = Run(arguments, "a", "/dev/full");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, line);
    }
    EXPECT_EQ(Run("convert --to ansi -o /dev/full", "a").err, "brcore8: /dev/full: Write failed\n");
}

TEST_F(CommandPosix, AClosedPipeIsNoticedQuietly) {
    const std::string text(1 << 20, 'a');
    WriteFile("input", text);
    WriteFile("script",
              "trap '' PIPE\n(" + Program() + " sort input 2>err; echo $? >status) | true");
    ASSERT_EQ(std::system("sh script"), 0);
    EXPECT_EQ(ReadFile("status"), "1\n");
    EXPECT_EQ(ReadFile("err"), "");
}

TEST_F(CommandPosix, InterruptLeavesOutputsAsTheyWere) {
    struct {
        const char* name;
        const char* output;  // besides "-o": whom the program waits for
        const char* input;
    } rows[] = {
        {"waits-for-input-old-output", "old", "<>pipe"},
        {"waits-for-input-new-output", "new", "<>pipe"},
        {"waits-for-a-reader", "pipe", "</dev/null"},
    };
    WriteFile("old", "whole");
    ASSERT_EQ(std::system("mkfifo pipe"), 0);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFile("script", Program() + " convert --to ansi -o " + row.output + " " + row.input +
                                " 2>err &\nsleep 0.3; kill -INT $!; wait $!; echo $? >status");
        ASSERT_EQ(std::system("timeout 10 sh script"), 0);
        EXPECT_EQ(ReadFile("status"), "130\n");
        EXPECT_EQ(ReadFile("err"), "");
    }
    EXPECT_EQ(ReadFile("old"), "whole");
    EXPECT_FALSE(std::filesystem::exists("new"));
}

// The words of a help that begin with two dashes, and the commands.
std::vector<std::string> Documented(const std::string& help) {
    std::vector<std::string> found;
    std::istringstream lines(help);
    bool inCommands = false;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t dashes = line.find("--");
        if (line.starts_with("  -") && dashes != std::string::npos)
            found.push_back(line.substr(dashes, line.find_first_of(" ,", dashes) - dashes));
        if (inCommands && line.size() > 2)
            found.push_back(line.substr(2, line.find(' ', 2) - 2));
        inCommands = (inCommands && !line.empty()) || line == "Subcommands:";
    }
    return found;
}

TEST_F(CommandPosix, ManualAndCompletionKnowEveryCommandAndOption) {
    std::string manual = ReadFile(BRCORE8_COMMAND_FOLDER "/brcore8.1");
    std::erase(manual, '\\');
    const std::string completion = ReadFile(BRCORE8_COMMAND_FOLDER "/brcore8.bash");
    std::vector<std::string> words;
    std::vector<std::string> open = {""};  // commands, and those that are made of several
    while (!open.empty()) {
        const std::string command = open.back();
        open.pop_back();
        for (const std::string& word : Documented(Run(command + "--help").out)) {
            words.push_back(word);
            if (!word.starts_with("--")) open.push_back(command + word + " ");
        }
    }
    ASSERT_GT(words.size(), 20u);
    for (const std::string& word : words) {
        EXPECT_NE(manual.find(word), std::string::npos) << word << " is not in the manual";
        EXPECT_NE(completion.find(word), std::string::npos) << word << " is not completed";
    }
}

TEST_F(CommandPosix, CompletionOffersWhatFits) {
    struct {
        const char* name;
        const char* words;
        const char* offered;
    } rows[] = {
        {"commands", "brcore8 so", "sort"},
        {"commands-after-a-shared-option", "brcore8 --code-page 932 pre", "preprocess"},
        {"topics", "brcore8 help cl", "classes"},
        {"options-of-the-command", "brcore8 sort --r", "--reverse"},
        {"values", "brcore8 convert --to utf1", "utf16"},
        {"values-after-a-sign", "brcore8 convert --to = utf1", "utf16"},
        {"parts-of-a-command", "brcore8 rtf --strict fo", "fonts"},
        {"options-of-a-part", "brcore8 rtf merge a b --ou", "--output"},
        {"files-of-a-part", "brcore8 rtf fonts na", "name with blanks"},
        {"files", "brcore8 sort na", "name with blanks"},
    };
    WriteFile("name with blanks", "");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFile("script", "complete() { :; }\nsource " BRCORE8_COMMAND_FOLDER
                            "/brcore8.bash\nCOMP_WORDS=(" +
                                std::string(row.words) +
                                ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_brcore8\n"
                                "printf '%s|' \"${COMPREPLY[@]}\" >offered");
        ASSERT_EQ(std::system("bash script"), 0);
        EXPECT_EQ(ReadFile("offered"), std::string(row.offered) + "|");
    }
}

}  // namespace
