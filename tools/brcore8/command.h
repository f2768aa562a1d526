// What the commands of the program share: settings, the table of commands, failures.
#ifndef BRCORE8_TOOLS_COMMAND_H
#define BRCORE8_TOOLS_COMMAND_H

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

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

// For a command made of several, of which one must be given: adds them to the parser and returns
// what runs the one that was parsed.
Action PrepareParts(CLI::App& parser, const Settings& settings, std::span<const Command> parts);

Action PreparePreprocess(CLI::App& parser, const Settings& settings);
Action PrepareConvert(CLI::App& parser, const Settings& settings);
Action PrepareSort(CLI::App& parser, const Settings& settings);
Action PrepareMatch(CLI::App& parser, const Settings& settings);
Action PrepareScan(CLI::App& parser, const Settings& settings);
Action PrepareRtf(CLI::App& parser, const Settings& settings);
Action PrepareList(CLI::App& parser, const Settings& settings);
Action PrepareMap(CLI::App& parser, const Settings& settings);
Action PrepareBinary(CLI::App& parser, const Settings& settings);
Action PrepareModules(CLI::App& parser, const Settings& settings);
Action PrepareSettings(CLI::App& parser, const Settings& settings);
Action PrepareProfile(CLI::App& parser, const Settings& settings);
Action PrepareZip(CLI::App& parser, const Settings& settings);
Action PrepareClasses(CLI::App& parser, const Settings& settings);
Action PrepareVersion(CLI::App& parser, const Settings& settings);
Action PrepareCompletion(CLI::App& parser, const Settings& settings);
Action PrepareManual(CLI::App& parser, const Settings& settings);
Action PrepareHelp(CLI::App& parser, const Settings& settings);

// The whole result of a command, on standard output.
int Print(const std::string& text);

// Fields with tabs between them and LF after the last; in a field a tab, CR, LF or backslash is
// written \t, \r, \n, \\.
std::string Row(std::initializer_list<std::string_view> fields);

// One line on standard error.
void Say(const std::string& line);

}  // namespace tool

#endif
