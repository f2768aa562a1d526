// brcore8: the library's units on the command line.

#include "command.h"
#include "interrupt.h"

#include <brcore8/core/exception.h>
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
    const auto used = parser.get_subcommands();
    const CLI::App& speaker = used.empty() ? parser : *used.front();
    std::fputs(speaker.help().c_str(), stderr);
    return WrongUsage;
}

void AddSharedOptions(CLI::App& parser, Settings& settings) {
    parser.add_option("--code-page", settings.codePage, "The code page of 8-bit text (1252)")
        ->type_name("N");
    parser.add_option("--oem-code-page", settings.oemCodePage, "That of OEM text (437)")
        ->type_name("N");
    parser.add_flag("--strict", settings.strict,
                    "Fail when a character does not survive a conversion");
    parser.add_option("--color", settings.color, "Colours: auto, always or never")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
}

// Runs a parsed command and turns every failure into its line and its exit status.
int RunAction(const Action& action, const std::string& name, const Settings& settings) {
    try {
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

int Main(int argc, char** argv) {
    Settings settings;
    CLI::App parser("brcore8 puts the units of the BRCORE8 library to work on files.", "brcore8");
    parser.require_subcommand(1);
    parser.set_version_flag("--version", std::string("brcore8 " BRCORE8_VERSION));
    AddSharedOptions(parser, settings);

    std::map<const CLI::App*, std::pair<std::string, Action>> actions;
    for (const Command& command : Commands()) {
        CLI::App* sub = parser.add_subcommand(command.name, command.summary);
        sub->fallthrough();
        actions[sub] = {command.name, command.prepare(*sub, settings)};
    }

    try {
        parser.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return parser.exit(error);
        return WrongCommandLine(parser, error.what());
    }
    if (_setmbcp(settings.codePage) != 0)
        return WrongCommandLine(parser, "no code page " + std::to_string(settings.codePage));
    if (SSetOemCodePage(settings.oemCodePage) != 0)
        return WrongCommandLine(parser, "no code page " + std::to_string(settings.oemCodePage));

    const auto& [name, action] = actions.at(parser.get_subcommands().front());
    const int status = RunAction(action, name, settings);
    return WasInterrupted() ? int{Interrupted} : status;
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) {
    SBinaryStandardStreams();
    tool::CatchInterrupts();
    return tool::Main(argc, argv);
}
