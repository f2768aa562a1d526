// The one table of commands, and those that speak about the program itself.

#include "command.h"
#include "output.h"
#include "progress.h"

#include <brcore8/core/version.h>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <map>
#include <memory>

namespace tool {
namespace {

constexpr Command Table[] = {
    {"preprocess", "Run a text through its directives", PreparePreprocess},
    {"convert", "Re-encode a text's lines", PrepareConvert},
    {"sort", "Sort a text's lines", PrepareSort},
    {"match", "Print the lines that match a wildcard pattern", PrepareMatch},
    {"scan", "Cut a text into keywords and what stands between them", PrepareScan},
    {"rtf", "Take RTF documents apart, and put them together", PrepareRtf},
    {"list", "Take lists in one string apart, and put them together", PrepareList},
    {"map", "Take maps in one string apart", PrepareMap},
    {"binary", "Make a binary table of strings, and read one", PrepareBinary},
    {"modules", "List the modules that a Windows program needs", PrepareModules},
    {"settings", "Read and write the settings of the current user", PrepareSettings},
    {"profile", "Read and write the keys of INI files", PrepareProfile},
    {"zip", "List, read, extract or test a ZIP archive", PrepareZip},
    {"classes", "Show the class tree", PrepareClasses},
    {"version", "Tell the versions and the parts of this build", PrepareVersion},
    {"completion", "Print how a shell completes the command line", PrepareCompletion},
    {"manual", "Print the manual page", PrepareManual},
    {"help", "Show this help, or that of a command", PrepareHelp},
};

}  // namespace

std::span<const Command> Commands() {
    return Table;
}

Action PrepareParts(CLI::App& parser, const Settings& settings, std::span<const Command> parts) {
    parser.require_subcommand(1);
    auto actions = std::make_shared<std::map<const CLI::App*, Action>>();
    for (const Command& part : parts) {
        CLI::App* sub = parser.add_subcommand(part.name, part.summary);
        sub->fallthrough();
        (*actions)[sub] = part.prepare(*sub, settings);
    }
    return [&parser, actions] { return actions->at(parser.get_subcommands().front())(); };
}

namespace {

// The letter behind the backslash that stands for the byte; 0 for most, which stand for themselves.
char EscapeOf(char byte) {
    switch (byte) {
        case '\t':
            return 't';
        case '\r':
            return 'r';
        case '\n':
            return 'n';
        case '\\':
            return '\\';
        default:
            return 0;
    }
}

}  // namespace

std::string Row(std::initializer_list<std::string_view> fields) {
    std::string row;
    for (const std::string_view& field : fields) {
        if (&field != fields.begin()) row += '\t';
        std::size_t copied = 0;
        for (std::size_t at = 0; at < field.size(); ++at) {
            const char letter = EscapeOf(field[at]);
            if (letter == 0) continue;
            ((row += field.substr(copied, at - copied)) += '\\') += letter;
            copied = at + 1;
        }
        row += field.substr(copied);
    }
    return row += '\n';
}

int Print(const std::string& text) {
    Output output;
    output.Write(text);
    output.Finish();
    return Done;
}

Action PrepareVersion(CLI::App&, const Settings&) {
    return [] { return Print(SVersionReport()); };
}

Action PrepareHelp(CLI::App& parser, const Settings&) {
    auto topic = std::make_shared<std::string>();
    std::vector<std::string> names;
    for (const Command& command : Table)
        names.emplace_back(command.name);
    parser.add_option("COMMAND", *topic, "The command to explain")->check(CLI::IsMember(names));
    return [&parser, topic] {
        CLI::App& program = *parser.get_parent();
        if (!topic->empty()) return Print(program.get_subcommand(*topic)->help("brcore8"));
        // The program's own help() would give way to that of the command in use, this one.
        return Print(program.get_formatter()->make_help(&program, program.get_name(),
                                                        CLI::AppFormatMode::Normal));
    };
}

void Say(const std::string& line) {
    HideBar();
    std::fprintf(stderr, "%s\n", line.c_str());
}

}  // namespace tool
