// brcore8: the library's units on the command line.

#include "command.h"
#include "interrupt.h"
#include "progress.h"

#include <brcore8/core/exception.h>
#include <brcore8/core/version.h>
#include <brcore8/platform/console.h>
#include <brcore8/strings/multibyte.h>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <cstdlib>

namespace tool {
namespace {

bool ColorsOn(const Settings& settings) {
    if (settings.color != "auto") return settings.color == "always";
    const char* refused = std::getenv("NO_COLOR");
    return SIsTerminal(stderr) && !(refused && *refused);
}

int Fail(const Settings& settings, const std::string& what, const std::string& why) {
    const bool colors = ColorsOn(settings);
    Say(std::string(colors ? "\033[1;31mbrcore8:\033[0m " : "brcore8: ") + what + ": " + why);
    return Failed;
}

int WrongCommandLine(const CLI::App& parser, const std::string& why) {
    Say("brcore8: " + why);
    std::fputs(parser.help().c_str(), stderr);
    return WrongUsage;
}

std::string PageNumber(const std::string& text) {
    const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
    return digits && text.front() != '0' ? "" : "a code page is a number from 1";
}

void AddSharedOptions(CLI::App& parser, Settings& settings) {
    parser.add_option("--code-page", settings.codePage, "The code page of 8-bit text (1252)")
        ->type_name("PAGE")
        ->check(CLI::Validator(PageNumber, ""));
    parser.add_option("--oem-code-page", settings.oemCodePage, "The code page of OEM text (437)")
        ->type_name("PAGE")
        ->check(CLI::Validator(PageNumber, ""));
    parser.add_flag("--strict", settings.strict,
                    "Fail when a character does not survive a conversion");
    parser.add_option("--color", settings.color, "Colours on standard error")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
}

// Runs a parsed command and turns every failure into its line and its exit status.
int RunAction(const Action& action, const std::string& name, const Settings& settings) {
    try {
        ProgressBar bar(name.c_str());
        return action();
    } catch (const Failure& failure) {
        return Fail(settings, failure.what, failure.why);
    } catch (const ClosedPipe&) {
        return Failed;
    } catch (const SEIOAbortedException&) {
        return Interrupted;
    } catch (const SException& error) {
        const std::string why = error.GetText();
        return Fail(settings, name, why.empty() ? "it could not be done" : why);
    } catch (const std::bad_alloc&) {
        return Fail(settings, name, "there is not enough memory");
    }
}

// The parser would take the next argument for the value that is missing after the sign.
std::string FindMissingValue(int argc, char** argv) {
    for (int i = 1; i < argc && std::string_view(argv[i]) != "--"; ++i) {
        const std::string_view argument = argv[i];
        if (argument.starts_with("--") && argument.find('=') == argument.size() - 1)
            return std::string(argument.substr(0, argument.size() - 1));
    }
    return "";
}

int Main(int argc, char** argv) {
    Settings settings;
    CLI::App parser("brcore8 puts the units of the BRCORE8 library to work on files.", "brcore8");
    parser.require_subcommand(1);
    parser.allow_windows_style_options(false);  // a name may begin with a slash
    parser.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    parser.set_version_flag("--version", std::string("brcore8 ") + SLibraryVersion(),
                            "Show the version");
    AddSharedOptions(parser, settings);

    std::map<const CLI::App*, std::pair<std::string, Action>> actions;
    for (const Command& command : Commands()) {
        CLI::App* sub = parser.add_subcommand(command.name, command.summary);
        sub->fallthrough();
        actions[sub] = {command.name, command.prepare(*sub, settings)};
    }

    const std::string missing = FindMissingValue(argc, argv);
    if (!missing.empty()) return WrongCommandLine(parser, missing + ": the value is missing");
    try {
        parser.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return RunAction([&] { return Print(parser.help()); }, "help", settings);
    } catch (const CLI::CallForVersion& version) {
        return RunAction([&] { return Print(version.what() + std::string("\n")); }, "version",
                         settings);
    } catch (const CLI::ParseError& error) {
        return WrongCommandLine(parser, error.what());
    }
    if (_setmbcp(settings.codePage) != 0)
        return WrongCommandLine(parser, "no code page " + std::to_string(settings.codePage));
    if (SSetOemCodePage(settings.oemCodePage) != 0)
        return WrongCommandLine(parser, "no code page " + std::to_string(settings.oemCodePage));

    const auto& [name, action] = actions.at(parser.get_subcommands().front());
    try {
        return RunAction(action, name, settings);
    } catch (const CLI::ParseError& error) {  // what only the code page could tell
        return WrongCommandLine(parser, error.what());
    }
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) {
    SBinaryStandardStreams();
    tool::CatchInterrupts();
    return tool::Main(argc, argv);
}
