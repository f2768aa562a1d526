#include "tools/run_command.h"

#include <cstring>
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

// "script" gives the program a terminal.
TEST_F(CommandPosix, ColoursAreForTerminalsThatWantThem) {
    const struct {
        const char* name;
        const char* environment;
        const char* options;
        bool terminal, coloured;
    } rows[] = {
        {"a terminal", "", "", true, true},
        {"no terminal", "", "", false, false},
        {"not wanted", "NO_COLOR=1", "", true, false},
        {"an empty wish is none", "NO_COLOR=", "", true, true},
        {"asked for all the same", "NO_COLOR=1", "--color=always", false, true},
        {"never", "", "--color=never", true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string command = "env -u NO_COLOR " + std::string(row.environment) + " " +
                                    Program() + " " + row.options + " sort missing";
        WriteFile("script", row.terminal
                                ? "script -qec '" + command + "' /dev/null >said </dev/null"
                                : command + " 2>said");
        EXPECT_NE(std::system("sh script"), 0);
        const std::string said = ReadFile("said");
        EXPECT_NE(said.find("brcore8:"), std::string::npos) << said;
        EXPECT_EQ(said.find("\033[") != std::string::npos, row.coloured) << said;
    }
}

// Every command, and every option, that the help of the program or of a command names.
std::vector<std::string> Documented(const std::string& help) {
    std::vector<std::string> found;
    std::istringstream lines(help);
    bool inCommands = false;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t dashes = line.find("--");
        if (line.starts_with("  -") && dashes != std::string::npos)
            found.push_back(line.substr(dashes, line.find_first_of(" ,", dashes) - dashes));
        if (inCommands && line.size() > 2) found.push_back(line.substr(2, line.find(' ', 2) - 2));
        inCommands = (inCommands && !line.empty()) || line == "Subcommands:";
    }
    return found;
}

TEST_F(CommandPosix, ManualKnowsEveryCommandAndOption) {
    const std::string page = Run("manual").out;
    std::string plain = page;
    for (const char* markup : {"\\fB", "\\fI", "\\fR", "\\"})
        for (std::size_t at = 0; (at = plain.find(markup, at)) != plain.npos;)
            plain.erase(at, std::strlen(markup));
    std::vector<std::string> open = {""};  // commands, and those that are made of several
    while (!open.empty()) {
        const std::string command = open.back();
        open.pop_back();
        for (const std::string& word : Documented(Run(command + "--help").out)) {
            const bool option = word.starts_with("--");
            EXPECT_NE(plain.find(option ? word : "\n" + command + word), std::string::npos)
                << command << word << " is not in the manual";
            if (!option) open.push_back(command + word + " ");
        }
    }
    // The formatter has no word to say against it.
    WriteFile("page", page);
    ASSERT_EQ(std::system("groff -man -Tutf8 -ww page >text 2>warnings"), 0);
    EXPECT_EQ(ReadFile("warnings"), "");
    EXPECT_NE(ReadFile("text").find("page10\\npage9\\n"), std::string::npos) << "escapes";
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
        {"values-of-a-short-option", "brcore8 zip extract a.zip -d na", "name of a folder"},
        {"code-pages", "brcore8 sort --code-page 93", "932|936"},
        {"shells", "brcore8 completion z", "zsh"},
        {"nothing-where-nobody-knows", "brcore8 settings list na", ""},
        {"values-after-a-sign", "brcore8 convert --to = utf1", "utf16"},
        {"parts-of-a-command", "brcore8 rtf --strict fo", "fonts"},
        {"options-of-a-part", "brcore8 rtf merge a b --ou", "--output"},
        {"files-of-a-part", "brcore8 rtf fonts name\\ w", "name with blanks"},
        {"files", "brcore8 sort name\\ w", "name with blanks"},
    };
    WriteFile("name with blanks", "");
    std::filesystem::create_directory("name of a folder");
    WriteFile("completion", Run("completion bash").out);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFile("script", "complete() { :; }\nsource completion\nCOMP_WORDS=(" +
                                std::string(row.words) +
                                ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_brcore8\n"
                                "printf '%s|' \"${COMPREPLY[@]}\" >offered");
        ASSERT_EQ(std::system("bash script"), 0);
        EXPECT_EQ(ReadFile("offered"), std::string(row.offered) + "|");
    }
}

// A shell at a terminal, into which a person types and presses the tabulator.
TEST_F(CommandPosix, ZshCompletesAsOneTypes) {
    const struct {
        const char* typed;
        const char* called;
    } rows[] = {
        {"brcore8 prep\\t", "preprocess"},
        {"brcore8 --code-page 125\\t2 rtf mer\\t", "--code-page 1252 rtf merge"},
        {"brcore8 convert --fro\\tutf1\\t", "convert --from=utf16"},
        {"brcore8 zip extract a.zip -d nam\\t", "zip extract a.zip -d name of a folder"},
        {"brcore8 sort --rev\\tnam\\t", "sort --reverse name of a folder"},
        {"brcore8 help clas\\t", "help classes"},
    };
    WriteFile("completion", Run("completion zsh").out);
    std::filesystem::create_directory("name of a folder");
    std::string script =
        "zmodload zsh/zpty\n"
        "zpty shell zsh -f -i\n"
        "type() { zpty -w shell $1; zpty -r shell answer '*<done>*' }\n"
        "type 'PS1=; unsetopt beep; autoload -Uz compinit; compinit -u -D; source ./completion; "
        "brcore8() { print -r -- \"$*\" >>called }; print \"<\"done\">\"'\n";
    std::string expected;
    for (const auto& row : rows) {
        script += "type $'" + std::string(row.typed) + "; print \"<\"done\">\"'\n";
        expected += row.called + std::string("\n");
    }
    WriteFile("script", script);
    ASSERT_EQ(std::system("timeout 60 zsh -f script"), 0);
    EXPECT_EQ(ReadFile("called"), expected);
}

}  // namespace
