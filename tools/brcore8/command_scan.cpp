// scan: a text cut into keywords and what stands between them.

#include "command.h"
#include "output.h"
#include "progress.h"
#include "text_input.h"

#include <brcore8/streams/text_lines.h>
#include <brcore8/text/scanner.h>
#include <brcore8/text/symbol_table.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace tool {
namespace {

struct ScanOptions {
    std::string keywords;
    std::optional<std::string> delimiters;
    std::string input = "-";
};

SKeywordTable ReadKeywords(const std::string& input, const Settings& settings) {
    SKeywordTable keywords;
    const std::string lines = TextInput(input, settings).Text(TextFormat::Ansi, "\n");
    long number = 0;
    for (const std::string_view line : STextLines(lines)) {
        ++number;
        if (!line.empty()) keywords.AddKeyword(SString(line), number);
    }
    return keywords;
}

int Scan(const ScanOptions& options, const Settings& settings) {
    SKeywordTable keywords = ReadKeywords(options.keywords, settings);
    const SString text{
        std::string_view(TextInput(options.input, settings).Text(TextFormat::Ansi, "\n"))};
    SString delimiters = gSN_Delimiters;
    if (options.delimiters) delimiters = std::string_view(*options.delimiters);

    BeginStep(text.View().size());
    std::uint64_t done = 0;
    Output output;
    SScanner scanner;
    scanner.Init(text, &keywords, delimiters, 1, 1);
    while (scanner.NextTokenID() != SScanner::NoID || !scanner.token.IsEmpty()) {
        output.Write(Row({std::to_string(scanner.tokenID), scanner.token.View()}));
        StepDone(done += scanner.token.View().size());
    }
    output.Finish();
    return Done;
}

}  // namespace

Action PrepareScan(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<ScanOptions>();
    parser
        .add_option("-k,--keywords", options->keywords,
                    "A text file with a keyword a line, in lower case; its id is the line's number")
        ->type_name("KEYWORDS")
        ->required();
    parser
        .add_option("-d,--delimiters", options->delimiters,
                    "Characters that cut words (()[]+-*/%^={}\"')")
        ->type_name("DELIMITERS");
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    parser.footer(
        "A row a token, ID and TEXT with a tab between them: a keyword, found in any\n"
        "case, under its id, and all text up to the next one under -1. Blanks and\n"
        "line ends between words are dropped, delimiters at the ends of a token\n"
        "trimmed.");
    return [options, &settings] { return Scan(*options, settings); };
}

}  // namespace tool
