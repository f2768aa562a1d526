// sort: the lines in string-table order.

#include "command.h"
#include "output.h"
#include "progress.h"
#include "text_input.h"

#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/string_table.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

struct SortOptions {
    std::string input = "-";
    bool numbered = false;
    bool noCase = false;
    bool descending = false;
};

int Sort(const SortOptions& options, const Settings& settings) {
    SStringTable table;
    {
        const std::string lines = TextInput(options.input, settings).Text(TextFormat::Ansi, "\n");
        for (const std::string_view line : STextLines(lines))
            table.Add(SString(line));
    }

    BeginStep(1);
    const int ascending = !options.descending;
    if (options.numbered && options.noCase)
        table.SortNumberedNoCase(ascending);
    else if (options.numbered)
        table.SortNumbered(ascending);
    else if (options.noCase)
        table.SortNoCase(ascending);
    else
        table.Sort(ascending);

    Output output;
    for (const SString& line : table) {
        output.Write(line.View());
        output.Write("\n");
    }
    output.Finish();
    return Done;
}

}  // namespace

Action PrepareSort(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<SortOptions>();
    parser.add_flag("-n,--numbered", options->numbered, "Runs of digits by their value");
    parser.add_flag("-i,--ignore-case", options->noCase, "Without case");
    parser.add_flag("-r,--reverse", options->descending, "Descending");
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    return [options, &settings] { return Sort(*options, settings); };
}

}  // namespace tool
