// match: the lines that match a wildcard pattern.

#include "command.h"
#include "output.h"
#include "progress.h"
#include "text_input.h"

#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/string.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

struct MatchOptions {
    std::string pattern;
    std::string input = "-";
    bool noCase = false;
};

int Match(const MatchOptions& options, const Settings& settings) {
    const char* pattern = options.pattern.c_str();
    bool found = false;
    Output output;
    const std::string lines = TextInput(options.input, settings).Text(TextFormat::Ansi, "\n");
    BeginStep(lines.size());
    for (const std::string_view line : STextLines(lines)) {
        StepDone(static_cast<std::size_t>(line.data() - lines.data()));
        const SString text{line};
        if (!(options.noCase ? text.MatchNoCase(pattern) : text.Match(pattern))) continue;
        found = true;
        output.Write(line);
        output.Write("\n");
    }
    output.Finish();
    return found ? Done : Failed;
}

}  // namespace

Action PrepareMatch(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<MatchOptions>();
    parser.add_flag("-i,--ignore-case", options->noCase, "Without case");
    parser
        .add_option("PATTERN", options->pattern,
                    "* is any run of characters, ? any one, \\ takes the next one literally")
        ->required();
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    parser.footer("Exits with 1, and says nothing, when no line matches.");
    return [options, &settings] { return Match(*options, settings); };
}

}  // namespace tool
