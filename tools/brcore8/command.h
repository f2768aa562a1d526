// What the commands of the program share: settings, the table of commands, failures.
#ifndef BRCORE8_TOOLS_COMMAND_H
#define BRCORE8_TOOLS_COMMAND_H

#include <functional>
#include <span>
#include <string>

namespace CLI {
class App;
}

namespace tool {

// Exit statuses; see "brcore8 help".
enum ExitStatus { Done = 0, Failed = 1, WrongUsage = 2, Interrupted = 130 };

// The options that stand before or after any command.
struct Settings {
    int codePage = 1252;
    int oemCodePage = 437;
    bool strict = false;
    std::string color = "auto";
};

// The work failed: the program says "brcore8: WHAT: WHY" and exits with Failed.
struct Failure {
    std::string what;
    std::string why;
};

// Nobody reads the output any more: the program ends without a word.
struct ClosedPipe {};

using Action = std::function<int()>;

// A command adds its options to the parser and returns what to run once they are parsed. Both
// the parser and the settings outlive the action.
struct Command {
    const char* name;
    const char* summary;
    Action (*prepare)(CLI::App& parser, const Settings& settings);
};
std::span<const Command> Commands();

Action PreparePreprocess(CLI::App& parser, const Settings& settings);
Action PrepareConvert(CLI::App& parser, const Settings& settings);
Action PrepareSort(CLI::App& parser, const Settings& settings);
Action PrepareMatch(CLI::App& parser, const Settings& settings);
Action PrepareClasses(CLI::App& parser, const Settings& settings);
Action PrepareVersion(CLI::App& parser, const Settings& settings);
Action PrepareHelp(CLI::App& parser, const Settings& settings);

// The whole result of a command, on standard output.
int Print(const std::string& text);

// One line on standard error.
void Say(const std::string& line);

}  // namespace tool

#endif
